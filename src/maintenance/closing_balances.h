// 结算余额: every balance of the books, as it stands before a closing and after it.
#pragma once

#include "core/reading.h"

#include <QString>

#include <optional>
#include <vector>

namespace jxc::closing {

/// Stock, cost and value of each goods in each warehouse, and what each partner, account and invoice partner stands at:
/// at the end of a day, and today.
class Balances {
 public:
  /// `until` with the time of day.
  explicit Balances(const QString& until);
  /// The first balance that is another one in `after`, in words; nothing when all agree. What has no row stands at 0.
  std::optional<QString> differs(const Balances& after) const;
  /// Today's, before and after, as `closeBooks` gives them.
  RowSet compared(const Balances& after) const;

 private:
  std::vector<RowSet> closed_, now_;  // a set for each ledger: k1, k2, mc, sl, cb, je
};

}  // namespace jxc::closing
