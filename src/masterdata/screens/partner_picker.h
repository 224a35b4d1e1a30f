// 选择往来单位: the list behind a supplier or customer input, where one may also be added.
#pragma once

#include "masterdata/partners.h"
#include "ui/picker_screen.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc {

/// Active partners of one side that this operator may see; search by number, name, mnemonic, contact, telephone. F8
/// adds one by the partner's own screen, F9 changes the current one, for who may; the list stands on it then.
class PartnerPicker : public ui::PickerScreen {
 public:
  struct Description {
    std::string_view name, title;
    const PartnerSide* side;
    std::span<const ui::GridSpec> grids;
    int right;  // of the group "qtcz": adding and changing partners of this side
    std::u16string_view refusal;
  };
  explicit PartnerPicker(const Description& description);

 private:
  bool mayEdit();
  void show(const std::optional<QString>& number);  // stands on the one that was saved
  const Description description_;
};

/// Opens the list; name and code of the partner that was taken.
std::optional<ListItem> pickSupplier();
std::optional<ListItem> pickCustomer();
template <PartnerType Side>
inline constexpr auto pickPartner = Side == PartnerType::Customer ? pickCustomer : pickSupplier;

/// Opens the partner's own screen from a document; name and code of the partner that was added.
std::optional<ListItem> addSupplier();
std::optional<ListItem> addCustomer();

}  // namespace jxc
