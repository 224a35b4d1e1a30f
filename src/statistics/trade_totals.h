// 购销统计: what was bought or sold by the stock ledger, as lines and as sums of them. Both sides are one: of purchases
// the partner is the supplier, of sales the customer.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/enquiry.h"

#include <cstdint>

namespace jxc {

/// What lines are summed by. Sums of whatever grouping add up to those of the lines.
enum class TradeBy : std::uint8_t {
  Goods,
  GoodsClass,
  GoodsSupplier,  // the one that the goods themselves name, whoever took them or brought them
  Partner,        // of the document
  PartnerClass,   // what he took or brought of each class
  CustomerType,
  Region,    // of customers
  Employee,  // of the document
  Day,
  Month,
  Year,
  PartnerGoodsDay,   // what a partner brought or took of a goods on a day
  PartnerGoodsMonth  // … in a month
};

/// The row of those that are gone from their list (partners, classes, employees) or that have none (no type, region,
/// supplier), by its key and by its name. As partner, employee or group of the criteria it asks for just these lines.
inline constexpr const char16_t* kOthers = u"其他";

/// Boxes of the enquiries: the group of the criteria is a region, a class of goods without those below it, or a
/// supplier of goods, and not a type of customers; goods that were only bought or only sold are in the stock turn too.
inline constexpr unsigned kGroupIsRegion = 1, kTurnOfAllGoods = 2, kGroupIsClass = 4, kGroupIsSupplier = 8;

/// Rows of the stock ledger, the latest first, with the margin `lrl` of each in percent. Asked for by period,
/// warehouse, class, goods, partner, employee, group, key (of the goods, as the catalogue has it) and kind: the flag of
/// the ledger, "cj" or "ct", "xs" or "xt".
Sql tradeLines(PartnerType side, const Criteria& criteria, const Warehouses& warehouses);

/// Sums of the same lines: quantity `sl`, before tax `je`, tax `taxje`, with tax `zje`, cost `zcb`, profit `lr` (both
/// of sales only), margin `lrl` in percent, 0 where nothing was taken in; signed as the ledger is, so that returns
/// lower them. What a row belongs to: `g_sn` and the goods' other names with their class `gc_name`; `gc_sn`, `gc_name`;
/// `ghs_sn`, `ghs_name`; `kt_name`; `z_name`; `u_sn`, `u_name`; `tjrq` (day, month or year); `rowkey` names a row of
/// several keys.
Sql tradeTotals(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses);

/// Puts into the criteria what a row of the sums stands for: the lines that they ask for then add up to it.
void narrowToSum(TradeBy by, Criteria& criteria, const Row& row);

/// Sums of goods as above with the present stock `kcsl` of the warehouses, ranked by the order of the criteria: "sl",
/// "je" or "lr", the largest first; by quantity where the operator has no right to see the other.
Sql goodsRanking(const Criteria& criteria, const Warehouses& warehouses);

/// How fast goods turn over: bought `cgsl` and sold `xssl` in the period, present stock `kcsl`, and `zzbl`: sold in
/// percent of bought and stock. Goods that are in use and were bought and sold in the period; ordered by one of these
/// columns, the largest first.
Sql stockTurn(const Criteria& criteria, const Warehouses& warehouses);

/// The same as sources of an enquiry.
template <PartnerType Side>
Sql tradeLinesOf(const Criteria& criteria, const Warehouses& warehouses) {
  return tradeLines(Side, criteria, warehouses);
}
template <PartnerType Side, TradeBy By>
Sql tradeTotalsOf(const Criteria& criteria, const Warehouses& warehouses) {
  return tradeTotals(Side, By, criteria, warehouses);
}
template <TradeBy By>
void narrowTo(Criteria& criteria, const Row& row) {
  narrowToSum(By, criteria, row);
}

}  // namespace jxc
