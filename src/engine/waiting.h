// 等待: who is told while a statement waits for the server or for another station.
#pragma once

#include <chrono>
#include <functional>

namespace jxc {

/// Called from inside a call to the database: after the first second, then every second, and at the end with 0 when it
/// was called before. It must not call the database. One for the whole program, called in the thread that waits.
using WaitListener = std::function<void(int seconds)>;
void setWaitListener(WaitListener listener);
const WaitListener& waitListener();

/// Asked from the tenth second of a wait on, several times a second, in the thread that waits: whether the operator
/// wants to wait no longer. It must not call the database either.
using WaitStopper = std::function<bool()>;
void setWaitStopper(WaitStopper stopper);
inline constexpr int secondsBeforeStop = 10;

/// How long a statement may be without an answer in this thread before it is cancelled. A minute: nobody at a counter
/// waits longer, and a server that says nothing for so long will not say anything.
std::chrono::seconds patience();

/// Work that is long by nature, with a way to stop it of its own (a proof, a recomputation, a copy, a list that loads
/// behind the window), has a longer patience in its thread while this lives.
class LongWork {
 public:
  explicit LongWork(std::chrono::seconds patience = std::chrono::minutes(30));
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

 private:
  std::chrono::seconds before_;
};

/// For engines: a call that may have to wait. The listener hears of its end however it ends.
class Wait {
 public:
  Wait();
  ~Wait();
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  /// So many whole seconds have passed since it began. Told when it is another one than before.
  void passed(int seconds);
  /// Whether the operator wants to wait no longer; before the tenth second he is not asked.
  static bool isStopWanted(int seconds);
  /// The innermost one of this thread, or null.
  static Wait* current();

 private:
  Wait* outer_;
  int told_ = 0;
};

}  // namespace jxc
