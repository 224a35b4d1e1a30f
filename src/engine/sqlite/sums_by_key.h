// 按键累计: sums of the rows of a select, taken by an aggregate function while SQLite walks over them, and kept by the
// content of their first columns.
#pragma once

#include "engine/row_set.h"
#include "engine/sqlite/native.h"

#include <memory>
#include <string>
#include <vector>

namespace jxc::sqlite {

/// A function takes the cells of a row without a call of the interface for each of them, which is half of the time of
/// who steps over a million rows.
class SumsByKey {
 public:
  /// Of rows with these columns: the first `keys` are what they are summed by, the others numbers.
  SumsByKey(std::shared_ptr<const ColumnNames> columns, int keys);
  /// The statement that walks over the rows of this one; its parameters are the same.
  std::string over(const std::string& select) const;
  /// To be called before it runs.
  void bind(sqlite3_stmt* statement);
  /// Keys, and for each number the sum and the sum without signs ("abs_…"), to six decimals, in the order in which keys
  /// came first.
  RowSet rows() const;

  /// A row: called by the function.
  void add(sqlite3_value** cells);

 private:
  struct Slot {
    std::size_t hash = 0;
    int group = -1;  // free
  };
  struct Sum {
    long double plain = 0, withoutSign = 0;
  };
  void readKey(sqlite3_value** cells);
  Slot& slotOf(std::size_t hash);
  void addGroup(Slot& slot, std::size_t hash, sqlite3_value** cells);

  std::shared_ptr<const ColumnNames> columns_;
  int keys_, sumCount_;
  std::string key_;               // of the present row: kind, length and content of each column
  std::vector<Slot> slots_;       // open addressing, a power of two
  std::vector<std::string> all_;  // the key of each group
  RowSet cells_;                  // the same as it was read
  std::vector<Sum> sums_;
};

/// Makes the function known to a connection.
void registerSums(sqlite3* connection);

}  // namespace jxc::sqlite
