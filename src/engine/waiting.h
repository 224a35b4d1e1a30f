// 等待: who is told while a statement waits for the server or for another station.
#pragma once

#include <functional>

namespace jxc {

/// Called from inside a call to the database: after the first second, then every second, and at the end with 0 when it
/// was called before. It must not call the database. One for the whole program, called in the thread that waits.
using WaitListener = std::function<void(int seconds)>;
void setWaitListener(WaitListener listener);
const WaitListener& waitListener();

}  // namespace jxc
