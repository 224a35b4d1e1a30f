// 营业数据: what the shop did in a period and what it stands at, block by block; the figures of 营业分析 and of the day
// on the main window come from here, so that they are the same.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// All blocks of a period as one row; yuan and pieces, and 0 where there was nothing. Asked for by period and
/// warehouse:
///
///     cgds cgsl cgje  xsds xssl xsje   documents, pieces and yuan with tax of purchases and of sales …
///     ctds ctsl ctje  xtds xtsl xtje   … of what went back to suppliers and what came back from customers
///     cghjsl cghjje  xshjsl xshjje     the first less the second
///     dbds dbsl  bsds bssl bsje  byds bysl byje   transfers by the warehouse that they leave, losses, overflows
///     kcsl kcje                        the stock of this moment at cost, whatever the period
///     fkds fkje yfje sfje              payments to suppliers; what came to be owed to them, what was paid
///     skds skje ysje ssje              receipts from customers; what came to be owed by them, what was paid
///     xscb xslr xszje lrl              of sales less returns by the ledger: cost, profit, yuan with tax, and the
///                                      margin on these in percent (毛利率(含税)), 0 without sales
///
/// What partners owe and pay belongs to the whole shop.
Sql businessFigures(const Criteria& criteria, const Warehouses& warehouses);

/// Day by day: `rq`; bought `cgsl`, `cgje` before tax, `cgtaxje`, `cgzje` with tax; sold `xssl`, `xsje`, `xstaxje`,
/// `xszje`; cost `xscb`, profit `xslr`, margin `lrl` on the amount with tax. Returns lower all of them. Days without
/// trade are rows too, so that a chart has every day: those of the period, where it is no longer than three years, else
/// those between the first and the last with trade. A period without any has no row.
Computation businessDays(const Criteria& criteria, const Warehouses& warehouses);

/// Month by month, the latest first: `js_rq`, the stock `sl` and its value `zje` at the end of the month, and the
/// columns of a day; what was not traded is null. Here the margin is on the amount before tax (毛利率(不含税)), and the
/// cost is that amount less the profit. Months are those that have a month-end stock; the period is taken as months.
Computation businessMonths(const Criteria& criteria, const Warehouses& warehouses);

/// The purchases, sales and returns behind a day or a month, the latest first: rows of the ledger with their kind
/// `lx`, and their yuan with tax as `cgzje` or `xszje`, whichever side they are of.
Sql businessLines(const Criteria& criteria, const Warehouses& warehouses);

/// What a day comes to, for the main window: rows of `what`, `name`, `ds`, `sl`, `je`. "xs" and "xt" are sales and
/// returns, "lr" the profit, all as businessFigures has them; "zj" an account of the shop with what came in less what
/// went out, as its ledger sums it; "ds" the documents that wait, "bj" the goods below their limit, "ys" what customers
/// owe now and "yf" what is owed to suppliers. `criteria.from` and `to` are the day.
Computation dayFigures(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
