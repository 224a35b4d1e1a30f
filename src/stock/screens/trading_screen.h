// 购销单据屏幕: what the screen of a trading document has beside others: partner, due and paid, settlement, invoice and
// freight, whole return.
#pragma once

#include "masterdata/partner_side.h"
#include "stock/screens/partner_document_screen.h"
#include "stock/trading_rules.h"

#include <optional>
#include <span>
#include <string_view>

namespace jxc {

/// Partner and paid amount are inputs by their own names; tyfje, comJsfs and comYhzh every trading document has. May be
/// left out: tsn2, tfpno with tfpje, tyf with tbzf and chkYf, chkZj, btnZdth, tht with btnHt and btnCkHt (the
/// contract), and tGhsName (with a command btnAllKh) to show the waiting documents of one partner.
struct TradingScreenSpec {
  DocumentScreenSpec document;
  const TradingRules& (*rules)();
  std::optional<ListItem> (*pickPartner)();
  std::optional<ListItem> (*addPartner)();  // F8 in the partner's input
  DocumentScreenSpec::Guarded newPartner;
  std::string_view partner, paid;      // names of the inputs: "tghs", "tsfje"
  std::u16string_view settleKind;      // see settlementItems
  bool (*carriesFreight)() = nullptr;  // tyf, tbzf, chkYf are shown; null: always, where there are such inputs
  /// Lets the operator pick the document to return as a whole; its number, or empty. Null without btnZdth.
  QString (*pickReturned)() = nullptr;
};

class TradingScreen : public PartnerDocumentScreen<TradingDraft, TradingRules> {
 public:
  explicit TradingScreen(const TradingScreenSpec& spec);

  ui::Field& paid;
  ui::Field& tyfje = field("tyfje");
  ui::Field& comJsfs = field("comJsfs");
  ui::Field& comYhzh = field("comYhzh");

  /// Opens on a return of this whole document, with the partner, warehouse and lines of it. Told and refused at
  /// `asked` when it cannot go back, or when a return that was begun waits to be saved. Whether the screen was opened.
  bool returnDocument(const QString& source, Prompt& asked);
  /// Opens with this warehouse proposed (empty: the usual one), also for a document that was begun and not saved.
  void openIn(const QString& warehouse);

 protected:
  bool keyPressed(QKeyEvent& event) override;
  bool mayLeave() override;
  void draftInSight(bool isIn) override;
  void waitingGone() override;
  void fillLists() override;
  void showByParameters() override;
  void beginDraft(const QString& lastDate) override;
  QString findUnsaved() const override;
  void recallDraft() override { rules().recallReturned(draft()); }
  void showDraft() override;
  void collect() override;
  void linesChanged() override;
  void draftGone() override;
  void scanDone() override { paid.focus(); }
  WaitingFilter waitingFilter() override;
  void showAllWaiting() override;
  void auditWaiting(const QString& number) override;
  /// The operator chose another partner.
  virtual void partnerChanged() {}

 private:
  void returnWhole();
  void partnerTaken();
  void showContract();
  void takeContract(const QString& contract);
  void chooseContract();
  void chooseContractOfWaiting();
  bool leavesContract();

  const TradingScreenSpec trading_;
  std::optional<TradingDraft> prepared_;  // what the screen opens on
  bool isPrepared_ = false;               // the draft is that
  QString opensIn_;                       // warehouse of the draft that the screen opens on
};

}  // namespace jxc
