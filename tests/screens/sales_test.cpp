// The sales document through its screens: an operator's stories, and what they leave in the books.
#include "harness/invariants.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"

namespace jxc::test::sales_screen_test {

const QString kShort = u"该单据中至少一种商品库存不足，\r\n\r\n“10000002”：销售将会出现负库存，是否继续？"_qs;

class SalesScreenTest : public TradingScreenTest {
 protected:
  SalesScreenTest() {
    // Number, name, barcode; cost, price and stock.
    addGoods({u"10000001"_qs, u"板材镜架"_qs, u"6900000000017"_qs, 40, 120, 5});
    addGoods({u"10000002"_qs, u"钛架"_qs, u"6900000000024"_qs, 120, 360});
    addGoods({u"10000003"_qs, u"镜布"_qs, u"6900000000031"_qs, 2.5, 7.5, 30});
    execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('10000002','100001',0,0,120)");
    execSql("update jxc_goods set g_sj1=g_jj*2,g_lsj=g_jj*4,g_iszp=iif(g_sn='10000003',1,0)");
  }

  static QString lines(ui::Screen& s, std::string_view grid = "gridLines") {
    return TradingScreenTest::lines(s, "ls", grid);
  }
};

// Scanned twice, taken from the list without stock, given away, changed; saved, changed while it waits, audited.
TEST_F(SalesScreenTest, ScannedPickedGivenSavedAndAudited) {
  open("F_Spxs", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("jsn").text(), "XS21050310001");
    EXPECT_FALSE(s.field("tkh").text().isEmpty());
    expectNotice(
        u"当前仓库中没有找到与该条码匹配的商品，请检查！\r\n\r\n条码：6900000099999\r\n\r\n按“新商品添加(F9)”，可以用这个条码增加新商品。"_qs);
    scan(s, u"6900000099999");
    scan(s, u"6900000000017");
    scan(s, u"6900000000017");
    EXPECT_EQ(lines(s), "1×2@120=240");

    press(s, "F2", "F_Spxs_Add", [&](ui::Screen& pick) {
      EXPECT_EQ(pick.grid("gridGoods").rowCount(), 2);  // one is not in stock
      check(pick, "chkCk", true);
      pick.grid("gridGoods").waitLoaded();
      EXPECT_EQ(pick.grid("gridGoods").rowCount(), 3);
      type(pick, "tkey", u"10000002");
      press(pick, "Return", "F_Spxs_Sele", [&](ui::Screen& line) {
        EXPECT_EQ(line.field("tgsj").number(), 360);
        EXPECT_EQ(line.field("tcbj").number(), 120);
        press(line, "F4", "F_Price", [&](ui::Screen& price) {
          EXPECT_EQ(price.field("tsj1").number(), 240);
          click(price, "btnSj1");
        });
        EXPECT_EQ(line.field("tzje").number(), 240);
        press(line, "F5", QString::fromUtf8(kSaleGoesShort), Answer::No);
        EXPECT_TRUE(line.isVisible());  // no is no reason to lose what was typed
        press(line, "F5", QString::fromUtf8(kSaleGoesShort), Answer::Yes);
      });
      press(pick, "F5");
    });
    EXPECT_EQ(lines(s), "1×2@120=240 2×1@240=240");

    expectScreen("F_Spxs_Add2", [&](ui::Screen& gifts) {
      EXPECT_EQ(gifts.grid("gridGifts").rowCount(), 1);
      press(gifts, "F5");
    });
    press(s, "F4", "F_Spxs_Sele2", filled({{"tsl", u"2"}}));
    EXPECT_EQ(lines(s), "1×2@120=240 2×1@240=240 3×2@0=0");
    EXPECT_FALSE(cellOpens(s, "gridLines", 2, "ls_dj"));  // a gift has no price
    EXPECT_TRUE(cellOpens(s, "gridLines", 2, "ls_sl"));
    EXPECT_EQ(s.field("tyfje").number(), 480);
    EXPECT_EQ(s.field("tssje").number(), 480);
    press(s, "F3", "F_Spxs_Sele2", [&](ui::Screen& gift) {
      EXPECT_EQ(gift.field("tsl").number(), 2);
      enter(gift, "tsl", u"3");
    });

    choose(s, "comJsfs", QStringLiteral("余款记入应收帐"));
    type(s, "tssje", u"300");
    expectQuestion(kShort, Answer::Yes);
    save(s, kSaveSale);
    EXPECT_EQ(s.field("jsn").text(), "XS21050310002");

    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(s.grid("gridWaiting").currentNumber("wfje"), 180);
    edit(s, "gridWaitingLines", 0, "ls_sl", u"1");
    EXPECT_EQ(s.grid("gridWaiting").currentNumber("yfje"), 360);
    press(s, "F6", "F_Spxs_Check", [&](ui::Screen& check) {
      type(check, "tssje", u"350");
      press(check, "F5", kShort, Answer::Yes);
    });
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(rows("select ls_yfje,ls_sfje,ls_status,ls_jsfs,ls_kmmc from jxc_lsxsd"), "360 350 1 1 现金");
  EXPECT_EQ(rows("select g_sn,gl_sl,gl_zje,gl_lr from jxc_goodslist order by id"),
            "10000001 1 120 80 | 10000002 1 240 120 | 10000003 3 0 -7.5");
  EXPECT_EQ(rows("select xj_dlx,xj_je,xj_kmmc from jxc_xjyh where gl_djh like 'XS%'"), "商品销售 350 现金");
  EXPECT_EQ(rows("select k_djlx,k_yfje,k_sfje,k_ljje from jxc_ysyfk"), "XS 360 350 10");
}

// What parameters and rights take away is not there.
TEST_F(SalesScreenTest, PricesAndCostsFollowParametersAndRights) {
  setParameter("cs_xgdj", 0);
  setParameter("cs_kc", 0);
  open("F_Spxs", [&](ui::Screen& s) {
    EXPECT_TRUE(s.grid("gridLines").isColumnVisible("ls_cbj2"));
    scan(s, u"6900000000031");
    EXPECT_FALSE(cellOpens(s, "gridLines", 0, "ls_dj"));
    EXPECT_TRUE(cellOpens(s, "gridLines", 0, "ls_sl"));
    press(s, "F3", "F_Spxs_Sele", [&](ui::Screen& line) {
      EXPECT_TRUE(line.field("tgsj").isReadOnly());
      EXPECT_TRUE(line.field("tzje").isReadOnly());
      EXPECT_TRUE(line.field("tcbj").isReadOnly());
      EXPECT_FALSE(line.command("btnSpsj").isVisible());
      type(line, "tsl", u"31");
      press(line, "F5", QStringLiteral("库存数量小于销售数量，不能出库！"));
      type(line, "tsl", u"30");
      press(line, "F5");
    });
    EXPECT_EQ(lines(s), "3×30@7.5=225");
    leaveDraft(s);
  });
  EXPECT_EQ(rows("select count(*) from jxc_lsxssp"), "0");
}

// Who may not see prices packs what is asked for; the price that is usual goes into the books all the same.
TEST_F(SalesScreenTest, PricesAreOutOfSightWithoutTheRight) {
  setParameter("cs_kc", 1);
  setParameter("cs_hs", 1);
  takeRight(session().r_sn, "qtcz", kSeesPrice.position);
  session().canSeePrice = false;
  open("F_Spxs", [&](ui::Screen& s) {
    for (const char* column : {"ls_dj", "ls_taxdj", "ls_zje", "ls_tax"})
      EXPECT_FALSE(s.grid("gridLines").isColumnVisible(column)) << column;
    scan(s, u"6900000000031");
    press(s, "F3", "F_Spxs_Sele", [&](ui::Screen& line) {
      EXPECT_FALSE(line.field("tgsj").isVisible());
      EXPECT_FALSE(line.field("tzje").isVisible());
      EXPECT_FALSE(line.command("btnSpsj").isVisible());
      type(line, "tsl", u"2");
      press(line, "F5");
    });
    for (const char* column : {"ls_dj", "ls_zje"})
      EXPECT_LT(s.grid("gridLines").rows().columnIndex(column), 0) << column << " is in no row of the draft";
    EXPECT_EQ(lookupNumber("select ls_zje from jxc_lsxssp where ls_sl=2"), 15);
    press(s, "F2", "F_Spxs_Add", [&](ui::Screen& pick) {
      EXPECT_FALSE(pick.grid("gridGoods").isColumnVisible("g_sj"));
      press(pick, "Esc");
    });
    leaveDraft(s);
  });
  session().canSeePrice = true;
}

// What waits is shown for one customer alone, then for all again; auditing all goes by what is shown.
TEST_F(SalesScreenTest, WaitingSalesOfOneCustomer) {
  execSql(
      "insert into jxc_khxx (kh_sn,kh_name,kh_jm,kt_sn,kh_forbid,kh_default,kh_lwje) values "
      "('100099','城东眼镜店','CDYJD','1000',0,0,0)");
  open("F_Spxs", [&](ui::Screen& s) {
    for (int i = 0; i < 2; ++i) {
      scan(s, u"6900000000031");
      if (i == 1) s.field("tkh").setPicked({u"城东眼镜店"_qs, u"100099"_qs});
      save(s, kSaveSale);
    }
    showWaiting(s);
    EXPECT_EQ(s.field("tGhsName").text(), u"全部客户"_qs);
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 2);
    s.field("tGhsName").focus();
    press(s, "F2", "F_Kh_Sele", [&](ui::Screen& pick) {
      type(pick, "tkey", u"CDYJD");
      pick.grid("gridPartners").waitLoaded();
      press(pick, "F5");
    });
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(s.grid("gridWaiting").currentText("kh_sn"), u"100099"_qs);
    press(s, "F7", kAuditAll, Answer::Yes);
    click(s, "btnAllKh");
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_NE(s.grid("gridWaiting").currentText("kh_sn"), u"100099"_qs);
  });
  EXPECT_EQ(rows("select ls_status from jxc_lsxsd order by id"), "0 | 1");
}

// Who may sell, but not keep customers, chooses one; the list behind the input does not let him add or change any.
TEST_F(SalesScreenTest, CustomersAreKeptByWhoMay) {
  setRights(QStringLiteral("100002"), "xsgl", QStringLiteral("11111111111111111"));
  setRights(QStringLiteral("100002"), "qtcz", QStringLiteral("1101111111"));
  becomeOperator(QStringLiteral("clerk"), QStringLiteral("100002"), QStringLiteral("100002"));
  const QString refusal = u"您没有权限进行客户设置！"_qs;
  open("F_Spxs", [&](ui::Screen& s) {
    s.field("tkh").focus();
    press(s, "F8", refusal);
    press(s, "F2", "F_Kh_Sele", [&](ui::Screen& pick) {
      pick.grid("gridPartners").waitLoaded();
      press(pick, "F8", refusal);
      press(pick, "F9", refusal);
      press(pick, "F5");
    });
    EXPECT_FALSE(s.field("tkh").text().isEmpty());
  });
}

}  // namespace jxc::test::sales_screen_test
