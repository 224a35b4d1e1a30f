// Passwords as a thief at the keyboard, a curious clerk and a reader of the file find them.
#include "core/passwords.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/login.h"
#include "core/operators.h"
#include "core/password_hash.h"
#include "core/rights.h"
#include "core/roles.h"
#include "core/schema/schema.h"
#include "harness/account_set_fixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace jxc::test {

class PasswordStory : public AccountSetFixture {
 protected:
  static OperatorDraft draft(const QString& name, const QString& password, const QString& role = u"100001"_qs) {
    OperatorDraft made;
    made.name = name;
    made.roleKey = role;
    made.password = made.passwordAgain = password;
    return made;
  }
  static std::int64_t idOf(const QString& name) {
    return static_cast<std::int64_t>(lookupNumber("select id from jxc_admin where a_name=?", name));
  }
  double failuresInLog() const { return lookupNumber("select count(*) from jxc_log where log_note like '密码错误%'"); }
};

TEST_F(PasswordStory, WhatWasTypedCountsAtAllFourDoors) {
  const QStringList kinds{u"a-b"_qs,          u"pa$word"_qs, u"^^^"_qs,
                          u"`back`"_qs,       u"(x)+/"_qs,   u"100%"_qs,
                          u"what?!"_qs,       u"a&b,c"_qs,   u"me@shop"_qs,
                          u"~\"q\""_qs,       u"it's"_qs,    u"' or ''='"_qs,
                          u"[a]\\b"_qs,       u"=1+1"_qs,    u"密码一"_qs,
                          u"ＡＢ％"_qs,       u"Straße"_qs,  u"😀锁"_qs,
                          u"mid dle"_qs,      u"*"_qs,       u"; drop table jxc_admin --"_qs,
                          QString(100, u'长')};
  ASSERT_EQ(kinds.size(), 22);
  for (const QString& typed : kinds) {
    SCOPED_TRACE(typed.toStdString());
    const QString name = u"王%1"_qs.arg(kinds.indexOf(typed));
    const auto number = addOperator(draft(name, typed), prompt);
    ASSERT_TRUE(number);
    ASSERT_TRUE(login(name, typed, prompt));
    EXPECT_TRUE(unlock(typed, prompt));
    EXPECT_FALSE(unlock(typed + u"x"_qs, prompt));
    EXPECT_FALSE(login(name, typed.left(typed.size() - 1), prompt));
    EXPECT_TRUE(changeOwnPassword(typed, typed + u"-2"_qs, typed + u"-2"_qs, prompt));
    EXPECT_TRUE(changeOwnPassword(typed + u"-2"_qs, typed, typed, prompt)) << "and back";
    EXPECT_TRUE(login(name, u"  "_qs + typed, prompt)) << "blanks at the ends nobody sees";
    EXPECT_EQ(lookupValue("select a_pwd from jxc_admin where a_sn=?", *number), u"^") << "only that there is one";
    EXPECT_FALSE(lookupValue("select mm_hash from jxc_adminmm where a_sn=?", *number).contains(typed));
    ASSERT_TRUE(login("admin", "", prompt));
  }
}

TEST_F(PasswordStory, WhatOlderBuildsStoredIsAcceptedOnceAndReplaced) {
  const struct {
    QString stored, typed;
  } kinds[] = {{u"w1"_qs, u"w1"_qs},     {u"a-b"_qs, u"a-b"_qs}, {u"pa￥word"_qs, u"pa$word"_qs},
               {u"（x）"_qs, u"(x)"_qs}, {u""_qs, u"^^^"_qs},    {u"100％"_qs, u"100%"_qs}};
  for (const bool atUpgrade : {false, true}) {
    int serial = 0;
    execSql("delete from jxc_admin where a_sn<>'100001'");
    execSql("delete from jxc_adminmm");
    for (const auto& kind : kinds)
      insertRow("jxc_admin", {{"a_sn", QString::number(200001 + serial)},
                              {"a_name", u"老%1"_qs.arg(serial++)},
                              {"r_sn", "100001"},
                              {"a_pwd", kind.stored},
                              {"a_jyt", 0}});
    if (atUpgrade) {
      hashOldPasswords(accountDb());
      EXPECT_EQ(lookupNumber("select count(*) from jxc_admin where a_pwd<>'' and a_pwd<>'^'"), 0);
    }
    for (int i = 0; i < serial; ++i) {
      const QString number = QString::number(200001 + i);
      EXPECT_FALSE(isHisPassword(accountDb(), number, u"wrong"_qs));
      EXPECT_TRUE(login(u"老%1"_qs.arg(i), kinds[i].typed, prompt)) << kinds[i].typed.toStdString();
      EXPECT_TRUE(isHisPassword(accountDb(), number, kinds[i].typed));
      EXPECT_EQ(lookupValue("select a_pwd from jxc_admin where a_sn=?", number), u"^");
      EXPECT_EQ(isHisPassword(accountDb(), number, kinds[i].stored), kinds[i].stored == kinds[i].typed)
          << "once: now what was typed counts";
    }
  }
}

TEST_F(PasswordStory, WhoFailsFiveTimesWaitsLongerAndLonger) {
  addOperator(draft(u"王芳"_qs, u"right"_qs), prompt);
  const auto fail = [&] { return prompt.refused(login(u"王芳"_qs, u"wrong"_qs, prompt)); };
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(fail(), u"用户密码不正确，请重新输入！"_qs);
  EXPECT_EQ(failuresInLog(), 5);
  EXPECT_EQ(prompt.refused(login(u"王芳"_qs, u"right"_qs, prompt)), u"密码连续输错5次，请30秒后再试！"_qs);
  EXPECT_TRUE(login("admin", "", prompt)) << "nobody else waits";
  setClock(u"2021-05-03 14:30:31"_qs);
  EXPECT_EQ(fail(), u"用户密码不正确，请重新输入！"_qs);
  EXPECT_EQ(fail(), u"密码连续输错6次，请1分钟后再试！"_qs);
  for (const char* later : {"15:00:00", "15:30:00", "16:00:00", "16:30:00", "17:00:00"}) {
    setClock(u"2021-05-03 "_qs + later);
    EXPECT_EQ(fail(), u"用户密码不正确，请重新输入！"_qs);
  }
  EXPECT_EQ(fail(), u"密码连续输错11次，请15分钟后再试！"_qs) << "no longer than that";

  setClock(u"2020-01-01 08:00:00"_qs);
  EXPECT_EQ(fail(), u"密码连续输错11次，请15分钟后再试！"_qs) << "a clock that went back";
  setClock(u"2020-01-01 08:15:01"_qs);
  EXPECT_TRUE(login(u"王芳"_qs, u"right"_qs, prompt)) << "locks nobody out until it is where it was";
  EXPECT_EQ(fail(), u"用户密码不正确，请重新输入！"_qs) << "from the beginning";
  EXPECT_TRUE(login(u"王芳"_qs, u"right"_qs, prompt));
}

TEST_F(PasswordStory, AClerkWhoManagesOperatorsMakesNobodyAdministrator) {
  setRights("100002", "qtcz", u"0000010000000000000"_qs);
  addOperator(draft(u"店主"_qs, u"geheim"_qs), prompt);
  becomeOperator(u"小李"_qs, "100009", "100002");
  const QString noRole = u"只有系统管理员才能设置系统管理员角色！"_qs;
  const QString noChange = u"只有系统管理员才能修改系统管理员！"_qs;
  EXPECT_EQ(prompt.refused(addOperator(draft(u"王芳"_qs, u"x"_qs), prompt)), noRole);
  OperatorDraft own = draft(u"小李"_qs, u""_qs);
  own.id = idOf(u"小李"_qs);
  EXPECT_EQ(prompt.refused(modifyOperator(own, prompt)), noRole);
  OperatorDraft other = draft(u"店主"_qs, u"mine"_qs, u"100002"_qs);
  other.id = idOf(u"店主"_qs);
  EXPECT_EQ(prompt.refused(modifyOperator(other, prompt)), noChange);
  EXPECT_EQ(prompt.refused(deleteOperator(other.id, prompt)), noChange + u"\r\n\r\n操作员 100002 店主"_qs);
  const auto copy = copyOperator(other.id, prompt);
  EXPECT_EQ(prompt.refused(pasteOperator(*copy, prompt)), noRole);
  for (const ListItem& item : rolesToChoose())
    EXPECT_NE(item.key, u"100001");
  RoleDraft role = readRole(static_cast<std::int64_t>(lookupNumber("select id from jxc_role where r_sn='100002'")));
  role.name = u"大权"_qs;
  role.rights.fill(QString(60, u'1'));
  EXPECT_EQ(prompt.refused(saveRole(role, prompt)), u"只有系统管理员才能使用此功能！"_qs);
  EXPECT_FALSE(deleteRole(role.id, prompt));
  EXPECT_TRUE(isHisPassword(accountDb(), lookupValue("select a_sn from jxc_admin where a_name='店主'"), u"geheim"_qs));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_admin where r_sn='100001'"), 2);

  // An administrator who was made a clerk while his window stood open is none any more.
  session().r_sn = u"100001"_qs;
  EXPECT_EQ(prompt.refused(modifyOperator(own, prompt)), noRole);
  own.roleKey = u"100002"_qs;
  EXPECT_TRUE(modifyOperator(own, prompt)) << "his own work goes on";
}

TEST_F(PasswordStory, FileLogAndCopyHoldNone) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"jxc.mdb"_qs);
  const QStringList plain{u"OldPlainSecret1"_qs, u"NewTypedSecret2"_qs, u"ChangedSecret3"_qs};
  const auto holders = [&] {
    QStringList found;
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files)) {
      QFile content(folder.filePath(name));
      if (!content.open(QIODevice::ReadOnly)) ADD_FAILURE() << name.toStdString();
      const QByteArray bytes = content.readAll();
      for (const QString& secret : plain)
        if (bytes.contains(secret.toUtf8()) ||
            bytes.contains(QByteArray(reinterpret_cast<const char*>(secret.utf16()), secret.size() * 2)))
          found << name + u' ' + secret;
    }
    return found;
  };
  SqliteOptions options;
  options.create = true;
  dataModule().installAccountDb(openSqlite(file, options));
  createAllTables(accountDb());
  upgradeSchema(accountDb());
  // As an older build left it, the log not carried into the file.
  execSql("drop table jxc_adminmm");
  execSql("update jxc_xtcs set cs_employdate='2021-07-15'");
  execSql("update jxc_admin set a_pwd=?", plain[0] + u"x"_qs);
  execSql("update jxc_admin set a_pwd=?", plain[0]);
  ASSERT_THAT(holders(), testing::Contains(u"jxc.mdb-wal OldPlainSecret1"_qs)) << "it can be found when it is there";
  upgradeSchema(accountDb(), [&] {
    const QString copy = folder.filePath(u"before.DAT"_qs);
    accountDb().backupTo(copy);
    return copy;
  });
  EXPECT_EQ(holders(), QStringList());
  ASSERT_TRUE(login("admin", plain[0], prompt));
  ASSERT_TRUE(addOperator(draft(u"王芳"_qs, plain[1]), prompt));
  ASSERT_TRUE(changeOwnPassword(plain[0], plain[2], plain[2], prompt));
  EXPECT_FALSE(login(u"王芳"_qs, plain[2], prompt));
  accountDb().backupTo(folder.filePath(u"later.DAT"_qs));
  EXPECT_EQ(holders(), QStringList());
}

// Comparing with a hash takes its time: who tries at many stations at once would have as many attempts within one wait.
TEST_F(PasswordStory, AttemptsAtManyStationsCountOneBehindTheOther) {
  const QTemporaryDir folder;
  SqliteOptions options;
  options.create = true;
  dataModule().installAccountDb(openSqlite(folder.filePath(u"jxc.mdb"_qs), options));
  createAllTables(accountDb());
  upgradeSchema(accountDb());
  setHashCost(HashCost::Usual);
  ASSERT_TRUE(addOperator(draft(u"王芳"_qs, u"right"_qs), prompt));
  const QString number = lookupValue("select a_sn from jxc_admin where a_name=?", u"王芳");
  const std::array<Value, 2> failures{Value(jxc::clock::stamp()), Value(number)};
  std::atomic<bool> failed = false;
  bool wasInBetween = false;
  for (int round = 0; round < 50 && !wasInBetween; ++round) {
    execSql("update jxc_adminmm set mm_fails=0,mm_failed='' where a_sn=?", number);
    failed = false;
    std::thread others([&] {
      const auto station = openSqlite(folder.filePath(u"jxc.mdb"_qs), {});
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      station->execute("update jxc_adminmm set mm_fails=5,mm_failed=? where a_sn=?", failures);
      failed = true;
    });
    const bool isIn = admits(number, u"right"_qs, {u"错误"_qs}, prompt);
    wasInBetween = failed;
    others.join();
    EXPECT_FALSE(isIn && wasInBetween) << "five failures, seen before he was let in";
    EXPECT_TRUE(isIn || prompt.lastNotice() == u"密码连续输错5次，请30秒后再试！") << prompt.lastNotice().toStdString();
  }
  EXPECT_TRUE(wasInBetween);
}

TEST_F(PasswordStory, AHashIsSlowToTryAndNoTwoAreAlike) {
  setHashCost(HashCost::Usual);
  const QString hash = passwordHash(u"abc");
  EXPECT_TRUE(hash.startsWith(u"$argon2id$v=19$m=65536,t=2,"_qs)) << hash.toStdString();
  EXPECT_LE(hash.size(), 128);
  EXPECT_NE(hash, passwordHash(u"abc"));
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(isPasswordOf(hash, u"abc"));
  EXPECT_GT(clock.elapsed(), 5) << "milliseconds";
  EXPECT_FALSE(isPasswordOf(hash, u"abd"));
  EXPECT_FALSE(isPasswordOf(u"$argon2id$broken"_qs, u"abc"));
}

}  // namespace jxc::test
