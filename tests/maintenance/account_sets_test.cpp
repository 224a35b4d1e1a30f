// The catalogue of account sets: new ones, their default, copies there and back, the end of one, and what is cut off.
#include "maintenance/account_sets.h"

#include "core/data_module.h"
#include "core/program_directory.h"
#include "core/schema/schema.h"
#include "core/set_files.h"
#include "engine/presence.h"
#include "engine/server.h"
#include "harness/account_set_fixture.h"
#include "harness/files.h"
#include "maintenance/backups.h"
#include "server/server_proxy.h"
#include "server/test_engine.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <map>

namespace jxc::account_sets_test {

class AccountSetsTest : public test::AccountSetFixture {
 protected:
  AccountSetsTest() : before_(programDirectory()) {
    setProgramDirectory(home_.path());
    sets_.emplace();
  }
  ~AccountSetsTest() override {
    sets_.reset();
    setProgramDirectory(before_);
  }

  static QString data(const QString& name) { return programPath(u"data/"_qs + name); }
  QStringList files() const { return QDir(programPath(u"data"_qs)).entryList({u"jxc_*"_qs}, QDir::Files, QDir::Name); }
  /// "100002 二店 默认" of each.
  QStringList listed() const {
    QStringList list;
    for (const Row row : sets_->rows())
      list << row.text("zt_sn") + u' ' + row.text("zt_name") + (row.flag("zt_default") ? u" 默认"_qs : QString());
    return list;
  }
  AccountSet set(const QString& sn) const {
    for (const Row row : sets_->rows())
      if (row.text("zt_sn") == sn) return *sets_->find(row.integer("id"));
    return {};
  }
  void add(const QString& name, bool isDefault = false) {
    EXPECT_TRUE(sets_->add({.name = name, .isDefault = isDefault}, prompt)) << prompt.lastNotice().toStdString();
  }
  /// As if the program had been started anew.
  void reopen() {
    sets_.reset();
    sets_.emplace();
  }
  static QString lookedUp(const QString& file, const char* sql) {
    return openSqlite(file, {.readOnly = true, .essential = false})->lookup(sql).text();
  }
  static QString companyIn(const QString& file) { return lookedUp(file, "select c_name from jxc_company"); }
  static QString restoresIn(const QString& file) {
    return lookedUp(file, "select count(*) from jxc_log where log_note like '恢复数据：%'");
  }
  bool restored(const AccountSet& set, const QString& file, const RestoreReports& reports = {}) {
    const auto backup = OpenedBackup::open(file);
    return restoreAccountSet(set, *backup, prompt, reports);
  }
  /// As a dying disk does it.
  static void spoilAPage(const QString& path) {
    constexpr qint64 page = 4096;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    ASSERT_TRUE(file.seek(file.size() / page / 2 * page));
    ASSERT_EQ(file.write(QByteArray(page, '\0')), page);
  }
  static void nameCompany(const QString& file, const QString& name) {
    const std::array<Value, 1> values{Value(name)};
    openSqlite(file)->execute("update jxc_company set c_name=?", values);
  }

  QTemporaryDir home_;
  std::optional<AccountSets> sets_;

 private:
  QString before_;
};

TEST_F(AccountSetsTest, ANewSetIsEmptyAndTheDefaultMoves) {
  EXPECT_EQ(listed(), QStringList{u"100001 晴川进销存 默认"_qs});
  EXPECT_FALSE(sets_->add({.name = u"  "_qs}, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"帐套名称必须填写！"_qs);
  add(u"二店(新)"_qs, true);
  add(u"三店"_qs);
  EXPECT_EQ(listed(), QStringList({u"100001 晴川进销存"_qs, u"100002 二店（新） 默认"_qs, u"100003 三店"_qs}));
  EXPECT_EQ(files(), QStringList({u"jxc_100002.mdb"_qs, u"jxc_100003.mdb"_qs}));
  const auto made = openSqlite(data(u"jxc_100002.mdb"_qs));
  for (const schema::TableEntry& table : schema::tables())
    EXPECT_TRUE(stands(*made, "select id from " + std::string(table.name))) << table.name;
  EXPECT_EQ(made->lookup("select a_name from jxc_admin").text(), u"admin"_qs);

  EXPECT_FALSE(sets_->remove(set(u"100002"_qs).id, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"默认帐套不能删除！"_qs);
  EXPECT_FALSE(sets_->remove(set(u"100001"_qs).id, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"系统内置帐套不能删除！"_qs);
  EXPECT_TRUE(sets_->modify({.id = set(u"100002"_qs).id, .name = u"二店"_qs, .isForbidden = true}, prompt));
  sets_->ensureDefault();
  EXPECT_EQ(listed().front(), u"100001 晴川进销存 默认"_qs);
  EXPECT_TRUE(
      sets_->modify({.id = set(u"100001"_qs).id, .name = u"总店"_qs, .isDefault = true, .isForbidden = true}, prompt));
  EXPECT_FALSE(set(u"100001"_qs).isForbidden) << "the built-in set is never forbidden";
}

TEST_F(AccountSetsTest, ADeletedSetTakesItsFileAndALinkLeavesTheServerAlone) {
  add(u"二店"_qs);
  {
    const auto inUse = openSqlite(data(u"jxc_100002.mdb"_qs));
    EXPECT_FALSE(sets_->remove(set(u"100002"_qs).id, prompt));
    EXPECT_TRUE(prompt.lastNotice().contains(u"正在使用"_qs));
  }
  EXPECT_FALSE(sets_->remove(set(u"100002"_qs).id, prompt.willSayNo()));
  EXPECT_EQ(prompt.questions.last(),
            u"删除帐套后，该帐套所包含的数据也将一起被删除，\r\n\r\n确定要删除所选的帐套信息吗？"_qs);
  EXPECT_EQ(listed().size(), 2);
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_EQ(files(), QStringList());

  add(u"服务器店"_qs);
  test::writeBytes(data(u"jxc_100002.mdb"_qs), "postgresql://shop@nowhere.invalid/jxc\n");
  EXPECT_EQ(sets_->rows()[1].text("place"), u"服务器"_qs);
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.last().contains(u"服务器上的数据全部保留"_qs));
  EXPECT_EQ(files(), QStringList());
}

// The built-in set is a line with the address of the shop, and so is one more: whatever is done to the sets beside it,
// or to that line, never goes there.
TEST_F(AccountSetsTest, SetsBesideAShopOnAServerLeaveItsRows) {
  std::optional<test::ServerProxy> way;
  if (test::onServer()) {
    dataModule().installAccountDb(test::openFresh(test::Story::Long));
    way.emplace(test::portOf(test::copyAddress()));
    dataModule().installAccountDb(openPostgres(QString::fromStdString(way->address(test::copyAddress()))));
  }
  const QByteArray address =
      test::onServer() ? QByteArray::fromStdString(test::copyAddress()) : "postgresql://shop@nowhere.invalid/jxc";
  test::writeBytes(data(u"jxc.mdb"_qs), address + '\n');
  const auto rows = [] {
    std::map<std::string_view, double> all;
    for (const schema::TableEntry& table : schema::tables())
      all[table.name] = lookupNumber("select count(*) from " + std::string(table.name));
    return all;
  };
  execSql("insert into jxc_color (color_name) values ('红')");
  const auto before = rows();
  if (way) way->setAway(true);  // no set that is made here needs it
  add(u"二店"_qs);
  if (way) way->setAway(false);
  const auto copy = backUpAccountSet(set(u"100002"_qs), home_.path(), {}, prompt);
  ASSERT_TRUE(copy);
  nameCompany(data(u"jxc_100002.mdb"_qs), u"改过"_qs);
  EXPECT_TRUE(restored((prompt.willSayYes(), set(u"100002"_qs)), *copy));
  EXPECT_NE(companyIn(data(u"jxc_100002.mdb"_qs)), u"改过"_qs);
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_EQ(rows(), before);

  add(u"另一个入口"_qs);
  test::writeBytes(data(u"jxc_100002.mdb"_qs), address + '\n');
  if (test::onServer()) {
    EXPECT_FALSE(restored((prompt.willSayNo(), set(u"100002"_qs)), *copy));
  } else {
    EXPECT_THROW(restored(set(u"100002"_qs), *copy), DbError) << "that server is not there";
  }
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_EQ(files(), QStringList());
  EXPECT_EQ(rows(), before);
  EXPECT_EQ(test::bytesOf(data(u"jxc.mdb"_qs)), address + '\n');
}

TEST_F(AccountSetsTest, ACopyGoesThereAndBack) {
  add(u"a/b:*"_qs);
  const AccountSet made = set(u"100002"_qs);
  nameCompany(made.file, u"大明眼镜"_qs);
  EXPECT_FALSE(backUpAccountSet(made, u" "_qs, {}, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"备份路径必须填写！"_qs);
  EXPECT_FALSE(backUpAccountSet(made, home_.filePath(u"没有"_qs), {}, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"备份失败，文件夹不存在！"_qs);
  const auto first = backUpAccountSet(made, home_.path(), {}, prompt);
  const auto second = backUpAccountSet(made, home_.path(), {}, prompt);  // of the same second
  ASSERT_TRUE(first && second);
  EXPECT_EQ(QFileInfo(*first).fileName().left(6), u"a／b--2"_qs);
  EXPECT_NE(*first, *second);
  EXPECT_EQ(companyIn(*first), u"大明眼镜"_qs);

  nameCompany(made.file, u"二〇二六"_qs);
  EXPECT_THROW(restored(made, programPath(u"data/codeinfo.dll"_qs)), DbError) << "no books in it";
  EXPECT_FALSE(restored(set(u"100001"_qs), *first));
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"该帐套为当前正在使用帐套"_qs));
  const auto other = openPresence(*openSqlite(made.file));
  ASSERT_TRUE(other->enter({u"小李"_qs, 0}));
  EXPECT_FALSE(restored(made, *first));
  EXPECT_TRUE(prompt.lastNotice().contains(u"小李"_qs)) << prompt.lastNotice().toStdString();
  other->leave();
  EXPECT_FALSE(restored((prompt.willSayNo(), made), *first));
  for (const QString& told : {u"单位名称：大明眼镜"_qs, u"没有单据"_qs, u"核对：数据相符"_qs, made.name})
    EXPECT_TRUE(prompt.questions.last().contains(told)) << prompt.questions.last().toStdString();
  EXPECT_EQ(companyIn(made.file), u"二〇二六"_qs);

  const auto backup = OpenedBackup::open(*first);
  EXPECT_FALSE(
      restoreAccountSet(made, *backup, prompt.willSayYes(), {.keeping = {}, .writing = [](int) { return false; }}));
  EXPECT_EQ(companyIn(made.file), u"二〇二六"_qs) << "stopped: as it was";
  EXPECT_TRUE(restoreAccountSet(made, *backup, prompt.willSayYes()));
  EXPECT_EQ(companyIn(made.file), u"大明眼镜"_qs);
  EXPECT_EQ(restoresIn(made.file), u"1"_qs);
  EXPECT_TRUE(proof::prove(*openSqlite(made.file)).isClean());
  const QStringList kept = QDir(programPath(u"backup"_qs)).entryList({u"*(恢复前)*.DAT"_qs}, QDir::Files, QDir::Name);
  ASSERT_EQ(kept.size(), 2) << "the stopped one kept one as well";
  EXPECT_EQ(companyIn(programPath(u"backup/"_qs + kept.last())), u"二〇二六"_qs);

  // Its own file is gone, or no set any more: the backup becomes its file.
  ASSERT_TRUE(removeSetFile(made.file));
  EXPECT_TRUE(restored((prompt.willSayYes(), made), *first));
  EXPECT_TRUE(prompt.questions.last().contains(u"文件不见了"_qs));
  test::writeBytes(made.file, "of a dying disk");
  EXPECT_TRUE(restored((prompt.willSayYes(), made), *first));
  EXPECT_TRUE(prompt.questions.last().contains(u"打不开"_qs));
  EXPECT_EQ(companyIn(made.file), u"大明眼镜"_qs);
  EXPECT_EQ(restoresIn(made.file), u"1"_qs);
  EXPECT_EQ(test::bytesOf(data(files().filter(u".old-"_qs).value(0))), QByteArray("of a dying disk"));
  EXPECT_EQ(files().size(), 2) << "a set has no sum beside it: " << files().join(u' ').toStdString();

  // One page of the backup is damaged, before it is looked into or between that and the writing.
  ASSERT_TRUE(removeSetFile(made.file));
  const QStringList left = files();
  const auto refusal = [&](const auto& restore) {
    try {
      restore();
    } catch (const DbError& error) {
      return error.message();
    }
    return u"restored"_qs;
  };
  auto opened = OpenedBackup::open(*first);
  const QStringList lookedInto = QDir(programPath(u"data"_qs)).entryList({u"restore.mdb*.tmp"_qs}, QDir::Files);
  ASSERT_EQ(lookedInto.size(), 1);
  spoilAPage(data(lookedInto.front()));
  EXPECT_TRUE(refusal([&] { restoreAccountSet(made, *opened, prompt.willSayYes()); }).contains(u"损坏"_qs));
  opened.reset();
  spoilAPage(*first);
  EXPECT_TRUE(refusal([&] { restored(made, *first); }).startsWith(u"这个文件不能用来恢复：它已损坏"_qs));
  EXPECT_EQ(files(), left);
}

// A good backup counts wherever the operator wants it to lie; of another set it is nothing to the one in use.
TEST_F(AccountSetsTest, ABackupOfTheSetInUseIsItsLastGoodOne) {
  if (test::onServer()) dataModule().installAccountDb(test::openFresh(test::Story::Long));
  add(u"二店"_qs);
  execSql("update jxc_backupzk set bz_fail='磁盘已满'");
  ASSERT_TRUE(backUpAccountSet(set(u"100002"_qs), home_.path(), {}, prompt));
  EXPECT_FALSE(backUpAccountSet(
      set(u"100001"_qs), home_.path(), [](int) { return false; }, prompt));
  EXPECT_EQ(backupState().words(), u"备份没有写成"_qs);
  int last = 0;
  const auto file = backUpAccountSet(
      set(u"100001"_qs), home_.path(), [&last](int percent) { return last = percent, true; }, prompt);
  ASSERT_TRUE(file) << prompt.lastNotice().toStdString();
  EXPECT_EQ(last, 100) << "the bar goes";
  EXPECT_EQ(backupState().file, *file);
  EXPECT_EQ(backupState().words(), u"备份：05-03 14:30"_qs);
  EXPECT_FALSE(backupState().isAlarming());
  EXPECT_EQ(lookedUp(*file, "select bz_set from jxc_backupzk"), lookupValue("select bz_set from jxc_backupzk"));
  EXPECT_TRUE(isRehearsalDue()) << "tried like any other";
}

TEST_F(AccountSetsTest, ASetOnAServerIsRestoredThere) {
  if (!test::onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
  add(u"服务器店"_qs);
  const AccountSet made = set(u"100002"_qs);
  const auto there = test::openFresh(test::Story::Long);
  const QByteArray link = QByteArray::fromStdString(test::copyAddress()) + '\n';
  there->execute("update jxc_company set c_name='大明眼镜'");
  test::writeBytes(made.file, link);
  const auto copy = backUpAccountSet(set(u"100002"_qs), home_.path(), {}, prompt);
  ASSERT_TRUE(copy);
  there->execute("update jxc_company set c_name='二〇二六'");
  EXPECT_TRUE(restored((prompt.willSayYes(), set(u"100002"_qs)), *copy)) << prompt.lastNotice().toStdString();
  EXPECT_EQ(there->lookup("select c_name from jxc_company").text(), u"大明眼镜"_qs);
  EXPECT_EQ(test::bytesOf(made.file), link);
  const auto other = openPresence(*there);
  ASSERT_TRUE(other->enter({{}, 100001}));
  EXPECT_FALSE(restored(set(u"100002"_qs), *copy));
  EXPECT_TRUE(prompt.lastNotice().contains(u"admin"_qs)) << prompt.lastNotice().toStdString();
}

// Whatever moment a new set or a deletion is cut off at, the next opening finds the set whole or none.
TEST_F(AccountSetsTest, WhatWasCutOffIsFinishedOrTakenBack) {
  makeUnfinishedSet(data(u"jxc_100002.mdb"_qs));  // killed before its row was kept
  test::writeBytes(data(u"jxc_100002.mdb.new-journal"_qs), "of a kill");
  reopen();
  EXPECT_EQ(files(), QStringList());
  add(u"二店"_qs);
  const QString file = data(u"jxc_100002.mdb"_qs);
  nameCompany(file, u"大明眼镜"_qs);
  QFile::rename(file, unfinishedSet(file));  // killed before the file got its name
  reopen();
  EXPECT_EQ(companyIn(file), u"大明眼镜"_qs);
  QFile::rename(file, file + u".del"_qs);  // killed before the row was gone
  reopen();
  EXPECT_EQ(companyIn(file), u"大明眼镜"_qs);
  QFile::rename(file, file + u".del"_qs);
  catalogueDb().execute("delete from jxc_xtzt where zt_sn='100002'");  // killed before the file was gone
  reopen();
  EXPECT_EQ(files(), QStringList());

  // A file that no row knows may be all that is left of a shop: it is nobody's to overwrite.
  test::writeBytes(file, "a shop");
  // So is what a console is making at the moment.
  const QString beingMade = unfinishedAtConsole(data(u"jxc_100003.mdb"_qs));
  test::writeBytes(beingMade, "half a shop");
  reopen();
  add(u"三店"_qs);
  EXPECT_EQ(listed().last(), u"100004 三店"_qs);
  EXPECT_EQ(test::bytesOf(file), QByteArray("a shop"));
  EXPECT_EQ(test::bytesOf(beingMade), QByteArray("half a shop"));
}

}  // namespace jxc::account_sets_test
