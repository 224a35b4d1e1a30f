// The figures of 营业分析, worked out by hand for a small May: each block, days, months, and the day on the main
// window.
#include "statistics/business_day.h"

#include "masterdata/partner_side.h"
#include "stock/shop.h"

namespace jxc::business_day_test {

const QString kBranch = QStringLiteral("100002");

class BusinessDay : public test::ShopTest {
 protected:
  struct Line {
    double quantity, money;
  };
  BusinessDay() {
    addGoods("A", 10);
    addGoods("B", 3);
    insertRow("jxc_ckxx", {{"ck_sn", kBranch}, {"ck_name", "分店"}, {"ck_asn", "100099,"}});
  }
  static void document(const DocumentFamily& f, const char* number, const char* date, std::initializer_list<Line> lines,
                       const QString& warehouse = test::mainWarehouse, int status = 1) {
    insertRow(f.head, {{f.number, number}, {f.date, date}, {f.status, status}, {f.warehouse, warehouse}});
    for (const Line& line : lines)
      insertRow(f.lines,
                {{f.number, number}, {f.line.columns->quantity, line.quantity}, {f.line.columns->total, line.money}});
  }
  static void money(const PartnerSide& side, const char* partner, const char* kind, const char* date, double due,
                    double paid) {
    insertRow("jxc_ysyfk", {{"k_type", side.isCustomer() ? "kh" : "ghs"},
                            {"k_ghskh", partner},
                            {"k_djlx", kind},
                            {"k_rq", date},
                            {"k_yfje", due},
                            {"k_sfje", paid}});
  }
  void beOfTheBranch() {
    setParameter("cs_cgyh", 1);
    setRights(QStringLiteral("100077"), "tjgl", QString(20, u'1'));
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  }
  static Criteria period(const char* from, const char* to) {
    return {.from = QString::fromLatin1(from), .to = QString::fromLatin1(to)};
  }
  template <auto Statement>
  static QStringList rowsOf(const Criteria& criteria, const char* columns) {
    QStringList all;
    for (const Row row : answer(Source(Statement), criteria)) {
      QStringList cells;
      for (const QString& column : QString::fromLatin1(columns).split(u' '))
        cells << row.text(column.toStdString());
      all << cells.join(u' ');
    }
    return all;
  }
  /// The figures of these columns by a blank.
  static QString figures(const Criteria& criteria, const char* columns) {
    return rowsOf<businessFigures>(criteria, columns).front();
  }
  static QString mayOf(const char* columns) { return figures(period("2021-05-01", "2021-05-31"), columns); }
};

TEST_F(BusinessDay, EachBlockCountsItsAuditedDocumentsAndSumsTheirLines) {
  using namespace families;
  document(purchaseReceipt, "CJ1", "2021-05-01", {{10, 100}, {5, 60}});
  document(purchaseReceipt, "CJ2", "2021-05-31 23:59:59", {{2, 20}}, kBranch);
  document(purchaseReceipt, "CJ3", "2021-06-01", {{7, 70}});
  document(purchaseReceipt, "CJ4", "2021-05-02", {{9, 90}}, test::mainWarehouse, 0);
  document(purchaseReturn, "CT1", "2021-05-03", {{3, 30}});
  document(families::sale, "XS1", "2021-05-03", {{4, 80}, {1, 25}});
  document(families::sale, "XS2", "2021-05-04", {{2, 50}}, kBranch);
  document(saleReturn, "XT1", "2021-05-05", {{1, 20}});
  document(transfer, "DB1", "2021-05-06", {{6, 66}});
  document(loss, "BS1", "2021-05-07", {{1, 11}});
  document(overflow, "BY1", "2021-05-08", {{2, 22}});
  EXPECT_EQ(mayOf("cgds cgsl cgje ctds ctsl ctje cghjsl cghjje"), "2 17 180 1 3 30 14 150");
  EXPECT_EQ(mayOf("xsds xssl xsje xtds xtsl xtje xshjsl xshjje"), "2 7 155 1 1 20 6 135");
  EXPECT_EQ(mayOf("dbds dbsl bsds bssl bsje byds bysl byje"), "1 6 1 1 11 1 2 22");
  Criteria branch = period("2021-05-01", "2021-05-31");
  branch.warehouse = kBranch;
  EXPECT_EQ(figures(branch, "cgds cgsl cgje xsds xssl xsje dbds"), "1 2 20 1 2 50 0");
  beOfTheBranch();
  EXPECT_EQ(mayOf("cgds cgsl cgje xsds xssl xsje xtds bsds"), "1 2 20 1 2 50 0 0") << "the other warehouse is not his";
}

TEST_F(BusinessDay, ProfitIsOfSalesLessReturnsAndItsMarginIsOfTheAmountWithTax) {
  ledgerRow("xs", "2021-05-01 09:00:00", {3, 100, 13, 60, 40});
  ledgerRow("xt", "2021-05-31 23:59:59", {-1, -30, -3.9, -20, -10});
  ledgerRow("xs", "2021-06-01", {5, 500, 0, 100, 400});
  ledgerRow("cj", "2021-05-01", {5, 500, 0});
  EXPECT_EQ(mayOf("xscb xslr xszje lrl"), "40 30 79.1 37.93");  // 30/79.1
  EXPECT_EQ(figures(period("2021-07-01", "2021-07-31"), "xscb xslr xszje lrl xsds cgsl fkje"), "0 0 0 0 0 0 0");
  EXPECT_EQ(figures(period("2021-05-31", "2021-05-01"), "xslr lrl cgds skje"), "0 0 0 0") << "turned round";
  Criteria gone = period("2021-05-01", "2021-05-31");
  gone.warehouse = QStringLiteral("999999");
  EXPECT_EQ(figures(gone, "xslr lrl cgds kcsl kcje"), "0 0 0 0 0");
}

TEST_F(BusinessDay, TheStockIsThatOfThisMomentWhateverThePeriod) {
  const auto stock = [](const char* goods, const QString& warehouse, double quantity, double cost) {
    insertRow("jxc_kcsp", {{"g_sn", goods}, {"ck_sn", warehouse}, {"kc_sl", quantity}, {"kc_cbj", cost}});
  };
  insertRow("jxc_goods", {{"g_sn", "OLD"}, {"g_name", "停用"}, {"g_jy", 1}});
  stock("A", test::mainWarehouse, 7, 10.005);
  stock("B", kBranch, 3, 3);
  stock("OLD", test::mainWarehouse, 50, 1);
  stock("00000000", test::mainWarehouse, 1, 99);
  for (const auto& [from, to] : {std::pair("2021-05-01", "2021-05-31"), std::pair("1999-01-01", "1999-01-02")})
    EXPECT_EQ(figures(period(from, to), "kcsl kcje"), "10 79.04");  // 70.035 + 9
  beOfTheBranch();
  EXPECT_EQ(mayOf("kcsl kcje"), "3 9");
}

TEST_F(BusinessDay, MoneyIsThatOfPartnersInUse) {
  insertRow("jxc_ghsxx", {{"ghs_sn", "S1"}, {"ghs_forbid", 0}});
  insertRow("jxc_ghsxx", {{"ghs_sn", "S2"}, {"ghs_forbid", 1}});
  insertRow("jxc_khxx", {{"kh_sn", "K1"}, {"kh_forbid", 0}});
  money(supplierSide, "S1", "CJ", "2021-05-01", 180, 80);
  money(supplierSide, "S1", "FK", "2021-05-31", 0, 60);
  money(supplierSide, "S2", "FK", "2021-05-02", 0, 500);
  money(supplierSide, "S1", "FK", "2021-06-01", 0, 40);
  money(customerSide, "K1", "XS", "2021-05-03", 155, 100);
  money(customerSide, "K1", "SK", "2021-05-03", 0, 30);
  money(customerSide, "K1", "SK", "2021-05-04", 0, 5);
  EXPECT_EQ(mayOf("fkds fkje yfje sfje"), "1 60 180 140");
  EXPECT_EQ(mayOf("skds skje ysje ssje"), "2 35 155 135");
}

TEST_F(BusinessDay, DaysWithoutTradeAreThereAndTheirTotalsAreThoseOfThePage) {
  ledgerRow("cj", "2021-05-01", {10, 100, 13});
  ledgerRow("ct", "2021-05-01 18:00:00", {-2, -20, -2.6});
  ledgerRow("xs", "2021-05-03 09:00:00", {3, 100, 13, 60, 40});
  ledgerRow("xs", "2021-05-03 10:00:00", {1, 0, 0, 5, -5}, "A", kBranch);
  ledgerRow("db", "2021-05-02", {1, 1});
  const char* columns = "rq cgsl cgje cgtaxje cgzje xssl xsje xstaxje xszje xscb xslr lrl";
  const auto days = [&](const char* from, const char* to) { return rowsOf<businessDays>(period(from, to), columns); };
  EXPECT_EQ(days("2021-05-01", "2021-05-04"),
            QStringList({"2021-05-01 8 80 10.4 90.4 0 0 0 0 0 0 0", "2021-05-02 0 0 0 0 0 0 0 0 0 0 0",
                         "2021-05-03 0 0 0 0 4 100 13 113 65 35 30.97", "2021-05-04 0 0 0 0 0 0 0 0 0 0 0"}));
  EXPECT_EQ(mayOf("xszje xscb xslr lrl"), "113 65 35 30.97");
  EXPECT_EQ(days("2000-01-01", "9999-12-31").size(), 3) << "of all time the days from the first to the last";
  EXPECT_EQ(days("2021-05", "2021-05").size(), 31);
  EXPECT_TRUE(days("2021-06-01", "2021-06-30").isEmpty());
  EXPECT_TRUE(days("2021-05-04", "2021-05-01").isEmpty());
  EXPECT_EQ(rowsOf<businessLines>(period("2021-05-01", "2021-05-03"), "lx cgzje xszje"),
            QStringList({"商品销售  0", "商品销售  113", "采购退货 -22.6 ", "采购进货 113 "}));
  beOfTheBranch();
  EXPECT_EQ(days("2021-05-03", "2021-05-03"), QStringList({"2021-05-03 0 0 0 0 1 0 0 0 5 -5 0"}));
}

TEST_F(BusinessDay, AMonthHasItsStockAndNothingWhereItHadNoTrade) {
  const auto month = [](const char* name, const QString& warehouse, double quantity, double value) {
    insertRow("jxc_kcjs", {{"js_rq", name}, {"ck_sn", warehouse}, {"js_sl", quantity}, {"js_zje", value}});
  };
  execSql("delete from jxc_kcjs");
  month("2021-04", test::mainWarehouse, 5, 50);
  month("2021-05", test::mainWarehouse, 8, 80.5);
  month("2021-05", kBranch, 1, 10);
  ledgerRow("cj", "2021-05-01", {10, 100, 13});
  ledgerRow("xs", "2021-05-31 23:59:59", {3, 100, 13, 60, 38});
  ledgerRow("xs", "2021-06-01", {3, 100, 13, 60, 38});  // of a month without a stock: not told
  const auto months = [](const char* from, const char* to) {
    return rowsOf<businessMonths>(period(from, to), "js_rq sl zje cgsl cgje cgzje xssl xsje xszje xscb xslr lrl");
  };
  EXPECT_EQ(months("2021-01", "2021-12"),
            QStringList({"2021-05 9 90.5 10 100 113 3 100 113 62 38 38", "2021-04 5 50         0"}));
  EXPECT_EQ(months("2021-04", "2021-04").size(), 1);
  EXPECT_TRUE(months("2021-12", "2021-01").isEmpty());
  beOfTheBranch();
  EXPECT_EQ(months("2021-05", "2021-05"), QStringList({"2021-05 1 10         0"}));
}

TEST_F(BusinessDay, TheDayOnTheMainWindowIsThePageOfToday) {
  using namespace families;
  document(families::sale, "XS1", "2021-05-03", {{4, 80}});
  document(families::sale, "XS2", "2021-05-03 20:00:00", {{1, 30}}, kBranch);
  document(families::sale, "XS3", "2021-05-02", {{9, 90}});
  document(families::sale, "XS4", "2021-05-03", {{5, 50}}, test::mainWarehouse, 0);
  document(saleReturn, "XT1", "2021-05-03", {{1, 20}}, kBranch);
  document(overflow, "BY1", "2021-04-08", {{2, 22}}, kBranch, 0);
  ledgerRow("xs", "2021-05-03", {4, 80, 0, 50, 30});
  ledgerRow("xs", "2021-05-03", {1, 30, 0, 10, 20}, "A", kBranch);
  const auto cash = [](const char* account, const char* date, double amount, const char* counts) {
    insertRow("jxc_xjyh", {{"xj_kmmc", account}, {"xj_rq", date}, {"xj_je", amount}, {"xj_chk", counts}});
  };
  cash("现金", "2021-05-03", 80, "1");
  cash("现金", "2021-05-03", -20, "1");
  cash("现金", "2021-05-03", 1000, "0");
  cash("建行帐号", "2021-05-03", 30, "1");
  cash("工行帐号", "2021-05-02", 30, "1");
  execSql("update jxc_goods set g_zdkc=5,g_kc=4 where g_sn='A'");
  execSql("update jxc_khxx set kh_lwje=0");
  execSql("update jxc_ghsxx set ghs_lwje=0");
  insertRow("jxc_khxx", {{"kh_sn", "K1"}, {"kh_forbid", 0}, {"kh_lwje", 155.5}});
  insertRow("jxc_khxx", {{"kh_sn", "K2"}, {"kh_forbid", 1}, {"kh_lwje", 1000}});
  insertRow("jxc_ghsxx", {{"ghs_sn", "S1"}, {"ghs_forbid", 0}, {"ghs_lwje", 44}});
  const Criteria today = period("2021-05-03", "2021-05-03");
  const auto day = [&] { return rowsOf<dayFigures>(today, "what name ds sl je"); };
  EXPECT_EQ(day(), QStringList({"xs  2 5 110", "xt  1 1 20", "lr  0 0 50", "zj 建行帐号 0 0 30", "zj 现金 0 0 60",
                                "ds  2 0 0", "bj  1 0 0", "ys  0 0 155.5", "yf  0 0 44"}));
  EXPECT_EQ(figures(today, "xsds xssl xsje xtds xtsl xtje xslr"), "2 5 110 1 1 20 50");

  insertRow("jxc_kcsp", {{"g_sn", "A"}, {"ck_sn", kBranch}, {"kc_sl", 9.0}});
  beOfTheBranch();
  for (const char* group : {"xsgl", "kcgl"})
    setRights(QStringLiteral("100077"), group, QString(20, u'1'));
  EXPECT_EQ(figures(today, "xsds xssl xsje xtds xtsl xtje xslr"), "1 1 30 1 1 20 20");
  EXPECT_EQ(day().mid(0, 3), QStringList({"xs  1 1 30", "xt  1 1 20", "lr  0 0 20"}));
  EXPECT_EQ(day().mid(5, 2), QStringList({"ds  1 0 0", "bj  0 0 0"})) << "his own waiting one; enough in his warehouse";
}

}  // namespace jxc::business_day_test
