// 后台工作: one piece of work in a thread of its own, while the window of whoever began it stays awake.
#pragma once

#include <atomic>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace jxc {

/// Begins with its constructor. What the work throws comes out of `result`.
class WorkBehind {
 public:
  /// Percent; false means that it is to stop.
  using Report = std::function<bool(int percent)>;

  explicit WorkBehind(std::function<void(const Report&)> work);
  /// Stops it when it is still on its way, and waits for that.
  ~WorkBehind();
  WorkBehind(const WorkBehind&) = delete;
  WorkBehind& operator=(const WorkBehind&) = delete;

  int percent() const { return percent_; }
  void stop() { isStopped_ = true; }
  bool isDone() const { return isDone_; }
  /// Waits for the end, at most so many milliseconds. Whether it has come.
  bool waitFor(int milliseconds);
  /// Waits for the end.
  void result();
  /// The same with a word to the one who waits, in his thread and often enough for his window: false stops the work,
  /// of which he goes on to hear until it has come to its end.
  void result(const Report& report);

  /// Milliseconds between two looks of one who waits: a window that stands still for fifty is felt.
  static constexpr int pause = 15;

 private:
  std::atomic<int> percent_ = 0;
  std::atomic<bool> isStopped_ = false, isDone_ = false;
  std::exception_ptr failure_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::thread thread_;  // last: what it uses is there before it
};

}  // namespace jxc
