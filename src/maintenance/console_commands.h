// 控制台命令: what jxcctl offers beyond account sets and statements.
#pragma once

#include "core/console.h"

#include <span>

namespace jxc {

std::span<const ConsoleCommand> maintenanceCommands();

}  // namespace jxc
