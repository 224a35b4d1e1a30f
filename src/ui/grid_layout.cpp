// Widths and places of a grid's columns: proposed by what the rows hold, then the operator's own, kept in a file.
#include "ui/grid_layout.h"

#include "core/startup.h"
#include "engine/error.h"
#include "ui/display.h"
#include "ui/grid.h"
#include "ui/grid_msg.h"
#include "ui/message_box_prompt.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
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
    case ColumnKind::Power:
      return std::max(caption, 8);
    case ColumnKind::Flag:
      return std::max(caption, 6);
  }
  return caption;
}

QString layoutFile(const QString& key) {
  return programPath(QStringLiteral("Layout/") + key + QStringLiteral(".ini"));
}

}  // namespace grid_layout_detail

void Grid::showColumn(int column) {
  const auto i = static_cast<std::size_t>(column);
  const QScopedValueRollback<bool> notByHand(sizing_, true);
  view_->setColumnHidden(
      column, model_->isForbidden(column) || hiddenByProgram_[i] || hiddenByOperator_[i] || hiddenByRows_[i]);
}

void Grid::showPowers() {
  for (int i = 0; i < static_cast<int>(spec_.columns.size()); ++i) {
    if (spec_.columns[static_cast<std::size_t>(i)].kind != ColumnKind::Power) continue;
    const int source = model_->rows().columnIndex(spec_.columns[static_cast<std::size_t>(i)].field);
    bool hasPower = false;
    for (int row = 0; source >= 0 && row < model_->rows().rowCount() && !hasPower; ++row)
      hasPower = !model_->rows().utf8(row, source).empty();
    hiddenByRows_[static_cast<std::size_t>(i)] = !hasPower;
    showColumn(i);
  }
}

// Enough for what the first rows hold.
void Grid::fitToRows() {
  constexpr int kSample = 200, kNarrowest = 5;  // rows, characters
  if (isEmpty() || !autoWidth_) return;
  const std::vector<int> before = fitted_;
  fitted_.clear();
  const auto metrics = view_->fontMetrics();
  for (int i = 0; i < static_cast<int>(spec_.columns.size()); ++i) {
    const auto& column = spec_.columns[static_cast<std::size_t>(i)];
    int width = metrics.horizontalAdvance(model_->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString()) + 16;
    for (int row = 0; row < std::min(kSample, rowCount()); ++row) {
      width = std::max(width, metrics.horizontalAdvance(model_->cellText(row, i)));
    }
    if (column.use.sum) width = std::max(width, metrics.horizontalAdvance(footerText(column.field)) * 11 / 10);
    if (column.width > 0) width = std::max(width, std::min(column.width, kNarrowest) * metrics.averageCharWidth());
    width += 16;
    // Columns only grow: a list that is read anew must not jump.
    if (!before.empty()) width = std::max(width, before[static_cast<std::size_t>(i)]);
    fitted_.push_back(width);
  }
  if (fitted_ != before) defaultWidths();
}

void Grid::defaultWidths() {
  constexpr int kShortestText = 12;  // characters
  constexpr int kWidest = 476;       // of a text, so that as many columns as possible are seen at once
  auto* header = view_->horizontalHeader();
  const int character = view_->fontMetrics().averageCharWidth();
  const auto isText = [&](int i) { return spec_.columns[static_cast<std::size_t>(i)].kind == ColumnKind::Text; };
  const auto whole = [&](int i) {
    if (!fitted_.empty()) return fitted_[static_cast<std::size_t>(i)];
    return grid_layout_detail::characters(spec_.columns[static_cast<std::size_t>(i)]) * character + 14;
  };
  const auto wished = [&](int i) { return isText(i) ? std::min(whole(i), kWidest) : whole(i); };
  // A text can still be told apart by its first characters, a number not.
  const auto spare = [&](int i) { return isText(i) ? std::max(0, wished(i) - kShortestText * character - 14) : 0; };
  int total = 0, texts = 0, spares = 0, lacks = 0;
  for (int i = 0; i < header->count(); ++i) {
    if (header->isSectionHidden(i)) continue;
    total += wished(i);
    texts += isText(i) ? wished(i) : 0;
    spares += spare(i);
    lacks += whole(i) - wished(i);
  }
  // Room that is left goes to the texts, first to those that lack some, and room that is missing comes from the long
  // ones. Unless the list scrolls to the side all the same: then nothing is won by cutting names off.
  const int width = view_->viewport()->width(), room = width - total;
  const bool scrolls = -room > spares;
  const int filled = std::clamp(room, 0, lacks);
  const int given = texts > 0 ? std::max(0, room - filled) : 0;
  const int taken = scrolls ? 0 : std::max(0, -room);
  sizing_ = true;
  for (int i = 0; i < header->count(); ++i) {
    if (header->isSectionHidden(i)) continue;
    const int lack = whole(i) - wished(i);
    int more = isText(i) && given > 0 ? given * wished(i) / texts : 0;
    more += scrolls ? std::min(lack, std::max(0, width - wished(i))) : lacks > 0 ? filled * lack / lacks : 0;
    const int less = taken > 0 ? (taken * spare(i) + spares - 1) / spares : 0;
    header->resizeSection(i, wished(i) + more - less);
  }
  sizing_ = false;
}

void Grid::saveLayout() {
  QDir().mkpath(programPath(QStringLiteral("Layout")));
  QSettings file(grid_layout_detail::layoutFile(layoutKey_), QSettings::IniFormat);
  const auto* header = view_->horizontalHeader();
  for (int i = 0; i < header->count(); ++i) {
    const auto column = static_cast<std::size_t>(i);
    const QString name = QStringLiteral("columns/") + qs(spec_.columns[column].field);
    QStringList value{QString::number(header->visualIndex(i)), QString::number(header->sectionSize(i))};
    if (hiddenByOperator_[column]) {
      value[1] = QStringLiteral("0");
    } else if (header->isSectionHidden(i)) {
      // What the program hides just now keeps its width for when it is seen: another mode of the list, another
      // operator.
      const int usual = grid_layout_detail::characters(spec_.columns[column]) * view_->fontMetrics().averageCharWidth();
      value[1] = file.value(name).toStringList().value(1, QString::number(usual + 14));
    }
    file.setValue(name, value);
  }
  file.sync();
  if (file.status() != QSettings::NoError) {
    throw DbError(DbError::Kind::File, QStringLiteral("布局文件不能写入：%1").arg(file.fileName()));
  }
  autoWidth_ = false;
  fromFile_ = true;
}

void Grid::restoreLayout() {
  const QString name = grid_layout_detail::layoutFile(layoutKey_);
  if (programDirectory().isEmpty()) return;
  if (!QFile::exists(name)) {
    if (fromFile_) designLayout();
    return;
  }
  autoWidth_ = false;
  fromFile_ = true;
  const QScopedValueRollback<bool> notByHand(sizing_, true);
  const QSettings file(name, QSettings::IniFormat);
  auto* header = view_->horizontalHeader();
  std::vector<std::pair<int, int>> places;  // wished place, column
  for (int i = 0; i < header->count(); ++i) {
    const auto value =
        file.value(QStringLiteral("columns/") + qs(spec_.columns[static_cast<std::size_t>(i)].field)).toStringList();
    if (value.size() != 2) continue;
    places.emplace_back(value[0].toInt(), i);
    const int width = value[1].toInt();
    hiddenByOperator_[static_cast<std::size_t>(i)] = width == 0;
    showColumn(i);
    if (width > 0) header->resizeSection(i, std::clamp(width, 16, 2000));
  }
  std::stable_sort(places.begin(), places.end());
  for (std::size_t i = 0; i < places.size(); ++i) {
    header->moveSection(header->visualIndex(places[i].second), static_cast<int>(i));
  }
}

void Grid::dropLayout() {
  QFile::remove(grid_layout_detail::layoutFile(layoutKey_));
  designLayout();
}

void Grid::designLayout() {
  autoWidth_ = true;
  fromFile_ = false;
  auto* header = view_->horizontalHeader();
  for (int i = 0; i < header->count(); ++i) {
    header->moveSection(header->visualIndex(i), i);
    hiddenByOperator_[static_cast<std::size_t>(i)] = spec_.columns[static_cast<std::size_t>(i)].use.hidden;
    showColumn(i);
  }
  defaultWidths();
}

void saveGridLayout(const QString& key, Grid& view) {
  view.setLayoutKey(key);
  MessageBoxPrompt prompt(view.window());
  try {
    view.saveLayout();
  } catch (const DbError& error) {
    return prompt.notice(error.message());
  }
  prompt.notice(QStringLiteral("布局调整成功！"));
}

void restoreGridLayout(const QString& key, Grid& view) {
  view.setLayoutKey(key);
  view.restoreLayout();
}

void showLayoutHint(Grid& view) {
  screenAs<TF_GridMsg>(kGridMsg).showModal();
  view.setAutoWidth(false);
}

void addLayoutCommands(QMenu& menu, Grid& view) {
  const bool confirmed = layoutHintConfirmed();
  auto* arrange =
      menu.addAction(confirmed ? QStringLiteral("保存列表布局") : QStringLiteral("调整列表布局…"), &view, [&view] {
        if (layoutHintConfirmed()) {
          saveGridLayout(view.layoutKey(), view);
        } else {
          showLayoutHint(view);
        }
      });
  arrange->setObjectName(QStringLiteral("btnRDybj"));
  menu.addAction(QStringLiteral("恢复默认布局"), &view, &Grid::dropLayout);
}

}  // namespace jxc::ui
