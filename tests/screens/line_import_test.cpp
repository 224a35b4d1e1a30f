// Lines of the trading documents from spreadsheets: columns in any order, every fault of a row, what passes comes in.
#include "core/program_directory.h"
#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"
#include "screens/harness/trading_test.h"
#include "stock/screens/line_import_screen.h"
#include "ui/file_dialogs.h"

#include <QAction>

namespace jxc::test::line_import_test {

class LineImportTest : public TradingScreenTest {
 protected:
  LineImportTest() {
    addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = u"6900000000017"_qs, .cost = 40, .stock = 5});
    addGoods({.sn = u"10000002"_qs, .name = u"钛架"_qs, .barcode = u"6900000000024"_qs, .cost = 120, .stock = 1});
    addGoods({.sn = u"10000003"_qs, .name = u"旧镜布"_qs, .cost = 2, .stock = 9});
    execSql("update jxc_goods set g_jy=1 where g_sn='10000003'");
  }

  /// A file of these columns and rows; numbers become number cells, "#2026-05-03" a date cell.
  QString file(const QString& name, const QStringList& columns, const QList<QStringList>& rows) {
    Sheet sheet;
    for (const QString& caption : columns) {
      bool numbers = !rows.isEmpty(), dates = false;
      for (const QStringList& row : rows) {
        const QString cell = row[sheet.columns.size()];
        bool isNumber = false;
        cell.toDouble(&isNumber);
        numbers = numbers && (isNumber || cell.isEmpty());
        dates = dates || cell.startsWith(u'#');
      }
      sheet.columns.push_back({.caption = caption,
                               .kind = dates     ? SheetKind::Date
                                       : numbers ? SheetKind::Number
                                                 : SheetKind::Text});
    }
    std::vector<std::vector<Value>> cells;
    for (const QStringList& row : rows) {
      std::vector<Value> values;
      for (qsizetype i = 0; i < row.size(); ++i) {
        const bool isNumber = sheet.columns[static_cast<std::size_t>(i)].kind == SheetKind::Number;
        if (row[i].isEmpty())
          values.emplace_back();
        else if (isNumber)
          values.emplace_back(row[i].toDouble());
        else
          values.emplace_back(QString(row[i]).remove(u'#'));
      }
      cells.push_back(std::move(values));
    }
    sheet.rows = heldRows(std::move(cells));
    const QString path = directory_.filePath(name);
    writeSheet(path, sheet);
    return path;
  }
  static void read(ui::Screen& s, const QString& path) { dynamic_cast<LineImportScreen&>(s).openFile(path); }
  static QString verdicts(ui::Screen& s) { return textsOf(s.grid("gridLines").rows(), {"status"}).join(u" | "_qs); }
  QTemporaryDir directory_;
};

TEST_F(LineImportTest, AReceiptTakesWhatPassesAndTellsTheRest) {
  setParameter("cs_hs", 1);
  setParameter("cs_tax", 13);
  const QString good =
      file(u"进货.xlsx"_qs, {u"备注"_qs, u"数量"_qs, u" 商品编号："_qs, u"单价"_qs, u"商品名称"_qs, u"生产日期"_qs},
           {{u"急"_qs, u"3"_qs, u"10000001"_qs, u"38.5"_qs, u"板材镜架"_qs, u"#2021-04-01"_qs},
            {u""_qs, u"2.5"_qs, u"10000002"_qs, u""_qs, u"钛合金架"_qs, u"#2021-04-02"_qs},
            {u""_qs, u""_qs, u""_qs, u""_qs, u""_qs, u""_qs},
            {u""_qs, u"0"_qs, u"4711"_qs, u"-1"_qs, u""_qs, u""_qs},
            {u""_qs, u""_qs, u"10000003"_qs, u""_qs, u"旧镜布"_qs, u"去年"_qs}});
  open("F_Cgjh", [&](ui::Screen& s) {
    press(s, "Ctrl+I", "F_Cgjh_Import", [&](ui::Screen& sheet) {
      EXPECT_FALSE(sheet.command("btnOK").isEnabled());
      read(sheet, good);
      EXPECT_EQ(verdicts(sheet),
                "可顺利导入 | 商品名称和编号不一致 | 商品不存在；数量不能为零或负数；单价不正确；生产日期不能为空 | "
                "商品已停用；数量不能为空；日期格式不正确");
      press(sheet, "Esc");
    });
    EXPECT_TRUE(s.grid("gridLines").isEmpty());  // left: nothing came in
    press(s, "Ctrl+I", "F_Cgjh_Import", [&](ui::Screen& sheet) {
      EXPECT_TRUE(sheet.grid("gridLines").isEmpty());
      read(sheet, good);
      press(sheet, "F5", u"导入完毕\r\n\r\n共4条记录\r\n\r\n成功导入2条\r\n\r\n失败2条"_qs);
    });
    // 3 at 38.5 and 2.5 at the usual 120; picked goods come without tax.
    EXPECT_EQ(s.field("tyfje").number(), 415.5);
    expectQuestion(kUnsaved, Answer::No);
    EXPECT_EQ(rows("select g_sn,jh_sl,jh_dj,jh_zje,jh_je,jh_dzl,jh_tax,t_scrq,jh_bz from jxc_jhsp order by id"),
              "10000001 3 38.5 115.5 115.5 1 0 2021-04-01 急 | 10000002 2.5 120 300 300 1 0 2021-04-02 ");
    press(s, "Esc");
  });
}

TEST_F(LineImportTest, ASaleMindsStockPricesAndOldFiles) {
  setParameter("cs_kc", 0);
  setParameter("cs_xgdj", 0);
  const QString old = file(u"销售.xls"_qs, {u"商品条码"_qs, u"数量"_qs, u"单价"_qs},
                           {{u"6900000000017"_qs, u"5"_qs, u""_qs},
                            {u"6900000000017"_qs, u"6"_qs, u"20"_qs},
                            {u"6900000000024"_qs, u"1"_qs, u"19"_qs}});
  open("F_Spxs", [&](ui::Screen& s) {
    press(s, "Ctrl+I", "F_Spxs_Import", [&](ui::Screen& sheet) {
      read(sheet, old);
      EXPECT_EQ(verdicts(sheet), "可顺利导入 | 库存数量小于销售数量，不能出库！ | 不允许修改单价");
      press(sheet, "F5", u"导入完毕\r\n\r\n共3条记录\r\n\r\n成功导入1条\r\n\r\n失败2条"_qs);
    });
    EXPECT_EQ(rows("select g_sn,ls_sl,ls_dj,ls_zje,ls_cbj from jxc_lsxssp"), "10000001 5 20 100 40");

    // With stock below zero allowed: asked once for all rows, and about what stands on the document already.
    setParameter("cs_kc", 1);
    press(s, "Ctrl+I", "F_Spxs_Import", [&](ui::Screen& sheet) {
      read(sheet, old);
      EXPECT_EQ(verdicts(sheet), "可顺利导入 | 库存不足 | 不允许修改单价");
      expectQuestion(u"该商品已添加，需要重复添加吗？"_qs, Answer::Yes);
      press(sheet, "F5", QString::fromUtf8(kSaleGoesShort), Answer::No);
      EXPECT_TRUE(sheet.isVisible());
      press(sheet, "Esc");
    });
    EXPECT_EQ(s.grid("gridLines").rowCount(), 1);
    leaveDraft(s);
  });
}

// What a sale sent out comes in again as it is, here into the document that waits for audit.
TEST_F(LineImportTest, LinesGoOutAndIntoADocumentThatWaits) {
  const QString sent = directory_.filePath(u"单据商品.xls"_qs);
  ui::setFileAnswer([&](const QString&, const QString&) { return sent; });
  open("F_Spxs", [&](ui::Screen& s) {
    s.field("tSptm").focus();
    scan(s, u"6900000000017");
    edit(s, "gridLines", 0, "ls_sl", u"3");
    EXPECT_FALSE(s.command("btnAddCl").isEnabled());
    expectScreen("F_Spxs_Sele", [](ui::Screen& line) { press(line, "Esc"); });
    press(s, "F3");  // no matter that the idle button names the same key
    expectNotice(u"导出成功！"_qs);
    s.findChild<QAction*>("btnInOutExport")->trigger();
    save(s, kSaveSale);
    showWaiting(s);
    press(s, "Ctrl+I", "F_Spxs_Import", [&](ui::Screen& sheet) {
      press(sheet, "F2");
      EXPECT_EQ(verdicts(sheet), "可顺利导入");
      expectQuestion(u"该商品已添加，需要重复添加吗？"_qs, Answer::Yes);
      press(sheet, "F5", u"导入完毕\r\n\r\n共1条记录\r\n\r\n成功导入1条\r\n\r\n失败0条"_qs);
    });
    EXPECT_EQ(rows("select g_sn,ls_sl,ls_zje from jxc_lsxssp order by id"), "10000001 3 60 | 10000001 3 60");
    EXPECT_EQ(rows("select ls_yfje,ls_status from jxc_lsxsd"), "120 0");
    EXPECT_EQ(s.grid("gridWaiting").currentNumber("yfje"), 120);
  });
}

TEST_F(LineImportTest, FilesThatAreNoSheetsOfLines) {
  QFile(directory_.filePath(u"网页.xls"_qs)).open(QIODevice::WriteOnly);
  const QString empty = file(u"空.xlsx"_qs, {u"商品编号"_qs, u"数量"_qs}, {});
  const QString other = file(u"别的.xlsx"_qs, {u"姓名"_qs, u"数量"_qs}, {{u"张三"_qs, u"1"_qs}});
  open("F_Xsth", [&](ui::Screen& s) {
    press(s, "Ctrl+I", "F_Xsth_Import", [&](ui::Screen& sheet) {
      expectNotice(u"模板中没有数据，不能进行导入操作！"_qs);
      read(sheet, empty);
      expectNotice(u"表格中没有“商品编号”这一列，请按模板填写！"_qs);
      read(sheet, other);
      EXPECT_FALSE(sheet.command("btnOK").isEnabled());
      press(sheet, "Esc");
    });
  });
  EXPECT_THROW(openExcel(directory_.filePath(u"网页.xls"_qs)), SheetError);
}

// The templates that come with the program have the columns that the dialog asks for.
TEST_F(LineImportTest, TemplatesAreAsTheDialogWantsThem) {
  for (const char* name : {"F_Cgjh_Import", "F_Cgth_Import", "F_Spxs_Import", "F_Xsth_Import"}) {
    const QString path = directory_.filePath(QString::fromLatin1(name) + u".xlsx"_qs);
    ui::screenAs<LineImportScreen>(name).saveTemplate(path);
    QStringList columns;
    const RowSet rows = openExcel(path)->rows();
    for (const std::string& column : rows.columns())
      columns << QString::fromStdString(column);
    const bool receipt = QByteArray(name) == "F_Cgjh_Import";
    EXPECT_EQ(columns.join(u' '),
              receipt ? u"商品编号 商品名称 数量 单价 生产日期 备注"_qs : u"商品编号 商品名称 数量 单价 备注"_qs)
        << name;
  }
}

}  // namespace jxc::test::line_import_test
