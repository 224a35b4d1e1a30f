// 合计行: the sums under a grid.
#pragma once

#include "ui/grid.h"

#include <QString>

#include <map>

namespace jxc::ui {

/// Each sum stands under its column, wherever that is moved or scrolled to; the number of rows at the left.
class Grid::Footer : public QWidget {
 public:
  explicit Footer(Grid& grid);
  /// Reads the sums anew; those of rows that are not all there yet are "…".
  void update(bool complete);
  /// As shown; empty for a column without a sum.
  QString text(int column) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Grid& grid_;
  std::map<int, QString> texts_;
  QString count_;
};

}  // namespace jxc::ui
