// 重新计算与同步: repairs of the stock ledger: the whole recomputation, and the cost of rows that left stock.
#pragma once

#include <QString>

#include <functional>

namespace jxc {

/// Told after each goods: how many of how many are done. Returning false takes everything back.
using RepairProgress = std::function<bool(int done, int total)>;

/// Recomputes running figures, cost prices, goods' stock and sold quantities from `date` ("yyyy-MM-dd") on, in one
/// warehouse or (empty) in all. Rows that earlier closings and syncs put in are deleted first, so are second balance
/// rows of one goods and warehouse. False: cancelled, nothing changed.
bool recomputeLedger(const QString& date, const QString& warehouse, const RepairProgress& progress = {});

/// Gives rows that left stock since `date` the cost of their day, as if purchases had been entered in time. With
/// `changeDocuments` the lines of their documents follow. False: cancelled, nothing changed.
bool syncOutgoingCost(const QString& date, const QString& warehouse, bool changeDocuments,
                      const RepairProgress& progress = {});

}  // namespace jxc
