// 去列: the same select without columns that nobody may see.
#pragma once

#include "core/sql.h"

#include <span>
#include <string_view>

namespace jxc {

/// The same select, which does not yield these columns where it has them: the engine is not asked for them.
Sql without(std::span<const std::string_view> columns, const Sql& select);

}  // namespace jxc
