// 核对命令: `jxcctl prove`: the proof of prove.h from a command line.
#pragma once

#include "core/console.h"

namespace jxc {

/// Status 0: the books agree; 1: they do not, or could not be read.
extern const ConsoleCommand proveCommand;

}  // namespace jxc
