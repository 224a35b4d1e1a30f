#include "engine/sqlite/checkpointer.h"

#include "engine/sqlite/sqlite_database.h"

#include <exception>
#include <utility>

namespace jxc::sqlite {
namespace checkpointer_detail {

// Both as measured: see docs/decisions/sqlite-settings.md.
constexpr int longLog = 4000;  // pages
/// The thread does not keep up, or could not begin: the one that commits carries the log itself.
constexpr int longestLog = 4 * longLog;

/// Passive: takes what no reader needs any more and makes nobody wait. Never into a file that was put in the place of
/// the one that was opened.
void carryInto(const FileWatch& watch, sqlite3* connection) {
  if (watch.look(connection) == FileWatch::State::Mine)
    sqlite3_wal_checkpoint_v2(connection, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

}  // namespace checkpointer_detail

Checkpointer::Checkpointer(sqlite3* connection, QString file, const FileWatch& watch)
    : watched_(connection), file_(std::move(file)), watch_(watch) {
  sqlite3_wal_hook(watched_, afterCommit, this);
}

Checkpointer::~Checkpointer() {
  sqlite3_wal_hook(watched_, nullptr, nullptr);
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

/// The commit has happened, so no failure here may be told as its own.
int Checkpointer::afterCommit(void* self, sqlite3* connection, const char*, int pages) {
  using namespace checkpointer_detail;
  auto* const checkpointer = static_cast<Checkpointer*>(self);
  if (pages >= longestLog) carryInto(checkpointer->watch_, connection);
  checkpointer->wake(pages >= longLog);
  return SQLITE_OK;
}

void Checkpointer::wake(bool isLong) {
  try {
    const std::lock_guard lock(mutex_);
    if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
    committed_ = true;
    lastCommit_ = std::chrono::steady_clock::now();
    wanted_ = wanted_ || isLong;
    if (!isLong && isTiming_) return;  // it looks at the time itself
  } catch (const std::exception&) {
    return;  // no memory or no thread now: the next commit tries again, and a longer log is carried without
  }
  changed_.notify_one();
}

/// The connection is opened with the first log to be carried, so that a start and the console pay nothing, and after a
/// look whether the names still mean the watched file: it may have been replaced. Without a connection the one that
/// commits carries a longer log itself.
void Checkpointer::carry() {
  try {
    if (!own_) {
      if (watch_.look(nullptr) != FileWatch::State::Mine) return;
      own_ = openConnection({.file = file_, .essential = false}, {.essential = false});
      // The watched connection closes later: what is left in the log then is for it alone.
      sqlite3_db_config(own_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    checkpointer_detail::carryInto(watch_, own_.get());
  } catch (const std::exception&) {
    return;
  }
}

void Checkpointer::run() {
  std::unique_lock lock(mutex_);
  while (!ending_) {
    if (!committed_ && !wanted_) {
      isTiming_ = false;
      changed_.wait(lock, [this] { return committed_ || wanted_ || ending_; });
    }
    isTiming_ = true;
    while (!wanted_ && !ending_ && std::exchange(committed_, false))
      changed_.wait_until(lock, lastCommit_ + quiet, [this] { return wanted_ || ending_; });
    if (ending_) return;
    wanted_ = committed_ = false;
    lock.unlock();
    carry();
    lock.lock();
  }
}

}  // namespace jxc::sqlite
