// 单据票样: which template a document prints through, and what stands on its paper beyond what its family tells.
#pragma once

#include <QString>

#include <span>
#include <string_view>

namespace jxc {

struct Session;
struct SystemParameters;

/// One of the forms that the operator may choose from before a print.
struct TemplateChoice {
  std::u16string_view caption;  // "销售单(不含售价)"
  std::u16string_view file;     // "spxs4.fr3"
  bool Session::*right;         // what it shows needs this right; null: nothing that is guarded
};

struct DocumentPaper {
  std::u16string_view kind;                           // of fillPrintVars: "spxs"
  std::u16string_view plain;                          // its usual template, with ".fr3"
  std::u16string_view withoutCost;                    // instead of the usual one, for a role that does not see cost
  QString Session::*chosen = nullptr;                 // name of the template by rights and parameters; null: the usual
  QString SystemParameters::*asksFormat = nullptr;    // on: the form is chosen before each print
  QString SystemParameters::*printsAtSave = nullptr;  // on: printed when it is saved
  std::span<const TemplateChoice> choices;

  std::u16string_view noteAs = u"Note";      // variable of the head's note
  std::u16string_view ownVariable, ownText;  // a variable that says which of two families this is
  std::string_view inCapitals;               // statement of the amount in capitals, where the head has none

  // lines
  std::string_view moreColumns;                     // of the query, each with its comma in front
  std::string_view printed;                         // which lines print at all
  bool ordered = false;                             // by parameter, instead of as they were entered
  QString SystemParameters::*fixedLines = nullptr;  // filled up with empty lines to a multiple of this
};

}  // namespace jxc
