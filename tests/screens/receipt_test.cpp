// The purchase receipt through its screens: an operator's stories, and what they leave in the books.
#include "core/habits.h"
#include "harness/invariants.h"
#include "masterdata/goods_classes.h"
#include "screens/harness/trading_test.h"
#include "stock/cancelling.h"
#include "stock/document.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTreeWidget>

namespace jxc::test::receipt_screen_test {

class ReceiptScreenTest : public TradingScreenTest {
 protected:
  ReceiptScreenTest() {
    addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = u"6900000000017"_qs, .cost = 40, .bought = 3});
    addGoods({.sn = u"10000002"_qs, .name = u"钛架"_qs, .barcode = u"6900000000024"_qs, .cost = 120, .bought = 9});
    addGoods({.sn = u"10000003"_qs, .name = u"镜布"_qs, .barcode = u"6900000000031"_qs, .cost = 2.5, .bought = 1});
  }

  static QString shown(ui::Screen& s, std::string_view field) { return s.field(field).text(); }
  static QString lines(ui::Screen& s, std::string_view grid = "gridLines") {
    return TradingScreenTest::lines(s, "jh", grid);
  }
  /// A receipt of one scanned goods, saved from the screen.
  void receiveOne(ui::Screen& s, QStringView barcode) {
    scan(s, barcode);
    save(s, kSaveReceipt);
  }
};

// Three goods on a receipt: one scanned twice, one from the list, one changed in the line dialog; saved and audited.
TEST_F(ReceiptScreenTest, ThreeLinesSavedAndAuditedFromTheList) {
  open("F_Cgjh", [&](ui::Screen& s) {
    EXPECT_EQ(shown(s, "jsn"), "CJ21050310001");
    EXPECT_EQ(shown(s, "tghs"), "普通供货商");
    scan(s, u"6900000000017");
    scan(s, u"6900000000017");
    EXPECT_EQ(lines(s), "1×2@40=80");
    EXPECT_TRUE(s.field("tSptm").hasFocus());
    EXPECT_TRUE(s.field("tSptm").isEmpty());

    press(s, "F2", "F_Cgjh_Add", [&](ui::Screen& pick) {
      EXPECT_EQ(pick.grid("gridGoods").currentText("g_sn"), "10000002");  // bought most
      type(pick, "tkey", u"板材");
      EXPECT_EQ(pick.grid("gridGoods").rowCount(), 1);
      type(pick, "tkey", u"10000002");
      press(pick, "Return", "F_Cgjh_Sele", [&](ui::Screen& line) {
        type(line, "tsl", u"3");
        EXPECT_EQ(line.field("tzje").number(), 360);
        press(line, "F5");
      });
      EXPECT_EQ(pick.grid("gridStaging").footerText("ts_zje"), "360.00");
      press(pick, "F5");
    });
    EXPECT_EQ(lines(s), "1×2@40=80 2×3@120=360");

    s.field("tSptm").focus();
    scan(s, u"6900000000031");
    click(s, "btnModi", "F_Cgjh_Sele", [&](ui::Screen& line) {
      type(line, "tsl", u"10");
      type(line, "tgpjjj", u"2.2");
      EXPECT_EQ(line.field("tzje").number(), 22);
      enter(line, "tnote", u"赠布");
    });
    EXPECT_EQ(lines(s), "1×2@40=80 2×3@120=360 3×10@2.2=22");
    EXPECT_EQ(s.field("tyfje").number(), 462);
    EXPECT_EQ(s.field("tsfje").number(), 462);

    choose(s, "comJsfs", QStringLiteral("余款记入应付帐"));
    type(s, "tsfje", u"200");
    type(s, "tnote", u"五月第一批");
    save(s, kSaveReceipt);
    EXPECT_EQ(shown(s, "jsn"), "CJ21050310002");  // ready for the next one
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
    EXPECT_FALSE(s.command("btnModi").isEnabled());
    EXPECT_EQ(s.field("tyfje").number(), 0);
    EXPECT_EQ(rows("select j_yfje,j_sfje,j_jsfs,j_status,j_kmmc,j_note,j_jhrq,j_crk from jxc_jhd"),
              "462 200 1 0 现金 五月第一批 2021-05-03 1");

    showWaiting(s);
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(lines(s, "gridWaitingLines"), "1×2@40=80 2×3@120=360 3×10@2.2=22");
    press(s, "F6", "F_Cgjh_Check", [&](ui::Screen& check) {
      EXPECT_EQ(shown(check, "jsn"), "CJ21050310001");
      EXPECT_EQ(check.field("tsfje").number(), 200);
      type(check, "tsfje", u"262");
      const auto* difference = check.findChild<QLabel*>("lDifference");
      EXPECT_EQ(difference->text(), "");  // on account
      choose(check, "comJsfs", QStringLiteral("按实付款结算"));
      EXPECT_EQ(difference->text(), "差额 -200 记入优惠商品");
      type(check, "tsfje", u"462");
      EXPECT_EQ(difference->text(), "");
      type(check, "tsfje", u"262");
      choose(check, "comJsfs", QStringLiteral("余款记入应付帐"));
      press(check, "F5");
    });
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });

  const QString number = QStringLiteral("CJ21050310001");
  EXPECT_EQ(rows("select j_yfje,j_sfje,j_yhje,j_status,j_checker,j_chkrq from jxc_jhd where j_sn=?", number),
            "462 262 0 1 admin 2021-05-03");
  EXPECT_EQ(
      rows("select g_sn,jh_sl,jh_dj,jh_je,jh_taxje,jh_zje,jh_rksl,jh_qxsl,jh_dzl,jh_bz from jxc_jhsp order by id"),
      "10000001 2 40 80 0 80 2 0 1  | 10000002 3 120 360 0 360 3 0 1  | 10000003 10 2.2 22 0 22 10 0 1 赠布");
  EXPECT_EQ(lookupValue("select count(*) from jxc_jhsp where id2=id"), "3");
  EXPECT_EQ(rows("select gl_flag,g_sn,gl_sl,gl_dj,gl_zje,gl_kc,gl_pjjj,gl_kczje,gl_kdrq,gl_checker from jxc_goodslist "
                 "order by id"),
            "cj 10000001 2 40 80 2 40 80 2021-05-03 admin | cj 10000002 3 120 360 3 120 360 2021-05-03 admin | "
            "cj 10000003 10 2.2 22 10 2.2 22 2021-05-03 admin");
  EXPECT_EQ(rows("select g_sn,kc_sl,kc_zsl from jxc_kcsp where kc_zsl<>0 order by g_sn"),
            "10000001 2 2 | 10000002 3 3 | 10000003 10 10");
  EXPECT_EQ(rows("select js_rq,ck_sn,js_sl,js_zje from jxc_kcjs where js_sl<>0"), "2021-05 100001 15 462");
  EXPECT_EQ(rows("select g_kc,g_pjjj,g_scjj,g_cgpl from jxc_goods where g_sn='10000003'"), "10 2.2 2.2 2");
  EXPECT_EQ(rows("select xj_dlx,xj_je,xj_ljje,xj_kmmc,xj_chk from jxc_xjyh where gl_djh=?", number),
            "采购进货 -262 -262 现金 1");
  EXPECT_EQ(rows("select k_type,k_djlx,k_yfje,k_sfje,k_ljje,k_djtxt,k_fkfs from jxc_ysyfk where gl_djh=?", number),
            "ghs CJ 462 262 200 采购进货单 现金");
  EXPECT_EQ(lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn='100001'"), 200);
  EXPECT_EQ(rows("select log_note from jxc_log where log_note like '%进货单%' order by id"),
            "增加未审核进货单CJ21050310001，共3种商品 | 审核采购进货单CJ21050310001，共3种商品");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

// Audited at the save; then one of an earlier day, which changes what the later one found.
TEST_F(ReceiptScreenTest, AnEarlierReceiptReplaysTheLaterOne) {
  setParameter("cs_shdj", 1);
  open("F_Cgjh", [&](ui::Screen& s) {
    s.field("tnote").focus();
    scan(s, u"6900000000017");  // the focus stood in the note: the code goes where it belongs
    EXPECT_TRUE(s.field("tnote").isEmpty());
    edit(s, "gridLines", 0, "jh_sl", u"10");
    save(s, kSaveReceiptAudited);
    EXPECT_EQ(rows("select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist"), "10 40 400");

    enter(s, "dateCg", u"2021-4-20");
    EXPECT_EQ(shown(s, "jsn"), "CJ21042010001");
    s.field("tSptm").focus();
    scan(s, u"6900000000017");
    edit(s, "gridLines", 0, "jh_sl", u"30");
    typeInCell(s, "gridLines", 0, "jh_dj", u"20");  // saved from out of the cell: it is 30 at 20, not at 40
    save(s, kSaveReceiptAudited);
    showWaiting(s);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  // 30 at 20 in April, then 10 at 40 in May: 1000 for 40 pieces.
  EXPECT_EQ(rows("select gl_kdrq,gl_sl,gl_kc,gl_pjjj,gl_kczje from jxc_goodslist order by gl_kdrq"),
            "2021-04-20 30 30 20 600 | 2021-05-03 10 40 25 1000");
  // The month of the document takes the stock as it lies now; the later month is not touched by it.
  EXPECT_EQ(rows("select js_rq,js_sl,js_zje from jxc_kcjs where js_sl<>0 order by js_rq"),
            "2021-04 40 1000 | 2021-05 10 400");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

TEST_F(ReceiptScreenTest, RefusalsInTheirOrderAndWaysOut) {
  open("F_Cgjh", [&](ui::Screen& s) {
    press(s, "F5", u"单据中没有业务发生，不能保存！"_qs);
    expectNotice(
        u"没有找到与该条码匹配的商品，请检查！\r\n\r\n条码：4711\r\n\r\n按“新商品添加(F9)”，可以用这个条码增加新商品。"_qs);
    scan(s, u"4711");
    EXPECT_TRUE(s.field("tSptm").hasFocus());
    scan(s, u"6900000000024");
    s.field("tghs").setPicked({});
    s.field("comUser").setIndex(-1);
    s.field("comCk").setIndex(-1);
    press(s, "F5", u"请选择供货商！"_qs);
    expectScreen("F_Ghs_Sele", [&](ui::Screen& list) {
      press(list, "F8", "F_Ghsgl_Add", filled({{"tname", u"宏达光学"}}));
      EXPECT_EQ(list.grid("gridPartners").currentText("ghs_name"), "宏达光学");
      enter(list, "tkey", u"HDGX");
    });
    EXPECT_TRUE(s.field("tghs").hasFocus());
    press(s, "F2");
    EXPECT_EQ(shown(s, "tghs"), "宏达光学");
    EXPECT_EQ(s.field("tghs").key(), "100002");
    press(s, "F5", u"请选择经办人！"_qs);
    EXPECT_TRUE(s.field("comUser").hasFocus());
    choose(s, "comUser", u"默认员工"_qs);
    press(s, "F5", u"请选择仓库！"_qs);
    EXPECT_TRUE(s.field("comCk").hasFocus());
    choose(s, "comCk", u"主仓库"_qs);
    press(s, "F5", kSaveReceipt, Answer::No);
    EXPECT_EQ(lines(s), "2×1@120=120");

    // A date behind today asks; no goes back, and the number stays.
    const QString question =
        u"您选择的日期：2021-06-01，\r\n\r\n大于计算机的当前日期：2021-05-03，\r\n\r\n确认继续吗？"_qs;
    expectQuestion(question, Answer::No);
    enter(s, "dateCg", u"2021-6-1");
    EXPECT_EQ(shown(s, "dateCg"), "2021-05-03");
    expectQuestion(question, Answer::Yes);
    enter(s, "dateCg", u"2021-6-1");
    EXPECT_EQ(shown(s, "jsn"), "CJ21060110001");
    EXPECT_EQ(lines(s), "2×1@120=120");  // the lines went along

    press(s, "Esc", kUnsaved, Answer::Cancel);
    EXPECT_TRUE(s.isVisible());
    leaveDraft(s);
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_jhsp"), "0");

  open("F_Cgjh", [&](ui::Screen& s) {
    scan(s, u"6900000000024");
    // A second press on its way while the first one asks saves nothing twice, and refuses nothing.
    QApplication::postEvent(s.focusWidget(), new QKeyEvent(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier));
    click(s, "btnOK", kSaveReceipt, Answer::Yes);
    EXPECT_TRUE(s.command("btnOK").isEnabled());

    scan(s, u"6900000000024");
    expectQuestion(kUnsaved, Answer::Yes);
    press(s, "Esc", kSaveReceipt, Answer::Yes);
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_jhd"), "2");
}

// The program ended with lines on the screen: they come back, the other operator's do not.
TEST_F(ReceiptScreenTest, LinesComeBackAfterACrash) {
  open("F_Cgjh", [&](ui::Screen& s) {
    enter(s, "dateCg", u"2021-4-30");
    s.field("tSptm").focus();
    scan(s, u"6900000000024");
    scan(s, u"6900000000031");
  });  // closed without a question: as a power cut leaves it
  insertRow("jxc_jhsp", {{"j_sn", u"CJ21043010009"}, {"a_name", u"小王"}, {"g_sn", u"10000001"}});
  ui::dropScreens();
  open("F_Cgjh", [&](ui::Screen& s) {
    EXPECT_EQ(shown(s, "jsn"), "CJ21043010001");
    EXPECT_EQ(shown(s, "dateCg"), "2021-04-30");
    EXPECT_EQ(lines(s), "2×1@120=120 3×1@2.5=2.5");
    EXPECT_EQ(s.field("tyfje").number(), 122.5);
    save(s, kSaveReceipt);
    EXPECT_EQ(shown(s, "jsn").left(8), "CJ210503");
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
  });
  EXPECT_EQ(rows("select j_sn,j_jhrq,j_yfje from jxc_jhd"), "CJ21043010001 2021-04-30 122.5");
}

TEST_F(ReceiptScreenTest, SwitchesShowInputsAndSettleAmounts) {
  setParameter("cs_possk", 0);
  setParameter("cs_xjyh", 0);
  open("F_Cgjh", [&](ui::Screen& s) {
    for (const char* name : {"comYhzh", "tfpno", "tfpje", "tsn2", "chkZj"})
      EXPECT_FALSE(s.field(name).isVisible()) << name;
    EXPECT_FALSE(s.command("btnHt").isVisible());
    for (const char* column : {"jh_tax", "jh_taxdj", "jh_taxje", "jh_dzl"})
      EXPECT_FALSE(s.grid("gridLines").isColumnVisible(column)) << column;
    scan(s, u"6900000000017");
    scan(s, u"6900000000017");
    EXPECT_EQ(lines(s), "1×1@40=40 1×1@40=40");  // a line of its own each time
    s.findChild<QAction*>("btnPanelAdd")->setChecked(true);
    s.field("tSptm").focus();
    expectNotice(u"该商品已添加，不能重复添加，\r\n\r\n可以修改已添加商品的数量！\r\n\r\n商品：10000001 板材镜架"_qs);
    scan(s, u"6900000000017");
    click(s, "btnDel");
    EXPECT_EQ(lines(s), "1×1@40=40");
    leaveDraft(s);
  });

  for (const char* on : {"cs_hs", "cs_jhzk", "cs_zjews", "cs_kp", "cs_ysdh", "cs_sprk", "cs_cgje", "cs_xjyh"})
    setParameter(on, 1);
  setParameter("cs_jews", 0);
  setParameter("cs_tax", 13);
  open("F_Cgjh", [&](ui::Screen& s) {
    for (const char* name : {"comYhzh", "tfpno", "tfpje", "tsn2", "chkZj"})
      EXPECT_TRUE(s.field(name).isVisible()) << name;
    s.findChild<QAction*>("btnPanelAdd")->setChecked(false);
    s.field("tSptm").focus();
    scan(s, u"6900000000017");
    // 40 with 13 percent is 45.2, a total without decimals 45; 0.8 of 3 pieces at 45.2 is 108.48, so 108.
    EXPECT_EQ(rows("select jh_tax,jh_taxdj,jh_zje,jh_rksl from jxc_jhsp"), "13 45.2 45 0");
    edit(s, "gridLines", 0, "jh_sl", u"3");
    edit(s, "gridLines", 0, "jh_dzl", u"0.8");
    EXPECT_EQ(rows("select jh_je,jh_taxje,jh_zje from jxc_jhsp"), "96 12 108");
    EXPECT_EQ(s.field("tyfje").number(), 108);
    EXPECT_EQ(s.field("tsfje").number(), 0);  // proposed: zero
    type(s, "tyf", u"12");
    type(s, "tfpno", u"F77");
    type(s, "tfpje", u"100");
    type(s, "tsn2", u"GH1");
    check(s, "chkYf", true);
    check(s, "chkZj", true);
    save(s, kSaveReceipt);
  });
  EXPECT_EQ(rows("select j_yfje,j_sfje,j_jsfs,j_fpno,j_fpje,j_sn2,j_yf,j_yffs,j_crk,j_qk from jxc_jhd"),
            "108 0 1 F77 100 GH1 12 我方付运费 1 1");
  EXPECT_EQ(rows("select jh_sl,jh_rksl from jxc_jhsp"), "3 3");  // straight to stock
}

TEST_F(ReceiptScreenTest, PickingAsksOnceAboutRepeatsAndBeforeItIsLeft) {
  open("F_Cgjh", [&](ui::Screen& s) {
    scan(s, u"6900000000031");
    press(s, "F2", "F_Cgjh_Add", [&](ui::Screen& pick) {
      expectNotice(u"默认添加数量必须大于0！"_qs);
      type(pick, "tsl", u"0");
      click(pick, "btnAdd");
      type(pick, "tsl", u"4");
      pick.grid("gridGoods").view()->selectAll();
      click(pick, "btnAdd", u"该商品已添加，需要重复添加吗？"_qs, Answer::No);
      EXPECT_EQ(pick.grid("gridStaging").rowCount(), 2);
      pick.grid("gridGoods").view()->selectAll();
      click(pick, "btnAdd");  // three repeats, and no question more
      EXPECT_EQ(pick.grid("gridStaging").rowCount(), 2);
      edit(pick, "gridStaging", 0, "ts_dj", u"99");
      EXPECT_EQ(rows("select ts_sl,ts_dj,ts_zje from jxc_tempspxf order by id"), "4 99 396 | 4 40 160");
      press(pick, "Esc", u"所选商品还未保存，是否保存？"_qs, Answer::Cancel);
      pick.grid("gridStaging").selectRow(1);
      click(pick, "btnDel");
      press(pick, "Esc", u"所选商品还未保存，是否保存？"_qs, Answer::Yes);
      EXPECT_FALSE(pick.isVisible());
    });
    EXPECT_EQ(lines(s), "3×1@2.5=2.5 2×4@99=396");
    expectScreen("F_Cgjh_Add", [&](ui::Screen& pick) {
      expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) { press(line, "F5"); });
      enter(pick, "tkey", u"板材");
      press(pick, "Esc", u"所选商品还未保存，是否保存？"_qs, Answer::No);
    });
    s.field("tSptm").focus();
    press(s, "F2");
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    EXPECT_EQ(lookupValue("select count(*) from jxc_tempspxf"), "0");
  });
}

// What was saved is said with the keys that come next, and these do what they say.
TEST_F(ReceiptScreenTest, TheQuietLineNamesTheSavedNumberAndItsKeys) {
  open("F_Cgjh", [&](ui::Screen& s) {
    const auto* tabs = s.findChild<QTabWidget*>();
    const QString waiting = tabs->tabText(1);
    receiveOne(s, u"6900000000017");
    EXPECT_EQ(s.said(), "已保存 CJ21050310001 · F6审核 · Ctrl+P打印");
    EXPECT_EQ(tabs->tabText(1), waiting + u" (1)"_qs);
    press(s, "F6", "F_Cgjh_Check", [&](ui::Screen& check) {
      EXPECT_EQ(shown(check, "jsn"), "CJ21050310001");
      press(check, "F5");
    });
    EXPECT_EQ(s.said(), "已审核 CJ21050310001 · 还有 0 张待审核");
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(tabs->tabText(1), waiting);

    setHabit(kSavesAtOnce, true);
    scan(s, u"6900000000024");
    EXPECT_EQ(s.said(), "");
    press(s, "F5");  // nobody asks
    EXPECT_EQ(s.said(), "已保存 CJ21050310002 · F6审核 · Ctrl+P打印 · Ctrl+F5恢复保存前的询问");
    press(s, "Ctrl+F5");
    receiveOne(s, u"6900000000031");
  });
}

TEST_F(ReceiptScreenTest, WaitingDocumentsChangeAndGo) {
  open("F_Cgjh", [&](ui::Screen& s) {
    for (const char16_t* code : {u"6900000000017", u"6900000000024", u"6900000000031"})
      receiveOne(s, code);
    showWaiting(s);
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 3);
    EXPECT_EQ(s.grid("gridWaiting").currentText("j_sn"), "CJ21050310003");  // the newest
    click(s, "btnAdd", "F_Cgjh_Add", [&](ui::Screen& pick) {
      type(pick, "tsl", u"2");
      click(pick, "btnAdd");  // 钛架, bought most
      press(pick, "F5");
    });
    EXPECT_EQ(lines(s, "gridWaitingLines"), "3×1@2.5=2.5 2×2@120=240");
    EXPECT_EQ(s.grid("gridWaiting").currentText("yfje"), "242.5");
    s.grid("gridWaitingLines").selectRow(1);
    click(s, "btnTab2Modi", "F_Cgjh_Sele", filled({{"tsl", u"1"}}));
    edit(s, "gridWaitingLines", 0, "jh_sl", u"4");
    EXPECT_EQ(rows("select j_yfje,j_sfje from jxc_jhd where j_sn='CJ21050310003'"), "130 130");
    s.grid("gridWaitingLines").selectRow(0);
    click(s, "btnDele");
    EXPECT_EQ(s.grid("gridWaiting").currentText("yfje"), "120");
    click(s, "btnDele");  // with the last line goes the head
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 2);

    enter(s, "tkey", u"10001");
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    click(s, "btn_Date", "F_ModiDateJh", filled({{"dateCg", u"2021-4-28"}}));
    EXPECT_EQ(rows("select j_sn,j_jhrq from jxc_jhd where j_sn='CJ21050310001'"), "CJ21050310001 2021-04-28");
    click(s, "btn_Dele", u"您确定要删除“待审核”单据吗！"_qs, Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
    type(s, "tkey", u"");
    press(s, "F2");
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    press(s, "F7", kAuditAll, Answer::Yes);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
    EXPECT_EQ(s.said(), "1 张已审核，0 张没有成功");
  });
  EXPECT_EQ(rows("select log_note from jxc_log where log_note like '%删除%' or log_note like '审核%' order by id"),
            "因删除单据的所有商品而删除采购进货单：CJ21050310003 | 删除采购进货单：CJ21050310001 | "
            "审核采购进货单CJ21050310002，共1种商品");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

// What another station adds to the catalogue meanwhile is not what this document was waiting for.
TEST_F(ReceiptScreenTest, OnlyTheArticleMadeForTheDocumentLandsOnIt) {
  addGoodsClass(1, u"镜架"_qs, prompt);
  open("F_Cgjh", [&](ui::Screen& s) {
    press(s, "F9", "F_Spxxgl_Add", [&](ui::Screen& make) {
      addGoods({.sn = u"10000004"_qs, .name = u"别站新增"_qs, .barcode = u"6900000000048"_qs, .cost = 9});
      press(make, "Esc");
    });
    EXPECT_EQ(lines(s), "");
    press(s, "F9", "F_Spxxgl_Add", [&](ui::Screen& make) {
      expectScreen("F_Spxxgl_Class", [](ui::Screen& classes) {
        auto* tree = classes.findChild<QTreeWidget*>();
        tree->setCurrentItem(tree->findItems(u"镜架"_qs, Qt::MatchExactly | Qt::MatchRecursive).front());
        press(classes, "F5");
      });
      make.field("gc_name").pick();
      type(make, "g_name", u"本站新增");
      press(make, "F5", "F_Cgjh_Sele", filled({{"tgpjjj", u"7"}}));
    });
    EXPECT_EQ(rows("select b.g_name,a.jh_sl,a.jh_dj from jxc_jhsp a,jxc_goods b where a.g_sn=b.g_sn"), "本站新增 1 7");
  });
}

TEST_F(ReceiptScreenTest, RightsGuardEveryCommand) {
  open("F_Cgjh", [&](ui::Screen& s) { receiveOne(s, u"6900000000017"); });
  setRights("200001", "cggl", "100000000000000");
  becomeOperator("小李", "200001", "200001");
  open("F_Cgjh", [&](ui::Screen& s) {
    press(s, "F9", u"您没有权限进行采购进货增加新商品！"_qs);
    showWaiting(s);
    press(s, "F6", u"您没有权限进行采购进货审核！"_qs);
    press(s, "F7", u"您没有权限进行采购进货审核！"_qs);
    click(s, "btn_Dele", u"您没有权限进行删除采购进货待审核单据！"_qs);
    click(s, "btnAdd", u"您没有权限进行采购进货待审核界面添加商品！"_qs);
    click(s, "btn_Date", u"您没有权限进行更改单据日期！"_qs);
  });
  // Who may only audit comes in at the waiting list.
  setRights("200001", "cggl", "000001");
  open("F_Cgjh", [&](ui::Screen& s) {
    EXPECT_EQ(s.findChild<QTabWidget*>()->currentIndex(), 1);
    EXPECT_FALSE(s.command("btnOK").isVisible());
    press(s, "F6", "F_Cgjh_Check", [&](ui::Screen& check) { press(check, "F5"); });
  });
  EXPECT_EQ(rows("select j_status,j_checker from jxc_jhd"), "1 小李");
}

}  // namespace jxc::test::receipt_screen_test
