// 采购进货: the rules of the purchase receipt, for any front end: prices, lines, barcode, staging, totals, save, audit.
#pragma once

#include "engine/row_set.h"
#include "stock/trading_document.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc::receipt {

// Words of all trading documents, known here under their short names.
using jxc::AuditDraft, jxc::CopyResult, jxc::LineDraft, jxc::LineResult, jxc::Lines, jxc::PickingMemory, jxc::Scan,
    jxc::ScanResult, jxc::Settlement, jxc::stagedLines, jxc::unstage, jxc::WaitingFilter;
using ReceiptDraft = TradingDraft;

// ---- lines -------------------------------------------------------------------------------------------------------

/// Price that a new line proposes: average, last or preset purchase price by parameter, rounded to money digits.
double defaultPrice(const QString& goods);

/// A new line: quantity 0, default price, no discount, the default tax rate (0 for a staged one).
LineDraft newLine(const QString& goods, bool staged = false);

/// Opens a row for changing. Nothing when it is gone.
std::optional<LineDraft> loadLine(Lines where, std::int64_t id);

/// OK of the line dialog for a new line. `number` and `date` are those on the screen; staging rows have no number.
/// A line of a waiting document recomputes its head.
LineResult addLine(Lines where, const QString& number, const QString& date, const LineDraft& draft);
/// OK of the line dialog for an existing row. False: nothing was written (quantity zero, or the row is gone).
bool changeLine(Lines where, std::int64_t id, const LineDraft& draft);

/// A cell edit ("dj", "sl", "taxdj", "tax", "dzl"); bad values are replaced, not refused. A line of a waiting document
/// recomputes its head. Returns the value written.
double setChange(const QString& value, QStringView field, Lines where, std::int64_t id);

// ---- barcode -----------------------------------------------------------------------------------------------------

/// A scanned barcode: a second scan of the same code adds up by parameter; with `oncePerGoods`
/// ("同一条码不能重复添加商品") a goods already on the document is refused first.
ScanResult enterBarcode(const QString& number, const QString& date, const QString& code, bool oncePerGoods = false);

// ---- staging: goods picked in a list before they become lines ----------------------------------------------------

/// Stages one goods with this quantity at the default price without tax. A goods staged or on the document already
/// asks "该商品已添加，需要重复添加吗？". The id of the staging row, 0 when passed over.
std::int64_t stageGoods(const QString& goods, double quantity, const QString& number, Lines target,
                        PickingMemory& memory, Prompt& prompt);
/// True when staging a line from the line dialog may go on (the same question).
bool mayStage(const QString& goods, const QString& number, Lines target, PickingMemory& memory, Prompt& prompt);
/// OK of the picking screen: copies this operator's staging rows to the document in the order they were picked, and
/// empties the staging list. `target` is Draft or Waiting (the head is recomputed then).
CopyResult copyStaged(const QString& number, const QString& date, Lines target);

// ---- the document on the screen ----------------------------------------------------------------------------------

/// Lines of this operator's draft, and of a waiting document, with the goods' names, in order of entry.
RowSet draftLines(const QString& number);
RowSet waitingLines(const QString& number);

/// Sum of the lines without the balancing line: `updateBottomJe`.
double payable(const QString& number);
/// What the paid amount shows after the payable changed: follows it, or stays as typed, by parameter.
double paidAfter(double payable, double typed);

/// A new document as the screen opens it: date, number, default supplier, warehouse, salesperson and settlement, the
/// freight payer by parameter.
ReceiptDraft newReceipt(const QString& lastDate = {});
/// Save: refusals, question, number, head, state of the lines, balancing, audit at once by parameter.
SaveResult saveReceipt(const ReceiptDraft& draft, Prompt& prompt);

// ---- waiting receipts and their audit ----------------------------------------------------------------------------

/// Waiting receipts with `ghs_name`, `ck_name`, `u_name` and `wfje` (still open).
RowSet waitingReceipts(const WaitingFilter& filter = {});

/// Opens the audit dialog on a waiting head; nothing when it waits no longer.
std::optional<AuditDraft> loadForAudit(const QString& number);
/// OK of the audit dialog.
AuditOutcome saveCheckedValueTab2(const AuditDraft& draft, Prompt& prompt);

// ---- history -----------------------------------------------------------------------------------------------------

/// The last ten audited receipts of a goods; of this supplier only when `cs_employ` is on.
RowSet receiptHistory(const QString& goods, const QString& supplier);
/// The supplier's quotations for a goods.
RowSet supplierQuotes(const QString& goods, const QString& supplier);

// ---- the same as the screens of a trading document ask for it ----------------------------------------------------

const DocumentRules& rules();

}  // namespace jxc::receipt
