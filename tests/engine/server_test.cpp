// What only a server has: levels that travel together, posted statements, stations side by side, connections that
// break.
#include "engine/server.h"

#include "engine/posting.h"
#include "engine/transaction.h"
#include "engine/waiting.h"
#include "plan_book.h"
#include "server/server_proxy.h"
#include "server/test_engine.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <vector>

namespace jxc::server_test {

using Kind = DbError::Kind;
using test::failureOf;
using test::number;

struct ServerTest : testing::Test {
  std::unique_ptr<Database> db, other;

  void SetUp() override {
    if (!test::onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
    db = test::openFresh(test::Story::Long);
    db->execute(
        "create table [till] ([id] Counter,[a] nvarchar(8) null,[n] numeric(28,6) null,"
        "Constraint StatePrimary Primary key ([id]))");
    other = test::openAgain();
  }
  double rows() { return number(*other, "select count(*) from till"); }
  void add(const char* text) { postStatement(*db, "insert into till (a,n) values (?,1)", std::array{Value(text)}); }
  void post(const char* sql) { postStatement(*db, sql, {}); }
};

TEST_F(ServerTest, PostedStatementsTravelWithTheNextQuestion) {
  {
    Transaction t(*db);
    add("1");
    add("2");
    post("update till set n=n+4");
    EXPECT_EQ(db->lastCounter(), 2);
    EXPECT_EQ(number(*db, "select sum(n) from till"), 10);
    EXPECT_EQ(rows(), 0) << "nobody sees what is not done";
    t.commit();
  }
  EXPECT_EQ(rows(), 2);
  // Nobody has waited for it: what it says of its failure comes with the next answer.
  Transaction t(*db);
  EXPECT_NO_THROW(post("update till set n=1/(n-5)"));
  EXPECT_EQ(failureOf([&] { number(*db, "select count(*) from till"); }).kind(), Kind::Arithmetic);
}

TEST_F(ServerTest, WhatIsSentAheadSeesWhatStoodThereWhenItWasSent) {
  const auto count = [&] { return Ahead(*db, "select count(*) from till", {}); };
  std::optional<Ahead> late;
  {
    Transaction t(*db);
    const Ahead before = count();
    add("1");
    add("2");
    const Ahead changed(*db, "update till set n=n+4 where id<=?", std::array{Value(1.5)});
    const Ahead between = count();
    post("delete from till where id=1");
    const Ahead after = count();
    EXPECT_EQ(after.number(), 1);
    EXPECT_EQ(between.number(), 2);
    EXPECT_EQ(before.number(), 0);
    EXPECT_EQ(changed.changed(), 1);
    EXPECT_EQ(number(*db, "select sum(n) from till"), 1);
    late = count();
    t.commit();
  }
  EXPECT_EQ(late->number(), 1) << "it came with the commit";

  // Outside a transaction questions travel together too, before anything that this station does next.
  const std::int64_t trips = db->posting()->roundTrips();
  {
    const Ahead first = count();
    const Ahead second(*db, "select n from till", {});
    EXPECT_EQ(first.number(), 1);
    EXPECT_EQ(second.number(), 1);
  }
  EXPECT_EQ(db->posting()->roundTrips(), trips + 1);
  const Ahead before = count();
  const Ahead wrong(*db, "select 1/(n-1) from till", {});
  EXPECT_EQ(failureOf([&] { before.number(); }).kind(), Kind::Arithmetic) << "whoever looks hears of it";
  EXPECT_EQ(before.number(), 1);
  const Ahead old = count();
  db->execute("delete from till");
  EXPECT_EQ(old.number(), 1);
}

TEST_F(ServerTest, WholeNumbersAreFoundByTheirIndexWhateverTheyAreComparedWith) {
  for (const char* each : {"1", "2", "3"})
    add(each);
  const auto ids = [&](const char* condition, const Value& value) {
    const RowSet rows =
        db->select(std::string("select id from till where ") + condition + " order by id", std::array{value});
    QString all;
    for (int row = 0; row < rows.rowCount(); ++row)
      all += rows.text(row, 0);
    return all;
  };
  const auto all = [&](const Value& value) {
    QStringList found;
    for (const char* condition : {"id=?", "id<>?", "id<?", "id<=?", "id>?", "id>=?", "?<id", "not (id=?)"})
      found << ids(condition, value);
    return found.join(u' ');
  };
  EXPECT_EQ(all(Value(2)), QStringLiteral("2 13 1 12 3 23 3 13"));
  EXPECT_EQ(all(Value(2.5)), QStringLiteral(" 123 12 12 3 3 3 123"));
  EXPECT_EQ(all(Value(1e25)), QStringLiteral(" 123 123 123    123"));
  EXPECT_EQ(all(Value(-1e25)), QStringLiteral(" 123   123 123 123 123"));
  EXPECT_EQ(all(Value()), QStringLiteral("       "));
}

TEST_F(ServerTest, AFailureOfAPostedStatementComesOutInItsTransaction) {
  const DbError failure = failureOf([&] {
    Transaction t(*db);
    add("1");
    post("update till set n=1/(n-1)");
    add("2");
    t.commit();
  });
  EXPECT_EQ(failure.kind(), Kind::Arithmetic);
  EXPECT_EQ(failure.statement(), "update till set n=1/(n-1)");
  EXPECT_FALSE(db->inTransaction());
  EXPECT_EQ(rows(), 0);
  add("3");
  EXPECT_EQ(rows(), 1);
}

TEST_F(ServerTest, ALevelOfItsOwnMayFail) {
  Transaction outer(*db);
  add("1");
  {
    Transaction inner(*db);
    EXPECT_EQ(failureOf([&] { db->execute("update till set a='123456789'+a"); }).kind(), Kind::TooWide);
    EXPECT_THROW(db->select("select * from till"), DbError) << "what failed can only be taken back";
  }
  EXPECT_EQ(number(*db, "select count(*) from till"), 1);
  outer.commit();
  EXPECT_EQ(rows(), 1);
}

TEST_F(ServerTest, AnInnerLevelThatFailsBehindItsEndTakesTheWholeCommandWithIt) {
  EXPECT_THROW(
      {
        Transaction outer(*db);
        add("1");
        {
          Transaction inner(*db);
          add("2");
          post("update till set n=1/(n-1)");
          inner.commit();
        }
        {
          Transaction next(*db);
          add("3");
        }
        outer.commit();
      },
      DbError)
      << "the second row was told as done";
  EXPECT_EQ(rows(), 0);
}

TEST_F(ServerTest, OneStationWritesAtATimeAndTheOtherIsToldThatItWaits) {
  int told = -1;
  auto first = std::make_optional<Transaction>(*db);
  add("1");
  EXPECT_EQ(number(*db, "select count(*) from till"), 1);
  auto waiting = std::async(std::launch::async, [&] {
    setWaitListener([&](int seconds) { told = std::max(told, seconds); });
    Transaction second(*other);
    const double seen = number(*other, "select count(*) from till");
    other->execute("insert into till (a) values ('2')");
    second.commit();
    return seen;
  });
  EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(1300)), std::future_status::timeout);
  first->commit();
  first.reset();
  EXPECT_EQ(waiting.get(), 1) << "it goes on with what the first one left";
  setWaitListener({});
  EXPECT_GE(told, 1);
  EXPECT_EQ(rows(), 2);
}

TEST_F(ServerTest, ACommandIsWholeOrNotThereWhenTheConnectionBreaks) {
  // Between two commands nobody notices.
  test::cutConnections();
  EXPECT_EQ(rows(), 0);
  add("1");
  EXPECT_EQ(rows(), 1);
  // In the middle the command is over, and the operator is told that nothing of it was kept.
  const DbError failure = failureOf([&] {
    Transaction t(*db);
    db->execute("insert into till (a) values ('2')");
    test::cutConnections();
    db->execute("insert into till (a) values ('3')");
    t.commit();
  });
  EXPECT_TRUE(failure.message().contains(QStringLiteral("没有保存"))) << failure.what();
  EXPECT_EQ(rows(), 1);
  add("4");
  EXPECT_EQ(rows(), 2);
}

TEST_F(ServerTest, TheEndOfACommandThatNobodyAnsweredIsFoundOut) {
  using Cut = test::ServerProxy::Cut;
  test::ServerProxy proxy(test::portOf(test::copyAddress()));
  const auto station = openPostgres(QString::fromStdString(proxy.address(test::copyAddress())));
  const auto command = [&](double& before) {
    before = rows();
    Transaction t(*station);
    station->execute("insert into till (a) values ('1')");
    t.commit();
  };
  double before = 0;
  for (int i = 0; i < 2; ++i) {
    proxy.cut(Cut::BeforeItsAnswer);
    EXPECT_NO_THROW(command(before));
    EXPECT_EQ(rows(), before + 1) << "told as done, so it is there, once";
    proxy.cut(Cut::BeforeCommit);
    try {
      command(before);
      ADD_FAILURE() << "told as done";
    } catch (const ConnectionLost& failure) {
      EXPECT_FALSE(failure.isUnknown()) << failure.what();
    }
    EXPECT_EQ(rows(), before) << "told as not saved";
    proxy.cut(Cut::BeforeItsAnswer);
    EXPECT_EQ(station->execute("insert into till (a) values ('2')"), 1);
    EXPECT_EQ(rows(), before + 1);
  }
  EXPECT_EQ(number(*other, "select count(*) from till where a='2'"), 2);
  // While the server takes a command back, in the middle of its commit.
  test::cutAtCommit("till");
  before = rows();
  try {
    command(before);
    ADD_FAILURE() << "told as done";
  } catch (const ConnectionLost& failure) {
    EXPECT_FALSE(failure.isUnknown()) << failure.what();
  }
  EXPECT_EQ(rows(), before);
}

TEST_F(ServerTest, WhoWaitsForAServerThatIsAwayIsToldSo) {
  test::ServerProxy proxy(test::portOf(test::copyAddress()));
  const auto station = openPostgres(QString::fromStdString(proxy.address(test::copyAddress())));
  std::vector<int> told;
  setWaitListener([&](int seconds) { told.push_back(seconds); });
  proxy.setAway(true);
  auto back = std::async(std::launch::async, [&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(1600));
    proxy.setAway(false);
  });
  EXPECT_EQ(number(*station, "select count(*) from till"), 0);
  setWaitListener({});
  ASSERT_GE(told.size(), 2u);
  EXPECT_EQ(told.front(), 1);
  EXPECT_EQ(told.back(), 0) << "it is over";
}

/// Lets somebody look at the clock: a call that ends with a failure of this kind, and how long it took.
template <class Call>
double secondsUntilLost(Call call) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THROW(call(), DbError);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST_F(ServerTest, AServerThatKeepsTheConnectionAndSaysNothingIsGivenUpAndTheTruthIsFoundOut) {
  const LongWork shortly(std::chrono::seconds(1));
  test::ServerProxy proxy(test::portOf(test::copyAddress()));
  const auto station = openPostgres(QString::fromStdString(proxy.address(test::copyAddress())));
  EXPECT_EQ(number(*station, "select count(*) from till"), 0);
  bool isTold = false;
  {
    Transaction t(*station);
    station->execute("insert into till (a) values ('1')");
    proxy.setSilent(true);
    auto back = std::async(std::launch::async, [&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(6500));
      proxy.setSilent(false);
    });
    try {
      t.commit();
      isTold = true;
    } catch (const ConnectionLost& lost) {
      EXPECT_FALSE(lost.isUnknown()) << lost.what();
    }
  }
  EXPECT_EQ(rows(), isTold ? 1 : 0);
  EXPECT_EQ(number(*station, "select count(*) from till"), rows()) << "and work goes on";
  {
    const LongWork byNature;  // is not cut by the patience of others
    proxy.setSilent(true);
    auto back = std::async(std::launch::async, [&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(7000));
      proxy.setSilent(false);
    });
    EXPECT_EQ(number(*station, "select count(*) from till"), isTold ? 1 : 0);
  }
  proxy.setSilent(true);
  EXPECT_LT(secondsUntilLost([&] { number(*station, "select count(*) from till"); }), 9);
  proxy.setSilent(false);
  EXPECT_EQ(number(*station, "select count(*) from till"), rows());
}

TEST_F(ServerTest, AStoppedProcessOfTheServerHoldsNobodyForEver) {
  Transaction stopped(*db);
  db->execute("insert into till (a) values ('1')");
  EXPECT_EQ(number(*db, "select count(*) from till"), 1);
  const int process = test::writersProcess();
  ASSERT_GT(process, 0);
  if (::kill(process, SIGSTOP) != 0) GTEST_SKIP() << "the server belongs to another user";
  std::vector<std::future<double>> waits;
  for (int i = 0; i < 7; ++i)
    waits.push_back(std::async(std::launch::async, [] {
      const LongWork shortly(std::chrono::seconds(2));
      const auto station = openPostgres(QString::fromStdString(test::copyAddress()));
      return secondsUntilLost([&] { station->execute("insert into till (a) values ('2')"); });
    }));
  for (auto& wait : waits)
    EXPECT_LT(wait.get(), 9);
  setWaitStopper([] { return true; });  // Esc, from the tenth second on
  const double held = secondsUntilLost([&] { db->execute("insert into till (a) values ('3')"), db->lastCounter(); });
  setWaitStopper({});
  ::kill(process, SIGCONT);
  EXPECT_GT(held, 9);
  EXPECT_LT(held, 20);
  EXPECT_THROW(stopped.commit(), ConnectionLost);
  add("4");
  EXPECT_EQ(rows(), 1);
}

TEST_F(ServerTest, TheRestOfACommandNeverBeginsOnANewConnection) {
  {
    Transaction outer(*db);
    db->execute("insert into till (a) values ('1')");
    EXPECT_THROW(db->execute("insert into nowhere (a) values ('1')"), DbError);
  }
  Transaction outer(*db);
  db->execute("insert into till (a) values ('1')");
  test::cutConnections();
  EXPECT_THROW(db->execute("insert into till (a) values ('2')"), ConnectionLost);
  EXPECT_THROW(db->select("select * from till"), ConnectionLost);
  EXPECT_THROW(postStatement(*db, "insert into till (a) values ('3')", {}), ConnectionLost);
  EXPECT_THROW(Transaction inner(*db), ConnectionLost);
  EXPECT_THROW(outer.commit(), ConnectionLost);
  EXPECT_EQ(rows(), 0);
}

TEST_F(ServerTest, AnotherStationChangesTheTables) {
  EXPECT_EQ(db->select("select * from till").columnCount(), 3);
  other->execute("alter table till add b int null");
  EXPECT_EQ(number(*db, "select count(b) from till"), 0);
  EXPECT_EQ(db->select("select * from till").columnCount(), 4);
  other->execute("drop table till");
  EXPECT_EQ(failureOf([&] { db->select("select * from till"); }).kind(), Kind::UnknownName);
}

TEST_F(ServerTest, AReaderSeesOneMomentAndWritesNothing) {
  const auto reader = db->openReader();
  ASSERT_TRUE(reader);
  add("1");
  Transaction look(*reader);
  EXPECT_EQ(number(*reader, "select count(*) from till"), 1);
  add("2");
  EXPECT_EQ(number(*reader, "select count(*) from till"), 1);
  EXPECT_THROW(reader->execute("delete from till"), DbError);
}

}  // namespace jxc::server_test
