// A chart of a list: where its parts stand, what an operator does in it, and what reaches paper and file.
#include "ui/chart.h"

#include "harness/report_samples.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QPainter>
#include <QTableView>

#include <cmath>
#include <limits>
#include <random>

namespace jxc::test {
namespace chart_test {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

QStringList ticks(const ui::AxisScale& scale) {
  QStringList texts;
  for (int i = 0; i < scale.tickCount(); ++i)
    texts << scale.tickText(i);
  return texts;
}

constexpr ui::ColumnSpec kColumns[] = {
    {"khmc", "客户"},
    {"dj", "均价", ui::ColumnKind::Money},
    {"sl", "数量", ui::ColumnKind::Quantity, 0, {.sum = true}},
    {"je", "金额", ui::ColumnKind::Money, 0, {.sum = true}},
    {"lr", "毛利", ui::ColumnKind::Money, 0, {.sum = true}},
};
constexpr ui::GridSpec kGrid = {"gridChart", "客户销售", kColumns, "没有销售，改变条件后按F2查询"};

struct Customer {
  const char* name;
  double quantity, amount;
};

RowSet customers(std::initializer_list<Customer> list) {
  RowSet rows({"id", "khmc", "dj", "sl", "je", "lr"});
  int id = 0;
  for (const Customer& each : list) {
    rows.addInteger(++id);
    rows.addText(each.name);
    rows.addNull();
    rows.addReal(each.quantity);
    if (std::isnan(each.amount))
      rows.addNull();
    else
      rows.addReal(each.amount);
    rows.addReal(std::isnan(each.amount) ? 0 : each.amount / 3);
  }
  return rows;
}

}  // namespace chart_test

TEST(ChartGeometryTest, TicksAreRoundTakeInAllValuesAndZero) {
  using namespace chart_test;
  struct Case {
    std::vector<double> values;
    int most;
    double least;
    const char16_t* ticks;
  };
  const Case cases[] = {
      {{}, 5, 0.01, u"0 0.2 0.4 0.6 0.8 1.0"},
      {{0, 0, 0}, 5, 1, u"0 1"},
      {{3}, 8, 1, u"0 1 2 3"},
      {{0.02}, 8, 0.01, u"0 0.01 0.02"},
      {{120, 999}, 5, 0.01, u"0 200 400 600 800 1,000"},
      {{-35, 80}, 5, 0.01, u"-50 0 50 100"},
      {{-7, -3}, 4, 1, u"-8 -6 -4 -2 0"},
      {{99999}, 5, 0.01, u"0 2万 4万 6万 8万 10万"},
      {{250000, kNone}, 5, 0.01, u"0 5万 10万 15万 20万 25万"},
      {{1e12}, 5, 0.01, u"0 0.2万亿 0.4万亿 0.6万亿 0.8万亿 1.0万亿"},
      {{-1e12, 1}, 2, 0.01, u"-1.0万亿 -0.5万亿 0"},
      {{3.2e15}, 4, 0.01, u"0 1,000万亿 2,000万亿 3,000万亿 4,000万亿"},
  };
  for (const Case& each : cases)
    EXPECT_EQ(ticks(ui::axisScale(each.values, each.most, each.least)).join(u' '), QString::fromUtf16(each.ticks));

  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::vector<double> values(1 + random() % 5);
    for (double& value : values)
      value = std::ldexp(static_cast<double>(random()) - 2147483648.0, static_cast<int>(random() % 40) - 30);
    const int most = 2 + static_cast<int>(random() % 8);
    const ui::AxisScale scale = ui::axisScale(values, most);
    ASSERT_LE(scale.tickCount(), most + 1);
    const double little = (scale.high - scale.low) * 1e-8;
    for (const double value : values)
      ASSERT_TRUE(scale.low <= value + little && value <= scale.high + little) << value;
  }
}

TEST(ChartGeometryTest, LabelsNeverTouchAndStayInside) {
  std::mt19937 random(11);
  for (const int count : {1, 2, 7, 31, 366, 5000}) {
    for (const double width : {60.0, 400.0, 1800.0}) {
      std::vector<double> widths(static_cast<std::size_t>(count));
      for (double& each : widths)
        each = 5 + random() % (count == 7 ? 900 : 90);
      const ui::Plot plot{.area = QRectF(50, 0, width - 60, 100), .scale = {}, .count = count};
      const auto labels =
          ui::layLabels(plot, 5, width - 5, 13, [&](int point) { return widths[static_cast<std::size_t>(point)]; });
      ASSERT_FALSE(labels.empty()) << count << ' ' << width;
      double end = 5;
      for (const ui::AxisLabel& label : labels) {
        ASSERT_GE(label.left, end) << count << ' ' << width;
        end = label.left + label.width;
        ASSERT_LE(end, width - 5 + 1e-9);
      }
    }
  }
}

TEST(ChartGeometryTest, LabelsTakeTheRoomOfThoseThatAreLeftOut) {
  const ui::Plot plot{.area = QRectF(0, 0, 960, 100), .scale = {}, .count = 24};
  for (const ui::AxisLabel& label : ui::layLabels(plot, -100, 1060, 13, [](int) { return 148.0; })) {
    EXPECT_EQ(label.point % 4, 0);
    EXPECT_EQ(label.width, 148) << "each fourth is shown, 160 apart";
  }
}

TEST(ChartGeometryTest, ManyValuesCostWhatThePlotIsWide) {
  std::vector<double> values(100000, 1);
  values[50001] = 900;
  values[50002] = -900;
  values[99999] = chart_test::kNone;
  const ui::Plot plot{.area = QRectF(0, 0, 800, 300), .scale = ui::axisScale(values, 5), .count = 100000};
  const std::vector<int> drawn = ui::visiblePoints(plot, values);
  EXPECT_LE(drawn.size(), 1600U);
  EXPECT_TRUE(std::ranges::is_sorted(drawn));
  EXPECT_TRUE(std::ranges::binary_search(drawn, 50001) && std::ranges::binary_search(drawn, 50002));
  EXPECT_EQ(plot.pointAt(plot.x(50005), values), 50001);  // beside it on the same line
  EXPECT_EQ(plot.pointAt(-1, values), -1);
  EXPECT_EQ(plot.pointAt(800, values), -1);
  const ui::Plot few{.area = QRectF(0, 0, 90, 300), .scale = ui::axisScale(values, 5), .count = 3};
  const std::vector<double> three{5, chart_test::kNone, -0.001};
  EXPECT_EQ(few.pointAt(89.9, three), 2);
  EXPECT_EQ(few.pointAt(45, three), -1);  // a place without a value
  const QRectF bar = ui::barArea(few, 2, -0.001, 1000);
  EXPECT_NEAR(bar.top(), few.y(0), 1e-9);  // below the line of 0, and there is something to be seen
  EXPECT_GE(bar.height(), 1 - 1e-9);
}

TEST(ChartGeometryTest, SlicesAreTheGreatestAndOneForTheSmallRest) {
  struct Case {
    std::vector<double> values;
    int most;
    std::vector<int> points;  // -1: the rest
    int inRest;
  };
  const Case cases[] = {
      {{0, -5, chart_test::kNone}, 12, {}, 0},   {{7}, 12, {0}, 0},
      {{10, 30, 20, -8}, 12, {1, 2, 0}, 0},      {{500, 400, 1, 2, 3}, 12, {0, 1, -1}, 3},
      {{500, 400, 1}, 12, {0, 1, 2}, 0},  // a rest of one keeps its name
      {{5, 5, 5, 5, 5, 5}, 4, {0, 1, 2, -1}, 3},
  };
  for (const Case& each : cases) {
    const auto slices = ui::layPie(each.values, each.most);
    std::vector<int> points;
    double share = 0;
    for (const ui::PieSlice& slice : slices) {
      points.push_back(slice.point);
      share += slice.share;
      EXPECT_EQ(slice.count, slice.point < 0 ? each.inRest : 1);
      // The middle of each slice is found again.
      const double angle = (slice.from + slice.span / 2) * M_PI / 180;
      EXPECT_EQ(ui::sliceAt(slices, QPointF(std::sin(angle), -std::cos(angle)) * 50, 100),
                static_cast<int>(points.size()) - 1);
    }
    EXPECT_EQ(points, each.points);
    EXPECT_NEAR(share, slices.empty() ? 0 : 1, 1e-12);
    EXPECT_EQ(ui::sliceAt(slices, QPointF(0, -101), 100), -1);
  }
}

class ChartTest : public ScreenTest {
 protected:
  ChartTest() {
    list_.setRows(chart_test::customers({{"甲眼镜店", 3, 300}, {"乙眼镜店", -1, -120.5}, {"丙眼镜店", 9, 900}}));
    list_.setHeading([] { return ui::GridHeading{QStringLiteral("客户销售统计"), QStringLiteral("日期：2026-05")}; });
    chart_.resize(700, 400);
    chart_.show();
    chart_.onOpen([this] { opened_ << list_.currentText("khmc"); });
  }
  QWidget& canvas() { return *chart_.findChild<QWidget*>(QStringLiteral("chartCanvas")); }
  QStringList measures() const {
    const auto* box = chart_.findChild<QComboBox*>(QStringLiteral("comChartMeasure"));
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
      texts << box->itemText(i);
    return texts;
  }
  QString walk(const char* key, int times = 1) {
    for (int i = 0; i < times; ++i)
      pressIn(canvas(), key);
    return chart_.currentText();
  }

  ui::Grid list_{chart_test::kGrid, "F_Test", nullptr};
  ui::Chart chart_{list_, {.label = "khmc"}};
  QStringList opened_;
};

TEST_F(ChartTest, KeysMoveAlongTheRowsOfTheListAndOpenThem) {
  EXPECT_EQ(chart_.measure(), u"sl");  // the first that the list sums
  chart_.setMeasure("je");
  EXPECT_EQ(walk("Home"), u"甲眼镜店　金额 ￥300.00");
  EXPECT_EQ(walk("Right"), u"乙眼镜店　金额 -￥120.50");
  EXPECT_EQ(list_.currentText("khmc"), u"乙眼镜店");
  EXPECT_TRUE(
      canvas().accessibleDescription().startsWith(u"当前 乙眼镜店　金额 -￥120.50。柱形图，按“客户”的“金额”，"
                                                  u"3 项，最大 丙眼镜店 ￥900.00，最小 乙眼镜店 -￥120.50。"))
      << canvas().accessibleDescription().toStdString();
  EXPECT_EQ(walk("Right", 5), u"丙眼镜店　金额 ￥900.00");
  pressIn(canvas(), "Return");
  EXPECT_EQ(opened_, QStringList{QStringLiteral("丙眼镜店")});

  // It follows the list: its order, its current row, its rows.
  list_.view()->sortByColumn(3, Qt::DescendingOrder);
  EXPECT_EQ(walk("Home"), u"丙眼镜店　金额 ￥900.00");
  list_.selectRow(2);
  EXPECT_EQ(chart_.currentText(), u"乙眼镜店　金额 -￥120.50");
  list_.setCounts([](const Row& row) { return row.text("khmc") != u"丙眼镜店"; });  // as if it were a total
  list_.setRows(
      chart_test::customers({{"丙眼镜店", 9, 900}, {"", 2, 1e12}, {"戊", 0, 0}, {"己", 1, chart_test::kNone}}));
  EXPECT_EQ(walk("Home"), u"（空）　金额 ￥1,000,000,000,000.00");
  EXPECT_EQ(walk("End"), u"戊　金额 ￥0.00");

  // A pie goes from the greatest on; nothing above 0 is none.
  list_.setCounts({});
  list_.setRows(chart_test::customers({{"甲", 1, 100}, {"乙", 1, -5}, {"丙", 1, 300}}));
  chart_.setKind(ui::ChartKind::Pie);
  EXPECT_EQ(walk("Home"), u"丙　金额 ￥300.00　75.0%");
  EXPECT_EQ(walk("Right", 3), u"甲　金额 ￥100.00　25.0%");
  EXPECT_EQ(list_.currentText("khmc"), u"甲");
  list_.setRows(chart_test::customers({{"甲", 1, 0}, {"乙", 1, -5}}));
  EXPECT_EQ(walk("Home"), QString());
  pressIn(canvas(), "Return");
  EXPECT_EQ(opened_.size(), 1);
  list_.clearRows();  // what an empty list says is said here too
  EXPECT_EQ(canvas().accessibleDescription(), u"没有销售，改变条件后按F2查询");
  list_.setEmptyText(QStringLiteral("没有销售\n放宽日期再查询"));
  list_.clearRows();
  EXPECT_EQ(canvas().accessibleDescription(), u"没有销售\n放宽日期再查询");
}

TEST_F(ChartTest, OfManyBarsTheGreatestAreShownAndTheRestIsTold) {
  RowSet rows({"id", "khmc", "dj", "sl", "je", "lr"});
  for (int i = 1; i <= 60; ++i) {
    rows.addInteger(i);
    rows.addText("店" + std::to_string(i));
    rows.addReal(1);
    rows.addReal(i % 2 ? i : -i);
    rows.addReal(i);
    rows.addReal(0);
  }
  list_.setRows(rows);
  EXPECT_EQ(walk("Home"), u"店59　数量 59.00");
  EXPECT_EQ(list_.currentText("khmc"), u"店59");
  EXPECT_EQ(walk("End"), u"店60　数量 -60.00");  // the twentieth, and no less far from 0
  EXPECT_EQ(walk("Left", 10), u"店41　数量 41.00");
  EXPECT_TRUE(canvas().accessibleDescription().contains(u"最大的 20 项；其余 40 项合计 -20.00"));
  list_.selectWhere("khmc", u"店7"_qs);  // a row that is not drawn
  EXPECT_EQ(chart_.currentText(), QString());
  chart_.setMeasure("dj");  // no sum of prices
  EXPECT_TRUE(canvas().accessibleDescription().contains(u"其余 40 项。"));
  chart_.findChild<QCheckBox*>(QStringLiteral("chkChartGreatest"))->setChecked(false);
  chart_.setMeasure("sl");
  EXPECT_EQ(walk("Home"), u"店1　数量 1.00");
}

TEST_F(ChartTest, AColumnThatTheListDoesNotShowIsNoMeasure) {
  EXPECT_EQ(measures(), (QStringList{u"均价"_qs, u"数量"_qs, u"金额"_qs, u"毛利"_qs}));
  chart_.setMeasure("lr");
  list_.setColumnAllowed("lr", false);
  chart_.hide();
  chart_.show();
  EXPECT_FALSE(measures().contains(QStringLiteral("毛利")));
  EXPECT_EQ(chart_.measure(), u"sl");
  chart_.setMeasure("lr");
  EXPECT_EQ(chart_.measure(), u"sl");
  chart_.setMeasure("dj");  // there, but no row has one
  EXPECT_EQ(walk("Home"), QString());
}

TEST_F(ChartTest, PaperAndFilesShowTheChartWithItsList) {
  chart_.setMeasure("je");
  for (const auto kind : {ui::ChartKind::Bars, ui::ChartKind::Lines, ui::ChartKind::Pie}) {
    chart_.setKind(kind);
    const QString paper = file(QStringLiteral("图.pdf"));
    ui::setFileAnswer([&](const QString&, const QString&) { return paper; });
    expectNotice(QStringLiteral("已存为“%1”。").arg(paper));
    chart_.save();
    const QString text = textOfPdf(paper);
    // In the chart and in the list; a pie has no room for what is below 0 but says so.
    for (const QString& each : {QStringLiteral("丙眼镜店"), QStringLiteral("￥900.00"), QStringLiteral("￥120.50")})
      EXPECT_EQ(text.count(each), 2) << each.toStdString() << " in\n" << text.toStdString();
    EXPECT_EQ(text.contains(QStringLiteral("另有 1 项小于0")), kind == ui::ChartKind::Pie);
    EXPECT_TRUE(text.contains(QStringLiteral("日期：2026-05")));
  }
  const QString picture = file(QStringLiteral("图.png"));
  ui::setFileAnswer([&](const QString&, const QString&) { return picture; });
  expectNotice(QStringLiteral("已存为“%1”。").arg(picture));
  chart_.setKind(ui::ChartKind::Bars);
  chart_.save();
  const QImage image(picture);
  ASSERT_FALSE(image.isNull());
  int above = 0, below = 0;
  for (int x = 0; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) {
      above += image.pixel(x, y) == qRgb(0x15, 0x65, 0xa9);
      below += image.pixel(x, y) == qRgb(0xb3, 0x26, 0x1e);
    }
  }
  EXPECT_NEAR(static_cast<double>(below) / above, 120.5 / 1200, 0.01);  // areas as the amounts
}

}  // namespace jxc::test
