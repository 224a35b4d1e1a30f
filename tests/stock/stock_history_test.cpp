// Stock at the end of a day, and where one goods stands: figures of a small shop worked out by hand.
#include "stock/goods_situation.h"
#include "stock/shop.h"
#include "stock/stock_enquiry.h"

namespace jxc::stock_history_test {

class StockHistory : public test::ShopTest {
 protected:
  StockHistory() {
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
    addGoods("A", 5);
    addGoods("AB", 3);
  }
  void receiveInto(const QString& warehouse, const QString& date, const Line& line) {
    audited(test::waitingDocument(families::purchaseReceipt, date, {{"ck_sn", warehouse}}, {line}));
  }
  static QStringList at(const QString& day, const QString& warehouse = {}, unsigned boxes = 0) {
    return test::textsOf(answer(stockAt, {.to = day, .warehouse = warehouse, .boxes = boxes}),
                         {"g_sn", "kcsl", "cbjj", "kczje"});
  }
  void beBound() {
    setParameter("cs_cgyh", 1);
    becomeOperator(u"小王"_qs, u"100009"_qs, u"100002"_qs);
  }
};

TEST_F(StockHistory, ADayShowsTheLastRowsUpToItsEnd) {
  receive("2021-04-01", {{"A", 10, 5}});
  receive("2021-04-10", {{"A", 10, 7}});
  receiveInto("100002", "2021-04-20", {"A", 5, 8});
  receive("2021-04-01", {{"AB", 2, 3}});
  const QString sale = sell("2021-05-02", {{"A", 4, 12}});
  execSql("update jxc_goodslist set gl_kdrq='2021-05-02 23:59:59' where gl_djh=?", sale);
  execSql(
      "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl) select g_sn,ck_sn,kc_sl,kc_zsl from jxc_kcsp where g_sn='AB'");
  execSql("update jxc_goods set g_zhxs=0 where g_sn='A'");

  EXPECT_EQ(at("2021-03-31"), QStringList());
  EXPECT_EQ(at("2021-04-09"), QStringList({"A 10 5 50", "AB 2 3 6"}));
  EXPECT_EQ(at("2021-04-30"), QStringList({"A 25 6.4 160", "AB 2 3 6"}));  // 20 at 6 and 5 at 8
  EXPECT_EQ(at("2021-04-30", "100002"), QStringList({"A 5 8 40"}));
  EXPECT_EQ(at("2021-05-01", test::mainWarehouse)[0], "A 20 6 120");
  EXPECT_EQ(at("2021-05-02", test::mainWarehouse)[0], "A 16 6 96");  // sold in its last second
  EXPECT_EQ(at("9999-12-31")[0], at({})[0]);
  EXPECT_EQ(at("0001-01-01"), QStringList());

  execSql("update jxc_goods set g_jy=1 where g_sn='AB'");
  EXPECT_EQ(at("2021-04-09"), QStringList({"A 10 5 50"}));
  EXPECT_EQ(at("2021-04-09", {}, kWithDisabledGoods).size(), 2);
  // Neither goods has a class, and the second unit of A is 0: both stand there all the same.
  const RowSet now = answer(currentStock, {.warehouse = test::mainWarehouse});
  EXPECT_EQ(test::textsOf(now, {"g_sn", "gc_name", "kcsl"}), QStringList({"A 其他 16"}));
  EXPECT_TRUE(now.front().isNull("fzkc"));

  beBound();
  EXPECT_EQ(at("2021-04-30"), QStringList({"A 5 8 40"}));
  EXPECT_EQ(at("2021-04-30", test::mainWarehouse), QStringList());
}

TEST_F(StockHistory, OneGoodsOnItsWayPromisedLentAndWaiting) {
  setParameter("cs_sprk", 1);
  setParameter("cs_spck", 1);
  const QString bought =
      audited(test::waitingDocument(families::purchaseReceipt, "2021-05-01", {{"j_crk", 0}}, {{"A", 10, 5}}));
  audited(test::waitingPart(partial::putaway, "2021-05-01", bought, {8}));
  const QString sold = sell("2021-05-02", {{"A", 5, 12}});
  audited(test::waitingPart(partial::issue, "2021-05-02", sold, {2}));
  audited(test::waitingDocument(families::loan, "2021-05-02", {}, {{"A", 2, 5}}));
  test::returnLoan("2021-05-03", lookupValue("select id from jxc_khjhsp").toLongLong(), 1, 0, 0);
  receiveInto("100002", "2021-05-03", {"A", 4, 6});
  const QString waiting = waitingSale("2021-05-03", {{"A", 1, 12}}, 0);
  waitingSale("2021-05-03", {{"AB", 1, 12}}, 0);

  const auto pieces = {std::string_view("kcsl"), std::string_view("kczsl"), std::string_view("ztsl"),
                       std::string_view("dcsl"), std::string_view("jcsl"),  std::string_view("kysl")};
  const RowSet all = answer(goodsSituation, {.key = u"镜架A"_qs});
  ASSERT_EQ(all.rowCount(), 1);  // AB has never been anywhere
  EXPECT_EQ(test::textsOf(all, pieces)[0], "5 8 6 3 1 2");
  const Criteria ofA{.goods = u"A"_qs};
  // In the second warehouse nothing has been put away yet.
  EXPECT_EQ(test::textsOf(answer(situationByWarehouse, ofA), pieces), QStringList({"5 4 2 3 1 2", "0 4 4 0 0 0"}));
  EXPECT_EQ(test::textsOf(answer(lastPrices, ofA), {"dnote", "gl_sl", "jj", "sj"}),
            QStringList({"采购进货 4 6 ", "商品销售 5  12", "采购进货 10 5 "}));
  EXPECT_EQ(test::textsOf(answer(waitingWithGoods, ofA), {"djh", "g_sn"}), QStringList({waiting + " A"}));

  beBound();
  EXPECT_EQ(test::textsOf(answer(situationByWarehouse, ofA), pieces), QStringList({"0 4 4 0 0 0"}));
  EXPECT_EQ(answer(lastPrices, ofA).rowCount(), 1);
}

}  // namespace jxc::stock_history_test
