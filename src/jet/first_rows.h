// 前几行: the same select, asked for its first rows only.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace jxc::jet {

/// The select limited to `rows` rows: the first ones, where it sorts them so that each has its place. Nothing for what
/// is no select, for one that asks for so few anyway, and where the first rows cost as much as all of them: groups and
/// sums, parts united without duplicates, sorted rows without duplicates, and rows joined with such. Parts under `union
/// all` are merged as each comes sorted. Throws TranslateError(Syntax).
std::optional<std::string> firstRows(std::string_view statement, int rows);

}  // namespace jxc::jet
