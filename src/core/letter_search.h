// 简码查找: names found by letters as they are spoken, although their short names hold one reading a character.
#pragma once

#include "core/sql.h"

#include <QString>

#include <string_view>

namespace jxc {

/// Adds " or …" to a condition on one word: the short name matches with one character read in its other way. `letters`
/// and `name` are the columns of short name and name, `alias.column`.
void orOtherReadings(Sql& condition, std::string_view letters, std::string_view name, const QString& word);

/// Adds to a filter: number, name or short name holds what was typed; nothing for an empty text.
void addNameSearch(Filter& filter, std::string_view number, std::string_view letters, std::string_view name,
                   const QString& typed);

}  // namespace jxc
