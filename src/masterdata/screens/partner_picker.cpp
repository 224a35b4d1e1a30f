#include "masterdata/screens/partner_picker.h"

#include "core/numbers.h"
#include "core/statements.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_screens.h"
#include "ui/display.h"

namespace jxc {
namespace partner_picker_detail {

using ui::ColumnKind;

constexpr ui::ColumnSpec kSupplierColumns[] = {
    {"ghs_sn", "编号", ColumnKind::Text, 10},       {"ghs_name", "供货商名称", ColumnKind::Text, 26},
    {"ghs_jm", "简码", ColumnKind::Text, 12},       {"ghs_lxr", "联系人", ColumnKind::Text, 12},
    {"ghs_tele", "联系电话", ColumnKind::Text, 16}, {"gt_name", "类型", ColumnKind::Text, 12},
    {"ghs_lwje", "应付余额", ColumnKind::Money},
};
constexpr ui::ColumnSpec kCustomerColumns[] = {
    {"kh_sn", "编号", ColumnKind::Text, 10},       {"kh_name", "客户名称", ColumnKind::Text, 26},
    {"kh_jm", "简码", ColumnKind::Text, 12},       {"kh_lxr", "联系人", ColumnKind::Text, 12},
    {"kh_tele", "联系电话", ColumnKind::Text, 16}, {"kt_name", "级别", ColumnKind::Text, 12},
    {"kh_lwje", "应收余额", ColumnKind::Money},
};
constexpr ui::GridSpec kSupplierGrid[] = {
    {"gridPartners", "供货商", kSupplierColumns, "没有符合条件的供货商，按F8新增"}};
constexpr ui::GridSpec kCustomerGrid[] = {{"gridPartners", "客户", kCustomerColumns, "没有符合条件的客户，按F8新增"}};
constexpr ui::CommandSpec kMore[] = {{"btnAdd", "新增", "F8"}, {"btnModi", "修改", "F9"}};

ui::PickerSpec specOf(const PartnerPicker::Description& description) {
  return {
      .screen = {.name = description.name, .title = description.title, .grids = description.grids},
      .query = [side = description.side](const QString& typed) { return partnerListStatement(*side, false, typed); },
      .more = kMore};
}

class SupplierPicker : public PartnerPicker {
 public:
  SupplierPicker() : PartnerPicker({"F_Ghs_Sele", "选择供货商", &supplierSide, kSupplierGrid, "F_Ghsgl_Add"}) {}
};
class CustomerPicker : public PartnerPicker {
 public:
  CustomerPicker() : PartnerPicker({"F_Kh_Sele", "选择客户", &customerSide, kCustomerGrid, "F_Khgl_Add"}) {}
};

std::optional<ListItem> pick(std::string_view screen, const PartnerSide& side) {
  const auto row = ui::screenAs<PartnerPicker>(screen).pick();
  if (!row) return std::nullopt;
  return ListItem{row->text(side.name), row->text(side.sn)};
}

const ui::Registered<SupplierPicker> kSupplierPicker{"F_Ghs_Sele"};
const ui::Registered<CustomerPicker> kCustomerPicker{"F_Kh_Sele"};

}  // namespace partner_picker_detail

PartnerPicker::PartnerPicker(const Description& description)
    : PickerScreen(partner_picker_detail::specOf(description)), description_(description) {
  on(command("btnAdd"), [this] { edit(0); });
  on(command("btnModi"), [this] {
    if (list.currentId() != 0) edit(list.currentId());
  });
}

void PartnerPicker::edit(std::int64_t id) {
  auto& screen = ui::screenAs<PartnerEditScreen>(description_.editScreen);
  if (!screen.edit(id)) return;
  const PartnerSide& side = *description_.side;
  tkey.clear();
  search();
  list.waitLoaded();
  list.selectId(firstIdOf(side.table, side.sn, screen.saved));
  tkey.focus();
}

std::optional<ListItem> pickSupplier() {
  return partner_picker_detail::pick("F_Ghs_Sele", supplierSide);
}
std::optional<ListItem> pickCustomer() {
  return partner_picker_detail::pick("F_Kh_Sele", customerSide);
}

QString partnerName(const PartnerSide& side, const QString& code) {
  return lookupValue(compose("select {} from {} where {}=?", {side.name, side.table, side.sn}), code);
}

}  // namespace jxc
