// 商品信息: where one goods stands: on the shelves of each warehouse, on its way in, promised, lent, its last prices,
// and the documents that wait with it.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// Goods by number with pieces over the warehouses: on the shelf `kcsl`, in the books `kczsl`, bought and not put away
/// `ztsl`, sold and not issued `dcsl`, lent `jcsl`, free for the next customer `kysl` (on the shelf and not promised);
/// value at cost `kczje`. Asked for by key.
Sql goodsSituation(const Criteria& criteria, const Warehouses& warehouses);
/// The same figures of one goods in each warehouse that knows it, with what was sold so far `xssl` and the cost `cbjj`.
Sql situationByWarehouse(const Criteria& criteria, const Warehouses& warehouses);

/// What the goods was bought and sold for, and what went back, newest first: `dnote` tells which, `jj` is the price of
/// a purchase, `sj` of a sale, null on the other one; before tax. Not more than the last hundred.
Sql lastPrices(const Criteria& criteria, const Warehouses& warehouses);
/// Lines of the goods on documents of all kinds that wait for their audit, as `listedLines` gives them.
Sql waitingWithGoods(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
