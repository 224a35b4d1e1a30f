// 类别移动: another place in the tree for a class, with everything below it.
#pragma once

#include "core/prompt.h"

#include <cstdint>

namespace jxc {

/// Where a class goes, seen from the target: below it, or beside it in the line after or before.
enum class ClassPlacement { Below, NextLine, PreviousLine };

/// Moves a class to a place at the target. Its number and those below follow the new parent, and their goods follow
/// the numbers; its identity, which leads the numbers of goods, stays. Refuses a move to itself, below itself, beside
/// the root, too deep, and a move of the built-in lens class out of its place.
bool moveGoodsClass(std::int64_t id, std::int64_t target, ClassPlacement placement, Prompt& prompt);

}  // namespace jxc
