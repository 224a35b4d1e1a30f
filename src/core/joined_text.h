// 拼接文字: names put together while the program is compiled, as a table's columns from their prefix.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace jxc {

/// A literal as an argument of a template.
template <std::size_t Size>
struct FixedText {
  char letters[Size];
  consteval FixedText(const char (&text)[Size]) { std::copy_n(text, Size, letters); }  // NOLINT(*-explicit-*)
};

template <FixedText... Parts>
struct JoinedText {
  static constexpr auto letters = [] {
    std::array<char, (sizeof Parts.letters + ...) - sizeof...(Parts) + 1> all{};
    auto* end = all.data();
    ((end = std::copy_n(Parts.letters, sizeof Parts.letters - 1, end)), ...);
    return all;
  }();
};

/// joined<"jh_", "sl"> is "jh_sl".
template <FixedText... Parts>
inline constexpr std::string_view joined{JoinedText<Parts...>::letters.data(),
                                         JoinedText<Parts...>::letters.size() - 1};

}  // namespace jxc
