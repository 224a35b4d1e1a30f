// 被拒输入: which inputs hold what a refusal is about.
#pragma once

#include "core/refusal.h"

#include <span>
#include <string_view>

namespace jxc::ui {

/// Names of the inputs that may hold this, on whatever screen; the first that a screen has and the operator may change
/// is meant. They have one name on all screens: `comCk` is a warehouse everywhere.
std::span<const std::string_view> inputsOf(Subject subject);

}  // namespace jxc::ui
