// 导出表格: the stand-in that writes the rows of `select … into sheet in 'file'` to a spreadsheet file.
#pragma once

#include "engine/row_set.h"

#include <QString>

#include <functional>

namespace jxc {

using SheetExporter = std::function<void(const RowSet& rows, const QString& sheet, const QString& file)>;

/// One for the whole program, set at start-up before the first statement runs. Without one such a statement throws
/// DbError(Unsupported).
void setSheetExporter(SheetExporter exporter);
const SheetExporter& sheetExporter();

}  // namespace jxc
