#include "core/text.h"

#include "core/clock.h"
#include "core/session.h"
#include "harness/qt_printers.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace jxc {

TEST(Text, TypedMarksBecomeFullWidthAndKeywordsKeepArithmetic) {
  EXPECT_EQ(sanitizeText(u"O'Neil (2)"), QStringLiteral("O‘Neil （2）"));
  EXPECT_EQ(sanitizeKeyword(u"O'Neil (2)"), QStringLiteral("O‘Neil (2)"));
  const QString every = QStringLiteral("'?%!$&,()+-/@~\"^`*#.中");
  EXPECT_EQ(sanitizeText(every), QStringLiteral("‘？％！￥＆，（）＋－／＠～“*#.中"));
  EXPECT_EQ(sanitizeKeyword(every), QStringLiteral("‘？％！￥＆，()+-/＠～“*#.中"));
  EXPECT_EQ(sanitizeText(sanitizeText(every)), sanitizeText(every));
}

TEST(Text, SwitchesAndPriceGrades) {
  for (const auto* off : {u"", u"0", u"False"})
    EXPECT_FALSE(strIsTrue(off));
  for (const auto* on : {u"1", u"True", u"2"})
    EXPECT_TRUE(strIsTrue(on));

  session() = Session{};
  session().canSeeCost = true;
  EXPECT_TRUE(priceGradeAllowed(u"1", u"cj"));
  EXPECT_FALSE(priceGradeAllowed(u"1", u"xs"));
  EXPECT_FALSE(priceGradeAllowed(u"1", u"all"));
  session().canSeePrice = true;
  EXPECT_TRUE(priceGradeAllowed(u"1", u"all"));
  EXPECT_FALSE(priceGradeAllowed(u"0", u"all")) << "a grade that is switched off is nobody's to see";
  session() = Session{};
}

TEST(Text, PositionsCountFromOneAndMatchesDoNotOverlap) {
  EXPECT_EQ(nthPos(u"100001,100002,100003,", u",", 1), 7);
  EXPECT_EQ(nthPos(u"100001,100002,100003,", u",", 3), 21);
  EXPECT_EQ(nthPos(u"100001,100002,100003,", u",", 4), 0);
  EXPECT_EQ(nthPos(u"aaaa", u"aa", 2), 3);
  EXPECT_EQ(nthPos(u"aaaa", u"", 1), 0);
}

TEST(Text, WeekAndClockGoByTheFormsOfTheDatabase) {
  clock::setFixed(QDateTime(QDate(2021, 5, 2), QTime(8, 5, 9)));
  EXPECT_EQ(weekdayName(), QStringLiteral("星期日 "));
  EXPECT_EQ(clock::stamp(), QStringLiteral("2021-05-02 08:05:09"));
  EXPECT_EQ(clock::month(), QStringLiteral("2021-05"));
  clock::setFixed(QDateTime(QDate(2021, 5, 8), QTime(23, 59, 59)));
  EXPECT_EQ(weekdayName(), QStringLiteral("星期六 "));
  EXPECT_EQ(clock::timeOfDay(), QStringLiteral("23:59:59"));
  clock::setFixed(std::nullopt);
}

}  // namespace jxc
