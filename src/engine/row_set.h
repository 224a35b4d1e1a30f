// 结果集: the rows of a query as a static cursor: read into memory when opened, then walked by value.
#pragma once

#include "engine/value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jxc {

class RowSet;

/// One row of a RowSet; valid as long as the set. Column names are compared without regard to case; an unknown name
/// throws DbError(UnknownName).
class Row {
 public:
  Row(const RowSet& set, int row) : set_(&set), row_(row) {}
  QString text(std::string_view column) const;
  double number(std::string_view column) const;
  std::int64_t integer(std::string_view column) const;
  bool flag(std::string_view column) const { return integer(column) != 0; }
  bool isNull(std::string_view column) const;
  Value value(std::string_view column) const;
  int index() const { return row_; }

 private:
  const RowSet* set_;
  int row_;
};

/// The names of a result, looked up without regard to case. Made once a statement and shared by all its row sets.
class ColumnNames {
 public:
  explicit ColumnNames(std::vector<std::string> names);
  const std::vector<std::string>& names() const { return names_; }
  /// Index of the first column of that name, or -1.
  int indexOf(std::string_view name) const;

 private:
  std::vector<std::string> names_;
  std::vector<std::int32_t> slots_;  // open addressing, a power of two, -1 is free
};

/// Rows in memory: flat cells of 16 bytes, texts up to eight bytes inside the cell and longer ones in an arena, both in
/// blocks, so that 100,000 goods with all their columns cost some 120 MB and no allocation a cell. Independent of the
/// connection. Copies share the rows (a copy costs a pointer) and the rows of a finished set never change, so a set may
/// be filled in one thread and handed to another by value.
class RowSet {
 public:
  int rowCount() const;
  int columnCount() const { return columnCount_; }
  bool isEmpty() const { return rowCount() == 0; }
  const std::vector<std::string>& columns() const;
  /// Index of a column by name without regard to case, or -1.
  int columnIndex(std::string_view name) const { return names_ ? names_->indexOf(name) : -1; }

  Row operator[](int row) const { return Row(*this, row); }
  Row front() const { return Row(*this, 0); }

  bool isNull(int row, int column) const { return kind(row, column) == Value::Kind::Null; }
  Value::Kind kind(int row, int column) const { return cell(row, column).kind; }
  double number(int row, int column) const {
    const Cell& c = cell(row, column);
    return c.kind == Value::Kind::Real ? c.real : numberOf(c);
  }
  std::int64_t integer(int row, int column) const {
    const Cell& c = cell(row, column);
    return c.kind == Value::Kind::Integer ? c.integer : wholeNumber(numberOf(c));
  }
  QString text(int row, int column) const;
  Value value(int row, int column) const;
  /// The stored UTF-8 of a text cell (empty for other kinds), for filters over many rows without a conversion.
  std::string_view utf8(int row, int column) const;

  class Iterator {
   public:
    Iterator(const RowSet& set, int row) : set_(&set), row_(row) {}
    Row operator*() const { return Row(*set_, row_); }
    Iterator& operator++() {
      ++row_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return row_ != other.row_; }

   private:
    const RowSet* set_;
    int row_;
  };
  Iterator begin() const { return Iterator(*this, 0); }
  Iterator end() const { return Iterator(*this, rowCount()); }

  /// The same rows without these columns: nobody finds them by name any more. Costs nothing.
  RowSet without(std::span<const std::string_view> columns) const;

  // Building, used by the engines. Adding to a set whose rows are shared gives it rows of its own first.
  explicit RowSet(std::vector<std::string> columns = {});
  explicit RowSet(std::shared_ptr<const ColumnNames> columns);
  void addNull() {
    Cell& cell = append(Value::Kind::Null);
    cell.integer = 0;
  }
  void addInteger(std::int64_t number) { append(Value::Kind::Integer).integer = number; }
  void addReal(double number) { append(Value::Kind::Real).real = number; }
  void addText(std::string_view utf8);
  /// A row of nulls.
  void addEmptyRow();
  /// A row of another set with the same columns.
  void addRow(const RowSet& from, int row);

  /// Bytes held by the rows.
  std::size_t memory() const;

 private:
  static constexpr std::uint32_t inlineLength = 8;
  struct Cell {
    union {
      std::int64_t integer;
      double real;
      const char* text;
      char inlined[inlineLength];
    };
    std::uint32_t length;
    Value::Kind kind;
  };
  static_assert(sizeof(Cell) == 16);
  static constexpr int blockShift = 14;  // 16,384 cells, 256 KB
  static constexpr std::size_t blockCells = std::size_t{1} << blockShift;

  /// Where the next cell goes.
  struct Room {
    Cell* next = nullptr;
    Cell* end = nullptr;
    std::size_t count = 0;
  };
  struct Rows;
  const Cell& cell(int row, int column) const {
    const std::size_t at =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(columnCount_) + static_cast<std::size_t>(column);
    return blocks_[at >> blockShift][at & (blockCells - 1)];
  }
  static std::string_view textOf(const Cell& cell) {
    return {cell.length <= inlineLength ? cell.inlined : cell.text, cell.length};
  }
  static double numberOf(const Cell& cell);
  Cell& append(Value::Kind kind) {
    if (!rows_ || rows_.use_count() > 1 || rows_->next == rows_->end) makeRoom();
    ++rows_->count;
    Cell& cell = *rows_->next++;
    cell.length = 0;
    cell.kind = kind;
    return cell;
  }
  void makeRoom();
  Rows& ownRows() const;

  std::shared_ptr<const ColumnNames> names_;
  std::shared_ptr<Room> rows_;           // always a Rows
  const Cell* const* blocks_ = nullptr;  // of rows_, one indirection less for every cell that is read
  int columnCount_ = 0;
};

}  // namespace jxc
