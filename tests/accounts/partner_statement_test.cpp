// Statements of partners, both sides by the same tests: what documents leave open, what is owed at the end of a day,
// how old it is; and customers who stay away.
#include "accounts/partner_statement.h"

#include "accounts/partner_documents.h"
#include "accounts/settling.h"
#include "masterdata/partners.h"
#include "stock/shop.h"

namespace jxc::partner_statement_test {

using namespace partner_books;  // NOLINT(google-build-using-namespace): inside this file's own namespace
using test::textsOf;

const QString kOther = QStringLiteral("100002");

class Statement : public test::ShopTest, public ::testing::WithParamInterface<PartnerType> {
 protected:
  Statement() {
    setClock(QStringLiteral("2021-05-31 10:00:00"));
    addGoods("A", 5);
    insertRow(side.table, {{side.sn, kOther}, {side.name, u"张三"}, {side.jm, u"ZS"}, {side.forbidden, 0}});
  }
  bool isCustomer() const { return side.isCustomer(); }
  const DocumentFamily& kind() const { return isCustomer() ? families::sale : families::purchaseReceipt; }
  const DocumentFamily& returns() const { return isCustomer() ? families::saleReturn : families::purchaseReturn; }
  QString partner() { return isCustomer() ? customer() : QStringLiteral("100001"); }

  /// An audited document of one frame, by all rules.
  QString trade(const QString& date, double price, double paid) {
    if (isCustomer()) return sell(date, {{u"A"_qs, 1, price}}, paid);
    receipt::ReceiptDraft draft = draftReceipt(date, {{u"A"_qs, 1, price}});
    draft.paid = paid;
    draft.settlement = receipt::Settlement::RestOnAccount;
    const QString number = audited(save(draft));
    return number;
  }
  QString giveBack(const QString& date, double price) {
    const QString number = audited(waitingReturn(returns(), date, {{u"A"_qs, 1, price}}));
    return number;
  }
  /// An audited head alone, as far as lists of heads ask.
  QString head(const DocumentFamily& family, const QString& date, double due, const QString& whose,
               std::vector<Field> more = {}) {
    more.insert(more.end(), {{family.partner, whose}, {family.status, 1}, {family.due, due}});
    return test::waitingDocument(family, date, more, {});
  }
  RowSet ask(Sql (*source)(const PartnerSide&, const Criteria&, const Warehouses&), const Criteria& criteria = {}) {
    return openSelect(source(side, criteria, Warehouses(criteria)));
  }

  const PartnerSide& side = partnerSide(GetParam());
};

TEST_P(Statement, OpenAmountsAndBalanceFollowReturnsAndWhatWasPaidLater) {
  if (isCustomer()) receive("2021-04-01", {{u"A"_qs, 100, 5}});
  const QString first = trade("2021-05-01", 100, 30), settled = trade("2021-05-10", 50, 50),
                back = giveBack("2021-05-12", 20);
  for (const DocumentFamily* each : {&kind(), &returns()})  // the shop of the tests leaves it out
    execSql(compose("update {} set {}=0", {each->head, each->collected}));
  execSql(compose("update {} set {}=0", {kind().head, kind().discount}));
  setParameter("cs_shdj", 1);
  ASSERT_TRUE(settleDocument(side,
                             {.number = first,
                              .date = QStringLiteral("2021-05-20"),
                              .amount = 40,
                              .account = QStringLiteral("现金"),
                              .employee = QStringLiteral("100001"),
                              .note = {}},
                             prompt));
  // Due, paid at once, paid later, open.
  const QStringList rows{first + u" 100 30 40 30"_qs, settled + u" 50 50 0 0"_qs, back + u" -20 0 0 -20"_qs};
  const Criteria may{.from = QStringLiteral("2021-05-01"), .to = QStringLiteral("2021-05-31")};
  const auto listed = [&](Criteria criteria) {
    return textsOf(ask(statementDocuments, criteria), {"djh", "yfje", "sfje", "hkje", "wfje"});
  };
  EXPECT_EQ(listed(may), rows);
  Criteria down = may;
  down.order = u"desc"_qs;
  EXPECT_EQ(listed(down), QStringList(rows.rbegin(), rows.rend()));
  EXPECT_EQ(listed({.kind = words(returns().prefix)}), rows.mid(2));
  EXPECT_EQ(listed({.partner = kOther}), QStringList());
  EXPECT_EQ(textsOf(ask(openDocuments), {"djh", "wfje"}), QStringList({first + u" 30"_qs, back + u" -20"_qs}));
  EXPECT_EQ(textsOf(ask(statementDocuments, may), {isCustomer() ? "fktype" : "zflx"}),
            isCustomer() ? QStringList({"商品销售付款", "商品销售付款", "销售退货支出"})
                         : QStringList({"进货支付", "进货支付", "退货还款"}));

  // The balance is that of the end of the day, also of one with times; all partners end at the sum of each one's last.
  execSql("update jxc_ysyfk set k_rq='2021-05-01 21:30:00' where gl_djh=?", first);
  insertRow("jxc_ysyfk", {{"k_type", words(side.type)}, {"k_ghskh", kOther}, {"k_rq", u"2021-05-02"}, {"k_ljje", 9.0}});
  insertRow("jxc_ysyfk", {{"k_type", words(side.type)}, {"k_ghskh", kOther}, {"k_rq", u"2021-05-02"}, {"k_ljje", 7.0}});
  struct Day {
    const char* day;
    double ofOne, ofAll;
  };
  for (const Day& each : {Day{"2021-04-30", 0, 0}, {"2021-05-01", 70, 70}, {"2021-05-15", 50, 57}, {"", 10, 17}}) {
    EXPECT_EQ(statementBalance(side, partner(), each.day), each.ofOne) << each.day;
    EXPECT_EQ(statementBalance(side, {}, each.day), each.ofAll) << each.day;
  }
  const QString noun = isCustomer() ? QStringLiteral("客户") : QStringLiteral("供货商");
  using Words = std::vector<std::pair<QString, QString>>;
  EXPECT_EQ(statementWords(side, may), (Words{{u"bTitle"_qs, noun + u"对账单'所有'"_qs}, {u"sLjjeAll"_qs, u"17"_qs}}));
  EXPECT_EQ(statementWords(side, {.partner = kOther})[0].second, noun + u"对账单'张三'"_qs);
  EXPECT_EQ(textsOf(partnersOfStatements(side, {.from = u"2021-06-01"_qs}), {"sn"}), QStringList({partner(), kOther}));
  EXPECT_EQ(textsOf(partnersOfStatements(side, {.to = u"2021-05-01"_qs}), {"sn"}), QStringList({partner()}));
}

TEST_P(Statement, WhatIsOpenGrowsOldByDays) {
  const QString today = QStringLiteral("2021-05-31");
  for (const auto& [date, due] : {std::pair{"2021-05-01", 10.0},
                                  {"2021-04-30", 20.0},
                                  {"2021-04-01", 40.0},
                                  {"2021-03-31", 80.0},
                                  {"2021-03-02", 160.0},
                                  {"2021-03-01", 320.0}})
    head(kind(), QString::fromLatin1(date), due, kOther);
  head(returns(), today, -5, kOther);
  head(kind(), today, 8, kOther, {{kind().collected, 8.0}});  // paid since
  head(kind(), today, 3, u"999999"_qs);                       // of one who is gone
  execSql(compose("update {} set {}=600 where {}=?", {side.table, side.balance, side.sn}), kOther);
  const std::initializer_list<std::string_view> columns{"ghs_name", "w30", "w60", "w90", "wmore",
                                                        "wfje",     "num", "rq",  "qt"};
  EXPECT_EQ(textsOf(ask(openByAge), columns),
            QStringList({"张三 5 60 240 320 625 7 2021-03-01 -25", "999999 3 0 0 0 3 1 2021-05-31 "}));
  EXPECT_EQ(textsOf(ask(openByAge, {.key = u"zs"_qs}), {"wfje"}), QStringList({"625"}));
  EXPECT_EQ(test::sumOf(ask(openDocuments, {.partner = kOther}), "wfje"), 625);
}

TEST_P(Statement, FreightIsSummedByPartnerAndPayerToTheEndOfTheLastDay) {
  const auto shipped = [&](const char* date, const char* payer, double freight, double packing) {
    const QString number = head(kind(), QString::fromLatin1(date), 100, kOther,
                                {{kind().freightPayer, payer}, {kind().freight, freight}, {kind().packing, packing}});
    for (const double pieces : {1.0, 2.0})
      insertRow(kind().lines, {{kind().number, number}, {kind().line.columns->quantity, pieces}});
    return number;
  };
  shipped("2021-05-01", "我方付", 12, 0);
  const QString late = shipped("2021-05-31", "我方付", 0, 3);
  execSql(compose("update {} set {}='2021-05-31 18:20:00' where {}=?", {kind().head, kind().date, kind().number}),
          late);
  const QString nobody = shipped("2021-05-02", "", 1, 1);
  shipped("2021-05-03", "我方付", 0, 0);
  const Criteria may{.from = QStringLiteral("2021-05-01"), .to = QStringLiteral("2021-05-31")};
  EXPECT_EQ(textsOf(ask(chargeTotals, may), {"ghs_name", "yffs", "yfje", "yf", "bzf", "sl"}),
            QStringList({"张三 我方付 200 12 3 6", "张三 未指定 100 1 1 3"}));
  EXPECT_EQ(textsOf(ask(chargedDocuments, {.group = u"未指定"_qs}), {"djh"}), QStringList({nobody}));
  EXPECT_EQ(ask(chargeTotals, {.key = u"%_'*["_qs}).rowCount(), 0);
}

TEST_P(Statement, PartnersBeginWithAllOfThem) {
  execSql(compose("update {} set {}=1 where {}=?", {side.table, side.forbidden, side.sn}), partner());
  const RowSet rows = openSelect(statementPartners(side));
  EXPECT_EQ(textsOf(rows, {"sn", "name"}).mid(0, 2),
            QStringList({isCustomer() ? " 全部客户" : " 全部供货商", "100002 张三"}));
  EXPECT_EQ(rows[rows.rowCount() - 1].text("sn"), partner());
}

TEST_P(Statement, QuestionsThatNobodyCanMeanAreAnsweredWithNothing) {
  head(kind(), QStringLiteral("2021-05-02"), 1e12, kOther, {{kind().freight, 1e12}});
  insertRow(kind().lines,
            {{kind().number, lookupValue(compose("select max({}) from {}", {kind().number, kind().head}))},
             {kind().line.columns->quantity, 1.0}});
  const auto sources = {statementDocuments, statementGoods, chargedDocuments, chargeTotals, openByAge, openDocuments};
  for (const auto source : {statementDocuments, chargedDocuments, chargeTotals, openByAge, openDocuments}) {
    const RowSet rows = ask(source);
    ASSERT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(rows.front().number(source == openByAge || source == openDocuments ? "wfje" : "yfje"), 1e12);
  }
  const Criteria nowhere{.warehouse = u"199999"_qs}, nobody{.partner = u"999999"_qs};
  for (const auto source : sources) {
    EXPECT_EQ(ask(source, nowhere).rowCount(), 0);
    EXPECT_EQ(ask(source, nobody).rowCount(), 0);
  }
  const Criteria backwards{.from = u"2021-05-31"_qs, .to = u"2021-05-01"_qs}, odd{.key = u"%_'*["_qs};
  for (const auto source : {statementDocuments, chargedDocuments, chargeTotals}) {
    EXPECT_EQ(ask(source, backwards).rowCount(), 0);
    EXPECT_EQ(ask(source, odd).rowCount(), 0);
  }
  setParameter("cs_cgyh", 1);
  setRights(QStringLiteral("100077"), "qtcz", QString(60, u'1'));
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));  // of no warehouse
  for (const auto source : sources)
    EXPECT_EQ(ask(source).rowCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Sides, Statement, ::testing::Values(PartnerType::Customer, PartnerType::Supplier));

using DormantCustomers = test::ShopTest;

TEST_F(DormantCustomers, AreThoseWithoutASaleForLongerThanTheDays) {
  insertRow("jxc_khxx", {{"kh_sn", u"100002"}, {"kh_name", u"张三"}, {"kh_forbid", 0}});
  insertRow("jxc_khxx", {{"kh_sn", u"100003"}, {"kh_name", u"李四"}, {"kh_forbid", 0}});
  const auto bought = [&](const QString& who, const QString& flag, const QString& date, double pieces, double net) {
    updateRow("jxc_goodslist", ledgerRow(flag, date, pieces, net, net), {{"ghs_sn", who}, {"gl_zje", net}});
  };
  bought(customer(), "xs", "2021-05-03 09:00:00", 1, 10);  // today
  bought(u"100002"_qs, "xs", "2021-03-01", 2, 30.25);
  bought(u"100002"_qs, "xt", "2021-05-02 23:00:00", -1, -15);
  bought(u"100003"_qs, "cj", "2021-01-01", 5, 50);  // a supplier of the same number
  const auto dormant = [&](double days, unsigned boxes = 0) {
    const RowSet rows = answer(dormantCustomers, {.amount = days, .boxes = boxes});
    return textsOf(rows, {"kh_name", "days", "sl", "zje"}).join(u", "_qs);
  };
  EXPECT_EQ(dormant(0), "张三 1 1 15.25");
  EXPECT_EQ(dormant(1), "");
  EXPECT_EQ(dormant(1, kNeverBought), "李四  0 0");
  EXPECT_EQ(dormant(1e12), "");
}

}  // namespace jxc::partner_statement_test
