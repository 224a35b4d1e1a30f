// Goods on loan from their draft to the last piece: rent, deposit, what comes back singly, what is kept, and every
// cancel in the orders that are allowed and in those that are not.
#include "sales/loan.h"

#include "core/numbers.h"
#include "engine/posting.h"
#include "sales/loan_enquiry.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "sales/sale.h"
#include "stock/all_parameters.h"
#include "stock/loans.h"
#include "stock/partial_movement.h"
#include "stock/shop.h"

namespace jxc::loan_test {

class LoanStory : public test::ShopTest {
 protected:
  LoanStory() {
    addGoods("A", 5);
    receive("2021-05-01", {{"A", 10, 5}});
    setParameter("cs_kc", 0);
  }
  static const RulesOver<DraftOfPartner>& rules() { return lending::rules(); }

  DraftOfPartner draft(double quantity, double deposit, double rent, const QString& account = u"现金"_qs) {
    DraftOfPartner made = rules().fresh({});
    made.date = u"2021-05-02"_qs;
    made.number = newDocumentNumber(families::loan, made.date);
    made.partner = customer();
    LineDraft line = rules().lines().newLine("A", placeOf(made), false);
    line.amounts.setQuantity(quantity);
    line.deposit = deposit;
    line.rent = rent;
    line.account = account;
    EXPECT_TRUE(rules().lines().mayWrite(line, placeOf(made), prompt));
    made.number = rules().lines().addLine(Lines::Draft, placeOf(made), line, prompt).number;
    return made;
  }
  /// An audited loan of 2021-05-02. Its number.
  QString lend(double quantity, double deposit, double rent) {
    const SaveResult saved = rules().save(draft(quantity, deposit, rent), prompt.willSayYes());
    EXPECT_TRUE(saved);
    return audited(saved.number);
  }
  static std::int64_t lineOf(const QString& number) { return firstIdOf("jxc_khjhsp", "gl_djh", number); }
  QString lineState(const QString& number) {
    return row("select jh_sl,jh_hhsl,jh_xssl,jh_sl2,jh_yj,jh_yj2 from jxc_khjhsp where gl_djh=?", number);
  }
  static double held(const QString& number) { return loans::loanLine(lineOf(number))->held(); }
  QString income(const QString& number) {
    return row("select fy_lx,fy_je,fy_kmmc,fy_note from jxc_yyfy where gl_djh=? order by id", number);
  }
  /// So many pieces of a loan come back on a day; `change` says what is typed besides. What is said instead.
  using Change = std::function<void(loan_return::ReturnLine&)>;
  QString bring(const QString& number, double quantity, const QString& day, const Change& change = {}) {
    prompt.forget();
    auto back = loan_return::open(number, lineOf(number), prompt);
    if (!back) return prompt.lastNotice();
    loan_return::redate(*back, day);
    auto line = loan_return::line(openSelect(loan_return::lines()).front().integer("id"));
    line->setQuantity(quantity);
    if (change) change(*line);
    if (!loan_return::changeLine(*line, prompt)) return prompt.lastNotice();
    test::WhileAsked agreeing({});
    const auto saved = loan_return::save(*back, agreeing);
    return saved ? *saved : agreeing.notices.last();
  }
  QString refusal(const QString& number) {
    prompt.forget();
    return prompt.refused(cancelDocument(number, prompt));
  }
};

TEST_F(LoanStory, ADraftKeepsRentDepositAndAccountOnItsWayThroughTheList) {
  const QString longName = QString(32, u'户');
  execSql("insert into jxc_yhzh (yh_name) values (?)", longName);
  DraftOfPartner made = rules().fresh({});
  EXPECT_EQ(prompt.refused(rules().save(made, prompt)), "还没有添加商品信息，不能保存！");
  PickingMemory memory;
  const LineRules& lines = rules().lines();
  const std::int64_t staged = lines.stageGoods("A", 2, placeOf(made), Lines::Draft, memory, prompt);
  LineDraft line = *lines.loadLine(Lines::Staging, staged);
  EXPECT_EQ(line.account, "现金");
  line.account = longName;
  line.rent = 1.5;
  line.deposit = 100;
  EXPECT_TRUE(lines.changeLine(Lines::Staging, staged, placeOf(made), line, prompt));
  lines.setChange("3", u"sl", Lines::Staging, staged, prompt);
  made.number = lines.copyStaged(placeOf(made), Lines::Draft).number;
  const QString columns =
      "select jh_sl,jh_sl2,jh_dj,jh_zje,jh_zj,jh_yj,jh_kmmc,jh_flag,jh_hhsl,jh_xssl,jh_yj2,jh_thyj "
      "from jxc_khjhsp where gl_djh=?";
  EXPECT_EQ(row(columns.toStdString(), made.number), "3 3 5 15 1.5 100 " + longName + " 借货 0 0 0 0");
  lines.setChange("2", u"sl", Lines::Draft, lineOf(made.number), prompt);
  EXPECT_EQ(row(columns.toStdString(), made.number), "2 2 5 10 1.5 100 " + longName + " 借货 0 0 0 0");

  line.amounts.setQuantity(0);
  EXPECT_EQ(prompt.refused(lines.mayWrite(line, placeOf(made), prompt)), "数量不能为0或负数，重新输入！");
  line.amounts.setQuantity(1);
  line.deposit = 1e12;
  EXPECT_EQ(prompt.refused(lines.mayWrite(line, placeOf(made), prompt)), "押金过大，请检查是否输入了条码！");
  line.rent = 1e12;
  EXPECT_EQ(prompt.refused(lines.mayWrite(line, placeOf(made), prompt)), "租金过大，请检查是否输入了条码！");

  // The own draft goes on under its number; one of another operator takes the next.
  EXPECT_EQ(usableDraftNumber(families::loan, made.number, made.date), made.number);
  EXPECT_EQ(unsavedDraft(families::loan), made.number);
  becomeOperator("小王", "100002", "100001");
  EXPECT_NE(usableDraftNumber(families::loan, made.number, made.date), made.number);
  becomeOperator("admin", "100001", "100001");

  execSql("delete from jxc_yhzh where yh_name=?", longName);
  made.partner = customer();
  EXPECT_TRUE(prompt.refused(rules().save(made, prompt)).startsWith("账户“" + longName + "”已被改名或删除"));
  execSql("insert into jxc_yhzh (yh_name) values (?)", longName);
  const SaveResult saved = rules().save(made, prompt.willSayYes());
  ASSERT_TRUE(saved);
  EXPECT_EQ(prompt.questions.last(),
            "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的借货单，可以在“待审核借货"
            "\r\n\r\n单”面板中，进行修改及审核操作！");
  EXPECT_EQ(lastLog(), "增加未审核借货单" + saved.number + "，共1种商品");
  EXPECT_EQ(row("select jh_status,jh_flag,jh_checker,kh_sn from jxc_khjh"), "0 jh  " + customer());
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  const DraftOfPartner tooMuch = draft(11, 0, 0);
  EXPECT_EQ(prompt.refused(rules().save(tooMuch, prompt)), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");
}

// Two pieces for 100 yuan of deposit and 3 yuan a piece and day, lent on the 2nd.
TEST_F(LoanStory, TwoPiecesComeBackSinglyWithAndWithoutRent) {
  const QString lent = lend(2, 100, 3);
  EXPECT_EQ(balanceOf("A"), "8 8 5");
  EXPECT_EQ(held(lent), 100);
  EXPECT_EQ(bring(lent, 3, "2021-05-04"), "还货数量不能超过：2");
  EXPECT_EQ(bring(lent, 0, "2021-05-04"), "数量不能为0或负数，重新输入！");
  EXPECT_EQ(bring(lent, 1, "2021-05-01"), "还货日期不能早于借货日期：2021-05-02！");
  EXPECT_EQ(bring(lent, 1, "2021-05-04", [](auto& line) { line.available = 101; }),
            "可用押金不能大于剩余押金，重新输入！");
  // The rent of 9 goes off the deposit: it is not collected in cash beside it.
  EXPECT_EQ(bring(lent, 1, "2021-05-04", [](auto& line) { line.available = 0; }),
            "租金先从押金中扣除：可用押金不能小于9！");
  EXPECT_EQ(bring(lent, 1, "2021-05-04", [](auto& line) { line.refund = 92; }),
            "退回押金不能大于可用押金减去租金合计！");
  prompt.forget();

  // Three days of 3 yuan from the deposit; 41 of the other 91 go back.
  const QString first = bring(lent, 1, "2021-05-04", [](auto& line) {
    EXPECT_EQ(line.days, 3);
    EXPECT_EQ(line.rentTotal, 9);
    EXPECT_EQ(line.refund, 91);
    line.refund = 41;
  });
  ASSERT_TRUE(first.startsWith("HH210504")) << first.toStdString();
  EXPECT_EQ(row("select jh_status,jh_flag,jh_rq,jh_checker,jh_chkrq,kh_sn,ck_sn from jxc_khjh where gl_djh=?", first),
            "1 hh 2021-05-04 admin 2021-05-04 " + customer() + " 100001");
  EXPECT_EQ(row("select jh_dj,jh_zje,jh_sl,jh_hhsl,jh_xssl,jh_yj,jh_yj2,jh_zj,jh_ts,jh_zzj,jh_thyj,gl_djh2,jh_flag,"
                "jh_kmmc from jxc_khjhsp where gl_djh=?",
                first),
            "5 5 2 1 0 100 9 3 3 9 41 " + lent + " 还货 现金");
  EXPECT_EQ(income(first), "收入 9 现金 还货单" + first + "产生的借货收入");
  EXPECT_EQ(lastLog(), "增加还货单" + first + "，共1种商品");
  EXPECT_EQ(lineState(lent), "2 1 0 2 100 9");
  EXPECT_EQ(held(lent), 50);
  EXPECT_EQ(balanceOf("A"), "9 9 5");
  EXPECT_EQ(cash(), 0) << "the deposit is in no book";
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // The other one without rent: what is left of the deposit goes back, once.
  const QString second = bring(lent, 1, "2021-05-05", [](auto& line) {
    EXPECT_EQ(line.held, 50);
    line.rent = 0;
    line.setQuantity(1);
  });
  EXPECT_EQ(row("select jh_zzj,jh_thyj,jh_yj from jxc_khjhsp where gl_djh=?", second), "0 50 50");
  EXPECT_EQ(income(second), "");
  EXPECT_EQ(lineState(lent), "2 2 0 2 100 9");
  EXPECT_EQ(held(lent), 0);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(bring(lent, 1, "2021-05-05"), "该商品已经还货结束，无需还货！");
  EXPECT_EQ(prompt.refused(loan_return::open(lent, 0, prompt)), "该单据已经还货结束，无需还货！");
  EXPECT_EQ(prompt.refused(loan_sale::open(lineOf(lent), prompt)), "该商品已经还货结束，不能销售！");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // The loan waits for both of its returns, which go in either order.
  EXPECT_EQ(refusal(lent), "借货单" + lent + "已经有还货，不能取消审核！\r\n\r\n请先取消审核还货单：" + first +
                               "，\r\n\r\n然后再取消审核！");
  EXPECT_TRUE(cancelDocument(first, prompt.willSayYes()));
  EXPECT_EQ(lineState(lent), "2 1 0 2 100 0");
  EXPECT_EQ(held(lent), 50);
  EXPECT_EQ(income(first), "");
  EXPECT_TRUE(refusal(lent).contains(second));
  EXPECT_TRUE(cancelDocument(second, prompt.willSayYes()));
  EXPECT_EQ(lineState(lent), "2 0 0 2 100 0");
  EXPECT_EQ(row("select count(*) from jxc_khjh") + row("select count(*) from jxc_khjhsp"), "11");
  EXPECT_TRUE(cancelDocument(lent, prompt.willSayYes()));
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(LoanStory, RentBeyondTheDepositIsBookedWholeAndCollected) {
  const QString lent = lend(2, 100, 50);
  const QString first = bring(lent, 1, "2021-05-04", [](auto& line) { EXPECT_EQ(line.toCollect(), 50); });
  EXPECT_EQ(row("select jh_zzj,jh_thyj from jxc_khjhsp where gl_djh=?", first), "150 0");
  EXPECT_EQ(income(first), "收入 150 现金 还货单" + first + "产生的借货收入");
  EXPECT_EQ(held(lent), 0);
  EXPECT_EQ(bring(lent, 1, "2021-05-02", [](auto& line) { line.refund = 1; }),
            "退回押金不能大于可用押金减去租金合计！");
  prompt.forget();
  // On the day of the loan one day counts, and all of it is collected.
  const QString second = bring(lent, 1, "2021-05-02", [](auto& line) {
    EXPECT_EQ(line.days, 1);
    EXPECT_EQ(line.toCollect(), 50);
  });
  EXPECT_EQ(income(second), "收入 50 现金 还货单" + second + "产生的借货收入");
  EXPECT_EQ(lineState(lent), "2 2 0 2 100 200");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

// What the operator keeps of a deposit with the last piece is the customer's still: counted, and apart. As rent it is
// the shop's.
TEST_F(LoanStory, ADepositThatStaysBehindTheLastPieceIsCountedApartUntilItIsRent) {
  const auto deposits = [] {
    QStringList all;
    for (const Row each : openSelect(loan_enquiry::deposits({}, Warehouses(Criteria{}))))
      all << each.text("jh_kmmc") + u' ' + each.text("num") + u' ' + each.text("heldyj") + u' ' + each.text("hqyj");
    return all.join(u';');
  };
  const QString lent = lend(2, 100, 0);
  bring(lent, 1, "2021-05-03", [](auto& line) {
    line.refund = 30;
    EXPECT_EQ(line.stays(), 0);  // for the piece that is out
  });
  EXPECT_EQ(deposits(), "现金 1 70 0");
  const QString last = bring(lent, 1, "2021-05-04", [](auto& line) {
    line.refund = 20;
    EXPECT_EQ(line.stays(), 50);
  });
  EXPECT_EQ(deposits(), "现金 1 50 50");
  EXPECT_TRUE(cancelDocument(last, prompt.willSayYes()));
  EXPECT_EQ(deposits(), "现金 1 70 0");
  const QString asRent = bring(lent, 1, "2021-05-04", [](auto& line) {
    line.rentTotal = 50;
    line.refund = 20;
    EXPECT_EQ(line.stays(), 0);
  });
  EXPECT_EQ(income(asRent), "收入 50 现金 还货单" + asRent + "产生的借货收入");
  EXPECT_EQ(deposits(), "");
}

// One piece comes back, the customer keeps the other for 20 yuan; three days of rent are taken from the deposit.
TEST_F(LoanStory, WhatIsKeptIsAReturnAndASaleThatNoCancelTearsApart) {
  for (const bool laterIssue : {false, true}) {
    SCOPED_TRACE(laterIssue);
    Transaction trial(accountDb());
    setParameter("cs_spck", laterIssue);
    setParameter("cs_kp", 1);
    const QString lent = lend(2, 100, 3);
    const QString back = bring(lent, 1, "2021-05-02", [](auto& line) { line.refund = 37; });
    EXPECT_EQ(held(lent), 60);
    setClock("2021-05-04");
    auto kept = loan_sale::open(lineOf(lent), prompt);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->quantity, 1);
    EXPECT_EQ(kept->days, 3);
    EXPECT_EQ(kept->price, 5);  // what this customer pays
    EXPECT_EQ(kept->rentTaken, 0);
    EXPECT_EQ(kept->refund, 60);
    kept->setPrice(20);
    kept->takeRent(true);
    EXPECT_EQ(kept->rentTaken, 9);
    EXPECT_EQ(kept->refund, 51);
    kept->rentTaken = 61;
    EXPECT_EQ(prompt.refused(loan_sale::save(*kept, prompt)), "扣除押金不能小于0，也不能大于可用押金，重新输入！");
    kept->setRentTaken(9);
    kept->settlement = Settlement::RestOnAccount;
    kept->paid = 15;
    const auto made = loan_sale::save(*kept, prompt.willSayYes());
    ASSERT_TRUE(made) << prompt.lastNotice().toStdString();
    EXPECT_EQ(prompt.questions.last(), "数据保存后不能再修改，是否确认保存！");
    EXPECT_EQ(row("select jh_dj,jh_zje,jh_sl,jh_hhsl,jh_xssl,jh_yj,jh_yj2,jh_zzj,jh_ts,jh_thyj,gl_djh2,jh_flag from "
                  "jxc_khjhsp where gl_djh=?",
                  made->back),
              "5 5 2 0 1 60 9 9 3 51 " + lent + " 销售");
    EXPECT_EQ(row("select jh_note,jh_status from jxc_khjh where gl_djh=?", made->back), "还货：借货转销售 1");
    EXPECT_EQ(row("select ls_dj,ls_sl,ls_cksl,ls_zje,ls_tax,ls_cbj,ls_zcb,gl_djh2 from jxc_lsxssp where gl_djh=?",
                  made->sale),
              "20 1 1 20 0 5 5 " + made->back);
    EXPECT_EQ(row("select ls_yfje,ls_sfje,ls_status,ls_crk,ls_qk,ls_jsfs,ls_note,gl_djh2,ls_checker from jxc_lsxsd"),
              "20 15 1 1 0 1 销售：借货转销售 " + lent + " admin");
    EXPECT_EQ(rows(made->back).join(u';') + rows(made->sale).join(u';'), "hh 1 → 10 5 50xs 1 → 9 5 45");
    EXPECT_EQ(lineState(lent), "2 1 1 2 100 12");
    EXPECT_EQ(held(lent), 0);
    EXPECT_EQ(balanceOf("A"), "9 9 5");
    EXPECT_EQ(customerOwes(), 5);
    EXPECT_EQ(cash(), 15);
    EXPECT_EQ(income(made->back), "收入 9 现金 还货单" + made->back + "产生的借货收入");
    EXPECT_EQ(row("select fp_yfje from jxc_fpdjb where gl_djh=?", made->sale), "20");
    EXPECT_EQ(test::brokenInvariants(), QStringList());

    // First the sale, whose question says what has to follow; alone it can neither be deleted.
    EXPECT_EQ(refusal(made->back), "还货单" + made->back +
                                       "由借货转销售产生，不能取消审核！\r\n\r\n请先取消审核销售单：" + made->sale +
                                       "，\r\n\r\n然后再取消审核！");
    EXPECT_TRUE(refusal(lent).contains(back));
    prompt.forget();
    EXPECT_TRUE(cancelDocument(made->sale, prompt.willSayYes()));
    EXPECT_TRUE(prompt.questions.last().contains("请接着取消审核还货单：" + made->back));
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    EXPECT_FALSE(deleteWaitingDocument(families::sale, made->sale, prompt));
    EXPECT_FALSE(deleteWaitingLine(families::sale, made->sale, firstIdOf("jxc_lsxssp", "gl_djh", made->sale), prompt));
    EXPECT_EQ(prompt.lastNotice(), "销售单" + made->sale + "由借货转销售产生，不能单独删除！\r\n\r\n取消审核还货单 " +
                                       made->back + " 时，会一并删除该销售单。");
    // Nor does its line go, or change its pieces, with other goods beside it; those may go.
    const std::int64_t itsLine = firstIdOf("jxc_lsxssp", "gl_djh", made->sale);
    const std::int64_t beside = test::writeLine(families::sale, made->sale, u"2021-05-04"_qs, {"A", 1, 9});
    prompt.forget();
    EXPECT_FALSE(deleteWaitingLine(families::sale, made->sale, itsLine, prompt));
    EXPECT_TRUE(prompt.lastNotice().contains("不能单独删除"));
    EXPECT_EQ(sale::rules().lines().setChange("2", u"sl", Lines::Waiting, itsLine, prompt), 0);
    EXPECT_TRUE(prompt.lastNotice().contains("数量与还货单 " + made->back + " 一致"));
    EXPECT_EQ(row("select ls_sl from jxc_lsxssp where id=?", itsLine), "1");
    prompt.forget();
    deleteWaitingLine(families::sale, made->sale, beside, prompt);
    EXPECT_EQ(prompt.lastNotice(), QString());
    EXPECT_EQ(row("select count(*) from jxc_lsxssp where gl_djh=?", made->sale), "1");
    // It may also be audited again, as it was.
    audited(made->sale);
    EXPECT_EQ(balanceOf("A"), "9 9 5");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    EXPECT_TRUE(cancelDocument(made->sale, prompt.willSayYes()));
    EXPECT_TRUE(cancelDocument(made->back, prompt.willSayYes()));
    EXPECT_TRUE(prompt.questions.last().contains("待审核销售单 " + made->sale + " 将一并删除"));
    EXPECT_EQ(row("select count(*) from jxc_lsxsd") + row("select count(*) from jxc_lsxssp"), "00");
    EXPECT_EQ(lineState(lent), "2 1 0 2 100 3");
    EXPECT_EQ(balanceOf("A"), "9 9 5");
    EXPECT_EQ(customerOwes(), 0);
    EXPECT_EQ(cash(), 0);
    EXPECT_TRUE(cancelDocument(back, prompt.willSayYes()));
    EXPECT_TRUE(cancelDocument(lent, prompt.willSayYes()));
    EXPECT_EQ(balanceOf("A"), "10 10 5");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    setClock("2021-05-03");
  }
}

// A line that was converted in part, by way of a cancelled return, is converted again: both quantities count.
TEST_F(LoanStory, ASecondConversionAddsToTheFirst) {
  const QString lent = lend(2, 0, 0);
  const QString back = bring(lent, 1, "2021-05-03");
  auto kept = *loan_sale::open(lineOf(lent), prompt);
  kept.settlement = Settlement::AtPaidAmount;
  kept.paid = 4.8;  // of five yuan
  setParameter("cs_xsjgts", 0);
  ASSERT_TRUE(loan_sale::save(kept, prompt.willSayYes()));
  EXPECT_EQ(prompt.lastNotice(), "实收改为 5");
  EXPECT_TRUE(cancelDocument(back, prompt.willSayYes()));
  EXPECT_EQ(lineState(lent), "2 0 1 2 0 0");
  prompt.willSayYes();
  ASSERT_TRUE(loan_sale::save(*loan_sale::open(lineOf(lent), prompt), prompt));
  EXPECT_EQ(lineState(lent), "2 0 2 2 0 0");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(LoanStory, WhatCameBackAndWasSoldIsNotTakenBackUnasked) {
  const QString back = bring(lend(2, 0, 0), 1, "2021-05-03");
  sell("2021-05-03", {{"A", 9, 9}});
  EXPECT_FALSE(cancelDocument(back, prompt.willSayYes()));
  EXPECT_TRUE(prompt.lastNotice().contains(u"“A”：不能出库！"_qs)) << prompt.lastNotice().toStdString();
  setParameter("cs_kc", 1);
  EXPECT_TRUE(cancelDocument(back, prompt.willSayYes().willSayYes()));
  EXPECT_EQ(balanceOf("A"), "-1 -1 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(LoanStory, WhatAnotherStationTookMeanwhileDoesNotComeBackTwice) {
  const QString lent = lend(2, 100, 3);
  const auto back = loan_return::open(lent, 0, prompt);
  // Its staging is the other operator's own.
  test::WhileAsked other([&] {
    becomeOperator("小王", "100002", "100001");
    EXPECT_TRUE(bring(lent, 1, "2021-05-03").startsWith("HH"));
    becomeOperator("admin", "100001", "100001");
  });
  EXPECT_FALSE(loan_return::save(*back, other));
  EXPECT_EQ(other.notices, QStringList("商品【A】\r\n\r\n还货数量不能超过：1"));
  EXPECT_EQ(lineState(lent), "2 1 0 2 100 6");

  auto kept = loan_sale::open(lineOf(lent), prompt);
  test::WhileAsked gone([&] { EXPECT_TRUE(bring(lent, 1, "2021-05-03").startsWith("HH")); });
  EXPECT_FALSE(loan_sale::save(*kept, gone));
  EXPECT_TRUE(gone.notices.last().contains("没有改动任何数据"));
  EXPECT_EQ(lineState(lent), "2 2 0 2 100 12");

  // A loan that was taken back, and an account that was renamed, while a return is put together.
  const QString next = lend(1, 10, 1);
  const auto late = loan_return::open(next, 0, prompt);
  execSql("update jxc_khjhsptmp set jh_kmmc='没有'");
  EXPECT_TRUE(prompt.refused(loan_return::save(*late, prompt)).startsWith("账户“没有”已被改名或删除"));
  EXPECT_TRUE(cancelDocument(next, prompt.willSayYes()));
  EXPECT_EQ(prompt.refused(loan_return::save(*late, prompt)), changedMeanwhile(next));
  loan_return::discard();
  EXPECT_EQ(prompt.refused(loan_return::save(*late, prompt)), "单据表中没有数据，不能保存！");
  setRights("300001", "rcgl", "111");
  becomeOperator("小李", "100003", "300001");
  EXPECT_EQ(prompt.refused(loan_return::open(lent, 0, prompt)), "您没有客户借货管理的权限！");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(LoanStory, AReturnWaitsForTheServerAFewTimesHoweverManyLines) {
  const Posting* const server = accountDb().posting();
  if (!server) GTEST_SKIP() << "runs on a server, among pg.*";
  const QString lent = lend(1, 100, 3);
  for (int i = 0; i < 39; ++i)
    execSql(
        "insert into jxc_khjhsp (gl_djh,g_sn,jh_sl,jh_sl2,jh_hhsl,jh_xssl,jh_yj,jh_yj2,jh_zj,jh_kmmc,jh_flag,a_name) "
        "values (?,'A',1,1,0,0,100,0,3,'现金','借货','admin')",
        lent);
  loan_return::open(lent, 0, prompt);  // makes the server know its statements
  const auto expectTrips = [&](std::int64_t most, const std::function<void()>& command) {
    const std::int64_t before = server->roundTrips();
    command();
    EXPECT_LE(server->roundTrips() - before, most);
  };
  std::optional<loan_return::ReturnDraft> back;
  expectTrips(9, [&] { back = loan_return::open(lent, 0, prompt); });
  expectTrips(9, [&] { loan_return::redate(*back, u"2021-05-09"_qs); });
  EXPECT_EQ(loan_return::money().rent, 40 * 8 * 3);
}

// Of three pieces one comes back with two days of rent, two are kept.
TEST_F(LoanStory, UnderAllParametersThatMeetTheBooksEndAlike) {
  const auto set = [this](const char* name, bool on) { setParameter(name, on); };
  test::underAllParameters(set, [&](const test::Switches& on) {
    {
      Transaction tooMuch(accountDb());
      EXPECT_EQ(static_cast<bool>(rules().save(draft(11, 0, 0), prompt.willSayYes())), on.goesShort);
    }
    const SaveResult saved = rules().save(draft(3, 100, 2), prompt.willSayYes());
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved.audited, on.auditsAtOnce);
    const QString lent = saved.audited ? saved.number : audited(saved.number);
    EXPECT_EQ(balanceOf("A"), "7 7 5");
    const QString back = bring(lent, 1, "2021-05-03", [](auto& line) { line.refund = 40; });
    EXPECT_EQ(balanceOf("A"), "8 8 5");
    auto kept = loan_sale::open(lineOf(lent), prompt);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->held, 56);
    kept->setPrice(9);
    const auto made = loan_sale::save(*kept, prompt.willSayYes());
    ASSERT_TRUE(made) << prompt.lastNotice().toStdString();
    EXPECT_EQ(balanceOf("A"), "8 8 5");
    EXPECT_EQ(row("select ls_status,ls_crk,ls_sfje from jxc_lsxsd"), "1 1 18");
    EXPECT_EQ(lookupValue("select ls_xsrq from jxc_lsxsd").size() > 10, on.momentOfSale);
    EXPECT_EQ(row("select count(*) from jxc_fpdjb where gl_djh=?", made->sale), on.invoices ? "1" : "0");
    EXPECT_EQ(held(lent), 0);
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    for (const QString& each : {made->sale, made->back, back, lent})
      EXPECT_TRUE(cancelDocument(each, prompt.willSayYes())) << prompt.lastNotice().toStdString();
    EXPECT_EQ(balanceOf("A"), "10 10 5");
    EXPECT_EQ(cash(), 0);
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  });
}

}  // namespace jxc::loan_test
