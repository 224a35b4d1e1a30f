// 账目锁定: the day up to which the books are closed, and what every command asks that writes on a day.
#pragma once

#include "core/posting.h"
#include "core/refusal.h"

#include <QString>

#include <stdexcept>

namespace jxc {

/// What is to be done on a day, for the words of the refusal: its date can still be another one, or it is in the books.
enum class OnDay : char { Dated, Booked };

/// The lock as it stands when this is made. The question is sent ahead: made before a command's other questions, it is
/// answered in their round trip.
///
/// A command asks `against` before its own questions, and `demandOpen` inside its transaction, of a lock that was made
/// there: one command writes at a time, so what is read inside holds until the commit. Both ask for the date of what is
/// written, never of what that refers to: goods are put away, issued, returned and paid today for a document behind the
/// lock.
class PeriodLock {
 public:
  PeriodLock();
  /// The last locked day, yyyy-MM-dd; empty: nothing is locked.
  QString day() const;
  /// Whether this date, with or without a time of day behind it, may not be written on. No date stands before all.
  bool holds(const QString& date) const;
  /// What stands against it: names the locked day and what to do. It is about the date.
  Refusal against(const QString& date, OnDay what = OnDay::Dated) const;
  /// Throws PeriodLocked where something stands against it.
  void demandOpen(const QString& date, OnDay what = OnDay::Dated) const;
  /// The first day that may be written on, not before `date`.
  QString openFrom(const QString& date) const;

 private:
  Ahead asked_;
};

/// The books were locked by another station while the command's questions stood; its message is that of the refusal.
class PeriodLocked : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What stands against writing on this date, as it is now.
inline Refusal lockedOn(const QString& date, OnDay what = OnDay::Dated) {
  return PeriodLock().against(date, what);
}

/// The last day that a closing took, yyyy-MM-dd; empty: none. Up to it the books never open again.
QString closedDay();

/// Locks the books up to this day, or opens them (an empty day), with a row of the log; what a closing took stays
/// locked. Inside the caller's transaction. Whether the operator may, and what is asked before, is the caller's:
/// `maintenance/period_locking.h`, and a closing.
void setPeriodLock(const QString& day);

}  // namespace jxc
