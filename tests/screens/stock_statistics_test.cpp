// 进销存统计 through its window: from a sum to its lines and back, what is done with a line, and who is not asked.
#include "core/statements.h"
#include "harness/waiting_document.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/posting.h"
#include "ui/enquiry_screen.h"

namespace jxc::test::stock_statistics_test {

class StockStatistics : public TradingScreenTest {
 protected:
  StockStatistics() {
    addGoods({.sn = u"A"_qs, .name = u"镜架"_qs, .barcode = u"690"_qs, .cost = 5});
    addGoods({.sn = u"B"_qs, .name = u"镜盒"_qs, .barcode = u"691"_qs, .cost = 1});
    loss_ = waitingDocument(families::loss, u"2021-05-02"_qs, {}, {{u"A"_qs, 2, 5}});
    EXPECT_EQ(checkDj(families::loss, loss_, prompt), AuditOutcome::Audited);
  }
  QString loss_;
};

TEST_F(StockStatistics, ASumLeadsToItsLinesAndALineIsCancelledAndRepaired) {
  open("F_Jxctj", [&](ui::Screen& screen) {
    auto& enquiry = dynamic_cast<ui::EnquiryScreen&>(screen);
    ui::Grid &sums = screen.grid("gridHz"), &lines = screen.grid("gridMx");
    type(screen, "tdate11", u"2021-05-01");
    sums.waitLoaded();
    ASSERT_EQ(sums.rowCount(), 1);
    EXPECT_EQ(sums.footerText("cksl"), "2.00");
    press(screen, "F6", u"取消审核操作只能在“明细表”进行。"_qs);
    click(screen, "btn_Preview", u"取消审核操作只能在“明细表”进行。"_qs);
    press(screen, "F7", u"价格同步作只能在“明细表”进行。"_qs);

    sums.selectRow(0);
    enquiry.follow();
    lines.waitLoaded();
    ASSERT_EQ(&enquiry.shown(), &lines);
    ASSERT_EQ(lines.rowCount(), 1);
    EXPECT_EQ(lines.currentText("dnote"), u"商品报损");
    press(screen, "F7", "F_Jxctj_Tb", [](ui::Screen& repair) {
      EXPECT_EQ(repair.field("tdate1").text(), u"2021-05-02");
      EXPECT_EQ(repair.field("comCk").key(), u"100001");
      press(repair, "Esc");
    });
    press(screen, "F6", u"您的操作将取消当前选中的已审核单据：%1，确认吗？"_qs.arg(loss_), Answer::Yes);
    lines.waitLoaded();
    EXPECT_EQ(lines.rowCount(), 0);
    press(screen, "Esc");
    EXPECT_EQ(&enquiry.shown(), &sums);
    sums.waitLoaded();
    EXPECT_EQ(sums.footerText("cksl"), "0.00");

    EXPECT_TRUE(screen.field("chkCbj").isVisible());
    enquiry.showView("gridQc");
    screen.grid("gridQc").waitLoaded();
    EXPECT_FALSE(screen.field("tdate11").isVisible() || screen.command("btnDate").isVisible());
    EXPECT_TRUE(screen.field("chkZero").isVisible());
  });
  EXPECT_FALSE(exists("select id from jxc_goodslist where gl_djh=?", loss_));

  setAllRights(QStringLiteral("100077"), QString(60, u'1'));
  takeRight(QStringLiteral("100077"), "qtcz", kSeesPrice.position);
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  open("F_Jxctj", [&](ui::Screen& screen) { EXPECT_FALSE(screen.field("chkCbj").isVisible()); });
}

TEST_F(StockStatistics, TheMovementsOfAGoodsOpenUnderItsNameForTheWarehouseThatWasAskedFor) {
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('B','100001',3,3,1)");
  open("F_Kccx", [&](ui::Screen& screen) {
    auto& enquiry = dynamic_cast<ui::EnquiryScreen&>(screen);
    screen.grid("gridKc").waitLoaded();
    ASSERT_TRUE(screen.grid("gridKc").selectWhere("g_sn", u"A"_qs));
    press(screen, "F8", "F_Kccx_Mx", [&](ui::Screen& movements) {
      EXPECT_EQ(movements.windowTitle(), u"商品库存明细表(镜架)"_qs);
      movements.grid("gridMx").waitLoaded();
      EXPECT_EQ(textsOf(movements.grid("gridMx").shownRows(), {"gl_djh", "cksl"}), QStringList({loss_ + " 2"}));
      press(movements, "Esc");
    });

    enquiry.showView("gridLs");
    EXPECT_EQ(screen.field("tdate2").text(), u"2021-05-03");
    ui::Grid& then = screen.grid("gridLs");
    then.waitLoaded();
    EXPECT_EQ(then.footerText("kcsl"), "-2.00");
    type(screen, "tdate2", u"2021-05-01");
    then.waitLoaded();
    EXPECT_TRUE(then.isEmpty());

    enquiry.showView("gridSp3");
    screen.grid("gridSp3").waitLoaded();
    screen.grid("gridSp3").selectRow(0);
    screen.grid("gridCk3").waitLoaded();
    EXPECT_EQ(screen.grid("gridCk3").footerText("kcsl"), "-2.00");
    check(screen, "rJg3", true);
    screen.grid("gridJg3").waitLoaded();
    EXPECT_TRUE(screen.grid("gridJg3").isEmpty());
    check(screen, "rCk3", true);
    press(screen, "Esc");
  });
}

}  // namespace jxc::test::stock_statistics_test
