// 查询屏幕的输入行: how the inputs of a tab are spread over lines; for the enquiry screen only.
#pragma once

#include "ui/enquiry_parts.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jxc::ui::enquiry_screen_detail {

/// Names of inputs and buttons in lines no wider than the room. What only some of the views show takes room in those
/// alone.
class Lines {
 public:
  Lines(int room, std::vector<std::string_view> views) : room_(room), views_(std::move(views)), used_(views_.size()) {}
  void add(std::string_view name, int width, std::string_view views = {}) {
    if (widest() > 0 && !hasRoom(width, views)) next();
    line_ += std::string(name) + ' ';
    for (std::size_t view = 0; view < used_.size(); ++view)
      if (isShown(view, views)) used_[view] += width;
  }
  void next() {
    if (!line_.empty()) lines_.push_back(line_ + '|');
    line_.clear();
    used_.assign(used_.size(), 0);
  }
  /// Whether so much more fits the line that has been begun.
  bool hasRoom(int width, std::string_view views = {}) const {
    for (std::size_t view = 0; view < used_.size(); ++view)
      if (isShown(view, views) && used_[view] + width > room_) return false;
    return true;
  }
  const std::vector<std::string>& all() {
    next();
    return lines_;
  }

 private:
  bool isShown(std::size_t view, std::string_view views) const { return holds(views, views_[view]); }
  int widest() const { return *std::ranges::max_element(used_); }

  std::vector<std::string> lines_;
  std::string line_;
  int room_;
  std::vector<std::string_view> views_;  // names of their lists
  std::vector<int> used_;                // in each of them
};

}  // namespace jxc::ui::enquiry_screen_detail
