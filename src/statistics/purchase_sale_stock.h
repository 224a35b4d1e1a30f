// 进销存统计: what goods had before a period, what came and went in it, and what they had at its end, by the stock
// ledger: its lines by kind, and one row of sums for each goods.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// Boxes of the enquiry: sales and customers' returns at cost and not at what they were sold for (always so for who
/// must not see sale prices); only goods that moved in the period; no opening rows without quantity.
inline constexpr unsigned kAtCost = 1, kMovedOnly = 2, kHidesZeroOpening = 4;

/// Lines of the ledger, by warehouse, goods and date, each with the caption `dnote` of its kind and on the side where
/// it belongs: price `rkdj`, quantity `rksl` and amount `rkje` of what came in, `ckdj`, `cksl`, `ckje` of what went
/// out, 0 on the other one; stock `gl_kc` and its value `gl_kczje` behind the line. Kinds without a caption have no
/// line. Asked for by period, warehouse, class, goods, key and boxes. The key is looked for in number, mnemonic, name
/// and model as the catalogue has them.
Computation stockMovements(const Criteria& criteria, const Warehouses& warehouses);

/// The opening rows of whatever day, with the columns of incoming lines, by goods and date.
Sql openingStock(const Criteria& criteria, const Warehouses& warehouses);

/// Goods by number: stock before the period `gl_kc`, `gl_kczje`, in `rksl`, `rkzje`, out `cksl`, `ckzje`, stock at its
/// end `glkc`, `glkczje`; quantities in pieces, values in yuan. Stock is what the last ledger row of each warehouse
/// says, added up; in and out are sums without sign, but for counts and opening rows: shortage lowers what came in.
/// "00000000" is a row of money without quantity. Reads the rows of the period once; writes nothing.
Computation stockSummary(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
