// 单据查询 through its window: one document of each of the twelve kinds is found, looked at, previewed and cancelled;
// who sees what; numbers that are scanned.
#include "stock/document_list.h"

#include "harness/invariants.h"
#include "harness/waiting_document.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/posting.h"

namespace jxc::test::document_list_test {

using namespace families;  // NOLINT(google-build-using-namespace): inside this file's own namespace

/// Ten frames "A" at 5 yuan in the main shop, and one audited document of each kind, a day each from 1 to 12 May.
class DocumentListTest : public TradingScreenTest {
 protected:
  DocumentListTest() {
    setClock(QStringLiteral("2021-05-20 10:00:00"));
    bringTemplates();
    addGoods({.sn = u"A"_qs, .name = u"镜架"_qs, .barcode = u"690"_qs, .cost = 5});
    addGoods({.sn = u"B"_qs, .name = u"镜盒"_qs, .barcode = u"691"_qs, .cost = 1});
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    printOutlet().preview = [this](const report::Pages& pages, QWidget*) { seen_ += !pages.find(u"镜"_qs).empty(); };
  }

  /// All twelve, the goods that came back among them posted at once.
  void makeAll() {
    const std::vector<Field> cash{{"ls_jsfs", 0}, {"ls_sfje", 24.0}}, back{{"th_jsfs", 0}, {"th_sfje", -12.0}};
    make(purchaseReceipt, {{"j_sfje", 20.0}, {"j_note", u"首批"}, {"j_sn2", u"GH-7"}}, {"A", 10, 5});
    make(purchaseReturn, {}, {"A", 1, 5});
    make(sale, cash, {"A", 2, 12, {{"t_zp", u"(赠品)"}}});
    make(saleReturn, back, {"A", 1, 12});
    make(transfer, {{"ck_in", u"100002"}}, {"A", 2, 5});
    make(loss, {{"bs_note", u"破损"}}, {"A", 1, 5});
    make(overflow, {}, {"B", 3, 1});
    make(split, {{"g_sn", u"A"}, {"cf_sl", 1.0}, {"cf_cbj", 5.0}}, {"B", 5, 1});
    make(bundle, {{"g_sn", u"A"}, {"kb_sl", 1.0}, {"kb_cbj", 5.0}}, {"B", 5, 1});
    make(loan, {}, {"A", 2, 5});
    const auto lent = lookupValue("select id from jxc_khjhsp").toLongLong();
    all_.push_back(returnLoan(u"2021-05-11"_qs, lent, 1, 0, 5));
    make(stocktake, {}, {"A", 3, 5});
    ASSERT_EQ(brokenInvariants(), QStringList());
  }
  /// One document with one line, audited, of the day that follows the last one.
  void make(const DocumentFamily& family, const std::vector<Field>& head, const Pieces& line) {
    const QString day = u"2021-05-%1"_qs.arg(all_.size() + 1, 2, 10, QChar(u'0'));
    all_.push_back(waitingDocument(family, day, head, {line}));
    EXPECT_EQ(checkDj(family, all_.back(), prompt), AuditOutcome::Audited) << all_.back().toStdString();
  }
  /// "number kind state amount open" of the rows in sight.
  static QStringList listed(ui::Grid& list, std::initializer_list<std::string_view> columns) {
    list.waitLoaded();
    return textsOf(list.shownRows(), columns);
  }

  std::vector<QString> all_;
  int seen_ = 0;
};

TEST_F(DocumentListTest, EachOfTheTwelveKindsIsFoundAndCancelledInTheWindow) {
  makeAll();
  open("F_Djcx", [&](ui::Screen& s) {
    ui::Grid& list = s.grid("gridDj");
    // The latest first; amounts as their heads keep them, or what the lines are worth.
    EXPECT_EQ(
        listed(list, {"gtype", "zt", "rq", "zje", "wfje"}),
        QStringList({"库存盘点 已审核 2021-05-12 -5 ", "客户还货 已审核 2021-05-11 5 ",
                     "客户借货 已审核 2021-05-10 10 ", "商品捆绑 已审核 2021-05-09 5 ", "商品拆分 已审核 2021-05-08 5 ",
                     "商品报溢 已审核 2021-05-07 3 ", "商品报损 已审核 2021-05-06 5 ", "库存调拨 已审核 2021-05-05 10 ",
                     "顾客退货 已审核 2021-05-04 -12 0", "商品销售 已审核 2021-05-03 24 0",
                     "采购退货 已审核 2021-05-02 -5 -5", "采购进货 已审核 2021-05-01 50 30"}));
    EXPECT_LE(s.minimumSizeHint().width(), 1264);  // also with the sums of twelve kinds below
    int asked = 0, printed = 0;
    printOutlet().printAsking = [&](const report::Pages&, QWidget*) { ++asked; };
    printOutlet().print = [&](const report::Pages&) { ++printed; };
    press(s, "Ctrl+P");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
      click(s, "btn_Lxdy", u"将依次打印列表中的 12 张单据，确认吗？"_qs, answer);
      EXPECT_EQ(printed, answer == Answer::Yes ? 12 : 0);
    }
    EXPECT_EQ(asked, 1);
    for (auto number = all_.rbegin(); number != all_.rend(); ++number) {
      SCOPED_TRACE(number->toStdString());
      choose(s, "comLx", kindWord(*findFamily(QStringView(*number))));
      ASSERT_EQ(listed(list, {"djh"}), QStringList(*number));
      const Row document = *list.current();
      ui::Grid& lines = s.grid("gridDjMx");
      lines.waitLoaded();
      ASSERT_EQ(lines.rowCount(), 1);
      EXPECT_NEAR(lines.rows()[0].number("gl_zje"), document.number("zje"), 1e-9);
      list.focusRows();
      press(s, "Return");
      click(s, "btn_Preview", "F_Yltx",
            [&](ui::Screen& preview) { EXPECT_GT(preview.grids().front()->rowCount(), 0); });
      EXPECT_EQ(list.currentText("zt"), u"已审核");
      const QString question = findFamily(QStringView(*number)) == &stocktake
                                   ? u"您的操作将取消当前的单据，确认吗？"_qs
                                   : u"您的操作将取消当前选中的已审核单据："_qs + *number + u"，确认吗？"_qs;
      press(s, "F6", question, Answer::No);
      press(s, "F6", question, Answer::Yes);
      // It waits from now on; a loan that came back does not, it is gone.
      const bool isGone = findFamily(QStringView(*number)) == &loanReturn;
      EXPECT_EQ(listed(list, {"zt"}), isGone ? QStringList() : QStringList("待审核"));
      EXPECT_EQ(rows("select gl_flag from jxc_goodslist where gl_djh=?", *number), "");
      if (!isGone && number == all_.rbegin()) {
        press(s, "F6", u"单据"_qs + *number + u"还没有审核，不需要取消审核！"_qs);
      }
      choose(s, "comLx", QStringLiteral("所有单据"));
      check(s, "chkDsh", false);
      list.waitLoaded();
      EXPECT_EQ(list.rowCount(), static_cast<int>(all_.rend() - number) - 1);
      check(s, "chkDsh", true);
      list.waitLoaded();
    }
  });
  EXPECT_EQ(seen_, 12);
  EXPECT_EQ(rows("select kc_sl,kc_zsl from jxc_kcsp where kc_sl<>0 or kc_zsl<>0"), "");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

TEST_F(DocumentListTest, AllAreCancelledAfterOneQuestionAndWhatStandsAgainstItIsTold) {
  makeAll();
  // Somebody checked the loss whose word binds others, and the counts are not his to cancel.
  setAllRights(u"300001"_qs, QString(20, u'1'));
  takeRight(u"300001"_qs, "kcgl", 13);
  execSql("update jxc_xtcs set cs_kc=1");
  becomeOperator(u"小王"_qs, u"100009"_qs, u"300001"_qs);
  open("F_Djcx", [&](ui::Screen& s) {
    s.grid("gridDj").waitLoaded();
    expectQuestion(u"您的操作将取消列表中 12 张单据的审核，确认吗？"_qs, Answer::Yes);
    // The counted piece stays away: the receipt, last of all, would take one more than there is.
    expectQuestion(u"该单据中至少一种商品库存不足，\r\n\r\n“A”：出库将会出现负库存，是否继续？"_qs, Answer::Yes);
    click(s, "btn_UnChkAll",
          u"取消审核完成，共 12 个单据，\r\n\r\n取消审核成功 11 个单据。\r\n\r\n单据"_qs + all_.back() +
              u"：\r\n\r\n您没有取消审核库存盘点单的权限！"_qs);
    EXPECT_EQ(listed(s.grid("gridDj"), {"djh", "zt"}).front(), all_.back() + u" 已审核"_qs);
  });
}

TEST_F(DocumentListTest, EachKindShowsByItsOwnRightsAndANumberOpensItsPaper) {
  makeAll();
  const QString receiptNumber = all_[0], transferNumber = all_[4], lossNumber = all_[5];
  // He moves goods between shops, knows no cost, and stands in the branch only.
  execSql("update jxc_xtcs set cs_cgyh=1");
  execSql("update jxc_ckxx set ck_asn='100009,' where ck_sn='100002'");
  setRights(u"300001"_qs, "tjgl", u"11111111111111111111"_qs);
  setRights(u"300001"_qs, "kcgl", u"10100000000000000000"_qs);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"300001"_qs);
  open("F_Djcx", [&](ui::Screen& s) {
    EXPECT_EQ(listed(s.grid("gridDj"), {"djh", "ck_in", "zje"}), QStringList(transferNumber + u" 分店 "_qs));
    EXPECT_FALSE(s.findChild<QWidget*>("lHj")->property("text").toString().contains(u"10"));
    QStringList kinds;
    for (const ListItem& item : s.field("comLx").items())
      kinds << item.text;
    EXPECT_EQ(kinds, QStringList({"所有单据", "库存调拨", "商品报损", "商品报溢"}));
    enter(s, "tkey", transferNumber.toLower());
    EXPECT_EQ(seen_, 1);
    EXPECT_EQ(listed(s.grid("gridDj"), {"djh"}), QStringList(transferNumber));
    // Of another shop, of another desk, of nobody.
    for (const QString& number : {lossNumber, receiptNumber, u"DB21050199999"_qs}) {
      expectNotice(u"没有找到单据“"_qs + number + u"”！"_qs);
      enter(s, "tkey", number);
    }
    type(s, "tkey", u"");
    press(s, "F3", "F_Djcx_Cx", filled({{"tgoods", u"691"}}));  // a case, which he did not move
    EXPECT_TRUE(listed(s.grid("gridDj"), {"djh"}).isEmpty());
    press(s, "F3", "F_Djcx_Cx", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tgoods").text(), u"691");
      press(form, "F4");
    });
    type(s, "tkey", u"DB21");  // a part of one searches
    press(s, "Return");
    EXPECT_EQ(s.grid("gridDj").rowCount(), 1);
  });
  EXPECT_EQ(seen_, 1);
}

}  // namespace jxc::test::document_list_test
