// 库存核对与同步: where balance and ledger of a goods in a warehouse differ, and how one is made to follow the other.
#pragma once

#include "core/enquiry.h"
#include "stock/repair.h"

namespace jxc {

/// Goods in warehouses whose balance is not what the last row of their ledger says: shelf `kc_sl`, book `kc_zsl`, the
/// ledger's stock `gl_kc` and its value `gl_kczje` (yuan), the difference `cysl` in pieces. It is the book stock that
/// is compared where goods are put away or issued later, and where they are not the shelf too. Stock without any row
/// stands there with a ledger of 0, rows without a balance with a stock of 0. Asked for by warehouse and key; `rowkey`
/// names a row.
Sql stockDifferences(const Criteria& criteria, const Warehouses& warehouses);

/// Which of the two is right.
enum class SyncWay : char { StockFollows, LedgerFollows };

/// Makes them agree for these goods and warehouses (first two columns), step by step in transactions that look
/// again: what another station has settled or moved meanwhile is taken as it is then. Either stock takes what the
/// ledger says, or the ledger gets a row of today for the difference ("同步", which recomputations keep) and is
/// replayed from there; where goods move later the shelf stays what it is. Stock and average of the goods and the
/// month's figures follow, and the log tells. False: stopped; `position` as in a recomputation.
bool syncStock(const RowSet& places, SyncWay way, const RepairProgress& progress = {},
               RepairPosition* position = nullptr);

}  // namespace jxc
