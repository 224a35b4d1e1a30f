// What every list offers: a spreadsheet file, the clipboard, paper, and a layout that stays.
#include "ui/grid_output.h"

#include "harness/articles.h"
#include "harness/files.h"
#include "masterdata/goods_classes.h"
#include "platform/sheet/sheet_reader.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"
#include "ui/grid_layout.h"
#include "ui/grid_msg.h"
#include "ui/grid_paper.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>

namespace jxc::test {
namespace grid_output_test {

constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称"},
    {"kc", "库存", ui::ColumnKind::Quantity, 0, {.sum = true}},
    {"jj", "进价", ui::ColumnKind::Money},
    {"zje", "金额", ui::ColumnKind::Total, 0, {.sum = true}},
    {"rq", "日期", ui::ColumnKind::Date},
    {"jy", "禁用", ui::ColumnKind::Flag},
    {.field = "bz", .caption = "备注", .use = {.hidden = true}},
};
constexpr ui::GridSpec kGrid = {"gridTest", "商品", kColumns, "没有商品", "id", "test"};

/// Rows of a list with what may go wrong in them.
RowSet goods(int count, const char* second = "=1+1") {
  RowSet rows({"id", "g_sn", "g_name", "kc", "jj", "zje", "rq", "jy", "bz"});
  for (int i = 1; i <= count; ++i) {
    rows.addInteger(i);
    rows.addText("000" + std::to_string(i));
    rows.addText(i == 2 ? second : "镜架\"" + std::to_string(i) + "\"\t[号]");
    rows.addReal(i * 1.5);
    rows.addReal(i * 10);
    rows.addReal(i * -15.255);
    if (i == 3) {
      rows.addNull();
    } else {
      rows.addText("2021-05-03");
    }
    rows.addInteger(i % 2);
    rows.addText("藏");
  }
  return rows;
}

}  // namespace grid_output_test

class GridOutputTest : public ScreenTest {
 protected:
  /// What the operator answers when he is asked for a file; the question is kept.
  void answerFile(const QString& name) {
    ui::setFileAnswer([this, name](const QString& proposed, const QString& filters) {
      asked_ << proposed + u'|' + filters;
      return name.isEmpty() ? name : file(name);
    });
  }
  static void choose(ui::Grid& grid, const char* command) {
    QMenu menu;
    grid.fillMenu(menu);
    auto* action = menu.findChild<QAction*>(QString::fromLatin1(command));
    ASSERT_NE(action, nullptr) << command;
    if (action->isEnabled()) action->trigger();
  }
  QStringList asked_;
};

TEST_F(GridOutputTest, AListBecomesASpreadsheet) {
  ui::Grid grid(grid_output_test::kGrid, "F_Test", nullptr);
  answerFile(QStringLiteral("a.xls"));
  choose(grid, "btnRExport");
  EXPECT_EQ(asked_, QStringList());  // nothing to write, nothing to ask

  grid.setRows(grid_output_test::goods(3));
  grid.view()->horizontalHeader()->moveSection(6, 0);
  grid.setColumnAllowed("jj", false);
  grid.setHeading([] { return ui::GridHeading{QStringLiteral("商品/库存"), QStringLiteral("仓库：门店")}; });
  answerFile({});
  choose(grid, "btnRExport");  // left without a name
  EXPECT_EQ(asked_, QStringList{QStringLiteral("商品-库存|(*.xls);;(*.xlsx)")});

  for (const QString& name : {QStringLiteral("a.xls"), QStringLiteral("a.xlsx")}) {
    answerFile(name);
    expectNotice(QStringLiteral("导出成功！"));
    choose(grid, "btnRExport");
    const RowSet rows = openExcel(file(name))->rows();
    EXPECT_EQ(rows.columns(), (std::vector<std::string>{"禁用", "商品编号", "商品名称", "库存", "金额", "日期"}));
    ASSERT_EQ(rows.rowCount(), 5);
    EXPECT_EQ(rows[0].text("禁用"), QStringLiteral("√"));
    EXPECT_EQ(rows[0].value("商品编号"), Value(u"0001"));
    EXPECT_EQ(rows[0].value("商品名称"), Value(u"镜架\"1\"\t[号]"));
    EXPECT_EQ(rows[1].value("商品名称"), Value(u"=1+1"));
    EXPECT_EQ(rows[0].value("库存"), Value(1.5));
    EXPECT_EQ(rows[0].value("金额"), Value(-15.255));
    EXPECT_EQ(rows[1].value("日期"), Value(u"2021-05-03"));
    EXPECT_TRUE(rows[2].isNull("日期"));
    EXPECT_EQ(rows[3].text("禁用"), QStringLiteral("合计"));
    EXPECT_EQ(rows[3].value("库存"), Value(9));
    EXPECT_EQ(rows[3].value("金额"), Value(-91.53));
    EXPECT_EQ(rows[4].text("禁用"), QStringLiteral("仓库：门店"));
  }
  answerFile(QStringLiteral("nowhere/a.xls"));
  expectNotice(QStringLiteral("文件夹不存在：\n") + file(QStringLiteral("nowhere")));
  choose(grid, "btnRExport");

  // The rows are those of the moment; a long list is proposed as the newer kind of file.
  const Sheet sheet = ui::gridSheet(grid);
  grid.setRows(grid_output_test::goods(70000));
  std::vector<Value> cells(sheet.columns.size());
  sheet.rows.read(2, cells);
  EXPECT_EQ(sheet.rows.count, 3);
  EXPECT_EQ(cells[1], Value(u"0003"));
  answerFile({});
  choose(grid, "btnRExport");
  EXPECT_TRUE(asked_.back().endsWith(QStringLiteral("|(*.xlsx);;(*.xls)")));
}

TEST_F(GridOutputTest, MarkedRowsOrAllOnTheClipboard) {
  ui::Grid grid(grid_output_test::kGrid, "F_Test", nullptr);
  grid.show();
  grid.setRows(grid_output_test::goods(3));
  grid.setColumnVisible("bz", false);
  const auto lines = [] { return QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts); };
  grid.selectRow(1);
  pressIn(*grid.view(), "Ctrl+C");
  EXPECT_EQ(lines(), QStringList({QStringLiteral("商品编号\t商品名称\t库存\t进价\t金额\t日期\t禁用"),
                                  QStringLiteral("0002\t'=1+1\t3\t20\t-30.51\t2021-05-03\t")}));
  pressIn(*grid.view(), "Ctrl+Shift+C");
  EXPECT_EQ(lines().size(), 4);
  grid.setMultiSelect(true);
  grid.view()->selectAll();
  choose(grid, "btnRCopy");
  EXPECT_EQ(lines().size(), 4);

  // Texts that a spreadsheet would take for formulas; powers go as they are.
  grid.setMultiSelect(false);
  for (const auto& [text, copied] : {std::pair("-1+2", "'-1+2"),
                                     {"+A1", "'+A1"},
                                     {"@SUM(A1)", "'@SUM(A1)"},
                                     {"-3.00", "-3.00"},
                                     {"+0.75", "+0.75"},
                                     {"a=1", "a=1"}}) {
    grid.setRows(grid_output_test::goods(2, text));
    pressIn(*grid.view(), "Ctrl+Shift+C");
    EXPECT_EQ(lines().value(2).split(u'\t').value(1), copied);
  }
}

TEST_F(GridOutputTest, TheLayoutIsExplainedOnceThenSaved) {
  const QString kept = file(QStringLiteral("Layout/test.ini"));
  QDir().rmdir(file(QStringLiteral("Layout")));
  const auto width = [](ui::Grid& grid) { return grid.view()->columnWidth(1); };
  {
    ui::Grid grid(grid_output_test::kGrid, "F_Test", nullptr);
    grid.show();
    grid.setRows(grid_output_test::goods(3));
    EXPECT_TRUE(grid.isAutoWidth());
    expectScreen("F_GridMsg", [](ui::Screen& s) { press(s, "Esc"); });
    choose(grid, "btnRDybj");
    EXPECT_FALSE(grid.isAutoWidth());  // columns may be dragged at once
    expectScreen("F_GridMsg", [](ui::Screen& s) { press(s, "F5"); });
    choose(grid, "btnRDybj");
    EXPECT_FALSE(QFileInfo::exists(file(QStringLiteral("Layout"))));

    grid.view()->horizontalHeader()->moveSection(4, 1);
    grid.view()->setColumnWidth(1, 234);
    QMenu menu;
    grid.fillMenu(menu);
    for (auto* action : menu.findChildren<QAction*>()) {
      if (action->text() == QStringLiteral("备注") || action->text() == QStringLiteral("日期")) action->toggle();
    }
    grid.setColumnVisible("kc", false);  // another mode of the list, not the operator's wish
    expectNotice(QStringLiteral("布局调整成功！"));
    choose(grid, "btnRDybj");
    EXPECT_TRUE(QFile::exists(kept));
  }
  const auto captions = [](ui::Grid& grid) {
    QStringList all;
    for (const auto& column : grid.exportColumns())
      all << column.caption;
    return all.join(u' ');
  };
  ui::Grid grid(grid_output_test::kGrid, "F_Test", nullptr);
  grid.setColumnAllowed("jj", false);
  grid.show();
  grid.setRows(grid_output_test::goods(3));
  EXPECT_EQ(captions(grid), QStringLiteral("商品编号 金额 商品名称 库存 禁用 备注"));
  EXPECT_EQ(width(grid), 234);
  EXPECT_FALSE(grid.isAutoWidth());

  // Without its file the list is as it was designed, from the next showing on.
  QFile::remove(kept);
  grid.hide();
  grid.show();
  EXPECT_TRUE(grid.isAutoWidth());
  EXPECT_NE(width(grid), 234);
  EXPECT_EQ(captions(grid), QStringLiteral("商品编号 商品名称 库存 金额 日期 禁用"));

  // A file that somebody has spoilt does no harm.
  writeBytes(kept, "[columns]\ng_sn=x, -5\ng_name=99999, 99999\nkc=1\n\xff\xfe=");
  ui::restoreGridLayout(QStringLiteral("test"), grid);
  EXPECT_LE(width(grid), 2000);
  EXPECT_TRUE(captions(grid).contains(QStringLiteral("商品名称")));
  grid.dropLayout();
  EXPECT_FALSE(QFile::exists(kept));
  EXPECT_EQ(captions(grid), QStringLiteral("商品编号 商品名称 库存 金额 日期 禁用"));

  // Where nothing can be written the operator is told.
  QDir().rmdir(file(QStringLiteral("Layout")));
  writeBytes(file(QStringLiteral("Layout")), {});
  expectNotice(QStringLiteral("布局文件不能写入：") + kept);
  ui::saveGridLayout(QStringLiteral("test"), grid);
}

TEST_F(GridOutputTest, AListOnPaperAsItStands) {
  ui::Grid grid(grid_output_test::kGrid, "F_Test", nullptr);
  grid.setRows(grid_output_test::goods(300));
  grid.setColumnAllowed("jj", false);
  grid.setHeading([] { return ui::GridHeading{QStringLiteral("商品[库存]"), QStringLiteral("仓库：'门店' [1]")}; });
  const report::Pages pages = ui::gridReport(grid).prepare();
  EXPECT_TRUE(pages.faults().empty());
  ASSERT_GT(pages.count(), 4);
  EXPECT_LT(pages.size(0).width(), pages.size(0).height());
  const QString first = pages.lines(0).join(u'\n'), last = pages.lines(pages.count() - 1).join(u'\n');
  EXPECT_TRUE(first.contains(QStringLiteral("商品[库存]"))) << first.toStdString();
  EXPECT_TRUE(first.contains(QStringLiteral("仓库：'门店' [1]")));
  EXPECT_TRUE(first.contains(QStringLiteral("商品编号\t商品名称\t库存\t金额\t日期\t禁用")));
  EXPECT_TRUE(first.contains(QStringLiteral("0002\t=1+1\t3.00\t-30.51\t2021-05-03")));
  EXPECT_TRUE(last.contains(QStringLiteral("商品编号")));  // captions on every page
  EXPECT_TRUE(last.contains(QStringLiteral("合计\t67725.00"))) << last.toStdString();
  EXPECT_TRUE(last.contains(QStringLiteral("第 %1 页　共 %1 页").arg(pages.count()))) << last.toStdString();
  EXPECT_FALSE(first.contains(QStringLiteral("进价")) || first.contains(QStringLiteral("合计")));

  // Many columns lie across the paper; the window of the pages opens over the list.
  expectScreen("F_Preview", [](ui::Screen& s) { press(s, "Esc"); });
  choose(grid, "btnRPrint");
  grid.clearRows();
  choose(grid, "btnRPrint");  // nothing to print, nothing opens
}

// The screens have it as a command and as a key, for the list that is in sight, with what was searched for.
TEST_F(GridOutputTest, ScreensExportTheListInSight) {
  const QString frames = addGoodsClass(1, QStringLiteral("镜架"), prompt)->number;
  ASSERT_TRUE(addGoods(article(u"30000001"_qs, u"钛架 8801"_qs, frames, 4), prompt));
  open("F_Kccx", [&](ui::Screen& s) {
    answerFile(QStringLiteral("kc.xls"));
    press(s, "Ctrl+S", QStringLiteral("导出成功！"));
    EXPECT_EQ(asked_, QStringList{QStringLiteral("当前库存查询-当前库存|(*.xls);;(*.xlsx)")});
    const RowSet rows = openExcel(file(QStringLiteral("kc.xls")))->rows();
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows[0].text("商品编号"), QStringLiteral("30000001"));
    EXPECT_EQ(rows[1].number("当前库存"), 4);
    EXPECT_EQ(rows[2].text("商品编号"), QStringLiteral("仓库：所有仓库　商品类别：所有类别"));
  });
  for (const char* screen : {"F_Spxxgl", "F_Khgl", "F_Ghsgl", "F_Yskgl", "F_Yfkgl", "F_Xjyh", "F_Yskdj"}) {
    open(screen, [&](ui::Screen& s) {
      asked_.clear();
      answerFile({});
      click(s, "btn_Export");
      auto* grid = s.gridInSight();
      ASSERT_NE(grid, nullptr) << screen;
      EXPECT_EQ(asked_.size(), grid->isEmpty() ? 0 : 1) << screen;
    });
  }
}

}  // namespace jxc::test
