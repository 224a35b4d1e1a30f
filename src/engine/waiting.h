// 等待: who is told while a statement waits for the server or for another station.
#pragma once

#include <functional>

namespace jxc {

/// Called from inside a call to the database: after the first second, then every second, and at the end with 0 when it
/// was called before. It must not call the database. One for the whole program, called in the thread that waits.
using WaitListener = std::function<void(int seconds)>;
void setWaitListener(WaitListener listener);
const WaitListener& waitListener();

/// For engines: a call that may have to wait. The listener hears of its end however it ends.
class Wait {
 public:
  Wait();
  ~Wait();
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  /// So many whole seconds have passed since it began. Told when it is another one than before.
  void passed(int seconds);
  void anotherSecond() { passed(told_ + 1); }
  /// The innermost one of this thread, or null.
  static Wait* current();

 private:
  Wait* outer_;
  int told_ = 0;
};

}  // namespace jxc
