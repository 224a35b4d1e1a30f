// 业务员提成: what employees have earned in a period: a part of what customers paid, or of the profit of what was sold.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// Kinds of rows, as `hz_flag`: earned by sales; what would be earned by what customers still owe, below zero; earned
/// by profit.
inline constexpr const char16_t *kEarnedBySales = u"1001", *kNotYetEarned = u"1002", *kEarnedByProfit = u"2001";

/// Every employee with a commission who has sold or collected something in the period (`from`, `to`; `employee`), by
/// number and kind. `g_sn`, `hz_txt1`: number and name; `hz_txt2`: the kind in words; `hz_flag`. Yuan: `hz_kc` due,
/// `hz_kczje` received, `hz_rksl` profit, `hz_rkzje` profit beyond the threshold, `hz_ckzje` the commission, which is
/// `xstc` by sales and `lrtc` by profit; `hz_glkc` the threshold in yuan a piece, `hz_glkczje` the rate in percent.
/// `hz_cksl` is 0.
///
/// By sales: the rate on what was received with sales, returns and receipts, receipts by their own employee, without
/// goods that have a commission of their own. By profit: the rate on what each piece earned beyond the threshold, after
/// the discount; whether a piece is beyond it is asked of the price before the discount. Gifts count in neither.
///
/// Nothing is rounded, nothing is written: operators may ask at once. Receipts belong to no warehouse: they count for
/// whoever may see any warehouse that is asked for.
Computation commissions(const Criteria& criteria, const Warehouses& warehouses);

/// What commissions are made up of, line by line and the latest first, asked for in the same way: `rq`, `djh`, `dwmc`
/// (the customer), `zy` (what it is), `u_sn`, `u_name`, `sl` pieces, `yfje`, `sfje`, `lr`, `cglr` beyond the threshold,
/// `xstc`, `lrtc`. They add up to the rows of what is earned.
Sql commissionLines(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
