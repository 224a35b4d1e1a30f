// The designer of report templates: edits with undo, mouse and keys on the canvas, saving that loses nothing.
#include "core/text.h"
#include "harness/files.h"
#include "harness/gui.h"
#include "output/printed_documents.h"
#include "output/screens/template_designer.h"
#include "output/templates.h"
#include "platform/report/report.h"
#include "platform/report/template_file.h"
#include "screens/harness/screen_test.h"
#include "stock/document_family.h"
#include "ui/designer/design_canvas.h"
#include "ui/designer/design_columns.h"
#include "ui/designer/design_trees.h"
#include "ui/designer/property_panel.h"
#include "ui/file_dialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>

namespace jxc::test::designer_test {

using report::BandKind;
using report::Template;
using ui::DesignDocument;
using ui::Edge;
using ui::ItemRef;

Template slip() {
  Template t;
  t.title = u"销售单"_qs;
  t.variables = {{u"khName"_qs, u"客户名称"_qs, {}, u"'明视眼镜'"_qs}};
  t.fields = {{u"g_name"_qs, u"商品名称"_qs, u"钛架"_qs}, {u"ls_zje"_qs, u"金额"_qs, u"198"_qs}};
  auto& title = report::addBand(t, BandKind::ReportTitle, 20);
  title.items = {report::textItem(10, 2, 60, 8, u"销售单"_qs), report::textItem(10, 12, 60, 6, u"客户：[khName]"_qs)};
  auto& row = report::addBand(t, BandKind::MasterData, 6);
  row.items = {report::textItem(0, 0, 60, 6, u"[g_name]"_qs), report::textItem(60, 0, 30, 6, u"[ls_zje]"_qs)};
  return t;
}

TEST(DesignDocumentTest, EveryStepGoesBackAndForthWithWhatWasChosen) {
  DesignDocument document;
  const Template before = slip();
  document.start(before, {});
  EXPECT_FALSE(document.canUndo());

  document.choose({{0, 0}});
  for (int i = 0; i < 5; ++i)
    document.moveBy(1, 0, u"move"_qs);  // an arrow key held down is one step
  EXPECT_EQ(document.item({0, 0}).x, 15);
  document.moveBy(0, -100);
  EXPECT_EQ(document.item({0, 0}).y, 0);
  document.undo();
  EXPECT_EQ(document.item({0, 0}).y, 2);
  document.undo();
  EXPECT_EQ(document.current(), before);
  EXPECT_FALSE(document.isDirty());
  document.redo();
  EXPECT_EQ(document.item({0, 0}).x, 15);
  EXPECT_TRUE(document.isDirty());

  // A band goes with its objects and comes back with them; what was chosen in it does not dangle.
  document.choose({{1, 1}});
  document.removeBand(1);
  EXPECT_EQ(document.current().bands.size(), 1u);
  EXPECT_TRUE(document.chosen().empty());
  document.undo();
  ASSERT_EQ(document.current().bands.size(), 2u);
  EXPECT_EQ(document.current().bands[1].items.size(), 2u);
  EXPECT_FALSE(document.canRedo() && document.redoText().isEmpty());

  // Another edit ends the way forth.
  document.choose({{0, 1}});
  document.growBy(4, 0);
  EXPECT_FALSE(document.canRedo());
}

TEST(DesignDocumentTest, ObjectsAlignWithTheLastChosenAndSpreadEvenly) {
  DesignDocument document;
  Template t = slip();
  t.bands[1].items = {report::textItem(0, 0, 10, 4, u"a"_qs), report::textItem(13, 1, 20, 5, u"b"_qs),
                      report::textItem(50, 2, 10, 6, u"c"_qs)};
  document.start(t, {});
  document.choose({{1, 0}, {1, 1}, {1, 2}});
  document.spread(Qt::Horizontal);  // 60 wide, 40 taken: two gaps of 10
  EXPECT_EQ(document.item({1, 1}).x, 20);
  EXPECT_EQ(document.item({1, 2}).x, 50);
  document.align(Edge::Bottom);  // with the last one, whose foot is at 8
  EXPECT_EQ(document.item({1, 0}).y, 4);
  EXPECT_EQ(document.item({1, 1}).y, 3);
  document.sameHeight();
  EXPECT_EQ(document.item({1, 0}).height, 6);
  document.choose({{1, 1}});
  document.align(Edge::Right);  // alone: with its band, 190 mm between the margins
  EXPECT_EQ(document.item({1, 1}).x, 170);

  document.choose({{1, 0}});
  document.reorder(ui::Order::Front);
  EXPECT_EQ(document.item({1, 2}).content, u"a"_qs);
  EXPECT_EQ(document.chosen(), std::vector({ItemRef{1, 2}}));
}

TEST(DesignDocumentTest, CopiesReachAnotherTemplateAndGroupsComeAndGoWhole) {
  DesignDocument from, to;
  from.start(slip(), {});
  from.choose({{0, 0}, {0, 1}});
  const QByteArray parcel = from.copyChosen();
  to.start(slip(), {});
  to.chooseBand(1);
  EXPECT_TRUE(to.paste(parcel));
  ASSERT_EQ(to.current().bands[1].items.size(), 4u);
  EXPECT_EQ(to.item({1, 2}).content, u"销售单"_qs);
  EXPECT_EQ(to.chosen().size(), 2u);
  EXPECT_GE(to.current().bands[1].height, 8);  // holds what was put in
  EXPECT_FALSE(to.paste("just words"));

  to.addBand(BandKind::GroupHeader);
  to.addBand(BandKind::GroupHeader);
  ASSERT_EQ(to.current().groups.size(), 2u);
  ASSERT_EQ(to.current().bands.size(), 6u);
  to.removeBand(2);  // header of the first group: its footer keeps the group
  EXPECT_EQ(to.current().groups.size(), 2u);
  to.removeBand(2);
  EXPECT_EQ(to.current().groups.size(), 1u);
  for (const auto& band : to.current().bands)
    EXPECT_EQ(band.group, 0);
}

/// Head, rows and sums of every delivered list take a column and give it back in one step; nothing overlaps or gapes.
TEST(DesignDocumentTest, AColumnComesAndGoesWithItsTitleItsCellAndItsSum) {
  needGui();
  const report::DetailField amount{u"extra"_qs, u"应收金额"_qs, u"12.5"_qs};
  int lists = 0;
  for (const KnownTemplate& each : knownTemplates()) {
    SCOPED_TRACE(words(each.name).toStdString());
    Template before = report::parseTemplate(deliveredTemplate(QStringView(each.name)));
    const std::vector<double> edges = ui::columnEdges(before);
    if (edges.size() < 4) continue;
    ++lists;
    int sumsFrom = 1000;  // the column behind the caption of the sums
    for (const report::Band& band : before.bands)
      if (band.kind == BandKind::Summary && !band.items.empty() && band.items[0].content == u"合计")
        sumsFrom = ui::columnOf(before, band.items[0]) + 1;
    before.fields.push_back(amount);
    const int columns = static_cast<int>(edges.size()) - 1;
    for (const int at : {0, columns / 2, columns}) {
      Template t = before;
      ASSERT_TRUE(ui::insertColumn(t, at, amount)) << at;
      const std::vector<double> now = ui::columnEdges(t);
      ASSERT_EQ(now.size(), edges.size() + 1) << at;
      EXPECT_NEAR(now.back(), edges.back(), 0.5);
      report::Report filled = report::sampleReport(t, 2);
      const QString paper = filled.prepare().lines(0).join(u'\n');
      EXPECT_TRUE(paper.contains(u"应收金额")) << paper.toStdString();
      EXPECT_TRUE(paper.contains(u"12.50"));
      EXPECT_EQ(paper.contains(u"25.00"), sumsFrom < 1000 && (at == 0 || at >= sumsFrom)) << at;
      ASSERT_TRUE(ui::removeColumn(t, at));
      ASSERT_EQ(ui::columnEdges(t).size(), edges.size());
      const auto count = [](const Template& one) {
        std::size_t items = 0;
        for (const auto& band : one.bands)
          items += band.items.size();
        return items;
      };
      EXPECT_EQ(count(t), count(before)) << at;
    }
  }
  EXPECT_GT(lists, 30);
}

class DesignerTest : public ScreenTest {
 protected:
  DesignerTest() : path_(file(u"spxs.fr3"_qs)) { report::saveTemplate(slip(), path_, report::SaveMode::New); }
  void design(const std::function<void(TF_Bbsj_Edit&)>& steps) {
    expectScreen("F_Bbsj_Edit", [steps](ui::Screen& s) { steps(static_cast<TF_Bbsj_Edit&>(s)); });
    ui::screenAs<TF_Bbsj_Edit>("F_Bbsj_Edit").design(path_);
  }
  static void mouse(ui::DesignCanvas& canvas, QEvent::Type type, QPoint at, Qt::KeyboardModifiers keys = {}) {
    const bool isUp = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, QPointF(at), canvas.viewport()->mapToGlobal(QPointF(at)), Qt::LeftButton,
                      isUp ? Qt::NoButton : Qt::LeftButton, keys);
    QApplication::sendEvent(canvas.viewport(), &event);
  }
  static void drag(ui::DesignCanvas& canvas, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
    mouse(canvas, QEvent::MouseButtonPress, from, keys);
    for (int i = 1; i <= 4; ++i)
      mouse(canvas, QEvent::MouseMove, from + (to - from) * i / 4, keys);
    mouse(canvas, QEvent::MouseButtonRelease, to, keys);
  }
  QString path_;
};

TEST_F(DesignerTest, AnOwnerChangesTheSlipByMouseAndKeysAndPrintsItAgain) {
  const QByteArray original = bytesOf(path_);
  design([&](TF_Bbsj_Edit& screen) {
    auto& document = screen.designer().document();
    auto& canvas = screen.designer().canvas();
    canvas.setZoom(1);
    const double mm = canvas.logicalDpiX() / 25.4;

    // Takes the title by its middle and drags it 20 mm to the right: it comes to the grid.
    const QPoint middle = canvas.itemRect({0, 0}).center();
    drag(canvas, middle, middle + QPoint(static_cast<int>(20.2 * mm), 0));
    EXPECT_EQ(document.item({0, 0}).x, 30);
    // By its lower right corner 10 mm narrower.
    const QPoint corner = canvas.itemRect({0, 0}).bottomRight();
    drag(canvas, corner, corner - QPoint(static_cast<int>(10 * mm), 0));
    EXPECT_EQ(document.item({0, 0}).width, 50);
    // Arrow keys: 3 mm down, and back by undo in one step.
    for (int i = 0; i < 3; ++i)
      pressIn(canvas, "Down");
    EXPECT_EQ(document.item({0, 0}).y, 5);
    press(screen, "Ctrl+Z");
    EXPECT_EQ(document.item({0, 0}).y, 2);

    // Enter leads to the words; they are typed and taken over.
    pressIn(canvas, "Return");
    auto* words = static_cast<QPlainTextEdit*>(screen.designer().properties().editor(u"内容"_qs));
    ASSERT_NE(words, nullptr);
    words->selectAll();
    typeIn(*words, u"送货单[khName]");
    pressIn(*words, "Return");
    EXPECT_EQ(document.item({0, 0}).content, u"送货单[khName]"_qs);
    auto* size = static_cast<QDoubleSpinBox*>(screen.designer().properties().editor(u"字号（磅）"_qs));
    ASSERT_NE(size, nullptr);
    size->setValue(16);
    EXPECT_EQ(document.item({0, 0}).font.size, 16);

    // A price is dragged from the row up into the title: it belongs to the title then.
    const QPoint price = canvas.itemRect({1, 1}).center();
    drag(canvas, price, QPoint(price.x(), canvas.bandRect(0).bottom() - static_cast<int>(4 * mm)));
    EXPECT_EQ(document.current().bands[1].items.size(), 1u);
    EXPECT_EQ(document.chosen(), std::vector({ItemRef{0, 2}}));
    press(screen, "Ctrl+Z");
    EXPECT_EQ(document.current().bands[1].items.size(), 2u);

    // A barcode is drawn into the title.
    canvas.beginInsert(report::barcodeItem(0, 0, 40, 12, u"[khName]"_qs, report::Symbology::Qr));
    const QPoint free = canvas.bandRect(0).topLeft() + QPoint(static_cast<int>(100 * mm), static_cast<int>(2 * mm));
    drag(canvas, free, free + QPoint(static_cast<int>(15 * mm), static_cast<int>(15 * mm)));
    ASSERT_EQ(document.current().bands[0].items.size(), 3u);
    EXPECT_EQ(document.item({0, 2}).width, 15);
    // Esc takes back a drag that is under way.
    mouse(canvas, QEvent::MouseButtonPress, canvas.itemRect({0, 2}).center());
    mouse(canvas, QEvent::MouseMove, canvas.itemRect({0, 2}).center() + QPoint(60, 10));
    pressIn(canvas, "Esc");
    EXPECT_EQ(document.item({0, 2}).x, 100);
    mouse(canvas, QEvent::MouseButtonRelease, QPoint(300, 60));

    const QString preview = screen.designer().preview().pages().lines(0).join(u'|');
    EXPECT_TRUE(preview.contains(u"送货单明视眼镜")) << preview.toStdString();
    EXPECT_EQ(bytesOf(path_), original);  // nothing is written before it is saved
    press(screen, "F5");
    EXPECT_FALSE(document.isDirty());
  });
  ASSERT_EQ(report::backupsOf(path_).size(), 1u);
  EXPECT_EQ(bytesOf(report::backupsOf(path_).front().path), original);
  const Template saved = report::loadTemplate(path_);
  EXPECT_EQ(saved.bands[0].items[0].x, 30);
  report::Report again(saved);
  again.setText(u"khName", u"王小姐");
  EXPECT_TRUE(again.prepare().lines(0).join(u'|').contains(u"送货单王小姐"));
}

TEST_F(DesignerTest, LeavingAsksAndTheFieldListPutsFieldsOnThePaper) {
  const QByteArray original = bytesOf(path_);
  design([&](TF_Bbsj_Edit& screen) {
    auto& document = screen.designer().document();
    document.chooseBand(1);
    auto& data = screen.designer().data();
    const auto found = data.findItems(u"金额"_qs, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    data.setCurrentItem(found.front());
    pressIn(data, "Return");
    ASSERT_EQ(document.current().bands[1].items.size(), 3u);
    EXPECT_EQ(document.item({1, 2}).content, u"[ls_zje]"_qs);

    auto& canvas = screen.designer().canvas();
    pressIn(canvas, "Ctrl+C");
    pressIn(canvas, "Esc");  // what is chosen first, the window only then
    EXPECT_TRUE(document.chosen().empty());
    expectQuestion(u"模板已修改，要保存吗？"_qs, Answer::Cancel);
    pressIn(canvas, "Esc");
    EXPECT_TRUE(screen.isVisible());
    expectQuestion(u"模板已修改，要保存吗？"_qs, Answer::No);
    pressIn(canvas, "Esc");
  });
  EXPECT_EQ(bytesOf(path_), original);
}

TEST_F(DesignerTest, WordsThatAreBeingTypedCountWhenTheWindowIsLeft) {
  design([&](TF_Bbsj_Edit& screen) {
    screen.designer().document().choose({{0, 0}});
    pressIn(screen.designer().canvas(), "Return");
    auto* words = screen.designer().properties().editor(u"内容"_qs);
    typeIn(*words, u"新标题");
    expectQuestion(u"模板已修改，要保存吗？"_qs, Answer::Yes);
    pressIn(*words, "Esc");
  });
  EXPECT_EQ(report::loadTemplate(path_).bands[0].items[0].content, u"新标题"_qs);
}

TEST_F(DesignerTest, ObjectsComeOntoThePaperWithoutAMouse) {
  design([&](TF_Bbsj_Edit& screen) {
    auto& document = screen.designer().document();
    auto& canvas = screen.designer().canvas();
    document.chooseBand(0);
    canvas.beginInsert(report::barcodeItem(0, 0, 40, 12, u"12345678"_qs, report::Symbology::Code128));
    pressIn(canvas, "Return");
    ASSERT_EQ(document.current().bands[0].items.size(), 3u);
    EXPECT_FALSE(canvas.isInserting());
    EXPECT_EQ(document.chosen(), std::vector({ItemRef{0, 2}}));
    pressIn(canvas, "Right");
    EXPECT_EQ(document.item({0, 2}).x, 1);
    press(screen, "Ctrl+Z");
    press(screen, "Ctrl+Z");
  });
}

TEST_F(DesignerTest, FilesThatCannotBeReadAreToldAndNeverReplacedUnasked) {
  auto& screen = ui::screenAs<TF_Bbsj_Edit>("F_Bbsj_Edit");
  const auto told = [&](const QByteArray& spoilt) {
    writeBytes(path_, spoilt);
    try {
      report::loadTemplate(path_);
      ADD_FAILURE() << "was read: " << spoilt.left(60).toStdString();
    } catch (const report::TemplateError& failure) {
      EXPECT_TRUE(failure.message().contains(u"spxs.fr3")) << failure.message().toStdString();
      expectNotice(failure.message());
    }
    screen.design(path_);
    EXPECT_EQ(expectationsLeft(), 0);
  };
  QByteArray newer = bytesOf(path_);
  ASSERT_TRUE(newer.contains("version=\"1\""));
  newer.replace("version=\"1\"", "version=\"99\"");
  told(newer);
  told(QByteArray());
  told(bytesOf(path_).left(40));

  // Damaged behind the designer's back: saving asks twice, and a no leaves the file.
  QFile::remove(path_);
  report::saveTemplate(slip(), path_, report::SaveMode::New);
  QString wouldLose;
  design([&](TF_Bbsj_Edit& window) {
    window.designer().document().choose({{0, 0}});
    window.designer().document().moveBy(5, 0);
    QFile file(path_);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("half a templ");
    file.setFileTime(QDateTime(QDate(2020, 1, 1), QTime(8, 0)), QFileDevice::FileModificationTime);
    file.close();
    press(window, "F5", u"模板文件“spxs.fr3”在打开之后又被改动过，要用现在的设计覆盖它吗？"_qs, Answer::No);
    EXPECT_EQ(bytesOf(path_), "half a templ");
    expectQuestion(u"模板已修改，要保存吗？"_qs, Answer::No);
    press(window, "Esc");  // what is chosen first
    press(window, "Esc");
  });
}

TEST_F(DesignerTest, ADesignOfTheShopIsSavedAsTheStationsFormAndOldDesignsComeBack) {
  bringTemplates();
  const QString path = templatePath(u"spxs");
  const Template delivered = report::loadTemplate(path);
  auto& screen = ui::screenAs<TF_Bbsj_Edit>("F_Bbsj_Edit");
  const QString own = u"商品销售单-本店.fr3"_qs;
  expectScreen("F_Bbsj_Edit", [&](ui::Screen& s) {
    auto& document = static_cast<TF_Bbsj_Edit&>(s).designer().document();
    EXPECT_FALSE(s.command("btnUse").isEnabled());  // it is the one in use
    const auto rows = std::ranges::find(delivered.bands, BandKind::MasterData, &report::Band::kind);
    document.choose({{static_cast<int>(rows - delivered.bands.begin()), 1}});
    auto& canvas = static_cast<TF_Bbsj_Edit&>(s).designer().canvas();
    pressIn(canvas, "Ctrl+Del");
    EXPECT_EQ(document.undoText(), u"删除列"_qs);
    press(s, "F5");
    document.addBand(BandKind::Overlay);
    ui::setFileAnswer([&](const QString& proposed, const QString&) {
      EXPECT_EQ(proposed, own);
      return templatePath(proposed);
    });
    click(s, "btnSaveAs");
    ui::setFileAnswer({});
    click(s, "btnUse", u"本机打印“商品销售单”时，将使用模板“商品销售单-本店”。"_qs);
    EXPECT_FALSE(s.command("btnUse").isEnabled());
    press(s, "Esc");  // what is chosen first
    press(s, "Esc");
  });
  screen.design(path);
  EXPECT_EQ(templateOf(families::sale), own);
  EXPECT_TRUE(templatesInUse().contains(own) && !templatesInUse().contains(u"spxs.fr3"_qs));

  // Its backups and the delivered design come back, each as a step that is saved like any other.
  expectScreen("F_Bbsj_Edit", [&](ui::Screen& s) {
    auto& document = static_cast<TF_Bbsj_Edit&>(s).designer().document();
    auto* backups = s.findChild<QMenu*>(u"backups"_qs);
    Q_EMIT backups->aboutToShow();
    ASSERT_EQ(backups->actions().size(), 1);
    EXPECT_NE(document.current().bands, delivered.bands);
    backups->actions().front()->trigger();
    EXPECT_EQ(document.current().bands, delivered.bands);
    document.undo();
    click(s, "btnDefault",
          u"要把设计恢复为随程序提供的“商品销售单”样式吗？\r\n\r\n保存之前可以撤销，保存之后可以从备份中恢复。"_qs,
          Answer::Yes);
    EXPECT_EQ(document.current().bands, delivered.bands);
    press(s, "F5");
    click(s, "btnUse", u"本机打印“商品销售单”时，将使用模板“spxs”。"_qs);
    press(s, "Esc");
  });
  screen.design(path);
  EXPECT_EQ(report::backupsOf(path).size(), 2u);
  EXPECT_EQ(templateOf(families::sale), u"spxs.fr3"_qs);
}

}  // namespace jxc::test::designer_test
