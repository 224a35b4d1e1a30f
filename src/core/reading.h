// 读取: questions to the account database. This is what a screen may have of it; what changes rows is in
// core/statements.h, for rules.
#pragma once

#include "core/sql.h"
#include "engine/row_set.h"
#include "engine/sql_text.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace jxc {

/// First field of the first row; null when there is no row.
Value readValue(const SqlText& select, std::span<const Value> values);
/// Rows of a select, by value: a static cursor of the caller's own.
RowSet readRows(const SqlText& select, std::span<const Value> values);

/// First field of the first row as text; empty when there is no row or the field is null.
template <class... Args>
QString lookupValue(const SqlText& select, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return readValue(select, values).text();
}
inline QString lookupValue(const Sql& select) {
  return readValue(std::string_view(select.text()), select.values()).text();
}

/// First field of the first row as a number; 0 when there is no row, or it is null or no number.
template <class... Args>
double lookupNumber(const SqlText& select, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return readValue(select, values).number();
}
inline double lookupNumber(const Sql& select) {
  return readValue(std::string_view(select.text()), select.values()).number();
}

/// Rows of a select, by value: a static cursor of the caller's own.
template <class... Args>
RowSet openSelect(const SqlText& select, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return readRows(select, values);
}
inline RowSet openSelect(const Sql& select) {
  return readRows(std::string_view(select.text()), select.values());
}

/// How many rows a select has. Only the number travels.
std::int64_t count(const Sql& select);
/// Whether a select has a row. It ends at the first.
bool exists(const Sql& select);
template <class... Args>
bool exists(std::string select, const Args&... args) {
  return exists(Sql(std::move(select), args...));
}

/// A number that changes when another station has written since it was last asked for. Nothing where the engine cannot
/// tell.
std::optional<std::int64_t> writesOfOthers();

}  // namespace jxc
