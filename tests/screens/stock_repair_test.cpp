// Repairs of the stock ledger, and the head of a waiting sale, through their screens.
#include "harness/row_texts.h"
#include "harness/waiting_document.h"
#include "screens/harness/screen_test.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/screens/modi_date.h"

namespace jxc::test::stock_repair_screens {

class StockRepairScreens : public ScreenTest {
 protected:
  StockRepairScreens() {
    for (const char* goods : {"A", "B"}) {
      execSql("insert into jxc_goods (g_sn,g_name,g_pjjj,g_kc) values (?,'镜架',5,0)", QString::fromLatin1(goods));
      execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',7,7,5,0)",
              QString::fromLatin1(goods));
      row(goods, "cj", "2021-05-01", 10, 60, 6);
      row(goods, "xs", "2021-05-02", 3, 30, 10);
    }
  }
  void row(const char* goods, const char* flag, const char* date, double quantity, double net, double price) {
    execSql(
        "insert into jxc_goodslist (gl_flag,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_zje,gl_dj,gl_cbj,gl_djh) values "
        "(?,?,?,'100001',?,?,?,?,5,'XS21050210001')",
        QString::fromLatin1(flag), QString::fromLatin1(date), QString::fromLatin1(goods), quantity, net, net, price);
  }
};

TEST_F(StockRepairScreens, RecomputationAsksRunsAndTells) {
  expectQuestion(u"重新计算会修改期末结存及其他数据，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs, Answer::No);
  expectQuestion(u"重新计算会修改期末结存及其他数据，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs, Answer::Yes);
  expectNotice(u"重新计算完成！"_qs);
  EXPECT_TRUE(open("F_Kccx_Js", [&](ui::Screen& screen) {
    EXPECT_EQ(screen.field("comCk").text(), u"所有仓库");
    type(screen, "tdate1", u"2021-05-01");
    press(screen, "F5");
    EXPECT_EQ(lookupNumber("select sum(gl_kc) from jxc_goodslist"), 0);
    press(screen, "F5");
  }));
  EXPECT_EQ(lookupNumber("select sum(gl_kc) from jxc_goodslist"), 34);
  EXPECT_EQ(lookupNumber("select sum(kc_xssl) from jxc_kcsp"), 6);

  insertRow("jxc_lsxssp", {{"gl_djh", u"XS21050210001"}, {"g_sn", u"A"}, {"ls_sl", 3.0}, {"ls_cbj", 5.0}});
  expectQuestion(u"价格同步会修改数据，\r\n\r\n并且不可恢复。现在是否同步？"_qs, Answer::Yes);
  expectNotice(u"单价同步完成！"_qs);
  EXPECT_TRUE(open("F_Jxctj_Tb", [&](ui::Screen& screen) {
    check(screen, "chkJg", true);
    press(screen, "F5");
  }));
  EXPECT_EQ(lookupNumber("select sum(gl_zcb) from jxc_goodslist where gl_flag='xs'"), 36);
  EXPECT_EQ(lookupNumber("select ls_zcb from jxc_lsxssp"), 18);
}

TEST_F(StockRepairScreens, WhatDiffersIsListedSyncedAndTheAverageIsSet) {
  const QString question = u"库存数据同步将修改商品的库存，\r\n\r\n并且不可恢复。现在是否同步？"_qs;
  execSql("update jxc_goodslist set gl_kc=7,gl_pjjj=6,gl_kczje=42 where gl_flag='xs'");
  execSql("update jxc_kcsp set kc_sl=9,kc_zsl=9 where g_sn='B'");
  open("F_Kccx", [&](ui::Screen& stock) {
    press(stock, "F7", "F_kccx_Hd", [&](ui::Screen& screen) {
      ui::Grid& list = screen.grid("gridHd");
      list.waitLoaded();
      EXPECT_EQ(textsOf(list.shownRows(), {"g_sn", "kc_sl", "gl_kc", "cysl"}), QStringList({"B 9 7 2"}));
      press(screen, "F8", "F_Kccx_Mx", [](ui::Screen& movements) {
        movements.grid("gridMx").waitLoaded();
        EXPECT_EQ(movements.grid("gridMx").rowCount(), 2);
        press(movements, "Esc");
      });
      press(screen, "F7", "F_Kccx_Tb", [&](ui::Screen& sync) {
        press(sync, "F5", question, Answer::No);
        EXPECT_EQ(lookupNumber("select kc_sl from jxc_kcsp where g_sn='B'"), 9);
        expectQuestion(question, Answer::Yes);
        expectNotice(u"同步完成！"_qs);
        press(sync, "F5");
      });
      list.waitLoaded();
      EXPECT_TRUE(list.isEmpty());
      press(screen, "F7", u"没有需要同步的商品！"_qs);
      press(screen, "Esc");
    });
    EXPECT_EQ(lookupNumber("select kc_sl from jxc_kcsp where g_sn='B'"), 7);
    stock.grid("gridKc").waitLoaded();
    ASSERT_TRUE(stock.grid("gridKc").selectWhere("g_sn", u"A"_qs));
    press(stock, "F6", "F_Kccx_Jj", [&](ui::Screen& average) {
      EXPECT_EQ(average.field("tck").text(), u"所有仓库");
      press(average, "F5", u"成本均价必须大于零！"_qs);
      type(average, "txjj", u"6.5");
      click(average, "btnPreview", "F_Yltx", [](ui::Screen& preview) {
        EXPECT_EQ(preview.grid("gridImpacts").rowCount(), 2);
        press(preview, "Esc");
      });
      EXPECT_EQ(lookupNumber("select kc_cbj from jxc_kcsp where g_sn='A'"), 5);
      press(average, "F5");
    });
    EXPECT_EQ(lookupNumber("select kc_cbj from jxc_kcsp where g_sn='A'"), 6.5);
  });

  // Neither command is there without its right, nor the average for who may not see it.
  for (const int position : {16, 17, 0}) {
    setAllRights(QStringLiteral("100077"), QString(60, u'1'));
    if (position > 0)
      takeRight(QStringLiteral("100077"), "kcgl", position);
    else
      takeRight(QStringLiteral("100077"), "qtcz", kSeesCost.position);
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
    open("F_Kccx", [&](ui::Screen& stock) {
      EXPECT_EQ(stock.command("btnKchd").isVisible(), position != 16);
      EXPECT_EQ(stock.command("btn_Xgjj").isVisible(), position == 16);
      EXPECT_EQ(stock.grid("gridKc").isColumnVisible("cbjj"), position == 17);
    });
  }
}

TEST_F(StockRepairScreens, TheHeadOfAWaitingSaleChanges) {
  const QString number = waitingDocument(families::sale, u"2021-05-03 10:20:30"_qs, {}, {});
  expectScreen("F_ModiDateXs", filled({{"dateCg", u"2021-05-01"}, {"tyf", u"8"}}));
  EXPECT_EQ(changeSaleHead(families::sale, number), number);
  EXPECT_EQ(lookupValue("select ls_xsrq from jxc_lsxsd"), u"2021-05-01 10:20:30");
  EXPECT_EQ(lookupValue("select ls_yffs from jxc_lsxsd"), u"对方付运费");
}

}  // namespace jxc::test::stock_repair_screens
