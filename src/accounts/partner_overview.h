// 应收应付账表: what each partner owed, what came and went in a period, and what is owed at its end; and the repair.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"
#include "masterdata/partner_side.h"

#include <QString>

namespace jxc::partner_books {

struct OverviewFilter {
  QString from, to;          // "yyyy-MM-dd"
  QString partner;           // kh_sn or ghs_sn; empty: all
  QString employee;          // u_sn; empty or "-1": all. With one, no opening rows: balances belong to partners only
  QString key;               // part of number or note
  bool hideZero = false;     // partners that owe nothing at the end of the period
  bool allPartners = false;  // summary only: also those without a line in the period
};

/// Line by line with the stored running balance, an opening row first for each partner: `k_ghskh`, `name`, `k_rq`,
/// `gl_djh`, `k_fkfs`, `k_djlx`, `k_djtxt`, `k_qcje`, `k_yfje`, `k_sfje`, `k_ljje`, `gl_djh2`, `k_note`, `u_name`,
/// `a_name`, `dsort` (1 on opening rows).
Sql overviewDetail(const PartnerSide& side, const OverviewFilter& filter);

/// One row a partner: `k_ghskh`, `name`, `qcje` before, `yfje` and `sfje` in the period, `wfje` after it. The last is
/// computed from the others, so a wrong running balance shows as a difference to the detail.
Sql overviewSummary(const PartnerSide& side, const OverviewFilter& filter);

/// Lines of the stock ledger of a document, for the pane below the detail.
Sql documentGoods(const QString& number);

/// Repair: writes the running balances of one partner, or of all (empty), anew from a date on. Asks; tells when done.
bool recomputePartners(const PartnerSide& side, const QString& partner, const QString& from, Prompt& prompt);

}  // namespace jxc::partner_books
