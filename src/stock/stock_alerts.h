// 库存报警: goods below their minimum, goods that do not sell, and batches.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// Goods in use whose stock `kc` is below their minimum `g_zdkc`, the least first, with what is missing `qs` (pieces).
/// The minimum is one of the goods: it is held against the stock of the whole shop, or of the chosen warehouse, or of
/// all that a bound operator may see. In a warehouse only goods that it knows are below.
Sql stockAlerts(const Criteria& criteria, const Warehouses& warehouses);

/// Goods with stock `kcsl` (above zero) and value at cost `kczje` of which nothing was sold in the last so many days
/// (`amount`; zero: all of them): the day of the last sale `zhxs` and how many days ago `ts`, null where there is none,
/// and of the last purchase `zhjh`. Longest ago first.
Sql slowSellers(const Criteria& criteria, const Warehouses& warehouses);

/// Batches of goods with number `t_ph` and expiry `t_yxq`. This program keeps none; an account set may hold some.
Sql batches(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
