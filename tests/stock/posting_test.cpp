// Audit and cancel of the four trading documents: what reaches cash, partner, expense, invoice and stock ledgers.
#include "stock/posting.h"

#include "accounts/partner_documents.h"
#include "accounts/settling.h"
#include "engine/posting.h"
#include "engine/sqlite/sqlite_database.h"
#include "server/test_engine.h"
#include "stock/shop.h"

#include <sqlite3.h>

namespace jxc::posting_test {

using namespace families;

class PostingTest : public test::ShopTest {
 protected:
  PostingTest() {
    addGoods("A", 4);
    addGoods("B", 9);
  }
  QString partnerLine(const QString& number) {
    return row("select k_type,k_djlx,k_djtxt,k_yfje,k_sfje,k_ljje,k_fkfs,k_rq from jxc_ysyfk where gl_djh=?", number);
  }
  QString cashLine(const QString& number) {
    return row("select xj_dlx,xj_je,xj_ljje,xj_kmmc,xj_chk from jxc_xjyh where gl_djh=? order by id", number);
  }
  QString master(const QString& goods) {
    return row("select g_kc,g_pjjj,g_scjj,g_cgpl,g_xspl from jxc_goods where g_sn=?", goods);
  }
  /// Everything that audit wrote elsewhere is gone, and the document waits.
  void expectUnposted(const DocumentFamily& family, const QString& number) {
    EXPECT_EQ(
        lookupNumber(compose("select {} from {} where {}=?", {family.status, family.head, family.number}), number), 0);
    for (const char* table : {"jxc_goodslist", "jxc_xjyh", "jxc_ysyfk", "jxc_yyfy", "jxc_fpdjb"})
      EXPECT_EQ(lookupNumber(compose("select count(*) from {} where gl_djh=?", {table}), number), 0) << table;
  }
};

/// How SQLite goes about a statement of its own.
QString planOf(const std::string& statement) {
  sqlite3_stmt* plan = nullptr;
  sqlite3* const native = sqlite::asSqlite(accountDb()).native();
  EXPECT_EQ(sqlite3_prepare_v2(native, ("explain query plan " + statement).c_str(), -1, &plan, nullptr), SQLITE_OK);
  QString all;
  while (sqlite3_step(plan) == SQLITE_ROW)
    all += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(plan, 3))) + u'\n';
  sqlite3_finalize(plan);
  return all;
}

// Nearly all documents are audited, and a goods has lines on thousands of them: neither is what one is looked up by.
TEST_F(PostingTest, ADocumentIsFoundByItsNumberHoweverManyThereAre) {
  if (test::onServer()) GTEST_SKIP() << "a server counts what is in its indexes";
  for (const DocumentFamily& f : documentFamilies()) {
    if (f.sharesTables) continue;
    for (const std::string& asked :
         {compose("select 1 from (select id from {} where {}=1 and {}='X') a limit 1", {f.head, f.status, f.number}),
          compose("select a.* from {} a left join jxc_user b on a.u_sn=b.u_sn where a.{}='X' order by a.{} desc,a.id",
                  {f.head, f.number, f.status}),
          compose("select count(*) from {} where {}='X' and {}=0", {f.head, f.number, f.status}),
          compose("delete from {} where {}=0 and {}='X'", {f.head, f.status, f.number}),
          compose("select b.id from {} a,{} b where a.{}=b.{} and a.{}=1 and b.{}='X'",
                  {f.head, f.lines, f.number, f.number, f.status, f.number}),
          compose("update {} set a_name='' where g_sn='A' and {}='X'", {f.lines, f.number})}) {
      const auto begins = [plan = planOf(asked)](std::string_view column) {
        return plan.contains(u'(' + QString::fromUtf8(column.data(), static_cast<qsizetype>(column.size())) + u"=?"_qs);
      };
      EXPECT_TRUE(begins(f.number)) << asked;
      EXPECT_FALSE(begins(f.status) || begins("g_sn")) << asked;
    }
  }
  const QString shortage = planOf("select 1 from jxc_kcsp where g_sn='A' and ck_sn='100001' and kc_sl>=3");
  EXPECT_TRUE(shortage.contains(u"g_sn=?")) << shortage.toStdString();
}

TEST_F(PostingTest, AGoodsTwiceOnItsFirstReceiptHasOneBalance) {
  addGoods("Z", 4);
  receive("2021-05-01", {{"Z", 2, 5}, {"Z", 3, 6}});
  EXPECT_EQ(lookupValue("select count(*) from jxc_kcsp where g_sn='Z'"), "1");
  EXPECT_EQ(balanceOf("Z"), "5 5 5.6");
  EXPECT_EQ(lastFigures("Z"), "5 5.6 28");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, ReceiptThenAnEarlierOneThenItsCancel) {
  const QString first = receive("2021-05-03", {{"A", 10, 5}, {"B", 2, 9}});
  EXPECT_EQ(lastFigures("A"), "10 5 50");
  EXPECT_EQ(balanceOf("A"), "10 10 5");
  EXPECT_EQ(master("A"), "10 5 5 1 0");
  EXPECT_EQ(partnerLine(first), "ghs CJ 采购进货单 68 0 68 现金 2021-05-03");
  EXPECT_EQ(cashLine(first), "采购进货 0 0 现金 1");
  EXPECT_EQ(supplierOwed(), 68);
  EXPECT_EQ(lookupValue("select top 1 log_note from jxc_log where log_note like '审核%' order by id desc"),
            "审核采购进货单" + first + "，共2种商品");
  EXPECT_EQ(lookupNumber("select js_zje from jxc_kcjs where js_rq='2021-05' and ck_sn='100001'"), 68);
  EXPECT_EQ(lookupNumber("select u_cgpl from jxc_user where u_sn='100001'"), 1);
  EXPECT_EQ(row("select gl_sl,gl_zje,gl_je,gl_dj,gl_lr,ghs_name,u_name,ck_name,gl_checker,gl_chkrq,gl_sysl "
                "from jxc_goodslist where g_sn='A' and gl_djh=?",
                first),
            "10 50 50 5 0 普通供货商 默认员工 主仓库 admin 2021-05-03 10");

  sell("2021-05-03", {{"A", 4, 12}}, 48);
  EXPECT_EQ(lastFigures("A"), "6 5 30");
  const QString earlier = receive("2021-04-20", {{"A", 10, 7}});
  EXPECT_EQ(lastFigures("A"), "16 6 96");  // 10 at 7, then 10 at 5, then 4 out
  EXPECT_EQ(master("A"), "16 6 7 2 1");
  EXPECT_EQ(supplierOwed(), 138);
  EXPECT_EQ(partnerLine(first), "ghs CJ 采购进货单 68 0 138 现金 2021-05-03");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_TRUE(cancelPurchase(earlier, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您的操作将取消当前选中的已审核单据：" + earlier + "，确认吗？");
  EXPECT_EQ(lastFigures("A"), "6 5 30");
  EXPECT_EQ(master("A"), "6 5 7 1 1");
  EXPECT_EQ(balanceOf("A"), "6 6 5");
  EXPECT_EQ(supplierOwed(), 68);
  expectUnposted(purchaseReceipt, earlier);
  EXPECT_EQ(lineCount(purchaseReceipt, earlier), 1);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  EXPECT_FALSE(cancelPurchase(earlier, prompt));  // waits already: nothing to ask
  EXPECT_EQ(audit(earlier), AuditOutcome::Audited);
  EXPECT_EQ(lastFigures("A"), "16 6 96");
  EXPECT_EQ(audit(earlier), AuditOutcome::AlreadyAudited);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, SettledAtPaidAmountLeavesTheSupplierUnmovedAndFreightIsOurs) {
  setParameter("cs_kp", 1);
  receipt::ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 10, 5}});
  draft.invoiceAmount = 30;
  draft.invoiceNumber = "FP1";
  draft.freight = 6;
  draft.packing = 2;
  draft.wePayFreight = true;
  draft.settlement = receipt::Settlement::AtPaidAmount;
  const QString number = audited(save(draft));
  EXPECT_EQ(partnerLine(number), "ghs CJ 采购进货单 50 50 0 现金 2021-05-03");
  EXPECT_EQ(supplierOwed(), 0);
  EXPECT_EQ(cash(), -58);
  EXPECT_EQ(row("select fy_lx,fy_je,fy_note,fy_kmmc,fy_flag,fy_chk from jxc_yyfy where gl_djh=? order by id", number),
            "运费 -6 采购单" + number + "产生的运费 现金 1 1 包装费 -2 采购单" + number + "产生的包装费 现金 1 1");
  EXPECT_EQ(row("select fp_type,fp_yfje,fp_kpje,fp_ljje,fp_no,fp_check from jxc_fpdjb where gl_djh=?", number),
            "ghs 50 30 20 FP1 1");
  EXPECT_EQ(lastFigures("A"), "10 5 50");  // freight never enters the cost of goods
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // A payment that mentions the document goes with it, on another account too.
  execSql(
      "insert into jxc_xjyh (xj_kmmc,xj_rq,xj_je,xj_chk,gl_djh,xj_note) values "
      "('工行帐号','2021-05-04',-20,'1','FK21050410001',?)",
      "单据【" + number + "】付款 ");
  execSql("insert into jxc_xjyh (xj_kmmc,xj_rq,xj_je,xj_chk,gl_djh) values ('工行帐号','2021-05-05',100,'1','')");
  recomputeXjyh("工行帐号", "2021-05-04");
  const auto owe = [](const char* date, double due, double paid, const QString& document) {
    execSql(
        "insert into jxc_ysyfk (k_type,k_ghskh,k_rq,k_yfje,k_sfje,k_qcje,gl_djh2) values ('ghs','100001',?,?,?,0,?)",
        date, due, paid, document);
  };
  owe("2021-05-01", 0, 20, number);  // paid in advance
  owe("2021-05-02", 7, 0, {});
  recomputeYsyfk("100001", PartnerType::Supplier, "2021-05-01");
  EXPECT_EQ(supplierOwed(), -13);
  EXPECT_TRUE(cancelPurchase(number, prompt.willSayYes()));
  expectUnposted(purchaseReceipt, number);
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(xjyhBalanceNow("工行帐号"), 100);
  EXPECT_EQ(supplierOwed(), 7);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, WhoMayCancelAndWhatStandsAgainstIt) {
  const QString number = receive("2021-05-03", {{"A", 10, 5}});
  setRights("100009", "cggl", "111111111000000");
  becomeOperator("小王", "100002", "100009");
  EXPECT_EQ(prompt.refused(cancelPurchase(number, prompt)), "您没有取消审核采购进货单的权限！");

  // He may cancel by his own role, but admin's receipt only as far as admin's role goes: admin may everything.
  setRights("100009", "cggl", "111111111100000");
  execSql("update jxc_jhd set j_checker='小李' where j_sn=?", number);  // a checker whose role is gone
  EXPECT_FALSE(cancelPurchase(number, prompt));
  EXPECT_EQ(prompt.lastNotice(), "单据：" + number + "，的审核人：小李\r\n\r\n不允许其他人取消审核！");
  execSql("update jxc_jhd set j_checker='admin' where j_sn=?", number);

  const auto putaway = insertRow("jxc_rksp", {{"gl_djh", u"RK1"}, {"j_sn", number}});
  EXPECT_FALSE(cancelPurchase(number, prompt));
  EXPECT_EQ(prompt.lastNotice(),
            "该单据" + number +
                "已有入库信息，不能取消审核！\r\n\r\n请在商品入库单中删除该单据的所有信息，\r\n\r\n然后再取消审核！");
  execSql("delete from jxc_rksp where id=?", putaway);
  setRights("100009", "xsgl", QString(20, u'1'));
  const QString sold = sell("2021-05-03", {{"A", 1, 12}});
  insertRow("jxc_cksp", {{"gl_djh", u"CK1"}, {"gl_djh2", sold}});
  EXPECT_FALSE(cancelSale(sold, prompt));
  EXPECT_TRUE(prompt.lastNotice().contains("已有出库信息"));

  sell("2021-05-03", {{"A", 3, 12}});
  prompt.willSayYes().willSayNo();  // yes, cancel; no, not into negative stock
  EXPECT_FALSE(cancelPurchase(number, prompt));
  EXPECT_EQ(prompt.questions.last(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：出库将会出现负库存，是否继续？");
  setParameter("cs_kc", 0);
  EXPECT_FALSE(cancelPurchase(number, prompt, CancelMode::Batch));
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");
  EXPECT_EQ(balanceOf("A"), "6 6 5");
  setParameter("cs_kc", 1);
  EXPECT_TRUE(cancelPurchase(number, prompt.willSayYes(), CancelMode::Batch));
  EXPECT_EQ(balanceOf("A"), "-4 -4 5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, SaleWithGiftAndBalancingLineAndReturnFromTheCustomer) {
  receive("2021-05-01", {{"A", 20, 6}, {"B", 5, 9}});
  const QString number = waitingSale("2021-05-02", {{"A", 3, 20}, {"B", 1, 0}}, 55, 0);
  execSql("update jxc_lsxssp set t_zp='(赠品)' where g_sn='B' and gl_djh=?", number);
  balanceSale(number, 57, 60);
  balanceSale(number, 55, 60);  // the line that is there
  EXPECT_EQ(row("select ls_zje,ls_je from jxc_lsxssp where g_sn='00000000' and gl_djh=?", number), "-5 -5");
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(lookupNumber("select ls_yhje from jxc_lsxsd where gl_djh=?", number), 5);
  EXPECT_EQ(partnerLine(number), "kh XS 商品销售单 55 55 0 现金 2021-05-02");
  EXPECT_EQ(cashLine(number), "商品销售 55 55 现金 1");
  EXPECT_EQ(row("select g_name,gl_lr,gl_sl from jxc_goodslist where gl_djh=? order by id", number),
            "镜架A 42 3 镜架B(赠品) -9 1 优惠商品 -5 0");
  EXPECT_EQ(balanceOf("A"), "17 17 6");
  EXPECT_EQ(lookupNumber("select kc_xssl from jxc_kcsp where g_sn='A'"), 3);
  EXPECT_EQ(lookupNumber("select u_xspl from jxc_user where u_sn='100001'"), 1);

  const QString back = audited(waitingReturn(saleReturn, "2021-05-03", {{"A", 2, 20}}, 10));
  EXPECT_EQ(row("select gl_flag,gl_sl,gl_zje,gl_je,gl_zcb,gl_lr,gl_sysl from jxc_goodslist where gl_djh=?", back),
            "xt -2 -40 -40 -12 -28 2");
  EXPECT_EQ(balanceOf("A"), "19 19 6");
  EXPECT_EQ(lookupNumber("select kc_xssl from jxc_kcsp where g_sn='A'"), 1);
  EXPECT_EQ(customerOwes(), -30);
  EXPECT_EQ(cash(), 45);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, CancelOfASaleTakesThePaymentsMadeForItWithTheirRoundings) {
  // Sold on account for 100; 97 came later, 3 were let off when the receipt was changed before its audit.
  receive("2021-05-01", {{"A", 10, 4}});
  const QString number = sell("2021-05-01", {{"A", 5, 20}});
  const auto owedBefore = customerOwes();
  EXPECT_EQ(owedBefore, 100);
  ASSERT_TRUE(partner_books::settleDocument(
      customerSide,
      {.number = number, .date = u"2021-05-02"_qs, .amount = 97, .account = u"现金"_qs, .employee = u"100001"_qs},
      prompt));
  const RowSet receipts = openSelect("select id,gl_djh from jxc_ysyfk_dj where gl_djh2=?", number);
  ASSERT_EQ(receipts.rowCount(), 1);
  const QString receipt = receipts.text(0, 1);
  auto draft = partner_books::openDocument(customerSide, partner_books::Kind::Payment, receipts.integer(0, 0), prompt);
  ASSERT_TRUE(draft);
  draft->rounding = 3;
  draft->note = u"张三付清"_qs;  // no longer names the sale
  ASSERT_TRUE(partner_books::saveDocument(customerSide, partner_books::Kind::Payment, *draft, prompt));
  ASSERT_TRUE(partner_books::checkSkDj(receipt));
  EXPECT_EQ(customerOwes(), 0);
  EXPECT_EQ(cash(), 97);
  EXPECT_EQ(lookupNumber("select sum(gl_lr) from jxc_goodslist where g_sn='00000000'"), -3);

  ASSERT_TRUE(cancelSale(number, prompt.willSayYes()));
  // Nobody could take the rounding back any more once its receipt is gone: it goes with it.
  EXPECT_EQ(customerOwes(), 0);
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk where k_type='kh'"), 0);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk_dj"), 0);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist where g_sn='00000000'"), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, StockThatGoesWhileTheQuestionStands) {
  const QString receipt = receive("2021-05-01", {{"A", 10, 6}, {"B", 5, 9}});
  const QString back = waitingReturn(purchaseReturn, "2021-05-03", {{"B", 6, 9}, {"A", 8, 6}});
  test::ScriptedPrompt slow;
  slow.whileAsked(u"“B”"_qs, [this] { sell("2021-05-03", {{"A", 4, 12}}); });
  slow.willSayYes();  // to six of five B; by then A is short too
  EXPECT_EQ(checkDj(purchaseReturn, back, slow), AuditOutcome::Refused);
  EXPECT_EQ(slow.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：退货将会出现负库存，是否继续？");
  EXPECT_EQ(balanceOf("B"), "5 5 9");

  receive("2021-05-03", {{"A", 4, 6}});
  sell("2021-05-03", {{"B", 1, 12}});
  slow.whileAsked(u"“B”"_qs, [this] { sell("2021-05-03", {{"A", 1, 12}}); });
  slow.willSayYes().willSayYes();
  EXPECT_FALSE(cancelPurchase(receipt, slow));
  EXPECT_TRUE(slow.lastNotice().contains(u"“A”"));
  EXPECT_EQ(balanceOf("A"), "9 9 6");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PostingTest, SpreadingASalePassesGiftsAndReturnedLinesBy) {
  setParameter("cs_xsjgts", 0);
  receive("2021-05-01", {{"A", 20, 6}, {"B", 20, 9}});
  const QString number = waitingSale("2021-05-02", {{"A", 10, 10}, {"B", 2, 5}, {"B", -1, 5}}, 89, 0);
  execSql("update jxc_lsxssp set t_zp='(赠品)' where ls_sl=2 and gl_djh=?", number);
  execSql("update jxc_lsxssp set ls_dzl=0.8 where g_sn='A' and gl_djh=?", number);
  EXPECT_EQ(balanceSale(number, 89, 105).due, 89);
  const QStringList lines = test::textsOf(
      openSelect("select ls_zje,ls_taxdj,ls_dj,ls_je from jxc_lsxssp where gl_djh=? order by id", number));
  EXPECT_EQ(lines, QStringList({"84 10.5 10.5 84", "10 5 5 10", "-5 5 5 -5"}));  // 84 / (0.8 × 10)
}

TEST_F(PostingTest, ADocumentOfBalancingLinesOnlyTouchesNoStock) {
  receipt::ReceiptDraft draft = draftReceipt("2021-05-03", {{"A", 1, 5}});
  draft.paid = 3;
  const QString number = save(draft);
  execSql("delete from jxc_jhsp where g_sn='A'");
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(lookupValue("select count(*) from jxc_goodslist where gl_djh=?", number), "1");
  EXPECT_EQ(balanceOf("A"), "no row");
}

TEST_F(PostingTest, AnAuditWaitsForTheServerAFewTimesHoweverManyGoods) {
  const Posting* const server = accountDb().posting();
  if (!server) GTEST_SKIP() << "runs on a server, among pg.*";
  setParameter("cs_kp", 1);
  setParameter("cs_cs001", 1);
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  std::vector<Line> lines;
  for (int i = 0; i < 40; ++i) {
    lines.push_back({u"T%1"_qs.arg(i), 2, 5});
    addGoods(lines.back().goods, 4);
  }
  const QString date = "2021-05-03";
  for (int i = 0; i < 5; ++i)
    receive("2021-05-02", lines);
  receive("2021-05-02", {{"A", 4, 5}});  // to be split

  // One of them asks for the last row of the log, which the next one is chained to.
  // The first document of a kind makes the server know its statements and tables.
  const auto expectTrips = [&](std::int64_t most, const std::function<QString()>& make) {
    EXPECT_EQ(audit(make()), AuditOutcome::Audited);
    const QString number = make();
    const std::int64_t before = server->roundTrips();
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    EXPECT_LE(server->roundTrips() - before, most) << number.toStdString();
  };
  expectTrips(9, [&] { return save(draftReceipt(date, lines)); });
  expectTrips(10, [&] { return waitingReturn(purchaseReturn, date, lines); });
  expectTrips(9, [&] { return waitingSale(date, lines, 100, 0); });
  expectTrips(9, [&] { return waitingReturn(saleReturn, date, lines); });

  struct Inside {
    const DocumentFamily& family;
    std::vector<Field> head;
  };
  const Inside kinds[] = {{transfer, {{"ck_in", u"100002"}}},
                          {loss, {}},
                          {overflow, {}},
                          {split, {{"g_sn", u"A"}, {"cf_sl", 1.0}, {"cf_cbj", 5.0}}},
                          {bundle, {{"g_sn", u"A"}, {"kb_sl", 1.0}, {"kb_cbj", 5.0}}},
                          {stocktake, {}}};
  for (const auto& [family, head] : kinds)
    // A count looks twice whether its goods moved meanwhile: before it asks, and inside.
    expectTrips(family.isCount() ? 16 : 10, [&family = family, &head = head, &date, pieces = lines]() mutable {
      for (Line& each : pieces)
        each.quantity =
            family.isCount()
                ? 8 + lookupNumber("select sum(kc_sl) from jxc_kcsp where g_sn=? and ck_sn='100001'", each.goods)
                : 1;
      return test::waitingDocument(family, date, head, pieces);
    });

  // What follows in parts, of sources that are audited beforehand.
  setParameter("cs_sprk", 1);
  setParameter("cs_spck", 1);
  const std::vector<QString> bought{receive(date, lines), receive(date, lines)};
  const std::vector<QString> sold{sell(date, lines), sell(date, lines)};
  for (const auto& [movement, sources] : {std::pair{&partial::putaway, bought}, std::pair{&partial::issue, sold}})
    expectTrips(9, [&movement = movement, &date, sources = sources]() mutable {
      const QString source = sources.back();
      sources.pop_back();
      return test::waitingPart(*movement, date, source);
    });
}

}  // namespace jxc::posting_test
