// What never comes, or never goes: the return that closes it, its money, and what meets it.
#include "stock/partial_rest.h"

#include "purchasing/purchase_return.h"
#include "sales/sale_return.h"
#include "stock/shop.h"

namespace jxc::partial_rest_test {

using partial::issue;
using partial::putaway;

class PartialRestTest : public test::ShopTest {
 protected:
  PartialRestTest() {
    addGoods("A", 5);
    addGoods("B", 2);
    setParameter("cs_sprk", 1);
    setParameter("cs_spck", 1);
    setParameter("cs_kp", 1);
  }
  QString moved(const PartialMovement& movement, const QString& source, const std::vector<double>& pieces = {}) {
    return audited(test::waitingPart(movement, u"2021-05-03"_qs, source, pieces));
  }
  bool cancel(const QString& number) { return cancelDocument(number, prompt, CancelMode::Batch); }
  QString close(const PartialMovement& movement, const QString& source, Answer answer = Answer::Yes) {
    prompt.forget();
    prompt.willAnswer(answer);
    return partial::closeRest(movement, source, prompt).value_or(QString());
  }
  /// Ten A at 5 yuan, so much of it paid.
  QString buyTen(double paid, int settlement) {
    return audited(test::waitingDocument(families::purchaseReceipt, u"2021-05-01"_qs,
                                         {{"j_sfje", paid}, {"j_jsfs", settlement}}, {{"A", 10, 5}}));
  }
  QString flagOf(const QString& receipt) { return lookupValue("select j_crk from jxc_jhd where j_sn=?", receipt); }
  static QStringList broken() { return test::brokenInvariants(); }
};

TEST_F(PartialRestTest, TenPaidForInThreePutawaysWithARestThatNeverCame) {
  const QString bought = buyTen(50, 0);
  const QString parts[] = {moved(putaway, bought, {3}), moved(putaway, bought, {2}), moved(putaway, bought, {1})};
  EXPECT_EQ(cash(), -50);
  EXPECT_EQ(close(putaway, bought, Answer::Cancel), "");
  const QString back = close(putaway, bought);
  EXPECT_TRUE(
      prompt.questions.last().startsWith(u"您的操作将取消当前单据所有未入库的商品，\r\n\r\n未入库的商品数量将不再入库，"
                                         u"\r\n\r\n将会自动生成一个新的采购退货单"));
  EXPECT_TRUE(prompt.questions.last().contains(u"选【是】 20.00 退回账户“现金”，\r\n\r\n选【否】 20.00 记入应付帐款"));
  EXPECT_EQ(row("select th_yfje,th_sfje,th_jsfs,th_kmmc,th_status,th_note,th_checker,th_chkrq from jxc_thd"),
            "-20 -20 0 现金 1 单据" + bought + "取消入库 admin 2021-05-03");
  EXPECT_EQ(row("select g_sn,th_sl,th_je,th_zje from jxc_thsp"), "A 4 20 20");
  EXPECT_EQ(cash(), -30);
  EXPECT_EQ(supplierOwed(), 0);
  EXPECT_EQ(row("select fp_yfje,fp_note from jxc_fpdjb where gl_djh=?", back), "-20 单据" + bought + "取消入库");
  EXPECT_EQ(balanceOf("A"), "6 6 5");  // the shelf as it was
  EXPECT_EQ(flagOf(bought), "1");
  EXPECT_EQ(broken(), QStringList());

  // In no other order: first the return, then putaways, then the receipt.
  for (const QString& part : parts) {
    EXPECT_FALSE(cancel(part));
    EXPECT_EQ(prompt.lastNotice(), "入库单：" + part + "，至少有一种商品做了取消入库，\r\n\r\n请先取消审核退货单：" +
                                       back + "，\r\n\r\n然后才能取消审核该入库单！");
  }
  EXPECT_FALSE(cancel(bought));
  EXPECT_TRUE(prompt.lastNotice().contains(u"请先取消审核退货单："_qs + back));
  EXPECT_FALSE(partial::closeRest(putaway, bought, prompt));
  EXPECT_EQ(prompt.lastNotice(), "单据" + bought + "没有待入库的商品！");
  prompt.forget();
  prompt.willSayYes();
  EXPECT_TRUE(cancelPurchaseReturn(back, prompt));
  EXPECT_TRUE(prompt.questions.last().contains(u"这张自动生成的退货单将被删除"));
  EXPECT_EQ(row("select count(*) from jxc_thd") + row("select count(*) from jxc_thsp"), "00");
  EXPECT_EQ(cash(), -50);
  EXPECT_EQ(balanceOf("A"), "6 10 5");
  EXPECT_EQ(flagOf(bought), "0");
  EXPECT_EQ(broken(), QStringList());
  for (const QString& part : parts) {
    EXPECT_TRUE(cancel(part));
    prompt.willSayYes();
    EXPECT_TRUE(deleteWaitingDocument(families::putaway, part, prompt));
  }
  EXPECT_TRUE(cancel(bought));
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(balanceOf("A"), "0 0 5");
  EXPECT_EQ(broken(), QStringList());
}

TEST_F(PartialRestTest, MoneyFollowsTheSourceOrTheOperator) {
  // Nothing paid: no cash line that nobody paid, whatever is answered.
  QString bought = buyTen(0, 1);
  moved(putaway, bought, {6});
  EXPECT_EQ(supplierOwed(), 50);
  close(putaway, bought);
  EXPECT_TRUE(prompt.questions.last().contains(u"退货金额 20.00 记入应付帐款，确认吗？"));
  EXPECT_EQ(supplierOwed(), 30);
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(broken(), QStringList());

  // Fifteen of fifty paid, the rest on account: onto the account, or as far as it was paid out of the till.
  bought = buyTen(15, 1);
  moved(putaway, bought, {6});
  EXPECT_EQ(supplierOwed(), 65);
  const QString back = close(putaway, bought);
  EXPECT_TRUE(prompt.questions.last().contains(u"选【否】 15.00 退回账户“现金”"));
  EXPECT_EQ(supplierOwed(), 45);
  EXPECT_EQ(cash(), -15);
  EXPECT_TRUE(cancel(back));
  close(putaway, bought, Answer::No);
  EXPECT_EQ(supplierOwed(), 60);  // 65 − 20 + 15
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(broken(), QStringList());
}

TEST_F(PartialRestTest, TaxDiscountRoundingAndGifts) {
  // 10 pieces at 10 yuan, 13 % tax, ten percent off: 90 + 11.70 = 101.70; six of them 54 + 7.02 = 61.02.
  const std::vector<Field> taxed{{"jh_dzl", 0.9}, {"jh_tax", 13.0},   {"jh_taxdj", 11.3},
                                 {"jh_je", 90.0}, {"jh_taxje", 11.7}, {"jh_zje", 101.7}};
  const QString bought = audited(
      test::waitingDocument(families::purchaseReceipt, u"2021-05-01"_qs, {{"j_yfje", 101.7}}, {{"A", 10, 10, taxed}}));
  moved(putaway, bought, {4});
  close(putaway, bought);
  EXPECT_EQ(row("select th_sl,th_dj,th_tax,th_taxdj,th_dzl,th_je,th_taxje,th_zje from jxc_thsp"),
            "6 10 13 11.3 0.9 54 7.02 61.02");
  EXPECT_EQ(lookupNumber("select sum(th_yfje) from jxc_thd"), -61.02);
  EXPECT_EQ(broken(), QStringList());

  // Seven pieces at 3.333 sold, and a gift: digits of totals where they are kept apart, the gift at nothing.
  moved(putaway, receive("2021-05-01", {{"A", 10, 5}, {"B", 5, 2}}));
  setParameter("cs_zjews", 1);
  setParameter("cs_jews", 1);
  const QString sold = audited(
      test::waitingDocument(families::sale, u"2021-05-02"_qs, {{"ls_yfje", 23.3}, {"ls_sfje", 23.3}, {"ls_jsfs", 0}},
                            {{"A", 7, 3.333, {{"ls_zje", 23.3}}}, {"B", 2, 0, {{"t_zp", u"(赠品)"}}}}));
  moved(issue, sold, {4, 0});
  const QString back = close(issue, sold);
  EXPECT_EQ(row("select g_sn,th_sl,th_zje,th_cbj,th_zcb from jxc_xsthsp where gl_djh=? order by id", back),
            "A 3 10 7 21 B 2 0 2 4");
  EXPECT_EQ(row("select th_yfje,th_sfje from jxc_xsthd"), "-10 -10");
  EXPECT_EQ(cash(), 13.3);
  EXPECT_EQ(broken(), QStringList());
}

TEST_F(PartialRestTest, GoodsThatNeverCameAndAreSoldAlready) {
  const QString bought = receive("2021-05-01", {{"A", 10, 5}});
  sell("2021-05-02", {{"A", 8, 9}});
  setParameter("cs_kc", 0);
  EXPECT_EQ(close(putaway, bought), "");
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能退货！");
  setParameter("cs_kc", 1);
  prompt.forget();
  // Another station puts them away while it is asked.
  prompt.whileAsked(u"库存不足"_qs, [&] { moved(putaway, bought, {7}); }).willSayYes().willSayYes();
  EXPECT_FALSE(partial::closeRest(putaway, bought, prompt));
  EXPECT_TRUE(prompt.lastNotice().contains(u"没有改动任何数据！"));
  EXPECT_EQ(row("select count(*) from jxc_thd"), "0");
  EXPECT_EQ(broken(), QStringList());
}

TEST_F(PartialRestTest, AWholeReturnTakesWhatReallyMoved) {
  const QString bought = buyTen(50, 0);
  moved(putaway, bought, {6});
  const TradingDraft fresh = purchase_return::rules().fresh({});
  EXPECT_FALSE(purchase_return::rules().returnWhole(bought, fresh, prompt));
  EXPECT_TRUE(prompt.lastNotice().contains(u"还有没入库的商品，不能整单退货！"));
  EXPECT_TRUE(prompt.lastNotice().contains(u"“取消入库”"));
  close(putaway, bought);
  const auto whole = purchase_return::rules().returnWhole(bought, fresh, prompt);
  ASSERT_TRUE(whole);
  EXPECT_EQ(row("select g_sn,th_sl,th_zje from jxc_thsp where gl_djh=?", whole->number), "A 6 30");
  EXPECT_EQ(whole->payable, 30);
  EXPECT_EQ(whole->paid, 30);  // of the fifty that were paid twenty are back
  prompt.willSayYes();
  const SaveResult saved = purchase_return::rules().save(*whole, prompt);
  audited(saved.number);
  EXPECT_EQ(balanceOf("A"), "0 0 5");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(broken(), QStringList());

  // Of a sale nothing of which ever went only the other line goes back.
  receive("2021-05-01", {{"A", 5, 5}, {"B", 5, 2}});
  setParameter("cs_kc", 1);
  const QString sold =
      audited(test::waitingDocument(families::sale, u"2021-05-02"_qs, {{"ls_sfje", 53.0}}, {{"A", 5, 9}, {"B", 2, 4}}));
  prompt.willSayYes();
  moved(issue, sold, {0, 2});
  close(issue, sold);
  const auto back = sale_return::rules().returnWhole(sold, sale_return::rules().fresh({}), prompt);
  ASSERT_TRUE(back);
  EXPECT_EQ(row("select g_sn,th_sl,th_zje from jxc_xsthsp where gl_djh=?", back->number), "B 2 8");
}

}  // namespace jxc::partial_rest_test
