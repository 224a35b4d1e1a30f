// 采购进货: the rules of the purchase receipt, for any front end: prices, goods list, save; the rest is what all
// trading documents do.
#pragma once

#include "engine/row_set.h"
#include "stock/trading_rules.h"

#include <QString>

namespace jxc::receipt {

// Words of all trading documents, known here under their short names.
using jxc::AuditDraft, jxc::CopyResult, jxc::LineDraft, jxc::LineResult, jxc::Lines, jxc::PickingMemory, jxc::Scan,
    jxc::ScanResult, jxc::Settlement, jxc::stagedLines, jxc::unstage, jxc::WaitingFilter;
using ReceiptDraft = TradingDraft;

/// As its screens ask for it.
const TradingRules& rules();

/// Price that a new line proposes: average, last or preset purchase price by parameter, rounded to money digits.
double defaultPrice(const QString& goods);

/// The last ten audited receipts of a goods; of this supplier only when `cs_employ` is on.
Sql receiptHistory(const QString& goods, const QString& supplier);
/// The supplier's quotations for a goods.
Sql supplierQuotes(const QString& goods, const QString& supplier);

// The same rules for callers that have a number and no screen: consoles, benchmarks, stories of other documents.

LineDraft newLine(const QString& goods);
LineResult addLine(Lines where, const QString& number, const QString& date, const LineDraft& draft);
Sql waitingLines(const QString& number);
/// Sum of the lines without the balancing line.
double payable(const QString& number);
ReceiptDraft newReceipt(const QString& lastDate = {});
/// Save: refusals, question, number, head, state of the lines, balancing, audit at once by parameter.
SaveResult saveReceipt(const ReceiptDraft& draft, Prompt& prompt);

}  // namespace jxc::receipt
