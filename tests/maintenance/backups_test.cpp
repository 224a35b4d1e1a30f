#include "maintenance/backups.h"

#include "core/account_place.h"
#include "core/at_work.h"
#include "core/data_module.h"
#include "core/program_directory.h"
#include "engine/presence.h"
#include "harness/account_set_fixture.h"
#include "harness/counter.h"
#include "harness/files.h"
#include "harness/whole_books.h"
#include "maintenance/closing_command.h"
#include "maintenance/reset.h"
#include "maintenance/restoring.h"
#include "server/test_engine.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <sys/mount.h>

namespace jxc::backups_test {

using test::bytesOf;
using test::writeBytes;

/// A set in use that other connections can open, and folders for its backups.
class Backups : public test::AccountSetFixture {
 protected:
  Backups() : programBefore_(programDirectory()) {
    setProgramDirectory(path(u"program"_qs));
    std::unique_ptr<Database> set = test::openFresh(test::Story::Long);
    if (!test::onServer()) {
      set->backupTo(path(u"program/data/jxc.mdb"_qs));
      set = openSqlite(path(u"program/data/jxc.mdb"_qs));
    }
    before_ = dataModule().installAccountDb(std::move(set));
    loadSession();
    for (const char* each : {"kept", "second"})
      QDir(root_.path()).mkdir(QString::fromUtf8(each));
    settings.folder = path(u"kept"_qs);
  }
  ~Backups() override {
    leaveWork();
    dataModule().installAccountDb(std::move(before_));
    setProgramDirectory(programBefore_);
  }
  QString path(const QString& name) const { return root_.filePath(name); }
  static QStringList files(const QString& folder) { return QDir(folder).entryList(QDir::Files, QDir::Name); }
  /// Files of a folder without sums.
  QStringList kept() const { return QDir(path(u"kept"_qs)).entryList({u"*.DAT"_qs}, QDir::Files, QDir::Name); }
  static std::int64_t goods() { return lookupValue("select count(*) from jxc_goods").toLongLong(); }
  /// What stands against a file, in words.
  QString refusalOf(const QString& file) {
    try {
      OpenedBackup::open(file);
    } catch (const DbError& error) {
      return error.message();
    }
    return u"it opened"_qs;
  }

  BackupSettings settings;

 private:
  QTemporaryDir root_;
  QString programBefore_;
  std::unique_ptr<Database> before_;
};

TEST_F(Backups, OnlyBackupsOfThisSetGrowTooOld) {
  settings.days = 7;
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  const QStringList stay{u"晴川进销存21_04_26_23_59_59.DAT"_qs,
                         u"晴川进销存21_05_09_10_00_00.DAT"_qs,
                         u"晴川进销存(恢复前)20_01_01_10_00_00.DAT"_qs,
                         u"晴川进销存(结算)20_01_01_10_00_00.DAT"_qs,
                         u"分店20_01_01_10_00_00.DAT"_qs,
                         u"video20.DAT"_qs,
                         u"晴川进销存220_01_01_10_00_00.DAT"_qs,
                         u"晴川进销存二店20_01_01_10_00_00.DAT"_qs,
                         u"晴川进销存20_13_01_10_00_00.DAT"_qs,
                         u"晴川进销存20_03_02_10_00_00.DAT"_qs,  // of another shop
                         u"晴川进销存20_03_03_10_00_00.DAT"_qs,  // no books any more
                         u"晴川进销存20_02_02_10_00_00.DAT"_qs};
  const QStringList go{u"晴川进销存21_04_25_23_59_59.DAT"_qs, u"晴川进销存20_03_01_10_00_00_2.DAT"_qs};
  const auto made = [this] {
    const QString file = backUpNow(settings);
    const QByteArray bytes = bytesOf(file);
    EXPECT_TRUE(QFile::remove(file) && QFile::remove(sumFileOf(file)));
    return bytes;
  };
  const QByteArray ours = made();
  const QString key = lookupValue("select bz_set from jxc_backupzk");
  execSql("update jxc_backupzk set bz_set='another'");
  const QByteArray theirs = made();
  execSql("update jxc_backupzk set bz_set=?", key);
  for (const QString& name : stay + go) {
    writeBytes(path(u"kept/"_qs + name), name.contains(u"20_03_03"_qs)   ? QByteArray("x")
                                         : name.contains(u"20_03_02"_qs) ? theirs
                                                                         : ours);
    writeBytes(sumFileOf(path(u"kept/"_qs + name)), "x");
  }
  // The last good one may be old: a clock that went back, a shop that was closed.
  execSql("update jxc_backupzk set bz_file=?", path(u"kept/晴川进销存20_02_02_10_00_00.DAT"_qs));
  deleteBackupFiles(path(u"kept/"_qs));
  QStringList left = kept(), due = stay;
  left.sort();
  due.sort();
  EXPECT_EQ(left, due);
  EXPECT_EQ(files(path(u"kept"_qs)).size(), 2 * stay.size()) << "sums go with their files";
  execSql("update jxc_backup set back_days=0");
  writeBytes(path(u"kept/"_qs + go.first()), "x");
  deleteBackupFiles(path(u"kept"_qs));
  EXPECT_TRUE(QFileInfo::exists(path(u"kept/"_qs + go.first())));
}

TEST_F(Backups, FoldersAreTriedBeforeSettingsAreKept) {
  const QString before = lookupValue("select count(*) from jxc_backup");
  const auto refusal = [&](const QString& folder, const QString& second = {}) {
    settings.folder = folder;
    settings.secondFolder = second;
    return prompt.refused(saveBackupSettings(settings, prompt));
  };
  EXPECT_EQ(refusal({}), u"备份路径必须填写！"_qs);
  EXPECT_EQ(refusal(path(u"nowhere"_qs)), u"备份失败，文件夹不存在！"_qs);
  EXPECT_TRUE(refusal(u'/' + QString(250, u'长')).contains(u"200个字"_qs));
  EXPECT_TRUE(refusal(u"/proc"_qs).contains(u"不能写入"_qs));
  EXPECT_TRUE(refusal(path(u"kept"_qs), path(u"kept/."_qs)).contains(u"相同"_qs));
  EXPECT_EQ(refusal(path(u"kept"_qs), path(u"gone"_qs)), u"备份失败，文件夹不存在！"_qs);
  EXPECT_EQ(lookupValue("select count(*) from jxc_backup"), before);
  backupDatabase();  // no folder: ends quietly
  EXPECT_EQ(refusal(path(u"kept"_qs), path(u"second"_qs)), u"it was done"_qs);
  EXPECT_EQ(backupSettings().secondFolder, path(u"second"_qs));
}

TEST_F(Backups, TwoInOneSecondAndAClockThatWentBackKeepBothAndTheStateSaysHowTheyStand) {
  settings.secondFolder = path(u"second"_qs);
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  EXPECT_EQ(backupState().words(), u"没有备份"_qs);
  backupDatabase();
  backupDatabase();
  setClock(u"2021-05-02 08:00:00"_qs);
  backupDatabase();
  EXPECT_EQ(kept(), (QStringList{u"晴川进销存21_05_02_08_00_00.DAT"_qs, u"晴川进销存21_05_03_14_30_00.DAT"_qs,
                                 u"晴川进销存21_05_03_14_30_00_2.DAT"_qs}));
  EXPECT_EQ(files(path(u"second"_qs)).size(), 6) << "each with its sum";
  EXPECT_FALSE(backupState().isAlarming());
  EXPECT_EQ(backupState().words(), u"备份：05-02 08:00"_qs);
  setClock(u"2021-05-06 08:00:00"_qs);
  EXPECT_TRUE(backupState().isAlarming()) << "four days, three are allowed";
  // The second disk is gone: the first backup counts, and the window says what is missing.
  ASSERT_TRUE(QDir(path(u"second"_qs)).removeRecursively());
  backupDatabase();
  EXPECT_EQ(kept().size(), 4);
  EXPECT_TRUE(backupState().failure.startsWith(u"第二备份文件夹："_qs));
  EXPECT_TRUE(backupState().isAlarming());
  ASSERT_TRUE(QDir(path(u"kept"_qs)).removeRecursively());
  setClock(u"2021-05-06 09:00:00"_qs);
  backupDatabase();
  EXPECT_EQ(backupState().time, u"2021-05-06 08:00:00"_qs) << "the last good one";
  EXPECT_FALSE(backupState().failure.isEmpty());
}

// A small disk of its own, which root alone may mount: full, write-protected, and gone.
TEST_F(Backups, ADiskThatTakesNoMoreLeavesTheLastGoodBackupAndTheBooks) {
  const QByteArray disk = path(u"small"_qs).toUtf8();
  QDir().mkdir(QString::fromUtf8(disk));
  if (::mount("none", disk.constData(), "tmpfs", 0, "size=24m") != 0) GTEST_SKIP() << "no disk can be mounted here";
  const auto gone = qScopeGuard([&disk] { ::umount2(disk.constData(), MNT_DETACH); });
  settings.folder = QString::fromUtf8(disk);
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  insertRow("jxc_goodslist", {{"gl_kdrq", u"2021-04-01"}, {"g_sn", u"1"}, {"gl_flag", u"qc"}});
  const QString good = backUpNow(settings);
  const QByteArray content = bytesOf(good);
  const auto count = [] { return lookupNumber("select count(*) from jxc_goodslist"); };
  const auto nothingIsDone = [&](const QString& words) {
    EXPECT_THROW(backUpNow(settings), DbError);
    const QString told = backupState().failure;  // from a server, in the words of another copy
    EXPECT_TRUE(test::onServer() ? !told.isEmpty() : told.contains(words)) << told.toStdString();
    EXPECT_EQ(backupState().file, good);
    // Commands that begin with a backup do not begin.
    EXPECT_EQ(clearData(Clearing::Business, {}, BackupFirst::Always, {}, prompt), Cleared::Refused);
    EXPECT_TRUE(prompt.lastNotice().startsWith(u"备份没有写成，数据没有清理："_qs))
        << prompt.lastNotice().toStdString();
    EXPECT_THROW(closing::closePeriod({{u"2021-04-30"_qs}}, prompt.willSayYes()), DbError);
    EXPECT_EQ(count(), 1);
  };
  QFile filler(path(u"small/filler"_qs));
  ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
  filler.write(QByteArray(24 << 20, 'x'));  // as much as goes in
  nothingIsDone(u"空间已满"_qs);
  EXPECT_EQ(bytesOf(good), content);
  filler.remove();
  ASSERT_EQ(::mount("none", disk.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
  EXPECT_TRUE(prompt.refused(saveBackupSettings(settings, prompt)).contains(u"不能写入"_qs));
  nothingIsDone(u"只读"_qs);
  ASSERT_EQ(::umount2(disk.constData(), MNT_DETACH), 0);
  QDir().rmdir(QString::fromUtf8(disk));
  EXPECT_THROW(backUpNow(settings), DbError);
  EXPECT_EQ(backupState().file, good);
}

// The server goes at one moment after the other of each dangerous command.
TEST_F(Backups, AServerThatGoesAwayTakesEveryCommandBack) {
  if (!test::onServer()) GTEST_SKIP() << "a server's own";
  test::WhileAsked yes{{}};
  test::openShop(yes);
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  const QString file = backUpNow(settings);
  insertRow("jxc_goods", {{"g_sn", u"nach"}, {"g_name", u"后来的"}});
  auto backup = OpenedBackup::open(file);
  const test::Books before = test::readBooks();
  int left = 0;  // reports until it goes
  const auto hear = [&left] {
    if (left-- <= 0) test::cutConnections();
    return true;
  };
  const CopyReport heard = [&](int) { return hear(); };
  const std::pair<const char*, std::function<void()>> commands[] = {
      {"backup", [&] { backUpNow(settings, heard); }},
      {"restore", [&] { restoreBackup(*backup, prompt.willSayYes(), {.keeping = {}, .writing = heard}); }},
      {"closing", [&] { closing::closeBooks({u"2021-05-03"_qs}, {}, [&](int, const QString&) { return hear(); }); }},
  };
  const auto changed = [&before] {
    std::set<QString> fields = test::differences(before, test::readBooks());
    std::erase_if(fields, [](const QString& field) { return field.startsWith(u"jxc_backupzk"); });
    return fields;
  };
  for (const auto& [name, command] : commands)
    for (const int moment : {0, 2, 9}) {
      left = moment;
      bool isOver = false;
      try {
        command();
        isOver = true;
      } catch (const DbError&) {
      }
      // A backup on a quick machine is over before it has told so much of itself.
      EXPECT_TRUE(!isOver || (name == commands[0].first && moment > 0)) << name << ' ' << moment;
      EXPECT_EQ(changed(), std::set<QString>()) << name << ' ' << moment;
    }
  EXPECT_TRUE(kept().contains(QFileInfo(file).fileName()));
  test::cutAtCommit("jxc_log");  // of which a clearing tells there
  EXPECT_EQ(clearData(Clearing::Business, {}, BackupFirst::Always, {}, prompt.willSayYes()), Cleared::Refused);
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"数据没有清理，全部保持原样："_qs)) << prompt.lastNotice().toStdString();
  EXPECT_EQ(changed(), std::set<QString>());
}

TEST_F(Backups, ARehearsalSaysWhetherTheLastOneWouldServe) {
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  EXPECT_FALSE(isRehearsalDue());
  const QString file = backUpNow(settings);
  const auto rehearse = [] {
    Rehearsal rehearsal;
    while (!rehearsal.isDone())
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    rehearsal.finish();
    return backupState().triedFailure;
  };
  ASSERT_TRUE(isRehearsalDue());
  EXPECT_EQ(rehearse(), QString());
  EXPECT_FALSE(isRehearsalDue());
  setClock(u"2021-05-10 08:00:00"_qs);
  EXPECT_TRUE(isRehearsalDue());
  QByteArray spoilt = bytesOf(file);
  spoilt.truncate(spoilt.size() / 2);
  writeBytes(file, spoilt);
  EXPECT_NE(rehearse(), QString());
  EXPECT_TRUE(backupState().isAlarming());
  EXPECT_EQ(kept().size(), 1);
  EXPECT_EQ(QDir(path(u"program/data"_qs)).entryList({u"*.tmp*"_qs}), QStringList());
}

// The window looks at a backup behind it several times a second, and is never to wait for a station in those looks.
TEST_F(Backups, WhatIsWrittenDownOfABackupWaitsForStationsBehindTheWindow) {
  settings.secondFolder = path(u"second"_qs);
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  if (placeOf(accountDb()).isEmpty()) GTEST_SKIP() << "no second connection";
  RunningBackup backup(settings);
  const auto station = openAccountPlace(placeOf(accountDb()));
  std::optional<Transaction> posting(std::in_place, *station);
  station->execute("update jxc_backupzk set bz_days=9");
  const auto isDoneWithin = [&backup](int looks) {
    for (; looks > 0 && !backup.isDone(); --looks)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return looks > 0;
  };
  while (files(path(u"second"_qs)).size() < 2)  // with its sum
    ASSERT_FALSE(isDoneWithin(1));
  EXPECT_FALSE(isDoneWithin(30));
  EXPECT_EQ(backupState().words(), u"没有备份"_qs);
  posting.reset();
  EXPECT_TRUE(isDoneWithin(1000));
  EXPECT_EQ(QFileInfo(backup.finish()).fileName(), kept().value(0));
  EXPECT_EQ(backupState().words(), u"备份：05-03 14:30"_qs);
}

TEST_F(Backups, WhatIsNoBackupIsNamedAndChangesNothing) {
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  const QString file = backUpNow(settings);
  const QByteArray good = bytesOf(file);
  const auto refused = [&](const QByteArray& content) {
    writeBytes(path(u"some.DAT"_qs), content);
    return refusalOf(path(u"some.DAT"_qs));
  };
  EXPECT_TRUE(refusalOf(path(u"nowhere.DAT"_qs)).contains(u"文件不存在"_qs));
  EXPECT_TRUE(refusalOf(path(u"kept"_qs)).contains(u"文件夹"_qs));
  EXPECT_TRUE(refused("").contains(u"空的"_qs));
  EXPECT_TRUE(refused("hello\n").contains(u"不是本系统的备份"_qs));
  EXPECT_TRUE(refused("\x89PNG\r\n\x1a\n" + QByteArray(5000, 'x')).contains(u"不是本系统的备份"_qs));
  EXPECT_TRUE(refused(QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(5000, 'x')).contains(u"Access"_qs));
  EXPECT_TRUE(refused("postgresql://shop@server/jxc\n").contains(u"连接地址"_qs));
  EXPECT_TRUE(refused(good.first(good.size() / 2)).contains(u"不能用来恢复"_qs));
  QByteArray holed = good;
  std::fill(holed.begin() + good.size() / 2, holed.begin() + good.size() / 2 + 8192, '\0');
  EXPECT_TRUE(refused(holed).contains(u"损坏"_qs));
  {
    writeBytes(path(u"newer.DAT"_qs), good);
    openSqlite(path(u"newer.DAT"_qs))->execute("update jxc_xtcs set cs_employdate='2999-01-01'");
  }
  EXPECT_TRUE(refusalOf(path(u"newer.DAT"_qs)).contains(u"更新版本"_qs));
  {
    const auto other = openSqlite(path(u"newer.DAT"_qs));
    EXPECT_TRUE(refusalOf(path(u"newer.DAT"_qs)).contains(u"正在使用"_qs));
  }
  if (!test::onServer()) {
    EXPECT_TRUE(refusalOf(path(u"program/data/jxc.mdb"_qs)).contains(u"正在使用"_qs));
  }
  EXPECT_EQ(QDir(path(u"program/data"_qs)).entryList({u"*.tmp*"_qs}), QStringList());
  EXPECT_EQ(bytesOf(file), good) << "a backup is only read";
}

TEST_F(Backups, ARestoreTellsWhatComesAndKeepsWhatWasThere) {
  test::WhileAsked yes{{}};
  test::openShop(yes);
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  const std::int64_t before = goods();
  const QString file = backUpNow(settings);
  {  // as an older program left it
    const auto old = openSqlite(file);
    old->execute("drop table jxc_backupzk");
    old->execute("update jxc_company set c_name='别人的店'");
    old->execute("update jxc_xtcs set cs_employdate='2021-07-15'");
  }
  const QByteArray bytes = bytesOf(file);
  insertRow("jxc_goods", {{"g_sn", "nach"}, {"g_name", "后来的"}});
  auto backup = OpenedBackup::open(file);
  ASSERT_TRUE(backup);
  EXPECT_EQ(backup->sum, SumState::Differs);
  EXPECT_TRUE(backup->isOlder);
  EXPECT_GT(backup->documents, 0);
  EXPECT_TRUE(backup->proof.isClean()) << backup->proof.summary().toStdString();
  EXPECT_TRUE(backup->lastDocument.startsWith(u"2021-"_qs)) << backup->lastDocument.toStdString();

  EXPECT_FALSE(restoreBackup(*backup, prompt.willSayNo()));
  EXPECT_TRUE(prompt.questions.last().contains(backup->lastDocument));
  EXPECT_TRUE(prompt.questions.last().startsWith(u"单位名称：别人的店"_qs)) << "of another shop";
  const auto other = openPresence(accountDb());
  ASSERT_TRUE(other && other->enter({u"admin"_qs, 100001}));
  EXPECT_FALSE(restoreBackup(*backup, prompt));
  EXPECT_TRUE(prompt.lastNotice().contains(u"admin"_qs));
  other->leave();
  EXPECT_FALSE(restoreBackup(*backup, prompt.willSayYes(), {.keeping = {}, .writing = [](int) { return false; }}));
  EXPECT_EQ(goods(), before + 1) << "stopped: as it was";

  EXPECT_TRUE(restoreBackup(*backup, prompt.willSayYes()));
  EXPECT_EQ(goods(), before);
  EXPECT_EQ(bytesOf(file), bytes);
  EXPECT_EQ(lookupValue("select count(*) from jxc_log where log_note like '恢复数据：%'"), u"1"_qs);
  EXPECT_EQ(backupState().file, file);
  EXPECT_TRUE(proof::prove(accountDb()).isClean());
  const QStringList saved = kept().filter(u"(恢复前)"_qs);
  ASSERT_EQ(saved.size(), 2) << "the stopped one kept one as well";
  const auto was = openSqlite(path(u"kept/"_qs + saved.last()), {.readOnly = true});
  EXPECT_EQ(was->lookup("select count(*) from jxc_goods").integer(), before + 1);
}

TEST_F(Backups, ASetThatCanNoLongerBeCopiedIsReplacedOnTheOperatorsWord) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  const QString file = backUpNow(settings), live = path(u"program/data/jxc.mdb"_qs);
  {
    Transaction transaction(accountDb());
    for (int i = 0; i < 3000; ++i)
      insertRow("jxc_goods", {{"g_sn", QString::number(20000000 + i)}, {"g_bz", QString(200, u'注')}});
    transaction.commit();
  }
  dataModule().closeAccountDb();
  QByteArray spoilt = bytesOf(live);
  std::fill_n(spoilt.begin() + spoilt.size() * 3 / 4, 8192, '\0');
  writeBytes(live, spoilt);
  dataModule().installAccountDb(openSqlite(live));
  const auto backup = OpenedBackup::open(file);
  EXPECT_FALSE(restoreBackup(*backup, prompt.willSayYes().willSayNo()));
  EXPECT_TRUE(prompt.questions.last().startsWith(u"现在的帐套不能另存："_qs)) << prompt.questions.last().toStdString();
  EXPECT_GT(goods(), 3000);
  EXPECT_TRUE(restoreBackup(*backup, prompt.willSayYes().willSayYes()));
  EXPECT_LT(goods(), 3000);
  EXPECT_EQ(kept().filter(u"(恢复前)"_qs), QStringList());
  EXPECT_TRUE(proof::prove(accountDb()).isClean()) << "its storage among others";
}

}  // namespace jxc::backups_test
