#include "engine/waiting.h"

#include <utility>

namespace jxc {
namespace waiting_detail {

WaitListener& listener() {
  static WaitListener known;
  return known;
}

Wait*& innermost() {
  thread_local Wait* wait = nullptr;
  return wait;
}

}  // namespace waiting_detail

void setWaitListener(WaitListener listener) {
  waiting_detail::listener() = std::move(listener);
}
const WaitListener& waitListener() {
  return waiting_detail::listener();
}

Wait::Wait() : outer_(std::exchange(waiting_detail::innermost(), this)) {}

Wait::~Wait() {
  waiting_detail::innermost() = outer_;
  if (told_ > 0 && waitListener()) waitListener()(0);
}

void Wait::passed(int seconds) {
  if (seconds <= told_) return;
  told_ = seconds;
  if (waitListener()) waitListener()(seconds);
}

Wait* Wait::current() {
  return waiting_detail::innermost();
}

}  // namespace jxc
