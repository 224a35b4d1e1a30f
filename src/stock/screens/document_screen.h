// 单据屏幕: the screen of a document: a new one on the first panel, those that wait for audit on the second, audited
// ones on a third where it names their list. What a trading document has beside (partner, money, whole return) is in
// trading_screen.h.
#pragma once

#include "output/printed_documents.h"
#include "output/screens/print_outlet.h"
#include "stock/document_rules.h"
#include "stock/screens/line_screen.h"
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
class SearchDrop;
}  // namespace ui

/// What the screen of one document is. Every screen has dateCg, comCk, comUser and the number on the first panel, tkey,
/// comSort on the second, the grids gridLines, gridWaiting, gridWaitingLines. tnote and tSptm (with a command btnPanel
/// for its options) may be left out, and so may commands with what they open: btnAddNew with addGoods, btnImport or
/// btnInOut with importScreen, btnJpgd. A part that is neither known here nor `own` is refused.
struct DocumentScreenSpec {
  ui::ScreenSpec screen;
  std::string_view draftTitle, waitingTitle;  // the two panels
  // A panel between them and the audited ones, of what such documents are still to be made of; placed by its screen.
  std::string_view openTitle = {};
  void (*openPanel)(ui::Panel panel) = nullptr;
  // The list that stands on a third one, an enquiry by its name: "F_Kcdb_Djcx"; and what that panel is called.
  std::string_view auditedList = {}, auditedTitle = {};
  std::string_view employeeFlag;  // duty of the salespersons offered: "u_cg"
  std::string_view numberInput = "jsn";
  std::string_view auditCommand = "btnRChk", deleteCommand = "btn_Dele";
  /// What was scanned last stands in large letters: who scans does not look at the list.
  bool showsScanned = false;
  /// The barcode input finds goods by number, name, letters and powers, too: they drop down while one types.
  bool findsGoods = false;
  /// Prices or book figures of the lines are those of the warehouse: it stays as it is once lines stand.
  bool linesHoldWarehouse = false;

  // Screens that this one opens; without an audit dialog the audit is a question.
  std::string_view pickScreen, lineScreen, auditScreen, importScreen;
  /// Changes date, warehouse and the like of a waiting document; its number now, empty when nothing changed.
  QString (*changeHead)(const QString& number);
  /// Makes an article that is not in the catalogue yet, with a barcode that was scanned in vain, or none; its number,
  /// empty when the operator left. Null without btnAddNew.
  QString (*addGoods)(const QString& barcode) = nullptr;

  // Rights besides those of the family, with the words of their refusal.
  struct Guarded {
    Right right;
    std::u16string_view refusal;
    Right otherwise = {};  // another one that does as well
    bool isHeld() const;
  };
  Guarded make, audit, addWaiting, deleteWaiting, newGoods;

  // Places: rows of inputs above and below the lines, of buttons, on both panels.
  std::span<const std::string_view> headForm, footForm;
  std::string_view scanRow;
  std::string_view saveRow;  // below both panels, with btnOK and the way out
  std::string_view searchRow, waitingButtons, lineButtons;
  /// Places the parts of the first panel otherwise than in the three rows above; null: as they are told there.
  void (*draftPanel)(ui::Panel panel) = nullptr;
  /// Inputs and commands that only this document knows; it binds them itself.
  std::span<const std::string_view> own = {};
  /// Commands whose services are not there yet: not shown.
  std::span<const std::string_view> notYet = {};
};

class DocumentScreen : public ui::Screen {
 public:
  ui::Field& dateCg = field("dateCg");
  ui::Field& comCk = field("comCk");
  ui::Field& comUser = field("comUser");
  ui::Grid& gridLines = grid("gridLines");
  ui::Grid& gridWaiting = grid("gridWaiting");
  ui::Grid& gridWaitingLines = grid("gridWaitingLines");
  QPushButton& btnOK = command("btnOK");
  ui::Field& numberShown() { return field(description_.numberInput); }

  QSize sizeHint() const override { return {1264, 672}; }  // all of a small display: documents are long

  /// A new document on the first panel, or the one of this operator that was never saved.
  void initTab();
  /// Reads the waiting list anew, standing on this document.
  void refreshWaiting(const QString& number = {});
  /// The list of the third panel, made when that is first seen; null before, and where there is none.
  ui::Screen* audited() const { return audited_; }

 protected:
  /// `known`: names of further parts that the derived screen reads or binds.
  DocumentScreen(const DocumentScreenSpec& spec, const DocumentRules& rules,
                 std::span<const std::string_view> known = {});

  void activate() override;
  bool mayLeave() override;
  bool keyPressed(QKeyEvent& event) override;

  // ---- the draft: what its kind has; see DocumentScreenOver ----
  /// What does not stand in an input, and the date as it was settled last.
  virtual DocumentDraft& draft() = 0;
  /// A new document, after one of this date.
  virtual void beginDraft(const QString& lastDate) = 0;
  virtual SaveResult saveDraft() = 0;
  virtual report::Report draftReport() = 0;

  // ---- what a document has besides; each calls that of its base ----
  virtual void fillLists();
  virtual void showByParameters();
  /// The first panel came into sight or went out of it, and with it its commands in the row below all panels.
  virtual void draftInSight(bool isIn);
  /// A draft that comes back after the program was cut off.
  virtual void recallDraft() {}
  /// The draft of this operator that was begun and never saved; empty: none.
  virtual QString findUnsaved() const;
  /// The inputs as the draft has them, and back.
  virtual void showDraft();
  virtual void collect();
  virtual void linesChanged();
  /// Nothing is left of the draft, or it is left behind.
  virtual void draftGone() {}
  /// Enter in an empty barcode input.
  virtual void scanDone() { btnOK.setFocus(); }
  virtual LinePlace draftPlace();
  virtual LinePlace waitingPlace();
  virtual WaitingFilter waitingFilter();
  virtual void showAllWaiting() { refreshWaiting(); }
  /// Audits a waiting document; the base asks.
  virtual void auditWaiting(const QString& number);
  /// Audits those of the list.
  virtual void auditWaitingList(const std::vector<ListedDocument>& documents, const AuditProgress& progress) {
    auditAll(documents, prompt(), progress);
  }
  /// After a new document was shown.
  virtual void fillMore() {}
  /// A waiting document, or a line of one, was deleted.
  virtual void waitingGone() {}
  /// The panel of what is open came into sight, or a document changed it.
  virtual void showOpen() {}
  /// The first panel with these lines in place of what it had: the number is the draft's.
  void showNewDraft();

  /// A paper of the document. Mode OnScreen: as it stands on the first panel, variables from the inputs; Saved:
  /// variables from the saved document. Nothing: the operator left the choice of the form.
  enum class PrintMode : char { OnScreen = '1', Saved = '2' };
  std::optional<report::Report> setPrinPara(const QString& number, PrintMode mode);
  /// Opens the line dialog on a line that stands on the document.
  virtual void editLine(const LineScreen::Request& request);

  const DocumentRules& rules() const { return rules_; }
  /// Of the draft's own kind, and of the kind of the waiting document that is chosen.
  const DocumentRules& draftRules() { return rules_.of(draft().number); }
  const DocumentRules& waitingRules() const { return rules_.of(waitingNumber()); }
  const DocumentFamily& draftFamily() { return draftRules().family(); }
  const DocumentFamily& waitingFamily() const { return waitingRules().family(); }
  /// An input that the document may have; null without.
  ui::Field* optional(std::string_view name) { return hasField(name) ? &field(name) : nullptr; }
  bool hasCommand(std::string_view name) const;
  void bindCommand(std::string_view command, std::function<void()> action);
  /// Tells that a right is missing. True: it is there.
  bool mayDo(const DocumentScreenSpec::Guarded& guarded);
  QString waitingNumber() const;

  // First panel.
  virtual void enterBarcode(const QString& code);
  /// The input in which a draft is gone on with.
  virtual void focusDraft();
  bool isDraftInSight() const;
  virtual void addOld();
  void addNew();
  void enterLenses();
  void importSheet();
  void exportLines();
  void modifyLine();
  void deleteLine();
  bool save();
  virtual void printDraft();
  void printSaved(const QString& number);
  void setNumber(const QString& number);
  void reloadLines(std::int64_t current = 0);
  /// Takes a date that was typed: the number changes with it. False: the operator took it back.
  bool settleDate();

  // Second panel.
  void auditCurrent();
  void previewAudit();
  void auditList();
  void deleteWaiting();
  void changeHead();
  void addWaitingLines();
  void enterWaitingLenses();
  void importWaiting();
  void modifyWaitingLine();
  void deleteWaitingLine();
  void printWaiting(PrintWay way) { printDocument(waitingNumber(), way); }
  void printDocument(const QString& number, PrintWay way);
  void printList();

 private:
  void buildDraftPanel(ui::Panel panel);
  void buildWaitingPanel(ui::Panel panel);
  void showAudited();
  /// Brings the first panel into sight; false: the operator may not make documents.
  bool turnToDraft();
  void addScanner();
  void addScanOptions();
  void addGoodsSearch();
  void enterTyped(const QString& typed);
  void takeFound(const Row& goods);
  void showEntered(const ScanResult& entered);
  void tellNotFound(const QString& code, const ScanResult& scanned);
  void addSheetMenu();
  void bindPanels();
  void bindDraft();
  void bindWaiting();
  void showPicked(const CopyResult& picked);
  void tellSaved(const SaveResult& saved);
  /// The panel of new documents, empty again: what was saved last is what its keys mean.
  bool showsSaved() const { return gridLines.isEmpty() && !lastSaved_.isEmpty(); }
  void auditSaved();
  void showScanned();
  void tellLeftOff(const CopyResult& picked);
  void lockWarehouse();
  void tellRecalled(const QString& number, bool asksForWarehouse);
  void warehouseChanged();
  bool mayMakeGoods(const LineRules& lines) const;
  void reloadWaitingLines();
  void cellChanged(const Row& row, std::string_view column, const QString& text, Lines where);
  bool changeable(const ui::Grid& lines);
  void bindPrinting();

  static constexpr int kDraftPanel = 0, kWaitingPanel = 1;
  int auditedPanel() const { return description_.openPanel ? 3 : 2; }
  const DocumentScreenSpec description_;
  const DocumentRules& rules_;
  bool inBatch_ = false;  // several documents are printed one after another: the form is not asked for each
  ui::Panel panels_;
  ui::Screen* audited_ = nullptr;
  QLabel* hint_ = nullptr;
  QLabel* scanned_ = nullptr;
  std::int64_t scannedLine_ = 0;      // of the draft; 0: none was scanned
  ui::ScanCatcher* scans_ = nullptr;  // of documents with a barcode input, as its two options
  ui::SearchDrop* found_ = nullptr;   // where the input finds goods
  QString unknownCode_;               // scanned last, and of no goods: a new one may get it
  QAction* onceOnly_ = nullptr;
  QAction* thenModify_ = nullptr;
  bool saving_ = false;
  bool recalled_ = false;  // lines of a draft that was cut off: their warehouse is not known
  QString lastDate_;       // of the document before
  QString lastSaved_;      // its number, until the next one has lines: F6 audits it, Ctrl+P prints it
};

/// The screen over rules with a draft of their own kind.
template <class Draft, class Rules = RulesOver<Draft>>
class DocumentScreenOver : public DocumentScreen {
 protected:
  DocumentScreenOver(const DocumentScreenSpec& spec, const Rules& rules, std::span<const std::string_view> known = {})
      : DocumentScreen(spec, rules, known) {}

  const Rules& rules() const { return static_cast<const Rules&>(DocumentScreen::rules()); }
  Draft& draft() override { return draft_; }
  void beginDraft(const QString& lastDate) override { draft_ = rules().fresh(lastDate); }
  SaveResult saveDraft() override { return rules().save(draft_, prompt()); }
  report::Report draftReport() override { return draftDocumentReport(rules().family(), draft_); }

 private:
  Draft draft_;
};

}  // namespace jxc
