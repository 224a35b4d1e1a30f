// 可靠副本: a copy of an account set that is known to open. Backups, new places, and what is kept before something is
// emptied all go this one way.
#pragma once

#include "engine/database.h"
#include "engine/work_behind.h"

#include <QString>

#include <memory>

namespace jxc {

/// Percent; false stops. Called in the thread of whoever asked for the copy.
using CopyReport = WorkBehind::Report;

/// What stands beside a copy: its sum, or nothing where it becomes a set to work with, which its first command changes.
enum class Beside : char { Sum, Nothing };

/// Copies one moment of an account set into `file` while others go on posting. The copy is an account file wherever the
/// set lives, on a server too, complete by itself. It is written beside its place, opened anew, its mark, pages, texts
/// and the rows of every table are checked, and only then it takes the place of what stood there; its sum is kept
/// beside it (`sumFileOf`). The work is done in a thread and over a connection of its own: the calling thread waits and
/// calls `report` some sixty times a second, so that a window with a progress bar stays awake. Where there can be no
/// second connection (a set in memory) it is done in the calling thread. Not inside a transaction.
///
/// False when `report` stopped it. Throws DbError with the reason in words, among others when the set is damaged. In
/// both cases the file that stood there before is as it was, and nothing else is left.
bool makeVerifiedCopy(Database& set, const QString& file, const CopyReport& report = {}, Beside beside = Beside::Sum);

/// The same copy for whoever does not want to wait: it is begun, looked at now and then, and ended. Calls of the set
/// from its own thread go on meanwhile.
class VerifiedCopy {
 public:
  /// Begins. Throws DbError where it cannot.
  VerifiedCopy(Database& set, const QString& file, Beside beside = Beside::Sum);
  VerifiedCopy(const VerifiedCopy&) = delete;
  VerifiedCopy& operator=(const VerifiedCopy&) = delete;

  const QString& file() const { return file_; }
  int percent() const { return work_ ? work_->percent() : 100; }
  /// Half a copy is thrown away; so it is when this ends before it.
  void stop();
  bool isDone() const { return !work_ || work_->isDone(); }
  /// Waits for the end. False when it was stopped; throws what the copy threw. `report` as of makeVerifiedCopy.
  bool result(const CopyReport& report = {});

 private:
  QString file_;
  bool isMade_ = false;
  std::unique_ptr<WorkBehind> work_;  // last: what it uses is there before it. Null where there is no thread for it
};

/// The small file beside a copy that holds its sum; `b2sum -l 256 -c` reads it as well.
QString sumFileOf(const QString& file);
/// Whether a file is still what it was when its sum was taken. `Unknown`: there is no sum beside it, or `report`
/// stopped.
enum class SumState : char { Unknown, Matches, Differs };
SumState checkSum(const QString& file, const CopyReport& report = {});

}  // namespace jxc
