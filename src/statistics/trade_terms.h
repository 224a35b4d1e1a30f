// 购销用语: what the statistics of purchases and sales say of the stock ledger, each of it once.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/enquiry.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace jxc {

/// Flags of the rows that were bought or sold, and of those that went back: "('cj','ct')".
constexpr std::string_view tradeFlags(PartnerType side) {
  return side == PartnerType::Supplier ? "('cj','ct')" : "('xs','xt')";
}
/// What a row of them is, by the column of its flag: "采购进货", "顾客退货" …
std::string tradeKind(std::string_view flag);

/// One amount in percent of another, with two decimals; 0 where there is no other one.
std::string percentOf(std::string_view part, std::string_view whole);

/// Rows of the ledger `x` by the class of their goods, and by the key, which is looked for in these columns of the
/// catalogue: what counts is the goods, not how a line calls it, for the line of a gift has a longer name.
void addGoods(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns);

}  // namespace jxc
