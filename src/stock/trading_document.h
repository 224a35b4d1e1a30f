// 购销单据: what receipt, purchase return, sale and customer return have in common for their screens: drafts, lines,
// rules.
#pragma once

#include "core/reading.h"
#include "stock/document.h"
#include "stock/line_amounts.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jxc {

/// How a trading document is settled, as its head stores it.
enum class Settlement : int { AtPaidAmount = 0 /* 按实付款结算 */, RestOnAccount = 1 /* 余款记入应付帐 */ };

/// Which rows a command works on: the draft of this operator, its staging rows, or the lines of a waiting document.
enum class Lines : char { Draft, Staging, Waiting };

/// What the line dialog shows and gives back.
struct LineDraft {
  QString goods;
  LineAmounts amounts;
  QString note;
  QString batch, produced, expires;  // t_ph, t_scrq, t_yxq
  double cost = 0, retail = 0;       // a unit, in yuan; on documents of the sales side
  QString gift;                      // "(赠品)" on a gift: it takes stock and cost and adds nothing to what is due
};

struct LineResult {
  std::int64_t id = 0;  // 0: nothing was written (quantity zero)
  QString number;       // the document's number now; another one when it had been taken
  explicit operator bool() const { return id != 0; }
};

enum class Scan { Added, Increased, AlreadyThere, NotFound };
struct ScanResult {
  Scan outcome = Scan::NotFound;
  std::int64_t id = 0;  // the line that was added or increased
  QString number;       // the document's number now
  QString refusal;      // words for the operator, empty unless refused
};

/// Answers remembered while one picking screen is open.
struct PickingMemory {
  bool refuseRepeats = false;     // the operator said no once: repeats are passed over without asking
  std::optional<bool> goesShort;  // whether goods beyond the stock may be picked, as it was answered for the selection
};

struct CopyResult {
  int lines = 0;
  QString number;
};

/// The head of a document in the making.
struct TradingDraft {
  QString number, date;
  QString partner, warehouse, salesperson;  // codes
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
  QString returnOf;                     // the document that this one returns as a whole
};

/// The audit dialog "单据审核确认": opens on the head; paid amount, settlement, account and note may change.
struct AuditDraft {
  QString number, date;
  QString partnerName, warehouseName, salespersonName, operatorName;
  double payable = 0;
  double paid = 0;
  Settlement settlement = Settlement::AtPaidAmount;
  QString account, note;
};

struct WaitingFilter {
  QString partner;    // code; empty: all
  QString key;        // part of number, original number, note or partner's name
  QString warehouse;  // code; empty: all
  bool newestFirst = true;
};

/// Where a line stands: what prices, stock and history depend on.
struct LinePlace {
  QString number, date;
  QString partner, warehouse;  // codes
};

/// What the goods list of the picking screen shows.
struct PickFilter {
  QString key;               // one or more words, each must match somewhere
  QString classNumber;       // this class and all below; empty for all
  bool inStock = false;      // only goods that lie in the warehouse
  bool ofPartner = false;    // only goods that this partner has dealt in
  QString lensProduct = {};  // only articles of this lens product
  QString goods = {};        // only this one, by its number
};

/// Rules of the lines of one trading document, as its screens ask for them. Without state; commands of their own
/// transactions.
class LineRules {
 public:
  virtual ~LineRules() = default;

  virtual LineDraft newLine(const QString& goods, const LinePlace& place, bool staged) const = 0;
  virtual std::optional<LineDraft> loadLine(Lines where, std::int64_t id) const = 0;
  /// Whether a line may stand as it was typed: refusals and questions of the line dialog, before it is written.
  virtual bool mayWrite(const LineDraft&, const LinePlace&, Prompt&) const { return true; }
  /// Whether a quantity may be below zero.
  virtual bool takesMinus() const { return false; }
  /// Whether the operator may type a price at all.
  virtual bool priceMayChange() const { return true; }
  /// OK of the line dialog. Nothing is written for a quantity of zero, or when the operator says no.
  virtual LineResult addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt& prompt) const = 0;
  virtual bool changeLine(Lines where, std::int64_t id, const LinePlace& place, const LineDraft& draft,
                          Prompt& prompt) const = 0;
  /// Whether a cell of a line of this goods opens at all; `field` as below.
  bool cellMayChange(QStringView goods, bool isGift, QStringView field) const;
  /// A cell edit: "dj", "sl", "taxdj", "tax", "dzl".
  virtual double setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                           Prompt& prompt) const = 0;
  virtual ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                                  Prompt& prompt) const = 0;

  // Staging: goods picked in a list before they become lines of Draft or Waiting.
  virtual Sql goodsToPick(const LinePlace& place, const PickFilter& filter) const = 0;
  virtual bool mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                        Prompt& prompt) const = 0;
  /// Quantity against the stock of the warehouse, where the document takes goods out: refused or asked about. With a
  /// memory, the first answer holds for the whole selection.
  virtual bool stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                           PickingMemory* memory = nullptr) const = 0;
  virtual std::int64_t stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                                  PickingMemory& memory, Prompt& prompt) const = 0;
  virtual CopyResult copyStaged(const LinePlace& place, Lines target) const = 0;

  // What was traded before, for the line dialog; columns as its grids name them.
  virtual RowSet history(const QString& goods, const QString& partner) const = 0;
  virtual RowSet quotes(const QString& goods, const QString& partner) const = 0;
};

/// Rules of one trading document, as its screens ask for them.
class DocumentRules {
 public:
  virtual ~DocumentRules() = default;

  virtual const DocumentFamily& family() const = 0;
  virtual const LineRules& lines() const = 0;

  virtual TradingDraft fresh(const QString& lastDate) const = 0;
  virtual RowSet draftLines(const QString& number) const = 0;
  /// Yuan: the total of this operator's unsaved lines. Another operator at work under the same proposed number has a
  /// document of their own.
  virtual double payable(const QString& number) const = 0;
  /// What the paid amount shows after the payable changed.
  virtual double paidAfter(double payable, double typed) const = 0;
  virtual SaveResult save(const TradingDraft& draft, Prompt& prompt) const = 0;
  /// Returns a whole document: its lines become the draft, its head what the screen shows. Nothing: refused.
  virtual std::optional<TradingDraft> returnWhole(const QString&, const TradingDraft&, Prompt&) const { return {}; }
  /// A draft that comes back after the program was cut off: when it returns a whole document, its head follows that.
  virtual void recallReturned(TradingDraft&) const {}
  /// The draft of this number is no whole return any more.
  virtual void forgetReturned(const QString&) const {}

  virtual RowSet waiting(const WaitingFilter& filter) const = 0;
  virtual RowSet waitingLines(const QString& number) const = 0;
  virtual std::optional<AuditDraft> loadForAudit(const QString& number) const = 0;
  virtual AuditOutcome audit(const AuditDraft& draft, Prompt& prompt) const = 0;
  /// What audit will do about a difference between paid and due, as the dialog shows it while one types; empty:
  /// nothing.
  virtual QString differenceText(const AuditDraft&) const { return {}; }
};

// Staging rows of this operator, whatever document they are picked for.
RowSet stagedLines();
void unstage(std::int64_t id);

/// Number of a document of this operator that was begun and never saved: the program ended in between. Empty: none.
QString unsavedDraft(const DocumentFamily& family);
/// The date that a document number was given for, yyyy-MM-dd; empty when it is no number of that form.
QString dateOfNumber(const QString& number);

}  // namespace jxc
