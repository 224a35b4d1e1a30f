// 增加报价: picks goods with a price each for a partner, and the price of one quotation that stands.
#pragma once

#include "accounts/partner_ledger.h"

namespace jxc {

class Row;

/// Quotes for a partner of this side: the one that is proposed, or another one. Whether something was saved.
template <PartnerType Side>
bool addQuotations(const QString& partner, const QString& name);
/// Changes price and note of a row of the list.
template <PartnerType Side>
bool changeQuotation(const Row& row);

}  // namespace jxc
