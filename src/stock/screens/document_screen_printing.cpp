// 单据打印: what leaves a document screen: papers of the draft and of what waits, and the lists of its lines.
#include "core/refusal.h"
#include "core/text.h"
#include "output/screens/prin_sele.h"
#include "stock/screens/document_screen.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/message_box_prompt.h"
#include "ui/report/print.h"

#include <QScopeGuard>

#include <stdexcept>

namespace jxc {

void DocumentScreen::bindPrinting() {
  bindCommand("btnPrin", [this] { printDraft(); });
  on(command("btn_Prin"), [this] { printWaiting(PrintWay::Ask); });
  on(command("btn_ChaKan"), [this] { printWaiting(PrintWay::Preview); });
  addPrintMenu(
      gridWaiting,
      [this]() -> std::optional<report::Report> {
        if (waitingNumber().isEmpty()) return {};
        return setPrinPara(waitingNumber(), PrintMode::Saved);
      },
      [this] { return words(waitingFamily().name) + waitingNumber(); });
  gridWaiting.addMenuCommand(QStringLiteral("连续打印列表中的单据"), [this] { printList(); });
  for (auto* each : grids())
    if (each != &gridWaiting && each != &gridWaitingLines)
      each->setMayTakeOut([this] { return mayTakeOutUnsaved(prompt()); });
  const auto numbered = [](ui::Grid& lines, auto&& number) {
    lines.setHeading([&lines, number] { return ui::GridHeading{number() + u'-' + ui::qs(lines.spec().caption), {}}; });
  };
  numbered(gridLines, [this] { return words(draftFamily().name) + draft().number; });
  numbered(gridWaitingLines, [this] { return words(waitingFamily().name) + waitingNumber(); });
}

std::optional<report::Report> DocumentScreen::setPrinPara(const QString& number, PrintMode mode) {
  const DocumentFamily& family = rules_.of(number).family();
  if (!inBatch_ && !chooseForm(family)) return {};
  if (mode == PrintMode::Saved) return savedDocumentReport(family, number);
  collect();
  return draftReport();
}

void DocumentScreen::printDraft() {
  if (showsSaved()) return printDocument(lastSaved_, PrintWay::Ask);
  if (!mayTakeOutUnsaved(prompt()) || !settleDate()) return;
  if (refused({{gridLines.isEmpty(), u"单据中没有业务发生，不能打印！"_qs}}, prompt())) return;
  if (const auto report = setPrinPara(draft().number, PrintMode::OnScreen))
    sendToPaper(*report, PrintWay::Preview, this, words(draftFamily().name) + draft().number);
}

void DocumentScreen::printSaved(const QString& number) {
  // The document is saved whatever the printer does: the next one must find a clean screen.
  const QString name = words(documentFamily(number).name) + number;
  ui::doOrTell([&] {
    const auto report = setPrinPara(number, PrintMode::Saved);
    if (!report) return;
    QString trouble;
    try {
      return sendToPaper(*report, PrintWay::AtOnce, this, name);
    } catch (const ui::PrintError& failure) {
      trouble = failure.trouble();
    }
    if (ui::MessageBoxPrompt(this).offer(u"单据 %1 已保存。%2"_qs.arg(number, trouble), u"存为PDF(&P)"_qs))
      sendToPaper(*report, PrintWay::Pdf, this, name);
  });
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
    sendToPaper(*setPrinPara(row.text(rules_.family().number), PrintMode::Saved), PrintWay::AtOnce, this,
                words(rules_.family().name) + row.text(rules_.family().number));
}

}  // namespace jxc
