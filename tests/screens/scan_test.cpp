// The scanner at the document screens: no code is lost, whatever stands on top and wherever the focus is.
#include "screens/harness/trading_test.h"

#include <QAction>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QThread>
#include <QTimer>

namespace jxc::test::scan_test {

constexpr QStringView kFrame = u"6900000000017";
constexpr QStringView kCloth = u"6900000000031";
constexpr QStringView kUnknown = u"6999999999999";

const QString kNobodyKnows =
    u"没有找到与该条码匹配的商品，请检查！\r\n\r\n条码：6999999999999\r\n\r\n按“新商品添加(F9)”，可以用这个条码增加新商品。"_qs;

class ScanScreenTest : public TradingScreenTest {
 protected:
  ScanScreenTest() {
    addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = kFrame.toString(), .cost = 40, .stock = -1});
    addGoods({.sn = u"10000003"_qs, .name = u"镜布"_qs, .barcode = kCloth.toString(), .cost = 2, .stock = 9});
  }
  static QString lines(ui::Screen& s, std::string_view quantity = "jh_sl") {
    QStringList texts;
    for (const Row row : s.grid("gridLines").rows())
      texts << row.text("g_sn").right(1) + u'×' + row.text(quantity);
    return texts.join(u' ');
  }
  static QString sold(ui::Screen& s) { return lines(s, "ls_sl"); }
  /// What happens while the next box stands on top.
  static void onNextBox(std::function<void(QMessageBox&)> then) {
    QTimer::singleShot(0, qApp, [then] {
      for (auto* window : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(window); box && box->isVisible()) return then(*box);
      onNextBox(then);
    });
  }
  /// The keys of a scanner while a box stands on top: it leaves them to the window below.
  static void scanBehind(ui::Screen& s, QStringView code) {
    typeIn(*s.focusWidget(), code);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_qs);
    QApplication::sendEvent(s.focusWidget(), &enter);
  }
  static bool waitFor(const std::function<bool()>& done) {
    for (int i = 0; i < 200 && !done(); ++i) {
      QApplication::processEvents(QEventLoop::AllEvents, 10);
      QThread::msleep(2);
    }
    return done();
  }
};

// A code that nobody knows is refused and never stays in the input where the operator was typing.
TEST_F(ScanScreenTest, CodesAreTakenOutOfOtherInputs) {
  open("F_Cgjh", [&](ui::Screen& s) {
    type(s, "tnote", u"急");
    scan(s, kFrame);
    EXPECT_EQ(lines(s), "1×1");
    s.field("tnote").focus();
    expectNotice(kNobodyKnows);
    scan(s, kUnknown);
    EXPECT_EQ(s.field("tnote").text(), u"急");
    EXPECT_TRUE(s.field("tSptm").hasFocus());
    // A short number in a hurry is a number, unless some goods has it for its code.
    s.field("tnote").focus();
    typeIn(*s.focusWidget(), u"123456");
    press(s, "Return");
    EXPECT_EQ(s.field("tnote").text(), u"123456");

    // Hidden, the input still takes its codes.
    s.findChild<QAction*>("btnPanelHide")->setChecked(true);
    EXPECT_FALSE(s.field("tSptm").isVisible());
    scan(s, kCloth);
    EXPECT_EQ(lines(s), "1×1 3×1");
    s.findChild<QAction*>("btnPanelHide")->setChecked(false);
    EXPECT_TRUE(s.field("tSptm").hasFocus());
    leaveDraft(s);
  });
}

// The next code comes while the refusal of the last one is still on the screen: the notice gives way, both are entered.
TEST_F(ScanScreenTest, ANoticeGivesWayToTheNextCode) {
  open("F_Cgjh", [&](ui::Screen& s) {
    QString notice;
    onNextBox([&](QMessageBox& box) {
      notice = box.text();
      scanBehind(s, kFrame);
      scanBehind(s, kCloth);
    });
    expectNotice(kNobodyKnows);
    scan(s, kUnknown);
    EXPECT_TRUE(waitFor([&] { return lines(s) == "1×1 3×1"; })) << lines(s).toStdString();
    EXPECT_TRUE(notice.startsWith(u"没有找到"));
    leaveDraft(s);
  });
}

// The notice goes in the middle of the next code: its first keys came to the box, the rest to the input.
TEST_F(ScanScreenTest, ACodeThatBeganInTheBoxEndsInTheInput) {
  open("F_Cgjh", [&](ui::Screen& s) {
    onNextBox([&](QMessageBox&) { typeIn(*s.focusWidget(), kFrame.left(7)); });
    expectNotice(kNobodyKnows);
    scan(s, kUnknown);
    scan(s, kFrame.mid(7));
    EXPECT_EQ(lines(s), "1×1");
    EXPECT_EQ(s.field("tSptm").text(), "");
    leaveDraft(s);
  });
}

// A question is answered by a hand: the Enter of the next code is no yes, and a Y in it neither.
TEST_F(ScanScreenTest, AQuestionIsNotAnsweredByTheNextCode) {
  open("F_Spxs", [&](ui::Screen& s) {
    s.field("tSptm").focus();
    bool stayed = false;
    onNextBox([&](QMessageBox& box) {
      EXPECT_FALSE(box.isModal());
      scanBehind(s, kCloth);
      scanBehind(s, u"Y12345678");
      stayed = box.isVisible();
    });
    expectQuestion(QString::fromUtf8(kSaleGoesShort), Answer::No);
    expectNotice(
        u"当前仓库中没有找到与该条码匹配的商品，请检查！\r\n\r\n条码：Y12345678\r\n\r\n按“新商品添加(F9)”，可以用这个条码增加新商品。"_qs);
    scan(s, kFrame);
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(waitFor([&] { return expectationsLeft() == 0 && sold(s) == "3×1"; })) << sold(s).toStdString();
    leaveDraft(s);
  });
}

// With the line dialog opening behind each code, the next code waits until the dialog is done.
TEST_F(ScanScreenTest, TheLineDialogKeepsItsInputs) {
  open("F_Cgjh", [&](ui::Screen& s) {
    s.findChild<QAction*>("btnPanelModi")->setChecked(true);
    s.field("tSptm").focus();
    expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) {
      line.field("tsl").focus();
      scan(line, kCloth);
      EXPECT_EQ(line.field("tsl").number(), 1);
      EXPECT_TRUE(line.isVisible());
      type(line, "tsl", u"4");
      press(line, "F5");
    });
    expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) { press(line, "F5"); });
    scan(s, kFrame);
    EXPECT_TRUE(waitFor([&] { return expectationsLeft() == 0 && lines(s) == "1×4 3×1"; })) << lines(s).toStdString();
    s.findChild<QAction*>("btnPanelModi")->setChecked(false);
    leaveDraft(s);
  });
}

// The code that nobody knows is that of the new article; one that was entered since is none.
TEST_F(ScanScreenTest, AnUnknownCodeIsOfferedToTheNewArticle) {
  open("F_Cgjh", [&](ui::Screen& s) {
    const auto codeOffered = [&](QStringView code) {
      press(s, "F9", "F_Spxxgl_Add", [code](ui::Screen& add) {
        EXPECT_EQ(add.field("g_sptm").text(), code);
        press(add, "Esc");
      });
    };
    s.field("tnote").focus();
    expectNotice(kNobodyKnows);
    scan(s, kUnknown);
    codeOffered(kUnknown);
    codeOffered({});
    expectNotice(kNobodyKnows);
    scan(s, kUnknown);
    scan(s, kFrame);
    codeOffered({});
    leaveDraft(s);
  });
}

// What a hand types looks for goods; half a word of an input method is no code.
TEST_F(ScanScreenTest, TheBarcodeInputFindsGoodsByWhatIsTyped) {
  open("F_Spxs", [&](ui::Screen& s) {
    auto* drop = s.findChild<QWidget*>("searchDrop");
    const auto typeHere = [&](QStringView text) {
      s.field("tSptm").focus();
      typeIn(*s.focusWidget(), text);
    };
    typeHere(u"镜布");
    press(s, "Return");  // the only one
    EXPECT_EQ(sold(s), "3×1");
    EXPECT_TRUE(s.field("tSptm").isEmpty());
    typeHere(u"000");
    EXPECT_TRUE(waitFor([&] { return drop->isVisible(); }));
    press(s, "Esc");
    EXPECT_FALSE(drop->isVisible());
    EXPECT_TRUE(s.isVisible());
    press(s, "Return");  // several: they drop down again, and Enter takes the one that stands out
    EXPECT_TRUE(drop->isVisible());
    picture(s, u"F_Spxs_found"_qs);
    press(s, "Down");
    press(s, "Return");
    EXPECT_EQ(sold(s), "3×2");
    EXPECT_FALSE(drop->isVisible());

    s.field("tnote").focus();
    QInputMethodEvent half(u"ni"_qs, {});
    QApplication::sendEvent(s.focusWidget(), &half);
    scan(s, kCloth);
    EXPECT_EQ(sold(s), "3×2");
    QInputMethodEvent whole;
    QApplication::sendEvent(s.focusWidget(), &whole);
    scan(s, kCloth);
    EXPECT_EQ(sold(s), "3×3");
    leaveDraft(s);
  });
}

TEST_F(ScanScreenTest, ACustomerGivesBackWhatHeBought) {
  setParameter("cs_xt", 1);
  open("F_Xsth", [&](ui::Screen& s) {
    expectNotice(u"该客户没有买过这种商品，不能退货！\r\n\r\n条码：6900000000031\r\n\r\n商品：镜布"_qs);
    scan(s, kCloth);
  });
  setParameter("cs_xt", 0);
  open("F_Xsth", [&](ui::Screen& s) {
    s.field("tnote").focus();
    scan(s, kCloth);
    EXPECT_EQ(lines(s, "th_sl"), "3×1");
    leaveDraft(s);
  });
}

}  // namespace jxc::test::scan_test
