// 结算范围: which tables a closing empties up to its day, in which order, and what it counts of them.
#pragma once

#include "core/sql.h"

#include <string>
#include <string_view>
#include <vector>

namespace jxc::closing {

/// Documents that go by the date of their head, lines first. Without lines a head is all there is.
struct DocumentTable {
  std::string_view lines, head, number, date;
  std::string_view status = {};  // 1: audited; empty: there is no waiting state
};
/// In the order in which they are emptied.
std::vector<DocumentTable> documentTables();

/// An item of the summary. Figures are expressions over heads `b` and lines `a`; an empty one is 0.
struct Item {
  std::u16string_view name;
  std::string_view head, number, date, status;  // empty status: every row counts
  std::string_view money, quantity;             // of heads
  std::string_view lines, lineMoney, lineQuantity;
  std::string_view only = {};  // further condition on heads
};
const std::vector<Item>& items();

struct ItemFigures {
  const Item* item;
  double documents = 0, quantity = 0, money = 0;
};
/// Sums of each item up to `until`, which holds the time of day, without the numbers that are staged to stay.
std::vector<ItemFigures> sumItems(const QString& until);

/// " not in (…)": the documents that `stageNumbers` has put aside for this operator.
Sql notStaged(std::string_view column);

}  // namespace jxc::closing
