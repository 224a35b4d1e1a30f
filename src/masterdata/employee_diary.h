// 员工日志: what an employee noted down day by day, and what he did: his documents at his desk.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"

#include <QString>

#include <cstdint>

namespace jxc {

struct EmployeeDiaryDraft {
  std::int64_t id = 0;  // 0 for a new entry
  QString employee;     // u_sn
  QString date;         // yyyy-MM-dd
  QString note;
};

/// The entry with this id; throws DbError when it is gone.
EmployeeDiaryDraft readEmployeeDiary(std::int64_t id);
/// Saves an entry. False when refused.
bool saveEmployeeDiary(const EmployeeDiaryDraft& draft, Prompt& prompt);
/// Deletes an entry. Asks.
bool deleteEmployeeDiary(std::int64_t id, Prompt& prompt);
/// Entries of an employee, the latest first.
Sql employeeDiary(const Criteria& criteria);

/// Audited purchases, purchase returns, sales and customer returns of an employee in the period, in yuan: djh, rq, zflx
/// (the kind), yfje, sfje, wfje (left open), name of the partner, ck_name. Returns stand with minus.
Sql deskDocuments(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
