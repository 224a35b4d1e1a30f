// 拼接描述: one table of columns, inputs or commands put together from several while the program is compiled.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace jxc::ui {

/// All rows of the tables, in their order.
template <class Row, std::size_t... N>
constexpr std::array<Row, (N + ...)> joinedTables(const std::array<Row, N>&... parts) {
  std::array<Row, (N + ...)> all{};
  auto end = all.begin();
  ((end = std::copy(parts.begin(), parts.end(), end)), ...);
  return all;
}

}  // namespace jxc::ui
