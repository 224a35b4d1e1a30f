// Which days an enquiry is compared with; what becomes of its rows is tested with the screen.
#include "core/comparison.h"

#include <gtest/gtest.h>

namespace jxc {

TEST(ComparisonTest, APeriodIsComparedWithTheOneBeforeOrTheSameDaysOfLastYear) {
  using enum CompareWith;
  struct Case {
    CompareWith with;
    const char *from, *to, *earlierFrom, *earlierTo;
  };
  const Case cases[] = {
      {PeriodBefore, "2021-05-01", "2021-05-03", "2021-04-01", "2021-04-03"},  // the 1st to today
      {PeriodBefore, "2021-03-01", "2021-03-31", "2021-02-01", "2021-02-28"},
      {PeriodBefore, "2021-02-01", "2021-02-28", "2021-01-01", "2021-01-31"},
      {PeriodBefore, "2021-03-01", "2021-03-30", "2021-02-01", "2021-02-28"},
      {PeriodBefore, "2021-01-01", "2021-12-31", "2020-01-01", "2020-12-31"},
      {PeriodBefore, "2021-05-01", "2021-05-01", "2021-04-30", "2021-04-30"},  // a day, also the first of a month
      {PeriodBefore, "2021-05-03", "2021-05-09", "2021-04-26", "2021-05-02"},
      {PeriodBefore, "2021-01", "2021-03", "2020-10", "2020-12"},
      {LastYear, "2024-02-01", "2024-02-29", "2023-02-01", "2023-02-28"},
      {LastYear, "2025-02-01", "2025-02-28", "2024-02-01", "2024-02-29"},
      {LastYear, "2021-05-03", "2021-05-09", "2020-05-03", "2020-05-09"},
      {LastYear, "2021-05", "2021-05", "2020-05", "2020-05"},
  };
  for (const Case& each : cases) {
    const auto earlier = earlierPeriod(each.with, {QString::fromLatin1(each.from), QString::fromLatin1(each.to)});
    ASSERT_TRUE(earlier) << each.from;
    EXPECT_EQ(earlier->period.from, each.earlierFrom);
    EXPECT_EQ(earlier->period.to, each.earlierTo);
  }
  for (const Period& none : {allTime(), Period{u"2021-05-03"_qs, u"2021-05-01"_qs}, Period{}, Period{u"x"_qs, u"y"_qs}})
    EXPECT_FALSE(earlierPeriod(LastYear, none)) << none.from.toStdString();
  EXPECT_FALSE(earlierPeriod(Nothing, {u"2021-05-01"_qs, u"2021-05-03"_qs}));
}

TEST(ComparisonTest, ADayStandsBesideItsDayAndTheThirtyFirstBesideTheLastOfAShorterMonth) {
  using enum CompareWith;
  const auto forward = [](CompareWith with, const char* from, const char* to, const char* time) {
    return earlierPeriod(with, {QString::fromLatin1(from), QString::fromLatin1(to)})
        ->forward(QString::fromLatin1(time));
  };
  EXPECT_EQ(forward(PeriodBefore, "2021-02-01", "2021-02-28", "2021-01-31"), "2021-02-28");
  EXPECT_EQ(forward(PeriodBefore, "2021-05-03", "2021-05-09", "2021-04-26"), "2021-05-03");
  EXPECT_EQ(forward(LastYear, "2025-02-01", "2025-02-28", "2024-02-29"), "2025-02-28");
  EXPECT_EQ(forward(LastYear, "2021-05", "2021-06", "2020-06"), "2021-06");
}

}  // namespace jxc
