// 应收应付账表、发票账表: what each partner owed (or had still to be invoiced), what came and went in a period, and
// what is left at its end; and the repair. One piece for both ledgers over partners.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <span>
#include <string_view>

namespace jxc::partner_books {

/// A ledger over partners: its table and columns, and what it is called. A balance runs along the lines that count:
/// opening plus raised minus lowered.
struct PartnerLedger {
  std::string_view table;
  std::string_view partner, type, date;                // k_ghskh, k_type, k_rq
  std::string_view opening, raised, lowered, running;  // k_qcje, k_yfje, k_sfje, k_ljje
  std::string_view words;                              // k_djtxt: the kind in words, by which carried lines are known
  std::string_view note;                               // looked through for the key, beside the number
  std::span<const std::string_view> told;              // further columns that say on an opening row what it is …
  std::span<const std::string_view> empty;             // … and those that have nothing to say there
  std::string_view counted;                            // the flag of lines that count; empty: all do
  QString (*openingWord)(const PartnerSide& side);     // "期初应收", "期初应付", "期初应开"
  const char16_t* repaired;                            // what the repair may change, in its question
  void (*recompute)(const QString& partner, PartnerType type, const QString& date);
};
extern const PartnerLedger owedLedger;     // jxc_ysyfk: what is owed
extern const PartnerLedger invoiceLedger;  // jxc_fpdjb: what is still to invoice

/// Boxes of the overview: partners that owe nothing at the end of the period; in the summary also those without a line
/// in it. With an employee there are no opening rows: balances belong to partners only.
inline constexpr unsigned kHidesSettled = 1, kWithIdle = 2;
inline constexpr NoWarehouse kPartnersHaveNoWarehouse{"what a partner owes, he owes the shop, whichever branch sold"};

/// What a closing carried forward raises nothing in a period that begins before it: it is the opening.
///
/// Line by line with the stored running balance, an opening row first for each partner. Columns have the ledger's
/// names: partner, `name`, date, `gl_djh`, what is told, the four amounts, note, `u_name`, `a_name`, `dsort` (1 on
/// opening rows, 2 on lines).
Sql overviewDetail(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria);

/// The lines that do not count yet, in the same columns, newest first; they have no balance, and `dsort` is 3.
/// Partners that are switched off have theirs here too: nobody else leads to them.
Sql waitingLines(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria);

/// One row a partner: `k_ghskh`, `name`, `qcje` before, `yfje` and `sfje` in the period, `wfje` after it. The last is
/// computed from the others, so a wrong running balance shows as a difference to the detail.
Sql overviewSummary(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria);

/// The last moment of a day; an empty day: of all.
QString endOf(const QString& day);
/// In brackets, the ids of each partner's last line up to the end of a day; an empty day: of all. Each is sought in the
/// index of the partner's lines, so that the years behind cost nothing.
Sql lastLines(const PartnerLedger& ledger, const PartnerSide& side, const QString& day);

/// Lines of the stock ledger of a document, for the pane below the detail; of a bound operator's warehouses only,
/// though what the partner owes is told whole.
Sql documentGoods(const Criteria& criteria, const Warehouses& warehouses);

/// Repair: writes the running balances of one partner, or of all (empty), anew from a date on. Asks; tells when done.
bool recomputePartners(const PartnerLedger& ledger, const PartnerSide& side, const QString& partner,
                       const QString& from, Prompt& prompt);

}  // namespace jxc::partner_books
