#include "engine/grouped_sums.h"

#include "engine/sqlite/sqlite_database.h"

#include <string>
#include <tuple>

namespace jxc {
namespace grouped_sums_detail {

/// "select a,b,sum(t.c) as c,sum(abs(t.c)) as abs_c from (…) t group by a,b"
std::string grouped(const SqlText& lines, const SumColumns& columns) {
  std::string keys, sums;
  for (const std::string_view key : columns.keys)
    keys += (keys.empty() ? "" : ",") + std::string(key);
  for (const std::string_view sum : columns.sums)
    for (const auto& [of, behind, as] : {std::tuple(",sum(t.", ")", ""), std::tuple(",sum(abs(t.", "))", "abs_")})
      sums += of + std::string(sum) + behind + " as " + as + std::string(sum);
  return "select " + keys + sums + " from (" + std::string(lines.view()) + ") t group by " + keys;
}

}  // namespace grouped_sums_detail

RowSet groupedSums(Database& database, const SqlText& lines, std::span<const Value> values, const SumColumns& columns) {
  if (auto* sqlite = dynamic_cast<sqlite::SqliteDatabase*>(&database))
    return sqlite->groupedSums(lines, values, static_cast<int>(columns.keys.size()));
  return database.select(grouped_sums_detail::grouped(lines, columns), values);
}

void copyCell(RowSet& to, const RowSet& from, int row, int column) {
  switch (from.kind(row, column)) {
    case Value::Kind::Null:
      return to.addNull();
    case Value::Kind::Integer:
      return to.addInteger(from.integer(row, column));
    case Value::Kind::Real:
      return to.addReal(from.number(row, column));
    case Value::Kind::Text:
      return to.addText(from.utf8(row, column));
  }
}

}  // namespace jxc
