// 后台读取: questions to the account set that are answered behind the window, over a connection that is kept.
#pragma once

#include "engine/database.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace jxc {

/// Answers questions in a thread of its own, which opens its connection at the first of them and keeps it: on a server
/// a question then costs its own round trip and no new connection. While a long question is on its way, others are not
/// kept waiting: one or two more threads help out, with connections that close when nothing waits any more.
class BackgroundReading {
 public:
  /// Makes a reader; called in the threads.
  using Open = std::function<std::unique_ptr<Database>()>;
  /// The reader, connected by the first call. Throws once the question is dropped, so that a computation of many
  /// queries that asks for it before each ends soon.
  using Reader = std::function<Database&()>;
  /// Gives an answer. Said once the thread is free again: whoever hears it and asks the next question at once finds it.
  using LastWord = std::function<void()>;
  /// A question. It runs in one of the threads, gives what it has before the end itself, and returns its last word.
  using Work = std::function<LastWord(const Reader& reader)>;
  /// Told in the thread what the work threw; null when it was dropped.
  using Failed = std::function<void(std::exception_ptr)>;

  struct Question {
    Work work;
    Failed failed;
    bool dropped = false;
  };

  explicit BackgroundReading(Open open);
  /// Drops all questions and waits for the threads.
  ~BackgroundReading();

  std::shared_ptr<Question> ask(Work work, Failed failed);
  /// Nobody waits for it any more: one that has not begun is forgotten, one that runs is interrupted. Returns at once.
  void drop(const std::shared_ptr<Question>& question);

 private:
  struct Helper;
  void serve(Helper& helper);
  LastWord answer(Helper& helper, const std::shared_ptr<Question>& question, bool& isLost);
  void interrupt(Helper& helper);
  void startAnother();

  Open open_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Question>> waiting_;
  std::vector<std::unique_ptr<Helper>> helpers_;  // the first is the one that is kept
  bool ends_ = false;
};

}  // namespace jxc
