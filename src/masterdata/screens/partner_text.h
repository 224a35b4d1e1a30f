// 往来单位用词: names and words of one side, for descriptions that are made while the program is compiled.
#pragma once

#include "core/joined_text.h"
#include "core/right.h"
#include "masterdata/partner_side.h"

namespace jxc {

template <PartnerType Side>
struct PartnerText;

template <>
struct PartnerText<PartnerType::Customer> {
  static constexpr FixedText noun{"客户"};
  static constexpr FixedText owed{"应收"};
  static constexpr FixedText taken{"收款"};
  static constexpr FixedText got{"已收"};
  static constexpr FixedText level{"级别"};
  static constexpr FixedText levelName{"kt_name"};
  static constexpr FixedText table{"jxc_khxx"};
  static constexpr FixedText column{"kh_"};
  static constexpr FixedText screen{"F_Khgl"};
};

template <>
struct PartnerText<PartnerType::Supplier> {
  static constexpr FixedText noun{"供货商"};
  static constexpr FixedText owed{"应付"};
  static constexpr FixedText taken{"付款"};
  static constexpr FixedText got{"已付"};
  static constexpr FixedText level{"类别"};
  static constexpr FixedText levelName{"gt_name"};
  static constexpr FixedText table{"jxc_ghsxx"};
  static constexpr FixedText column{"ghs_"};
  static constexpr FixedText screen{"F_Ghsgl"};
};

template <PartnerType Side>
inline constexpr Right seesMoney = moneyRight(Side);

/// A column of the partners' table: partnerColumn<PartnerType::Customer, "name"> is "kh_name".
template <PartnerType Side, FixedText Name>
inline constexpr std::string_view partnerColumn = joined<PartnerText<Side>::column, Name>;

}  // namespace jxc
