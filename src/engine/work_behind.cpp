#include "engine/work_behind.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace jxc {

WorkBehind::WorkBehind(std::function<void(const Report&)> work)
    : thread_([this, work = std::move(work)] {
        try {
          work([this](int percent) {
            percent_ = percent;
            return !isStopped_;
          });
        } catch (...) {
          failure_ = std::current_exception();
        }
        const std::lock_guard lock(mutex_);
        isDone_ = true;
        ended_.notify_all();
      }) {}

WorkBehind::~WorkBehind() {
  isStopped_ = true;
  if (thread_.joinable()) thread_.join();
}

bool WorkBehind::waitFor(int milliseconds) {
  std::unique_lock lock(mutex_);
  return ended_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return isDone_.load(); });
}

void WorkBehind::result() {
  if (thread_.joinable()) thread_.join();
  if (failure_) std::rethrow_exception(failure_);
}

void WorkBehind::result(const Report& report) {
  do
    if (report && !report(std::min(percent(), 99))) stop();
  while (!waitFor(pause));
  result();
}

}  // namespace jxc
