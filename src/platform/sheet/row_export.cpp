#include "platform/sheet/row_export.h"

#include "engine/error.h"
#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"

#include <QFile>

#include <algorithm>
#include <memory>
#include <utility>

namespace jxc {
namespace row_export_detail {

Value valueOf(const SheetCell& cell) {
  if (cell.isEmpty()) return {};
  return cell.kind == SheetCell::Kind::Number ? Value(cell.number) : Value(cell.text);
}

/// A sheet of a file as it can be written again: its first line are the captions.
Sheet sheetOf(SheetFile& file, int index) {
  Sheet sheet;
  sheet.name = file.sheetNames()[index];
  std::vector<std::vector<Value>> rows;
  std::size_t columns = 0;
  file.readRows(
      [&](int row, std::span<const SheetCell> cells) {
        columns = std::max(columns, cells.size());
        if (row == 0) {
          for (const SheetCell& cell : cells)
            sheet.columns.push_back({.caption = cell.asText(), .kind = SheetKind::AsIs});
        } else {
          auto& values = rows.emplace_back();
          for (const SheetCell& cell : cells)
            values.push_back(valueOf(cell));
        }
        return true;
      },
      index);
  sheet.columns.resize(columns, {.kind = SheetKind::AsIs});
  sheet.rows = heldRows(std::move(rows));
  return sheet;
}

std::vector<SheetColumn> columnsOf(const RowSet& rows) {
  std::vector<SheetColumn> columns;
  for (const std::string& column : rows.columns())
    columns.push_back({.caption = QString::fromStdString(column), .kind = SheetKind::AsIs});
  return columns;
}

void readRow(const RowSet& rows, int row, std::span<Value> cells) {
  for (std::size_t i = 0; i < cells.size(); ++i)
    cells[i] = rows.value(row, static_cast<int>(i));
}

/// A sheet with what is in the file already.
void addToFile(Sheet added, const QString& file) {
  std::vector<Sheet> sheets;
  if (QFile::exists(file)) {
    const auto before = openExcel(file);
    for (int i = 0; i < before->sheetNames().size(); ++i)
      sheets.push_back(sheetOf(*before, i));
  }
  const auto same = std::find_if(sheets.begin(), sheets.end(), [&](const Sheet& each) {
    return each.name.compare(added.name, Qt::CaseInsensitive) == 0;
  });
  if (same != sheets.end()) {
    *same = std::move(added);
  } else {
    sheets.push_back(std::move(added));
  }
  writeSheets(file, sheets);
}

/// A failure of the file in the words of the engine that was asked to write it.
template <class Work>
auto asEngine(Work work) {
  try {
    return work();
  } catch (const SheetError& error) {
    throw DbError(DbError::Kind::File, error.message());
  }
}

class Making final : public SheetFileInTheMaking {
 public:
  explicit Making(const QString& file) : book_(file) {}
  void add(const RowPieces& rows, const QString& sheet) override {
    asEngine([&] { book_.add(jxc::sheetOf(rows, sheet)); });
  }
  bool finish(const std::function<bool()>& goesOn) override {
    return asEngine([&] { return book_.finish(goesOn); });
  }

 private:
  SheetBook book_;
};

}  // namespace row_export_detail

Sheet sheetOf(const RowSet& rows, const QString& name) {
  Sheet sheet;
  sheet.name = name;
  sheet.columns = row_export_detail::columnsOf(rows);
  sheet.rows = {rows.rowCount(),
                [rows](int row, std::span<Value> cells) { row_export_detail::readRow(rows, row, cells); }};
  return sheet;
}

Sheet sheetOf(const RowPieces& rows, const QString& name) {
  struct Walk {
    RowSet piece;
    int next = 0;
  };
  const auto walk = std::make_shared<Walk>(Walk{rows()});
  Sheet sheet;
  sheet.name = name;
  sheet.columns = row_export_detail::columnsOf(walk->piece);
  sheet.rows.next = [walk, rows](std::span<Value> cells) {
    if (walk->next == walk->piece.rowCount()) *walk = {rows()};
    if (walk->piece.isEmpty()) return false;
    row_export_detail::readRow(walk->piece, walk->next++, cells);
    return true;
  };
  return sheet;
}

void addRowsToFile(const RowSet& rows, const QString& sheet, const QString& file) {
  row_export_detail::addToFile(sheetOf(rows, sheet), file);
}

SheetExporter sheetFiles() {
  using namespace row_export_detail;
  return {.add = [](const RowPieces& rows, const QString& sheet,
                    const QString& file) { asEngine([&] { addToFile(jxc::sheetOf(rows, sheet), file); }); },
          .begin = [](const QString& file) -> std::unique_ptr<SheetFileInTheMaking> {
            return asEngine([&] { return std::make_unique<Making>(file); });
          }};
}

}  // namespace jxc
