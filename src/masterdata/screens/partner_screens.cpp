#include "masterdata/screens/partner_screens.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "masterdata/screens/partner_dialogs.h"

#include <QListWidget>

#include <algorithm>

namespace jxc {
namespace partner_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- customers ---------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kListFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSx", "筛选：", FieldKind::Combo},
};
constexpr ui::ColumnSpec kCustomerColumns[] = {
    {"kh_sn", "客户编号"},
    {"kh_name", "客户名称", ColumnKind::Text, 24},
    {"kt_name", "级别"},
    {"kh_lxr", "联系人"},
    {"kh_tele", "电话"},
    {"kh_lwje", "应收余额", ColumnKind::Money, 0, true},
    {"z_name", "地区"},
    {"kh_address", "地址", ColumnKind::Text, 24},
    {"kh_jm", "简码"},
    {"kh_uname", "业务员"},
    {"ck_name", "所属仓库"},
    {"kh_default", "默认", ColumnKind::Flag},
    {"kh_forbid", "禁用", ColumnKind::Flag},
    {"kh_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kCustomerGrids[] = {{"gridKh", "客户列表", kCustomerColumns, "还没有客户，按F2增加"}};
constexpr ui::CommandSpec kCustomerCommands[] = {
    {"btnAdd", "增加", "F2"},      {"btnModi", "修改", "F3"},
    {"btnDele", "删除", "Ctrl+D"}, {"btnRForbid", "禁用/启用", "F6", "禁用的客户不再出现在单据的客户列表中"},
    {"btnRJm", "修改简码", "F7"},  {"btnSearch", "高级查找", "Ctrl+F"},
    {"btnType", "客户级别", "F8"}, {"btnZone", "地区", "Ctrl+R"},
    {"btnImport", "导入", "F9"},   {"btn_Export", "导出", "Ctrl+S"},
    {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kCustomerList = {.name = "F_Khgl",
                                          .title = "客户设置",
                                          .fields = kListFields,
                                          .grids = kCustomerGrids,
                                          .commands = kCustomerCommands,
                                          .focus = "tkey"};

constexpr ui::FieldSpec kCustomerFields[] = {
    {"tname", "客户名称：", FieldKind::Text, "jxc_khxx.kh_name"},
    {"tlxr", "联系人：", FieldKind::Text, "jxc_khxx.kh_lxr"},
    {"ttele", "电话：", FieldKind::Text, "jxc_khxx.kh_tele"},
    {"taddress", "地址：", FieldKind::Text, "jxc_khxx.kh_address"},
    {"comType", "级别：", FieldKind::Combo},
    {"comZone", "地区：", FieldKind::EditCombo, "jxc_khxx.z_name"},
    {"comCk", "所属仓库：", FieldKind::Combo},
    {"tlwje", "期初应收：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_khxx.kh_note"},
    {"chkDefault", "默认客户", FieldKind::Check},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kCustomerAdd = {
    .name = "F_Khgl_Add", .title = "增加客户", .fields = kCustomerFields, .commands = kEditCommands, .focus = "tname"};
constexpr ui::ScreenSpec kCustomerModi = {.name = "F_Khgl_Modi",
                                          .title = "修改客户资料",
                                          .fields = kCustomerFields,
                                          .commands = kEditCommands,
                                          .focus = "tname"};

// ---- suppliers ---------------------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kSupplierColumns[] = {
    {"ghs_sn", "供货商编号"},
    {"ghs_name", "供货商名称", ColumnKind::Text, 24},
    {"gt_name", "类别"},
    {"ghs_lxr", "联系人"},
    {"ghs_tele", "电话"},
    {"ghs_lwje", "应付余额", ColumnKind::Money, 0, true},
    {"z_name", "地区"},
    {"ghs_address", "地址", ColumnKind::Text, 24},
    {"ghs_jm", "简码"},
    {"ck_name", "所属仓库"},
    {"ghs_default", "默认", ColumnKind::Flag},
    {"ghs_forbid", "禁用", ColumnKind::Flag},
    {"ghs_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kSupplierGrids[] = {{"gridGhs", "供货商列表", kSupplierColumns, "还没有供货商，按F2增加"}};
constexpr ui::CommandSpec kSupplierCommands[] = {
    {"btnAdd", "增加", "F2"},         {"btnModi", "修改", "F3"},
    {"btnDele", "删除", "Ctrl+D"},    {"btnRForbid", "禁用/启用", "F6", "禁用的供货商不再出现在单据的供货商列表中"},
    {"btnRJm", "修改简码", "F7"},     {"btnSearch", "高级查找", "Ctrl+F"},
    {"btnType", "供货商类别", "F8"},  {"btnCopy", "复制客户", "F4", "把客户资料复制成供货商"},
    {"btnZone", "地区", "Ctrl+R"},    {"btnImport", "导入", "F9"},
    {"btn_Export", "导出", "Ctrl+S"}, {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kSupplierList = {.name = "F_Ghsgl",
                                          .title = "供货商设置",
                                          .fields = kListFields,
                                          .grids = kSupplierGrids,
                                          .commands = kSupplierCommands,
                                          .focus = "tkey"};

constexpr ui::FieldSpec kSupplierFields[] = {
    {"tname", "供货商名称：", FieldKind::Text, "jxc_ghsxx.ghs_name"},
    {"tlxr", "联系人：", FieldKind::Text, "jxc_ghsxx.ghs_lxr"},
    {"ttele", "电话：", FieldKind::Text, "jxc_ghsxx.ghs_tele"},
    {"taddress", "地址：", FieldKind::Text, "jxc_ghsxx.ghs_address"},
    {"comType", "类别：", FieldKind::Combo},
    {"comZone", "地区：", FieldKind::EditCombo, "jxc_ghsxx.z_name"},
    {"comCk", "所属仓库：", FieldKind::Combo},
    {"tlwje", "期初应付：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_ghsxx.ghs_note"},
    {"chkDefault", "默认供货商", FieldKind::Check},
};
constexpr ui::ScreenSpec kSupplierAdd = {.name = "F_Ghsgl_Add",
                                         .title = "增加供货商",
                                         .fields = kSupplierFields,
                                         .commands = kEditCommands,
                                         .focus = "tname"};
constexpr ui::ScreenSpec kSupplierModi = {.name = "F_Ghsgl_Modi",
                                          .title = "修改供货商资料",
                                          .fields = kSupplierFields,
                                          .commands = kEditCommands,
                                          .focus = "tname"};

// ---- both --------------------------------------------------------------------------------------------------------

/// What the filter offers: states, then every level (type) and every region. A key tells what an entry is.
constexpr QChar kKindMark = u'k';
constexpr QChar kZoneMark = u'z';

std::vector<ListItem> filterItems(const PartnerSide& side) {
  const bool owes = &side == &customerSide;
  std::vector<ListItem> items{
      {QStringLiteral("全部"), QString()},
      {QStringLiteral("使用中"), QStringLiteral("use")},
      {QStringLiteral("已禁用"), QStringLiteral("forbid")},
      {owes ? QStringLiteral("有应收余额") : QStringLiteral("有应付余额"), QStringLiteral("owing")}};
  for (const auto& kind : partnerKinds(side)) {
    if (kind.text.isEmpty()) continue;
    const QString word = owes ? QStringLiteral("级别：") : QStringLiteral("类别：");
    items.push_back({word + kind.text, kKindMark + QStringLiteral(":") + kind.text});
  }
  for (const auto& zone : fillPlainCombo("jxc_zone", "z_name", {}, false, "id"))
    items.push_back({QStringLiteral("地区：") + zone.text, kZoneMark + QStringLiteral(":") + zone.text});
  return items;
}

/// The conditions narrowed by the chosen entry.
PartnerConditions narrowed(PartnerConditions conditions, const QString& key) {
  using State = PartnerConditions::State;
  if (key == u"use") conditions.state = State::InUse;
  if (key == u"forbid") conditions.state = State::Forbidden;
  if (key == u"owing") conditions.state = State::Owing;
  if (key.startsWith(kKindMark + QStringLiteral(":"))) conditions.kind = key.mid(2);
  if (key.startsWith(kZoneMark + QStringLiteral(":"))) conditions.zone = key.mid(2);
  return conditions;
}

std::string screenOf(const PartnerSide& side, std::string_view what) {
  return std::string(&side == &customerSide ? "F_Khgl_" : "F_Ghsgl_") + std::string(what);
}

struct TF_Khgl : PartnerListScreen {
  TF_Khgl() : PartnerListScreen(kCustomerList, customerSide) {}
};
struct TF_Ghsgl : PartnerListScreen {
  TF_Ghsgl() : PartnerListScreen(kSupplierList, supplierSide) {
    whole("btnCopy", [] { return ui::openScreen("F_Ghsgl_Copy"); });
  }
};
struct TF_Khgl_Add : PartnerEditScreen {
  TF_Khgl_Add() : PartnerEditScreen(kCustomerAdd, customerSide, Mode::Add) {}
};
struct TF_Khgl_Modi : PartnerEditScreen {
  TF_Khgl_Modi() : PartnerEditScreen(kCustomerModi, customerSide, Mode::Modify) {}
};
struct TF_Ghsgl_Add : PartnerEditScreen {
  TF_Ghsgl_Add() : PartnerEditScreen(kSupplierAdd, supplierSide, Mode::Add) {}
};
struct TF_Ghsgl_Modi : PartnerEditScreen {
  TF_Ghsgl_Modi() : PartnerEditScreen(kSupplierModi, supplierSide, Mode::Modify) {}
};

const ui::Registered<TF_Khgl> kKhgl{"F_Khgl"};
const ui::Registered<TF_Ghsgl> kGhsgl{"F_Ghsgl"};
const ui::Registered<TF_Khgl_Add> kKhglAdd{"F_Khgl_Add"};
const ui::Registered<TF_Khgl_Modi> kKhglModi{"F_Khgl_Modi"};
const ui::Registered<TF_Ghsgl_Add> kGhsglAdd{"F_Ghsgl_Add"};
const ui::Registered<TF_Ghsgl_Modi> kGhsglModi{"F_Ghsgl_Modi"};

}  // namespace partner_screens_detail

std::optional<QString> addPartner(const PartnerSide& side) {
  return ui::screenAs<PartnerEditScreen>(partner_screens_detail::screenOf(side, "Add")).edit(0);
}

std::optional<QString> modifyPartner(const PartnerSide& side, std::int64_t id) {
  return ui::screenAs<PartnerEditScreen>(partner_screens_detail::screenOf(side, "Modi")).edit(id);
}

// ---- the list ----------------------------------------------------------------------------------------------------

PartnerListScreen::PartnerListScreen(const ui::ScreenSpec& spec, const PartnerSide& side)
    : ListScreen(spec, [this](const QString& typed) { return filterData(typed); }), side_(side) {
  comSx.onChanged([this] { refresh(); });
  adding("btnAdd", [this] { return addPartner(side_).has_value(); });
  row("btnModi", [this](std::int64_t id) { return modifyPartner(side_, id).has_value(); });
  row("btnDele", [this](std::int64_t id) { return deletePartner(side_, id, prompt()); });
  row("btnRForbid", [this](std::int64_t id) {
    togglePartnerForbidden(side_, id);
    return true;
  });
  row("btnRJm", [this](std::int64_t id) { return ui::screenAs<TF_Ghsgl_Jm>("F_Ghsgl_Jm").edit(side_, id); });
  whole("btnSearch", [this] { return searchMore(); });
  const auto offer = [this](std::string_view name, std::string_view what) {
    const std::string screen = partner_screens_detail::screenOf(side_, what);
    command(name).setVisible(ui::isScreenRegistered(screen));
    whole(name, [screen] {
      ui::openScreen(screen);
      return true;  // a renamed level stands in the rows
    });
  };
  offer("btnType", "Type");
  whole("btnZone", [] {
    ui::openScreen("F_Zone");
    return true;  // a renamed region too
  });
  offer("btnImport", "Import");
  rowActivated("btnModi");
  list.setRowLook(
      [this](const Row& row) { return row.flag(side_.forbidden) ? ui::RowLook::Muted : ui::RowLook::Normal; });
}

void PartnerListScreen::activate() {
  conditions_ = {};
  comSx.setItems(partner_screens_detail::filterItems(side_));
  ListScreen::activate();
}

bool PartnerListScreen::searchMore() {
  const auto wanted = ui::screenAs<TF_Ghsgl_Search>("F_Ghsgl_Search").ask(side_, conditions_);
  if (wanted) conditions_ = *wanted;
  return wanted.has_value();
}

Sql PartnerListScreen::filterData(const QString& typed) {
  PartnerConditions conditions = partner_screens_detail::narrowed(conditions_, comSx.key());
  conditions.key = typed;
  const QString noun = QString::fromUtf16(side_.noun);
  list.setEmptyText(
      (conditions == PartnerConditions{} ? QStringLiteral("还没有%1，按F2增加") : QStringLiteral("没有符合条件的%1"))
          .arg(noun));
  return partnerListStatement(side_, conditions);
}

// ---- one partner -------------------------------------------------------------------------------------------------

PartnerEditScreen::PartnerEditScreen(const ui::ScreenSpec& spec, const PartnerSide& side, Mode mode)
    : Screen(spec), side_(side), mode_(mode) {
  auto area = panel();
  const auto form = {std::string_view("tname"),           std::string_view("tlxr ttele"),  std::string_view("taddress"),
                     std::string_view("comType comZone"), std::string_view("comCk tlwje"), std::string_view("tnote"),
                     std::string_view("chkDefault")};
  if (side_.employeeKeys.empty()) {
    area.form(form);
  } else {
    treeUser_ = new QListWidget;
    treeUser_->setObjectName(QStringLiteral("treeUser"));
    treeUser_->setAccessibleName(QStringLiteral("该客户的业务员"));
    treeUser_->setMinimumHeight(160);
    auto [left, right] = area.columns(3, 1);
    left.form(form).stretch();
    right.group(QStringLiteral("业务员（空格选择）")).widget(treeUser_, 1);
  }
  area.buttons("| btnOK btnCancel");
  btnOK.setProperty("main", true);
  on(btnOK, [this] { saveValue(); });
}

std::optional<QString> PartnerEditScreen::edit(std::int64_t id) {
  id_ = id;
  saved_.clear();
  const bool done = showModal();
  id_ = 0;
  return done && !saved_.isEmpty() ? std::optional(saved_) : std::nullopt;
}

void PartnerEditScreen::fillLists(const PartnerDraft& draft) {
  comType.setItems(partnerKinds(side_));
  comZone.setItems(fillPlainCombo("jxc_zone", "z_name", {}, true, "id"));
  comCk.setItems(fillWarehouseCombo(QStringLiteral("所有仓库")));
  comZone.setText(draft.zone);
  comCk.setKey(draft.warehouseKey);
  const auto& items = comType.items();
  const auto kind =
      std::find_if(items.begin(), items.end(), [&](const ListItem& i) { return i.text == draft.kindName; });
  comType.setIndex(kind == items.end() ? 0 : static_cast<int>(kind - items.begin()));
  if (!treeUser_) return;
  treeUser_->clear();
  const QStringList bound = draft.employeeKeys.split(u',', Qt::SkipEmptyParts);
  for (const Row row : selectBindableEmployees(draft.employeeKeys)) {
    auto* item = new QListWidgetItem(row.text("u_name"), treeUser_);
    item->setData(Qt::UserRole, row.text("u_sn"));
    item->setCheckState(bound.contains(row.text("u_sn")) ? Qt::Checked : Qt::Unchecked);
  }
  treeUser_->setCurrentRow(0);
}

void PartnerEditScreen::activate() {
  PartnerDraft draft;
  if (id_ != 0) {
    draft = readPartner(side_, id_);
  } else if (treeUser_) {
    draft.employeeKeys = defaultEmployeeSn() + u',';
  }
  fillLists(draft);
  tname.load(draft.name);
  tlxr.load(draft.contact);
  ttele.load(draft.phone);
  taddress.load(draft.address);
  tnote.load(draft.note);
  tlwje.load(draft.opening);
  chkDefault.setChecked(draft.isDefault);
  // What was owed when the books began can be changed only as long as nothing else was written for this partner.
  const bool open =
      id_ == 0 ||
      openingIsOpen(side_, lookupValue(compose("select {} from {} where id=?", {side_.sn, side_.table}), id_));
  tlwje.setReadOnly(!open);
  const bool owes = &side_ == &customerSide;
  tlwje.setLabel(open ? (owes ? QStringLiteral("期初应收：") : QStringLiteral("期初应付："))
                      : (owes ? QStringLiteral("应收余额：") : QStringLiteral("应付余额：")));
}

void PartnerEditScreen::readTree(PartnerDraft& draft) const {
  if (!treeUser_) return;
  draft.employeeKeys.clear();
  draft.employeeNames.clear();
  for (int i = 0; i < treeUser_->count(); ++i) {
    const QListWidgetItem* item = treeUser_->item(i);
    if (item->checkState() != Qt::Checked) continue;
    draft.employeeKeys += item->data(Qt::UserRole).toString() + u',';
    draft.employeeNames += item->text() + u',';
  }
}

void PartnerEditScreen::saveValue() {
  if (mode_ == Mode::Modify && id_ == 0) return reject();  // opened without a partner to change
  if (!checkFields()) return;
  PartnerDraft draft = id_ == 0 ? PartnerDraft{} : readPartner(side_, id_);
  draft.name = tname.trimmed();
  draft.contact = tlxr.trimmed();
  draft.phone = ttele.trimmed();
  draft.address = taddress.trimmed();
  draft.note = tnote.trimmed();
  draft.zone = comZone.trimmed();
  draft.kindName = comType.text();
  draft.kindKey = comType.key();
  if (comCk.index() >= 0) {  // a warehouse that this operator does not see stays bound
    draft.warehouseKey = comCk.key();
    draft.warehouseName = comCk.text();
  }
  draft.opening = tlwje.number();
  draft.isDefault = chkDefault.isChecked();
  readTree(draft);
  const auto number = savePartner(side_, draft, prompt());
  if (!number) return;
  saved_ = *number;
  accept();
}

}  // namespace jxc
