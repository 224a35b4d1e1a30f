// The power fails at random moments of a closing, its commit and the shrinking of the file behind it: the books are
// those from before or those from after, never anything between. JXC_CUTS=n cuts so often instead.
#include "core/data_module.h"
#include "engine/bulk.h"
#include "harness/power_cut.h"
#include "harness/whole_books.h"
#include "maintenance/period_closing.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>

namespace jxc::closing_cut_test {

class ClosingCut : public test::ShopWalk {};

TEST_F(ClosingCut, LeavesTheBooksAsBeforeOrAsAfter) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  const char* const asked = std::getenv("JXC_CUTS");
  const std::size_t wanted = asked ? static_cast<std::size_t>(std::atoi(asked)) : 200;
  followInParts(true);
  live(1, 150);
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"jxc.mdb"_qs);
  accountDb().backupTo(file);
  const test::Books before = test::readBooks();
  test::Books after;
  std::vector<test::PowerCut::Disk> cuts;
  std::mt19937 random(7);
  {
    test::PowerCut power(folder.path());
    const auto closeOnce = [&](const QString& place, std::size_t every, std::size_t& operations) {
      dataModule().installAccountDb(openSqlite(place));
      power.onOperation([&, every] {
        if (operations++ % every == 0 && every != 1) cuts.push_back(power.cut(random));
      });
      EXPECT_TRUE(closing::closeBooks({u"2021-04-28"_qs}, {}));
      giveRoomBack(accountDb(), [] { return true; });
      after = test::readBooks();
      dataModule().closeAccountDb();
    };
    QFile::copy(file, folder.filePath(u"rehearsal.mdb"_qs));
    std::size_t all = 0, operations = 0;
    closeOnce(folder.filePath(u"rehearsal.mdb"_qs), 1, all);
    QFile::remove(folder.filePath(u"rehearsal.mdb"_qs));
    closeOnce(file, std::max<std::size_t>(2, all / wanted), operations);
  }
  ASSERT_GE(cuts.size(), wanted / 2);
  std::size_t asBefore = 0;
  for (const test::PowerCut::Disk& disk : cuts) {
    const QTemporaryDir laid;
    test::lay(disk, laid.path());
    dataModule().installAccountDb(openSqlite(laid.filePath(u"jxc.mdb"_qs)));
    const test::Books found = test::readBooks();
    dataModule().closeAccountDb();
    asBefore += found == before;
    ASSERT_TRUE(found == before || found == after) << "cut " << &disk - cuts.data();
  }
  EXPECT_GT(asBefore, 0U);
  EXPECT_LT(asBefore, cuts.size());
}

/// The disk takes no more at one moment after the other of the whole closing.
TEST_F(ClosingCut, OnAFullDiskTakesAllBack) {
  if (test::onServer()) GTEST_SKIP() << "a file's own";
  live(1, 150);
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"jxc.mdb"_qs);
  accountDb().backupTo(file);
  const test::Books before = test::readBooks();
  rlimit usual{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  int failed = 0;
  for (rlim_t room = 4096; room < 4000000; room += room / 2 + 20000) {
    dataModule().installAccountDb(openSqlite(file));
    const rlimit full{.rlim_cur = room, .rlim_max = usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    bool isClosed = false;
    try {
      isClosed = closing::closeBooks({u"2021-04-28"_qs}, {}).has_value();
    } catch (const DbError& error) {
      ++failed;
      EXPECT_FALSE(error.message().isEmpty());
    }
    setrlimit(RLIMIT_FSIZE, &usual);
    if (isClosed) break;
    EXPECT_EQ(test::readBooks(), before) << "with room for " << room;
    dataModule().closeAccountDb();
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_GT(failed, 3);
  dataModule().closeAccountDb();
}

}  // namespace jxc::closing_cut_test
