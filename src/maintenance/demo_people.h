// 演示账套的人: company, warehouses, operators with their rights, employees, partners and accounts of the shop.
#pragma once

#include "maintenance/demo_trade.h"

namespace jxc::demo {

/// Makes all of them in a fresh account set. The administrator is logged in.
Staff makeStaff(Random& random, Prompt& prompt);

}  // namespace jxc::demo
