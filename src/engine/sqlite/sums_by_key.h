// 按键累计: sums of rows as a statement steps over them, kept by the content of their first columns.
#pragma once

#include "engine/row_set.h"
#include "engine/sqlite/native.h"

#include <memory>
#include <string>
#include <vector>

namespace jxc::sqlite {

class SumsByKey {
 public:
  /// Of a statement whose first `keys` columns are what its rows are summed by, the others numbers.
  SumsByKey(sqlite3_stmt* statement, int keys);
  /// The row that the statement stands on.
  void addRow();
  /// Keys and sums, to six decimals, in the order in which keys came first.
  RowSet rows(std::shared_ptr<const ColumnNames> names) const;

 private:
  struct Slot {
    std::size_t hash = 0;
    int group = -1;  // free
  };
  void readKey();
  Slot& slotOf(std::size_t hash);
  void addGroup(Slot& slot, std::size_t hash);

  sqlite3_stmt* statement_;
  int keys_, sumCount_;
  std::string key_;               // of the present row: kind, length and content of each column
  std::vector<Slot> slots_;       // open addressing, a power of two
  std::vector<std::string> all_;  // the key of each group
  RowSet cells_;                  // the same as it was read
  std::vector<long double> sums_;
};

}  // namespace jxc::sqlite
