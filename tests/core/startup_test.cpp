#include "core/startup.h"

#include "core/data_module.h"
#include "core/statements.h"
#include "harness/files.h"
#include "harness/qt_printers.h"
#include "platform/machine.h"
#include "platform/single_instance.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace jxc::test {

class StartupStory : public ::testing::Test {
 protected:
  StartupStory() : before_(programDirectory()) { setProgramDirectory(home()); }
  ~StartupStory() override {
    dataModule().closeAccountDb();
    dataModule().closeCatalogue();
    setProgramDirectory(before_);
  }
  QString home() const { return directory_.path(); }
  static QByteArray content(const char* relative) { return bytesOf(programPath(QLatin1String(relative))); }
  static void put(const char* relative, const QByteArray& bytes) {
    writeBytes(programPath(QLatin1String(relative)), bytes);
  }
  static FriendlyFailure failureOfOpening() {
    try {
      dataModule().openAccountDb(u"jxc.mdb"_qs);
    } catch (const std::exception& failure) {
      return friendlyFailure(failure);
    }
    return {u"it opened"_qs};
  }

 private:
  QString before_;
  QTemporaryDir directory_;
};

TEST_F(StartupStory, AFreshMachineGetsAWorkingSetOnce) {
  for (const char* folder : {"data", "report", "Layout", "picture", "skinfiles"}) {
    EXPECT_TRUE(QDir(home()).exists(QLatin1String(folder))) << folder;
  }
  put("data/jxc.mdb.new", "left by a start that was cut off");
  EXPECT_TRUE(createFirstAccountSet());
  EXPECT_EQ(QDir(programPath("data")).entryList(QDir::Files, QDir::Name), QStringList({"codeinfo.dll", "jxc.mdb"}));
  EXPECT_FALSE(QFile::permissions(programPath("data/jxc.mdb")) & (QFile::ReadGroup | QFile::ReadOther))
      << "passwords stand in it";
  dataModule().openAccountDb(u"jxc.mdb"_qs);
  EXPECT_EQ(lookupValue("select a_name from jxc_admin"), u"admin"_qs);
  execSql("update jxc_company set c_jc='明视'");
  EXPECT_FALSE(createFirstAccountSet());
  dataModule().openAccountDb(u"jxc.mdb"_qs);
  EXPECT_EQ(lookupValue("select c_jc from jxc_company"), u"明视"_qs);
  dataModule().openCatalogue();
  EXPECT_EQ(catalogueDb().lookup("select zt_dbname from jxc_xtzt where zt_default<>0").text(), u"jxc.mdb"_qs);
}

TEST_F(StartupStory, DamagedOrVanishedFilesAreToldAndNeverOverwritten) {
  const QString told = u"数据库格式不可识别！\r\n\r\n系统将退出！"_qs;
  for (const QByteArray& damaged : {QByteArray(), QByteArray("\0\1\0\0Standard Jet DB", 19), QByteArray(9000, 'x')}) {
    put("data/jxc.mdb", damaged);
    EXPECT_FALSE(createFirstAccountSet());
    EXPECT_EQ(failureOfOpening().text, told);
    EXPECT_TRUE(failureOfOpening().fatal);
    EXPECT_EQ(content("data/jxc.mdb"), damaged);
  }
  QFile::remove(programPath("data/jxc.mdb"));
  put("data/晴川进销存21_05_03_14_30_00.DAT", "a backup");
  EXPECT_FALSE(createFirstAccountSet());
  EXPECT_EQ(failureOfOpening().text, told);
  EXPECT_FALSE(QFile::exists(programPath("data/jxc.mdb")));
}

TEST_F(StartupStory, ALostCatalogueListsTheSetsThatAreThere) {
  ASSERT_TRUE(createFirstAccountSet());
  QFile::remove(programPath("data/codeinfo.dll"));
  put("data/jxc_100002.mdb", "a further set");
  put("data/jxc_old.mdb", "somebody's copy");
  ensureCatalogue();
  ensureCatalogue();
  dataModule().openCatalogue();
  EXPECT_EQ(catalogueDb().lookup("select count(*) from jxc_xtzt").number(), 2);
  EXPECT_EQ(catalogueDb().lookup("select max(zt_dbname) from jxc_xtzt").text(), u"jxc_100002.mdb"_qs);
}

TEST_F(StartupStory, TheProgramDirectoryIsTheOneGivenElseTheOneBesideTheProgram) {
  EXPECT_EQ(findProgramDirectory({"jxc", "--home", home()}, "/usr/bin"), home());
  EXPECT_EQ(findProgramDirectory({"jxc", "--home=" + home() + "/"}, "/usr/bin"), home());
  EXPECT_EQ(findProgramDirectory({"jxc"}, home()), home());
  QDir(home()).mkpath("opt/bin");
  EXPECT_EQ(findProgramDirectory({"jxc"}, home() + "/opt/bin"), userDataDirectory());
  EXPECT_EQ(findProgramDirectory({"jxc"}, home() + "/opt"), home() + "/opt");
}

TEST_F(StartupStory, WhatIsSuppliedIsFoundBesideTheSourcesToo) {
  const QString sources = home() + u"/sources"_qs;
  ASSERT_TRUE(QDir().mkpath(sources));
  const auto write = [](const QString& name) { EXPECT_TRUE(QFile(name).open(QIODevice::WriteOnly)); };
  write(sources + u"/readme.htm"_qs);
  qputenv("JXC_SHARE", sources.toUtf8());
  EXPECT_EQ(suppliedPath(u"readme.htm"_qs), sources + u"/readme.htm"_qs);
  write(programPath(u"readme.htm"_qs));
  EXPECT_EQ(suppliedPath(u"readme.htm"_qs), programPath(u"readme.htm"_qs)) << "the shop's own";
  qunsetenv("JXC_SHARE");
}

TEST_F(StartupStory, OneProgramASetUntilItDies) {
  const QString file = home() + "/jxc.mdb";
  const SingleInstance elsewhere(home() + "/other.mdb");
  EXPECT_TRUE(elsewhere.isFirst());
  {
    SingleInstance first(file);
    EXPECT_TRUE(first.isFirst());
    const QStringList locks =
        QDir(QFileInfo(home()).path()).entryList({u".qcqcjxc-*.lock"_qs}, QDir::Files | QDir::Hidden);
    EXPECT_GE(locks.size(), 2) << "beside the folder of the set, where nobody clears away what looks old";
    const SingleInstance second(home() + "/data/../jxc.mdb");
    EXPECT_FALSE(second.isFirst()) << "the same set by another name";
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    QCoreApplication loop(argc, argv);
    int calls = 0;
    first.onSecondStart([&] {
      ++calls;
      loop.quit();
    });
    EXPECT_TRUE(second.callFirst());
    QTimer::singleShot(5000, &loop, [&] { loop.quit(); });
    QCoreApplication::exec();
    EXPECT_EQ(calls, 1) << "the first comes to the front";
  }
  // A process that dies without a word takes its lock with it.
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const SingleInstance held(file);
    const char sign = held.isFirst() ? '1' : '0';
    if (write(ready[1], &sign, 1) == 1) pause();
    _exit(1);
  }
  char sign = 0;
  ASSERT_EQ(read(ready[0], &sign, 1), 1);
  EXPECT_EQ(sign, '1');
  EXPECT_FALSE(SingleInstance(file).isFirst());
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  close(ready[0]);
  close(ready[1]);
  EXPECT_TRUE(SingleInstance(file).isFirst());
}

TEST_F(StartupStory, FailuresAreToldInLoweredLetters) {
  const FriendlyFailure usual = friendlyFailure(std::runtime_error("列 J_SN Ünbekannt"));
  EXPECT_EQ(usual.text, u"列 j_sn Ünbekannt"_qs) << "ASCII letters only";
  EXPECT_FALSE(usual.fatal);
  EXPECT_TRUE(friendlyFailure(std::runtime_error("disk full: DATA/JXC.MDB")).fatal);
  EXPECT_FALSE(friendlyFailure(std::runtime_error("data/jxc_100002.mdb")).fatal);
  EXPECT_FALSE(friendlyFailure(std::runtime_error("data/jxc.mdb-shm")).fatal) << "can be mended, so it is named";
}

}  // namespace jxc::test
