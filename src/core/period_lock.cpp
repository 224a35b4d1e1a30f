#include "core/period_lock.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/session.h"
#include "core/statements.h"

#include <QDate>

#include <algorithm>

namespace jxc {
namespace period_lock_detail {

constexpr qsizetype kDayLength = 10;  // of yyyy-MM-dd; heads of sales carry the time behind it

QString dayAfter(const QString& day) {
  return QDate::fromString(day, Qt::ISODate).addDays(1).toString(Qt::ISODate);
}

QString refusal(const QString& day, const QString& date, OnDay what) {
  const QString locked =
      u"账目已锁定到 %1，日期为 %2 的单据和账目不能再改动！\r\n\r\n"_qs.arg(day, date.left(kDayLength));
  return locked +
         (what == OnDay::Dated
              ? u"请把日期改为 %1 或以后。"_qs.arg(dayAfter(day))
              : u"请用 %1 或以后的单据冲正，或请系统管理员在“系统维护”的“账目锁定”中解除锁定。"_qs.arg(dayAfter(day)));
}

}  // namespace period_lock_detail

PeriodLock::PeriodLock() : asked_(sendAhead("select top 1 sd_rq from jxc_zmsd order by id desc")) {}

QString PeriodLock::day() const {
  return asked_.rows().isEmpty() ? QString() : asked_.rows().text(0, 0);
}

bool PeriodLock::holds(const QString& date) const {
  const QString last = day();
  return !last.isEmpty() && date.left(period_lock_detail::kDayLength) <= last;
}

Refusal PeriodLock::against(const QString& date, OnDay what) const {
  if (!holds(date)) return {};
  return {period_lock_detail::refusal(day(), date, what), Subject::Date};
}

void PeriodLock::demandOpen(const QString& date, OnDay what) const {
  if (const Refusal locked = against(date, what)) throw PeriodLocked(locked.text.toStdString());
}

QString PeriodLock::openFrom(const QString& date) const {
  return holds(date) ? period_lock_detail::dayAfter(day()) : date;
}

QString closedDay() {
  return lookupValue("select max(da_year) from jxc_jsda where da_ql=0");
}

void setPeriodLock(const QString& wanted) {
  // What a closing carried on never opens again: a document of those days has no rows left that could be taken back.
  const QString day = std::max(wanted, closedDay());
  const QString before = PeriodLock().day();
  insertRow("jxc_zmsd", {{"sd_rq", day},
                         {"sd_time", clock::stamp()},
                         {"a_name", session().a_name},
                         {"sd_lsid", lookupNumber("select max(id) from jxc_goodslist")}});
  writeLog(day.isEmpty() ? u"解除账目锁定：原锁定到 "_qs + before : u"账目锁定到 "_qs + day);
}

}  // namespace jxc
