#include "stock/screens/document_screen.h"

#include "core/fillers.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/partner_picker.h"
#include "output/screens/prin_sele.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/lens_sheet_screen.h"
#include "stock/screens/line_import_screen.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/grid_output.h"
#include "ui/scan_catcher.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>

namespace jxc {
namespace document_screen_detail {

constexpr int kDraftPanel = 0;
constexpr int kWaitingPanel = 1;
constexpr Right kGoods = {"qtcz", 1};

bool isBarcode(const QString& code) {
  return !lookupValue("select top 1 g_sn from jxc_goods where g_sptm=?", sanitizeText(code)).isEmpty();
}

std::vector<ListItem> warehouseItems() {
  Filter filter;
  addWarehouseBinding(filter);
  return fillWarehouseCombo({}, filter);
}

}  // namespace document_screen_detail

DocumentScreen::DocumentScreen(const DocumentScreenSpec& spec)
    : Screen(spec.screen),
      partner(field(spec.partner)),
      paid(field(spec.paid)),
      description_(spec),
      rules_(spec.rules()),
      panels_(panel()) {
  buildDraftPanel(panels_.page("cxTab1", ui::qs(spec.draftTitle)));
  buildWaitingPanel(panels_.page("cxTab2", ui::qs(spec.waitingTitle)));
  panel().buttons(spec.saveRow);
  for (const std::string_view name : spec.notYet)
    command(name).setVisible(false);
  bindPanels();
  bindDraft();
  bindWaiting();
  bindPrinting();
  if (hasCommand("btnInOut")) addSheetMenu();
  if (!optional("tSptm")) return;
  scans_ = new ui::ScanCatcher(
      *this, *field("tSptm").widget(),
      {.isKnown = document_screen_detail::isBarcode,
       .scanned = [this](const QString& code) { enterBarcode(code); },
       // While a document is saved its number is on the way out: the code belongs to the next one.
       .isFree = [this] { return !saving_; },
       .watchesToo = [this](const QWidget& window) { return window.objectName() == ui::qs(description_.lineScreen); }});
  addScanOptions();
}

void DocumentScreen::addScanOptions() {
  auto* menu = new QMenu(this);
  const auto option = [&](const char* name, const QString& text) {
    auto* action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(true);
    return action;
  };
  onceOnly_ = option("btnPanelAdd", u"同一条码不能重复添加商品(&Y)"_qs);
  thenModify_ = option("btnPanelModi", u"添加完商品后打开修改窗口(&Z)"_qs);
  auto* hide = option("btnPanelHide", u"隐藏条码输入面板(&X)"_qs);
  connect(hide, &QAction::toggled, this, [this](bool hidden) {
    field("tSptm").setVisible(!hidden);
    focusDraft();
  });
  command("btnPanel").setMenu(menu);
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

ui::Field* DocumentScreen::optional(std::string_view name) {
  return hasField(name) ? &field(name) : nullptr;
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
  hint_->setProperty("explanation", true);
  panel.form(description_.headForm)
      .widget(hint_)
      .row(description_.scanRow)
      .grid("gridLines")
      .form(description_.footForm);
}

void DocumentScreen::bindCommand(std::string_view name, void (DocumentScreen::*action)()) {
  on(command(name), [this, action] { (this->*action)(); });
}

void DocumentScreen::bindDraft() {
  partner.onPick(description_.pickPartner);
  partner.onChanged([this] { partnerChanged(); });
  if (auto* scan = optional("tSptm"))
    scan->onEnter([this, scan] {
      if (scan->isEmpty()) {  // nothing more to scan: on to the money
        paid.focus();
      } else {
        scans_->take(scan->trimmed());
      }
      return true;
    });
  dateCg.onEnter([this] { return !settleDate(); });
  // Not while the focus is on its way: the question would stand in the middle of it.
  dateCg.onLeft([this] {
    if (dateCg.text() != draft_.date) QTimer::singleShot(0, this, [this] { settleDate(); });
  });
  gridLines.onChanged([this](const Row& row, std::string_view column, const QString& text) {
    cellChanged(row, column, text, Lines::Draft);
  });
  gridLines.onActivated([this] { modifyLine(); });
  bindCommand("btnAddOld", &DocumentScreen::addOld);
  if (hasCommand("btnAddNew")) bindCommand("btnAddNew", &DocumentScreen::addNew);
  if (hasCommand("btnZdth")) bindCommand("btnZdth", &DocumentScreen::returnWhole);
  if (hasCommand("btnImport")) bindCommand("btnImport", &DocumentScreen::importSheet);
  bindCommand("btnJpgd", &DocumentScreen::enterLenses);
  bindCommand("btnModi", &DocumentScreen::modifyLine);
  bindCommand("btnDel", &DocumentScreen::deleteLine);
  on(btnOK, [this] { save(); });
}

void DocumentScreen::bindPanels() {
  connect(panels_.tabs(), &QTabWidget::currentChanged, this, [this](int panel) {
    btnOK.setVisible(panel == document_screen_detail::kDraftPanel);
    command("btnPrin").setVisible(panel == document_screen_detail::kDraftPanel && mayPrintUnsaved());
    if (!isVisible()) return;
    if (panel == document_screen_detail::kWaitingPanel) {
      refreshWaiting();
      gridWaiting.focusRows();
    } else {
      focusDraft();
    }
  });
}

void DocumentScreen::bindPrinting() {
  bindCommand("btnPrin", &DocumentScreen::printDraft);
  const bool looksFirst = !hasCommand("btn_ChaKan");
  on(command("btn_Prin"), [this, looksFirst] { printWaiting(looksFirst ? PrintWay::Preview : PrintWay::Ask); });
  if (!looksFirst) on(command("btn_ChaKan"), [this] { printWaiting(PrintWay::Preview); });
  addPrintMenu(
      gridWaiting,
      [this]() -> std::optional<report::Report> {
        if (waitingNumber().isEmpty()) return {};
        return setPrinPara(waitingNumber(), PrintMode::Saved);
      },
      [this] { return words(rules_.family().name) + waitingNumber(); });
  gridWaiting.addMenuCommand(QStringLiteral("连续打印列表中的单据"), [this] { printList(); });
}

// ---- opening -----------------------------------------------------------------------------------------------------

void DocumentScreen::activate() {
  using namespace document_screen_detail;
  fillLists();
  showByParameters();
  const bool makes = hasRight(description_.make.right.group, description_.make.right.position);
  panels_.tabs()->setTabEnabled(kDraftPanel, makes);
  panels_.tabs()->setCurrentIndex(makes ? kDraftPanel : kWaitingPanel);
  initTab();
  showAllWaiting();
  if (!makes) gridWaiting.focusRows();
}

void DocumentScreen::fillLists() {
  comCk.setItems(document_screen_detail::warehouseItems());
  comUser.setItems(fillEmployees(description_.employeeFlag));
  comJsfs.setItems(settlementItems(description_.settleKind));
  comYhzh.setItems(accountItems());
  field("comSort").setItems(
      {{QStringLiteral("新单据在前"), QStringLiteral("1")}, {QStringLiteral("旧单据在前"), QStringLiteral("0")}}, true);
}

void DocumentScreen::showByParameters() {
  const auto show = [this](std::string_view name, bool on) {
    if (auto* input = optional(name)) input->setVisible(on);
  };
  show("tsn2", strIsTrue(session().cs_ysdh));
  show("tfpno", strIsTrue(session().cs_kp));
  show("tfpje", strIsTrue(session().cs_kp));
  if (description_.carriesFreight)
    for (const char* name : {"tyf", "tbzf", "chkYf"})
      show(name, description_.carriesFreight());
  show("comYhzh", strIsTrue(session().cs_xjyh));
  command("btnPrin").setVisible(mayPrintUnsaved() &&
                                panels_.tabs()->currentIndex() == document_screen_detail::kDraftPanel);
  const auto movedLater = rules_.family().line.columns->movedLater;
  show("chkZj", movedLater && movedLater());
  for (auto* lines : {&gridLines, &gridWaitingLines}) {
    showLineColumns(*lines, rules_.family());
    lockLineCells(*lines, rules_.lines());
  }
  for (const auto& column : gridWaiting.spec().columns)
    if (column.field.ends_with("_sn2") || column.field == "gl_djh2")
      gridWaiting.setColumnVisible(column.field, strIsTrue(session().cs_ysdh));
}

void DocumentScreen::initTab() {
  TradingDraft fresh = rules_.fresh(lastDate_);
  // A document that was begun and never saved comes back: the program ended in between.
  const QString unsaved = unsavedDraft(rules_.family());
  if (!unsaved.isEmpty() && !dateOfNumber(unsaved).isEmpty()) {
    fresh.number = unsaved;
    fresh.date = dateOfNumber(unsaved);
    rules_.recallReturned(fresh);
  }
  hint_->setText(QStringLiteral("已恢复上次未保存的商品，单号 ") + unsaved);
  hint_->setVisible(!unsaved.isEmpty());
  showDraft(fresh);
  fillMore();
}

void DocumentScreen::showDraft(const TradingDraft& draft) {
  draft_ = draft;
  partner.setPicked({partnerName(*description_.side, draft.partner), draft.partner});
  dateCg.setText(draft.date);
  comCk.setKey(draft.warehouse);
  comUser.setKey(draft.salesperson);
  showSettlement(comJsfs, draft.settlement);
  comYhzh.setKey(draft.account);
  paid.setNumber(draft.paid);
  const auto setText = [this](std::string_view name, const QString& text) {
    if (auto* input = optional(name)) input->setText(text);
  };
  setText("tsn2", draft.originalNumber);
  setText("tnote", draft.note);
  setText("tfpno", draft.invoiceNumber);
  if (auto* input = optional("tfpje")) input->setNumber(draft.invoiceAmount);
  for (const std::string_view name : {"tyf", "tbzf"})
    if (auto* input = optional(name)) input->clear();
  partner.setReadOnly(!draft.returnOf.isEmpty());
  if (auto* box = optional("chkYf")) box->setChecked(draft.wePayFreight);
  if (auto* box = optional("chkZj")) box->setChecked(draft.straightToStock.value_or(false));
  setText("tSptm", {});
  setNumber(draft.number);
  reloadLines();
}

TradingDraft DocumentScreen::collect() {
  TradingDraft draft = draft_;
  const auto text = [this](std::string_view name) {
    const auto* input = optional(name);
    return input ? input->trimmed() : QString();
  };
  const auto number = [this](std::string_view name) {
    const auto* input = optional(name);
    return input ? input->number() : 0.0;
  };
  draft.partner = partner.key();
  draft.warehouse = comCk.key();
  draft.salesperson = comUser.key();
  draft.originalNumber = text("tsn2");
  draft.note = text("tnote");
  draft.invoiceNumber = text("tfpno");
  draft.invoiceAmount = number("tfpje");
  draft.freight = number("tyf");
  draft.packing = number("tbzf");
  if (const auto* box = optional("chkYf")) draft.wePayFreight = box->isChecked();
  draft.payable = tyfje.number();
  draft.paid = paid.number();
  draft.settlement = chosenSettlement(comJsfs);
  draft.account = comYhzh.text();
  if (const auto* box = optional("chkZj"); box && box->isVisible()) draft.straightToStock = box->isChecked();
  collectMore(draft);
  return draft;
}

LinePlace DocumentScreen::draftPlace() const {
  return {.number = draft_.number, .date = draft_.date, .partner = partner.key(), .warehouse = comCk.key()};
}

bool DocumentScreen::mayDo(const DocumentScreenSpec::Guarded& guarded) {
  if (hasRight(guarded.right.group, guarded.right.position)) return true;
  dispMsg(prompt(), words(guarded.refusal));
  return false;
}

// ---- first panel -------------------------------------------------------------------------------------------------

void DocumentScreen::setNumber(const QString& number) {
  draft_.number = number;
  jsn.setText(number);
}

void DocumentScreen::reloadLines(std::int64_t current) {
  gridLines.setRows(rules_.draftLines(draft_.number));
  if (current != 0) gridLines.selectId(current);
  command("btnModi").setEnabled(!gridLines.isEmpty());
  command("btnDel").setEnabled(!gridLines.isEmpty());
  updateBottomJe();
}

void DocumentScreen::updateBottomJe() {
  const double due = rules_.payable(draft_.number);
  tyfje.setNumber(due);
  paid.setNumber(rules_.paidAfter(due, paid.number()));
}

bool DocumentScreen::settleDate() {
  const QString typed = dateCg.text();
  if (typed == draft_.date) return true;
  if (typed.isEmpty() || !confirmDocumentDate(typed, prompt())) {
    dateCg.setText(draft_.date);
    return false;
  }
  draft_.date = typed;
  setNumber(redateDraft(rules_.family(), draft_.number, typed));
  reloadLines(gridLines.currentId());
  return true;
}

void DocumentScreen::enterBarcode(const QString& code) {
  using namespace document_screen_detail;
  field("tSptm").clear();
  if (!panels_.tabs()->isTabEnabled(kDraftPanel)) return;
  panels_.tabs()->setCurrentIndex(kDraftPanel);
  if (!settleDate()) return;
  const ScanResult scanned = rules_.lines().enterBarcode(draftPlace(), code, onceOnly_->isChecked(), prompt());
  focusDraft();
  if (!scanned.refusal.isEmpty()) return prompt().notice(scanned.refusal);
  if (scanned.id == 0) return;  // the operator said no
  setNumber(scanned.number);
  reloadLines(scanned.id);
  if (thenModify_->isChecked()) modifyLine();
}

void DocumentScreen::addOld() {
  if (!settleDate()) return;
  showPicked(ui::screenAs<GoodsPickScreen>(description_.pickScreen).pick(draftPlace(), Lines::Draft));
}

void DocumentScreen::enterLenses() {
  if (settleDate()) showPicked(enterLensSheets(rules_, draftPlace(), Lines::Draft, mayMakeGoods()));
}

void DocumentScreen::importSheet() {
  if (!settleDate()) return;
  showPicked(ui::screenAs<LineImportScreen>(description_.importScreen).importInto(draftPlace(), Lines::Draft));
}

void DocumentScreen::exportLines() {
  if (gridLines.isEmpty()) return;
  // Without sums and filter below: the file comes in again by the import as it is.
  Sheet sheet = ui::gridSheet(gridLines);
  sheet.sums.clear();
  sheet.notes.clear();
  ui::exportSheet(sheet, windowTitle() + u'-' + draft_.number, this);
}

bool DocumentScreen::mayMakeGoods() const {
  const Right& right = description_.addGoods ? description_.newGoods.right : document_screen_detail::kGoods;
  return hasRight(right.group, right.position);
}

void DocumentScreen::showPicked(const CopyResult& picked) {
  setNumber(picked.number);
  reloadLines(gridLines.currentId());
  if (picked.lines > 0) gridLines.selectRow(gridLines.rowCount() - 1);
}

void DocumentScreen::addNew() {
  if (!mayDo(description_.newGoods) || !settleDate()) return;
  const QString goods = description_.addGoods();
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

void DocumentScreen::returnWhole() {
  if (!settleDate()) return;
  if (refused({{!gridLines.isEmpty(), u"请先保存本次的退货单据！"_qs},
               {partner.key().isEmpty(), u"请选择%1！"_qs.arg(QString::fromUtf16(description_.side->noun))},
               {comCk.items().empty(), u"请选择仓库！"_qs},
               {comUser.items().empty(), u"请选择经办人！"_qs}},
              prompt()))
    return;
  const QString source = description_.pickReturned();
  if (source.isEmpty()) return;
  if (const auto whole = rules_.returnWhole(source, collect(), prompt())) showDraft(*whole);
}

void DocumentScreen::deleteLine() {
  if (gridLines.currentId() == 0) return;
  deleteDraftLine(rules_.family(), gridLines.currentId());
  reloadLines();
  // Nothing is left of the document that was to go back: what follows is a return of its own.
  if (gridLines.isEmpty()) {
    rules_.forgetReturned(draft_.number);
    draft_.returnOf.clear();
    partner.setReadOnly(false);
  }
}

bool DocumentScreen::save() {
  if (!btnOK.isEnabled() || !settleDate() || !checkFields()) return false;
  btnOK.setEnabled(false);
  saving_ = true;
  const auto enableAgain = qScopeGuard([this] {
    btnOK.setEnabled(true);
    saving_ = false;
  });
  const SaveResult saved = rules_.save(collect(), prompt());
  // A second press that came meanwhile finds the command off: it would refuse the empty document that follows.
  QApplication::processEvents();
  if (!saved) {
    if (partner.key().isEmpty()) partner.focus();
    return false;
  }
  if (printsAtSave(rules_.family())) printSaved(saved.number);
  lastDate_ = draft_.date;
  initTab();
  focusDraft();
  return true;
}

// ---- printing ----------------------------------------------------------------------------------------------------

std::optional<report::Report> DocumentScreen::setPrinPara(const QString& number, PrintMode mode) {
  if (!inBatch_ && !chooseForm(rules_.family())) return {};
  if (mode == PrintMode::Saved) return savedDocumentReport(rules_.family(), number);
  return draftDocumentReport(rules_.family(), collect());
}

void DocumentScreen::printDraft() {
  if (!settleDate()) return;
  if (refused({{gridLines.isEmpty(), u"单据中没有业务发生，不能打印！"_qs}}, prompt())) return;
  if (const auto report = setPrinPara(draft_.number, PrintMode::OnScreen))
    sendToPaper(*report, PrintWay::Preview, this, words(rules_.family().name) + draft_.number);
}

void DocumentScreen::printSaved(const QString& number) {
  // The document is saved whatever the printer does: the next one must find a clean screen.
  try {
    if (const auto report = setPrinPara(number, PrintMode::Saved)) sendToPaper(*report, PrintWay::AtOnce, this);
  } catch (const std::exception& failure) {
    ui::tellFailure(failure);
  }
}

void DocumentScreen::printWaiting(PrintWay way) {
  const QString number = waitingNumber();
  if (number.isEmpty()) return;
  if (const auto report = setPrinPara(number, PrintMode::Saved))
    sendToPaper(*report, way, this, words(rules_.family().name) + number);
}

void DocumentScreen::printList() {
  if (gridWaiting.isEmpty() || !chooseForm(rules_.family())) return;
  if (!prompt().ask(u"将依次打印列表中的 %1 张单据，确认吗？"_qs.arg(gridWaiting.rowCount()))) return;
  inBatch_ = true;
  const auto batchEnds = qScopeGuard([this] { inBatch_ = false; });
  for (const Row row : gridWaiting.rows())
    sendToPaper(*setPrinPara(row.text(rules_.family().number), PrintMode::Saved), PrintWay::AtOnce, this);
}

bool DocumentScreen::mayLeave() {
  switch (leaveDraft(rules_.family(), draft_.number, prompt())) {
    case Answer::Yes:
      return save();
    case Answer::No:
      rules_.forgetReturned(draft_.number);
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
  if (event.key() != Qt::Key_F8 || !partner.hasFocus() || partner.isReadOnly()) return false;
  if (!mayDo(description_.newPartner)) return true;
  if (const auto added = description_.addPartner()) {
    partner.setPicked(*added);
    partnerChanged();
  }
  return true;
}

void DocumentScreen::cellChanged(const Row& row, std::string_view column, const QString& text, Lines where) {
  const std::int64_t id = row.integer("id");
  rules_.lines().setChange(text, lineFieldOf(column), where, id, prompt());
  if (where == Lines::Draft) {
    reloadLines(id);
  } else {
    refreshWaiting(waitingNumber());
    gridWaitingLines.selectId(id);
  }
}

}  // namespace jxc
