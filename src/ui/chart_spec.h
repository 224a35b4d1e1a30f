// 图表描述: what a chart of a list shows, as plain data without any Qt header.
#pragma once

#include <cstdint>
#include <string_view>

namespace jxc::ui {

enum class ChartKind : std::uint8_t { Bars, Lines, Pie };

/// The chart of a list. The measures to choose from are the number columns that the list shows.
struct ChartSpec {
  std::string_view label;         // the column whose text stands below a value
  std::string_view behind = {};   // and one whose text follows it, where the first alone may stand there twice
  std::string_view measure = {};  // the one that is shown first; without it the first that the list sums
  ChartKind kind = ChartKind::Bars;
  bool first = false;   // comes up in place of its list, until the list is asked for
  bool byTime = false;  // labels are days or months: the earliest stands at the left, however the list is sorted
};

}  // namespace jxc::ui
