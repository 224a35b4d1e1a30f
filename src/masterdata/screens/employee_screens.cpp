// 员工设置: the list of employees and the dialog of one.
#include "core/fillers.h"
#include "masterdata/employees.h"
#include "ui/list_screen.h"

namespace jxc {
namespace employee_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"u_sn", "员工编号"},
    {"u_name", "员工姓名", ColumnKind::Text, 12},
    {"u_jm", "简码"},
    {"u_duty", "职务"},
    {"u_tele", "电话"},
    {"u_cg", "进货", ColumnKind::Flag},
    {"u_xs", "销售", ColumnKind::Flag},
    {"u_kc", "库存", ColumnKind::Flag},
    {"u_tctxt", "提成方式"},
    {"u_tc", "提成比例%", ColumnKind::Percent},
    {"ck_name", "所属仓库"},
    {"u_jy", "禁用", ColumnKind::Flag},
    {"u_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {{"gridUser", "员工列表", kColumns, "还没有员工，按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {{"btnAdd", "增加", "F2"},      {"btnModi", "修改", "F3"},
                                         {"btnDele", "删除", "Ctrl+D"}, {"btnRJy", "禁用/启用", "F6"},
                                         {"btnDept", "部门设置", "F7"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::FieldSpec kSearch[] = {{"tkey", "查找：", FieldKind::Text, "", 50}};
constexpr ui::ScreenSpec kList = {.name = "F_User",
                                  .title = "员工设置",
                                  .fields = kSearch,
                                  .grids = kGrids,
                                  .commands = kCommands,
                                  .focus = "gridUser"};

constexpr ui::FieldSpec kFields[] = {
    {"tname", "员工姓名：", FieldKind::Text, "jxc_user.u_name"},
    {"tduty", "职务：", FieldKind::Text, "jxc_user.u_duty"},
    {"ttele", "电话：", FieldKind::Text, "jxc_user.u_tele"},
    {"taddress", "地址：", FieldKind::Text, "jxc_user.u_address"},
    {"comCk", "所属仓库：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_user.u_note"},
    {"chkCg", "进货管理", FieldKind::Check},
    {"chkXs", "销售管理", FieldKind::Check},
    {"chkKc", "库存管理", FieldKind::Check},
    {"chkYg", "验光师", FieldKind::Check},
    {"chkJg", "加工员", FieldKind::Check},
    {"chkXsy", "POS销售员", FieldKind::Check},
    {"comTcfs", "提成方式：", FieldKind::Combo},
    {"ttc", "提成比例(%)：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"tzdlr", "单个商品毛利超过：", FieldKind::Money, "", 0, ui::NoMinus},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_User_Add", .title = "员工资料", .fields = kFields, .commands = kEditCommands, .focus = "tname"};

}  // namespace employee_screens_detail

class TF_User_Add : public ui::RowScreen {
 public:
  TF_User_Add();

 protected:
  void activate() override;

 private:
  void saveValue();
  bool disabled_ = false;
};

class TF_User : public ui::ListScreen {
 public:
  TF_User();
};

TF_User::TF_User() : ListScreen(employee_screens_detail::kList, employeeListStatement) {
  editedBy([](std::int64_t id) { return ui::screenAs<TF_User_Add>("F_User_Add").edit(id); });
  row("btnDele", [this](std::int64_t id) { return deleteEmployee(id, prompt()); });
  row("btnRJy", [](std::int64_t id) {
    toggleEmployeeDisabled(id);
    return true;
  });
  whole("btnDept", [] {
    ui::openScreen("F_Dept");
    return false;  // no department stands in the rows
  });
  list.setRowLook([](const Row& row) { return row.flag("u_jy") ? ui::RowLook::Muted : ui::RowLook::Normal; });
}

TF_User_Add::TF_User_Add() : RowScreen(employee_screens_detail::kEdit) {
  auto area = panel();
  area.form({"tname tduty", "ttele comCk", "taddress", "tnote"});
  area.group(QStringLiteral("可以出现在哪些单据中")).row("chkCg chkXs chkKc |");
  area.group(QStringLiteral("POS销售属性")).row("chkYg chkJg chkXsy |");
  area.group(QStringLiteral("销售提成")).form({"comTcfs ttc", "tzdlr"});
  area.buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { saveValue(); });
}

void TF_User_Add::activate() {
  field("comCk").setItems(fillWarehouseCombo(QStringLiteral("所有仓库")));
  field("comTcfs").setItems(
      {{QStringLiteral("按销售额提成"), QStringLiteral("0")}, {QStringLiteral("按毛利提成"), QStringLiteral("1")}});
  setWindowTitle(id_ == 0 ? QStringLiteral("增加员工") : QStringLiteral("修改员工"));
  const EmployeeDraft draft = id_ == 0 ? EmployeeDraft{} : readEmployee(id_);
  disabled_ = draft.disabled;
  field("tname").load(draft.name);
  field("tduty").load(draft.duty);
  field("ttele").load(draft.phone);
  field("taddress").load(draft.address);
  field("tnote").load(draft.note);
  field("comCk").setKey(draft.warehouseKey);
  field("chkCg").setChecked(draft.buys);
  field("chkXs").setChecked(draft.sells);
  field("chkKc").setChecked(draft.stocks);
  field("chkYg").setChecked(draft.optometrist);
  field("chkJg").setChecked(draft.workshop);
  field("chkXsy").setChecked(draft.posSales);
  field("comTcfs").setIndex(draft.commissionOn);
  field("ttc").load(draft.commission);
  field("tzdlr").load(draft.commissionFromProfit);
}

void TF_User_Add::saveValue() {
  if (!checkFields()) return;
  EmployeeDraft draft;
  draft.id = id_;
  draft.name = field("tname").trimmed();
  draft.duty = field("tduty").trimmed();
  draft.phone = field("ttele").trimmed();
  draft.address = field("taddress").trimmed();
  draft.note = field("tnote").trimmed();
  draft.warehouseKey = field("comCk").key();
  draft.warehouseName = field("comCk").text();
  draft.buys = field("chkCg").isChecked();
  draft.sells = field("chkXs").isChecked();
  draft.stocks = field("chkKc").isChecked();
  draft.optometrist = field("chkYg").isChecked();
  draft.workshop = field("chkJg").isChecked();
  draft.posSales = field("chkXsy").isChecked();
  draft.commissionOn = std::max(0, field("comTcfs").index());
  draft.commission = field("ttc").number();
  draft.commissionFromProfit = field("tzdlr").number();
  draft.disabled = disabled_;
  if (saveEmployee(draft, prompt())) accept();
}

namespace employee_screens_detail {
const ui::Registered<TF_User> kUser{"F_User"};
const ui::Registered<TF_User_Add> kUserAdd{"F_User_Add"};
}  // namespace employee_screens_detail

}  // namespace jxc
