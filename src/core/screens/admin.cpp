// 操作员设置: the list of operators, the dialog of one, copy and paste.
#include "core/fillers.h"
#include "core/operators.h"
#include "core/roles.h"
#include "core/session.h"
#include "ui/list_screen.h"

#include <QListWidget>
#include <QPushButton>

namespace jxc {
namespace admin_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kListFields[] = {{"tkey", "查找：", FieldKind::Text, "", 32}};
constexpr ui::ColumnSpec kColumns[] = {
    {"a_sn", "操作员编号"},
    {"a_name", "操作员名称", ColumnKind::Text, 20},
    {"r_name", "角色", ColumnKind::Text, 20},
    {"a_zreoje", "抹零金额", ColumnKind::Money},
    {"a_pos", "POS柜长", ColumnKind::Flag},
    {"a_jy", "停用", ColumnKind::Flag},
};
constexpr ui::GridSpec kGrids[] = {{"gridAdmin", "操作员列表", kColumns, "没有找到操作员，按F2增加"}};
constexpr ui::CommandSpec kListCommands[] = {{"btnAdd", "增加", "F2"},           {"btnModi", "修改", "F3"},
                                             {"btn_Dele", "删除", "Ctrl+D"},     {"btnRCopy", "复制", "Ctrl+Ins"},
                                             {"btnRPaste", "粘贴", "Shift+Ins"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {.name = "F_Admin",
                                  .title = "操作员设置",
                                  .fields = kListFields,
                                  .grids = kGrids,
                                  .commands = kListCommands,
                                  .focus = "tkey"};

constexpr ui::FieldSpec kFields[] = {
    {"tname", "用户名称：", FieldKind::Text, "jxc_admin.a_name"},
    {"comRole", "角色：", FieldKind::Combo},
    {"tpwd", "密码：", FieldKind::Secret, "", 100},
    {"tpwd1", "确认密码：", FieldKind::Secret, "", 100},
    {"tzreoje", "抹零金额：", FieldKind::Money, "jxc_admin.a_zreoje", 0, ui::NoMinus},
    {"chkPos", "POS柜长", FieldKind::Check, "jxc_admin.a_pos"},
    {"chkJy", "停用", FieldKind::Check, "jxc_admin.a_jy"},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {
    .name = "F_Admin_Add", .title = "增加操作员", .fields = kFields, .commands = kCommands, .focus = "tname"};
constexpr ui::ScreenSpec kModi = {
    .name = "F_Admin_Modi", .title = "修改操作员", .fields = kFields, .commands = kCommands, .focus = "tname"};

}  // namespace admin_detail

/// One operator, new or changed.
class OperatorEditScreen : public ui::RowScreen {
 public:
  explicit OperatorEditScreen(const ui::ScreenSpec& spec) : RowScreen(spec) {
    treeCk_->setObjectName(QStringLiteral("treeCk"));
    treeCk_->setAccessibleName(QStringLiteral("操作员可以使用的仓库"));
    auto area = panel();
    auto [left, right] = area.columns();
    left.form({"tname", "comRole", "tpwd", "tpwd1", "tzreoje", "chkPos", "chkJy"}).stretch();
    right.group(QStringLiteral("仓库（空格选择）")).widget(treeCk_, 1);
    area.buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { saveValue(); });
  }

 protected:
  void activate() override {
    const OperatorDraft draft = id_ == 0 ? newOperator() : readOperator(id_);
    auto roles = rolesToChoose();
    if (id_ == 0) roles.insert(roles.begin(), ListItem{QStringLiteral("请选择角色"), {}});
    field("comRole").setItems(roles);
    field("tname").load(draft.name);
    // Nothing of an old password comes to the screen: empty means that it stays.
    field("tpwd").clear();
    field("tpwd1").clear();
    field("tzreoje").load(draft.mostRoundOff);
    field("chkPos").setChecked(draft.isHeadCashier);
    field("chkJy").setChecked(draft.isDisabled);
    field("chkJy").setVisible(id_ != 0);
    if (id_ != 0) field("comRole").setKey(draft.roleKey);
    const bool isBuiltIn = draft.number == QStringView(builtInSn);
    field("comRole").setEnabled(!isBuiltIn);
    field("chkJy").setEnabled(!isBuiltIn);
    showWarehouses(*draft.warehouses);
  }

 private:
  void showWarehouses(const QStringList& open) {
    treeCk_->clear();
    for (const ListItem& warehouse : fillWarehouseCombo({})) {
      auto* item = new QListWidgetItem(warehouse.text, treeCk_);
      item->setData(Qt::UserRole, warehouse.key);
      item->setCheckState(open.contains(warehouse.key) ? Qt::Checked : Qt::Unchecked);
      if (!mayOpenWarehouses()) item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
    }
    treeCk_->setCurrentRow(0);
  }
  QStringList warehousesOpen() const {
    QStringList open;
    for (int i = 0; i < treeCk_->count(); ++i)
      if (treeCk_->item(i)->checkState() == Qt::Checked) open << treeCk_->item(i)->data(Qt::UserRole).toString();
    return open;
  }

  void saveValue() {
    if (!checkFields()) return;
    const WipedText password = field("tpwd").secret();
    const WipedText again = field("tpwd1").secret();
    const OperatorDraft draft{.id = id_,
                              .number = {},
                              .name = field("tname").text(),
                              .roleKey = field("comRole").key(),
                              .password = password,
                              .passwordAgain = again,
                              .mostRoundOff = field("tzreoje").number(),
                              .isHeadCashier = field("chkPos").isChecked(),
                              .isDisabled = field("chkJy").isChecked(),
                              .warehouses = warehousesOpen()};
    if (id_ == 0 ? addOperator(draft, prompt()).has_value() : modifyOperator(draft, prompt())) accept();
  }

  QListWidget* treeCk_ = new QListWidget;  // warehouses, each with a box
};

struct TF_Admin_Add : OperatorEditScreen {
  TF_Admin_Add() : OperatorEditScreen(admin_detail::kAdd) {}
};
struct TF_Admin_Modi : OperatorEditScreen {
  TF_Admin_Modi() : OperatorEditScreen(admin_detail::kModi) {}
};

class TF_Admin : public ui::ListScreen {
 public:
  TF_Admin() : ListScreen(admin_detail::kList, [](const QString& typed) { return operatorListStatement(typed); }) {
    editedBy([this](std::int64_t id) {
      if (id == 0) return ui::screenAs<TF_Admin_Add>("F_Admin_Add").edit(0);
      return mayChangeOperator(id, prompt()) && ui::screenAs<TF_Admin_Modi>("F_Admin_Modi").edit(id);
    });
    row("btn_Dele", [this](std::int64_t id) { return deleteOperator(id, prompt()); });
    row("btnRCopy", [this](std::int64_t id) {
      copy_ = copyOperator(id, prompt());
      command("btnRPaste").setEnabled(copy_.has_value());
      return false;
    });
    whole("btnRPaste", [this] { return copy_ && pasteOperator(*copy_, prompt()); });
    list.addMenuCommand(command("btnRPaste").text(), [this] { command("btnRPaste").click(); });
    list.setRowLook([](const Row& row) { return row.flag("a_jy") ? ui::RowLook::Muted : ui::RowLook::Normal; });
  }

 protected:
  void activate() override {
    ListScreen::activate();
    copy_.reset();
    command("btnRPaste").setEnabled(false);
  }

 private:
  std::optional<OperatorCopy> copy_;
};

namespace admin_detail {
const ui::Registered<TF_Admin> kAdmin{"F_Admin"};
const ui::Registered<TF_Admin_Add> kAdminAdd{"F_Admin_Add"};
const ui::Registered<TF_Admin_Modi> kAdminModi{"F_Admin_Modi"};
}  // namespace admin_detail

}  // namespace jxc
