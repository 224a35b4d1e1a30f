// 仓库: rules of the warehouse list and its binding to operators.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace jxc {

struct WarehouseDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, inCharge, phone, address, note;
  QStringList operatorKeys, operatorNames;  // in step; at least one
  bool isDefault = false, isPos = false;    // each at most one in the account set
};

WarehouseDraft readWarehouse(std::int64_t id);

/// Saves a new or changed warehouse; a rename follows into the ledgers. Returns its number, or nothing when refused.
std::optional<QString> saveWarehouse(const WarehouseDraft& draft, Prompt& prompt);

/// Deletes a warehouse that never held goods. Asks. False when refused.
bool deleteWarehouse(std::int64_t id, Prompt& prompt);

/// Rows that the operator may see: all, or those bound to him where operators are bound to warehouses (`cs_cgyh`).
Sql warehouseListStatement();

/// Operators that a warehouse can be bound to, `a_sn` and `a_name`.
RowSet selectBindableOperators();

}  // namespace jxc
