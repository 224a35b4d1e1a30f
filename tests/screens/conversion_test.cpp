// Split and bundle through the window: the wizard by keys, back and forth, and what it leaves in the books.
#include "harness/invariants.h"
#include "screens/harness/trading_test.h"
#include "stock/ledger.h"

#include <QLabel>

namespace jxc::test::conversion_screen_test {

class ConversionScreenTest : public TradingScreenTest {
 protected:
  ConversionScreenTest() {
    setParameter("cs_kc", 0);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    addGoods({.sn = u"10000001"_qs, .name = u"配镜套餐"_qs, .barcode = u"690001"_qs, .cost = 120, .stock = 5});
    addGoods({.sn = u"10000002"_qs, .name = u"板材镜架"_qs, .barcode = u"690002"_qs, .cost = 80, .stock = 2});
    addGoods({.sn = u"10000003"_qs, .name = u"镜盒"_qs, .barcode = u"690003"_qs, .cost = 10});
    // The ledger tells the same as the balances.
    execSql(
        "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_dj,gl_je,gl_zje) select "
        "'qc','QC','2021-05-01',g_sn,ck_sn,kc_sl,kc_cbj,kc_sl*kc_cbj,kc_sl*kc_cbj from jxc_kcsp where kc_sl>0");
  }
  static bool at(ui::Screen& s, int step) {
    const char* const areas[] = {"pStep1", "pStep2", "pStep3"};
    for (int i = 0; i < 3; ++i)
      if (s.findChild<QWidget*>(QString::fromLatin1(areas[i]))->isVisible() != (i + 1 == step)) return false;
    return true;
  }
  static QString shown(ui::Screen& s, std::string_view field) { return s.field(field).text(); }
};

// A set is taken apart: chosen from the list, a frame scanned, a case put into the branch, looked at, saved, audited.
TEST_F(ConversionScreenTest, ASetIsTakenApartInThreeSteps) {
  open("F_Cfkb", [&](ui::Screen& s) {
    EXPECT_TRUE(at(s, 1));
    EXPECT_EQ(shown(s, "jsn"), "CF21050310001");
    press(s, "F5", u"被拆分商品不存在，请选择被拆分商品！"_qs);
    press(s, "F2", "F_Cfkb_Goods", [&](ui::Screen& list) {
      EXPECT_EQ(list.grid("gridGoods").rowCount(), 2);  // what is there to be taken apart
      enter(list, "tkey", u"套餐");
    });
    type(s, "tslcf", u"6");
    EXPECT_EQ(s.field("tkcsl").number(), 5);
    EXPECT_EQ(s.field("cfzje").number(), 720);
    press(s, "Return", u"拆分数量不允许大于库存数量！"_qs);
    EXPECT_TRUE(at(s, 1));
    enter(s, "tslcf", u"2");
    EXPECT_TRUE(at(s, 2));
    scan(s, u"690002");
    scan(s, u"690002");
    ASSERT_EQ(s.grid("gridLines").rowCount(), 1);
    edit(s, "gridLines", 0, "cf_dj", u"90");
    press(s, "F2", "F_Cfkb_Add", [&](ui::Screen& pick) {
      choose(pick, "comCk", u"分店"_qs);
      type(pick, "tkey", u"镜盒");
      press(pick, "Return", "F_Cfkb_Sele", filled({{"tsl", u"2"}, {"tdj", u"25"}}));
      EXPECT_TRUE(pick.field("comCk").isReadOnly());
      press(pick, "F5");
    });
    EXPECT_EQ(rows("select g_sn,cf_sl,cf_zje,ck_sn from jxc_cfsp where cf_sl>0 order by id"),
              "10000002 2 180 100001 | 10000003 2 50 100002");
    EXPECT_EQ(s.field("tspje").number(), 230);
    EXPECT_EQ(s.field("tce").number(), -10);
    press(s, "F5");
    EXPECT_TRUE(at(s, 3));
    EXPECT_EQ(s.grid("gridPreview").rowCount(), 3);
    EXPECT_EQ(s.grid("gridPreview").rows()[0].number("tmp_kc"), 3);
    press(s, "Ctrl+Tab");  // from the button beside the panels
    EXPECT_EQ(s.findChild<QTabWidget*>()->currentIndex(), 1);
    EXPECT_FALSE(s.command("btnOK").isVisible() || s.command("btnBack").isVisible());
    press(s, "Ctrl+Shift+Tab");
    EXPECT_TRUE(at(s, 3));

    // Back to both steps, and on again: nothing was lost.
    press(s, "F6");
    press(s, "F6");
    EXPECT_TRUE(at(s, 1));
    EXPECT_EQ(shown(s, "tgname"), "配镜套餐");
    press(s, "F5");
    press(s, "F5");
    EXPECT_TRUE(at(s, 3));
    type(s, "tnote", u"拆套零卖");
    save(s, kSaveSplit);
    EXPECT_TRUE(at(s, 1));
    EXPECT_EQ(shown(s, "tgname"), "");
    EXPECT_EQ(rows("select g_sn,cf_sl,cf_cbj,cf_note from jxc_cfd"), "10000001 2 120 拆套零卖");

    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    EXPECT_EQ(s.grid("gridWaitingLines").rowCount(), 2);
    press(s, "F3", "F_Cfkb_Sele", [&](ui::Screen& line) {
      choose(line, "comCk", u"分店"_qs);
      press(line, "F5");
    });
    EXPECT_EQ(rows("select ck_sn from jxc_cfsp order by id"), "100002 | 100002");
    press(s, "F9", "F_Yltx", [&](ui::Screen& preview) { EXPECT_GT(preview.grids().front()->rowCount(), 0); });
    press(s, "F6", u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs, Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(rows("select g_sn,ck_sn,kc_sl from jxc_kcsp where g_sn<>'00000000' order by g_sn,ck_sn"),
            "10000001 100001 3 | 10000002 100001 2 | 10000002 100002 2 | 10000003 100002 2");
  EXPECT_EQ(rows("select fy_je from jxc_yyfy"), "-10");
}

// Turning round loses nothing, neither does Esc; both waiting lists stand in one.
TEST_F(ConversionScreenTest, BothDirectionsKeepWhatWasBegun) {
  open("F_Cfkb", [&](ui::Screen& s) {
    scan(s, u"690001");
    EXPECT_EQ(shown(s, "tgname"), "配镜套餐");
    press(s, "F5");
    scan(s, u"690002");
    choose(s, "comFx", u"商品捆绑"_qs);
    EXPECT_TRUE(at(s, 1));
    EXPECT_EQ(shown(s, "jsn"), "KB21050310001");
    EXPECT_EQ(shown(s, "tgname"), "");
    scan(s, u"690003");
    type(s, "tslcf", u"3");
    press(s, "F5");
    expectNotice(u"被捆绑商品的数量不能大于库存数量！"_qs);
    scan(s, u"690002");
    scan(s, u"690002");
    scan(s, u"690002");
    EXPECT_EQ(s.field("tspje").number(), 160);
    EXPECT_EQ(s.field("tdwcb").number(), 53.333333);
    expectNotice(u"商品不能由自己捆绑而成！\r\n\r\n条码：690003\r\n\r\n商品：镜盒"_qs);
    scan(s, u"690003");
    EXPECT_FALSE(cellOpens(s, "gridLines", 0, "cf_dj"));  // it costs what the warehouse has it at
    press(s, "F5");
    save(s, kSaveBundle);

    choose(s, "comFx", u"商品拆分"_qs);
    EXPECT_EQ(shown(s, "tgname"), "配镜套餐");
    EXPECT_EQ(s.grid("gridLines").rowCount(), 1);
    press(s, "F5");
    press(s, "Esc", kUnsaved, Answer::Cancel);
    EXPECT_TRUE(at(s, 2));
    press(s, "F5");
    expectQuestion(kUnsaved, Answer::Yes);
    press(s, "Esc", kSaveSplit, Answer::Yes);
  });
  EXPECT_EQ(rows("select g_sn,kb_sl,kb_cbj from jxc_kbd"), "10000003 3 53.333333");
  EXPECT_EQ(rows("select g_sn,cf_sl from jxc_cfd"), "10000001 1");

  open("F_Cfkb", [&](ui::Screen& s) {
    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 2);
    press(s, "F7", kAuditAll, Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
    s.findChild<QTabWidget*>()->setCurrentIndex(0);
    scan(s, u"690002");
    leaveDraft(s);
  });
  EXPECT_EQ(rows("select count(*) from jxc_cfsp where gl_djh not in (select gl_djh from jxc_cfd)"), "0");
  EXPECT_EQ(lookupNumber("select kc_sl from jxc_kcsp where g_sn='10000003' and ck_sn='100001'"), 3);
}

}  // namespace jxc::test::conversion_screen_test
