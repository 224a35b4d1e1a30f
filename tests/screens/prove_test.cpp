// 数据核对 and 预览影响 as an operator meets them.
#include "harness/waiting_document.h"
#include "harness/whole_books.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"

#include <QLabel>
#include <QProgressDialog>
#include <QTimer>

namespace jxc::test {

class ProofScreensTest : public TradingScreenTest {};

TEST_F(ProofScreensTest, TheProofListsTheFirstWrongRowAndWhatMendsIt) {
  open("F_Sjhd", [&](ui::Screen& s) {
    EXPECT_TRUE(s.grid("gridFindings").isEmpty());
    press(s, "F5");
    EXPECT_TRUE(s.grid("gridFindings").isEmpty());
    EXPECT_TRUE(s.findChild<QLabel*>("summary")->text().contains(u"没有发现错误"));
    execSql("update jxc_khxx set kh_lwje=3 where kh_sn='100001'");
    press(s, "F5");
    ASSERT_EQ(s.grid("gridFindings").rowCount(), 1);
    EXPECT_EQ(s.grid("gridFindings").currentText("weight"), "错误");
    EXPECT_TRUE(s.findChild<QLabel*>("detail")->text().contains(u"处理：应收（应付）帐表→重新计算"));

    // A repair stands behind its key; once it has run, what was found before is no longer shown.
    press(s, "F7", "F_Jxctj_Tb", [&](ui::Screen& sync) { press(sync, "Esc"); });
    EXPECT_EQ(s.grid("gridFindings").rowCount(), 1);
    press(s, "F6", "F_Kccx_Js", [&](ui::Screen& recompute) {
      expectQuestion(u"重新计算会修改期末结存及其他数据，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs, Answer::Yes);
      press(recompute, "F5", u"重新计算完成！"_qs);
    });
    EXPECT_TRUE(s.grid("gridFindings").isEmpty());

    // 取消 on the bar stops it, and says so instead of calling the books clean.
    QTimer::singleShot(0, &s, [&s] { s.findChild<QProgressDialog*>("progress")->cancel(); });
    press(s, "F5");
    EXPECT_TRUE(s.findChild<QLabel*>("summary")->text().contains(u"核对已停止"));
  });
}

TEST_F(ProofScreensTest, APreviewIsNarrowedToWhatSurprises) {
  addGoods({.sn = "10000001", .name = QStringLiteral("镜架")});
  addGoods({.sn = "10000002", .name = QStringLiteral("镜盒")});
  const auto waiting = [](const DocumentFamily& family, const QString& date, double frames) {
    return waitingDocument(family, date, {}, {{"10000001", frames, 20}, {"10000002", 1, 20}});
  };
  checkDj(families::purchaseReceipt, waiting(families::purchaseReceipt, u"2021-05-01"_qs, 3), prompt);
  const auto preview = [&](const std::function<void(ui::Screen&)>& seen) {
    open("F_Spxs", [&](ui::Screen& s) {
      showWaiting(s);
      press(s, "F6", "F_Spxs_Check", [&](ui::Screen& check) {
        press(check, "F6", "F_Yltx", seen);
        press(check, "Esc");
      });
    });
  };
  // Two of three are sold, and nothing is to be looked at; five of three leave the stock short.
  waiting(families::sale, u"2021-05-03"_qs, 2);
  preview([](ui::Screen& s) { EXPECT_FALSE(s.field("chkYw").isEnabled()); });
  execSql("update jxc_lsxssp set ls_sl=5 where g_sn='10000001'");
  preview([](ui::Screen& s) {
    ui::Grid& list = s.grid("gridImpacts");
    const int all = list.rowCount();
    check(s, "chkYw", true);
    ASSERT_FALSE(list.isEmpty());
    EXPECT_LT(list.rowCount(), all);
    for (const Row row : list.shownRows())
      EXPECT_TRUE(row.flag("warns") && row.text("place").contains(u"镜架")) << row.text("place").toStdString();
    check(s, "chkYw", false);
    EXPECT_EQ(list.rowCount(), all);
  });
}

TEST_F(ProofScreensTest, TheAuditDialogShowsWhatItWouldChangeAndChangesNothing) {
  addGoods({.sn = "10000001", .name = QStringLiteral("镜架")});
  const QString number = waitingDocument(families::purchaseReceipt, u"2021-05-03"_qs, {}, {{"10000001", 2, 12}});
  open("F_Cgjh", [&](ui::Screen& s) {
    showWaiting(s);
    const Books before = readBooks(Reading::ToTheLetter);
    press(s, "F6", "F_Cgjh_Check", [&](ui::Screen& check) {
      press(check, "F6", "F_Yltx", [&](ui::Screen& preview) {
        EXPECT_TRUE(preview.findChild<QLabel*>("state")->text().contains(number));
        ui::Grid& list = preview.grid("gridImpacts");
        ASSERT_FALSE(list.isEmpty());
        EXPECT_EQ(list.currentText("kind"), QStringLiteral("库存数量"));
        EXPECT_EQ(list.currentText("valueafter"), "2");
        press(preview, "Esc");
      });
      EXPECT_EQ(readBooks(Reading::ToTheLetter), before);
      press(check, "Esc");
    });
    EXPECT_EQ(readBooks(Reading::ToTheLetter), before);
  });
}

}  // namespace jxc::test
