// 列表打印: a list on paper as it stands on the screen: its columns in their order, what it was searched with, its
// sums.
#pragma once

#include "platform/report/report.h"

namespace jxc::ui {

class Grid;

/// The report of a list on A4: upright as long as the columns fit, else across, with smaller type for many columns.
/// Cells are as shown; what does not fit its column goes on in a second line.
/// With a drawing that stands, as wide as the paper, between heading and rows.
report::Report gridReport(const Grid& grid, const report::Drawing& drawing = {});

}  // namespace jxc::ui
