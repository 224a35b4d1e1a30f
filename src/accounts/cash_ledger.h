// 现金银行流水: the running balance of each cash or bank account.
#pragma once

#include "accounts/running_balance.h"

#include <QString>

namespace jxc {

/// Rewrites the running balance `xj_ljje` of an account from `date` ("yyyy-MM-dd") on, in order of date and entry.
/// Counts audited lines only; lines whose stored balance already agrees are not written.
void recomputeXjyh(const QString& account, const QString& date);
/// The same in its two steps.
AskedBalance askXjyh(const QString& account, const QString& date);

/// Present balance of an account in yuan; 0 without a line.
double xjyhBalanceNow(const QString& account);

}  // namespace jxc
