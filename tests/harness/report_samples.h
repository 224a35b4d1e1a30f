// 样张: templates as shops get them, printed over their samples, and rows to print on others.
#pragma once

#include "engine/row_set.h"
#include "platform/report/report.h"
#include "platform/report/template.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace jxc::test {

/// By the name of its file: "spxs" on half a form of 241 mm, with sums and page numbers; "posxp58" on a slip.
report::Template delivered(const char* name);
/// Its sample over so many rows.
report::Report deliveredReport(const char* name, int rows);
/// The sale on a sheet of A4 over so many rows.
report::Report saleReport(int rows);

/// Rows of texts and numbers: an empty text is null, what reads as a number is one.
RowSet rowsOf(std::vector<std::string> columns, std::initializer_list<std::initializer_list<const char*>> rows);
/// What another program reads in a PDF, laid out as it stands there.
QString textOfPdf(const QString& file);
/// All lines of all pages.
QStringList linesOf(const report::Pages& pages);

}  // namespace jxc::test
