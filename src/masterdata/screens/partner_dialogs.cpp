#include "masterdata/screens/partner_dialogs.h"

namespace jxc {
namespace partner_dialogs_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kMnemonicFields[] = {
    {"tname", "名称：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tjm", "简码：", FieldKind::Text, "jxc_ghsxx.ghs_jm"},
};
constexpr ui::CommandSpec kMnemonicCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kMnemonic = {.name = "F_Ghsgl_Jm",
                                      .title = "修改简码",
                                      .fields = kMnemonicFields,
                                      .commands = kMnemonicCommands,
                                      .focus = "tjm"};

constexpr ui::FieldSpec kSearchFields[] = {
    {"tname", "名称或简码：", FieldKind::Text, "jxc_ghsxx.ghs_name"},
    {"tlxr", "联系人：", FieldKind::Text, "jxc_ghsxx.ghs_lxr"},
    {"ttele", "电话：", FieldKind::Text, "jxc_ghsxx.ghs_tele"},
    {"taddress", "地址：", FieldKind::Text, "jxc_ghsxx.ghs_address"},
    {"comType", "类别：", FieldKind::Combo},
    {"comZone", "地区：", FieldKind::Combo},
};
constexpr ui::CommandSpec kSearchCommands[] = {
    {"btnClear", "清除条件", "F4"}, {"btnOK", "查找", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kSearch = {.name = "F_Ghsgl_Search",
                                    .title = "高级查找",
                                    .fields = kSearchFields,
                                    .commands = kSearchCommands,
                                    .focus = "tname"};

const ui::Registered<TF_Ghsgl_Jm> kJm{"F_Ghsgl_Jm"};
const ui::Registered<TF_Ghsgl_Search> kSearchScreen{"F_Ghsgl_Search"};

}  // namespace partner_dialogs_detail

std::vector<ListItem> partnerKinds(const PartnerSide& side) {
  if (!side.kindKey.empty()) return fillKeyedCombo("jxc_khtype", "kt_name", {}, "kt_sn", "kt_sn");
  return fillPlainCombo("jxc_ghstype", "gt_name", {}, true, "id");
}

TF_Ghsgl_Jm::TF_Ghsgl_Jm() : Screen(partner_dialogs_detail::kMnemonic) {
  panel().form({"tname", "tjm"}).buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] {
    if (!side_) return reject();
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
  const bool done = showModal();
  side_ = nullptr;
  return done;
}

TF_Ghsgl_Search::TF_Ghsgl_Search() : Screen(partner_dialogs_detail::kSearch) {
  panel().form({"tname", "tlxr ttele", "taddress", "comType comZone"}).buttons("btnClear | btnOK btnCancel");
  on(command("btnClear"), [this] {
    show({});
    tname.focus();
  });
  on(command("btnOK"), [this] { accept(); });
}

std::optional<PartnerConditions> TF_Ghsgl_Search::ask(const PartnerSide& side, const PartnerConditions& before) {
  setWindowTitle(QStringLiteral("查找") + QString::fromUtf16(side.noun));
  comType.setLabel(side.kindKey.empty() ? QStringLiteral("类别：") : QStringLiteral("级别："));
  const auto offered = [](std::vector<ListItem> items) {
    std::vector<ListItem> all{{QStringLiteral("不限"), QString()}};
    for (const auto& item : items)
      if (!item.text.isEmpty()) all.push_back({item.text, item.text});
    return all;
  };
  comType.setItems(offered(partnerKinds(side)));
  comZone.setItems(offered(fillPlainCombo("jxc_zone", "z_name", {}, false, "id")));
  show(before);
  if (!showModal()) return {};
  PartnerConditions wanted;
  wanted.name = tname.trimmed();
  wanted.contact = tlxr.trimmed();
  wanted.phone = ttele.trimmed();
  wanted.address = taddress.trimmed();
  wanted.kind = comType.key();
  wanted.zone = comZone.key();
  return wanted;
}

void TF_Ghsgl_Search::show(const PartnerConditions& conditions) {
  tname.load(conditions.name);
  tlxr.load(conditions.contact);
  ttele.load(conditions.phone);
  taddress.load(conditions.address);
  comType.setKey(conditions.kind);
  comZone.setKey(conditions.zone);
}

}  // namespace jxc
