// 期初建账屏幕: goods one after the other by keys, a class, corrected and taken out; cost only for who may see it.
#include "platform/sheet/sheet_writer.h"
#include "screens/harness/trading_test.h"
#include "stock/screens/line_import_screen.h"

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
    press(s, "F3", "F_Qcjz_Modi", [&](ui::Screen& add) {
      EXPECT_EQ(add.field("tname").text(), "10000002 钛架");
      EXPECT_EQ(add.field("tsl").number(), 3);
      picture(add, u"F_Qcjz_Modi"_qs);
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

TEST_F(OpeningStockScreenTest, AFileIsShownRowByRowBeforeItComesIn) {
  addGoods({.sn = u"10000003"_qs, .name = u"清晰非球面加硬加膜防蓝光变色树脂镜片1.67"_qs, .cost = 35});
  Sheet sheet;
  for (const char* caption : {"商品条码", "商品编号", "数量", "成本价"})
    sheet.columns.push_back({.caption = QString::fromUtf8(caption)});
  sheet.rows = heldRows({{u"6900000000017"_qs, Value(), u"12"_qs, u"38.5"_qs},
                         {Value(), u"10000002"_qs, u"3"_qs, Value()},
                         {Value(), u"10000003"_qs, u"一盒"_qs, u"35"_qs},
                         {Value(), u"10000002"_qs, u"4"_qs, u"110"_qs},
                         {Value(), u"19999999"_qs, u"-1"_qs, u"贵"_qs}});
  const QString path = file(u"期初.xlsx"_qs);
  writeSheet(path, sheet);
  open("F_Qcjz", [&](ui::Screen& s) {
    press(s, "F7", "F_Qcjz_Import", [&](ui::Screen& import) {
      dynamic_cast<LineImportScreen&>(import).openFile(path);
      EXPECT_EQ(textsOf(import.grid("gridLines").rows(), {"status"}).join(u" | "_qs),
                "可顺利导入 | 可顺利导入 | 数量不是数字 | 商品重复 | 商品不存在；数量不能为负数；成本价不正确");
      picture(import, u"F_Qcjz_Import"_qs);
      press(import, "F5", u"导入完毕\r\n\r\n共5条记录\r\n\r\n成功导入2条\r\n\r\n失败3条"_qs);
    });
    EXPECT_EQ(shown(s), "10000001 12 38.5 462 | 10000002 3 120 360");
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
