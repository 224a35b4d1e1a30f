#include "maintenance/backups.h"

#include "core/account_place.h"
#include "core/backup.h"
#include "core/build_info.h"
#include "core/clock.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/presence.h"
#include "maintenance/restoring.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QThread>
#include <QUuid>

#include <algorithm>
#include <chrono>
#include <utility>

namespace jxc {
namespace backups_detail {

constexpr int longestPath = 200;                      // of jxc_backup
constexpr int longestWords = 250, longestFile = 255;  // of jxc_backupzk
constexpr int rehearsalDays = 7;
constexpr int mostHours = 24;
constexpr std::chrono::minutes longestWaiting{10};  // a station that recomputes its whole ledger

QString accountName() {
  return QString::fromUtf16(build::accountName);
}

/// The moment in the name of a backup of this set, and nothing for every other file: the words before the stamp tell
/// archives and copies before a restore from backups.
std::optional<QDateTime> momentOf(const QString& fileName) {
  static const QRegularExpression ours(u'^' + QRegularExpression::escape(accountName()) +
                                       QStringLiteral("(\\d\\d(?:_\\d\\d){5})(?:_\\d+)?\\.DAT$"));
  const QRegularExpressionMatch match = ours.match(fileName);
  if (!match.hasMatch()) return {};
  // Two digits of a year of this century.
  const QDateTime moment =
      QDateTime::fromString(QStringLiteral("20") + match.captured(1), QStringLiteral("yyyy_MM_dd_HH_mm_ss"));
  return moment.isValid() ? std::optional(moment) : std::nullopt;
}

/// The one row, made where a foreign hand took it away.
std::int64_t stateRow() {
  const Value row = accountDb().lookup("select top 1 id from jxc_backupzk order by id");
  return row.isNull() ? insertRow("jxc_backupzk", {{"bz_path", ""}, {"bz_days", BackupSettings().alarmDays}})
                      : row.integer();
}

/// By which a set knows its own backups: made before the first of them, and in each of them since.
QString setKey() {
  const std::int64_t row = stateRow();
  const QString key = lookupValue("select bz_set from jxc_backupzk where id=?", row);
  if (!key.isEmpty()) return key;
  // Two stations may begin their first backup at once: one of them makes the key.
  execSql("update jxc_backupzk set bz_set=? where id=? and (bz_set='' or bz_set is null)",
          QUuid::createUuid().toString(QUuid::WithoutBraces), row);
  return lookupValue("select bz_set from jxc_backupzk where id=?", row);
}

/// Two shops may keep their backups in one folder, and sets of the list may bear one name. What cannot be read is
/// nobody's to throw away.
bool isOfThisSet(const QString& file) {
  try {
    const auto books = openSqlite(file, {.readOnly = true, .essential = false});
    return books->lookup("select top 1 bz_set from jxc_backupzk order by id").text() == setKey();
  } catch (const DbError&) {
    return false;
  }
}

QString shortWords(const QString& words) {
  return words.simplified().left(longestWords);
}

/// "05-03 14:30"
QString dayAndTime(const QString& stamp) {
  return stamp.mid(5, 11);
}

/// Days between a stamp as it is kept and now; a clock that went back makes none of them old.
qint64 daysSince(const QString& stamp) {
  return QDate::fromString(stamp.left(10), Qt::ISODate).daysTo(clock::now().date());
}

/// Waits for a copy that runs behind, and tells of it.
void waitFor(RunningBackup& backup, const CopyReport& report) {
  while (!backup.isDone()) {
    if (report && !report(std::min(backup.percent(), 99))) backup.stop();
    QThread::msleep(WorkBehind::pause);
  }
}

}  // namespace backups_detail

// ---- settings

BackupSettings backupSettings() {
  BackupSettings settings;
  if (const RowSet rows = openSelect("select * from jxc_backup"); !rows.isEmpty()) {
    const Row row = rows.front();
    settings.automatic = row.integer("back_auto") != 0;
    settings.hours = std::clamp(static_cast<int>(row.integer("back_sj")), 1, backups_detail::mostHours);
    settings.days = std::max(0, static_cast<int>(row.integer("back_days")));
    settings.folder = row.text("back_path");
    settings.atExit = row.integer("back_exit") != 0;
  }
  if (const RowSet rows = openSelect("select top 1 * from jxc_backupzk order by id"); !rows.isEmpty()) {
    settings.secondFolder = rows.front().text("bz_path");
    settings.alarmDays = std::max(1, static_cast<int>(rows.front().integer("bz_days")));
  }
  return settings;
}

std::optional<QString> standsAgainstFolder(const QString& folder) {
  if (folder.size() > backups_detail::longestPath)
    return QStringLiteral("备份路径最多%1个字，请换一个文件夹！").arg(backups_detail::longestPath);
  if (!QFileInfo(folder).isDir()) return QStringLiteral("备份失败，文件夹不存在！");
  QTemporaryFile file(QDir(folder).filePath(QStringLiteral(".jxc-XXXXXX")));
  if (!file.open() || file.write("1") != 1 || !file.flush())
    return QStringLiteral("备份失败，文件夹不能写入：%1").arg(file.errorString());
  return {};
}

bool saveBackupSettings(const BackupSettings& settings, Prompt& prompt) {
  using namespace backups_detail;
  if (refused({{settings.folder.isEmpty(), QStringLiteral("备份路径必须填写！")}}, prompt)) return false;
  for (const QString& folder : {settings.folder, settings.secondFolder})
    if (!folder.isEmpty())
      if (const auto reason = standsAgainstFolder(folder)) return !refused({*reason}, prompt);
  if (refused({{!settings.secondFolder.isEmpty() && QDir(settings.secondFolder) == QDir(settings.folder),
                QStringLiteral("第二备份文件夹和备份路径相同，请换另一个磁盘上的文件夹！")}},
              prompt))
    return false;
  Transaction transaction(accountDb());
  execSql("delete from jxc_backup");
  insertRow("jxc_backup", {{"back_auto", settings.automatic ? 1 : 0},
                           {"back_sj", std::clamp(settings.hours, 1, mostHours)},
                           {"back_days", settings.days},
                           {"back_path", settings.folder},
                           {"back_exit", settings.atExit ? 1 : 0}});
  updateRow("jxc_backupzk", stateRow(), {{"bz_path", settings.secondFolder}, {"bz_days", settings.alarmDays}});
  transaction.commit();
  session().back_sj = settings.hours;
  session().back_auto = settings.automatic ? u"1"_qs : u"0"_qs;
  session().back_exit = settings.atExit ? u"1"_qs : u"0"_qs;
  return true;
}

// ---- how they stand

BackupState backupState() {
  BackupState state;
  const RowSet rows = openSelect("select top 1 * from jxc_backupzk order by id");
  if (rows.isEmpty()) return state;
  const Row row = rows.front();
  state.time = row.text("bz_time");
  state.file = row.text("bz_file");
  state.failure = row.text("bz_fail");
  state.triedTime = row.text("bz_trytime");
  state.triedFile = row.text("bz_tryfile");
  state.triedFailure = row.text("bz_tryfail");
  state.alarmDays = std::max(1, static_cast<int>(row.integer("bz_days")));
  return state;
}

bool BackupState::isAlarming() const {
  return time.isEmpty() || !failure.isEmpty() || !triedFailure.isEmpty() || backups_detail::daysSince(time) > alarmDays;
}

QString BackupState::words() const {
  using namespace backups_detail;
  if (time.isEmpty()) return failure.isEmpty() ? QStringLiteral("没有备份") : QStringLiteral("备份没有写成");
  const QString last = QStringLiteral("备份：") + dayAndTime(time);
  if (!failure.isEmpty()) return last + QStringLiteral("，以后的没有写成");
  if (!triedFailure.isEmpty()) return last + QStringLiteral("，试恢复有错误");
  const qint64 days = daysSince(time);
  return days > alarmDays ? QStringLiteral("%1，已过%2天").arg(last).arg(days) : last;
}

QString BackupState::rehearsalWords() const {
  if (triedTime.isEmpty()) return QStringLiteral("还没有试恢复过。");
  const QString when = QStringLiteral("试恢复：%1，%2，").arg(triedTime.left(16), QFileInfo(triedFile).fileName());
  return when + (triedFailure.isEmpty() ? QStringLiteral("核对无误。") : triedFailure);
}

// ---- a backup

StateNote::StateNote()
    : place_(placeOf(accountDb())), key_(backups_detail::setKey()), row_(backups_detail::stateRow()) {}

void StateNote::write(const std::string& fields, std::vector<Value> values) {
  isBegun_ = true;
  const std::string statement = "update jxc_backupzk set " + fields + " where id=? and bz_set=?";
  values.emplace_back(row_);
  values.emplace_back(key_);
  if (place_.isEmpty()) {
    accountDb().execute(statement, values);
    return;
  }
  work_ = std::make_unique<WorkBehind>(
      [statement, values = std::move(values), place = place_](const WorkBehind::Report& report) {
        const std::unique_ptr<Database> own = openAccountPlace(place);
        for (const auto last = std::chrono::steady_clock::now() + backups_detail::longestWaiting;;) {
          try {
            own->execute(statement, values);
            return;
          } catch (const DbError& error) {
            if (error.kind() != DbError::Kind::Busy || !report(0) || std::chrono::steady_clock::now() > last) throw;
          }
        }
      });
}

void StateNote::result() {
  if (work_) work_->result();
}

RunningBackup::RunningBackup(const BackupSettings& settings)
    : settings_(settings), first_(std::make_unique<VerifiedCopy>(accountDb(), backupFileIn(settings.folder))) {}

/// The other disk gets a copy of its own from the set, so that what is wrong with one of them does not come to both.
void RunningBackup::beginSecond() {
  isFirstDone_ = true;
  try {
    isFirstMade_ = first_->result();
  } catch (const DbError&) {
    firstFailure_ = std::current_exception();
  }
  if (isStopped_ || settings_.secondFolder.isEmpty()) return;
  try {
    second_ = std::make_unique<VerifiedCopy>(accountDb(), backupFileIn(settings_.secondFolder));
  } catch (const DbError& error) {
    secondFailure_ = error.message();
  }
}

void RunningBackup::writeDown() {
  using namespace backups_detail;
  if (second_) {
    try {
      second_->result();
    } catch (const DbError& error) {
      secondFailure_ = error.message();
    }
  }
  if (firstFailure_) {
    try {
      std::rethrow_exception(firstFailure_);
    } catch (const DbError& error) {
      note_.write("bz_fail=?", {Value(shortWords(error.message()))});
    }
  } else if (isFirstMade_) {
    const QString failure = secondFailure_.isEmpty() ? QString() : QStringLiteral("第二备份文件夹：") + secondFailure_;
    note_.write("bz_time=?,bz_file=?,bz_fail=?",
                {Value(clock::stamp()), Value(first_->file()), Value(shortWords(failure))});
  }
}

bool RunningBackup::isDone() {
  if (!isFirstDone_ && !first_->isDone()) return false;
  if (!isFirstDone_) beginSecond();
  if (second_ && !second_->isDone()) return false;
  if (!note_.isBegun()) writeDown();
  return note_.isDone() || !note_.isBegun();  // of one that was stopped nothing is written down
}

int RunningBackup::percent() const {
  if (settings_.secondFolder.isEmpty()) return first_->percent();
  return (first_->percent() + (second_ ? second_->percent() : 0)) / 2;
}

void RunningBackup::stop() {
  isStopped_ = true;
  for (VerifiedCopy* const copy : {first_.get(), second_.get()})
    if (copy != nullptr) copy->stop();
}

QString RunningBackup::finish() {
  note_.result();
  if (firstFailure_) std::rethrow_exception(firstFailure_);
  if (!isFirstMade_) return {};
  deleteBackupFiles(settings_.folder);
  if (second_ && secondFailure_.isEmpty()) deleteBackupFiles(settings_.secondFolder);
  return first_->file();
}

QString backUpNow(const BackupSettings& settings, const CopyReport& report) {
  RunningBackup backup(settings);
  backups_detail::waitFor(backup, report);
  const QString file = backup.finish();
  if (report && !file.isEmpty()) report(100);
  return file;
}

bool backUpAs(const QString& file, const CopyReport& report) {
  using namespace backups_detail;
  StateNote note;  // before the copy: the key of the set is in it
  const auto heard = [&report](int percent) { return !report || report(std::min(percent, 99)); };
  if (!makeVerifiedCopy(accountDb(), file, heard)) return false;
  // It can be rehearsed where its whole path can be kept.
  try {
    note.write("bz_time=?,bz_file=?,bz_fail=''",
               {Value(clock::stamp()), Value(file.size() <= longestFile ? file : QString())});
    for (; !note.isDone(); QThread::msleep(WorkBehind::pause))
      heard(99);
    note.result();
  } catch (const DbError& failure) {
    throw DbError(failure.kind(),
                  QStringLiteral("备份文件已经写好并核对过，但是没有记下备份时间：") + failure.message());
  }
  if (report) report(100);
  return true;
}

void backupDatabase(const CopyReport& report) {
  const BackupSettings settings = backupSettings();
  if (settings.folder.isEmpty()) return;
  try {
    backUpNow(settings, report);
  } catch (const DbError&) {
    // It stands in the state, which the window shows.
  }
}

void deleteBackupFiles(const QString& folder) {
  using namespace backups_detail;
  const int days = backupSettings().days;
  if (days == 0) return;
  const QDir place(folder);
  QStringList files = place.entryList({QStringLiteral("*.DAT")}, QDir::Files, QDir::Name);
  files.removeIf([](const QString& name) { return !momentOf(name); });
  if (files.isEmpty()) return;
  const QString newest = *std::ranges::max_element(files, {}, [](const QString& name) { return *momentOf(name); });
  const QString lastGood = QFileInfo(backupState().file).fileName();
  for (const QString& name : files) {
    if (name == newest || name == lastGood) continue;
    if (momentOf(name)->date().daysTo(clock::now().date()) <= days) continue;
    const QString file = place.filePath(name);
    if (isOfThisSet(file) && QFile::remove(file)) QFile::remove(sumFileOf(file));
  }
}

// ---- the rehearsal

bool isRehearsalDue() {
  const BackupState state = backupState();
  if (state.file.isEmpty() || !QFileInfo::exists(state.file)) return false;
  return state.triedTime.isEmpty() || backups_detail::daysSince(state.triedTime) >= backups_detail::rehearsalDays;
}

Rehearsal::Rehearsal() : file_(backupState().file) {
  thread_ = std::thread([this, folder = OpenedBackup::workFolder()] {
    try {
      const auto backup = OpenedBackup::open(
          file_, [this](int) { return !isStopped_; }, OpenedBackup::For::Rehearsal, folder);
      if (backup && backup->proof.finished) {
        if (backup->sum == SumState::Differs)
          failure_ = QStringLiteral("备份文件和写成时不一样。");
        else if (!backup->proof.isClean())
          failure_ = backup->proof.summary();
      } else {
        isStopped_ = true;
      }
    } catch (const std::exception& failure) {
      failure_ = QString::fromUtf8(failure.what());
    }
    isProved_ = true;
  });
}

Rehearsal::~Rehearsal() {
  isStopped_ = true;
  thread_.join();
}

bool Rehearsal::isDone() {
  if (!isProved_) return false;
  if (isStopped_) return true;
  if (!note_.isBegun())
    note_.write("bz_trytime=?,bz_tryfile=?,bz_tryfail=?",
                {Value(clock::stamp()), Value(file_), Value(backups_detail::shortWords(failure_))});
  return note_.isDone();
}

}  // namespace jxc
