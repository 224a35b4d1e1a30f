// The chain of the operation log: what a clerk does to it afterwards is found.
#include "core/log.h"

#include "core/named_list.h"
#include "core/operators.h"
#include "core/parameters.h"
#include "core/program_directory.h"
#include "core/roles.h"
#include "core/schema/schema.h"
#include "harness/account_set_fixture.h"
#include "maintenance/log_viewer.h"
#include "maintenance/prove.h"
#include "masterdata/units.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace jxc::test {

class LogStory : public AccountSetFixture {
 protected:
  void write(int rows) {
    for (int i = 0; i < rows; ++i)
      writeLog(u"第%1件事"_qs.arg(++written_));
  }
  /// Where the chain breaks, in words; empty: nowhere.
  static QString broken() {
    for (const proof::Finding& finding : proof::proveAccount().findings)
      if (finding.code == "log-chain") return finding.place;
    return {};
  }
  static std::int64_t breaks() {
    std::int64_t count = 0;
    for (const proof::Finding& finding : proof::proveAccount().findings)
      if (finding.code == "log-chain") count += finding.count;
    return count;
  }
  static QStringList notes() {
    QStringList all;
    for (const Row row : openSelect("select log_note from jxc_log order by id"))
      all << row.text("log_note");
    return all;
  }
  int written_ = 0;
};

TEST_F(LogStory, EveryKindOfMeddlingIsFoundAtItsRow) {
  write(6);
  EXPECT_EQ(broken(), QString());
  const struct {
    const char* statement;
    const char16_t* at;
  } meddling[] = {
      {"update jxc_log set log_note='没事' where log_note='第3件事'", u"没事"},
      {"update jxc_log set a_name='别人' where log_note='第2件事'", u"第2件事"},
      {"update jxc_log set log_time='2020-01-01 00:00:00' where log_note='第6件事'", u"第6件事"},
      {"delete from jxc_log where log_note='第1件事'", u"第2件事"},
      {"delete from jxc_log where log_note='第4件事'", u"第5件事"},
      {"delete from jxc_log where log_note='第6件事'", u"最后的日志不见了"},
      {"delete from jxc_log", u"最后的日志不见了"},
      {"insert into jxc_log (log_time,a_name,log_note) values ('2021-05-03 14:30:00','admin','补的')", u"补的"},
      {"update jxc_log set log_hash='' where log_note='第5件事'", u"第5件事"},
  };
  for (const auto& each : meddling) {
    Transaction abandoned(accountDb());
    execSql(std::string_view(each.statement));
    EXPECT_TRUE(broken().contains(QString::fromUtf16(each.at))) << each.statement << ": " << broken().toStdString();
    write(2);
    EXPECT_EQ(breaks(), 1) << each.statement << ": what is written since holds on";
    written_ = 6;
  }
  {
    Transaction abandoned(accountDb());
    execSql("delete from jxc_log where log_note='第6件事'");
    write(2);
    EXPECT_TRUE(broken().contains(u"第7件事"_qs)) << "also when others have written since";
  }
  EXPECT_EQ(broken(), QString()) << "a command that was taken back leaves no gap";
}

TEST_F(LogStory, WhatIsTakenOutIsKeptInAFileAndTheChainGoesOn) {
  const QTemporaryDir home;
  const QString before = programDirectory();
  setProgramDirectory(home.path());
  write(3);
  const QString last = lastLogHash(accountDb());
  EXPECT_TRUE(clearLog(prompt.willSayYes()));
  const QString file = home.filePath(u"backup/操作日志21_05_03_14_30_00.csv"_qs);
  EXPECT_EQ(notes(), QStringList(u"清除日志，取出日志3行，末行校验值%1，另存为%2"_qs.arg(last, file).left(200)));
  QFile saved(file);
  ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
  const QString content = QString::fromUtf8(saved.readAll());
  EXPECT_EQ(content.count(u"\r\n"_qs), 4);
  EXPECT_TRUE(content.contains(u"\"2021-05-03 14:30:00\",\"admin\",\"第3件事\","_qs + last));
  EXPECT_FALSE(saved.permissions() & (QFile::ReadGroup | QFile::ReadOther));
  write(2);
  EXPECT_EQ(broken(), QString());

  setClock(u"2021-05-04"_qs);
  resetBusinessTables();
  EXPECT_EQ(notes().size(), 1) << "by the same way";
  EXPECT_TRUE(notes().front().startsWith(u"清理业务数据，取出日志3行"_qs));
  EXPECT_EQ(broken(), QString());
  EXPECT_THROW(takeLogRows(accountDb(), u"再来"_qs), DbError) << "a file of that name is there: it is not overwritten";
  EXPECT_EQ(notes().size(), 1) << "and nothing is taken";
  setProgramDirectory(before);
}

TEST_F(LogStory, AnOlderLogIsChainedAtItsUpgrade) {
  write(3);
  execSql("update jxc_log set log_hash=null");
  execSql("drop table jxc_logchain");
  execSql("update jxc_xtcs set cs_employdate='2021-07-15'");
  upgradeSchema();
  write(1);
  EXPECT_EQ(broken(), QString());
  execSql("update jxc_log set log_note='anders' where log_note='第2件事'");
  EXPECT_TRUE(broken().contains(u"anders"_qs));
}

TEST_F(LogStory, WhoChangesWhatIsThere) {
  OperatorDraft made;
  made.name = u"王芳"_qs;
  made.roleKey = u"营业员"_qs;
  made.password = made.passwordAgain = u"geheim"_qs;
  ASSERT_TRUE(addOperator(made, prompt));
  made = readOperator(static_cast<std::int64_t>(lookupNumber("select id from jxc_admin where a_name='王芳'")));
  made.isDisabled = true;
  made.password = made.passwordAgain = u"anders"_qs;
  ASSERT_TRUE(modifyOperator(made, prompt));
  ASSERT_TRUE(changeOwnPassword({}, u"x"_qs, u"x"_qs, prompt));
  RoleDraft role = readRole(static_cast<std::int64_t>(lookupNumber("select id from jxc_role where r_name='营业员'")));
  role.rights[0] = u"01"_qs;
  role.rights[1].replace(0, 1, u"0"_qs);
  ASSERT_TRUE(saveRole(role, prompt));
  ParameterValues values = readParameters();
  values.set("tname", u"新店"_qs);
  values.set("tsqpwd", u"mailgeheim"_qs);
  ASSERT_TRUE(saveParameters(values, prompt));
  ASSERT_TRUE(addUnit(u"盒"_qs, prompt));
  EXPECT_THAT(notes(), testing::ElementsAre(u"增加角色：营业员"_qs, u"增加操作员：王芳（营业员，设置密码）"_qs,
                                            u"修改操作员：王芳（营业员） → 王芳（营业员，停用，设置密码）"_qs,
                                            u"修改自己的密码"_qs, u"修改角色：营业员"_qs,
                                            u"角色“营业员”增加权限：采购退货"_qs, u"角色“营业员”取消权限：商品销售"_qs,
                                            u"修改参数：公司名称，晴川信息技术有限公司 → 新店"_qs,
                                            u"修改参数：邮箱授权密码"_qs, u"增加单位：盒"_qs));
}

}  // namespace jxc::test
