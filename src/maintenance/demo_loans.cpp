// 演示账套的借货: goods out on loan, some back with their rent, one kept by its customer, one that waits.
#include "maintenance/demo_trade.h"
#include "sales/loan.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "stock/document.h"

#include <stdexcept>

namespace jxc::demo {

QString Trade::lendOne(const QString& customer, int daysBack, const std::vector<QString>& goods) {
  const RulesOver<DraftOfPartner>& rules = lending::rules();
  DraftOfPartner draft = rules.fresh({});
  draft.date = day_.addDays(-daysBack).toString(Qt::ISODate);
  draft.number = newDocumentNumber(families::loan, draft.date);
  draft.partner = customer;
  draft.warehouse = staff_.warehouses[0];
  constexpr double kDeposit = 100, kRent = 2;
  for (const QString& each : goods) {
    LineDraft line = rules.lines().newLine(
        each, {.number = draft.number, .date = draft.date, .partner = customer, .warehouse = draft.warehouse}, false);
    line.amounts.setQuantity(2);
    line.deposit = kDeposit;
    line.rent = kRent;
    draft.number =
        rules.lines()
            .addLine(Lines::Draft, {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse}, line,
                     prompt_)
            .number;
  }
  ++documents_;
  return rules.save(draft, prompt_).number;
}

void Trade::lend() {
  workAs(staff_.manager);
  const RowSet there = openSelect(
      "select top 12 a.g_sn from jxc_kcsp a,jxc_goods b where a.g_sn=b.g_sn and a.ck_sn=? and a.kc_sl>=4 and "
      "a.kc_zsl>=4 and a.g_sn<>'00000000' order by a.g_sn",
      staff_.warehouses[0]);
  enum Fate : int { Out, ComesBack, HalfComesBack, IsKept, Waits, kFates };
  constexpr int kLoans = 6, kDays = 12;
  for (int i = 0; i < kLoans && 2 * i + 1 < there.rowCount(); ++i) {
    const int fate = i % kFates;
    const auto& customers = i % 2 == 0 ? staff_.institutions : staff_.people;
    const QString number = lendOne(customers[static_cast<std::size_t>(i) % customers.size()], kDays - i,
                                   {there.text(2 * i, 0), there.text(2 * i + 1, 0)});
    if (fate == Waits) continue;
    if (checkDj(families::loan, number, prompt_) != AuditOutcome::Audited)
      throw std::logic_error("demonstration: not lent: " + number.toStdString());
    const std::int64_t first = lookupValue("select min(id) from jxc_khjhsp where gl_djh=?", number).toLongLong();
    if (fate == Out) continue;
    ++documents_;
    if (fate == IsKept) {
      const auto kept = loan_sale::open(first, prompt_);
      if (kept && loan_sale::save(*kept, prompt_)) ++documents_;
      continue;
    }
    const auto back = loan_return::open(number, fate == HalfComesBack ? first : 0, prompt_);
    if (fate == HalfComesBack) {
      auto line = loan_return::line(openSelect(loan_return::lines()).front().integer("id"));
      line->setQuantity(1);
      loan_return::changeLine(*line, prompt_);
    }
    loan_return::save(*back, prompt_);
  }
}

}  // namespace jxc::demo
