// Parameters that meet on one document, two by two, through the screens; the figures were worked out by hand.
#include "harness/invariants.h"
#include "screens/harness/trading_test.h"

namespace jxc::test {
namespace parameter_pairs_test {

constexpr QStringView kFrame = u"6900000000017";
constexpr QStringView kCloth = u"6900000000024";

class ParameterPairsTest : public TradingScreenTest {
 protected:
  ParameterPairsTest() {
    addGoods(
        {.sn = u"10000001"_qs, .name = u"镜架"_qs, .barcode = kFrame.toString(), .cost = 40, .price = 100, .stock = 2});
    addGoods({.sn = u"10000002"_qs,
              .name = u"镜布"_qs,
              .barcode = kCloth.toString(),
              .cost = 23.5,
              .price = 33.33,
              .stock = 10});
  }
  void leaveDraft(ui::Screen& s) {
    expectQuestion(u"当前单据还未保存，是否保存？"_qs, Answer::No);
    press(s, "Esc");
  }
  /// Scans onto a fresh document, then changes quantities of the lines from the first on.
  static void scanLines(ui::Screen& s, std::initializer_list<QStringView> codes) {
    s.field("tSptm").focus();
    for (const QStringView code : codes)
      scan(s, code);
  }
  static QString stockOf(const char* goods) {
    return rows("select kc_sl,kc_zsl from jxc_kcsp where g_sn=?", QString::fromLatin1(goods));
  }
};

// cs_kc decides whether a sale may go below zero, cs_shdj whether it is in the books at once: three of two in stock.
TEST_F(ParameterPairsTest, AuditAtOnceAndStockBelowZero) {
  const auto shortOf = [](QStringView end) {
    return u"该单据中至少一种商品库存不足，\r\n\r\n“10000001”："_qs + end.toString();
  };
  for (const int atOnce : {0, 1}) {
    setParameter("cs_shdj", atOnce);
    setParameter("cs_kc", 0);
    open("F_Spxs", [&](ui::Screen& s) {
      scanLines(s, {kFrame, kFrame, kFrame});
      expectNotice(shortOf(u"不能销售！"));
      press(s, "F5");
      EXPECT_EQ(s.grid("gridLines").rowCount(), 1);  // refused, and nothing is lost
      leaveDraft(s);
    });
    EXPECT_EQ(stockOf("10000001"), "2 2");
  }
  setParameter("cs_kc", 1);
  setParameter("cs_shdj", 0);
  open("F_Spxs", [&](ui::Screen& s) {
    scanLines(s, {kFrame, kFrame, kFrame});
    expectQuestion(shortOf(u"销售将会出现负库存，是否继续？"), Answer::Yes);
    expectQuestion(QString::fromUtf8(kSaveSale), Answer::Yes);
    press(s, "F5");
  });
  EXPECT_EQ(stockOf("10000001"), "2 2");  // waits
  execSql("delete from jxc_lsxssp");
  execSql("delete from jxc_lsxsd");
  setParameter("cs_shdj", 1);
  open("F_Spxs", [&](ui::Screen& s) {
    scanLines(s, {kFrame, kFrame, kFrame});
    expectQuestion(shortOf(u"销售将会出现负库存，是否继续？"), Answer::Yes);
    expectQuestion(QString::fromUtf8(kSaveSaleAudited), Answer::Yes);
    press(s, "F5");
  });
  EXPECT_EQ(stockOf("10000001"), "-1 -1");
  EXPECT_EQ(rows("select ls_status,ls_yfje,ls_sfje from jxc_lsxsd"), "1 300 300");
}

// Tax 13 percent and a discount: two frames at 100. What a typed total moves depends on both.
TEST_F(ParameterPairsTest, DiscountAndTax) {
  setParameter("cs_tax", 13);
  struct Pair {
    int discount, tax;
    const char* line;  // price, taxed price, discount, net, tax, total after a total of 180 was typed
  };
  // Without either the price gives way: 180/2. With the discount it is 180/200; with tax the price is 180/2/1.13 =
  // 79.646…, kept as 79.65 and 90, net 159.3, tax (90-79.65)×2; with both 180/226 = 0.79646 of 113.
  for (const Pair& pair : {Pair{0, 0, "90 90 1 180 0 180"}, Pair{1, 0, "100 100 0.9 180 0 180"},
                           Pair{0, 1, "79.65 90 1 159.3 20.7 180"}, Pair{1, 1, "100 113 0.79646 159.292 20.708 180"}}) {
    setParameter("cs_jhzk", pair.discount);
    setParameter("cs_hs", pair.tax);
    setParameter("cs_tax", pair.tax ? 13 : 0);
    open("F_Spxs", [&](ui::Screen& s) {
      EXPECT_EQ(s.grid("gridLines").isColumnVisible("ls_dzl"), pair.discount == 1);
      EXPECT_EQ(s.grid("gridLines").isColumnVisible("ls_taxdj"), pair.tax == 1);
      scanLines(s, {kFrame, kFrame});
      expectScreen("F_Spxs_Sele", [&](ui::Screen& line) {
        EXPECT_EQ(line.field("tdzl").isVisible(), pair.discount == 1);
        type(line, "tzje", u"180");
        press(line, "F5");
      });
      press(s, "F3");
      EXPECT_EQ(rows("select ls_dj,ls_taxdj,round(ls_dzl,5),round(ls_je,3),round(ls_taxje,3),ls_zje from jxc_lsxssp"),
                pair.line)
          << pair.discount << pair.tax;
      leaveDraft(s);
    });
  }
}

struct Settled {
  int balancing;  // cs_xsjgts: 0 spread, 1 a line of its own
  bool onAccount;
  const char *head, *lines;
  double owed, cash;
};

// Two frames and a cloth with less paid than is due, by both ways of settling and both ways of balancing.
class SettledPairsTest : public ParameterPairsTest {
 protected:
  void expectSettled(bool sale, const Settled& pair) {
    setParameter("cs_shdj", 1);
    setParameter("cs_xsjgts", pair.balancing);
    const auto owed = [sale] {
      return lookupNumber(sale ? "select sum(kh_lwje) from jxc_khxx" : "select sum(ghs_lwje) from jxc_ghsxx");
    };
    const auto cash = [] { return lookupNumber("select sum(xj_je) from jxc_xjyh"); };
    const double owedBefore = owed(), cashBefore = cash();
    QString number;
    open(sale ? "F_Spxs" : "F_Cgjh", [&](ui::Screen& s) {
      number = s.field("jsn").text();
      scanLines(s, {kFrame, kFrame, kCloth});
      if (!sale) {
        // The average of the first goods moves when lines are spread: the price is what the operator says.
        edit(s, "gridLines", 0, "jh_dj", u"40");
        edit(s, "gridLines", 1, "jh_dj", u"23.5");
      }
      EXPECT_EQ(s.field("tyfje").number(), sale ? 233.33 : 103.5);
      choose(s, "comJsfs", !pair.onAccount ? u"按实付款结算"_qs : sale ? u"余款记入应收帐"_qs : u"余款记入应付帐"_qs);
      type(s, sale ? "tssje" : "tsfje", sale ? u"230" : u"100");
      expectQuestion(QString::fromUtf8(sale ? kSaveSaleAudited : kSaveReceiptAudited), Answer::Yes);
      if (pair.cash == 229.99) expectNotice(u"实收改为 229.99"_qs);
      press(s, "F5");
    });
    EXPECT_EQ(rows(sale ? "select ls_yfje,ls_sfje,ls_yhje,ls_jsfs from jxc_lsxsd where gl_djh=?"
                        : "select j_yfje,j_sfje,j_jsfs from jxc_jhd where j_sn=?",
                   number),
              pair.head);
    EXPECT_EQ(rows(sale ? "select g_sn,ls_dj,ls_zje,ls_je from jxc_lsxssp where gl_djh=? order by id"
                        : "select g_sn,jh_zje from jxc_jhsp where j_sn=? order by id",
                   number),
              pair.lines);
    EXPECT_NEAR(owed() - owedBefore, pair.owed, 1e-6);
    EXPECT_NEAR(cash() - cashBefore, pair.cash, 1e-6);
  }
};

TEST_F(SettledPairsTest, AReceiptOf103And50CentsPaidWith100) {
  // Spread: 3.50 over two lines is 1.75 each. On account both ways leave the lines alone.
  for (const Settled& pair : {Settled{0, false, "100 100 0", "10000001 78.25 | 10000002 21.75", 0, -100},
                              Settled{0, true, "103.5 100 1", "10000001 80 | 10000002 23.5", 3.5, -100},
                              Settled{1, false, "103.5 100 0", "10000001 80 | 10000002 23.5 | 00000000 -3.5", 0, -100},
                              Settled{1, true, "103.5 100 1", "10000001 80 | 10000002 23.5", 3.5, -100}})
    expectSettled(false, pair);
}

TEST_F(SettledPairsTest, ASaleOf233And33CentsPaidWith230) {
  execSql("update jxc_kcsp set kc_sl=10,kc_zsl=10");
  // Spread: 3.33 over two lines is 1.67 each, the cent too much stays: 198.33 and 31.66 make 229.99. The frame is then
  // 198.33/2 = 99.165, kept as 99.17, its net 198.34.
  const char *whole = "10000001 100 200 200 | 10000002 33.33 33.33 33.33",
             *balanced = "10000001 100 200 200 | 10000002 33.33 33.33 33.33 | 00000000 0 -3.33 -3.33";
  for (const Settled& pair :
       {Settled{0, false, "229.99 229.99 0 0", "10000001 99.17 198.33 198.34 | 10000002 31.66 31.66 31.66", 0, 229.99},
        Settled{0, true, "233.33 230 0 1", whole, 3.33, 230}, Settled{1, false, "233.33 230 3.33 0", balanced, 0, 230},
        Settled{1, true, "233.33 230 0 1", whole, 3.33, 230}})
    expectSettled(true, pair);
}

// Three pieces of cloth at 33.33 and two frames at 100.04: totals keep the money digits unless they have their own.
TEST_F(ParameterPairsTest, DigitsOfTotals) {
  struct Pair {
    int separate, digits;
    const char* lines;
    double due;
  };
  for (const Pair& pair : {Pair{0, 0, "99.99 | 200.08", 300.07}, Pair{0, 1, "99.99 | 200.08", 300.07},
                           Pair{1, 0, "100 | 200", 300}, Pair{1, 1, "100 | 200.1", 300.1}}) {
    setParameter("cs_zjews", pair.separate);
    setParameter("cs_jews", pair.digits);
    open("F_Spxs", [&](ui::Screen& s) {
      scanLines(s, {kCloth, kFrame});
      edit(s, "gridLines", 0, "ls_sl", u"3");
      edit(s, "gridLines", 1, "ls_dj", u"100.04");
      edit(s, "gridLines", 1, "ls_sl", u"2");
      EXPECT_EQ(rows("select ls_zje from jxc_lsxssp order by id"), pair.lines) << pair.separate << pair.digits;
      EXPECT_EQ(s.field("tyfje").number(), pair.due);
      leaveDraft(s);
    });
  }
}

// With tax each of the three amounts has the digits of totals: three at 33.35, with 13 percent 37.69 each. Net 100.05,
// tax 13.02, together 113.07.
TEST_F(ParameterPairsTest, DigitsOfTotalsWithTax) {
  setParameter("cs_hs", 1);
  setParameter("cs_tax", 13);
  struct Pair {
    int separate, digits;
    const char* line;
    double due;
  };
  for (const Pair& pair : {Pair{0, 0, "100.05 13.02 113.07", 113.07}, Pair{0, 1, "100.05 13.02 113.07", 113.07},
                           Pair{1, 0, "100 13 113", 113}, Pair{1, 1, "100.1 13 113.1", 113.1}}) {
    setParameter("cs_zjews", pair.separate);
    setParameter("cs_jews", pair.digits);
    open("F_Cgjh", [&](ui::Screen& s) {
      scanLines(s, {kCloth});
      edit(s, "gridLines", 0, "jh_dj", u"33.35");
      edit(s, "gridLines", 0, "jh_sl", u"3");
      EXPECT_EQ(rows("select jh_je,jh_taxje,jh_zje from jxc_jhsp"), pair.line) << pair.separate << pair.digits;
      EXPECT_EQ(s.field("tyfje").number(), pair.due);
      // The line dialog writes the same figures.
      expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) { press(line, "F5"); });
      press(s, "F3");
      EXPECT_EQ(rows("select jh_je,jh_taxje,jh_zje from jxc_jhsp"), pair.line) << pair.separate << pair.digits;
      leaveDraft(s);
    });
  }
}

// Putaway and issue in use: the books know at once, the shelf only what goes straight. Ten pieces at first.
TEST_F(ParameterPairsTest, PutawayAndIssue) {
  setParameter("cs_shdj", 1);
  setParameter("cs_sprk", 1);
  setParameter("cs_spck", 1);
  const auto trade = [&](const char* screen, const char* quantityField, QStringView quantity, bool straight,
                         const char* question) {
    open(screen, [&](ui::Screen& s) {
      scanLines(s, {kCloth});
      edit(s, "gridLines", 0, quantityField, quantity);
      check(s, "chkZj", straight);
      expectQuestion(QString::fromUtf8(question), Answer::Yes);
      press(s, "F5");
    });
    return stockOf("10000002");
  };
  EXPECT_EQ(trade("F_Cgjh", "jh_sl", u"5", false, kSaveReceiptAudited), "10 15");
  EXPECT_EQ(trade("F_Cgjh", "jh_sl", u"2", true, kSaveReceiptAudited), "12 17");
  EXPECT_EQ(trade("F_Spxs", "ls_sl", u"3", false, kSaveSaleAudited), "12 14");
  EXPECT_EQ(trade("F_Spxs", "ls_sl", u"1", true, kSaveSaleAudited), "11 13");
  EXPECT_EQ(rows("select j_crk,j_qk from jxc_jhd order by id"), "0 0 | 1 1");
  EXPECT_EQ(rows("select ls_crk,ls_qk from jxc_lsxsd order by id"), "0 0 | 1 1");
  EXPECT_EQ(rows("select jh_sl,jh_rksl from jxc_jhsp order by id"), "5 0 | 2 2");
  EXPECT_EQ(rows("select ls_sl,ls_cksl from jxc_lsxssp order by id"), "3 0 | 1 1");
}

// ---- drafts ------------------------------------------------------------------------------------------------------

// The power goes while a sale with a gift stands on the screen: it comes back as it was, and is saved.
TEST_F(ParameterPairsTest, ASaleComesBackAfterACrash) {
  open("F_Spxs", [&](ui::Screen& s) {
    scanLines(s, {kFrame, kCloth, kCloth});
    edit(s, "gridLines", 0, "ls_dj", u"88");
  });  // closed without a question: as a power cut leaves it
  execSql("update jxc_lsxssp set t_zp=?,ls_dj=0,ls_taxdj=0,ls_zje=0,ls_je=0 where g_sn='10000002'", u"(赠品)"_qs);
  ui::dropScreens();
  open("F_Spxs", [&](ui::Screen& s) {
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    EXPECT_EQ(s.field("tyfje").number(), 88);
    EXPECT_FALSE(cellOpens(s, "gridLines", 1, "ls_dj"));  // still a gift
    EXPECT_TRUE(cellOpens(s, "gridLines", 1, "ls_sl"));
    expectQuestion(QString::fromUtf8(kSaveSale), Answer::Yes);
    press(s, "F5");
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
  });
  EXPECT_EQ(rows("select ls_yfje,ls_sfje,ls_status from jxc_lsxsd"), "88 88 0");
}

}  // namespace parameter_pairs_test
}  // namespace jxc::test
