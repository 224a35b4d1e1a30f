// Goods below their minimum and goods that do not sell, and the receipt that is begun for what is short.
#include "stock/stock_alerts.h"

#include "purchasing/replenishing.h"
#include "stock/shop.h"

namespace jxc::stock_alerts_test {

class StockAlerts : public test::ShopTest {
 protected:
  StockAlerts() {
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
    for (const char* goods : {"A", "B", "C"})
      addGoods(goods, 5);
    receive("2021-01-01", {{"A", 3, 5}, {"B", 1, 5}, {"C", 2, 5}});
    audited(test::waitingDocument(families::purchaseReceipt, "2021-01-01", {{"ck_sn", "100002"}}, {{"A", 4, 5}}));
    execSql("update jxc_goods set g_zdkc=5");
    execSql("update jxc_goods set g_jy=1 where g_sn='C'");
  }
  static QStringList alerts(const QString& warehouse = {}, const QString& key = {}) {
    return test::textsOf(answer(stockAlerts, {.warehouse = warehouse, .key = key}), {"g_sn", "kc", "qs"});
  }
  static QStringList slow(double days, const QString& warehouse = {}) {
    return test::textsOf(answer(slowSellers, {.warehouse = warehouse, .amount = days}),
                         {"g_sn", "kcsl", "kczje", "zhxs", "ts", "zhjh"});
  }
};

TEST_F(StockAlerts, TheMinimumIsHeldAgainstTheWholeShopOrOneWarehouse) {
  EXPECT_EQ(alerts(), QStringList({"B 1 4"}));  // of A there are seven
  EXPECT_EQ(alerts(test::mainWarehouse), QStringList({"B 1 4", "A 3 2"}));
  EXPECT_EQ(alerts("100002"), QStringList({"A 4 1"}));  // B has never been there
  EXPECT_EQ(alerts(test::mainWarehouse, "镜架a"), QStringList({"A 3 2"}));
  EXPECT_EQ(alerts({}, "%"), QStringList());
  setParameter("cs_cgyh", 1);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"100002"_qs);
  EXPECT_EQ(alerts(), QStringList({"A 4 1"}));
  EXPECT_EQ(alerts(test::mainWarehouse), QStringList());
}

TEST_F(StockAlerts, WhatIsShortBeginsAReceiptOrGoesOnWithIt) {
  const auto drafted = [] {
    return test::textsOf(openSelect("select g_sn,jh_sl,jh_dj from jxc_jhsp where j_sn=? order by id",
                                    unsavedDraft(families::purchaseReceipt)));
  };
  EXPECT_EQ(replenishing::draftReceipt({}, prompt), 0);
  EXPECT_EQ(prompt.notices.last(), u"请先选择要进货的商品！");
  const std::vector<replenishing::Wanted> first{{"B", 4}}, both{{"A", 2}, {"B", 9}};
  EXPECT_EQ(replenishing::draftReceipt(first, prompt), 1);
  EXPECT_EQ(replenishing::draftReceipt(both, prompt), 1);
  EXPECT_EQ(drafted(), QStringList({"B 4 5", "A 2 5"}));
  EXPECT_EQ(replenishing::draftReceipt(both, prompt), 0);
  EXPECT_EQ(prompt.notices.last(), u"选中的商品已经在未保存的采购进货单中！");
}

TEST_F(StockAlerts, GoodsThatNobodyBoughtForSoManyDays) {
  sell("2021-01-01", {{"A", 1, 9}});  // 122 days ago
  EXPECT_EQ(slow(121), QStringList({"B 1 5 从未销售  2021-01-01", "C 2 10 从未销售  2021-01-01",
                                    "A 6 30 2021-01-01 122 2021-01-01"}));
  EXPECT_EQ(slow(122).size(), 2);
  EXPECT_EQ(slow(0).size(), 3);
  EXPECT_EQ(slow(1e300).size(), 2);
  EXPECT_EQ(slow(121, "100002"), QStringList({"A 4 20 从未销售  2021-01-01"}));  // sold elsewhere
  // Given back is not sold, and what is all gone lies nowhere.
  audited(waitingReturn(families::saleReturn, "2021-05-02", {{"A", 1, 9}}));
  sell("2021-05-03", {{"B", 1, 9}});
  EXPECT_EQ(slow(121).size(), 2);
}

}  // namespace jxc::stock_alerts_test
