// 演示账套的报价和赠品: prices that were promised and offered, gift items in their store, goods that are given for
// points; what the shop owns and has signed.
#pragma once

#include "maintenance/demo_trade.h"

namespace jxc::demo {

/// Makes them on the shop's last evening, so that no document of the year goes by them. The administrator is at work.
void makeOffers(const Staff& staff, Prompt& prompt);
/// What the shop owns, and what it has signed, on its first and its last day; entered the same evening.
void makeBelongings(const Staff& staff, QDate first, QDate last, Prompt& prompt);

}  // namespace jxc::demo
