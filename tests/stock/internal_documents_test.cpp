// Transfer, stocktake, loss, overflow, split and bundle: audit and cancel.
#include "stock/shop.h"
#include "stock/stocktake.h"

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
  /// "flag quantity stock average value" of the rows of a document.
  QStringList rows(const QString& number) {
    QStringList list;
    for (const Row row :
         openSelect("select id,gl_flag,gl_sl,ck_sn from jxc_goodslist where gl_djh=? order by id", number))
      list << row.text("gl_flag") + u' ' + row.text("gl_sl") + u" → "_qs + figures(row.integer("id"));
    return list;
  }
  QString difference(const QString& number) {
    return row("select fy_lx,fy_je,fy_flag,fy_note from jxc_yyfy where gl_djh=?", number);
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
    return test::waitingDocument(transfer, "2021-05-03",
                                 {{"ck_out", u"100001"}, {"ck_in", u"100002"}, {"db_note", u""}},
                                 {{{"g_sn", u"A"}, {"db_sl", quantity}, {"db_dj", price}, {"db_zje", 999.0}}});
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
  const QString lost = test::waitingDocument(
      loss, "2021-05-03", {{"ck_sn", u"100001"}, {"bs_note", u"破损"}},
      {{{"g_sn", u"A"}, {"bs_sl", 3.0}, {"bs_dj", 5.0}, {"bs_zje", 15.0}, {"bs_note", u"镜片裂"}}});
  const QString surplus =
      test::waitingDocument(overflow, "2021-05-03", {{"ck_sn", u"100001"}, {"by_note", u""}},
                            {{{"g_sn", u"B"}, {"by_sl", 2.0}, {"by_dj", 1.0}, {"by_zje", 2.0}, {"by_note", u""}}});
  EXPECT_EQ(audit(lost), AuditOutcome::Audited);
  EXPECT_EQ(audit(surplus), AuditOutcome::Audited);
  EXPECT_EQ(rows(lost), QStringList({"bs -3 → 7 5 35"}));
  EXPECT_EQ(rows(surplus), QStringList({"by 2 → 2 1 2"}));
  EXPECT_EQ(difference(lost), "费用 -15 1 报损单" + lost + "成本差额");
  EXPECT_EQ(difference(surplus), "收入 2 2 报溢单" + surplus + "成本差额");
  EXPECT_EQ(lookupValue("select gl_bz from jxc_goodslist where gl_djh=?", lost), "镜片裂");
  EXPECT_EQ(balanceOf("B"), "2 2 1");  // a goods that the warehouse did not know
  EXPECT_EQ(month("100001"), "9 37");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(cancelLoss(lost, prompt));
  EXPECT_TRUE(cancelOverflow(surplus, prompt));
  expectWaiting(loss, lost);
  expectWaiting(overflow, surplus);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(month("100001"), "10 50");
}

TEST_F(InternalDocumentsTest, SplitAndBundle) {
  const QString taken = test::waitingDocument(
      split, "2021-05-03", {{"ck_sn", u"100001"}, {"g_sn", u"A"}, {"cf_sl", 2.0}, {"cf_cbj", 5.0}, {"cf_note", u""}},
      {{{"g_sn", u"B"}, {"cf_sl", 4.0}, {"cf_dj", 3.0}, {"cf_zje", 12.0}, {"ck_sn", u"100002"}}});
  EXPECT_EQ(audit(taken), AuditOutcome::Audited);
  EXPECT_EQ(rows(taken), QStringList({"cf -2 → 8 5 40", "cf 4 → 4 3 12"}));
  EXPECT_EQ(difference(taken), "费用 2 1 拆分单" + taken + "成本差额");
  EXPECT_EQ(lookupNumber("select g_pjjj from jxc_goods where g_sn='B'"), 3);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // Four A at 5 make one B of 20: nothing is won or lost.
  const QString made = test::waitingDocument(
      bundle, "2021-05-03", {{"ck_sn", u"100002"}, {"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 20.0}, {"kb_note", u""}},
      {{{"g_sn", u"A"}, {"kb_sl", 4.0}, {"kb_dj", 5.0}, {"kb_zje", 20.0}, {"ck_sn", u"100001"}}});
  EXPECT_EQ(audit(made), AuditOutcome::Audited);
  EXPECT_EQ(rows(made), QStringList({"kb 1 → 5 6.4 32", "kb -4 → 4 5 20"}));
  EXPECT_EQ(difference(made), "");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 4);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(cancelBundle(made, prompt));
  EXPECT_TRUE(cancelSplit(taken, prompt));
  expectWaiting(bundle, made);
  expectWaiting(split, taken);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(month("100002"), "0 0");
}

TEST_F(InternalDocumentsTest, StocktakeSetsTheCountAndDiesOfLaterMovement) {
  receive("2021-05-01", {{"B", 4, 1}});
  const QString count = test::waitingDocument(
      stocktake, "2021-05-02", {{"ck_sn", u"100001"}, {"pd_note", u""}},
      {{{"g_sn", u"A"}, {"pd_sl", 7.0}, {"kc_sl", 10.0}, {"kc_zsl", 10.0}, {"pd_dj", 5.0}, {"pd_zje", -15.0}},
       {{"g_sn", u"B"}, {"pd_sl", 4.0}, {"kc_sl", 4.0}, {"kc_zsl", 4.0}, {"pd_dj", 1.0}, {"pd_zje", 0.0}}});
  EXPECT_EQ(stock_count::tooLateToSave("PD?", "100001", "2021-05-01"),
            "在【2021-05-02】日期之后已有盘点单，不能再次盘点！");
  EXPECT_EQ(audit(count), AuditOutcome::Audited);
  EXPECT_EQ(rows(count), QStringList({"pd -3 → 7 5 35"}));  // thirteen pieces, 65 yuan
  EXPECT_EQ(lastLog(), "库存盘点单通过" + count + "审核，共1个商品");
  EXPECT_EQ(difference(count), "费用 -15 1 商品盘点单" + count + "成本差额");
  EXPECT_EQ(balanceOf("B"), "4 4 1");

  const QString sale = sell("2021-05-03", {{"A", 1, 9}});
  EXPECT_EQ(stock_count::tooLateToSave(count, "100001", "2021-05-02"),
            "在【2021-05-03】日期之后盘点的商品已发生业务，不能盘点！");
  prompt.willSayYes();
  EXPECT_FALSE(cancelStocktake(count, prompt));
  EXPECT_EQ(prompt.questions.last(), "您的操作将取消当前的单据，确认吗？");
  EXPECT_EQ(prompt.lastNotice(), "在【2021-05-02】日期之后盘点商品已发生业务，\r\n\r\n单号为：【" + sale +
                                     "】，\r\n\r\n该盘点单 " + count + " 不能撤销！");
  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(cancelSale(sale, prompt));
  EXPECT_TRUE(cancelStocktake(count, prompt));
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  expectWaiting(stocktake, count);

  const QString later = sell("2021-05-03", {{"A", 1, 9}});
  prompt.willSayYes();
  const std::vector<ListedDocument> list{{count, "2021-05-02"}};
  EXPECT_EQ(stock_count::auditAll(list, prompt), 0);
  EXPECT_EQ(prompt.lastNotice(), "在【2021-05-02】日期之后盘点商品已发生业务，\r\n\r\n单号为：【" + later +
                                     "】，\r\n\r\n不能盘点，该盘点单 " + count + " 已作废！");
  expectWaiting(stocktake, count);
}

}  // namespace internal_documents_test
}  // namespace jxc
