// The whole recomputation of the ledger, and costs that are brought up to date behind a late purchase.
#include "stock/repair.h"

#include "stock/shop.h"

namespace jxc {
namespace repair_test {

class RepairTest : public test::ShopTest {};

TEST_F(RepairTest, RecomputationMendsFiguresBalancesAndDuplicates) {
  addGoods("A", 4);
  const QString first = receive("2021-05-01", {{"A", 10, 5}});
  receive("2021-05-02", {{"A", 10, 7}});
  sell("2021-05-03", {{"A", 4, 12}});
  execSql("update jxc_goodslist set gl_kc=99,gl_pjjj=99 where gl_djh=?", first);
  execSql("update jxc_goods set g_kc=1,g_pjjj=1 where g_sn='A'");
  execSql("update jxc_kcsp set kc_xssl=9 where g_sn='A'");
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl) values ('A','100001',50,50)");
  ledgerRow("qc", "2021-05-01", 3, 3, 1);
  execSql("update jxc_goodslist set ghs_name='库存同步' where gl_flag='qc'");

  EXPECT_FALSE(recomputeLedger("2021-01-01", {}, [](int, int) { return false; }));
  EXPECT_NE(test::brokenInvariants(), QStringList());  // stopped: stock of the goods comes last
  int steps = 0;
  EXPECT_TRUE(recomputeLedger("2021-01-01", test::mainWarehouse, [&](int done, int total) {
    EXPECT_EQ(done, total);
    return ++steps > 0;
  }));
  EXPECT_EQ(steps, 1);
  EXPECT_EQ(lastFigures("A"), "16 6 96");
  EXPECT_EQ(balanceOf("A"), "16 16 6");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 16);
  EXPECT_EQ(lookupNumber("select kc_xssl from jxc_kcsp where g_sn='A'"), 4);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(RepairTest, AGoodsThatStoodTwiceOnACancelledDocument) {
  addGoods("A", 5);
  receive("2021-05-01", {{"A", 10, 5}});
  const QString twice = receive("2021-05-02", {{"A", 2, 5}, {"A", 3, 5}});
  sell("2021-05-03", {{"A", 1, 9}});
  EXPECT_EQ(lastFigures("A"), "14 5 70");
  prompt.willSayYes();
  EXPECT_TRUE(cancelPurchase(twice, prompt));
  EXPECT_EQ(balanceOf("A"), "9 9 5");
  // Each line is left out of one replay and still seen by the other: the running figures hold the first until the next
  // replay of this goods.
  EXPECT_EQ(lastFigures("A"), "11 5 55");
  EXPECT_TRUE(recomputeLedger("2021-05-01", {}));
  EXPECT_EQ(lastFigures("A"), "9 5 45");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(RepairTest, AStoppedRepairGoesOnWhereItStood) {
  for (const char* goods : {"A", "B", "C", "D"}) {
    addGoods(goods, 4);
    receive("2021-05-01", {{goods, 10, 5}});
  }
  const auto spoil = [] { execSql("update jxc_goodslist set gl_kc=99"); };
  spoil();
  RepairPosition position;
  QStringList told;
  const auto stopAfter = [&told](int last) {
    return [&told, last](int done, int total) {
      EXPECT_FALSE(accountDb().inTransaction());  // the window lives while the operator waits
      told << u"%1/%2"_qs.arg(done).arg(total);
      return done != last;
    };
  };
  EXPECT_FALSE(recomputeLedger("2021-01-01", {}, stopAfter(2), &position));
  EXPECT_EQ(position.goods, "B");
  EXPECT_EQ(lastFigures("B"), "10 5 50");
  EXPECT_EQ(lastFigures("C"), "99 5 50");
  spoil();
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}, stopAfter(9), &position));
  EXPECT_TRUE(position.isEmpty());
  EXPECT_EQ(told.join(u' '), "1/4 2/4 3/4 4/4");
  EXPECT_EQ(lastFigures("A"), "99 5 50");  // done before the stop, not again
  EXPECT_EQ(lastFigures("D"), "10 5 50");
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}));
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(RepairTest, RecomputationTakesPricesNotAmounts) {
  addGoods("A", 0);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',10,10,0)");
  const auto discounted = ledgerRow("cj", "2021-05-01", 10, 40, 5);
  replayLedger(discounted);
  EXPECT_EQ(figures(discounted), "10 4 40");
  recomputeLedger("2021-01-01", {});
  EXPECT_EQ(figures(discounted), "10 5 50");
}

TEST_F(RepairTest, CostOfWhatLeftStockFollowsALatePurchase) {
  addGoods("A", 4);
  receive("2021-05-01", {{"A", 10, 4}});
  const QString sale = sell("2021-05-03", {{"A", 5, 10}});
  const auto loss = ledgerRow("bs", "2021-05-03", -1, -4, 4);
  execSql("update jxc_goodslist set gl_djh='BS1',g_sn='A' where id=?", loss);
  insertRow("jxc_bssp", {{"gl_djh", u"BS1"}, {"g_sn", u"A"}, {"bs_sl", 1.0}, {"bs_dj", 4.0}, {"bs_zje", 4.0}});
  receive("2021-05-02", {{"A", 10, 6}});  // entered late: five yuan a piece were right

  EXPECT_TRUE(syncOutgoingCost("2021-05-01", {}, true));
  const RowSet row = openSelect("select gl_cbj,gl_zcb,gl_lr from jxc_goodslist where gl_djh=?", sale);
  EXPECT_EQ(row.number(0, 0), 5);
  EXPECT_EQ(row.number(0, 1), 25);
  EXPECT_EQ(row.number(0, 2), 25);
  EXPECT_EQ(lookupNumber("select ls_zcb from jxc_lsxssp where gl_djh=?", sale), 25);
  EXPECT_EQ(lookupNumber("select gl_je from jxc_goodslist where id=?", loss), -5);
  EXPECT_EQ(lookupNumber("select bs_zje from jxc_bssp where gl_djh='BS1'"), 5);
}

}  // namespace repair_test
}  // namespace jxc
