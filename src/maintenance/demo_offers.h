// 演示账套的报价和赠品: prices that were promised and offered, gift items in their store, goods that are given for
// points; what the shop owns and has signed.
#pragma once

#include "maintenance/demo_trade.h"

namespace jxc::demo {

/// Makes them on the shop's last evening, so that no document of the year goes by them. The administrator is at work.
void makeOffers(const Staff& staff, Prompt& prompt);
/// What the shop owns, bought on its first and its last day; entered the same evening.
void makeBelongings(const Staff& staff, QDate first, QDate last, Prompt& prompt);
/// What it has signed with suppliers and institutions, before the first day; most of their documents have it. The
/// administrator is at work.
void signContracts(Staff& staff, QDate first, Prompt& prompt);
/// Gives some of these contracts a file, below the program directory.
void attachContractFiles(Prompt& prompt);

}  // namespace jxc::demo
