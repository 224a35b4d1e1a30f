// Draft, number, save, waiting list, shared numbers: the life of a document up to its audit.
#include "core/log.h"
#include "core/numbers.h"
#include "purchasing/purchase_return.h"
#include "sales/sale.h"
#include "stock/shop.h"

namespace jxc::document_test {

using namespace families;

class DocumentTest : public test::ShopTest {
 protected:
  DocumentTest() {
    addGoods("A", 5);
    addGoods("B", 7);
  }
  void addLine(const QString& number, const QString& goods) {
    execSql("insert into jxc_jhsp (j_sn,g_sn,a_name,jh_sl,jh_dj,jh_zje,jh_je) values (?,?,?,1,5,5,5)", number, goods,
            session().a_name);
  }
  std::int64_t addHead(const QString& number, const QString& operatorName, int status = 0) {
    return insertRow("jxc_jhd",
                     {{"j_sn", number}, {"a_name", operatorName}, {"j_status", status}, {"j_jhrq", u"2021-05-03"}});
  }
  QString heads() {
    QStringList list;
    for (const Row row : openSelect("select j_sn,a_name from jxc_jhd order by j_sn,id"))
      list << row.text("a_name") + u':' + row.text("j_sn").right(5);
    return list.join(u' ');
  }
};

TEST_F(DocumentTest, DraftFollowsDateAndStaysApartFromOtherOperators) {
  const QString number = newDocumentNumber(purchaseReceipt, "2021-05-03");
  EXPECT_EQ(number, "CJ21050310001");
  addLine(number, "A");
  becomeOperator("小王", "100002", "100001");
  addLine(number, "B");
  EXPECT_EQ(draftLineCount(purchaseReceipt, number), 1);
  EXPECT_EQ(lineCount(purchaseReceipt, number), 2);
  EXPECT_FALSE(goodsOnDocument(purchaseReceipt, number, "A", true));

  const QString moved = redateDraft(purchaseReceipt, number, "2021-05-01");
  EXPECT_EQ(moved, "CJ21050110001");
  EXPECT_EQ(draftLineCount(purchaseReceipt, moved), 1);
  EXPECT_EQ(lineCount(purchaseReceipt, number), 1);  // admin's line stays

  // Somebody else stands under the number meanwhile: the next line takes a fresh one along.
  addLine(number, "B");
  const QString usable = usableDraftNumber(purchaseReceipt, number, "2021-05-03");
  EXPECT_EQ(usable, "CJ21050310002");
  EXPECT_EQ(draftLineCount(purchaseReceipt, usable), 1);

  EXPECT_FALSE(confirmDocumentDate("2021-05-04", prompt.willSayNo()));
  EXPECT_EQ(prompt.questions.last(),
            "您选择的日期：2021-05-04，\r\n\r\n大于计算机的当前日期：2021-05-03，\r\n\r\n确认继续吗？");
  EXPECT_TRUE(confirmDocumentDate("2021-05-03", prompt));

  prompt.willAnswer(Answer::Cancel);
  EXPECT_EQ(leaveDraft(purchaseReceipt, usable, prompt), Answer::Cancel);
  EXPECT_EQ(draftLineCount(purchaseReceipt, usable), 1);
  prompt.willAnswer(Answer::No);
  EXPECT_EQ(leaveDraft(purchaseReceipt, usable, prompt), Answer::No);
  EXPECT_EQ(draftLineCount(purchaseReceipt, usable), 0);
  EXPECT_EQ(leaveDraft(purchaseReceipt, usable, prompt), Answer::No);  // nothing to ask about
}

TEST_F(DocumentTest, SaveAsksAndRenewsATakenNumber) {
  const receipt::ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 2, 5}, {"B", 1, 7}});
  EXPECT_FALSE(receipt::saveReceipt(draft, prompt.willSayNo()));
  EXPECT_EQ(heads(), "");
  addHead(draft.number, "小王");
  const QString number = save(draft);
  EXPECT_EQ(number, "CJ21050310002");
  EXPECT_EQ(heads(), "小王:10001 admin:10002");
  EXPECT_EQ(lineCount(purchaseReceipt, number), 2);
  EXPECT_EQ(lastLog(), "增加未审核进货单CJ21050310002，共2种商品");

  // What is hardly meant comes in one question before that one.
  receive("2021-05-02", {{"B", 1, 7}});
  setClock("2021-05-02 09:00:00");
  const receipt::ReceiptDraft odd = draftReceipt("2021-03-31", {{"A", 1500000, 5}});
  prompt.forget();
  EXPECT_FALSE(receipt::saveReceipt(odd, prompt.willSayNo()));
  ASSERT_EQ(prompt.questions.size(), 1);
  for (const char* words : {"数量 1,500,000", "金额 7,500,000", "早 32 天", "请检查本机的时钟"})
    EXPECT_TRUE(prompt.questions.front().contains(QString::fromUtf8(words))) << words;
  prompt.forget();
  EXPECT_TRUE(receipt::saveReceipt(odd, prompt.willSayYes().willSayYes()));
  EXPECT_EQ(prompt.questions.size(), 2);
}

TEST_F(DocumentTest, WaitingDocumentShrinksWithItsLinesAndGoesWithTheLast) {
  const QString number = save(draftReceipt("2021-05-03", {{"A", 2, 5}, {"B", 1, 7}}));
  const RowSet lines = openSelect(receipt::waitingLines(number));
  ASSERT_EQ(lines.rowCount(), 2);
  EXPECT_FALSE(deleteWaitingLine(purchaseReceipt, number, lines[0].integer("id"), prompt));
  EXPECT_EQ(lookupNumber("select j_yfje from jxc_jhd where j_sn=?", number), 7);
  EXPECT_EQ(lookupNumber("select j_sfje from jxc_jhd where j_sn=?", number), 7);
  // What is left is the line that settles the rest: without goods it is no document.
  insertRow("jxc_jhsp", {{"j_sn", number}, {"g_sn", u"00000000"}, {"a_name", session().a_name}, {"jh_zje", -1.0}});
  EXPECT_TRUE(deleteWaitingLine(purchaseReceipt, number, lines[1].integer("id"), prompt));
  EXPECT_EQ(lineCount(purchaseReceipt, number), 0);
  EXPECT_EQ(lastLog(), "因删除单据的所有商品而删除采购进货单：" + number);
  EXPECT_EQ(heads(), "");

  const QString second = save(draftReceipt("2021-05-03", {{"A", 2, 5}}));
  EXPECT_FALSE(deleteWaitingDocument(purchaseReceipt, second, prompt.willSayNo()));
  EXPECT_TRUE(deleteWaitingDocument(purchaseReceipt, second, prompt.willSayYes()));
  EXPECT_EQ(lastLog(), "删除采购进货单：" + second);
  EXPECT_EQ(lineCount(purchaseReceipt, second), 0);

  // An audited document can be neither deleted nor thinned out, also when the list on the screen is old.
  const QString audited = receive("2021-05-03", {{"A", 2, 5}});
  EXPECT_FALSE(deleteWaitingDocument(purchaseReceipt, audited, prompt.willSayYes()));
  EXPECT_FALSE(
      deleteWaitingLine(purchaseReceipt, audited, openSelect(receipt::waitingLines(audited))[0].integer("id"), prompt));
  EXPECT_EQ(lineCount(purchaseReceipt, audited), 1);
  EXPECT_EQ(changeWaitingHead(purchaseReceipt, audited, {.date = "2021-05-01"}, prompt), "");
}

TEST_F(DocumentTest, HeadOfAWaitingDocumentChanges) {
  const QString number = save(draftReceipt("2021-05-03", {{"A", 2, 5}}));
  EXPECT_EQ(
      changeWaitingHead(purchaseReceipt, number,
                        {.date = "2021-04-30", .invoiceNumber = "FP9", .freight = 3, .wePayFreight = true}, prompt),
      number);  // nobody else stands under it: the number stays
  const RowSet head = openSelect("select j_jhrq,j_fpno,j_yf,j_yffs,ck_sn from jxc_jhd where j_sn=?", number);
  EXPECT_EQ(head.text(0, 0) + head.text(0, 1) + head.text(0, 2) + head.text(0, 3) + head.text(0, 4),
            "2021-04-30FP93我方付运费100001");
  execSql("insert into jxc_jhsp (j_sn,a_name,g_sn) values (?,'小王','B')", number);
  EXPECT_EQ(changeWaitingHead(purchaseReceipt, number, {.date = "2021-04-29"}, prompt), "CJ21042910001");
  EXPECT_EQ(lineCount(purchaseReceipt, "CJ21042910001"), 1);
  EXPECT_EQ(lineCount(purchaseReceipt, number), 1);  // what a colleague has not saved yet stays his

  receive("2021-05-03", {{"A", 5, 5}});
  const QString back = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 6, 5}});
  EXPECT_EQ(changeWaitingHead(purchaseReturn, back, {.warehouse = "100002"}, prompt), "");
  EXPECT_EQ(prompt.lastNotice(), "当前仓库中不存在商品：“A”，不能更换仓库！");
  // Where it stands nothing is asked: only a new warehouse has to know the goods and have enough of them.
  EXPECT_EQ(changeWaitingHead(purchaseReturn, back, {.date = "2021-05-02", .warehouse = "100001"}, prompt), back);
  insertRow("jxc_kcsp", {{"g_sn", u"A"}, {"ck_sn", u"100002"}, {"kc_sl", 1.0}, {"kc_zsl", 1.0}});
  EXPECT_EQ(changeWaitingHead(purchaseReturn, back, {.warehouse = "100002"}, prompt.willSayNo()), "");
  execSql("delete from jxc_kcsp where ck_sn='100002' and g_sn='A'");
  execSql("update jxc_thsp set g_sn='B' where gl_djh=?", back);  // the warehouse does not know it: agreed to at save
  EXPECT_EQ(changeWaitingHead(purchaseReturn, back, {.date = "2021-05-01", .warehouse = "100001"}, prompt), back);
  EXPECT_EQ(changeWaitingHead(purchaseReturn, back, {.invoiceAmount = 30}, prompt), back);
  EXPECT_EQ(lookupNumber("select th_fpje from jxc_thd where gl_djh=?", back), -30);
}

// A receipt, a contract, a parcel remember a document by its number: they follow it to another one.
TEST_F(DocumentTest, WhatRemembersADocumentFollowsItsNumber) {
  const auto remembered = [](const QString& receipt) {
    return lookupValue("select j_dhdid from jxc_jhd where j_sn=?", receipt);
  };
  const TradingRules& returns = purchase_return::rules();
  const QString received = receive("2021-05-03", {{"A", 2, 5}});
  const QString other = receive("2021-05-03", {{"B", 2, 5}});
  TradingDraft draft = *returns.returnWhole(received, returns.fresh({}), prompt);
  draft.number = redateDraft(purchaseReturn, draft.number, draft.date = "2021-05-01");
  EXPECT_EQ(remembered(received), draft.number);
  becomeOperator("小王", "100002", "100001");
  EXPECT_NE(redateDraft(purchaseReturn, draft.number, "2021-05-02"), draft.number);
  EXPECT_EQ(remembered(received), draft.number);  // he has no lines: the return is not his
  becomeOperator("admin", "100001", "100001");
  ASSERT_TRUE(returns.save(draft, prompt.willSayYes()));

  // Renewed because a colleague works under the number; his own unsaved whole return stays with it.
  execSql("insert into jxc_thsp (gl_djh,a_name,g_sn) values (?,'小王','B')", draft.number);
  execSql("update jxc_jhd set j_dhdid=? where j_sn=?", draft.number, other);
  const QString moved = changeWaitingHead(purchaseReturn, draft.number, {.date = "2021-04-28"}, prompt);
  EXPECT_EQ(moved, "CT21042810001");
  EXPECT_EQ(remembered(received), moved);
  EXPECT_EQ(remembered(other), draft.number);
  EXPECT_TRUE(deleteWaitingDocument(purchaseReturn, moved, prompt.willSayYes()));
  EXPECT_TRUE(returns.returnWhole(received, returns.fresh({}), prompt));  // it may go back again

  const QString sold = waitingSale("2021-05-03", {{"A", 1, 9}}, 0);
  insertRow("jxc_htgl", {{"gl_djh", sold}, {"ht_sn", "1001"}, {"ghs_sn", customer()}});
  insertRow("jxc_kdd", {{"gl_djh", sold}});
  execSql("insert into jxc_lsxssp (gl_djh,a_name,g_sn) values (?,'小王','B')", sold);
  const QString later = changeWaitingHead(families::sale, sold, {.date = "2021-05-02"}, prompt);
  EXPECT_EQ(later, "XS21050210001");
  EXPECT_EQ(lookupValue("select gl_djh from jxc_htgl") + lookupValue("select gl_djh from jxc_kdd"), later + later);
}

TEST_F(DocumentTest, LinesAddedToAWaitingDocumentAreItsOperators) {
  const QString number = save(draftReceipt("2021-05-03", {{"A", 2, 5}}));
  becomeOperator("小王", "100002", "100001");
  const LineRules& lines = receipt::rules().lines();
  const LinePlace place{.number = number, .date = "2021-05-03", .partner = "100001", .warehouse = "100001"};
  LineDraft line = lines.newLine("B", place, false);
  line.amounts.setQuantity(3);
  EXPECT_NE(lines.addLine(Lines::Waiting, place, line, prompt).id, 0);
  PickingMemory memory;
  prompt.willSayYes();  // it stands there already
  lines.stageGoods("B", 4, place, Lines::Waiting, memory, prompt);
  EXPECT_EQ(lines.copyStaged(place, Lines::Waiting).lines, 1);
  const QString moved = changeWaitingHead(purchaseReceipt, number, {.date = "2021-05-02"}, prompt);
  EXPECT_EQ(lookupNumber("select sum(jh_sl) from jxc_jhsp where a_name='admin' and j_sn=?", moved), 9);
}

TEST_F(DocumentTest, TwoOperatorsSavedUnderOneNumber) {
  const QString number = "CJ21050310001";
  addLine(number, "A");
  addHead(number, "admin");
  becomeOperator("小王", "100002", "100001");
  addLine(number, "B");
  addHead(number, "小王");
  addHead(number, "小王");  // twice, by a double press long ago
  claimNumber(number, u"CJ");
  EXPECT_EQ(heads(), "admin:10001 小王:10002");
  EXPECT_EQ(lookupValue("select g_sn from jxc_jhsp where j_sn='CJ21050310002'"), "B");
  claimNumber(number, u"CJ");  // settled: nothing more
  EXPECT_EQ(heads(), "admin:10001 小王:10002");
}

TEST_F(DocumentTest, AuditedHeadKeepsItsNumberAgainstAll) {
  const QString number = "CJ21050310001";
  addLine(number, "A");
  addHead(number, "admin", 1);
  addHead(number, "admin");  // his own stray goes
  claimNumber(number, u"CJ");
  EXPECT_EQ(heads(), "admin:10001");

  addHead(number, "小王");
  becomeOperator("小王", "100002", "100001");
  addLine(number, "B");
  claimNumber(number, u"CJ");
  EXPECT_EQ(heads(), "admin:10001 小王:10002");
  EXPECT_EQ(lineCount(purchaseReceipt, number), 1);

  // The same for the other three kinds, on their own tables.
  for (const DocumentFamily* family : {&purchaseReturn, &families::sale, &saleReturn}) {
    const QString taken = words(family->prefix) + "21050310001";
    for (const char* name : {"admin", "小王"}) {
      insertRow(family->head, {{"gl_djh", taken}, {"a_name", name}, {family->status, 0}, {family->date, "2021-05-03"}});
      insertRow(family->lines, {{"gl_djh", taken}, {"a_name", name}, {"g_sn", "A"}});
    }
    claimNumber(taken, family->prefix);
    EXPECT_EQ(lineCount(*family, taken), 1) << taken.toStdString();
    EXPECT_EQ(lineCount(*family, words(family->prefix) + "21050310002"), 1);
  }
}

TEST_F(DocumentTest, DocumentsUnderOneNumberNeedStockApart) {
  receive("2021-05-03", {{"A", 7, 5}});
  setParameter("cs_kc", 0);
  const QString number = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 5, 5}});
  const QString other = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 4, 5}});
  for (const char* table : {"jxc_thd", "jxc_thsp"})
    execSql(compose("update {} set a_name='小王',gl_djh=? where gl_djh=?", {table}), number, other);
  EXPECT_EQ(audit(number), AuditOutcome::Audited);  // five of seven: the other four have a number of their own
  EXPECT_EQ(balanceOf("A"), "2 2 5");
  EXPECT_EQ(lookupNumber("select sum(th_sl) from jxc_thsp where gl_djh=?", other), 4);
  EXPECT_EQ(audit(other), AuditOutcome::Refused);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(DocumentTest, SavedAndAuditedAtOnceButTheStockWentWhileTheQuestionStood) {
  receive("2021-05-03", {{"A", 5, 5}});
  const auto draft = [this] {
    TradingDraft sold = jxc::sale::rules().fresh({});
    sold.number = add(jxc::sale::rules().lines(), placeOf(sold), "A", 4, 10).number;
    return sold;
  };
  setParameter("cs_shdj", 1);
  setParameter("cs_kc", 0);
  test::ScriptedPrompt slow;
  const auto twoGoBack = [this] { audit(waitingReturn(purchaseReturn, "2021-05-03", {{"A", 2, 5}})); };
  slow.whileAsked(u"直接审核"_qs, twoGoBack).willSayYes();
  const SaveResult refusedAudit = jxc::sale::rules().save(draft(), slow);
  EXPECT_TRUE(refusedAudit.saved);
  EXPECT_EQ(slow.refused(refusedAudit.audited), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能销售！");
  EXPECT_EQ(balanceOf("A"), "3 3 5");

  // Where stock may fall below zero, what he agreed to is asked once, and what is new is asked again.
  setParameter("cs_kc", 1);
  slow.willSayYes().willSayYes();
  EXPECT_TRUE(jxc::sale::rules().save(draft(), slow).audited);
  EXPECT_EQ(balanceOf("A"), "-1 -1 5");
  setParameter("cs_shdj", 0);
  receive("2021-05-03", {{"A", 6, 5}});
  setParameter("cs_shdj", 1);
  slow.whileAsked(u"直接审核"_qs, twoGoBack).willSayYes().willSayNo();
  EXPECT_FALSE(jxc::sale::rules().save(draft(), slow).audited);
  EXPECT_EQ(balanceOf("A"), "3 3 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(DocumentTest, AuditOfAllGoesOnAfterARefusalAndSkipsWhatIsDone) {
  receive("2021-05-03", {{"A", 5, 5}});
  const QString tooMuch = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 6, 5}});
  const QString fits = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 2, 5}});
  // Its supplier is gone: the posting fails.
  const QString broken = waitingReturn(purchaseReturn, "2021-05-03", {{"A", 1, 5}});
  // The list shows the newest first; what was entered first is audited first.
  const std::vector<ListedDocument> list{
      {fits, "2021-05-03", 3}, {broken, "2021-05-03", 2}, {tooMuch, "2021-05-03", 1}};
  execSql("update jxc_thd set ghs_sn='999999' where gl_djh=?", broken);
  EXPECT_FALSE(auditAll(list, prompt.willSayNo()));
  setParameter("cs_kc", 0);
  EXPECT_EQ(auditAll(list, prompt.willSayYes()), 1);
  EXPECT_TRUE(prompt.lastNotice().startsWith("单据" + tooMuch +
                                             "：\r\n\r\n该单据中至少一种商品库存不足，\r\n\r\n“A”：不能退货！\r\n\r\n"
                                             "单据" +
                                             broken + "审核失败：\r\n\r\n"))
      << prompt.lastNotice().toStdString();
  EXPECT_EQ(balanceOf("A"), "3 3 5");
  EXPECT_EQ(audit(fits), AuditOutcome::AlreadyAudited);
  EXPECT_EQ(audit("CT21050319999"), AuditOutcome::NoLines);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

}  // namespace jxc::document_test
