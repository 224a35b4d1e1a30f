// 商品销售: the rules of the sales document: price, discount, gifts, prepayment, save and audit, for any front end.
#pragma once

#include "stock/trading_rules.h"

#include <QString>

namespace jxc::sale {

/// As its screens ask for it.
const TradingRules& rules();

/// The head of a sale under this number, waiting, with what is booked of its money; its lines stand. Inside the
/// caller's transaction.
void writeHead(const TradingDraft& draft, const QString& number, const Balanced& money);

/// The mark of a gift line, shown behind the goods' name.
inline constexpr char16_t giftMark[] = u"(赠品)";

/// Goods that may be given away (`g_iszp`), by key, with the stock of the warehouse.
Sql giftsToPick(const QString& typed, const QString& warehouse);
/// A gift takes stock and cost and adds nothing to what is due. Nothing is written when the quantity is zero, or stock
/// is short and the operator says no.
LineResult addGift(Lines where, const LinePlace& place, const QString& goods, double quantity, Prompt& prompt);
bool changeGift(Lines where, std::int64_t id, const LinePlace& place, double quantity, Prompt& prompt);

/// What this goods was sold for: the last audited sales, of this customer only by parameter (`cs_activate`).
Sql saleHistory(const QString& goods, const QString& customer, int most = 20);

/// Lowest discount rate (`cs_zdzk`) that a line may have; 0: any.
double lowestDiscount();

}  // namespace jxc::sale
