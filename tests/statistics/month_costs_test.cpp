// What stock was worth month by month, beside what was bought and sold, worked out by hand.
#include "statistics/month_costs.h"

#include "stock/shop.h"

namespace jxc::month_costs_test {

class MonthCosts : public test::ShopTest {
 protected:
  static QStringList of(const QString& from, const QString& to, const QString& warehouse = {}) {
    return test::textsOf(answer(monthCosts, {.from = from, .to = to, .warehouse = warehouse}),
                         {"js_rq", "sl", "zje", "cgsl", "cgje", "cgtax", "xssl", "xsje", "zcb", "lr"});
  }
};

TEST_F(MonthCosts, AMonthHasItsStockAndItsTradeEachWhereItIsKnown) {
  insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
  ledgerRow("cj", "2021-03-31 23:59:59", {.quantity = 10, .net = 50, .tax = 5});
  ledgerRow("ct", "2021-04-01", {.quantity = -2, .net = -10, .tax = -1});
  ledgerRow("xs", "2021-04-02", {.quantity = 3, .net = 36, .tax = 3.6, .cost = 15, .profit = 21});
  ledgerRow("xt", "2021-04-03", {.quantity = -1, .net = -12, .tax = -1.2, .cost = -5, .profit = -7}, "A", "100002");
  ledgerRow("by", "2021-04-04", 7, 70, 10);
  for (const auto& [month, warehouse, pieces, yuan] :
       {std::tuple("2021-04", "100001", 5.0, 25.004), std::tuple("2021-04", "100002", 1.0, 5.002),
        std::tuple("2021-05", "100001", 4.0, 20.0)})
    insertRow("jxc_kcjs", {{"js_rq", month}, {"ck_sn", warehouse}, {"js_sl", pieces}, {"js_zje", yuan}});

  // Nothing was kept of March; in May nothing was bought or sold.
  EXPECT_EQ(of("2021-03", "2021-05"), QStringList({"2021-03   10 50 5 0 0 0 0", "2021-04 6 30.01 -2 -10 -1 2 24 10 14",
                                                   "2021-05 4 20 0 0 0 0 0 0 0"}));
  EXPECT_EQ(of("2021-04", "2021-04", "100002"), QStringList({"2021-04 1 5 0 0 0 -1 -12 -5 -7"}));
  EXPECT_EQ(of("2021-05", "2021-04"), QStringList());
  EXPECT_EQ(of("0001-01", "9999-12").size(), 3);
}

}  // namespace jxc::month_costs_test
