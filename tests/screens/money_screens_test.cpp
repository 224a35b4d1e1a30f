// Cash and bank, receivables and payables as an operator works with them.
#include "accounts/cash_accounts.h"
#include "accounts/cash_ledger.h"
#include "accounts/cash_lines.h"
#include "accounts/partner_documents.h"
#include "screens/harness/screen_test.h"

namespace jxc::test::money_screens_test {

class MoneyScreens : public ScreenTest {
 protected:
  MoneyScreens() {
    execSql(
        "insert into jxc_khxx (kh_sn,kh_name,kh_jm,kh_lwje,kh_forbid,kh_pl,ck_sn) values "
        "('100002','张三','ZS',0,0,1,'-1')");
  }
  static void setPartner(ui::Screen& screen, const char* name) {
    screen.field(name).setPicked({QStringLiteral("张三"), QStringLiteral("100002")});
  }
  double owes() { return lookupNumber("select kh_lwje from jxc_khxx where kh_sn='100002'"); }
  static QString cell(ui::Grid& grid, int row, std::string_view field) { return grid.rows()[row].text(field); }
};

TEST_F(MoneyScreens, TillTakesMoneyPaysAndTransfers) {
  open("F_Xjyh", [&](ui::Screen& s) {
    press(s, "F6", "F_Xjyh_Jk", [&](ui::Screen& form) {
      press(form, "F5", QStringLiteral("金额必须填写！"));
      type(form, "tfyje", u"100");
      type(form, "tnote", u"备用金");
      press(form, "F5");
    });
    ASSERT_EQ(s.grid("xjyh").rowCount(), 1);

    press(s, "F3", "F_Xjyh_Jk", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tnote").text(), "备用金");
      type(form, "tfyje", u"120");
      press(form, "F5");
    });
    click(s, "btn_Check", QStringLiteral("您确定要审核当前信息吗！"), Answer::Yes);
    EXPECT_TRUE(s.grid("xjyh").isEmpty());
    EXPECT_EQ(xjyhBalanceNow("现金"), 120);

    press(s, "F8", "F_Xjyh_Zz", filled({{"tfyje", u"50"}}));
    ASSERT_EQ(s.grid("xjyh").rowCount(), 2);
    click(s, "btn_Dele", QStringLiteral("您确定要删除该信息吗！"), Answer::Yes);
    EXPECT_TRUE(s.grid("xjyh").isEmpty());
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_xjyh where gl_djh<>''"), "1");
}

TEST_F(MoneyScreens, AccountsAreAddedRenamedAndDeleted) {
  open("F_Yhzh", [&](ui::Screen& s) {
    press(s, "F3", QStringLiteral("“现金”不能修改！"));
    press(s, "F2", "F_Yhzh_Add", filled({{"tname", u"微信"}, {"ttype", u"微信合计"}, {"tzje", u"30"}}));
    ASSERT_EQ(s.grid("gridYhzh").rowCount(), 4);
    s.grid("gridYhzh").selectRow(3);
    press(s, "F6", "F_Yhzh_Qcjz", filled({{"tzje", u"45.5"}}));
    EXPECT_EQ(xjyhBalanceNow("微信"), 45.5);
    click(s, "btnDele", QStringLiteral("您确定要删除该银行账户吗！"), Answer::Yes);
    EXPECT_EQ(s.grid("gridYhzh").rowCount(), 3);
  });
}

TEST_F(MoneyScreens, ReceiptIsEnteredAuditedAndTakenBack) {
  open("F_Ysksk", [&](ui::Screen& s) {
    press(s, "F3", QStringLiteral("请选择客户！"));
    setPartner(s, "tKhName");
    press(s, "F3", "F_Ysksk_Sele", [&](ui::Screen& form) {
      EXPECT_EQ(form.windowTitle(), "增加收款");
      EXPECT_EQ(form.field("tdjh").text(), "SK21050310001");
      enter(form, "dateCg", u"2021-05-02");
      EXPECT_EQ(form.field("tdjh").text(), "SK21050210001");
      press(form, "F5", QStringLiteral("收款不能为0！"));
      type(form, "tgsj", u"98");
      type(form, "tmlje", u"2");
      choose(form, "comYhzh", QStringLiteral("工行帐号"));
      press(form, "F5");
    });
    ASSERT_EQ(s.grid("gridList").rowCount(), 1);
    expectQuestion(u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n如需审核某个单据，请按右键！"_qs,
                   Answer::Yes);
    press(s, "F6", u"审核完成，共 1 个单据，\r\n\r\n审核成功 1 个单据。"_qs);
    EXPECT_EQ(owes(), -100);
    EXPECT_EQ(xjyhBalanceNow("工行帐号"), 98);
    press(s, "F4", QStringLiteral("该单据已审核，不能修改！"));
    click(s, "btnDele", QStringLiteral("该单据已审核，不能删除！"));
  });
  // Without the right the audit is closed, in the menu as on the button.
  setRights("200001", "wlzk", "1111110");
  becomeOperator("小李", "200001", "200001");
  open("F_Ysksk", [&](ui::Screen& s) { EXPECT_FALSE(s.command("btn_Check").isEnabled()); });
}

TEST_F(MoneyScreens, OverviewShowsDetailSumsSettlesAndRepairs) {
  setParameter("cs_zerocost", 1);
  execSql(
      "insert into jxc_lsxsd (gl_djh,kh_sn,ls_yfje,ls_sfje,ls_yhje,ls_hkje,u_sn,ls_kmmc,ls_note) values "
      "('XS21050110001','100002',160,100,0,0,'100001','工行帐号','')");
  execSql(
      "insert into jxc_ysyfk (gl_djh,k_rq,k_yfje,k_sfje,k_qcje,k_ljje,k_type,k_djlx,u_sn,k_ghskh) values "
      "('XS21050110001','2021-05-01',160,100,0,0,'kh','XS','100001','100002')");
  open("F_Yskgl", [&](ui::Screen& s) {
    ASSERT_EQ(s.grid("gridMx").rowCount(), 1);
    EXPECT_EQ(cell(s.grid("gridMx"), 0, "k_ljje"), "0");  // written behind the program's back
    check(s, "rHzb", true);
    ASSERT_EQ(s.grid("gridHz").rowCount(), 1);
    EXPECT_EQ(cell(s.grid("gridHz"), 0, "wfje"), "60");
    press(s, "F6", QStringLiteral("收款只能在“明细表”进行！"));
    check(s, "chkAll", true);
    EXPECT_EQ(s.grid("gridHz").rowCount(), 2);
    check(s, "chkZero", true);
    EXPECT_EQ(s.grid("gridHz").rowCount(), 1);
    check(s, "chkZero", false);
    check(s, "rMxb", true);

    press(s, "F8", "F_Yskgl_Js", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tname").text(), "所有客户");
      expectQuestion(u"重新计算可能会修改期末应付金额，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs, Answer::Yes);
      press(form, "F5", u"重新计算完成！"_qs);
    });
    EXPECT_EQ(cell(s.grid("gridMx"), 0, "k_ljje"), "60");

    press(s, "F6", "F_Yskgl_Sk", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tje").number(), 60);
      EXPECT_EQ(form.field("comYhzh").text(), "工行帐号");
      check(form, "chkQk", true);
      press(form, "F5");
    });
    EXPECT_EQ(s.said(), "单据 XS21050110001 已清款");
    press(s, "F6", QStringLiteral("该单据不欠款，不需要收款！"));
  });
  EXPECT_EQ(owes(), 60);
}

}  // namespace jxc::test::money_screens_test
