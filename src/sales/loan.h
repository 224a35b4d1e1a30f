// 客户借货: the rules of a loan: goods leave a warehouse and stay the shop's own; each line has a rent a piece and day,
// and a deposit with the account that took it.
#pragma once

#include "stock/document_rules.h"

#include <QString>

namespace jxc::lending {

/// As its screens ask for them.
const RulesOver<DraftOfPartner>& rules();

/// Yuan to the digits of amounts, as every rent, refund and price of a loan is written.
double rounded(double yuan);
/// Why no line can have this rent (yuan a piece and day) or this deposit (yuan of the line).
Refusal impossibleRent(double rent);
Refusal impossibleDeposit(double deposit);
/// The account was renamed or deleted since it was chosen; `goods` names the line that it stands on.
Refusal accountGone(const QString& account, const QString& goods);

}  // namespace jxc::lending
