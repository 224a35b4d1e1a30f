#include "masterdata/screens/partner_screens.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "masterdata/screens/partner_dialogs.h"
#include "masterdata/screens/partner_text.h"
#include "ui/joined_tables.h"

#include <QListWidget>

#include <algorithm>

namespace jxc {
namespace partner_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- descriptions ------------------------------------------------------------------------------------------------

template <PartnerType Side, FixedText Name>
constexpr std::string_view inputOf = joined<PartnerText<Side>::table, ".", PartnerText<Side>::column, Name>;

constexpr ui::FieldSpec kListFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSx", "筛选：", FieldKind::Combo},
};

template <PartnerType Side>
constexpr auto kColumns = [] {
  using Text = PartnerText<Side>;
  using ui::ColumnSpec;
  constexpr std::array first{
      ColumnSpec{partnerColumn<Side, "sn">, joined<Text::noun, "编号">},
      ColumnSpec{partnerColumn<Side, "name">, joined<Text::noun, "名称">, ColumnKind::Text, 24},
      ColumnSpec{Text::levelName.letters, Text::level.letters},
      ColumnSpec{partnerColumn<Side, "lxr">, "联系人"},
      ColumnSpec{partnerColumn<Side, "tele">, "电话"},
      ColumnSpec{partnerColumn<Side, "lwje">, joined<Text::owed, "余额">, ColumnKind::Money, 0, {.sum = true}},
      ColumnSpec{"z_name", "地区"},
      ColumnSpec{partnerColumn<Side, "address">, "地址", ColumnKind::Text, 24},
      ColumnSpec{partnerColumn<Side, "jm">, "简码"}};
  constexpr std::array last{ColumnSpec{"ck_name", "所属仓库"},
                            ColumnSpec{partnerColumn<Side, "default">, "默认", ColumnKind::Flag},
                            ColumnSpec{partnerColumn<Side, "forbid">, "禁用", ColumnKind::Flag},
                            ColumnSpec{partnerColumn<Side, "note">, "备注", ColumnKind::Text, 24}};
  // Only customers are bound to salesmen.
  if constexpr (Side == PartnerType::Customer)
    return ui::joinedTables(first, std::array{ColumnSpec{"kh_uname", "业务员"}}, last);
  else
    return ui::joinedTables(first, last);
}();

template <PartnerType Side>
constexpr ui::GridSpec kGrids[] = {{Side == PartnerType::Customer ? "gridKh" : "gridGhs",
                                    joined<PartnerText<Side>::noun, "列表">, kColumns<Side>,
                                    joined<"还没有", PartnerText<Side>::noun, "，按F2增加">}};

template <PartnerType Side>
constexpr auto kCommands = [] {
  using Text = PartnerText<Side>;
  using ui::CommandSpec;
  constexpr std::array first{CommandSpec{"btnAdd", "增加", "F2"},
                             CommandSpec{"btnModi", "修改", "F3"},
                             CommandSpec{"btnDele", "删除", "Ctrl+D"},
                             CommandSpec{"btnRForbid", "禁用/启用", "F6",
                                         joined<"禁用的", Text::noun, "不再出现在单据的", Text::noun, "列表中">},
                             CommandSpec{"btnRJm", "修改简码", "F7"},
                             CommandSpec{"btnSearch", "高级查找", "Ctrl+F"},
                             CommandSpec{"btnType", joined<Text::noun, Text::level>, "F8"}};
  constexpr std::array last{CommandSpec{"btnZone", "地区", "Ctrl+R"}, CommandSpec{"btnImport", "导入", "F9"},
                            CommandSpec{"btn_Export", "导出", "Ctrl+S"}, CommandSpec{"btnCancel", "退出", "Esc"}};
  if constexpr (Side == PartnerType::Supplier)
    return ui::joinedTables(first, std::array{CommandSpec{"btnCopy", "复制客户", "F4", "把客户资料复制成供货商"}},
                            last);
  else
    return ui::joinedTables(first, last);
}();

template <PartnerType Side>
constexpr ui::ScreenSpec kList = {.name = PartnerText<Side>::screen.letters,
                                  .title = joined<PartnerText<Side>::noun, "设置">,
                                  .fields = kListFields,
                                  .grids = kGrids<Side>,
                                  .commands = kCommands<Side>,
                                  .focus = "tkey"};

template <PartnerType Side>
constexpr ui::FieldSpec kFields[] = {
    {"tname", joined<PartnerText<Side>::noun, "名称：">, FieldKind::Text, inputOf<Side, "name">},
    {"tlxr", "联系人：", FieldKind::Text, inputOf<Side, "lxr">},
    {"ttele", "电话：", FieldKind::Text, inputOf<Side, "tele">},
    {"taddress", "地址：", FieldKind::Text, inputOf<Side, "address">},
    {"comType", joined<PartnerText<Side>::level, "：">, FieldKind::Combo},
    {"comZone", "地区：", FieldKind::EditCombo, joined<PartnerText<Side>::table, ".z_name">},
    {"comCk", "所属仓库：", FieldKind::Combo},
    {"tlwje", joined<"期初", PartnerText<Side>::owed, "：">, FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, inputOf<Side, "note">},
    {"chkDefault", joined<"默认", PartnerText<Side>::noun>, FieldKind::Check},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

template <PartnerType Side>
constexpr ui::ScreenSpec kAdd = {.name = joined<PartnerText<Side>::screen, "_Add">,
                                 .title = joined<"增加", PartnerText<Side>::noun>,
                                 .fields = kFields<Side>,
                                 .commands = kEditCommands,
                                 .focus = "tname"};
template <PartnerType Side>
constexpr ui::ScreenSpec kModi = {.name = joined<PartnerText<Side>::screen, "_Modi">,
                                  .title = joined<"修改", PartnerText<Side>::noun, "资料">,
                                  .fields = kFields<Side>,
                                  .commands = kEditCommands,
                                  .focus = "tname"};

// ---- both --------------------------------------------------------------------------------------------------------

/// What the filter offers: states, then every level (type) and every region. A key tells what an entry is.
constexpr QChar kKindMark = u'k';
constexpr QChar kZoneMark = u'z';

std::vector<ListItem> filterItems(const PartnerSide& side) {
  const bool owes = side.isCustomer();
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
  return std::string(side.isCustomer() ? "F_Khgl_" : "F_Ghsgl_") + std::string(what);
}

struct TF_Khgl : PartnerListScreen {
  TF_Khgl() : PartnerListScreen(kList<PartnerType::Customer>, customerSide) {}
};
struct TF_Ghsgl : PartnerListScreen {
  TF_Ghsgl() : PartnerListScreen(kList<PartnerType::Supplier>, supplierSide) {
    whole("btnCopy", [] { return ui::openScreen("F_Ghsgl_Copy"); });
  }
};
template <PartnerType Side>
struct AddOf : PartnerEditScreen {
  AddOf() : PartnerEditScreen(kAdd<Side>, partnerSide(Side), Mode::Add) {}
};
template <PartnerType Side>
struct ModifyOf : PartnerEditScreen {
  ModifyOf() : PartnerEditScreen(kModi<Side>, partnerSide(Side), Mode::Modify) {}
};
using TF_Khgl_Add = AddOf<PartnerType::Customer>;
using TF_Khgl_Modi = ModifyOf<PartnerType::Customer>;
using TF_Ghsgl_Add = AddOf<PartnerType::Supplier>;
using TF_Ghsgl_Modi = ModifyOf<PartnerType::Supplier>;

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
  const bool owes = side_.isCustomer();
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
