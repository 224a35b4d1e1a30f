// 列表输出: what every list offers besides being looked at: to a spreadsheet file, to the clipboard, to paper.
#pragma once

#include "platform/sheet/sheet.h"

class QWidget;

namespace jxc::ui {

class Grid;

/// A list as a spreadsheet: visible columns in their order with their widths, the rows that are shown, sums, the
/// filter. The sheet holds the rows of now, whatever happens to the list while it is written.
Sheet gridSheet(const Grid& grid);

/// Asks for a file and writes the list to it, with a bar when it takes long; tells when it is done and what went wrong.
/// An empty list does nothing.
void exportGrid(Grid& grid);

/// The same for a sheet that is no list; `name` is proposed for the file.
void exportSheet(const Sheet& sheet, const QString& name, QWidget* window);

/// Shows the list as pages, ready to be printed. An empty list does nothing.
void printGrid(Grid& grid);

/// The marked rows, or all, with captions and tabs between, so that a spreadsheet takes them.
void copyGrid(const Grid& grid, bool all);

}  // namespace jxc::ui
