// A shop that keeps invoices lives a random life: after each command the balances are the sums of what is due less what
// is invoiced, counted here from the documents. JXC_WALK=2000 lets it live so many commands, JXC_SEED another life.
#include "accounts/invoices.h"
#include "core/period_lock.h"
#include "maintenance/period_closing.h"
#include "maintenance/prove.h"
#include "maintenance/shop_walk.h"

#include <cstdlib>
#include <map>

namespace jxc::invoice_walk_test {

using partner_books::invoiceLedger;

int asked(const char* name, int usual) {
  const char* const words = std::getenv(name);
  return words ? std::atoi(words) : usual;
}
std::int64_t millionths(double yuan) {
  return std::llround(yuan * 1e6);
}

class InvoiceWalk : public test::ShopWalk {
 protected:
  /// Every other command is one on invoices.
  void step() override {
    if (upTo(1)) return ShopWalk::step();
    const PartnerSide& side = upTo(1) ? customerSide : supplierSide;
    YesPrompt yes;
    switch (upTo(7)) {
      case 0:
      case 1:
        ++done["entered"];
        EXPECT_TRUE(invoices::saveInvoice(side,
                                          {.partner = side.isCustomer() ? customer() : QStringLiteral("100001"),
                                           .date = day(),
                                           .amount = upTo(5) ? price() : -price(),
                                           .employee = QStringLiteral("100001")},
                                          yes));
        break;
      case 2: {
        auto draft = invoices::openInvoice(side, anyLine(side, "gl_djh like 'XP%' or gl_djh like 'CP%'"), yes);
        if (!draft) return;
        draft->amount = price();
        draft->date = day();
        EXPECT_TRUE(invoices::saveInvoice(side, *draft, yes));
        ++done["changed"];
        break;
      }
      case 3:
        done["deleted"] += invoices::deleteInvoice(side, anyLine(side, "gl_djh like 'XP%' or gl_djh like 'CP%'"), yes);
        break;
      case 4: {
        auto form = invoices::openRegistration(side, anyLine(side, "gl_djh like 'XS%' or gl_djh like 'CJ%'"), yes);
        if (!form) return;
        form->amount = upTo(2) ? form->due * upTo(4) / 4 : 0;
        if (form->amount < 0) return;
        EXPECT_TRUE(invoices::registerInvoice(side, *form, yes));
        ++done["registered"];
        break;
      }
      case 5:
        done["excluded"] += invoices::exclude(side, anyLine(side, "fp_check<>0"), yes);
        break;
      case 6:
        done["audited"] += invoices::auditOne(side, anyLine(side, "fp_check=0"), yes);
        break;
      default:
        if (upTo(3) == 0) invoices::auditAll(side, {.kind = words(invoices::kWaiting)}, yes);
    }
  }
  static invoices::Line lineOf(const Row& row) { return {row.integer("id"), row.text("gl_djh")}; }
  invoices::Line anyLine(const PartnerSide& side, const char* condition) {
    const RowSet rows =
        openSelect(std::string("select id,gl_djh from jxc_fpdjb where fp_type=? and (") + condition + ") order by id",
                   words(side.type));
    return rows.isEmpty() ? invoices::Line{} : lineOf(rows[upTo(rows.rowCount() - 1)]);
  }

  /// What is due stands in the documents, what is invoiced in the lines that count; nothing else makes a balance.
  void compare() {
    std::map<QString, std::int64_t> due, sum;
    for (const Row row : openSelect("select a.k_type,a.k_ghskh,a.k_yfje from jxc_ysyfk a,jxc_fpdjb b where "
                                    "a.gl_djh=b.gl_djh and a.k_type=b.fp_type and b.fp_check<>0 "
                                    "and (a.k_djlx='XS' or a.k_djlx='XT' or a.k_djlx='CJ' or a.k_djlx='CT')"))
      due[row.text("k_type") + row.text("k_ghskh")] += millionths(row.number("k_yfje"));
    for (const Row row :
         openSelect("select fp_type,fp_ghskh,fp_kpje,fp_ljje,fp_check from jxc_fpdjb order by fp_rq,id")) {
      const QString whose = row.text("fp_type") + row.text("fp_ghskh");
      if (row.flag("fp_check"))
        due[whose] -= millionths(row.number("fp_kpje")), sum[whose] = millionths(row.number("fp_ljje"));
      else
        ASSERT_EQ(row.number("fp_ljje"), 0) << "what does not count has no balance";
    }
    for (const auto& [whose, balance] : sum)
      ASSERT_EQ(balance, due[whose]) << whose.toStdString();

    const Criteria period{
        .from = day(), .to = upTo(1) ? QStringLiteral("2021-05-03") : QString(), .boxes = partner_books::kWithIdle};
    for (const PartnerSide* side : {&customerSide, &supplierSide}) {
      std::map<QString, std::int64_t> closing;
      for (const Row row : openSelect(partner_books::overviewSummary(invoiceLedger, *side, period)))
        closing[row.text("k_ghskh")] = millionths(row.number("wfje"));
      std::map<QString, std::int64_t> last;
      for (const Row row : openSelect(partner_books::overviewDetail(invoiceLedger, *side, period)))
        last[row.text("fp_ghskh")] = millionths(row.number("fp_ljje"));
      for (const auto& [partner, balance] : last)
        ASSERT_EQ(closing[partner], balance) << partner.toStdString() << " from " << period.from.toStdString();
    }
  }

  std::map<std::string, int> done;
};

TEST_F(InvoiceWalk, BalancesAreWhatIsDueLessWhatIsInvoiced) {
  const int steps = asked("JXC_WALK", 150);
  live(static_cast<unsigned>(asked("JXC_SEED", 3)), steps, [this] { compare(); });
  for (const char* command : {"entered", "changed", "deleted", "registered", "excluded", "audited"})
    EXPECT_GT(done[command], 0) << command;
  const proof::Proof proof = proof::prove(accountDb());
  EXPECT_TRUE(proof.isClean()) << proof.summary().toStdString();
}

TEST_F(InvoiceWalk, BehindTheLockOrAClosingNothingMovesAndWhatWasExcludedCountsFromTodayOn) {
  const PartnerSide& side = customerSide;
  const auto lineOf = [](const QString& number) {
    return invoices::Line{lookupValue("select id from jxc_fpdjb where gl_djh=?", number).toLongLong(), number};
  };
  const auto open = [&](const QString& day) { return fpBalanceAt(customer(), PartnerType::Customer, day); };
  receive(u"2021-04-01"_qs, {{u"A"_qs, 9, 5}});
  const QString closed = sell(u"2021-04-05"_qs, {{u"A"_qs, 2, 10}}),
                locked = sell(u"2021-04-10"_qs, {{u"A"_qs, 1, 30}}),
                partly = sell(u"2021-04-11"_qs, {{u"A"_qs, 1, 40}});
  auto form = invoices::openRegistration(side, lineOf(partly), prompt);
  ASSERT_TRUE(form);
  form->date = u"2021-04-20"_qs;
  form->amount = 10;
  EXPECT_TRUE(invoices::registerInvoice(side, *form, prompt));
  for (const QString& number : {closed, locked})
    EXPECT_TRUE(invoices::exclude(side, lineOf(number), prompt.willSayYes()));
  ASSERT_TRUE(closing::closeBooks({u"2021-04-06"_qs}, u"D:/备份.DAT"_qs));
  setPeriodLock(u"2021-04-30"_qs);

  EXPECT_TRUE(invoices::auditAll(side, {.kind = words(invoices::kWaiting)}, prompt.willSayYes()));
  EXPECT_TRUE(prompt.lastNotice().contains(u"它的日期 2021-04-10 已经锁定，请单独审核"))
      << prompt.lastNotice().toStdString();
  EXPECT_EQ(open(allDates), 30);
  for (const QString& number : {closed, locked})
    EXPECT_TRUE(invoices::auditOne(side, lineOf(number), prompt.willSayYes()));
  EXPECT_EQ(
      prompt.questions.last(),
      "您确定要审核当前选中的单据吗！\r\n\r\n它的日期 2021-04-10 已经锁定，审核后从今天（2021-05-03）起计入余额。");
  EXPECT_EQ(open(u"2021-04-30"_qs), 30);
  EXPECT_EQ(open(allDates), 80);
  EXPECT_TRUE(proof::prove(accountDb()).isClean()) << proof::prove(accountDb()).summary().toStdString();

  // What was invoiced then may grow, and is not taken back; nor is what another operator wrote meanwhile.
  form = invoices::openRegistration(side, lineOf(partly), prompt.willSayYes());
  ASSERT_TRUE(form);
  form->date = u"2021-05-03"_qs;
  form->amount = 5;
  EXPECT_TRUE(prompt.refused(invoices::registerInvoice(side, *form, prompt)).startsWith(u"账目已锁定到 2021-04-30"));
  form->amount = 40;
  execSql("update jxc_fpdjb set fp_no='N7' where gl_djh=?", partly);
  EXPECT_EQ(prompt.refused(invoices::registerInvoice(side, *form, prompt)),
            "该发票刚刚被其他操作员修改或删除，请重新查询！");
  form = invoices::openRegistration(side, lineOf(partly), prompt.willSayYes());
  form->date = u"2021-05-03"_qs;
  form->amount = 40;
  EXPECT_TRUE(invoices::registerInvoice(side, *form, prompt));
  EXPECT_EQ(open(allDates), 50);
  setPeriodLock({});
  EXPECT_TRUE(cancelSale(partly, prompt.willSayYes(), CancelMode::Single));
  EXPECT_TRUE(prompt.questions.last().endsWith(u"该单据已开发票 N7，金额 40，取消后开票登记随单据删除。"));
  execSql("update jxc_khxx set kh_forbid=1 where kh_sn=?", customer());
  EXPECT_EQ(
      prompt.refused(invoices::saveInvoice(
          side, {.partner = customer(), .date = u"2021-05-03"_qs, .amount = 5, .employee = u"100001"_qs}, prompt)),
      "该客户已停用或已删除，不能开票！");
}

}  // namespace jxc::invoice_walk_test
