// 数据结算 as an operator meets it: the list before the question, the sheet behind it, and the archive that only reads.
#include "core/archive_look.h"
#include "engine/error.h"
#include "harness/report_samples.h"
#include "harness/row_texts.h"
#include "harness/waiting_document.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "ui/grid_paper.h"

#include <QLabel>

namespace jxc::test {

class ClosingScreenTest : public TradingScreenTest {};

TEST_F(ClosingScreenTest, TellsWhatGoesBeforeItAsksAndShowsTheArchiveForReadingOnly) {
  addGoods({.sn = "10000001", .name = QStringLiteral("镜架")});
  checkDj(families::purchaseReceipt,
          waitingDocument(families::purchaseReceipt, u"2021-04-01"_qs, {}, {{"10000001", 3, 20}}), prompt);
  const QString archive = file(u"backup/晴川进销存(数据结算)21_05_03_14_30_00.DAT"_qs);
  const QString main =
      u"数据结算前将备份数据库。\r\n\r\n结算日期【2021-04-30】及之前的所有数据将被删除。\r\n\r\n您确定要进行数据结算吗！"_qs;
  open("F_Nzjs", [&](ui::Screen& s) {
    EXPECT_EQ(s.findChild<QLabel*>("warning")->text(), u"将删除： 2021-04-30 及该日期之前的全部数据！"_qs);
    type(s, "dateCg", u"2021-05-04");
    press(s, "F3", u"结算日期不能在今天以后！"_qs);
    type(s, "dateCg", u"2021-04-30");
    press(s, "F5", main, Answer::No);
    // Another station posts behind the list.
    checkDj(families::purchaseReceipt,
            waitingDocument(families::purchaseReceipt, u"2021-04-02"_qs, {}, {{"10000001", 1, 20}}), prompt);
    const QString changed =
        u"列出结算内容以后，数据又有了变化：\r\n\r\n采购进货单（删除）：1 张，数量 3，金额 60.00 → 2 张，数量 4，金额 "
        u"80.00\r\n"
        "未结清的采购进货单（删除，余额结转）：1 张，数量 0，金额 60.00 → 2 张，数量 0，金额 80.00\r\n\r\n"
        "要按现在的内容继续吗？"_qs;
    press(s, "F5", changed, Answer::No);
    EXPECT_EQ(s.grid("gridGoing").current()->integer("ds"), 2);
    press(s, "F5", main, Answer::No);
    EXPECT_EQ(s.grid("gridGoing").currentText("xm"), u"采购进货单"_qs) << "it stays for printing";
    EXPECT_EQ(lookupNumber("select count(*) from jxc_jhd"), 2);
    expectQuestion(main, Answer::Yes);
    expectNotice(u"备份成功！备份文件保存在："_qs + archive);
    press(s, "F5", u"结算完成！"_qs);
    EXPECT_EQ(lookupNumber("select count(*) from jxc_jhd"), 0);
    ui::Grid& sheet = s.grid("gridSheet");
    EXPECT_EQ(sheet.sum("sl2"), 4);
    EXPECT_EQ(textsOf(sheet.rows(), {"lb", "bh", "mc", "ss", "sl1", "je1", "je2"}).first(2),
              QStringList({u"库存 10000001 镜架 主仓库 4 80 80"_qs, u"往来 100001 普通供货商 供货商 0 80 80"_qs}));
    picture(s, u"closed"_qs);
    const QString paper = file(u"对照表.pdf"_qs);
    ui::gridReport(sheet).prepare().writePdf(paper);
    for (const QString& word : {u"结算前后对照表"_qs, u"10000001"_qs, u"普通供货商"_qs})
      EXPECT_TRUE(textOfPdf(paper).contains(word)) << textOfPdf(paper).toStdString();
    EXPECT_EQ(s.grid("gridNj").currentText("nj_xm"), u"采购进货单"_qs);

    press(s, "F6", "F_Nzjs_Archive", [&](ui::Screen& window) {
      EXPECT_EQ(window.windowTitle(), u"结算档案（只读）：结算日期 2021-04-30"_qs);
      EXPECT_EQ(lookupNumber("select count(*) from jxc_jhd"), 2);
      EXPECT_THROW(execSql("delete from jxc_jhd"), DbError);
      ui::Grid& list = window.grid("gridCommands");
      ASSERT_TRUE(list.selectWhere("screen", u"F_Cgjh"_qs));
      press(window, "F5", QString::fromUtf16(archiveReason));
      ASSERT_TRUE(list.selectWhere("screen", u"F_WlzwGhs"_qs));
      press(window, "F5", "F_WlzwGhs", [&](ui::Screen& account) {
        EXPECT_TRUE(account.command("btn_ChaKan").isEnabled()) << "the document behind a row may be seen";
        EXPECT_FALSE(account.command("btn_Fukuan").isEnabled());
      });
      ASSERT_TRUE(list.selectWhere("screen", u"F_ViewLog"_qs));
      press(window, "F5", "F_ViewLog", [&](ui::Screen& log) {
        EXPECT_TRUE(log.windowTitle().endsWith(u"（结算档案，只读）"));
        EXPECT_FALSE(log.command("btn_Dele").isEnabled());
        EXPECT_EQ(log.command("btn_Dele").toolTip(), QString::fromUtf16(archiveReason));
        EXPECT_TRUE(log.command("btn_Export").isEnabled());
      });
    });
    EXPECT_EQ(lookupNumber("select count(*) from jxc_jhd"), 0) << "the shop is back";
    EXPECT_FALSE(isArchiveInUse());
    // Tables of another program are not what the enquiries of this one ask for.
    const auto refused = [&](const char* stamp, const QString& why) {
      openSqlite(archive)->execute(std::string("update jxc_xtcs set cs_employdate='") + stamp + "'");
      press(s, "F6", why + archive);
    };
    refused("2021-07-15", u"该档案是用旧版本的软件做的，请先把它恢复为一个帐套再查看："_qs);
    refused("2999-01-01", u"该档案来自更新版本的程序（2999-01-01），请先更新本程序再查看："_qs);
  });
  open("F_ViewLog", [&](ui::Screen& log) {
    EXPECT_TRUE(log.command("btn_Dele").isEnabled());
    EXPECT_EQ(log.windowTitle(), u"查看日志"_qs);
  });
}

}  // namespace jxc::test
