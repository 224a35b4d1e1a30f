// SQLite 单元格: one cell of the row that a statement stands on, or that a function was given.
#pragma once

#include "engine/row_set.h"

#include <cstdint>
#include <sqlite3.h>
#include <string_view>

namespace jxc::sqlite {

/// Fetched once: asking the statement for its kind and again for its content costs a list a seventh of its time.
class NativeCell {
 public:
  explicit NativeCell(sqlite3_value* value) : value_(value) {}
  NativeCell(sqlite3_stmt* statement, int column) : value_(sqlite3_column_value(statement, column)) {}
  int kind() const { return sqlite3_value_type(value_); }
  std::int64_t integer() const { return sqlite3_value_int64(value_); }
  double real() const { return sqlite3_value_double(value_); }
  std::string_view utf8() const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value_));
    return {text != nullptr ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value_))};
  }

 private:
  sqlite3_value* value_;
};

inline void addCell(RowSet& rows, const NativeCell& cell) {
  switch (cell.kind()) {
    case SQLITE_NULL:
      return rows.addNull();
    case SQLITE_INTEGER:
      return rows.addInteger(cell.integer());
    case SQLITE_FLOAT:
      return rows.addReal(cell.real());
    default:
      return rows.addText(cell.utf8());
  }
}

}  // namespace jxc::sqlite
