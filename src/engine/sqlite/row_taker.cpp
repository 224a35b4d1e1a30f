#include "engine/sqlite/row_taker.h"

#include <string_view>
#include <utility>

namespace jxc::sqlite {
namespace row_taker_detail {

constexpr const char* kPointer = "jxc_rows";  // kind of the pointer that the function is given

void step(sqlite3_context* context, int, sqlite3_value** arguments) {
  auto* const taker = static_cast<RowTaker*>(sqlite3_value_pointer(arguments[0], kPointer));
  if (taker == nullptr) return sqlite3_result_error(context, "jxc_rows is not for statements", -1);
  if (!taker->take(arguments + 1)) sqlite3_result_error(context, "stopped", -1);
}

void finish(sqlite3_context* context) {
  sqlite3_result_null(context);
}

void isWanted(sqlite3_context* context, int count, sqlite3_value** arguments) {
  sqlite3_result_int(context, 0);
  step(context, count, arguments);
}

}  // namespace row_taker_detail

/// By place: what a statement calls its columns stays with the plan.
std::string RowTaker::cells() const {
  std::string cells;
  for (int i = 0; i < columnCount(); ++i)
    cells += (i > 0 ? ",c" : "c") + std::to_string(i);
  return cells;
}

std::string RowTaker::over(const std::string& select) const {
  return "with lines(" + cells() + ") as (" + select + ") select jxc_sums(:rows," + cells() + ") from lines";
}

/// A condition that no row meets. An aggregate over ordered rows would be handed a copy of each.
std::string RowTaker::inOrderOver(const std::string& select) const {
  return "with lines(" + cells() + ") as (" + select + ") select 1 from lines where jxc_rows(:rows," + cells() + ")";
}

void RowTaker::bind(sqlite3_stmt* statement) {
  sqlite3_bind_pointer(statement, sqlite3_bind_parameter_index(statement, ":rows"), this, row_taker_detail::kPointer,
                       nullptr);
}

bool RowTaker::take(sqlite3_value** cells) {
  try {
    add(cells);
    return true;
  } catch (...) {  // SQLite is written in C
    thrown_ = std::current_exception();
    return false;
  }
}

double RowByRow::number(int column) const {
  const NativeCell asked = cell(column);
  switch (asked.kind()) {
    case SQLITE_FLOAT:
      return asked.real();
    case SQLITE_INTEGER:
      return static_cast<double>(asked.integer());
    case SQLITE_NULL:
      return 0;
    default:
      return kept(column).number(0, 0);
  }
}

std::int64_t RowByRow::integer(int column) const {
  return cell(column).kind() == SQLITE_INTEGER ? cell(column).integer() : kept(column).integer(0, 0);
}

RowSet RowByRow::kept(int column) const {
  RowSet one({"cell"});
  addCell(one, cell(column));
  return one;
}

bool readsInOrder(sqlite3* connection, const std::string& statement) {
  constexpr int kDetail = 3;
  constexpr std::string_view where = " where ";
  const bool isFiltered = statement.find(where) != statement.rfind(where);  // the last one is the function's own
  sqlite3_stmt* raw = nullptr;
  sqlite3_prepare_v2(connection, ("explain query plan " + statement).c_str(), -1, &raw, nullptr);
  const StatementHandle plan(raw);
  int tables = 0;
  while (raw != nullptr && sqlite3_step(raw) == SQLITE_ROW) {
    const std::string_view detail = reinterpret_cast<const char*>(sqlite3_column_text(raw, kDetail));
    if (!detail.starts_with("SEARCH ") && !detail.starts_with("SCAN ")) return false;
    // What an index can tell is asked before the row is read, for which the other conditions wait.
    if (isFiltered && detail.find(" USING INDEX ") != std::string_view::npos) return false;
    ++tables;
  }
  return tables == 1;  // of joined tables the function is asked as soon as those are read that it takes cells of
}

void registerRowTaker(sqlite3* connection) {
  using namespace row_taker_detail;
  constexpr int how = SQLITE_UTF8 | SQLITE_DIRECTONLY;
  sqlite3_create_function_v2(connection, "jxc_sums", -1, how, nullptr, nullptr, step, finish, nullptr);
  sqlite3_create_function_v2(connection, "jxc_rows", -1, how, nullptr, isWanted, nullptr, nullptr, nullptr);
}

}  // namespace jxc::sqlite
