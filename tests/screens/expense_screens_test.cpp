// Expenses and income as an operator keys them in.
#include "accounts/cash_ledger.h"
#include "screens/harness/screen_test.h"
#include "ui/enquiry_screen.h"
#include "ui/grid.h"

namespace jxc::test::expense_screens_test {

class ExpenseScreens : public ScreenTest {
 protected:
  static QString cells(ui::Grid& grid, int row, std::initializer_list<std::string_view> fields) {
    QStringList texts;
    for (const std::string_view field : fields)
      texts << grid.rows()[row].text(field);
    return texts.join(u' ');
  }
};

TEST_F(ExpenseScreens, RentIsKeyedInAuditedCopiedAndTakenBack) {
  open("F_Fyjsr", [&](ui::Screen& s) {
    press(s, "F4", "F_Fylx", [&](ui::Screen& types) {
      press(types, "F2", "F_Fylx_Add", filled({{"tname", u"房租"}}));
      EXPECT_EQ(types.grid("gridFylx").rowCount(), 6);
      types.grid("gridFylx").selectRow(0);
      press(types, "F3", QStringLiteral("系统内置类型，不能修改！"));
    });
    press(s, "F6", "F_Fyjsr_Add", [&](ui::Screen& form) {
      press(form, "F5", QStringLiteral("金额必须填写！"));
      type(form, "tfyje", u"1280");
      press(form, "F5", QStringLiteral("请选择费用类型！"));
      choose(form, "comFylx", QStringLiteral("房租"));
      type(form, "dateCg", u"2021-02-30");
      press(form, "F5", u"日期：日期格式不正确，请输入年-月-日，如 2026-05-01"_qs);
      type(form, "dateCg", u"");
      press(form, "F5", u"日期必须填写！"_qs);
      type(form, "dateCg", u"2021-05-03");
      choose(form, "comYhzh", QStringLiteral("工行帐号"));
      // The last entry is the way to the dictionary: a new department comes back chosen, and alone it is none.
      expectScreen("F_Dept", [&](ui::Screen& departments) {
        press(departments, "F2", "F_Name", filled({{"tname", u"门市"}}));
      });
      choose(form, "comDept", QStringLiteral("添加新部门..."));
      EXPECT_EQ(form.field("comDept").text(), "门市");
      expectScreen("F_Dept", [](ui::Screen&) {});
      choose(form, "comDept", QStringLiteral("添加新部门..."));
      EXPECT_EQ(form.field("comDept").text(), "门市");
      press(form, "F5");
    });
    press(s, "F7", "F_Fyjsr_Add1", [&](ui::Screen& form) {
      choose(form, "comFylx", QStringLiteral("收入"));
      choose(form, "comYhzh", QStringLiteral("不记入账户"));
      type(form, "tfyje", u"30.5");
      press(form, "F5");
    });
    ui::Grid& waiting = s.grid("fyjsr");
    ASSERT_EQ(waiting.rowCount(), 2);
    EXPECT_EQ(cells(waiting, 0, {"gl_djh", "fy_lx", "fy_je", "fy_kmmc", "de_name"}),
              "FY21050310001 房租 -1280 工行帐号 门市");
    expectQuestion(u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs,
                   Answer::Yes);
    press(s, "Ctrl+F9", u"审核完成，共 2 个单据，\r\n\r\n审核成功 2 个单据。"_qs);
    EXPECT_TRUE(waiting.isEmpty());
    EXPECT_EQ(xjyhBalanceNow("工行帐号"), -1280);

    dynamic_cast<ui::EnquiryScreen&>(s).showView("fyjsrtj");
    ui::Grid& audited = s.grid("fyjsrtj");
    ASSERT_EQ(audited.rowCount(), 2);
    audited.selectRow(1);
    press(s, "F8", "F_Fyjsr_Add", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tfyje").number(), 1280);
      EXPECT_EQ(form.field("comDept").text(), "门市");
      press(form, "F5");
    });
    EXPECT_EQ(lookupValue("select count(*) from jxc_yyfy where fy_chk='0' and fy_lx='房租'"), "1");
    audited.selectRow(1);
    click(s, "btn_UnChk", QStringLiteral("您确定要取消审核当前信息吗！"), Answer::Yes);
    EXPECT_EQ(xjyhBalanceNow("工行帐号"), 0);
    EXPECT_EQ(audited.rowCount(), 1);
  });
  setRights("200001", "rcgl", "1111111111110");
  becomeOperator("小李", "200001", "200001");
  open("F_Fyjsr", [&](ui::Screen& s) {
    dynamic_cast<ui::EnquiryScreen&>(s).showView("fyjsr");
    EXPECT_FALSE(s.command("btn_Check").isEnabled());
    EXPECT_FALSE(s.command("btn_Check1").isEnabled());
  });
}

}  // namespace jxc::test::expense_screens_test
