// System settings: the table, the checks in their order, what a save does to fields that nobody sees.
#include "core/parameters.h"

#include "core/program_directory.h"
#include "core/schema/schema.h"
#include "core/text.h"
#include "harness/account_set_fixture.h"
#include "server/test_engine.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace jxc::test {

class ParametersStory : public AccountSetFixture {
 protected:
  /// A purchase line of which `open` pieces wait for putaway.
  static std::int64_t purchaseLine(double bought, double putAway) {
    return insertRow(
        "jxc_jhsp",
        {{"j_sn", u"CJ21050310001"}, {"g_sn", u"10000001"}, {"jh_sl", bought}, {"jh_rksl", putAway}, {"jh_qxsl", 0}});
  }
  static std::int64_t saleLine(double sold, double issued) {
    return insertRow(
        "jxc_lsxssp",
        {{"gl_djh", u"XS21050310001"}, {"g_sn", u"10000002"}, {"ls_sl", sold}, {"ls_cksl", issued}, {"ls_qxsl", 0}});
  }
  bool save() { return saveParameters(values, prompt); }

  ParameterValues values = readParameters();
};

TEST_F(ParametersStory, TheTableIsTheTablesOfANewAccountSet) {
  for (const auto* table : {"jxc_xtcs", "jxc_poscs", "jxc_email"}) {
    createTable(table);
    const RowSet rows = openSelect(compose("select * from {}", {table}));
    ASSERT_EQ(rows.rowCount(), 1);
    for (const auto& p : parametersOf(table)) {
      EXPECT_EQ(rows.front().text(p.field), QString::fromUtf8(p.standard.data(), qsizetype(p.standard.size())))
          << p.field;
      EXPECT_EQ(p.kind == ParameterKind::Choice, !p.choices.empty()) << p.field;
    }
  }
  std::vector<std::string> columns, listed;
  for (const auto& line : schema::columnsOf(*schema::findDefinition("jxc_xtcs")))
    columns.emplace_back(line.name);
  for (const auto& p : parametersOf("jxc_xtcs"))
    listed.emplace_back(p.field);
  EXPECT_EQ(listed, columns);
}

TEST_F(ParametersStory, RefusalsComeInTheirOrderAndWriteNothing) {
  const auto refused = [&](std::string_view input, const Value& wrong, const QString& told) {
    const Value right = values.value(input);
    values.set(input, wrong);
    EXPECT_FALSE(save()) << input;
    EXPECT_EQ(prompt.lastNotice(), told);
    values.set(input, right);
  };
  values.set("comCgdj", 2);
  values.set("tjc", u"  ");
  refused("tjews", 4, QStringLiteral("公司信息必须填写！"));
  values.set("tjc", u"晴川");
  for (const Value& wrong : {Value(4), Value()})
    refused("tzlws", wrong, QStringLiteral("POS金额小数位数、POS单价小数位数、\r\n\r\nPOS重量小数位数，不能超过3位"));
  refused("tjsqz", u" 24", QStringLiteral("计重前缀和计数前缀不能相同！"));

  values.set("comLx", 1);
  refused("temail", u"", QStringLiteral("邮箱地址必须输入！"));
  refused("temail", u"shop.example.com", QStringLiteral("邮箱地址不对，请重新输入！"));
  values.set("temail", u"shop@example.com");
  refused("tsmtp", u"mail.example.com", QStringLiteral("SMTP邮件服务器和邮箱授权密码必须输入！"));
  values.set("tsqpwd", u"ABCDEFGHIJKLMNOP");
  refused("tsmtp", u"mail", QStringLiteral("SMTP邮件服务器不正确，请重新输入！"));
  values.set("tsmtp", u"mail.example.com");
  for (const Value& wrong : {Value(7), Value()})
    refused("tXsws", wrong, QStringLiteral("小数位数只能是0到6位！"));

  EXPECT_EQ(session().cs_cgdj, QStringLiteral("0"));
  EXPECT_TRUE(save());
  EXPECT_EQ(session().cs_cgdj, QStringLiteral("2"));
  EXPECT_EQ(session().c_jc, QStringLiteral("晴川"));
}

TEST_F(ParametersStory, PutawayAndIssueAreSwitchedWithCare) {
  // Never in use: what stands open by accident is closed, and nobody is asked.
  const auto stale = purchaseLine(5, 2);
  const auto staleSale = saleLine(3, 0);
  EXPECT_TRUE(save());
  EXPECT_EQ(lookupNumber("select jh_rksl from jxc_jhsp where id=?", stale), 5);
  EXPECT_EQ(lookupNumber("select ls_cksl from jxc_lsxssp where id=?", staleSale), 3);

  // He thinks better of putaway and wants issue: the rest is saved.
  values.set("chkSprk", 1);
  values.set("chkSpck", 1);
  prompt.willSayNo().willSayYes();
  EXPECT_TRUE(save());
  EXPECT_TRUE(prompt.questions[0].startsWith(
      QStringLiteral("正常情况不需要【启用商品入库功能】，只有在仓库独立管理时才可以考虑启用本功能。")));
  EXPECT_TRUE(prompt.questions[1].startsWith(QStringLiteral("正常情况不需要【启用商品出库功能】")));
  EXPECT_FALSE(values.isOn("chkSprk"));
  EXPECT_FALSE(strIsTrue(session().cs_sprk));
  EXPECT_TRUE(strIsTrue(session().cs_spck));

  // On and on again: no question. With goods on the way it cannot be switched off.
  const auto open = saleLine(4, 1);
  EXPECT_TRUE(save());
  values.set("chkSpck", 0);
  EXPECT_FALSE(save());
  EXPECT_EQ(prompt.lastNotice(), QStringLiteral("至少有一种商品没有完成出库，\r\n\r\n单据号：XS21050310001，商品编号：1"
                                                "0000002\r\n\r\n不能取消商品出库功能！"));
  EXPECT_EQ(lookupNumber("select ls_cksl from jxc_lsxssp where id=?", open), 1);
  execSql("update jxc_lsxssp set ls_cksl=4 where id=?", open);
  EXPECT_TRUE(save());
  EXPECT_FALSE(strIsTrue(session().cs_spck));
}

TEST_F(ParametersStory, ASaveKeepsTheStampAndForgetsWhatNobodySees) {
  execSql("update jxc_xtcs set cs_employdate='2020-01-02',cs_cs007=1,cs_employts=9,cs_posblur=1");
  values.set("tname", u"大明眼镜, O'Neil & Co");
  values.set("taddress", QString(200, u'长'));
  EXPECT_TRUE(save());
  const RowSet rows = openSelect("select * from jxc_xtcs");
  ASSERT_EQ(rows.rowCount(), 1);
  EXPECT_EQ(rows.front().text("cs_employdate"), QStringLiteral("2020-01-02"));
  EXPECT_TRUE(rows.front().isNull("cs_employts"));
  EXPECT_TRUE(rows.front().isNull("cs_ts"));
  EXPECT_FALSE(strIsTrue(session().cs_cs007));
  EXPECT_FALSE(strIsTrue(session().cs_posblur)) << "on in a new account set, off from the first save on";
  EXPECT_EQ(session().c_name, QStringLiteral("大明眼镜， O‘Neil ＆ Co"));
  EXPECT_EQ(session().c_address.size(), 128);
}

TEST_F(ParametersStory, TheDigestIsSentOnlyWhenItCanBe) {
  const auto sends = [&] {
    EXPECT_TRUE(save());
    return lookupNumber("select e_send from jxc_email") != 0;
  };
  execSql("update jxc_email set e_date='2021-05-03'");
  values.set("temail", u"shop@example.com");
  values.set("chkFj2", 1);
  EXPECT_FALSE(sends()) << "no kind of sending";
  EXPECT_EQ(lookupNumber("select e_fj2 from jxc_email"), 0);
  values.set("comLx", 2);
  EXPECT_TRUE(sends()) << "the common mailbox needs no server";
  EXPECT_EQ(session().mailDue, QStringLiteral("1")) << "the day of the last digest is forgotten";
  EXPECT_EQ(lookupValue("select e_email from jxc_email"), QStringLiteral("shop@example.com"));
  values.set("chkFj2", 0);
  EXPECT_FALSE(sends()) << "nothing to attach";
}

TEST_F(ParametersStory, BackToTheStandard) {
  values.set("tXsws", 4);
  values.set("tjews", 1);
  values.set("tname", u"大明眼镜");
  EXPECT_TRUE(save());
  const auto open = purchaseLine(5, 2);
  EXPECT_FALSE(restoreStandardParameters(prompt));
  EXPECT_EQ(prompt.lastNotice(), QStringLiteral("至少有一种商品没有完成入库，\r\n\r\n单据号：CJ21050310001，商品编号：1"
                                                "0000001\r\n\r\n不能取消商品入库功能！"));
  execSql("update jxc_jhsp set jh_qxsl=3 where id=?", open);
  EXPECT_FALSE(restoreStandardParameters(prompt.willSayNo()));
  EXPECT_EQ(session().xswsDigits, 4);
  const QTemporaryDir home;
  const QString before = programDirectory();
  setProgramDirectory(home.path());
  insertRow("jxc_htgl", {{"ht_sn", u"HT1"}});
  insertRow("jxc_kdgs", {{"kg_sn", u"1024"}});
  setRights("100002", "xsgl", QString(14, u'1'));
  prompt.willSayYes().willAnswer(Answer::Cancel);
  EXPECT_FALSE(restoreStandardParameters(prompt));
  EXPECT_EQ(prompt.questions[prompt.questions.size() - 2],
            QStringLiteral("系统参数、POS参数和邮件设置将恢复为默认值，下次登录时还会：\r\n\r\n"
                           "清除采购销售合同 1 份\r\n"
                           "清除自己增加的快递公司 1 家\r\n"
                           "给角色“角色100002”增加权限：采购进货、允许在商品销售待审核界面添加商品\r\n\r\n"
                           "确认恢复默认系统设置吗？"));
  EXPECT_EQ(session().xswsDigits, 4);
  prompt.willSayYes().willSayYes();
  EXPECT_TRUE(restoreStandardParameters(prompt));
  EXPECT_EQ(session().xswsDigits, 2);
  const QString copy = home.filePath(QStringLiteral("backup/晴川进销存21_05_03_14_30_00.DAT"));
  EXPECT_TRUE(prompt.lastNotice().endsWith(copy)) << prompt.lastNotice().toStdString();
  setProgramDirectory(before);
  EXPECT_GT(QFileInfo(copy).size(), 1000);
  if (!onServer()) {
    EXPECT_EQ(openSqlite(copy, {.readOnly = true})->lookup("select cs_xsws from jxc_xtcs").integer(), 4)
        << "as it was before";
  }
  EXPECT_EQ(lookupNumber("select pos_jews from jxc_poscs"), 2);
  EXPECT_EQ(session().c_name, QStringLiteral("大明眼镜")) << "the company stays";
  EXPECT_EQ(session().cs_employdate, QStringLiteral("1900-01-01"));
  upgradeSchema();
  EXPECT_GT(lookupValue("select cs_employdate from jxc_xtcs"), QStringLiteral("2020-01-01"))
      << "the next login brings the settings up to date";
}

}  // namespace jxc::test
