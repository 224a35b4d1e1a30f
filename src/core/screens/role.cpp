// 角色管理: the list of roles and the tree of rights of one.
#include "core/roles.h"
#include "ui/display.h"
#include "ui/list_screen.h"

#include <QPushButton>
#include <QTreeWidget>

namespace jxc {
namespace role_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"r_sn", "角色编号"}, {"r_name", "角色名称", ColumnKind::Text, 24}, {"operators", "操作员数", ColumnKind::Number}};
constexpr ui::GridSpec kGrids[] = {{"gridRole", "角色列表", kColumns, "还没有角色，按F2增加"}};
constexpr ui::CommandSpec kListCommands[] = {
    {"btnAdd", "增加", "F2"}, {"btnModi", "修改", "F3"}, {"btnDele", "删除", "Ctrl+D"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {
    .name = "F_Role", .title = "角色管理", .grids = kGrids, .commands = kListCommands, .focus = "gridRole"};

constexpr ui::FieldSpec kFields[] = {{"tname", "角色名称：", FieldKind::Text, "jxc_role.r_name"},
                                     {"chkSele", "全选", FieldKind::Check}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_Role_Add", .title = "角色权限", .fields = kFields, .commands = kCommands, .focus = "tname"};

}  // namespace role_detail

class TF_Role_Add : public ui::Screen {
 public:
  TF_Role_Add();
  bool edit(std::int64_t id);

 protected:
  void activate() override;

 private:
  void setChkTree(const RoleDraft& role);
  void checkAll(bool on);
  void btnOKClick();

  QTreeWidget* chkTree_;
  std::int64_t id_ = 0;
};

TF_Role_Add::TF_Role_Add() : Screen(role_detail::kEdit), chkTree_(new QTreeWidget) {
  chkTree_->setObjectName(QStringLiteral("chkTree"));
  chkTree_->setAccessibleName(QStringLiteral("角色的权限"));
  chkTree_->setHeaderHidden(true);
  chkTree_->setMinimumSize(420, 440);
  panel().row("tname chkSele").widget(chkTree_, 1).buttons("| btnOK btnCancel");
  command("btnOK").setProperty("main", true);
  on(command("btnOK"), [this] { btnOKClick(); });
  field("chkSele").onChanged([this] { checkAll(field("chkSele").isChecked()); });
}

bool TF_Role_Add::edit(std::int64_t id) {
  id_ = id;
  const bool done = showModal();
  id_ = 0;
  return done;
}

void TF_Role_Add::activate() {
  const RoleDraft role = id_ == 0 ? RoleDraft{} : readRole(id_);
  setWindowTitle(id_ == 0 ? QStringLiteral("增加角色") : QStringLiteral("修改角色"));
  field("tname").load(role.name);
  field("chkSele").setChecked(false);
  setChkTree(role);
}

void TF_Role_Add::setChkTree(const RoleDraft& role) {
  chkTree_->clear();
  const auto groups = rightsGroups();
  for (std::size_t g = 0; g < groups.size(); ++g) {
    auto* parent = new QTreeWidgetItem(chkTree_, {ui::qs(groups[g].caption)});
    // The box of a group only shows what its rights are, and ticks them all; it is not stored.
    parent->setFlags(parent->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
    for (std::size_t i = 0; i < groups[g].rights.size(); ++i) {
      auto* right = new QTreeWidgetItem(parent, {ui::qs(groups[g].rights[i])});
      right->setFlags((right->flags() | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren));
      right->setCheckState(0, isGranted(role, g, i) ? Qt::Checked : Qt::Unchecked);
    }
  }
  chkTree_->expandAll();
  chkTree_->setCurrentItem(chkTree_->topLevelItem(0));
  chkTree_->scrollToTop();
}

void TF_Role_Add::checkAll(bool on) {
  for (int g = 0; g < chkTree_->topLevelItemCount(); ++g)
    chkTree_->topLevelItem(g)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
}

void TF_Role_Add::btnOKClick() {
  if (!checkFields()) return;
  RoleDraft role{.id = id_, .name = field("tname").text(), .rights = {}};
  for (int g = 0; g < chkTree_->topLevelItemCount(); ++g) {
    const auto* group = chkTree_->topLevelItem(g);
    for (int i = 0; i < group->childCount(); ++i)
      role.rights[static_cast<std::size_t>(g)] += group->child(i)->checkState(0) == Qt::Checked ? u'1' : u'0';
  }
  if (saveRole(role, prompt())) accept();
}

class TF_Role : public ui::ListScreen {
 public:
  TF_Role() : ListScreen(role_detail::kList, [](const QString&) { return roleListStatement(); }) {
    const auto edit = [](std::int64_t id) { return ui::screenAs<TF_Role_Add>("F_Role_Add").edit(id); };
    adding("btnAdd", [edit] { return edit(0); });
    row("btnModi", [this, edit](std::int64_t id) { return mayModifyRole(id, prompt()) && edit(id); });
    row("btnDele", [this](std::int64_t id) { return deleteRole(id, prompt()); });
    rowActivated("btnModi");
  }
};

namespace role_detail {
const ui::Registered<TF_Role> kRole{"F_Role"};
const ui::Registered<TF_Role_Add> kRoleAdd{"F_Role_Add"};
}  // namespace role_detail

}  // namespace jxc
