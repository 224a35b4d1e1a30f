#include "ui/designer/design_columns.h"

#include "ui/designer/design_document.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace jxc::ui {
namespace design_columns_detail {

using report::Band;
using report::BandKind;
using report::Item;
using report::Template;

constexpr double kNear = 0.3;     // millimetres that edges drawn by hand may miss each other
constexpr double kLeast = 9;      // what a column keeps when another one comes in
constexpr double kNarrowest = 8;  // of a new one

bool isNear(double a, double b) {
  return std::abs(a - b) < kNear;
}

int indexOf(const std::vector<double>& edges, double x) {
  for (std::size_t i = 0; i < edges.size(); ++i)
    if (isNear(edges[i], x)) return static_cast<int>(i);
  return -1;
}

/// Objects of one height, which may be cells of one line.
using Line = std::vector<Item*>;

std::vector<Line> linesOf(Band& band) {
  std::vector<Line> lines;
  for (Item& item : band.items) {
    if (item.kind != report::ItemKind::Text) continue;
    const auto found = std::ranges::find_if(lines, [&](const Line& line) {
      return isNear(line.front()->y, item.y) && isNear(line.front()->height, item.height);
    });
    (found == lines.end() ? lines.emplace_back() : *found).push_back(&item);
  }
  for (Line& line : lines)
    std::ranges::stable_sort(line, {}, &Item::x);
  return lines;
}

/// Every cell of the line begins and ends at an edge of a column.
bool isLineOf(const Line& line, const std::vector<double>& edges) {
  return std::ranges::all_of(line, [&](const Item* item) {
    return indexOf(edges, item->x) >= 0 && indexOf(edges, item->x + item->width) >= 0;
  });
}

/// Where the edges come to stand, and which of them a cell's left and right edge become.
struct Move {
  std::vector<double> from, to;
  int at;           // the column that comes in or goes
  bool isIncoming;  // else it goes

  int left(int edge) const { return isIncoming ? (edge < at ? edge : edge + 1) : (edge <= at ? edge : edge - 1); }
  int right(int edge) const { return isIncoming ? (edge <= at ? edge : edge + 1) : (edge <= at ? edge : edge - 1); }
};

void place(Item& item, const std::vector<double>& edges, int left, int right) {
  item.x = toHundredth(edges[static_cast<std::size_t>(left)]);
  item.width = toHundredth(edges[static_cast<std::size_t>(right)] - item.x);
}

std::vector<double> edgesOf(const std::vector<double>& widths, double start) {
  std::vector<double> edges{start};
  for (const double width : widths)
    edges.push_back(edges.back() + width);
  return edges;
}

std::vector<double> widthsOf(const std::vector<double>& edges) {
  std::vector<double> widths;
  for (std::size_t i = 1; i < edges.size(); ++i)
    widths.push_back(edges[i] - edges[i - 1]);
  return widths;
}

bool isFigure(const report::DetailField& field) {
  bool isNumber = false;
  field.sample.toDouble(&isNumber);
  return isNumber && !field.label.contains(u'号') && !field.label.contains(QStringLiteral("条码"));
}

bool isMoney(const report::DetailField& field) {
  const QString& label = field.label;
  return isFigure(field) && (label.contains(u'价') || label.contains(u'额') || label.contains(u'金') ||
                             label.contains(u'款') || label.contains(u'值'));
}

/// A price or a rate is nothing to add up.
bool addsUp(const report::DetailField& field) {
  return isFigure(field) && !field.label.contains(u'价') && !field.label.contains(u'率');
}

/// How expressions name the field: a variable of the same name would come first.
QString nameOf(const Template& t, const report::DetailField& field) {
  const bool isHidden = std::ranges::any_of(t.variables, [&](const report::Variable& variable) {
    return variable.name.compare(field.name, Qt::CaseInsensitive) == 0;
  });
  return isHidden ? QStringLiteral("field.") + field.name : field.name;
}

/// The new cell of a band, written and framed like the one beside it.
Item cellFor(const Template& t, const Band& band, const Item& beside, const report::DetailField& field) {
  Item cell = beside;
  cell.name.clear();
  cell.visibleIf.clear();
  cell.format.clear();
  cell.hideZero = cell.hideRepeated = false;
  if (band.kind == BandKind::ColumnHeader) {
    cell.content = field.label.isEmpty() ? field.name : field.label;
    return cell;
  }
  cell.grow = cell.wrap = false;
  cell.shrink = true;
  cell.align = isFigure(field) ? report::HAlign::Right : report::HAlign::Left;
  if (isMoney(field)) cell.format = QStringLiteral("#,##0.00");
  const QString name = nameOf(t, field);
  if (band.kind == BandKind::MasterData)
    cell.content = u'[' + name + u']';
  else
    cell.content = addsUp(field) ? QStringLiteral("[sum(%1)]").arg(name) : QString();
  return cell;
}

/// Moves the cells of all lines that belong to the list; a new column is put in where no wider cell covers it.
void apply(Template& t, const Move& move, const report::DetailField* field) {
  for (Band& band : t.bands) {
    if (!hasColumns(band)) continue;
    std::vector<Item> fresh;
    std::vector<const Item*> gone;
    for (const Line& line : linesOf(band)) {
      if (!isLineOf(line, move.from)) continue;
      if (line.size() == 1 && indexOf(move.from, line.front()->x + line.front()->width) > 1) {
        // Words below the list, as wide as it is.
        place(*line.front(), move.to, 0, static_cast<int>(move.to.size()) - 1);
        continue;
      }
      const Item* beside = nullptr;
      bool isCovered = false;
      for (Item* item : line) {
        const int left = indexOf(move.from, item->x), right = indexOf(move.from, item->x + item->width);
        const bool isCell = right == left + 1;
        if (!move.isIncoming && isCell && left == move.at) {
          gone.push_back(item);
          continue;
        }
        if (move.isIncoming && left < move.at && right > move.at) isCovered = true;
        // The cell before the place, or else the first one, is the pattern.
        if (left < move.at || !beside) beside = item;
        place(*item, move.to, move.left(left), move.right(right));
      }
      if (!field || isCovered || !beside) continue;
      fresh.push_back(cellFor(t, band, *beside, *field));
      place(fresh.back(), move.to, move.at, move.at + 1);
    }
    std::erase_if(band.items, [&](const Item& item) { return std::ranges::find(gone, &item) != gone.end(); });
    band.items.insert(band.items.end(), fresh.begin(), fresh.end());
  }
}

double wishedWidth(const report::DetailField& field) {
  constexpr double kFigure = 20, kLetter = 1.8, kIdeograph = 3.2, kPadding = 3, kWidest = 40;
  if (isFigure(field)) return kFigure;
  double width = kPadding;
  for (const QChar c : field.sample)
    width += c.unicode() > 0xff ? kIdeograph : kLetter;
  return std::clamp(width, kFigure, kWidest);
}

}  // namespace design_columns_detail

bool hasColumns(const report::Band& band) {
  using report::BandKind;
  return band.kind == BandKind::ColumnHeader || band.kind == BandKind::MasterData || band.kind == BandKind::Summary ||
         band.kind == BandKind::GroupFooter;
}

std::vector<double> columnEdges(const report::Template& t) {
  using namespace design_columns_detail;
  const auto rows = std::ranges::find(t.bands, BandKind::MasterData, &Band::kind);
  if (rows == t.bands.end() || t.page.columns > 1) return {};
  Band row = *rows;
  const std::vector<Line> lines = linesOf(row);
  if (lines.size() != 1) return {};
  std::vector<double> edges;
  for (const Item* cell : lines.front()) {
    if (!edges.empty() && !isNear(edges.back(), cell->x)) return {};
    if (edges.empty()) edges.push_back(cell->x);
    edges.push_back(cell->x + cell->width);
  }
  return edges;
}

int columnOf(const report::Template& t, const report::Item& item) {
  using namespace design_columns_detail;
  const std::vector<double> edges = columnEdges(t);
  const int right = indexOf(edges, item.x + item.width);
  return indexOf(edges, item.x) >= 0 && right > 0 ? right - 1 : -1;
}

bool insertColumn(report::Template& t, int at, const report::DetailField& field) {
  using namespace design_columns_detail;
  Move move{.from = columnEdges(t), .to = {}, .at = at, .isIncoming = true};
  const int count = static_cast<int>(move.from.size()) - 1;
  if (count < 1 || at < 0 || at > count) return false;
  // First what the list leaves free at its right, then what the other columns can spare.
  const double free = std::max(0.0, t.page.columnWidth() - move.from.back());
  std::vector<double> widths = widthsOf(move.from);
  const double spare = std::accumulate(widths.begin(), widths.end(), 0.0,
                                       [](double sum, double width) { return sum + std::max(0.0, width - kLeast); });
  const double width = std::min(wishedWidth(field), free + spare);
  if (width < kNarrowest) return false;
  const double share = spare > 0 ? std::max(0.0, width - free) / spare : 0;
  for (double& each : widths)
    each -= std::max(0.0, each - kLeast) * share;
  widths.insert(widths.begin() + at, width);
  move.to = edgesOf(widths, move.from.front());
  apply(t, move, &field);
  return true;
}

bool removeColumn(report::Template& t, int column) {
  using namespace design_columns_detail;
  Move move{.from = columnEdges(t), .to = {}, .at = column, .isIncoming = false};
  const int count = static_cast<int>(move.from.size()) - 1;
  if (count < 2 || column < 0 || column >= count) return false;
  std::vector<double> widths = widthsOf(move.from);
  const double whole = move.from.back() - move.from.front();
  const double scale = whole / (whole - widths[static_cast<std::size_t>(column)]);
  widths.erase(widths.begin() + column);
  for (double& each : widths)
    each *= scale;
  move.to = edgesOf(widths, move.from.front());
  apply(t, move, nullptr);
  return true;
}

}  // namespace jxc::ui
