#include "output/printed_documents.h"

#include "core/roles.h"
#include "core/session.h"
#include "core/template_names.h"
#include "core/text.h"
#include "output/templates.h"
#include "stock/conversion.h"
#include "stock/document_family.h"
#include "stock/partial_rules.h"
#include "stock/trading_document.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace jxc {

namespace printed_documents_detail {

/// What the parameters want for an operator with the rights of this session, or the form that was chosen.
QString fileFor(const DocumentFamily& family, const Session& operating) {
  const QString chosen = family.paper.chosen ? operating.*family.paper.chosen : QString();
  const bool isOwn = !chosen.isEmpty() && !findTemplate(chosen);
  if (isOwn && QFile::exists(templatePath(chosen))) return chosen;
  if (!isOwn && !chosen.isEmpty() && chosen != QStringView(family.paper.plain)) return templateInUse(chosen);
  const bool withoutCost = !operating.canSeeCost && !family.paper.withoutCost.empty();
  return templateInUse(withoutCost ? family.paper.withoutCost : family.paper.plain);
}

std::vector<TemplateChoice> allowedChoices(const DocumentFamily& family, const Session& operating) {
  std::vector<TemplateChoice> allowed;
  // A choice must not bring to paper what the role does not see on the screen.
  std::ranges::copy_if(family.paper.choices, std::back_inserter(allowed),
                       [&](const TemplateChoice& each) { return !each.right || operating.*each.right; });
  return allowed;
}

/// Sessions as operators of the roles of this shop would have them, as far as templates ask.
std::vector<Session> sessionsOfRoles() {
  const auto groups = rightsGroups();
  const auto others = std::ranges::find(groups, std::string_view("qtcz"), &RightsGroup::column) - groups.begin();
  struct Sees {
    bool cost = true, price = true;
    auto operator<=>(const Sees&) const = default;
  };
  std::set<Sees> seen{Sees()};  // the administrator's role sees all
  for (const Row role : openSelect(roleListStatement())) {
    const RoleDraft rights = readRole(role.integer("id"));
    const auto sees = [&](const Right& right) {
      return isGranted(rights, static_cast<std::size_t>(others), static_cast<std::size_t>(right.position - 1));
    };
    seen.insert({.cost = sees(kSeesCost), .price = sees(kSeesPrice)});
  }
  std::vector<Session> sessions;
  for (const Sees& each : seen) {
    Session& one = sessions.emplace_back(session());
    one.canSeeCost = each.cost;
    one.canSeePrice = each.price;
    chooseTemplates(one);
  }
  return sessions;
}

bool printsFamily(const KnownTemplate& which) {
  // "spxs2" and "kcdbd3" are forms of the same document as "spxs" and "kcdbd".
  const std::u16string_view stem = which.name.substr(0, which.name.find_last_not_of(u"0123456789") + 1);
  return std::ranges::any_of(documentFamilies(), [&](const DocumentFamily& family) {
    return family.paper.plain.substr(0, family.paper.plain.find(u'.')) == stem;
  });
}

}  // namespace printed_documents_detail

QString templateOf(const DocumentFamily& family) {
  return printed_documents_detail::fileFor(family, session());
}

std::set<QString> templatesInUse() {
  using namespace printed_documents_detail;
  std::set<QString> used;
  for (const Session& operating : sessionsOfRoles())
    for (const DocumentFamily& family : documentFamilies()) {
      used.insert(fileFor(family, operating));
      if (!asksFormat(family)) continue;
      for (const TemplateChoice& each : allowedChoices(family, operating))
        used.insert(templateInUse(each.file));
    }
  for (const KnownTemplate& each : knownTemplates())
    if (!each.isAwaited && !printsFamily(each)) used.insert(templateInUse(each.name));
  return used;
}

bool asksFormat(const DocumentFamily& family) {
  return family.paper.asksFormat && strIsTrue(session().*family.paper.asksFormat);
}

std::vector<OfferedForm> templateChoices(const DocumentFamily& family) {
  if (family.paper.chosen && (session().*family.paper.chosen).isEmpty())
    session().*family.paper.chosen = words(family.paper.plain);
  const std::vector<OwnTemplate> own = ownTemplates();
  const auto allowed = printed_documents_detail::allowedChoices(family, session());
  std::vector<OfferedForm> forms;
  for (const TemplateChoice& each : allowed) {
    const QString inUse = templateInUse(each.file);
    const bool isReplaced = inUse != QStringView(each.file);
    forms.push_back(
        {words(each.caption) + (isReplaced ? u"：%1"_qs.arg(inUse.chopped(4)) : QString()), words(each.file)});
  }
  for (const TemplateChoice& each : allowed)
    for (const OwnTemplate& design : own)
      if (design.kind == findTemplate(each.file) && design.kind && design.file != templateInUse(each.file))
        forms.push_back({design.caption(), design.file, true});
  return forms;
}

void chooseTemplate(const DocumentFamily& family, QStringView file) {
  if (family.paper.chosen) session().*family.paper.chosen = file.toString();
}

bool mayPrintUnsaved() {
  return !strIsTrue(session().cs_bcqdy);
}

bool mayTakeOutUnsaved(Prompt& prompt) {
  if (!mayPrintUnsaved()) prompt.notice(QStringLiteral("单据保存之前不能打印、导出和复制！"));
  return mayPrintUnsaved();
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
  report.setFixedLines(fixedPrintLines(QStringView(family.prefix)));
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
  report.setFixedLines(fixedPrintLines(QStringView(family.prefix)));
  fillDraftVars(report, draft, figures..., family);
  return report;
}

}  // namespace printed_documents_detail

report::Report draftDocumentReport(const DocumentFamily& family, const DocumentDraft& draft) {
  return printed_documents_detail::draftReport(family, draft);
}

report::Report draftDocumentReport(const DocumentFamily& family, const DraftOfPartner& draft) {
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
