#include "core/pinyin.h"

#include <gtest/gtest.h>

namespace jxc {

TEST(Pinyin, NamesOfTheShopAreFoundByTheirInitials) {
  EXPECT_EQ(makeJm(u"默认员工"), u"MRYG");
  EXPECT_EQ(makeJm(u"优惠商品"), u"YHSP");
  EXPECT_EQ(makeJm(u"所有类别"), u"SYLB");
  EXPECT_EQ(makeJm(u"镜片"), u"JP");
  EXPECT_EQ(makeJm(u"绿色太阳镜"), u"LSTYJ");  // ü is found under its plain letter
  EXPECT_EQ(makeJm(u"一龥"), u"YY");           // both ends of the range
}

TEST(Pinyin, WhatIsNoChineseCharacterStaysInUpperCase) {
  EXPECT_EQ(makeJm(u"ray-ban 3025 黑/金"), u"RAY-BAN 3025 H/J");
  EXPECT_EQ(makeJm(u"（１．５６）镜片，ａ"), u"（１．５６）JP，Ａ");
  EXPECT_EQ(makeJm(u"㐀\U00020000龦"), u"㐀\U00020000龦");  // outside the range on every side
  EXPECT_EQ(makeJm(u""), u"");
}

}  // namespace jxc
