// The purchase return: stock at every step, the supplier's goods, a receipt returned as a whole.
#include "purchasing/purchase_return.h"

#include "stock/shop.h"

namespace jxc::purchase_return_test {

class PurchaseReturnTest : public test::ShopTest {
 protected:
  PurchaseReturnTest() {
    addGoods("A", 4, "6901");
    addGoods("B", 9);
    addGoods("Z", 1);
    received = receive("2021-05-01", {{"A", 10, 4}, {"B", 2, 9}});
    draft = rules.fresh({});
    prompt.forget();
  }
  LinePlace place() const { return placeOf(draft); }
  QString goodsToPick() const { return ShopTest::goodsToPick(rules.lines(), place()); }

  const TradingRules& rules = purchase_return::rules();
  TradingDraft draft;
  QString received;
};

TEST_F(PurchaseReturnTest, StockIsTestedAtEveryStep) {
  EXPECT_EQ(goodsToPick(), "A B Z");
  setParameter("cs_ct", 1);
  EXPECT_EQ(goodsToPick(), "A B");  // Z was never delivered by this supplier
  setParameter("cs_ct", 0);
  setParameter("cs_kc", 0);
  EXPECT_EQ(goodsToPick(), "A B");

  LineDraft line = rules.lines().newLine("A", place(), false);
  EXPECT_EQ(line.amounts.price(), 4);
  line.amounts.setQuantity(11);
  EXPECT_EQ(prompt.refused(rules.lines().mayWrite(line, place(), prompt)), "库存数量小于退货数量，不能退货！");
  setParameter("cs_kc", 1);
  EXPECT_TRUE(rules.lines().mayWrite(line, place(), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "库存数量小于退货数量，退货后将产生负库存，继续退货吗?");

  EXPECT_NE(rules.lines().enterBarcode(place(), "6901", false, prompt).id, 0);
  add(rules.lines(), place(), "Z", 1);
  setParameter("cs_kc", 0);
  EXPECT_EQ(prompt.refused(rules.save(draft, prompt)), "当前仓库中商品‘镜架Z’库存不足，\r\n\r\n不能退货。");
  setParameter("cs_kc", 1);
  EXPECT_TRUE(rules.save(draft, prompt.willSayYes().willSayYes()));
  EXPECT_EQ(prompt.questions.at(1), "当前仓库中商品‘镜架Z’不存在，\r\n\r\n退货将会出现负库存，是否继续？");
  EXPECT_EQ(lastLog(), "增加未审核采购退货单" + draft.number + "，共2种商品");
  EXPECT_EQ(audit(draft.number), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("Z"), "-1 -1 1");
  EXPECT_EQ(supplierOwed(), 58 - 5);  // nothing was got back
}

TEST_F(PurchaseReturnTest, AWholeReceiptOnceAndAgainWhenTheReturnIsDeleted) {
  // A receipt that was settled one yuan lower, beside the one on account.
  receipt::ReceiptDraft lower = draftReceipt("2021-05-02", {{"A", 10, 4}, {"B", 2, 9}});
  lower.paid = 57;
  received = save(lower);
  EXPECT_EQ(audit(received), AuditOutcome::Audited);
  prompt.forget();
  EXPECT_FALSE(rules.returnWhole("CT21050110001", draft, prompt));
  EXPECT_EQ(prompt.lastNotice(), "单据CT21050110001不能退货，只有“CJ”开头的单据才能退货！");
  const TradingDraft fresh = draft;
  draft = *rules.returnWhole(received, draft, prompt);
  EXPECT_EQ(draft.payable, 57);  // the balancing line goes back too
  EXPECT_EQ(draft.returnOf, received);
  draft.paid = 57;
  ASSERT_TRUE(rules.save(draft, prompt.willSayYes()));
  EXPECT_EQ(row("select j_th,j_dhdid from jxc_jhd where j_sn=?", received), "1 " + draft.number);
  EXPECT_EQ(prompt.refused(rules.returnWhole(received, fresh, prompt)), "该单据已经进行过整单退货，不能重复退货！");
  EXPECT_TRUE(deleteWaitingDocument(families::purchaseReturn, draft.number, prompt.willSayYes()));
  EXPECT_EQ(row("select j_th,j_dhdid from jxc_jhd where j_sn=?", received), "0 ");

  draft = *rules.returnWhole(received, fresh, prompt);
  draft.paid = 57;
  ASSERT_TRUE(rules.save(draft, prompt.willSayYes()));
  auto dialog = rules.loadForAudit(draft.number);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->payable, 57);
  dialog->paid = 50;
  dialog->note = "质量问题";
  EXPECT_EQ(rules.audit(*dialog, prompt), AuditOutcome::Audited);
  EXPECT_EQ(row("select th_yfje,th_sfje,th_note from jxc_thd where gl_djh=?", draft.number), "-57 -50 质量问题");
  EXPECT_EQ(row("select k_type,k_djlx,k_djtxt,k_yfje,k_sfje,k_fkfs from jxc_ysyfk where gl_djh=?", draft.number),
            "ghs CT 采购退货单 -57 -50 现金");
  EXPECT_EQ(row("select xj_dlx,xj_je,xj_kmmc from jxc_xjyh where gl_djh=?", draft.number), "采购退货 50 现金");
  EXPECT_EQ(cash(), -57 + 50);
  EXPECT_EQ(supplierOwed(), 58 - 57 + 50);
  EXPECT_EQ(balanceOf("A").section(u' ', 0, 1), "10 10");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

}  // namespace jxc::purchase_return_test
