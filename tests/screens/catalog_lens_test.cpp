// Lenses in the catalogue: one, a range, a change; the library; wholesale prices.
#include "harness/articles.h"
#include "masterdata/goods_classes.h"
#include "platform/sheet/sheet_reader.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"

#include <QAction>
#include <QLabel>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>

namespace jxc::test::catalog_lens_test {

TEST_F(ScreenTest, LensesAreAddedFromTheLibraryAndByRangeAndChanged) {
  setParameter("cs_cs013", 1);
  open("F_Spxxgl", [&](ui::Screen& list) {
    auto* tree = list.findChild<QTreeWidget*>(QStringLiteral("treeLb"));
    tree->setCurrentItem(tree->findItems(QStringLiteral("镜片"), Qt::MatchExactly | Qt::MatchRecursive).front());

    press(list, "F7", "F_Spxxgl_Add2", [&](ui::Screen& s) {
      EXPECT_EQ(s.field("g_sn").text(), u"20000001"_qs);
      press(s, "F5", QStringLiteral("商品名称必须填写！"));
      press(s, "F2", "F_Spxxgl_Jp", [&](ui::Screen& library) {
        press(library, "F3", "F_Spxxgl_Jp_Add", [&](ui::Screen& product) {
          product.findChild<QRadioButton*>(QStringLiteral("rYxjp"))->setChecked(true);
          type(product, "tlxmc", u"海岸");
          type(product, "item1", u"8.6");
          type(product, "item2", u"38");
          press(product, "F5");
        });
        press(library, "F5");
      });
      type(s, "g_qgd", u"-1.25");
      type(s, "g_sgd", u"0.5");
      EXPECT_EQ(s.field("g_name").text(), u"海岸8.6含水38:屈光度-1.25:散光度+0.5"_qs);
      press(s, "F5");
      EXPECT_EQ(s.field("g_sn").text(), u"20000002"_qs);
      EXPECT_TRUE(s.field("g_qc").isEmpty());
    });

    press(list, "F8", "F_Spxxgl_Add3", [&](ui::Screen& s) {
      type(s, "g_qc", u"1.56非球面");
      type(s, "g_qgd", u"-1");
      type(s, "g_qgd1", u"-2");
      type(s, "g_sj", u"120");
      press(s, "F5", QStringLiteral("屈光度范围不正确！"));
      type(s, "g_qgd", u"-2");
      type(s, "g_qgd1", u"-1");
      choose(s, "comQgd", u"0.50"_qs);
      const auto* count = s.findChild<QLabel*>(u"lCount"_qs);
      EXPECT_EQ(count->text(), u"将增加 3 个"_qs);
      type(s, "g_qc", u"海岸8.6含水38");
      type(s, "g_qgd1", u"-1.25");
      type(s, "g_sgd", u"0.5");
      type(s, "g_sgd1", u"0.5");
      choose(s, "comQgd", u"0.75"_qs);
      EXPECT_EQ(count->text(), u"将增加 2 个，其中 1 个已存在，将跳过，实际增加 1 个"_qs);
      type(s, "g_qc", u"1.56非球面");
      type(s, "g_qgd1", u"-1");
      type(s, "g_sgd", u"0");
      type(s, "g_sgd1", u"0");
      choose(s, "comQgd", u"0.50"_qs);
      press(s, "F5");
      EXPECT_FALSE(s.isVisible());
    });
    ASSERT_EQ(list.grid("gridSp").rowCount(), 4);

    list.grid("gridSp").selectRow(0);
    press(list, "F3", "F_Spxxgl_Modi2", [&](ui::Screen& s) {
      EXPECT_EQ(s.field("g_qgd").number(), -1.25);
      type(s, "g_sgd", u"-0.5");
      press(s, "F5");
    });
    EXPECT_EQ(list.grid("gridSp").currentText("g_name"), u"海岸8.6含水38:屈光度-1.25:散光度-0.5"_qs);

    expectScreen("F_Spxxgl_Pfj", [&](ui::Screen& s) {
      choose(s, "comFw", u"全部商品"_qs);
      type(s, "tjgbl", u"0.8");
      expectQuestion(u"全部商品（共 5 个）的一级批发价将改为预设售价 X 0.8，确定修改吗？"_qs, Answer::Yes);
      press(s, "F5", u"成功修改：5  个商品的价格。"_qs);
    });
    list.findChild<QAction*>(QStringLiteral("brnRPfj"))->trigger();
    list.grid("gridSp").selectRow(1);
    EXPECT_EQ(list.grid("gridSp").currentNumber("g_sj1"), 96);

    expectScreen("F_Spxxgl_Tc", [&](ui::Screen& s) {
      type(s, "tjgtc", u"-1");
      press(s, "F5", QStringLiteral("提成不能小于0！"));
      type(s, "tjgtc", u"5");
      choose(s, "comJgtc", u"元"_qs);
      press(s, "F5");
    });
    list.findChild<QAction*>(QStringLiteral("btnRTc"))->trigger();
  });
  EXPECT_EQ(lookupValue("select g_jgtc2 from jxc_goods where g_sn='20000002'"), u"1"_qs);
}

TEST_F(ScreenTest, TheStockOfALensStandsByItsPowers) {
  const auto add = [&](const char16_t* number, const char16_t* sphere, const char16_t* cylinder, double stock) {
    GoodsDraft draft = article(QString::fromUtf16(number), u"1.60非球面"_qs, u"1000"_qs, stock);
    draft.warnSameName = false;
    draft.lens = LensPowers{draft.name, QString::fromUtf16(sphere), QString::fromUtf16(cylinder)};
    ASSERT_TRUE(addGoods(draft, prompt));
  };
  add(u"20000001", u"-1.5", u"-0.25", 3);
  add(u"20000002", u"-1.25", u"-0.5", 7);
  add(u"20000003", u"-1.25", u"-0.25", 0.5);
  open("F_Kccx", [&](ui::Screen& s) {
    s.findChild<QTabWidget*>()->setCurrentIndex(3);
    // By product, which is proposed: powers ascend as numbers.
    const auto& whole = *s.findChild<QTableWidget*>(u"StringGridCp"_qs);
    ASSERT_EQ(s.grid("gridCp4").rowCount(), 1);
    EXPECT_EQ(whole.verticalHeaderItem(0)->text(), u"-1.50"_qs);
    EXPECT_EQ(whole.item(1, 0)->text(), u"7.00"_qs);
    s.findChild<QRadioButton*>(u"rJp4"_qs)->click();
    s.grid("gridJp4").waitLoaded();
    auto& table = *s.findChild<QTableWidget*>(u"StringGridJp"_qs);
    ASSERT_EQ(s.grid("gridJp4").rowCount(), 1);
    EXPECT_EQ(table.verticalHeaderItem(0)->text(), u"-1.25"_qs);
    EXPECT_EQ(table.horizontalHeaderItem(1)->text(), u"-0.50"_qs);
    EXPECT_EQ(table.item(0, 1)->text(), u"7.00"_qs);
    EXPECT_EQ(table.item(1, 0)->text(), u"3.00"_qs);
    EXPECT_EQ(table.item(1, 1), nullptr) << "no article has that pair";
    EXPECT_EQ(s.findChild<QLabel*>(u"StringGridJpSum"_qs)->text(), u"库存合计：10.50"_qs);

    const QTemporaryDir folder;
    const QString file = folder.filePath(u"度数.xls"_qs);
    ui::setFileAnswer([&](const QString&, const QString&) { return file; });
    press(s, "Ctrl+S", u"导出成功！"_qs);
    const RowSet rows = openExcel(file)->rows();
    EXPECT_EQ(rows.columns(), (std::vector<std::string>{"屈/散", "-0.25", "-0.5"}));
    EXPECT_EQ(rows[0].number("-0.5"), 7);
    EXPECT_TRUE(rows[1].isNull("-0.5"));

    type(s, "tKey4", u"1.74");
    press(s, "F2");
    EXPECT_EQ(table.rowCount(), 0);
  });
}

}  // namespace jxc::test::catalog_lens_test
