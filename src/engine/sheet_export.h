// 导出表格: the stand-in that writes the rows of `select … into sheet in 'file'` to a spreadsheet file.
#pragma once

#include "engine/row_set.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

namespace jxc {

/// Rows as the engine reads them, a handful at a time, so that 100,000 of them are never in memory together. The first
/// piece names the columns also when it has no row; a piece without rows is the end.
using RowPieces = std::function<RowSet()>;

/// One file in the making: sheets, one after the other, and nothing stands under the file's name before `finish`.
/// Whatever goes wrong throws DbError(File) in words for the operator.
class SheetFileInTheMaking {
 public:
  virtual ~SheetFileInTheMaking() = default;
  virtual void add(const RowPieces& rows, const QString& sheet) = 0;
  /// `goesOn` is asked while the file is put together, many times a second; false stops it, and was.
  virtual bool finish(const std::function<bool()>& goesOn) = 0;
};

/// What the engines need of whoever writes spreadsheets.
struct SheetExporter {
  /// Adds a sheet to a file; other sheets that are in it already stay.
  std::function<void(const RowPieces& rows, const QString& sheet, const QString& file)> add;
  /// Begins a file, in place of one that may be there.
  std::function<std::unique_ptr<SheetFileInTheMaking>(const QString& file)> begin;
};

/// One for the whole program, set at start-up before the first statement runs. Without one such a statement throws
/// DbError(Unsupported).
void setSheetExporter(SheetExporter exporter);

/// While it lives, the statements of this thread that write to this file make one new file together, each sheet
/// written once. Without `finish` whatever was there before is left as it is.
class SheetsTogether {
 public:
  /// `goesOn` hears how many rows are written, of all sheets, and goes on to hear it while the file is put together;
  /// false ends the work with DbError(Other).
  explicit SheetsTogether(QString file, std::function<bool(std::int64_t rows)> goesOn = {});
  ~SheetsTogether();
  SheetsTogether(const SheetsTogether&) = delete;
  SheetsTogether& operator=(const SheetsTogether&) = delete;

  void finish();

 private:
  friend void exportRows(const RowPieces&, const QString&, const QString&);
  QString file_;
  std::function<bool(std::int64_t)> goesOn_;
  std::int64_t rows_ = 0;
  std::unique_ptr<SheetFileInTheMaking> making_;
};

/// For the engines: hands the rows of a statement on.
void exportRows(const RowPieces& rows, const QString& sheet, const QString& file);
/// How many rows a piece has.
inline constexpr int rowsOfPiece = 1000;

}  // namespace jxc
