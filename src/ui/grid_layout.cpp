// Widths and places of a grid's columns: proposed by what the rows hold, then the operator's own, kept in a file.
#include "core/startup.h"
#include "ui/display.h"
#include "ui/grid.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QSettings>
#include <QTableView>

#include <algorithm>

namespace jxc::ui {
namespace grid_layout_detail {

int characters(const ColumnSpec& column) {
  if (column.width > 0) return column.width;
  const int caption = static_cast<int>(qs(column.caption).size()) * 2 + 2;
  switch (column.kind) {
    case ColumnKind::Text:
      return std::max(caption, 14);
    case ColumnKind::Money:
    case ColumnKind::Total:
      return std::max(caption, 12);
    case ColumnKind::Quantity:
    case ColumnKind::Number:
      return std::max(caption, 10);
    case ColumnKind::Percent:
      return std::max(caption, 8);
    case ColumnKind::Date:
      return std::max(caption, 12);
    case ColumnKind::Flag:
      return std::max(caption, 6);
  }
  return caption;
}

QString layoutFile(const QString& key) {
  return programPath(QStringLiteral("Layout/") + key + QStringLiteral(".ini"));
}

}  // namespace grid_layout_detail

// Enough for what the first rows hold, so that as many columns as possible are seen at once.
void Grid::fitToRows() {
  constexpr int kSample = 200;
  constexpr int kWidest = 340;
  if (isEmpty() || layoutRead_) return;
  const std::vector<int> before = fitted_;
  fitted_.clear();
  const auto metrics = view_->fontMetrics();
  for (int i = 0; i < static_cast<int>(spec_.columns.size()); ++i) {
    const auto& column = spec_.columns[static_cast<std::size_t>(i)];
    int width = metrics.horizontalAdvance(model_->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString()) + 16;
    for (int row = 0; row < std::min(kSample, rowCount()); ++row) {
      width = std::max(width, metrics.horizontalAdvance(model_->cellText(row, i)));
    }
    if (column.sum) width = std::max(width, metrics.horizontalAdvance(footerText(column.field)) * 11 / 10);
    if (column.width > 0) width = std::max(width, std::min(column.width, 8) * metrics.averageCharWidth());
    width = std::min(width, kWidest) + 16;
    // Columns only grow: a list that is read anew must not jump.
    if (!before.empty()) width = std::max(width, before[static_cast<std::size_t>(i)]);
    fitted_.push_back(width);
  }
  if (fitted_ != before) defaultWidths();
}

void Grid::defaultWidths() {
  constexpr int kShortestText = 12;  // characters
  auto* header = view_->horizontalHeader();
  const int character = view_->fontMetrics().averageCharWidth();
  const auto wished = [&](int i) {
    if (!fitted_.empty()) return fitted_[static_cast<std::size_t>(i)];
    return grid_layout_detail::characters(spec_.columns[static_cast<std::size_t>(i)]) * character + 14;
  };
  const auto isText = [&](int i) { return spec_.columns[static_cast<std::size_t>(i)].kind == ColumnKind::Text; };
  // A text can still be told apart by its first characters, a number not.
  const auto spare = [&](int i) { return isText(i) ? std::max(0, wished(i) - kShortestText * character - 14) : 0; };
  int total = 0, texts = 0, spares = 0;
  for (int i = 0; i < header->count(); ++i) {
    if (header->isSectionHidden(i)) continue;
    total += wished(i);
    texts += isText(i) ? wished(i) : 0;
    spares += spare(i);
  }
  // Room that is left goes to the texts, and room that is missing comes from the long ones.
  const int room = view_->viewport()->width() - total;
  const int given = texts > 0 ? std::max(0, room) : 0;
  const int taken = std::clamp(-room, 0, spares);
  sizing_ = true;
  for (int i = 0; i < header->count(); ++i) {
    if (header->isSectionHidden(i)) continue;
    const int more = isText(i) && given > 0 ? given * wished(i) / texts : 0;
    const int less = taken > 0 ? (taken * spare(i) + spares - 1) / spares : 0;
    header->resizeSection(i, wished(i) + more - less);
  }
  sizing_ = false;
}

void Grid::saveLayout() {
  QDir().mkpath(programPath(QStringLiteral("Layout")));
  QSettings file(grid_layout_detail::layoutFile(layoutKey_), QSettings::IniFormat);
  const auto* header = view_->horizontalHeader();
  file.clear();
  for (int i = 0; i < header->count(); ++i) {
    const bool hidden = header->isSectionHidden(i);
    if (hidden) continue;
    file.setValue(QStringLiteral("columns/") + qs(spec_.columns[static_cast<std::size_t>(i)].field),
                  QStringList{QString::number(header->visualIndex(i)), QString::number(header->sectionSize(i))});
  }
  layoutRead_ = true;
}

void Grid::restoreLayout() {
  const QString name = grid_layout_detail::layoutFile(layoutKey_);
  if (programDirectory().isEmpty() || !QFile::exists(name)) return;
  layoutRead_ = true;
  const QSettings file(name, QSettings::IniFormat);
  auto* header = view_->horizontalHeader();
  std::vector<std::pair<int, int>> places;  // wished place, column
  for (int i = 0; i < header->count(); ++i) {
    const auto value =
        file.value(QStringLiteral("columns/") + qs(spec_.columns[static_cast<std::size_t>(i)].field)).toStringList();
    if (value.size() != 2) continue;
    places.emplace_back(value[0].toInt(), i);
    header->resizeSection(i, std::clamp(value[1].toInt(), 16, 2000));
  }
  std::sort(places.begin(), places.end());
  for (std::size_t i = 0; i < places.size(); ++i) {
    header->moveSection(header->visualIndex(places[i].second), static_cast<int>(i));
  }
}

void Grid::dropLayout() {
  QFile::remove(grid_layout_detail::layoutFile(layoutKey_));
  layoutRead_ = false;
  auto* header = view_->horizontalHeader();
  for (int i = 0; i < header->count(); ++i)
    header->moveSection(header->visualIndex(i), i);
  for (int i = 0; i < header->count(); ++i) {
    if (spec_.columns[static_cast<std::size_t>(i)].hidden) view_->setColumnHidden(i, true);
  }
  defaultWidths();
}

}  // namespace jxc::ui
