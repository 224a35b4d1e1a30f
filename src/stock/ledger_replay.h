// 流水重算: the replay of stock/ledger.h for a document of many goods: asked for all of them first, then written.
#pragma once

#include "core/posting.h"
#include "stock/ledger.h"
#include "stock/running_stock.h"

#include <QString>

#include <cstdint>

namespace jxc {

/// The ledger row at which a replay starts.
struct LedgerAnchor {
  std::int64_t id;
  QString goods, warehouse, date, flag;
};

/// `replayLedger` in steps. Replays of different goods may be under way together: what one writes, no other reads.
class LedgerReplay {
 public:
  explicit LedgerReplay(LedgerAnchor anchor);
  /// What only goods without earlier rows need.
  void askMissing() { before_.askMissing(); }
  void write(AnchorRow anchorRow = AnchorRow::Keep);

 private:
  LedgerAnchor anchor_;
  StockBefore before_;
  Ahead rows_;
};

/// `goodsAvgCost`, asked ahead.
Ahead askGoodsAvgCost(const QString& goods);

}  // namespace jxc
