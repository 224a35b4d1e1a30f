// 单据导入: lines of a trading document from a spreadsheet: each row is judged, what passes becomes lines.
#pragma once

#include "stock/document_rules.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace jxc {

/// A row of the spreadsheet, as it was read and what was found.
struct ImportLine {
  QString code, name, quantity, price, produced, note;  // as they stand there; a name that it leaves out is told
  enum class Verdict { Fine, PassesWithWarning, Refused } verdict = Verdict::Refused;
  QString words;    // all that is wrong with it, or "可顺利导入"
  LineDraft draft;  // what it becomes when it passes
  bool passes() const { return verdict != Verdict::Refused; }
};

/// Names of the columns, as the template has them; the first is needed, or the barcode, and the quantity or, of
/// a list of prices, the price.
std::vector<QString> importColumns(const LineImport& wanted);

/// Judges all rows of a sheet for lines of `target` (columns by name, in any order); rows without anything are passed
/// over. Nothing, after a notice: the sheet has no rows, or not the columns that it needs. Nothing without one: it was
/// stopped.
std::optional<std::vector<ImportLine>> judgeLines(const RowSet& sheet, const LineImport& wanted, const ManyLines& rules,
                                                  const LinePlace& place, Prompt& prompt, Lines target = Lines::Draft,
                                                  const LineProgress& progress = {});

struct ImportResult {
  int rows = 0, taken = 0;
  QString number;               // of the document now
  QStringList passedOver = {};  // goods that stand on the document already
  QString text() const;         // what the operator is told
};
/// Makes lines of the rows that pass, in their order, with the questions of the picking list, each put once. Nothing:
/// the operator took it back or stopped it, or no row passes.
std::optional<ImportResult> importLines(std::span<const ImportLine> lines, const ManyLines& rules,
                                        const LinePlace& place, Lines target, Prompt& prompt,
                                        const LineProgress& progress = {});

}  // namespace jxc
