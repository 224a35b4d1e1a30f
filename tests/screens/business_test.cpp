// 营业分析 and the day on the main window, as an operator sees them.
#include "core/screens/main_form.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/screen_test.h"
#include "statistics/screens/day_board.h"
#include "ui/chart.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QToolButton>

namespace jxc::test::business_test {

class BusinessScreens : public ScreenTest {
 protected:
  BusinessScreens() {
    bringTemplates();
    for (const auto& [number, date, quantity, money] :
         {std::tuple("XS1", "2021-05-03", 2.0, 300.0), std::tuple("XS2", "2021-05-01", 1.0, 100.0)}) {
      insertRow("jxc_lsxsd", {{"gl_djh", number}, {"ls_xsrq", date}, {"ls_status", 1}, {"ck_sn", "100001"}});
      insertRow("jxc_lsxssp", {{"gl_djh", number}, {"ls_sl", quantity}, {"ls_zje", money}});
      execSql(
          "insert into jxc_goodslist (gl_flag,ck_sn,gl_djh,gl_kdrq,gl_sl,gl_je,gl_zje,gl_zcb,gl_lr) values "
          "('xs','100001',?,?,?,?,?,?,?)",
          number, date, quantity, money, money, money / 4, money * 3 / 4);
    }
    printOutlet().preview = [this](const report::Pages& pages, QWidget*) { printed_ = pages.lines(0).join(u'|'); };
  }
  static QString label(ui::Screen& s, const char* field) {
    return s.findChild<QLabel*>(u"l_"_qs + QString::fromLatin1(field))->text();
  }
  static QStringList day(const TF_MainForm& form) {
    QStringList all;
    for (const auto* figure : form.findChildren<QToolButton*>())
      if (figure->objectName().startsWith(u"day_")) all << figure->accessibleName();
    return all;
  }
  /// A role with all rights but these.
  void beWithout(std::initializer_list<std::pair<const char*, int>> taken) {
    setAllRights(QStringLiteral("100077"), QString(30, u'1'));
    for (const auto& [group, position] : taken)
      takeRight(QStringLiteral("100077"), group, position);
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  }
  QString printed_;
};

TEST_F(BusinessScreens, ThePageTellsAPeriodAndF3Today) {
  open("F_Yyfx", [&](ui::Screen& s) {
    EXPECT_EQ(label(s, "xsje"), "400.00元");
    EXPECT_EQ(label(s, "lrl"), "75.00%");
    EXPECT_EQ(s.findChild<QLabel*>(u"lNow"_qs)->text(), "2021-05-03 14:30:00 星期一");
    press(s, "F3");
    EXPECT_EQ(label(s, "xsds"), "1");
    EXPECT_EQ(label(s, "xshjje"), "300.00元");
    EXPECT_EQ(s.findChild<QLabel*>(u"lPeriod"_qs)->text(), "2021-05-03 至 2021-05-03　所有仓库");
    press(s, "Ctrl+P");
    for (const char16_t* text : {u"300.00元", u"75.00%", u"2021-05-03 至 2021-05-03"})
      EXPECT_TRUE(printed_.contains(QString::fromUtf16(text))) << printed_.toStdString();
    type(s, "tdate12", u"2021-05-01");
    EXPECT_TRUE(s.findChild<QLabel*>(u"lPeriod"_qs)->text().contains(u"起始日期晚于截止日期"));
    EXPECT_EQ(label(s, "lrl"), "0.00%");
  });
  beWithout({{"qtcz", 7}, {"qtcz", 9}});
  open("F_Yyfx", [&](ui::Screen& s) {
    press(s, "F3");
    for (const char* field : {"xsje", "xslr", "lrl", "cgje", "sfje"})
      EXPECT_EQ(label(s, field), "") << field;
    EXPECT_EQ(label(s, "xssl"), "2.00");
    press(s, "Ctrl+P");
    EXPECT_FALSE(printed_.contains(u"300.00")) << printed_.toStdString();
  });
}

TEST_F(BusinessScreens, TheMainWindowShowsTheDayByRightAndEachFigureOpensItsScreen) {
  TF_MainForm form;
  form.resize(1180, 680);
  form.formActivate();
  ASSERT_TRUE(form.day().isVisible());
  EXPECT_EQ(day(form).mid(0, 3),
            QStringList({"今日销售 ￥300.00，1单　2件", "今日顾客退货 ￥0.00，0单　0件", "今日毛利 ￥225.00"}));
  QApplication::setActiveWindow(&form);
  for (int step = 0; step < 2; ++step)
    pressIn(form, "Down");
  EXPECT_EQ(form.focusWidget()->objectName(), "day_xs");
  pressIn(form, "Right");
  EXPECT_EQ(form.focusWidget()->objectName(), "day_xt");
  expectScreen("F_Xsdjcx", [](ui::Screen& s) { press(s, "Esc"); });
  pressIn(form, "Return");
  EXPECT_EQ(form.focusWidget()->objectName(), "day_xt") << "where it was before the screen";
  // The day may come before the window manager has handed the keys back.
  QApplication::setActiveWindow(nullptr);
  form.day().refresh();
  form.day().waitLoaded(5000);
  settle();
  ASSERT_TRUE(form.focusWidget());
  EXPECT_EQ(form.focusWidget()->objectName(), "day_xt");
  QApplication::setActiveWindow(&form);
  pressIn(form, "Up");
  EXPECT_EQ(form.focusWidget()->objectName(), "btn_Menu1_Btn1") << "up from the first line is back among the tiles";

  // Without the right to what things cost, without that to one screen, and without the right to the analysis.
  beWithout({{"qtcz", 7}, {"qtcz", 9}, {"rcgl", 8}});
  form.formActivate();
  EXPECT_EQ(day(form),
            QStringList({"今日销售 1单，2件", "今日顾客退货 0单，0件", "待审核单据 0张", "低于库存下限 0种"}));
  beWithout({{"tjgl", 9}});
  form.formActivate();
  EXPECT_TRUE(day(form).isEmpty());
  EXPECT_FALSE(form.day().isVisible());
}

TEST_F(BusinessScreens, TheDayIsNotReadWhileACommandRuns) {
  TF_MainForm form;
  form.resize(1180, 680);
  expectScreen("F_Login", [](ui::Screen& s) { press(s, "Return"); });
  ASSERT_TRUE(form.formShow());
  form.Timer1.stop();
  const QString before = day(form).value(0);
  expectScreen("F_Xsdjcx", [&](ui::Screen& s) {
    execSql("update jxc_lsxssp set ls_zje=500 where gl_djh='XS1'");
    QEvent active(QEvent::WindowActivate);
    QApplication::sendEvent(&form, &active);
    settle();
    EXPECT_EQ(day(form).value(0), before);
    press(s, "Esc");
  });
  form.findChild<QToolButton*>(u"day_xs"_qs)->click();
  EXPECT_EQ(day(form).value(0), "今日销售 ￥500.00，1单　2件") << "read again when it is over";
}

TEST_F(BusinessScreens, TheDayGivesWayWhereThePageNeedsTheRoom) {
  TF_MainForm form;
  form.resize(900, 420);
  form.formActivate();
  form.showPage(ui::Page::Statistics);
  EXPECT_FALSE(form.day().isVisible());
  QElapsedTimer time;
  time.start();
  do {  // a window manager may still give it the size that it opened with
    form.resize(1280, 900);
    settle();
  } while (!form.day().isVisible() && time.elapsed() < 2000);
  EXPECT_TRUE(form.day().isVisible());
}

}  // namespace jxc::test::business_test
