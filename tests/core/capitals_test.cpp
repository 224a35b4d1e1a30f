#include "core/capitals.h"

#include <gtest/gtest.h>

namespace jxc {

TEST(Capitals, AmountsOnADocument) {
  EXPECT_EQ(moneyInCapitals(u"10"), u"壹拾元整");
  EXPECT_EQ(moneyInCapitals(u"100.05"), u"壹佰元零伍分");
  EXPECT_EQ(moneyInCapitals(u"-1.10"), u"负壹元壹角");
  EXPECT_EQ(moneyInCapitals(u"99.9"), u"玖拾玖元玖角");
  EXPECT_EQ(moneyInCapitals(u"1680.00"), u"壹仟陆佰捌拾元整");
  EXPECT_EQ(moneyInCapitals(u"0012."), u"壹拾贰元整");
  // Zeros within and between sections.
  EXPECT_EQ(moneyInCapitals(u"1004"), u"壹仟零肆元整");
  EXPECT_EQ(moneyInCapitals(u"10000"), u"壹万元整");
  EXPECT_EQ(moneyInCapitals(u"10050"), u"壹万零伍拾元整");
  EXPECT_EQ(moneyInCapitals(u"200000"), u"贰拾万元整");
  EXPECT_EQ(moneyInCapitals(u"3050000.60"), u"叁佰零伍万元陆角");
  EXPECT_EQ(moneyInCapitals(u"100000000"), u"壹亿元整");  // no 万 where its whole section is zero
  EXPECT_EQ(moneyInCapitals(u"120000000008"), u"壹仟贰佰亿零捌元整");
  EXPECT_EQ(moneyInCapitals(u"0.5"), u"伍角");
  EXPECT_EQ(moneyInCapitals(u".57"), u"伍角柒分");
  EXPECT_EQ(moneyInCapitals(u"0.05"), u"零伍分");
  for (const QStringView nothing : {u"0", u"0.00", u"00000", u".", u"", u"-0.00"})
    EXPECT_EQ(moneyInCapitals(nothing), u"零元整");
}

TEST(Capitals, FenAreCutAndOtherTextsRefused) {
  EXPECT_EQ(moneyInCapitals(u"12.345"), u"壹拾贰元叁角肆分");
  EXPECT_EQ(moneyInCapitals(u"9.999"), u"玖元玖角玖分");
  for (const QStringView text : {u"1,000", u"￥5", u"1e3", u"--1", u"1.2.3", u"１２", u"5-"})
    EXPECT_EQ(moneyInCapitals(text), QString());
  EXPECT_EQ(moneyInCapitals(QString(28, u'1')).left(1), u"壹");
  EXPECT_EQ(moneyInCapitals(QString(29, u'1')), QString());  // beyond the last named unit
}

}  // namespace jxc
