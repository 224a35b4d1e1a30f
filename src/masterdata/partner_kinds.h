// 客户级别和供货商类别: names of price levels and of kinds of suppliers.
#pragma once

#include "core/named_list.h"

namespace jxc {

/// The levels stand for price columns by their numbers: only their names change. The new name follows to the customers.
extern const NamedList customerLevelList;
/// Kinds of suppliers are names only; a new name follows to the suppliers.
extern const NamedList supplierKindList;

}  // namespace jxc
