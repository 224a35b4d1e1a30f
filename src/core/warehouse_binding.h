// 仓库绑定: which operators a warehouse is open to: two lists in its row, of keys and of names.
#pragma once

#include "core/refusal.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace jxc {

/// A list of the row, "100001,100002,", as its entries, and back. Every entry ends with its comma, so that one can be
/// looked for as "name,".
QStringList bindingEntries(const QString& list);
QString bindingList(const QStringList& entries);

/// What stands against binding these operators to one warehouse: none at all, or more than its lists can hold.
Refusal bindingRefusal(const QStringList& keys, const QStringList& names);

/// Numbers of the warehouses that are open to an operator.
QStringList warehousesOpenTo(const QString& operatorKey);

// Inside a transaction, which must not be committed when one of them is refused:

/// Opens these warehouses to an operator and closes all others to him. A warehouse stays open to somebody.
Refusal openWarehousesTo(const QString& operatorKey, const QString& name, const QStringList& warehouses);
/// His new name in all warehouses.
Refusal renameInBindings(const QString& before, const QString& now);
/// Takes an operator who is deleted out of all warehouses, whoever is left there.
void removeFromBindings(const QString& operatorKey, const QString& name);

}  // namespace jxc
