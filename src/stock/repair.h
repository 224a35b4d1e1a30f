// 重新计算与同步: repairs of the stock ledger: the whole recomputation, and the cost of rows that left stock.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace jxc {

class RowSet;

/// Told after each step, of one goods of a warehouse or of some: how many of how many are done. Returning false stops;
/// what is done stays done, for each step is a transaction of its own. No transaction is open while it runs.
using RepairProgress = std::function<bool(int done, int total)>;

/// How far a repair has come: give the same one again, and it goes on behind the last goods that was done. Empty: from
/// the beginning.
struct RepairPosition {
  QString goods, warehouse;
  bool isEmpty() const { return goods.isEmpty(); }
};

/// Does `work`, which tells whether it changed anything, for each goods in a warehouse behind the position. Goods and
/// warehouse are the first two columns of the rows, whose order is the same at every call. A step is a transaction: it
/// begins with one goods and grows while the work stays short, so that not every goods waits for the disk. One that
/// fails is taken back whole and done again goods by goods; what fails alone is thrown, with all before it done.
/// `changed` gets the rows that were changed, once they are committed. False: stopped, as below.
bool forEachPair(const RowSet& pairs, const RepairProgress& progress, RepairPosition* position,
                 const std::function<bool(const QString& goods, const QString& warehouse)>& work,
                 std::vector<int>* changed = nullptr);

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
