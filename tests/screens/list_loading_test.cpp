#include "core/data_module.h"
#include "core/statements.h"
#include "engine/server.h"
#include "server/server_proxy.h"
#include "server/test_engine.h"
#include "ui/list_loader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace jxc::list_loading_test {

/// Lists over an account set that others can reach: a file, or a database on a server.
class ListLoading : public testing::Test {
 protected:
  ListLoading() {
    if (test::onServer()) {
      dataModule().installAccountDb(test::openFresh(test::Story::Long));
    } else {
      test::openFreshFile()->backupTo(file());
      dataModule().installAccountDb(openSqlite(file()));
    }
    Transaction filling(accountDb());
    for (int i = 0; i < goods; ++i)
      execSql("insert into jxc_goods (g_sn,g_name) values (?,?)", QString::number(20000000 + i), u"镜架%1"_qs.arg(i));
    filling.commit();
  }
  ~ListLoading() override { dataModule().closeAccountDb(); }

  QString file() const { return folder_.filePath(QStringLiteral("jxc.mdb")); }
  static Sql goodsLike(const QString& name) {
    return {"select g_sn from jxc_goods where g_name like ? order by g_sn", name};
  }
  /// Numbers that no machine counts to.
  static Sql endless() {
    return {"select count(*) as n from jxc_goods a,jxc_goods b,jxc_goods c,jxc_goods d,jxc_goods e"};
  }

  /// A list that keeps what it was told.
  struct List {
    ui::ListLoader loader{nullptr};
    std::vector<int> told;  // rows at each arrival
    bool complete = false;
    QString failure;
    void load(Question query) {
      complete = false;
      failure.clear();
      loader.load(
          std::move(query),
          [this](const RowSet& rows, bool isAll) {
            told.push_back(rows.rowCount());
            complete = isAll;
          },
          [this](std::exception_ptr thrown) {
            try {
              std::rethrow_exception(thrown);
            } catch (const DbError& error) {
              failure = error.message();
            }
          });
    }
    int rowsOf(Question query) {
      load(std::move(query));
      loader.waitFor(10000);
      return complete && !told.empty() ? told.back() : -1;
    }
  };

  static constexpr int goods = 200;

 private:
  QTemporaryDir folder_;
};

TEST_F(ListLoading, FirstRowsThenAllAndOnlyOfTheLastQuestion) {
  List list;
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架%"))), goods);
  EXPECT_EQ(list.told, (std::vector{80, goods}));
  list.told.clear();
  list.load(endless());
  list.load(goodsLike(QStringLiteral("镜架1%")));
  list.load(goodsLike(QStringLiteral("镜架19_")));
  EXPECT_TRUE(list.loader.waitFor(10000));
  EXPECT_EQ(list.told, std::vector{10});
  list.load(Sql("select nothing from jxc_goods"));
  list.loader.waitFor(10000);
  EXPECT_NE(list.failure, QString());
  // Rows of a command that is not over are seen by its own connection only, so that answers at once.
  {
    Transaction change(accountDb());
    execSql("delete from jxc_goods where g_name like '镜架1%'");
    list.load(goodsLike(QStringLiteral("镜架1%")));
    EXPECT_TRUE(list.complete);
    EXPECT_EQ(list.told.back(), 0);
  }
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架1%"))), 111);
}

TEST_F(ListLoading, ALongQuestionKeepsNoOtherListWaiting) {
  std::atomic<bool> works = false;
  const Computation computation = [&](EnquiryReader& reader) -> RowSet {
    const auto ended = qScopeGuard([&] { works = false; });
    for (works = true;;)
      reader.progress(50);
  };
  for (const Question& question : {Question(endless()), Question(computation)}) {
    List report, list;
    report.load(question);
    EXPECT_FALSE(report.loader.waitFor(50));
    EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架7"))), 1);
    QElapsedTimer time;
    time.start();
    report.loader.cancel();
    EXPECT_LT(time.elapsed(), 100);
    EXPECT_EQ(report.rowsOf(goodsLike(QStringLiteral("镜架8"))), 1);
    EXPECT_EQ(report.told.size(), 1U);
    while (works && time.elapsed() < 200)
      std::this_thread::yield();
    EXPECT_FALSE(works);
  }
}

TEST_F(ListLoading, AnotherAccountSetIsReadByAnotherReader) {
  List list, report;
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架%"))), goods);
  report.load(endless());
  EXPECT_FALSE(report.loader.waitFor(50));
  // In memory there is no second connection: the same answer comes at once.
  dataModule().installAccountDb(test::openFreshFile());
  EXPECT_TRUE(report.loader.waitFor(1000)) << "nobody answers any more, and nobody waits";
  EXPECT_EQ(report.told.size() + static_cast<std::size_t>(report.failure.size()), 0U);
  list.load(goodsLike(QStringLiteral("镜架%")));
  EXPECT_TRUE(list.complete);
  EXPECT_EQ(list.told.back(), 0);
}

// A computation asks many times, and another station posts in between; then the account set is closed over it.
TEST_F(ListLoading, ASummaryTellsOfOneMomentAndEndsWithItsAccountSet) {
  std::atomic<int> turns = 0;
  std::atomic<bool> goOn = true;
  const Computation summary = [&](EnquiryReader& reader) {
    const auto all = [&] { return reader.select(goodsLike(QStringLiteral("镜架%"))); };
    const int before = all().rowCount();
    for (; goOn; ++turns) {
      reader.progress(50);
      EXPECT_EQ(all().rowCount(), before);
    }
    return all();
  };
  const auto runs = [&] {
    for (const int now = turns; turns < now + 3;)
      std::this_thread::yield();
  };
  List list;
  list.load(summary);
  runs();
  execSql("delete from jxc_goods where g_name='镜架7'");
  runs();
  goOn = false;
  EXPECT_TRUE(list.loader.waitFor(10000));
  EXPECT_EQ(list.told, std::vector{goods});
  EXPECT_EQ(list.rowsOf(summary), goods - 1);

  goOn = true;
  list.told.clear();
  list.load(summary);
  runs();
  dataModule().closeAccountDb();  // waits for whoever reads
  const int last = turns;
  EXPECT_TRUE(list.loader.waitFor(1000));
  EXPECT_EQ(turns, last);
  EXPECT_TRUE(list.told.empty() && list.failure.isEmpty());
}

TEST_F(ListLoading, AFileThatWasMovedAwayIsSaidAndReadAgainWhenItIsBack) {
  if (test::onServer()) GTEST_SKIP() << "a server has no file here";
  List list;
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架%"))), goods);
  ASSERT_TRUE(QFile::rename(file(), file() + QStringLiteral("x")));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架%"))), -1);
    EXPECT_TRUE(list.failure.contains(QStringLiteral("移走"))) << list.failure.toStdString();
  }
  ASSERT_TRUE(QFile::rename(file() + QStringLiteral("x"), file()));
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架%"))), goods);
}

TEST_F(ListLoading, EachKeyOfASearchIsOneRoundTripAndNoNewConnection) {
  if (!test::onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
  test::ServerProxy proxy(test::portOf(test::copyAddress()), std::chrono::milliseconds(1));
  dataModule().installAccountDb(openPostgres(QString::fromStdString(proxy.address(test::copyAddress()))));
  List list;
  const auto begun = proxy.connections();
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架11%"))), 11);
  EXPECT_EQ(proxy.connections(), begun + 1);
  for (const char16_t* typed : {u"镜架5%", u"镜架55%", u"镜架19_", u"无%"}) {
    const auto trips = proxy.roundTrips();
    EXPECT_GE(list.rowsOf(goodsLike(QString::fromUtf16(typed))), 0);
    EXPECT_EQ(proxy.roundTrips(), trips + 1);
  }
  EXPECT_EQ(proxy.connections(), begun + 1);
  // A server that was restarted meanwhile costs the list a new connection and nothing else.
  test::cutConnections();
  EXPECT_EQ(list.rowsOf(goodsLike(QStringLiteral("镜架11%"))), 11);
  EXPECT_EQ(proxy.connections(), begun + 2);
}

}  // namespace jxc::list_loading_test
