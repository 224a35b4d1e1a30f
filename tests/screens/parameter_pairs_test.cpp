// Parameters that meet on one document, two by two, through the screens; the figures were worked out by hand.
#include "screens/harness/trading_test.h"

namespace jxc::test::parameter_pairs_test {

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
  struct Pair {
    int below, atOnce;
    const char *stock, *head;  // what is left on the shelf and in the books, the document
  };
  for (const Pair& pair : {Pair{0, 0, "2 2", ""}, Pair{0, 1, "2 2", ""}, Pair{1, 0, "2 2", "0 300 300"},
                           Pair{1, 1, "-1 -1", "1 300 300"}}) {
    setParameter("cs_kc", pair.below);
    setParameter("cs_shdj", pair.atOnce);
    open("F_Spxs", [&](ui::Screen& s) {
      scanLines(s, {kFrame, kFrame, kFrame});
      if (pair.below) {
        expectQuestion(shortOf(u"销售将会出现负库存，是否继续？"), Answer::Yes);
        return save(s, pair.atOnce ? kSaveSaleAudited : kSaveSale);
      }
      press(s, "F5", shortOf(u"不能销售！"));
      EXPECT_EQ(s.grid("gridLines").rowCount(), 1);  // refused, and nothing is lost
      leaveDraft(s);
    });
    EXPECT_EQ(stockOf("10000001"), pair.stock);
    EXPECT_EQ(rows("select ls_status,ls_yfje,ls_sfje from jxc_lsxsd"), pair.head);
    for (const char* table : {"jxc_lsxsd", "jxc_lsxssp"})
      execSql(compose("delete from {} where gl_djh<>''", {table}));
  }
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
      press(s, "F3", "F_Spxs_Sele", [&](ui::Screen& line) {
        EXPECT_EQ(line.field("tdzl").isVisible(), pair.discount == 1);
        type(line, "tzje", u"180");
        press(line, "F5");
      });
      EXPECT_EQ(rows("select ls_dj,ls_taxdj,round(ls_dzl,5),round(ls_je,3),round(ls_taxje,3),ls_zje from jxc_lsxssp"),
                pair.line)
          << pair.discount << pair.tax;
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
                         const QString& question) {
    open(screen, [&](ui::Screen& s) {
      scanLines(s, {kCloth});
      edit(s, "gridLines", 0, quantityField, quantity);
      check(s, "chkZj", straight);
      save(s, question);
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

}  // namespace jxc::test::parameter_pairs_test
