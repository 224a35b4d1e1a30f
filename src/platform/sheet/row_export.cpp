#include "platform/sheet/row_export.h"

#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"

#include <QFile>

#include <algorithm>

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

}  // namespace row_export_detail

Sheet sheetOf(const RowSet& rows, const QString& name) {
  Sheet sheet;
  sheet.name = name;
  for (const std::string& column : rows.columns())
    sheet.columns.push_back({.caption = QString::fromStdString(column), .kind = SheetKind::AsIs});
  sheet.rows = {rows.rowCount(), [rows](int row, std::span<Value> cells) {
                  for (std::size_t i = 0; i < cells.size(); ++i)
                    cells[i] = rows.value(row, static_cast<int>(i));
                }};
  return sheet;
}

void addRowsToFile(const RowSet& rows, const QString& sheet, const QString& file) {
  std::vector<Sheet> sheets;
  if (QFile::exists(file)) {
    const auto before = openExcel(file);
    for (int i = 0; i < before->sheetNames().size(); ++i)
      sheets.push_back(row_export_detail::sheetOf(*before, i));
  }
  Sheet added = sheetOf(rows, sheet);
  const auto same = std::find_if(sheets.begin(), sheets.end(),
                                 [&](const Sheet& each) { return each.name.compare(sheet, Qt::CaseInsensitive) == 0; });
  if (same != sheets.end()) {
    *same = std::move(added);
  } else {
    sheets.push_back(std::move(added));
  }
  writeSheets(file, sheets);
}

}  // namespace jxc
