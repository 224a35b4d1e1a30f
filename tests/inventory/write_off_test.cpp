// 报损报溢: lines at the cost of their warehouse, what a loss leaves off and asks about, and both kinds in every table.
#include "inventory/write_off.h"

#include "stock/shop.h"

namespace jxc::write_off_test {

using namespace families;
using write_off::rules;

class WriteOffTest : public test::ShopTest {
 protected:
  WriteOffTest() {
    addGoods("A", 6, "6901");
    addGoods("B", 1, "6902");  // nothing of it has ever been in the warehouse
    receive("2021-05-01", {{"A", 10, 5}});
    setParameter("cs_possk", 1);
  }
  void add(const DocumentDraft& draft, const QString& goods, double quantity, const QString& note = {}) {
    ShopTest::add(rules().of(draft.number).lines(), placeOf(draft), goods, quantity, {}, note);
  }
  QString saved(const DocumentDraft& draft) {
    prompt.willSayYes();
    return rules().save(draft, prompt).number;
  }
};

// 0.333 × 5.55 to the digits of money, or of totals where they are kept apart.
TEST_F(WriteOffTest, AmountsAreRoundedFromTheDialogAndFromThePickedList) {
  execSql("update jxc_kcsp set kc_cbj=5.55");
  setParameter("cs_cbjs", 3);
  for (const DocumentFamily* kind : {&loss, &overflow})
    for (const auto& [apart, amounts] : {std::pair(0, "1.85 1.85"), {1, "1.8 1.8"}}) {
      Transaction trial(accountDb());
      setParameter("cs_zjews", apart);
      setParameter("cs_jews", 1);
      const DocumentDraft draft = write_off::fresh(*kind, {});
      const LineRules& lines = rules().of(draft.number).lines();
      add(draft, "A", 0.333);
      PickingMemory memory;
      lines.stageGoods("A", 0.333, placeOf(draft), Lines::Draft, memory, prompt.willSayYes());
      lines.copyStaged(placeOf(draft), Lines::Draft);
      EXPECT_EQ(row(compose("select {} from {}", {kind->line.columns->total, kind->lines})), amounts) << kind->lines;
    }
}

TEST_F(WriteOffTest, ALossTakesOnlyWhatTheWarehouseKnowsAndAnOverflowEverything) {
  const auto offered = [](const DocumentDraft& d) { return goodsToPick(rules().of(d.number).lines(), placeOf(d)); };
  const DocumentDraft lost = write_off::fresh(loss, {}), found = write_off::fresh(overflow, {});
  EXPECT_EQ(offered(lost), "A");
  EXPECT_EQ(offered(found), "A B");
  EXPECT_EQ(rules().of(lost.number).lines().enterBarcode(placeOf(lost), "6902", false, prompt).refusal.text,
            "当前仓库中没有找到与该条码匹配的商品，请检查！");
  EXPECT_EQ(rules().of(found.number).lines().enterBarcode(placeOf(found), "6902", false, prompt).outcome, Scan::Added);
  EXPECT_EQ(row("select by_dj from jxc_bysp"), "1");

  // The balance of a picked goods went while the list stood open: it is left off and named.
  insertRow("jxc_kcsp", {{"g_sn", u"B"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 3.0}, {"kc_zsl", 3.0}});
  PickingMemory memory;
  const LineRules& lines = rules().of(lost.number).lines();
  for (const QString& goods : {u"A"_qs, u"B"_qs})
    lines.stageGoods(goods, 1, placeOf(lost), Lines::Draft, memory, prompt);
  execSql("delete from jxc_kcsp where g_sn='B'");
  const CopyResult copied = lines.copyStaged(placeOf(lost), Lines::Draft);
  EXPECT_EQ(copied.lines, 1);
  EXPECT_EQ(copied.leftOff, QStringList({"B 镜架B"}));
  EXPECT_EQ(row("select g_sn from jxc_bssp"), "A");
}

// Negative stock is forbidden, and still what is lost is lost: asked about on the line, at save and at audit.
TEST_F(WriteOffTest, ALossBeyondTheStockIsAskedAboutNeverRefused) {
  setParameter("cs_kc", 0);
  const DocumentDraft draft = write_off::fresh(loss, {});
  const LineRules& lines = rules().of(draft.number).lines();
  LineDraft line = lines.newLine("A", placeOf(draft), false);
  line.amounts.setQuantity(11);
  EXPECT_FALSE(lines.mayWrite(line, placeOf(draft), prompt.willSayNo().willSayYes()));
  EXPECT_TRUE(lines.mayWrite(line, placeOf(draft), prompt));
  EXPECT_EQ(prompt.questions.last(), "报损数量大于库存数量，报损后将产生负库存，继续报损吗?");
  add(draft, "A", 6);
  add(draft, "A", 6);
  const QString asked = u"该单据中至少一种商品库存不足，\r\n\r\n“A”：报损将会出现负库存，是否继续？"_qs;
  prompt.forget();
  EXPECT_FALSE(rules().save(draft, prompt.willSayNo()));
  EXPECT_EQ(prompt.questions, QStringList({asked}));
  prompt.willSayYes();
  const QString number = saved(draft);
  prompt.willSayNo();
  EXPECT_EQ(audit(number), AuditOutcome::Refused);
  EXPECT_EQ(prompt.questions.last(), asked);
  prompt.willSayYes();
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "-2 -2 5");
  EXPECT_EQ(prompt.notices, QStringList());
}

TEST_F(WriteOffTest, BothKindsInEveryTableAndOnOneWaitingList) {
  setParameter("cs_shdj", 1);
  DocumentDraft draft = write_off::fresh(loss, {});
  draft.note = u"盘点发现"_qs;
  add(draft, "A", 2, u"割边损坏"_qs);
  const QString lost = saved(draft);
  EXPECT_EQ(prompt.questions.last(), "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以取消审核！");
  EXPECT_EQ(row("select bs_status,bs_checker,bs_chkrq,u_sn,bs_note,a_name,ck_sn from jxc_bsd where gl_djh=?", lost),
            "1 admin 2021-05-03 100001 盘点发现 admin 100001");
  draft = write_off::fresh(overflow, {});
  add(draft, "A", 1);
  add(draft, "B", 3, u"赠品"_qs);
  const QString found = saved(draft);
  const char* const ledger =
      "select gl_flag,g_sn,gl_sl,gl_dj,gl_zje,gl_je,gl_dzl,ghs_sn,ghs_name,gl_sysl,gl_bz,gl_note,gl_taxdj from "
      "jxc_goodslist where gl_djh=? order by id";
  EXPECT_EQ(row(ledger, lost), "bs A -2 5 -10 -10 1  商品报损 2 割边损坏 盘点发现 5");
  EXPECT_EQ(row(ledger, found), "by A 1 5 5 5 1  商品报溢 1   5 by B 3 1 3 3 1  商品报溢 3 赠品  1");
  EXPECT_EQ(balanceOf("A"), "9 9 5");
  EXPECT_EQ(balanceOf("B"), "3 3 1");
  EXPECT_EQ(row("select g_kc from jxc_goods where g_sn in ('A','B') order by g_sn"), "9 3");
  EXPECT_EQ(row("select js_sl,js_zje from jxc_kcjs where js_rq='2021-05' and ck_sn='100001'"), "12 48");
  EXPECT_EQ(row("select gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,fy_flag,de_sn,fy_kmmc,fy_chk from jxc_yyfy "
                "order by id"),
            lost + " 2021-05-03 费用 -10 100001 报损单" + lost + "成本差额 admin 费用 1 100001 现金 1 " + found +
                " 2021-05-03 收入 8 100001 报溢单" + found + "成本差额 admin 收入 2 100001 现金 1");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(lastLog(), "增加已审核商品报溢单" + found + "，共2种商品");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_TRUE(cancelOverflow(found, prompt.willSayYes().willSayYes()));
  EXPECT_TRUE(cancelLoss(lost, prompt));
  const RowSet list = rules().waiting({});
  ASSERT_EQ(list.rowCount(), 2);
  EXPECT_EQ(list[0].text("djlx") + list[0].text("gl_djh"), "报溢单" + found);
  EXPECT_EQ(list[1].text("djlx") + list[1].text("bs_note"), "报损单盘点发现");
  EXPECT_EQ(rules().waiting({.key = u"盘点"_qs, .newestFirst = false}).rowCount(), 1);
  EXPECT_EQ(openSelect(rules().waitingLines(found))[1].text("bs_note"), "赠品");
}

}  // namespace jxc::write_off_test
