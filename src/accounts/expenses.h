// 费用及收入: money that is no sale or purchase (rent, wages, interest): entry, audit into the cash ledger, cancel,
// lists.
#pragma once

#include "accounts/expense_types.h"
#include "core/enquiry.h"
#include "core/list_audit.h"
#include "core/prompt.h"
#include "core/reading.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc::expenses {

/// In place of an account: the line counts in the statements and moves no cash.
inline constexpr char16_t kNotBooked[] = u"不记入账户";

struct Draft {
  std::int64_t id = 0;  // 0 for a new one
  Side side = Side::Expense;
  QString date;        // "yyyy-MM-dd"
  QString type;        // one of `fillTypes`
  double amount = 0;   // yuan, as typed: positive for money out and for money in; stored, an expense is negative
  QString employee;    // u_sn
  QString department;  // de_sn
  QString account;     // by name, or kNotBooked
  QString note;
};

/// "费用", "收入".
QString wordOf(Side side);
/// Whether a line under this number was entered here: freight, rent and differences bear that of their document.
bool isOwn(const QString& number);
/// A row of `jxc_yyfy` as it was entered.
Draft draftOf(const Row& line);
/// An empty draft of today.
Draft newDraft(Side side);
/// A waiting line for changing. Nothing, after telling why, when it was audited, is gone, or came with another
/// document: freight, rent of a loan, the difference of a count are changed with that one.
std::optional<Draft> openForChange(std::int64_t id, Prompt& prompt);
/// 再记一笔: a new draft of today with all that a line says, audited or not. Nothing for what another document brought.
std::optional<Draft> copyForToday(std::int64_t id, Prompt& prompt);

/// Saves a new or changed line; with cs_shdj on a new one is audited in the same go. Its number, or nothing when
/// refused.
std::optional<QString> save(const Draft& draft, Prompt& prompt);

/// Audits what waits under a number: its cash line, unless it is not booked, and the balances behind it. Without
/// questions. False: nothing waits there, or it was refused.
bool checkDj(const QString& number, Prompt& prompt);
bool auditOne(const QString& number, Prompt& prompt);
/// `auditEach` of the rows of a list of waiting lines (`id`, `gl_djh`). False: the operator said no.
bool auditAll(const RowSet& list, Prompt& prompt, const AuditProgress& progress = {});
/// Takes an audit back: the cash line goes. Asks. Only of what was entered here.
bool cancel(std::int64_t id, Prompt& prompt);
/// Deletes a waiting line, of a locked day too. Asks. Only of what was entered here.
bool remove(std::int64_t id, Prompt& prompt);

/// Condition on `jxc_yyfy a` for who may not see costs: not the differences in value that counts, losses, splits and
/// gifts booked, which with the pieces of their document tell them. Entries stay, whatever their notes say.
inline constexpr char kTellsNoCost[] =
    "iif((a.fy_note like '%成本差额' or a.fy_note like '%成本费用') and not (a.gl_djh like 'FY%' or a.gl_djh like "
    "'SR%'),1,0)=0";

// What the list is asked: by period, type (`kind`), department (`partner`: who the money was for) and key, which is a
// part of number, account, note or employee. A type or department that is gone hides no row. Who may not see costs gets
// no line that tells them, nor a sum of it.
Sql waitingLines(const Criteria& criteria);  // by entry
Sql auditedLines(const Criteria& criteria);  // newest first
/// One row a type and department: `fy_lx`, `fy_note` (of the type), `fyje`, `de_name`, `de_sn`, `rowkey`.
Sql totals(const Criteria& criteria);
inline constexpr NoWarehouse kExpensesHaveNoWarehouse{"an expense belongs to a department, not to a warehouse"};

/// Departments by number; with `first` given it stands on top with the key "-1".
std::vector<ListItem> fillDepartments(const QString& first = {});

}  // namespace jxc::expenses
