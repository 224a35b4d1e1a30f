#include "core/login.h"

#include "core/log.h"
#include "core/operators.h"
#include "core/rights.h"
#include "core/schema/schema.h"
#include "core/schema/upgrade.h"
#include "core/text.h"
#include "harness/account_set_fixture.h"

namespace jxc::test {

class LoginStory : public AccountSetFixture {
 protected:
  LoginStory() {
    session() = Session{};
    insertRow("jxc_admin", {{"a_sn", "100002"}, {"a_name", "小王"}, {"r_sn", "100001"}, {"a_pwd", "w1"}, {"a_jyt", 0}});
    insertRow("jxc_admin",
              {{"a_sn", "100003"}, {"a_name", "小赵"}, {"r_sn", "100001"}, {"a_pwd", "a-b"}, {"a_jyt", 1}});
  }
  ~LoginStory() override { loginHooks().clear(); }

  double logins() const { return lookupNumber("select count(*) from jxc_log where log_note='登录系统'"); }
};

TEST_F(LoginStory, ABlankPasswordLogsInAndTheSessionIsFilled) {
  EXPECT_EQ(loginOperators(), (std::vector<ListItem>{{"admin", "100001"}, {"小王", "100002"}}));
  EXPECT_EQ(initialPasswordHint("admin"), u"初始密码为空"_qs);
  EXPECT_EQ(initialPasswordHint("小王"), QString());

  QStringList order;
  loginHooks().push_back([&] { order << session().a_name + session().c_jc; });
  EXPECT_TRUE(login("admin", "  ", prompt));
  EXPECT_EQ(order, QStringList("admin晴川公司")) << "hooks run on the loaded session";
  EXPECT_EQ(session().a_sn, u"100001"_qs);
  EXPECT_EQ(session().dbName, u"jxc.mdb"_qs);
  EXPECT_FALSE(session().localIp.isEmpty());
  EXPECT_EQ(lookupValue("select log_time+a_name from jxc_log"), u"2021-05-03 14:30:00admin"_qs);
}

TEST_F(LoginStory, NoTypedTextLogsAnyoneIn) {
  int hours = 0;
  for (const char* typed : {"", "W", "w1w1", "' or '1'='1", "' or 1=1 --", "\" or \"\"=\"", "%", "*", "w_"}) {
    setClock(u"2021-05-03 %1:30:00"_qs.arg(++hours, 2, 10, QLatin1Char('0')));  // no longer wait lasts
    EXPECT_FALSE(login("小王", QString::fromUtf8(typed), prompt)) << typed;
    EXPECT_FALSE(login(QString::fromUtf8(typed), "w1", prompt)) << typed;
  }
  EXPECT_EQ(prompt.lastNotice(), u"用户密码不正确，请重新输入！"_qs);
  EXPECT_EQ(session().a_name, QString());
  EXPECT_EQ(logins(), 0);
  setClock(u"2021-05-04"_qs);
  EXPECT_TRUE(login("小王", " w1 ", prompt));

  EXPECT_EQ(prompt.refused(login("小赵", "a-b", prompt)), u"操作员“小赵”已停用，不能登录！"_qs);
  EXPECT_EQ(session().a_name, u"小王"_qs);
  execSql("update jxc_admin set a_jyt=1 where a_name='小王'");
  EXPECT_EQ(prompt.refused(unlock("w1", prompt)), u"操作员“小王”已停用，不能解锁！"_qs);
  EXPECT_FALSE(changeOwnPassword("w1", "w2", "w2", prompt));
  EXPECT_FALSE(hasRight("xsgl", 1)) << "in a window that stood open";
}

TEST_F(LoginStory, AnOlderDatabaseLogsInAndIsBroughtUpToDate) {
  execSql("alter table jxc_backup drop column back_days");
  execSql("alter table jxc_xtcs drop column cs_cs013");
  execSql("update jxc_xtcs set cs_employdate='2014-02-07'");
  EXPECT_TRUE(login("admin", "", prompt));
  loadSession();  // what the main window does next
  EXPECT_EQ(session().c_jc, u"晴川公司"_qs);
  EXPECT_EQ(session().cs_employdate, words(schema::upgradeSteps().back().stamp));
}

TEST_F(LoginStory, AnUpgradeThatStopsIsToldAndNobodyIsIn) {
  execSql("update jxc_xtcs set cs_employdate='2014-02-16'");
  dropTableIfExists("jxc_yyfy");  // which the next step writes to
  EXPECT_TRUE(prompt.refused(login("admin", "", prompt)).startsWith(u"帐套升级没有完成，停在 2014-02-18"_qs));
  EXPECT_EQ(session().a_name, QString());
  createTable("jxc_yyfy");
  EXPECT_TRUE(login("admin", "", prompt)) << "the steps behind it";
}

TEST_F(LoginStory, ChangingTheOperatorAndTheScreenLock) {
  ASSERT_TRUE(login("admin", "", prompt));
  EXPECT_FALSE(changeOperator("小王", "wrong", prompt));
  EXPECT_EQ(session().a_name, u"admin"_qs) << "refused: the old operator goes on";
  EXPECT_TRUE(changeOperator("小王", "w1", prompt));
  EXPECT_EQ(session().a_name, u"小王"_qs);
  loginHooks().push_back([] { throw std::runtime_error("full disk"); });
  EXPECT_THROW(changeOperator("admin", "", prompt), std::runtime_error);
  EXPECT_EQ(session().a_name + session().a_sn, u"小王100002"_qs) << "nothing of the other operator stays";

  EXPECT_EQ(prompt.refused(unlock("", prompt)), u"用户密码错误，请重新输入！"_qs);
  EXPECT_FALSE(unlock("' or '1'='1", prompt));
  EXPECT_TRUE(unlock(" w1", prompt));
}

TEST_F(LoginStory, LooksBelongToTheOperator) {
  EXPECT_EQ(startupSkin(), u"iMaginary"_qs);
  execSql("update jxc_skin set skin_name='夜间' where a_name='admin'");
  ASSERT_TRUE(login("小王", "w1", prompt));
  EXPECT_EQ(operatorSkin(), u"iMaginary"_qs);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_skin where a_name='小王'"), 1);
  EXPECT_EQ(operatorSkin() + startupSkin(), u"iMaginary夜间"_qs);
}

TEST_F(LoginStory, ALongRemarkIsCutAndNeverStopsTheCommand) {
  writeLog(QString(250, u'长'));
  EXPECT_EQ(lookupValue("select log_note from jxc_log").size(), 200);
  writeLog(QString(199, u'x') + u"😀"_qs);
  EXPECT_EQ(lookupValue("select top 1 log_note from jxc_log order by id desc"), QString(199, u'x'));
}

}  // namespace jxc::test
