// The statements, worked by hand over a shop with a bit of everything, and each of their figures against what it opens.
#include "accounts/balance_sheet.h"
#include "accounts/expenses.h"
#include "accounts/income_statement.h"
#include "accounts/partner_documents.h"
#include "stock/shop.h"

#include <QRegularExpression>

namespace jxc::financial_statements_test {

using expenses::Side;
using partner_books::Kind;

const Source kIncome{incomeStatement, kStatementsAreOfTheShop}, kMonths{incomeByMonth, kStatementsAreOfTheShop},
    kSheet{balanceSheet, kStatementsAreOfTheShop};
const Criteria kMay{.from = u"2021-05-01"_qs, .to = u"2021-05-31"_qs};

class StatementTest : public test::ShopTest {
 protected:
  void auditYes(const QString& number) {
    test::WhileAsked yes({});
    EXPECT_EQ(checkDj(documentFamily(number), number, yes), AuditOutcome::Audited);
  }
  void booked(Side side, const QString& type, double yuan, const QString& date, const QString& account,
              bool audits = true) {
    const auto number = expenses::save({.side = side,
                                        .date = date,
                                        .type = type,
                                        .amount = yuan,
                                        .employee = u"100001"_qs,
                                        .department = u"100001"_qs,
                                        .account = account,
                                        .note = {}},
                                       prompt);
    ASSERT_TRUE(number);
    EXPECT_EQ(audits && expenses::checkDj(*number, prompt), audits);
  }
  void owed(const PartnerSide& side, Kind kind, double yuan, const QString& date, double rounding = 0) {
    const auto number = partner_books::saveDocument(side, kind,
                                                    {.partner = side.isCustomer() ? customer() : u"100001"_qs,
                                                     .date = date,
                                                     .amount = yuan,
                                                     .rounding = rounding,
                                                     .account = u"现金"_qs,
                                                     .employee = u"100001"_qs,
                                                     .note = {}},
                                                    prompt);
    ASSERT_TRUE(number && partner_books::auditDocument(side, kind, *number));
  }
  /// April: bought 20 at 5, sold 2 at 9, paid 30 of rent. May: sold 10, one came back, billed 100 by hand, received 98
  /// and let 2 off, earned 35.5 and 10 that wait, spent 100 and 7 that wait and 60 beside the books, owes 40 by hand.
  void live() {
    addGoods("A", 5);
    receive("2021-04-01", {{"A", 20, 5}});
    auditYes(waitingSale("2021-04-10", {{"A", 2, 9}}, 0));
    booked(Side::Expense, u"费用"_qs, 30, "2021-04-20", u"现金"_qs);
    auditYes(waitingSale("2021-05-02", {{"A", 10, 9}}, 0));
    auditYes(waitingReturn(families::saleReturn, "2021-05-02", {{"A", 1, 9}}));
    owed(customerSide, Kind::Due, 100, "2021-05-01");
    owed(customerSide, Kind::Payment, 98, "2021-05-02", 2);
    owed(supplierSide, Kind::Due, 40, "2021-05-03");
    booked(Side::Income, u"收入"_qs, 35.5, "2021-05-03", u"工行帐号"_qs);
    booked(Side::Income, u"收入"_qs, 10, "2021-05-03", u"工行帐号"_qs, false);
    booked(Side::Expense, u"费用"_qs, 100, "2021-05-02", u"现金"_qs);
    booked(Side::Expense, u"费用"_qs, 7, "2021-05-02", u"现金"_qs, false);
    booked(Side::Expense, u"应付工资"_qs, 60, "2021-05-02", u"不记入账户"_qs);
  }
  static QStringList statement(const Criteria& criteria) {
    return test::textsOf(answer(kIncome, criteria), {"g_sn", "ts_note", "ts_zje", "ts_dj"});
  }
  static double sumOf(const Sql& lines) {
    double sum = 0;
    for (const Row row : openSelect(lines))
      sum += row.number("je");
    return sum;
  }
  /// What a figure opens adds up to it.
  static void expectMadeOf(const RowSet& rows, const char* amount, Criteria criteria) {
    for (const Row row : rows) {
      criteria.kind = row.text("code");
      criteria.group = row.text("fy_lx");
      EXPECT_NEAR(sumOf(incomeLines(criteria)), row.number(amount), 1e-9) << row.text("ts_note").toStdString();
    }
  }
};

TEST_F(StatementTest, IncomeOfAMonthAndOfAllTimeIsWhatItsListsSay) {
  const QStringList nothing = statement(kMay);
  EXPECT_EQ(nothing.size(), 9);
  for (const QString& row : nothing)
    EXPECT_TRUE(row.endsWith(u" 0 0")) << row.toStdString();

  live();
  // Income 90-9+100-2=179, and 18 in April; cost 45, and 10; 167 spent, and 30.
  EXPECT_EQ(statement(kMay),
            (QStringList{"100 [收入类] 242.5 224.5", "101   销售收入 197 179", "102   其他收入 45.5 45.5",
                         "102001     收入 45.5 45.5", "102999     其中尚未审核 1 笔 10 10", "200 [支出类] 292 252",
                         "201   销售成本 55 45", "202   其他费用 197 167", "202001     应付工资 60 60",
                         "202002     费用 137 107", "202999     其中尚未审核 1 笔 7 7", "203   外发加工费用 0 0",
                         "204   应付款项 40 40", "300 [总利润] -49.5 -27.5"}));
  expectMadeOf(answer(kIncome, kMay), "ts_dj", kMay);
  expectMadeOf(answer(kIncome, kMay), "ts_zje", {});

  // Work sent out by another module, and what a closing carried forward in older releases.
  const auto line = [](const char* number, const char* kind, const char* words, double yuan, const char* side) {
    insertRow("jxc_ysyfk", {{"gl_djh", QString::fromUtf8(number)},
                            {"k_rq", u"2021-05-02"},
                            {"k_djlx", QString::fromUtf8(kind)},
                            {"k_djtxt", QString::fromUtf8(words)},
                            {"k_yfje", yuan},
                            {"k_sfje", 0.0},
                            {"k_type", QString::fromUtf8(side)},
                            {"k_ghskh", u"100001"}});
  };
  line("WS21050210001", "WS", "外发收货单", 12, "ghs");
  line("", "XS", "数据结算结转", 500, "kh");
  line("", "YF", "数据结算结转", 500, "ghs");
  EXPECT_TRUE(statement(kMay).contains("203   外发加工费用 12 12"));
  EXPECT_TRUE(statement(kMay).contains("101   销售收入 197 179"));
  EXPECT_TRUE(statement(kMay).contains("204   应付款项 40 40"));
  expectMadeOf(answer(kIncome, kMay), "ts_dj", kMay);

  const RowSet year = answer(kMonths, {.kind = u"2021"_qs});
  EXPECT_EQ(test::textsOf(year, {"ts_note", "m3", "m4", "m5", "zj"}).value(1), "  销售收入 0 18 179 197");
  EXPECT_EQ(test::textsOf(year, {"ts_note", "m4", "m5", "m12", "zj"}).last(), "[总利润] -22 -39.5 0 -61.5");
  expectMadeOf(year, "zj", {.from = u"2021-01-01"_qs, .to = u"2021-12-31"_qs});
  EXPECT_EQ(test::textsOf(openSelect(profitByMonth({}, Warehouses({})))), (QStringList{"2021-04 8", "2021-05 34"}));
  EXPECT_EQ(test::textsOf(openSelect(expensesByMonth({}))), (QStringList{"2021-04 30", "2021-05 167"}));
  EXPECT_EQ(sumOf(expenseLines(kMay)), 167);
}

TEST_F(StatementTest, BalanceOfAPastDayWithStockOfNowAndOfThatDay) {
  for (const Row row : answer(kSheet, {.to = u"2021-05-03"_qs}))
    EXPECT_EQ(row.number("ts_zje"), 0) << row.text("ts_note").toStdString();
  live();
  execSql("insert into jxc_gdzc (zc_bh,zc_mc,zc_rq,zc_je) values ('1','验光仪','2021-05-01',2800)");
  execSql("insert into jxc_gdzc (zc_bh,zc_mc,zc_rq,zc_je) values ('2','柜台','2021-05-03',500)");
  const auto sheet = [](const QString& day, unsigned boxes = 0) {
    return test::textsOf(answer(kSheet, {.to = day, .boxes = boxes}), {"ts_note", "ts_zje"});
  };
  // 9 pieces at 5 are there now. By the end of the 1st 18 were: 90. The till paid 30 of rent in April; the customer
  // owed 18 and 100, the supplier was owed 100.
  EXPECT_EQ(sheet("2021-05-01", kStockOfTheDay),
            (QStringList{"[资产合计] 2933", "  库存商品总值（当前库存） 45",
                         "    其中截至 2021-05-01 的库存总值（不计入合计） 90", "  固定资产总值 2800", "  现金 -30",
                         "  全部银行合计 0", "    工行帐号 0", "    建行帐号 0", "  应收款合计 118", "[负债合计] 100",
                         "  应付款合计 100", "[净资产] 2833", "  按截至 2021-05-01 的库存计算 2878"}));
  // The till took 98 and paid 100, the bank took 35.5; 118+90-9-98-2 are owed, 140 are due.
  const QStringList now = sheet("2021-05-03");
  EXPECT_EQ(now, (QStringList{"[资产合计] 3447.5", "  库存商品总值（当前库存） 45", "  固定资产总值 3300", "  现金 -32",
                              "  全部银行合计 35.5", "    工行帐号 35.5", "    建行帐号 0", "  应收款合计 99",
                              "[负债合计] 140", "  应付款合计 140", "[净资产] 3307.5"}));
  for (const Row row : answer(kSheet, {.to = u"2021-05-01"_qs, .boxes = kStockOfTheDay})) {
    if (row.text("code") == u"100" || row.text("code").startsWith(u"300")) continue;  // sums of the rows below them
    Criteria made{.account = row.text("account"), .kind = row.text("code")};
    made.to = u"2021-05-01"_qs;
    EXPECT_NEAR(sumOf(balanceLines(made)), row.number("ts_zje"), 1e-9) << row.text("ts_note").toStdString();
  }

  EXPECT_EQ(test::textsOf(openSelect(partnersOwing({.boxes = kOwingOnly})), {"lx", "ys", "yf"}),
            (QStringList{"客户 99 0", "供货商 0 140"}));
  Criteria open = kMay;
  open.group = u"kh"_qs;
  open.partner = customer();
  EXPECT_EQ(openSelect(owedLines(open)).rowCount(), 5);
  open.kind = u"2"_qs;
  EXPECT_EQ(openSelect(owedLines(open)).rowCount(), 0);
}

TEST_F(StatementTest, WhoMayNotSeeCostsIsToldNothingThatTheyCanBeWorkedOutFrom) {
  live();
  auditYes(test::waitingDocument(families::loss, "2021-05-02", {{"ck_sn", test::mainWarehouse}}, {{"A", 1, 5}}));
  EXPECT_TRUE(statement(kMay).contains("202   其他费用 202 172"));
  setRights("200001", "qtcz", "000000001");  // prices, not costs
  becomeOperator("小李", "200001", "200001");
  EXPECT_EQ(statement(kMay).filter("[").size(), 1);
  EXPECT_TRUE(statement(kMay).filter(QRegularExpression("成本|应付款|利润")).isEmpty());
  EXPECT_TRUE(statement(kMay).contains("202   其他费用（不含库存差额） 197 167"));
  expectMadeOf(answer(kIncome, kMay), "ts_dj", kMay);
  Criteria profit = kMay;
  profit.kind = u"300"_qs;
  profit.group.clear();
  for (const Row row : openSelect(incomeLines(profit)))
    EXPECT_FALSE(row.text("gl_djh").startsWith(u"YF"));
  profit.kind = u"201"_qs;
  EXPECT_TRUE(openSelect(incomeLines(profit)).isEmpty());
  profit.kind = u"101"_qs;
  EXPECT_TRUE(openSelect(balanceLines(profit)).isEmpty());
  EXPECT_TRUE(test::textsOf(answer(kSheet, kMay), {"ts_note"}).filter(QRegularExpression("库存|应付|净")).isEmpty());
  EXPECT_EQ(openSelect(partnersOwing({})).rowCount(), 1);
}

}  // namespace jxc::financial_statements_test
