// 语句助手: the one way to the database for rules and screens.
#pragma once

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

/// First field of the first row as text; empty when there is no row or the field is null.
template <class... Args>
QString lookupValue(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return accountDb().lookup(sql, values).text();
}

/// First field of the first row as a number; 0 when there is no row, or it is null or no number.
template <class... Args>
double lookupNumber(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return accountDb().lookup(sql, values).number();
}

/// Runs one statement without result; returns the rows it changed.
template <class... Args>
std::int64_t execSql(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return accountDb().execute(sql, values);
}

/// Rows of a select, by value: a static cursor of the caller's own.
template <class... Args>
RowSet openSelect(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return accountDb().select(sql, values);
}

// The same with the values in a list, for statements put together with a Filter.
inline QString lookupValueWith(const SqlText& sql, std::span<const Value> v) {
  return accountDb().lookup(sql, v).text();
}
inline std::int64_t execSqlWith(const SqlText& sql, std::span<const Value> v) {
  return accountDb().execute(sql, v);
}
inline RowSet openSelectWith(const SqlText& sql, std::span<const Value> v) {
  return accountDb().select(sql, v);
}

using Field = std::pair<std::string_view, Value>;
/// Appends one row and returns its `id`. The statement text is made from the names, once.
std::int64_t insertRow(std::string_view table, std::initializer_list<Field> fields);
/// Posts fields of the row with this `id`.
void updateRow(std::string_view table, std::int64_t id, std::initializer_list<Field> fields);

/// Puts identifiers into a statement: compose("update {} set {}=1 where {}=?", {head, status, number}). An identifier
/// is letters, digits and underscores, optionally `alias.name`; anything else throws std::invalid_argument.
std::string compose(std::string_view pattern, std::initializer_list<std::string_view> identifiers);

/// A statement with its values, for a list that loads it later or in the background.
struct BoundStatement {
  std::string sql;
  std::vector<Value> values;
};

/// Conditions of a list put together from parts, with their values bound. Conditions are literals of the program.
class Filter {
 public:
  template <class... Args>
  Filter& add(std::string_view condition, const Args&... args) {
    text_ += text_.empty() ? " where " : " and ";
    text_ += condition;
    (values_.push_back(Value(args)), ...);
    return *this;
  }
  /// " where a and b", or empty.
  const std::string& where() const { return text_; }
  std::span<const Value> values() const { return values_; }

 private:
  std::string text_;
  std::vector<Value> values_;
};

}  // namespace jxc
