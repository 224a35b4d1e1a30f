#include "core/verified_copy.h"

#include "engine/transaction.h"
#include "harness/files.h"
#include "harness/qt_printers.h"
#include "server/test_engine.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace jxc::verified_copy_test {

using namespace Qt::StringLiterals;

class VerifiedCopies : public ::testing::Test {
 protected:
  VerifiedCopies() {
    set = test::openFresh(test::Story::Long);
    if (!test::onServer()) {
      set->backupTo(path("jxc.mdb"));
      set = openSqlite(path("jxc.mdb"));
    }
    QDir(folder.path()).mkdir(u"kept"_qs);
  }
  QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
  QStringList kept() const { return QDir(path("kept")).entryList(QDir::Files); }
  std::int64_t goods(Database& at) { return at.lookup("select count(*) from jxc_goods").integer(); }
  void post() { set->execute("insert into jxc_goods (g_sn,g_name) values ('1','镜架')"); }

  QTemporaryDir folder;
  std::unique_ptr<Database> set;
};

TEST_F(VerifiedCopies, OneMomentOfASetIsAnAccountFileWhileOthersPost) {
  post();
  const std::int64_t before = goods(*set);
  const QString file = path("kept/晴川.DAT");
  {
    VerifiedCopy copy(*set, file);
    for (int i = 0; i < 20; ++i)
      post();
    EXPECT_TRUE(copy.result());
  }
  EXPECT_EQ(kept(), (QStringList{u"晴川.DAT"_qs, u"晴川.DAT.sum"_qs}));
  const auto made = openSqlite(file, {.readOnly = true});
  EXPECT_GE(goods(*made), before);
  EXPECT_EQ(goods(*set), before + 20);
  EXPECT_EQ(made->lookup("select g_name from jxc_goods where g_sn='1'").text(), u"镜架"_qs);
  EXPECT_EQ(checkSum(file), SumState::Matches);
  if (const QString tool = QStandardPaths::findExecutable(u"b2sum"_qs); !tool.isEmpty()) {
    QProcess foreign;
    foreign.setWorkingDirectory(path("kept"));
    foreign.start(tool, {u"-c"_qs, u"-l"_qs, u"256"_qs, u"晴川.DAT.sum"_qs});
    EXPECT_TRUE(foreign.waitForFinished() && foreign.exitCode() == 0) << foreign.readAllStandardError().toStdString();
  }
  QByteArray bytes = test::bytesOf(file);
  bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
  test::writeBytes(file, bytes);
  EXPECT_EQ(checkSum(file), SumState::Differs) << "one bit, which breaks no page";
}

TEST_F(VerifiedCopies, WhatIsStoppedOrFailsLeavesTheFileFromBefore) {
  const QString file = path("kept/晴川.DAT");
  ASSERT_TRUE(makeVerifiedCopy(*set, file));
  const QByteArray copy = test::bytesOf(file), sum = test::bytesOf(sumFileOf(file));
  post();
  const auto memory = test::openFreshFile();  // no thread: it is stopped where the test wants it
  int last = 0;
  EXPECT_FALSE(makeVerifiedCopy(*memory, file, [&](int percent) {
    EXPECT_GE(percent, std::exchange(last, percent));
    return percent < 40;
  }));
  EXPECT_GE(last, 40);
  EXPECT_EQ(test::bytesOf(file), copy);
  {
    Transaction command(*set);
    EXPECT_THROW(makeVerifiedCopy(*set, file), DbError);
  }
  EXPECT_THROW(makeVerifiedCopy(*set, path("nowhere/晴川.DAT")), DbError);
  EXPECT_EQ(kept(), (QStringList{u"晴川.DAT"_qs, u"晴川.DAT.sum"_qs}));
  EXPECT_EQ(test::bytesOf(file), copy);
  EXPECT_EQ(test::bytesOf(sumFileOf(file)), sum);
}

}  // namespace jxc::verified_copy_test
