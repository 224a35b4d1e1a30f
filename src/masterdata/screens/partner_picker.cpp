#include "masterdata/screens/partner_picker.h"

#include "core/numbers.h"
#include "core/reading.h"
#include "core/rights.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_screens.h"
#include "masterdata/screens/partner_text.h"
#include "ui/display.h"

namespace jxc {
namespace partner_picker_detail {

using ui::ColumnKind;

template <PartnerType Side>
constexpr ui::ColumnSpec kColumns[] = {
    {partnerColumn<Side, "sn">, "编号", ColumnKind::Text, 10},
    {partnerColumn<Side, "name">, joined<PartnerText<Side>::noun, "名称">, ColumnKind::Text, 26},
    {partnerColumn<Side, "jm">, "简码", ColumnKind::Text, 12},
    {partnerColumn<Side, "lxr">, "联系人", ColumnKind::Text, 12},
    {partnerColumn<Side, "tele">, "联系电话", ColumnKind::Text, 16},
    {PartnerText<Side>::levelName.letters, PartnerText<Side>::level.letters, ColumnKind::Text, 12},
    {partnerColumn<Side, "lwje">, joined<PartnerText<Side>::owed, "余额">, ColumnKind::Money},
};
template <PartnerType Side>
constexpr ui::GridSpec kGrid[] = {{"gridPartners", PartnerText<Side>::noun.letters, kColumns<Side>,
                                   joined<"没有符合条件的", PartnerText<Side>::noun, "，按F8新增">}};
constexpr ui::CommandSpec kMore[] = {{"btnAdd", "新增", "F8"}, {"btnModi", "修改", "F9"}};

ui::PickerSpec specOf(const PartnerPicker::Description& description) {
  return {.screen = {.name = description.name, .title = description.title, .grids = description.grids},
          .query =
              [side = description.side](const QString& typed) {
                return partnerListStatement(*side, {.state = PartnerConditions::State::InUse, .key = typed},
                                            PartnerOrder::MostUsedFirst);
              },
          .more = kMore};
}

class SupplierPicker : public PartnerPicker {
 public:
  SupplierPicker()
      : PartnerPicker({"F_Ghs_Sele", "选择供货商", &supplierSide, kGrid<PartnerType::Supplier>, 2, u"供货商设置！"}) {}
};
class CustomerPicker : public PartnerPicker {
 public:
  CustomerPicker()
      : PartnerPicker({"F_Kh_Sele", "选择客户", &customerSide, kGrid<PartnerType::Customer>, 3, u"客户设置！"}) {}
};

std::optional<ListItem> pick(std::string_view screen, const PartnerSide& side) {
  const auto row = ui::screenAs<PartnerPicker>(screen).pick();
  if (!row) return std::nullopt;
  return ListItem{row->text(side.name), row->text(side.sn)};
}

std::optional<ListItem> added(const PartnerSide& side) {
  const auto number = addPartner(side);
  if (!number) return std::nullopt;
  return ListItem{partnerName(side, *number), *number};
}

const ui::Registered<SupplierPicker> kSupplierPicker{"F_Ghs_Sele"};
const ui::Registered<CustomerPicker> kCustomerPicker{"F_Kh_Sele"};

}  // namespace partner_picker_detail

PartnerPicker::PartnerPicker(const Description& description)
    : PickerScreen(partner_picker_detail::specOf(description)), description_(description) {
  on(command("btnAdd"), [this] {
    if (mayEdit()) show(addPartner(*description_.side));
  });
  on(command("btnModi"), [this] {
    if (list.currentId() != 0 && mayEdit()) show(modifyPartner(*description_.side, list.currentId()));
  });
}

bool PartnerPicker::mayEdit() {
  if (hasRight("qtcz", description_.right)) return true;
  dispMsg(prompt(), words(description_.refusal));
  return false;
}

void PartnerPicker::show(const std::optional<QString>& number) {
  const PartnerSide& side = *description_.side;
  if (!number) return;
  tkey.clear();
  search();
  list.waitLoaded();
  list.selectId(firstIdOf(side.table, side.sn, *number));
  tkey.focus();
}

std::optional<ListItem> pickSupplier() {
  return partner_picker_detail::pick("F_Ghs_Sele", supplierSide);
}
std::optional<ListItem> pickCustomer() {
  return partner_picker_detail::pick("F_Kh_Sele", customerSide);
}

std::optional<ListItem> addSupplier() {
  return partner_picker_detail::added(supplierSide);
}
std::optional<ListItem> addCustomer() {
  return partner_picker_detail::added(customerSide);
}

}  // namespace jxc
