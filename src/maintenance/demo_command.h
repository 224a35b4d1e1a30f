// 演示帐套命令: `jxcctl demo`: the shop of demo_shop.h as a new account file.
#pragma once

#include "core/console.h"

namespace jxc {

extern const ConsoleCommand demoCommand;

}  // namespace jxc
