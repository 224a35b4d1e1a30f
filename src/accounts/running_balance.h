// 累计余额: rewrites a running balance in one pass; shared by the cash, partner and invoice ledgers.
#pragma once

#include "engine/row_set.h"
#include "engine/sql_text.h"

namespace jxc {

/// Carries `balance` through `rows` in their order and returns the last one. Columns of a row: id, stored balance,
/// amount that raises it …, amount that lowers it (last). `update` takes balance and id; rows that agree are not
/// written.
double carryBalance(double balance, const RowSet& rows, const SqlText& update);

}  // namespace jxc
