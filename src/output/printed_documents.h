// 单据打印: which template a document prints through, and the report of a saved one or of one on the screen.
#pragma once

#include "output/print_lines.h"
#include "output/print_vars.h"
#include "platform/report/report.h"

#include <QString>
#include <QStringView>

#include <span>
#include <string_view>
#include <vector>

namespace jxc {

struct Session;
struct SystemParameters;
struct TradingDraft;

/// One of the forms that the operator may choose from before a print.
struct TemplateChoice {
  std::u16string_view caption;  // "销售单(不含售价)"
  std::u16string_view file;     // "spxs4.fr3"
  bool Session::*right;         // what it shows needs this right; null: nothing that is guarded
};

/// How a kind of document prints.
struct PrintedDocument {
  std::u16string_view kind;    // of fillPrintVars: "spxs"
  std::u16string_view prefix;  // of its numbers
  std::u16string_view name;    // 销售单
  std::u16string_view plain;   // its usual template, with ".fr3"
  QString Session::*chosen;    // holds the name of the template by rights and parameters; null: always the usual one
  QString SystemParameters::*asksFormat;    // on: the form is chosen before each print
  QString SystemParameters::*printsAtSave;  // on: printed when it is saved
  std::span<const TemplateChoice> choices;
  std::u16string_view withoutCost;  // instead of the usual one, for a role that does not see cost
};

std::span<const PrintedDocument> printedDocuments();
/// By prefix, or by a number that begins with it; null for a document that has no paper.
const PrintedDocument* printedDocument(QStringView prefixOrNumber);

/// The template that it prints through now: "spxs2.fr3".
QString templateOf(const PrintedDocument& document);
/// The form is to be chosen before a print.
bool asksFormat(const PrintedDocument& document);
/// The forms that this operator may choose; an empty name in the session is first set to the plain one.
std::vector<TemplateChoice> templateChoices(const PrintedDocument& document);
/// Takes one of them; stays in the session until it is loaded anew.
void chooseTemplate(const PrintedDocument& document, QStringView file);

/// A print is possible before the document is saved (`cs_bcqdy` off).
bool mayPrintUnsaved();
bool printsAtSave(const PrintedDocument& document);

/// A document that is saved: variables by fillPrintVars. Throws report::TemplateError when the template cannot be
/// loaded.
report::Report savedDocumentReport(const PrintedDocument& document, const QString& number);
/// The same onto an empty report, of whatever template.
void fillSavedDocument(report::Report& report, const PrintedDocument& document, const QString& number);
/// The document of this kind that was saved last, for a look at a template; empty when there is none.
QString lastSavedDocument(const PrintedDocument& document);
/// A document that stands on the screen: variables from its inputs, lines of this operator.
report::Report draftDocumentReport(const PrintedDocument& document, const TradingDraft& draft);

}  // namespace jxc
