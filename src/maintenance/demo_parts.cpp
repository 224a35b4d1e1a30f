// 演示账套的分批收发: goods in transit and sales that wait for their issue, in a shop that puts away and issues by
// documents of their own.
#include "core/session.h"
#include "maintenance/demo_trade.h"
#include "stock/document.h"
#include "stock/partial_rest.h"
#include "stock/partial_rules.h"

#include <cmath>

namespace jxc::demo {

void Trade::auditNewer(const DocumentFamily& family, double than) {
  const RowSet waiting = openSelect(
      compose("select {} from {} where {}=0 and id>? order by id", {family.number, family.head, family.status}), than);
  for (const Row row : waiting) {
    const QString number = row.text(family.number);
    if (checkDj(family, number, prompt_) != AuditOutcome::Audited)
      throw std::logic_error("demonstration: not audited: " + number.toStdString());
  }
}

void Trade::moveParts(const partial::PartialRules& rules) {
  const PartialMovement& movement = rules.movement();
  enum Fate : int { OnTheWay, Whole, Half, Waits, RestCancelled, kFates };
  int at = 0;
  for (const Row source : openSelect(partial::waitingSources(movement, {}))) {
    const QString number = source.text("djh");
    const int fate = at++ % kFates;
    if (fate == OnTheWay) continue;
    const auto draft = rules.takeWhole(number, rules.fresh({}), prompt_);
    if (fate == Half || fate == RestCancelled)
      for (const Row line : openSelect(rules.draftLines(draft->number))) {
        const std::string_view quantity = movement.family->line.columns->quantity;
        const double half = std::max(1.0, std::floor(line.number(quantity) / 2));
        rules.lines().setChange(QString::number(half), u"sl", Lines::Draft, line.integer("id"), prompt_);
      }
    const SaveResult saved = rules.save(*draft, prompt_);
    ++documents_;
    if (fate == Waits) continue;
    if (checkDj(*movement.family, saved.number, prompt_) != AuditOutcome::Audited)
      throw std::logic_error("demonstration: not moved: " + saved.number.toStdString());
    const bool isOpen = !openSelect(partial::openLines(movement, {.source = number})).isEmpty();
    if (fate == RestCancelled && isOpen && partial::closeRest(movement, number, prompt_)) ++documents_;
  }
}

void Trade::followInParts() {
  execSql("update jxc_xtcs set cs_sprk=1,cs_spck=1");
  loadSession();
  const auto last = [](std::string_view head) { return lookupNumber(compose("select max(id) from {}", {head})); };
  const double receipts = last(families::purchaseReceipt.head), sales = last(families::sale.head);
  constexpr int kReceipts = 8, kLines = 6, kSales = 12;
  for (int i = 0; i < kReceipts; ++i) {
    std::vector<int> wanted;
    while (std::ssize(wanted) < kLines) {
      const int index = random_.below(static_cast<int>(catalogue_.articles.size()));
      if (article(index).isOrdered()) wanted.push_back(index);
    }
    receiveFrom(random_.below(static_cast<int>(staff_.suppliers.size())), 0, wanted, 0);
  }
  for (int i = 0; i < kSales; ++i)
    i % 3 == 0 ? sellToInstitution() : sell(0);
  workAs(staff_.manager);
  auditNewer(families::purchaseReceipt, receipts);
  auditNewer(families::sale, sales);
  moveParts(partial::putawayRules());
  moveParts(partial::issueRules());
}

}  // namespace jxc::demo
