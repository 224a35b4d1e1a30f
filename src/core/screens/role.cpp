// 角色管理: the list of roles and the tree of rights of one.
#include "core/pinyin.h"
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
constexpr ui::CommandSpec kListCommands[] = {{"btnAdd", "增加", "F2"},
                                             {"btnModi", "修改", "F3"},
                                             {"btnDele", "删除", "Ctrl+D"},
                                             {"btnRCopy", "复制", "Ctrl+Ins"},
                                             {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {
    .name = "F_Role", .title = "角色管理", .grids = kGrids, .commands = kListCommands, .focus = "gridRole"};

constexpr ui::FieldSpec kFields[] = {{"tname", "角色名称：", FieldKind::Text, "jxc_role.r_name"},
                                     {"comModel", "权限参照：", FieldKind::Combo},
                                     {"tkey", "查找权限：", FieldKind::Text, "", 32},
                                     {"chkSele", "全选", FieldKind::Check}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_Role_Add", .title = "角色权限", .fields = kFields, .commands = kCommands, .focus = "tname"};

}  // namespace role_detail

class TF_Role_Add : public ui::Screen {
 public:
  TF_Role_Add();
  /// A role, 0 for a new one; a new one may begin with the rights of another.
  bool edit(std::int64_t id, std::int64_t model = 0);
  /// Room for many rights; on a smaller display the tree scrolls.
  QSize sizeHint() const override { return {520, 560}; }

 protected:
  void activate() override;

 private:
  void fillModels();
  void setChkTree(const RoleDraft& role);
  void takeModel();
  void narrow();
  void checkAll(bool on);
  void btnOKClick();

  QTreeWidget* chkTree_;
  std::vector<RoleDraft> models_;  // in step with the list, which has an empty entry before them
  std::int64_t id_ = 0, model_ = 0;
};

TF_Role_Add::TF_Role_Add() : Screen(role_detail::kEdit), chkTree_(new QTreeWidget) {
  chkTree_->setObjectName(QStringLiteral("chkTree"));
  chkTree_->setAccessibleName(QStringLiteral("角色的权限"));
  chkTree_->setHeaderHidden(true);
  chkTree_->setMinimumSize(320, 120);
  panel().form({"tname comModel", "tkey chkSele"}).widget(chkTree_, 1).buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { btnOKClick(); });
  field("chkSele").onChanged([this] { checkAll(field("chkSele").isChecked()); });
  field("comModel").onChanged([this] { takeModel(); });
  field("tkey").onChanged([this] { narrow(); });
}

bool TF_Role_Add::edit(std::int64_t id, std::int64_t model) {
  id_ = id;
  model_ = model;
  const bool done = showModal();
  id_ = model_ = 0;
  return done;
}

void TF_Role_Add::activate() {
  const RoleDraft role = id_ == 0 ? RoleDraft{} : readRole(id_);
  setWindowTitle(id_ == 0 ? QStringLiteral("增加角色") : QStringLiteral("修改角色"));
  field("tname").load(role.name);
  field("tkey").clear();
  field("chkSele").setChecked(false);
  setChkTree(role);
  fillModels();
}

/// A role takes its rights from a ready-made one or from another role of the shop, and goes on from there.
void TF_Role_Add::fillModels() {
  models_ = readyMadeRoles();
  std::vector<ListItem> items{{QStringLiteral("不参照"), QStringLiteral("0")}};
  int chosen = 0;
  for (RoleDraft& role : allRoles()) {
    if (role.id == id_) continue;
    if (role.id == model_) chosen = static_cast<int>(models_.size()) + 1;
    models_.push_back(std::move(role));
  }
  for (const RoleDraft& model : models_)
    items.push_back(
        {(model.id == 0 ? QStringLiteral("模板：") : QString()) + model.name, QString::number(items.size())});
  field("comModel").setItems(items);
  if (chosen == 0) return;
  field("comModel").setIndex(chosen);
  takeModel();
}

void TF_Role_Add::takeModel() {
  const int index = field("comModel").index();
  if (index < 1) return;
  const RoleDraft& model = models_[static_cast<std::size_t>(index) - 1];
  setChkTree(model);
  if (field("tname").trimmed().isEmpty() && model.id == 0) field("tname").setText(model.name);
  narrow();
}

/// Only rights with these words, or letters, stay in sight.
void TF_Role_Add::narrow() {
  const QString typed = field("tkey").trimmed();
  for (int g = 0; g < chkTree_->topLevelItemCount(); ++g) {
    auto* group = chkTree_->topLevelItem(g);
    const auto matches = [&](const QTreeWidgetItem* item) {
      return item->text(0).contains(typed, Qt::CaseInsensitive) ||
             makeJm(item->text(0)).contains(typed, Qt::CaseInsensitive);
    };
    bool any = false;
    for (int i = 0; i < group->childCount(); ++i) {
      const bool shown = matches(group) || matches(group->child(i));
      group->child(i)->setHidden(!shown);
      any = any || shown;
    }
    group->setHidden(!any);
  }
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

/// All that are in sight.
void TF_Role_Add::checkAll(bool on) {
  for (int g = 0; g < chkTree_->topLevelItemCount(); ++g)
    for (int i = 0; i < chkTree_->topLevelItem(g)->childCount(); ++i)
      if (auto* right = chkTree_->topLevelItem(g)->child(i); !right->isHidden())
        right->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
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
    editedBy([this](std::int64_t id) {
      return (id == 0 || mayModifyRole(id, prompt())) && ui::screenAs<TF_Role_Add>("F_Role_Add").edit(id);
    });
    row("btnDele", [this](std::int64_t id) { return deleteRole(id, prompt()); });
    row("btnRCopy", [](std::int64_t id) { return ui::screenAs<TF_Role_Add>("F_Role_Add").edit(0, id); });
  }
};

namespace role_detail {
const ui::Registered<TF_Role> kRole{"F_Role"};
const ui::Registered<TF_Role_Add> kRoleAdd{"F_Role_Add"};
}  // namespace role_detail

}  // namespace jxc
