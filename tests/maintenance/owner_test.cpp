// A station's own user on the server: what he may not do, and how the window does it nevertheless with the owner's
// word.
#include "core/owner.h"

#include "core/data_module.h"
#include "core/log.h"
#include "core/parameters.h"
#include "engine/server.h"
#include "harness/account_set_fixture.h"
#include "maintenance/log_viewer.h"
#include "server/test_engine.h"

#include <QCoreApplication>

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
  writeLog(QStringLiteral("登录系统"));
  execSql("update jxc_goods set g_bz='x'");
  const std::int64_t before = logged();
  for (const char* refused : {"delete from jxc_log", "update jxc_log set log_note='x'", "drop table jxc_goods",
                              "create table [own] ([a] int)", "alter table jxc_goods add own nvarchar(8) null"})
    EXPECT_THROW(accountDb().execute(refused), DbError) << refused;
  EXPECT_EQ(logged(), before);
}

TEST_F(OwnerTest, TheOwnersWordIsAskedForAndGoesWithTheCommand) {
  writeLog(QStringLiteral("登录系统"));
  EXPECT_FALSE(clearLog(asked.willSayYes()));
  EXPECT_GT(logged(), 0);
  asked.secret = QStringLiteral("any: this server trusts its machine");
  EXPECT_TRUE(clearLog(asked.willSayYes()));
  EXPECT_EQ(logged(), 1) << "that it was cleared";
  EXPECT_EQ(asked.times, 2);
  EXPECT_THROW(execSql("delete from jxc_log"), DbError) << "the connection is the station's again";
  // Tables that the owner made anew are a station's to read and write.
  asked.willSayYes().willSayNo();
  EXPECT_TRUE(restoreStandardParameters(asked));
  EXPECT_NO_THROW(execSql("update jxc_xtcs set cs_xsws=3"));
}

}  // namespace jxc::test
