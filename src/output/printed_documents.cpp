#include "output/printed_documents.h"

#include "core/session.h"
#include "core/text.h"
#include "output/templates.h"
#include "stock/document_family.h"
#include "stock/trading_document.h"

#include <algorithm>
#include <iterator>

namespace jxc {
namespace printed_documents_detail {

constexpr TemplateChoice kSaleForms[] = {
    {u"销售单", u"spxs.fr3", &Session::canSeePrice},
    {u"销售单(不含售价)", u"spxs4.fr3", nullptr},
    {u"销售单(含零售价)", u"spxs2.fr3", &Session::canSeePrice},
};
constexpr TemplateChoice kReceiptForms[] = {
    {u"采购单", u"cgjh.fr3", &Session::canSeeCost},
    {u"采购单(不含进价)", u"cgjh2.fr3", nullptr},
};

constexpr PrintedDocument kDocuments[] = {
    {.kind = u"cgjh",
     .prefix = u"CJ",
     .name = u"采购进货单",
     .plain = u"cgjh.fr3",
     .chosen = &Session::purchaseTemplate,
     .asksFormat = &SystemParameters::cs_cs011,
     .printsAtSave = &SystemParameters::cs_cs016,
     .choices = kReceiptForms},
    {.kind = u"cgth",
     .prefix = u"CT",
     .name = u"采购退货单",
     .plain = u"cgth.fr3",
     .chosen = &Session::purchaseReturnTemplate},
    {.kind = u"spxs",
     .prefix = u"XS",
     .name = u"商品销售单",
     .plain = u"spxs.fr3",
     .chosen = &Session::salesTemplate,
     .asksFormat = &SystemParameters::cs_cs010,
     .printsAtSave = &SystemParameters::cs_djzddy,
     .choices = kSaleForms},
    {.kind = u"xsth",
     .prefix = u"XT",
     .name = u"顾客退货单",
     .plain = u"xsth.fr3",
     .chosen = &Session::salesReturnTemplate},
    {.kind = u"kcdb",
     .prefix = u"DB",
     .name = u"库存调拨单",
     .plain = u"kcdbd.fr3",
     .chosen = &Session::transferTemplate},
    {.kind = u"kcpd", .prefix = u"PD", .name = u"库存盘点单", .plain = u"kcpdd.fr3"},
    {.kind = u"spbs", .prefix = u"BS", .name = u"商品报损单", .plain = u"bsby.fr3", .withoutCost = u"bsby2.fr3"},
    {.kind = u"spby", .prefix = u"BY", .name = u"商品报溢单", .plain = u"bsby.fr3", .withoutCost = u"bsby2.fr3"},
    {.kind = u"spcf", .prefix = u"CF", .name = u"商品拆分单", .plain = u"cfd.fr3", .withoutCost = u"cfd2.fr3"},
    {.kind = u"spkb", .prefix = u"KB", .name = u"商品捆绑单", .plain = u"kbd.fr3", .withoutCost = u"kbd2.fr3"},
    {.kind = u"khjh", .prefix = u"JH", .name = u"客户借货单", .plain = u"khjh.fr3"},
    {.kind = u"khjh", .prefix = u"HH", .name = u"客户还货单", .plain = u"khjh.fr3"},
};

}  // namespace printed_documents_detail

std::span<const PrintedDocument> printedDocuments() {
  return printed_documents_detail::kDocuments;
}

const PrintedDocument* printedDocument(QStringView prefixOrNumber) {
  const auto all = printedDocuments();
  const auto found = std::ranges::find_if(
      all, [&](const PrintedDocument& each) { return prefixOrNumber.startsWith(QStringView(each.prefix)); });
  return found == all.end() ? nullptr : &*found;
}

QString templateOf(const PrintedDocument& document) {
  if (!session().canSeeCost && !document.withoutCost.empty()) return words(document.withoutCost);
  const QString chosen = document.chosen ? session().*document.chosen : QString();
  return chosen.isEmpty() ? words(document.plain) : chosen;
}

bool asksFormat(const PrintedDocument& document) {
  return document.asksFormat && strIsTrue(session().*document.asksFormat);
}

std::vector<TemplateChoice> templateChoices(const PrintedDocument& document) {
  if (document.chosen && (session().*document.chosen).isEmpty()) session().*document.chosen = words(document.plain);
  std::vector<TemplateChoice> allowed;
  // A choice must not bring to paper what the role does not see on the screen.
  std::ranges::copy_if(document.choices, std::back_inserter(allowed),
                       [](const TemplateChoice& each) { return !each.right || session().*each.right; });
  return allowed;
}

void chooseTemplate(const PrintedDocument& document, QStringView file) {
  if (document.chosen) session().*document.chosen = file.toString();
}

bool mayPrintUnsaved() {
  return !strIsTrue(session().cs_bcqdy);
}

bool printsAtSave(const PrintedDocument& document) {
  return document.printsAtSave && strIsTrue(session().*document.printsAtSave);
}

report::Report savedDocumentReport(const PrintedDocument& document, const QString& number) {
  report::Report report = openReport(templateOf(document));
  fillSavedDocument(report, document, number);
  return report;
}

void fillSavedDocument(report::Report& report, const PrintedDocument& document, const QString& number) {
  report.setRows(printLines(number, QStringView(document.prefix)));
  fillPrintVars(report, number, QStringView(document.kind));
}

QString lastSavedDocument(const PrintedDocument& document) {
  const DocumentFamily& family = documentFamily(QStringView(document.prefix));
  return lookupValue(
      compose("select top 1 {} from {} where {} like ? order by id desc", {family.number, family.head, family.number}),
      words(document.prefix) + u'%');
}

report::Report draftDocumentReport(const PrintedDocument& document, const TradingDraft& draft) {
  report::Report report = openReport(templateOf(document));
  report.setRows(printLines(draft.number, QStringView(document.prefix), LineScope::OwnDraft));
  fillDraftVars(report, draft, document);
  return report;
}

}  // namespace jxc
