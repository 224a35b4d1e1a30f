// Goods on loan: out, partly back with rent, the rest kept as sold, and every step taken back. What a failing audit
// says.
#include "core/numbers.h"
#include "stock/shop.h"

namespace jxc::loan_documents_test {

using namespace families;

class LoanTest : public test::ShopTest {
 protected:
  LoanTest() {
    addGoods("A", 5);
    addGoods("B", 2);
    receive("2021-05-01", {{"A", 10, 5}});
  }
  QString lend(double quantity) {
    return test::waitingDocument(loan, "2021-05-02", {}, {{"A", quantity, 5, {{"jh_yj", 200.0}, {"jh_zj", 50.0}}}});
  }
  QString loanLine(const QString& number) {
    return row("select jh_hhsl,jh_xssl,jh_yj2 from jxc_khjhsp where gl_djh=?", number);
  }
  QString ledger(const QString& number) {
    return row("select gl_flag,gl_fdmc,gl_sl,gl_sysl,gl_zje,gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where gl_djh=?",
               number);
  }
  QString income(const QString& number) {
    return row("select fy_lx,fy_je,fy_kmmc,fy_note from jxc_yyfy where gl_djh=? order by id", number);
  }
  QString month() { return row("select js_sl,js_zje from jxc_kcjs where js_rq=? and ck_sn='100001'", u"2021-05"_qs); }
};

TEST_F(LoanTest, GoodsGoOutComeBackWithRentAndAreKept) {
  setParameter("cs_kc", 0);
  const QString tooMuch = lend(11);
  EXPECT_EQ(audit(tooMuch), AuditOutcome::Refused);
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");

  const QString number = audited(lend(4));
  EXPECT_EQ(ledger(number), "jh jh 4 4 20 6 5 30");
  EXPECT_EQ(balanceOf("A"), "6 6 5");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 6);
  EXPECT_EQ(month(), "6 30");
  EXPECT_EQ(customerOwes(), 0);  // goods are owed, not money
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  const std::int64_t line = firstIdOf("jxc_khjhsp", "gl_djh", number);
  const auto takeBack = [&](double back, double sold, double rent, const QString& account) {
    return test::returnLoan("2021-05-03", line, back, sold, 6, rent, account);
  };
  // A deposit that does not cover the rent: the rent stays whole.
  const QString back = takeBack(1, 0, 150, u"现金"_qs);
  EXPECT_EQ(ledger(back), "hh hh 1 150 6 7 5 35");  // back at today's cost; the average stays
  EXPECT_EQ(loanLine(number), "1 0 150");
  EXPECT_EQ(income(back), "收入 150 现金 还货单" + back + "产生的借货收入");
  EXPECT_EQ(lastLog(), "增加还货单" + back + "，共1种商品");
  const QString kept = takeBack(0, 3, 6, u"工行"_qs);
  EXPECT_EQ(ledger(kept), "hh xs 3 3 18 10 5 50");
  EXPECT_EQ(loanLine(number), "1 3 156");
  const QString free = takeBack(0, 0, 0, u"现金"_qs);
  EXPECT_EQ(income(free), "");
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(month(), "10 54");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  for (const QString& each : {free, kept, back})
    EXPECT_TRUE(cancelDocument(each, prompt.willSayYes()));
  EXPECT_TRUE(cancelLoan(number, prompt.willSayYes()));
  EXPECT_EQ(lastLog(), "取消审核客户借货单" + number);
  EXPECT_EQ(month(), "10 50");

  // Its number carries its date: another date takes another number.
  EXPECT_EQ(changeWaitingHead(loan, number, {.date = "2021-04-01"}, prompt), "JH21040110001");
  EXPECT_EQ(lineCount(loan, "JH21040110001"), 1);

  setRights("300001", "rcgl", "111");
  becomeOperator("小王", "100002", "300001");
  EXPECT_EQ(prompt.refused(cancelLoan(number, prompt)), "您没有取消审核客户借货单的权限！");
}

TEST_F(LoanTest, AFailingAuditNamesItsDocumentAndChangesNothing) {
  const QString sale = waitingSale("2021-05-03", {{"A", 1, 12}, {"B", 1, 4}}, 0);
  execSql("delete from jxc_khxx where kh_sn=?", customer());
  const QString lent = lend(1);
  execSql("update jxc_khjh set kh_sn='999999' where gl_djh=?", lent);
  for (const QString& number : {sale, lent}) {
    try {
      audit(number);
      ADD_FAILURE() << number.toStdString() << " was audited";
    } catch (const std::exception& failure) {
      const QString words = QString::fromUtf8(failure.what());
      EXPECT_TRUE(words.startsWith("单据" + number + "审核失败：\r\n\r\n") && words.endsWith("没有改动任何数据。"))
          << failure.what();
    }
    EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist where gl_djh=?", number), 0);
  }
  EXPECT_EQ(lookupNumber("select sum(ls_status) from jxc_lsxsd"), 0);
  EXPECT_EQ(lookupNumber("select sum(jh_status) from jxc_khjh"), 0);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
}

}  // namespace jxc::loan_documents_test
