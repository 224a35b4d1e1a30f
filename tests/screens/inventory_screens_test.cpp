// Documents within the house through their screens: transfer, loss and overflow, which have lines and no money.
#include "core/session.h"
#include "platform/sheet/sheet_writer.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/screens/document_screen.h"
#include "stock/screens/line_import_screen.h"

#include <QLabel>

#include <tuple>

namespace jxc::test::inventory_screens_test {

constexpr QStringView kFrame = u"6900000000017", kCase = u"6900000000024";
const QString kRepeat = u"该商品已添加，需要重复添加吗？"_qs;

QString auditQuestion(const QString& number) {
  return u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs;
}

class InventoryScreensTest : public TradingScreenTest {
 protected:
  InventoryScreensTest() {
    execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn) values ('100002','分店','')");
    addGoods(
        {.sn = u"10000001"_qs, .name = u"镜架"_qs, .barcode = kFrame.toString(), .cost = 40, .price = 99, .stock = 5});
    addGoods({.sn = u"10000002"_qs, .name = u"镜盒"_qs, .barcode = kCase.toString(), .cost = 2, .price = 9});
  }
};

TEST_F(InventoryScreensTest, ATransferIsScannedPickedSavedAndAuditedWithoutTheMouse) {
  open("F_Kcdb", [&](ui::Screen& s) {
    EXPECT_FALSE(s.field("comCk").isReadOnly());
    scan(s, kFrame);
    scan(s, kFrame);
    ASSERT_EQ(s.grid("gridLines").rowCount(), 1);
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_sl"), 2);
    EXPECT_TRUE(s.field("comCk").isReadOnly());  // the lines hold its cost
    edit(s, "gridLines", 0, "db_sl", u"3");
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_zje"), 120);
    EXPECT_FALSE(cellOpens(s, "gridLines", 0, "db_dj"));
    setParameter("cs_kc", 0);
    expectNotice(u"调拨数量不能大于库存数量，重新输入！"_qs);
    edit(s, "gridLines", 0, "db_sl", u"6");
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_sl"), 3);
    press(s, "F3", "F_Kcdb_Sele", [&](ui::Screen& line) {
      EXPECT_TRUE(line.field("tdj").isReadOnly());
      EXPECT_TRUE(line.field("tzje").isReadOnly());
      type(line, "tsl", u"0");
      press(line, "F5", u"数量必须大于0，重新输入！"_qs);
      type(line, "tsl", u"4");
      EXPECT_EQ(line.field("tzje").number(), 160);
      press(line, "F5");
    });
    press(s, "F5", u"请选择调入仓库！"_qs);
    EXPECT_TRUE(s.field("comCk2").hasFocus());
    choose(s, "comCk2", u"分店"_qs);
    type(s, "tnote", u"补货");
    save(s, kSaveTransfer);
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
    EXPECT_FALSE(s.field("comCk").isReadOnly());
    EXPECT_EQ(s.field("comCk2").key(), "");

    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(s.grid("gridWaiting").currentText("into_name"), "分店");
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    // Goods are added to the waiting document; the one that stands there already after a question.
    press(s, "Ctrl+N", "F_Kcdb_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      type(pick, "tkey", u"镜架");
      pick.grid("gridGoods").waitLoaded();
      press(pick, "Return", kRepeat, Answer::No);
      press(pick, "Esc");
    });
    press(s, "F9", "F_Yltx", [&](ui::Screen& preview) {
      const QStringList kinds = textsOf(preview.grids().front()->rows(), {"kind"});
      EXPECT_TRUE(kinds.contains("库存金额"));
      EXPECT_FALSE(kinds.contains("调拨产生的价值"));  // at its cost a transfer makes none
    });
    EXPECT_EQ(rows("select db_status from jxc_kcdbd"), "0");
    press(s, "F6", auditQuestion(number), Answer::No);
    press(s, "F6", auditQuestion(number), Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
    EXPECT_EQ(rows("select ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn='10000001' order by ck_sn"),
              "100001 1 1 40 | 100002 4 4 40");
    EXPECT_EQ(rows("select db_status,ck_out,ck_in,db_note from jxc_kcdbd"), "1 100001 100002 补货");

    // The third panel is a screen of its own inside this one: its keys are its own, and Esc leaves both.
    s.findChild<QTabWidget*>()->setCurrentIndex(2);
    ui::Screen& list = *static_cast<DocumentScreen&>(s).audited();
    ASSERT_EQ(list.grid("gridDj").currentText("djh"), number);
    EXPECT_EQ(list.grid("gridDj").currentText("ck_in"), "分店");
    EXPECT_EQ(list.grid("gridDjMx").currentNumber("gl_sl"), 4);
    EXPECT_FALSE(s.command("btnOK").isVisible() || list.command("btnCancel").isVisible());
    press(list, "F6", u"您的操作将取消当前选中的已审核单据："_qs + number + u"，确认吗？"_qs, Answer::Yes);
    EXPECT_TRUE(list.grid("gridDj").isEmpty() && list.grid("gridDjMx").isEmpty());
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    s.findChild<QTabWidget*>()->setCurrentIndex(2);
    press(list, "Esc");
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_EQ(rows("select kc_sl,kc_zsl from jxc_kcsp where g_sn='10000001' and kc_sl<>0"), "5 5");
}

// A branch that sees only its own goods sends them to any other. It does not see cost: neither on the screen nor from a
// price that it tries in a spreadsheet.
TEST_F(InventoryScreensTest, ABoundOperatorSendsToAllAndSeesNoCost) {
  setParameter("cs_cgyh", 1);
  setRights(u"100009"_qs, "kcgl", u"1000000000000000000000"_qs);
  becomeOperator(u"店员"_qs, u"100009"_qs, u"100009"_qs);
  execSql("update jxc_ckxx set ck_asn='100009' where ck_sn='100002'");
  Sheet sheet;
  for (const QString& caption : {u"商品编号"_qs, u"数量"_qs, u"单价"_qs})
    sheet.columns.push_back({.caption = caption});
  sheet.rows = heldRows({{Value(u"10000002"_qs), Value(u"1"_qs), Value(u"2"_qs)}});
  const QString path = file(u"调拨.xlsx"_qs);
  writeSheet(path, sheet);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('10000002','100002',3,3,2)");
  open("F_Kcdb", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comCk").items().size(), 1);
    EXPECT_EQ(s.field("comCk2").items().size(), 2);
    for (const char* price : {"db_dj", "db_zje", "db_sj"})
      EXPECT_FALSE(s.grid("gridLines").isColumnVisible(price)) << price;
    choose(s, "comCk", u"分店"_qs);
    press(s, "Ctrl+I", "F_Kcdb_Import", [&](ui::Screen& import) {
      dynamic_cast<LineImportScreen&>(import).openFile(path);
      EXPECT_EQ(import.grid("gridLines").currentText("status"), "单价未采用（没有查看成本的权限）");
      EXPECT_EQ(import.grid("gridLines").currentText("g_name"), "镜盒");  // the sheet has codes only
      press(import, "F5", u"导入完毕\r\n\r\n共1条记录\r\n\r\n成功导入1条\r\n\r\n失败0条"_qs);
    });
    EXPECT_EQ(rows("select g_sn,db_sl,db_dj from jxc_dbsp"), "10000002 1 2");
    leaveDraft(s);
  });
}

// The program ended over a draft: its lines come back, but not the warehouse whose cost they hold. It has to be chosen
// before they are saved, and they take its cost then.
TEST_F(InventoryScreensTest, ADraftThatComesBackTakesTheCostOfTheWarehouseThatIsChosen) {
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('10000001','100002',9,9,33)");
  open("F_Kcdb", [&](ui::Screen& s) {
    choose(s, "comCk", u"分店"_qs);
    scan(s, kFrame);
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_dj"), 33);
  });
  ui::dropScreens();
  open("F_Kcdb", [&](ui::Screen& s) {
    EXPECT_EQ(s.grid("gridLines").rowCount(), 1);
    press(s, "F5", u"请选择调出仓库！"_qs);
    EXPECT_TRUE(s.field("comCk").hasFocus());
    const auto asksForWarehouse = [&] { return s.findChild<QLabel*>("lHint")->text().contains(u"请选择仓库"_qs); };
    EXPECT_TRUE(asksForWarehouse());
    choose(s, "comCk", lookupValue("select ck_name from jxc_ckxx where ck_sn='100001'"));
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_dj"), 40);
    EXPECT_FALSE(asksForWarehouse());
    choose(s, "comCk", u"分店"_qs);
    EXPECT_EQ(s.grid("gridLines").currentNumber("db_dj"), 33);
    leaveDraft(s);
  });
  open("F_Bsby", [&](ui::Screen& s) {
    choose(s, "comDjlx", u"报溢单"_qs);
    scan(s, kCase);
  });
  ui::dropScreens();
  open("F_Bsby", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comDjlx").text(), "报溢单");
    EXPECT_EQ(s.grid("gridLines").currentText("g_name"), "镜盒");
    leaveDraft(s);
  });
  EXPECT_EQ(rows("select count(*) from jxc_bysp"), "0");
}

TEST_F(InventoryScreensTest, LossAndOverflowAreWrittenOnOneScreenAndWaitOnOneList) {
  QString lost, found;
  open("F_Bsby", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comDjlx").text(), "报损单");
    press(s, "F2", "F_Bsby_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      EXPECT_EQ(pick.grid("gridGoods").rowCount(), 1);  // the warehouse knows one of the two
      press(pick, "Return", "F_Bsby_Sele", [&](ui::Screen& line) {
        type(line, "tsl", u"6");
        type(line, "tnote", u"割边损坏");
        press(line, "F5", u"报损数量大于库存数量，报损后将产生负库存，继续报损吗?"_qs, Answer::No);
        type(line, "tsl", u"2");
        EXPECT_EQ(line.field("tzje").number(), 80);
        press(line, "F5");
      });
      press(pick, "F5");
    });
    EXPECT_EQ(s.grid("gridLines").currentText("bs_note"), "割边损坏");
    EXPECT_TRUE(s.field("comDjlx").isReadOnly());
    lost = s.field("gldjh").text();
    type(s, "tnote", u"月末清点");
    save(s, kSaveLoss);

    choose(s, "comDjlx", u"报溢单"_qs);
    found = s.field("gldjh").text();
    EXPECT_EQ(found.left(2), "BY");
    scan(s, kCase);
    EXPECT_EQ(s.grid("gridLines").currentNumber("bs_dj"), 2);
    edit(s, "gridLines", 0, "bs_sl", u"3");
    EXPECT_EQ(s.grid("gridLines").currentNumber("bs_zje"), 6);
    save(s, kSaveOverflow);
    EXPECT_EQ(s.field("comDjlx").text(), "报溢单");  // the next one is of the same kind

    showWaiting(s);
    ASSERT_EQ(s.grid("gridWaiting").rowCount(), 2);
    EXPECT_EQ(s.grid("gridWaiting").currentText("gl_djh"), found);
    EXPECT_EQ(s.grid("gridWaitingLines").currentText("g_name"), "镜盒");
    edit(s, "gridWaitingLines", 0, "bs_sl", u"4");
    EXPECT_EQ(rows("select by_sl,by_zje from jxc_bysp"), "4 8");
    s.grid("gridWaiting").selectRow(1);
    EXPECT_EQ(s.grid("gridWaiting").currentText("djlx"), "报损单");
    EXPECT_EQ(s.grid("gridWaitingLines").currentText("bs_note"), "割边损坏");
    press(s, "Ctrl+E", "F_ModiDate", filled({{"dateCg", u"2021-05-02"}}));
    EXPECT_EQ(rows("select gl_djh,bs_bsrq from jxc_bsd"), lost + " 2021-05-02");
    press(s, "F6", auditQuestion(lost), Answer::Yes);
    press(s, "F7", kAuditAll, Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(rows("select g_sn,kc_sl,kc_cbj from jxc_kcsp where g_sn<>'00000000' order by g_sn"),
            "10000001 3 40 | 10000002 4 2");
  EXPECT_EQ(rows("select fy_lx,fy_je from jxc_yyfy order by id"), "费用 -80 | 收入 8");
}

// Of four powers two have an article, and the warehouse knows one of them: what goes out is not made for the purpose.
TEST_F(InventoryScreensTest, LensesGoOutByTheirSheet) {
  addLens(u"20000001"_qs, u"清晰1.56"_qs, u"-1"_qs, u"0"_qs, 3);
  addLens(u"20000002"_qs, u"清晰1.56"_qs, u"-2"_qs, u"-0.5"_qs, 0);
  for (const auto& [name, opens, quantity] : {std::tuple("F_Kcdb", "o..o", "db_sl"), {"F_Bsby", "...o", "bs_sl"}})
    open(name, [&](ui::Screen& s) {
      press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
        auto& model = *sheet.findChild<QTableView*>("sheet")->model();
        QString cells;
        for (int i = 0; i < 4; ++i)
          cells += model.flags(model.index(i / 2, i % 2)).testFlag(Qt::ItemIsEditable) ? u'o' : u'.';
        EXPECT_EQ(cells, opens) << name;
        model.setData(model.index(1, 1), 2);
        press(sheet, "F5");
      });
      EXPECT_EQ(s.grid("gridLines").currentNumber(quantity), 2);
      leaveDraft(s);
    });
}

}  // namespace jxc::test::inventory_screens_test
