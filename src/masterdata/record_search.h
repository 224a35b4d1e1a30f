// 按编号查找: goods, partners and documents that a few typed characters mean, for the search box of the main window.
#pragma once

#include "core/sql.h"
#include "masterdata/goods_search.h"

#include <QString>

#include <string_view>
#include <vector>

namespace jxc {

/// A row of the account set and the command whose screen shows it.
struct FoundRecord {
  std::string_view command;  // "btn_Menu6_Btn1"
  QString number;            // what its search box is given
  QString text;              // "商品 K0001 钛架"
};

/// The catalogue in memory, read once for as long as somebody searches: a key over 100,000 goods is over at once.
class GoodsToFind {
 public:
  /// Its rows: articles in use, those that are sold most first.
  static Sql statement();
  explicit GoodsToFind(const RowSet& rows = RowSet()) : rows_(rows), index_(rows) {}
  /// The few that are meant, as the catalogue searches (masterdata/goods_search.h).
  std::vector<Row> find(const QString& typed) const;

 private:
  RowSet rows_;
  GoodsIndex index_;
};

/// Goods, suppliers and customers by number, mnemonic or name, documents by the beginning of their number; a few of
/// each. Fewer than two characters mean nothing.
std::vector<FoundRecord> findRecords(const QString& typed, const GoodsToFind& goods);

}  // namespace jxc
