// 参数绑定: a caller's values bound to a prepared statement of SQLite.
#pragma once

#include "engine/parameter_fitting.h"

#include <sqlite3.h>

namespace jxc::sqlite {

/// Texts are bound by reference, so it has to outlive the run of the statement.
class ParameterBinder final : ParameterFitter {
 public:
  /// Throws as ParameterFitter::fit, and DbError(Other) for a failing bind.
  void bind(sqlite3_stmt* statement, std::span<const jet::Parameter> parameters, std::span<const Value> values,
            const RowSet* driving = nullptr, int row = 0) {
    statement_ = statement;
    fit(parameters, values, driving, row);
  }

 private:
  void putNull(int at) override;
  void putInteger(int at, std::int64_t number) override;
  void putReal(int at, double number) override;
  void putText(int at, std::string_view utf8) override;

  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace jxc::sqlite
