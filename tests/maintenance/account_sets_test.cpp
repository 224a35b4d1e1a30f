// The catalogue of account sets: new ones, their default, copies there and back, the end of one, and what is cut off.
#include "maintenance/account_sets.h"

#include "core/data_module.h"
#include "core/program_directory.h"
#include "core/schema/schema.h"
#include "core/set_files.h"
#include "harness/account_set_fixture.h"
#include "harness/files.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

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
  static QString companyIn(const QString& file) {
    return openSqlite(file, {.readOnly = true, .essential = false})->lookup("select c_name from jxc_company").text();
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
  EXPECT_FALSE(mayRestoreAccountSet(set(u"100002"_qs), prompt));
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.last().contains(u"服务器上的数据全部保留"_qs));
  EXPECT_EQ(files(), QStringList());
}

// The built-in set is a line with an address: whatever is done to the sets beside it never goes there.
TEST_F(AccountSetsTest, SetsBesideAShopOnAServerLeaveItsRows) {
  test::writeBytes(data(u"jxc.mdb"_qs), "postgresql://shop@nowhere.invalid/jxc\n");
  const auto rows = [] {
    std::int64_t all = 0;
    for (const schema::TableEntry& table : schema::tables())
      all += static_cast<std::int64_t>(lookupNumber("select count(*) from " + std::string(table.name)));
    return all;
  };
  execSql("insert into jxc_color (color_name) values ('红')");
  const auto before = rows();
  add(u"二店"_qs);
  const auto copy = backUpAccountSet(set(u"100002"_qs), home_.path(), {}, prompt);
  ASSERT_TRUE(copy);
  nameCompany(data(u"jxc_100002.mdb"_qs), u"改过"_qs);
  EXPECT_TRUE(restoreAccountSet(set(u"100002"_qs), *copy, {}, prompt.willSayYes()));
  EXPECT_NE(companyIn(data(u"jxc_100002.mdb"_qs)), u"改过"_qs);
  EXPECT_TRUE(sets_->remove(set(u"100002"_qs).id, prompt.willSayYes()));
  EXPECT_EQ(rows(), before);
  EXPECT_EQ(test::bytesOf(data(u"jxc.mdb"_qs)), QByteArray("postgresql://shop@nowhere.invalid/jxc\n"));
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

  // What is no backup is refused, and the set is as it was.
  nameCompany(made.file, u"二〇二六"_qs);
  const QByteArray whole = test::bytesOf(*first);
  const QString bad = home_.filePath(u"bad.DAT"_qs);
  for (const QByteArray& content : {QByteArray(), QByteArray("文本\n").repeated(500), whole.left(whole.size() / 2)}) {
    test::writeBytes(bad, content);
    EXPECT_FALSE(restoreAccountSet(made, bad, {}, prompt)) << content.size();
    EXPECT_TRUE(prompt.lastNotice().startsWith(u"恢复失败，帐套没有改动："_qs)) << prompt.lastNotice().toStdString();
    EXPECT_EQ(companyIn(made.file), u"二〇二六"_qs);
  }
  EXPECT_FALSE(restoreAccountSet(made, programPath(u"data/codeinfo.dll"_qs), {}, prompt)) << "no books in it";
  EXPECT_FALSE(restoreAccountSet(made, {}, {}, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"恢复路径必须填写！"_qs);
  EXPECT_FALSE(restoreAccountSet(set(u"100001"_qs), *first, {}, prompt));
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"该帐套为当前正在使用帐套"_qs));

  EXPECT_TRUE(restoreAccountSet(made, *first, {}, prompt.willSayYes()));
  EXPECT_EQ(companyIn(made.file), u"大明眼镜"_qs);
  const QStringList kept = QDir(programPath(u"backup"_qs)).entryList({u"*(恢复前)*.DAT"_qs}, QDir::Files);
  ASSERT_FALSE(kept.isEmpty());
  EXPECT_EQ(companyIn(programPath(u"backup/"_qs + kept.last())), u"二〇二六"_qs);
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
  add(u"三店"_qs);
  EXPECT_EQ(listed().last(), u"100003 三店"_qs);
  EXPECT_EQ(test::bytesOf(file), QByteArray("a shop"));
}

}  // namespace jxc::account_sets_test
