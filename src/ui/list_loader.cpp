#include "ui/list_loader.h"

#include "core/data_module.h"
#include "engine/first_rows.h"

#include <QMetaObject>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace jxc::ui {
namespace list_loader_detail {

constexpr int kFirstRows = 80;  // more than a screenful of any display

}  // namespace list_loader_detail

/// One query on its way. The window and whoever answers share it.
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
  ListLoader* window = nullptr;  // null when it waits no more
  Question query;
  std::atomic<int> percent = -1;
  std::function<void(RowSet, bool)> arrived;
  std::function<void(std::exception_ptr)> failed;

  void put(std::optional<Answer> answer, bool last) {
    const std::lock_guard lock(mutex);
    if (answer) answers.push_back(std::move(*answer));
    ended = last;
    ready.notify_all();
    if (window)
      QMetaObject::invokeMethod(
          window, [at = window] { at->take(); }, Qt::QueuedConnection);
  }

  void putWhole(RowSet rows) { put(Answer{std::move(rows), true, {}}, true); }

  BackgroundReading::LastWord run(const BackgroundReading::Reader& reader) {
    const auto whole = [this](RowSet rows) {
      return [this, last = std::make_shared<RowSet>(std::move(rows))] { putWhole(std::move(*last)); };
    };
    const Sql* statement = std::get_if<Sql>(&query);
    if (const auto first = statement ? firstRows(statement->text(), list_loader_detail::kFirstRows) : std::nullopt) {
      RowSet rows = reader().select(*first, statement->values());
      if (rows.rowCount() < list_loader_detail::kFirstRows) return whole(std::move(rows));
      put(Answer{std::move(rows), false, {}}, false);
    }
    EnquiryReader asking(
        reader(),
        [&](int done) {
          percent = done;
          reader();  // throws once nobody waits any more
          return true;
        },
        [this](RowSet rows) {
          put(Answer{std::move(rows), false, {}}, false);
        });
    if (!statement) asking.holdMoment();
    return whole(answer(query, asking));
  }

  void fail(std::exception_ptr failure) {
    put(failure ? std::optional(Answer{RowSet(), true, failure}) : std::nullopt, true);
  }
};

ListLoader::ListLoader(QObject* parent) : QObject(parent) {}

ListLoader::~ListLoader() {
  cancel();
}

void ListLoader::load(Question question, std::function<void(RowSet, bool)> arrived,
                      std::function<void(std::exception_ptr)> failed) {
  cancel();
  auto job = std::make_shared<Job>();
  job->query = std::move(question);
  job->arrived = std::move(arrived);
  job->failed = std::move(failed);
  BackgroundReading* const reading = dataModule().backgroundReading();
  if (!reading) {
    try {
      EnquiryReader atOnce(accountDb());
      job->putWhole(answer(job->query, atOnce));
    } catch (...) {
      job->fail(std::current_exception());
    }
    job_ = std::move(job);
    return take();
  }
  job->window = this;
  job_ = job;
  question_ = reading->ask([job](const BackgroundReading::Reader& reader) { return job->run(reader); },
                           [job](std::exception_ptr failure) { job->fail(failure); });
}

void ListLoader::take() {
  while (const std::shared_ptr<Job> job = job_) {
    std::optional<Job::Answer> answer;
    {
      const std::lock_guard lock(job->mutex);
      if (!job->answers.empty()) {
        answer = std::move(job->answers.front());
        job->answers.pop_front();
      } else if (!job->ended) {
        return;
      }
    }
    if (!answer || answer->complete) {
      job_.reset();
      question_.reset();
    }
    if (!answer) return;  // the account set was closed over it
    if (answer->failure) return job->failed(answer->failure);
    job->arrived(std::move(answer->rows), answer->complete);
    if (job != job_) return;
  }
}

void ListLoader::cancel() {
  if (!job_) return;
  {
    const std::lock_guard lock(job_->mutex);
    job_->window = nullptr;
  }
  job_.reset();
  if (const auto question = std::exchange(question_, nullptr)) dataModule().drop(question);
}

int ListLoader::percent() const {
  return job_ ? job_->percent.load() : -1;
}

bool ListLoader::waitFor(int milliseconds) {
  if (const auto job = job_) {
    std::unique_lock lock(job->mutex);
    job->ready.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] { return job->ended; });
  }
  take();
  return !job_;
}

}  // namespace jxc::ui
