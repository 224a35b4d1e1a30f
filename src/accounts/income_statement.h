// 经营情况表: what the shop earned and what it cost, of all time and of a period, month by month, and what each figure
// is made of. Nothing is stored: figures are computed where they are asked for.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"

#include <vector>

namespace jxc {

inline constexpr NoWarehouse kStatementsAreOfTheShop{"rent, wages and what partners owe belong to the whole shop"};

/// Rows in the order of their codes `g_sn`: [收入类] 100 with 101 销售收入 (what was billed, not what was received) and
/// 102 其他收入, [支出类] 200 with 201 销售成本, 202 其他费用, 203 外发加工费用, 204 应付款项, and [总利润] 300. Below
/// 102 and 202 a row for each of their types, and one for what of them waits for its audit and counts all the same.
/// Columns: `rowkey`, `g_sn`, `ts_note` (the label), `ts_zje` (all time), `ts_dj` (the period), `code` and `fy_lx` by
/// which a row is followed, `waits`. Yuan. Without the right to see prices 100 and 101 are left out, without that to
/// see costs 200, 201, 203 and 204 (and 102 and 202 are without the differences of stock), without either 300.
Computation incomeStatement(const Criteria& criteria);

/// The same rows for the months of a year (`kind`, "2026"; without it this one), of a period only what lies in it: `m1`
/// to `m12`, `zj` of all of them, `nf` the year.
Computation incomeByMonth(const Criteria& criteria);
/// Years that there is something of, the newest first; this one at least.
std::vector<ListItem> fillYears();

/// What a row is made of: `kind` is its `code`, `group` its `fy_lx`; in the period. `id`, `rq`, `gl_djh`, `lx`,
/// `dnote`, `u_name`, `je`, whose sum is the row's figure. Who may not see the row gets none.
Sql incomeLines(const Criteria& criteria);

/// 按月的利润图, 按月的费用图: `js_rq` ("2026-05") and `xslr` of the months of the period.
Sql profitByMonth(const Criteria& criteria, const Warehouses& warehouses);
Sql expensesByMonth(const Criteria& criteria);
/// The lines behind a month of either, as `incomeLines` has them.
Sql profitLines(const Criteria& criteria, const Warehouses& warehouses);
Sql expenseLines(const Criteria& criteria);

}  // namespace jxc
