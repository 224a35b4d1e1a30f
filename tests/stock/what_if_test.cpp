// What an audit or a cancel would change is told before it is done, and nothing is left behind: no row, no counter, no
// session.
#include "stock/what_if.h"

#include "core/roles.h"
#include "harness/whole_books.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <algorithm>

namespace jxc::what_if_test {

using namespace families;

class WhatIfTest : public test::ShopWalk {
 protected:
  /// Runs the preview and expects that the account set, its counters and the session are to the letter what they were.
  WhatIf previewOf(const QString& number, const std::function<bool(Prompt&)>& command) {
    const test::Books before = test::readBooks(test::Reading::ToTheLetter);
    const auto counters = nextCounters();
    session().editMode = u"as it was"_qs;
    WhatIf preview = whatIf(number, [&](Prompt& agreeing) {
      session().editMode = u"changed"_qs;
      return command(agreeing);
    });
    EXPECT_EQ(session().editMode, u"as it was");
    EXPECT_EQ(test::readBooks(test::Reading::ToTheLetter), before);
    // The counters of a server go on whatever is taken back.
    if (!test::onServer()) {
      EXPECT_EQ(nextCounters(), counters);
    }
    EXPECT_FALSE(accountDb().inTransaction());
    return preview;
  }
  WhatIf previewAudit(const QString& number) {
    return previewOf(number, [&](Prompt& agreeing) {
      return checkDj(documentFamily(number), number, agreeing) == AuditOutcome::Audited;
    });
  }
  static std::vector<std::int64_t> nextCounters() {
    Transaction trial(accountDb());
    std::vector<std::int64_t> next;
    for (const char* table : {"jxc_goodslist", "jxc_ysyfk", "jxc_xjyh", "jxc_log", "jxc_kcsp", "jxc_fpdjb"})
      next.push_back(insertRow(table, {{"id", Value()}}));
    return next;
  }
  /// "before → after" of the first impact of a kind whose place contains the text.
  static QString found(const WhatIf& preview, QStringView kind, QStringView place = {}) {
    const auto at = std::ranges::find_if(preview.impacts, [&](const Impact& each) {
      return each.kind == kind && (place.isEmpty() || each.place.contains(place));
    });
    return at == preview.impacts.end() ? u"none"_qs
                                       : at->before + u" → "_qs + at->after + (at->warns ? u" !"_qs : u""_qs);
  }
};

TEST_F(WhatIfTest, ReceiptDatedBackTellsCostsSalesCountsAndMonths) {
  receive("2021-04-01", {{"A", 10, 5}});
  sell("2021-05-01", {{"A", 4, 9}}, 36);  // sold at a cost of 5
  auditedInside(stocktake, "2021-05-02", {}, {{"A", 5, 5}});
  const QString late = save(draftReceipt("2021-04-02", {{"A", 10, 7}}));

  const WhatIf preview = previewAudit(late);
  EXPECT_TRUE(preview.done);
  EXPECT_EQ(found(preview, u"库存数量", u"商品 A"), "5 → 15");
  EXPECT_EQ(found(preview, u"成本均价", u"仓库 100001"), "5 → 5.94")
      << "16 at 6, and a count of one less at 5 joins the pool: 101 over 17";
  EXPECT_EQ(found(preview, u"销售毛利与成本不符"), "16 → 12 !");
  EXPECT_EQ(found(preview, u"重新推算的月份", u"2021-05"), " →  !");
  EXPECT_EQ(found(preview, u"之后的盘点"), " →  !");
  EXPECT_EQ(found(preview, u"现金银行余额", u"现金"), "36 → -34 !");
  EXPECT_EQ(found(preview, u"往来余额", u"供货商"), "none") << "paid at once";
  EXPECT_EQ(found(preview, u"日期在前", u"2021-04-02 之后已有 2 张单据"), " →  !");
  EXPECT_EQ(preview.summary, QStringList({u"库存：1 种商品，增加 10"_qs, u"现金银行：现金 -70"_qs}));

  session().canSeeCost = false;
  const WhatIf withheld = previewAudit(late);
  session().canSeeCost = true;
  EXPECT_EQ(found(withheld, u"库存数量", u"仓库 100001"), "5 → 15");
  EXPECT_EQ(withheld.summary, QStringList(u"库存：1 种商品，增加 10"_qs));
  EXPECT_EQ(found(withheld, u"成本均价"), "none");
  EXPECT_EQ(found(withheld, u"商品成本均价"), "none");
  EXPECT_EQ(found(withheld, u"现金银行余额"), "none") << "what was paid for them";
  EXPECT_EQ(found(withheld, u"销售毛利与成本不符"), " →  !") << "which sales, but not what they earned";

  ASSERT_EQ(auditAgreeing(late), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "15 15 5.94") << "as it was told";
}

TEST_F(WhatIfTest, CancelTellsWhatTurnsNegativeAndListsWhatItAsks) {
  const QString bought = receive("2021-05-01", {{"A", 10, 5}});
  sell("2021-05-02", {{"A", 4, 9}});
  const WhatIf preview =
      previewOf(bought, [&](Prompt& agreeing) { return cancelPurchase(bought, agreeing, CancelMode::Single); });
  ASSERT_TRUE(preview.done);
  EXPECT_EQ(preview.questions.size(), 2) << "whether to cancel, and whether stock may run short";
  EXPECT_EQ(found(preview, u"库存数量"), "6 → -4 !");
  EXPECT_EQ(found(preview, u"负库存"), "0 → -4 !");
  EXPECT_EQ(found(preview, u"往来余额", u"供货商"), "50 → 0");
  EXPECT_EQ(preview.rows()[0].text("kind"), "将会询问");
  EXPECT_TRUE(preview.rows()[0].isNull("valuebefore")) << "no figure, which is not a zero";
}

TEST_F(WhatIfTest, ASaleTellsItsProfitAndAReceiptAJumpOfTheCost) {
  receive("2021-05-01", {{"A", 10, 5}});
  const QString sold = waitingSale("2021-05-02", {{"A", 4, 9}}, 20, 1);
  const WhatIf sale = previewAudit(sold);
  ASSERT_EQ(sale.summary.size(), 4);
  EXPECT_EQ(sale.summary[0], "库存：1 种商品，减少 4");
  EXPECT_EQ(sale.summary[1], "现金银行：现金 +20");
  EXPECT_TRUE(sale.summary[2].startsWith(u"往来余额：客户 100001 ") && sale.summary[2].endsWith(u" +16"));
  EXPECT_EQ(sale.summary[3], "本单毛利：+16");
  EXPECT_EQ(found(previewAudit(save(draftReceipt("2021-05-03", {{"A", 10, 50}}))), u"成本均价"), "5 → 27.5 !");
}

TEST_F(WhatIfTest, WhoeverMayNotLookItUpIsNotToldIt) {
  receive("2021-05-01", {{"A", 10, 5}});
  const QString sold = waitingSale("2021-05-02", {{"A", 4, 9}}, 20, 1);
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100002',7,7,5)");
  execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn,ck_aname) values ('100002','分店','100001,','admin,')");
  setRights("100002", "xsgl", QString(17, u'1'));
  setRights("100002", "qtcz", u"000000001"_qs);
  becomeOperator(u"小李"_qs, "100002", "100002");
  const WhatIf seen = previewAudit(sold);
  ASSERT_TRUE(seen.done) << seen.failure.toStdString();
  EXPECT_EQ(found(seen, u"现金银行余额"), "none");
  EXPECT_NE(found(seen, u"往来余额", u"客户"), "none");
  EXPECT_EQ(found(seen, u"成本均价"), "none");
  EXPECT_NE(found(seen, u"商品总库存"), "none");

  execSql("update jxc_ckxx set ck_asn='100001,100002,' where ck_sn='100001'");
  setParameter("cs_cgyh", 1);
  const WhatIf bound = previewAudit(sold);
  ASSERT_TRUE(bound.done) << bound.failure.toStdString();
  EXPECT_EQ(found(bound, u"库存数量", u"仓库 100001"), "10 → 6");
  EXPECT_EQ(found(bound, u"商品总库存"), "none") << "of all warehouses";
}

TEST_F(WhatIfTest, EachReadyMadeRoleIsToldWhatItMayLookUp) {
  receive("2021-05-01", {{"A", 10, 5}});
  const QString sold = waitingSale("2021-05-02", {{"A", 4, 9}}, 20, 1);
  const QString bought = save(draftReceipt("2021-05-03", {{"A", 10, 50}}));
  // Of a sale: stock, cash, customer, profit; of a receipt: cost, cash.
  const std::pair<const char16_t*, const char*> table[] = {
      {u"店长", "1111 11"}, {u"采购员", "1000 10"}, {u"营业员", "1010 00"}, {u"会计", "1111 11"}};
  for (const auto& [role, told] : table) {
    SCOPED_TRACE(QString::fromUtf16(role).toStdString());
    becomeOperator(u"新店员"_qs, "100002", roleOf(QString::fromUtf16(role)));
    const WhatIf sale = previewAudit(sold), receipt = previewAudit(bought);
    const auto isProfit = [](const QString& line) { return line.startsWith(u"本单毛利"); };
    QString seen;
    for (const bool each : {found(sale, u"库存数量") != "none", found(sale, u"现金银行余额") != "none",
                            found(sale, u"往来余额", u"客户") != "none", std::ranges::any_of(sale.summary, isProfit)})
      seen += each ? u'1' : u'0';
    seen += u' ';
    for (const bool each : {found(receipt, u"成本均价") != "none", found(receipt, u"现金银行余额") != "none"})
      seen += each ? u'1' : u'0';
    EXPECT_EQ(seen, told);
  }
}

TEST_F(WhatIfTest, ACommandThatRefusesOrFailsLeavesNothingEither) {
  receive("2021-05-01", {{"A", 2, 5}});
  const QString tooMuch = waitingSale("2021-05-02", {{"A", 5, 9}}, 0);
  setParameter("cs_kc", 0);
  const WhatIf refused = previewAudit(tooMuch);
  EXPECT_FALSE(refused.done);
  ASSERT_EQ(refused.notices.size(), 1);
  EXPECT_EQ(refused.rows()[0].text("kind"), "不能执行");
  EXPECT_TRUE(refused.impacts.empty());

  setParameter("cs_kc", 1);
  execSql("update jxc_lsxssp set g_sn='gone' where gl_djh=?", tooMuch);
  const WhatIf failed = previewAudit(tooMuch);
  EXPECT_FALSE(failed.done);
  EXPECT_TRUE(failed.failure.contains(tooMuch)) << failed.failure.toStdString();

  const WhatIf thrown = previewOf(tooMuch, [&](Prompt&) -> bool {
    execSql("delete from jxc_goods");
    throw std::runtime_error("half-way");
  });
  EXPECT_EQ(thrown.rows()[0].text("kind"), "执行失败");
}

TEST_F(WhatIfTest, EveryFamilyAndMoneyLeaveNothing) {
  live(7, 60);
  int looked = 0;
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    const RowSet heads = openSelect(
        compose("select {} as djh,{} as status from {} order by id desc", {family.number, family.status, family.head}));
    for (int row = 0; row < std::min(2, heads.rowCount()); ++row, ++looked) {
      const QString number = heads.text(row, 0);
      SCOPED_TRACE(number.toStdString());
      if (heads.integer(row, 1) == 0)
        previewAudit(number);
      else
        previewOf(number, [&](Prompt&) { return cancel(number); });
    }
  }
  EXPECT_GE(looked, 10);
  const QString payment = auditedPayment();
  const WhatIf preview = previewOf(payment, [&](Prompt& agreeing) {
    return partner_books::unCheck(customerSide, partner_books::Kind::Payment, payment, agreeing);
  });
  EXPECT_NE(found(preview, u"往来余额", u"客户"), "none");
  EXPECT_NE(found(preview, u"现金银行余额"), "none");
}

}  // namespace jxc::what_if_test
