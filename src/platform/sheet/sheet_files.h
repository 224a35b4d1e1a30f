// 表格文件: the two kinds behind openExcel, and what both tell dates by.
#pragma once

#include "platform/sheet/sheet_reader.h"

#include <QStringView>

namespace jxc::sheet_files {

std::unique_ptr<SheetFile> openXls(const QString& path);
std::unique_ptr<SheetFile> openXlsx(const QString& path);

/// A day count of a spreadsheet as text: "2026-05-03", "2026-05-03 08:30:00", "08:30:00"; a number when it is no day
/// that spreadsheets know.
SheetCell dateCell(double days, bool from1904);
/// Whether a number format shows a date or a time.
bool isDateFormat(QStringView code);
bool isDateFormat(int builtIn);

[[noreturn]] void throwDamaged();
[[noreturn]] void throwTooLarge();
[[noreturn]] void throwPassword();

}  // namespace jxc::sheet_files
