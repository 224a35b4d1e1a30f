// Transfer, loss, overflow, split and bundle: audit and cancel.
#include "stock/shop.h"

namespace jxc {
namespace internal_documents_test {

using namespace families;

class InternalDocumentsTest : public test::ShopTest {
 protected:
  InternalDocumentsTest() {
    addGoods("A", 5);
    addGoods("B", 1);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    receive("2021-05-01", {{"A", 10, 5}});
  }
  QString month(const char* warehouse) {
    return row("select js_sl,js_zje from jxc_kcjs where js_rq='2021-05' and ck_sn=?", warehouse);
  }
  void expectWaiting(const DocumentFamily& family, const QString& number) {
    EXPECT_EQ(lookupNumber(compose("select {} from {} where gl_djh=?", {family.status, family.head}), number), 0);
    EXPECT_EQ(rows(number), QStringList());
    EXPECT_EQ(difference(number), "");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  }
};

TEST_F(InternalDocumentsTest, TransferMovesTheAverageOfTheReceivingWarehouseOnly) {
  const auto make = [this](double quantity, double price) {
    return test::waitingDocument(transfer, "2021-05-03", {{"ck_in", u"100002"}},
                                 {{"A", quantity, price, {{"db_zje", 999.0}}}});
  };
  const QString first = make(4, 5);
  EXPECT_EQ(audit(first), AuditOutcome::Audited);
  EXPECT_EQ(rows(first), QStringList({"db 4 → 4 5 20", "db -4 → 6 5 30"}));
  EXPECT_EQ(lastLog(), "增加已审核库存调拨单" + first + "，共1种商品");
  const QString second = make(2, 6);
  EXPECT_EQ(audit(second), AuditOutcome::Audited);
  EXPECT_EQ(rows(second), QStringList({"db 2 → 6 5.33 31.98", "db -2 → 4 5 20"}));
  EXPECT_EQ(lookupNumber("select kc_cbj from jxc_kcsp where g_sn='A' and ck_sn='100002'"), 5.33);
  EXPECT_EQ(balanceOf("A"), "4 4 5");
  EXPECT_EQ(month("100001"), "4 18");  // 50 − 20 − 12
  EXPECT_EQ(month("100002"), "6 32");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 10);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  const QString tooMuch = make(5, 5);
  setParameter("cs_kc", 0);
  EXPECT_EQ(audit(tooMuch), AuditOutcome::Refused);
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");

  // Stock leaves the receiving warehouse again: it is tested there.
  execSql("update jxc_kcsp set kc_zsl=1 where ck_sn='100002'");
  prompt.willSayYes();
  EXPECT_FALSE(cancelTransfer(second, prompt));
  execSql("update jxc_kcsp set kc_zsl=6 where ck_sn='100002' and g_sn='A'");
  prompt.willSayYes();
  EXPECT_TRUE(cancelTransfer(second, prompt));
  EXPECT_EQ(month("100002"), "4 20");
  EXPECT_EQ(balanceOf("A"), "6 6 5");
  expectWaiting(transfer, second);
}

TEST_F(InternalDocumentsTest, LossAndOverflowBookTheirValueWithoutCash) {
  const QString lost = test::waitingDocument(loss, "2021-05-03", {}, {{"A", 3, 5, {{"bs_note", u"镜片裂"}}}});
  const QString surplus = test::waitingDocument(overflow, "2021-05-03", {}, {{"B", 2, 1.5}});
  EXPECT_EQ(audit(lost), AuditOutcome::Audited);
  EXPECT_EQ(audit(surplus), AuditOutcome::Audited);
  EXPECT_EQ(rows(surplus), QStringList({"by 2 → 2 1 2"}));
  EXPECT_EQ(difference(surplus), "收入 3 2 报溢单" + surplus + "成本差额");
  EXPECT_EQ(balanceOf("B"), "2 2 1");  // a goods that the warehouse did not know, at what it costs elsewhere
  EXPECT_EQ(month("100001"), "9 38");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  {
    // What was found has been sold meanwhile: taking it back is refused or asked about.
    Transaction trial(accountDb());
    sell("2021-05-03", {{"B", 1, 9}});
    setParameter("cs_kc", 0);
    prompt.willSayYes();
    EXPECT_FALSE(cancelOverflow(surplus, prompt));
    EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“B”：不能出库！");
    setParameter("cs_kc", 1);
    prompt.willSayYes().willSayNo();
    EXPECT_FALSE(cancelOverflow(surplus, prompt));
    EXPECT_EQ(prompt.questions.last(), "该单据中至少一种商品库存不足，\r\n\r\n“B”：出库将会出现负库存，是否继续？");
  }
  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(cancelLoss(lost, prompt));
  EXPECT_TRUE(cancelOverflow(surplus, prompt));
  expectWaiting(loss, lost);
  expectWaiting(overflow, surplus);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(month("100001"), "10 50");
}

TEST_F(InternalDocumentsTest, SplitAndBundle) {
  const QString taken = test::waitingDocument(split, "2021-05-03", {{"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}},
                                              {{"B", 4, 3, {{"ck_sn", u"100002"}}}});
  EXPECT_EQ(audit(taken), AuditOutcome::Audited);
  EXPECT_EQ(rows(taken), QStringList({"cf -2 → 8 5 40", "cf 4 → 4 3 12"}));
  EXPECT_EQ(difference(taken), "费用 2 1 拆分单" + taken + "成本差额");
  EXPECT_EQ(lookupNumber("select g_pjjj from jxc_goods where g_sn='B'"), 3);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // Four A at 5 make one B of 20: nothing is won or lost.
  const QString made = test::waitingDocument(bundle, "2021-05-03",
                                             {{"ck_sn", u"100002"}, {"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 20.0}},
                                             {{"A", 4, 5, {{"ck_sn", u"100001"}}}});
  EXPECT_EQ(audit(made), AuditOutcome::Audited);
  EXPECT_EQ(rows(made), QStringList({"kb 1 → 5 6.4 32", "kb -4 → 4 5 20"}));
  EXPECT_EQ(difference(made), "");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 4);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // The bundle and the parts went elsewhere: neither is taken back from stock that is not there.
  setParameter("cs_kc", 0);
  for (const double left : {0.5, 3.5}) {
    execSql("update jxc_kcsp set kc_zsl=? where g_sn='B' and ck_sn='100002'", left);
    prompt.willSayYes();
    EXPECT_FALSE(left < 1 ? cancelBundle(made, prompt) : cancelSplit(taken, prompt));
    EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“B”：不能出库！");
  }
  execSql("update jxc_kcsp set kc_zsl=5 where g_sn='B' and ck_sn='100002'");
  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(cancelBundle(made, prompt));
  EXPECT_TRUE(cancelSplit(taken, prompt));
  expectWaiting(bundle, made);
  expectWaiting(split, taken);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(month("100002"), "0 0");

  // Ten yuan over three pieces: what no coin could pay is no difference, a fen is one.
  const std::pair<double, const char*> shares[] = {{3.333333, ""}, {3.33, "费用 -0.01 1 拆分单"}};
  for (const auto& [share, booked] : shares) {
    Transaction trial(accountDb());
    const QString number = test::waitingDocument(split, "2021-05-03", {{"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}},
                                                 {{"B", 3, share}});
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    EXPECT_EQ(difference(number), *booked ? booked + number + "成本差额" : QString());
  }
}

}  // namespace internal_documents_test
}  // namespace jxc
