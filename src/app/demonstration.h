// 演示账套: the demonstration shop in memory, for pictures of the screens.
#pragma once

namespace jxc {

/// How much there is to look at: a small shop as it opens, or twenty thousand goods, names as long as shops write them
/// and a document of each kind that was begun.
enum class Demonstration : char { Usual, Large };

/// Installs a demonstration shop (maintenance/demo_shop.h) in memory, the same at every call, with the administrator
/// logged in and the clock standing on its last day.
void openDemonstration(Demonstration size = Demonstration::Usual);

}  // namespace jxc
