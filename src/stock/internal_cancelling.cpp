// 内部单据取消审核: cancel of the documents within the house and of loans, of stock/cancelling.h.
#include "core/log.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "stock/cancel_checks.h"
#include "stock/document.h"
#include "stock/failing_command.h"
#include "stock/internal_documents.h"
#include "stock/ledger.h"
#include "stock/stock_effect.h"
#include "stock/stocktake.h"

namespace jxc {
namespace internal_cancelling_detail {

using internal_documents::askHead;
using internal_documents::Head;
using internal_documents::Master;
using internal_documents::readHead;
using internal_documents::Rules;

Refusal shortageOf(const Rules& rules, const QString& number) {
  return rules.bringsIn ? cancel_checks::shortWhenTakenBack(number) : Refusal();
}

std::optional<QString> heldBy(const Rules& rules, const QString& number) {
  return rules.heldBy ? rules.heldBy(number) : std::nullopt;
}

void stockBack(const Rules& rules, const Head& head, const Row& row) {
  const int direction = rules.outwards ? -1 : 1;
  const double quantity = direction * row.number("gl_sl");
  const QString warehouse = row.text("ck_sn");
  const QString goods = row.text("g_sn");
  execSql("update jxc_kcsp set kc_sl=kc_sl-(?),kc_zsl=kc_zsl-(?) where ck_sn=? and g_sn=?", quantity, quantity,
          warehouse, goods);
  if (rules.master != Master::None) execSql("update jxc_goods set g_kc=g_kc-(?) where g_sn=?", quantity, goods);
  if (rules.master == Master::StockAndCost)
    execSql("update jxc_goods set g_pjjj=? where g_sn=?", averageOr(goods, row.number("gl_dj")), goods);
  else if (const double average = rules.averageAtCancel ? goodsAvgCost(goods) : -1; average != -1)
    execSql("update jxc_goods set g_pjjj=? where g_sn=?", average, goods);
  internal_documents::addToMonth(warehouse, head.month(), -quantity, -direction * row.number("gl_zje"));
}

void takeBack(const Rules& rules, const Head& head) {
  const DocumentFamily& family = *rules.family;
  const QString& number = head.number;
  writeLog(words(family.cancelledLog) + number);
  execSql(compose("delete from {} where {}=0 and {}=?", {family.head, family.status, family.number}), number);
  ensureStockRows(head.month());
  const RowSet rows = internal_documents::askLedger(number).rows();
  for (const Row row : rows) {
    if (rules.rowCancelled) rules.rowCancelled(row);
    if (rules.replayFirst) replayLedger(row.integer("id"), AnchorRow::Skip);
    stockBack(rules, head, row);
    if (!rules.replayFirst) replayLedger(row.integer("id"), AnchorRow::Skip);
  }
  if (rules.cancelled) rules.cancelled(number);
  if (rules.cancelDeletes) {
    execSql(compose("delete from {} where {}=?", {family.head, family.number}), number);
    execSql(compose("delete from {} where {}=?", {family.lines, family.number}), number);
  } else {
    execSql(compose("update {} set {}=0,{}='',{}='' where {}=?",
                    {family.head, family.status, family.checkDate, family.checker, family.number}),
            number);
  }
  execSql("delete from jxc_goodslist where gl_djh=?", number);
  if (!rules.differenceWord.empty() || rules.cancelDeletes)
    execSql("delete from jxc_yyfy where gl_djh=? or fy_note like ?", number, u"%"_qs + number + u"%"_qs);
}

bool cancel(const DocumentFamily& family, const QString& number, Prompt& prompt, CancelMode mode) {
  using namespace cancel_checks;
  const Rules& rules = internal_documents::rulesOf(family);
  Head head;
  if (!hasCancelRight(family, prompt)) return false;
  if (!readHead(family, askHead(family, number).rows(), head) || head.status != 1) return false;
  if (rules.bindsChecker && !isFreeOfChecker(family, number, head.checker, prompt)) return false;
  if (!passesGate(number, head.date, prompt)) return false;
  if (isRefused(heldBy(rules, number), prompt)) return false;
  QString question = family.isCount() ? u"您的操作将取消当前的单据，确认吗？"_qs : usualQuestion(number);
  if (rules.cancelsAlso) question += rules.cancelsAlso(number);
  if (!isConfirmed(question, prompt, mode)) return false;
  if (family.isCount() && isRefused(stock_count::movedSinceAudit(number), prompt)) return false;
  const auto agreed = shortageOf(rules, number);
  if (!mayGoShort(agreed, prompt)) return false;

  Refusal changed;
  const bool done = onDocument(number, u"取消审核", [&] {
    Transaction transaction(accountDb());
    const PeriodLock lock;
    if (!readHead(family, askHead(family, number).rows(), head) || head.status != 1) {
      changed = changedMeanwhile(number);
      return false;
    }
    const auto shortage = shortageOf(rules, number);
    changed = heldBy(rules, number);
    if (family.isCount()) changed = stock_count::movedSinceAudit(number);
    if (!changed) changed = lock.against(head.date, OnDay::Booked);
    if (!changed && shortage != agreed) changed = shortage;
    if (!changed) {
      takeBack(rules, head);
      transaction.commit();
    }
    return !changed;
  });
  return !isRefused(changed, prompt) && done;
}

}  // namespace internal_cancelling_detail

bool cancelTransfer(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::transfer, number, prompt, mode);
}
bool cancelStocktake(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::stocktake, number, prompt, mode);
}
bool cancelLoss(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::loss, number, prompt, mode);
}
bool cancelOverflow(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::overflow, number, prompt, mode);
}
bool cancelSplit(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::split, number, prompt, mode);
}
bool cancelBundle(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::bundle, number, prompt, mode);
}
bool cancelLoan(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::loan, number, prompt, mode);
}
bool cancelLoanReturn(const QString& number, Prompt& prompt, CancelMode mode) {
  return internal_cancelling_detail::cancel(families::loanReturn, number, prompt, mode);
}

}  // namespace jxc
