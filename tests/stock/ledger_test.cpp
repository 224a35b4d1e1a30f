// The replay of the stock ledger with figures worked out by hand, cost lookups, month rows, shortage.
#include "stock/ledger.h"

#include "stock/ledger_rows.h"
#include "stock/shop.h"

namespace jxc::ledger_test {

class LedgerTest : public test::ShopTest {};

TEST_F(LedgerTest, BackDatedRowRewritesLaterRowsOnly) {
  addGoods("A", 0);
  execSql("insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,g_sn,ck_sn) values (0,0,0,'A','100001')");
  const auto january = ledgerRow("cj", "2021-01-10", 10, 100, 10);
  const auto march = ledgerRow("cj", "2021-03-10", 10, 200, 20);
  replayLedger(january);
  EXPECT_EQ(figures(march), "20 15 300");
  EXPECT_EQ(balanceOf("A"), "0 0 15");
  execSql("update jxc_goodslist set gl_kczje=99 where id=?", january);  // a row before the day is never touched …
  const auto february = ledgerRow("cj", "2021-02-10", 20, 800, 40);
  replayLedger(february);
  EXPECT_EQ(figures(january), "10 10 99");
  EXPECT_EQ(figures(february), "30 29.97 899.1");  // … but it is what the replay opens with: (99+800)/30
  EXPECT_EQ(figures(march), "40 27.48 1099.2");
  EXPECT_EQ(balanceOf("A"), "0 0 27.48");

  // Left out, as a cancel does: the later row stands as if it had never been.
  replayLedger(february, AnchorRow::Skip);
  EXPECT_EQ(figures(march), "20 14.95 299");
  EXPECT_EQ(figures(february), "30 29.97 899.1");
  // A sale never sets the warehouse's cost price, and with fixed cost prices nothing does.
  execSql("update jxc_kcsp set kc_cbj=1 where g_sn='A'");
  replayLedger(ledgerRow("xs", "2021-04-01", 1, 30, 30));
  EXPECT_EQ(balanceOf("A"), "0 0 1");
  setParameter("cs_cs009", 1);
  replayLedger(march);
  EXPECT_EQ(balanceOf("A"), "0 0 1");
}

TEST_F(LedgerTest, HugeFiguresKeepFifteenSignificantDigits) {
  addGoods("A", 0);
  for (const char* digits : {"cs_cbjs", "cs_xsws"})
    setParameter(digits, 6);
  const auto row = ledgerRow("cj", "2021-05-01", 1234567890.123456, 1234567890.123456, 1);
  const auto later = ledgerRow("xs", "2021-05-02", 0.000006, 1, 1);
  replayLedger(row);
  EXPECT_EQ(lookupNumber("select gl_kczje from jxc_goodslist where id=?", row), 1234567890.12346);
  EXPECT_EQ(lookupNumber("select gl_sqsl from jxc_goodslist where id=?", later), 1234567890.12346);
  // The replay itself goes on with all it has.
  EXPECT_EQ(lookupNumber("select gl_kc from jxc_goodslist where id=?", later), 1234567890.12345);
}

TEST_F(LedgerTest, CostOfALineComesFromLedgerBalanceOrMaster) {
  addGoods("A", 3);
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-01"), 3);  // nothing known: the master's average
  execSql("insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,g_sn,ck_sn) values (4,4,2.5,'A','100001')");
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-01"), 2.5);
  const auto row = ledgerRow("cj", "2021-05-10", 10, 50, 5);
  replayLedger(row);
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-10"), 5);
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-01"), 5);  // before the first row: the first row after
  execSql("update jxc_kcsp set kc_cbj=2.5 where g_sn='A'");
  setParameter("cs_cs009", 1);
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-10"), 2.5);
  execSql("update jxc_goods set g_gdcbj=1,g_jj=7.777 where g_sn='A'");
  EXPECT_EQ(getGoodsCost("A", "100001", "2021-05-10"), 7.78);

  EXPECT_EQ(goodsAvgCost("A"), 2.5);
  execSql("insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,g_sn,ck_sn) values (1,1,5,'A','100002')");
  EXPECT_EQ(goodsAvgCost("A"), 3);  // (4×2.5 + 1×5) / 5
  execSql("update jxc_kcsp set kc_zsl=-4 where g_sn='A' and ck_sn='100002'");
  EXPECT_EQ(goodsAvgCost("A"), -1);
}

TEST_F(LedgerTest, ARowIsPostedWholeOrNotAtAll) {
  const auto post = [](std::string_view column) {
    postLedgerRow({{"gl_flag", "qc"},     {"gl_djh", ""},           {column, "2021-05-01"},  {"g_sn", "A"},
                   {"g_name", "镜架"},    {"g_jm", "JJ"},           {"dw_name", "付"},       {"gl_dj", 2.5},
                   {"gl_sl", 4},          {"gl_zje", 10},           {"gl_checker", "admin"}, {"gl_chkrq", "2021-05-01"},
                   {"gl_pjjj", 2.5},      {"u_name", "默认员工"},   {"a_name", "admin"},     {"ck_sn", "100001"},
                   {"ck_name", "主仓库"}, {"ghs_name", "期初建账"}, {"gg_name", ""},         {"color_name", ""},
                   {"gl_sysl", 4}});
  };
  post("gl_kdrq");
  EXPECT_THROW(post("gl_kdrp"), std::logic_error);
  EXPECT_THROW(ledgerInsert({{"gl_kdrp", "'2021-05-01'"}}, "from jxc_goods c"), std::logic_error);
  EXPECT_THROW(ledgerInsert({{"gl_flag", "'qc'"}}, "from jxc_goods c"), std::logic_error) << "it has no date";
  const RowSet rows = openSelect("select * from jxc_goodslist");
  ASSERT_EQ(rows.rowCount(), 1);
  QStringList empty;
  for (int column = 0; column < rows.columnCount(); ++column)
    if (rows.isNull(0, column)) empty << QString::fromStdString(rows.columns()[static_cast<std::size_t>(column)]);
  EXPECT_EQ(empty, (QStringList{"t_ph", "t_scrq", "t_yxq"})) << "reserved";
  EXPECT_EQ(rows.front().number("gl_je"), 10);
  EXPECT_EQ(rows.front().number("gl_taxdj"), 2.5);
  EXPECT_EQ(rows.front().number("gl_dzl"), 1);
}

TEST_F(LedgerTest, MonthRowsOpenWithTheStockAsItStands) {
  execSql("insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,kc_xssl,g_sn,ck_sn) values (4,4,2.5,0,'A','100001')");
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  ensureStockRows("2021-05");
  EXPECT_EQ(lookupValue("select count(*) from jxc_kcsp where g_sn='00000000'"), "2");
  const auto month = [](const char* warehouse) {
    return row("select js_sl,js_zje from jxc_kcjs where js_rq='2021-05' and ck_sn=?", warehouse);
  };
  EXPECT_EQ(month("100001"), "4 10");
  EXPECT_EQ(month("100002"), "0 0");
  execSql("update jxc_kcsp set kc_sl=6 where g_sn='A'");
  ensureStockRows("2021-05");  // nothing is missing: nothing changes
  EXPECT_EQ(month("100001"), "4 10");
  refreshMonthStock("100001", "2021-05");
  EXPECT_EQ(month("100001"), "6 15");
}

TEST_F(LedgerTest, ShortageAddsUpLinesOfOneGoodsAndKnowsOnlyItsWarehouse) {
  addGoods("A");
  execSql("insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,g_sn,ck_sn) values (0.8,0.8,1,'A','100001')");
  for (const double quantity : {0.1, 0.7})
    insertRow("jxc_thsp", {{"gl_djh", u"CT1"}, {"g_sn", u"A"}, {"th_sl", quantity}});
  EXPECT_FALSE(checkStockShort("CT1", "100001", u"CT"));  // 0.1 + 0.7 is 0.8
  insertRow("jxc_thsp", {{"gl_djh", u"CT1"}, {"g_sn", u"A"}, {"th_sl", 0.01}});
  insertRow("jxc_thsp", {{"gl_djh", u"CT1"}, {"g_sn", u"00000000"}, {"th_sl", 99}});
  EXPECT_EQ(checkStockShort("CT1", "100001", u"CT").text,
            "该单据中至少一种商品库存不足，\r\n\r\n“A”：退货将会出现负库存，是否继续？");
  EXPECT_FALSE(checkStockShort("CT1", "100009", u"CT"));
  setParameter("cs_kc", 0);
  EXPECT_EQ(checkStockShort("CT1", "100001", u"CT").text, "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能退货！");
  EXPECT_EQ(checkStockShort("CT1", "100001", u"CT").row, "A");
}

}  // namespace jxc::ledger_test
