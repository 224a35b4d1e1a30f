#include "stock/cancelling.h"

#include "accounts/cash_ledger.h"
#include "accounts/partner_ledger.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/prompt.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/cancel_checks.h"
#include "stock/document.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/loans.h"
#include "stock/partial_rest.h"
#include "stock/trading.h"

#include <algorithm>
#include <map>
#include <vector>

namespace jxc {
namespace cancelling_detail {

using trading::Head;
using trading::Rules;

bool isRest(const Rules& rules, const QString& number) {
  return rules.reopenSource && partial::closesRest(*rules.family, number);
}

/// A document that hangs on this one: a return that closed its rest, or something that was put away or issued of it.
std::optional<QString> effectElsewhere(const Rules& rules, const QString& number) {
  const PartialMovement* const later = partial::behind(*rules.family);
  if (const QString back = later ? partial::restReturnOf(*later, number) : QString(); !back.isEmpty())
    return u"该单据"_qs + number + u"做了取消"_qs + words(later->doing) +
           u"，不能取消审核！\r\n\r\n请先取消审核退货单："_qs + back + u"，\r\n\r\n然后再取消审核！"_qs;
  if (!rules.effectElsewhere || lookupValue(rules.effectElsewhere, number).isEmpty()) return {};
  const QString kind = words(rules.elsewhereDocument);
  return u"该单据"_qs + number + u"已有"_qs + kind + u"信息，不能取消审核！\r\n\r\n请在商品"_qs + kind +
         u"单中删除该单据的所有信息，\r\n\r\n然后再取消审核！"_qs;
}

/// What was paid and invoiced for a document goes along with it.
struct Along {
  PeriodLock lock;
  QString first;  // day of all that goes: a payment may be older than its document
  double invoiced = 0;
  QString invoice;  // its number

  Refusal locked() const { return lock.against(first, OnDay::Booked); }
};
Along goingAlong(const Head& head) {
  Along along;
  const Ahead paid =
      sendAhead("select min(k_rq) as rq from jxc_ysyfk where gl_djh=? or gl_djh2=?", head.number, head.number);
  const Ahead invoices = sendAhead(
      "select min(fp_rq) as rq,sum(fp_kpje) as je,max(fp_no) as fpno from jxc_fpdjb where gl_djh=?", head.number);
  const RowSet& invoiced = invoices.rows();
  along.first = head.date;
  along.invoiced = invoiced.number(0, 1);
  along.invoice = invoiced.text(0, 2);
  for (const QString& day : {paid.rows().text(0, 0), invoiced.text(0, 0)})
    if (!day.isEmpty()) along.first = std::min(along.first, day);
  return along;
}

/// A return that closed a rest has no waiting state: as a waiting document it would take from the shelf what never
/// came. An invoice that was issued does not come back by itself: it is named.
QString question(const Rules& rules, const QString& number, const Along& along) {
  QString usual = cancel_checks::usualQuestion(number);
  if (along.invoiced != 0 || !along.invoice.isEmpty())
    usual += u"\r\n\r\n该单据已开发票 %1，金额 %2，取消后开票登记随单据删除。"_qs.arg(
        along.invoice.isEmpty() ? u"（未填号码）"_qs : along.invoice, numberText(along.invoiced));
  if (rules.family == &families::sale)
    if (const QString back = loans::conversionOf(number); !back.isEmpty())
      return usual + u"\r\n\r\n该销售单由借货转销售产生，取消后商品仍记为已还："_qs +
             u"\r\n\r\n请接着取消审核还货单："_qs + back + u"，商品才会回到借出状态。"_qs;
  return isRest(rules, number)
             ? usual + u"\r\n\r\n原单取消的数量将恢复为待入库（出库），这张自动生成的退货单将被删除。"_qs
             : usual;
}

Refusal shortageOf(const Rules& rules, const Head& head) {
  if (rules.shortageAtCancel.empty()) return {};
  return checkStockShort(head.number, head.warehouse, QStringView(rules.shortageAtCancel));
}

/// Everything that may stand against it, asked in the order in which the operator sees it.
bool mayGo(const Rules& rules, const QString& number, Head& head, Refusal& shortage, Prompt& prompt, CancelMode mode) {
  const DocumentFamily& family = *rules.family;
  if (!cancel_checks::hasCancelRight(family, prompt)) return false;
  if (isRefused(effectElsewhere(rules, number), prompt)) return false;
  if (!trading::readAudited(rules, number, head)) return false;
  if (!cancel_checks::isFreeOfChecker(family, number, head.checker, prompt)) return false;
  const Along along = goingAlong(head);
  if (isRefused(along.locked(), prompt) || !cancel_checks::isConfirmed(question(rules, number, along), prompt, mode))
    return false;
  shortage = shortageOf(rules, head);
  return mayGoShort(shortage, prompt);
}

/// A return that an unfinished putaway or issue made by itself: its goods never moved, so only the books go back, and
/// the source line is open again.
void reopenSourceLine(const Rules& rules, std::int64_t source) {
  execSql(rules.reopenSource, source);
  const QString document = lookupValue(rules.sourceOpen, source);
  if (!document.isEmpty()) execSql(rules.reopenSourceHead, document);
}

void cancelStock(const Rules& rules, const Head& head) {
  for (const StockEffect& effect : trading::effectsOf(rules, head.number)) {
    if (rules.reopenSource && effect.source != 0) reopenSourceLine(rules, effect.source);
    applyToBalance(effect, -1);
    replayLedger(effect.id, AnchorRow::Skip);
    if (rules.movesCost)
      execSql(rules.goodsCancelled, effect.physical, averageOr(effect.goods, effect.price), effect.goods);
    else
      execSql(rules.goodsCancelled, effect.physical, effect.goods);
  }
}

void cancelMoney(const Rules& rules, const Head& head) {
  const QString& number = head.number;
  const QString mention = u"%"_qs + number + u"%"_qs;
  // Lines that mention the document go with it: freight, and payments made for it, perhaps of other accounts and days.
  // The notes of the whole cash ledger are searched, and once only: by their ids the lines are found again. A payment
  // whose note was changed is found by its number.
  std::map<std::int64_t, Row> lines;
  const RowSet mentioning =
      openSelect("select id,xj_kmmc,xj_rq from jxc_xjyh where gl_djh=? or xj_note like ?", number, mention);
  for (const Row line : mentioning)
    lines.emplace(line.integer("id"), line);
  const RowSet payments = openSelect("select gl_djh from jxc_ysyfk where gl_djh2=? and gl_djh<>''", number);
  std::vector<RowSet> paid;
  for (const Row payment : payments)
    paid.push_back(openSelect("select id,xj_kmmc,xj_rq from jxc_xjyh where gl_djh=?", payment.text("gl_djh")));
  for (const RowSet& each : paid)
    for (const Row line : each)
      lines.emplace(line.integer("id"), line);
  std::map<QString, QString> accounts;  // each with its first day
  const PeriodLock lock;
  for (const auto& [id, line] : lines) {
    const QString date = line.text("xj_rq");
    lock.demandOpen(date, OnDay::Booked);
    const auto known = accounts.try_emplace(line.text("xj_kmmc"), date).first;
    known->second = std::min(known->second, date);
  }
  const RowSet dates = openSelect("select min(k_rq) as rq from jxc_ysyfk where gl_djh=? or gl_djh2=?", number, number);
  const QString partnerFrom = dates.isEmpty() ? QString() : dates.front().text("rq");

  for (const auto& each : lines)
    execSql("delete from jxc_xjyh where id=?", each.first);
  execSql("delete from jxc_yyfy where gl_djh=?", number);
  if (rules.deleteMore) execSql(rules.deleteMore, mention);
  // With its payment gone, a rounding could not be taken back by anybody any more.
  for (const Row payment : payments)
    removeRounding(payment.text("gl_djh"));
  execSql("delete from jxc_ysyfk where gl_djh=? or gl_djh2=?", number, number);
  recomputeYsyfk(head.partner, rules.family->side,
                 partnerFrom.isEmpty() ? head.date : std::min(partnerFrom, head.date));
  execSql("delete from jxc_ysyfk_dj where gl_djh=? or gl_djh2=?", number, number);
  execSql("delete from jxc_fpdjb where gl_djh=?", number);
  recomputeFp(head.partner, rules.family->side, head.date);
  for (const auto& [account, date] : accounts)
    recomputeXjyh(account, date);
}

/// The till's own document goes, and what it brought its member with it.
void cancelAtTill(const Rules& rules, const QString& number) {
  if (!rules.tillMember) return;
  const RowSet members = openSelect(rules.tillMember, number);
  if (members.isEmpty()) return;
  const QString member = members.text(0, 0);
  if (!member.isEmpty() && member != QStringView(builtInSn)) applyHySale(number, member, rules.undoAtTill);
  execSql("delete from jxc_posxsd where gl_djh=?", number);
  execSql("delete from jxc_posxssp where gl_djh=?", number);
}

bool cancel(const Rules& rules, const QString& number, Prompt& prompt, CancelMode mode) {
  const DocumentFamily& family = *rules.family;
  Head head;
  Refusal shortage;
  if (!mayGo(rules, number, head, shortage, prompt, mode)) return false;

  Refusal changed;
  const bool done = onDocument(number, u"取消审核", [&] {
    Transaction transaction(accountDb());
    // Another station may have cancelled it, put goods away or sold them while the questions stood.
    if (!trading::readAudited(rules, number, head)) {
      changed = changedMeanwhile(number);
      return false;
    }
    changed = effectElsewhere(rules, number);
    if (!changed) changed = goingAlong(head).locked();
    if (!changed) {
      const auto now = shortageOf(rules, head);
      if (now != shortage) changed = now;
    }
    if (!changed) {
      const bool rest = isRest(rules, number);
      writeLog(words(family.cancelledLog) + number);
      execSql(compose("delete from {} where {}=0 and {}=?", {family.head, family.status, family.number}), number);
      cancelStock(rules, head);
      cancelAtTill(rules, number);
      execSql(rules.reopenHead, number);
      execSql("delete from jxc_goodslist where gl_djh=?", number);
      cancelMoney(rules, head);
      if (rest) {
        execSql(compose("delete from {} where {}=?", {family.head, family.number}), number);
        execSql(compose("delete from {} where {}=?", {family.lines, family.number}), number);
      }
      refreshMonthStock(head.warehouse, head.month());
      transaction.commit();
    }
    return !changed;
  });
  return !isRefused(changed, prompt) && done;
}

}  // namespace cancelling_detail

bool cancelPurchase(const QString& number, Prompt& prompt, CancelMode mode) {
  return cancelling_detail::cancel(trading::purchase(), number, prompt, mode);
}
bool cancelPurchaseReturn(const QString& number, Prompt& prompt, CancelMode mode) {
  return cancelling_detail::cancel(trading::purchaseReturn(), number, prompt, mode);
}
bool cancelSale(const QString& number, Prompt& prompt, CancelMode mode) {
  return cancelling_detail::cancel(trading::sale(), number, prompt, mode);
}
bool cancelSaleReturn(const QString& number, Prompt& prompt, CancelMode mode) {
  return cancelling_detail::cancel(trading::saleReturn(), number, prompt, mode);
}

bool cancelDocument(const QString& number, Prompt& prompt, CancelMode mode) {
  return documentFamily(number).takeBack(number, prompt, mode);
}

}  // namespace jxc
