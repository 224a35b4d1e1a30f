// 等待提示: tells the operator that a command waits for another workstation.
#pragma once

namespace jxc::ui {

/// From now on a window whose command waits for more than a second says so, by a notice that counts the seconds. It is
/// painted from inside the waiting call and runs no event loop: keys and clicks stay where they are until the command
/// has come to its end, so none can begin a second one in the middle of the first.
void showWaits();

}  // namespace jxc::ui
