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

/// Passive: takes what no reader needs any more and makes nobody wait.
void carry(sqlite3* connection, const char* schema) {
  sqlite3_wal_checkpoint_v2(connection, schema, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

}  // namespace checkpointer_detail

Checkpointer::Checkpointer(sqlite3* connection, QString file) : watched_(connection), file_(std::move(file)) {
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
int Checkpointer::afterCommit(void* self, sqlite3* connection, const char* schema, int pages) {
  using namespace checkpointer_detail;
  if (pages >= longestLog)
    carry(connection, schema);
  else if (pages >= longLog)
    static_cast<Checkpointer*>(self)->wake();
  return SQLITE_OK;
}

void Checkpointer::wake() {
  try {
    if (!thread_.joinable()) start();
    const std::lock_guard lock(mutex_);
    wanted_ = true;
  } catch (const std::exception&) {
    return;  // no memory or no thread now: the next commit tries again, and a longer log is carried without
  }
  changed_.notify_one();
}

/// The connection is opened here and not in the thread, after a look whether the name still means the watched file: it
/// may have been replaced since this commit began. Without a thread the one that commits carries a longer log itself.
void Checkpointer::start() {
  if (!own_) {
    if (fileHasMoved(watched_)) return;
    own_ = openConnection({.file = file_, .essential = false}, {.essential = false});
    // The watched connection closes later: what is left in the log then is for it alone.
    sqlite3_db_config(own_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  }
  thread_ = std::thread([this] { run(); });
}

void Checkpointer::run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return wanted_ || ending_; });
    if (ending_) return;
    wanted_ = false;
    lock.unlock();
    checkpointer_detail::carry(own_.get(), "main");
    lock.lock();
  }
}

}  // namespace jxc::sqlite
