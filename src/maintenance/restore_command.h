// 恢复命令: `jxcctl restore`: a backup in the place of an account set, from a command line.
#pragma once

#include "core/console.h"

namespace jxc {

/// The way of the window: shows what the backup holds, asks, keeps the present set, and puts the backup in its place.
/// Where there is no set, or one that cannot be opened any more, the backup becomes the set.
extern const ConsoleCommand restoreCommand;

}  // namespace jxc
