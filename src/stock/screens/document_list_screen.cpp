#include "stock/screens/document_list_screen.h"

#include "core/text.h"
#include "output/printed_documents.h"
#include "output/screens/prin_sele.h"
#include "output/screens/print_outlet.h"
#include "ui/display.h"
#include "ui/progress.h"
#include "ui/refresh_after.h"

#include <map>
#include <set>

namespace jxc {
namespace document_list_screen {

std::vector<ListItem> orders() {
  return {{QStringLiteral("按单据日期"), QStringLiteral("rq")},
          {QStringLiteral("按审核日期"), QString::fromUtf16(kByAudit)}};
}

QString kindTotals(const ui::Grid& list) {
  struct Total {
    int documents = 0;
    double worth = 0;
    bool isTold = true;
  };
  std::map<QString, Total> kinds;
  const bool seesAmounts = list.rows().columnIndex("zje") >= 0;  // without the right nothing of the column is there
  for (const Row row : list.rows()) {
    Total& total = kinds[row.text("gtype")];
    ++total.documents;
    total.isTold = total.isTold && seesAmounts && !row.isNull("zje");
    if (seesAmounts) total.worth += row.number("zje");
  }
  QStringList told;
  for (const auto& [kind, total] : kinds)
    told << u"%1 %2 张"_qs.arg(kind).arg(total.documents) +
                (total.isTold ? u' ' + ui::displaySum(ui::ColumnKind::Total, total.worth) : QString());
  return list.rows().isEmpty() ? QString()
                               : u"共 %1 张单据："_qs.arg(list.rows().rowCount()) + told.join(QStringLiteral("，"));
}

ui::RowLook lookOf(const Row& document) {
  if (!document.flag("status")) return ui::RowLook::Warning;
  return document.flag("j_th") ? ui::RowLook::Muted : ui::RowLook::Normal;
}

ui::RowLook lookOfLine(const Row& line) {
  return line.flag("status") ? ui::RowLook::Normal : ui::RowLook::Warning;
}

void toLines(Criteria& criteria, const Row& document) {
  criteria = {.document = document.text("djh"), .boxes = document.flag("status") ? 0 : kWaitingOnly};
}

bool cancelRow(const Row& document, Prompt& prompt) {
  return cancelListed(document.text("djh"), prompt);
}

}  // namespace document_list_screen

DocumentListScreen::DocumentListScreen(const ui::EnquirySpec& spec, std::string_view search)
    : EnquiryScreen(spec), more_(search) {
  resize(1264, 672);  // all of a small display, as the documents themselves
  on(command("btn_Cx"), [this] {
    if (more_.ask(command("btn_Cx"))) this->search();
  });
  on(command("btn_ChaKan"), [this] { follow(); });
  on(command("btn_Dydj"), [this] { printDocument(); });
  on(command("btn_Lxdy"), [this] { printAll(); });
  on(command("btn_UnChkAll"), [this] { cancelAll(); });
}

void DocumentListScreen::complete(Criteria& criteria) const {
  criteria.employee = more_.asked().employee;
  criteria.group = more_.asked().group;
  criteria.boxes |= more_.asked().boxes;
}

QString DocumentListScreen::currentNumber() const {
  return shown().currentText("djh");
}

void DocumentListScreen::printDocument() {
  const QString number = currentNumber();
  if (number.isEmpty()) return;
  const DocumentFamily& family = documentFamily(number);
  if (chooseForm(family))
    sendToPaper(savedDocumentReport(family, number), PrintWay::Ask, this, words(family.name) + number);
}

void DocumentListScreen::printAll() {
  shown().waitLoaded();
  const std::vector<Row> documents = shown().shownRows();
  if (documents.empty()) return;
  if (!prompt().ask(u"将依次打印列表中的 %1 张单据，确认吗？"_qs.arg(documents.size()))) return;
  // The form of each kind is chosen once, before the first paper.
  std::set<const DocumentFamily*> chosen;
  for (const Row& each : documents) {
    const DocumentFamily& family = documentFamily(each.text("djh"));
    if (chosen.insert(&family).second && !chooseForm(family)) return;
  }
  for (const Row& each : documents) {
    const DocumentFamily& family = documentFamily(each.text("djh"));
    sendToPaper(savedDocumentReport(family, each.text("djh")), PrintWay::AtOnce, this,
                words(family.name) + each.text("djh"));
  }
}

void DocumentListScreen::cancelAll() {
  shown().waitLoaded();
  std::vector<QString> numbers;
  for (const Row& each : shown().shownRows())
    if (each.flag("status")) numbers.push_back(each.text("djh"));
  ui::refreshAfter([&] { cancelAllListed(numbers, prompt(), ui::progressOnDemand(u"正在取消审核……"_qs, this)); },
                   [this] { rowsChanged(); });
}

}  // namespace jxc
