// 列宽: how many characters a column takes, for the inputs that fill it.
#pragma once

#include <string_view>

namespace jxc::ui {

/// Characters that "jxc_ghsxx.ghs_name" takes; 0 for a column without a limit; -1 when no table has such a column.
int columnWidth(std::string_view tableAndColumn);

}  // namespace jxc::ui
