// Returns through their screens: a sale and a receipt returned as a whole.
#include "harness/invariants.h"
#include "harness/waiting_document.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/posting.h"
#include "ui/enquiry_screen.h"

namespace jxc::test::return_screen_test {

class ReturnScreenTest : public TradingScreenTest {
 protected:
  ReturnScreenTest() {
    setParameter("cs_shdj", 1);  // saved is audited
    for (const QStringView sn : {u"A", u"B"})
      addGoods({.sn = sn.toString(), .name = sn.toString(), .barcode = sn.toString(), .cost = 40, .price = 100});
    received = write(families::purchaseReceipt, 5, 40, 400);
    sold = write(families::sale, 2, 100, 400);
    EXPECT_EQ(brokenInvariants(), QStringList());
  }
  /// Both goods, this many of each at so many yuan, audited.
  QString write(const DocumentFamily& family, double quantity, double price, double paid) {
    const QString number = waitingDocument(family, u"2021-05-03"_qs,
                                           {{family.paid, paid}, {&family == &families::sale ? "ls_th" : "j_th", 0}},
                                           {{u"A"_qs, quantity, price}, {u"B"_qs, quantity, price}});
    EXPECT_EQ(checkDj(family, number, prompt), AuditOutcome::Audited);
    return number;
  }
  static double stockOf(const QString& goods) {
    return lookupNumber("select kc_zsl from jxc_kcsp where g_sn=?", goods);
  }
  QString received, sold;
};

TEST_F(ReturnScreenTest, ASaleComesBackWholeAndThenOnePiece) {
  EXPECT_EQ(stockOf("A"), 3);
  open("F_Xsth", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comJsfs").text(), "余款记入应收帐款");
    press(s, "F7", "F_Xsth_Search", [&](ui::Screen& list) {
      ASSERT_EQ(list.grid("gridSales").rowCount(), 1);
      press(list, "F5");
    });
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    EXPECT_TRUE(s.field("tkh").isReadOnly());
    EXPECT_EQ(s.field("tyfje").number(), 400);
    EXPECT_EQ(s.field("tssje").number(), 400);
    press(s, "F7", QStringLiteral("请先保存本次的退货单据！"));
    save(s, kSaveSaleAudited);
    EXPECT_FALSE(s.field("tkh").isReadOnly());

    press(s, "F2", "F_Xsth_Add", [&](ui::Screen& pick) {
      type(pick, "tkey", u"B");
      press(pick, "Return", "F_Xsth_Sele", [&](ui::Screen& line) {
        EXPECT_EQ(line.grid("gridHistory").rowCount(), 1);
        type(line, "tsl", u"0");
        press(line, "F5", QStringLiteral("数量不能为0！"));
        type(line, "tsl", u"1");
        press(line, "F5");
      });
      press(pick, "F5");
    });
    type(s, "tssje", u"0");
    save(s, kSaveSaleAudited);
  });
  EXPECT_EQ(stockOf("A"), 5);
  EXPECT_EQ(stockOf("B"), 6);
  EXPECT_EQ(lookupValue("select ls_th from jxc_lsxsd"), "1");
  EXPECT_EQ(lookupNumber("select sum(th_yfje) from jxc_xsthd"), -500);
  EXPECT_EQ(lookupNumber("select k_ljje from jxc_ysyfk where k_djlx='XT' order by id desc"), -100);
  EXPECT_EQ(brokenInvariants(), QStringList());
}

// The power goes while a whole sale stands on the return: it comes back as that, and the sale counts as returned when
// the return is saved, not before. A draft that was dropped leaves no trace on it.
TEST_F(ReturnScreenTest, AWholeReturnSurvivesACrash) {
  const auto takeWhole = [&](ui::Screen& s) {
    press(s, "F7", "F_Xsth_Search", [](ui::Screen& list) { press(list, "F5"); });
  };
  open("F_Xsth", [&](ui::Screen& s) {
    takeWhole(s);
    leaveDraft(s);
  });
  EXPECT_EQ(lookupValue("select ls_fdmc from jxc_lsxsd"), "");
  open("F_Xsth", takeWhole);  // closed without a question: as a power cut leaves it
  ui::dropScreens();
  EXPECT_EQ(lookupValue("select ls_th from jxc_lsxsd"), "0");
  open("F_Xsth", [&](ui::Screen& s) {
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    EXPECT_TRUE(s.field("tkh").isReadOnly());
    EXPECT_EQ(s.field("tssje").number(), 400);
    save(s, kSaveSaleAudited);
    EXPECT_FALSE(s.field("tkh").isReadOnly());
  });
  EXPECT_EQ(lookupValue("select ls_th from jxc_lsxsd"), "1");
  EXPECT_EQ(lookupValue("select ls_fdmc from jxc_lsxsd"), lookupValue("select gl_djh from jxc_xsthd"));
}

TEST_F(ReturnScreenTest, AReceiptGoesBackWholeThoughSomeOfItIsSold) {
  open("F_Cgth", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comJsfs").text(), "余款记入应付帐款");
    press(s, "F7", "F_Cgth_Zdth_Search", [&](ui::Screen& list) { press(list, "F5"); });
    EXPECT_EQ(s.field("tyfje").number(), 400);
    edit(s, "gridLines", 0, "th_sl", u"3");
    EXPECT_EQ(s.field("tsfje").number(), 320);
    press(s, "F5", u"该单据中至少一种商品库存不足，\r\n\r\n“B”：退货将会出现负库存，是否继续？"_qs, Answer::No);
    setParameter("cs_kc", 0);
    s.grid("gridLines").selectRow(0);
    press(s, "F5", u"该单据中至少一种商品库存不足，\r\n\r\n“B”：不能退货！"_qs);
    EXPECT_EQ(s.grid("gridLines").currentText("g_sn"), "B") << "the line at fault";
    EXPECT_TRUE(s.grid("gridLines").rowsHaveFocus());
    setParameter("cs_kc", 1);
    edit(s, "gridLines", 1, "th_sl", u"3");
    EXPECT_EQ(s.field("tsfje").number(), 240);
    save(s, kSaveReceiptAudited);
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
    showWaiting(s);
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });
  EXPECT_EQ(stockOf("A"), 0);
  EXPECT_EQ(stockOf("B"), 0);
  EXPECT_EQ(lookupNumber("select th_sfje from jxc_thd"), -240);
  EXPECT_EQ(lookupValue("select j_th from jxc_jhd"), "1");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

TEST_F(ReturnScreenTest, TheListsOfBothSidesPayAndGiveBackWhole) {
  const QString unpaid = write(families::purchaseReceipt, 1, 40, 30);
  const auto stand = [](ui::Grid& list, const QString& number) {
    list.waitLoaded();
    const auto rows = list.shownRows();
    for (std::size_t row = 0; row < rows.size(); ++row)
      if (rows[row].text("djh") == number) return list.selectRow(static_cast<int>(row));
    ADD_FAILURE() << number.toStdString() << " is not listed";
  };
  // Who registers payments pays what is open, also when the list withholds what goods cost.
  setRights(u"300001"_qs, "cggl", u"0001"_qs);
  setRights(u"300001"_qs, "wlzk", u"00001"_qs);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"300001"_qs);
  open("F_Jthcx", [&](ui::Screen& s) {
    stand(s.grid("gridDj"), unpaid);
    EXPECT_FALSE(s.command("btn_Zdth").isVisible());
    press(s, "F12", "F_Yfkgl_Fk", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tje").number(), 50);
      press(form, "Esc");
    });
  });
  becomeOperator(u"admin"_qs, u"100001"_qs, u"100001"_qs);
  open("F_Jthcx", [&](ui::Screen& s) {
    ui::Grid& list = s.grid("gridDj");
    EXPECT_EQ(list.sum("yfje"), 480);
    check(s, "chkQk", true);
    list.waitLoaded();
    ASSERT_EQ(list.rowCount(), 1);
    EXPECT_EQ(list.currentNumber("wfje"), 50);
    press(s, "F12", "F_Yfkgl_Fk", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tje").number(), 50);
      press(form, "F5");
    });
    list.waitLoaded();
    EXPECT_TRUE(list.isEmpty());
    check(s, "chkQk", false);
    stand(list, unpaid);
    press(s, "F12", QStringLiteral("该单据不欠款，不需要付款！"));

    press(s, "F9", "F_Cgth", [&](ui::Screen& back) {
      EXPECT_EQ(back.grid("gridLines").rowCount(), 2);
      EXPECT_TRUE(back.field("tghs").isReadOnly());
      EXPECT_FALSE(back.findChild<QWidget*>("lHint")->isVisible());
      save(back, kSaveReceiptAudited);
      press(back, "Esc");
    });
    stand(list, unpaid);
    EXPECT_EQ(list.currentNumber("j_th"), 1);
    press(s, "F9", QStringLiteral("该单据已经进行过整单退货，不能重复退货！"));
    const QString back = lookupValue("select gl_djh from jxc_thd");
    stand(list, back);
    EXPECT_EQ(list.currentNumber("yfje"), -80);
    press(s, "F9", u"单据"_qs + back + u"不能退货，只有“CJ”开头的单据才能退货！"_qs);
  });
  open("F_Xsdjcx", [&](ui::Screen& s) {
    stand(s.grid("gridDj"), sold);
    press(s, "F9", "F_Xsth", [&](ui::Screen& back) {
      EXPECT_EQ(back.grid("gridLines").rowCount(), 2);
      press(back, "Esc", kUnsaved, Answer::Cancel);
      leaveDraft(back);
    });
    static_cast<ui::EnquiryScreen&>(s).showView("gridRq");
    s.grid("gridRq").waitLoaded();
    EXPECT_EQ(s.grid("gridRq").sum("zje"), 400);
    static_cast<ui::EnquiryScreen&>(s).follow();
    s.grid("gridDj").waitLoaded();
    EXPECT_EQ(s.grid("gridDj").currentText("djh"), sold);
  });
  EXPECT_EQ(rows("select ls_th,ls_fdmc from jxc_lsxsd"), "0 ");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

}  // namespace jxc::test::return_screen_test
