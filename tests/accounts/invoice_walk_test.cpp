// A shop that keeps invoices lives a random life: after each command the balances are the sums of what is due less what
// is invoiced, counted here from the documents. JXC_WALK=2000 lets it live so many commands, JXC_SEED another life.
#include "accounts/invoices.h"
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

}  // namespace jxc::invoice_walk_test
