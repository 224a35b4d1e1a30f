#include "stock/screens/document_screen.h"

#include "core/fillers.h"
#include "core/habits.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/lens_sheet_screen.h"
#include "stock/screens/line_import_screen.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/grid_output.h"
#include "ui/known_parts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QScopeGuard>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace jxc {
namespace document_screen_detail {

constexpr Right kGoods = {"qtcz", 1};

/// What every document screen reads or binds where the document has it.
constexpr std::string_view kParts[] = {
    "dateCg",    "comCk",       "comUser",          "tnote",       "tSptm",     "tkey",       "comSort",
    "gridLines", "gridWaiting", "gridWaitingLines", "btnPanel",    "btnAddOld", "btnAddNew",  "btnImport",
    "btnInOut",  "btnJpgd",     "btnModi",          "btnDel",      "btnPrin",   "btnOK",      "btnCancel",
    "btnSearch", "btn_Check",   "btnPreview",       "btn_Date",    "btn_Prin",  "btn_ChaKan", "btn_Export",
    "btnAdd",    "btnTab2Jpgd", "btnTab2Import",    "btnTab2Modi", "btnDele",
};

/// Parts that go together: one without the other would be a command that opens nothing, or a screen that no one opens.
void refuseLoose(const DocumentScreenSpec& spec) {
  const auto has = [&](std::string_view name) {
    return std::ranges::any_of(spec.screen.commands, [&](const ui::CommandSpec& each) { return each.name == name; }) ||
           std::ranges::any_of(spec.screen.fields, [&](const ui::FieldSpec& each) { return each.name == name; });
  };
  const auto together = [&](bool first, bool second, const char* what) {
    if (first != second) throw std::invalid_argument(std::string(spec.screen.name) + ": " + what);
  };
  together(has("tSptm"), has("btnPanel"), "tSptm goes with btnPanel");
  together(has("btnAddNew"), spec.addGoods != nullptr, "btnAddNew goes with addGoods");
  together(has("btnImport") || has("btnInOut"), !spec.importScreen.empty(), "btnImport goes with importScreen");
  together(!spec.auditedList.empty(), !spec.auditedTitle.empty(), "auditedList goes with auditedTitle");
  together(has("btnTab2Import"), !spec.importScreen.empty(), "btnTab2Import goes with importScreen");
  for (const std::string_view opened :
       {spec.pickScreen, spec.lineScreen, spec.auditScreen, spec.importScreen, spec.auditedList})
    if (!opened.empty() && !ui::isScreenRegistered(opened))
      throw std::invalid_argument(std::string(spec.screen.name) + ": no screen \"" + std::string(opened) + "\"");
}

std::vector<ListItem> warehouseItems() {
  Filter filter;
  addWarehouseBinding(filter);
  return fillWarehouseCombo({}, filter);
}

/// How wide a row of inputs and buttons is at least.
int widthOf(ui::Screen& screen, const std::string& row) {
  constexpr int kGap = 6;  // also at each side of "|"
  int width = 0;
  std::istringstream names(row);
  for (std::string name; names >> name; width += kGap) {
    if (name == "|") {
      width += kGap;
    } else if (screen.hasField(name)) {
      const ui::Field& field = screen.field(name);
      if (field.label()) width += field.label()->sizeHint().width() + kGap;
      width += std::max(field.widget()->minimumWidth(), field.widget()->minimumSizeHint().width());
    } else {
      width += screen.command(name).sizeHint().width();
    }
  }
  return width - kGap;
}

/// Commands that have no room beside the input take a line of their own: on a narrow display the window would scroll
/// sideways, with the sums and the way out behind its edge.
std::vector<std::string> scanRows(ui::Screen& screen, const std::string& row) {
  constexpr int kAround = 60;  // frame of the window, its margins and those of the panel
  const auto gap = row.find('|');
  if (gap == std::string::npos || !screen.screen() ||
      widthOf(screen, row) <= screen.screen()->availableSize().width() - kAround)
    return {row};
  return {row.substr(0, gap), row.substr(gap + 1)};
}

}  // namespace document_screen_detail

DocumentScreen::DocumentScreen(const DocumentScreenSpec& spec, const DocumentRules& rules,
                               std::span<const std::string_view> known)
    : Screen(spec.screen), description_(spec), rules_(rules), panels_(panel()) {
  const std::string_view named[] = {spec.numberInput, spec.auditCommand, spec.deleteCommand};
  ui::refuseUnknownParts(spec.screen, {document_screen_detail::kParts, known, named, spec.notYet}, spec.own);
  document_screen_detail::refuseLoose(spec);
  buildDraftPanel(panels_.page("cxTab1", ui::qs(spec.draftTitle)));
  buildWaitingPanel(panels_.page("cxTab2", ui::qs(spec.waitingTitle)));
  if (spec.openPanel) spec.openPanel(panels_.page("cxTab4", ui::qs(spec.openTitle)));
  if (!spec.auditedList.empty()) panels_.page("cxTab3", ui::qs(spec.auditedTitle));
  panel().buttons(spec.saveRow);
  for (const std::string_view name : spec.notYet)
    command(name).setVisible(false);
  bindPanels();
  bindDraft();
  bindWaiting();
  bindPrinting();
  if (hasCommand("btnInOut")) addSheetMenu();
  if (optional("tSptm")) addScanner();
  say({});  // the line has its room from the beginning: nothing moves when it speaks
}

void DocumentScreen::addSheetMenu() {
  auto* menu = new QMenu(this);
  const auto entry = [&](const char* name, const QString& text, std::function<void()> action) {
    menu->addAction(text, this, std::move(action))->setObjectName(QString::fromLatin1(name));
  };
  entry("btnInOutImport", u"导入商品(&I)\tCtrl+I"_qs, [this] { importSheet(); });
  entry("btnInOutMb", u"保存导入模板(&M)"_qs,
        [this] { ui::screenAs<LineImportScreen>(description_.importScreen).btnMbClick(); });
  entry("btnInOutExport", u"导出商品(&E)"_qs, [this] { exportLines(); });
  command("btnInOut").setMenu(menu);
}

bool DocumentScreen::hasCommand(std::string_view name) const {
  return std::any_of(spec().commands.begin(), spec().commands.end(),
                     [name](const ui::CommandSpec& command) { return command.name == name; });
}

void DocumentScreen::focusDraft() {
  if (auto* scan = optional("tSptm"); scan && scan->isVisible()) {
    scan->focus();
  } else {
    gridLines.focusRows();  // in the partner's input F2 would open the list of partners
  }
}

void DocumentScreen::buildDraftPanel(ui::Panel panel) {
  hint_ = new QLabel(this);
  hint_->setObjectName(QStringLiteral("lHint"));
  hint_->setProperty("warning", true);
  if (description_.draftPanel) return description_.draftPanel(panel.widget(hint_));
  panel.form(description_.headForm).widget(hint_);
  for (const std::string& row : document_screen_detail::scanRows(*this, std::string(description_.scanRow)))
    panel.row(row);
  if (description_.showsScanned) {
    scanned_ = new QLabel(this);
    scanned_->setObjectName(QStringLiteral("lScanned"));
    scanned_->setTextFormat(Qt::PlainText);
    QFont large = scanned_->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    large.setBold(true);
    scanned_->setFont(large);
    scanned_->setMinimumWidth(1);  // a long name takes a second line, it does not widen the window
    scanned_->setWordWrap(true);
    panel.widget(scanned_);
  }
  panel.grid("gridLines").form(description_.footForm);
}

void DocumentScreen::bindCommand(std::string_view name, std::function<void()> action) {
  if (hasCommand(name)) on(command(name), std::move(action));
}

void DocumentScreen::bindDraft() {
  if (description_.linesHoldWarehouse) comCk.onChanged([this] { warehouseChanged(); });
  dateCg.onEnter([this] { return !settleDate(); });
  // Not while the focus is on its way: the question would stand in the middle of it.
  dateCg.onLeft([this] {
    if (dateCg.text() != draft().date) QTimer::singleShot(0, this, [this] { settleDate(); });
  });
  gridLines.onChanged([this](const Row& row, std::string_view column, const QString& text) {
    cellChanged(row, column, text, Lines::Draft);
  });
  gridLines.onActivated([this] { modifyLine(); });
  bindCommand("btnAddOld", [this] { addOld(); });
  bindCommand("btnAddNew", [this] { addNew(); });
  bindCommand("btnImport", [this] { importSheet(); });
  bindCommand("btnJpgd", [this] { enterLenses(); });
  bindCommand("btnModi", [this] { modifyLine(); });
  bindCommand("btnDel", [this] { deleteLine(); });
  on(btnOK, [this] { save(); });
}

void DocumentScreen::bindPanels() {
  connect(panels_.tabs(), &QTabWidget::currentChanged, this, [this](int panel) {
    draftInSight(isDraftInSight());
    if (!isVisible()) return;
    if (panel == auditedPanel()) {
      showAudited();
    } else if (panel > kWaitingPanel) {
      showOpen();
    } else if (panel == kWaitingPanel) {
      refreshWaiting();
      gridWaiting.focusRows();
    } else {
      focusDraft();
    }
  });
}

bool DocumentScreen::isDraftInSight() const {
  return panels_.tabs()->currentIndex() == kDraftPanel;
}

bool DocumentScreen::turnToDraft() {
  using namespace document_screen_detail;
  if (!panels_.tabs()->isTabEnabled(kDraftPanel)) return false;
  panels_.tabs()->setCurrentIndex(kDraftPanel);
  return true;
}

void DocumentScreen::draftInSight(bool isIn) {
  btnOK.setVisible(isIn);
  command("btnPrin").setVisible(isIn && mayPrintUnsaved());
}

void DocumentScreen::showAudited() {
  if (!audited_) {
    audited_ = ui::newScreen(description_.auditedList);
    audited_->standIn(*panels_.tabs()->widget(auditedPanel()));
  }
  audited_->present();
}

// ---- opening -----------------------------------------------------------------------------------------------------

void DocumentScreen::activate() {
  using namespace document_screen_detail;
  lastSaved_.clear();
  fillLists();
  showByParameters();
  const bool makes = description_.make.isHeld();
  panels_.tabs()->setTabEnabled(kDraftPanel, makes);
  panels_.tabs()->setCurrentIndex(makes ? kDraftPanel : kWaitingPanel);
  initTab();
  showAllWaiting();
  if (!makes) gridWaiting.focusRows();
}

void DocumentScreen::fillLists() {
  comCk.setItems(document_screen_detail::warehouseItems());
  comUser.setItems(fillEmployees(description_.employeeFlag));
  field("comSort").setItems(
      {{QStringLiteral("新单据在前"), QStringLiteral("1")}, {QStringLiteral("旧单据在前"), QStringLiteral("0")}}, true);
}

void DocumentScreen::showByParameters() {
  draftInSight(isDraftInSight());
  for (auto* lines : {&gridLines, &gridWaitingLines}) {
    showLineColumns(*lines);
    lockLineCells(*lines, rules_.lines());
  }
}

void DocumentScreen::initTab() {
  beginDraft(lastDate_);
  // A document that was begun and never saved comes back: the program ended in between.
  const QString unsaved = findUnsaved();
  recalled_ = !unsaved.isEmpty() && !dateOfNumber(unsaved).isEmpty();
  if (recalled_) {
    draft().number = unsaved;
    draft().date = dateOfNumber(unsaved);
    recallDraft();
  }
  // Its head is gone, and with it the warehouse whose figures the lines hold: chosen anew, unless there is only one.
  const bool choosesAnew = recalled_ && description_.linesHoldWarehouse && comCk.items().size() > 1;
  if (choosesAnew) draft().warehouse.clear();
  tellRecalled(unsaved, choosesAnew);
  hint_->setVisible(!unsaved.isEmpty());
  showDraft();
  fillMore();
}

void DocumentScreen::tellRecalled(const QString& number, bool asksForWarehouse) {
  hint_->setText(QStringLiteral("已恢复上次未保存的商品，单号 ") + number +
                 (asksForWarehouse ? QStringLiteral("，请选择仓库，商品将按该仓库计价") : QString()));
}

QString DocumentScreen::findUnsaved() const {
  return unsavedDraft(rules_.family());
}

void DocumentScreen::showNewDraft() {
  recalled_ = false;
  if (!turnToDraft()) return;
  showDraft();
  focusDraft();
}

void DocumentScreen::linesChanged() {
  if (gridLines.isEmpty()) recalled_ = false;
  if (!gridLines.isEmpty() && !lastSaved_.isEmpty()) {
    lastSaved_.clear();
    say({});
  }
  lockWarehouse();
  showScanned();
}

void DocumentScreen::lockWarehouse() {
  const bool chosenAnew = recalled_ && comCk.items().size() > 1;
  if (description_.linesHoldWarehouse) comCk.setReadOnly(!gridLines.isEmpty() && !chosenAnew);
}

/// Only lines that came back after the program was cut off stand here while the warehouse may still be chosen.
void DocumentScreen::warehouseChanged() {
  if (!recalled_ || gridLines.isEmpty()) return;
  tellRecalled(draft().number, comCk.key().isEmpty());
  draftRules().lines().moveDraftTo(draftPlace());
  reloadLines(gridLines.currentId());
}

void DocumentScreen::showDraft() {
  const DocumentDraft& shown = draft();
  dateCg.setText(shown.date);
  comCk.setKey(shown.warehouse);
  comUser.setKey(keyToPropose(comUser.items(), shown.salesperson));
  if (auto* input = optional("tnote")) input->setText(shown.note);
  if (auto* input = optional("tSptm")) input->clear();
  scannedLine_ = 0;
  setNumber(shown.number);
  reloadLines();
}

void DocumentScreen::collect() {
  draft().warehouse = comCk.key();
  draft().salesperson = comUser.key();
  if (auto* input = optional("tnote")) draft().note = input->trimmed();
}

LinePlace DocumentScreen::draftPlace() {
  return {.number = draft().number, .date = draft().date, .warehouse = comCk.key()};
}

bool DocumentScreenSpec::Guarded::isHeld() const {
  return hasRight(right.group, right.position) || (otherwise.isGuarded() && hasRight(otherwise));
}

bool DocumentScreen::mayDo(const DocumentScreenSpec::Guarded& guarded) {
  if (guarded.isHeld()) return true;
  dispMsg(prompt(), words(guarded.refusal));
  return false;
}

// ---- first panel -------------------------------------------------------------------------------------------------

void DocumentScreen::setNumber(const QString& number) {
  draft().number = number;
  numberShown().setText(number);
}

void DocumentScreen::reloadLines(std::int64_t current) {
  gridLines.readNow(rules_.draftLines(draft().number));
  if (current != 0) gridLines.selectId(current);
  command("btnModi").setEnabled(!gridLines.isEmpty());
  command("btnDel").setEnabled(!gridLines.isEmpty());
  linesChanged();
}

bool DocumentScreen::settleDate() {
  const QString typed = dateCg.text();
  if (typed == draft().date) return true;
  if (typed.isEmpty() || !confirmDocumentDate(typed, prompt())) {
    dateCg.setText(draft().date);
    return false;
  }
  draft().date = typed;
  setNumber(redateDraft(draftFamily(), draft().number, typed));
  reloadLines(gridLines.currentId());
  return true;
}

void DocumentScreen::addOld() {
  if (!settleDate()) return;
  showPicked(ui::screenAs<GoodsPickScreen>(description_.pickScreen).pick(draftPlace(), Lines::Draft));
}

void DocumentScreen::enterLenses() {
  if (settleDate())
    showPicked(enterLensSheets(draftRules(), draftPlace(), Lines::Draft, mayMakeGoods(draftRules().lines())));
}

void DocumentScreen::importSheet() {
  if (!settleDate()) return;
  showPicked(ui::screenAs<LineImportScreen>(description_.importScreen).importInto(draftPlace(), Lines::Draft));
}

void DocumentScreen::exportLines() {
  if (gridLines.isEmpty() || !mayTakeOutUnsaved(prompt())) return;
  // Without sums and filter below: the file comes in again by the import as it is.
  Sheet sheet = ui::gridSheet(gridLines);
  sheet.sums.clear();
  sheet.notes.clear();
  ui::exportSheet(sheet, windowTitle() + u'-' + draft().number, this);
}

bool DocumentScreen::mayMakeGoods(const LineRules& lines) const {
  if (!lines.takesNewGoods()) return false;
  const Right& right = description_.addGoods ? description_.newGoods.right : document_screen_detail::kGoods;
  return hasRight(right.group, right.position);
}

void DocumentScreen::showPicked(const CopyResult& picked) {
  setNumber(picked.number);
  reloadLines(gridLines.currentId());
  if (picked.lines > 0) {
    gridLines.selectRow(gridLines.rowCount() - 1);
    say(u"已添加 %1 种商品 · 本单 %2 行，数量合计 %3"_qs.arg(picked.lines)
            .arg(gridLines.rowCount())
            .arg(gridLines.footerText(draftFamily().line.columns->quantity)));
  }
  tellLeftOff(picked);
}

void DocumentScreen::tellLeftOff(const CopyResult& picked) {
  if (picked.leftOff.isEmpty()) return;
  prompt().notice(u"下列商品在当前仓库中没有库存记录，没有加入单据：\r\n\r\n"_qs + picked.leftOff.join(u"\r\n"_qs));
}

void DocumentScreen::addNew() {
  if (!mayDo(description_.newGoods) || !settleDate()) return;
  const QString goods = description_.addGoods(std::exchange(unknownCode_, {}));
  if (goods.isEmpty()) return;
  const LineResult line =
      ui::screenAs<LineScreen>(description_.lineScreen).edit({.goods = goods, .place = draftPlace()});
  setNumber(line.number);
  reloadLines(line.id);
}

void DocumentScreen::modifyLine() {
  const std::int64_t id = gridLines.currentId();
  if (id == 0) return;
  editLine({.id = id, .place = draftPlace()});
  reloadLines(id);
}

void DocumentScreen::editLine(const LineScreen::Request& request) {
  ui::screenAs<LineScreen>(description_.lineScreen).edit(request);
}

void DocumentScreen::deleteLine() {
  if (gridLines.currentId() == 0) return;
  const bool deleted = deleteDraftLine(draftFamily(), gridLines.currentId());
  refused({{!deleted, changedMeanwhile(draft().number)}}, prompt());
  reloadLines();
  if (gridLines.isEmpty()) draftGone();
}

bool DocumentScreen::save() {
  if (!btnOK.isEnabled() || !settleDate() || !checkFields()) return false;
  btnOK.setEnabled(false);
  saving_ = true;
  const auto enableAgain = qScopeGuard([this] {
    btnOK.setEnabled(true);
    saving_ = false;
  });
  collect();
  const SaveResult saved = saveDraft();
  // A second press that came meanwhile finds the command off: it would refuse the empty document that follows.
  QApplication::processEvents();
  if (!saved) return false;
  if (printsAtSave(documentFamily(saved.number))) printSaved(saved.number);
  lastDate_ = draft().date;
  initTab();
  refreshWaiting(saved.number);
  tellSaved(saved);
  focusDraft();
  return true;
}

bool DocumentScreen::mayLeave() {
  switch (leaveDraft(draftFamily(), draft().number, prompt())) {
    case Answer::Yes:
      return save();
    case Answer::No:
      draftGone();
      return true;
    default:
      return false;
  }
}

bool DocumentScreen::keyPressed(QKeyEvent& event) {
  const bool isImport = event.key() == Qt::Key_I && event.modifiers() == Qt::ControlModifier;
  if (isImport && hasCommand("btnInOut") && command("btnInOut").isVisible()) {
    gridLines.focusRows();  // what stands in an open cell counts
    importSheet();
    return true;
  }
  if (!isDraftInSight()) return false;
  if (event.key() == Qt::Key_F5 && event.modifiers() == Qt::ControlModifier) {
    if (isHabit(kSavesAtOnce)) say(u"保存单据之前恢复询问"_qs);
    setHabit(kSavesAtOnce, false);
    return true;
  }
  // F8 looks at a document as on the other panels; one that is not saved is always looked at before it is printed.
  if (event.key() == Qt::Key_F8 && hasCommand("btnPrin")) {
    if (showsSaved())
      printDocument(lastSaved_, PrintWay::Preview);
    else
      printDraft();
    return true;
  }
  if (event.key() == Qt::Key_F6 && event.modifiers() == Qt::NoModifier && !lastSaved_.isEmpty()) {
    auditSaved();
    return true;
  }
  return false;
}

void DocumentScreen::cellChanged(const Row& row, std::string_view column, const QString& text, Lines where) {
  const std::int64_t id = row.integer("id");
  const bool isDraft = where == Lines::Draft;
  const LineRules& lines = (isDraft ? draftRules() : waitingRules()).lines();
  if (lines.cellAllows(text, lineFieldOf(column), where, id, isDraft ? draftPlace() : waitingPlace(), prompt()))
    lines.setChange(text, lineFieldOf(column), where, id, prompt());
  if (isDraft) {
    reloadLines(id);
  } else {
    refreshWaiting(waitingNumber());
    gridWaitingLines.selectId(id);
  }
}

}  // namespace jxc
