#include "core/habits.h"

#include "core/session.h"
#include "core/station_options.h"
#include "core/text.h"

namespace jxc {
namespace habits_detail {

QString nameOf(const Habit& habit) {
  return words(habit.name) + u'/' + session().a_sn;
}

}  // namespace habits_detail

bool isHabit(const Habit& habit) {
  return stationOption(habits_detail::nameOf(habit));
}

void setHabit(const Habit& habit, bool on) {
  setStationOption(habits_detail::nameOf(habit), on);
}

}  // namespace jxc
