// 期初建账屏幕: goods one after the other by keys, a class, corrected and taken out; cost only for who may see it.
#include "screens/harness/trading_test.h"

namespace jxc::test::opening_stock_screen_test {

class OpeningStockScreenTest : public TradingScreenTest {
 protected:
  OpeningStockScreenTest() {
    addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = u"6900000000017"_qs, .cost = 40});
    addGoods({.sn = u"10000002"_qs, .name = u"钛架"_qs, .barcode = u"6900000000024"_qs, .cost = 120});
  }
  static QString shown(ui::Screen& s) {
    s.grid("gridKc").waitLoaded();
    return textsOf(s.grid("gridKc").rows(), {"g_sn", "kc_sl", "kc_cbj", "kczje"}).join(u" | "_qs);
  }
};

TEST_F(OpeningStockScreenTest, TheFirstDayByKeys) {
  open("F_Qcjz", [&](ui::Screen& s) {
    EXPECT_EQ(shown(s), "");
    press(s, "F2", "F_Qcjz_Add", [&](ui::Screen& add) {
      enter(add, "tkey", u"6900000000024");
      add.grid("gridGoods").waitLoaded();
      enter(add, "tsl", u"3");
      enter(add, "tcbj", u"110.5");
      press(add, "Return");  // on the main button: saved, and on to the next goods
      EXPECT_EQ(add.said(), "已建账：10000002 钛架，数量 3");
      add.grid("gridGoods").waitLoaded();
      EXPECT_EQ(textsOf(add.grid("gridGoods").rows(), {"g_sn"}), QStringList("10000001"));
      press(add, "Esc");
    });
    EXPECT_EQ(shown(s), "10000002 3 110.5 331.5");
    press(s, "F6", "F_Qcjz_Pl", [&](ui::Screen& all) {
      type(all, "tsl", u"5");
      press(all, "F5",
            u"成功建账：0  个商品。"_qs);  // of the class that the tree stands on: all, which has none itself
    });
    press(s, "F3", "F_Qcjz_Add", [&](ui::Screen& add) {
      EXPECT_EQ(add.field("tname").text(), "10000002 钛架");
      EXPECT_EQ(add.field("tsl").number(), 3);
      type(add, "tsl", u"4");
      press(add, "F5");
    });
    EXPECT_EQ(shown(s), "10000002 4 110.5 442");
    press(s, "Ctrl+D", "F_Qcjz_Dele", [&](ui::Screen& out) {
      press(out, "F5");
      EXPECT_EQ(out.field("tResult").text(), "成功删除：1  个商品信息。");
      press(out, "Esc");
    });
    EXPECT_EQ(shown(s), "");
  });
}

TEST_F(OpeningStockScreenTest, WithoutTheRightCostIsTheGoodsOwnAndNowhereSeen) {
  setAllRights("100009", QString(60, u'1'));
  takeRight("100009", "qtcz", 7);
  becomeOperator(u"店员"_qs, "9", "100009");
  open("F_Qcjz", [&](ui::Screen& s) {
    press(s, "F2", "F_Qcjz_Add", [&](ui::Screen& add) {
      EXPECT_FALSE(add.field("tcbj").isVisible());
      EXPECT_FALSE(add.grid("gridGoods").isColumnAllowed("g_jj"));
      enter(add, "tkey", u"10000001");
      add.grid("gridGoods").waitLoaded();
      enter(add, "tsl", u"2");
      press(add, "F5");
      press(add, "Esc");
    });
    EXPECT_FALSE(s.grid("gridKc").isColumnAllowed("kc_cbj"));
    EXPECT_FALSE(s.grid("gridKc").isColumnAllowed("kczje"));
  });
  EXPECT_EQ(lookupNumber("select kc_cbj from jxc_kcsp where g_sn='10000001'"), 40);
}

}  // namespace jxc::test::opening_stock_screen_test
