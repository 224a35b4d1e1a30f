// 期初行: what a warehouse holds of one goods before any document: its balance and its row in the stock ledger.
#pragma once

#include <QString>

namespace jxc {

class Row;

/// Where opening rows stand; the names are looked up once for all of them.
struct OpeningPlace {
  OpeningPlace(const QString& warehouse, const QString& date);
  QString warehouse, date;          // code; yyyy-MM-dd
  QString warehouseName, employee;  // as they stand in the ledger
};

/// Posts the ledger row of a goods: `quantity` pieces at `cost` yuan, worth `value` yuan. `goods` is a row with g_sn,
/// g_name, g_jm, dw_name, gg_name, color_name and g_bz. Inside the caller's transaction, as is the next one.
void postOpeningRow(const OpeningPlace& place, const Row& goods, double quantity, double cost, double value);
/// The same with the balance, of goods that the warehouse does not know yet. Month figures and the goods' own stock are
/// the caller's.
void beginStock(const OpeningPlace& place, const Row& goods, double quantity, double cost, double value);

/// Adds to this month's figures of a warehouse, which are made where they are missing.
void addToMonth(const QString& warehouse, double quantity, double value);

/// How opening rows are called in the ledger, where other rows without a document have a partner's name.
inline constexpr char16_t openingName[] = u"期初建账";

}  // namespace jxc
