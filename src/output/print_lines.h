// 打印明细: the detail query of every printed document: its lines with what the goods is, in the order of the
// parameter.
#pragma once

#include "core/reading.h"

#include <QString>
#include <QStringView>

namespace jxc {

/// Lines of a document on the screen are those of this operator: another one may be writing under the same number.
enum class LineScope : char { Document, OwnDraft };

/// A sale's or receipt's print is filled up with empty lines to a multiple of this (cs_cs005, cs_cs006): a form that is
/// printed already has so many places. 0: as long as the document is.
int fixedPrintLines(QStringView prefix);

/// The detail statement of a document by the prefix of its family. All columns of the line, and g_name (with the gift
/// mark), dw_name, gg_name, color_name, g_sptm, g_bz, g_sccs, gc_name of the goods. Throws std::out_of_range for
/// another prefix.
Sql printLineSql(const QString& number, QStringView prefix, LineScope scope = LineScope::Document);

/// The rows of that statement; at their foot, under a fixed number of lines, the empty ones, whatever the order is.
RowSet printLines(const QString& number, QStringView prefix, LineScope scope = LineScope::Document);

}  // namespace jxc
