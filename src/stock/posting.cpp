#include "stock/posting.h"

#include "accounts/cash_ledger.h"
#include "accounts/partner_ledger.h"
#include "core/clock.h"
#include "core/log.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/partial_movement.h"
#include "stock/trading.h"

#include <optional>
#include <stdexcept>
#include <vector>

namespace jxc {
namespace posting_detail {

using trading::Head;
using trading::Rules;

void postCashLine(const Head& head, const QString& kind, double amount, const QString& note) {
  postRow("jxc_xjyh", {{"xj_rq", head.date},
                       {"gl_djh", head.number},
                       {"xj_dlx", kind},
                       {"xj_je", amount},
                       {"u_name", head.salespersonName},
                       {"ghs_name", head.partnerName},
                       {"ghs_sn", head.partner},
                       {"ck_name", head.warehouseName},
                       {"xj_kmmc", head.account},
                       {"xj_note", note},
                       {"a_name", session().a_name},
                       {"xj_chk", QStringLiteral("1")},
                       {"xj_ljje", 0.0}});
}

/// What is due by the partner's ledger: under settlement at paid amount the document leaves the balance unmoved.
double ledgerDue(const Head& head) {
  return head.settlement == 0 ? head.paid : head.due;
}

void postPartner(const Rules& rules, const Head& head) {
  postRow("jxc_ysyfk", {{"k_ghskh", head.partner},
                        {"a_name", session().a_name},
                        {"u_sn", head.salesperson},
                        {"k_fkfs", head.account},
                        {"k_sfje", head.paid},
                        {"k_yhje", 0.0},
                        {"k_qcje", 0.0},
                        {"k_ljje", 0.0},
                        {"k_yfje", ledgerDue(head)},
                        {"k_type", partnerTypeText(rules.family->side)},
                        {"k_djlx", words(rules.family->prefix)},
                        {"k_djtxt", words(rules.kindText)},
                        {"k_note", head.note},
                        {"k_flag", 1},
                        {"k_rq", head.date},
                        {"gl_djh", head.number}});
}

void postInvoice(const Rules& rules, const Head& head) {
  postRow("jxc_fpdjb", {{"fp_ghskh", head.partner},
                        {"a_name", session().a_name},
                        {"u_sn", head.salesperson},
                        {"fp_no", head.invoiceNumber},
                        {"fp_sfje", head.paid},
                        {"fp_kpje", head.invoiced},
                        {"fp_qcje", 0.0},
                        {"fp_ljje", 0.0},
                        {"fp_yfje", ledgerDue(head)},
                        {"fp_type", partnerTypeText(rules.family->side)},
                        {"fp_djlx", words(rules.family->prefix)},
                        {"fp_djtxt", words(rules.kindText)},
                        {"fp_note", head.note},
                        {"fp_flag", 1},
                        {"fp_rq", head.date},
                        {"fp_kprq", head.invoiced != 0 ? head.date : QString()},
                        {"fp_check", true},
                        {"fp_checker", session().a_name},
                        {"fp_chkrq", clock::today()},
                        {"gl_djh", head.number}});
}

/// Freight or packing that we pay: an expense, and money out of the document's account. It never enters the cost of
/// goods.
void postCharge(const Rules& rules, const Head& head, const QString& type, double amount) {
  if (amount <= 0) return;
  const QString note = words(rules.freightWord) + head.number + u"产生的"_qs + type;
  postRow("jxc_yyfy", {{"fy_rq", head.date},
                       {"gl_djh", head.number},
                       {"fy_lx", type},
                       {"fy_je", -amount},
                       {"fy_flag", QStringLiteral("1")},
                       {"u_sn", head.salesperson},
                       {"de_sn", QStringLiteral("100001")},
                       {"fy_kmmc", u"现金"_qs},
                       {"fy_chk", QStringLiteral("1")},
                       {"fy_note", note},
                       {"a_name", session().a_name},
                       {"fy_sc", u"费用"_qs}});
  postCashLine(head, u"费用付款"_qs, -amount, note);
}

/// Lines of cash, partner and invoices, and the balances that run along them: asked together with what stock asks next.
std::vector<AskedBalance> postMoney(const Rules& rules, const Head& head) {
  postCashLine(head, words(rules.cashKind), rules.cashSign * head.paid, head.note);
  if (!rules.freightWord.empty() && head.freightPayer == wePayText) {
    postCharge(rules, head, u"运费"_qs, head.freight);
    postCharge(rules, head, u"包装费"_qs, head.packing);
  }
  postPartner(rules, head);
  std::vector<AskedBalance> balances{askXjyh(head.account, head.date),
                                     askYsyfk(head.partner, rules.family->side, head.date)};
  if (strIsTrue(session().cs_kp)) {
    postInvoice(rules, head);
    balances.push_back(askFp(head.partner, rules.family->side, head.date));
  }
  return balances;
}

/// Goods master after one row: stock, use counter, and for purchases price, supplier and average. The average cannot be
/// below zero: it is an absolute value, or the price of the line.
void postGoods(const Rules& rules, const Head& head, const StockEffect& effect, std::optional<double> average) {
  if (!average)
    postSql(rules.goodsPosted, effect.physical, effect.goods);
  else if (rules.family == &families::purchaseReceipt)
    postSql(rules.goodsPosted, effect.physical, effect.price, head.partner, *average, effect.goods);
  else
    postSql(rules.goodsPosted, effect.physical, *average, effect.goods);
}

/// Goods move with the audit, unless a document of their own moves them later. What an exchange brings back waits for
/// none.
void markMoved(const Rules& rules, const QString& number) {
  const DocumentFamily& f = *rules.family;
  const LineColumns& c = *f.line.columns;
  if (rules.markLines[0] && !(c.movedLater && c.movedLater()))
    postSql(rules.markLines[0], number);
  else if (rules.markLines[0])
    postSql(compose("update {} set {}={} where {}<0 and {}=?", {f.lines, c.moved, c.quantity, c.quantity, f.number}),
            number);
  if (rules.markLines[1]) postSql(rules.markLines[1], number);
  if (const PartialMovement* later = partial::behind(f)) partial::markEmptied(*later, number, {});
}

/// Writes the rows of the stock ledger and asks what they do to stock.
struct LedgerRows {
  Ahead written, lines, effects;
};
LedgerRows writeLedger(const Rules& rules, const QString& number) {
  markMoved(rules, number);
  const Ahead written = sendAhead(rules.insertLedger, session().a_name, clock::today(), number);
  const Ahead lines = askLineCount(*rules.family, number);
  if (rules.afterLedger) postSql(rules.afterLedger, number);
  return {written, lines, trading::askEffects(rules, number)};
}

/// The balancing line tells the difference between paid and due, whoever changed one of them since it was made. What is
/// left open on account is no difference.
void renewBalancing(const Rules& rules, const Head& head) {
  if (!rules.keepsBalancing) return;
  const bool settled = head.settlement == 0 && !paysDue(head.paid, head.due);
  renewBalancingLine(*rules.family, head.number, settled ? toSixDecimals(head.paid - head.due) : 0);
}

/// Everything that audit of a trading document writes. What needs the answer to a question stands behind all questions
/// that may travel with it: on a server every answer that is waited for is a round trip.
/// Inside the caller's transaction, without a savepoint of its own: below a savepoint SQLite keeps a copy of every page
/// that a statement changes, and what a statement costs grows with the document.
void post(const Rules& rules, const QString& number) {
  Head head;
  if (!trading::readHead(rules, number, head)) throw std::runtime_error("单据的往来单位、仓库或经办人不存在。");
  renewBalancing(rules, head);
  const LedgerRows ledger = writeLedger(rules, number);
  const std::vector<AskedBalance> balances = postMoney(rules, head);
  if (ledger.written.changed() != static_cast<std::int64_t>(ledger.lines.number()))
    throw std::runtime_error("单据中的商品在商品资料中不存在。");
  const std::vector<StockEffect> effects = trading::effectsIn(rules, ledger.effects.rows());
  postEffects(effects, MasterOrder::AfterReplay, [&](const StockEffect& effect, std::optional<double> average) {
    postGoods(rules, head, effect, average);
  });
  for (const AskedBalance& balance : balances)
    balance.carry();
  writeLog(words(rules.auditLog) + head.number + u"，共%1种商品"_qs.arg(effects.size()));
  refreshMonthStock(head.warehouse, head.month());
  if (rules.bumpEmployee) rules.bumpEmployee(head.salesperson);
}

}  // namespace posting_detail

void postPurchase(const QString& number) {
  posting_detail::post(trading::purchase(), number);
}
void postPurchaseReturn(const QString& number) {
  posting_detail::post(trading::purchaseReturn(), number);
}
void postSale(const QString& number) {
  posting_detail::post(trading::sale(), number);
}
void postSaleReturn(const QString& number) {
  posting_detail::post(trading::saleReturn(), number);
}

}  // namespace jxc
