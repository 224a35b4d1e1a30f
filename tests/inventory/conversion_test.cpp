// Split and bundle from the first choice to the audit, with rows worked out by hand.
#include "inventory/conversions.h"
#include "output/paper.h"
#include "output/printed_documents.h"

namespace jxc::conversion_test {

constexpr const char* kSaveSplit =
    "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的拆分单，可以在“待审核拆\r\n\r\n分单”面板中，"
    "进行修改及审核操作！";

class ConversionTest : public test::PaperTest {
 protected:
  ConversionTest() {
    setParameter("cs_kc", 0);
    addGoods("BOX", 40, "690");
    addGoods("FRAME", 25, "691");
    addGoods("CASE", 10, "692");
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    receive("2021-05-01", {{"BOX", 10, 40}, {"FRAME", 3, 25}});
  }
  /// The first step done: the whole stands among the lines.
  ConversionDraft begun(const ConversionRules& rules, const QString& goods, double quantity) {
    ConversionDraft draft = rules.fresh({});
    draft.goods = goods;
    draft.quantity = quantity;
    draft.number = rules.keepWhole(draft);
    return draft;
  }
  LinePlace placeOf(const ConversionDraft& draft, const QString& warehouse = test::mainWarehouse) {
    return {.number = draft.number, .date = draft.date, .warehouse = warehouse};
  }
  std::int64_t addPart(const ConversionRules& rules, const LinePlace& place, const QString& goods, double quantity,
                       std::optional<double> price = {}) {
    LineDraft line = rules.lines().newLine(goods, place, false);
    line.amounts.setQuantity(quantity);
    if (price) line.amounts.setPrice(*price);
    if (!rules.lines().mayWrite(line, place, prompt)) return 0;
    return rules.lines().addLine(Lines::Draft, place, line, prompt).id;
  }
  QString rowsOf(const RowSet& rows, std::initializer_list<std::string_view> columns) {
    return test::textsOf(rows, columns).join(u" | "_qs);
  }
  QString stock(const QString& goods) {
    return row("select ck_sn,kc_sl,kc_cbj from jxc_kcsp where g_sn=? order by ck_sn", goods);
  }
};

TEST_F(ConversionTest, SplitTakesAWholeApartIntoTwoWarehouses) {
  const ConversionRules& rules = conversions::split();
  ConversionDraft draft = begun(rules, "BOX", 2);
  ConversionFigures figures = rules.figures(draft);
  EXPECT_EQ(figures.stock, 10);
  EXPECT_EQ(figures.cost, 40);
  EXPECT_EQ(figures.value, 80);
  EXPECT_NE(addPart(rules, placeOf(draft), "FRAME", 2, 27), 0);
  EXPECT_NE(addPart(rules, placeOf(draft, "100002"), "CASE", 2, 8), 0);
  figures = rules.figures(draft);
  EXPECT_EQ(figures.parts, 70);
  EXPECT_EQ(figures.difference(), -10);
  EXPECT_TRUE(rules.hasParts(draft, prompt));
  EXPECT_EQ(rowsOf(rules.preview(draft),
                   {"g_sn", "ck_name", "tmp_cksl", "tmp_ckje", "tmp_rksl", "tmp_rkje", "tmp_currkc", "tmp_kc"}),
            "BOX 主仓库 2 80   10 8 | FRAME 主仓库   2 54 3 5 | CASE 分店   2 16 0 2");

  report::Report paper = draftDocumentReport(families::split, draft, figures);
  EXPECT_EQ(paper.variable(u"gName") + paper.variable(u"cfSl") + paper.variable(u"cfZje"), "'镜架BOX''2''80.00'");
  EXPECT_EQ(rowsOf(printLines(draft.number, u"CF", LineScope::OwnDraft), {"g_sn"}), "FRAME | CASE");

  draft.note = QStringLiteral("促销拆套");
  prompt.willSayYes();
  const SaveResult saved = rules.save(draft, prompt);
  ASSERT_TRUE(saved);
  EXPECT_EQ(prompt.questions.last(), kSaveSplit);
  EXPECT_EQ(lastLog(), "增加未审核拆分单" + saved.number + "，共2种商品");
  EXPECT_EQ(
      row("select ck_sn,g_sn,cf_sl,cf_cbj,cf_status,u_sn,a_name,cf_note from jxc_cfd where gl_djh=?", saved.number),
      "100001 BOX 2 40 0 100001 admin 促销拆套");
  EXPECT_EQ(row("select g_sn,cf_sl,cf_dj,cf_zje,ck_sn from jxc_cfsp where gl_djh=? order by id", saved.number),
            "FRAME 2 27 54 100001 CASE 2 8 16 100002");
  EXPECT_LT(conversions::both().waiting({.without = {"cf_cbj"}}).columnIndex("cf_cbj"), 0);
  EXPECT_EQ(rowsOf(conversions::both().waiting({}), {"djlx", "gl_djh", "whole_name", "cf_sl", "cf_cbj", "ck_name"}),
            "拆分 " + saved.number + " 镜架BOX 2 40 主仓库");
  EXPECT_EQ(rowsOf(openSelect(conversions::both().waitingLines(saved.number)), {"g_sn", "line_ck", "cf_sl"}),
            "FRAME 主仓库 2 | CASE 分店 2");

  EXPECT_EQ(audit(saved.number), AuditOutcome::Audited);
  EXPECT_EQ(
      row("select g_sn,ck_sn,gl_sl,gl_dj,gl_je,ghs_name from jxc_goodslist where gl_djh=? order by id", saved.number),
      "BOX 100001 -2 40 -80 被拆分出库 FRAME 100001 2 27 54 拆分入库 CASE 100002 2 8 16 拆分入库");
  EXPECT_EQ(row("select fy_lx,fy_je,fy_flag from jxc_yyfy where gl_djh=?", saved.number), "费用 -10 1");
  EXPECT_EQ(stock("BOX"), "100001 8 40");
  EXPECT_EQ(stock("FRAME"), "100001 5 25.8");  // (3 × 25 + 2 × 27) / 5
  EXPECT_EQ(stock("CASE"), "100002 2 8");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ConversionTest, BundleCostsWhatGoesIntoIt) {
  const ConversionRules& rules = conversions::bundle();
  receive("2021-05-02", {{"CASE", 10, 10.0 / 3}});
  const ConversionDraft draft = begun(rules, "BOX", 3);
  EXPECT_NE(addPart(rules, placeOf(draft), "FRAME", 1), 0);
  EXPECT_EQ(unitCostOf(25, 0), 25);
  EXPECT_EQ(rules.figures(draft).cost, 8.333333);
  EXPECT_EQ(addPart(rules, placeOf(draft), "FRAME", 4), 0);
  EXPECT_EQ(addPart(rules, placeOf(draft, "100002"), "FRAME", 1), 0);
  EXPECT_EQ(prompt.notices, QStringList({"被捆绑商品的数量不能大于库存数量！", "被捆绑商品的数量不能大于库存数量！"}));
  EXPECT_NE(addPart(rules, placeOf(draft), "CASE", 3), 0);
  EXPECT_EQ(rowsOf(rules.preview(draft), {"g_sn", "tmp_cksl", "tmp_rksl", "tmp_rkje", "tmp_currkc", "tmp_kc"}),
            "BOX  3 34.99 10 13 | FRAME 1   3 2 | CASE 3   10 7");

  // On two lines more of it than there is: no line alone, but the bundle.
  const std::int64_t second = addPart(rules, placeOf(draft), "FRAME", 3);
  EXPECT_FALSE(rules.hasParts(draft, prompt));
  deleteDraftLine(families::bundle, second);
  EXPECT_TRUE(rules.hasParts(draft, prompt));
  ConversionDraft none = draft;
  none.quantity = 0;
  EXPECT_EQ(prompt.refused(rules.save(none, prompt)), "捆绑数量必须大于0！");

  const QString number = rules.save(draft, prompt.willSayYes()).number;
  EXPECT_EQ(row("select g_sn,kb_sl,kb_cbj from jxc_kbd where gl_djh=?", number), "BOX 3 11.663333");
  // A part of the waiting document changes: what is made of it costs something else.
  const std::int64_t frame =
      lookupValue("select id from jxc_kbsp where gl_djh=? and g_sn='FRAME'", number).toLongLong();
  rules.lines().setChange("2", u"sl", Lines::Waiting, frame, prompt);
  EXPECT_EQ(row("select kb_cbj from jxc_kbd where gl_djh=?", number), "19.996667");
  jxc::deleteWaitingLine(families::bundle, number,
                         lookupValue("select id from jxc_kbsp where g_sn='CASE'").toLongLong(), prompt);
  EXPECT_EQ(row("select kb_cbj from jxc_kbd where gl_djh=?", number), "16.666667");  // 50 over 3
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(stock("FRAME"), "100001 1 25");
  EXPECT_EQ(row("select gl_sl,gl_dj from jxc_goodslist where gl_djh=? order by id", number), "3 16.666667 -2 25");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ConversionTest, WhatIsMissingIsToldInTheOrderOfTheSteps) {
  const ConversionRules& rules = conversions::split();
  ConversionDraft draft = rules.fresh({});
  draft.quantity = 0;
  draft.warehouse = QString();
  const auto next = [&] {
    prompt.forget();
    rules.hasParts(draft, prompt);
    return prompt.lastNotice();
  };
  EXPECT_EQ(next(), "请选择仓库！");
  draft.warehouse = test::mainWarehouse;
  EXPECT_EQ(next(), "被拆分商品不存在，请选择被拆分商品！");
  draft.goods = "BOX";
  EXPECT_EQ(next(), "拆分数量必须大于0！");
  draft.quantity = 11;
  setParameter("cs_kc", 1);  // stock may fall below zero, but not by this step
  EXPECT_EQ(next(), "拆分数量不允许大于库存数量！");
  draft.quantity = 10;
  EXPECT_EQ(next(), "请添加拆分成的商品！");
  draft.number = rules.keepWhole(draft);
  EXPECT_EQ(addPart(rules, placeOf(draft), "FRAME", 0), 0);
  EXPECT_EQ(prompt.lastNotice(), "数量不能为0！");
  EXPECT_EQ(prompt.refused(rules.save(draft, prompt)), "单据中没有业务发生，不能保存！");
  EXPECT_NE(addPart(rules, placeOf(draft), "FRAME", 1), 0);
  EXPECT_EQ(next(), "");
  draft.salesperson = QString();
  EXPECT_EQ(prompt.refused(rules.save(draft, prompt)), "请选择经办人！");
}

TEST_F(ConversionTest, AGoodsDoesNotBecomeItself) {
  const ConversionRules& rules = conversions::split();
  ConversionDraft draft = begun(rules, "BOX", 1);
  PickingMemory memory;
  EXPECT_EQ(addPart(rules, placeOf(draft, "100002"), "BOX", 1), 0);
  EXPECT_FALSE(rules.lines().mayStage("BOX", placeOf(draft), Lines::Draft, memory, prompt));
  EXPECT_EQ(prompt.notices, QStringList({"商品不能拆分成自己！", "商品不能拆分成自己！"}));
  EXPECT_EQ(rules.lines().enterBarcode(placeOf(draft), "690", false, prompt).refusal.text,
            QString("商品不能拆分成自己！"));
  EXPECT_EQ(rules.lines().enterBarcode(placeOf(draft), "691", false, prompt).outcome, Scan::Added);
  // The whole is chosen anew, and stands among its parts already.
  draft.goods = "FRAME";
  draft.number = rules.keepWhole(draft);
  EXPECT_FALSE(rules.hasParts(draft, prompt));
  EXPECT_FALSE(rules.save(draft, prompt));
  EXPECT_EQ(prompt.notices.size(), 4);
}

TEST_F(ConversionTest, StockThatGoesBeforeSaveOrAuditIsAskedAboutOrRefused) {
  const ConversionRules& rules = conversions::split();
  const ConversionDraft draft = begun(rules, "BOX", 8);
  addPart(rules, placeOf(draft), "FRAME", 8, 40);
  EXPECT_TRUE(rules.hasParts(draft, prompt));
  const QString sale = sell("2021-05-03", {{"BOX", 5, 60}});
  const QString refusal = "该单据中至少一种商品库存不足，\r\n\r\n“BOX”：不能拆分！";
  EXPECT_EQ(prompt.refused(rules.save(draft, prompt)), refusal);
  setParameter("cs_kc", 1);
  const QString number = rules.save(draft, prompt.willSayYes().willSayYes()).number;
  EXPECT_EQ(prompt.questions.mid(prompt.questions.size() - 2),
            QStringList({"该单据中至少一种商品库存不足，\r\n\r\n“BOX”：拆分将会出现负库存，是否继续？", kSaveSplit}));
  setParameter("cs_kc", 0);
  EXPECT_EQ(audit(number), AuditOutcome::Refused);
  EXPECT_EQ(prompt.lastNotice(), refusal);
  // Of a bundle each part is tested in its own warehouse.
  const ConversionRules& bundles = conversions::bundle();
  const ConversionDraft made = begun(bundles, "CASE", 1);
  addPart(bundles, placeOf(made), "FRAME", 3);
  execSql("update jxc_kbsp set ck_sn='100002' where g_sn='FRAME'");
  EXPECT_EQ(prompt.refused(bundles.save(made, prompt)), "该单据中至少一种商品库存不足，\r\n\r\n“FRAME”：不能捆绑！");
}

TEST_F(ConversionTest, ADraftComesBackWithItsWholeAndGoesWithIt) {
  const ConversionRules& rules = conversions::split();
  ConversionDraft draft = begun(rules, "BOX", 2);
  addPart(rules, placeOf(draft), "FRAME", 1);
  draft.number = redateDraft(families::split, draft.number, "2021-05-02");
  EXPECT_EQ(unsavedDraft(families::split), draft.number);
  EXPECT_EQ(unsavedDraft(families::bundle), "");
  EXPECT_EQ(rowsOf(openSelect(rules.draftLines(draft.number)), {"g_sn"}), "FRAME");
  ConversionDraft back = rules.fresh({});
  back.number = draft.number;
  ASSERT_TRUE(rules.recallWhole(back));
  EXPECT_EQ(back.goods, "BOX");
  EXPECT_EQ(back.quantity, 2);
  EXPECT_EQ(back.warehouse, test::mainWarehouse);

  // Another operator under the same number neither sees nor takes it.
  becomeOperator(u"李四"_qs, u"100009"_qs, u"管理员"_qs);
  ConversionDraft others = rules.fresh({});
  others.number = draft.number;
  EXPECT_FALSE(rules.recallWhole(others));
  others.goods = "FRAME";
  EXPECT_NE(rules.keepWhole(others), draft.number);
  becomeOperator(u"admin"_qs, u"100001"_qs, u"管理员"_qs);
  prompt.willAnswer(Answer::No);
  EXPECT_EQ(leaveDraft(families::split, draft.number, prompt), Answer::No);
  EXPECT_FALSE(rules.recallWhole(back));
}

}  // namespace jxc::conversion_test
