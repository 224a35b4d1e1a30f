// 顾客退货: the rules of the customer return: the sale run the other way, and a sale returned as a whole.
#pragma once

#include "stock/trading_rules.h"

#include <QString>

namespace jxc::sale_return {

/// As the screens of a trading document ask for it. `returnWhole` takes the number of an audited sale.
const TradingRules& rules();

/// Audited sales, newest first, by key (number, customer, note), with `kh_name` and `ck_name`.
Sql returnableSales(const QString& typed);

}  // namespace jxc::sale_return
