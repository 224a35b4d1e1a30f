// 导出查询: the rows of `select … into sheet in 'file'` as one sheet of a spreadsheet file.
#pragma once

#include "engine/row_set.h"
#include "engine/sheet_export.h"
#include "platform/sheet/sheet.h"

namespace jxc {

/// Rows under the names of their columns; texts stay texts, numbers are numbers.
Sheet sheetOf(const RowSet& rows, const QString& name);

/// The same of rows that come piece by piece.
Sheet sheetOf(const RowPieces& rows, const QString& name);

/// Writes a sheet to a file. Other sheets that are in the file already stay, with their contents; one of the same name
/// is replaced. Throws SheetError; then the file is as before.
void addRowsToFile(const RowSet& rows, const QString& sheet, const QString& file);

/// What the engines are given to write such statements with.
SheetExporter sheetFiles();

}  // namespace jxc
