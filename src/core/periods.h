// 时间段: named periods that enquiries offer, from today's point of view.
#pragma once

#include <QString>

#include <span>
#include <string_view>

namespace jxc {

/// Two days, yyyy-MM-dd, both included.
struct Period {
  QString from, to;
  bool operator==(const Period&) const = default;
};

struct PeriodChoice {
  std::string_view caption;  // with its access key: "今天(&T)"
  Period (*period)();
};

/// From today to all time, in the order of the menu. All time is 2000-01-01 to 9999-12-31.
std::span<const PeriodChoice> periodChoices();

/// The whole month that many months before this one: 0 is this month.
Period monthAgo(int months);
Period today();
/// The first day of this month to today: what is asked for most.
Period monthToToday();
Period yearToToday();
/// All time.
Period allTime();

}  // namespace jxc
