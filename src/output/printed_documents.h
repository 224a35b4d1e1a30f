// 单据打印: which template a document prints through, and the report of a saved one or of one on the screen.
#pragma once

#include "core/prompt.h"
#include "output/print_lines.h"
#include "output/print_vars.h"
#include "platform/report/report.h"
#include "stock/document_paper.h"

#include <QString>
#include <QStringView>

#include <set>
#include <vector>

namespace jxc {

struct DocumentFamily;
struct DocumentDraft;
struct DraftOfPartner;
struct TradingDraft;
struct ConversionDraft;
struct ConversionFigures;

/// The file of the template that it prints through now: "spxs2.fr3", or a design of the shop's own.
QString templateOf(const DocumentFamily& family);
/// Files of all templates that something prints through at this station, for operators of any role.
std::set<QString> templatesInUse();
/// The form is to be chosen before a print.
bool asksFormat(const DocumentFamily& family);
/// A form that may be chosen before a print.
struct OfferedForm {
  QString caption, file;
  bool isOwn = false;  // a further design of the shop
};
/// The forms that this operator may choose, those of the program first, then the shop's own designs of them; an empty
/// name in the session is first set to the plain one.
std::vector<OfferedForm> templateChoices(const DocumentFamily& family);
/// Takes one of them; stays in the session until it is loaded anew.
void chooseTemplate(const DocumentFamily& family, QStringView file);

/// A print is possible before the document is saved (`cs_bcqdy` off).
bool mayPrintUnsaved();
/// The same for whatever carries an unsaved document out of the program: its form, a list of its lines on paper, in a
/// file, on the clipboard. Tells when it may not.
bool mayTakeOutUnsaved(Prompt& prompt);
bool printsAtSave(const DocumentFamily& family);

/// A document that is saved: variables by fillPrintVars. Throws report::TemplateError when the template cannot be
/// loaded.
report::Report savedDocumentReport(const DocumentFamily& family, const QString& number);
/// The same onto an empty report, of whatever template.
void fillSavedDocument(report::Report& report, const DocumentFamily& family, const QString& number);
/// The document of this kind that was saved last, for a look at a template; empty when there is none.
QString lastSavedDocument(const DocumentFamily& family);
/// A document that stands on the screen: variables from its inputs, lines of this operator.
report::Report draftDocumentReport(const DocumentFamily& family, const DocumentDraft& draft);
report::Report draftDocumentReport(const DocumentFamily& family, const DraftOfPartner& draft);
report::Report draftDocumentReport(const DocumentFamily& family, const TradingDraft& draft);
report::Report draftDocumentReport(const DocumentFamily& family, const ConversionDraft& draft,
                                   const ConversionFigures& figures);

}  // namespace jxc
