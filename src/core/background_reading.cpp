#include "core/background_reading.h"

#include "engine/server.h"
#include "engine/waiting.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace jxc {
namespace background_reading_detail {

constexpr std::size_t most = 3;
// An interruption that comes just before the query begins finds nothing to stop, so it is said again.
constexpr auto saidAgain = std::chrono::milliseconds(100);

struct Dropped {};

/// Whether the connection is worth nothing any more. One to a server that broke is made again by the engine itself.
bool isLost(const DbError& error) {
  return error.kind() == DbError::Kind::File || dynamic_cast<const ConnectionLost*>(&error) != nullptr;
}

}  // namespace background_reading_detail

/// A thread with its connection. All but the thread's own calls of the connection is guarded by the mutex.
struct BackgroundReading::Helper {
  bool isKept = false, hasEnded = false, isInterrupting = false;
  std::shared_ptr<Question> question;  // the one that runs
  std::unique_ptr<Database> connection;
  std::thread thread, interrupter;

  ~Helper() {
    if (thread.joinable()) thread.join();
    if (interrupter.joinable()) interrupter.join();
  }
};

BackgroundReading::BackgroundReading(Open open) : open_(std::move(open)) {}

BackgroundReading::~BackgroundReading() {
  std::deque<std::shared_ptr<Question>> forgotten;
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
    forgotten.swap(waiting_);
    for (const auto& helper : helpers_)
      if (helper->question) interrupt(*helper);
  }
  changed_.notify_all();
  for (const auto& question : forgotten)
    question->failed(nullptr);
  helpers_.clear();
}

std::shared_ptr<BackgroundReading::Question> BackgroundReading::ask(Work work, Failed failed) {
  auto question = std::make_shared<Question>(Question{std::move(work), std::move(failed)});
  {
    const std::lock_guard lock(mutex_);
    std::erase_if(helpers_, [](const auto& helper) { return helper->hasEnded; });
    waiting_.push_back(question);
    // One whose question was dropped is free in a moment.
    const auto free =
        std::ranges::count_if(helpers_, [](const auto& each) { return !each->question || each->question->dropped; });
    if (static_cast<std::size_t>(free) < waiting_.size() && helpers_.size() < background_reading_detail::most)
      startAnother();
  }
  changed_.notify_all();
  return question;
}

void BackgroundReading::startAnother() {
  helpers_.push_back(std::make_unique<Helper>());
  Helper& helper = *helpers_.back();
  helper.isKept = helpers_.size() == 1;
  helper.thread = std::thread([this, &helper] { serve(helper); });
}

void BackgroundReading::drop(const std::shared_ptr<Question>& question) {
  const std::lock_guard lock(mutex_);
  std::erase(waiting_, question);
  for (const auto& helper : helpers_)
    if (helper->question == question) interrupt(*helper);
}

/// With the mutex held. On a server an interruption is a connection of its own, which the window must not wait for.
void BackgroundReading::interrupt(Helper& helper) {
  helper.question->dropped = true;
  if (!helper.connection || helper.isInterrupting) return;
  if (helper.interrupter.joinable()) helper.interrupter.join();  // that of an earlier question has ended
  helper.isInterrupting = true;
  helper.interrupter = std::thread([this, &helper, question = helper.question] {
    std::unique_lock own(mutex_);
    while (helper.question == question) {
      own.unlock();
      helper.connection->interrupt();
      own.lock();
      changed_.wait_for(own, background_reading_detail::saidAgain, [&] { return helper.question != question; });
    }
    helper.isInterrupting = false;
    changed_.notify_all();
  });
}

void BackgroundReading::serve(Helper& helper) {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [&] { return ends_ || !waiting_.empty() || !helper.isKept; });
    if (ends_ || waiting_.empty()) break;
    const std::shared_ptr<Question> question = waiting_.front();
    waiting_.pop_front();
    helper.question = question;
    lock.unlock();
    bool isLost = false;
    const LastWord lastWord = answer(helper, question, isLost);
    lock.lock();
    helper.question.reset();
    changed_.notify_all();
    lock.unlock();
    lastWord();
    lock.lock();
    // An interruption on its way would stop the next question.
    changed_.wait(lock, [&] { return !helper.isInterrupting; });
    if (isLost) helper.connection.reset();
  }
  const std::unique_ptr<Database> connection = std::move(helper.connection);
  helper.hasEnded = true;
}

/// A lost connection is to be thrown away: the next question gets a new one.
BackgroundReading::LastWord BackgroundReading::answer(Helper& helper, const std::shared_ptr<Question>& question,
                                                      bool& isLost) {
  const LongWork longWork;  // the window stays free, and the list has its own way to stop it
  const Reader reader = [&]() -> Database& {
    {
      const std::lock_guard lock(mutex_);
      if (question->dropped) throw background_reading_detail::Dropped();
      if (helper.connection) return *helper.connection;
    }
    std::unique_ptr<Database> made = open_();
    const std::lock_guard lock(mutex_);
    helper.connection = std::move(made);
    if (question->dropped) throw background_reading_detail::Dropped();
    return *helper.connection;
  };
  std::exception_ptr failure;
  try {
    return question->work(reader);
  } catch (const background_reading_detail::Dropped&) {
  } catch (const DbError& error) {
    failure = std::current_exception();
    isLost = background_reading_detail::isLost(error);
  } catch (...) {
    failure = std::current_exception();
  }
  const std::lock_guard lock(mutex_);
  if (question->dropped) failure = nullptr;  // its query failed because it was interrupted
  return [question, failure] { question->failed(failure); };
}

}  // namespace jxc
