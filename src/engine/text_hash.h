// 按文本查找: a hash under which a map keyed by strings is asked with any text, without making a string of it.
#pragma once

#include <functional>
#include <string_view>

namespace jxc {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

}  // namespace jxc
