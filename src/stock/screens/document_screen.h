// 单据屏幕: the screen of a trading document: a new one on the first panel, those that wait for audit on the second.
#pragma once

#include "masterdata/partner_side.h"
#include "output/printed_documents.h"
#include "output/screens/print_outlet.h"
#include "stock/screens/line_screen.h"
#include "stock/trading_document.h"
#include "ui/screen.h"

#include <functional>
#include <optional>
#include <span>
#include <string_view>

class QAction;
class QLabel;

namespace jxc {
namespace ui {
class ScanCatcher;
}

/// What the screen of one trading document is. Its fields bear the names that all of them share: dateCg, comCk,
/// comUser, jsn, tsn2, tnote, tfpno, tfpje, tyf, tbzf, chkYf, tyfje, comJsfs, comYhzh, chkZj, tSptm
/// (with a command btnPanel for its options) on the first panel, tkey, comSort on the second; partner and paid amount
/// by their own; tGhsName (with a command btnAllKh) shows the waiting documents of one partner. What a document does
/// not have is left out of its description. Grids: gridLines, gridWaiting, gridWaitingLines.
struct DocumentScreenSpec {
  ui::ScreenSpec screen;
  const DocumentRules& (*rules)();
  std::string_view draftTitle, waitingTitle;  // the two panels
  const PartnerSide* side;
  std::optional<ListItem> (*pickPartner)();
  std::optional<ListItem> (*addPartner)();  // F8 in the partner's input
  std::string_view partner, paid;           // names of the inputs: "tghs", "tsfje"
  std::string_view employeeFlag;            // duty of the salespersons offered: "u_cg"
  std::u16string_view settleKind;           // see settlementItems
  bool (*carriesFreight)() = nullptr;       // tyf, tbzf, chkYf are shown; null: always, where there are such fields
  std::string_view waitingPartner;          // column of the waiting list: "ghs_name"
  std::string_view auditCommand = "btnRChk";

  // Screens that this one opens.
  std::string_view pickScreen, lineScreen, auditScreen, importScreen;
  /// Changes date, partner and warehouse of a waiting document; its number now, empty when nothing changed.
  QString (*changeHead)(const QString& number);
  /// Lets the operator pick the document to return as a whole; its number, or empty. Null without btnZdth.
  QString (*pickReturned)() = nullptr;
  /// Makes an article that is not in the catalogue yet; its number, empty when the operator left. Null without
  /// btnAddNew.
  QString (*addGoods)() = nullptr;

  // Rights besides those of the family, with the words of their refusal.
  struct Guarded {
    Right right;
    std::u16string_view refusal;
  };
  Guarded make, audit, addWaiting, deleteWaiting, newGoods, newPartner;

  // Places: rows of inputs above and below the lines, of buttons, on both panels.
  std::span<const std::string_view> headForm, footForm;
  std::string_view scanRow;
  std::string_view saveRow;  // below both panels, with btnOK and the way out
  std::string_view searchRow, waitingButtons, lineButtons;
  /// Commands whose services are not there yet: not shown.
  std::span<const std::string_view> notYet = {};
};

class DocumentScreen : public ui::Screen {
 public:
  explicit DocumentScreen(const DocumentScreenSpec& spec);

  ui::Field& partner;
  ui::Field& paid;
  ui::Field& dateCg = field("dateCg");
  ui::Field& comCk = field("comCk");
  ui::Field& comUser = field("comUser");
  ui::Field& jsn = field("jsn");
  ui::Field& tyfje = field("tyfje");
  ui::Field& comJsfs = field("comJsfs");
  ui::Field& comYhzh = field("comYhzh");
  ui::Grid& gridLines = grid("gridLines");
  ui::Grid& gridWaiting = grid("gridWaiting");
  ui::Grid& gridWaitingLines = grid("gridWaitingLines");
  QPushButton& btnOK = command("btnOK");

  QSize sizeHint() const override { return {1264, 672}; }  // all of a small display: documents are long

  /// A new document on the first panel, or the one of this operator that was never saved.
  void initTab();
  /// Reads the waiting list anew, standing on this document.
  void refreshWaiting(const QString& number = {});

 protected:
  void activate() override;
  bool mayLeave() override;
  bool keyPressed(QKeyEvent& event) override;

  /// What a document has besides: at opening, and in what is saved.
  virtual void fillMore() {}
  virtual void collectMore(TradingDraft&) {}
  /// The operator chose another partner.
  virtual void partnerChanged() {}
  /// A paper of the document. Mode OnScreen: as it stands on the first panel, variables from the inputs; Saved:
  /// variables from the saved document. Nothing: the operator left the choice of the form.
  enum class PrintMode : char { OnScreen = '1', Saved = '2' };
  std::optional<report::Report> setPrinPara(const QString& number, PrintMode mode);
  /// Opens the line dialog on a line that stands on the document.
  virtual void editLine(const LineScreen::Request& request);

  const DocumentRules& rules() const { return rules_; }
  LinePlace draftPlace() const;
  LinePlace waitingPlace() const;
  /// Tells that a right is missing. True: it is there.
  bool mayDo(const DocumentScreenSpec::Guarded& guarded);

  // First panel.
  void enterBarcode(const QString& code);
  void addOld();
  void addNew();
  void enterLenses();
  void importSheet();
  void exportLines();
  void modifyLine();
  void deleteLine();
  bool save();
  void updateBottomJe();
  void returnWhole();
  void printDraft();
  void printSaved(const QString& number);
  void setNumber(const QString& number);
  void reloadLines(std::int64_t current = 0);
  /// Takes a date that was typed: the number changes with it. False: the operator took it back.
  bool settleDate();

  // Second panel.
  void showAllWaiting();
  void auditCurrent();
  void auditList();
  void deleteWaiting();
  void changeHead();
  void addWaitingLines();
  void enterWaitingLenses();
  void importWaiting();
  void modifyWaitingLine();
  void deleteWaitingLine();
  void printWaiting(PrintWay way);
  void printList();

 private:
  ui::Field* optional(std::string_view name);
  bool hasCommand(std::string_view name) const;
  void focusDraft();
  void buildDraftPanel(ui::Panel panel);
  void buildWaitingPanel(ui::Panel panel);
  void addScanOptions();
  void addSheetMenu();
  void bindPanels();
  void bindDraft();
  void bindWaiting();
  void bindCommand(std::string_view command, void (DocumentScreen::*action)());
  void showByParameters();
  void fillLists();
  void showDraft(const TradingDraft& draft);
  void showPicked(const CopyResult& picked);
  bool mayMakeGoods() const;
  TradingDraft collect();
  void reloadWaitingLines();
  void cellChanged(const Row& row, std::string_view column, const QString& text, Lines where);
  bool changeable(const ui::Grid& lines);
  QString waitingNumber() const;
  void bindPrinting();

  const DocumentScreenSpec description_;
  const DocumentRules& rules_;
  bool inBatch_ = false;  // several documents are printed one after another: the form is not asked for each
  ui::Panel panels_;
  QLabel* hint_ = nullptr;
  ui::ScanCatcher* scans_ = nullptr;  // of documents with a barcode input, as its two options
  QAction* onceOnly_ = nullptr;
  QAction* thenModify_ = nullptr;
  bool saving_ = false;
  TradingDraft draft_;  // what does not stand in an input, and the date as it was settled last
  QString lastDate_;    // of the document before
};

}  // namespace jxc
