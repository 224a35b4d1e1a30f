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

/// One level up in the tree, beside its parent, or one down, below the line after it, else the line before. Only the
/// tree changes: the number stays, and the goods with it, until 类别移动 gives new ones. False when there is no such
/// place; the built-in lens class is refused with a notice.
bool raiseGoodsClass(std::int64_t id, Prompt& prompt);
bool lowerGoodsClass(std::int64_t id, Prompt& prompt);
/// The same to any other class: what dragging does.
bool hangGoodsClass(std::int64_t id, std::int64_t parent, Prompt& prompt);

}  // namespace jxc
