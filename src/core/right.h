// 权限位: a right of a role as plain data without any Qt header, for descriptions that carry one.
#pragma once

#include <string_view>

namespace jxc {

/// Position (from 1) in a group of the role: {"qtcz", 7}. Without a group everybody has it. `andCost`: that of seeing
/// cost is asked as well.
struct Right {
  std::string_view group = {};
  int position = 0;
  bool andCost = false;
  constexpr bool isGuarded() const { return !group.empty(); }
  friend constexpr bool operator==(const Right&, const Right&) = default;
};

/// What goods cost: purchase prices, cost, profit, margin.
inline constexpr Right kSeesCost{"qtcz", 7};
/// What goods are sold for: sale prices and amounts.
inline constexpr Right kSeesPrice{"qtcz", 9};
/// What is earned: with the cost beside it, it is the price.
inline constexpr Right kSeesProfit{"qtcz", 9, true};
/// The value of the stock.
inline constexpr Right kSeesStockCost{"kcgl", 16, true};

}  // namespace jxc
