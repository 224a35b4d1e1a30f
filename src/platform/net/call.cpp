#include "platform/net/call.h"

#include "platform/net/line.h"

#include <condition_variable>
#include <csignal>
#include <pthread.h>
#include <thread>
#include <utility>

namespace jxc::net {
namespace call_detail {

constexpr std::chrono::milliseconds kBetweenReports{30};

/// A line that broke tells so by a failing write, and not by a signal that would end the program.
void leaveBrokenPipes() {
  sigset_t pipes;
  sigemptyset(&pipes);
  sigaddset(&pipes, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipes, nullptr);
}

}  // namespace call_detail

struct Call::Shared {
  explicit Shared(Terms terms) : line(std::move(terms)) {}
  Line line;
  std::mutex mutex;
  std::condition_variable changed;
  bool over = false;  // guarded, as the result until then
  Result result;
  std::thread thread;
};

Call::Call(Terms terms, Work work) : shared_(std::make_unique<Shared>(std::move(terms))) {
  shared_->thread = std::thread([shared = shared_.get(), work = std::move(work)] {
    call_detail::leaveBrokenPipes();
    Result result = work(shared->line);
    {
      const std::lock_guard lock(shared->mutex);
      shared->result = std::move(result);
      shared->over = true;
    }
    shared->changed.notify_all();
    shared->line.close();
  });
}

Call::~Call() {
  stop();
  shared_->thread.join();
}

void Call::stop() {
  shared_->line.stop();
}

bool Call::isOver() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->over;
}

int Call::percent() const {
  return shared_->line.percent();
}

Result Call::wait(const Progress& progress) {
  std::unique_lock lock(shared_->mutex);
  const auto isOver = [this] { return shared_->over; };
  bool goesOn = static_cast<bool>(progress);
  while (goesOn && !shared_->changed.wait_for(lock, call_detail::kBetweenReports, isOver)) {
    lock.unlock();  // whoever hears it may take his time
    goesOn = progress(percent());
    if (!goesOn) stop();
    lock.lock();
  }
  shared_->changed.wait(lock, isOver);
  return shared_->result;
}

}  // namespace jxc::net
