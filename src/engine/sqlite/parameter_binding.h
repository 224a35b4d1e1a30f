// 参数绑定: a caller's values on their way into a prepared statement, made fit for the places where they stand.
#pragma once

#include "engine/row_set.h"
#include "engine/value.h"
#include "jet/plan.h"

#include <span>
#include <sqlite3.h>
#include <string_view>
#include <vector>

namespace jxc::sqlite {

/// Binds the parameters of one step. Numbers are bound without any allocation; texts are converted into a scratch
/// buffer of this object and bound by reference, so it has to outlive the run of the statement.
class ParameterBinder {
 public:
  /// `driving` with `row` give the values of parameters that come from the driving row. Throws DbError(TooWide,
  /// TypeMismatch, Arithmetic) for a value that does not fit its place, DbError(Other) for a failing bind.
  void bind(sqlite3_stmt* statement, std::span<const jet::Parameter> parameters, std::span<const Value> values,
            const RowSet* driving = nullptr, int row = 0);

 private:
  void bindValue(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, const Value& value);
  void bindCell(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, const RowSet& set, int row);
  void bindInteger(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, std::int64_t number);
  void bindReal(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, double number);
  void bindText(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, std::string_view utf8);
  std::string_view toUtf8(QStringView text);
  std::string_view kept(std::string_view text);
  void reserve(std::span<const jet::Parameter> parameters, std::span<const Value> values);

  std::vector<char> scratch_;
  std::size_t used_ = 0;
};

}  // namespace jxc::sqlite
