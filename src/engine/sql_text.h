// 语句文本: the text of one Jet-dialect statement: a literal where it is used, or put together by the builder.
#pragma once

#include <string>
#include <string_view>

namespace jxc {

/// A statement's UTF-8 text. Literals are referred to, composed texts are owned. Typed values never become part of
/// it: they are bound to `?`. Identifiers and filters come from `compose` and `Filter` (core/statements.h).
class SqlText {
 public:
  SqlText(const char* literal) : view_(literal) {}
  SqlText(std::string_view literal) : view_(literal) {}
  SqlText(std::string owned) : owned_(std::move(owned)), view_(owned_) {}
  SqlText(const SqlText& other)
      : owned_(other.owned_), view_(other.isOwned() ? std::string_view(owned_) : other.view_) {}
  SqlText& operator=(const SqlText&) = delete;

  std::string_view view() const { return view_; }

 private:
  bool isOwned() const { return !owned_.empty(); }
  std::string owned_;
  std::string_view view_;
};

}  // namespace jxc
