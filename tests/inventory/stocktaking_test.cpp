// 库存盘点单: what lines of a count are worth, however they come in, what save refuses, goods that nobody counted, and
// two counts that become one.
#include "inventory/stocktaking.h"

#include "stock/line_import.h"
#include "stock/shop.h"

namespace jxc::stocktaking_test {

using families::stocktake;
using stocktaking::Uncounted;

class StocktakingTest : public test::ShopTest {
 protected:
  StocktakingTest() {
    addGoods("A", 5, "6901");
    addGoods("B", 1, "6902");
    addGoods("C", 3, "6903");  // nothing of it has ever been in the warehouse
    execSql("update jxc_goods set gc_sn=iif(g_sn='B','1001100','1005')");
    receive("2021-05-01", {{"A", 10, 5}, {"B", 4, 1}});
    draft_ = stocktaking::rules().fresh("2021-05-03");
    draft_.date = u"2021-05-03"_qs;
    draft_.number = newDocumentNumber(stocktake, draft_.date);
  }
  const LineRules& lines() { return stocktaking::rules().lines(); }
  LinePlace place() { return placeOf(draft_); }
  LineResult count(const QString& goods, double pieces) { return add(lines(), place(), goods, pieces); }
  SaveResult save() {
    const SaveResult saved = stocktaking::rules().save(draft_, prompt);
    draft_.number = newDocumentNumber(stocktake, draft_.date);
    return saved;
  }
  /// "goods count shelf books price value" of the lines of a document.
  QStringList stored(const QString& number) {
    return test::textsOf(
        openSelect("select g_sn,pd_sl,kc_sl,kc_zsl,pd_dj,pd_zje from jxc_kcpdsp where gl_djh=? order by g_sn", number));
  }
  QString head(const QString& number) { return row("select pd_sl,kc_sl from jxc_kcpd where gl_djh=?", number); }

  DocumentDraft draft_;
};

TEST_F(StocktakingTest, ALineIsWorthItsDifferenceWhateverWayItComesIn) {
  const QStringList worth{"A 7 10 10 5 -15", "B 0 4 4 1 -4", "C 2 0 0 3 6"};
  count("A", 7);
  count("B", 0);  // nothing was found of it: that is a count
  count("C", 2);
  EXPECT_EQ(stored(draft_.number), worth);
  LineDraft less = lines().newLine("A", place(), false);
  less.amounts.setQuantity(-1);
  EXPECT_EQ(prompt.refused(lines().mayWrite(less, place(), prompt)), "盘点数量不能为负数，重新输入！");
  discardDraft(stocktake, draft_.number);

  PickingMemory memory;
  for (const auto& [goods, pieces] : {std::pair("A", 7.0), {"B", 0.0}, {"C", 2.0}, {"A", 9.0}})
    lines().stageGoods(goods, pieces, place(), Lines::Draft, memory, prompt);
  EXPECT_EQ(memory.passedOver, QStringList("A"));
  EXPECT_EQ(lines().copyStaged(place(), Lines::Draft).lines, 3);
  EXPECT_EQ(stored(draft_.number), worth);
  discardDraft(stocktake, draft_.number);

  // A multiple stands before the code; what is no multiple is a code that nobody has.
  for (const char* code : {"6901", "6901", "4*6901", "6903", " 6901", "6903"})
    EXPECT_NE(lines().enterBarcode(place(), code, false, prompt).id, 0) << code;
  for (const char* code : {"0*6901", "*6901", "x*6901", "99999*6901", "-2*6901"})
    EXPECT_EQ(lines().enterBarcode(place(), code, false, prompt).outcome, Scan::NotFound) << code;
  EXPECT_EQ(stored(draft_.number), QStringList({"A 7 10 10 5 -15", "C 2 0 0 3 6"}));
  EXPECT_EQ(lines().enterBarcode(place(), "3*6902", false, prompt).outcome, Scan::Added);
  EXPECT_EQ(lines().enterBarcode(place(), "6902", true, prompt).outcome, Scan::AlreadyThere);
  EXPECT_EQ(stored(draft_.number)[1], "B 3 4 4 1 -1");
  discardDraft(stocktake, draft_.number);

  // Totals of their own digits: 1 × 5.55 less.
  execSql("update jxc_kcsp set kc_cbj=5.55 where g_sn='A'");
  setParameter("cs_zjews", 1);
  setParameter("cs_jews", 1);
  count("A", 9);
  EXPECT_EQ(stored(draft_.number), QStringList("A 9 10 10 5.55 -5.6"));
  discardDraft(stocktake, draft_.number);
  lines().stageGoods("A", 9, place(), Lines::Draft, memory, prompt);
  lines().copyStaged(place(), Lines::Draft);
  EXPECT_EQ(stored(draft_.number), QStringList("A 9 10 10 5.55 -5.6"));
}

TEST_F(StocktakingTest, SaveRefusesWhatComesTooLate) {
  EXPECT_EQ(prompt.refused(save()), "单据中没有业务发生，不能保存！");
  count("A", 7);
  const QString sale = sell("2021-05-04", {{"A", 1, 9}});
  EXPECT_FALSE(stocktaking::rules().save(draft_, prompt));
  EXPECT_EQ(prompt.lastNotice(), "在【2021-05-04】日期之后盘点的商品已发生业务，不能盘点！");
  EXPECT_TRUE(cancelSale(sale, prompt.willSayYes()));
  prompt.willSayYes();
  const SaveResult saved = save();
  ASSERT_TRUE(saved);
  EXPECT_EQ(head(saved.number), "7 10");
  EXPECT_EQ(row("select pd_rq,ck_sn,pd_status,a_name from jxc_kcpd"), "2021-05-03 100001 0 " + session().a_name);
  EXPECT_EQ(lastLog(), "增加库存盘点单" + saved.number + "，共1种商品");
  // Lines of a waiting count bring its head along.
  const std::int64_t id = lookupNumber("select id from jxc_kcpdsp");
  lines().setChange("8", u"sl", Lines::Waiting, id, prompt);
  EXPECT_EQ(head(saved.number), "8 10");
  EXPECT_EQ(stored(saved.number), QStringList("A 8 10 10 5 -10"));

  draft_.date = u"2021-05-02"_qs;
  draft_.number = newDocumentNumber(stocktake, draft_.date);
  count("B", 4);
  EXPECT_EQ(prompt.refused(save()), "在【2021-05-03】日期之后已有盘点单，不能再次盘点！");

  setParameter("cs_shdj", 1);
  draft_.date = u"2021-05-03"_qs;
  draft_.number = newDocumentNumber(stocktake, draft_.date);
  count("B", 6);
  prompt.willSayYes();
  EXPECT_TRUE(save().audited);
  EXPECT_EQ(prompt.questions.last(),
            "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“库存盘点查询”功能中取消审核！");
  EXPECT_EQ(balanceOf("B"), "6 6 1");
}

TEST_F(StocktakingTest, ASpreadsheetIsJudgedRowByRow) {
  count("B", 1);
  RowSet sheet({"商品编号", "数量"});
  const struct {
    QString code, quantity;
    const char* verdict;
  } cells[] = {{"A", "0", "可顺利导入"},
               {"A", "3", "商品不能重复盘点"},
               {"B", "2", "商品不能重复盘点"},
               {"C", {}, "数量不能为空"},  // a formula that failed, a cell below a merged one
               {"C", "-1", "数量不能为负数"},
               {"C", "1000000000000", "数量过大，请检查是否输入了条码或单价！"},
               {"C", "1e400", "数量不是数字"},
               {"C", "=SUM(B1:B9)", "数量不是数字"},  // typed as a text
               {{}, "3", "商品编号不正确"},
               {QString(1000, u'A'), "3", "商品编号不正确"},
               {"A' or '1'='1", "3", "商品编号不正确"},
               {"C", "2.345", "可顺利导入"}};
  for (const auto& each : cells) {
    sheet.addText(each.code.toStdString());
    sheet.addText(each.quantity.toStdString());
  }
  const auto judged = judgeLines(sheet, stocktake.import, lines(), place(), prompt);
  ASSERT_TRUE(judged && judged->size() == std::size(cells));
  for (std::size_t i = 0; i < std::size(cells); ++i)
    EXPECT_EQ((*judged)[i].words, cells[i].verdict) << i;
  const auto imported = importLines(*judged, lines(), place(), Lines::Draft, prompt);
  ASSERT_TRUE(imported);
  EXPECT_EQ(imported->taken, 2);
  EXPECT_EQ(stored(draft_.number), QStringList({"A 0 10 10 5 -50", "B 1 4 4 1 -3", "C 2.35 0 0 3 7.05"}));
}

TEST_F(StocktakingTest, GoodsThatNobodyCountedAreLeftOrTakenTogether) {
  const auto open = [this](Lines where, const QStringList& classes) {
    return test::textsOf(openSelect(stocktaking::uncounted(place(), where, classes)), {"g_sn", "kc_sl"}).join(u'|');
  };
  EXPECT_EQ(open(Lines::Draft, {}), "A 10|B 4");
  EXPECT_EQ(open(Lines::Draft, {"1001"}), "B 4");
  EXPECT_EQ(open(Lines::Draft, {"1001", "1005"}), "A 10|B 4");
  EXPECT_EQ(open(Lines::Draft, {"1005", "1006"}), "A 10");
  EXPECT_EQ(stocktaking::countSheet(test::mainWarehouse, {"1001", "1006"}).rowCount(), 1);
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Draft, {"1001"}, Uncounted::Zero).lines, 1);
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Draft, {"1001"}, Uncounted::Zero).lines, 0);
  EXPECT_EQ(open(Lines::Draft, {}), "A 10");
  prompt.willSayYes();
  const QString number = draft_.number;
  ASSERT_TRUE(save());
  draft_.number = number;
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Waiting, {}, Uncounted::AsBook).lines, 1);
  EXPECT_EQ(stored(number), QStringList({"A 10 10 10 5 0", "B 0 4 4 1 -4"}));
  EXPECT_EQ(head(number), "10 14");
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(row("select g_sn,gl_sl from jxc_goodslist where gl_djh=?", number), "B -4");
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Waiting, {}, Uncounted::Zero).lines, 0) << "it is audited";
  // What the books have below zero cannot be what lies there.
  setParameter("cs_kc", 1);
  prompt.willSayYes();
  EXPECT_EQ(audit(waitingSale("2021-05-03", {{"B", 2, 9}}, 0)), AuditOutcome::Audited);
  draft_.number = newDocumentNumber(stocktake, draft_.date);
  EXPECT_EQ(open(Lines::Draft, {"1001"}), "B -2");
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Draft, {"1001"}, Uncounted::AsBook).lines, 0);
  EXPECT_EQ(stocktaking::takeUncounted(place(), Lines::Draft, {"1001"}, Uncounted::Zero).lines, 1);
  EXPECT_EQ(stored(draft_.number), QStringList("B 0 -2 -2 1 2"));
}

TEST_F(StocktakingTest, TwoCountsOfADayBecomeOne) {
  const auto saved = [this](const std::map<QString, double>& counted) {
    for (const auto& [goods, pieces] : counted)
      count(goods, pieces);
    prompt.willSayYes();
    return save().number;
  };
  const QString first = saved({{"A", 4}, {"B", 4}});
  const QString second = saved({{"A", 5}, {"C", 1}});
  draft_.date = u"2021-05-04"_qs;
  draft_.number = newDocumentNumber(stocktake, draft_.date);
  const QString other = saved({{"A", 1}});  // of another day
  EXPECT_EQ(stocktaking::joinable(first).rowCount(), 1);
  EXPECT_FALSE(stocktaking::join(first, other, prompt));
  EXPECT_TRUE(stocktaking::join(first, second, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(),
            "您的操作将把盘点单 " + second + " 合并到 " + first +
                "，确认吗？\r\n\r\n两张单据中都有的商品，盘点数量相加：\r\n\r\nA 镜架A：4+5=9");
  EXPECT_EQ(stored(first), QStringList({"A 9 10 10 5 -5", "B 4 4 4 1 0", "C 1 0 0 3 3"}));
  EXPECT_EQ(head(first), "14 14");
  EXPECT_EQ(row("select gl_djh from jxc_kcpd where gl_djh=?", second), "");
  EXPECT_EQ(stored(second), QStringList());
  EXPECT_EQ(lastLog(), "合并库存盘点单：" + second + " 并入 " + first);

  EXPECT_TRUE(deleteWaitingDocument(stocktake, other, prompt.willSayYes()));
  // Counted on while the question stands: nothing is put together unseen.
  draft_.date = u"2021-05-03"_qs;
  draft_.number = newDocumentNumber(stocktake, draft_.date);
  const QString third = saved({{"B", 1}});
  test::WhileAsked interrupted([&] { execSql("update jxc_kcpdsp set pd_sl=2 where gl_djh=?", third); });
  EXPECT_FALSE(stocktaking::join(first, third, interrupted));
  EXPECT_EQ(interrupted.notices, QStringList("单据已变动，请重新合并！"));
  EXPECT_EQ(stored(third).size(), 1);
}

}  // namespace jxc::stocktaking_test
