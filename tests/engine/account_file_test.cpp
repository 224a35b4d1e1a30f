#include "engine/snapshot.h"
#include "engine/transaction.h"
#include "engine/waiting.h"
#include "harness/files.h"
#include "plan_book.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace jxc::account_file_test {

using Kind = DbError::Kind;
using test::failureOf;
using test::number;

constexpr auto ownerOnly =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser;

struct AccountFile : testing::Test {
  QTemporaryDir directory;
  std::shared_ptr<test::PlanBook> book = std::make_shared<test::PlanBook>();

  QString path(const char* name) const { return directory.filePath(QString::fromUtf8(name)); }
  /// A set with 200 goods, closed again.
  QString makeSet(const char* name) {
    const auto db = test::openBook(book, path(name));
    Transaction transaction(*db);
    db->execute("create table goods (id integer primary key, name nvarchar(64), qty numeric(28,6))");
    for (int i = 0; i < 200; ++i)
      db->execute("insert into goods (name,qty) values (?,?)", std::array{Value("镜片镜片镜片镜片镜片镜片"), Value(i)});
    transaction.commit();
    return path(name);
  }
  void expectRefused(const QString& name, const char* word) {
    const DbError error = failureOf([&] { openSqlite(name); });
    EXPECT_EQ(error.kind(), Kind::File);
    EXPECT_TRUE(error.message().contains(u"jxc.mdb"_qs)) << error.what();
    EXPECT_TRUE(error.message().contains(QFileInfo(name).fileName())) << error.what();
    EXPECT_TRUE(error.message().contains(QString::fromUtf8(word))) << error.what();
    const DbError mild = failureOf([&] { openSqlite(name, {.essential = false}); });
    EXPECT_FALSE(mild.message().contains(u"jxc.mdb"_qs)) << mild.what();
  }
};

TEST_F(AccountFile, AFileThatIsGoneOrReplacedTakesNothingWithIt) {
  const QString name = makeSet("jxc.mdb");
  const auto db = test::openBook(book, name);
  const auto work = [&] {
    Transaction transaction(*db);
    db->execute("update goods set qty=1 where id=1");
    transaction.commit();
  };
  work();
  const auto refuses = [&] {
    for (const auto& write : {std::function<void()>(work),
                              std::function<void()>([&] { db->execute("update goods set qty=7 where id=1"); })}) {
      const DbError error = failureOf(write);
      EXPECT_EQ(error.kind(), Kind::File);
      EXPECT_TRUE(error.message().contains(u"没有保存"_qs)) << error.what();
      EXPECT_FALSE(error.message().contains(u"jxc.mdb"_qs)) << "the program goes on";
    }
    EXPECT_EQ(number(*db, "select qty from goods where id=1"), 1) << "what was there can still be looked at";
  };
  ASSERT_TRUE(QFile::rename(name, path("elsewhere")));
  refuses();
  ASSERT_TRUE(QFile::copy(path("elsewhere"), name));
  refuses();
  ASSERT_TRUE(QFile::remove(name) && QFile::rename(path("elsewhere"), name));
  work();
}

TEST_F(AccountFile, WhatIsNoAccountSetIsRefusedAndLeftAlone) {
  expectRefused(path("jxc_100002.mdb"), "不存在");
  EXPECT_FALSE(QFileInfo::exists(path("jxc_100002.mdb")));

  test::writeBytes(path("empty.mdb"), {});
  expectRefused(path("empty.mdb"), "空");

  test::writeBytes(path("letter.mdb"), QByteArray("这是一封信。").repeated(1000));
  expectRefused(path("letter.mdb"), "不是本系统的数据库");

  sqlite3* foreign = nullptr;
  ASSERT_EQ(sqlite3_open(path("photos.mdb").toUtf8().constData(), &foreign), SQLITE_OK);
  sqlite3_exec(foreign, "create table photos (id integer primary key); insert into photos values (7)", nullptr, nullptr,
               nullptr);
  sqlite3_close(foreign);
  const QByteArray before = test::bytesOf(path("photos.mdb"));
  expectRefused(path("photos.mdb"), "不是本系统的数据库");
  const SqliteOptions create{.create = true};
  EXPECT_EQ(failureOf([&] { openSqlite(path("photos.mdb"), create); }).kind(), Kind::File);
  EXPECT_EQ(test::bytesOf(path("photos.mdb")), before);

  // An account set that the program can do without is not named by the word that ends the program.
  test::writeBytes(path("jxc.mdb"), "no database");
  EXPECT_FALSE(failureOf([&] { openSqlite(path("jxc.mdb"), {.essential = false}); }).message().contains(u"jxc.mdb"_qs));
  EXPECT_TRUE(failureOf([&] { openSqlite(path("nowhere/jxc.mdb"), create); }).message().contains(u"目录不存在"_qs));

  QDir(directory.path()).mkdir(u"folder.mdb"_qs);
  expectRefused(path("folder.mdb"), "目录");
}

TEST_F(AccountFile, DamageIsToldAsDamage) {
  const QByteArray whole = test::bytesOf(makeSet("jxc_100003.mdb"));
  test::writeBytes(path("short.mdb"), whole.left(whole.size() / 2));
  expectRefused(path("short.mdb"), "损坏");
  // The head of the file is right and the pages behind it are not: this shows when they are read.
  QByteArray scratched = whole;
  for (qsizetype i = 4096; i < scratched.size(); ++i)
    scratched[i] = static_cast<char>(i * 7);
  test::writeBytes(path("scratched.mdb"), scratched);
  const DbError error = failureOf([&] { test::openBook(book, path("scratched.mdb"))->select("select * from goods"); });
  EXPECT_EQ(error.kind(), Kind::File);
  EXPECT_TRUE(error.message().contains(u"jxc.mdb"_qs)) << error.what();
  EXPECT_TRUE(error.message().contains(u"损坏"_qs)) << error.what();
}

TEST_F(AccountFile, ANewSetBelongsToItsOwnerAndIsThereAgain) {
  const QString name = path("jxc.mdb");
  {
    const auto db = test::openBook(book, name);
    db->execute("create table goods (id integer primary key, name nvarchar(64))");
    db->execute("insert into goods (name) values ('镜架')");
    EXPECT_EQ(db->lastCounter(), 1);
    for (const char* suffix : {"", "-wal", "-shm"})
      EXPECT_EQ(QFileInfo(name + QString::fromLatin1(suffix)).permissions(), ownerOnly) << suffix;
    EXPECT_EQ(db->lookup("select journal_mode from pragma_journal_mode").text(), u"wal"_qs);
  }
  EXPECT_FALSE(QFileInfo::exists(name + u"-wal"_qs));
  const auto again = test::openBook(book, name, {});
  EXPECT_EQ(again->lookup("select name from goods").text(), u"镜架"_qs);
}

TEST_F(AccountFile, AReadOnlySetCanBeLookedAt) {
  const QString name = makeSet("jxc.mdb");
  const auto db = test::openBook(book, name, {.readOnly = true});
  EXPECT_EQ(number(*db, "select count(*) from goods"), 200);
  const DbError error = failureOf([&] { db->execute("delete from goods"); });
  EXPECT_EQ(error.kind(), Kind::File);
  EXPECT_TRUE(error.message().contains(u"只读"_qs));
  EXPECT_FALSE(error.message().contains(u"jxc.mdb"_qs));
}

TEST_F(AccountFile, StationsShareTheFile) {
  const QString name = makeSet("jxc.mdb");
  const SqliteOptions impatient{.busyMilliseconds = 30};
  const auto one = test::openBook(book, name, impatient);
  const auto two = test::openBook(book, name, impatient);
  EXPECT_EQ(two->select("select * from goods").columnCount(), 3);
  {
    Transaction posting(*one);
    one->execute("update goods set qty=1");
    EXPECT_EQ(number(*two, "select sum(qty) from goods"), 19900);  // reads what was there before
    const DbError error = failureOf([&] { Transaction other(*two); });
    EXPECT_EQ(error.kind(), Kind::Busy);
    EXPECT_FALSE(error.message().contains(u"jxc.mdb"_qs));
    posting.commit();
  }
  EXPECT_EQ(number(*two, "select sum(qty) from goods"), 200);
  // The other station upgrades the schema: what was translated for the old one is made anew.
  one->execute("alter table goods add column note nvarchar(200)");
  EXPECT_EQ(two->select("select * from goods").columnIndex("note"), 3);
  two->execute("update goods set qty=2");
  one->execute("alter table goods add column note2 nvarchar(200)");
  const int before = book->translations;
  two->execute("update goods set qty=2");
  two->execute("update goods set qty=2");
  EXPECT_EQ(book->translations, before + 1);
}

TEST_F(AccountFile, AStationThatWaitsForAnotherTellsHowLong) {
  const QString name = makeSet("jxc.mdb");
  const auto one = test::openBook(book, name);
  const auto two = test::openBook(book, name, {.busyMilliseconds = 1500});
  std::vector<int> told;
  setWaitListener([&](int seconds) { told.push_back(seconds); });
  const Transaction posting(*one);
  EXPECT_EQ(failureOf([&] { const Transaction other(*two); }).kind(), Kind::Busy);
  setWaitListener({});
  EXPECT_EQ(told, (std::vector{1, 0})) << "and that it is over, although it failed";
}

TEST_F(AccountFile, AListLoadsInTheBackground) {
  const QString name = makeSet("jxc.mdb");
  const auto db = test::openBook(book, name);
  const auto reader = db->openReader();
  ASSERT_TRUE(reader);
  Transaction posting(*db);
  db->execute("delete from goods");
  RowSet rows;
  std::thread([&] { rows = reader->select("select * from goods"); }).join();
  EXPECT_EQ(rows.rowCount(), 200);
  posting.commit();
  EXPECT_THROW(reader->execute("delete from goods"), DbError);
  EXPECT_FALSE(openSqlite(u":memory:"_qs)->openReader());
}

TEST_F(AccountFile, ALongLogGoesIntoTheFileWhileItIsOpen) {
  constexpr qint64 pageBytes = 4096;
  constexpr int commits = 12, rowsEach = 100, pagesEach = 4;
  const QString name = makeSet("jxc.mdb");
  const auto db = test::openBook(book, name);
  db->execute("create table notes (id integer primary key, note ntext)");
  const auto write = [&db] {
    Transaction transaction(*db);
    for (int row = 0; row < rowsEach; ++row)
      db->execute("insert into notes (note) values (hex(zeroblob(?)))", std::array{Value(pagesEach * pageBytes / 2)});
    transaction.commit();
  };
  const auto logSize = [&name] { return QFileInfo(name + u"-wal"_qs).size(); };
  const auto soon = [](const auto& happens) {
    for (int i = 0; i < 500; ++i) {
      if (happens()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
  };

  const auto reader = db->openReader();
  {
    const Transaction oneMoment(*reader);
    EXPECT_EQ(number(*reader, "select count(*) from notes"), 0);
    for (int i = 0; i < commits; ++i)
      write();
    EXPECT_EQ(number(*reader, "select count(*) from notes"), 0) << "what a list reads stays of one moment";
    EXPECT_LT(QFileInfo(name).size(), commits * rowsEach * pageBytes) << "and waits in the log for it";
  }
  write();
  EXPECT_TRUE(soon([&] { return QFileInfo(name).size() >= (commits + 1) * rowsEach * pagesEach * pageBytes; }))
      << "nobody closed the file, and no commit carried the log";
  EXPECT_TRUE(soon([&] {
    const qint64 before = logSize();
    write();
    return logSize() == before;
  })) << "a carried log begins anew";
}

TEST_F(AccountFile, AListOrABackupOfAReplacedFileHarmsNeither) {
  const QString name = makeSet("jxc.mdb");
  const QString yesterday = path("yesterday.mdb"), aside = path("aside.mdb");
  const auto db = test::openBook(book, name);
  db->backupTo(yesterday);
  const QByteArray content = test::bytesOf(yesterday);
  const double before = number(*db, "select count(*) from goods");
  db->execute("insert into goods (name,qty) values ('today',1)");
  // Somebody puts the backup in the place of the open file; its log lies there under its name still.
  ASSERT_TRUE(QFile::rename(name, aside));
  ASSERT_TRUE(QFile::copy(yesterday, name));
  EXPECT_EQ(failureOf([&] { db->openReader(); }).kind(), Kind::File);
  EXPECT_EQ(failureOf([&] { db->backupTo(path("new.DAT")); }).kind(), Kind::File);
  EXPECT_EQ(test::bytesOf(name), content) << "the log of one file was carried into another";
  ASSERT_TRUE(QFile::remove(name));
  ASSERT_TRUE(QFile::rename(aside, name));
  EXPECT_EQ(number(*db, "select count(*) from goods"), before + 1);
  EXPECT_EQ(number(*test::openBook(book, name, {}), "select count(*) from goods"), before + 1);
}

TEST_F(AccountFile, ABackupIsWholeWhileOthersWrite) {
  const QString name = makeSet("jxc.mdb");
  const auto db = test::openBook(book, name);
  {
    Transaction filling(*db);
    for (int i = 0; i < 12; ++i)
      db->execute("insert into goods (name,qty) select name,1 from goods");
    filling.commit();
  }
  const double rows = number(*db, "select count(*) from goods");
  const auto other = test::openBook(book, name);
  int last = -1, steps = 0;
  db->backupTo(path("晴川.DAT"), [&](int percent) {
    EXPECT_GE(percent, last);
    last = percent;
    ++steps;
    other->execute("insert into goods (name,qty) values ('later',1)");
    return true;
  });
  EXPECT_EQ(last, 100);
  EXPECT_GT(steps, 3);
  EXPECT_EQ(QFileInfo(path("晴川.DAT")).permissions(), ownerOnly);
  EXPECT_EQ(number(*db, "select count(*) from goods"), rows + steps);
  {
    const auto copy = test::openBook(book, path("晴川.DAT"), {});
    EXPECT_EQ(number(*copy, "select count(*) from goods"), rows);
    EXPECT_EQ(copy->lookup("select integrity_check from pragma_integrity_check").text(), u"ok"_qs);
  }
  // Cancelled or impossible: the backup of yesterday stays as it is, and nothing else is left behind.
  const QByteArray yesterday = test::bytesOf(path("晴川.DAT"));
  db->backupTo(path("晴川.DAT"), [](int percent) { return percent < 30; });
  EXPECT_EQ(test::bytesOf(path("晴川.DAT")), yesterday);
  const DbError error = failureOf([&] { db->backupTo(path("nowhere/晴川.DAT")); });
  EXPECT_EQ(error.kind(), Kind::File);
  EXPECT_FALSE(error.message().contains(u"jxc.mdb"_qs));
  EXPECT_THROW(db->backupTo(name), DbError);
  EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files),
            (QStringList{u"jxc.mdb"_qs, u"jxc.mdb-shm"_qs, u"jxc.mdb-wal"_qs, u"晴川.DAT"_qs}));
}

TEST_F(AccountFile, AMemorySetIsSavedAndASnapshotMakesFreshOnes) {
  const auto origin = test::openBook(book);
  origin->execute("create table goods (id integer primary key, name nvarchar(64))");
  origin->execute("insert into goods (name) values ('镜架')");
  const std::vector<std::byte> bytes = snapshot(*origin);
  const auto count = [](Database& db) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(sqlite::asSqlite(db).native(), "select count(*) from goods", -1, &statement, nullptr);
    const sqlite::StatementHandle handle(statement);
    return sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
  };
  const auto one = openSqliteSnapshot(bytes);
  sqlite3_exec(sqlite::asSqlite(*one).native(), "insert into goods (name) select name from goods", nullptr, nullptr,
               nullptr);
  EXPECT_EQ(count(*one), 2);
  EXPECT_EQ(count(*openSqliteSnapshot(bytes)), 1);
  origin->backupTo(path("memory.mdb"));
  const auto file = openSqlite(path("memory.mdb"));
  EXPECT_EQ(count(*file), 1);
  EXPECT_EQ(count(*openSqliteSnapshot(snapshot(*file))), 1);
  const std::vector<std::byte> noise(5000, std::byte{65});
  EXPECT_EQ(failureOf([&] { openSqliteSnapshot(noise); }).kind(), Kind::File);
  Transaction transaction(*origin);
  EXPECT_THROW(origin->backupTo(path("half.mdb")), DbError);
}

}  // namespace jxc::account_file_test
