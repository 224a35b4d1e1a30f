// Invoices as an operator works with them, on both sides.
#include "accounts/invoices.h"
#include "core/period_lock.h"
#include "screens/harness/screen_test.h"

namespace jxc::test::invoice_screens_test {

class InvoiceScreens : public ScreenTest {
 protected:
  InvoiceScreens() {
    setParameter("cs_kp", 1);
    execSql(
        "insert into jxc_khxx (kh_sn,kh_name,kh_jm,kh_lwje,kh_forbid,kh_pl,ck_sn) values "
        "('100002','张三','ZS',0,0,1,'-1')");
    line("XS21050110001", "kh", "100002", 160);
    line("XT21050110001", "kh", "100002", -20);
    line("CJ21050110001", "ghs", "100001", 300);
    recomputeFp("100002", PartnerType::Customer, {});
    recomputeFp("100001", PartnerType::Supplier, {});
  }
  static void line(const char* number, const char* type, const char* partner, double due) {
    execSql(
        "insert into jxc_fpdjb (gl_djh,fp_rq,fp_yfje,fp_kpje,fp_qcje,fp_ljje,fp_type,fp_djlx,fp_djtxt,fp_check,u_sn,"
        "fp_ghskh,fp_kprq,fp_no,fp_note) values (?,'2021-05-01',?,0,0,0,?,?,'单据',1,'100001',?,'','','')",
        number, due, type, QString::fromUtf8(number).left(2), partner);
  }
  static double open() { return fpBalanceAt("100002", PartnerType::Customer, allDates); }
  static void go(ui::Screen& s, const QString& number) {
    ui::Grid& list = s.grid("gridMx");
    for (int row = 0; row < list.rowCount(); ++row)
      if (list.rows()[row].text("gl_djh") == number) return list.selectRow(row);
    ADD_FAILURE() << number.toStdString() << " is not in the list";
  }
};

TEST_F(InvoiceScreens, InvoicesAreEnteredRegisteredExcludedAndAuditedAgain) {
  ScreenTest::open("F_Fpxs", [&](ui::Screen& s) {
    press(s, "F3", QStringLiteral("请选择客户！"));
    s.field("tKhName1").setPicked({QStringLiteral("张三"), QStringLiteral("100002")});
    press(s, "F3", "F_Fpxs_Sele", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tdjh").text(), "XP21050310001");
      EXPECT_EQ(form.field("kh_ye").number(), 140);
      press(form, "F5", QStringLiteral("开票金额不能为0！"));
      type(form, "tje", u"40");
      type(form, "tfpno", u"N40");
      press(form, "F5");
    });
    EXPECT_EQ(open(), 140) << "an entry waits";
    choose(s, "comZt", QStringLiteral("未审核"));
    ASSERT_EQ(s.grid("gridMx").rowCount(), 1);
    press(s, "F4", "F_Fpxs_Sele", filled({{"tje", u"50"}}));
    click(s, "btn_CheckOne", QStringLiteral("您确定要审核当前选中的单据吗！"), Answer::Yes);
    EXPECT_EQ(open(), 90);
    EXPECT_TRUE(s.grid("gridMx").isEmpty());

    choose(s, "comZt", QStringLiteral("已审核"));
    go(s, QStringLiteral("XT21050110001"));
    press(s, "F6", QStringLiteral("只能登记销售单的发票信息！"));
    press(s, "F4", QStringLiteral("只能修改手工增加的发票，单据的发票请用“发票登记”！"));
    click(s, "btnDele", QStringLiteral("只能删除手工增加的发票，单据的发票随单据取消！"));
    go(s, QStringLiteral("XS21050110001"));
    press(s, "F6", "F_Fpxs_Sele2", filled({{"tje", u"100"}, {"tfpno", u"N100"}}));
    expectQuestion(QStringLiteral("该单据发票已开，需要继续开票吗？"), Answer::Yes);
    press(s, "F6", "F_Fpxs_Sele2", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tje").number(), 100) << "opens with what is invoiced so far";
      EXPECT_EQ(form.field("twkje").number(), 60);
      type(form, "tje", u"-1");
      press(form, "F5", QStringLiteral("开票金额不能为负数！"));
      type(form, "tje", u"160");
      execSql("update jxc_fpdjb set fp_kpje=101 where gl_djh='XS21050110001'");  // another operator
      press(form, "F5", QStringLiteral("该发票刚刚被其他操作员修改或删除，请重新查询！"));
      execSql("update jxc_fpdjb set fp_kpje=100 where gl_djh='XS21050110001'");
      press(form, "F5");
    });
    EXPECT_EQ(open(), -70);

    go(s, QStringLiteral("XS21050110001"));
    click(s, "btn_UnChk",
          QStringLiteral("该单据不开发票或发票不正确，从列表中排除，\r\n\r\n转到发票管理中等待处理，继续吗？"),
          Answer::Yes);
    EXPECT_EQ(open(), -70) << "due and invoiced went together";
    choose(s, "comZt", QStringLiteral("未审核"));
    ASSERT_EQ(s.grid("gridMx").rowCount(), 1);
    EXPECT_EQ(s.grid("gridMx").rows()[0].text("fp_ljje"), "") << "what was excluded shows no balance";
    expectQuestion(u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n如需审核某个单据，请按右键！"_qs,
                   Answer::Yes);
    click(s, "btn_Check", u"审核完成，共 1 个单据，\r\n\r\n审核成功 1 个单据。"_qs);

    // On a locked day nothing moves, but an invoice of today for what was sold then.
    setPeriodLock(u"2021-05-01"_qs);
    choose(s, "comZt", QStringLiteral("已审核"));
    go(s, QStringLiteral("XS21050110001"));
    expectNotice(lockedOn(u"2021-05-01"_qs, OnDay::Booked).text);
    click(s, "btn_UnChk");
    expectQuestion(QStringLiteral("该单据发票已开，需要继续开票吗？"), Answer::Yes);
    press(s, "F6", "F_Fpxs_Sele2", filled({{"tje", u"150"}}));
    EXPECT_EQ(open(), -60);
    check(s, "rHzb", true);
    EXPECT_EQ(s.grid("gridHz").rows()[0].text("wfje"), "-60");
    for (const char* each : {"btnModi", "btnDele", "btn_CheckOne", "btn_Check"})
      click(s, each, QStringLiteral("审核操作只能在“明细表”进行。"));
    press(s, "F6", QStringLiteral("发票登记只能在“明细表”进行！"));
    click(s, "btn_UnChk", QStringLiteral("排除发票只能在明细表进行！"));
    press(s, "F8", "F_Fpxs_Js", [&](ui::Screen& form) {
      expectQuestion(u"重新计算可能会修改期末应开发票金额，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs, Answer::Yes);
      press(form, "F5", u"重新计算完成！"_qs);
    });
  });
  EXPECT_EQ(lookupValue("select top 1 log_note from jxc_log where log_note like '发票登记%' order by id desc"),
            "发票登记，客户：张三，金额：150");
}

TEST_F(InvoiceScreens, SuppliersHaveTheirOwnWords) {
  setParameter("cs_shdj", 1);
  ScreenTest::open("F_Fpcg", [&](ui::Screen& s) {
    press(s, "F3", QStringLiteral("请选择供货商！"));
    s.field("tKhName1").setPicked({QStringLiteral("普通供货商"), QStringLiteral("100001")});
    press(s, "F3", "F_Fpcg_Sele", filled({{"tje", u"-12.5"}}));
    go(s, QStringLiteral("CP21050310001"));
    EXPECT_EQ(s.grid("gridMx").currentText("fp_ljje"), "312.5") << "audited at once; an invoice in red raises";
    press(s, "F6", QStringLiteral("只能登记采购单的发票信息！"));
    check(s, "rHzb", true);
    click(s, "btnModi", QStringLiteral("修改操作只能在“明细表”进行。"));
    click(s, "btnDele", QStringLiteral("删除操作只能在“明细表”进行。"));
    check(s, "rMxb", true);
    go(s, QStringLiteral("CP21050310001"));
    click(s, "btnDele", QStringLiteral("您确定要删除该发票信息吗！"), Answer::Yes);
  });
  EXPECT_EQ(lookupValue("select max(log_note) from jxc_log where log_note like '增加开票%'"),
            "增加开票，供货商：普通供货商，金额：-12.5");
  setRights("200001", "wlzk", "111111111111111");
  takeRight("200001", "wlzk", 14);
  becomeOperator("小李", "200001", "200001");
  ScreenTest::open("F_Fpcg", [&](ui::Screen& s) {
    for (const char* each : {"btn_UnChk", "btn_CheckOne", "btn_Check"})
      EXPECT_FALSE(s.command(each).isEnabled()) << each;
  });
}

}  // namespace jxc::test::invoice_screens_test
