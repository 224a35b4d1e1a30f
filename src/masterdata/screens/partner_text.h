// 往来单位用词: names and words of one side, for descriptions that are made while the program is compiled.
#pragma once

#include "core/joined_text.h"
#include "masterdata/partner_side.h"

namespace jxc {

template <PartnerType Side>
struct PartnerText;

template <>
struct PartnerText<PartnerType::Customer> {
  static constexpr FixedText noun{"客户"}, owed{"应收"}, taken{"收款"}, got{"已收"};
  static constexpr FixedText level{"级别"}, levelName{"kt_name"};
  static constexpr FixedText table{"jxc_khxx"}, column{"kh_"};
  static constexpr FixedText screen{"F_Khgl"};
};

template <>
struct PartnerText<PartnerType::Supplier> {
  static constexpr FixedText noun{"供货商"}, owed{"应付"}, taken{"付款"}, got{"已付"};
  static constexpr FixedText level{"类别"}, levelName{"gt_name"};
  static constexpr FixedText table{"jxc_ghsxx"}, column{"ghs_"};
  static constexpr FixedText screen{"F_Ghsgl"};
};

}  // namespace jxc
