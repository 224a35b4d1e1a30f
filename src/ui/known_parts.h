// 屏幕部件名: refuses descriptions with parts that nobody would read.
#pragma once

#include "ui/specs.h"

#include <initializer_list>
#include <span>
#include <string_view>

namespace jxc::ui {

/// A screen that is written once over many descriptions looks its optional parts up by name: a name that is spelt
/// otherwise would be an input whose value nobody reads, a command that does nothing. Throws std::invalid_argument for
/// an input, list or command of `spec` that is neither known nor the document's `own`, and for an own one that `spec`
/// does not have.
void refuseUnknownParts(const ScreenSpec& spec, std::initializer_list<std::span<const std::string_view>> known,
                        std::span<const std::string_view> own = {});

}  // namespace jxc::ui
