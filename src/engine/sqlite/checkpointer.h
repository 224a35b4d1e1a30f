// 日志归档: carries the write-ahead log into the account file beside the work instead of inside somebody's commit.
#pragma once

#include "engine/sqlite/native.h"
#include "engine/sqlite/open_files.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace jxc::sqlite {

/// Watches the commits of one connection. With a large ledger the pages of some twenty documents lie all over the file,
/// and the disk is given each of them on its own: whoever committed last would wait for all. A second connection does
/// it in a thread: as soon as the log is long enough, and when nothing was committed for a while, so that the file by
/// itself is nearly whole whatever becomes of the log. Nothing depends on its success: what it did not carry is carried
/// by a later one or by the last connection that closes the file.
class Checkpointer {
 public:
  /// `connection` has `file` open and outlives this. No other thread uses it meanwhile.
  Checkpointer(sqlite3* connection, QString file, const FileWatch& watch);
  /// Waits for a checkpoint that is under way.
  ~Checkpointer();
  Checkpointer(const Checkpointer&) = delete;
  Checkpointer& operator=(const Checkpointer&) = delete;

  /// How long nothing is committed before the log is carried all the same; a test does not wait that long.
  static inline std::chrono::milliseconds quiet{30'000};

 private:
  static int afterCommit(void* self, sqlite3* connection, const char* schema, int pages);
  void wake(bool isLong);
  void carry();
  void run();

  sqlite3* const watched_;
  const QString file_;
  const FileWatch& watch_;
  ConnectionHandle own_;  // of the thread
  std::mutex mutex_;
  std::condition_variable changed_;
  bool wanted_ = false;     // the log is long
  bool committed_ = false;  // since it was carried last
  std::chrono::steady_clock::time_point lastCommit_;
  bool isTiming_ = false;  // the thread waits for the quiet
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace jxc::sqlite
