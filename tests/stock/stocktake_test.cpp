// Stocktake: what audit and cancel do to stock, ledger and books, and what becomes of a count that was overtaken.
#include "stock/stocktake.h"

#include "core/each_prompt.h"
#include "stock/shop.h"

#include <map>

namespace jxc::stocktake_test {

using namespace families;

/// Answers each line of a question by its letter: "前" the movement was before the counting, "后" after it.
class EachScripted : public test::ScriptedPrompt, public EachPrompt {
 public:
  std::optional<std::vector<EachAnswer>> askEach(const EachQuestion& question) override {
    for (const QStringList& item : question.items)
      asked << item.join(u' ');
    if (answers.isEmpty()) return {};
    std::vector<EachAnswer> given;
    for (const QChar letter : answers)
      given.push_back(letter == u'前' ? EachAnswer::First : EachAnswer::Second);
    return given;
  }
  QString answers;
  QStringList asked;
};

class StocktakeTest : public test::ShopTest {
 protected:
  StocktakeTest() {
    addGoods("A", 5);
    addGoods("B", 1);
    addGoods("C", 3);
    receive("2021-05-01", {{"A", 10, 5}, {"B", 4, 1}});
  }
  /// Lines as they were counted against the books of now; goods that the warehouse does not know stand at nothing.
  QString count(const QString& date, const std::map<QString, double>& counted) {
    const QString number = test::waitingDocument(stocktake, date, {}, {});
    for (const auto& [goods, pieces] : counted)
      test::writeLine(
          stocktake, number, date,
          {goods, pieces, lookupNumber("select kc_cbj from jxc_kcsp where g_sn=? and ck_sn='100001'", goods)});
    refreshWaitingTotals(stocktake, number);
    return number;
  }
  void expectWaiting(const DocumentFamily&, const QString& number) {
    EXPECT_EQ(row("select pd_status,pd_checker from jxc_kcpd where gl_djh=?", number), "0 ");
    EXPECT_EQ(rows(number), QStringList());
    EXPECT_EQ(difference(number), "");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  }
};

TEST_F(StocktakeTest, StocktakeSetsTheCountAndDiesOfLaterMovement) {
  const QString taken = count("2021-05-02", {{"A", 7}, {"B", 4}});
  EXPECT_EQ(stock_count::tooLateToSave("PD?", "100001", "2021-05-01"),
            "在【2021-05-02】日期之后已有盘点单，不能再次盘点！");
  EXPECT_EQ(audit(taken), AuditOutcome::Audited);
  EXPECT_EQ(rows(taken), QStringList({"pd -3 → 7 5 35"}));  // thirteen pieces, 65 yuan
  EXPECT_EQ(lastLog(), "库存盘点单通过" + taken + "审核，共1个商品");
  EXPECT_EQ(difference(taken), "费用 -15 1 商品盘点单" + taken + "成本差额");
  EXPECT_EQ(balanceOf("B"), "4 4 1");

  const QString sale = sell("2021-05-03", {{"A", 1, 9}});
  EXPECT_EQ(stock_count::tooLateToSave(taken, "100001", "2021-05-02"),
            "在【2021-05-03】日期之后盘点的商品已发生业务，不能盘点！");
  EXPECT_FALSE(cancelStocktake(taken, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您的操作将取消当前的单据，确认吗？");
  EXPECT_EQ(prompt.lastNotice(), "在【2021-05-02】日期之后盘点商品已发生业务，\r\n\r\n单号为：【" + sale +
                                     "】，\r\n\r\n该盘点单 " + taken + " 不能撤销！");
  EXPECT_TRUE(cancelSale(sale, prompt.willSayYes().willSayYes()));
  EXPECT_TRUE(cancelStocktake(taken, prompt));
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  expectWaiting(stocktake, taken);

  const QString later = sell("2021-05-03", {{"A", 1, 9}});
  prompt.willSayYes();
  const std::vector<ListedDocument> list{{taken, "2021-05-02"}};
  EXPECT_EQ(stock_count::auditAll(list, prompt), 0);
  EXPECT_EQ(audit(taken), AuditOutcome::Refused);
  ASSERT_EQ(prompt.notices.size(), 3) << "one document is refused as the list passes it over";
  EXPECT_EQ(prompt.notices[1], prompt.notices[2]);
  EXPECT_EQ(prompt.lastNotice(), "在【2021-05-02】日期之后盘点商品已发生业务，\r\n\r\n单号为：【" + later +
                                     "】，\r\n\r\n不能盘点，该盘点单 " + taken + " 已作废！");
  expectWaiting(stocktake, taken);
}

TEST_F(StocktakeTest, WhatWasBoughtBehindACancelledCountCostsAsIfItHadNeverBeen) {
  const auto average = [] { return lookupNumber("select g_pjjj from jxc_goods where g_sn='A'"); };
  const QString slip = count("2021-05-02", {{"A", 30}});
  EXPECT_EQ(audit(slip), AuditOutcome::Audited);
  receive("2021-05-02", {{"A", 10, 9}});
  EXPECT_EQ(average(), 6) << "thirty at 5 and ten at 9";
  EXPECT_TRUE(cancelStocktake(slip, prompt.willSayYes()));
  EXPECT_EQ(balanceOf("A"), "20 20 7");
  EXPECT_EQ(average(), 7) << "ten at 5 and ten at 9";
  expectWaiting(stocktake, slip);
}

TEST_F(StocktakeTest, StockThatMovedMeanwhileIsAskedAbout) {
  const QString taken = count("2021-05-03", {{"A", 9}, {"B", 6}});
  EXPECT_EQ(row("select pd_sl,kc_sl from jxc_kcpd where gl_djh=?", taken), "15 14");
  sell("2021-05-03", {{"A", 2, 9}});
  receive("2021-05-02", {{"B", 1, 1}});
  // A: 9 counted, 10 in the books then, 8 now. B: 6 counted, 4 then, 5 now.
  struct Answered {
    const char16_t* answers;
    const char *a, *b, *head;
    QStringList rows;
    QString booked;
  };
  const Answered all[] = {
      {u"前前", "9 9 5", "6 6 1", "15 13", {"pd 1 → 9 5 45", "pd 1 → 6 1 6"}, "收入 6 2 商品盘点单"},
      {u"后后", "7 7 5", "7 7 1", "15 14", {"pd -1 → 7 5 35", "pd 2 → 7 1 7"}, "费用 -3 1 商品盘点单"},
      {u"后前", "7 7 5", "6 6 1", "15 15", {"pd -1 → 7 5 35", "pd 1 → 6 1 6"}, "费用 -4 1 商品盘点单"}};
  for (const Answered& each : all) {
    SCOPED_TRACE(QString::fromUtf16(each.answers).toStdString());
    Transaction trial(accountDb());
    EachScripted asked;
    EXPECT_EQ(checkDj(stocktake, taken, asked), AuditOutcome::Refused) << "the operator left the question";
    EXPECT_EQ(asked.asked, QStringList({"A 镜架A 9 10 8", "B 镜架B 6 4 5"}));
    asked.answers = QString::fromUtf16(each.answers);
    EXPECT_EQ(checkDj(stocktake, taken, asked), AuditOutcome::Audited);
    EXPECT_EQ(balanceOf("A"), each.a);
    EXPECT_EQ(balanceOf("B"), each.b);
    EXPECT_EQ(rows(taken), each.rows);
    EXPECT_EQ(row("select pd_sl,kc_sl from jxc_kcpd where gl_djh=?", taken), each.head);
    EXPECT_EQ(difference(taken), each.booked + taken + "成本差额");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    EXPECT_TRUE(cancelStocktake(taken, prompt.willSayYes()));
    EXPECT_EQ(balanceOf("A"), "8 8 5");
    EXPECT_EQ(balanceOf("B"), "5 5 1");
    expectWaiting(stocktake, taken);
  }

  // A list has nobody to ask for each, and tells it.
  EXPECT_EQ(stock_count::auditAll({{taken, "2021-05-03"}}, prompt.willSayYes()), 0);
  EXPECT_EQ(prompt.lastNotice(),
            "盘点单 " + taken + " 录入之后，有 2 种商品的库存已变动（A 镜架A），\r\n\r\n请单独审核该单据！");

  // Another station sells while the question stands: what was answered no longer holds, and it is asked again.
  test::WhileAsked interrupted([this] { sell("2021-05-03", {{"A", 3, 9}}); });
  EXPECT_EQ(checkDj(stocktake, taken, interrupted), AuditOutcome::Audited);
  EXPECT_EQ(rows(taken).first(), "pd 4 → 9 5 45");
  EXPECT_EQ(balanceOf("A"), "9 9 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(StocktakeTest, ASaveThatAuditsAtOnceAsksAsWell) {
  setParameter("cs_shdj", 1);
  const QString number = newDocumentNumber(stocktake, "2021-05-03");
  test::writeLine(stocktake, number, "2021-05-03", {"A", 9, 5});
  const QString sale = audited(waitingSale("2021-05-03", {{"A", 2, 9}}, 0));
  const auto writeHead = [](const QString& taken) {
    execSql(
        "insert into jxc_kcpd (gl_djh,pd_rq,ck_sn,u_sn,pd_note,a_name,pd_status) values "
        "(?,'2021-05-03','100001','100001','',?,0)",
        taken, session().a_name);
  };
  prompt.willSayYes().willSayNo();
  const SaveResult saved =
      saveDocument(stocktake, {.number = number, .date = u"2021-05-03"_qs, .writeHead = writeHead}, prompt);
  EXPECT_TRUE(saved.audited);
  EXPECT_EQ(balanceOf("A"), "7 7 5");  // no: the sale came after the counting
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(StocktakeTest, TheShelfIsCountedAndTheBooksMoveByTheDifference) {
  // Five pieces are bought and lie in the yard still.
  setParameter("cs_sprk", 1);
  receive("2021-05-02", {{"A", 5, 5}});
  ASSERT_EQ(balanceOf("A"), "10 15 5");
  const QString taken = audited(count("2021-05-03", {{"A", 8}, {"C", 2}}));
  EXPECT_EQ(balanceOf("A"), "8 13 5");
  // Goods that the warehouse did not know are worth what they cost elsewhere.
  EXPECT_EQ(balanceOf("C"), "2 2 3");
  EXPECT_EQ(rows(taken), QStringList({"pd -2 → 13 5 65", "pd 2 → 2 3 6"}));
  EXPECT_EQ(row("select pd_dj,pd_zje from jxc_kcpdsp where g_sn='C'"), "3 6");
  EXPECT_EQ(difference(taken), "费用 -4 1 商品盘点单" + taken + "成本差额");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  sell("2021-05-03", {{"C", 1, 9}});
  setParameter("cs_kc", 0);
  prompt.willSayYes();
  EXPECT_FALSE(cancelStocktake(taken, prompt)) << "found goods that were sold are not there to be taken back";
  setParameter("cs_kc", 1);
  EXPECT_TRUE(cancelStocktake(taken, prompt.willSayYes().willSayYes()));
  EXPECT_EQ(balanceOf("A"), "10 15 5");
  EXPECT_EQ(balanceOf("C"), "-1 -1 3");
  expectWaiting(stocktake, taken);
}

}  // namespace jxc::stocktake_test
