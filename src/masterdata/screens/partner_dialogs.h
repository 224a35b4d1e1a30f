// 往来单位对话框: the mnemonic of a partner and the search by several conditions; both serve both sides.
#pragma once

#include "core/fillers.h"
#include "masterdata/partners.h"
#include "ui/screen.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc {

/// Levels of customers are keyed, types of suppliers are words; the first entry of the latter is "none".
std::vector<ListItem> partnerKinds(const PartnerSide& side);

/// The mnemonic of a partner of either side.
class TF_Ghsgl_Jm : public ui::Screen {
 public:
  TF_Ghsgl_Jm();
  ui::Field& tname = field("tname");
  ui::Field& tjm = field("tjm");
  bool edit(const PartnerSide& side, std::int64_t id);

 private:
  const PartnerSide* side_ = nullptr;
  std::int64_t id_ = 0;
};

/// Search by several conditions at once.
class TF_Ghsgl_Search : public ui::Screen {
 public:
  TF_Ghsgl_Search();
  ui::Field& tname = field("tname");
  ui::Field& tlxr = field("tlxr");
  ui::Field& ttele = field("ttele");
  ui::Field& taddress = field("taddress");
  ui::Field& comType = field("comType");
  ui::Field& comZone = field("comZone");

  /// Starts with what was asked before; the new conditions, or nothing when it was left.
  std::optional<PartnerConditions> ask(const PartnerSide& side, const PartnerConditions& before);

 private:
  void show(const PartnerConditions& conditions);
};

}  // namespace jxc
