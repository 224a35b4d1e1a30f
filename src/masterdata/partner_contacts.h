// 联系记录: what was said with a customer or supplier, day by day, and by whom.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <cstdint>

namespace jxc {

struct ContactRecord {
  std::int64_t id = 0;  // 0 for a new one
  QString partner;      // kh_sn or ghs_sn; never changed
  QString date;         // yyyy-MM-dd
  QString note;         // may have several lines
  QString employee;     // u_sn
};

/// Reads a record; throws DbError when it is gone.
ContactRecord readContact(const PartnerSide& side, std::int64_t id);
/// Saves a new or changed record. False, after telling why, when its text or date is missing.
bool saveContact(const PartnerSide& side, const ContactRecord& draft, Prompt& prompt);
/// Deletes a record. Asks.
bool deleteContact(const PartnerSide& side, std::int64_t id, Prompt& prompt);
/// Records of a partner with the employee's name, the latest first.
Sql contactStatement(const PartnerSide& side, const QString& partner);

/// The partner whose statement is asked for: a contact book hands him over before it opens the statement, which begins
/// with him. Empty when the statement was opened by itself.
void handOverPartner(const PartnerSide& side, const QString& partner);
QString handedOverPartner(const PartnerSide& side);

}  // namespace jxc
