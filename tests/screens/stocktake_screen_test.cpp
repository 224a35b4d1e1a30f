// A count through its screen: scanned and typed, blind, goods that nobody counted, two counts put together, and the
// question about stock that moved meanwhile. With JXC_PICTURES=DIR each screen is written there as a picture.
#include "core/program_directory.h"
#include "core/station_options.h"
#include "inventory/stocktaking.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "ui/grid_output.h"

#include <QLabel>

namespace jxc::test::stocktake_screen_test {

constexpr QStringView kFrame = u"6900000000017", kCase = u"6900000000024";

class StocktakeScreenTest : public TradingScreenTest {
 protected:
  StocktakeScreenTest() {
    setParameter("cs_possk", 0);  // a count adds up whatever the till does
    // Number, name, barcode; cost, price and stock.
    addGoods({u"10000001"_qs, u"暴龙金属半框近视眼镜架男士商务系列"_qs, kFrame.toString(), 40, 99, 5});
    addGoods({u"10000002"_qs, u"镜盒"_qs, kCase.toString(), 2, 9, 30});
    addGoods({.sn = u"10000003"_qs, .name = u"镜布"_qs, .barcode = u"6900000000031"_qs, .cost = 1, .stock = 8});
    addGoods({.sn = u"10000004"_qs, .name = u"护理液"_qs, .cost = 15});
  }
  ~StocktakeScreenTest() override { setStationOption(stocktaking::kBlind, false); }

  static QString line(ui::Screen& s, int row) {
    s.grid("gridLines").selectRow(row);
    QStringList cells;
    for (const char* field : {"g_sn", "kc_sl", "pd_sl", "cysl", "pd_zje"})
      cells << s.grid("gridLines").currentText(field);
    return cells.join(u' ');
  }
};

TEST_F(StocktakeScreenTest, AShelfIsCountedWithTheScanner) {
  open("F_Kcpd", [&](ui::Screen& s) {
    for (int i = 0; i < 3; ++i)
      scan(s, kFrame);
    scan(s, u"12*"_qs + kCase.toString());
    scan(s, kCase);
    EXPECT_EQ(s.findChild<QLabel*>("lScanned")->text().simplified(), "13付 镜盒");
    ASSERT_EQ(s.grid("gridLines").rowCount(), 2);
    EXPECT_EQ(line(s, 0), "10000001 5 3 -2 -80");
    EXPECT_EQ(line(s, 1), "10000002 30 13 -17 -34");
    EXPECT_TRUE(s.field("comCk").isReadOnly());
    edit(s, "gridLines", 1, "pd_sl", u"0");
    EXPECT_EQ(line(s, 1), "10000002 30 0 -30 -60");
    EXPECT_FALSE(cellOpens(s, "gridLines", 1, "pd_dj"));
    press(s, "F3", "F_Kcpd_Sele", [&](ui::Screen& dialog) {
      EXPECT_EQ(dialog.field("tkcsl").number(), 30);
      type(dialog, "tsl", u"29");
      EXPECT_EQ(dialog.field("tzje").number(), -2);
      picture(dialog, u"F_Kcpd_Sele"_qs);
      press(dialog, "F5");
    });
    EXPECT_EQ(line(s, 1), "10000002 30 29 -1 -2");
    EXPECT_EQ(s.findChild<QLabel*>("lScanned")->text().simplified(), "29付 镜盒");
    EXPECT_EQ(s.field("tpdsl").number(), 32);
    EXPECT_EQ(s.field("tkcsl").number(), 35);

    // What is picked again is passed over and named.
    press(s, "F2", "F_Kcpd_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      type(pick, "tkey", u"镜盒");
      pick.grid("gridGoods").waitLoaded();
      press(pick, "Return", u"下列商品已添加，没有重复添加：\r\n\r\n10000002"_qs);
      type(pick, "tkey", u"护理液");
      pick.grid("gridGoods").waitLoaded();
      press(pick, "Return", "F_Kcpd_Sele", filled({{"tsl", u"2"}}));
      picture(pick, u"F_Kcpd_Add"_qs);
      press(pick, "F5");
    });
    EXPECT_EQ(line(s, 2), "10000004 0 2 2 30");

    press(s, "Ctrl+U", "F_Kcpd_Wp", [&](ui::Screen& open) {
      EXPECT_EQ(open.grid("gridGoods").rowCount(), 1);
      EXPECT_EQ(open.grid("gridGoods").currentText("g_sn"), "10000003");
      // Of the marked classes only, one or several; the first row stands for all.
      ui::Grid& classes = open.grid("gridLb");
      EXPECT_EQ(classes.selectedRows().size(), 1u) << "Ctrl is still held";
      for (int row = 1; row < classes.rowCount(); ++row) {
        classes.selectRow(row);
        const bool isIts = exists("select id from jxc_goods where g_sn='10000003' and gc_sn like ?",
                                  classes.currentText("gc_sn") + u'%');
        EXPECT_EQ(open.grid("gridGoods").rowCount(), isIts ? 1 : 0) << row;
      }
      classes.view()->selectAll();
      EXPECT_EQ(open.grid("gridGoods").rowCount(), 1);
      picture(open, u"F_Kcpd_Wp"_qs);
      press(open, "F7", u"列表中的 1 种商品将加入盘点单，盘点数量等于库存（没有盈亏），确认吗？"_qs, Answer::Yes);
    });
    EXPECT_EQ(line(s, 3), "10000003 8 8 0 0");
    picture(s, u"F_Kcpd"_qs);
    press(s, "Ctrl+T", "F_Kcpd_Pdb", [&](ui::Screen& sheet) {
      EXPECT_EQ(sheet.grid("gridSheet").rowCount(), 3);
      EXPECT_TRUE(sheet.grid("gridSheet").heading().filter.endsWith(u"　类别：所有类别"_qs));
      picture(sheet, u"F_Kcpd_Pdb"_qs);
      press(sheet, "Esc");
    });
    save(s, kSaveCount);
    EXPECT_TRUE(s.grid("gridLines").isEmpty());

    // Another count of the same day, which the first takes in.
    scan(s, kFrame);
    save(s, kSaveCount);
    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 2);
    s.grid("gridWaiting").selectRow(1);
    settle();
    const QString first = s.grid("gridWaiting").currentText("gl_djh");
    s.grid("gridWaiting").selectRow(0);
    const QString second = s.grid("gridWaiting").currentText("gl_djh");
    s.grid("gridWaiting").selectRow(1);
    press(s, "Ctrl+H", "F_Kcpd_Hb", [&](ui::Screen& others) {
      EXPECT_EQ(others.grid("gridJoin").rowCount(), 1);
      picture(others, u"F_Kcpd_Hb"_qs);
      press(others, "F5",
            u"您的操作将把盘点单 "_qs + second + u" 合并到 "_qs + first +
                u"，确认吗？\r\n\r\n两张单据中都有的商品，盘点数量相加：\r\n\r\n10000001 "
                "暴龙金属半框近视眼镜架男士商务系列：3+1=4"_qs,
            Answer::Yes);
    });
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(rows("select pd_sl,kc_sl from jxc_kcpd"), "43 43");
    // The largest difference first.
    EXPECT_EQ(s.grid("gridWaitingLines").currentText("g_sn"), "10000001");
    picture(s, u"F_Kcpd_waiting"_qs);

    // Two sold at noon: after the counting. Three cases were delivered in the morning and entered late.
    execSql("update jxc_kcsp set kc_sl=kc_sl-2,kc_zsl=kc_zsl-2 where g_sn='10000001'");
    execSql("update jxc_kcsp set kc_sl=kc_sl+3,kc_zsl=kc_zsl+3 where g_sn='10000002'");
    const auto auditAnswering = [&](const std::function<void(ui::Screen&)>& answers) {
      expectQuestion(u"您的操作将审核单据："_qs + first + u"，确认吗？"_qs, Answer::Yes);
      expectScreen("F_Each", answers);
      press(s, "F6");
    };
    auditAnswering([&](ui::Screen& each) {
      ASSERT_EQ(each.grid("gridEach").rowCount(), 2);
      picture(each, u"F_Each"_qs);
      press(each, "Esc");
    });
    EXPECT_EQ(rows("select pd_status from jxc_kcpd"), "0");
    auditAnswering([&](ui::Screen& each) {
      press(each, "F7");
      EXPECT_EQ(each.grid("gridEach").currentText("answer"), "清点之后");
      press(each, "F6");
      each.grid("gridEach").selectRow(0);
      press(each, "F3");
      EXPECT_EQ(each.grid("gridEach").currentText("answer"), "清点之后");
      press(each, "F5");
    });
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(rows("select g_sn,kc_sl,kc_zsl from jxc_kcsp where g_sn<>'00000000' order by g_sn"),
            "10000001 2 2 | 10000002 29 29 | 10000003 8 8 | 10000004 2 2");
  EXPECT_EQ(rows("select g_sn,gl_sl,gl_zje from jxc_goodslist order by g_sn"),
            "10000001 -1 -40 | 10000002 -4 -8 | 10000004 2 30");
}

// In the sheet of powers an empty cell was not counted, and a 0 was not found.
TEST_F(StocktakeScreenTest, ASheetOfPowersTellsZeroFromEmpty) {
  for (int i = 0; i < 4; ++i)
    addLens(QString::number(20000001 + i), u"清晰1.56"_qs, numberText(-0.25 * i), u"0"_qs, 3);
  open("F_Kcpd", [&](ui::Screen& s) {
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      auto* cells = sheet.findChild<QTableView*>("sheet")->model();
      const auto type = [&](int row, const char* text) {
        cells->setData(cells->index(row, 0), QString::fromUtf8(text));
      };
      type(0, "5");
      type(1, "0");
      type(2, "4");
      type(2, "");  // taken back
      type(3, "0");
      EXPECT_EQ(cells->index(1, 0).data().toString(), "0");
      EXPECT_EQ(cells->index(2, 0).data().toString(), "");
      EXPECT_TRUE(cells->index(0, 0).data(Qt::AccessibleTextRole).toString().contains(u"库存"));
      picture(sheet, u"F_Kcpd_sheet"_qs);
      press(sheet, "F5");
    });
    ASSERT_EQ(s.grid("gridLines").rowCount(), 3);
    EXPECT_EQ(line(s, 0), "20000004 3 5 2 16");
    EXPECT_EQ(line(s, 1), "20000003 3 0 -3 -24");
    EXPECT_EQ(line(s, 2), "20000001 3 0 -3 -24");
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      auto* cells = sheet.findChild<QTableView*>("sheet")->model();
      cells->setData(cells->index(0, 0), u"6"_qs);
      press(sheet, "F5", u"下列商品已添加，没有重复添加：\r\n\r\n20000004"_qs);
    });
    EXPECT_EQ(line(s, 0), "20000004 3 5 2 16");
    check(s, "chkMp", true);
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      const auto* cells = sheet.findChild<QTableView*>("sheet")->model();
      EXPECT_FALSE(cells->index(0, 0).data(Qt::AccessibleTextRole).toString().contains(u"库存"));
      press(sheet, "Esc");
    });
    leaveDraft(s);
  });
}

// Who counts blind sees no stock before the count is saved, wherever it could show.
TEST_F(StocktakeScreenTest, ABlindCountShowsNoStockUntilItIsSaved) {
  const auto sees = [](ui::Screen& s, std::string_view grid, const char* column) {
    return s.grid(grid).isColumnAllowed(column);
  };
  open("F_Kcpd", [&](ui::Screen& s) {
    check(s, "chkMp", true);
    scan(s, kFrame);
    for (const char* book : {"kc_sl", "kc_zsl", "cysl", "pd_zje"})
      EXPECT_FALSE(sees(s, "gridLines", book)) << book;
    EXPECT_FALSE(s.field("tkcsl").widget()->isVisible());
    // On paper it is the list without them.
    for (const SheetColumn& column : ui::gridSheet(s.grid("gridLines")).columns)
      EXPECT_FALSE(column.caption.contains(u"库存") || column.caption.contains(u"盈亏"))
          << column.caption.toStdString();
    expectScreen("F_Preview", [](ui::Screen& paper) { press(paper, "Esc"); });
    s.command("btnPrin").click();
    press(s, "F3", "F_Kcpd_Sele", [&](ui::Screen& dialog) {
      EXPECT_FALSE(dialog.findChild<QLabel*>("lGoods")->text().contains(u"库存"));
      for (const char* book : {"tkcsl", "tkczsl", "tzje"})
        EXPECT_FALSE(dialog.field(book).widget()->isVisible()) << book;
      press(dialog, "Esc");
    });
    press(s, "F2", "F_Kcpd_Add", [&](ui::Screen& pick) {
      EXPECT_FALSE(sees(pick, "gridGoods", "kc_sl"));
      press(pick, "Esc");
    });
    press(s, "Ctrl+U", "F_Kcpd_Wp", [&](ui::Screen& open) {
      EXPECT_FALSE(sees(open, "gridGoods", "kc_sl"));
      press(open, "Esc");
    });
    picture(s, u"F_Kcpd_blind"_qs);
    save(s, kSaveCount);
    showWaiting(s);
    EXPECT_TRUE(sees(s, "gridWaitingLines", "cysl"));
    EXPECT_EQ(s.grid("gridWaitingLines").currentText("cysl"), "-4");
  });
  // The station keeps it.
  open("F_Kcpd", [&](ui::Screen& s) { EXPECT_TRUE(s.field("chkMp").isChecked()); });
  EXPECT_TRUE(QFile::exists(programPath(u"Layout/station.ini"_qs)));
}

}  // namespace jxc::test::stocktake_screen_test
