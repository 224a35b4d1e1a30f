// Each ready-made role walked through the main window, commands, lists and rules, and compared with a table of what a
// shop expects of it. What its screens, files, papers and menus tell is walked through in withheld_test.cpp.
#include "core/operators.h"
#include "core/rights.h"
#include "core/roles.h"
#include "core/screens/command_runner.h"
#include "core/screens/command_tile.h"
#include "core/screens/main_form.h"
#include "maintenance/log_viewer.h"
#include "screens/harness/ready_made_roles.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"

#include <QMessageBox>
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
  /// What opens is written down and left again.
  bool meets(QDialog& dialog) override {
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    opened_ << (box ? box->text() : dialog.objectName());
    dialog.done(QDialog::Rejected);
    return true;
  }
  /// Captions of the page's tiles that may be pressed; each tile is pressed and does as it looks.
  QString walk(TF_MainForm& form, ui::Page page) {
    QStringList open;
    form.showPage(page);
    for (CommandTile* tile : form.visibleTiles()) {
      const ui::CommandDefinition& command = tile->command();
      const bool may = !tile->property("noRight").toBool();
      const bool isEverybodys = command.guard == ui::Guard::None;  // looks, maintenance
      if (may && !isEverybodys && !open.contains(ui::qs(command.caption))) open << ui::qs(command.caption);
      opened_.clear();
      tile->click();
      settle();
      const QString screen = ui::isScreenRegistered(command.screen) ? ui::qs(command.screen) : u"F_NotYet"_qs;
      EXPECT_EQ(opened_, QStringList(may ? screen : refusalOf(command))) << command.name;
    }
    return open.join(u' ');
  }
  /// Whether anybody who reads the list's cells, a screen reader too, hears what stands in that column.
  static bool isTold(const ui::Grid& list, std::string_view column) {
    const QAbstractItemModel& model = *list.findChild<QTableView*>()->model();
    for (int i = 0; i < model.columnCount(); ++i)
      if (list.spec().columns[static_cast<std::size_t>(i)].field == column)
        return !model.index(0, i).data().toString().isEmpty() || !model.index(0, i).data(Qt::EditRole).isNull();
    return false;
  }
  QStringList opened_;
};

TEST_F(RoleWalk, EachRoleReachesWhatItsWorkNeedsAndNothingElse) {
  for (const ReadyMadeRole& role : kReadyMadeRoles) {
    SCOPED_TRACE(role.name);
    become(QString::fromUtf8(role.name));
    const QString name = session().a_name, number = session().a_sn;
    TF_MainForm form;
    form.resize(1280, 720);
    expectScreen("F_Login", [&](ui::Screen& s) {
      choose(s, "comAdmin", name);
      enter(s, "tpwd", u"x");
    });
    ASSERT_TRUE(form.formShow());
    form.Timer1.stop();
    EXPECT_FALSE(walk(form, form.currentPage()).isEmpty()) << "begins where there is something to do";
    for (std::size_t page = 0; page < role.does.size(); ++page)
      EXPECT_EQ(walk(form, ui::pages()[page].page).toStdString(), role.does[page]) << ui::pages()[page].tab;
    for (const std::string_view button : kUpkeep)
      EXPECT_EQ(isAllowed(*ui::findCommand(button)), role.upkeep.find(button) != std::string_view::npos) << button;
    EXPECT_EQ(session().canSeeCost, role.seesCost);
    EXPECT_EQ(hasRight(kSeesPrice), role.seesPrice);
    EXPECT_EQ(hasRight("xsgl", 7), role.audits);

    execSql("update jxc_admin set a_jyt=1 where a_sn=?", number);
    for (const auto& command : ui::commands())
      EXPECT_FALSE(command.guard != ui::Guard::None && isAllowed(command))
          << command.name << " of somebody who is disabled";
  }
}

TEST_F(RoleWalk, WhatARoleMayNotSeeIsInNoListAndItsRulesRefuse) {
  execSql(
      "insert into jxc_goods (g_sn,g_name,gc_sn,g_jj,g_scjj,g_pjjj,g_sj,g_jy,g_zhxs) "
      "values ('A','镜架','100',5,5,5,9,0,1)");
  execSql("update jxc_goods set gc_sn=? where g_sn='A'",
          lookupValue("select top 1 gc_sn from jxc_goodsclass order by id"));
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values ('A','100001',3,3,5,0)");
  execSql(
      "insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,fy_flag,u_sn,de_sn,fy_kmmc,fy_chk,fy_note,fy_sc) values "
      "('PD21050210001','2021-05-02','费用',-15,'1','100001','100001','现金','1','商品盘点单PD21050210001成本差额','"
      "费用')");
  for (const ReadyMadeRole& role : kReadyMadeRoles) {
    SCOPED_TRACE(role.name);
    become(QString::fromUtf8(role.name));
    open("F_Fyjsr", [&](ui::Screen& s) {
      for (const char* list : {"fyjsrtj", "fyjsrhz"}) {
        dynamic_cast<ui::EnquiryScreen&>(s).showView(list);
        EXPECT_EQ(s.grid(list).rowCount(), role.seesCost ? 1 : 0) << list << ": pieces and this make a cost";
      }
    });
    open("F_Kccx", [&](ui::Screen& s) {
      auto& list = s.grid("gridKc");
      list.waitLoaded();
      ASSERT_EQ(list.rowCount(), 1);
      for (const char* column : {"cbjj", "kczje", "g_scjj"})
        EXPECT_EQ(isTold(list, column), role.seesStockCost) << column;
      for (const char* column : {"g_sj", "xszje"})
        EXPECT_EQ(isTold(list, column), role.seesPrice) << column;
      for (const char* column : {"g_jj", "g_pjjj", "g_lsj"})
        EXPECT_LT(list.rows().columnIndex(column), 0) << column << " is not asked for at all";
    });
    prompt.forget();
    EXPECT_FALSE(clearLog(prompt));
    EXPECT_FALSE(addOperator(newOperator(), prompt));
    RoleDraft changed = allRoles().back();
    changed.rights.fill(QString(60, u'1'));
    EXPECT_FALSE(saveRole(changed, prompt));
    EXPECT_EQ(prompt.notices, QStringList({u"您没有权限进行清除日志！"_qs, u"您没有权限进行操作员设置！"_qs,
                                           u"只有系统管理员才能使用此功能！"_qs}));
  }
}

}  // namespace jxc::test
