#include "engine/waiting.h"

#include <utility>

namespace jxc {
namespace waiting_detail {

WaitListener& listener() {
  static WaitListener known;
  return known;
}

WaitStopper& stopper() {
  static WaitStopper known;
  return known;
}

std::chrono::seconds& ofThisThread() {
  constexpr std::chrono::seconds usual{60};
  thread_local std::chrono::seconds patience = usual;
  return patience;
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

void setWaitStopper(WaitStopper stopper) {
  waiting_detail::stopper() = std::move(stopper);
}

std::chrono::seconds patience() {
  return waiting_detail::ofThisThread();
}

LongWork::LongWork(std::chrono::seconds patience) : before_(std::exchange(waiting_detail::ofThisThread(), patience)) {}

LongWork::~LongWork() {
  waiting_detail::ofThisThread() = before_;
}

bool Wait::isStopWanted(int seconds) {
  return seconds >= secondsBeforeStop && waiting_detail::stopper() && waiting_detail::stopper()();
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
