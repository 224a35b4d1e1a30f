// 日志归档: carries the write-ahead log into the account file beside the work instead of inside somebody's commit.
#pragma once

#include "engine/sqlite/native.h"

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace jxc::sqlite {

/// Watches the commits of one connection. With a large ledger the pages of some twenty documents lie all over the file,
/// and the disk is given each of them on its own: whoever committed last would wait for all. A second connection does
/// it in a thread, which begins with the first log that is long enough. Nothing depends on its success: what it did not
/// carry is carried by a later one or by the last connection that closes the file.
class Checkpointer {
 public:
  /// `connection` has `file` open and outlives this. No other thread uses it meanwhile.
  Checkpointer(sqlite3* connection, QString file);
  /// Waits for a checkpoint that is under way.
  ~Checkpointer();
  Checkpointer(const Checkpointer&) = delete;
  Checkpointer& operator=(const Checkpointer&) = delete;

 private:
  static int afterCommit(void* self, sqlite3* connection, const char* schema, int pages);
  void wake();
  void start();
  void run();

  sqlite3* const watched_;
  const QString file_;
  ConnectionHandle own_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool wanted_ = false;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace jxc::sqlite
