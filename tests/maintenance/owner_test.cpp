// A station's own user on the server: what he may not do, and how the window does it nevertheless with the owner's
// word.
#include "core/owner.h"

#include "accounts/cash_lines.h"
#include "core/data_module.h"
#include "core/log.h"
#include "core/parameters.h"
#include "core/program_directory.h"
#include "engine/server.h"
#include "harness/account_set_fixture.h"
#include "maintenance/closing_command.h"
#include "maintenance/log_viewer.h"
#include "maintenance/reset.h"
#include "maintenance/restoring.h"
#include "server/test_engine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

namespace jxc::test {

class OwnerTest : public AccountSetFixture {
 protected:
  void SetUp() override {
    if (!onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
    before_ = dataModule().installAccountDb(openFresh(Story::Long));
    const QString address = QString::fromStdString(copyAddress());
    admitStation(address, station_, kLogTables);
    dataModule().installAccountDb(openPostgres(address, {.user = station_}));
  }
  void TearDown() override {
    if (before_) dataModule().installAccountDb(std::move(before_));
  }
  static std::int64_t logged() { return count(Sql("select * from jxc_log")); }
  /// A row is added to the log, and none can be taken out or changed.
  static void expectTheLogStays(const char* when) {
    EXPECT_NO_THROW(writeLog(QStringLiteral("登录系统"))) << when;
    const std::int64_t before = logged();
    for (const char* refused : {"delete from jxc_log", "update jxc_log set log_note='x'"})
      EXPECT_THROW(accountDb().execute(refused), DbError) << when << ": " << refused;
    EXPECT_EQ(logged(), before) << when;
  }

  struct Asked : ScriptedPrompt {
    std::optional<QString> secret;
    int times = 0;
    std::optional<QString> askSecret(const QString&) override {
      ++times;
      return secret;
    }
  } asked;

 private:
  // Users are the server's, and other processes test on it too.
  const QString station_ = QStringLiteral("till %1").arg(QCoreApplication::applicationPid());
  std::unique_ptr<Database> before_;
};

TEST_F(OwnerTest, AStationWritesRowsAndLeavesTablesAndTheLogAlone) {
  expectTheLogStays("admitted");
  execSql("update jxc_goods set g_bz='x'");
  for (const char* refused :
       {"drop table jxc_goods", "create table [own] ([a] int)", "alter table jxc_goods add own nvarchar(8) null"})
    EXPECT_THROW(accountDb().execute(refused), DbError) << refused;
}

TEST_F(OwnerTest, ALogThatWasMadeAnewIsTheirsToAddToOnly) {
  const QTemporaryDir home;
  const QString directory = programDirectory();
  setProgramDirectory(home.path());
  const auto back = qScopeGuard([&] { setProgramDirectory(directory); });
  asked.secret = QStringLiteral("any: this server trusts its machine");
  ASSERT_EQ(clearData(Clearing::All, u"?"_qs, BackupFirst::Always, {}, asked.willSayYes()), Cleared::Done)
      << asked.lastNotice().toStdString();
  expectTheLogStays("cleared");
  const QFileInfoList backups = QDir(programPath(u"backup"_qs)).entryInfoList({u"*.DAT"_qs}, QDir::Files);
  ASSERT_EQ(backups.size(), 1);
  const QString file = backups.first().filePath();
  openSqlite(file)->execute("alter table jxc_log add own nvarchar(8) null");  // does not fit into the one that is there
  loadSession();
  const auto backup = OpenedBackup::open(file);
  ASSERT_TRUE(backup && restoreBackup(*backup, asked.willSayYes())) << asked.lastNotice().toStdString();
  EXPECT_NO_THROW(openAgain()->lookup("select max(own) from jxc_log")) << "the table of the backup";
  expectTheLogStays("restored");
}

TEST_F(OwnerTest, TheOwnersWordIsAskedForAndGoesWithTheCommand) {
  writeLog(QStringLiteral("登录系统"));
  EXPECT_FALSE(clearLog(asked.willSayYes()));
  EXPECT_GT(logged(), 0);
  asked.secret = QStringLiteral("any: this server trusts its machine");
  EXPECT_TRUE(clearLog(asked.willSayYes()));
  EXPECT_EQ(logged(), 1) << "that it was cleared";
  EXPECT_EQ(asked.times, 2);
  // Closing takes the rows of the log up to its day, and all other rows with them or none.
  setClock(u"2021-05-03 15:00:00"_qs);  // another name of the file that keeps them
  ASSERT_TRUE(cash::saveLine({.movement = cash::Movement::In,
                              .date = u"2021-05-03"_qs,
                              .account = u"现金"_qs,
                              .amount = 3,
                              .employee = u"默认员工"_qs},
                             asked));
  const closing::Request day{.day = u"2021-05-03"_qs};
  const auto today = [&day] { return closing::Command{day, false, closing::whatGoes(day)}; };
  asked.secret.reset();
  EXPECT_FALSE(closing::closePeriod(today(), asked.willSayYes().willSayYes().willSayYes()));
  EXPECT_EQ(logged(), 1);
  asked.secret = u"any"_qs;
  EXPECT_TRUE(closing::closePeriod(today(), asked.willSayYes().willSayYes().willSayYes()));
  EXPECT_TRUE(exists("select id from jxc_log where log_note like '数据结算，取出日志%'"));
  EXPECT_EQ(asked.times, 4);
  // Tables that the owner made anew are a station's to read and write.
  asked.willSayYes().willSayNo();
  EXPECT_TRUE(restoreStandardParameters(asked));
  EXPECT_NO_THROW(execSql("update jxc_xtcs set cs_xsws=3"));
  EXPECT_THROW(execSql("delete from jxc_log"), DbError) << "the connection is the station's again";
}

}  // namespace jxc::test
