// The purchase receipt: line arithmetic, grid edits, barcode, staging, balancing, audit dialog.
#include "purchasing/receipt.h"

#include "stock/shop.h"

namespace jxc::receipt_test {

using namespace receipt;

// The rules behind the screens, as a draft without a screen asks for them.
test::ScriptedPrompt& silent() {
  static test::ScriptedPrompt prompt;  // any question fails the test
  return prompt;
}
const LineRules& lineRules() {
  return rules().lines();
}
bool changeLine(Lines where, std::int64_t id, const LineDraft& draft) {
  return lineRules().changeLine(where, id, {}, draft, silent());
}
double setChange(const QString& value, QStringView field, Lines where, std::int64_t id) {
  return lineRules().setChange(value, field, where, id, silent());
}
ScanResult enterBarcode(const QString& number, const QString& date, const QString& code, bool oncePerGoods = false) {
  return lineRules().enterBarcode({.number = number, .date = date}, code, oncePerGoods, silent());
}
std::int64_t stageGoods(const QString& goods, double quantity, const QString& number, Lines target,
                        PickingMemory& memory, Prompt& prompt) {
  return lineRules().stageGoods(goods, quantity, {.number = number}, target, memory, prompt);
}
CopyResult copyStaged(const QString& number, const QString& date, Lines target) {
  return lineRules().copyStaged({.number = number, .date = date}, target);
}

QString shown(const LineAmounts& line) {
  QStringList texts;
  for (const double figure :
       {line.quantity(), line.price(), line.tax(), line.taxedPrice(), line.discount(), line.total()})
    texts << numberText(figure);
  return texts.join(u' ');
}

TEST(LineAmountsTest, InputsKeepInStep) {
  LineAmounts line(AmountRules{});
  line.setPrice(10);
  line.setQuantity(3);
  line.setTax(13);
  EXPECT_EQ(shown(line), "3 10 13 11.3 1 33.9");
  line.setTaxedPrice(22.6);
  EXPECT_EQ(shown(line), "3 20 13 22.6 1 67.8");
  line.setDiscount(0.5);
  EXPECT_EQ(shown(line), "3 20 13 22.6 0.5 33.9");
  line.setDiscount(1);
  line.setTotal(113);  // no discounts in use: the price follows
  EXPECT_EQ(shown(line), "3 33.3333333333333 13 37.6666666666667 1 113");
  const auto figures = line.settled();
  ASSERT_TRUE(figures);
  EXPECT_EQ(figures->price, 33.33);
  EXPECT_EQ(figures->taxedPrice, 37.67);
  EXPECT_NEAR(figures->net, 99.99, 1e-9);
  EXPECT_NEAR(figures->taxAmount, 13.02, 1e-9);
  EXPECT_EQ(figures->total, 113);  // as typed

  line.setTax(0);
  line.setTaxedPrice(8);
  EXPECT_EQ(line.price(), 8);
}

TEST(LineAmountsTest, TotalUnderDiscountsTotalAloneAndNothing) {
  LineAmounts discounted(AmountRules{.discountInUse = true});
  discounted.setQuantity(4);
  discounted.setPrice(25);
  discounted.setTotal(80);
  EXPECT_EQ(shown(discounted), "4 25 0 25 0.8 80");
  discounted.setQuantity(0);
  discounted.setTotal(50);  // nothing to divide by: the discount stays
  EXPECT_EQ(discounted.discount(), 0.8);
  EXPECT_FALSE(discounted.settled());

  LineAmounts whole(AmountRules{.discountInUse = true});
  whole.setQuantity(3);
  whole.setTax(13);
  whole.setTotal(100);
  const auto figures = whole.settled();
  ASSERT_TRUE(figures);
  EXPECT_EQ(figures->price, 33.33);
  EXPECT_EQ(figures->taxedPrice, 33.33);
  EXPECT_EQ(figures->tax, 0);
  EXPECT_EQ(figures->total, 100);

  LineAmounts rounded(AmountRules{.roundTotals = true, .totalDigits = 0});
  rounded.setPrice(1.7);
  rounded.setQuantity(1.5);
  EXPECT_EQ(rounded.total(), 3);
  EXPECT_EQ(rounded.settled()->net, 3);
}

class ReceiptTest : public test::ShopTest {
 protected:
  ReceiptTest() {
    addGoods("A", 4, "6901");
    addGoods("B", 9);
    addGoods("C", 1);
  }
  QString line(std::int64_t id) {
    return row("select jh_sl,jh_dj,jh_tax,jh_taxdj,jh_dzl,jh_je,jh_taxje,jh_zje,jh_rksl from jxc_jhsp where id=?", id);
  }
  QString head(const QString& number, const char* fields = "j_yfje,j_sfje,j_yhje") {
    return row("select " + std::string(fields) + " from jxc_jhd where j_sn=?", number);
  }
  std::int64_t firstLine(const QString& number) { return openSelect(rules().draftLines(number)).front().integer("id"); }
};

TEST_F(ReceiptTest, PriceOfANewLineByParameter) {
  execSql("update jxc_goods set g_pjjj=1.005,g_scjj=2,g_jj=3 where g_sn='A'");
  setParameter("cs_tax", 13);
  EXPECT_EQ(newLine("A").amounts.price(), 1.01);
  EXPECT_EQ(newLine("A").amounts.tax(), 13);
  EXPECT_EQ(lineRules().newLine("A", {}, true).amounts.tax(), 0);
  setParameter("cs_cgdj", 1);
  EXPECT_EQ(defaultPrice("A"), 2);
  setParameter("cs_cgdj", 2);
  EXPECT_EQ(defaultPrice("A"), 3);
}

TEST_F(ReceiptTest, AnotherOperatorsLinesUnderTheProposedNumberAreNotInTheTotal) {
  const QString number = newReceipt({}).number;
  LineDraft line = newLine("A");
  line.amounts.setPrice(10);
  line.amounts.setQuantity(2);
  const QString date = u"2021-05-03"_qs;
  EXPECT_EQ(addLine(Lines::Draft, number, date, line).number, number);
  const QString own = std::exchange(session().a_name, u"阿丽"_qs);
  EXPECT_EQ(newReceipt({}).number, number);  // nothing is saved yet: both are proposed the same
  EXPECT_EQ(payable(number), 0);
  const QString hers = addLine(Lines::Draft, number, date, line).number;
  EXPECT_NE(hers, number);
  EXPECT_EQ(payable(hers), 20);
  session().a_name = own;
  EXPECT_EQ(payable(number), 20);
}

TEST_F(ReceiptTest, GridEditsReplaceWhatCannotBe) {
  setParameter("cs_cbjs", 3);
  const ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 2, 10}});
  const auto id = firstLine(draft.number);
  EXPECT_EQ(setChange("13", u"tax", Lines::Draft, id), 13);
  EXPECT_EQ(line(id), "2 10 13 11.3 1 20 2.6 22.6 2");
  setChange("0.333", u"sl", Lines::Draft, id);
  EXPECT_EQ(line(id), "0.333 10 13 11.3 1 3.33 0.43 3.76 0.333");
  EXPECT_EQ(setChange("-4", u"sl", Lines::Draft, id), 1);
  setChange("0.8", u"dzl", Lines::Draft, id);
  EXPECT_EQ(line(id), "1 10 13 11.3 0.8 8 1.04 9.04 1");
  EXPECT_EQ(setChange("", u"dzl", Lines::Draft, id), 1);
  setChange("22.6", u"taxdj", Lines::Draft, id);
  EXPECT_EQ(line(id), "1 20 13 22.6 1 20 2.6 22.6 1");
  setChange("nan", u"dj", Lines::Draft, id);
  EXPECT_EQ(line(id), "1 0 13 0 1 0 0 0 1");
  setParameter("cs_sprk", 1);
  setChange("5", u"sl", Lines::Draft, id);
  EXPECT_EQ(line(id).right(2), " 0");  // goods go to the shelf by a putaway

  PickingMemory memory;
  const auto staged = stageGoods("B", 2, draft.number, Lines::Draft, memory, prompt);
  setChange("10", u"dj", Lines::Staging, staged);
  EXPECT_EQ(lookupNumber("select ts_zje from jxc_tempspxf where id=?", staged), 20);
}

TEST_F(ReceiptTest, BarcodesAddUpByParameterAndOncePerGoodsComesFirst) {
  ReceiptDraft draft = newReceipt();
  EXPECT_EQ(enterBarcode(draft.number, draft.date, "999").outcome, Scan::NotFound);
  const ScanResult first = enterBarcode(draft.number, draft.date, "6901");
  EXPECT_EQ(first.outcome, Scan::Added);
  EXPECT_EQ(line(first.id), "1 4 0 4 1 4 0 4 1");
  EXPECT_EQ(enterBarcode(draft.number, draft.date, "6901").outcome, Scan::Added);  // a line of its own
  setParameter("cs_possk", 1);
  const ScanResult third = enterBarcode(draft.number, draft.date, "6901");
  EXPECT_EQ(third.outcome, Scan::Increased);
  EXPECT_EQ(line(third.id), "2 4 0 4 1 8 0 8 2");
  const ScanResult refusedScan = enterBarcode(draft.number, draft.date, "6901", true);
  EXPECT_EQ(refusedScan.outcome, Scan::AlreadyThere);
  EXPECT_EQ(refusedScan.refusal.text, "该商品已添加，不能重复添加，\r\n\r\n可以修改已添加商品的数量！\r\n\r\n商品：A " +
                                          lookupValue("select g_name from jxc_goods where g_sn='A'"));
  EXPECT_EQ(payable(draft.number), 12);

  // Another operator saved under the number meanwhile: this draft moves on.
  insertRow("jxc_jhsp", {{"j_sn", draft.number}, {"a_name", u"小王"}, {"g_sn", u"A"}});
  const ScanResult moved = enterBarcode(draft.number, draft.date, "6901");
  EXPECT_EQ(moved.number, "CJ21050310002");
  EXPECT_EQ(openSelect(rules().draftLines(moved.number)).rowCount(), 2);
}

TEST_F(ReceiptTest, StagingRemembersANoAndCopiesInOrder) {
  const ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 1, 4}});
  PickingMemory memory;
  EXPECT_NE(stageGoods("C", 3, draft.number, Lines::Draft, memory, prompt), 0);
  prompt.willSayYes();
  EXPECT_NE(stageGoods("A", 2, draft.number, Lines::Draft, memory, prompt), 0);
  EXPECT_EQ(prompt.questions.last(), "该商品已添加，需要重复添加吗？");
  EXPECT_EQ(stageGoods("C", 1, draft.number, Lines::Draft, memory, prompt.willSayNo()), 0);
  EXPECT_EQ(stageGoods("A", 1, draft.number, Lines::Draft, memory, prompt), 0);  // not asked again
  insertRow("jxc_tempspxf", {{"g_sn", u""}, {"a_name", session().a_name}});
  insertRow("jxc_tempspxf", {{"g_sn", u"B"}, {"a_name", u"小王"}, {"ts_sl", 7}});
  const CopyResult copied = copyStaged(draft.number, draft.date, Lines::Draft);
  EXPECT_EQ(copied.lines, 2);
  QStringList goods;
  for (const Row row : openSelect(rules().draftLines(copied.number)))
    goods << row.text("g_sn") + u'×' + row.text("jh_sl") + u'=' + row.text("jh_zje");
  EXPECT_EQ(goods, QStringList({"A×1=4", "C×3=3", "A×2=8"}));
  EXPECT_EQ(openSelect(stagedLines()).rowCount(), 0);
  EXPECT_EQ(lookupValue("select count(*) from jxc_tempspxf"), "1");  // the other operator's
}

TEST_F(ReceiptTest, PaidLessSpreadOverTheLines) {
  setParameter("cs_xsjgts", 0);
  ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 10, 4}, {"B", 7, 9}, {"C", 0.5, 1}});
  draft.paid = 100;
  const QString number = save(draft);
  // Share 3.50/3 = 1.17; C (0.50) cannot bear it. Left 1.16: 0.39 a line, C bears it: 103.5−2.34−1.17 = 99.99.
  const QStringList lines = test::textsOf(openSelect(waitingLines(number)), {"jh_zje", "jh_dj", "jh_je"});
  EXPECT_EQ(lines, QStringList({"38.44 3.84 38.4", "61.44 8.78 61.46", "0.11 0.22 0.11"}));
  EXPECT_EQ(head(number), "99.99 99.99 0");
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(lastFigures("A"), "10 3.84 38.4");  // the cost really falls
  EXPECT_EQ(supplierOwed(), 0);

  // No line can bear its share: it ends, and what is left counts as paid.
  ReceiptDraft small = draftReceipt("2021-05-03", {{"A", 1, 1}, {"B", 1, 1}});
  small.paid = -5;
  const QString second = save(small);
  EXPECT_EQ(head(second), "2 2 0");
}

TEST_F(ReceiptTest, PutawayInUseAndStraightToStock) {
  setParameter("cs_sprk", 1);
  ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 10, 4}});
  EXPECT_EQ(line(firstLine(draft.number)).right(2), " 0");
  const QString waits = save(draft);
  EXPECT_EQ(head(waits, "j_crk,j_qk"), "0 0");
  EXPECT_EQ(audit(waits), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "0 10 4");
  draft = draftReceipt("2021-05-03", {{"A", 5, 4}});
  draft.straightToStock = true;
  const QString straight = save(draft);
  EXPECT_EQ(head(straight, "j_crk,j_qk"), "1 1");
  EXPECT_EQ(audit(straight), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "5 15 4");

  // What changes while it waits goes straight to stock as well, whatever way it comes.
  draft = draftReceipt("2021-05-03", {{"B", 1, 9}});
  draft.straightToStock = true;
  const QString changed = save(draft);
  setChange("3", u"sl", Lines::Waiting, openSelect(waitingLines(changed))[0].integer("id"));
  LineDraft more = newLine("C");
  more.amounts.setQuantity(2);
  EXPECT_TRUE(addLine(Lines::Waiting, changed, draft.date, more));
  PickingMemory memory;
  stageGoods("A", 4, changed, Lines::Waiting, memory, prompt);
  EXPECT_EQ(copyStaged(changed, draft.date, Lines::Waiting).lines, 1);
  auto opened = lineRules().loadLine(Lines::Waiting, openSelect(waitingLines(changed))[1].integer("id"));
  opened->amounts.setQuantity(6);
  EXPECT_TRUE(changeLine(Lines::Waiting, openSelect(waitingLines(changed))[1].integer("id"), *opened));
  EXPECT_EQ(audit(changed), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "9 19 4");
  EXPECT_EQ(balanceOf("B"), "3 3 9");
  EXPECT_EQ(balanceOf("C"), "6 6 1");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ReceiptTest, WaitingReceiptChangesAndTheAuditDialog) {
  ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 10, 4}});
  EXPECT_TRUE(draft.wePayFreight);  // by parameter the receiver pays
  draft.wePayFreight = false;
  draft.freight = 5;
  draft.note = "急件 (一)";
  const QString number = save(draft);
  EXPECT_EQ(head(number, "j_yffs,j_note"), "对方付运费 急件 （一）");
  LineDraft more = newLine("B");
  more.amounts.setQuantity(2);
  EXPECT_TRUE(addLine(Lines::Waiting, number, draft.date, more));
  EXPECT_EQ(head(number), "58 58 0");
  setChange("3", u"sl", Lines::Waiting, openSelect(waitingLines(number))[1].integer("id"));
  EXPECT_EQ(head(number), "67 67 0");
  auto changed = lineRules().loadLine(Lines::Waiting, openSelect(waitingLines(number))[1].integer("id"));
  ASSERT_TRUE(changed);
  changed->amounts.setQuantity(0);
  EXPECT_FALSE(changeLine(Lines::Waiting, openSelect(waitingLines(number))[1].integer("id"), *changed));
  changed->amounts.setQuantity(4);
  EXPECT_TRUE(changeLine(Lines::Waiting, openSelect(waitingLines(number))[1].integer("id"), *changed));
  EXPECT_EQ(head(number), "76 76 0");

  ASSERT_EQ(rules().waiting({.key = "急件"}).rowCount(), 1);
  EXPECT_EQ(rules().waiting({.key = "没有"}).rowCount(), 0);
  auto dialog = rules().loadForAudit(number);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->partnerName, "普通供货商");
  dialog->paid = 70;
  dialog->settlement = Settlement::AtPaidAmount;
  EXPECT_EQ(rules().audit(*dialog, prompt), AuditOutcome::Audited);
  EXPECT_EQ(head(number), "76 70 6");
  EXPECT_EQ(lookupValue("select jh_zje from jxc_jhsp where g_sn='00000000' and j_sn=?", number), "-6");
  EXPECT_EQ(cash(), -70);  // freight that the other side pays moves nothing
  EXPECT_EQ(supplierOwed(), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  EXPECT_FALSE(rules().loadForAudit(number));
  EXPECT_EQ(rules().audit(*dialog, prompt), AuditOutcome::AlreadyAudited);

  EXPECT_EQ(openSelect(receiptHistory("A", "100001")).rowCount(), 1);
  EXPECT_EQ(openSelect(receiptHistory("A", "100002")).rowCount(), 0);
  setParameter("cs_employ", 0);
  EXPECT_EQ(openSelect(receiptHistory("A", "100002")).rowCount(), 1);
}

TEST_F(ReceiptTest, PaidAmountOnAccountIsKeptWhenItIsTyped) {
  setParameter("cs_cgje", 1);
  EXPECT_EQ(rules().paidAfter(50, 0, {}), 0);
  ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 10, 4}, {"B", 1, 9}});
  draft.paid = 15;
  draft.settlement = Settlement::RestOnAccount;
  const QString number = save(draft);
  setChange("5", u"sl", Lines::Waiting, openSelect(waitingLines(number))[0].integer("id"));
  EXPECT_EQ(head(number), "29 15 0");
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(supplierOwed(), 14);
}

}  // namespace jxc::receipt_test
