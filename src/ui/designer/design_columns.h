// 表格的列: a column of the list in a template taken as one thing: its title, its cell in a row, its sums.
#pragma once

#include "platform/report/template.h"

#include <vector>

namespace jxc::ui {

/// The edges of the columns that a row of the list consists of, in millimetres from the left: one more than there are
/// columns. Empty when the rows of this template are no such list: a slip, a label, cells that overlap.
std::vector<double> columnEdges(const report::Template& t);

/// The column in which this object stands, counted from 0; of one over several columns (the caption of the sums) the
/// last. -1: none.
int columnOf(const report::Template& t, const report::Item& item);

/// Whether these objects of a band are cells of the list.
bool hasColumns(const report::Band& band);

/// Puts a column for this field before the column `at` (behind the last one: the number of columns). It gets a title,
/// a cell in the row and, where figures are added up, a sum, framed and written like those beside it; the others give
/// the room for it. False, and nothing changed, when there is none.
bool insertColumn(report::Template& t, int at, const report::DetailField& field);

/// Takes a column out; the others share its room. False when it is the only one.
bool removeColumn(report::Template& t, int column);

}  // namespace jxc::ui
