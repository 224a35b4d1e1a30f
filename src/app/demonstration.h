// 演示账套: a small optical shop in memory, for pictures of the screens.
#pragma once

namespace jxc {

/// Installs a fresh account set in memory with some goods, partners and documents, and logs the administrator in.
void openDemonstration();

}  // namespace jxc
