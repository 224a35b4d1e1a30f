// 报价与赠品屏幕: quoted by keys for a partner who is chosen, changed and deleted; gift items and their receipt.
#include "screens/harness/trading_test.h"

namespace jxc::test::quotations_screen_test {

class QuotationsScreenTest : public TradingScreenTest {
 protected:
  QuotationsScreenTest() { addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = u"6900000000017"_qs}); }
  static QString shown(ui::Screen& s, const char* list, std::initializer_list<std::string_view> columns) {
    s.grid(list).waitLoaded();
    return textsOf(s.grid(list).rows(), columns).join(u" | "_qs);
  }
};

TEST_F(QuotationsScreenTest, APriceIsPromisedChangedAndTakenBack) {
  const QString customer = lookupValue("select top 1 kh_sn from jxc_khxx order by id");
  open("F_Bjgl", [&](ui::Screen& s) {
    press(s, "F3", "F_Bjgl_Add", [&](ui::Screen& add) {
      add.grid("gridGoods").waitLoaded();
      expectScreen("F_Bjgl_Sele", [&](ui::Screen& price) {
        EXPECT_EQ(price.field("tdj").number(), 20);  // the preset one
        type(price, "tdj", u"0");
        press(price, "F5", u"报价必须大于0！"_qs);
        type(price, "tdj", u"18.5");
        press(price, "F5");
      });
      enter(add, "tkey", u"6900000000017");
      EXPECT_EQ(shown(add, "gridStaging", {"g_sn", "ts_dj"}), "10000001 18.5");
      press(add, "F5", u"客户名称必须填写！"_qs);
      add.field("tKh").setPicked({u"普通客户"_qs, customer});
      type(add, "dateBj", u"2021-02-30");  // no day: nothing is written
      press(add, "F5", u"报价日期：日期格式不正确，请输入年-月-日，如 2026-05-01"_qs);
      type(add, "dateBj", u"");
      press(add, "F5", u"报价日期必须填写！"_qs);
      EXPECT_TRUE(add.field("dateBj").hasFocus());
      type(add, "dateBj", u"2021-05-03");
      press(add, "F5");
    });
    EXPECT_EQ(shown(s, "gridKh", {"rq", "g_sn", "bj"}), "2021-05-03 10000001 18.5");
    press(s, "F4", "F_Bjgl_Modi", filled({{"tdj", u"17"}, {"tnote", u"会员日"}}));
    EXPECT_EQ(shown(s, "gridKh", {"bj", "note"}), "17 会员日");
    press(s, "F6", "F_Bjgl_Cx", filled({{"tnote", u"没有"}}));
    EXPECT_EQ(shown(s, "gridKh", {"bj"}), "");
    press(s, "F6", "F_Bjgl_Cx", filled({{"tnote", u"会员"}}));
    EXPECT_EQ(shown(s, "gridKh", {"bj"}), "17");
    press(s, "Ctrl+D", u"您确定要删除该客户报价信息吗！"_qs, Answer::Yes);
    EXPECT_EQ(shown(s, "gridKh", {"bj"}), "");
  });
}

TEST_F(QuotationsScreenTest, GiftItemsComeInAndTheirMovementsAreShown) {
  open("F_Zpgl2", [&](ui::Screen& s) {
    press(s, "F3", "F_Zpgl2_Add", [&](ui::Screen& add) {
      press(add, "F5", u"赠品编号必须填写！"_qs);
      type(add, "tsn", u"Z1");
      type(add, "tname", u"眼镜盒");
      press(add, "F5");
    });
    s.grid("gridZp").waitLoaded();
    press(s, "F6", "F_Zpgl2_Jh", filled({{"tsl", u"12"}}));
    EXPECT_EQ(shown(s, "gridZp", {"zp_sn", "zp_sl"}), "Z1 12");
    press(s, "F7");
    EXPECT_EQ(shown(s, "gridBd", {"lx", "sl"}), "赠品进货 12");
  });
  execSql("update jxc_goods set g_iszp=1,g_sy=0,g_zpjf=0");
  open("F_Zpgl", [&](ui::Screen& s) {
    s.grid("gridSy").waitLoaded();
    check(s, "rWsy", true);
    s.grid("gridWsy").waitLoaded();
    press(s, "F4", "F_Zpgl_Sele", filled({{"tjf", u"150"}}));
    EXPECT_EQ(shown(s, "gridWsy", {"g_sn"}), "");
    check(s, "rSy", true);
    EXPECT_EQ(shown(s, "gridSy", {"g_sn", "g_zpjf"}), "10000001 150");
    press(s, "Ctrl+D");
    EXPECT_EQ(shown(s, "gridSy", {"g_sn"}), "");
  });
}

}  // namespace jxc::test::quotations_screen_test
