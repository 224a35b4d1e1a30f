// 启动提醒: what the program has to say when an operator begins: the daily tip, the reminders that are due.
#pragma once

#include <QString>

#include <cstdint>

namespace jxc {

/// Whether the daily tip, or the list of reminders, is shown at every start (`jxc_txdisp`).
bool showsDailyTip();
bool showsReminderList();
void setShowsDailyTip(bool on);

/// Whether a reminder of this operator, or of all, is due: at program start, today's, of this weekday or this day of
/// the month.
bool hasDueReminders();
/// Marks them as shown. A reminder for every program start is marked too, and comes again all the same.
void markDueReminders();

struct DailyTip {
  std::int64_t id = 0;  // 0: there are no tips
  QString text;
};

/// One tip a day, each in its turn; on the same day the one that was shown last stays. It is marked as the one shown
/// last, with today's date.
DailyTip tipOfTheDay();
/// The one behind or before a tip, around the ends; marked likewise.
DailyTip nextTip(std::int64_t id);
DailyTip previousTip(std::int64_t id);

/// The shop's note pad: one formatted text.
QString readNotePad();
/// An empty note is kept as "无内容".
void saveNotePad(const QString& formatted, bool empty);

}  // namespace jxc
