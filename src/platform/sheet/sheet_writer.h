// 写表格: a sheet to an .xls or .xlsx file; a file that is there is replaced only by a whole new one.
#pragma once

#include "platform/sheet/sheet.h"

#include <functional>
#include <memory>
#include <span>

namespace jxc {

/// Called now and then with 0 to 100; false stops the work.
using SheetProgress = std::function<bool(int percent)>;

inline constexpr int kXlsMostRows = 65535;     // data rows of an .xls sheet, below the line of captions
inline constexpr int kXlsxMostRows = 1048575;  // the same of .xlsx

/// Writes one sheet to `path`; the ending, .xls or .xlsx, says which kind of file. The file is made beside and moved
/// into place, so that a full disk, a failure or a stop leaves what was there before. False when `progress` stopped it.
/// Throws SheetError: another ending, too many rows (the advice is in the message), a place that cannot be written.
/// Texts longer than a cell holds (32,767 characters) are cut and end in "…"; control characters are left out.
bool writeSheet(const QString& path, const Sheet& sheet, const SheetProgress& progress = {});

/// A file of several sheets in the making, written one after the other. Nothing stands under its name before `finish`,
/// and without it whatever was there before stays. Throws SheetError, the constructor for a place that cannot be
/// written.
class SheetBook {
 public:
  explicit SheetBook(const QString& path);
  ~SheetBook();
  SheetBook(const SheetBook&) = delete;
  SheetBook& operator=(const SheetBook&) = delete;

  /// `goesOn` is asked before each row; false stops the work.
  bool add(const Sheet& sheet, const std::function<bool()>& goesOn = {});
  /// The file is put together and brought to the disk in a thread of its own, which takes seconds for 100,000 rows:
  /// `goesOn` is asked meanwhile, in the calling thread and so often that its window stays awake. False: it stopped it.
  bool finish(const std::function<bool()>& goesOn = {});

 private:
  struct Making;
  std::unique_ptr<Making> making_;
};

/// The same as writeSheet with several sheets in one file; their names must differ.
bool writeSheets(const QString& path, std::span<const Sheet> sheets, const SheetProgress& progress = {});

}  // namespace jxc
