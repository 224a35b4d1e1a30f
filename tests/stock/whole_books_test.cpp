// Audit and then cancel of every family brings every table back to what it was, but for what a cancel is meant to
// leave.
#include "harness/whole_books.h"

#include "stock/partial_rest.h"
#include "stock/shop.h"

namespace jxc::whole_books_test {

using namespace families;

using test::Books;
using test::differences;
using test::readBooks;
using test::waitingDocument;

/// A switch of the shop under which audit and cancel go another way.
struct Switch {
  const char* parameter;
  int value;
};

class WholeBooks : public test::ShopTest, public testing::WithParamInterface<Switch> {
 protected:
  WholeBooks() {
    addGoods("A", 5);
    addGoods("B", 2);
    addGoods("C", 3);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    setParameter("cs_kp", 1);
    const bool movesLater = is("cs_sprk") || is("cs_spck");
    if (!movesLater) setParameter(GetParam().parameter, GetParam().value);
    // A shop at work: both goods in both warehouses, money and month rows are there.
    receive("2021-05-01", {{"A", 20, 5}, {"B", 30, 2}});
    const QString moved =
        audited(waitingDocument(transfer, "2021-05-01", {{"ck_in", u"100002"}}, {{"A", 5, 5}, {"B", 5, 2}}));
    sell("2021-05-04", {{"A", 2, 9}, {"B", 1, 4}}, 10);
    receive("2021-05-05", {{"A", 3, 7}});
    if (movesLater) setParameter(GetParam().parameter, GetParam().value);
  }
  static bool is(const char* parameter) { return QByteArrayView(GetParam().parameter) == parameter; }

  /// Audits, checks the books, cancels, and tells what did not come back.
  QString roundTrip(const QString& number, bool (*cancel)(const QString&, Prompt&, CancelMode)) {
    const Books before = readBooks();
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    return backTo(before, number, cancel);
  }
  QString backTo(const Books& before, const QString& number, bool (*cancel)(const QString&, Prompt&, CancelMode)) {
    EXPECT_EQ(test::brokenInvariants(), QStringList()) << number.toStdString();
    EXPECT_FALSE(differences(before, readBooks()).empty());
    EXPECT_TRUE(cancel(number, prompt, CancelMode::Batch)) << number.toStdString();
    EXPECT_EQ(test::brokenInvariants(), QStringList()) << number.toStdString();
    std::set<QString> left = differences(before, readBooks());
    EXPECT_TRUE(left.erase(u"jxc_log+"_qs));
    return QStringList(left.begin(), left.end()).join(u' ');
  }
};

TEST_P(WholeBooks, TradingDocuments) {
  // What stays: how often an employee was chosen, the last price of a purchase, what was let off, the mark by which
  // ledger and line know each other, and what was issued of a sale.
  setClock("2021-05-06");
  const QString bought = save([this] {
    receipt::ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 4, 6}, {"B", 2, 3}});
    draft.paid = 20;
    draft.freight = 3;
    draft.packing = 1;
    draft.wePayFreight = true;
    draft.invoiceAmount = 10;
    draft.settlement = receipt::Settlement::RestOnAccount;
    return draft;
  }());
  EXPECT_EQ(roundTrip(bought, cancelPurchase), "jxc_goods.g_scjj jxc_jhsp.id2 jxc_user.u_cgpl");
  // Goods that the warehouse has never had, with a balancing line and freight: its empty balance stays.
  const QString fresh = waitingSale("2021-05-03", {{"C", 2, 8}}, 15, 0);
  balanceSale(fresh, 15, 16);
  execSql("update jxc_lsxsd set ls_yf=4,ls_bzf=1,ls_yffs='我方付运费' where gl_djh=?", fresh);
  EXPECT_EQ(roundTrip(fresh, cancelSale), "jxc_kcsp+ jxc_lsxsd.ls_yhje jxc_lsxssp.id2 jxc_user.u_xspl");
  EXPECT_EQ(roundTrip(waitingReturn(purchaseReturn, "2021-05-03", {{"A", 3, 6}}, 7), cancelPurchaseReturn),
            "jxc_user.u_cgpl");
  EXPECT_EQ(roundTrip(waitingSale("2021-05-03", {{"A", 3, 12}, {"B", 1, 5}}, 30, 0), cancelSale),
            "jxc_lsxsd.ls_yhje jxc_lsxssp.id2 jxc_user.u_xspl");
  EXPECT_EQ(roundTrip(waitingReturn(saleReturn, "2021-05-03", {{"A", 1, 12}}, 4), cancelSaleReturn), "");
}

TEST_P(WholeBooks, DocumentsWithinTheHouseAndLoans) {
  const Field main{"ck_sn", u"100001"}, branch{"ck_sn", u"100002"};
  struct Document {
    const DocumentFamily& family;
    std::vector<Field> head;
    Line line;
    const char* left = "";
  };
  const Document documents[] = {
      {transfer, {{"ck_in", u"100002"}}, {"A", 3, 6}},
      {loss, {}, {"A", 3, 5}},
      {overflow, {branch}, {"B", 3, 2}},
      {split, {{"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}}, {"B", 4, 3, {branch}}},
      {bundle, {branch, {"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 9.0}}, {"A", 2, 5, {main}}},
      {stocktake, {}, {"A", 15, 5.38}, "jxc_kcpdsp.id2"},
      {loan, {}, {"A", 2, 5}, "jxc_khjhsp.id2"},
  };
  for (const Document& each : documents) {
    const QString day = each.family.isCount() ? u"2021-05-06"_qs : u"2021-05-03"_qs;
    EXPECT_EQ(roundTrip(waitingDocument(each.family, day, each.head, {each.line}), each.family.takeBack), each.left);
  }

  // A return of lent goods is audited from the first moment on, and its cancel leaves nothing of it.
  const QString lent = audited(waitingDocument(loan, "2021-05-03", {}, {{"A", 3, 5}}));
  const auto line = lookupValue("select id from jxc_khjhsp where gl_djh=?", lent).toLongLong();
  const Books before = readBooks();
  for (const bool kept : {false, true})
    EXPECT_EQ(backTo(before, test::returnLoan("2021-05-05", line, kept ? 0 : 2, kept ? 2 : 0, 6, 7), cancelLoanReturn),
              "");
}

TEST_P(WholeBooks, PutawaysIssuesAndTheReturnsThatCloseTheirRest) {
  setParameter("cs_sprk", 1);
  setParameter("cs_spck", 1);
  const QString bought = receive("2021-05-02", {{"A", 8, 6}});
  const QString sold = sell("2021-05-03", {{"B", 6, 5}});
  setParameter(GetParam().parameter, GetParam().value);
  for (const PartialMovement* each : {&partial::putaway, &partial::issue}) {
    const bool buys = each == &partial::putaway;
    const QString source = buys ? bought : sold;
    refreshMonthStock(test::mainWarehouse, u"2021-05"_qs);
    const QString part = test::waitingPart(*each, u"2021-05-04"_qs, source, {buys ? 3.0 : 2.0});
    EXPECT_EQ(roundTrip(part, each->family->takeBack), "");
    audited(part);
    // What never comes, or never goes, is closed by a return that moves the books alone; with its cancel it is gone.
    refreshMonthStock(test::mainWarehouse, u"2021-05"_qs);
    const Books before = readBooks();
    prompt.willSayYes();
    const auto number = partial::closeRest(*each, source, prompt);
    ASSERT_TRUE(number);
    EXPECT_EQ(backTo(before, *number, each->back->takeBack), buys ? "jxc_user.u_cgpl" : "");
  }
}

INSTANTIATE_TEST_SUITE_P(UnderEverySwitch, WholeBooks,
                         testing::Values(Switch{"cs_kp", 1}, Switch{"cs_kp", 0}, Switch{"cs_sprk", 1},
                                         Switch{"cs_spck", 1}, Switch{"cs_cs009", 1}, Switch{"cs_zjews", 1},
                                         Switch{"cs_kc", 0}),
                         [](const auto& tested) {
                           return std::string(tested.param.parameter) + "_" + std::to_string(tested.param.value);
                         });

}  // namespace jxc::whole_books_test
