#include "core/periods.h"

#include "core/clock.h"

#include <QDate>

namespace jxc {
namespace periods_detail {

Period between(const QDate& from, const QDate& to) {
  const QString form = QStringLiteral("yyyy-MM-dd");
  return {from.toString(form), to.toString(form)};
}

QDate today() {
  return clock::now().date();
}

Period daysAgo(int days) {
  return between(today().addDays(-days), today().addDays(-days));
}

constexpr PeriodChoice kChoices[] = {
    {"今天(&T)", jxc::today},
    {"昨天(&U)", [] { return daysAgo(1); }},
    {"前天(&V)", [] { return daysAgo(2); }},
    {"最近七天(&W)", [] { return between(today().addDays(-6), today()); }},
    {"最近一月(&X)", [] { return between(today().addMonths(-1), today()); }},
    {"本月(&Y)", [] { return monthAgo(0); }},
    {"上月(&Z)", [] { return monthAgo(1); }},
    {"本年(&N)", [] { return between(QDate(today().year(), 1, 1), QDate(today().year(), 12, 31)); }},
    {"去年(&P)", [] { return between(QDate(today().year() - 1, 1, 1), QDate(today().year() - 1, 12, 31)); }},
    {"所有时间(&A)", allTime},
};

}  // namespace periods_detail

Period monthAgo(int months) {
  const QDate day = periods_detail::today();
  const QDate first = QDate(day.year(), day.month(), 1).addMonths(-months);
  return periods_detail::between(first, first.addMonths(1).addDays(-1));
}

Period today() {
  return periods_detail::daysAgo(0);
}

Period monthToToday() {
  return {monthAgo(0).from, today().to};
}

Period yearToToday() {
  const QDate day = periods_detail::today();
  return periods_detail::between(QDate(day.year(), 1, 1), day);
}

Period allTime() {
  return {QStringLiteral("2000-01-01"), QStringLiteral("9999-12-31")};
}

std::span<const PeriodChoice> periodChoices() {
  return periods_detail::kChoices;
}

}  // namespace jxc
