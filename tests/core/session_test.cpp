#include "core/session.h"

#include "core/session_fields.h"
#include "harness/account_set_fixture.h"

namespace jxc::test {

class SessionStory : public AccountSetFixture {};

TEST_F(SessionStory, EveryColumnOfTheTablesHasItsPlace) {
  const auto expectSame = [](const char* table, std::span<const SessionField> fields, QStringList notKept) {
    QStringList columns, members;
    for (const std::string& column : openSelect(std::string("select * from ") + table).columns()) {
      const QString name = QString::fromStdString(column);
      if (!notKept.contains(name)) columns << name;
    }
    for (const SessionField& field : fields)
      members << QString::fromUtf8(field.name.data(), field.name.size());
    columns.sort();
    members.sort();
    EXPECT_EQ(members, columns) << table;
  };
  expectSame("jxc_company", companyFields(), {"id", "c_sn"});
  expectSame("jxc_xtcs", parameterFields(), {"id"});
  expectSame("jxc_smscs", smsFields(), {"id"});
}

TEST_F(SessionStory, SpoiltDecimalsAreMendedTogether) {
  setParameter("cs_xsws", 3);
  EXPECT_EQ(session().cs_jews, QStringLiteral("3"));
  setParameter("cs_xsws", 9);
  EXPECT_EQ(session().xswsDigits, 2);
  EXPECT_EQ(session().cs_jews, QStringLiteral("2")) << "totals take the figure after its correction";
  setParameter("cs_cbjs", -1);
  EXPECT_EQ(session().cbjsDigits, 2);

  setParameter("cs_zjews", 1);
  setParameter("cs_jews", 0);
  EXPECT_EQ(session().jewsDigits, 0);
  setParameter("cs_jews", 9);
  EXPECT_EQ(session().cs_jews, QStringLiteral("2"));
  setParameter("cs_jews", Value());
  EXPECT_EQ(session().cs_jews, QStringLiteral("2"));

  setParameter("cs_cs004", Value());
  EXPECT_EQ(session().cs_cs004, QStringLiteral("9600"));
  setParameter("cs_djrq", Value());
  setParameter("cs_zdzk", Value());
  EXPECT_EQ(session().cs_djrq + session().cs_zdzk, QStringLiteral("00"));
}

TEST_F(SessionStory, TemplatesFollowParametersAndRights) {
  setParameter("cs_lsj", 1);
  setParameter("cs_dbdj", 1);
  EXPECT_EQ(session().salesTemplate, QStringLiteral("spxs2.fr3"));
  EXPECT_EQ(session().transferTemplate, QStringLiteral("kcdbd2.fr3"));

  setRights("100002", "xsgl", QString(14, u'1'));
  setRights("100002", "qtcz", QStringLiteral("111111011"));  // all but the cost
  becomeOperator(QStringLiteral("小王"), "100002", "100002");
  EXPECT_FALSE(session().canSeeCost);
  EXPECT_TRUE(session().canChangeDocDate && session().canSeePrice && session().canChangeSaleCost);
  EXPECT_FALSE(session().canQtcz21);
  EXPECT_EQ(session().purchaseTemplate, QStringLiteral("cgjh2.fr3"));
  EXPECT_EQ(session().salesReturnTemplate, QStringLiteral("xsth2.fr3"));

  setRights("100002", "qtcz", QStringLiteral("111111110"));  // all but the sale price
  loadSession();
  EXPECT_EQ(session().salesTemplate, QStringLiteral("spxs4.fr3")) << "without prices whatever else is set";
  EXPECT_EQ(session().transferTemplate, QStringLiteral("kcdbd3.fr3"));
  EXPECT_EQ(session().purchaseTemplate, QStringLiteral("cgjh.fr3"));
}

TEST_F(SessionStory, MemberDaysAreComparedAsText) {
  const auto activeOn = [&](const char* day) {
    setClock(QString::fromUtf8(day));
    loadSession();
    return session().memberDayActive;
  };
  execSql("update jxc_jfsz set jf_hyr=1,jf_hyrmy1='05',jf_hyrmy2='20'");
  EXPECT_EQ(activeOn("2021-05-04"), QString());
  EXPECT_EQ(activeOn("2021-05-05"), QStringLiteral("1"));
  EXPECT_EQ(activeOn("2021-06-20"), QStringLiteral("1"));
  EXPECT_EQ(activeOn("2021-05-21"), QString());
  execSql("update jxc_jfsz set jf_hyr=2,jf_hyr1='2021-05-28',jf_hyr2='2021-06-02'");
  EXPECT_EQ(activeOn("2021-05-27"), QString());
  EXPECT_EQ(activeOn("2021-06-01"), QStringLiteral("1"));
  execSql("update jxc_jfsz set jf_hyr=0");
  EXPECT_EQ(activeOn("2021-06-01"), QString());
}

TEST_F(SessionStory, BackupAndMailAreReadAndAnEmptyTableLeavesNothingBehind) {
  execSql("delete from jxc_backup");
  insertRow("jxc_backup", {{"back_auto", 1}, {"back_sj", 4}, {"back_exit", 0}});
  execSql("update jxc_email set e_send=1,e_date='2021-05-02'");
  loadSession();
  EXPECT_EQ(session().back_sj, 4);
  EXPECT_EQ(session().back_auto, QStringLiteral("1"));
  EXPECT_EQ(session().back_exit, QStringLiteral("0"));
  EXPECT_EQ(session().mailDue, QStringLiteral("1"));
  execSql("update jxc_email set e_date='2021-05-03'");
  execSql("delete from jxc_backup");
  execSql("delete from jxc_smscs");
  loadSession();
  EXPECT_EQ(session().mailDue, QStringLiteral("0")) << "sent today";
  EXPECT_EQ(session().back_sj, 0);
  EXPECT_EQ(session().sms_sign, QString());
}

}  // namespace jxc::test
