// 期初建账: what a warehouse holds before the first document: entered one goods at a time, for a class, from a
// spreadsheet or a sheet of powers; corrected and taken out while nothing else has happened to it.
#pragma once

#include "stock/document_rules.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace jxc::opening_stock {

/// Pieces of a goods in a warehouse, at so many yuan each. Both by their codes.
struct Entry {
  QString goods, warehouse;
  double quantity = 0, cost = 0;
};

/// What stands in a warehouse: id, goods and names, `kc_sl`, `kc_cbj` and their product `kczje`.
Sql balances(const QString& warehouse, const QString& typed, const QString& classNumber);
/// Goods that the warehouse does not know yet: those that can be entered.
Sql goodsToEnter(const QString& warehouse, const PickFilter& wanted);

/// Yuan a unit, for the forms: the lists show none to who may not see cost. What entering proposes is what the goods is
/// bought for; what a row of `balances` stands at.
double proposedCost(const QString& goods);
double costOfBalance(std::int64_t id);

/// Enters a goods that the warehouse does not know. A quantity of 0 is one, and the goods is known there afterwards.
/// The cost becomes the goods' purchase price and average. False: refused.
bool enter(const Entry& entry, Prompt& prompt);
/// Corrects an entry. Refused as soon as the goods has a document in the warehouse, or any other row in the ledger.
bool change(const Entry& entry, Prompt& prompt);
/// What may not be corrected any more, before anybody types: told.
bool mayChange(const QString& goods, const QString& warehouse, Prompt& prompt);

/// Enters so many pieces of each goods of exactly this class that the warehouse does not know, each at its own purchase
/// price. How many goods; nothing when it was refused or stopped:
/// then nothing of it stays.
std::optional<int> enterClass(const QString& warehouse, const QString& classNumber, double quantity, Prompt& prompt,
                              const LineProgress& progress = {});

struct Removed {
  int goods = 0;
  QStringList refusals;  // one line for each that stays
};
/// Takes goods out of a warehouse, with all their opening rows. Nothing when it was stopped.
std::optional<Removed> remove(const QString& warehouse, const QStringList& goods, const LineProgress& progress = {});

/// The same way in for a spreadsheet and a sheet of powers: the place names the warehouse, the price is the cost.
const ManyLines& lines();
extern const LineImport sheet;

}  // namespace jxc::opening_stock
