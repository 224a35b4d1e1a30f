#include "ui/list_loader.h"

#include "core/statements.h"

#include <QMetaObject>

#include <algorithm>
#include <cctype>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace jxc::ui {
namespace list_loader_detail {

constexpr int kFirstRows = 80;  // more than a screenful of any display

bool holdsWord(const std::string& lower, std::string_view word) {
  return lower.find(word) != std::string::npos;
}

// The statement for the first rows only, empty where "top" would change its meaning or gain nothing.
std::string firstRowsOf(const std::string& sql) {
  std::string lower(sql);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
  const auto start = lower.find_first_not_of(" \n\t");
  if (start == std::string::npos || lower.compare(start, 7, "select ") != 0) return {};
  const auto next = lower.find_first_not_of(" \n\t", start + 7);
  if (next == std::string::npos || lower.compare(next, 4, "top ") == 0 || lower.compare(next, 9, "distinct ") == 0) {
    return {};
  }
  if (holdsWord(lower, "union ") || holdsWord(lower, "group by") || holdsWord(lower, "sum(")) return {};
  return sql.substr(0, next) + "top " + std::to_string(kFirstRows) + " " + sql.substr(next);
}

}  // namespace list_loader_detail

/// One query on its way. The thread and the window share it; what the window no longer wants is marked dropped.
struct ListLoader::Job {
  struct Answer {
    RowSet rows;
    bool complete = false;
    std::exception_ptr failure;
  };
  std::mutex mutex;
  std::condition_variable ready;
  std::deque<Answer> answers;
  bool ended = false;
  bool dropped = false;
  std::unique_ptr<Database> reader;
  std::thread thread;
  std::function<void(RowSet, bool)> arrived;
  std::function<void(std::exception_ptr)> failed;
  std::function<void()> tell;  // wakes the window; called from the thread

  ~Job() {
    if (thread.joinable()) thread.join();
  }

  void put(Answer answer, bool last) {
    {
      const std::lock_guard lock(mutex);
      answers.push_back(std::move(answer));
      ended = last;
      ready.notify_all();
    }
    tell();
  }

  bool isDropped() {
    const std::lock_guard lock(mutex);
    return dropped;
  }

  void run(const GridQuery& query) {
    try {
      const std::string first = list_loader_detail::firstRowsOf(query.sql);
      if (!first.empty() && !isDropped()) {
        RowSet rows = reader->select(std::string(first), query.values);
        const bool all = rows.rowCount() < list_loader_detail::kFirstRows;
        put({std::move(rows), all, nullptr}, all);
        if (all) return;
      }
      if (isDropped()) return put(Answer(), true);
      put({reader->select(std::string(query.sql), query.values), true, nullptr}, true);
    } catch (...) {
      put({RowSet(), true, std::current_exception()}, true);
    }
  }
};

ListLoader::ListLoader(QObject* parent) : QObject(parent) {}

ListLoader::~ListLoader() {
  cancel();
  old_.clear();
}

void ListLoader::load(GridQuery query, std::function<void(RowSet, bool)> arrived,
                      std::function<void(std::exception_ptr)> failed) {
  cancel();
  Database& database = accountDb();
  auto reader = database.inTransaction() ? nullptr : database.openReader();
  if (!reader) {
    arrived(database.select(std::string(query.sql), query.values), true);
    return;
  }
  auto job = std::make_shared<Job>();
  job->reader = std::move(reader);
  job->arrived = std::move(arrived);
  job->failed = std::move(failed);
  job_ = job;
  job->tell = [this, weak = std::weak_ptr<Job>(job)] {
    QMetaObject::invokeMethod(
        this,
        [this, weak] {
          if (const auto alive = weak.lock()) take(alive);
        },
        Qt::QueuedConnection);
  };
  // The raw pointer is safe: a job goes only after its thread was joined.
  job->thread = std::thread([raw = job.get(), query = std::move(query)] { raw->run(query); });
}

void ListLoader::take(const std::shared_ptr<Job>& job) {
  std::erase_if(old_, [](const auto& old) {
    const std::lock_guard lock(old->mutex);
    return old->ended;
  });
  if (job != job_) return;
  while (job == job_) {
    Job::Answer answer;
    {
      const std::lock_guard lock(job->mutex);
      if (job->answers.empty()) return;
      answer = std::move(job->answers.front());
      job->answers.pop_front();
    }
    if (answer.complete) job_.reset();
    if (answer.failure) return job->failed(answer.failure);
    job->arrived(std::move(answer.rows), answer.complete);
    if (answer.complete) return;
  }
}

void ListLoader::cancel() {
  if (!job_) return;
  {
    const std::lock_guard lock(job_->mutex);
    job_->dropped = true;
  }
  job_->reader->interrupt();
  old_.push_back(std::move(job_));
  job_.reset();
}

bool ListLoader::isRunning() const {
  return job_ != nullptr;
}

bool ListLoader::waitFor(int milliseconds) {
  const auto job = job_;
  if (!job) return true;
  {
    std::unique_lock lock(job->mutex);
    job->ready.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] { return job->ended; });
  }
  take(job);
  return !job_;
}

}  // namespace jxc::ui
