// 采购进货: the rules of the purchase receipt, for any front end: prices, lines, barcode, staging, totals, save, audit.
#pragma once

#include "engine/row_set.h"
#include "stock/document.h"
#include "stock/line_amounts.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc::receipt {

/// Settlement, as `j_jsfs` stores it.
enum class Settlement : int { AtPaidAmount = 0 /* 按实付款结算 */, RestOnAccount = 1 /* 余款记入应付帐 */ };

// ---- lines -------------------------------------------------------------------------------------------------------

/// Price that a new line proposes: average, last or preset purchase price by parameter, rounded to money digits.
double defaultPrice(const QString& goods);

/// What the line dialog shows and gives back.
struct LineDraft {
  QString goods;
  LineAmounts amounts;
  QString note;
  QString batch, produced, expires;  // t_ph, t_scrq, t_yxq
};
/// A new line: quantity 0, default price, no discount, the default tax rate (0 for a staged one).
LineDraft newLine(const QString& goods, bool staged = false);

/// Which rows a command works on: the draft of this operator, its staging rows, or the lines of a waiting document.
enum class Lines : char { Draft, Staging, Waiting };

/// Opens a row for changing. Nothing when it is gone.
std::optional<LineDraft> loadLine(Lines where, std::int64_t id);

struct LineResult {
  std::int64_t id = 0;  // 0: nothing was written (quantity zero)
  QString number;       // the document's number now; another one when it had been taken
  explicit operator bool() const { return id != 0; }
};
/// OK of the line dialog for a new line. `number` and `date` are those on the screen; staging rows have no number.
/// A line of a waiting document recomputes its head.
LineResult addLine(Lines where, const QString& number, const QString& date, const LineDraft& draft);
/// OK of the line dialog for an existing row. False: nothing was written (quantity zero, or the row is gone).
bool changeLine(Lines where, std::int64_t id, const LineDraft& draft);

/// A cell edit ("dj", "sl", "taxdj", "tax", "dzl"); bad values are replaced, not refused. A line of a waiting document
/// recomputes its head. Returns the value written.
double setChange(const QString& value, QStringView field, Lines where, std::int64_t id);

// ---- barcode -----------------------------------------------------------------------------------------------------

enum class Scan { Added, Increased, AlreadyThere, NotFound };
struct ScanResult {
  Scan outcome = Scan::NotFound;
  std::int64_t id = 0;  // the line that was added or increased
  QString number;       // the document's number now
  QString refusal;      // words for the operator, empty unless refused
};
/// A scanned barcode: a second scan of the same code adds up by parameter; with `oncePerGoods`
/// ("同一条码不能重复添加商品") a goods already on the document is refused first.
ScanResult enterBarcode(const QString& number, const QString& date, const QString& code, bool oncePerGoods = false);

// ---- staging: goods picked in a list before they become lines ----------------------------------------------------

/// Answers remembered while one picking screen is open.
struct PickingMemory {
  bool refuseRepeats = false;  // the operator said no once: repeats are passed over without asking
};
/// Stages one goods with this quantity at the default price without tax. A goods staged or on the document already
/// asks "该商品已添加，需要重复添加吗？". The id of the staging row, 0 when passed over.
std::int64_t stageGoods(const QString& goods, double quantity, const QString& number, Lines target,
                        PickingMemory& memory, Prompt& prompt);
/// True when staging a line from the line dialog may go on (the same question).
bool mayStage(const QString& goods, const QString& number, Lines target, PickingMemory& memory, Prompt& prompt);
RowSet stagedLines();
void unstage(std::int64_t id);
struct CopyResult {
  int lines = 0;
  QString number;
};
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

struct ReceiptDraft {
  QString number, date;
  QString supplier, warehouse, salesperson;  // codes
  QString originalNumber, note;
  QString invoiceNumber;
  double invoiceAmount = 0, freight = 0, packing = 0;
  bool wePayFreight = false;
  double payable = 0;  // as shown; save reads it anew from the lines
  double paid = 0;
  Settlement settlement = Settlement::AtPaidAmount;
  QString account;                      // name of the cash or bank account
  std::optional<bool> straightToStock;  // "本单商品直接入库"; nothing where the box is not shown
  QString contract;                     // code, usually empty
};
/// A new document as the screen opens it: date, number, default supplier, warehouse, salesperson and settlement, the
/// freight payer by parameter.
ReceiptDraft newReceipt(const QString& lastDate = {});
/// Save: refusals, question, number, head, state of the lines, balancing, audit at once by parameter.
SaveResult saveReceipt(const ReceiptDraft& draft, Prompt& prompt);

// ---- waiting receipts and their audit ----------------------------------------------------------------------------

struct WaitingFilter {
  QString supplier;   // code; empty: all
  QString key;        // part of number, original number or note
  QString warehouse;  // code; empty: all
  bool newestFirst = true;
};
/// Waiting receipts with `ghs_name`, `ck_name`, `u_name` and `wfje` (still open).
RowSet waitingReceipts(const WaitingFilter& filter = {});

/// The audit dialog "单据审核确认": opens on the head; the operator may change what is not const by nature.
struct AuditDraft {
  QString number, date;
  QString supplierName, warehouseName, salespersonName, operatorName;
  double payable = 0;
  double paid = 0;
  Settlement settlement = Settlement::AtPaidAmount;
  QString account, note;
};
std::optional<AuditDraft> loadForAudit(const QString& number);
/// OK of the audit dialog.
AuditOutcome saveCheckedValueTab2(const AuditDraft& draft, Prompt& prompt);

// ---- history -----------------------------------------------------------------------------------------------------

/// The last ten audited receipts of a goods; of this supplier only when `cs_employ` is on.
RowSet receiptHistory(const QString& goods, const QString& supplier);
/// The supplier's quotations for a goods.
RowSet supplierQuotes(const QString& goods, const QString& supplier);

}  // namespace jxc::receipt
