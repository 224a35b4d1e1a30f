// 应收应付账表: what each partner owed, what came and went in a period, and what is owed at its end; and the repair.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"
#include "masterdata/partner_side.h"

#include <QString>

namespace jxc::partner_books {

/// Boxes of the overview: partners that owe nothing at the end of the period; in the summary also those without a line
/// in it. With an employee there are no opening rows: balances belong to partners only.
inline constexpr unsigned kHidesSettled = 1, kWithIdle = 2;
inline constexpr NoWarehouse kPartnersHaveNoWarehouse{"what a partner owes, he owes the shop, whichever branch sold"};

/// Line by line with the stored running balance, an opening row first for each partner: `k_ghskh`, `name`, `k_rq`,
/// `gl_djh`, `k_fkfs`, `k_djlx`, `k_djtxt`, `k_qcje`, `k_yfje`, `k_sfje`, `k_ljje`, `gl_djh2`, `k_note`, `u_name`,
/// `a_name`, `dsort` (1 on opening rows).
Sql overviewDetail(const PartnerSide& side, const Criteria& criteria);

/// One row a partner: `k_ghskh`, `name`, `qcje` before, `yfje` and `sfje` in the period, `wfje` after it. The last is
/// computed from the others, so a wrong running balance shows as a difference to the detail.
Sql overviewSummary(const PartnerSide& side, const Criteria& criteria);

/// The last moment of a day; an empty day: of all.
QString endOf(const QString& day);
/// In brackets, the ids of each partner's last line up to the end of a day; an empty day: of all.
Sql lastLines(const PartnerSide& side, const QString& day);

/// Lines of the stock ledger of a document, for the pane below the detail; of a bound operator's warehouses only,
/// though what the partner owes is told whole.
Sql documentGoods(const Criteria& criteria, const Warehouses& warehouses);

/// Repair: writes the running balances of one partner, or of all (empty), anew from a date on. Asks; tells when done.
bool recomputePartners(const PartnerSide& side, const QString& partner, const QString& from, Prompt& prompt);

}  // namespace jxc::partner_books
