#include "maintenance/console_commands.h"

#include "maintenance/demo_command.h"
#include "maintenance/prove_command.h"
#include "maintenance/restore_command.h"

#include <vector>

namespace jxc {

std::span<const ConsoleCommand> maintenanceCommands() {
  static const std::vector<ConsoleCommand> all{proveCommand, restoreCommand, demoCommand};
  return all;
}

}  // namespace jxc
