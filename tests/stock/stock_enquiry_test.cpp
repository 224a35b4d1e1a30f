// Current stock: one warehouse against all, weighted cost, filters.
#include "stock/stock_enquiry.h"

#include "harness/account_set_fixture.h"
#include "harness/row_texts.h"

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
    execSql(
        "insert into jxc_goods (g_sn,g_name,gc_sn,g_sj,g_zhxs,g_pjjj,g_jy,ghs_sn) values (?,?,?,?,1,9.5,0,'100001')",
        number, name, classNumber, price);
  }
  static void stock(const char* number, const char* warehouse, double quantity, double cost) {
    execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,?,?,?,?,0)", number, warehouse,
            quantity, quantity, cost);
  }
  static RowSet rows(const Criteria& criteria) { return answer(currentStock, criteria); }
};

TEST_F(StockEnquiry, OneWarehouseShowsItsCostAndAllOfThemTheWeightedOne) {
  const auto figures = [](const Criteria& criteria) {
    return test::textsOf(rows(criteria), {"kcsl", "cbjj", "kczje", "xszje"});
  };
  EXPECT_EQ(figures({.warehouse = QStringLiteral("100001")}), QStringList({"3 10 30 60", "0 25 0 0"}));
  // (3×10 + 1×14) / 4; and what has nothing on the books stands at the catalogue's average.
  EXPECT_EQ(figures({}), QStringList({"4 11 44 80", "0 9.5 0 0"}));
}

TEST_F(StockEnquiry, FiltersNarrowAndTypedSignsAreChecked) {
  EXPECT_EQ(rows({.boxes = kHidesZeroStock}).rowCount(), 1);
  EXPECT_EQ(rows({.key = QStringLiteral("板材")}).rowCount(), 1);
  EXPECT_EQ(rows({.goodsClass = QStringLiteral("1001")}).rowCount(), 0);
  EXPECT_EQ(rows({.kind = QStringLiteral(">="), .amount = 4}).rowCount(), 1);
  EXPECT_EQ(rows({.partner = QStringLiteral("100002")}).rowCount(), 0);
  EXPECT_THROW(rows({.kind = QStringLiteral("; drop"), .amount = 4}), std::invalid_argument);
}

TEST_F(StockEnquiry, AListBeginsWithRowsAsTheyStay) {
  for (int i = 100; i < 230; ++i) {
    goods(("G" + std::to_string(i)).c_str(), i % 2 ? "钛架" : "镜盒", "1000", 20);
    stock(("G" + std::to_string(i)).c_str(), "100002", i % 3, 10);
  }
  for (const Criteria& asked : {Criteria{}, Criteria{.warehouse = u"100002"_qs}, Criteria{.key = u"镜盒"_qs},
                                Criteria{.boxes = kHidesZeroStock}, Criteria{.kind = u">="_qs, .amount = 3}}) {
    const auto told = [](const RowSet& rows) { return test::textsOf(rows, {"g_sn", "kcsl", "cbjj", "kczje", "fzkc"}); };
    QStringList begun;
    EnquiryReader reader(accountDb(), {}, [&](const RowSet& rows) { begun = told(rows); });
    const QStringList all = told(answer(Source(currentStockByPage).ask(asked), reader));
    EXPECT_GE(begun.size(), std::min<qsizetype>(all.size(), 1));
    EXPECT_EQ(begun, all.mid(0, begun.size()));
    EXPECT_EQ(all, told(rows(asked)));
  }
}

TEST_F(StockEnquiry, ABoundOperatorSumsOnlyHisWarehouses) {
  setParameter("cs_cgyh", 1);
  becomeOperator(QStringLiteral("小王"), QStringLiteral("100009"), QStringLiteral("100002"));
  EXPECT_EQ(test::textsOf(rows({}), {"kcsl", "cbjj"}), QStringList({"1 14"}));
}

}  // namespace jxc::stock_enquiry_test
