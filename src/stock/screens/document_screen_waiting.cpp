// The second panel of a document screen: documents that wait for audit, their lines, and what is done with them.
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "stock/screens/document_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/lens_sheet_screen.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/preview_screen.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/progress.h"
#include "ui/refresh_after.h"

#include <QTabWidget>

#include <algorithm>

namespace jxc {
void DocumentScreen::buildWaitingPanel(ui::Panel panel) {
  panel.row(description_.searchRow)
      .grid("gridWaiting", 3)
      .buttons(description_.waitingButtons)
      .grid("gridWaitingLines", 2)
      .buttons(description_.lineButtons);
}

void DocumentScreen::bindWaiting() {
  field("tkey").onEnter([this] {
    refreshWaiting();
    return true;
  });
  field("comSort").onChanged([this] { refreshWaiting(); });
  on(command("btnSearch"), [this] { refreshWaiting(); });
  gridWaiting.onCurrentChanged([this] { reloadWaitingLines(); });
  gridWaiting.onActivated([this] { auditCurrent(); });
  gridWaiting.addMenuCommand(QStringLiteral("审核当前单据"), [this] { auditCurrent(); });
  gridWaitingLines.onChanged([this](const Row& row, std::string_view column, const QString& text) {
    cellChanged(row, column, text, Lines::Waiting);
  });
  gridWaitingLines.onActivated([this] { modifyWaitingLine(); });
  bindCommand(description_.auditCommand, [this] { auditCurrent(); });
  bindCommand("btnPreview", [this] { previewAudit(); });
  bindCommand("btn_Check", [this] { auditList(); });
  bindCommand(description_.deleteCommand, [this] { deleteWaiting(); });
  bindCommand("btn_Date", [this] { changeHead(); });
  bindCommand("btnAdd", [this] { addWaitingLines(); });
  bindCommand("btnTab2Jpgd", [this] { enterWaitingLenses(); });
  bindCommand("btnTab2Import", [this] { importWaiting(); });
  bindCommand("btnTab2Modi", [this] { modifyWaitingLine(); });
  bindCommand("btnDele", [this] { deleteWaitingLine(); });
}

LinePlace DocumentScreen::waitingPlace() {
  const auto& family = rules_.family();
  return {.number = waitingNumber(),
          .date = gridWaiting.currentText(family.date),
          .warehouse = gridWaiting.currentText(family.warehouse)};
}

QString DocumentScreen::waitingNumber() const {
  return gridWaiting.currentText(rules_.family().number);
}

WaitingFilter DocumentScreen::waitingFilter() {
  return {.key = field("tkey").trimmed(),
          .newestFirst = field("comSort").key() != u"0",
          .without = gridWaiting.forbidden()};
}

void DocumentScreen::refreshWaiting(const QString& number) {
  const QString current = number.isEmpty() ? waitingNumber() : number;
  gridWaiting.setRows(rules_.waiting(waitingFilter()));
  for (const Row row : gridWaiting.rows())
    if (row.text(rules_.family().number) == current) gridWaiting.selectId(row.integer("id"));
  reloadWaitingLines();
  const QString title = ui::qs(description_.waitingTitle);
  panels_.tabs()->setTabText(kWaitingPanel,
                             gridWaiting.isEmpty() ? title : title + u" (%1)"_qs.arg(gridWaiting.rowCount()));
  command(description_.auditCommand).setEnabled(!gridWaiting.isEmpty());
  const std::string_view perDocument[] = {"btnPreview",    "btn_Check", description_.deleteCommand,
                                          "btn_Date",      "btnAdd",    "btnTab2Jpgd",
                                          "btnTab2Import", "btn_Prin",  "btn_ChaKan",
                                          "btnCkHt",       "btn_Export"};
  for (const std::string_view name : perDocument)
    if (hasCommand(name)) command(name).setEnabled(!gridWaiting.isEmpty());
}

void DocumentScreen::reloadWaitingLines() {
  const QString number = waitingNumber();
  if (number.isEmpty()) {
    gridWaitingLines.clearRows();
  } else {
    gridWaitingLines.readNow(rules_.waitingLines(number));
  }
  for (const char* name : {"btnTab2Modi", "btnDele"})
    command(name).setEnabled(!gridWaitingLines.isEmpty());
}

void DocumentScreen::auditCurrent() {
  const QString number = waitingNumber();
  if (number.isEmpty() || !mayDo(description_.audit)) return;
  auditWaiting(number);
  refreshWaiting();
  const bool waits = std::ranges::any_of(gridWaiting.shownRows(),
                                         [&](const Row& row) { return row.text(rules_.family().number) == number; });
  if (!waits) say(u"已审核 %1 · 还有 %2 张待审核"_qs.arg(number).arg(gridWaiting.rowCount()));
}

void DocumentScreen::auditWaiting(const QString& number) {
  if (!prompt().ask(u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs)) return;
  checkDj(waitingFamily(), number, prompt());
}

void DocumentScreen::previewAudit() {
  const QString number = waitingNumber();
  if (number.isEmpty()) return;
  showWhatIf(u"审核单据"_qs + number, number, [&](Prompt& agreeing) {
    return checkDj(rules_.of(number).family(), number, agreeing) == AuditOutcome::Audited;
  });
}

void DocumentScreen::auditList() {
  if (gridWaiting.isEmpty() || !mayDo(description_.audit)) return;
  std::vector<ListedDocument> documents;
  for (const Row row : gridWaiting.rows())
    documents.push_back({row.text(rules_.family().number), row.text(rules_.family().date), row.integer("id")});
  ui::refreshAfter([&] { auditWaitingList(documents, ui::progressOnDemand(u"正在审核单据……"_qs, this)); },
                   [this] { refreshWaiting(); });
}

void DocumentScreen::deleteWaiting() {
  const QString number = waitingNumber();
  if (number.isEmpty() || !mayDo(description_.deleteWaiting)) return;
  deleteWaitingDocument(waitingFamily(), number, prompt());
  waitingGone();
  refreshWaiting();
}

void DocumentScreen::changeHead() {
  const QString number = waitingNumber();
  if (number.isEmpty()) return;
  if (!session().canChangeDocDate) return dispMsg(prompt(), QStringLiteral("更改单据日期！"));
  refreshWaiting(description_.changeHead(number));
}

void DocumentScreen::addWaitingLines() {
  const LinePlace place = waitingPlace();
  if (place.number.isEmpty() || !mayDo(description_.addWaiting)) return;
  const CopyResult picked = ui::screenAs<GoodsPickScreen>(description_.pickScreen).pick(place, Lines::Waiting);
  refreshWaiting(place.number);
  tellLeftOff(picked);
}

void DocumentScreen::enterWaitingLenses() {
  const LinePlace place = waitingPlace();
  if (place.number.isEmpty() || !mayDo(description_.addWaiting)) return;
  enterLensSheets(waitingRules(), place, Lines::Waiting, mayMakeGoods(waitingRules().lines()));
  refreshWaiting(place.number);
}

void DocumentScreen::importWaiting() {
  const LinePlace place = waitingPlace();
  if (place.number.isEmpty() || !mayDo(description_.addWaiting)) return;
  ui::screenAs<LineImportScreen>(description_.importScreen).importInto(place, Lines::Waiting);
  refreshWaiting(place.number);
}

bool DocumentScreen::changeable(const ui::Grid& lines) {
  if (lines.currentId() == 0) return false;
  return !refused({{lines.currentText("g_sn") == u"00000000", u"优惠商品由结算产生，不能修改！"_qs}}, prompt());
}

void DocumentScreen::modifyWaitingLine() {
  if (!changeable(gridWaitingLines)) return;
  const std::int64_t id = gridWaitingLines.currentId();
  const LinePlace place = waitingPlace();
  editLine({.where = Lines::Waiting, .id = id, .place = place});
  refreshWaiting(place.number);
  gridWaitingLines.selectId(id);
}

void DocumentScreen::deleteWaitingLine() {
  const std::int64_t id = gridWaitingLines.currentId();
  if (id == 0 || !mayDo(description_.deleteWaiting)) return;
  const QString number = waitingNumber();
  jxc::deleteWaitingLine(waitingFamily(), number, id, prompt());
  waitingGone();
  refreshWaiting(number);
}

}  // namespace jxc
