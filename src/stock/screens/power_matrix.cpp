#include "stock/screens/power_matrix.h"

#include "core/rounding.h"
#include "ui/display.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace jxc {

PowerMatrix::PowerMatrix(const char* name, QWidget* parent)
    : QWidget(parent), table_(new QTableWidget(this)), corner_(new QLabel(QStringLiteral("屈/散"))), sum_(new QLabel) {
  table_->setObjectName(QString::fromLatin1(name));
  table_->setAccessibleName(QStringLiteral("镜片库存，按屈光度和散光度"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setTabKeyNavigation(false);
  table_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  table_->horizontalHeader()->setDefaultSectionSize(fontMetrics().averageCharWidth() * 9);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  if (auto* button = table_->findChild<QAbstractButton*>()) {
    corner_->setAlignment(Qt::AlignCenter);
    corner_->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* inside = new QHBoxLayout(button);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(corner_);
  }
  sum_->setObjectName(QString::fromLatin1(name) + QStringLiteral("Sum"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table_, 1);
  layout->addWidget(sum_);
}

void PowerMatrix::show(const PowerTable& table) {
  shown_ = table;
  table_->clear();
  table_->setRowCount(static_cast<int>(table.spheres.size()));
  table_->setColumnCount(static_cast<int>(table.cylinders.size()));
  const auto shown = [](QStringList powers) {
    for (QString& power : powers)
      power = ui::displayPower(power);
    return powers;
  };
  table_->setVerticalHeaderLabels(shown(table.spheres));
  table_->setHorizontalHeaderLabels(shown(table.cylinders));
  table_->verticalHeader()->setMinimumWidth(corner_->sizeHint().width() + 12);
  double sum = 0;
  for (int row = 0; row < table_->rowCount(); ++row) {
    for (int column = 0; column < table_->columnCount(); ++column) {
      const auto& stock = table.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
      if (!stock) continue;
      sum += *stock;
      auto* cell = new QTableWidgetItem(ui::displayNumber(ui::ColumnKind::Quantity, *stock));
      cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      table_->setItem(row, column, cell);
    }
  }
  sum_->setText(table.cells.empty() ? QStringLiteral("在左边选择一种镜片")
                                    : QStringLiteral("库存合计：") + ui::displaySum(ui::ColumnKind::Quantity, sum));
}

Sheet PowerMatrix::sheet() const {
  Sheet sheet;
  sheet.columns.push_back({corner_->text()});
  for (const QString& cylinder : shown_.cylinders)
    sheet.columns.push_back({.caption = cylinder, .kind = SheetKind::Quantity, .decimals = quantityDigits()});
  sheet.rows = {static_cast<int>(shown_.spheres.size()), [table = shown_](int row, std::span<Value> cells) {
                  cells[0] = table.spheres[row];
                  const auto& line = table.cells[static_cast<std::size_t>(row)];
                  for (std::size_t column = 0; column < line.size(); ++column) {
                    if (line[column]) cells[column + 1] = *line[column];
                  }
                }};
  sheet.notes << sum_->text();
  return sheet;
}

}  // namespace jxc
