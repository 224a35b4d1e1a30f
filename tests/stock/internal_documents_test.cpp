// Transfer, loss, overflow, split and bundle: audit and cancel.
#include "stock/shop.h"

namespace jxc::internal_documents_test {

using namespace families;

class InternalDocumentsTest : public test::ShopTest {
 protected:
  InternalDocumentsTest() {
    addGoods("A", 5);
    addGoods("B", 1);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    receive("2021-05-01", {{"A", 10, 5}});
  }
  QString audited(const DocumentFamily& family, const std::vector<Field>& head, const Line& line) {
    const QString number = test::waitingDocument(family, "2021-05-03", head, {line});
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    return number;
  }
};

TEST_F(InternalDocumentsTest, TransferMovesTheAverageOfTheReceivingWarehouseOnly) {
  const std::vector<Field> toBranch{{"ck_in", u"100002"}};
  const QString first = audited(transfer, toBranch, {"A", 4, 5, {{"db_zje", 999.0}}});
  EXPECT_EQ(rows(first), QStringList({"db 4 → 4 5 20", "db -4 → 6 5 30"}));
  const QString second = audited(transfer, toBranch, {"A", 2, 6, {{"db_zje", 999.0}}});
  EXPECT_EQ(rows(second), QStringList({"db 2 → 6 5.33 31.98", "db -2 → 4 5 20"}));
  EXPECT_EQ(row("select ck_sn,kc_cbj from jxc_kcsp where g_sn='A' order by ck_sn"), "100001 5 100002 5.33");
  EXPECT_EQ(row("select js_sl,js_zje from jxc_kcjs where js_rq='2021-05' order by ck_sn"),
            "4 18 6 32");  // 50 − 20 − 12
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

// Ten yuan over three pieces: what no coin could pay is no difference, a fen is one. Four A at 5 make one B of 20:
// nothing is won or lost.
TEST_F(InternalDocumentsTest, SplitAndBundleBookWhatTheyAreWorthLess) {
  const std::vector<Field> two{{"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}};
  const std::pair<double, const char*> shares[] = {
      {3, "费用 -1 1 拆分单"}, {3.333333, ""}, {3.33, "费用 -0.01 1 拆分单"}};
  for (const auto& [share, booked] : shares) {
    Transaction trial(accountDb());
    const QString number = audited(split, two, {"B", 3, share});
    EXPECT_EQ(difference(number), *booked ? booked + number + "成本差额" : QString());
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  }
  const QString made = audited(bundle, {{"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 20.0}}, {"A", 4, 5});
  EXPECT_EQ(rows(made), QStringList({"kb 1 → 1 20 20", "kb -4 → 6 5 30"}));
  EXPECT_EQ(difference(made), "");
}

// What came in went elsewhere: nothing is taken back out of stock that is not there.
TEST_F(InternalDocumentsTest, WhatIsGoneMeanwhileIsNotTakenBack) {
  struct Case {
    const DocumentFamily& family;
    std::vector<Field> head;
    Line line;
    const char* goods;
  };
  const Field branch{"ck_sn", u"100002"};
  const Case cases[] = {{transfer, {{"ck_in", u"100002"}}, {"A", 4, 5}, "A"},
                        {overflow, {branch}, {"B", 2, 1.5}, "B"},
                        {split, {{"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}}, {"B", 4, 3, {branch}}, "B"},
                        {bundle, {branch, {"g_sn", u"B"}, {"kb_sl", 2.0}, {"kb_cbj", 20.0}}, {"A", 4, 5}, "B"}};
  for (const Case& each : cases) {
    SCOPED_TRACE(words(each.family.name).toStdString());
    Transaction trial(accountDb());
    std::vector<Field> head = each.head;
    Line line = each.line;
    if (&each.family == &bundle) line.more = {{"ck_sn", test::mainWarehouse}};
    const QString number = audited(each.family, head, line);
    execSql("update jxc_kcsp set kc_zsl=kc_zsl-1.5 where g_sn=? and ck_sn='100002'", each.goods);
    const QString isShort = u"该单据中至少一种商品库存不足，\r\n\r\n“%1”：%2"_qs.arg(QLatin1String(each.goods));
    setParameter("cs_kc", 0);
    prompt.willSayYes();
    EXPECT_EQ(prompt.refused(cancelDocument(number, prompt)), isShort.arg(u"不能出库！"_qs));
    setParameter("cs_kc", 1);
    EXPECT_FALSE(cancelDocument(number, prompt.willSayYes().willSayNo()));
    EXPECT_EQ(prompt.questions.last(), isShort.arg(u"出库将会出现负库存，是否继续？"_qs));
  }
}

}  // namespace jxc::internal_documents_test
