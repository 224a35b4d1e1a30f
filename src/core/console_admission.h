// 控制台登录: who may work on an account set without a window.
#pragma once

#include "core/console.h"

namespace jxc {

/// Where a set has passwords the console asks for an operator of the administrator's role, as the window would: his
/// name is the call's (`--operator`), otherwise that of the built-in one; his password comes from the descriptor of the
/// call (`--password-fd`) or from the terminal, never from the command line. Wrong ones count as at the window. Throws
/// ConsoleRefusal when nobody is admitted.
void admitToConsole(const Console& console, std::unique_ptr<Database>& account, ConsoleAccess access);

}  // namespace jxc
