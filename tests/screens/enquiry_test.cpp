// The enquiry kind as an operator uses it: asks, follows a sum to its lines and a line to its document, comes back.
#include "harness/files.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/screen_test.h"
#include "ui/chart.h"
#include "ui/enquiry_screen.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QTableView>

namespace jxc::test::enquiry_test {

class EnquiryTest : public ScreenTest {
 protected:
  EnquiryTest() {
    bringTemplates();
    for (const char* goods : {"F1", "F2"})
      insertRow("jxc_goods", {{"g_sn", goods}, {"g_name", goods}, {"g_jm", goods}, {"gc_sn", "1000"}});
    sale("XS21050110001", "2021-05-01 00:00:00", "F1", 2, 100);
    sale("XS21050210001", "2021-05-02", "F2", 1, 30);
    sale("XS21050310001", "2021-05-03 23:59:59", "F1", 1, 50);
    sale("XS21040110001", "2021-04-30", "F1", 7, 350);
    printOutlet().preview = [this](const report::Pages&, QWidget*) { ++previews_; };
  }
  static void sale(const char* number, const char* date, const char* goods, double quantity, double amount) {
    execSql(
        "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,ck_sn,ghs_name,gl_sl,gl_je,gl_lr) values "
        "('xs',?,?,?,?,'100001','张三',?,?,?)",
        number, date, goods, goods, quantity, amount, amount / 2);
  }
  static QString hint(ui::Grid& list) {
    for (const auto* label : list.view()->viewport()->findChildren<QLabel*>())
      if (label->isVisible()) return label->text();
    return {};
  }
  int previews_ = 0;
};

TEST_F(EnquiryTest, ASumLeadsToItsLinesAndBack) {
  open("F_Sample", [&](ui::Screen& s) {
    auto& sums = s.grid("gridHz");
    auto& lines = s.grid("gridMx");
    ASSERT_EQ(sums.rowCount(), 2);
    EXPECT_EQ(sums.sum("sl"), 4) << "from the first second of the month to the last one of today";
    sums.selectRow(1);
    sums.focusRows();
    press(s, "Up");
    press(s, "Return");
    ASSERT_TRUE(lines.isVisible());
    EXPECT_FALSE(sums.isVisible());
    EXPECT_EQ(lines.rowCount(), 2) << "those of F1, in the same period";
    EXPECT_EQ(lines.heading().filter, "日期：2021-05-01　至2021-05-03　仓库：所有仓库　明细表　汇总表：F1");
    press(s, "Return");
    EXPECT_EQ(previews_, 1) << "the document";

    // The period changes under the lines: the sums come back by it, on the row that was followed.
    type(s, "tdate1", u"2021-04-01");
    EXPECT_EQ(lines.rowCount(), 3);
    press(s, "Esc");
    ASSERT_TRUE(sums.isVisible());
    EXPECT_EQ(sums.currentText("g_sn"), "F1");
    EXPECT_EQ(sums.sum("sl"), 11);

    // By the switch all lines are meant, and the keys go on in them.
    sums.focusRows();
    dynamic_cast<ui::EnquiryScreen&>(s).showView("gridMx");
    EXPECT_TRUE(lines.rowsHaveFocus());
    EXPECT_EQ(lines.rowCount(), 4);
    enter(s, "tkey", u"没有");
    EXPECT_EQ(lines.rowCount(), 0);
    EXPECT_EQ(hint(lines),
              "这段时间没有销售\n现在的条件：2021-04-01 至 2021-05-03，商品信息：没有\n放宽其中一项再查询");
    type(s, "tdate2", u"2021-03-01");
    EXPECT_EQ(hint(lines), "这段时间没有销售\n起始日期晚于截止日期，请改正后重新查询");
    press(s, "Esc");
    EXPECT_FALSE(s.isVisible());
  });
  // What was typed stays; a period that was only proposed goes on with the days.
  open("F_Sample", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tkey").text(), "没有");
    EXPECT_EQ(s.field("tdate2").text(), "2021-03-01");
    dynamic_cast<ui::EnquiryScreen&>(s).resetInputs();
  });
  setClock(QStringLiteral("2021-06-02"));
  open("F_Sample", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tdate1").text(), "2021-06-01");
    EXPECT_TRUE(s.grid("gridMx").isEmpty());
  });
}

TEST_F(EnquiryTest, FiguresStandBesideThoseOfAnEarlierPeriodWhenAskedFor) {
  sale("XS21040210001", "2021-04-03", "F1", 1, 80);
  sale("XS21040210002", "2021-04-02", "F9", 1, 25);
  sale("XS20050210001", "2020-05-03", "F2", 1, 45);
  setRights(QStringLiteral("100077"), "qtcz", QString(60, u'1'));
  open("F_Sample", [&](ui::Screen& s) {
    auto& sums = s.grid("gridHz");
    const auto told = [&] {
      QStringList all;
      for (int row = 0; row < sums.rowCount(); ++row) {
        QStringList cells;
        for (const auto& column : sums.exportColumns())
          if (column.caption.contains(u"金额")) cells << sums.cellText(row, column.column);
        all << cells.join(u' ');
      }
      return all;
    };
    EXPECT_FALSE(sums.isColumnAllowed("je_earlier"));
    choose(s, "comDb", u"上期"_qs);
    EXPECT_EQ(told(), QStringList({"150.00 80.00 87.50", "30.00 0.00 ", "0.00 25.00 -100.00"}))
        << "what was there only before is a row too";
    EXPECT_EQ(sums.footerText("je_earlier"), "105.00");
    press(s, "Ctrl+T");
    ui::Chart* chart = s.findChild<QWidget*>(u"chartCanvas"_qs)
                           ? dynamic_cast<ui::Chart*>(s.findChild<QWidget*>(u"chartCanvas"_qs)->parentWidget())
                           : nullptr;
    ASSERT_TRUE(chart && chart->isVisible() && !sums.isVisible());
    EXPECT_EQ(chart->measure(), "je");
    sums.selectRow(0);
    EXPECT_EQ(chart->currentText(), "F1　金额 150.00，上期金额 80.00");
    EXPECT_EQ(s.findChild<QComboBox*>(u"comChartMeasure"_qs)->findText(u"上期金额"_qs), -1) << "beside its figure";
    press(s, "Ctrl+T");
    EXPECT_TRUE(sums.isVisible());
    choose(s, "comDb", u"去年同期"_qs);
    EXPECT_EQ(told(), QStringList({"150.00 0.00 ", "30.00 45.00 -33.33"}));
    EXPECT_EQ(sums.exportColumns()[4].caption, u"去年金额"_qs);
    check(s, "rMxb", true);
    EXPECT_FALSE(s.field("comDb").isVisible() || s.command("btn_Chart").isVisible()) << "lines have neither";
  });
  execSql("update jxc_role set qtcz=? where r_sn='100077'", QString(6, u'1') + u"0111"_qs);
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  open("F_Sample", [&](ui::Screen& s) {
    check(s, "rHzb", true);
    choose(s, "comDb", u"上期"_qs);
    EXPECT_TRUE(s.grid("gridHz").isColumnAllowed("je_earlier"));
    execSql("update jxc_role set qtcz=? where r_sn='100077'", QString(60, u'0'));
    choose(s, "comDb", u"去年同期"_qs);
    EXPECT_FALSE(s.grid("gridHz").isColumnAllowed("je_earlier"));
    EXPECT_EQ(s.grid("gridHz").rows().columnIndex("je_earlier"), -1);
  });
}

TEST_F(EnquiryTest, ListsBelowTakeTurnsAndWhatIsAskedForIsDrawnOverTime) {
  execSql("update jxc_goods set ghs_sn='100001' where g_sn='F1'");
  open("F_Spxstj", [&](ui::Screen& s) {
    auto& enquiry = dynamic_cast<ui::EnquiryScreen&>(s);
    enquiry.showView("gridGhs");
    auto& suppliers = s.grid("gridGhs");
    suppliers.waitLoaded();
    ASSERT_EQ(suppliers.rowCount(), 2) << "the one of F1, and 其他 for F2";
    auto &goods = s.grid("gridSub1"), &lines = s.grid("gridSub2");
    EXPECT_TRUE(goods.isVisible() && !lines.isVisible());
    EXPECT_EQ(goods.currentText("g_sn"), "F1");
    check(s, "rSub2", true);
    EXPECT_TRUE(lines.isVisible() && !goods.isVisible());
    lines.waitLoaded();
    EXPECT_EQ(lines.sum("xssl"), 3);
    suppliers.selectRow(1);
    lines.waitLoaded();
    EXPECT_EQ(lines.sum("xssl"), 1);
    lines.focusRows();
    press(s, "Return");
    EXPECT_EQ(previews_, 1) << "the document";

    // All that is asked for since the year began, and the goods of one supplier alone.
    for (const auto& [key, sold] : {std::pair("F6", 11), std::pair("F7", 10)}) {
      suppliers.selectRow(0);
      press(s, key, "F_Spxstj_Fx", [&, sold = sold](ui::Screen& over) {
        over.grid("gridYf").waitLoaded();
        EXPECT_FALSE(over.grid("gridYf").isVisible()) << "its chart is";
        EXPECT_EQ(over.grid("gridYf").rowCount(), 2);
        EXPECT_EQ(over.grid("gridYf").sum("sl"), sold);
      });
    }
  });
}

Sql forgetful(const Criteria&, const Warehouses&) {
  return Sql("select * from jxc_goodslist");
}

TEST_F(EnquiryTest, WhoForgetsTheWarehousesIsToldSo) {
  EXPECT_THROW(Source(forgetful).ask({}), std::logic_error);
}

TEST(EnquiryPage, ShowsTheExampleAsItIs) {
  const auto read = [](const char* file) {
    return bytesOf(QStringLiteral(JXC_SOURCE_DIR) + QString::fromLatin1(file));
  };
  ASSERT_FALSE(read("/tests/screens/enquiry_sample.cpp").isEmpty());
  EXPECT_TRUE(read("/docs/add-an-enquiry.md").contains("```cpp\n" + read("/tests/screens/enquiry_sample.cpp") + "```"))
      << "the page and the example have parted";
}

}  // namespace jxc::test::enquiry_test
