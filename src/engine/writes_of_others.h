// 他站写入: whether another station has written to the database that this one looks at.
#pragma once

#include "engine/database.h"

#include <cstdint>
#include <optional>

namespace jxc {

/// A number that changes when another connection has committed something since this connection last asked; its own
/// writes do not count. Costs no more than a look at the file. Nothing where the engine cannot tell.
std::optional<std::int64_t> writesOfOthers(Database& database);

}  // namespace jxc
