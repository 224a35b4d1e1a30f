// 样张: templates as a shop has them, built in code, and rows to print on them.
#pragma once

#include "engine/row_set.h"
#include "platform/report/report.h"
#include "platform/report/template.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace jxc::test {

/// A4 sale with a grid that grows, running number, sums and page numbers.
report::Template saleTemplate();
/// The same document on half of a 241 mm form: ten lines, sums of the page.
report::Template halfFormTemplate();
/// 58 mm slip.
report::Template slipTemplate();

/// Columns g_name, dw_name, ls_sl, ls_dj, je, g_sptm, gc_name.
RowSet saleRows(int count);
report::Report saleReport(report::Template t, int rows);

/// Rows of texts and numbers: an empty text is null, what reads as a number is one.
RowSet rowsOf(std::vector<std::string> columns, std::initializer_list<std::initializer_list<const char*>> rows);
/// All lines of all pages.
QStringList linesOf(const report::Pages& pages);

}  // namespace jxc::test
