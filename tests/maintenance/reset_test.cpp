// Clearing a shop that lived: what goes is told before, the backup holds it, and the books prove after each choice.
#include "maintenance/reset.h"

#include "core/login.h"
#include "core/period_lock.h"
#include "core/program_directory.h"
#include "harness/findings.h"
#include "maintenance/period_closing.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <QDir>
#include <QTemporaryDir>

namespace jxc::reset_test {

class ResetTest : public test::ShopWalk {
 protected:
  ResetTest() : before_(programDirectory()) { setProgramDirectory(home_.path()); }
  ~ResetTest() override { setProgramDirectory(before_); }

  Cleared clear(Clearing what, BackupFirst backup = BackupFirst::Always) {
    return clearData(what, u"是否要删除所有营业数据？"_qs, backup, {}, prompt);
  }
  static std::int64_t rows(const std::string& table) {
    return static_cast<std::int64_t>(lookupNumber("select count(*) from " + table));
  }
  /// What rules leave behind on purpose may stand in a shop that works, but not in one that was just cleared.
  static QStringList faults(bool isCleared) {
    const proof::Proof proof = proof::prove(accountDb());
    return test::found(proof) + (isCleared ? test::found(proof, proof::Weight::Known) : QStringList());
  }
  QStringList backups() const { return QDir(home_.filePath(u"backup"_qs)).entryList({u"*.DAT"_qs}, QDir::Files); }

  /// Documents of every kind, and what a shop keeps besides.
  void fill(unsigned seed) {
    live(seed, 60);
    insertRow("jxc_yhzh", {{"yh_name", u"工商银行"}});
    insertRow("jxc_htgl", {{"ht_sn", u"HT1"}});
    insertRow("jxc_hyxx", {{"hy_sn", u"100002"}, {"hy_bh", u"8001"}, {"hy_name", u"会员"}, {"hy_ye", 123.5}});
    execSql("update jxc_fd set fd_name='城东店'");
    Transaction transaction(accountDb());
    insertRow("jxc_jsda", {{"da_year", u"2020-12-31"}, {"da_file", u"D:/备份.DAT"}, {"da_ql", 0}});
    setPeriodLock(u"2021-01-31"_qs);
    transaction.commit();
    ASSERT_GT(rows("jxc_goodslist"), 0);
  }

 private:
  QString before_;
  QTemporaryDir home_;
};

TEST_F(ResetTest, WhatAShopIsMadeOfStays) {
  fill(7);
  const auto goods = rows("jxc_goods"), customers = rows("jxc_khxx"), ledger = rows("jxc_goodslist");
  prompt.willSayNo().willSayNo();  // no backup, and not without one
  ASSERT_EQ(clear(Clearing::Business, BackupFirst::Asked), Cleared::Refused);
  prompt.willSayNo().willSayYes().willSayNo();
  EXPECT_EQ(clear(Clearing::Business, BackupFirst::Asked), Cleared::Declined);
  EXPECT_EQ(rows("jxc_goodslist"), ledger);
  EXPECT_EQ(backups(), QStringList());
  prompt.willSayYes();
  ASSERT_EQ(clear(Clearing::Business), Cleared::Done);
  const QString question = prompt.questions.last();
  EXPECT_TRUE(question.startsWith(u"是否要删除所有营业数据？"_qs));
  for (const char16_t* told : {u"银行账户 1", u"合同 1", u"储值余额共 123.50 元", u"城东店"})
    EXPECT_TRUE(question.contains(QStringView(told))) << question.toStdString();
  EXPECT_EQ(backups().size(), 1);
  EXPECT_EQ(faults(true), QStringList());
  EXPECT_EQ(rows("jxc_goods"), goods);
  EXPECT_EQ(rows("jxc_khxx"), customers);
  EXPECT_EQ(lookupNumber("select hy_ye from jxc_hyxx where hy_sn='100002'"), 123.5);
  EXPECT_EQ(lookupNumber("select sum(abs(g_kc)) from jxc_goods"), 0);
  EXPECT_EQ(lookupNumber("select sum(abs(kh_lwje)) from jxc_khxx"), 0);
  for (const char* gone : {"jxc_goodslist", "jxc_kcsp", "jxc_jhd", "jxc_lsxsd", "jxc_ysyfk", "jxc_htgl"})
    EXPECT_EQ(rows(gone), 0) << gone;
  EXPECT_EQ(PeriodLock().day(), QString()) << "no document is left to be locked, nor what was closed";
  EXPECT_EQ(closing::closedAlready(u"2020-12-31"_qs), QString());
  EXPECT_EQ(openSelect(closing::archives()).text(0, 2), u"2020-12-31"_qs) << "the list of archives still says of when";
  live(8, 30);  // and business goes on from there
  EXPECT_EQ(faults(false), QStringList());
}

TEST_F(ResetTest, ASetThatLostEverythingIsASetOfItsFirstDay) {
  fill(9);
  becomeOperator(u"张三"_qs, u"100007"_qs, u"100002"_qs);
  EXPECT_EQ(clear(Clearing::All), Cleared::Refused);
  EXPECT_EQ(prompt.lastNotice(), u"只有系统管理员才能使用此功能！"_qs);
  becomeOperator(u"李四"_qs, u"100008"_qs, u"100001"_qs);
  prompt.willSayYes();
  ASSERT_EQ(clear(Clearing::All), Cleared::Done);
  EXPECT_EQ(backups().size(), 1);
  EXPECT_EQ(faults(true), QStringList());
  EXPECT_EQ(rows("jxc_goodslist"), 0);
  EXPECT_EQ(loginOperators().size(), 1U);
  EXPECT_TRUE(login(u"admin"_qs, {}, prompt)) << prompt.lastNotice().toStdString();
  EXPECT_EQ(session().a_name, u"admin"_qs);
  settle();
  live(10, 30);
  EXPECT_EQ(faults(false), QStringList());
}

// The file is written anew behind the clearing, with a bar; stopped there, it is cleared all the same.
TEST_F(ResetTest, TheRoomOfWhatWentIsGivenBackWithABar) {
  fill(13);
  {
    Transaction transaction(accountDb());
    for (int i = 0; i < 12000; ++i)
      insertRow("jxc_goods", {{"g_sn", QString::number(20000000 + i)}});
    transaction.commit();
  }
  QStringList heard;
  int last = 0;
  const auto hear = [&](int percent, const QString& doing) {
    last = percent;
    if (heard.isEmpty() || heard.last() != doing) heard << doing;
    return doing != u"整理数据库文件";
  };
  prompt.willSayYes();
  EXPECT_EQ(clearData(Clearing::Business, u"？"_qs, BackupFirst::Always, hear, prompt), Cleared::Done);
  QStringList due{u"备份数据库"_qs, u"整理数据库文件"_qs, QString()};
  if (test::onServer()) due.removeAt(1);  // which does that work by itself
  EXPECT_EQ(heard, due);
  EXPECT_EQ(last, 100) << "the bar goes";
  EXPECT_EQ(rows("jxc_goodslist"), 0);
}

// A clearing that fails on its way (a file of the log's name is there) leaves every row and says so.
TEST_F(ResetTest, WhatFailsLeavesEverything) {
  fill(11);
  const auto ledger = rows("jxc_goodslist"), log = rows("jxc_log");
  QDir().mkpath(programPath(u"backup/操作日志21_05_03_14_30_00.csv"_qs));
  for (const Clearing what : {Clearing::Business, Clearing::All}) {
    prompt.willSayYes();
    EXPECT_EQ(clear(what), Cleared::Refused);
    EXPECT_TRUE(prompt.lastNotice().startsWith(u"数据没有清理，全部保持原样："_qs));
    EXPECT_EQ(rows("jxc_goodslist"), ledger);
    EXPECT_EQ(rows("jxc_log"), log);
  }
}

}  // namespace jxc::reset_test
