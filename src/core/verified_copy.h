// 可靠副本: a copy of an account set that is known to open. Backups, new places, and what is kept before something is
// emptied all go this one way.
#pragma once

#include "engine/database.h"

#include <QString>

#include <atomic>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace jxc {

/// Percent; false stops. Called in the thread of whoever asked for the copy.
using CopyReport = std::function<bool(int percent)>;

/// Copies one moment of an account set into `file` while others go on posting. The copy is an account file wherever the
/// set lives, on a server too, complete by itself. It is written beside its place, opened anew, its mark, pages, texts
/// and the rows of every table are checked, and only then it takes the place of what stood there; its sum is kept
/// beside it (`sumFileOf`). The work is done in a thread and over a connection of its own: the calling thread waits and
/// calls `report` some thirty times a second, so that a window with a progress bar stays awake. Where there can be no
/// second connection (a set in memory) it is done in the calling thread. Not inside a transaction.
///
/// False when `report` stopped it. Throws DbError with the reason in words, among others when the set is damaged. In
/// both cases the file that stood there before is as it was, and nothing else is left.
bool makeVerifiedCopy(Database& set, const QString& file, const CopyReport& report = {});

/// The same copy for whoever does not want to wait: it is begun, looked at now and then, and ended. Calls of the set
/// from its own thread go on meanwhile.
class VerifiedCopy {
 public:
  /// Begins. Throws DbError where it cannot.
  VerifiedCopy(Database& set, const QString& file);
  /// Stops it when it is still on its way, and waits for that.
  ~VerifiedCopy();
  VerifiedCopy(const VerifiedCopy&) = delete;
  VerifiedCopy& operator=(const VerifiedCopy&) = delete;

  const QString& file() const { return file_; }
  int percent() const { return percent_; }
  void stop() { isStopped_ = true; }
  bool isDone() const { return isDone_; }
  /// Waits for the end, at most so many milliseconds. Whether it has come.
  bool waitFor(int milliseconds);
  /// Waits for the end. False when it was stopped; throws what the copy threw.
  bool result();

 private:
  void work(const Database::OpenReader& open);

  QString file_;
  std::atomic<int> percent_ = 0;
  std::atomic<bool> isStopped_ = false, isDone_ = false;
  bool isMade_ = false;
  std::exception_ptr failure_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::thread thread_;  // last: what it uses is there before it
};

/// The small file beside a copy that holds its sum; `b2sum -l 256 -c` reads it as well.
QString sumFileOf(const QString& file);
/// Whether a file is still what it was when its sum was taken. `Unknown`: there is no sum beside it, or `report`
/// stopped.
enum class SumState : char { Unknown, Matches, Differs };
SumState checkSum(const QString& file, const CopyReport& report = {});

}  // namespace jxc
