// Each ready-made role walked through commands, lists and rules, and compared with a table of what a shop expects of
// it.
#include "core/operators.h"
#include "core/rights.h"
#include "core/roles.h"
#include "core/screens/command_runner.h"
#include "maintenance/log_viewer.h"
#include "screens/harness/screen_test.h"

#include <QTableView>

namespace jxc::test {

class RoleWalk : public ScreenTest {
 protected:
  /// Becomes an operator of that role; it is made as the administrator makes it.
  void become(const QString& role) {
    becomeOperator("admin", "100001", "100001");
    OperatorDraft draft = newOperator();
    draft.name = u"新"_qs + role;
    draft.roleKey = role;
    draft.password = draft.passwordAgain = u"x"_qs;
    const auto number = addOperator(draft, prompt);
    ASSERT_TRUE(number) << prompt.lastNotice().toStdString();
    becomeOperator(draft.name, *number, lookupValue("select r_sn from jxc_admin where a_sn=?", *number));
  }
  /// Whether anybody who reads the list's cells, a screen reader too, hears what stands in that column.
  static bool isTold(const ui::Grid& list, std::string_view column) {
    const QAbstractItemModel& model = *list.findChild<QTableView*>()->model();
    for (int i = 0; i < model.columnCount(); ++i)
      if (list.spec().columns[static_cast<std::size_t>(i)].field == column)
        return !model.index(0, i).data().toString().isEmpty() || !model.index(0, i).data(Qt::EditRole).isNull();
    return false;
  }
  const QStringList roles{u"店长"_qs, u"采购员"_qs, u"营业员"_qs, u"会计"_qs};
};

TEST_F(RoleWalk, EachRoleReachesWhatItsWorkNeedsAndNothingElse) {
  // 1 for each of 店长, 采购员, 营业员, 会计 who may.
  const std::pair<std::string_view, std::string_view> table[] = {
      {"btn_Menu1_Btn1", "1100"},    // 采购进货
      {"btn_Menu1_Btn3", "1101"},    // 往来账务 of suppliers
      {"btn_Menu2_Btn1", "1010"},    // 商品销售
      {"btn_Menu2_Btn5", "1011"},    // 往来账务 of customers
      {"btn_Menu3_Btn1", "1100"},    // 库存调拨
      {"btn_Menu3_Right3", "1101"},  // 库存成本统计
      {"btn_Menu8_Btn2", "1011"},    // 收款登记
      {"btn_Menu8_Btn5", "1001"},    // 付款登记
      {"btn_Menu4_Btn1", "1101"},    // 进货月报
      {"btn_Menu4_Btn8", "1011"},    // 商品销售统计
      {"btn_Menu4_BtnA", "1001"},    // 营业分析
      {"btn_Menu5_Right2", "1001"},  // 现金银行
      {"btn_Menu6_Btn1", "1100"},    // 商品管理
      {"btn_Menu6_Btn8", "1010"},    // 会员管理
      {"btn_Menu6_Btn3", "0000"},    // 操作员设置
      {"btn_Menu6_Btn4", "0000"},    // 系统设置
      {"btnBackup", "1000"},        {"btnLog", "1000"}, {"btnRole", "0000"}, {"btnClear", "0000"}, {"btnJs", "0000"},
  };
  for (qsizetype i = 0; i < roles.size(); ++i) {
    SCOPED_TRACE(roles[i].toStdString());
    become(roles[i]);
    const auto at = static_cast<std::size_t>(i);
    for (const auto& [name, who] : table)
      EXPECT_EQ(isAllowed(*ui::findCommand(name)), who[at] == '1') << name;
    execSql("update jxc_admin set a_jyt=1 where a_sn=?", session().a_sn);
    for (const auto& [name, who] : table)
      EXPECT_FALSE(isAllowed(*ui::findCommand(name))) << name << " of somebody who is disabled";
  }
}

TEST_F(RoleWalk, WhatARoleMayNotSeeIsInNoListAndItsRulesRefuse) {
  execSql(
      "insert into jxc_goods (g_sn,g_name,gc_sn,g_jj,g_scjj,g_pjjj,g_sj,g_jy,g_zhxs) "
      "values ('A','镜架','100',5,5,5,9,0,1)");
  execSql("update jxc_goods set gc_sn=? where g_sn='A'",
          lookupValue("select top 1 gc_sn from jxc_goodsclass order by id"));
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values ('A','100001',3,3,5,0)");
  constexpr std::string_view cost = "1100", price = "1011";
  for (qsizetype i = 0; i < roles.size(); ++i) {
    SCOPED_TRACE(roles[i].toStdString());
    become(roles[i]);
    const auto at = static_cast<std::size_t>(i);
    open("F_Kccx", [&](ui::Screen& s) {
      auto& list = s.grid("gridKc");
      list.waitLoaded();
      ASSERT_EQ(list.rowCount(), 1);
      for (const char* column : {"cbjj", "kczje", "g_scjj"})
        EXPECT_EQ(isTold(list, column), cost[at] == '1') << column;
      for (const char* column : {"g_sj", "xszje"})
        EXPECT_EQ(isTold(list, column), price[at] == '1') << column;
      for (const char* column : {"g_jj", "g_pjjj", "g_lsj"})
        EXPECT_LT(list.rows().columnIndex(column), 0) << column << " is not asked for at all";
    });
    prompt.forget();
    EXPECT_FALSE(clearLog(prompt));
    EXPECT_FALSE(addOperator(newOperator(), prompt));
    RoleDraft role = allRoles().back();
    role.rights.fill(QString(60, u'1'));
    EXPECT_FALSE(saveRole(role, prompt));
    EXPECT_EQ(prompt.notices, QStringList({u"您没有权限进行清除日志！"_qs, u"您没有权限进行操作员设置！"_qs,
                                           u"只有系统管理员才能使用此功能！"_qs}));
  }
}

}  // namespace jxc::test
