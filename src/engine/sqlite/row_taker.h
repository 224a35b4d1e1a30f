// 逐行取数: a function takes the cells of a row without a call of the interface for each of them, which is half of the
// time of who steps over a million rows.
#pragma once

#include "engine/row_walk.h"
#include "engine/sqlite/native.h"
#include "engine/sqlite/native_cell.h"

#include <exception>
#include <memory>
#include <string>

namespace jxc::sqlite {

/// Whoever takes the rows of a select.
class RowTaker {
 public:
  /// Of rows with these columns.
  explicit RowTaker(std::shared_ptr<const ColumnNames> columns) : columns_(std::move(columns)) {}
  virtual ~RowTaker() = default;
  /// The statement that walks over the rows of this one; its parameters are the same.
  std::string over(const std::string& select) const;
  /// The same for rows whose order counts. It is right only where SQLite reads them in that order (`readsInOrder`):
  /// otherwise they would come before they are sorted, joined or chosen.
  std::string inOrderOver(const std::string& select) const;
  /// To be called before it runs.
  void bind(sqlite3_stmt* statement);
  /// To be called when it has ended: throws what `add` has thrown.
  void rethrow() const {
    if (thrown_) std::rethrow_exception(thrown_);
  }
  int columnCount() const { return static_cast<int>(columns_->names().size()); }

  /// Called by the function. False: `add` has thrown.
  bool take(sqlite3_value** cells);

 protected:
  virtual void add(sqlite3_value** cells) = 0;
  const std::shared_ptr<const ColumnNames> columns_;

 private:
  std::string cells() const;

  std::exception_ptr thrown_;
};

/// Hands each row on.
class RowByRow final : public RowTaker, private WalkedRow {
 public:
  RowByRow(std::shared_ptr<const ColumnNames> columns, const TakeRow& take)
      : RowTaker(std::move(columns)), take_(take) {}

 private:
  void add(sqlite3_value** cells) override {
    cells_ = cells;
    take_(*this);
  }
  bool isNull(int column) const override { return cell(column).kind() == SQLITE_NULL; }
  double number(int column) const override;
  std::int64_t integer(int column) const override;
  std::string_view utf8(int column) const override {
    return cell(column).kind() == SQLITE_TEXT ? cell(column).utf8() : std::string_view();
  }
  QString text(int column) const override { return kept(column).text(0, 0); }

  NativeCell cell(int column) const { return NativeCell(cells_[column]); }
  /// The cell in a set of its own, which knows how the rarer kinds are read.
  RowSet kept(int column) const;

  const TakeRow& take_;
  sqlite3_value** cells_ = nullptr;
};

/// Whether a statement of `inOrderOver` walks over one table or index, sorts nothing, and has its other conditions
/// behind it when it comes to the function.
bool readsInOrder(sqlite3* connection, const std::string& statement);

/// Makes the functions known to a connection.
void registerRowTaker(sqlite3* connection);

}  // namespace jxc::sqlite
