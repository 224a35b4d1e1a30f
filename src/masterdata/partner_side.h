// 往来单位的两面: customers and suppliers are one idea seen from two sides; what differs stands here as data.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/mentions.h"
#include "core/right.h"

#include <span>
#include <string_view>

namespace jxc {

/// Names and words of one side. A customer owes us, we owe a supplier; beyond that the two live the same life.
struct PartnerSide {
  PartnerType which;
  std::string_view type;   // k_type of the partner ledger: "kh", "ghs"
  std::string_view table;  // master table
  std::string_view sn, name, jm, contact, phone, address, note, balance, isDefault, uses, forbidden;  // its columns
  std::string_view kind;     // level or type by name: kt_name, gt_name
  std::string_view kindKey;  // its number where there is one (kt_sn), else empty: supplier types are names only
  std::string_view employeeNames, employeeKeys;  // bound employees; empty on the supplier side
  std::string_view openingPrefix;       // document letters of what is owed, the opening amount among it: YS, YF
  std::string_view paymentPrefix;       // of receipts and payments: SK, FK
  std::string_view settlementLike;      // payment documents that go with a deleted partner: 'SK%', 'FK%'
  const char16_t* noun;                 // 客户, 供货商
  const char16_t* openingWord;          // 期初应收款, 期初应付款
  std::span<const KeyColumn> business;  // a row there means: has done business
  std::string_view diary, quotes;       // tables of contact records and of quoted prices
  const char16_t* dueWord;              // 应收款, 应付款
  const char16_t* paymentWord;          // 收款, 付款
  int cashSign;                         // a payment brings money in (+1) or takes it out (-1)
  std::string_view stockFlag;           // its rows in the stock ledger: xs, cj
  const char16_t* addedDueLog;          // 增加应收款, 增加未审核应付款
  const char16_t* changedDueLog;        // 修改应收款, 修改未审核应付款

  constexpr bool isCustomer() const { return which == PartnerType::Customer; }
};

extern const PartnerSide customerSide;
extern const PartnerSide supplierSide;
inline const PartnerSide& partnerSide(PartnerType which) {
  return which == PartnerType::Customer ? customerSide : supplierSide;
}

/// What is paid for goods is their cost; what they are sold for is their price.
constexpr Right moneyRight(PartnerType side) {
  return side == PartnerType::Customer ? kSeesPrice : kSeesCost;
}

}  // namespace jxc
