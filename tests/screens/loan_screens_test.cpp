// Loans through their screens: lent by scanner and list, audited, back line by line, kept, and what is still out.
#include "core/data_module.h"
#include "harness/invariants.h"
#include "harness/waiting_document.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/screens/document_screen.h"
#include "ui/enquiry_screen.h"
#include "ui/report/print.h"

#include <QLabel>

namespace jxc::test::loan_screens_test {

constexpr QStringView kFrame = u"6900000000017";
const QString kSaveLoan = saveQuestion("借货单", "待审核借货\r\n\r\n单");
const QString kSure = u"数据保存后不能再修改，是否确认保存！"_qs;

class LoanScreensTest : public TradingScreenTest {
 protected:
  LoanScreensTest() {
    bringTemplates();
    addGoods({.sn = u"10000001"_qs, .name = u"镜架"_qs, .barcode = kFrame.toString(), .cost = 40});
    addGoods({.sn = u"10000002"_qs, .name = u"镜盒"_qs, .barcode = {}, .cost = 2});
    const QString bought =
        waitingDocument(families::purchaseReceipt, u"2021-05-01"_qs, {}, {{"10000001", 10, 40}, {"10000002", 10, 2}});
    EXPECT_EQ(checkDj(families::purchaseReceipt, bought, prompt), AuditOutcome::Audited);
    setClock(u"2021-05-03"_qs);
  }
  static void show(ui::Screen& s, int panel) {
    s.findChild<QTabWidget*>()->setCurrentIndex(panel);
    settle();
  }
  /// After layouts that follow one another have found their places.
  static void shot(ui::Screen& s, const QString& name) {
    settle();
    for (int i = 0; i < 5; ++i)
      settle();
    picture(s, name);
  }
  static QString money(ui::Screen& s) { return s.findChild<QLabel*>(QStringLiteral("lMoney"))->text(); }
};

TEST_F(LoanScreensTest, ALoanOfTwoGoodsComesBackIsKeptAndItsDepositsAreCounted) {
  printOutlet().preview = [](const report::Pages&, QWidget*) {};
  open("F_Khjhgl", [&](ui::Screen& s) {
    expectNotice(u"还没有添加商品信息，不能保存！"_qs);
    press(s, "F5");
    scan(s, kFrame);
    press(s, "F3", "F_Khjhgl_Sele", [&](ui::Screen& line) {
      type(line, "tsl", u"0");
      press(line, "F5", u"数量不能为0或负数，重新输入！"_qs);
      type(line, "tsl", u"2");
      type(line, "tyj", u"1000000000000");
      press(line, "F5", u"押金过大，请检查是否输入了条码！"_qs);
      type(line, "tyj", u"100");
      type(line, "tzj", u"3");
      picture(line, u"khjh-line"_qs);
      press(line, "F5");
    });
    press(s, "F2", "F_Khjhgl_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      pick.grid("gridGoods").selectRow(1);
      press(pick, "F8");
      EXPECT_EQ(pick.grid("gridStaging").currentText("ts_note"), u"现金");
      press(pick, "F3", "F_Khjhgl_Sele", [&](ui::Screen& line) {
        type(line, "tyj", u"10");
        press(line, "F5");
      });
      EXPECT_EQ(pick.grid("gridStaging").currentNumber("deposit"), 10);
      picture(pick, u"khjh-add"_qs);
      press(pick, "F5");
    });
    EXPECT_TRUE(s.field("comCk").isReadOnly());
    picture(s, u"khjh-draft"_qs);
    save(s, kSaveLoan);
    show(s, 1);
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    EXPECT_EQ(textsOf(s.grid("gridWaitingLines").rows(), {"g_sn", "jh_sl", "jh_zj", "jh_yj", "jh_kmmc"}).join(u' '),
              "10000001 2 3 100 现金 10000002 1 0 10 现金");
    shot(s, u"khjh-waiting"_qs);
    press(s, "F6", u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs, Answer::Yes);

    // Two days later one of the frames comes back, and the case as well.
    setClock(u"2021-05-05"_qs);
    show(s, 2);
    auto& list = dynamic_cast<ui::EnquiryScreen&>(*static_cast<DocumentScreen&>(s).audited());
    list.grid("gridDj").waitLoaded();
    EXPECT_EQ(list.grid("gridDj").currentText("djh"), number);
    EXPECT_EQ(list.grid("gridDj").currentNumber("yj"), 110);
    press(list, "F12", u"商品还货操作只能在“明细表”进行。"_qs);
    press(list, "F9", "F_Khjhgl_Hh", [&](ui::Screen& back) {
      EXPECT_EQ(back.grid("gridLines").rowCount(), 2);
      EXPECT_TRUE(money(back).contains(u"租金合计 18.00　退回押金 92.00"_qs)) << money(back).toStdString();
      // What was taken off the return comes onto it again by its code, or with all that is out.
      const QString sure = u"您确认要删除选中的信息吗？"_qs;
      press(back, "Ctrl+D", sure, Answer::Yes);
      press(back, "Ctrl+D", sure, Answer::Yes);
      EXPECT_TRUE(back.grid("gridLines").isEmpty());
      back.field("tSptm").focus();
      expectNotice(u"该借货单中没有此条码的未还商品，请检查！"_qs);
      scan(back, u"6900000000024");
      for (const char* said : {"", "未还的商品已在本次还货中"}) {
        scan(back, kFrame);
        EXPECT_EQ(back.grid("gridLines").rowCount(), 1);
        EXPECT_EQ(back.said(), said);
      }
      press(back, "F2");
      EXPECT_EQ(back.grid("gridLines").rowCount(), 2);
      EXPECT_TRUE(money(back).contains(u"租金合计 18.00　退回押金 92.00"_qs)) << money(back).toStdString();
      back.grid("gridLines").selectRow(0);
      press(back, "F3", "F_Khjhgl_Hh_Sele", [&](ui::Screen& line) {
        EXPECT_EQ(line.field("tts").number(), 3);
        type(line, "tsl", u"3");
        press(line, "F5", u"还货数量不能超过：2"_qs);
        type(line, "tsl", u"1");
        EXPECT_EQ(line.field("tzzj").number(), 9);
        EXPECT_EQ(line.field("tthyj").number(), 91);
        type(line, "tzzj", u"150");
        EXPECT_TRUE(money(line).contains(u"还须向客户收取租金 50.00"_qs)) << money(line).toStdString();
        type(line, "tsl", u"2");
        type(line, "tthyj", u"20");
        EXPECT_TRUE(money(line).contains(u"商品已还清，仍在押 62.00"_qs)) << money(line).toStdString();
        shot(line, u"khjh-back-stays"_qs);
        type(line, "tsl", u"1");
        type(line, "tthyj", u"41");
        picture(line, u"khjh-back-line"_qs);
        press(line, "F5");
      });
      picture(back, u"khjh-back"_qs);
      press(back, "F5", kSure, Answer::Yes);
    });
    list.grid("gridDj").waitLoaded();
    EXPECT_EQ(rows("select jh_hhsl,jh_yj2 from jxc_khjhsp where gl_djh=? order by id", number), "1 9 | 1 0");

    // What is out, and the deposits by account.
    check(list, "rZj", true);
    list.grid("gridZj").waitLoaded();
    EXPECT_EQ(textsOf(list.grid("gridZj").rows(), {"g_sn", "opensl", "jcts", "ysje", "heldyj"}).join(u' '),
              "10000001 1 3 9 50");
    shot(list, u"khjh-open"_qs);
    check(list, "rYj", true);
    list.grid("gridYj").waitLoaded();
    EXPECT_EQ(textsOf(list.grid("gridYj").rows(), {"jh_kmmc", "num", "heldyj", "hqyj"}).join(u' '), "现金 1 50 0");
    shot(list, u"khjh-deposits"_qs);
    check(list, "rZj", true);
    list.grid("gridZj").waitLoaded();
    press(list, "F12", "F_Khjhgl_Xs", [&](ui::Screen& kept) {
      EXPECT_EQ(kept.field("tdj").number(), 20);
      type(kept, "tdj", u"55");
      EXPECT_EQ(kept.field("tsfje").number(), 55);
      check(kept, "chkZj", false);
      EXPECT_EQ(kept.field("tyj").number(), 9);
      EXPECT_EQ(kept.field("tthyj").number(), 41);
      picture(kept, u"khjh-kept"_qs);
      press(kept, "F5", kSure, Answer::Yes);
    });
    list.grid("gridZj").waitLoaded();
    EXPECT_TRUE(list.grid("gridZj").isEmpty());
    EXPECT_EQ(rows("select ls_sl,ls_dj from jxc_lsxssp"), "1 55");
    EXPECT_EQ(rows("select jh_hhsl,jh_xssl from jxc_khjhsp where gl_djh=? order by id", number), "1 1 | 1 0");

    check(list, "rMxb", true);
    list.grid("gridMx").waitLoaded();
    EXPECT_EQ(list.grid("gridMx").rowCount(), 5);
    shot(list, u"khjh-lines"_qs);
    press(list, "F6", u"取消审核操作只能在“单据表”进行。"_qs);
    check(list, "rDjb", true);
    list.grid("gridDj").waitLoaded();
    shot(list, u"khjh-list"_qs);
    press(list, "Esc");
  });
  EXPECT_EQ(brokenInvariants(), QStringList());
}

}  // namespace jxc::test::loan_screens_test
