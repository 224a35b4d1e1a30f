// 仓库设置: the list of warehouses and the dialog of one, with the operators who may see it.
#include "masterdata/warehouses.h"
#include "ui/list_screen.h"

#include <QListWidget>

namespace jxc {
namespace warehouse_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"ck_sn", "仓库编号"},
    {"ck_name", "仓库名称", ColumnKind::Text, 20},
    {"ck_jm", "简码"},
    {"ck_fzr", "负责人"},
    {"ck_aname", "操作员", ColumnKind::Text, 20},
    {"ck_tele", "电话"},
    {"ck_address", "地址", ColumnKind::Text, 20},
    {"ck_default", "默认", ColumnKind::Flag},
    {"ck_pos", "POS仓库", ColumnKind::Flag},
    {"ck_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {{"gridCk", "仓库列表", kColumns, "还没有仓库，按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnAdd", "增加", "F2"}, {"btnModi", "修改", "F3"}, {"btnDele", "删除", "Ctrl+D"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::FieldSpec kSearch[] = {{"tkey", "查找：", FieldKind::Text, "", 50}};
constexpr ui::ScreenSpec kList = {.name = "F_Ckgl",
                                  .title = "仓库设置",
                                  .fields = kSearch,
                                  .grids = kGrids,
                                  .commands = kCommands,
                                  .focus = "gridCk"};

constexpr ui::FieldSpec kFields[] = {
    {"tname", "仓库名称：", FieldKind::Text, "jxc_ckxx.ck_name"},
    {"tfzr", "负责人：", FieldKind::Text, "jxc_ckxx.ck_fzr"},
    {"ttele", "电话：", FieldKind::Text, "jxc_ckxx.ck_tele"},
    {"taddress", "地址：", FieldKind::Text, "jxc_ckxx.ck_address"},
    {"tnote", "备注：", FieldKind::Text, "jxc_ckxx.ck_note"},
    {"chkDefault", "默认仓库", FieldKind::Check},
    {"chkPos", "POS前台仓库", FieldKind::Check},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_Ckgl_Add", .title = "仓库资料", .fields = kFields, .commands = kEditCommands, .focus = "tname"};

}  // namespace warehouse_screens_detail

class TF_Ckgl_Add : public ui::RowScreen {
 public:
  TF_Ckgl_Add();
  ui::Field& tname = field("tname");
  ui::Field& tfzr = field("tfzr");
  ui::Field& ttele = field("ttele");
  ui::Field& taddress = field("taddress");
  ui::Field& tnote = field("tnote");
  ui::Field& chkDefault = field("chkDefault");
  ui::Field& chkPos = field("chkPos");

 protected:
  void activate() override;

 private:
  void saveValue();
  QListWidget* treeAdmin_;                   // operators, each with a box
  std::vector<BindableOperator> operators_;  // in step with it
};

class TF_Ckgl : public ui::ListScreen {
 public:
  TF_Ckgl();
};

TF_Ckgl::TF_Ckgl() : ListScreen(warehouse_screens_detail::kList, warehouseListStatement) {
  editedBy([](std::int64_t id) { return ui::screenAs<TF_Ckgl_Add>("F_Ckgl_Add").edit(id); });
  row("btnDele", [this](std::int64_t id) { return deleteWarehouse(id, prompt()); });
}

TF_Ckgl_Add::TF_Ckgl_Add() : RowScreen(warehouse_screens_detail::kEdit), treeAdmin_(new QListWidget) {
  treeAdmin_->setObjectName(QStringLiteral("treeAdmin"));
  treeAdmin_->setAccessibleName(QStringLiteral("可以使用该仓库的操作员"));
  auto area = panel();
  area.form({"tname", "tfzr ttele", "taddress", "tnote", "chkDefault chkPos"});
  area.group(QStringLiteral("操作员（空格选择）")).widget(treeAdmin_, 1);
  area.buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { saveValue(); });
}

void TF_Ckgl_Add::activate() {
  const WarehouseDraft draft = id_ == 0 ? WarehouseDraft{} : readWarehouse(id_);
  setWindowTitle(id_ == 0 ? QStringLiteral("增加仓库") : QStringLiteral("修改仓库"));
  tname.load(draft.name);
  tfzr.load(draft.inCharge);
  ttele.load(draft.phone);
  taddress.load(draft.address);
  tnote.load(draft.note);
  chkDefault.setChecked(draft.isDefault);
  chkPos.setChecked(draft.isPos);
  treeAdmin_->clear();
  operators_ = bindableOperators(draft);
  for (const BindableOperator& each : operators_) {
    auto* item = new QListWidgetItem(each.isDisabled ? each.name + QStringLiteral("（停用）") : each.name, treeAdmin_);
    item->setCheckState(each.isBound ? Qt::Checked : Qt::Unchecked);
  }
  treeAdmin_->setCurrentRow(0);
}

void TF_Ckgl_Add::saveValue() {
  if (!checkFields()) return;
  WarehouseDraft draft;
  draft.id = id_;
  draft.name = tname.trimmed();
  draft.inCharge = tfzr.trimmed();
  draft.phone = ttele.trimmed();
  draft.address = taddress.trimmed();
  draft.note = tnote.trimmed();
  draft.isDefault = chkDefault.isChecked();
  draft.isPos = chkPos.isChecked();
  for (int i = 0; i < treeAdmin_->count(); ++i) {
    if (treeAdmin_->item(i)->checkState() != Qt::Checked) continue;
    const BindableOperator& chosen = operators_[static_cast<std::size_t>(i)];
    draft.operatorKeys += chosen.key;
    draft.operatorNames += chosen.name;
  }
  if (saveWarehouse(draft, prompt())) accept();
}

namespace warehouse_screens_detail {
const ui::Registered<TF_Ckgl> kCkgl{"F_Ckgl"};
const ui::Registered<TF_Ckgl_Add> kCkglAdd{"F_Ckgl_Add"};
}  // namespace warehouse_screens_detail

}  // namespace jxc
