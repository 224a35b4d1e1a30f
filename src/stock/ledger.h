// 库存流水与成本: the stock ledger: its replay (the one costing algorithm), cost lookups, month rows, shortage check.
#pragma once

#include "core/refusal.h"
#include "engine/posting.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace jxc {

class Prompt;
class Row;

/// Whether two figures of the ledger are not the same: it keeps six decimals.
bool differs(double a, double b);

/// What to do with the row that a replay starts at: an audit has just inserted it and keeps it; a cancel is about to
/// delete it and leaves it out of the running figures.
enum class AnchorRow : char { Keep, Skip };

/// Recomputes the running quantity, average and value of one goods in one warehouse, from the day of ledger row `id`
/// to the end. The whole day is replayed, rows with a lower `id` too. Rows are read in one pass and only those whose
/// figures change are written. At the end the warehouse's `kc_cbj` takes the last average, unless fixed cost prices
/// are in use or the anchor row is of a kind that does not move the cost. Does nothing when the row is not there.
void replayLedger(std::int64_t id, AnchorRow anchor = AnchorRow::Keep);

/// Average cost of a goods over all warehouses in yuan, weighted by book stock, rounded to the money digits;
/// -1 when book stock sums to zero (the caller then takes the unit price of its line).
double goodsAvgCost(const QString& goods);

/// Cost price in yuan that a line of a sale, return, transfer, split or loan dated `date` takes from this warehouse.
double getGoodsCost(const QString& goods, const QString& warehouse, const QString& date);

/// The same at ledger row `id`, for bringing the cost of rows that left stock up to date; opening rows come last and
/// fixed cost prices of the system play no part.
double getLedgerRowCost(const QString& goods, const QString& warehouse, const QString& date, std::int64_t id);

/// Gives every warehouse its balance row of goods "00000000" and its row of this month ("yyyy-MM"). When month rows
/// were missing, they take the stock as it stands: the opening stock of the month.
void ensureStockRows(const QString& month);
/// Makes such rows where they are missing, and writes the present stock quantity and value of a warehouse into its row
/// of this month ("yyyy-MM").
void refreshMonthStock(const QString& warehouse, const QString& month);

/// Tests the lines of document `number` against the book stock of `warehouse`; `kind` is the prefix of a family with a
/// `shortageWord`, anything else passes. With "-" before it, it is asked what lines below zero take. Lines of one goods
/// add up first, and goods that the warehouse does not know pass. Of "CF" and "KB" what leaves is tested in the
/// warehouse that it leaves, saved or not, and must be known there. Asked ahead: what stands in the tables now.
class StockShortage {
 public:
  StockShortage(const QString& number, const QString& warehouse, QStringView kind);
  /// The words for the operator, and the goods that is short; applies to nothing when all is well.
  Refusal words() const;

 private:
  QString warning_;
  std::optional<Ahead> goods_;
};
Refusal checkStockShort(const QString& number, const QString& warehouse, QStringView kind);
/// Shows what `checkStockShort` found: asks when negative stock is allowed, refuses otherwise. True: go on.
bool mayGoShort(const Refusal& shortage, Prompt& prompt);
/// What was lost is gone whatever the books say: goods of a loss beyond the stock of this warehouse are asked about,
/// never refused. True: go on.
bool mayLoseBeyondStock(const QString& number, const QString& warehouse, Prompt& prompt);
/// The same of a waiting loss.
bool mayLoseBeyondStock(const Row& head, Prompt& prompt);

}  // namespace jxc
