#include "maintenance/console_commands.h"

namespace jxc {

std::span<const ConsoleCommand> maintenanceCommands() {
  return {};
}

}  // namespace jxc
