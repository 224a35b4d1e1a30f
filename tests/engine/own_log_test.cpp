// The log of a file is played into no other one: a backup put back after a crash comes up as it was made, and what was
// saved is never lost without a word.
#include "engine/sqlite/checkpointer.h"
#include "engine/sqlite/sqlite_database.h"
#include "engine/sqlite/write_ahead_log.h"
#include "engine/transaction.h"
#include "engine/waiting.h"
#include "harness/files.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <random>
#include <thread>

namespace jxc::own_log_test {

QString wal(const QString& file) {
  return file + u"-wal"_qs;
}

/// A set whose documents are counted, and the folder that it lies in.
class OwnLog : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  QString file = folder.filePath(u"jxc.mdb"_qs);
  std::mt19937 random{6};

  void SetUp() override {
    const auto db = openSqlite(file, {.create = true});
    db->execute("create table documents (id Counter, note nvarchar(100), constraint own primary key (id))");
    db->execute("create index documents_note on documents (note)");
  }
  static int documents(Database& db) {
    const int count = static_cast<int>(db.lookup("select count(*) from documents").integer());
    EXPECT_EQ(db.lookup("select max(id) from documents").integer(), count);
    EXPECT_EQ(db.checkStorage().damage, QStringList());
    return count;
  }
  void save(Database& db, int count) {
    for (int i = 0; i < count; ++i)
      db.execute("insert into documents (note) values (?)", std::array{Value(QString::number(random()))});
  }
  int any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
  QByteArray header() const { return test::bytesOf(file).first(100); }
  QStringList asides(const QString& of) const {
    const QFileInfo info(of);
    return info.dir().entryList({info.fileName() + u"-wal.*"_qs}, QDir::Files);
  }
  static std::uint32_t number(sqlite3* station) {
    std::uint32_t found = 0;
    sqlite3_exec(
        station, "pragma user_version",
        [](void* into, int, char** fields, char**) {
          *static_cast<std::uint32_t*>(into) = static_cast<std::uint32_t>(std::strtol(fields[0], nullptr, 10));
          return 0;
        },
        &found, nullptr);
    return found;
  }
  /// The file and its log as a kill leaves them, in a folder of its own.
  QString crashed(const QTemporaryDir& into) const {
    const QString there = into.filePath(u"jxc.mdb"_qs);
    EXPECT_TRUE(QFile::copy(file, there));
    for (const QString& side : {u"-wal"_qs, u"-shm"_qs})
      QFile::copy(file + side, there + side);
    return there;
  }
};

TEST_F(OwnLog, FiftyRestoresInTheirWrongWaysComeUpAsTheBackupWasMade) {
  enum Way { Backup, ClosedCopy, OpenPair };
  for (int round = 0; round < 50; ++round) {
    SCOPED_TRACE(round);
    const QTemporaryDir kept, ruin;
    const QString copy = kept.filePath(u"yesterday"_qs);
    const auto way = static_cast<Way>(round % 3);
    // What counts here is what lies there after a crash, not what the disk had been told to keep.
    const auto open = [this] {
      auto opened = openSqlite(file);
      sqlite::doNotWaitForDisk(*opened);
      return opened;
    };
    auto db = open();
    save(*db, 1 + any(5));
    const int before = documents(*db);
    if (way == Backup) {
      db->backupTo(copy);
    } else if (way == OpenPair) {
      ASSERT_TRUE(QFile::copy(file, copy) && QFile::copy(wal(file), wal(copy)));
    } else {
      db.reset();
      ASSERT_TRUE(QFile::copy(file, copy));
      db = open();
    }
    save(*db, 1 + any(20));
    if (round % 5 == 0) {  // another day
      db.reset();
      db = open();
      save(*db, 1 + any(20));
    }
    const int now = documents(*db);
    const QString there = crashed(ruin);
    {
      const QTemporaryDir other;
      const auto recovered = openSqlite(crashed(other));
      ASSERT_EQ(documents(*recovered), now) << "without a restore everything is there";
      ASSERT_EQ(recovered->openingRemarks(), QStringList());
    }
    if (round % 2 == 0) QFile::remove(there + u"-shm"_qs);
    if (round % 4 < 2) {
      test::writeBytes(there, test::bytesOf(copy));
    } else {
      QFile::remove(there);
      ASSERT_TRUE(QFile::copy(copy, there));
    }
    if (way == OpenPair) test::writeBytes(wal(there), test::bytesOf(wal(copy)));
    for (const int more : {1, 2}) {
      const auto restored = openSqlite(there);
      ASSERT_EQ(documents(*restored), before + more - 1);
      const bool isTold = !restored->openingRemarks().isEmpty();
      ASSERT_EQ(isTold, way != OpenPair && more == 1) << way;
      if (isTold) {
        ASSERT_TRUE(restored->openingRemarks().front().contains(asides(there).value(0)));
      }
      save(*restored, 1);
    }
    ASSERT_EQ(asides(there).size(), way == OpenPair ? 0 : 1);
  }
}

TEST_F(OwnLog, ALogThatIsTakenAwayWhileTheSetIsOpenLosesNothingInSilence) {
  for (const bool goesOn : {true, false}) {
    auto db = openSqlite(file);
    save(*db, 214);
    const int told = documents(*db);
    ASSERT_TRUE(QFile::remove(wal(file)));
    if (goesOn) {
      try {
        save(*db, 1);
        FAIL() << "was told as saved";
      } catch (const DbError& error) {
        EXPECT_TRUE(error.message().contains(u"没有丢失"_qs)) << error.what();
        EXPECT_FALSE(error.message().contains(u"jxc.mdb"_qs));
      }
      const QTemporaryDir ruin;
      EXPECT_EQ(documents(*openSqlite(crashed(ruin))), told) << "even when the program is killed now";
      EXPECT_THROW(save(*db, 1), DbError);
    }
    db.reset();
    EXPECT_EQ(documents(*openSqlite(file)), told);
  }
}

TEST_F(OwnLog, ABackupCopiedOverTheOpenFileIsNoticedAndStaysAsItIs) {
  const QString copy = folder.filePath(u"yesterday"_qs);
  auto db = openSqlite(file);
  save(*db, 3);
  db->backupTo(copy);
  save(*db, 30);
  const QByteArray content = test::bytesOf(copy);
  test::writeBytes(file, content);  // the same file by name and number, with other content
  for (int i = 0; i < 2; ++i) {
    try {
      save(*db, 1);
      FAIL() << "was told as saved";
    } catch (const DbError& error) {
      EXPECT_TRUE(error.message().contains(u"没有保存"_qs)) << error.what();
    }
  }
  EXPECT_THROW(db->backupTo(folder.filePath(u"new"_qs)), DbError);
  db.reset();
  EXPECT_EQ(test::bytesOf(file), content) << "the log of today was carried into yesterday's file";
  const auto restored = openSqlite(file);
  EXPECT_EQ(documents(*restored), 3);
  EXPECT_EQ(restored->openingRemarks().size(), 1);
}

TEST_F(OwnLog, PagesOfTheLogThatTheDiskHasSpoiltAreTold) {
  const auto db = openSqlite(file);
  save(*db, 10);
  constexpr qsizetype header = 32, frame = 24 + 4096;
  const qsizetype middle = header + (test::bytesOf(wal(file)).size() - header) / frame / 2 * frame;
  for (const qsizetype at : {middle + 2000, middle + 8}) {  // in a page, and in what tells that it is of this log
    SCOPED_TRACE(at);
    const QTemporaryDir ruin;
    const QString there = crashed(ruin);
    QByteArray log = test::bytesOf(wal(there));
    log[at] = static_cast<char>(log[at] ^ 1);
    test::writeBytes(wal(there), log);
    const auto rest = openSqlite(there);
    EXPECT_LT(documents(*rest), 10);
    ASSERT_EQ(rest->openingRemarks().size(), 1);
    EXPECT_TRUE(rest->openingRemarks().front().contains(u"请核对最后保存的几张单据"_qs));
    EXPECT_EQ(test::bytesOf(QFileInfo(there).dir().filePath(asides(there).value(0))), log);
  }
}

// A station is killed in the middle of a long commit; another one that is at work goes on in the same log.
TEST_F(OwnLog, WhatAKilledStationLeftBehindALongerCommitIsNotCalledLost) {
  const auto db = openSqlite(file);
  save(*db, 10);
  const auto logAfter = [this](const std::string& commands) {
    const QTemporaryDir place;
    sqlite3* raw = nullptr;
    EXPECT_EQ(sqlite3_open(crashed(place).toUtf8().constData(), &raw), SQLITE_OK);
    const sqlite::ConnectionHandle station(raw);
    const std::string all = "begin;" + commands + "pragma user_version=" +
                            std::to_string(static_cast<std::int32_t>(sqlite::followingNumber(number(raw)))) + ";commit";
    EXPECT_EQ(sqlite3_exec(raw, all.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    return test::bytesOf(wal(place.filePath(u"jxc.mdb"_qs)));
  };
  const std::string one = "insert into documents (note) values ('kept');";
  std::string many;
  for (int i = 0; i < 200; ++i)
    many += "insert into documents (note) values ('" + std::string(90, static_cast<char>('a' + i % 26)) + "');";
  const QByteArray kept = logAfter(one), never = logAfter(many);
  ASSERT_GT(never.size(), kept.size());
  const QTemporaryDir ruin;
  const QString there = crashed(ruin);
  test::writeBytes(wal(there), kept + never.mid(kept.size()));
  QFile::remove(there + u"-shm"_qs);
  const auto rest = openSqlite(there);
  EXPECT_EQ(documents(*rest), 11);
  EXPECT_EQ(rest->openingRemarks(), QStringList());
}

TEST_F(OwnLog, TheFirstCommandOfASessionTellsThatItWaits) {
  const auto first = openSqlite(file);
  const auto other = openSqlite(file);
  std::optional<Transaction> atWork(std::in_place, *other);
  other->execute("insert into documents (note) values ('other')");
  int told = 0;
  setWaitListener([&](int seconds) {
    told = std::max(told, seconds);
    if (atWork) atWork->commit();
    atWork.reset();
  });
  const QByteArray before = header();
  const Transaction mine(*first);
  setWaitListener({});
  EXPECT_EQ(told, 1);
  EXPECT_NE(header(), before) << "the wait was that for the number of the session";
}

TEST_F(OwnLog, WhenNobodySavesForAWhileTheFileAloneIsWhole) {
  const auto usual = std::exchange(sqlite::Checkpointer::quiet, std::chrono::milliseconds(50));
  const auto db = openSqlite(file);
  save(*db, 74);
  const QTemporaryDir aside;
  int found = 0;
  for (int i = 0; i < 200 && found < 74; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
    const QString alone = aside.filePath(QString::number(i));
    ASSERT_TRUE(QFile::copy(file, alone));
    found = documents(*openSqlite(alone));
  }
  EXPECT_EQ(found, 74);
  sqlite::Checkpointer::quiet = usual;
}

}  // namespace jxc::own_log_test
