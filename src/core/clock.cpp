#include "core/clock.h"

#include "engine/function_clock.h"

namespace jxc::clock_detail {

// Forms are given at each place of use, never taken from the machine's settings: dates are kept and compared as text,
// and a workstation set up for another country would otherwise sort its documents into other days.
inline constexpr const char16_t* dateForm = u"yyyy-MM-dd";
inline constexpr const char16_t* timeForm = u"HH:mm:ss";
inline constexpr const char16_t* stampForm = u"yyyy-MM-dd HH:mm:ss";
inline constexpr const char16_t* monthForm = u"yyyy-MM";

std::optional<QDateTime>& fixedMoment() {
  static std::optional<QDateTime> moment;
  return moment;
}

QString formatted(const char16_t* form) {
  return clock::now().toString(QString::fromUtf16(form));
}

}  // namespace jxc::clock_detail

namespace jxc::clock {

QDateTime now() {
  return clock_detail::fixedMoment().value_or(QDateTime::currentDateTime());
}

QString today() {
  return clock_detail::formatted(clock_detail::dateForm);
}

QString timeOfDay() {
  return clock_detail::formatted(clock_detail::timeForm);
}

QString stamp() {
  return clock_detail::formatted(clock_detail::stampForm);
}

QString month() {
  return clock_detail::formatted(clock_detail::monthForm);
}

void setFixed(std::optional<QDateTime> moment) {
  clock_detail::fixedMoment() = std::move(moment);
  // date() and now() of a statement stand still with it.
  setFunctionClock(clock_detail::fixedMoment() ? +[] { return stamp().toStdString(); } : nullptr);
}

}  // namespace jxc::clock
