// 备份: the backups of the shop: settings, the copies, how long they are kept, and whether they would serve.
#pragma once

#include "core/prompt.h"
#include "core/verified_copy.h"
#include "engine/value.h"
#include "engine/work_behind.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <atomic>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace jxc {

/// `jxc_backup` and what stands beside it.
struct BackupSettings {
  bool automatic = false;
  int hours = 4;  // between two, 1 to 24
  int days = 0;   // that they are kept; 0: all stay
  QString folder, secondFolder;
  bool atExit = false;
  int alarmDays = 3;  // the last good one may be so old
  bool operator==(const BackupSettings&) const = default;
};
BackupSettings backupSettings();
/// Looks whether backups can be written to the folders, then stores the settings. False when that was refused.
bool saveBackupSettings(const BackupSettings& settings, Prompt& prompt);
/// What stands against a folder, in words; nothing when it is there and takes a file.
std::optional<QString> standsAgainstFolder(const QString& folder);

/// How the backups stand, for the window and for the screen.
struct BackupState {
  QString time, file, failure;                 // the last good one, and why none came after it
  QString triedTime, triedFile, triedFailure;  // the last rehearsal and what it found
  int alarmDays = 3;
  /// Older than it may be, failed since, or found to be of no use.
  bool isAlarming() const;
  /// "备份：05-03 14:30", "没有备份", with what is wrong behind it.
  QString words() const;
  /// "试恢复：2021-05-01，核对无误。"
  QString rehearsalWords() const;
};
BackupState backupState();

/// How a backup or a rehearsal went, written down behind the window: it may have to wait for stations that post. Over a
/// connection of its own; where there can be no second one (a set in memory), at once.
class StateNote {
 public:
  /// For the account set in use as it is now. Throws DbError.
  StateNote();
  /// `fields` of the state: their columns, "bz_time=?,bz_file=?".
  void write(const std::string& fields, std::vector<Value> values);
  bool isBegun() const { return isBegun_; }
  bool isDone() const { return isBegun_ && (!work_ || work_->isDone()); }
  /// Waits for the end. Throws DbError when it could not be written.
  void result();

 private:
  QString place_;  // of the set; empty where there can be no second connection
  QString key_;    // of the set: another one may stand at that place meanwhile
  std::int64_t row_;
  bool isBegun_ = false;
  std::unique_ptr<WorkBehind> work_;
};

/// A backup on its way into the folders of the settings, while the window goes on working.
class RunningBackup {
 public:
  /// Begins. Throws DbError.
  explicit RunningBackup(const BackupSettings& settings);
  /// Whether it has come to its end; begins with the second folder when the first is done, and then to write down how
  /// it went.
  bool isDone();
  int percent() const;
  void stop();
  /// After its end: deletes what is too old. The file; empty when it was stopped. Throws what stood against the first
  /// folder; what stood against the second stands in the state.
  QString finish();

 private:
  void beginSecond();
  void writeDown();

  BackupSettings settings_;
  StateNote note_;  // with the key of the set, which is in the first backup already
  std::unique_ptr<VerifiedCopy> first_, second_;
  std::exception_ptr firstFailure_;
  QString secondFailure_;
  bool isFirstDone_ = false, isFirstMade_ = false, isStopped_ = false;
};
/// One that the caller waits for. The file; empty when `report` stopped it.
QString backUpNow(const BackupSettings& settings, const CopyReport& report = {});

/// One of the set in use into a file of the operator's own choice. It counts as the last good one wherever it lies, and
/// is as many days old for the window as those of the settings. False when `report` stopped it. Throws DbError, also
/// where the file is there and only that it was made could not be written down.
bool backUpAs(const QString& file, const CopyReport& report = {});

/// Automatic backup into the folder of the settings, without a word; nothing without a folder. The caller waits.
void backupDatabase(const CopyReport& report = {});
/// Deletes backups of this account set that are older than the days of the settings, known by name and stamp, and by
/// what they hold. Copies before a restore, archives, files of others, those of another set under the same name, the
/// last good one and the newest one always stay.
void deleteBackupFiles(const QString& folder);

/// Whether the last good backup was not rehearsed for a week.
bool isRehearsalDue();
/// Restores the last good backup into a file beside the data, in a thread of its own, proves it and throws it away.
class Rehearsal {
 public:
  Rehearsal();
  ~Rehearsal();
  Rehearsal(const Rehearsal&) = delete;
  Rehearsal& operator=(const Rehearsal&) = delete;
  /// Whether it has come to its end; begins to write down the outcome when there is one.
  bool isDone();
  /// After its end. Throws DbError when the outcome could not be written down.
  void finish() { note_.result(); }

 private:
  QString file_, failure_;
  StateNote note_;
  std::atomic<bool> isProved_ = false, isStopped_ = false;
  std::thread thread_;
};

}  // namespace jxc
