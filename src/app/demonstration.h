// 演示账套: the demonstration shop in memory, for pictures of the screens.
#pragma once

namespace jxc {

/// Installs a small demonstration shop (maintenance/demo_shop.h) in memory, the same at every call, with the
/// administrator logged in and the clock standing on its last day.
void openDemonstration();

}  // namespace jxc
