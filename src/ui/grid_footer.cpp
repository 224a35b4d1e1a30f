#include "ui/grid_footer.h"

#include "ui/display.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

#include <algorithm>

namespace jxc::ui {

Grid::Footer::Footer(Grid& grid) : QWidget(&grid), grid_(grid) {
  setObjectName(QStringLiteral("footer"));
  setFixedHeight(fontMetrics().height() + 8);
}

void Grid::Footer::update(bool complete) {
  texts_.clear();
  const auto columns = grid_.model_->columns();
  QStringList spoken;
  for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
    if (!columns[i].use.sum || grid_.model_->isForbidden(i)) continue;
    texts_[i] = complete ? displaySum(columns[i].kind, grid_.model_->sum(i)) : QStringLiteral("…");
    if (!grid_.view_->isColumnHidden(i)) spoken << qs(columns[i].caption) + texts_[i];
  }
  count_ = QStringLiteral("共 %1 条").arg(grid_.rowCount());
  setAccessibleName(QStringLiteral("合计"));
  setToolTip(spoken.join(QStringLiteral("\n")));
  QWidget::update();
}

QString Grid::Footer::text(int column) const {
  const auto found = texts_.find(column);
  return found == texts_.end() ? QString() : found->second;
}

void Grid::Footer::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Button));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawLine(0, 0, width(), 0);
  painter.setPen(palette().color(QPalette::ButtonText));
  auto font = painter.font();
  font.setBold(true);
  painter.setFont(font);
  const auto* header = grid_.view_->horizontalHeader();
  const int left = grid_.view_->viewport()->x();
  int freeUntil = width();  // where the first sum begins
  for (const auto& [column, text] : texts_) {
    if (header->isSectionHidden(column)) continue;
    const int at = left + header->sectionViewportPosition(column);
    const QRect place(at + 4, 0, header->sectionSize(column) - 8, height());
    if (place.right() < left) continue;
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, text);
    const int width = painter.fontMetrics().horizontalAdvance(text);
    freeUntil = std::min(freeUntil, std::max(place.left(), place.right() - width) - 6);
  }
  font.setBold(false);
  painter.setFont(font);
  painter.drawText(QRect(left + 4, 0, freeUntil - left - 4, height()), Qt::AlignLeft | Qt::AlignVCenter, count_);
}

}  // namespace jxc::ui
