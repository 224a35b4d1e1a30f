// 语句助手: the one way to the database for rules: questions (core/reading.h) and changes.
#pragma once

#include "core/reading.h"
#include "engine/database.h"
#include "engine/transaction.h"

#include <QString>

#include <array>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jxc {

/// The account database in use. Throws DbError when none is open.
Database& accountDb();

/// Runs one statement without result; returns the rows it changed.
template <class... Args>
std::int64_t execSql(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return accountDb().execute(sql, values);
}
inline std::int64_t execSql(const Sql& sql) {
  return accountDb().execute(std::string_view(sql.text()), sql.values());
}

/// A field and its value. One without a name is left out: of several tables that are written alike, this one has no
/// such column.
using Field = std::pair<std::string_view, Value>;
/// Appends one row and returns its `id`. The statement text is made from the names, once.
std::int64_t insertRow(std::string_view table, std::initializer_list<Field> fields);
/// Posts fields of the row with this `id`.
void updateRow(std::string_view table, std::int64_t id, std::initializer_list<Field> fields);

}  // namespace jxc
