// 往来账务: everything done with one partner or with all: documents, freight and packing, what is open and for how
// long, who has not bought for long. Both sides are one.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <utility>
#include <vector>

namespace jxc::partner_books {

/// "全部客户" with an empty `sn`, then the partners that the operator may see, disabled ones last: `sn`, `name`, `jm`,
/// `tele`, `ye` (owed now, yuan), `forbid`.
Sql statementPartners(const PartnerSide& side);

/// Audited documents of a side as `listedDocuments` gives them, by date; the order "desc" turns them round. For papers
/// besides: `kh_name`, `kh_sn` and `fktype` of customers, `zflx` of suppliers, in the words of a statement. Whoever may
/// open the statement sees both kinds.
Sql statementDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);
/// What a list of their kinds offers.
std::vector<ListItem> statementKinds(const PartnerSide& side);
/// The goods of one of them.
Sql statementGoods(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);

/// What stands below a statement: what the partner owes (or is owed) at the end of that day, yuan; of all partners the
/// sum of each one's last balance. An empty day: now.
double statementBalance(const PartnerSide& side, const QString& partner, const QString& day);
/// Variables of a statement's paper: `bTitle` "客户对账单'张三'", and `sLjjeAll`, the balance, empty for whoever must
/// not see the amounts.
std::vector<std::pair<QString, QString>> statementWords(const PartnerSide& side, const Criteria& criteria);
/// Who gets a statement when all do: partners with a document in the period or a balance at its end; `sn` and `name`.
RowSet partnersOfStatements(const PartnerSide& side, const Criteria& criteria);

/// Sales (purchases) with freight or packing, and their sums by partner and payer: `ghs_sn`, `ghs_name`, `yffs` (who
/// pays), `yfje`, `sfje`, `yhje`, `yf`, `bzf`, `sl` (pieces); documents `djh` and `rq`, sums `rowkey`. Asked for by
/// period, partner, key (of the partner), warehouse; `group` is the payer as `yffs` says it.
Sql chargedDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);
Sql chargeTotals(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);

/// What audited documents leave open today, by partner and age in days: `w30` up to 30, `w60` up to 60, `w90` up to 90,
/// `wmore`, and `wfje` all together; returns that were not paid out lower it. `num` documents, `rq` the oldest one,
/// `ye` the partner's present balance, and `qt` what lies between: owed or paid without a document.
Sql openByAge(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);
/// The documents behind it, the oldest first.
Sql openDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses);

/// Box of the dormant customers: also those who never bought.
inline constexpr unsigned kNeverBought = 1;
/// Customers whose last purchase or return lies more days back than the amount of the criteria (0: none today), the
/// longest first: `kh_sn`, `kh_name`, `kt_name`, `z_name`, `kh_lxr`, `kh_tele`, `rq` (the last time), `days`, and what
/// they bought in all: `sl`, `je`, `zje`, `lr`.
Sql dormantCustomers(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc::partner_books
