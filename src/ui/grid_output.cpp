#include "ui/grid_output.h"

#include "core/formats.h"
#include "core/rounding.h"
#include "platform/sheet/sheet_writer.h"
#include "ui/display.h"
#include "ui/file_dialogs.h"
#include "ui/grid.h"
#include "ui/grid_paper.h"
#include "ui/message_box_prompt.h"
#include "ui/progress.h"
#include "ui/report/preview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTableView>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace jxc::ui {
namespace grid_output_detail {

constexpr int kStoredDecimals = 6;  // numbers have no more, whatever adding them up leaves behind

/// How a column of a list looks in a spreadsheet.
SheetColumn sheetColumn(const Grid::ExportColumn& column) {
  SheetColumn result{.caption = column.caption};
  const auto take = [&](SheetKind kind, const std::optional<NumberFormat>& format) {
    result.kind = kind;
    result.decimals = format ? format->decimals : 2;
    if (format && column.kind == ColumnKind::Money) result.symbol = format->symbol;
  };
  switch (column.kind) {
    case ColumnKind::Money:
      take(SheetKind::Money, moneyFormat());
      break;
    case ColumnKind::Total:
      take(SheetKind::Money, totalFormat());
      break;
    case ColumnKind::Quantity:
      take(SheetKind::Quantity, quantityFormat());
      break;
    case ColumnKind::Percent:
    case ColumnKind::Number:
      result.kind = SheetKind::Number;
      break;
    case ColumnKind::Date:
      result.kind = SheetKind::Date;
      break;
    case ColumnKind::Text:
    case ColumnKind::Flag:
    case ColumnKind::Power:
      result.kind = SheetKind::Text;
      break;
  }
  return result;
}

/// A text that a spreadsheet would take for a formula, in the sign by which it takes it for a text. What is a number
/// (a power, -3.00 or +0.75) goes as it is.
QString asText(const QString& text) {
  constexpr QStringView signs = u"=+-@";
  bool isNumber = false;
  text.toDouble(&isNumber);
  return text.isEmpty() || isNumber || !signs.contains(text.front()) ? text : u'\'' + text;
}

}  // namespace grid_output_detail

Sheet gridSheet(const Grid& grid) {
  const auto columns = grid.exportColumns();
  Sheet sheet;
  sheet.name = qs(grid.spec().caption);
  bool hasSums = false;
  for (const auto& column : columns) {
    sheet.columns.push_back(grid_output_detail::sheetColumn(column));
    const auto& spec = grid.spec().columns[static_cast<std::size_t>(column.column)];
    sheet.columns.back().width = std::max(6.0, static_cast<double>(grid.view()->columnWidth(column.column)) /
                                                   std::max(1, grid.view()->fontMetrics().horizontalAdvance(u'0')));
    sheet.sums.emplace_back();
    if (spec.use.sum) sheet.sums.back() = roundEps(grid.sum(spec.field), grid_output_detail::kStoredDecimals);
    hasSums = hasSums || spec.use.sum;
  }
  if (!hasSums) sheet.sums.clear();
  if (hasSums && sheet.sums.front().isNull()) sheet.sums.front() = QStringLiteral("合计");
  if (const QString filter = grid.heading().filter; !filter.isEmpty()) sheet.notes << filter;
  struct Taken {
    RowSet rows;
    std::vector<int> order;
    std::vector<std::pair<int, ColumnKind>> columns;  // of the row set
  };
  auto taken = std::make_shared<Taken>(Taken{grid.rows(), grid.shownOrder(), {}});
  for (const auto& column : columns)
    taken->columns.emplace_back(
        taken->rows.columnIndex(grid.spec().columns[static_cast<std::size_t>(column.column)].field), column.kind);
  sheet.rows = {static_cast<int>(taken->order.size()), [taken](int place, std::span<Value> cells) {
                  const int row = taken->order[static_cast<std::size_t>(place)];
                  for (std::size_t i = 0; i < cells.size(); ++i) {
                    const auto [column, kind] = taken->columns[i];
                    if (column < 0) continue;
                    if (kind == ColumnKind::Text || kind == ColumnKind::Flag || kind == ColumnKind::Power) {
                      cells[i] = displayCell(taken->rows, row, column, kind);
                    } else {
                      cells[i] = taken->rows.value(row, column);
                    }
                  }
                }};
  return sheet;
}

void exportGrid(Grid& grid) {
  grid.waitLoaded();
  if (!grid.isEmpty() && grid.mayTakeOut()) exportSheet(gridSheet(grid), grid.heading().title, grid.window());
}

void exportSheet(const Sheet& sheet, const QString& name, QWidget* window) {
  // What does not fit the older kind of file is proposed as the newer one at once.
  const bool isLong = sheet.rows.count > kXlsMostRows - 2 || sheet.columns.size() > 256;
  const QString filters = isLong ? QStringLiteral("(*.xlsx);;(*.xls)") : QStringLiteral("(*.xls);;(*.xlsx)");
  const QString file = chooseSaveFile(window, QStringLiteral("导出"), name, filters);
  if (file.isEmpty()) return;
  MessageBoxPrompt prompt(window);
  try {
    Progress progress(QStringLiteral("正在导出……"), window);
    if (!writeSheet(file, sheet, progress.report())) return;
  } catch (const SheetError& error) {
    return prompt.notice(error.message());
  }
  prompt.notice(QStringLiteral("导出成功！"));
}

void printGrid(Grid& grid) {
  grid.waitLoaded();
  if (grid.isEmpty() || !grid.mayTakeOut()) return;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  const report::Pages pages = gridReport(grid).prepare();
  QGuiApplication::restoreOverrideCursor();
  showPreview(pages);
}

void copyGrid(const Grid& grid, bool all) {
  if (!grid.isEmpty() && grid.mayTakeOut()) QGuiApplication::clipboard()->setText(grid.tabSeparated(!all));
}

QString Grid::tabSeparated(bool onlySelected) const {
  const auto columns = exportColumns();
  QStringList lines;
  QStringList cells;
  for (const auto& column : columns)
    cells << column.caption;
  lines << cells.join(u'\t');
  for (int row = 0; row < rowCount(); ++row) {
    if (onlySelected && !view_->selectionModel()->isRowSelected(row)) continue;
    cells.clear();
    for (const auto& column : columns) {
      // Numbers go without symbol and grouping, so that a spreadsheet takes them for numbers.
      const QString text =
          isNumberKind(column.kind) ? cellValue(row, column.column).text() : cellText(row, column.column);
      const QString plain = QString(text).replace(u'\t', u' ').replace(u'\n', u' ');
      cells << (isNumberKind(column.kind) ? plain : grid_output_detail::asText(plain));
    }
    lines << cells.join(u'\t');
  }
  return lines.join(u'\n') + u'\n';
}

}  // namespace jxc::ui
