// 商品查找: finding goods among rows in memory, exactly as the query would.
#pragma once

#include "engine/row_set.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace jxc {

/// Rows of the catalogue list with their six searched columns (number, name, mnemonic, barcode, model, colour)
/// as one upper-case text, and their powers as numbers, so that a filter over 100,000 goods is over before the next
/// key. Costs some 95 bytes a row.
class GoodsIndex {
 public:
  GoodsIndex() = default;
  explicit GoodsIndex(RowSet rows);

  /// Rows of this class and below (all classes when empty) that hold every word, in the order of the rows. The same
  /// rows as the `like` tests of the query give: letters without regard to case, "_" stands for any character.
  std::vector<int> find(const QString& typed, const QString& classNumber = {}) const;

 private:
  void keepRowsWith(const std::string& word, std::vector<char>& kept) const;
  void keepRowsOf(const std::vector<float>& powers, double power, std::vector<char>& kept) const;
  /// The columns of a row, each without the zero byte behind it.
  std::vector<std::string_view> columnsOf(std::size_t row) const;
  RowSet rows_;
  std::string text_;                        // the searched columns of all rows; each column ends with a zero byte
  std::vector<std::size_t> end_;            // of each row in the text
  std::vector<std::string> classes_;        // numbers of the classes that occur
  std::vector<int> classOf_;                // of each row, a place in them
  std::vector<float> spheres_, cylinders_;  // of each row, in dioptres; none: not a number; no number: infinite
};

}  // namespace jxc
