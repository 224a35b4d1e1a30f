// 库存调拨: price and amount by parameter, stock, refusals, and a document's whole life in every table.
#include "inventory/transfer.h"

#include "core/text.h"
#include "masterdata/lens_sheet.h"
#include "stock/line_import.h"
#include "stock/shop.h"
#include "stock/what_if.h"

namespace jxc::transfer_test {

using transfer::rules;
using transfer::TransferDraft;

class TransferTest : public test::ShopTest {
 protected:
  TransferTest() {
    addGoods("A", 6, "6901");  // preset purchase price 6, bought at 5
    addGoods("B", 2, "6902");
    execSql("update jxc_goods set g_sj=8.335 where g_sn='A'");
    execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn) values ('100002','分店','')");
    receive("2021-05-01", {{"A", 10, 5}});
    setParameter("cs_possk", 1);
  }
  const LineRules& lines() { return rules().lines(); }
  TransferDraft fresh() {
    TransferDraft draft = rules().fresh({});
    draft.into = u"100002"_qs;
    return draft;
  }
  std::int64_t add(const DocumentDraft& draft, const QString& goods, double quantity) {
    return ShopTest::add(lines(), placeOf(draft), goods, quantity).id;
  }
  QString line(std::int64_t id) { return row("select db_sl,db_dj,db_sj,db_zje from jxc_dbsp where id=?", id); }
};

// Sale price 8.335, preset purchase price 6, cost 5 in the sending warehouse: three pieces by each way in.
TEST_F(TransferTest, PriceAndAmountFollowTheParameterWhateverWayALineComesIn) {
  const struct {
    int price, apart;
    const char* line;
    double intoLedger;
  } cases[] = {{0, 0, "3 5 8.335 15", 15},
               {1, 0, "3 5 8.335 25.005", 15},
               {1, 1, "3 5 8.335 25", 15},
               {2, 0, "3 6 8.335 18", 18}};
  for (const auto& each : cases) {
    SCOPED_TRACE(::testing::Message() << each.price << ' ' << each.apart);
    Transaction trial(accountDb());
    setParameter("cs_dbdj", each.price);
    setParameter("cs_zjews", each.apart);
    setParameter("cs_jews", 1);
    TransferDraft draft = fresh();
    const LinePlace place = placeOf(draft);
    const std::int64_t typed = add(draft, "A", 3);
    EXPECT_EQ(line(typed), each.line);
    lines().setChange("1", u"sl", Lines::Draft, typed, prompt);
    lines().setChange("3", u"sl", Lines::Draft, typed, prompt);
    EXPECT_EQ(line(typed), each.line);
    deleteDraftLine(families::transfer, typed);
    PickingMemory memory;
    const std::int64_t staged = lines().stageGoods("A", 1, place, Lines::Draft, memory, prompt);
    LineDraft changed = *lines().loadLine(Lines::Staging, staged);
    changed.amounts.setQuantity(3);
    lines().changeLine(Lines::Staging, staged, place, changed, prompt);
    EXPECT_EQ(lines().copyStaged(place, Lines::Draft).lines, 1);
    EXPECT_EQ(row("select db_sl,db_dj,db_sj,db_zje from jxc_dbsp"), each.line);
    discardDraft(families::transfer, draft.number);
    std::int64_t scanned = 0;
    for (int scan = 0; scan < 3; ++scan)
      scanned = lines().enterBarcode(place, "6901", false, prompt).id;
    EXPECT_EQ(line(scanned), each.line);
    const QString number = audited(rules().save(draft, prompt.willSayYes()).number);
    EXPECT_EQ(lookupNumber("select gl_zje from jxc_goodslist where gl_djh=? and gl_sl>0", number), each.intoLedger);
    EXPECT_EQ(lookupNumber("select kc_cbj from jxc_kcsp where ck_sn='100002' and g_sn='A'"), each.intoLedger / 3);
  }
}

TEST_F(TransferTest, ALineBeyondTheStockIsRefusedOrAskedAboutOnceABatch) {
  TransferDraft draft = fresh();
  const LinePlace place = placeOf(draft);
  const QString refusal = u"调拨数量不能大于库存数量，重新输入！"_qs;
  setParameter("cs_kc", 0);
  LineDraft typed = lines().newLine("A", place, false);
  for (const double quantity : {0.0, -1.0, 11.0, 10.0}) {
    prompt.forget();
    typed.amounts.setQuantity(quantity);
    EXPECT_EQ(lines().mayWrite(typed, place, prompt), quantity == 10);
    EXPECT_EQ(prompt.lastNotice(), quantity > 10 ? refusal : quantity > 0 ? QString() : "数量必须大于0，重新输入！");
  }
  // The tenth piece is there, the eleventh not, whether it is typed into the cell or scanned.
  const std::int64_t id = add(draft, "A", 10);
  prompt.forget();
  EXPECT_FALSE(lines().cellAllows("11", u"sl", Lines::Draft, id, place, prompt));
  EXPECT_EQ(lines().enterBarcode(place, "6901", false, prompt).id, 0);
  EXPECT_EQ(prompt.notices, QStringList({refusal, refusal}));
  // A warehouse sends only what it has; where stock may fall below zero, what it knows.
  EXPECT_EQ(lines().enterBarcode(place, "6902", false, prompt).refusal.text,
            "当前仓库中没有找到与该条码匹配的商品，请检查！");
  insertRow("jxc_kcsp", {{"g_sn", u"B"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 0.0}, {"kc_zsl", 0.0}});
  EXPECT_TRUE(lines().enterBarcode(place, "6902", false, prompt).refusal);
  setParameter("cs_kc", 1);
  EXPECT_EQ(lines().enterBarcode(place, "6902", false, prompt.willSayYes()).outcome, Scan::Added);
  EXPECT_EQ(lines().enterBarcode(place, "6902", true, prompt).outcome, Scan::AlreadyThere);

  discardDraft(families::transfer, draft.number);
  prompt.forget();
  PickingMemory memory;
  prompt.willSayNo();  // of two goods that go short the first is asked about
  EXPECT_EQ(lines().stageGoods("A", 11, place, Lines::Draft, memory, prompt), 0);
  EXPECT_EQ(lines().stageGoods("B", 11, place, Lines::Draft, memory, prompt), 0);
  EXPECT_EQ(prompt.questions, QStringList({"调拨数量不能大于库存数量，调拨后将产生负库存，继续调拨吗?"}));
}

TEST_F(TransferTest, SaveRefusesInOrderAndTestsTheSumOfAGoods) {
  TransferDraft draft = fresh();
  const auto expectRefused = [&](const char* text, const TransferDraft& wrong) {
    prompt.forget();
    EXPECT_EQ(prompt.refused(rules().save(wrong, prompt)), text);
  };
  TransferDraft wrong;
  wrong.number = draft.number;
  wrong.date = draft.date;
  expectRefused("没有调拨商品，不能保存！", wrong);
  add(draft, "A", 6);
  expectRefused("请选择经办人！", wrong);
  wrong.salesperson = draft.salesperson;
  expectRefused("请选择调出仓库！", wrong);
  wrong.warehouse = draft.warehouse;
  expectRefused("请选择调入仓库！", wrong);
  wrong.into = draft.warehouse;
  expectRefused("调出仓库与调入仓库不能相同！", wrong);
  add(draft, "A", 5);
  setParameter("cs_kc", 0);
  expectRefused("该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！", draft);
  setParameter("cs_kc", 1);
  EXPECT_FALSE(rules().save(draft, prompt.willSayNo()));
  EXPECT_EQ(prompt.questions.last(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：出库将会出现负库存，是否继续？");
  EXPECT_EQ(lookupNumber("select count(*) from jxc_kcdbd"), 0);
}

// Four of ten pieces go at 6 where they cost 5: the sending warehouse keeps its cost, the receiving one takes 6, and
// the preview tells that 4 yuan come into being.
TEST_F(TransferTest, AWholeLifeInEveryTable) {
  setParameter("cs_dbdj", 2);
  TransferDraft draft = fresh();
  draft.note = u"补货,急"_qs;
  add(draft, "A", 4);
  prompt.willSayYes();
  QString number = rules().save(draft, prompt).number;
  EXPECT_EQ(prompt.questions.last(),
            "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的调拨单，可以在“待审核调\r\n\r\n拨单”"
            "面板中，进行修改及审核操作！");
  const auto head = [&] {
    return row(
        "select ck_out,ck_in,db_dbrq,db_status,db_checker,db_chkrq,u_sn,db_note,a_name from jxc_kcdbd where "
        "gl_djh=?",
        number);
  };
  EXPECT_EQ(head(), "100001 100002 2021-05-03 0   100001 补货，急 admin");
  EXPECT_EQ(lastLog(), "增加未审核库存调拨单" + number + "，共1种商品");
  const RowSet waiting = rules().waiting({});
  ASSERT_EQ(waiting.rowCount(), 1);
  EXPECT_EQ(waiting.front().text("into_name"), "分店");

  number = changeWaitingHead(families::transfer, number, {.date = u"2021-05-02"_qs}, prompt);
  EXPECT_EQ(head(), "100001 100002 2021-05-02 0   100001 补货，急 admin");

  const WhatIf preview = whatIf(
      number, [&](Prompt& agreeing) { return checkDj(families::transfer, number, agreeing) == AuditOutcome::Audited; });
  QStringList told;
  for (const Impact& impact : preview.impacts)
    if (impact.kind == u"库存金额" || impact.kind == u"调拨产生的价值")
      told << impact.kind + u' ' + impact.before + u' ' + impact.after;
  EXPECT_EQ(told, QStringList({"库存金额 50 30", "库存金额 0 24", "调拨产生的价值 50 54"}));

  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(head(), "100001 100002 2021-05-02 1 admin 2021-05-03 100001 补货，急 admin");
  EXPECT_EQ(row("select db_sl,db_dj,db_zje from jxc_dbsp where gl_djh=?", number), "4 6 24");
  EXPECT_EQ(row("select gl_flag,ck_sn,gl_sl,gl_dj,gl_zje,gl_je,gl_dzl,ghs_sn,ghs_name,gl_sysl,gl_taxdj,gl_tax from "
                "jxc_goodslist where gl_djh=? order by id",
                number),
            "db 100002 4 6 24 24 1  调拨入库 4 6 0 db 100001 -4 6 -24 -24 1  调拨出库 4 6 0");
  EXPECT_EQ(row("select ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn='A' order by ck_sn"),
            "100001 6 6 5 100002 4 4 6");
  EXPECT_EQ(row("select ck_sn,js_sl,js_zje from jxc_kcjs where js_rq='2021-05' order by ck_sn"),
            "100001 6 26 100002 4 24");
  EXPECT_EQ(row("select g_kc,g_pjjj from jxc_goods where g_sn='A'"), "10 5");
  EXPECT_EQ(lastLog(), "增加已审核库存调拨单" + number + "，共1种商品");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

// A price in a spreadsheet stands for the price that the amount goes by, and counts only for who may see cost: of
// others it is left out, whatever it is, so that nobody finds a cost by trying.
TEST_F(TransferTest, ASpreadsheetsPriceCountsForWhoMaySeeCost) {
  RowSet sheet({"商品编号", "数量", "单价"});
  for (const char* const price : {"7.5", "5"}) {
    sheet.addText("A");
    sheet.addText("2");
    sheet.addText(price);
  }
  const auto judged = [&] {
    const TransferDraft draft = fresh();
    QStringList found;
    const auto rows = judgeLines(sheet, families::transfer.import, lines(), placeOf(draft), prompt);
    for (const ImportLine& each : *rows)
      found << each.words + u' ' + numberText(each.draft.amounts.price()) + u' ' + numberText(each.draft.retail) +
                   u' ' + numberText(each.draft.amounts.total());
    return found;
  };
  EXPECT_EQ(judged(), QStringList({"可顺利导入 7.5 8.335 15", "可顺利导入 5 8.335 10"}));
  setParameter("cs_dbdj", 1);
  EXPECT_EQ(judged(), QStringList({"可顺利导入 5 7.5 15", "可顺利导入 5 5 10"}));
  session().canSeeCost = false;
  const QString left = u"单价未采用（没有查看成本的权限） 5 8.335 16.67"_qs;
  EXPECT_EQ(judged(), QStringList({left, left}));
}

// A long sheet tells how far it is and can be stopped while it is read and while it is written: nothing is left then.
TEST_F(TransferTest, ALongSpreadsheetIsStopped) {
  RowSet sheet({"商品编号", "数量", "单价"});
  for (int row = 0; row < 250; ++row)
    for (const char* const cell : {"A", "1", ""})
      sheet.addText(cell);
  const TransferDraft draft = fresh();
  const LinePlace place = placeOf(draft);
  std::vector<int> told;
  bool goOn = true;
  const LineProgress progress = [&](int percent) {
    told.push_back(percent);
    return goOn;
  };
  const auto judged = judgeLines(sheet, families::transfer.import, lines(), place, prompt, Lines::Draft, progress);
  ASSERT_TRUE(judged);
  EXPECT_EQ(told, std::vector<int>({39, 79, 100}));
  goOn = false;
  EXPECT_FALSE(judgeLines(sheet, families::transfer.import, lines(), place, prompt, Lines::Draft, progress));
  EXPECT_FALSE(importLines(*judged, lines(), place, Lines::Draft, prompt, progress));
  EXPECT_EQ(draftLineCount(families::transfer, draft.number), 0);
  goOn = true;
  EXPECT_EQ(importLines(*judged, lines(), place, Lines::Draft, prompt, progress)->taken, 250);
}

}  // namespace jxc::transfer_test
