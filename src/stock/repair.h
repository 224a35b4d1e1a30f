// 重新计算与同步: repairs of the stock ledger: the whole recomputation, and the cost of rows that left stock.
#pragma once

#include <QString>

#include <functional>

namespace jxc {

class RowSet;

/// Told after each goods of a warehouse: how many of how many are done. Returning false stops; what is done stays done,
/// for each is a transaction of its own. No transaction is open while it runs.
using RepairProgress = std::function<bool(int done, int total)>;

/// How far a repair has come: give the same one again, and it goes on behind the last goods that was done. Empty: from
/// the beginning.
struct RepairPosition {
  QString goods, warehouse;
  bool isEmpty() const { return goods.isEmpty(); }
};

/// Does `work` for each goods in a warehouse behind the position, each in a transaction of its own. Goods and warehouse
/// are the first two columns of the rows, whose order is the same at every call. False: stopped, as below.
bool forEachPair(const RowSet& pairs, const RepairProgress& progress, RepairPosition* position,
                 const std::function<void(const QString& goods, const QString& warehouse)>& work);

/// Recomputes running figures, cost prices, goods' stock and sold quantities from `date` ("yyyy-MM-dd") on, in one
/// warehouse or (empty) in all. Rows that earlier closings and syncs put in are deleted first, so are second balance
/// rows of one goods and warehouse. False: stopped; stock of the goods and sold quantities are written at the very end
/// only. `position` is empty again when it has finished.
bool recomputeLedger(const QString& date, const QString& warehouse, const RepairProgress& progress = {},
                     RepairPosition* position = nullptr);

/// Gives rows that left stock since `date` the cost of their day, as if purchases had been entered in time. With
/// `changeDocuments` the lines of their documents follow. False: stopped, as above.
bool syncOutgoingCost(const QString& date, const QString& warehouse, bool changeDocuments,
                      const RepairProgress& progress = {}, RepairPosition* position = nullptr);

}  // namespace jxc
