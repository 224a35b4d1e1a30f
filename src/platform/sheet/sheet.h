// 表格: what goes into a spreadsheet file, as a plain value: columns, rows on demand, sums, and what may go wrong.
#pragma once

#include "engine/value.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <span>
#include <stdexcept>
#include <vector>

namespace jxc {

/// What a column of a spreadsheet holds. A cell whose value does not fit its kind (no date in a date column) is written
/// as the text that it is, so nothing is lost.
enum class SheetKind {
  AsIs,      // by the value: texts stay texts, numbers are numbers
  Text,      // stays text whatever it looks like: "00123", "=1+1"
  Number,    // plain; `decimals` below 0 shows it as it is
  Money,     // yuan, grouped by thousands, with the symbol before it when there is one
  Quantity,  // ungrouped
  Date       // text yyyy-MM-dd, with or without HH:mm:ss behind it, becomes a real date
};

struct SheetColumn {
  QString caption;
  SheetKind kind = SheetKind::Text;
  int decimals = -1;  // digits behind the point, 0 to 6; below 0 two for money, as it is for the others
  double width = 0;   // in characters; 0: by kind and caption
  QString symbol;     // currency symbol of a money column; never in the row of sums
};

/// Where the rows come from: asked for one row at a time, in ascending order, so that 100,000 rows need no copy.
struct SheetRows {
  int count = 0;
  /// Fills the cells of one row; they come as Null.
  std::function<void(int row, std::span<Value> cells)> read;
  /// In place of both, of rows that nobody has counted: fills the next one; false when there is none.
  std::function<bool(std::span<Value> cells)> next = {};
};

/// Rows that are held in memory.
SheetRows heldRows(std::vector<std::vector<Value>> rows);

/// One sheet of a file: a bold frozen line of captions, the rows, then the sums (bold) and the notes.
struct Sheet {
  QString name = QStringLiteral("Sheet1");  // what a sheet's name may not hold is left out when it is written
  std::vector<SheetColumn> columns;
  SheetRows rows;
  std::vector<Value> sums;  // one a column, Null where there is none; empty: no such row
  QStringList notes;        // lines below: the filter that the list was made with
};

/// A spreadsheet that cannot be written or read; the message is meant for the operator.
class SheetError : public std::runtime_error {
 public:
  explicit SheetError(const QString& message) : std::runtime_error(message.toStdString()), message_(message) {}
  const QString& message() const { return message_; }

 private:
  QString message_;
};

}  // namespace jxc
