// What stands on which page: breaks, groups, growth, rolls, columns, padding, preprinted forms.
#include "harness/gui.h"
#include "harness/qt_printers.h"
#include "harness/report_samples.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace jxc::report_layout_test {

using namespace report;
using test::linesOf;
using test::rowsOf;

QString text(const char* utf8) {
  return QString::fromUtf8(utf8);
}

/// A page of 100 by 100 mm with margins of 10: 80 mm for bands.
Template smallPage() {
  Template t;
  t.page.width = t.page.height = 100;
  return t;
}

Item& addText(Template& t, BandKind kind, double height, const char* content, int group = 0) {
  Band& band = addBand(t, kind, height);
  band.group = group;
  band.items.push_back(textItem(0, 0, 80, height, text(content)));
  return band.items.back();
}

RowSet numbered(int count) {
  RowSet rows({"n"});
  for (int i = 1; i <= count; ++i)
    rows.addInteger(i);
  return rows;
}

Pages print(const Template& t, RowSet rows) {
  test::needGui();
  Report report(t);
  report.setRows(std::move(rows));
  return report.prepare();
}

/// The lines of a page, in one text.
QString page(const Pages& pages, int number) {
  return pages.lines(number).join(u'|');
}
QString whole(const Pages& pages) {
  return linesOf(pages).join(u'|');
}

TEST(ReportLayout, APageHoldsWhatFitsAndEveryPageHasItsHeaderFooterAndSum) {
  Template t = smallPage();
  addText(t, BandKind::ReportTitle, 10, "标题");
  addText(t, BandKind::PageHeader, 5, "页眉 [Page]/[Pages]");
  addText(t, BandKind::ColumnHeader, 5, "列");
  addText(t, BandKind::MasterData, 10, "行[n]");
  addText(t, BandKind::Summary, 10, "总[Sum(n)] 共[count(*)]行");
  addText(t, BandKind::PageFooter, 5, "本页[Sum(n)] 累计[Sum(n,'running')]");

  // First page: 80-10-5-5-5 leaves room for 5 rows; the others have 65 mm for 6. The summary takes the last row along.
  const Pages pages = print(t, numbered(11));
  ASSERT_EQ(pages.count(), 3);
  EXPECT_EQ(page(pages, 0), "标题|页眉 1/3|列|行1|行2|行3|行4|行5|本页15 累计15");
  EXPECT_EQ(page(pages, 1), "页眉 2/3|列|行6|行7|行8|行9|行10|本页40 累计55");
  EXPECT_EQ(page(pages, 2), "页眉 3/3|列|行11|总66 共11行|本页11 累计66");
  EXPECT_TRUE(pages.faults().empty());
}

TEST(ReportLayout, WithoutRowsTheDocumentStillPrints) {
  Template t = smallPage();
  addText(t, BandKind::ReportTitle, 10, "[title]");
  addText(t, BandKind::MasterData, 10, "行[n]");
  addText(t, BandKind::Summary, 10, "合计[Sum(n)]，[count(*)]行");
  t.variables = {{text("title"), {}, {}, {}}};
  t.title = text("[title]（存根）");
  test::needGui();
  Report report(t);
  EXPECT_EQ(whole(report.prepare()), "合计，0行");
  report.setText(u"TITLE", u"商品报损单");
  const Pages pages = report.prepare();
  EXPECT_EQ(whole(pages), "商品报损单|合计，0行");
  EXPECT_EQ(pages.title(), "商品报损单（存根）");
}

TEST(ReportLayout, ATitleThatFillsThePageTakesNoColumnHeaderWithIt) {
  Template t = smallPage();
  addText(t, BandKind::ReportTitle, 70, "标题");
  addText(t, BandKind::ColumnHeader, 5, "列");
  addText(t, BandKind::MasterData, 10, "行[n] 第[Page]共[Pages]");
  const Pages pages = print(t, numbered(1));
  ASSERT_EQ(pages.count(), 2);
  EXPECT_EQ(page(pages, 0), "标题");
  EXPECT_EQ(page(pages, 1), "列|行1 第2共2");
}

TEST(ReportLayout, GroupsSumTheirOwnRowsAndRepeatTheirHeaderOnTheNextPage) {
  Template t = smallPage();
  t.groups = {{.by = text("gc")}, {.by = text("ck"), .repeatHeader = false}};
  addText(t, BandKind::GroupHeader, 10, "类[gc] 占[round(Sum(n)/Sum(n,'report')*100,0)]%", 0);
  addText(t, BandKind::GroupHeader, 10, "仓[ck]", 1);
  addText(t, BandKind::MasterData, 10, "[GroupLine]/[Line]:[n]");
  addText(t, BandKind::GroupFooter, 10, "仓计[Sum(n)] 均[Avg(n)]", 1);
  addText(t, BandKind::GroupFooter, 10, "类计[Sum(n)] 小[Min(n)] 大[Max(n)]", 0);
  const RowSet rows = rowsOf({"gc", "ck", "n"}, {{"架", "东", "1"},
                                                 {"架", "东", "2"},
                                                 {"架", "西", "4"},
                                                 {"片", "西", "8"},
                                                 {"片", "西", "16"},
                                                 {"片", "西", "32"}});
  const Pages pages = print(t, rows);
  // 西 of 片 is another group than 西 of 架: the outer one has changed.
  ASSERT_EQ(pages.count(), 3);
  EXPECT_EQ(page(pages, 0), "类架 占11%|仓东|1/1:1|2/2:2|仓计3 均1.5");
  // The row of 西 needs both footers behind it, and its header: all of them go on.
  EXPECT_EQ(page(pages, 1), "类架 占11%|仓西|1/3:4|仓计4 均4|类计7 小1 大4|类片 占89%|仓西|1/4:8");
  EXPECT_EQ(page(pages, 2), "类片 占89%|2/5:16|3/6:32|仓计56 均18.6666666666667|类计56 小8 大32");
}

TEST(ReportLayout, AGroupThatIsKeptTogetherMovesAsOneAndOneStartsItsPage) {
  Template t = smallPage();
  t.groups = {{.by = text("n>5"), .keepTogether = true}};
  addText(t, BandKind::GroupHeader, 10, "组");
  addText(t, BandKind::MasterData, 10, "行[n]");
  // 1+5 bands, then 1+4: together 11 of 8 that fit.
  Pages pages = print(t, numbered(9));
  ASSERT_EQ(pages.count(), 2);
  EXPECT_EQ(page(pages, 1), "组|行6|行7|行8|行9");

  // Longer than a page: no use in moving it.
  pages = print(t, numbered(20));
  EXPECT_EQ(pages.lines(0).size(), 8);
  EXPECT_EQ(pages.lines(0).last(), text("行6"));

  t.groups = {{.by = text("n mod 3"), .newPage = true}};
  pages = print(t, numbered(3));
  ASSERT_EQ(pages.count(), 3);
  EXPECT_EQ(page(pages, 2), "组|行3");

  // A header does not stand alone at the foot of a page.
  t.groups = {{.by = text("n>6")}};
  pages = print(t, numbered(7));  // 7 bands, then a header in the last place
  ASSERT_EQ(pages.count(), 2);
  EXPECT_EQ(pages.lines(0).size(), 7);
  EXPECT_EQ(page(pages, 1), "组|行7");
}

TEST(ReportLayout, ARowGrowsWithItsTextPushesDownAndTakesItsFrameAlong) {
  Template t = smallPage();
  Band& row = addBand(t, BandKind::MasterData, 12);
  Item name = textItem(0, 0, 30, 6, text("[name]"));
  name.grow = true;
  Item below = textItem(0, 6, 30, 6, text("底"));
  Item frame = shapeItem(0, 0, 80, 12);
  frame.followHeight = true;
  row.items = {name, below, frame};
  addText(t, BandKind::Summary, 6, "完");
  const auto topOf = [](const Pages& pages, const char* word) {
    const auto hits = pages.find(text(word));
    return hits.empty() ? -1 : hits.front().area.center().y();
  };
  const Pages one = print(t, rowsOf({"name"}, {{"短"}}));
  const Pages three = print(t, rowsOf({"name"}, {{"这个名称长得一行放不下所以要占好几行才放得下"}}));
  EXPECT_GT(three.lines(0).size(), 4);
  const double grown = topOf(three, "完") - topOf(one, "完");
  EXPECT_GT(grown, 4);
  EXPECT_NEAR(topOf(three, "底") - topOf(one, "底"), grown, 0.01);
}

TEST(ReportLayout, AnEmptyRowPrintsItsFramesAndNothingElse) {
  Template t = smallPage();
  Band& row = addBand(t, BandKind::MasterData, 10);
  Item cell = textItem(0, 0, 40, 10, text("[Line] 名:[name]"));
  cell.frame = side::all;
  row.items = {cell};
  addText(t, BandKind::Summary, 10, "[count(*)]行 [Sum(n)] 末[name]");
  const Pages pages = print(t, rowsOf({"name", "n"}, {{"甲", "3"}, {"乙", "4"}, {"", ""}, {"", ""}}));
  // Four frames, two with text; the summary knows the last row that says something.
  EXPECT_EQ(whole(pages), "1 名:甲|2 名:乙|2行 7 末乙");
  const auto hits = pages.find(text("末"));
  ASSERT_EQ(hits.size(), 1u);
  EXPECT_NEAR(hits.front().area.center().y(), 10 + 4 * 10 + 5, 0.5);
}

TEST(ReportLayout, ARollIsAsLongAsItsContents) {
  Template t;
  usePaper(t.page, papers().back());
  addText(t, BandKind::ReportTitle, 10, "头");
  addText(t, BandKind::MasterData, 5, "[n]");
  addText(t, BandKind::PageFooter, 7, "谢谢");
  const Pages pages = print(t, numbered(100));
  ASSERT_EQ(pages.count(), 1);
  EXPECT_DOUBLE_EQ(pages.size(0).width(), 58);
  EXPECT_NEAR(pages.size(0).height(), 3 + 10 + 100 * 5 + 7 + 3, 0.01);
  // Longer than any printer takes in one go: the next piece.
  const Pages two = print(t, numbered(700));
  ASSERT_EQ(two.count(), 2);
  EXPECT_LT(two.size(1).height(), 1000);
}

TEST(ReportLayout, LabelsFillColumnsAcrossOrDownBehindThoseThatAreUsedUp) {
  Template t = smallPage();
  t.page.columns = 2;
  addText(t, BandKind::MasterData, 20, "[n]");
  t.bands.back().items.back().width = 30;
  test::needGui();
  t.page.flow = Flow::Across;
  Report across(t);
  across.setRows(numbered(10));
  across.setSkippedCells(3);
  // Four lines of two: three cells are gone, the first label stands at the right of the second line.
  Pages pages = across.prepare();
  ASSERT_EQ(pages.count(), 2);
  EXPECT_EQ(page(pages, 0), "1|2\t3|4\t5");
  EXPECT_EQ(page(pages, 1), "6\t7|8\t9|10");
  EXPECT_NEAR(pages.find(text("1")).front().area.x(), 10 + 40 + 0.8, 0.01);

  t.page.flow = Flow::Down;
  Report down(t);
  down.setRows(numbered(6));
  pages = down.prepare();
  EXPECT_EQ(page(pages, 0), "1\t5|2\t6|3|4");
}

TEST(ReportLayout, APreprintedFormLeavesOutWhatIsPrintedAlready) {
  Template t = smallPage();
  Item& caption = addText(t, BandKind::ReportTitle, 10, "客户：");
  caption.background = true;
  t.bands.back().items.push_back(textItem(20, 0, 40, 10, text("张三")));
  EXPECT_EQ(whole(print(t, numbered(0))), "客户：\t张三");
  t.page.preprinted = true;
  EXPECT_EQ(whole(print(t, numbered(0))), "张三");
}

TEST(ReportLayout, RepeatedValuesAndConditionsLeaveOutWhatNobodyNeeds) {
  Template t = smallPage();
  Item& item = addText(t, BandKind::MasterData, 20, "[ck]");
  item.hideRepeated = true;
  t.bands.back().items.push_back(textItem(40, 0, 40, 20, text("[n]")));
  Item only = textItem(60, 0, 20, 20, text("贵"));
  only.visibleIf = text("n>=5");
  t.bands.back().items.push_back(only);
  t.bands.back().visibleIf = text("n<>2");
  const Pages pages =
      print(t, rowsOf({"ck", "n"}, {{"东", "1"}, {"东", "2"}, {"东", "3"}, {"西", "4"}, {"西", "5"}, {"西", "6"}}));
  // The second page says again which warehouse it is.
  ASSERT_EQ(pages.count(), 2);
  EXPECT_EQ(page(pages, 0), "东\t1|3|西\t4|5\t贵");
  EXPECT_EQ(page(pages, 1), "西\t6\t贵");
}

TEST(ReportLayout, ATextLongerThanAPageGoesOnOverPagesWithoutLosingALine) {
  Template t = smallPage();
  Item& note = addText(t, BandKind::ReportTitle, 10, "[note]");
  note.grow = true;
  note.valign = VAlign::Top;
  t.bands.back().splits = true;
  addText(t, BandKind::PageFooter, 10, "第[Page]页");
  QString words;
  for (int i = 1000; i < 1400; ++i)
    words += QString::number(i) + u'\n';
  test::needGui();
  Report report(t);
  report.setText(u"note", words.trimmed());
  const Pages pages = report.prepare();
  EXPECT_GT(pages.count(), 15);
  QStringList all = linesOf(pages);
  EXPECT_EQ(all.removeIf([](const QString& line) { return line.startsWith(u'第'); }), pages.count());
  ASSERT_EQ(all.size(), 400);
  EXPECT_EQ(all.join(u'\n'), words.trimmed());
}

TEST(ReportLayout, HeadersThatLeaveNoRoomEndInPagesAndNotInALoop) {
  Template t = smallPage();
  addText(t, BandKind::PageHeader, 60, "高");
  addText(t, BandKind::PageFooter, 60, "低");
  addText(t, BandKind::MasterData, 30, "[n]");
  const Pages pages = print(t, numbered(3));
  EXPECT_GT(pages.count(), 2);
  EXPECT_LT(pages.count(), 40);
}

TEST(ReportLayout, TenThousandLinesAreLaidOutQuicklyAndStayCompact) {
  const Report report = test::deliveredReport("spxs", 10000);
  QElapsedTimer timer;
  timer.start();
  const Pages pages = report.prepare();
  // Ten times what it takes on a busy machine without optimisation.
  EXPECT_LT(timer.elapsed(), 10000);
  EXPECT_GT(pages.count(), 200);
  EXPECT_LT(pages.memory(), 10u << 20);
}

}  // namespace jxc::report_layout_test
