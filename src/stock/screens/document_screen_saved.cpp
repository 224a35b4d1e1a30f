// What follows a document that was saved: its quiet line, its audit from the panel of new ones, its papers.
#include "core/habits.h"
#include "core/text.h"
#include "output/screens/prin_sele.h"
#include "stock/screens/document_screen.h"
#include "ui/application.h"

#include <QScopeGuard>
#include <QTabWidget>

namespace jxc {

void DocumentScreen::tellSaved(const SaveResult& saved) {
  lastSaved_ = saved.number;
  QString text = (saved.audited ? u"已保存并审核 "_qs : u"已保存 "_qs) + saved.number;
  if (!saved.audited) text += u" · F6审核"_qs;
  text += u" · Ctrl+P打印"_qs;
  if (isHabit(kSavesAtOnce)) text += u" · Ctrl+F5恢复保存前的询问"_qs;
  say(text);
}

/// The document that was saved last, from the panel of new ones and back to it.
void DocumentScreen::auditSaved() {
  const QString number = lastSaved_;
  panels_.tabs()->setCurrentIndex(kWaitingPanel);
  showAllWaiting();
  refreshWaiting(number);
  if (waitingNumber() == number) auditCurrent();
  panels_.tabs()->setCurrentIndex(kDraftPanel);
}

// ---- paper ---------------------------------------------------------------------------------------------------------

void DocumentScreen::bindPrinting() {
  bindCommand("btnPrin", [this] { printDraft(); });
  const bool looksFirst = !hasCommand("btn_ChaKan");
  on(command("btn_Prin"), [this, looksFirst] { printWaiting(looksFirst ? PrintWay::Preview : PrintWay::Ask); });
  if (!looksFirst) on(command("btn_ChaKan"), [this] { printWaiting(PrintWay::Preview); });
  addPrintMenu(
      gridWaiting,
      [this]() -> std::optional<report::Report> {
        if (waitingNumber().isEmpty()) return {};
        return setPrinPara(waitingNumber(), PrintMode::Saved);
      },
      [this] { return words(waitingFamily().name) + waitingNumber(); });
  gridWaiting.addMenuCommand(QStringLiteral("连续打印列表中的单据"), [this] { printList(); });
}

std::optional<report::Report> DocumentScreen::setPrinPara(const QString& number, PrintMode mode) {
  const DocumentFamily& family = rules_.of(number).family();
  if (!inBatch_ && !chooseForm(family)) return {};
  if (mode == PrintMode::Saved) return savedDocumentReport(family, number);
  collect();
  return draftReport();
}

void DocumentScreen::printDraft() {
  if (!settleDate()) return;
  if (gridLines.isEmpty() && !lastSaved_.isEmpty()) return printDocument(lastSaved_, PrintWay::Preview);
  if (refused({{gridLines.isEmpty(), u"单据中没有业务发生，不能打印！"_qs}}, prompt())) return;
  if (const auto report = setPrinPara(draft().number, PrintMode::OnScreen))
    sendToPaper(*report, PrintWay::Preview, this, words(draftFamily().name) + draft().number);
}

void DocumentScreen::printSaved(const QString& number) {
  // The document is saved whatever the printer does: the next one must find a clean screen.
  try {
    if (const auto report = setPrinPara(number, PrintMode::Saved)) sendToPaper(*report, PrintWay::AtOnce, this);
  } catch (const std::exception& failure) {
    ui::tellFailure(failure);
  }
}

void DocumentScreen::printDocument(const QString& number, PrintWay way) {
  if (number.isEmpty()) return;
  if (const auto report = setPrinPara(number, PrintMode::Saved))
    sendToPaper(*report, way, this, words(rules_.of(number).family().name) + number);
}

void DocumentScreen::printList() {
  if (gridWaiting.isEmpty() || !chooseForm(rules_.family())) return;
  if (!prompt().ask(u"将依次打印列表中的 %1 张单据，确认吗？"_qs.arg(gridWaiting.rowCount()))) return;
  inBatch_ = true;
  const auto batchEnds = qScopeGuard([this] { inBatch_ = false; });
  for (const Row row : gridWaiting.rows())
    sendToPaper(*setPrinPara(row.text(rules_.family().number), PrintMode::Saved), PrintWay::AtOnce, this);
}

}  // namespace jxc
