// 度数表: stock of a lens by its two powers.
#pragma once

#include "masterdata/goods_lenses.h"
#include "platform/sheet/sheet.h"

#include <QWidget>

class QLabel;
class QTableWidget;

namespace jxc {

/// The table "屈/散": spheres are its lines, cylinders its columns, cells the stock; a pair without an article is
/// empty.
class PowerMatrix : public QWidget {
 public:
  /// `name`: of the table, for assistive technology and tests.
  explicit PowerMatrix(const char* name, QWidget* parent = nullptr);
  void show(const PowerTable& table);
  bool isEmpty() const { return shown_.cells.empty(); }
  /// What is shown as a spreadsheet.
  Sheet sheet() const;

 private:
  PowerTable shown_;
  QTableWidget* table_;
  QLabel* corner_;
  QLabel* sum_;
};

}  // namespace jxc
