// 购销统计: what was bought or sold by the stock ledger, as lines and as sums of them. Both sides are one: of purchases
// the partner is the supplier, of sales the customer.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/enquiry.h"
#include "stock/document_list.h"

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
  Document,
  Day,
  Month,
  Year,
  PartnerGoodsDay,   // what a partner brought or took of a goods on a day
  PartnerGoodsMonth  // … in a month
};

/// Boxes of the enquiries: the group of the criteria is a region, a class of goods without those below it, or a
/// supplier of goods, and not a type of customers; goods that were only bought or only sold are in the stock turn too;
/// so are suppliers with neither in the list of suppliers.
inline constexpr unsigned kGroupIsRegion = 1, kTurnOfAllGoods = 2, kGroupIsClass = 4, kGroupIsSupplier = 8,
                          kEverySupplier = 16, kAsDocuments = 32;

/// Rows of the stock ledger, the latest first (in the order "asc" the oldest), with the margin `lrl` of each in
/// percent. Asked for by period, warehouse, class, goods, document (its number, or a part of its number or remark),
/// partner, employee, group, key (of the goods, as the catalogue has it) and kind: the flag of the ledger, "cj" or
/// "ct", "xs" or "xt".
Sql tradeLines(PartnerType side, const Criteria& criteria, const Warehouses& warehouses);

/// What a list of documents is asked for, put to the ledger: the key is looked for in the document (number, remark,
/// partner), `group` in its goods, the kind is its prefix ("XS"), and ordered by audit the period is that of the audit.
Criteria asDocuments(Criteria criteria);

/// Lines of sales for a list of documents: as above, in its order, each with its unrounded margin, the class of its
/// goods and where the customer is to be found (`gc_name`, `kh_address`, `kh_lxr`, `kh_tele`); `djh`, `rq`, `rowkey`.
Sql documentSales(const Criteria& criteria, const Warehouses& warehouses);

/// Sums of the same lines: quantity `sl`, before tax `je`, tax `taxje`, with tax `zje`, cost `zcb`, profit `lr` (both
/// of sales only), margin `lrl` in percent, 0 where nothing was taken in; signed as the ledger is, so that returns
/// lower them. What a row belongs to: `g_sn` and the goods' other names with their class `gc_name`; `gc_sn`, `gc_name`;
/// `ghs_sn`, `ghs_name`; `kt_name`; `z_name`; `u_sn`, `u_name`; `djh` with `tjrq`, `ghs_name`, `u_name`; `tjrq` (day,
/// month or year); `rowkey` names a row of several keys. Goods that were bought tell the last time, `rq`.
/// Who is gone from his list, or has none (no type, supplier), is the row kOthers; customers without a region are a row
/// "无地区" of their own.
Sql tradeTotals(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses);

/// The same sums of partners' goods by day or by month, the latest days ahead of the rest: a year has as many of them
/// as lines.
Computation latestFirst(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses);

/// Puts into the criteria what a row of the sums stands for: the lines that they ask for then add up to it.
void narrowToSum(TradeBy by, Criteria& criteria, const Row& row);

/// Sums of goods as above with the present stock `kcsl` of the warehouses, ranked by the order of the criteria: "sl",
/// "je" or "lr", the largest first; by quantity where the operator has no right to see the other.
Sql goodsRanking(const Criteria& criteria, const Warehouses& warehouses);

/// What was bought from each supplier and how his goods sold: bought by the supplier of the document, `jhsl`, `jhje`
/// (with tax); sold by the one that the goods name, `xssl`, `xsje` (with tax), `je`, `zcb`, `lr`, `lrl`; `wcl`: sold in
/// percent of bought, 0 where nothing was bought. The partner of the criteria is the supplier; with `kEverySupplier`
/// also those without either.
Sql supplierTrade(const Criteria& criteria, const Warehouses& warehouses);
/// The same figures of each goods, for a supplier's row …
Sql supplierGoods(const Criteria& criteria, const Warehouses& warehouses);
/// … and its lines of the ledger, the latest first: `jhsl`, `jhje` of what was bought, `xssl` … of what was sold.
Sql supplierLines(const Criteria& criteria, const Warehouses& warehouses);
/// The criteria of those, for the sales that they tell of.
Criteria salesOfSupplier(Criteria criteria);

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
template <PartnerType Side, TradeBy By>
Computation latestFirstOf(const Criteria& criteria, const Warehouses& warehouses) {
  return latestFirst(Side, By, criteria, warehouses);
}
template <TradeBy By>
void narrowTo(Criteria& criteria, const Row& row) {
  narrowToSum(By, criteria, row);
}

}  // namespace jxc
