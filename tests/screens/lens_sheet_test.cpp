// The sheet of lens powers over the trading documents: typed, pasted, refused, and what becomes of it.
#include "screens/harness/trading_test.h"
#include "stock/document.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>

namespace jxc::test::lens_sheet_test {

const QString kProduct = QStringLiteral("清晰1.56");

class LensSheetTest : public TradingScreenTest {
 protected:
  LensSheetTest() {
    // Written as three screens and a spreadsheet would write them; +0.5/-0.5 and -1.25/-0.5 have no article.
    lens(u"10000001", u"-0.25", u"0", 4);
    lens(u"10000002", u"-1.25", u"0", 1);
    lens(u"10000003", u"-10", u"0", 0);
    lens(u"10000004", u"+0.5", u"0", 7);
    lens(u"10000005", u"-0.250", u"-0.5", 2);
    lens(u"10000006", u"-10.00", u"-0.50", 0);
  }
  static void lens(QStringView sn, QStringView sphere, QStringView cylinder, double stock) {
    addLens(sn.toString(), kProduct, sphere.toString(), cylinder.toString(), stock);
  }
  static QTableView& cells(ui::Screen& s) { return *s.findChild<QTableView*>("sheet"); }
  static QString heads(ui::Screen& s, Qt::Orientation orientation) {
    QStringList texts;
    const auto* model = cells(s).model();
    const int count = orientation == Qt::Horizontal ? model->columnCount() : model->rowCount();
    for (int i = 0; i < count; ++i)
      texts << model->headerData(i, orientation, Qt::DisplayRole).toString();
    return texts.join(u' ');
  }
  /// Quantities row by row.
  static QString shown(ui::Screen& s) {
    QStringList rows;
    const auto* model = cells(s).model();
    for (int row = 0; row < model->rowCount(); ++row) {
      QStringList texts;
      for (int column = 0; column < model->columnCount(); ++column) {
        const QString text = model->index(row, column).data().toString();
        texts << (text.isEmpty() ? u"-"_qs : text);
      }
      rows << texts.join(u' ');
    }
    return rows.join(u" | "_qs);
  }
  static bool opens(ui::Screen& s, int row, int column) {
    return cells(s).model()->flags(cells(s).model()->index(row, column)).testFlag(Qt::ItemIsEditable);
  }
  /// A quantity into the current cell, then a key.
  static void put(ui::Screen& s, QStringView quantity, const char* key) {
    for (const QChar c : quantity)
      typeIn(*s.focusWidget(), QStringView(&c, 1));
    pressIn(*s.focusWidget(), key);
  }
  static void paste(ui::Screen& s, const char* block, int row, int column) {
    QApplication::clipboard()->setText(QString::fromUtf8(block));
    cells(s).setCurrentIndex(cells(s).model()->index(row, column));
    pressIn(cells(s), "Ctrl+V");
  }
};

TEST_F(LensSheetTest, AReceiptByPowersWithMissingArticlesMadeOnce) {
  open("F_Cgjh", [&](ui::Screen& s) {
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      EXPECT_EQ(heads(sheet, Qt::Vertical), "-10.00 -1.25 -0.25 +0.50");  // as numbers, not as text
      EXPECT_EQ(heads(sheet, Qt::Horizontal), "-0.50 0.00");
      press(sheet, "F5", u"请在光度表中输入数量！"_qs);
      put(sheet, u"6", "Return");
      put(sheet, u"2", "Right");
      put(sheet, u"3", "Down");
      EXPECT_EQ(shown(sheet), "6 - | 2 3 | - - | - -");
      auto* spoken = QAccessible::queryAccessibleInterface(&cells(sheet));
      EXPECT_TRUE(
          spoken->tableInterface()->cellAt(1, 1)->text(QAccessible::Name).startsWith(u"-1.25 0.00 数量 3 库存 "))
          << spoken->tableInterface()->cellAt(1, 1)->text(QAccessible::Name).toStdString();
      // Plain numbers go in from the cursor on; words, what is below zero and what lies outside are told.
      expectNotice(u"已填入 2 个数量。\r\n\r\n不是数量：2 处\r\n\r\n本单不能选的光度：0 处\r\n\r\n超出光度表：1 处"_qs);
      paste(sheet, "4\t5\nx\t-1\n\t\n9\t\n", 2, 0);
      EXPECT_EQ(shown(sheet), "6 - | 2 3 | 4 5 | - -");
      // With headings each quantity finds its powers, wherever the cursor stands.
      paste(sheet, "屈/散\t0.00\t-0.50\r\n+0.50\t7\t1\r\n-10\t8\t\r\n", 3, 1);
      EXPECT_EQ(shown(sheet), "- 8 | 2 3 | 4 5 | 1 7");
      press(sheet, "F5", u"“清晰1.56”有 2 个光度还没有商品资料，\r\n\r\n确认按该商品的价格建立吗？"_qs, Answer::No);
      EXPECT_TRUE(sheet.isVisible());
      press(sheet, "F5", u"“清晰1.56”有 2 个光度还没有商品资料，\r\n\r\n确认按该商品的价格建立吗？"_qs, Answer::Yes);
    });
    EXPECT_EQ(s.grid("gridLines").rowCount(), 7);
    EXPECT_EQ(s.field("tyfje").number(), 240);  // 30 pieces at 8
    save(s, kSaveReceipt);
    showWaiting(s);
    click(s, "btnTab2Jpgd", "F_Jpgd", [&](ui::Screen& sheet) {
      expectQuestion(u"该商品已添加，需要重复添加吗？"_qs, Answer::Yes);  // once for all of them
      paste(sheet, "1\t1\n1\t1\n", 1, 0);
      type(sheet, "tdj", u"9");  // of the whole sheet
      press(sheet, "F5");
    });
    EXPECT_EQ(s.grid("gridWaitingLines").rowCount(), 11);
    EXPECT_EQ(s.grid("gridWaiting").currentNumber("yfje"), 276);
  });
  EXPECT_EQ(rows("select g_sn,g_name,g_qgd,g_sgd,g_jj,g_sj,g_isjp,g_jm from jxc_goods where g_qc=? and "
                 "g_sn>'2' order by g_sn",
                 kProduct),
            "20000001 清晰1.56:屈光度-1.25:散光度-0.5 -1.25 -0.5 8 30 1 QX1.56 | "
            "20000002 清晰1.56:屈光度+0.5:散光度-0.5 +0.5 -0.5 8 30 1 QX1.56");
  EXPECT_EQ(rows("select g_sn,sum(jh_sl),sum(jh_zje) from jxc_jhsp group by g_sn order by g_sn"),
            "10000001 6 49 | 10000002 4 33 | 10000003 8 64 | 10000004 7 56 | 10000005 5 41 | 20000001 3 25 | "
            "20000002 1 8");
}

TEST_F(LensSheetTest, ASaleIsRefusedBeyondTheStockAndKeepsTheSheet) {
  setParameter("cs_kc", 0);
  open("F_Spxs", [&](ui::Screen& s) {
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      paste(sheet, "2\t4\n\t8\n", 2, 0);
      press(sheet, "F5", u"库存数量小于销售数量，不能出库！\r\n\r\n商品：10000004 清晰1.56+0.50"_qs);
      EXPECT_TRUE(sheet.isVisible());
      EXPECT_EQ(lookupValue("select count(*) from jxc_lsxssp"), "0");
      // A block that a sheet gave away goes in as it lies, although its corner is empty.
      paste(sheet, "\t1\n2\t\n", 0, 0);
      EXPECT_EQ(shown(sheet), "- 1 | 2 - | 2 4 | - 8");
      paste(sheet, "\t\n\t\n", 0, 0);
      EXPECT_EQ(shown(sheet), "- - | - - | 2 4 | - 8");
      cells(sheet).setCurrentIndex(cells(sheet).model()->index(3, 1));
      cells(sheet).setFocus();
      put(sheet, u"7", "F5");  // taken over from out of the cell
    });
    EXPECT_EQ(s.field("tyfje").number(), 390);
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      paste(sheet, "1\t1\n", 2, 0);
      press(sheet, "Esc", u"光度表中的数量还未保存，是否保存？"_qs, Answer::Cancel);
      EXPECT_TRUE(sheet.isVisible());
      press(sheet, "Esc", u"光度表中的数量还未保存，是否保存？"_qs, Answer::No);
    });
    EXPECT_EQ(s.grid("gridLines").rowCount(), 3);
    leaveDraft(s);
  });
}

// What the document's own list would not offer does not open: disabled articles, those of other suppliers; and who may
// not make goods cannot make them here.
TEST_F(LensSheetTest, OnlyWhatTheDocumentOffersOpens) {
  setParameter("cs_kc", 0);
  setParameter("cs_ct", 1);
  execSql("update jxc_goods set ghs_sn='100001' where g_sn<>'10000004'");
  execSql("update jxc_goods set g_jy=1 where g_sn='10000001'");
  execSql("update jxc_role set qtcz=?", QString(64, u'0'));
  open("F_Cgth", [&](ui::Screen& s) {
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      QString open;
      for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 2; ++column)
          open += opens(sheet, row, column) ? u'o' : u'.';
      EXPECT_EQ(open, "...oo...");  // in stock, enabled, of this supplier
      EXPECT_FALSE(sheet.field("tqgd").isVisible());
      expectNotice(u"已填入 1 个数量。\r\n\r\n不是数量：0 处\r\n\r\n本单不能选的光度：1 处\r\n\r\n超出光度表：0 处"_qs);
      paste(sheet, "2\t3\n", 2, 0);
      press(sheet, "F5");
    });
    EXPECT_EQ(s.field("tyfje").number(), 16);
    leaveDraft(s);
  });
}

// A power that the product never had, on a return of a customer.
TEST_F(LensSheetTest, ANewPowerComesInAtItsPlace) {
  open("F_Xsth", [&](ui::Screen& s) {
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      expectNotice(u"“近视”不是光度，请输入 -99 到 +99 之间的数！"_qs);
      enter(sheet, "tqgd", u"近视");
      enter(sheet, "tqgd", u"-2.5");
      enter(sheet, "tsgd", u"-1");
      EXPECT_EQ(heads(sheet, Qt::Vertical), "-10.00 -2.50 -1.25 -0.25 +0.50");
      EXPECT_EQ(heads(sheet, Qt::Horizontal), "-1.00 -0.50 0.00");
      paste(sheet, "1\t\t\n\t\t2\n", 1, 0);
      press(sheet, "F5", u"“清晰1.56”有 1 个光度还没有商品资料，\r\n\r\n确认按该商品的价格建立吗？"_qs, Answer::Yes);
    });
    expectQuestion(kUnsaved, Answer::No);
    EXPECT_EQ(rows("select g_sn,th_sl,th_dj from jxc_xsthsp order by id"), "20000001 1 30 | 10000002 2 30");
    press(s, "Esc");
  });
}

}  // namespace jxc::test::lens_sheet_test
