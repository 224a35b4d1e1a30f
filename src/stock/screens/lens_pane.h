// 度数表栏: beside a list of lens names, the current one's stock by its powers.
#pragma once

#include "ui/enquiry_screen.h"

namespace jxc {

/// Follows a list with `g_name`. An export takes the table.
ui::RowPane* makeLensPane();

}  // namespace jxc
