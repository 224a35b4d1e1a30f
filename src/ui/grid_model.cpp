#include "ui/grid_model.h"

#include "engine/error.h"
#include "ui/display.h"
#include "ui/skin.h"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <utility>

namespace jxc::ui {
namespace grid_model_detail {

Qt::Alignment alignmentOf(ColumnKind kind) {
  if (isNumberKind(kind) || kind == ColumnKind::Power) return Qt::AlignRight | Qt::AlignVCenter;
  if (kind == ColumnKind::Date || kind == ColumnKind::Flag) return Qt::AlignCenter;
  return Qt::AlignLeft | Qt::AlignVCenter;
}

// Sorts row numbers by a key made once per row; equal keys keep their order in both directions.
template <class Key, class Less>
void sortBy(std::vector<int>& order, const std::vector<Key>& keys, Qt::SortOrder direction, Less less) {
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return direction == Qt::AscendingOrder ? less(keys[a], keys[b]) : less(keys[b], keys[a]);
  });
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

}  // namespace grid_model_detail

GridModel::GridModel(std::span<const ColumnSpec> columns, QObject* parent)

    : QAbstractTableModel(parent), columns_(columns), forbidden_(columns.size(), false), source_(columns.size(), -1) {
  for (const auto& column : columns)
    captions_.push_back(qs(column.caption));
}

std::vector<int> GridModel::sourcesIn(const RowSet& rows) const {
  std::vector<int> source;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    source.push_back(forbidden_[i] ? -1 : rows.columnIndex(columns_[i].field));
    if (source.back() < 0 && !forbidden_[i] && rows.columnCount() > 0) {
      throw DbError(DbError::Kind::UnknownName, QStringLiteral("列表没有字段 ") + qs(columns_[i].field));
    }
  }
  return source;
}

void GridModel::setRows(RowSet rows) {
  std::vector<int> source = sourcesIn(rows);
  beginResetModel();
  rows_ = std::move(rows);
  source_ = std::move(source);
  filter_.reset();
  reorder();
  endResetModel();
}

void GridModel::setFilter(std::optional<std::vector<int>> rows) {
  beginResetModel();
  filter_ = std::move(rows);
  showRows();
  endResetModel();
}

void GridModel::setForbidden(int column, bool on) {
  const auto i = static_cast<std::size_t>(column);
  if (forbidden_[i] == on) return;
  beginResetModel();
  forbidden_[i] = on;
  // Rows that came while it was forbidden may be without it: then it stays empty until they are read anew.
  source_[i] = on ? -1 : rows_.columnIndex(columns_[i].field);
  reorder();
  endResetModel();
}

int GridModel::columnOf(std::string_view field) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i].field == field) return static_cast<int>(i);
  }
  return -1;
}

int GridModel::viewRow(int sourceRow) const {
  if (asTheyCame_) return sourceRow;
  const auto found = std::find(order_.begin(), order_.end(), sourceRow);
  return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

int GridModel::findInteger(std::string_view field, std::int64_t number) const {
  const int column = rows_.columnIndex(field);
  if (column < 0) return -1;
  for (int row = 0; row < rows_.rowCount(); ++row) {
    if (rows_.integer(row, column) == number) return viewRow(row);
  }
  return -1;
}

int GridModel::findText(std::string_view field, const QString& text) const {
  const int column = rows_.columnIndex(field);
  if (column < 0) return -1;
  const std::string wanted = text.toStdString();
  const qlonglong number = text.toLongLong();
  for (int row = 0; row < rows_.rowCount(); ++row) {
    const auto kind = rows_.kind(row, column);
    const bool same = kind == Value::Kind::Text      ? rows_.utf8(row, column) == wanted
                      : kind == Value::Kind::Integer ? rows_.integer(row, column) == number
                                                     : rows_.text(row, column) == text;
    if (same) return viewRow(row);
  }
  return -1;
}

QString GridModel::cellText(int viewRow, int column) const {
  if (source_[column] < 0) return {};
  return displayCell(rows_, sourceRow(viewRow), source_[column], columns_[column].kind);
}

double GridModel::sum(int column) const {
  if (source_[column] < 0) return 0;
  double total = 0;
  for (int place = 0; place < rowCount(); ++place) {
    const int row = sourceRow(place);
    if (!counts || counts(rows_[row])) total += rows_.number(row, source_[column]);
  }
  return total;
}

void GridModel::setCaption(int column, const QString& caption) {
  captions_[column] = caption;
  Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return asTheyCame_ ? rows_.rowCount() : static_cast<int>(order_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const int column = index.column();
  switch (role) {
    case Qt::DisplayRole:
      return cellText(index.row(), column);
    case Qt::EditRole: {
      const int row = sourceRow(index.row());
      if (source_[column] < 0) return {};
      if (columns_[column].kind == ColumnKind::Flag) return rows_.integer(row, source_[column]) != 0;
      return rows_.text(row, source_[column]);
    }
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(grid_model_detail::alignmentOf(columns_[column].kind));
    case Qt::ForegroundRole: {
      const Row row = rows_[sourceRow(index.row())];
      auto look = cellLook ? cellLook(row, columns_[column].field) : RowLook::Normal;
      if (look == RowLook::Normal && rowLook) look = rowLook(row);
      return look == RowLook::Normal ? QVariant() : QVariant(rowColour(look));
    }
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  if (section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return captions_[section];
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(grid_model_detail::alignmentOf(columns_[section].kind));
  }
  return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!index.isValid() || !changed) return result;
  const ColumnSpec& column = columns_[index.column()];
  if (column.use.editable && (!mayEdit || mayEdit(rows_[sourceRow(index.row())], column.field)))
    result |= Qt::ItemIsEditable;
  return result;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  const QString text = value.toString().trimmed();
  if (text == data(index, Qt::EditRole).toString()) return false;
  const auto& column = columns_[index.column()];
  const int row = sourceRow(index.row());
  // A grid edit never refuses: what is no number goes to the rule as empty, and the rule puts its own value there.
  const QString plain = isNumberKind(column.kind) ? [&] {
    const auto number = readNumber(text);
    return number && !text.isEmpty() ? numberText(*number) : QString();
  }() : text;
  QMetaObject::invokeMethod(
      this,
      [this, kept = rows_, row, field = column.field, plain] {
        changed(kept[row], field, plain);
        if (afterChange) afterChange();
      },
      Qt::QueuedConnection);
  return true;
}

void GridModel::sort(int column, Qt::SortOrder order) {
  Q_EMIT layoutAboutToBeChanged();
  const auto before = persistentIndexList();
  std::vector<int> sources;
  for (const auto& index : before)
    sources.push_back(sourceRow(index.row()));
  sortColumn_ = column;
  sortOrder_ = order;
  reorder();
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i) {
    after.push_back(index(viewRow(sources[static_cast<std::size_t>(i)]), before[i].column()));
  }
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged();
}

void GridModel::reorder() {
  sortRows();
  showRows();
}

// The whole set is sorted once; a filter then only walks that order, so that typing in a sorted list stays quick.
void GridModel::showRows() {
  asTheyCame_ = sorted_.empty() && !filter_;
  order_.clear();
  if (asTheyCame_) return;
  if (!filter_) {
    order_ = sorted_;
  } else if (sorted_.empty()) {
    order_ = *filter_;
  } else {
    std::vector<char> shown(sorted_.size(), 0);
    for (const int row : *filter_)
      shown[static_cast<std::size_t>(row)] = 1;
    for (const int row : sorted_) {
      if (shown[static_cast<std::size_t>(row)]) order_.push_back(row);
    }
  }
}

void GridModel::sortRows() {
  using namespace grid_model_detail;
  sorted_.clear();
  if (sortColumn_ < 0 || source_[sortColumn_] < 0) return;
  const int column = source_[sortColumn_];
  const int count = rows_.rowCount();
  sorted_.resize(static_cast<std::size_t>(count));
  std::iota(sorted_.begin(), sorted_.end(), 0);
  const auto kind = columns_[sortColumn_].kind;
  if (isNumberKind(kind) || kind == ColumnKind::Flag) {
    std::vector<double> keys(sorted_.size());
    for (int row = 0; row < count; ++row)
      keys[row] = rows_.number(row, column);
    return sortBy(sorted_, keys, sortOrder_, std::less<>());
  }
  if (kind == ColumnKind::Power) {
    std::vector<double> keys(sorted_.size());
    for (int row = 0; row < count; ++row)
      keys[row] = readNumber(rows_.text(row, column)).value_or(0);
    return sortBy(sorted_, keys, sortOrder_, std::less<>());
  }
  std::vector<std::string_view> texts(sorted_.size());
  std::vector<std::string> made;  // numbers in a text column have no stored text
  made.reserve(sorted_.size());
  bool ascii = true;
  for (int row = 0; row < count; ++row) {
    texts[row] = rows_.utf8(row, column);
    if (rows_.kind(row, column) != Value::Kind::Text && !rows_.isNull(row, column)) {
      texts[row] = made.emplace_back(rows_.text(row, column).toStdString());
    }
    ascii = ascii && isAscii(texts[row]);
  }
  if (ascii) return sortBy(sorted_, texts, sortOrder_, std::less<>());
  QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
  std::vector<QCollatorSortKey> keys;
  keys.reserve(sorted_.size());
  for (const auto text : texts)
    keys.push_back(collator.sortKey(qs(text)));
  sortBy(sorted_, keys, sortOrder_, [](const auto& a, const auto& b) { return a < b; });
}

}  // namespace jxc::ui
