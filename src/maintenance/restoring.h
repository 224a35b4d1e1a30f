// 恢复: what a backup holds, and how it takes the place of the account set in use.
#pragma once

#include "core/prompt.h"
#include "core/verified_copy.h"
#include "maintenance/prove.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace jxc {

/// A backup that was copied beside the data, brought up to this build and proved. The file itself is only read.
class OpenedBackup {
 public:
  /// A rehearsal runs beside the session, with a file of this set: its digits and kind of costing are those of the
  /// session. Before a restore they are the file's own, and stand in the session until it is proved.
  enum class For : char { Restore, Rehearsal };
  /// Throws DbError in words for whatever is no backup of this program: a text, a file of the old format, one that is
  /// cut off or damaged, or of a newer program. Null when `report` stopped it.
  static std::unique_ptr<OpenedBackup> open(const QString& file, const CopyReport& report = {}, For what = For::Restore,
                                            const QString& folder = workFolder());
  /// Where it is copied to: beside the account file in use.
  static QString workFolder();
  ~OpenedBackup();
  OpenedBackup(const OpenedBackup&) = delete;
  OpenedBackup& operator=(const OpenedBackup&) = delete;

  QString file;
  QString shop;                          // its name
  QString firstDocument, lastDocument;   // "2021-05-03  CG20210503001"
  std::int64_t documents = 0, rows = 0;  // rows of all tables
  QString schema;                        // day of the last step of its tables; empty: never upgraded
  bool isOlder = false;                  // it was brought up to this build here
  SumState sum = SumState::Unknown;
  proof::Proof proof;

  /// Those lines for the operator.
  QStringList words() const;
  Database& database() { return *database_; }

 private:
  OpenedBackup() = default;
  struct Beside;
  std::unique_ptr<Beside> beside_;
  std::unique_ptr<Database> database_;  // closes before its file goes
};

/// How far a restore has come, in percent of either part, and the folder of the present set; empty: that of the
/// backups.
struct RestoreReports {
  CopyReport keeping, writing;
  QString folder = {};
};
/// Puts the backup in the place of an account set, as one transaction, after the question and after keeping the present
/// set as "(恢复前)" beside the other backups, under the name it is `called` by. Refused while others are at work. That
/// it was restored stands in the log of what comes, and comes with it. False when it was refused, declined or stopped:
/// the set is as it was. Throws DbError; the set is as it was then too.
bool restoreBackup(OpenedBackup& backup, Database& set, const QString& called, Prompt& prompt,
                   const RestoreReports& reports = {});
/// In the place of the set in use. Whoever calls it goes to the login afterwards: nothing of the session is true any
/// more.
bool restoreBackup(OpenedBackup& backup, Prompt& prompt, const RestoreReports& reports = {});
/// What the log of the restored set says; `kept` is the file of what was there before, empty without one.
void logRestore(OpenedBackup& backup, const QString& kept);

/// What the operator reads of its failure: that the set is as it was, but where a server went in the moment of the
/// commit.
QString restoreFailure(const DbError& error);

}  // namespace jxc
