// 行文: rows as texts, and columns as sums, that a test compares with what it expects.
#pragma once

#include "engine/row_set.h"

#include <QString>
#include <QStringList>

#include <initializer_list>
#include <string_view>

namespace jxc::test {

/// Each row: all its cells, `between` them a blank or another sign; `null` stands for nothing.
inline QStringList textsOf(const RowSet& rows, QChar between = u' ', const QString& null = {}) {
  QStringList all;
  for (int row = 0; row < rows.rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < rows.columnCount(); ++column)
      cells << (rows.isNull(row, column) ? null : rows.text(row, column));
    all << cells.join(between);
  }
  return all;
}

/// Each row: its cells of these columns, between them a blank. Rows of a set, or those in sight of a list.
template <class Rows>
QStringList textsOf(const Rows& rows, std::initializer_list<std::string_view> columns) {
  QStringList all;
  for (const Row row : rows) {
    QStringList cells;
    for (const std::string_view column : columns)
      cells << row.text(column);
    all << cells.join(u' ');
  }
  return all;
}

/// The numbers of a column.
inline double sumOf(const RowSet& rows, std::string_view column) {
  double sum = 0;
  for (const Row row : rows)
    sum += row.number(column);
  return sum;
}

}  // namespace jxc::test
