// 单元格: what a value becomes in a spreadsheet, alike for both kinds of files.
#pragma once

#include "platform/sheet/sheet.h"

#include <QString>

#include <memory>
#include <span>
#include <string>

namespace jxc::sheet_cells {

inline constexpr int kMostCharacters = 32767;  // of one cell, in UTF-16 units

struct Cell {
  enum class Kind { Empty, Text, Number, Date, DateTime };
  Kind kind = Kind::Empty;
  QString text;
  double number = 0;  // of dates the days since 1899-12-30
};
Cell cellOf(const Value& value, SheetKind kind);

/// Without control characters, lines parted by \n, and cut to what a cell holds.
QString cleanText(QString text);
/// A name that both kinds of files allow for a sheet.
QString sheetName(const QString& wanted);
/// The number format as the file knows it; "" stands for the general one.
std::string numberFormat(const SheetColumn& column, bool withSymbol);
double columnWidth(const SheetColumn& column);

struct Style {
  std::string format;
  bool bold = false;
  bool right = false;   // at the right; else by the kind of the cell
  bool header = false;  // the line of captions, on grey
  bool operator==(const Style&) const = default;
};

/// One file in the making: styles first, then a sheet after the other, each row by row from the top.
class Workbook {
 public:
  virtual ~Workbook() = default;
  virtual int style(const Style& style) = 0;
  virtual void beginSheet(const QString& name, std::span<const double> widths) = 0;
  virtual void text(int row, int column, int style, const QString& text) = 0;
  virtual void number(int row, int column, int style, double number) = 0;
  /// Writes the file that it was made for; throws SheetError.
  virtual void save() = 0;
};
std::unique_ptr<Workbook> makeXls(const QString& path);
std::unique_ptr<Workbook> makeXlsx(const QString& path);

/// What to tell when a file cannot be written: a full disk by its name.
SheetError cannotWrite(const QString& path, int error);

}  // namespace jxc::sheet_cells
