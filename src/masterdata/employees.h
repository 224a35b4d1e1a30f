// 员工: rules of the employee list. An employee is a person on documents; who may log in is an operator.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc {

struct EmployeeDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, duty, phone, address, note;
  double commission = 0;                                         // percent: 5 means 5 %
  int commissionOn = 0;                                          // 0 by sales, 1 by profit
  double commissionFromProfit = 0;                               // yuan of profit a piece above which commission starts
  bool buys = true, sells = true, stocks = true;                 // in which documents the person may be chosen
  bool optometrist = false, workshop = false, posSales = false;  // roles at the till
  bool disabled = false;
  QString warehouseKey = QStringLiteral("-1"), warehouseName = QStringLiteral("所有仓库");
};

EmployeeDraft readEmployee(std::int64_t id);
/// Saves a new or changed employee; a rename follows everywhere the name is copied. Nothing when refused.
std::optional<QString> saveEmployee(const EmployeeDraft& draft, Prompt& prompt);
/// Deletes an employee who stands on no document and no ledger line. Asks.
bool deleteEmployee(std::int64_t id, Prompt& prompt);
/// Flips 禁用: a disabled employee leaves the lists of the documents.
void toggleEmployeeDisabled(std::int64_t id);
/// All, or those that the text means by number, name or letters.
Sql employeeListStatement(const QString& typed = {});

}  // namespace jxc
