// 采购退货: the rules of the purchase return: stock at every step, the supplier's goods, a receipt returned as a whole.
#pragma once

#include "stock/trading_rules.h"

#include <QString>

namespace jxc::purchase_return {

/// As the screens of a trading document ask for it. `returnWhole` takes the number of an audited receipt.
const TradingRules& rules();

/// Audited receipts that may be returned as a whole, newest first, by key (number, supplier, note), with `ghs_name` and
/// `ck_name`.
Sql returnableReceipts(const QString& typed);

}  // namespace jxc::purchase_return
