// The operation log: periods, words, and who may empty it.
#include "core/log.h"

#include "core/periods.h"
#include "screens/harness/screen_test.h"

#include <QLabel>
#include <QMenu>

namespace jxc::test {

class LogTest : public ScreenTest {
 protected:
  void log(const char* time, const char16_t* who, const char16_t* note) {
    insertRow("jxc_log", {{"log_time", time}, {"a_name", who}, {"log_note", note}});
  }
};

TEST_F(LogTest, RowsAreFoundByPeriodAndWords) {
  log("2021-04-30 09:00:00", u"admin", u"登录系统");
  log("2021-05-02 23:59:59", u"王芳", u"增加采购进货单，单号（CJ1）");
  log("2021-5-2 8:00:00", u"admin", u"旧格式");
  log("2021-05-03 08:00:00", u"admin", u"删除商品");
  open("F_ViewLog", [&](ui::Screen& s) {
    auto& list = s.grid("gridLog");
    EXPECT_EQ(s.field("date1").text() + s.field("date2").text(), u"2000-01-019999-12-31"_qs);
    EXPECT_EQ(list.rowCount(), 4) << "all of the period that it shows";
    EXPECT_EQ(list.currentText("log_note"), QStringLiteral("删除商品")) << "the latest first";
    EXPECT_EQ(s.findChild<QLabel*>("lCount")->text(), QStringLiteral("记录数：4"));

    type(s, "date1", u"2021-05-01");
    type(s, "date2", u"2021-05-02");
    click(s, "btnSearch1");
    ASSERT_EQ(list.rowCount(), 1) << "the last second of the last day counts, a date of another form does not";
    EXPECT_EQ(list.currentText("a_name"), QStringLiteral("王芳"));

    auto* menu = s.command("btnMenu1").menu();
    menu->actions().last()->trigger();
    EXPECT_EQ(s.field("date2").text(), QStringLiteral("9999-12-31"));
    EXPECT_EQ(list.rowCount(), 4);
    menu->actions()[1]->trigger();
    EXPECT_EQ(s.field("date1").text(), QStringLiteral("2021-05-02"));
    menu->actions().last()->trigger();
    enter(s, "tname", u"(CJ1)");
    EXPECT_EQ(list.rowCount(), 1) << "marks are looked for in the form in which they are stored";
    type(s, "tname", u"王");
    press(s, "F5");
    EXPECT_EQ(list.rowCount(), 1) << "the operator's name too";
  });
}

TEST_F(LogTest, EmptyingNeedsItsRight) {
  log("2021-05-02 08:00:00", u"admin", u"登录系统");
  setRights("100002", "qtcz", QStringLiteral("0000000000001"));
  becomeOperator(QStringLiteral("王芳"), "100002", "100002");
  open("F_ViewLog", [&](ui::Screen& s) { EXPECT_TRUE(s.command("btn_Dele").isHidden()); });
  becomeOperator("admin", "100001", "100001");
  open("F_ViewLog", [&](ui::Screen& s) {
    click(s, "btn_Dele", QStringLiteral("将清除所有日志，并不能恢复，确认清除吗？"), Answer::No);
    EXPECT_EQ(s.grid("gridLog").rowCount(), 1);
    click(s, "btn_Dele", QStringLiteral("将清除所有日志，并不能恢复，确认清除吗？"), Answer::Yes);
    ASSERT_EQ(s.grid("gridLog").rowCount(), 1);
    EXPECT_TRUE(s.grid("gridLog").currentText("log_note").startsWith(u"清除日志，取出日志1行"_qs));
  });
}

TEST_F(LogTest, PeriodsEndWhereTheirMonthsDo) {
  setClock(QStringLiteral("2021-03-31"));
  const auto at = [](std::size_t i) { return periodChoices()[i].period(); };
  EXPECT_EQ(at(2), (Period{"2021-03-29", "2021-03-29"}));
  EXPECT_EQ(at(3), (Period{"2021-03-25", "2021-03-31"}));
  EXPECT_EQ(at(4), (Period{"2021-02-28", "2021-03-31"}));
  EXPECT_EQ(at(5), (Period{"2021-03-01", "2021-03-31"}));
  EXPECT_EQ(at(6), (Period{"2021-02-01", "2021-02-28"}));
}

}  // namespace jxc::test
