// Putaway and issue: what was bought comes onto the shelf, and what was sold leaves it, in parts.
#include "output/print_lines.h"
#include "stock/all_parameters.h"
#include "stock/partial_rules.h"
#include "stock/shop.h"

namespace jxc::partial_movement_test {

using partial::issue;
using partial::putaway;

class PartialMovementTest : public test::ShopTest {
 protected:
  PartialMovementTest() {
    addGoods("A", 5, "690A");
    addGoods("B", 2, "690B");
    setParameter("cs_sprk", 1);
    setParameter("cs_spck", 1);
  }
  QString part(const PartialMovement& movement, const QString& source, const std::vector<double>& pieces = {},
               const QString& date = u"2021-05-03"_qs) {
    return test::waitingPart(movement, date, source, pieces);
  }
  QString moved(const PartialMovement& movement, const QString& source, const std::vector<double>& pieces = {},
                const QString& date = u"2021-05-03"_qs) {
    return audited(part(movement, source, pieces, date));
  }
  bool cancel(const QString& number) { return cancelDocument(number, prompt, CancelMode::Batch); }
  QString stateOf(const QString& source) {
    return source.startsWith(u"CJ") ? row("select j_crk from jxc_jhd where j_sn=?", source)
                                    : row("select ls_crk,ls_ckrq from jxc_lsxsd where gl_djh=?", source).trimmed();
  }
  static LinePlace placeOf(const DraftOfPartner& draft) {
    return {.number = draft.number, .date = draft.date, .partner = draft.partner, .warehouse = draft.warehouse};
  }
};

TEST_F(PartialMovementTest, AReceiptOfTenInThreePutaways) {
  const QString bought = receive("2021-05-01", {{"A", 10, 5}, {"B", 4, 2}});
  EXPECT_EQ(balanceOf("A"), "0 10 5");
  EXPECT_EQ(stateOf(bought), "0");
  const double worth = lookupNumber("select sum(js_zje) from jxc_kcjs where js_rq='2021-05'");
  EXPECT_EQ(worth, 0);  // the month counts the shelf

  const QString first = moved(putaway, bought, {3, 4});
  EXPECT_EQ(balanceOf("A"), "3 10 5");
  EXPECT_EQ(lastLog(), "审核入库单" + first + "，共2种商品");
  EXPECT_EQ(lookupNumber("select js_zje from jxc_kcjs where js_rq='2021-05' and ck_sn='100001'"), 23);  // 3·5 + 4·2
  const QString second = moved(putaway, bought, {4});
  EXPECT_EQ(stateOf(bought), "0");
  const QString third = moved(putaway, bought);
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(lookupNumber("select g_kc from jxc_goods where g_sn='A'"), 10);
  EXPECT_EQ(stateOf(bought), "1");
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist where gl_djh like 'RK%'"), 0);  // the books knew them
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // The receipt stays while anything of it was put away; putaways go in any order.
  EXPECT_FALSE(cancel(bought));
  EXPECT_TRUE(prompt.lastNotice().contains(u"已有入库信息，不能取消审核！"));
  const char* const left[] = {"6 10 5", "3 10 5", "0 10 5"};
  int step = 0;
  for (const QString& each : {second, third, first}) {
    EXPECT_TRUE(cancel(each));
    EXPECT_EQ(balanceOf("A"), left[step++]);
    EXPECT_EQ(stateOf(bought), "0");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  }
  EXPECT_EQ(lastLog(), "取消审核商品入库单：" + first);
  EXPECT_FALSE(cancel(bought));  // waiting ones hold it too
  for (const QString& each : {first, second, third}) {
    prompt.willSayYes();
    EXPECT_TRUE(deleteWaitingDocument(families::putaway, each, prompt));
  }
  EXPECT_TRUE(cancel(bought));
  EXPECT_EQ(balanceOf("A"), "0 0 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PartialMovementTest, ASaleOfFiveInTwoIssuesAndWhatIsNotThere) {
  const QString bought = receive("2021-05-01", {{"A", 5, 5}});
  const QString sold = sell("2021-05-02", {{"A", 5, 9}}, 45);
  EXPECT_EQ(balanceOf("A"), "0 0 5");
  // Nothing lies on the shelf yet: refused, or asked by parameter.
  setParameter("cs_kc", 0);
  const QString two = part(issue, sold, {2}), three = part(issue, sold, {3}, u"2021-05-04"_qs);
  EXPECT_EQ(audit(two), AuditOutcome::Refused);
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");
  setParameter("cs_kc", 1);
  prompt.willSayNo();
  EXPECT_EQ(audit(two), AuditOutcome::Refused);
  moved(putaway, bought);
  setParameter("cs_kc", 0);
  audited(two);
  EXPECT_EQ(lastLog(), "审核出库单" + two);
  EXPECT_EQ(balanceOf("A"), "3 0 5");
  EXPECT_EQ(stateOf(sold), "0");
  EXPECT_EQ(row("select kc_xssl from jxc_kcsp where g_sn='A'"), "5");  // counted as sold by the sale alone
  audited(three);
  EXPECT_EQ(balanceOf("A"), "0 0 5");
  EXPECT_EQ(stateOf(sold), "1 2021-05-04");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // What left the shelf cannot be taken off it again by the cancel of its putaway.
  EXPECT_FALSE(cancel(lookupValue("select gl_djh from jxc_rkd")));
  EXPECT_TRUE(prompt.lastNotice().contains(u"“A”：不能出库！"));
  EXPECT_FALSE(cancel(sold));
  EXPECT_TRUE(prompt.lastNotice().contains(u"已有出库信息，不能取消审核！"));
  EXPECT_TRUE(cancel(two));
  EXPECT_EQ(stateOf(sold), "0");
  EXPECT_EQ(balanceOf("A"), "2 0 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PartialMovementTest, NoMoreMovesThanIsOpen) {
  const QString bought = receive("2021-05-01", {{"A", 10, 5}});
  // Two waiting documents of one line: the second one comes too late.
  const QString six = part(putaway, bought, {6}), five = part(putaway, bought, {5});
  audited(six);
  EXPECT_EQ(audit(five), AuditOutcome::Refused);
  EXPECT_EQ(prompt.lastNotice(), "采购进货单【" + bought +
                                     "】的商品【A】\r\n\r\n已经完成入库或入库数量大于采购数量或已经取消入库，\r\n\r\n"
                                     "不能重复入库，请检查！");
  EXPECT_EQ(row("select rk_status from jxc_rkd where gl_djh=?", five), "0");
  // The same line twice on one document adds up: 3 and 2 of the 4 that are open.
  const QString twice = part(putaway, bought, {3});
  execSql(
      "insert into jxc_rksp (gl_djh,rk_sl,g_sn,a_name,j_sn,id2) select gl_djh,2,g_sn,a_name,j_sn,id2 from jxc_rksp "
      "where gl_djh=?",
      twice);
  EXPECT_EQ(audit(twice), AuditOutcome::Refused);
  execSql("update jxc_rksp set rk_sl=1 where gl_djh=? and rk_sl=2", twice);
  audited(twice);
  EXPECT_EQ(balanceOf("A"), "10 10 5");

  // Taken meanwhile, while a question stands or behind it.
  EXPECT_TRUE(cancel(twice));
  execSql("update jxc_jhd set j_status=0 where j_sn=?", bought);
  EXPECT_EQ(audit(twice), AuditOutcome::Refused);
  EXPECT_TRUE(prompt.lastNotice().contains(u"已取消审核，或不是该往来单位、该仓库的单据"));
  execSql("update jxc_jhd set j_status=1 where j_sn=?", bought);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PartialMovementTest, WhatAnExchangeBringsBackGiftsAndDisabledGoods) {
  const QString bought = receive("2021-05-01", {{"A", 6, 5}, {"B", 6, 2}});
  moved(putaway, bought);
  execSql("update jxc_goods set g_jy=1 where g_sn='A'");  // disabled: what was sold of it still goes
  const QString sold = sell("2021-05-02", {{"A", 2, 9}, {"B", -1, 4}});
  EXPECT_EQ(balanceOf("B"), "7 7 2");  // onto the shelf at once
  execSql("update jxc_lsxssp set t_zp='(赠品)' where g_sn='A'");
  const RowSet open = openSelect(partial::openLines(issue, {.source = sold}));
  EXPECT_EQ(test::textsOf(open, {"g_name", "opensl"}), QStringList("镜架A(赠品) 2"));
  const QString given = moved(issue, sold);
  EXPECT_EQ(test::textsOf(openSelect(partial::issueRules().waitingLines(given)), {"g_name"}),
            QStringList("镜架A(赠品)"));
  EXPECT_EQ(test::textsOf(printLines(given, u"CK"), {"g_name", "sl"}), QStringList("镜架A(赠品) 2"));
  EXPECT_EQ(balanceOf("A"), "4 4 5");
  EXPECT_EQ(stateOf(sold), "1 2021-05-03");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // Nothing but goods that come back: nothing to issue.
  const QString back = sell("2021-05-03", {{"B", -2, 4}});
  EXPECT_EQ(stateOf(back), "1");
  EXPECT_EQ(balanceOf("B"), "9 9 2");
  EXPECT_TRUE(cancel(back));
  EXPECT_EQ(balanceOf("B"), "7 7 2");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // A balance that somebody deleted is made again.
  const QString more = receive("2021-05-03", {{"B", 3, 2}});
  execSql("delete from jxc_kcsp where g_sn='B'");
  moved(putaway, more);
  EXPECT_EQ(balanceOf("B"), "3 0 2");
}

TEST_F(PartialMovementTest, ADraftFromScansTheListAndAWholeSource) {
  const QString older = receive("2021-05-01", {{"A", 3, 5}}), newer = receive("2021-05-02", {{"A", 4, 5}, {"B", 1, 2}});
  const partial::PartialRules& rules = partial::putawayRules();
  DraftOfPartner draft = rules.fresh({});
  // The oldest open line first, with all that is open of it; then the next one.
  for (const char* pieces : {"3", "3 4"}) {
    const ScanResult scanned = rules.lines().enterBarcode(placeOf(draft), u"690A"_qs, false, prompt);
    EXPECT_EQ(scanned.outcome, Scan::Added);
    draft.number = scanned.number;
    rules.followLines(draft);
    EXPECT_EQ(row("select rk_sl from jxc_rksp where gl_djh=? order by id", draft.number), pieces);
  }
  EXPECT_EQ(draft.partner, "100001");
  EXPECT_EQ(rules.lines().enterBarcode(placeOf(draft), u"690A"_qs, false, prompt).refusal, alreadyOnDocument(u"A"_qs));
  const std::int64_t line = lookupValue("select min(id) from jxc_rksp").toLongLong();
  EXPECT_FALSE(rules.lines().cellAllows(u"3.5"_qs, u"sl", Lines::Draft, line, placeOf(draft), prompt));
  EXPECT_EQ(prompt.lastNotice(), "入库数量不能大于采购数量！");
  EXPECT_EQ(rules.lines().setChange(u"2"_qs, u"sl", Lines::Draft, line, prompt), 2);

  // From the list: what stands on the document is passed over.
  const RowSet listed = openSelect(rules.lines().goodsToPick(placeOf(draft), {}));
  EXPECT_EQ(test::textsOf(listed, {"djh", "g_sn", "opensl"}).join(u' '),
            older + " A 3 " + newer + " A 4 " + newer + " B 1");
  PickingMemory memory;
  for (const Row open : listed)
    rules.lines().stageGoods(open.text("lid"), 1, placeOf(draft), Lines::Draft, memory, prompt);
  EXPECT_EQ(memory.passedOver.size(), 1);  // of the older one a piece is open still
  EXPECT_EQ(rules.lines().copyStaged(placeOf(draft), Lines::Draft).lines, 2);
  EXPECT_EQ(row("select rk_sl,j_sn from jxc_rksp where gl_djh=? order by id", draft.number),
            "2 " + older + " 4 " + newer + " 1 " + older + " 1 " + newer);

  prompt.willSayYes();  // the lines that stand go
  draft = *rules.takeWhole(newer, draft, prompt);
  EXPECT_EQ(row("select g_sn,rk_sl from jxc_rksp where gl_djh=? order by id", draft.number), "A 4 B 1");
  draft.partner.clear();
  EXPECT_FALSE(rules.save(draft, prompt));
  EXPECT_EQ(prompt.lastNotice(), "请选择供货商！");
  draft.partner = u"100001"_qs;
  prompt.willSayYes();
  const SaveResult saved = rules.save(draft, prompt);
  EXPECT_EQ(row("select rk_zsl,ghs_sn,rk_status from jxc_rkd"), "5 100001 0");
  EXPECT_EQ(lastLog(), "增加未审核入库单" + saved.number + "，共2种商品");
  EXPECT_EQ(rules.lines().setChange(u"3"_qs, u"sl", Lines::Waiting,
                                    lookupValue("select min(id) from jxc_rksp").toLongLong(), prompt),
            3);
  EXPECT_EQ(row("select rk_zsl from jxc_rkd"), "4");
  audited(saved.number);
  EXPECT_EQ(test::textsOf(openSelect(partial::waitingSources(putaway, {})), {"djh", "openlines", "opensl"}).join(u' '),
            older + " 1 3 " + newer + " 1 1");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PartialMovementTest, SavedAndAuditedAtOnceAndWhoMayCancel) {
  const QString bought = receive("2021-05-01", {{"A", 10, 5}});
  setParameter("cs_shdj", 1);
  const partial::PartialRules& rules = partial::putawayRules();
  // Another station puts six of them away while the question stands: saved, but not audited.
  const QString six = part(putaway, bought, {6});
  const DraftOfPartner draft = *rules.takeWhole(bought, rules.fresh({}), prompt);
  prompt.whileAsked(u"单据保存后将直接审核"_qs, [&] { auditInside(families::putaway, six); }).willSayYes();
  const SaveResult late = rules.save(draft, prompt);
  EXPECT_TRUE(late);
  EXPECT_FALSE(late.audited);
  EXPECT_TRUE(prompt.lastNotice().contains(u"不能重复入库，请检查！"));
  EXPECT_EQ(balanceOf("A"), "6 10 5");

  setRights("100009", "cggl", "111111111110000");
  becomeOperator("小王", "100002", "100009");
  EXPECT_EQ(prompt.refused(cancel(six)), "您没有取消审核商品入库单的权限！");
  setRights("100009", "cggl", "111111111111000");
  execSql("update jxc_rkd set rk_checker='小李' where gl_djh=?", six);  // a checker whose role is gone
  EXPECT_EQ(prompt.refused(cancel(six)), "单据：" + six + "，的审核人：小李\r\n\r\n不允许其他人取消审核！");
  execSql("update jxc_rkd set rk_checker='小王' where gl_djh=?", six);
  EXPECT_TRUE(cancel(six));
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PartialMovementTest, UnderAllParametersThatMeetTheBooksEndAlike) {
  const auto set = [this](const char* name, bool on) { setParameter(name, on); };
  test::underAllParameters(set, [&](const test::Switches& on) {
    const auto move = [&](const partial::PartialRules& rules, const QString& source) {
      const auto draft = rules.takeWhole(source, rules.fresh({}), prompt);
      ASSERT_TRUE(draft);
      prompt.willSayYes();
      const SaveResult saved = rules.save(*draft, prompt);
      EXPECT_EQ(saved.audited, on.auditsAtOnce);
      if (!saved.audited) audited(saved.number);
    };
    const QString bought =
        audited(test::waitingDocument(families::purchaseReceipt, u"2021-05-01"_qs, {{"j_sfje", 50.0}}, {{"A", 10, 5}}));
    EXPECT_EQ(balanceOf("A"), on.putaway ? "0 10 5" : "10 10 5");
    if (on.putaway) move(partial::putawayRules(), bought);
    const QString sold = sell(on.momentOfSale ? "2021-05-02 10:11:12" : "2021-05-02", {{"A", 4, 9}}, 36);
    EXPECT_EQ(balanceOf("A"), on.issue ? "10 6 5" : "6 6 5");
    if (on.issue) move(partial::issueRules(), sold);
    EXPECT_EQ(balanceOf("A"), "6 6 5");
    EXPECT_EQ(stateOf(bought) + stateOf(sold).left(1), "11");
    EXPECT_EQ(cash(), -14);
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    // Back in the order in which nothing is short: what left the shelf, then what had come onto it.
    const auto cancelAll = [&](const DocumentFamily& family) {
      for (const Row each : openSelect(compose("select {} as djh from {}", {family.number, family.head})))
        EXPECT_TRUE(cancel(each.text("djh")));
    };
    cancelAll(families::issue);
    EXPECT_EQ(cancel(sold), !on.issue);  // its issue waits still
    cancelAll(families::putaway);
    EXPECT_EQ(test::brokenInvariants(), QStringList());
  });
}

}  // namespace jxc::partial_movement_test
