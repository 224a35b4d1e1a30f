// 现金银行收付: money in, money out and transfers between accounts: entry, audit, cancel, lists, repair.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace jxc::cash {

/// What the operator keys in himself; all other lines of the cash ledger come from documents and are born audited.
enum class Movement : char { In /* 进款 XJ */, Out /* 出款 XC */, Transfer /* 银行转账 XZ */ };

struct LineDraft {
  std::int64_t id = 0;  // 0 for a new one; a transfer is never changed
  Movement movement = Movement::In;
  QString date;            // "yyyy-MM-dd"
  QString account;         // by name; of a transfer the one that pays
  QString target;          // of a transfer the one that receives
  double amount = 0;       // yuan, as typed: positive for money in and for money out
  QString employee, note;  // the employee by name
};

/// An empty draft of today.
LineDraft newLine(Movement movement);
/// An unaudited line for changing. Nothing, after telling why, when it is neither 进款 nor 出款, is audited, or gone.
std::optional<LineDraft> openLine(std::int64_t id, Prompt& prompt);

/// Saves a new or changed line, a transfer as two lines under one number; with cs_shdj on a new one is audited in the
/// same go. Its number, or nothing when refused.
std::optional<QString> saveLine(const LineDraft& draft, Prompt& prompt);

/// Audits all lines of a number (both of a transfer); those of other stations that were quicker are left alone.
/// Without questions; `auditLine` asks first. False: nothing waited under this number.
bool checkDj(const QString& number);
bool auditLine(const QString& number, Prompt& prompt);

/// Takes the audit of a line's number back. Asks. Of a transfer only the balances of this line's account are written
/// anew: the other account shows its old ones until "重新计算".
bool cancelLine(std::int64_t id, Prompt& prompt);

/// Deletes an unaudited number, both lines of a transfer. Asks.
bool deleteLine(const QString& number, Prompt& prompt);

// What the ledger is asked: by period, account and key, which is a part of number, kind, partner or note.
/// Lines that wait, newest first.
Sql waitingLines(const Criteria& criteria);
/// Audited lines by account, date and entry.
Sql auditedLines(const Criteria& criteria);
/// One row an account: `xj_kmmc`, the period's `sfje` and the balance `ljje` at its end.
Sql accountTotals(const Criteria& criteria);
inline constexpr NoWarehouse kCashHasNoWarehouse{"an account belongs to the shop, not to one of its warehouses"};

/// Repair: writes the balances of one account, or of all (empty), anew from a date on. Asks; tells when it is done.
bool recomputeAccounts(const QString& account, const QString& from, Prompt& prompt);

}  // namespace jxc::cash
