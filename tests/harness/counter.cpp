#include "harness/counter.h"

#include "core/statements.h"
#include "inventory/stocktaking.h"
#include "inventory/transfer.h"
#include "inventory/write_off.h"
#include "purchasing/purchase_return.h"
#include "purchasing/receipt.h"
#include "sales/loan.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "sales/sale.h"
#include "sales/sale_return.h"
#include "stock/cancelling.h"
#include "stock/document.h"
#include "stock/loans.h"
#include "stock/partial_rules.h"

#include <stdexcept>
#include <utility>

namespace jxc::test {
namespace counter_detail {

constexpr int goodsCount = 50;

}  // namespace counter_detail

QString goodsCode(int index) {
  return QString::number(1000001 + index);
}

void addGoods(int index, double cost) {
  execSql("insert into jxc_goods (g_sn,g_name,g_jj,g_kc,g_pjjj,g_scjj,g_cgpl,g_xspl,g_jy) values (?,?,?,0,0,0,0,0,0)",
          goodsCode(index), QStringLiteral("镜架%1").arg(index), cost);
}

void openShop(Prompt& prompt) {
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  for (int i = 0; i < counter_detail::goodsCount; ++i)
    addGoods(i, 10.0 + i);
  receipt::ReceiptDraft draft = receipt::newReceipt();
  for (int i = 0; i < counter_detail::goodsCount; ++i) {
    receipt::LineDraft line = receipt::newLine(goodsCode(i));
    line.amounts.setQuantity(100);
    line.amounts.setPrice(10);
    receipt::addLine(receipt::Lines::Draft, draft.number, draft.date, line);
  }
  draft.paid = draft.payable = receipt::payable(draft.number);
  draft.account = QStringLiteral("现金");
  const SaveResult saved = receipt::saveReceipt(draft, prompt);
  if (!saved || checkDj(families::purchaseReceipt, saved.number, prompt) != AuditOutcome::Audited)
    throw std::runtime_error("no stock to begin with");
  // From now on goods come and go by documents of their own.
  execSql("update jxc_xtcs set cs_sprk=1,cs_spck=1");
}

void Counter::step() {
  const int dice = upTo(31);
  if (dice < 5)
    make(receipt::rules(), 3);
  else if (dice < 9)
    make(sale::rules(), 2);
  else if (dice < 11)
    make(purchase_return::rules(), 1);
  else if (dice < 13)
    make(sale_return::rules(), 1);
  else if (dice < 15)
    makeWithin();
  else if (dice < 19)
    movePart();
  else if (dice < 25)
    audit();
  else if (dice < 28)
    cancel();
  else if (dice < 29)
    lend();
  else
    endLoan();
}

void Counter::make(const TradingRules& rules, int lines) {
  TradingDraft draft = rules.fresh({});
  bool any = false;
  for (int i = 0; i < lines; ++i) {
    const LinePlace place{
        .number = draft.number, .date = draft.date, .partner = draft.partner, .warehouse = draft.warehouse};
    LineDraft line = rules.lines().newLine(goodsCode(upTo(counter_detail::goodsCount)), place, false);
    line.amounts.setQuantity(1 + upTo(5));
    line.amounts.setPrice(10 + upTo(9));
    const LineResult added = rules.lines().addLine(Lines::Draft, place, line, his_.own);
    if (!added) continue;
    draft.number = added.number;
    any = true;
  }
  if (!any) return;
  draft.payable = rules.payable(draft.number);
  draft.paid = draft.payable;
  draft.account = QStringLiteral("现金");
  if (const SaveResult saved = rules.save(draft, his_.own)) his_.tell('S', saved.number);
}

void Counter::makeWithin() {
  switch (upTo(4)) {
    case 0: {
      transfer::TransferDraft draft = transfer::rules().fresh({});
      draft.into = QStringLiteral("100002");
      return keep(transfer::rules(), transfer::rules().lines(), std::move(draft));
    }
    case 1: {
      const DocumentFamily& kind = upTo(2) ? families::loss : families::overflow;
      DocumentDraft draft = write_off::fresh(kind, {});
      const LineRules& lines = write_off::rules().of(draft.number).lines();
      return keep(write_off::rules(), lines, std::move(draft));
    }
    default:
      return keep(stocktaking::rules(), stocktaking::rules().lines(), stocktaking::rules().fresh({}));
  }
}

/// A document that moves some of what a receipt or a sale has left open, which other stations move as well.
void Counter::movePart() {
  const partial::PartialRules& rules = upTo(2) ? partial::putawayRules() : partial::issueRules();
  const RowSet sources = openSelect(partial::waitingSources(rules.movement(), {}));
  if (sources.isEmpty()) return;
  const QString source = sources.text(upTo(sources.rowCount()), 1);
  const auto draft = rules.takeWhole(source, rules.fresh({}), his_.late);
  if (!draft) return;
  for (const Row line : openSelect(rules.draftLines(draft->number)))
    if (upTo(2)) rules.lines().setChange(QStringLiteral("1"), u"sl", Lines::Draft, line.integer("id"), his_.late);
  if (const SaveResult saved = rules.save(*draft, his_.late))
    his_.tell('S', saved.number);
  else
    discardDraft(rules.family(), draft->number);
}

void Counter::lend() {
  DraftOfPartner draft = lending::rules().fresh({});
  draft.partner = lookupValue("select top 1 kh_sn from jxc_khxx order by id");
  keep(lending::rules(), lending::rules().lines(), std::move(draft), {.rent = 2, .deposit = 30});
}

/// It has no waiting state.
void Counter::tellBorn(const QString& number) {
  his_.tell('S', number);
  his_.tell('A', number);
}

/// What is out of a line comes back, or the customer keeps it.
void Counter::endLoan() {
  const RowSet out = openSelect(
      "select top 40 b.id,b.gl_djh from jxc_khjhsp b inner join jxc_khjh a on b.gl_djh=a.gl_djh where a.jh_status=1 "
      "and b.jh_flag='借货' and b.jh_sl>b.jh_hhsl+b.jh_xssl order by b.id desc");
  if (out.isEmpty()) return;
  const Row lent = out[upTo(out.rowCount())];
  const std::int64_t line = lent.integer("id");
  if (upTo(2)) {
    const auto kept = loan_sale::open(line, his_.late);
    const auto made = kept ? loan_sale::save(*kept, his_.late) : std::nullopt;
    if (!made) return;
    tellBorn(made->back);
    tellBorn(made->sale);
  } else if (const auto back = loan_return::open(lent.text("gl_djh"), line, his_.late)) {
    if (const auto saved = loan_return::save(*back, his_.late))
      tellBorn(*saved);
    else
      loan_return::discard();
  }
}

/// One line of a document within the house, and its save.
template <class Draft>
void Counter::keep(const RulesOver<Draft>& rules, const LineRules& lines, Draft draft, const Terms& terms) {
  draft.warehouse = draft.salesperson = QStringLiteral("100001");
  const LinePlace place{.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
  LineDraft line = lines.newLine(goodsCode(upTo(counter_detail::goodsCount)), place, false);
  line.amounts.setQuantity(1 + upTo(9));
  line.rent = terms.rent;
  line.deposit = terms.deposit;
  line.account = QStringLiteral("现金");
  const LineResult added = lines.addLine(Lines::Draft, place, line, his_.own);
  if (!added) return;
  draft.number = added.number;
  if (const SaveResult saved = rules.save(draft, his_.own)) his_.tell('S', saved.number);
}

/// One of the last documents of some family in this state; empty when there is none.
QString Counter::any(int status) {
  static const DocumentFamily* const families[] = {
      &families::purchaseReceipt,
      &families::purchaseReceipt,
      &families::sale,
      &families::sale,
      &families::purchaseReturn,
      &families::saleReturn,
      &families::transfer,
      &families::loss,
      &families::overflow,
      &families::stocktake,
      &families::putaway,
      &families::issue,
      &families::loan,
      &families::loan};  // and their returns, which stand in the same table
  const DocumentFamily& family = *families[upTo(std::size(families))];
  const RowSet documents = openSelect(
      compose("select top 40 {} from {} where {}=? order by id desc", {family.number, family.head, family.status}),
      status);
  return documents.isEmpty() ? QString() : documents.text(upTo(documents.rowCount()), 0);
}

void Counter::audit() {
  const QString number = any(0);
  if (number.isEmpty()) return;
  if (checkDj(documentFamily(number), number, his_.late) == AuditOutcome::Audited) his_.tell('A', number);
}

void Counter::cancel() {
  const QString number = any(1);
  if (number.isEmpty()) return;
  const bool isReturn = &documentFamily(number) == &families::loanReturn;
  const QString alsoGoes = isReturn ? loans::saleOf(number) : QString();
  if (!cancelDocument(number, his_.late, CancelMode::Batch)) return;
  his_.tell('C', number);
  if (isReturn) his_.tell('G', number);
  if (!alsoGoes.isEmpty()) his_.tell('G', alsoGoes);
}

}  // namespace jxc::test
