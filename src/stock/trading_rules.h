// 购销单据共用规则: lines, staging, barcode, waiting list and audit dialog of a trading document over its description.
#pragma once

#include "core/session.h"
#include "stock/posting.h"
#include "stock/table_lines.h"
#include "stock/trading_document.h"

#include <string_view>

namespace jxc {

/// What a trading document is to its rules, besides its family.
struct TradingDescription {
  LineDescription lines;
  QString SystemParameters::*paidFollows;  // "0": the paid amount follows what is due
  bool balancingIsDue = false;             // returns give back what was paid: the balancing line counts
  Balanced (*balance)(const QString& number, double paid, double payable) = nullptr;
  std::u16string_view paidWord;  // 实付, 实收
};

/// Lines of a trading document: their price depends on the partner, and they are taxed. What differs is overridden.
class TradingLines : public TableLines {
 public:
  explicit TradingLines(const TradingDescription& document) : TableLines(document.lines) {}

  LineDraft newLine(const QString& goods, const LinePlace& place, bool staged) const override;

 protected:
  /// Price that a new line proposes.
  virtual double proposedPrice(const QString& goods, const LinePlace& place) const = 0;
  /// Tax rate that a new line proposes.
  virtual double proposedTax(bool) const { return session().cs_tax.toDouble(); }
};

/// A trading document. What differs is overridden; `save` writes the head that only the document itself knows.
class TradingRules : public RulesOver<TradingDraft> {
 public:
  TradingRules(const TradingDescription& document, const LineRules& lines) : document_(document), lines_(lines) {}

  const DocumentFamily& family() const override { return *document_.lines.family; }
  const LineRules& lines() const override { return lines_; }
  TradingDraft fresh(const QString& lastDate) const override;
  /// Yuan: the total of this operator's unsaved lines. Another operator at work under the same proposed number has a
  /// document of their own.
  double payable(const QString& number) const;
  /// What the paid amount of this draft shows after its payable became that. A whole return proposes no more than was
  /// paid for what it returns: what stood on account goes back to the account.
  double paidAfter(double payable, double typed, const TradingDraft& draft) const;
  std::optional<AuditDraft> loadForAudit(const QString& number) const;
  AuditOutcome audit(const AuditDraft& draft, Prompt& prompt) const;
  /// What audit will do about a difference between paid and due, as the dialog shows it while one types; empty:
  /// nothing.
  QString differenceText(const AuditDraft& draft) const;
  /// "实付改为 90.33": the books hold another paid amount than was typed.
  void tellBooked(double typed, double booked, Prompt& prompt) const;

  /// Returns a whole document: its lines become the draft, its head what the screen shows. Nothing: refused.
  virtual std::optional<TradingDraft> returnWhole(const QString&, const TradingDraft&, Prompt&) const { return {}; }
  /// A draft that comes back after the program was cut off: when it returns a whole document, its head follows that.
  virtual void recallReturned(TradingDraft&) const {}
  /// The draft of this number is no whole return any more.
  virtual void forgetReturned(const QString&) const {}

 protected:
  /// What is booked of a paid and a due amount (yuan, as the screen has them) under this settlement. The lines follow:
  /// what save and audit dialog do with the same money is one thing. Inside the caller's transaction.
  Balanced settleMoney(const QString& number, Settlement settlement, double paid, double due) const;
  bool isIncomplete(const TradingDraft& draft, Prompt& prompt) const;
  /// Why it cannot have the contract that was chosen for it.
  Refusal contractStands(const TradingDraft& draft) const;
  /// Whether the audit dialog may write this.
  virtual bool mayAudit(const AuditDraft&, Prompt&) const { return true; }
  const TradingDescription document_;

 private:
  const LineRules& lines_;
};

/// A return: it may give back another document as a whole. The other one knows the number of its return from the first
/// moment, so that the draft finds it again after a crash, but counts as returned only once the return is saved.
class ReturningRules : public TradingRules {
 public:
  ReturningRules(const TradingDescription& document, const LineRules& lines, const DocumentFamily& returned)
      : TradingRules(document, lines), returned_(returned) {}

  /// The rest of a return stays on the account, unless the operator says otherwise.
  TradingDraft fresh(const QString& lastDate) const override;
  std::optional<TradingDraft> returnWhole(const QString& source, const TradingDraft& current,
                                          Prompt& prompt) const override;
  void recallReturned(TradingDraft& draft) const override;
  void forgetReturned(const QString& number) const override;

 protected:
  /// Whether this audited document may go back, as the operator is told or asked; null: there is none of this number.
  virtual bool mayReturn(const QString& source, const Row* head, Prompt& prompt) const = 0;
  /// The return of this number was saved.
  void markReturned(const QString& source, const QString& number) const;

 private:
  void takeHead(const Row& head, TradingDraft& draft) const;

  const DocumentFamily& returned_;
};

}  // namespace jxc
