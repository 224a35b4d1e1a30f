#include "engine/sqlite/date_functions.h"

#include "engine/date_text.h"
#include "engine/function_clock.h"
#include "engine/sqlite/function_arguments.h"
#include "engine/sqlite/functions.h"

#include <cmath>
#include <string>

namespace jxc::sqlite {

namespace date_functions_detail {

void dateDiff(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1]) || isNull(v[2])) return;
  const auto from = parseMoment(textOf(v[1])), to = parseMoment(textOf(v[2]));
  if (!from || !to) return;
  if (const auto found = momentDifference(lowerCaseText(textOf(v[0])), *from, *to))
    sqlite3_result_int64(context, *found);
}

void dateAdd(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1]) || isNull(v[2])) return;
  auto moment = parseMoment(textOf(v[2]));
  const double count = sqlite3_value_double(v[1]);
  if (!moment || !(std::fabs(count) < 1e9)) return;
  if (addToMoment(lowerCaseText(textOf(v[0])), std::llround(count), *moment)) give(context, momentText(*moment));
}

void datePart(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1])) return;
  const auto moment = parseMoment(textOf(v[1]));
  if (!moment) return;
  if (const auto found = momentPart(lowerCaseText(textOf(v[0])), *moment)) sqlite3_result_int64(context, *found);
}

void today(sqlite3_context* context, int, sqlite3_value**) {
  give(context, clockText(jet::Moment::Date));
}
void timeOfDay(sqlite3_context* context, int, sqlite3_value**) {
  give(context, clockText(jet::Moment::Time));
}
void stamp(sqlite3_context* context, int, sqlite3_value**) {
  give(context, clockText(jet::Moment::Stamp));
}

void format(sqlite3_context* context, int, sqlite3_value** v) {
  if (!isNull(v[0]) && !isNull(v[1])) give(context, formatText(textOf(v[0]), textOf(v[1])));
}

}  // namespace date_functions_detail

void registerDateFunctions(sqlite3* connection) {
  using namespace date_functions_detail;
  const auto add = [&](const char* name, int arguments, void (*run)(sqlite3_context*, int, sqlite3_value**),
                       bool same) {
    const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (same ? SQLITE_DETERMINISTIC : 0);
    sqlite3_create_function_v2(connection, name, arguments, flags, nullptr, run, nullptr, nullptr, nullptr);
  };
  add("jxc_datediff", 3, dateDiff, true);
  add("jxc_dateadd", 3, dateAdd, true);
  add("jxc_datepart", 2, datePart, true);
  add("jxc_format", 2, format, true);
  add("jxc_date", 0, today, false);
  add("jxc_time", 0, timeOfDay, false);
  add("jxc_now", 0, stamp, false);
}

}  // namespace jxc::sqlite
