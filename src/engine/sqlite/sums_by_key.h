// 按键累计: sums of the rows of a select, taken by an aggregate function while SQLite walks over them, and kept by the
// content of their first columns.
#pragma once

#include "engine/row_set.h"
#include "engine/sqlite/row_taker.h"

#include <memory>
#include <string>
#include <vector>

namespace jxc::sqlite {

class SumsByKey final : public RowTaker {
 public:
  /// Of rows with these columns: the first `keys` are what they are summed by, the others numbers.
  SumsByKey(std::shared_ptr<const ColumnNames> columns, int keys);
  /// Keys, and for each number the sum and the sum without signs ("abs_…"), to six decimals, in the order in which keys
  /// came first.
  RowSet rows() const;

 private:
  struct Slot {
    std::size_t hash = 0;
    int group = -1;  // free
  };
  struct Sum {
    long double plain = 0, withoutSign = 0;
  };
  void add(sqlite3_value** cells) override;
  void readKey(sqlite3_value** cells);
  Slot& slotOf(std::size_t hash);
  void addGroup(Slot& slot, std::size_t hash, sqlite3_value** cells);

  int keys_, sumCount_;
  std::string key_;               // of the present row: kind, length and content of each column
  std::vector<Slot> slots_;       // open addressing, a power of two
  std::vector<std::string> all_;  // the key of each group
  RowSet cells_;                  // the same as it was read
  std::vector<Sum> sums_;
};

}  // namespace jxc::sqlite
