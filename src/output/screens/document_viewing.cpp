#include "output/screens/document_viewing.h"

#include "accounts/partner_documents.h"
#include "core/clock.h"
#include "core/text.h"
#include "output/money_reports.h"
#include "output/printed_documents.h"
#include "output/screens/print_outlet.h"
#include "stock/document_family.h"
#include "stock/screens/preview_screen.h"
#include "ui/enquiry_screen.h"

#include <optional>

namespace jxc {
namespace document_viewing_detail {

std::optional<report::Report> paperOf(const QString& number) {
  using partner_books::Kind;
  if (const DocumentFamily* family = findFamily(number)) return savedDocumentReport(*family, number);
  for (const PartnerSide* side : {&customerSide, &supplierSide})
    for (const Kind kind : {Kind::Due, Kind::Payment})
      if (number.startsWith(partner_books::prefixOf(*side, kind))) return partnerDocumentReport(*side, kind, number);
  for (const char16_t* prefix : {u"XJ", u"XC", u"XZ"})
    if (number.startsWith(QStringView(prefix))) return cashSlipReport(number);
  if (expenses::isOwn(number)) return expenseSlipReport(number);
  return {};
}

/// The list as it stands, on the template of its own.
void printList(const ui::EnquiryView& view, const ui::Grid& list, const Criteria& criteria, ui::EnquiryScreen& screen) {
  report::Report report =
      listReport(words(view.paper), list.rows(), criteria.from.isEmpty() ? clock::today() : criteria.from, criteria.to);
  const QString warehouse = lookupValue("select ck_name from jxc_ckxx where ck_sn=?", criteria.warehouse);
  report.setText(u"ckName", warehouse.isEmpty() ? QStringLiteral("所有仓库") : warehouse);
  // A page of figures is one row: its form names them as variables.
  if (view.page && !list.isEmpty())
    for (const std::string& column : list.rows().columns()) {
      const Value value = list.rows().front().value(column);
      if (value.kind() == Value::Kind::Text)
        report.setText(words(column), value.text());
      else if (!value.isNull())
        report.setNumber(words(column), value.number());
    }
  // Paper shows what the role sees on the screen: a column that it must not see is not among the rows.
  bool seesCost = true, seesPrice = true;
  for (const ui::ColumnSpec& column : list.spec().columns) {
    if (list.isColumnAllowed(column.field)) continue;
    report.setVariable(words(column.field), QStringLiteral("null"));
    (column.right == kSeesPrice ? seesPrice : seesCost) = false;
  }
  report.setNumber(u"seesCost", seesCost ? 1 : 0);
  report.setNumber(u"seesPrice", seesPrice ? 1 : 0);
  if (view.paperWords)
    for (const auto& [name, text] : view.paperWords(criteria))
      report.setText(name, text);
  sendToPaper(report, PrintWay::Preview, &screen, screen.windowTitle());
}

const bool kAnnounced = [] {
  ui::enquiryServices() = {
      .openDocument = [](const QString& number, ui::Screen& screen) { showDocument(number, &screen, screen.prompt()); },
      .preview = showWhatIf,
      .printList = printList,
  };
  return true;
}();

}  // namespace document_viewing_detail

void showDocument(const QString& number, QWidget* parent, Prompt& prompt) {
  const auto paper = document_viewing_detail::paperOf(number);
  if (!paper) return prompt.notice(QStringLiteral("该记录没有可以查看的单据！"));
  sendToPaper(*paper, PrintWay::Preview, parent, number);
}

}  // namespace jxc
