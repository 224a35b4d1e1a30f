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

/// A whole month, `months` before this one.
Period month(int months) {
  const QDate first = QDate(today().year(), today().month(), 1).addMonths(-months);
  return between(first, first.addMonths(1).addDays(-1));
}

constexpr PeriodChoice kChoices[] = {
    {"今天(&T)", [] { return daysAgo(0); }},
    {"昨天(&U)", [] { return daysAgo(1); }},
    {"前天(&V)", [] { return daysAgo(2); }},
    {"最近七天(&W)", [] { return between(today().addDays(-6), today()); }},
    {"最近一月(&X)", [] { return between(today().addMonths(-1), today()); }},
    {"本月(&Y)", [] { return month(0); }},
    {"上月(&Z)", [] { return month(1); }},
    {"所有时间(&A)",
     [] {
       return Period{QStringLiteral("2000-01-01"), QStringLiteral("9999-12-31")};
     }},
};

}  // namespace periods_detail

std::span<const PeriodChoice> periodChoices() {
  return periods_detail::kChoices;
}

}  // namespace jxc
