#include "core/start_reminders.h"

#include "core/clock.h"
#include "core/session.h"
#include "core/statements.h"

namespace jxc {
namespace start_reminders_detail {

// One condition for asking and for marking, so that what was shown is what is marked.
Filter dueFilter() {
  const QDateTime now = clock::now();
  const QString day = u'%' + now.toString(QStringLiteral("dd")) + u'%';
  const QString weekday = u'%' + QString::number(now.date().dayOfWeek() % 7 + 1) + u'%';  // Sunday is 1
  Filter filter;
  filter.add("(tx_dx='全体人员' or tx_dx=?)", session().a_name);
  filter.add(
      "(tx_sj='程序启动时' or (tx_sj=? and tx_zt='0') or (tx_sj like ? and tx_fs=4) or (tx_sj like ? and tx_fs=3))",
      clock::today(), day, weekday);
  return filter;
}

DailyTip take(const RowSet& rows) {
  if (rows.isEmpty()) return {};
  const DailyTip tip{rows.front().integer("id"), rows.front().text("mr_ts")};
  Transaction transaction(accountDb());
  execSql("update jxc_mryt set mr_state='0'");
  execSql("update jxc_mryt set mr_state='1',mr_rq=? where id=?", clock::today(), tip.id);
  transaction.commit();
  return tip;
}

DailyTip firstOf(const RowSet& rows, const SqlText& otherwise) {
  return take(rows.isEmpty() ? openSelect(otherwise) : rows);
}

}  // namespace start_reminders_detail

bool showsDailyTip() {
  return exists("select t_mryt from jxc_txdisp where t_mryt='1'");
}
bool showsReminderList() {
  return exists("select t_sjtx from jxc_txdisp where t_sjtx='0'");
}

void setShowsDailyTip(bool on) {
  Transaction transaction(accountDb());
  execSql("update jxc_txdisp set t_mryt=?", on ? "1" : "0");
  transaction.commit();
}

bool hasDueReminders() {
  return exists(Sql("select id from jxc_tx").where(start_reminders_detail::dueFilter()));
}

void markDueReminders() {
  Transaction transaction(accountDb());
  execSql(Sql("update jxc_tx set tx_zt='1'").where(start_reminders_detail::dueFilter()));
  transaction.commit();
}

DailyTip tipOfTheDay() {
  const RowSet last = openSelect("select top 1 * from jxc_mryt where mr_state='1' order by id");
  if (last.isEmpty()) return nextTip(0);
  return last.front().text("mr_rq") == clock::today() ? start_reminders_detail::take(last)
                                                      : nextTip(last.front().integer("id"));
}

DailyTip nextTip(std::int64_t id) {
  return start_reminders_detail::firstOf(openSelect("select top 1 * from jxc_mryt where id>? order by id", id),
                                         "select top 1 * from jxc_mryt order by id");
}

DailyTip previousTip(std::int64_t id) {
  return start_reminders_detail::firstOf(openSelect("select top 1 * from jxc_mryt where id<? order by id desc", id),
                                         "select top 1 * from jxc_mryt order by id desc");
}

QString readNotePad() {
  return lookupValue("select bq_txt from jxc_bqjl order by id");
}

void saveNotePad(const QString& formatted, bool empty) {
  const QString text = empty ? QStringLiteral("无内容") : formatted;
  Transaction transaction(accountDb());
  const auto row = lookupNumber("select top 1 id from jxc_bqjl order by id");
  if (row == 0) {
    insertRow("jxc_bqjl", {{"bq_txt", text}, {"bq_flag", u"1"}});
  } else {
    updateRow("jxc_bqjl", static_cast<std::int64_t>(row), {{"bq_txt", text}});
  }
  transaction.commit();
}

}  // namespace jxc
