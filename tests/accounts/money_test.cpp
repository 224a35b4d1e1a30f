// Money in the till and at the banks, what partners owe, and what they pay.
#include "accounts/money.h"

#include "core/list_audit.h"
#include "harness/row_texts.h"

namespace jxc::money_test {

using cash::Movement;
using test::Kind;
using test::MoneyTest;
using test::WhileAsked;

const QString kTill = u"现金"_qs;
const QString kBank = u"工行帐号"_qs;

/// What the rounding of a receipt or payment put into the ledger of goods.
QStringList roundings(const QString& number) {
  return test::textsOf(openSelect("select * from jxc_goodslist where gl_djh2=?", number),
                       {"gl_flag", "g_sn", "gl_lr", "gl_zje", "ghs_name"});
}

TEST_F(MoneyTest, TransferNeedsMoneyThatIsAuditedAndMovesBothAccounts) {
  const QString deposit = move(Movement::In, 100, "2021-05-03");
  EXPECT_EQ(deposit, "XJ21050310001");
  EXPECT_EQ(move(Movement::Transfer, 60, "2021-05-03", kTill, kTill), "");
  EXPECT_EQ(prompt.lastNotice(), "出款、入款不能为同一个账户！");
  move(Movement::Transfer, 0, "2021-05-03", kTill, kBank);
  EXPECT_EQ(prompt.lastNotice(), "金额必须大于0！");
  move(Movement::Transfer, 60, "2021-05-03", kTill, kBank);  // the deposit still waits
  EXPECT_EQ(prompt.lastNotice(), "转出的金额不能大于出款账户中的金额！");
  move(Movement::Out, 0, "2021-05-03");
  EXPECT_EQ(prompt.lastNotice(), "金额必须填写！");

  EXPECT_TRUE(cash::auditLine(deposit, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要审核当前信息吗！");
  const QString transfer = move(Movement::Transfer, 60, "2021-05-03", kTill, kBank);
  EXPECT_EQ(transfer, "XZ21050310001");
  EXPECT_EQ(xjyhBalanceNow(kBank), 0);
  EXPECT_TRUE(cash::checkDj(transfer));
  EXPECT_EQ(xjyhBalanceNow(kTill), 40);
  EXPECT_EQ(xjyhBalanceNow(kBank), 60);
  EXPECT_FALSE(cash::openLine(lineOf(transfer), prompt));  // audited: no change

  // Money out has no such test: the till may go below zero.
  EXPECT_TRUE(cash::checkDj(move(Movement::Out, 50, "2021-05-03")));
  EXPECT_EQ(xjyhBalanceNow(kTill), -10);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, CancelledTransferCorrectsOneAccountUntilTheRepair) {
  cash::checkDj(move(Movement::In, 100, "2021-05-01"));
  const QString transfer = move(Movement::Transfer, 30, "2021-05-02", kTill, kBank);
  cash::checkDj(transfer);
  cash::checkDj(move(Movement::In, 5, "2021-05-04", kTill));
  cash::checkDj(move(Movement::In, 5, "2021-05-04", kBank));

  prompt.willSayYes();
  EXPECT_TRUE(cash::cancelLine(lineOf(transfer), prompt));  // stands on the paying account
  EXPECT_EQ(xjyhBalanceNow(kTill), 105);
  EXPECT_EQ(xjyhBalanceNow(kBank), 35);  // still with the transfer
  EXPECT_TRUE(cash::recomputeAccounts({}, "2021-05-01", prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(),
            "当前账户：全部账户，开始计算日期：2021-05-01\r\n\r\n重新计算可能会修改期末金额，\r\n\r\n"
            "并且不可恢复。现在是否重新计算？");
  EXPECT_EQ(prompt.lastNotice(), "重新计算完成！");
  EXPECT_EQ(xjyhBalanceNow(kBank), 5);

  // Both rows wait again and go together; an opening line is never cancelled.
  EXPECT_EQ(openSelect(cash::waitingLines({.from = "2021-05-01", .to = "2021-05-31"})).rowCount(), 2);
  EXPECT_EQ(prompt.refused(cash::openLine(lineOf(transfer), prompt)), "只能修改出款和入款信息！");
  EXPECT_TRUE(cash::deleteLine(transfer, prompt.willSayYes()));
  EXPECT_TRUE(openSelect(cash::waitingLines({.from = "2021-05-01", .to = "2021-05-31"})).isEmpty());
  EXPECT_EQ(
      prompt.refused(cash::cancelLine(
          lookupValue("select id from jxc_xjyh where xj_kmmc='现金' and xj_dlx='期初金额'").toLongLong(), prompt)),
      "只能取消审核出款、入款和转账信息！");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, WaitingLineIsCorrectedAndListsFollowTheirFilters) {
  const QString out = move(Movement::Out, 20, "2021-05-02");
  auto draft = cash::openLine(lineOf(out), prompt);
  ASSERT_TRUE(draft);
  EXPECT_EQ(draft->amount, 20);
  draft->amount = 25;
  draft->account = kBank;
  draft->note = u"房租"_qs;
  EXPECT_EQ(cash::saveLine(*draft, prompt), out);
  EXPECT_EQ(lookupNumber("select xj_je from jxc_xjyh where gl_djh=?", out), -25);
  cash::checkDj(out);
  cash::checkDj(move(Movement::In, 7, "2021-05-20"));

  Criteria may{.from = "2021-05-01", .to = "2021-05-31"};
  const RowSet totals = openSelect(cash::accountTotals(may));
  ASSERT_EQ(totals.rowCount(), 3);  // with the third account, which opened in May
  for (const Row row : totals) {
    const double balance = row.text("xj_kmmc") == kBank ? -25 : row.text("xj_kmmc") == kTill ? 7 : 0;
    EXPECT_EQ(row.number("ljje"), balance) << row.text("xj_kmmc").toStdString();
    EXPECT_EQ(row.number("sfje"), balance);
  }
  may.key = u"房租"_qs;
  EXPECT_EQ(openSelect(cash::auditedLines(may)).rowCount(), 1);
  may.account = kTill;
  EXPECT_TRUE(openSelect(cash::auditedLines(may)).isEmpty());
}

TEST_F(MoneyTest, AccountKeepsItsHistoryUnderANewName) {
  EXPECT_FALSE(cash::saveAccount({.name = {}, .type = u"微信"_qs, .note = {}}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "账户名称必须填写！");
  EXPECT_FALSE(cash::saveAccount({.name = u"微信"_qs, .type = u" "_qs, .note = {}}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "账户类型必须填写！");
  EXPECT_FALSE(cash::saveAccount({.name = kBank, .type = u"微信"_qs, .note = {}}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "账户名称或账户类型不能重复！");
  // The kinds of the first accounts are stored with a blank behind them: it makes no other kind.
  EXPECT_FALSE(cash::saveAccount({.name = u"现金 "_qs, .type = u"零钱"_qs, .note = {}}, prompt));
  EXPECT_FALSE(cash::saveAccount({.name = u"零钱"_qs, .type = u"现金"_qs, .note = {}}, prompt));
  ASSERT_TRUE(cash::saveAccount({.name = u"微信"_qs, .type = u"微信合计"_qs, .note = {}, .opening = 50}, prompt));
  EXPECT_EQ(xjyhBalanceNow("微信"), 50);
  const auto id = lookupValue("select id from jxc_yhzh where yh_name='微信'").toLongLong();
  EXPECT_EQ(lookupValue("select yh_sn from jxc_yhzh where id=?", id), "100004");

  cash::checkDj(move(Movement::In, 10, "2021-05-03", "微信"));
  auto waiting = enter(customerSide, Kind::Payment, 30, "2021-05-03", 0, "微信");
  cash::AccountDraft draft = cash::readAccount(id);
  draft.name = u"微信收款"_qs;
  ASSERT_TRUE(cash::saveAccount(draft, prompt));
  EXPECT_EQ(xjyhBalanceNow("微信收款"), 60);
  partner_books::checkSkDj(waiting);  // entered before the rename
  EXPECT_EQ(xjyhBalanceNow("微信收款"), 90);

  EXPECT_EQ(prompt.refused(cash::deleteAccount(id, prompt)),
            "该账户已发生过业务，不能删除！\r\n\r\n银行账户 100004 微信收款\r\n用于：现金银行账 "
            "XJ21050310001\r\n\r\n不再使用的话，可以改名。");
  EXPECT_FALSE(cash::mayChangeOpening("微信收款", prompt.willSayNo()));
  cash::setOpening(id, 1);
  EXPECT_EQ(xjyhBalanceNow("微信收款"), 41);

  const auto till = lookupValue("select id from jxc_yhzh where yh_name='现金'").toLongLong();
  EXPECT_EQ(prompt.refused(cash::deleteAccount(till, prompt)), "“现金”不能删除！\r\n\r\n银行账户 100001 现金");
  EXPECT_EQ(prompt.refused(cash::mayChangeAccount(till, prompt)), "“现金”不能修改！");
  prompt.willSayYes();
  EXPECT_TRUE(
      cash::deleteAccount(lookupValue("select id from jxc_yhzh where yh_name='建行帐号'").toLongLong(), prompt));
  EXPECT_EQ(lookupValue("select id from jxc_xjyh where xj_kmmc='建行帐号'"), "");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, ReceiptOf98With2RoundedOffWritesFourRowsAndTakesThemBack) {
  audited(customerSide, Kind::Due, 100, "2021-05-01");
  EXPECT_EQ(lastLog(), "审核应收款，客户：张三，金额：100");
  const QString receipt = enter(customerSide, Kind::Payment, 98, "2021-05-03", 2);
  EXPECT_EQ(lastLog(), "增加收款，客户：张三，金额：98");
  EXPECT_EQ(customerOwes(), 100);
  EXPECT_TRUE(partner_books::checkSkDj(receipt));
  EXPECT_EQ(lastLog(), "审核收款，客户：张三，金额：0");
  EXPECT_EQ(customerOwes(), 0);
  EXPECT_EQ(xjyhBalanceNow(kTill), 98);
  const RowSet lines = openSelect("select * from jxc_ysyfk where gl_djh=? or gl_djh2=? order by id", receipt, receipt);
  EXPECT_EQ(test::textsOf(lines, {"gl_djh", "k_yfje", "k_djtxt", "k_note"}).mid(1),
            QStringList("YS21050310001 -2 增加应收款(抹零) 收款单抹零登记：" + receipt));
  EXPECT_EQ(roundings(receipt), QStringList("xs 00000000 -2 -2 张三"));
  EXPECT_EQ(openSelect("select id from jxc_xjyh where gl_djh=? and xj_dlx='收款单' and xj_je=98", receipt).rowCount(),
            1);

  EXPECT_FALSE(partner_books::deleteDocument(customerSide, Kind::Payment, documentOf(receipt), prompt.willSayYes()));
  EXPECT_EQ(prompt.lastNotice(), "该单据已审核，不能删除！");
  EXPECT_TRUE(partner_books::unCheck(customerSide, Kind::Payment, receipt, prompt));
  EXPECT_EQ(lastLog(), "取消审核收款，单据号：" + receipt + "，客户：张三，金额：98");
  EXPECT_EQ(customerOwes(), 100);
  EXPECT_EQ(xjyhBalanceNow(kTill), 0);
  EXPECT_EQ(lookupValue("select count(*) from jxc_ysyfk where gl_djh=? or gl_djh2=?", receipt, receipt), "0");
  EXPECT_EQ(lookupValue("select count(*) from jxc_goodslist where gl_djh2=?", receipt), "0");
  EXPECT_EQ(lookupValue("select count(*) from jxc_xjyh where gl_djh=?", receipt), "0");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, SupplierSidePaysOutAndKeepsItsWords) {
  const QString due = enter(supplierSide, Kind::Due, 500, "2021-05-01");
  EXPECT_EQ(due, "YF21050110001");
  EXPECT_EQ(lastLog(), "增加未审核应付款，供货商：明镜光学，金额：500");
  EXPECT_TRUE(partner_books::auditOne(supplierSide, Kind::Due, due, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要审核该应付款信息吗！");
  const QString payment = audited(supplierSide, Kind::Payment, 480, "2021-05-02", 20);
  EXPECT_EQ(weOwe(), 0);
  EXPECT_EQ(xjyhBalanceNow(kTill), -480);
  EXPECT_EQ(roundings(payment), QStringList("cj 00000000 0 -20 明镜光学"));
  EXPECT_TRUE(partner_books::unCheck(supplierSide, Kind::Payment, payment, prompt.willSayYes()));
  EXPECT_EQ(lastLog(), "取消审核付款，供货商：明镜光学，金额：480");
  EXPECT_TRUE(partner_books::deleteDocument(supplierSide, Kind::Payment, documentOf(payment), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要删除该付款信息吗！");
  EXPECT_EQ(weOwe(), 500);

  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_EQ(enter(supplierSide, Kind::Payment, 0, "2021-05-02"), "");
  EXPECT_EQ(prompt.lastNotice(), "付款不能为0！");
  EXPECT_EQ(enter(supplierSide, Kind::Due, 1, "2021-05-02", 0, kTill, ""), "");
  EXPECT_EQ(prompt.lastNotice(), "请选择供货商！");
  // Switched off at another station since he was chosen: what stands may still be corrected.
  const QString waiting = enter(supplierSide, Kind::Due, 1, "2021-05-02");
  execSql("update jxc_ghsxx set ghs_forbid=1");
  for (const Kind kind : {Kind::Due, Kind::Payment}) {
    EXPECT_EQ(enter(supplierSide, kind, 1, "2021-05-02"), "");
    EXPECT_EQ(prompt.lastNotice(), "该供货商刚刚被其他操作员禁用，请重新选择！");
  }
  const auto opened = partner_books::openDocument(supplierSide, Kind::Due, documentOf(waiting), prompt);
  EXPECT_TRUE(opened && partner_books::saveDocument(supplierSide, Kind::Due, *opened, prompt));
  execSql("delete from jxc_ghsxx");
  EXPECT_EQ(enter(supplierSide, Kind::Due, 1, "2021-05-02"), "");
  EXPECT_EQ(prompt.lastNotice(), "该供货商刚刚被其他操作员删除，请重新选择！");
}

TEST_F(MoneyTest, TheSlowerOfTwoStationsDoesNothingAndSaysNothing) {
  const QString due = enter(customerSide, Kind::Due, 100, "2021-05-01");
  WhileAsked audit([&] { partner_books::auditDocument(customerSide, Kind::Due, due); });
  EXPECT_FALSE(partner_books::auditOne(customerSide, Kind::Due, due, audit));
  EXPECT_EQ(customerOwes(), 100);
  WhileAsked cancel([&] {
    test::ScriptedPrompt other;
    other.willSayYes();
    partner_books::unCheck(customerSide, Kind::Due, due, other);
  });
  EXPECT_FALSE(partner_books::unCheck(customerSide, Kind::Due, due, cancel));
  WhileAsked auditBeforeDelete([&] { partner_books::auditDocument(customerSide, Kind::Due, due); });
  EXPECT_FALSE(partner_books::deleteDocument(customerSide, Kind::Due, documentOf(due), auditBeforeDelete));
  const QString deposit = move(Movement::In, 10, "2021-05-03");
  WhileAsked auditCash([&] { cash::checkDj(deposit); });
  EXPECT_FALSE(cash::auditLine(deposit, auditCash));
  EXPECT_FALSE(cash::deleteLine(deposit, auditCash));
  EXPECT_EQ(xjyhBalanceNow(kTill), 10);
  EXPECT_EQ(audit.notices + cancel.notices + auditBeforeDelete.notices + auditCash.notices, QStringList());
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, AuditAllTakesWhatWaitsAndAutomaticAuditSparesChanges) {
  const QString first = audited(customerSide, Kind::Due, 100, "2021-05-01");
  const QString second = enter(customerSide, Kind::Due, 20, "2021-05-02");
  auto list = [&] {
    return rowsOf(partner_books::documentList(customerSide, Kind::Due, {"2021-05-01", "2021-05-31"}));
  };
  EXPECT_TRUE(partner_books::auditAll(customerSide, Kind::Due, list(), prompt.willSayYes()));
  EXPECT_EQ(prompt.lastNotice(), "审核完成，共 2 个单据，\r\n\r\n审核成功 1 个单据。");
  EXPECT_FALSE(partner_books::openDocument(customerSide, Kind::Due, documentOf(second), prompt));
  EXPECT_EQ(prompt.lastNotice(), "该单据已审核，不能修改！");
  prompt.willSayYes();
  partner_books::unCheck(customerSide, Kind::Due, second, prompt);

  setParameter("cs_shdj", 1);
  auto draft = partner_books::openDocument(customerSide, Kind::Due, documentOf(second), prompt);
  ASSERT_TRUE(draft);
  draft->amount = 30;
  draft->date = u"2021-05-09"_qs;
  EXPECT_EQ(partner_books::saveDocument(customerSide, Kind::Due, *draft, prompt), second);  // keeps its number
  EXPECT_EQ(customerOwes(), 100);
  enter(customerSide, Kind::Due, -10, "2021-05-04");
  EXPECT_EQ(customerOwes(), 90);
  cash::LineDraft deposit = cash::newLine(Movement::In);
  deposit.account = kTill;
  deposit.amount = 3;
  deposit.employee = u"默认员工"_qs;
  EXPECT_TRUE(cash::saveLine(deposit, prompt));
  EXPECT_EQ(xjyhBalanceNow(kTill), 3);

  // The opening amount of a partner is audited from birth: nothing here counts it twice.
  const auto partner = savePartner(customerSide, {.name = u"李四"_qs, .opening = 70}, prompt);
  ASSERT_TRUE(partner);
  prompt.willSayYes();
  partner_books::auditAll(customerSide, Kind::Due, list(), prompt);
  EXPECT_EQ(customerOwes(*partner), 70);
  EXPECT_EQ(customerOwes(), 120);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(MoneyTest, AuditAllGoesOnAfterARowThatFailsAndEndsWhereEveryRowWould) {
  const QString broken = enter(customerSide, Kind::Payment, 9, "2021-05-02", 1);
  enter(customerSide, Kind::Payment, 5, "2021-05-03");
  execSql("update jxc_ysyfk_dj set k_rq='2021-05-2x' where gl_djh=?", broken);  // by another program
  prompt.willSayYes();
  EXPECT_TRUE(partner_books::auditAll(
      customerSide, Kind::Payment,
      rowsOf(partner_books::documentList(customerSide, Kind::Payment, {"2021-05-01", "2021-05-31"})), prompt));
  EXPECT_EQ(prompt.lastNotice(), "审核完成，共 2 个单据，\r\n\r\n审核成功 1 个单据。\r\n\r\n单据" + broken +
                                     "：\r\n\r\n日期“2021-05-2x”不正确，无法生成单据号！");
  EXPECT_EQ(customerOwes(), -5);

  ListAudit walk{.waiting = {{"B", {}, 2}, {"A", {}, 1}, {"C", {}, 3}},
                 .audit =
                     [](const ListedDocument& row, Prompt&) {
                       if (row.number == "B") throw DbError(DbError::Kind::Full, "磁盘已满");
                       return true;
                     },
                 .listed = 3};
  prompt.willSayYes();
  EXPECT_THROW(auditEach(walk, prompt), DbError);
  EXPECT_EQ(prompt.lastNotice(), "审核中断，共 3 个单据，\r\n\r\n审核成功 1 个单据。");
}

class SettlingTest : public MoneyTest {
 protected:
  /// A sale (or, below zero, a return) that has reached the customer's account.
  void sale(const QString& number, double due, double paid) {
    execSql(number.startsWith(u"XT")
                ? "insert into jxc_xsthd (gl_djh,th_yfje,th_sfje,kh_sn,th_hkje,u_sn,th_kmmc,th_note) values "
                  "(?,?,?,'100002',0,'100001','工行帐号','')"
                : "insert into jxc_lsxsd (gl_djh,ls_yfje,ls_sfje,kh_sn,ls_yhje,ls_hkje,u_sn,ls_kmmc,ls_note) values "
                  "(?,?,?,'100002',0,0,'100001','工行帐号','老客户')",
            number, due, paid);
    execSql(
        "insert into jxc_ysyfk (gl_djh,k_yfje,k_sfje,k_djlx,k_rq,k_qcje,k_yhje,k_ljje,k_type,u_sn,k_ghskh) values "
        "(?,?,?,?,'2021-05-01',0,0,0,'kh','100001','100002')",
        number, due, paid, number.left(2));
    recomputeYsyfk("100002", PartnerType::Customer, "2021-05-01");
  }
  bool settle(const QString& number, double amount, bool writeOff = false) {
    return partner_books::settleDocument(customerSide,
                                         {.number = number,
                                          .date = u"2021-05-03"_qs,
                                          .amount = amount,
                                          .account = kBank,
                                          .employee = u"100001"_qs,
                                          .note = u"尾款"_qs,
                                          .writeOff = writeOff},
                                         prompt);
  }
  double collected(const QString& number) {
    return lookupNumber("select ls_hkje from jxc_lsxsd where gl_djh=?", number);
  }
};

TEST_F(SettlingTest, WhatAnotherStationCollectedWhileTheFormStoodOpenIsNotCollectedTwice) {
  const QString number = u"XS21050110009"_qs;
  sale(number, 160, 100);
  const auto mine = partner_books::openSettlement(customerSide, {number, 160, 100}, prompt);
  ASSERT_TRUE(mine);
  ASSERT_TRUE(settle(number, 20));
  const std::string lines = lookupValue("select count(*) from jxc_ysyfk_dj").toStdString();
  partner_books::SettlementDraft draft{.number = number,
                                       .date = u"2021-05-03"_qs,
                                       .amount = mine->proposed,
                                       .account = kBank,
                                       .employee = u"100001"_qs,
                                       .shownOpen = mine->proposed};
  EXPECT_NE(prompt.refused(partner_books::settleDocument(customerSide, draft, prompt)), "");
  EXPECT_EQ(collected(number), 20);
  EXPECT_EQ(lookupValue("select count(*) from jxc_ysyfk_dj").toStdString(), lines);
  draft.shownOpen = 40;  // looked at again
  draft.amount = 40;
  execSql("update jxc_lsxsd set ls_status=0 where gl_djh=?", number);
  EXPECT_NE(prompt.refused(partner_books::settleDocument(customerSide, draft, prompt)), "") << "cancelled meanwhile";
  execSql("update jxc_lsxsd set ls_status=1 where gl_djh=?", number);
  EXPECT_TRUE(partner_books::settleDocument(customerSide, draft, prompt));
  EXPECT_EQ(collected(number), 60);
}

TEST_F(SettlingTest, OneSaleIsCollectedWrittenOffAndReopened) {
  const QString number = u"XS21050110001"_qs;
  sale(number, 160, 100);
  auto form = partner_books::openSettlement(customerSide, {number, 160, 100}, prompt);
  ASSERT_TRUE(form);
  EXPECT_EQ(form->proposed, 60);
  EXPECT_EQ(form->balance, 60);
  EXPECT_EQ(form->account, kBank);
  EXPECT_EQ(prompt.refused(settle(number, 0)), "收款不能为0！");

  ASSERT_TRUE(settle(number, 70));  // more than is open
  const QString receipt = lookupValue("select gl_djh from jxc_ysyfk_dj where gl_djh2=?", number);
  EXPECT_EQ(receipt, "SK21050310001");
  EXPECT_EQ(collected(number), 70);
  EXPECT_EQ(lookupValue("select ls_note from jxc_lsxsd"),
            "老客户  收款:SK21050310001金额:70，收款日期：2021-05-03 尾款");
  EXPECT_EQ(lookupValue("select k_note from jxc_ysyfk_dj where gl_djh=?", receipt), "单据【XS21050110001】收款 尾款");
  EXPECT_EQ(customerOwes(), 60);  // the receipt waits
  partner_books::checkSkDj(receipt);
  EXPECT_EQ(customerOwes(), -10);
  EXPECT_FALSE(partner_books::openSettlement(customerSide, {number, 160, 100}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "该单据不欠款，不需要收款！");
  EXPECT_FALSE(partner_books::openSettlement(customerSide, {"SK21050310001", 0, 70}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "只能对销售单或退货单进行收款！");

  // Deleting the receipt reopens the sale, never below nothing.
  prompt.willSayYes();
  partner_books::unCheck(customerSide, Kind::Payment, receipt, prompt);
  execSql("update jxc_lsxsd set ls_hkje=60");
  EXPECT_TRUE(partner_books::deleteDocument(customerSide, Kind::Payment, documentOf(receipt), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要删除该应收款信息吗！");
  EXPECT_EQ(collected(number), 0);
  EXPECT_EQ(lastLog(), "审核收款，");

  EXPECT_TRUE(settle(number, 60, true));
  EXPECT_EQ(collected(number), 60);
  EXPECT_EQ(customerOwes(), 60);  // written off on the sale alone
  EXPECT_EQ(lookupValue("select count(*) from jxc_ysyfk_dj"), "0");
  EXPECT_EQ(xjyhBalanceNow(kBank), 0);
}

TEST_F(SettlingTest, ReturnIsSettledOnlyOnceMoreWasGivenBackThanWasDue) {
  const QString number = u"XT21050110001"_qs;
  sale(number, -50, -20);
  EXPECT_FALSE(partner_books::openSettlement(customerSide, {number, -50, -20}, prompt));
  execSql("update jxc_xsthd set th_hkje=-40");
  EXPECT_TRUE(partner_books::openSettlement(customerSide, {number, -50, -20}, prompt));
  EXPECT_TRUE(settle(number, -10));
  EXPECT_EQ(lookupNumber("select th_hkje from jxc_xsthd"), -50);
  EXPECT_EQ(lookupValue("select th_note from jxc_xsthd"), "  收款:SK21050310001金额:-10，收款日期：2021-05-03 尾款");
  prompt.willSayYes();
  partner_books::deleteDocument(customerSide, Kind::Payment,
                                lookupValue("select id from jxc_ysyfk_dj where gl_djh2=?", number).toLongLong(),
                                prompt);
  EXPECT_EQ(lookupNumber("select th_hkje from jxc_xsthd"), -50);  // returns keep it
}

TEST_F(MoneyTest, DetailAndSummaryAgreeUntilABalanceIsTamperedWith) {
  audited(customerSide, Kind::Due, 100, "2021-04-10");
  audited(customerSide, Kind::Due, 40, "2021-04-20");
  audited(customerSide, Kind::Payment, 30, "2021-05-02");
  audited(customerSide, Kind::Due, 8.5, "2021-05-02");
  for (const char* other : {"2021-05-05", "2021-03-05"}) {
    const QString partner = *savePartner(customerSide, {.name = QString::fromUtf8(other)}, prompt);
    if (QString::fromUtf8(other) < u"2021-04"_qs) prompt.willSayYes();  // to a day that lies far back
    const QString number = enter(customerSide, Kind::Due, 12, other, 0, kTill, partner);
    partner_books::auditDocument(customerSide, Kind::Due, number);
  }
  const Criteria may{.from = "2021-05-01", .to = "2021-05-31"};
  const auto detail = [&](const Criteria& criteria) {
    return openSelect(partner_books::overviewDetail(partner_books::owedLedger, customerSide, criteria));
  };
  const auto summary = [&](const Criteria& criteria) {
    return openSelect(partner_books::overviewSummary(partner_books::owedLedger, customerSide, criteria));
  };
  const auto closings = [](const RowSet& rows, std::string_view column) {
    std::map<QString, double> last;
    for (const Row row : rows)
      last[row.text("k_ghskh")] = row.number(column);
    return last;
  };

  RowSet rows = detail(may);
  ASSERT_EQ(rows.rowCount(), 5);  // opening and two lines, one line, opening
  EXPECT_EQ(test::textsOf(rows, {"k_djtxt", "k_rq", "k_qcje"}).front(), "期初应收 2021-05-01 140");
  EXPECT_EQ(rows[1].number("k_ljje"), 110);
  EXPECT_EQ(rows[2].number("k_ljje"), 118.5);
  RowSet sums = summary(may);
  ASSERT_EQ(sums.rowCount(), 2);  // who did nothing in May is left out
  EXPECT_EQ(sums[0].number("qcje"), 140);
  EXPECT_EQ(sums[0].number("wfje"), 118.5);
  EXPECT_EQ(sums[1].number("qcje"), 0);

  Criteria all = may;
  all.boxes = partner_books::kWithIdle;
  EXPECT_EQ(summary(all).rowCount(), 4);  // with the built-in customer, who owes nothing
  all.boxes |= partner_books::kHidesSettled;
  EXPECT_EQ(closings(summary(all), "wfje"), closings(detail(may), "k_ljje"));
  Criteria some = may;
  some.employee = u"100001"_qs;
  EXPECT_EQ(detail(some).rowCount(), 3);  // no opening rows for one employee
  some.key = u"SK2105"_qs;
  EXPECT_EQ(detail(some).rowCount(), 1);
  some.partner = u"100003"_qs;
  EXPECT_TRUE(detail(some).isEmpty());

  // Paid in full: hidden on demand, in both modes.
  audited(customerSide, Kind::Payment, 118.5, "2021-05-31 10:00:00");
  Criteria owing = may;
  owing.boxes = partner_books::kHidesSettled;
  EXPECT_EQ(summary(owing).rowCount(), 1);
  EXPECT_EQ(closings(detail(owing), "k_ljje").count("100002"), 1);  // its opening row stays: it owed something then
  EXPECT_EQ(detail(owing).rowCount(), 3);

  execSql("update jxc_ysyfk set k_ljje=999 where k_rq='2021-05-05'");
  EXPECT_NE(closings(summary(all), "wfje"), closings(detail(may), "k_ljje"));
  EXPECT_TRUE(
      partner_books::recomputePartners(partner_books::owedLedger, customerSide, {}, "2021-05-01", prompt.willSayYes()));
  EXPECT_EQ(closings(detail(may), "k_ljje")["100003"], 12);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_TRUE(openSelect(partner_books::overviewDetail(partner_books::owedLedger, supplierSide, may)).isEmpty());
}

TEST_F(MoneyTest, WhatIsHardlyMeantIsAskedAboutOnceADocument) {
  const auto asked = [&](double amount, const QString& date) {
    prompt.forget();
    prompt.willSayNo();
    EXPECT_EQ(enter(customerSide, Kind::Due, amount, date), QString());
    EXPECT_EQ(prompt.questions.size(), 1);
    return prompt.questions.value(0);
  };
  EXPECT_NE(enter(customerSide, Kind::Due, 1000000, "2021-05-03"), QString()) << "a million is still possible";
  EXPECT_NE(enter(customerSide, Kind::Due, 1, "2021-04-02"), QString()) << "and a month ago";
  EXPECT_TRUE(asked(-6923450656789.0, "2021-05-03").contains("6,923,450,656,789"));
  prompt.willSayNo();
  EXPECT_EQ(move(Movement::In, 6923450656789.0, "2021-05-03"), QString()) << "money alone as well";
  EXPECT_TRUE(prompt.questions.last().contains("6,923,450,656,789"));
  EXPECT_TRUE(asked(1, "2021-04-01").contains("早 32 天"));
  setClock("2021-05-02 09:00:00");
  EXPECT_TRUE(asked(1, "2021-05-02").contains("请检查本机的时钟"));
  // A day after today was asked about where it was chosen.
  EXPECT_NE(enter(customerSide, Kind::Due, 1, "2021-05-04"), QString());
}

}  // namespace jxc::money_test
