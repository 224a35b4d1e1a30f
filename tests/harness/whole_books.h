// 全部数据: every row of every table, for tests that ask what a command left behind.
#pragma once

#include <QString>

#include <map>
#include <set>

namespace jxc::test {

/// Every row as text, under "table.id".
using Books = std::map<QString, QString>;

/// A field that was never filled and one that was emptied are the same to everybody who reads it; to the letter they
/// are not.
enum class Reading : char { AsRead, ToTheLetter };
Books readBooks(Reading reading = Reading::AsRead);

/// "table.column" of every field that differs; a row that came or went is "table+" or "table-".
std::set<QString> differences(const Books& before, const Books& after);

}  // namespace jxc::test
