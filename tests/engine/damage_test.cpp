// What a dying disk leaves: every damaged file is seen before it is believed, and none takes the place of a good
// backup.
#include "engine/sqlite/sqlite_database.h"
#include "engine/transaction.h"
#include "harness/files.h"

#include <QDir>
#include <QTemporaryDir>

#include <array>
#include <random>
#include <set>

namespace jxc::damage_test {

constexpr qsizetype kSector = 512, kPage = 4096;

/// A shop in small: rows, indexes, a long text on pages of its own, pages that have become free.
QString makeSet(const QString& file) {
  const auto db = openSqlite(file, {.create = true});
  Transaction transaction(*db);
  db->execute(
      "create table goods (id Counter, sn nvarchar(32), name nvarchar(64), qty numeric(28,6), constraint own primary "
      "key (id))");
  db->execute("create table notes (id Counter, note ntext, constraint own primary key (id))");
  db->execute("create table gone (id Counter, name nvarchar(64), constraint own primary key (id))");
  db->execute("create index goods_sn on goods (sn)");
  db->execute("create index goods_qty on goods (qty,name)");
  for (int i = 0; i < 1500; ++i)
    db->execute(
        "insert into goods (sn,name,qty) values (?,?,?)",
        std::array{Value(QString::number(i * 7919 % 100003)), Value(QStringLiteral("镜片%1").arg(i)), Value(i / 4.0)});
  for (int i = 0; i < 2; ++i)
    db->execute("insert into notes (note) values (?)", std::array{Value(QString(9000, QChar(0x955c + i)))});
  for (int i = 0; i < 300; ++i)
    db->execute("insert into gone (name) values (?)", std::array{Value(QString(60, u'x'))});
  db->execute("delete from gone");
  transaction.commit();
  return file;
}

/// Everything that the set says; nothing when it cannot be read.
QString told(const QString& file) {
  try {
    const auto db = openSqlite(file);
    QString text;
    for (const char* sql : {"select * from goods order by id", "select * from notes order by id", "select * from gone",
                            "select sn,qty from goods order by sn", "select qty,name from goods order by qty,name"}) {
      const RowSet rows = db->select(sql);
      for (int row = 0; row < rows.rowCount(); ++row)
        for (int column = 0; column < rows.columnCount(); ++column)
          text += rows.text(row, column) + u'|';
    }
    return text;
  } catch (const DbError&) {
    return {};
  }
}

/// One of the ways in which disks, cables and file systems spoil a file. They deal in sectors and pages.
void damage(QByteArray& bytes, int kind, std::mt19937& random) {
  const auto any = [&random](qsizetype below) {
    return static_cast<qsizetype>(random() % static_cast<quint64>(below));
  };
  const qsizetype pages = bytes.size() / kPage, sector = any(bytes.size() / kSector) * kSector;
  const qsizetype one = (1 + any(pages - 1)) * kPage, other = (1 + any(pages - 1)) * kPage;
  switch (kind) {
    case 0:
      bytes.replace(sector, kSector, QByteArray(kSector, '\0'));
      break;
    case 1:
      bytes.replace(sector, kSector, QByteArray(kSector, '\xa5'));
      break;
    case 2:
      for (qsizetype i = 0; i < kSector; ++i)
        bytes[sector + i] = static_cast<char>(random());
      break;
    case 3:
      bytes.replace(one, kPage, QByteArray(kPage, '\0'));
      break;
    case 4:
      bytes.replace(one, kPage, QByteArray(bytes.mid(other == one ? 0 : other, kPage)));
      break;
    default:
      bytes.truncate(2 * kPage + any(bytes.size() - 2 * kPage));
  }
}

TEST(Damage, OfAHundredAndTwentyDamagedFilesEachIsSeenOrHarmlessAndNoneBecomesTheBackup) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"set.mdb"_qs), backup = folder.filePath(u"晴川.DAT"_qs);
  const QByteArray whole = test::bytesOf(makeSet(file));
  openSqlite(file)->backupTo(backup);
  const QString truth = told(file);
  ASSERT_FALSE(truth.isEmpty());
  const QByteArray good = test::bytesOf(backup);
  std::mt19937 random(20);
  int seen = 0;
  for (int round = 0; round < 120; ++round) {
    SCOPED_TRACE(round);
    QByteArray bytes = whole;
    damage(bytes, round % 6, random);
    if (bytes == whole) continue;
    test::writeBytes(file, bytes);
    bool isSeen = true;
    try {
      const auto db = openSqlite(file);
      const StorageCheck check = db->checkStorage();
      isSeen = !check.damage.isEmpty();
      EXPECT_EQ(check.file, file);
      db->backupTo(backup);
      EXPECT_FALSE(isSeen) << "damaged, and copied all the same";
    } catch (const DbError& error) {
      EXPECT_EQ(error.kind(), DbError::Kind::File) << error.what();
      EXPECT_TRUE(isSeen) << error.what();
    }
    if (isSeen) {
      ++seen;
      ASSERT_EQ(test::bytesOf(backup), good);
    } else {
      ASSERT_EQ(told(file), truth) << "neither seen nor harmless";
      test::writeBytes(backup, good);
    }
  }
  EXPECT_GT(seen, 90);
  EXPECT_EQ(QDir(folder.path()).entryList({u"*.tmp"_qs}, QDir::Files), QStringList());
}

TEST(Damage, TheLookAtAFileTellsHowFarItIsAndCanBeStopped) {
  const QTemporaryDir folder;
  const auto db = openSqlite(makeSet(folder.filePath(u"set.mdb"_qs)));
  {
    Transaction filling(*db);
    for (int i = 0; i < 6; ++i)
      db->execute("insert into goods (sn,name,qty) select sn,name,qty from goods");
    filling.commit();
  }
  std::set<int> told;
  const auto note = [&told](int percent) {
    EXPECT_TRUE(told.empty() || percent >= *told.rbegin()) << percent;
    told.insert(percent);
    return true;
  };
  const StorageCheck check = db->checkStorage(note);
  EXPECT_TRUE(check.finished && check.damage.isEmpty()) << check.damage.join(u'\n').toStdString();
  EXPECT_GT(told.size(), 12U);
  const StorageCheck stopped = db->checkStorage([](int percent) { return percent < 50; });
  EXPECT_FALSE(stopped.finished);
  EXPECT_TRUE(stopped.damage.isEmpty()) << "a stop is no damage";
  EXPECT_THROW(db->checkStorage([](int percent) -> bool { return percent < 50 ? true : throw 7; }), int);
  EXPECT_TRUE(db->checkStorage().finished) << "and the connection is none the worse";
}

// A barcode reader may send one behind its code; a server keeps none, nor does a file.
TEST(Damage, AZeroCharacterIsNotKeptAndOneOfAnOlderBuildIsNoDamage) {
  const QTemporaryDir folder;
  const auto db = openSqlite(makeSet(folder.filePath(u"set.mdb"_qs)));
  const QString scanned = u"6901"_qs + QChar(0);
  db->execute("insert into goods (sn,name) values (?,?)", std::array{Value(scanned), Value(scanned)});
  EXPECT_EQ(db->lookup("select len(name) from goods where sn='6901'").integer(), 4);
  sqlite3* const raw = sqlite::asSqlite(*db).native();
  ASSERT_EQ(sqlite3_exec(raw, "update goods set sn=sn||char(0),name=name||char(0) where sn='6901'", {}, {}, {}),
            SQLITE_OK);
  EXPECT_EQ(db->checkStorage().damage, QStringList());
}

}  // namespace jxc::damage_test
