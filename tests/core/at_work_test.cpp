#include "core/at_work.h"

#include "core/data_module.h"
#include "core/login.h"
#include "core/schema/schema.h"
#include "engine/presence.h"
#include "harness/account_set_fixture.h"
#include "server/test_engine.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

namespace jxc::test {

/// The set in use is one that others can open too, and another station looks at it.
class AtWork : public AccountSetFixture {
 protected:
  AtWork() {
    std::unique_ptr<Database> set = openFresh(Story::Long);
    if (!onServer()) {
      set->backupTo(folder_.filePath(u"jxc.mdb"_qs));
      set = openSqlite(folder_.filePath(u"jxc.mdb"_qs));
    }
    other = openPresence(*set);
    before_ = dataModule().installAccountDb(std::move(set));
    becomeOperator(u"小王"_qs, u"100002"_qs, u"100001"_qs);
  }
  ~AtWork() override {
    leaveWork();
    dataModule().installAccountDb(std::move(before_));
  }
  QTemporaryDir folder_;
  std::unique_ptr<Presence> other;

 private:
  std::unique_ptr<Database> before_;
};

TEST_F(AtWork, WhoWantsTheSetForHimselfIsToldWhoIsThere) {
  ASSERT_TRUE(other);
  EXPECT_EQ(comeToWork(), std::nullopt);
  EXPECT_EQ(othersAtWork(), QStringList());
  EXPECT_TRUE(takeForOneself(AloneFor::Reset, prompt)) << "a program does not stand in its own way";
  ASSERT_TRUE(other->enter({u"小王"_qs, 100002}));
  EXPECT_EQ(othersAtWork(), QStringList(u"小王"_qs));
  EXPECT_FALSE(takeForOneself(AloneFor::Closing, prompt));
  EXPECT_TRUE(prompt.lastNotice().contains(u"再进行数据结算：\r\n\r\n小王"_qs)) << prompt.lastNotice().toStdString();
  EXPECT_FALSE(other->aloneBy()) << "what was refused keeps nobody out";
  other->leave();
  EXPECT_TRUE(takeForOneself(AloneFor::Closing, prompt));
}

TEST_F(AtWork, WhoComesMeanwhileWaitsAndReadsWhy) {
  ASSERT_TRUE(other);
  ASSERT_EQ(comeToWork(), std::nullopt);
  {
    const auto alone = takeForOneself(AloneFor::Restore, prompt);
    ASSERT_TRUE(alone);
    EXPECT_FALSE(other->enter({u"小李"_qs, 100003}));
    const auto by = other->aloneBy();
    ASSERT_TRUE(by);
    EXPECT_EQ(by->work, static_cast<int>(AloneFor::Restore));
    EXPECT_EQ(by->by.number, 100002);
    EXPECT_FALSE(other->takeAlone(static_cast<int>(AloneFor::Reset)));
  }
  EXPECT_FALSE(other->takeAlone(static_cast<int>(AloneFor::Reset))) << "it is at work still";
  leaveWork();
  ASSERT_TRUE(other->enter({u"小王"_qs, 100002}));
  ASSERT_TRUE(other->takeAlone(static_cast<int>(AloneFor::Reset)));
  EXPECT_EQ(comeToWork(), u"小王正在数据清理，请等它完成。"_qs);
  EXPECT_EQ(whyToWait(), comeToWork());
  // So does a newer program, before it touches the tables that are being restored or closed.
  session() = Session{};
  insertRow("jxc_backup", {{"back_path", folder_.path()}});
  execSql("update jxc_xtcs set cs_employdate='2021-07-15'");
  EXPECT_FALSE(login(u"admin"_qs, {}, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"小王正在数据清理，请等它完成。"_qs);
  EXPECT_FALSE(isSchemaCurrent(accountDb()));
  other.reset();  // it dies in the middle
  EXPECT_FALSE(login(u"admin"_qs, u"wrong"_qs, prompt));
  other = openPresence(accountDb());
  EXPECT_TRUE(other->takeAlone(static_cast<int>(AloneFor::Reset))) << "who was refused is not at work";
  other.reset();
  EXPECT_TRUE(login(u"admin"_qs, {}, prompt)) << prompt.lastNotice().toStdString();
  EXPECT_TRUE(isSchemaCurrent(accountDb()));
}

TEST_F(AtWork, AStationIsSeenAgainAfterItsConnectionBroke) {
  const auto cut = [this] {
    if (onServer())
      cutConnections();
    else
      QFile::remove(folder_.filePath(u"jxc.mdb.stations"_qs));  // a foreign hand
  };
  ASSERT_EQ(comeToWork(), std::nullopt);
  const auto isSeen = [this] { return other->others().size() == 1; };
  ASSERT_TRUE(isSeen());
  const auto staysUntil = [](const std::function<bool()>& done) {
    std::optional<QString> why;
    for (int i = 0; i < 400 && !why && !done(); ++i) {
      QThread::msleep(10);
      why = stayAtWork();
    }
    return why;
  };
  cut();
  EXPECT_FALSE(isSeen());
  EXPECT_EQ(staysUntil(isSeen), std::nullopt);
  EXPECT_TRUE(isSeen());
  // Somebody takes the set for himself while it is out of sight: it is told, and comes in again afterwards.
  cut();
  ASSERT_TRUE(other->enter({u"小王"_qs, 100002}) && other->takeAlone(static_cast<int>(AloneFor::Restore)));
  EXPECT_EQ(staysUntil([] { return false; }), u"小王正在恢复数据，请等它完成。"_qs);
  other->giveBack();
  EXPECT_EQ(staysUntil(isSeen), std::nullopt);
  EXPECT_TRUE(isSeen());
}

}  // namespace jxc::test
