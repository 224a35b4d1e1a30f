// 打印预览: the pages of a print under the hands of an operator who has no mouse.
#include "ui/report/preview.h"

#include "harness/files.h"
#include "harness/report_samples.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"
#include "ui/report/print.h"

#include <QComboBox>
#include <QFile>
#include <QListView>
#include <QScrollBar>

namespace jxc::preview_test {

using namespace test;
using ui::PageView;

class PreviewTest : public ScreenTest {
 protected:
  void preview(const report::Pages& pages, std::function<void(ui::TF_Preview&)> steps) {
    expectScreen("F_Preview", [&](ui::Screen& screen) { steps(dynamic_cast<ui::TF_Preview&>(screen)); });
    ui::showPreview(pages);
  }
  report::Pages sale(int rows) { return saleReport(rows).prepare(); }
};

TEST_F(PreviewTest, PagesZoomAndSearchByKeys) {
  preview(sale(200), [&](ui::TF_Preview& screen) {
    PageView& view = screen.view();
    auto* list = screen.findChild<QListView*>("listPages");
    ASSERT_GT(view.pages().count(), 4);
    EXPECT_TRUE(screen.windowTitle().contains(QStringLiteral("销售单")));
    EXPECT_EQ(screen.field("tpage").integer(), 1);
    EXPECT_EQ(list->model()->rowCount(), view.pages().count());

    press(screen, "Ctrl+PgDown");
    press(screen, "Ctrl+PgDown");
    EXPECT_EQ(view.currentPage(), 2);
    EXPECT_EQ(screen.field("tpage").integer(), 3);
    EXPECT_EQ(list->currentIndex().row(), 2);
    pressIn(view, "End");
    EXPECT_EQ(view.currentPage(), view.pages().count() - 1);
    pressIn(view, "Home");
    EXPECT_EQ(view.currentPage(), 0);
    pressIn(view, "PgDown");
    EXPECT_GT(view.verticalScrollBar()->value(), 100);
    enter(screen, "tpage", u"4");
    EXPECT_EQ(view.currentPage(), 3);
    enter(screen, "tpage", u"999");
    EXPECT_EQ(screen.field("tpage").integer(), view.pages().count());
    list->setCurrentIndex(list->model()->index(1, 0));
    EXPECT_EQ(view.currentPage(), 1);

    press(screen, "Ctrl+2");
    const double whole = view.zoom();
    EXPECT_EQ(screen.field("comZoom").text(), QStringLiteral("整页"));
    press(screen, "Ctrl+0");
    EXPECT_EQ(view.zoom(), 1);
    EXPECT_EQ(screen.field("comZoom").text(), QStringLiteral("100%"));
    press(screen, "Ctrl++");
    EXPECT_EQ(view.zoom(), 1.25);
    press(screen, "Ctrl+-");
    press(screen, "Ctrl+-");
    EXPECT_EQ(view.zoom(), 0.75);
    choose(screen, "comZoom", QStringLiteral("200%"));
    EXPECT_EQ(view.zoom(), 2);
    press(screen, "Ctrl+1");
    EXPECT_GT(view.zoom(), whole);
    EXPECT_EQ(view.currentPage(), 1);

    press(screen, "Ctrl+F");
    EXPECT_TRUE(screen.field("tfind").hasFocus());
    type(screen, "tfind", u"绿膜");
    EXPECT_EQ(view.hits().size(), 200u);
    EXPECT_EQ(view.shownHit(), 0);
    EXPECT_EQ(view.currentPage(), 0);
    press(screen, "Shift+F3");
    EXPECT_EQ(view.shownHit(), 199);
    EXPECT_EQ(view.currentPage(), view.hits().back().page);
    press(screen, "F3");
    press(screen, "Return");
    EXPECT_EQ(view.shownHit(), 1);
    type(screen, "tfind", u"没有这种镜");
    EXPECT_FALSE(screen.command("btnNext").isEnabled());
    press(screen, "Return", QStringLiteral("没有找到“没有这种镜”。"));
  });
}

TEST_F(PreviewTest, SavesFilesAndTellsWhatWentWrong) {
  const QTemporaryDir folder;
  const auto answer = [](const QString& path) {
    ui::setFileAnswer([path](const QString& proposed, const QString&) {
      EXPECT_TRUE(proposed.contains(QStringLiteral("销售单")));
      return path;
    });
  };
  preview(sale(60), [&](ui::TF_Preview& screen) {
    answer({});  // left without a file
    press(screen, "Ctrl+S");
    answer(folder.filePath(u"单"_qs));
    press(screen, "Ctrl+S", u"已存为“%1”。"_qs.arg(folder.filePath(u"单.pdf"_qs)));
    press(screen, "Ctrl+E", u"已存为2个文件，从“单.png”到“单-2.png”。"_qs);
    answer(folder.filePath(u"no/such.pdf"_qs));
    press(screen, "Ctrl+S", u"文件“%1”无法写入：此文件或目录不存在。"_qs.arg(folder.filePath(u"no/such.pdf"_qs)));
    EXPECT_FALSE(screen.command("btnFaults").isVisible());
  });
  EXPECT_TRUE(bytesOf(folder.filePath(QStringLiteral("单.pdf"))).startsWith("%PDF"));
}

TEST_F(PreviewTest, FaultsOfTheTemplateAreOneKeyAway) {
  report::Template t = delivered("posxp58");
  t.bands.front().items.push_back(report::textItem(0, 0, 10, 5, QStringLiteral("[1/0]")));
  preview(sampleReport(t, 1).prepare(), [&](ui::TF_Preview& screen) {
    EXPECT_TRUE(screen.command("btnFaults").isVisible());
    EXPECT_FALSE(screen.findChild<QListView*>("listPages")->isVisible());  // one page needs no list
    press(screen, "F8", QStringLiteral("报表标题 / 文本：除数为零（1/0）"));
  });
}

TEST_F(PreviewTest, PrintingWithoutAPrinterSaysSoAndAFileNeedsNone) {
  const QTemporaryDir folder;
  const report::Pages pages = sale(3);
  const auto failure = [&](const ui::PrintJob& job) {
    try {
      ui::printPages(pages, job);
      return QString();
    } catch (const std::exception& error) {
      return QString::fromUtf8(error.what());
    }
  };
  EXPECT_EQ(failure({.printer = QStringLiteral("没有的打印机")}), QStringLiteral("找不到打印机“没有的打印机”。"));
  EXPECT_EQ(failure({.toFile = folder.filePath(QStringLiteral("a.pdf"))}), QString());
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("a.pdf"))));
  if (ui::printerNames().isEmpty()) {
    const QString none = QStringLiteral("没有可用的打印机，请先安装打印机，或者存为PDF。");
    EXPECT_EQ(failure({}), none);
    preview(pages, [&](ui::TF_Preview& screen) { press(screen, "F5", none); });
  }
}

}  // namespace jxc::preview_test
