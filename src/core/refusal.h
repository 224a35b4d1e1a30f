// 拒绝: what stands against a command, in words for the operator.
#pragma once

#include "core/prompt.h"

#include <optional>

namespace jxc {

/// Tells a refusal, if there is one. True: there was.
inline bool isRefused(const std::optional<QString>& refusal, Prompt& prompt) {
  if (refusal) prompt.notice(*refusal);
  return refusal.has_value();
}

}  // namespace jxc
