// 库存查询: what stands in the warehouses now, and what stood there at the end of a day.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// Boxes of the enquiry.
inline constexpr unsigned kHidesZeroStock = 1, kWithDisabledGoods = 2;

/// Goods with class name, stock `kcsl`, book stock `kczsl`, sold so far `xssl`, cost `cbjj` (of the warehouse; over all
/// of them weighted by book stock), stock in the second unit `fzkc` (null for goods without one), value at cost `kczje`
/// and at the preset sale price `xszje`. Ordered by goods number. The partner is the supplier; the kind is one of "=",
/// ">=", "<=", "<>", ">", "<", by which the stock is compared with the amount: throws std::invalid_argument for
/// another.
Sql currentStock(const Criteria& criteria, const Warehouses& warehouses);
/// The same, beginning with the goods of the first screen: for a window.
Computation currentStockByPage(const Criteria& criteria, const Warehouses& warehouses);

/// The same goods with stock `kcsl`, average `cbjj` and value `kczje` (yuan) as the last row of the ledger up to the
/// end of the last day says; over several warehouses the sums, and the average that they make. Goods that had not moved
/// by then have no row.
Sql stockAt(const Criteria& criteria, const Warehouses& warehouses);

/// What the stock of the whole shop was worth at the end of a day by the same rows: `je`, null where nothing had moved.
Sql stockValueAt(const QString& day);
/// The rows that make it up, one a goods and warehouse: `id`, `rq`, `gl_djh` (the goods), `lx` (the warehouse), `dnote`
/// (its name), `je`.
Sql stockValuesAt(const QString& day);

}  // namespace jxc
