// 表格模型: the rows of a query as a table model: no item per cell, sorting is an order of row numbers.
#pragma once

#include "engine/row_set.h"
#include "ui/specs.h"

#include <QAbstractTableModel>
#include <QColor>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace jxc::ui {

/// How a row stands out; colours are named by meaning and come from the skin.
enum class RowLook { Normal, Muted, Good, Warning, Bad };

class GridModel : public QAbstractTableModel {
 public:
  using Changed = std::function<void(const Row& row, std::string_view field, const QString& text)>;

  explicit GridModel(std::span<const ColumnSpec> columns, QObject* parent);

  /// Takes rows; throws DbError(UnknownName) when a column's field is not among them. Keeps the sort order.
  void setRows(RowSet rows);
  const RowSet& rows() const { return rows_; }
  std::span<const ColumnSpec> columns() const { return columns_; }
  int columnOf(std::string_view field) const;  // -1 when unknown
  /// Shows only these rows of the set (ascending); nothing: all of them. New rows come unfiltered.
  void setFilter(std::optional<std::vector<int>> rows);
  /// Cells of a forbidden column are empty to everybody who asks, its sum is 0. It may be missing from the rows.
  void setForbidden(int column, bool on);
  bool isForbidden(int column) const { return forbidden_[static_cast<std::size_t>(column)]; }
  /// Row of the row set shown at a place of the view, and back (-1 when it is not shown).
  int sourceRow(int viewRow) const { return asTheyCame_ ? viewRow : order_[viewRow]; }
  int viewRow(int sourceRow) const;
  int findInteger(std::string_view field, std::int64_t number) const;  // view row, -1
  int findText(std::string_view field, const QString& text) const;     // view row, -1
  QString cellText(int viewRow, int column) const;
  double sum(int column) const;
  void setCaption(int column, const QString& caption);

  std::function<RowLook(const Row&)> rowLook;
  /// Rows that the sums take in; without it all that are shown.
  std::function<bool(const Row&)> counts;
  /// One cell that stands out from its row; Normal leaves it as the row is.
  std::function<RowLook(const Row&, std::string_view field)> cellLook;
  /// Called once the editor is closed, so that the hook may ask and load anew.
  Changed changed;
  std::function<void()> afterChange;
  /// Whether this cell of an editable column opens; without it all do.
  std::function<bool(const Row& row, std::string_view field)> mayEdit;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  /// Stable; numbers as numbers, Chinese by pinyin. Column -1: as the query gave them.
  void sort(int column, Qt::SortOrder order) override;

 private:
  std::vector<int> sourcesIn(const RowSet& rows) const;
  void reorder();
  void sortRows();
  void showRows();
  std::span<const ColumnSpec> columns_;
  std::vector<QString> captions_;
  RowSet rows_;
  std::vector<bool> forbidden_;
  std::vector<int> source_;  // column of the row set behind each column; -1 before the first rows and when forbidden
  std::vector<int> sorted_;  // all rows in the order of the sorted column; empty without one
  std::optional<std::vector<int>> filter_;
  std::vector<int> order_;  // the rows that are shown, unless they are shown as they came
  bool asTheyCame_ = true;
  int sortColumn_ = -1;
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

}  // namespace jxc::ui
