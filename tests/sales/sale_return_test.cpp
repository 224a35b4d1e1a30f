// The customer return: single goods, a whole sale, and what both leave on the customer's account.
#include "sales/sale_return.h"

#include "masterdata/prices.h"
#include "stock/shop.h"

namespace jxc::sale_return_test {

class SaleReturnTest : public test::ShopTest {
 protected:
  SaleReturnTest() {
    addGoods("A", 40);
    addGoods("B", 100);
    receive("2021-05-01", {{"A", 10, 40}, {"B", 5, 100}});
    draft = rules.fresh({});
  }
  LinePlace place() const { return placeOf(draft); }
  QString saveReturn() {
    prompt.willSayYes();
    const SaveResult saved = rules.save(draft, prompt);
    EXPECT_TRUE(saved);
    return saved.number;
  }
  QString goodsToPick() const { return ShopTest::goodsToPick(rules.lines(), place(), {}, {"g_sn", "kc_sl"}); }

  const TradingRules& rules = sale_return::rules();
  TradingDraft draft;
};

TEST_F(SaleReturnTest, GoodsComeBackAndTheRestStaysOnAccount) {
  insertRow("jxc_kcsp", {{"g_sn", u"A"}, {"ck_sn", u"100002"}, {"kc_sl", 7.0}, {"kc_zsl", 7.0}});
  execSql("update jxc_goods set g_kc=g_kc+7 where g_sn='A'");
  EXPECT_EQ(goodsToPick(), "A 17 B 5");  // wherever it lies
  setParameter("cs_xt", 1);
  EXPECT_EQ(goodsToPick(), "");  // never sold to this customer
  sell("2021-05-02", {{"A", 4, 100}});
  EXPECT_EQ(goodsToPick(), "A 6");  // here, where it comes back to
  execSql("delete from jxc_kcsp where ck_sn='100002'");
  execSql("update jxc_goods set g_kc=g_kc-7 where g_sn='A'");

  EXPECT_EQ(prompt.refused(rules.save(draft, prompt)), "单据中没有业务发生，不能保存！");
  LineDraft line = rules.lines().newLine("A", place(), false);
  EXPECT_EQ(prompt.refused(rules.lines().mayWrite(line, place(), prompt)), "数量不能为0！");
  line.amounts.setQuantity(99);  // more than there ever was: goods come in, nothing is asked
  EXPECT_TRUE(rules.lines().mayWrite(line, place(), prompt));
  line.amounts.setQuantity(1);
  line.amounts.setPrice(100);
  rules.lines().addLine(Lines::Draft, place(), line, prompt);
  draft.paid = 30;
  const QString number = saveReturn();
  EXPECT_TRUE(number.startsWith("XT"));
  EXPECT_EQ(lastLog(), "增加未审核销售退货单" + number + "，共1种商品");
  EXPECT_EQ(row("select th_yfje,th_sfje,th_jsfs from jxc_xsthd where gl_djh=?", number), "-100 -30 1");
  EXPECT_EQ(rules.waiting({}).front().number("wfje"), 70);

  // A line more while it waits, then the dialog pays 80.
  rules.lines().setChange("2", u"sl", Lines::Waiting, openSelect(rules.waitingLines(number)).front().integer("id"),
                          prompt);
  auto dialog = rules.loadForAudit(number);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->payable, 200);
  EXPECT_EQ(dialog->paid, 200);  // by parameter it follows
  dialog->paid = 80;
  EXPECT_EQ(rules.audit(*dialog, prompt), AuditOutcome::Audited);
  EXPECT_EQ(row("select gl_sl,gl_zje,gl_lr,gl_kc from jxc_goodslist where gl_djh=?", number), "-2 -200 -120 8");
  EXPECT_EQ(balanceOf("A"), "8 8 40");
  EXPECT_EQ(customerOwes(), 400 - 200 + 80);
  EXPECT_EQ(cash(), -80);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(SaleReturnTest, AWholeSaleIsReturnedWithItsBalancingLine) {
  const QString sold = waitingSale("2021-05-02", {{"A", 2, 100}, {"B", 1, 250}}, 445, 0);
  balanceSale(sold, 445, 450);
  EXPECT_EQ(audit(sold), AuditOutcome::Audited);
  const auto whole = rules.returnWhole(sold, draft, prompt);
  ASSERT_TRUE(whole);
  draft = *whole;
  EXPECT_EQ(draft.payable, 445);
  EXPECT_EQ(draft.paid, 445);
  EXPECT_EQ(row("select g_sn,th_sl,th_dj,th_zje,th_cbj from jxc_xsthsp where gl_djh=? order by id", draft.number),
            "A 2 100 200 40 B 1 250 250 100 00000000 0 0 -5 0");
  const QString number = saveReturn();
  EXPECT_EQ(row("select ls_th,ls_fdmc from jxc_lsxsd where gl_djh=?", sold), "1 " + number);
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "10 10 40");
  EXPECT_EQ(balanceOf("B"), "5 5 100");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(customerOwes(), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_TRUE(cancelSaleReturn(number, prompt.willSayYes()));
  EXPECT_EQ(row("select ls_th from jxc_lsxsd where gl_djh=?", sold), "1");  // it was returned once
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  draft = rules.fresh({});
  EXPECT_FALSE(rules.returnWhole(sold, draft, prompt.willSayNo()));
  EXPECT_FALSE(rules.returnWhole("XS00000000000", draft, prompt));
}

// What stood on account goes back to the account: the till pays out what it got, at once and later, and no more.
TEST_F(SaleReturnTest, AWholeReturnProposesNoMoreThanWasReceived) {
  struct Case {
    double received, later, proposed, afterALineWent;
  };
  for (const Case& each :
       {Case{0, 0, 0, 0}, {120, 0, 120, 120}, {120, 200, 320, 250}, {450, 0, 450, 250}, {500, 0, 450, 250}}) {
    const QString sold = waitingSale("2021-05-02", {{"A", 2, 100}, {"B", 1, 250}}, each.received, 1);
    ASSERT_EQ(audit(sold), AuditOutcome::Audited);
    execSql("update jxc_lsxsd set ls_hkje=? where gl_djh=?", each.later, sold);
    draft = rules.returnWhole(sold, rules.fresh({}), prompt).value();
    EXPECT_EQ(draft.paid, each.proposed);
    EXPECT_EQ(rules.paidAfter(450, 0, draft), each.proposed);  // as the screen asks
    const QString number = saveReturn();
    EXPECT_EQ(row("select th_yfje,th_sfje from jxc_xsthd where gl_djh=?", number),
              u"-450 "_qs + numberText(-each.proposed));
    const auto first = openSelect(rules.waitingLines(number)).front().integer("id");
    EXPECT_FALSE(deleteWaitingLine(families::saleReturn, number, first, prompt));
    EXPECT_EQ(row("select th_yfje,th_sfje from jxc_xsthd where gl_djh=?", number),
              u"-250 "_qs + numberText(-each.afterALineWent));
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
  }
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

}  // namespace jxc::sale_return_test
