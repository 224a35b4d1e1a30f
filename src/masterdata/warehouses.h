// 仓库: rules of the warehouse list and its binding to operators.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc {

struct WarehouseDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, inCharge, phone, address, note;
  QStringList operatorKeys, operatorNames;  // in step; at least one
  bool isDefault = false, isPos = false;    // each at most one in the account set
};

WarehouseDraft readWarehouse(std::int64_t id);

/// Saves a new or changed warehouse; a rename follows its number into the ledgers. A new one never gets the number of a
/// deleted one. Returns its number, or nothing when refused.
std::optional<QString> saveWarehouse(const WarehouseDraft& draft, Prompt& prompt);

/// Deletes a warehouse that never held goods and stands on no document, with its rows of months and balances. Asks.
/// False when refused.
bool deleteWarehouse(std::int64_t id, Prompt& prompt);

/// Rows that the operator may see: all, or those bound to him where operators are bound to warehouses (`cs_cgyh`). With
/// a text those that it means by number, name or letters.
Sql warehouseListStatement(const QString& typed = {});

struct BindableOperator {
  QString key, name;
  bool isDisabled = false, isBound = false;
};
/// Operators that a warehouse can be bound to, and which of them are: all at first. A disabled one is offered only
/// where he is bound already, so that he finds his warehouse again when he comes back.
std::vector<BindableOperator> bindableOperators(const WarehouseDraft& draft);

}  // namespace jxc
