// 往来与资金打印: receivables, payables, receipts, payments and cash slips as papers, and the lists of the accounts.
#pragma once

#include "accounts/cash_lines.h"
#include "accounts/expenses.h"
#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/enquiry.h"
#include "platform/report/report.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace jxc {

// All throw report::TemplateError when the template cannot be loaded.

/// One document of a partner: `ysyfysk` and `ysyfyfk` of what is owed, `ysyfskd` and `ysyffkd` of what was paid.
/// Variables: the company, `djh`, `rq`, `name`, `lxr`, `tele`, `fkfs`, `je`, `mlje`, `note`, `uName`, `aName`,
/// `checker`, `djh2`, `yf` (the amount in capitals) and `ysyfje`: the partner's balance, with a document of what is
/// owed counted in although it waits for its audit.
report::Report partnerDocumentReport(const PartnerSide& side, partner_books::Kind kind, const QString& number);

/// The receipt (payment) that was made last for one sale or purchase: `khsk`, `ghsfukuan`. As above, and what that
/// document was due (`djyf`), had paid at once (`djsf`) and has collected by now (`djhk`), what is left (`djwf`).
report::Report settlementReport(const PartnerSide& side, const QString& settled);

/// A cash slip (`xjyhd`) of a line that is saved, or of the form's inputs; a transfer names both accounts.
report::Report cashSlipReport(const QString& number);
report::Report cashSlipReport(const cash::LineDraft& draft);

/// The slip of an expense or income (`fysrd`) that is saved, or of the form's inputs. Variables: the company, `title`,
/// `djh`, `rq`, `lx` (its type), `bm` (the department), `kmmc`, `je` as it was typed, `yf` (the same in capitals),
/// `uName`, `note`, `aName`.
report::Report expenseSlipReport(const QString& number);
report::Report expenseSlipReport(const expenses::Draft& draft);

/// A list as it stands on the screen, with the period that it was asked for: `date1`, `date2`.
report::Report listReport(QStringView name, RowSet rows, const QString& from = {}, const QString& to = {});

/// The template of a statement.
constexpr std::string_view statementPaper(PartnerType side) {
  return side == PartnerType::Customer ? "khdzd" : "ghsdzd";
}
/// What one partner did in a period, and what he owes at its end.
report::Report statementReport(const PartnerSide& side, const Criteria& criteria);
/// One of them for each of these partners (`sn`, `name`), a PDF file each, named by the partner and the period;
/// `progress` gets percent and may stop it by returning false. How many were written; a file that was there before is
/// replaced. Throws std::runtime_error, with a message for the operator, when one cannot be written.
int writeStatements(const PartnerSide& side, const RowSet& partners, const Criteria& criteria, const QString& folder,
                    const std::function<bool(int)>& progress);

/// Price labels (`goodsprice`) of these goods in their order: all fields of the goods, and the company's short name as
/// `company`.
report::Report priceLabelReport(std::span<const std::int64_t> goodsIds);

}  // namespace jxc
