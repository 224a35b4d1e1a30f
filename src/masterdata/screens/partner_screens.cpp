#include "masterdata/screens/partner_screens.h"

#include "core/fillers.h"
#include "core/text.h"

namespace jxc {
namespace partner_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- customers ---------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kListFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"chkForbid", "显示禁用", FieldKind::Check},
};
constexpr ui::ColumnSpec kCustomerColumns[] = {
    {"kh_sn", "客户编号"},
    {"kh_name", "客户名称", ColumnKind::Text, 24},
    {"kh_jm", "简码"},
    {"kt_name", "级别"},
    {"kh_lxr", "联系人"},
    {"kh_tele", "电话"},
    {"kh_address", "地址", ColumnKind::Text, 24},
    {"z_name", "地区"},
    {"kh_lwje", "应收余额", ColumnKind::Money, 0, true},
    {"kh_uname", "业务员"},
    {"ck_name", "所属仓库"},
    {"kh_default", "默认", ColumnKind::Flag},
    {"kh_forbid", "禁用", ColumnKind::Flag},
    {"kh_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kCustomerGrids[] = {{"gridKh", "客户列表", kCustomerColumns, "还没有客户，按F2增加"}};
constexpr ui::CommandSpec kListCommands[] = {
    {"btnAdd", "增加", "F2"},          {"btnModi", "修改", "F3"},    {"btnDele", "删除", "Ctrl+D"},
    {"btnRForbid", "禁用/启用", "F6"}, {"btnRJm", "修改简码", "F7"}, {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kCustomerList = {.name = "F_Khgl",
                                          .title = "客户设置",
                                          .fields = kListFields,
                                          .grids = kCustomerGrids,
                                          .commands = kListCommands,
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
constexpr ui::ScreenSpec kCustomerEdit = {
    .name = "F_Khgl_Add", .title = "客户资料", .fields = kCustomerFields, .commands = kEditCommands, .focus = "tname"};

// ---- suppliers ---------------------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kSupplierColumns[] = {
    {"ghs_sn", "供货商编号"},
    {"ghs_name", "供货商名称", ColumnKind::Text, 24},
    {"ghs_jm", "简码"},
    {"gt_name", "类别"},
    {"ghs_lxr", "联系人"},
    {"ghs_tele", "电话"},
    {"ghs_address", "地址", ColumnKind::Text, 24},
    {"z_name", "地区"},
    {"ghs_lwje", "应付余额", ColumnKind::Money, 0, true},
    {"ck_name", "所属仓库"},
    {"ghs_default", "默认", ColumnKind::Flag},
    {"ghs_forbid", "禁用", ColumnKind::Flag},
    {"ghs_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kSupplierGrids[] = {{"gridGhs", "供货商列表", kSupplierColumns, "还没有供货商，按F2增加"}};
constexpr ui::ScreenSpec kSupplierList = {.name = "F_Ghsgl",
                                          .title = "供货商设置",
                                          .fields = kListFields,
                                          .grids = kSupplierGrids,
                                          .commands = kListCommands,
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
constexpr ui::ScreenSpec kSupplierEdit = {.name = "F_Ghsgl_Add",
                                          .title = "供货商资料",
                                          .fields = kSupplierFields,
                                          .commands = kEditCommands,
                                          .focus = "tname"};

// ---- mnemonic ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kMnemonicFields[] = {
    {"tname", "名称：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tjm", "简码：", FieldKind::Text, "jxc_ghsxx.ghs_jm"},
};
constexpr ui::ScreenSpec kMnemonic = {
    .name = "F_Ghsgl_Jm", .title = "修改简码", .fields = kMnemonicFields, .commands = kEditCommands, .focus = "tjm"};

/// Levels of customers are keyed, types of suppliers are words; the first entry of the latter is "none".
std::vector<ListItem> kinds(const PartnerSide& side) {
  if (!side.kindKey.empty()) return fillKeyedCombo("jxc_khtype", "kt_name", {}, "kt_sn", "kt_sn");
  return fillPlainCombo("jxc_ghstype", "gt_name", {}, true, "id");
}

struct TF_Khgl : PartnerListScreen {
  TF_Khgl() : PartnerListScreen(kCustomerList, customerSide, "F_Khgl_Add") {}
};
struct TF_Ghsgl : PartnerListScreen {
  TF_Ghsgl() : PartnerListScreen(kSupplierList, supplierSide, "F_Ghsgl_Add") {}
};
struct TF_Khgl_Add : PartnerEditScreen {
  TF_Khgl_Add() : PartnerEditScreen(kCustomerEdit, customerSide) {}
};
struct TF_Ghsgl_Add : PartnerEditScreen {
  TF_Ghsgl_Add() : PartnerEditScreen(kSupplierEdit, supplierSide) {}
};

const ui::Registered<TF_Khgl> kKhgl{"F_Khgl"};
const ui::Registered<TF_Ghsgl> kGhsgl{"F_Ghsgl"};
const ui::Registered<TF_Khgl_Add> kKhglAdd{"F_Khgl_Add"};
const ui::Registered<TF_Ghsgl_Add> kGhsglAdd{"F_Ghsgl_Add"};
const ui::Registered<TF_Ghsgl_Jm> kJm{"F_Ghsgl_Jm"};

}  // namespace partner_screens_detail

PartnerListScreen::PartnerListScreen(const ui::ScreenSpec& spec, const PartnerSide& side, std::string_view editScreen)
    : ListScreen(spec, [this](const QString& typed) { return query(typed); }), side_(side) {
  const auto edit = [editScreen](std::int64_t id) { return ui::screenAs<PartnerEditScreen>(editScreen).edit(id); };
  chkForbid.onChanged([this] { refresh(); });
  whole("btnAdd", [edit] { return edit(0); });
  row("btnModi", edit);
  row("btnDele", [this](std::int64_t id) { return deletePartner(side_, id, prompt()); });
  row("btnRForbid", [this](std::int64_t id) {
    togglePartnerForbidden(side_, id);
    chkForbid.setChecked(true);  // the row stays in sight, and can be enabled again
    return true;
  });
  row("btnRJm", [this](std::int64_t id) { return ui::screenAs<TF_Ghsgl_Jm>("F_Ghsgl_Jm").edit(side_, id); });
  rowActivated("btnModi");
  list.setRowLook(
      [this](const Row& row) { return row.flag(side_.forbidden) ? ui::RowLook::Muted : ui::RowLook::Normal; });
}

ui::GridQuery PartnerListScreen::query(const QString& typed) const {
  return partnerListStatement(side_, chkForbid.isChecked(), typed);
}

PartnerEditScreen::PartnerEditScreen(const ui::ScreenSpec& spec, const PartnerSide& side) : Screen(spec), side_(side) {
  panel()
      .form({"tname", "tlxr ttele", "taddress", "comType comZone", "comCk tlwje", "tnote", "chkDefault"})
      .buttons("| btnOK btnCancel");
  btnOK.setProperty("main", true);
  on(btnOK, [this] { saveValue(); });
}

bool PartnerEditScreen::edit(std::int64_t id) {
  id_ = id;
  const bool done = showModal();
  id_ = 0;  // opened by its name alone it stands on a new partner
  return done;
}

void PartnerEditScreen::activate() {
  saved.clear();
  comType.setItems(partner_screens_detail::kinds(side_));
  comZone.setItems(fillPlainCombo("jxc_zone", "z_name", {}, true, "id"));
  comCk.setItems(fillWarehouseCombo(QStringLiteral("所有仓库")));

  const bool isNew = id_ == 0;
  setWindowTitle((isNew ? QStringLiteral("增加") : QStringLiteral("修改")) + QString::fromUtf8(spec().title.data()));
  const PartnerDraft draft = isNew ? PartnerDraft{} : readPartner(side_, id_);
  tname.load(draft.name);
  tlxr.load(draft.contact);
  ttele.load(draft.phone);
  taddress.load(draft.address);
  tnote.load(draft.note);
  comZone.setText(draft.zone);
  comCk.setKey(draft.warehouseKey);
  tlwje.load(draft.opening);
  chkDefault.setChecked(draft.isDefault);
  const auto& items = comType.items();
  const auto kind =
      std::find_if(items.begin(), items.end(), [&](const ListItem& i) { return i.text == draft.kindName; });
  comType.setIndex(kind == items.end() ? 0 : static_cast<int>(kind - items.begin()));

  // What was owed when the books began can be changed only as long as nothing else was written for this partner.
  const bool open =
      isNew || openingIsOpen(side_, lookupValue(compose("select {} from {} where id=?", {side_.sn, side_.table}), id_));
  tlwje.setReadOnly(!open);
}

void PartnerEditScreen::saveValue() {
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
  draft.warehouseKey = comCk.key();
  draft.warehouseName = comCk.text();
  draft.opening = tlwje.number();
  draft.isDefault = chkDefault.isChecked();
  const auto number = savePartner(side_, draft, prompt());
  if (!number) return;
  saved = *number;
  accept();
}

TF_Ghsgl_Jm::TF_Ghsgl_Jm() : Screen(partner_screens_detail::kMnemonic) {
  panel().form({"tname", "tjm"}).buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] {
    if (!side_) return;
    setPartnerMnemonic(*side_, id_, tjm.trimmed().toUpper());
    accept();
  });
}

bool TF_Ghsgl_Jm::edit(const PartnerSide& side, std::int64_t id) {
  const RowSet rows =
      openSelect(compose("select {} as name,{} as jm from {} where id=?", {side.name, side.jm, side.table}), id);
  if (rows.isEmpty()) return false;
  side_ = &side;
  id_ = id;
  tname.setText(rows.front().text("name"));
  tjm.load(rows.front().text("jm"));
  return showModal();
}

}  // namespace jxc
