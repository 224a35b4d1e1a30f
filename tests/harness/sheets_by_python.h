// Spreadsheets as readers of others see them.
#pragma once

#include <QJsonObject>
#include <QStringList>

namespace jxc::test {

/// What Python's readers make of files (.xlsx openpyxl, .xls xlrd): by file the sheets by name, each with its rows and
/// how it looks. Cells: "s:text", "n:number" with the fifteen digits that a spreadsheet keeps, "d:date", "" for none.
QJsonObject readByPython(const QStringList& files);
/// Of one file.
QJsonObject readByPython(const QString& file);

}  // namespace jxc::test
