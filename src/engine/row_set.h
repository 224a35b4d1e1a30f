// 结果集: the rows of a query as a static cursor: read into memory when opened, then walked by value.
#pragma once

#include "engine/value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
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

/// Rows in memory: flat cells of 16 bytes, texts in one arena, so that 100,000 goods with all their columns cost some
/// 120 MB and one allocation a block, not one a cell. Copyable, movable, independent of the connection.
class RowSet {
 public:
  int rowCount() const;
  int columnCount() const { return static_cast<int>(columns_.size()); }
  bool isEmpty() const { return rowCount() == 0; }
  const std::vector<std::string>& columns() const { return columns_; }
  /// Index of a column by name without regard to case, or -1.
  int columnIndex(std::string_view name) const;

  Row operator[](int row) const { return Row(*this, row); }
  Row front() const { return Row(*this, 0); }

  bool isNull(int row, int column) const { return cell(row, column).kind == Value::Kind::Null; }
  Value::Kind kind(int row, int column) const { return cell(row, column).kind; }
  double number(int row, int column) const;
  std::int64_t integer(int row, int column) const;
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

  // Building, used by the engines.
  explicit RowSet(std::vector<std::string> columns = {}) : columns_(std::move(columns)) {}
  void addNull();
  void addInteger(std::int64_t number);
  void addReal(double number);
  void addText(std::string_view utf8);

 private:
  struct Cell {
    union {
      std::int64_t integer;
      double real;
      std::uint64_t offset;
    };
    std::uint32_t length;
    Value::Kind kind;
  };
  const Cell& cell(int row, int column) const;

  std::vector<std::string> columns_;
  std::vector<Cell> cells_;
  std::string arena_;
};

}  // namespace jxc
