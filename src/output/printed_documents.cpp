#include "output/printed_documents.h"

#include "core/session.h"
#include "core/text.h"
#include "output/templates.h"
#include "stock/conversion.h"
#include "stock/document_family.h"
#include "stock/trading_document.h"

#include <algorithm>
#include <iterator>

namespace jxc {

QString templateOf(const DocumentFamily& family) {
  const QString chosen = family.paper.chosen ? session().*family.paper.chosen : QString();
  if (!chosen.isEmpty() && chosen != QStringView(family.paper.plain)) return chosen;
  const bool withoutCost = !session().canSeeCost && !family.paper.withoutCost.empty();
  return words(withoutCost ? family.paper.withoutCost : family.paper.plain);
}

bool asksFormat(const DocumentFamily& family) {
  return family.paper.asksFormat && strIsTrue(session().*family.paper.asksFormat);
}

std::vector<TemplateChoice> templateChoices(const DocumentFamily& family) {
  if (family.paper.chosen && (session().*family.paper.chosen).isEmpty())
    session().*family.paper.chosen = words(family.paper.plain);
  std::vector<TemplateChoice> allowed;
  // A choice must not bring to paper what the role does not see on the screen.
  std::ranges::copy_if(family.paper.choices, std::back_inserter(allowed),
                       [](const TemplateChoice& each) { return !each.right || session().*each.right; });
  return allowed;
}

void chooseTemplate(const DocumentFamily& family, QStringView file) {
  if (family.paper.chosen) session().*family.paper.chosen = file.toString();
}

bool mayPrintUnsaved() {
  return !strIsTrue(session().cs_bcqdy);
}

bool printsAtSave(const DocumentFamily& family) {
  return family.paper.printsAtSave && strIsTrue(session().*family.paper.printsAtSave);
}

report::Report savedDocumentReport(const DocumentFamily& family, const QString& number) {
  report::Report report = openReport(templateOf(family));
  fillSavedDocument(report, family, number);
  return report;
}

void fillSavedDocument(report::Report& report, const DocumentFamily& family, const QString& number) {
  report.setRows(printLines(number, QStringView(family.prefix)));
  fillPrintVars(report, number, QStringView(family.paper.kind));
}

QString lastSavedDocument(const DocumentFamily& family) {
  return lookupValue(
      compose("select top 1 {} from {} where {} like ? order by id desc", {family.number, family.head, family.number}),
      words(family.prefix) + u'%');
}

namespace printed_documents_detail {

template <class Draft, class... Figures>
report::Report draftReport(const DocumentFamily& family, const Draft& draft, const Figures&... figures) {
  report::Report report = openReport(templateOf(family));
  report.setRows(printLines(draft.number, QStringView(family.prefix), LineScope::OwnDraft));
  fillDraftVars(report, draft, figures..., family);
  return report;
}

}  // namespace printed_documents_detail

report::Report draftDocumentReport(const DocumentFamily& family, const DocumentDraft& draft) {
  return printed_documents_detail::draftReport(family, draft);
}

report::Report draftDocumentReport(const DocumentFamily& family, const TradingDraft& draft) {
  return printed_documents_detail::draftReport(family, draft);
}

report::Report draftDocumentReport(const DocumentFamily& family, const ConversionDraft& draft,
                                   const ConversionFigures& figures) {
  return printed_documents_detail::draftReport(family, draft, figures);
}

}  // namespace jxc
