#include "engine/function_clock.h"

#include <ctime>

namespace jxc {
namespace function_clock_detail {

std::string (*clock)() = nullptr;

std::string now() {
  if (clock) return clock();
  const std::time_t seconds = std::time(nullptr);
  std::tm local{};
  localtime_r(&seconds, &local);
  char buffer[32];
  return {buffer, std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &local)};
}

}  // namespace function_clock_detail

void setFunctionClock(std::string (*now)()) {
  function_clock_detail::clock = now;
}

std::string clockText(jet::Moment moment) {
  const std::string now = function_clock_detail::now();
  if (moment == jet::Moment::Date) return now.substr(0, 10);
  if (moment == jet::Moment::Time) return now.substr(11);
  return now;
}

}  // namespace jxc
