// Rent, wages and interest: entered, audited into the cash ledger, taken back; and what came with documents, which is
// theirs.
#include "accounts/expenses.h"

#include "accounts/cash_accounts.h"
#include "core/period_lock.h"
#include "harness/whole_books.h"
#include "masterdata/departments.h"
#include "stock/shop.h"

namespace jxc::expenses_test {

using expenses::Side;

const QString kTill = u"现金"_qs, kBank = u"工行帐号"_qs, kNone = u"不记入账户"_qs;

class ExpenseTest : public test::ShopTest {
 protected:
  static expenses::Draft draft(Side side, const QString& type, double yuan, const QString& account) {
    return {.side = side,
            .date = u"2021-05-02"_qs,
            .type = type,
            .amount = yuan,
            .employee = u"100001"_qs,
            .department = u"100001"_qs,
            .account = account,
            .note = u"五月"_qs};
  }
  QString enter(Side side, const QString& type, double yuan, const QString& account = kTill) {
    return expenses::save(draft(side, type, yuan, account), prompt).value_or(QString());
  }
  QString booked(Side side, const QString& type, double yuan, const QString& account = kTill) {
    const QString number = enter(side, type, yuan, account);
    EXPECT_TRUE(expenses::checkDj(number, prompt));
    return number;
  }
  static std::int64_t idOf(const QString& number) {
    return lookupValue("select id from jxc_yyfy where gl_djh=?", number).toLongLong();
  }
  static std::int64_t typeOf(const QString& name) {
    return lookupValue("select id from jxc_fylx where fy_lx=?", name).toLongLong();
  }
  static QString cashOf(const QString& number) {
    return row("select xj_rq,xj_dlx,xj_je,xj_ljje,xj_kmmc,ghs_name,u_name,xj_note from jxc_xjyh where gl_djh=?",
               number);
  }
  static double bank() { return xjyhBalanceNow(kBank); }
};

TEST_F(ExpenseTest, ExpenseOf100IsBookedTakenBackMovedToTheBankAndBookedAgain) {
  for (const double nothing : {0.0, 4e-7})
    EXPECT_EQ(prompt.refused(!enter(Side::Expense, {}, nothing).isEmpty()), "金额必须填写！");
  EXPECT_EQ(prompt.refused(!enter(Side::Expense, {}, 5).isEmpty()), "请选择费用类型！");
  EXPECT_EQ(prompt.refused(!enter(Side::Income, {}, 5).isEmpty()), "请选择收入类型！");
  expenses::Draft bare = draft(Side::Expense, u"费用"_qs, 5, kTill);
  bare.employee.clear();
  EXPECT_EQ(prompt.refused(expenses::save(bare, prompt)), "请选择经办人！");
  bare.employee = u"100001"_qs;
  bare.department.clear();
  EXPECT_EQ(prompt.refused(expenses::save(bare, prompt)), "请选择部门！");

  const QString number = enter(Side::Expense, u"费用"_qs, 100);
  EXPECT_EQ(number, "FY21050210001");
  EXPECT_EQ(cash(), 0) << "it waits";
  const QString later = booked(Side::Income, u"收入"_qs, 35.5);
  EXPECT_EQ(later, "SR21050210001");
  EXPECT_TRUE(expenses::auditOne(number, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要审核当前信息吗！");
  EXPECT_EQ(cashOf(number), "2021-05-02 费用付款 -100 -64.5 现金 默认部门 默认员工 五月");
  EXPECT_EQ(cashOf(later), "2021-05-02 收入收款 35.5 35.5 现金 默认部门 默认员工 五月");

  EXPECT_EQ(prompt.refused(expenses::openForChange(idOf(number), prompt)), "该单据已审核，不能修改！");
  EXPECT_TRUE(expenses::cancel(idOf(number), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要取消审核当前信息吗！");
  EXPECT_EQ(cash(), 35.5);
  auto changed = expenses::openForChange(idOf(number), prompt);
  ASSERT_TRUE(changed);
  EXPECT_EQ(changed->amount, 100);
  changed->account = kBank;
  changed->date = u"2021-05-01"_qs;
  EXPECT_EQ(expenses::save(*changed, prompt), number);
  EXPECT_TRUE(expenses::checkDj(number, prompt));
  EXPECT_EQ(bank(), -100);
  EXPECT_EQ(cash(), 35.5);

  // Rent comes every month: a copy is of today, and the first one stays as it is.
  const auto again = expenses::copyForToday(idOf(number), prompt);
  ASSERT_TRUE(again);
  EXPECT_EQ(*expenses::save(*again, prompt), "FY21050310001");
  EXPECT_TRUE(expenses::remove(idOf(u"FY21050310001"_qs), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要删除该信息吗！");

  prompt.willSayYes();  // is so much meant?
  const QString much = booked(Side::Income, u"收入"_qs, 1e12), little = booked(Side::Income, u"收入"_qs, 1.2345678);
  EXPECT_EQ(lookupNumber("select fy_je from jxc_yyfy where gl_djh=?", much), 1e12);
  EXPECT_EQ(lookupNumber("select fy_je from jxc_yyfy where gl_djh=?", little), 1.234568);
  for (const QString& each : {much, little}) {
    EXPECT_TRUE(expenses::cancel(idOf(each), prompt.willSayYes()));
    EXPECT_TRUE(expenses::remove(idOf(each), prompt.willSayYes()));
  }
  EXPECT_EQ(cash(), 35.5);
  booked(Side::Expense, u"应付工资"_qs, 7, kNone);
  EXPECT_EQ(cash() + bank(), -64.5) << "what is not booked moves no cash";
  setParameter("cs_shdj", 1);
  enter(Side::Income, u"收入"_qs, 10, kBank);
  EXPECT_EQ(bank(), -90) << "audited at once";
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ExpenseTest, WhatADocumentBroughtIsLeftToThatDocument) {
  addGoods("A", 8);
  const Line lent{"A", 1, 3, {{"jh_yj", 50.0}, {"jh_zj", 2.0}, {"jh_kmmc", kTill}}};
  const QString freight = test::waitingDocument(
      families::sale, "2021-05-02", {{"ls_sfje", 5.0}, {"ls_yf", 8.0}, {"ls_yffs", u"我方付运费"}}, {{"A", 1, 9}});
  const QString bought =
      test::waitingDocument(families::purchaseReceipt, "2021-05-02",
                            {{"j_sfje", 5.0}, {"j_yf", 6.0}, {"j_yffs", u"我方付运费"}}, {{"A", 1, 5}});
  const QString loan = test::waitingDocument(families::loan, "2021-05-01", {}, {lent});
  test::WhileAsked yes({});
  for (const QString& number : {freight, bought, loan})
    ASSERT_EQ(checkDj(documentFamily(number), number, yes), AuditOutcome::Audited);
  const QString rent = test::returnLoan(
      "2021-05-02", lookupValue("select id from jxc_khjhsp where gl_djh=?", loan).toLongLong(), 1, 0, 0, 4);
  EXPECT_EQ(row("select fy_je,fy_chk from jxc_yyfy order by id"), "-8 1 -6 1 4 1");

  const test::Books before = test::readBooks(test::Reading::ToTheLetter);
  for (const QString& number : {freight, bought, rent}) {
    const QString refusal = u"该信息由单据产生：\r\n\r\n"_qs + words(documentFamily(number).name) + u' ' + number +
                            u"\r\n\r\n不能在这里修改、删除或取消审核，请处理该单据。"_qs;
    EXPECT_EQ(prompt.refused(expenses::cancel(idOf(number), prompt)), refusal);
    EXPECT_EQ(prompt.refused(expenses::openForChange(idOf(number), prompt)), refusal);
    EXPECT_EQ(prompt.refused(expenses::copyForToday(idOf(number), prompt)), refusal);
    EXPECT_TRUE(prompt.refused(expenses::remove(idOf(number), prompt)).startsWith(refusal));
  }
  EXPECT_TRUE(test::readBooks(test::Reading::ToTheLetter) == before) << "to the cell";
}

TEST_F(ExpenseTest, OfTwoOperatorsTheSecondFindsWhatTheFirstDid) {
  const QString number = enter(Side::Expense, u"费用"_qs, 100);
  const std::int64_t id = idOf(number);
  test::WhileAsked quicker([&] { expenses::checkDj(number, prompt); });
  EXPECT_FALSE(expenses::auditOne(number, quicker));
  EXPECT_EQ(cash(), -100) << "once";
  test::WhileAsked cancelled([&] { expenses::cancel(id, prompt.willSayYes()); });
  EXPECT_FALSE(expenses::cancel(id, cancelled));
  EXPECT_EQ(cash(), 0);
  test::WhileAsked audits([&] { expenses::checkDj(number, prompt); });
  EXPECT_FALSE(expenses::remove(id, audits));
  EXPECT_TRUE(audits.notices.value(0).startsWith("该单据已审核，不能删除！"));
  EXPECT_EQ(cash(), -100);

  // A type that was renamed, and an account that was deleted, while a form stood open or a line waited.
  ASSERT_TRUE(expenses::saveType({.name = u"房租"_qs, .note = {}}, prompt));
  const expenses::Draft open = draft(Side::Expense, u"房租"_qs, 20, u"建行帐号"_qs);
  const QString waiting = *expenses::save(open, prompt);
  ASSERT_TRUE(expenses::saveType({.id = typeOf(u"房租"_qs), .name = u"店租"_qs, .note = {}}, prompt));
  EXPECT_EQ(lookupValue("select fy_lx from jxc_yyfy where gl_djh=?", waiting), "店租");
  EXPECT_EQ(prompt.refused(expenses::save(open, prompt)), "类型“房租”已被删除或改名，请重新选择！");
  expenses::Draft form = draft(Side::Expense, u"费用"_qs, 20, u"建行帐号"_qs);
  form.department = u"100077"_qs;
  EXPECT_EQ(prompt.refused(expenses::save(form, prompt)), "部门已被删除或改名，请重新选择！");
  form.department = u"100001"_qs;
  form.employee = u"100077"_qs;
  EXPECT_EQ(prompt.refused(expenses::save(form, prompt)), "经办人已被删除或改名，请重新选择！");
  form.employee = u"100001"_qs;
  const std::int64_t account = lookupValue("select id from jxc_yhzh where yh_name='建行帐号'").toLongLong();
  cash::AccountDraft renamed = cash::readAccount(account);
  renamed.name = u"建行"_qs;
  ASSERT_TRUE(cash::saveAccount(renamed, prompt));
  EXPECT_EQ(prompt.refused(expenses::save(form, prompt)), "账户“建行帐号”已被删除或改名，请重新选择！");
  renamed.name = u"建行帐号"_qs;
  ASSERT_TRUE(cash::saveAccount(renamed, prompt)) << "what waits went along, and comes back";
  const QString fine = enter(Side::Income, u"收入"_qs, 3);
  ASSERT_TRUE(cash::deleteAccount(account, prompt.willSayYes()));
  EXPECT_TRUE(expenses::auditAll(openSelect(expenses::waitingLines({})), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(),
            "您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）");
  EXPECT_EQ(prompt.lastNotice(), u"审核完成，共 2 个单据，\r\n\r\n审核成功 1 个单据。\r\n\r\n单据"_qs + waiting +
                                     u"：\r\n\r\n账户“建行帐号”已被删除或改名，请重新选择！"_qs);
  EXPECT_EQ(cash(), -97) << fine.toStdString();
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ExpenseTest, ALockedLineIsCopiedForTodayAndWhatWaitsMovesOut) {
  const QString audited = booked(Side::Expense, u"费用"_qs, 100), waiting = enter(Side::Expense, u"费用"_qs, 7);
  setPeriodLock(u"2021-05-02"_qs);
  const auto copy = expenses::copyForToday(idOf(audited), prompt);
  ASSERT_TRUE(copy && expenses::save(*copy, prompt));
  auto later = expenses::openForChange(idOf(waiting), prompt);
  ASSERT_TRUE(later);
  later->date = u"2021-05-03"_qs;
  EXPECT_TRUE(expenses::save(*later, prompt)) << "what waits moves out of the locked days";
}

TEST_F(ExpenseTest, SumsLeaveNoRowOutWhenATypeOrDepartmentIsGone) {
  ASSERT_TRUE(saveNamed(departmentList, 0, u"门市"_qs, prompt));
  ASSERT_TRUE(expenses::saveType({.name = u"房租"_qs, .note = u"两店"_qs}, prompt));
  booked(Side::Expense, u"房租"_qs, 60);
  booked(Side::Expense, u"房租"_qs, 40, kNone);
  booked(Side::Income, u"收入"_qs, 12);
  const QString other = booked(Side::Expense, u"应付工资"_qs, 7);
  execSql("update jxc_yyfy set de_sn='999999' where gl_djh=?", other);
  const auto sums = [](const Criteria& criteria) {
    return test::textsOf(openSelect(expenses::totals(criteria)), {"fy_lx", "de_name", "fyje", "fy_note"});
  };
  EXPECT_EQ(sums({}),
            (QStringList{"应付工资  -7 人员工资支出", "收入 默认部门 12 收入类型", "房租 默认部门 -100 两店"}));
  EXPECT_EQ(prompt.refused(expenses::deleteType(typeOf(u"房租"_qs), prompt)),
            "该项目类型已发生业务，不能删除！\r\n\r\n费用及收入类型\r\n用于：费用及收入 "
            "FY21050210001\r\n\r\n不再使用的话，可以改名。");
  execSql("delete from jxc_fylx where fy_lx='房租'");
  EXPECT_EQ(sums({.kind = u"房租"_qs}), QStringList{"房租 默认部门 -100 "});
  Criteria may{.from = u"2021-05-01"_qs, .to = u"2021-05-02"_qs, .partner = u"100001"_qs};
  EXPECT_EQ(openSelect(expenses::auditedLines(may)).rowCount(), 3);
  may.key = u"不记入"_qs;
  EXPECT_EQ(openSelect(expenses::auditedLines(may)).rowCount(), 1);

  for (const char16_t* kept : {u"费用", u"收入", u"运费", u"包装费"})
    EXPECT_TRUE(
        prompt.refused(expenses::deleteType(typeOf(words(kept)), prompt)).startsWith("系统内置类型，不能删除！"));
  EXPECT_EQ(prompt.refused(expenses::saveType({.name = u"收入"_qs, .note = {}}, prompt)), "类型已经存在，不能加入！");
}

}  // namespace jxc::expenses_test
