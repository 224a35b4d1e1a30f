// 度数表栏: beside a list of lens names, the current one's stock by its powers.
#pragma once

#include "ui/enquiry_screen.h"

namespace jxc {

/// Follow a list with `g_qc`, or one with `g_name`. An export takes the table.
ui::RowPane* makeProductPane();
ui::RowPane* makeLensPane();

}  // namespace jxc
