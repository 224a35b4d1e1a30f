// 批量定价与提成: prices computed from one another over many goods, and the commissions of the till.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace jxc {

/// One of the prices that can be set, or be the base of another.
struct PriceColumn {
  const char16_t* name;
  std::string_view column;
};
const std::vector<PriceColumn>& bulkPriceTargets();  // wholesale levels, retail, preset sale price
const std::vector<PriceColumn>& bulkPriceSources();  // preset sale price first, down to the average cost

/// Sets a price of many goods to another price times a factor, unrounded: in one class, without those below it, or in
/// all (no class). Disabled goods have prices too. Returns how many goods it was.
std::int64_t setBulkPrice(const PriceColumn& target, const PriceColumn& source, double factor,
                          const std::optional<QString>& classNumber);

/// Commission of one who works on a sale at the till: percent of the sale, or yuan a piece.
struct PosCommission {
  double value = 0;
  bool yuan = false;
};
struct PosCommissions {
  PosCommission optometrist, workshop, salesman;
};
PosCommissions readPosCommissions(const QString& goods);
/// Refuses a commission below zero.
bool savePosCommissions(const QString& goods, const PosCommissions& commissions, Prompt& prompt);

}  // namespace jxc
