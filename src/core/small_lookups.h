// 小查询: stock of one goods, staging rows, use counters, customer level, regions.
#pragma once

#include <QString>

namespace jxc {

/// Stock of a goods in a warehouse as text; "0" when it has no row there.
QString getStockQty(const QString& goods, const QString& warehouse);
/// Whether so many pieces are more than lie in the warehouse; quantities have six decimals.
bool isBeyondStock(const QString& goods, double quantity, const QString& warehouse);
/// Empties the operator's working rows of the document being edited.
void clearStaging();
/// Use counters of an employee: they sort the lists of employees.
void bumpPurchaseCount(const QString& employee);
void bumpSaleCount(const QString& employee);
/// Price level of a customer: his type while price grades are on (cs_cs013), otherwise or when he has none "1000".
QString getKhLevel(const QString& customer);
/// Makes the region known when it is not.
void ensureZone(const QString& name);

}  // namespace jxc
