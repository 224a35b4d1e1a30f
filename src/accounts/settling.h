// 单据收付款: collecting (or paying) what one sale, purchase or return still leaves open.
#pragma once

#include "core/prompt.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <optional>

namespace jxc::partner_books {

/// A line of the overview as the command finds it.
struct OverviewLine {
  QString number;
  double due = 0, paid = 0;  // k_yfje, k_sfje
};

/// What the settling form shows. Amounts are yuan.
struct Settlement {
  QString number;
  QString partner, partnerName;
  double due = 0, paid = 0, collected = 0;
  double proposed = 0;        // due - paid - collected
  double balance = 0;         // of the partner
  QString account, employee;  // the document's own
};

/// Whether the document of a line leaves anything open; the form's content, or nothing after telling why not.
std::optional<Settlement> openSettlement(const PartnerSide& side, const OverviewLine& line, Prompt& prompt);

/// The same of a document that is known by its number.
std::optional<Settlement> openSettlement(const PartnerSide& side, const QString& number, Prompt& prompt);

struct SettlementDraft {
  QString number, date;
  double amount = 0;
  QString account, employee, note;
  bool writeOff = false;  // 清款: the document counts as settled, the partner's balance does not move
  // What the form showed as open: refused when another station has settled some of it since. Nothing: none was shown.
  std::optional<double> shownOpen = {};
};
/// Makes a receipt (payment) for the document, audited when cs_shdj is on, and adds it to what was collected on the
/// document, with a sentence in its note. More than what is open is allowed: the balance takes it. False when refused.
bool settleDocument(const PartnerSide& side, const SettlementDraft& draft, Prompt& prompt);

}  // namespace jxc::partner_books
