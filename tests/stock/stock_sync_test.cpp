// 库存核对、库存同步、修改均价: planted differences are found and go either way, and the books are proved after each.
#include "stock/stock_sync.h"

#include "maintenance/prove.h"
#include "stock/average_change.h"
#include "stock/shop.h"
#include "stock/what_if.h"

namespace jxc::stock_sync_test {

class StockSync : public test::ShopTest {
 protected:
  StockSync() {
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
    for (const char* goods : {"A", "B", "C", "D"})
      addGoods(goods, 5);
  }
  static void plant(const char* goods, double pieces) {
    execSql("update jxc_kcsp set kc_sl=kc_sl+(?),kc_zsl=kc_zsl+(?) where g_sn=?", pieces, pieces,
            QString::fromLatin1(goods));
  }
  /// A counts two too many, C is nowhere in the ledger, D only there; B is right.
  void plantAll() {
    receive("2021-04-01", {{"A", 10, 5}, {"B", 4, 5}, {"D", 3, 5}});
    sell("2021-04-02", {{"A", 3, 9}});
    sell("2021-06-01", {{"A", 1, 9}});  // after today
    plant("A", 2);
    execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values ('C','100001',2,2,5,0)");
    execSql("delete from jxc_kcsp where g_sn='D'");
  }
  static RowSet differences(const Criteria& criteria = {}) { return answer(stockDifferences, criteria); }
  static QStringList listed(const Criteria& criteria = {}) {
    return test::textsOf(differences(criteria), {"g_sn", "kc_sl", "kc_zsl", "gl_kc", "cysl"});
  }
  static RowSet places() {
    RowSet all({"g_sn", "ck_sn"});
    for (const Row row : differences()) {
      all.addText(row.text("g_sn").toStdString());
      all.addText(row.text("ck_sn").toStdString());
    }
    return all;
  }
  static QStringList books() {
    return test::textsOf(openSelect("select g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp order by id")) +
           test::textsOf(openSelect("select * from jxc_goodslist order by id")) +
           test::textsOf(openSelect("select g_sn,g_kc,g_pjjj from jxc_goods order by id"));
  }
  /// Nothing differs any more, the proof finds nothing, and neither another sync nor a recomputation has more to do.
  static void expectMended() {
    EXPECT_EQ(listed(), QStringList());
    const proof::Proof proof = proof::prove(accountDb());
    EXPECT_TRUE(proof.isClean()) << test::textsOf(proof.rows()).join(u'\n').toStdString();
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    const QStringList before = books();
    for (const SyncWay way : {SyncWay::StockFollows, SyncWay::LedgerFollows})
      EXPECT_TRUE(syncStock(places(), way));
    EXPECT_TRUE(recomputeLedger("2021-01-01", {}));
    EXPECT_EQ(books(), before);
  }
};

TEST_F(StockSync, StockFollowsTheLedger) {
  plantAll();
  EXPECT_EQ(listed(), QStringList({"A 8 8 6 2", "C 2 2 0 2", "D 0 0 3 -3"}));
  EXPECT_EQ(listed({.key = u"镜架C"_qs}), QStringList({"C 2 2 0 2"}));
  EXPECT_EQ(listed({.warehouse = u"100002"_qs}), QStringList());
  EXPECT_TRUE(syncStock(places(), SyncWay::StockFollows));
  EXPECT_EQ(balanceOf("A"), "6 6 5");
  EXPECT_EQ(balanceOf("C"), "0 0 5");
  EXPECT_EQ(balanceOf("D"), "3 3 5");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 6);
  EXPECT_EQ(lastLog(), "库存同步：用结存数量替换当前库存数量，共3种商品");
  expectMended();
}

TEST_F(StockSync, TheLedgerFollowsTheStockByARowOfTodayAndWhatIsDatedLaterFollows) {
  plantAll();
  EXPECT_TRUE(syncStock(places(), SyncWay::LedgerFollows));
  EXPECT_EQ(balanceOf("A"), "8 8 5");
  const auto rowOf = [](const char* goods) {
    return row(
        "select gl_kdrq,gl_flag,gl_djh,gl_sl,gl_dj,gl_zje,gl_je,gl_sqsl,gl_kc,gl_kczje,gl_note from "
        "jxc_goodslist where ghs_name='同步' and g_sn=?",
        QString::fromLatin1(goods));
  };
  EXPECT_EQ(rowOf("A"), "2021-05-03 qc  2 5 10 10 7 9 45 库存同步");
  EXPECT_EQ(lastFigures("A"), "8 5 40");  // the sale of June
  EXPECT_EQ(rowOf("C"), "2021-05-03 qc  2 5 10 10 0 2 10 库存同步");
  EXPECT_EQ(rowOf("D"), "2021-05-03 qc  -3 5 -15 -15 3 0 0 库存同步");
  expectMended();
}

TEST_F(StockSync, OnlyTheBooksAreComparedWhereGoodsComeOntoTheShelfLater) {
  setParameter("cs_sprk", 1);
  audited(test::waitingDocument(families::purchaseReceipt, "2021-05-01", {{"j_crk", 0}}, {{"A", 10, 5}}));
  EXPECT_EQ(balanceOf("A"), "0 10 5");
  EXPECT_EQ(listed(), QStringList());
  for (const SyncWay way : {SyncWay::StockFollows, SyncWay::LedgerFollows}) {
    execSql("update jxc_kcsp set kc_zsl=kc_zsl+2 where g_sn='A'");
    EXPECT_EQ(listed(), QStringList({"A 0 12 10 2"}));
    EXPECT_TRUE(syncStock(places(), way));
    EXPECT_EQ(balanceOf("A"), way == SyncWay::StockFollows ? "0 10 5" : "0 12 5");
    EXPECT_EQ(listed(), QStringList());
  }
}

TEST_F(StockSync, ItStopsBetweenTwoGoodsGoesOnAndTakesWhatAnotherStationPosted) {
  receive("2021-04-01", {{"A", 10, 5}, {"B", 4, 5}, {"C", 4, 5}});
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',3,3,5)");
  plant("B", -1.005);
  plant("C", 1);
  EXPECT_EQ(listed(), QStringList({"A 3 3 10 -7", "B 2.995 2.995 4 -1.005", "C 5 5 4 1"}));
  const RowSet all = places();
  RepairPosition position;
  EXPECT_FALSE(syncStock(
      all, SyncWay::LedgerFollows, [](int done, int) { return done < 1; }, &position));
  EXPECT_EQ(position.goods, "A");
  EXPECT_EQ(balanceOf("A"), "10 10 5");  // of two balances the first
  EXPECT_EQ(listed().size(), 2);
  EXPECT_TRUE(syncStock(
      all, SyncWay::LedgerFollows,
      [&](int done, int) {
        EXPECT_FALSE(accountDb().inTransaction());
        if (done == 2) receive("2021-05-03", {{"C", 5, 5}});
        return true;
      },
      &position));
  EXPECT_TRUE(position.isEmpty());
  EXPECT_EQ(balanceOf("B"), "3 3 5");  // quantities have two decimals
  EXPECT_EQ(balanceOf("C"), "10 10 5");
  expectMended();
}

TEST_F(StockSync, TheAverageIsSetByHandWhereTheOperatorMay) {
  receive("2021-04-01", {{"A", 10, 5}});
  audited(test::waitingDocument(families::purchaseReceipt, "2021-04-02", {{"ck_sn", "100002"}}, {{"A", 3, 6}}));
  const auto figures = [] {
    return test::textsOf(openSelect("select kc_cbj from jxc_kcsp where g_sn='A' order by ck_sn")) +
           test::textsOf(openSelect("select gl_pjjj,gl_kczje from jxc_goodslist where g_sn='A' order by id")) +
           test::textsOf(openSelect("select g_pjjj,g_cbj from jxc_goods where g_sn='A'"));
  };
  EXPECT_FALSE(changeAverage("A", {}, 0.004, prompt));
  EXPECT_EQ(prompt.notices.last(), u"成本均价必须大于零！");
  EXPECT_FALSE(changeAverage("B", {}, 7, prompt));

  const QStringList before = figures();
  const WhatIf preview = whatIf("A", [](Prompt& agreeing) { return changeAverage("A", {}, 7, agreeing); });
  EXPECT_TRUE(preview.done);
  EXPECT_EQ(preview.impacts.size(), 3u);
  EXPECT_EQ(figures(), before);

  EXPECT_TRUE(changeAverage("A", {}, 7.125, prompt));
  EXPECT_EQ(figures(), QStringList({"7.13", "7.13", "7.13 71.3", "7.13 21.39", "7.13 7.13"}));
  EXPECT_EQ(lastLog(), "修改库存均价：A 镜架A，仓库：所有仓库，5.23 → 7.13");
  EXPECT_TRUE(proof::prove(accountDb()).isClean());
  setParameter("cs_zjews", 1);
  setParameter("cs_jews", 0);
  EXPECT_TRUE(changeAverage("A", "100002", 9, prompt));
  EXPECT_EQ(figures(), QStringList({"7.13", "9", "7.13 71.3", "9 27", "7.56 7.56"}));  // (10×7.13+3×9)/13

  setParameter("cs_cgyh", 1);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"100002"_qs);
  EXPECT_TRUE(changeAverage("A", {}, 10.5, prompt));
  EXPECT_EQ(figures(), QStringList({"7.13", "10.5", "7.13 71.3", "10.5 32", "7.91 7.91"}));
  EXPECT_FALSE(changeAverage("A", test::mainWarehouse, 1, prompt));
}

}  // namespace jxc::stock_sync_test
