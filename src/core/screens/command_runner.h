// 命令执行: how a command of the program is run: rights first, then its screen.
#pragma once

#include "core/prompt.h"
#include "ui/commands.h"

#include <functional>
#include <string_view>

namespace jxc {

/// Whether the operator's rights allow the command, read from the database at each call.
bool isAllowed(const ui::CommandDefinition& command);
/// The same, telling him when they do not.
bool mayRun(const ui::CommandDefinition& command, Prompt& prompt);

/// What he is told then.
QString refusalOf(const ui::CommandDefinition& command);

/// Whether the parameters of the system show the command at all.
bool isShown(const ui::CommandDefinition& command);

/// Runs a command by name ("btn_Menu1_Btn1", or one that repeats it): refuses without the right, opens its screen and
/// returns when that is left. A screen that is not there yet opens a page that says so.
/// `searched` stands in the search box of that screen.
void runCommand(std::string_view name, Prompt& prompt, const QString& searched = {});

/// What the window itself does for commands without a screen.
void setCommandAction(std::string_view name, std::function<void()> action);

}  // namespace jxc
