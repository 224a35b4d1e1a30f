// The log of a file: what was saved is never lost without a word.
#include "engine/sqlite/checkpointer.h"
#include "engine/sqlite/sqlite_database.h"
#include "engine/transaction.h"
#include "harness/files.h"

#include <QDir>
#include <QTemporaryDir>

#include <array>
#include <random>
#include <thread>

namespace jxc::own_log_test {

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
};

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
