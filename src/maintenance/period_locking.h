// 账目锁定: locking the books up to a day, and opening them again.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace jxc::period_locking {

/// So many documents of a kind that are not audited.
struct Waiting {
  QString kind;
  std::int64_t count = 0;
  bool operator==(const Waiting&) const = default;
};
/// What waits up to this day and could not be audited any more: documents of every kind, cash lines, payments, expenses
/// and invoices. Kinds of which nothing waits are left out.
std::vector<Waiting> waitingUpTo(const QString& day);

/// The last locked day; empty: the books are open. And who locked and opened them when, the newest first: id,
/// `sd_time`, `a_name`, `what` in words.
QString lockedDay();
Sql history();
/// Proposed to lock up to: the last day of the month before this one; nothing where that is locked already.
QString proposedDay();

/// Locks the books up to `day` (yyyy-MM-dd), also where that is earlier than the day until now. Only the administrator
/// may; not before the last closing. Asks, with what waits up to the day. False: refused, or the operator said no.
bool lockUpTo(const QString& day, Prompt& prompt);
/// Opens them again; what a closing took stays locked, and where nothing else is it is refused.
bool open(Prompt& prompt);

}  // namespace jxc::period_locking
