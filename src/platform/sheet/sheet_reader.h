// 读表格: the rows of .xls and .xlsx files that come from elsewhere; whatever such a file holds, it gets an answer.
#pragma once

#include "engine/row_set.h"
#include "platform/sheet/sheet.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <span>

namespace jxc {

/// One cell as it was typed: a number stays a number, a date is known by its number format.
struct SheetCell {
  enum class Kind { Empty, Text, Number, Date };
  Kind kind = Kind::Empty;
  QString text;       // of Text as it stands; of Date yyyy-MM-dd, with " HH:mm:ss" when it has a time
  double number = 0;  // of Number

  bool isEmpty() const { return kind == Kind::Empty; }
  /// As text: a number in general form ("100001", "99.9"), so that a code that was typed as a number is a code.
  QString asText() const;
};

/// Gets each row from the first, without gaps (a row that the file leaves out comes with no cells); `row` counts from
/// 0. False ends the reading.
using SheetRowSink = std::function<bool(int row, std::span<const SheetCell> cells)>;

/// An open spreadsheet file. Kinds are told apart by what the file holds, not by its ending.
class SheetFile {
 public:
  virtual ~SheetFile() = default;
  virtual const QStringList& sheetNames() const = 0;
  /// Walks over the rows of a sheet, the first by default. Throws SheetError when the file is damaged.
  virtual void readRows(const SheetRowSink& sink, int sheet = 0) = 0;

  /// The sheet with its first line that is not empty as column names: rows as text, numbers and null; dates are text
  /// yyyy-MM-dd. A column without a name is called F1, F2 … by its place; a name that comes again gets a number behind
  /// it. Empty rows at the end are left out. A sheet without any cell has no columns.
  RowSet rows(int sheet = 0);
};

/// Opens an .xls or .xlsx file. Throws SheetError with what the operator reads: not there, empty, no spreadsheet (a web
/// page named .xls), damaged, with a password, too large.
std::unique_ptr<SheetFile> openExcel(const QString& path);
/// Lets go of the file before its end of life, so that another program may write it.
void closeExcel(std::unique_ptr<SheetFile>& file);

}  // namespace jxc
