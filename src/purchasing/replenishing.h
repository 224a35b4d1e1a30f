// 补货: goods that run short become lines of a receipt that is not saved yet.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <span>

namespace jxc::replenishing {

struct Wanted {
  QString goods;
  double pieces = 0;
};

/// Puts goods onto the receipt that this operator has begun, or begins one, at the price that receipts propose. Goods
/// that stand on it already stay as they are. Tells what was left off. How many lines were added.
int draftReceipt(std::span<const Wanted> goods, Prompt& prompt);

}  // namespace jxc::replenishing
