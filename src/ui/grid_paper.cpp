#include "ui/grid_paper.h"

#include "core/clock.h"
#include "core/session.h"
#include "ui/display.h"
#include "ui/grid.h"

#include <QFontMetricsF>
#include <QTableView>

#include <algorithm>
#include <string>
#include <vector>

namespace jxc::ui {
namespace grid_paper_detail {

using report::BandKind;
using report::HAlign;
using report::Item;

constexpr double kType = 9, kLeastType = 6;      // points
constexpr double kUpright = 190, kAcross = 277;  // millimetres between the margins of A4
constexpr double kPadding = 2.6;                 // both sides of a cell, and a little that printers differ by
constexpr double kWidestText = 55;
constexpr int kSample = 300;  // rows that are measured

HAlign alignOf(ColumnKind kind) {
  if (isNumberKind(kind) || kind == ColumnKind::Power) return HAlign::Right;
  return kind == ColumnKind::Date || kind == ColumnKind::Flag ? HAlign::Center : HAlign::Left;
}

/// What a column asks for on paper at the usual size of type, in millimetres without its padding, and the least that
/// it can do with.
struct Wish {
  double width = 0, least = 0;
};

bool isCode(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > u' ' && c.unicode() < 0x7f; });
}

/// Columns that the operator has arranged keep their widths. Long texts may go on in a second line, numbers may not.
std::vector<Wish> wishes(const Grid& grid, const std::vector<Grid::ExportColumn>& columns) {
  constexpr double kBold = 1.1, kLongText = 20;
  const QFontMetricsF metrics(grid.view()->font());
  const double points = std::max(1.0, grid.view()->font().pointSizeF());
  const double perPixel = 25.4 / std::max(1, grid.view()->logicalDpiX()) * kType / points;
  std::vector<Wish> result;
  for (const auto& column : columns) {
    if (!grid.isAutoWidth()) {
      const double width = std::max(4.0, grid.view()->columnWidth(column.column) * perPixel - kPadding);
      result.push_back({width, width});
      continue;
    }
    const auto& spec = grid.spec().columns[static_cast<std::size_t>(column.column)];
    const double caption = metrics.horizontalAdvance(column.caption) * kBold;
    double width = spec.use.sum ? metrics.horizontalAdvance(grid.footerText(spec.field)) * kBold : 0;
    double code = 0;  // the widest that no line can break
    for (int row = 0; row < std::min(kSample, grid.rowCount()); ++row) {
      const QString text = grid.cellText(row, column.column);
      width = std::max(width, metrics.horizontalAdvance(text));
      if (isCode(text)) code = std::max(code, metrics.horizontalAdvance(text));
    }
    width *= perPixel;
    const bool isText = column.kind == ColumnKind::Text;
    if (isText) width = std::min(width, kWidestText);
    const double least = std::max(std::max(kLongText, width / 2), std::min(code * perPixel, kWidestText));
    // A long caption may stand in two lines.
    width = std::max(width, std::min(caption * perPixel, std::max(width, caption * perPixel / 2 + 2)));
    result.push_back({width, isText ? std::min(width, least) : width});
  }
  return result;
}

/// How the columns stand on the paper.
struct Raster {
  bool across = false;
  double type = kType;
  std::vector<double> widths;
};

/// Takes the room of long texts first, then smaller type; a few narrow columns do not spread over the whole paper.
Raster fit(const std::vector<Wish>& wishes, bool across) {
  constexpr double kMostSpread = 1.6;
  const double room = (across ? kAcross : kUpright) - kPadding * static_cast<double>(wishes.size());
  double wished = 0, least = 0;
  for (const Wish& wish : wishes) {
    wished += wish.width;
    least += wish.least;
  }
  const double given = std::clamp(room, least, std::max(least, wished));
  const double share = wished > least ? (given - least) / (wished - least) : 1;
  const double scale = std::min(std::max(room, 1.0) / std::max(given, 1.0), kMostSpread);
  Raster raster{.across = across, .type = std::clamp(kType * scale, kLeastType, kType)};
  for (const Wish& wish : wishes)
    raster.widths.push_back((wish.least + (wish.width - wish.least) * share) * scale + kPadding);
  return raster;
}

Raster rasterOf(const std::vector<Wish>& wishes) {
  constexpr double kSlightlySmaller = 0.88;
  const Raster upright = fit(wishes, false);
  return upright.type >= kType * kSlightlySmaller ? upright : fit(wishes, true);
}

void addCell(report::Band& band, double x, double width, const QString& content, HAlign align, double type, bool bold) {
  Item cell = report::textItem(x, 0, width, band.height, content, align);
  cell.font.size = type;
  cell.font.bold = bold;
  cell.frame = report::side::all;
  cell.pen.width = 0.15;
  cell.pen.colour = QColor(0x80, 0x80, 0x80);
  cell.paddingX = 1;
  cell.grow = true;
  cell.followHeight = true;
  band.items.push_back(std::move(cell));
}

QString nameOf(const char* prefix, std::size_t column) {
  return QString::fromLatin1(prefix) + QString::number(column + 1);
}

QString inBrackets(const QString& name) {
  return u'[' + name + u']';
}

void addLine(report::Template& t, BandKind kind, const char* prefix, const std::vector<Grid::ExportColumn>& columns,
             const Raster& raster) {
  const bool isRow = kind == BandKind::MasterData;
  report::Band& band = addBand(t, kind, raster.type * 0.6);
  if (kind == BandKind::ColumnHeader) band.fill = QColor(0xe8, 0xe8, 0xe8);
  double x = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const HAlign align = kind == BandKind::ColumnHeader ? HAlign::Center : alignOf(columns[i].kind);
    addCell(band, x, raster.widths[i], inBrackets(nameOf(prefix, i)), align, raster.type, !isRow);
    x += raster.widths[i];
  }
}

/// What stands on the paper besides the rows.
struct Parts {
  bool filter = false, drawing = false, sums = false;
};

report::Template listTemplate(const std::vector<Grid::ExportColumn>& columns, const Raster& raster, Parts parts) {
  constexpr double kDrawing = 95;
  report::Template t;
  t.page.landscape = raster.across;
  const double width = t.page.bodyWidth();
  report::Band& title = addBand(t, BandKind::ReportTitle, parts.filter ? 16 : 11);
  Item caption = report::textItem(0, 0, width, 9, QStringLiteral("[listTitle]"), HAlign::Center);
  caption.font.size = 15;
  caption.font.bold = true;
  title.items.push_back(caption);
  Item count = report::textItem(width - 40, 3, 40, 6, QStringLiteral("[listCount]"), HAlign::Right);
  count.font.size = 8;
  title.items.push_back(count);
  if (parts.filter) {
    Item filter = report::textItem(0, 9.5, width, 5, QStringLiteral("[listFilter]"));
    filter.font.size = 8;
    filter.grow = true;
    title.items.push_back(filter);
  }
  if (parts.drawing) {
    addBand(t, BandKind::ReportTitle, kDrawing + 3)
        .items.push_back(report::pictureItem(0, 0, width, kDrawing, QStringLiteral("drawing:list")));
  }
  addLine(t, BandKind::ColumnHeader, "h", columns, raster);
  addLine(t, BandKind::MasterData, "c", columns, raster);
  if (parts.sums) addLine(t, BandKind::Summary, "s", columns, raster);
  report::Band& foot = addBand(t, BandKind::PageFooter, 7);
  const auto small = [&](double x, double wide, const char16_t* content, HAlign align) {
    Item item = report::textItem(x, 2, wide, 5, QString::fromUtf16(content), align);
    item.font.size = 8;
    foot.items.push_back(item);
  };
  small(0, width / 3, u"[listCompany]", HAlign::Left);
  small(width / 3, width / 3, u"第 [page] 页　共 [pages] 页", HAlign::Center);
  small(width * 2 / 3, width / 3, u"[listPrinted]", HAlign::Right);
  return t;
}

RowSet shownTexts(const Grid& grid, const std::vector<Grid::ExportColumn>& columns) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < columns.size(); ++i)
    names.push_back(nameOf("c", i).toStdString());
  RowSet rows(std::move(names));
  for (int row = 0; row < grid.rowCount(); ++row) {
    for (const auto& column : columns)
      rows.addText(grid.cellText(row, column.column).toStdString());
  }
  return rows;
}

}  // namespace grid_paper_detail

report::Report gridReport(const Grid& grid, const report::Drawing& drawing) {
  using namespace grid_paper_detail;
  const auto columns = grid.exportColumns();
  const GridHeading heading = grid.heading();
  const auto& specs = grid.spec().columns;
  const bool hasSums = std::any_of(columns.begin(), columns.end(), [&](const auto& column) {
    return specs[static_cast<std::size_t>(column.column)].use.sum;
  });
  const Parts parts{.filter = !heading.filter.isEmpty(), .drawing = drawing != nullptr, .sums = hasSums};
  report::Template t = listTemplate(columns, rasterOf(wishes(grid, columns)), parts);
  t.title = heading.title;
  report::Report report(std::move(t));
  if (drawing) report.setDrawing(u"list", drawing);
  report.setText(u"listTitle", heading.title);
  report.setText(u"listFilter", heading.filter);
  report.setText(u"listCount", QStringLiteral("共 %1 条").arg(grid.rowCount()));
  report.setText(u"listCompany", session().c_name);
  report.setText(u"listPrinted", session().a_name + QStringLiteral("　打印于 ") + clock::stamp());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto& spec = specs[static_cast<std::size_t>(columns[i].column)];
    report.setText(nameOf("h", i), columns[i].caption);
    report.setText(nameOf("s", i), spec.use.sum ? grid.footerText(spec.field)
                                   : i == 0     ? QStringLiteral("合计")
                                                : QString());
  }
  report.setRows(shownTexts(grid, columns));
  return report;
}

}  // namespace jxc::ui
