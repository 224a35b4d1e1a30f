// Current stock: one warehouse against all, weighted cost, filters.
#include "stock/stock_enquiry.h"

#include "harness/account_set_fixture.h"

namespace jxc::stock_enquiry_test {

class StockEnquiry : public test::AccountSetFixture {
 protected:
  StockEnquiry() {
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
    goods("F1", "钛架", "1000", 20);
    goods("F2", "板材架", "1000", 30);
    stock("F1", "100001", 3, 10);
    stock("F1", "100002", 1, 14);
    stock("F2", "100001", 0, 25);
  }
  static void goods(const char* number, const char* name, const char* classNumber, double price) {
    insertRow("jxc_goods", {{"g_sn", number},
                            {"g_name", name},
                            {"gc_sn", classNumber},
                            {"g_zhxs", 1},
                            {"g_sj", price},
                            {"g_pjjj", 9.5},
                            {"g_jy", 0},
                            {"ghs_sn", "100001"}});
  }
  static void stock(const char* number, const char* warehouse, double quantity, double cost) {
    insertRow("jxc_kcsp", {{"g_sn", number},
                           {"ck_sn", warehouse},
                           {"kc_sl", quantity},
                           {"kc_zsl", quantity},
                           {"kc_cbj", cost},
                           {"kc_xssl", 0}});
  }
  static RowSet rows(const Criteria& criteria) { return answer(currentStock, criteria); }
};

TEST_F(StockEnquiry, OneWarehouseShowsItsCostAndAllOfThemTheWeightedOne) {
  const RowSet one = rows({.warehouse = QStringLiteral("100001")});
  ASSERT_EQ(one.rowCount(), 2);
  EXPECT_EQ(one[0].number("cbjj"), 10);
  EXPECT_EQ(one[0].number("kczje"), 30);
  EXPECT_EQ(one[0].number("xszje"), 60);

  const RowSet all = rows({});
  ASSERT_EQ(all.rowCount(), 2);
  EXPECT_EQ(all[0].number("kcsl"), 4);
  EXPECT_EQ(all[0].number("cbjj"), 11);  // (3×10 + 1×14) / 4
  EXPECT_EQ(all[0].number("kczje"), 44);
  EXPECT_EQ(all[1].number("cbjj"), 9.5);  // nothing on the books: the catalogue's average
}

TEST_F(StockEnquiry, FiltersNarrowAndTypedSignsAreChecked) {
  EXPECT_EQ(rows({.boxes = kHidesZeroStock}).rowCount(), 1);
  EXPECT_EQ(rows({.key = QStringLiteral("板材")}).rowCount(), 1);
  EXPECT_EQ(rows({.goodsClass = QStringLiteral("1001")}).rowCount(), 0);
  EXPECT_EQ(rows({.kind = QStringLiteral(">="), .amount = 4}).rowCount(), 1);
  EXPECT_EQ(rows({.partner = QStringLiteral("100002")}).rowCount(), 0);
  EXPECT_THROW(rows({.kind = QStringLiteral("; drop"), .amount = 4}), std::invalid_argument);
}

TEST_F(StockEnquiry, ABoundOperatorSumsOnlyHisWarehouses) {
  setParameter("cs_cgyh", 1);
  becomeOperator(QStringLiteral("小王"), QStringLiteral("100009"), QStringLiteral("100002"));
  const RowSet his = rows({});
  ASSERT_EQ(his.rowCount(), 1);
  EXPECT_EQ(his[0].number("kcsl"), 1);
}

}  // namespace jxc::stock_enquiry_test
