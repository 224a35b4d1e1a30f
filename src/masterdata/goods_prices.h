// 批量定价与提成: prices computed from one another over many goods, and the commissions of the till.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace jxc {

/// One of the prices that can be set, or be the base of another.
struct PriceColumn {
  const char16_t* name;
  std::string_view column;
  bool isCost = false;  // for who may see what goods cost
};
const std::vector<PriceColumn>& bulkPriceTargets();  // wholesale levels, retail, preset sale price
const std::vector<PriceColumn>& bulkPriceSources();  // preset sale price first, down to the average cost

/// Another price times a factor, or the same amount for all.
struct BulkPrice {
  PriceColumn target;
  std::optional<PriceColumn> source;  // nothing: `factor` is the price itself, in yuan
  double factor = 1;
  double step = 0;  // rounded to multiples of so many yuan; 0: not rounded
};
/// The goods of one class, without those below it; those with these ids; or, when both are left out, all. Disabled
/// goods have prices too.
struct BulkGoods {
  std::optional<QString> classNumber = {};
  std::optional<std::vector<std::int64_t>> ids = {};
};
std::int64_t countGoods(const BulkGoods& goods);
/// Sets a price of many goods. Returns how many it was.
std::int64_t setBulkPrice(const BulkPrice& price, const BulkGoods& goods);

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
