// The whole recomputation of the ledger, and costs that are brought up to date behind a late purchase.
#include "stock/repair.h"

#include "stock/shop.h"

#include <stdexcept>
#include <vector>

namespace jxc::repair_test {

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
  EXPECT_FALSE(recomputeLedger("2021-01-01", {}, stopAfter(1), &position));
  EXPECT_EQ(position.goods, "A");
  EXPECT_EQ(lastFigures("A"), "10 5 50");
  EXPECT_EQ(lastFigures("B"), "99 5 50");
  spoil();
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}, stopAfter(9), &position));
  EXPECT_TRUE(position.isEmpty());
  EXPECT_EQ(told.mid(0, 2).join(u' '), "1/4 2/4");  // then steps may grow
  EXPECT_EQ(told.last(), "4/4");
  EXPECT_EQ(lastFigures("A"), "99 5 50");  // done before the stop, not again
  EXPECT_EQ(lastFigures("D"), "10 5 50");
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}));
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(RepairTest, AStepThatFailsIsTakenBackAndDoneAgainGoodsByGoods) {
  const QString all = u"A B C D E F G H"_qs;
  RowSet pairs({"g_sn", "ck_sn"});
  for (const QString& goods : all.split(u' ')) {
    pairs.addText(goods.toStdString());
    pairs.addText(test::mainWarehouse.toStdString());
  }
  bool fails = true;
  const auto work = [&](const QString& goods, const QString& warehouse) {
    ledgerRow("qc", "2021-05-01", 1, 5, 5, goods, warehouse);
    if (fails && goods == u"F") throw std::runtime_error("F");
    return goods != u"B";
  };
  const auto written = [] { return row("select g_sn from jxc_goodslist order by id"); };
  RepairPosition position;
  std::vector<int> changed;
  EXPECT_THROW(forEachPair(pairs, {}, &position, work, &changed), std::runtime_error);
  EXPECT_EQ(position.goods, "E");
  EXPECT_EQ(written(), "A B C D E");
  fails = false;
  int steps = 0;
  EXPECT_TRUE(forEachPair(
      pairs, [&](int, int) { return ++steps > 0; }, &position, work, &changed));
  EXPECT_LE(steps, 3);
  EXPECT_EQ(written(), all);
  EXPECT_EQ(changed, std::vector<int>({0, 2, 3, 4, 5, 6, 7}));
}

TEST_F(RepairTest, RecomputationLeavesQuantitiesAsTheyAreAndKeepsFixedCosts) {
  addGoods("A", 4);
  setParameter("cs_cbjs", 0);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',0,0,1)");
  const auto bought = ledgerRow("cj", "2021-05-01", 2.4, 12, 5);
  const auto sold = ledgerRow("xs", "2021-05-02", 0.4, 4, 10);
  replayLedger(bought);
  EXPECT_EQ(figures(sold), "2 5 10");
  setParameter("cs_cs009", 1);
  execSql("update jxc_kcsp set kc_cbj=1 where g_sn='A'");
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}));
  EXPECT_EQ(figures(bought), "2 5 10");
  EXPECT_EQ(figures(sold), "1.6 5 8");
  EXPECT_EQ(balanceOf("A"), "0 0 1");                                         // fixed
  EXPECT_EQ(lookupNumber("select g_pjjj from jxc_goods where g_sn='A'"), 4);  // no book stock, no average
  setParameter("cs_cs009", 0);
  EXPECT_TRUE(recomputeLedger("2021-01-01", {}));
  EXPECT_EQ(balanceOf("A"), "0 0 5");
}

TEST_F(RepairTest, CostAtARowComesFromMovementsBeforeOpeningRows) {
  addGoods("A", 3);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',0,0,2.5)");
  setParameter("cs_cs009", 1);  // plays no part
  const auto add = [this](const char* flag, const char* date, double average) {
    const auto id = ledgerRow(QString::fromLatin1(flag), QString::fromLatin1(date), 1, 1, 1);
    execSql("update jxc_goodslist set gl_pjjj=? where id=?", average, id);
    return id;
  };
  const auto earlier = add("cj", "2021-05-01", 5), earlierOpening = add("qc", "2021-05-02", 6);
  const auto same = add("cj", "2021-05-03", 8);
  const auto sameOpening = add("qc", "2021-05-03", 7);
  const auto row = add("xs", "2021-05-03", 7.5);
  const auto later = add("cj", "2021-05-04", 9);
  const auto cost = [&] { return getLedgerRowCost("A", "100001", "2021-05-03", row); };
  const auto without = [&](std::int64_t id) {
    execSql("delete from jxc_goodslist where id=?", id);
    return cost();
  };
  EXPECT_EQ(cost(), 8);
  EXPECT_EQ(without(same), 5);
  EXPECT_EQ(without(earlier), 6);
  EXPECT_EQ(without(earlierOpening), 7.5);
  EXPECT_EQ(without(row), 7);
  EXPECT_EQ(without(sameOpening), 9);
  execSql("update jxc_goodslist set gl_pjjj=0 where id=?", later);
  EXPECT_EQ(cost(), 2.5);  // a cost of nothing is none: the balance knows
  execSql("delete from jxc_kcsp where g_sn='A'");
  EXPECT_EQ(cost(), 3);
}

TEST_F(RepairTest, CostOfLoansThatCameBackAndAveragesThatAreMissing) {
  addGoods("A", 0);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',0,0,6)");
  const auto back = ledgerRow("hh", "2021-05-01", 2, 8, 4);
  const auto kept = ledgerRow("hh", "2021-05-01", 3, 12, 4);
  const auto level = ledgerRow("jh", "2021-05-02", 3, 18, 6);
  execSql("update jxc_goodslist set gl_djh='HH1' where id=?", back);
  execSql("update jxc_goodslist set gl_djh='HH2' where id=?", kept);
  execSql("update jxc_goodslist set gl_kc=2 where id=?", level);
  // Lines of a return know the quantity of the loan too; what came back or was kept is their own.
  insertRow("jxc_khjhsp", {{"gl_djh", u"HH1"}, {"g_sn", u"A"}, {"jh_flag", u"还货"}, {"jh_sl", 9.0}, {"jh_hhsl", 2.0}});
  insertRow("jxc_khjhsp", {{"gl_djh", u"HH2"}, {"g_sn", u"A"}, {"jh_flag", u"销售"}, {"jh_sl", 9.0}, {"jh_xssl", 3.0}});
  EXPECT_TRUE(syncOutgoingCost("2021-05-01", {}, true));
  EXPECT_EQ(lookupNumber("select gl_je from jxc_goodslist where id=?", back), 12);
  EXPECT_EQ(lookupNumber("select jh_zje from jxc_khjhsp where gl_djh='HH1'"), 12);
  EXPECT_EQ(lookupNumber("select gl_je from jxc_goodslist where id=?", kept), 18);
  EXPECT_EQ(lookupNumber("select jh_zje from jxc_khjhsp where gl_djh='HH2'"), 18);
  // Its price is right; the average that it never had is filled in.
  EXPECT_EQ(figures(level), "2 6 12");
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

}  // namespace jxc::repair_test
