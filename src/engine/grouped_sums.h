// 分组合计: the rows of a select summed by some of their columns, read once and without sorting them.
#pragma once

#include "engine/database.h"

#include <span>
#include <string_view>

namespace jxc {

/// What rows are summed by, and what of them is summed: names of the select's columns, all of them and in its order.
struct SumColumns {
  std::span<const std::string_view> keys, sums;
};

/// One row for each combination of keys, in no particular order; behind them for each number its sum and, as "abs_…",
/// the sum of its values without sign, to six decimals. Nothing counts as 0. SQLite would sort the rows to group them,
/// which takes three times as long as reading them: of a file they are read as they come. A server groups them itself.
RowSet groupedSums(Database& database, const SqlText& lines, std::span<const Value> values, const SumColumns& columns);

/// Appends a cell of another set.
void copyCell(RowSet& to, const RowSet& from, int row, int column);

}  // namespace jxc
