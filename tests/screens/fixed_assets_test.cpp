// The register of fixed assets as an operator keeps it.
#include "accounts/fixed_assets.h"

#include "screens/harness/screen_test.h"

namespace jxc::test::fixed_assets_test {

class FixedAssets : public ScreenTest {
 protected:
  /// Of each entry the months gone by and what a straight line leaves, the newest first.
  static QStringList estimates() {
    QStringList all;
    for (const Row row : openSelect(assets::assetList({})))
      all << row.text("gone") + u' ' + QString::number(row.number("rest"), 'f', 2);
    return all;
  }
  static void own(const char* date, double amount, const char* months) {
    execSql("insert into jxc_gdzc (zc_bh,zc_mc,zc_rq,zc_je,zc_zjys) values ('X','物',?,?,?)", date, amount, months);
  }
};

TEST_F(FixedAssets, EntriesAreCheckedInOrderStartFromTheFirstAndStandTwice) {
  open("F_Gdzc", [&](ui::Screen& s) {
    press(s, "F3", "F_Gdzc_Zj", [&](ui::Screen& form) {
      press(form, "F5", QStringLiteral("金额不能为0！"));
      type(form, "tje", u"3600");
      press(form, "F5", QStringLiteral("资产编号不能为空！"));
      type(form, "tsn", u"ZC01");
      press(form, "F5", QStringLiteral("资产名称不能为空！"));
      type(form, "tname", u"验光仪");
      form.field("comUser").setIndex(-1);
      press(form, "F5", QStringLiteral("请选择经办人！"));
      choose(form, "comUser", QStringLiteral("默认员工"));
      enter(form, "dateCg", u"2020-05-04");
      type(form, "tzjys", u"36");
      type(form, "tnote", u"带'引号");
      press(form, "F5");
    });
    press(s, "F3", "F_Gdzc_Zj", [&](ui::Screen& form) {
      type(form, "tje", u"-600");
      enter(form, "tsn", u"ZC01");
      EXPECT_EQ(form.field("tname").text(), "验光仪") << "a second entry starts from the first";
      EXPECT_EQ(form.field("tzjys").integer(), 36);
      EXPECT_EQ(form.field("tje").number(), -600) << "what was typed stays";
      press(form, "F5");
    });
    ASSERT_EQ(s.grid("gridZc").rowCount(), 2);
    s.grid("gridZc").selectRow(1);
    press(s, "F4", "F_Gdzc_Zj", filled({{"tname", u"综合验光仪"}}));
    EXPECT_EQ(lookupValue("select count(*) from jxc_gdzc where zc_bh='ZC01'"), "2");
    EXPECT_EQ(lookupValue("select zc_je from jxc_gdzc where zc_mc='综合验光仪'"),
              s.grid("gridZc").currentText("zc_je"));
    click(s, "btn_Dele", QStringLiteral("您确定要删除当前固定资产信息吗！"), Answer::Yes);
    EXPECT_EQ(s.grid("gridZc").rowCount(), 1);
  });
  for (const char* ledger : {"jxc_xjyh where gl_djh<>''", "jxc_yyfy", "jxc_ysyfk"})
    EXPECT_EQ(lookupValue(std::string("select count(*) from ") + ledger), "0") << "nothing is posted";
}

/// Today is 3 May 2021.
TEST_F(FixedAssets, MonthsGoneByAndAStraightLine) {
  own("2021-05-04", 1200, "12");  // after today
  own("2021-04-04", 1200, "12");  // its day has not come again
  own("2021-04-03", 1200, "12");
  own("2020-05-03", 1200, "24");
  own("2020-04-30", -600, "24");
  own("2010-01-01", 1200, "60");
  own("2009-01-01", 1200, "");
  own("没有日期", 1200, "x");
  EXPECT_EQ(estimates(), QStringList({" 1200.00", "0 1200.00", "0 1200.00", "1 1100.00", "12 600.00", "12 -300.00",
                                      "136 0.00", "148 1200.00"}));
}

}  // namespace jxc::test::fixed_assets_test
