// Audit and then cancel of every family brings every table back to what it was, but for what a cancel is meant to
// leave.
#include "harness/whole_books.h"

#include "stock/shop.h"

#include <set>

namespace jxc {
namespace whole_books_test {

using namespace families;

using test::Books;
using test::differences;
using test::readBooks;

class WholeBooks : public test::ShopTest {
 protected:
  WholeBooks() {
    addGoods("A", 5);
    addGoods("B", 2);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    setParameter("cs_kp", 1);
    // A shop at work: both goods in both warehouses, money and month rows are there.
    receive("2021-05-01", {{"A", 20, 5}, {"B", 30, 2}});
    const QString moved = waitingInside(
        transfer, "2021-05-01", {{"ck_out", u"100001"}, {"ck_in", u"100002"}},
        {{{"g_sn", u"A"}, {"db_sl", 5.0}, {"db_dj", 5.0}}, {{"g_sn", u"B"}, {"db_sl", 5.0}, {"db_dj", 2.0}}});
    EXPECT_EQ(audit(moved), AuditOutcome::Audited);
    sell("2021-05-04", {{"A", 2, 9}, {"B", 1, 4}}, 10);
    receive("2021-05-05", {{"A", 3, 7}});
  }

  /// Audits, checks the books, cancels, and tells what did not come back.
  QString roundTrip(const QString& number, bool (*cancel)(const QString&, Prompt&, CancelMode)) {
    const Books before = readBooks();
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    EXPECT_EQ(test::brokenInvariants(), QStringList()) << number.toStdString();
    EXPECT_FALSE(differences(before, readBooks()).empty());
    EXPECT_TRUE(cancel(number, prompt, CancelMode::Batch)) << number.toStdString();
    EXPECT_EQ(test::brokenInvariants(), QStringList()) << number.toStdString();
    std::set<QString> left = differences(before, readBooks());
    EXPECT_TRUE(left.erase(u"jxc_log+"_qs));
    return QStringList(left.begin(), left.end()).join(u' ');
  }
};

TEST_F(WholeBooks, TradingDocuments) {
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
  EXPECT_EQ(roundTrip(waitingReturn(purchaseReturn, "2021-05-03", {{"A", 3, 6}}, 7), cancelPurchaseReturn),
            "jxc_user.u_cgpl");
  EXPECT_EQ(roundTrip(waitingSale("2021-05-03", {{"A", 3, 12}, {"B", 1, 5}}, 30, 0), cancelSale),
            "jxc_lsxsd.ls_yhje jxc_lsxssp.id2 jxc_lsxssp.ls_cksl jxc_user.u_xspl");
  EXPECT_EQ(roundTrip(waitingReturn(saleReturn, "2021-05-03", {{"A", 1, 12}}, 4), cancelSaleReturn), "");
}

TEST_F(WholeBooks, DocumentsWithinTheHouseAndLoans) {
  EXPECT_EQ(roundTrip(waitingInside(transfer, "2021-05-03", {{"ck_out", u"100001"}, {"ck_in", u"100002"}},
                                    {{{"g_sn", u"A"}, {"db_sl", 3.0}, {"db_dj", 6.0}}}),
                      cancelTransfer),
            "");
  EXPECT_EQ(roundTrip(waitingInside(loss, "2021-05-03", {{"ck_sn", u"100001"}},
                                    {{{"g_sn", u"A"}, {"bs_sl", 3.0}, {"bs_dj", 5.0}, {"bs_zje", 15.0}}}),
                      cancelLoss),
            "");
  EXPECT_EQ(roundTrip(waitingInside(overflow, "2021-05-03", {{"ck_sn", u"100002"}},
                                    {{{"g_sn", u"B"}, {"by_sl", 3.0}, {"by_dj", 2.0}, {"by_zje", 6.0}}}),
                      cancelOverflow),
            "");
  EXPECT_EQ(roundTrip(waitingInside(
                          split, "2021-05-03", {{"ck_sn", u"100001"}, {"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}},
                          {{{"g_sn", u"B"}, {"cf_sl", 4.0}, {"cf_dj", 3.0}, {"cf_zje", 12.0}, {"ck_sn", u"100002"}}}),
                      cancelSplit),
            "");
  EXPECT_EQ(roundTrip(waitingInside(
                          bundle, "2021-05-03", {{"ck_sn", u"100002"}, {"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 9.0}},
                          {{{"g_sn", u"A"}, {"kb_sl", 2.0}, {"kb_dj", 5.0}, {"kb_zje", 10.0}, {"ck_sn", u"100001"}}}),
                      cancelBundle),
            "");
  EXPECT_EQ(roundTrip(waitingInside(stocktake, "2021-05-06", {{"ck_sn", u"100001"}},
                                    {{{"g_sn", u"A"},
                                      {"pd_sl", 15.0},
                                      {"kc_sl", 16.0},
                                      {"kc_zsl", 16.0},
                                      {"pd_dj", 5.38},
                                      {"pd_zje", -5.38},
                                      {"id2", 0}}}),
                      cancelStocktake),
            "jxc_kcpdsp.id2");
  EXPECT_EQ(
      roundTrip(waitingInside(loan, "2021-05-03", {{"ck_sn", u"100001"}, {"kh_sn", customer()}, {"jh_flag", u"jh"}},
                              {{{"g_sn", u"A"}, {"jh_sl", 2.0}, {"jh_dj", 5.0}, {"jh_zje", 10.0}, {"id2", 0}}}),
                cancelLoan),
      "jxc_khjhsp.id2");
}

}  // namespace whole_books_test
}  // namespace jxc
