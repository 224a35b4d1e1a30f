// 添加赠品: gifts of a sale: a list of goods that may be given away, and their quantity.
#pragma once

#include "stock/trading_document.h"

namespace jxc {

/// Picks a gift and its quantity, and writes its line. Nothing was written: id 0.
LineResult addSaleGift(Lines where, const LinePlace& place);
/// Changes the quantity of a gift line.
void changeSaleGift(Lines where, std::int64_t id, const LinePlace& place);

}  // namespace jxc
