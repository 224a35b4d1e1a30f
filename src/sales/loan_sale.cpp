#include "sales/loan_sale.h"

#include "core/clock.h"
#include "core/numbers.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/prices.h"
#include "sales/loan.h"
#include "sales/sale.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/loans.h"
#include "stock/prepayment.h"

#include <algorithm>

namespace jxc::loan_sale {
namespace loan_sale_detail {

LineDraft lineOf(const Conversion& c) {
  LineDraft line;
  line.goods = c.goods;
  line.warehouse = c.warehouse;
  line.amounts.setQuantity(c.quantity);
  line.amounts.setPrice(c.price);
  line.cost = getGoodsCost(c.goods, c.warehouse, c.date);
  line.retail = c.retail;
  return line;
}

/// What stands against it as it was put together: the loan may have changed at another station.
Refusal standsAgainst(const Conversion& c) {
  const auto lent = loans::loanLine(c.line);
  if (!lent || lent->open() != c.quantity || lent->held() != c.held || lent->partner != c.partner ||
      lent->warehouse != c.warehouse)
    return changedMeanwhile(c.loan);
  return c.date.left(10) < lent->date ? Refusal(u"还货日期不能早于借货日期："_qs + lent->date + u'！', Subject::Date)
                                      : Refusal();
}

Refusal impossible(const Conversion& c) {
  if (c.price < 0 || c.price >= kDearest)
    return {u"销售单价不能小于0，也不能过大，请重新输入！"_qs, Subject::SalePrice};
  if (c.paid < 0) return {u"实付金额不能小于0！"_qs, Subject::Total};
  if (c.rentTaken < 0 || c.rentTaken > c.held + 5e-7)
    return {u"扣除押金不能小于0，也不能大于可用押金，重新输入！"_qs, Subject::Deposit};
  if (c.refund < 0 || c.refund > lending::rounded(c.held - c.rentTaken) + 5e-7)
    return {u"退回押金不能大于可用押金减去扣除押金！"_qs, Subject::Refund};
  return lending::accountGone(c.account, c.goods);
}

/// The return: all that is open of the line comes back as kept, and leaves again by the sale.
QString saveReturn(const Conversion& c) {
  const DocumentFamily& f = families::loanReturn;
  const QString number = nextDocNoOn(f.lines, f.number, words(f.prefix), c.date);
  const double cost = getGoodsCost(c.goods, c.warehouse, c.date);
  const auto lent = loans::loanLine(c.line);
  insertRow(f.lines, {{f.number, number},
                      {"g_sn", c.goods},
                      {"a_name", session().a_name},
                      {"jh_dj", cost},
                      {"jh_zje", cost * c.quantity},
                      {"jh_sl", lent->lent},
                      {"jh_hhsl", 0},
                      {"jh_sl2", c.quantity},
                      {"jh_xssl", c.quantity},
                      {"gl_djh2", c.loan},
                      {"jh_flag", u"销售"},
                      {"jh_kmmc", c.account},
                      {"id2", c.line},
                      {"jh_yj", c.held},
                      {"jh_yj2", c.rentTaken},
                      {"jh_zzj", c.rentTaken},
                      {"jh_ts", c.days},
                      {"jh_zj", c.rent},
                      {"jh_thyj", c.refund}});
  DocumentDraft head = c;
  head.note = c.note + u"还货：借货转销售"_qs;
  const std::int64_t id = insertWaitingHead(f, head, number);
  updateRow(f.head, id, {{f.partner, c.partner}, {"jh_flag", u"hh"}});
  if (auditInside(f, number) != AuditOutcome::Audited) throw std::runtime_error("还货单没有审核。");
  updateRow(f.head, id, {{f.checkDate, c.date}});
  return number;
}

/// The sale: issued with its audit, whatever waits for an issue of its own otherwise.
struct SavedSale {
  QString number;
  double paid = 0;  // as it was booked
};
SavedSale saveSale(const Conversion& c, const QString& back) {
  const DocumentFamily& f = families::sale;
  TradingDraft draft = c;
  draft.number = nextDocNoOn(f.lines, f.number, words(f.prefix), c.date);
  draft.note = c.note + u"销售：借货转销售"_qs;
  draft.originalNumber = c.loan;
  draft.straightToStock = true;
  const LinePlace place{.number = draft.number, .date = c.date, .partner = c.partner, .warehouse = c.warehouse};
  const LineDraft kept = lineOf(c);
  const AddedLines line = *sale::rules().lines().addLines(Lines::Draft, place, {&kept, 1});
  updateRow(f.lines, line.last, {{"gl_djh2", back}});
  const double paid = roundTotalIfSeparate(c.paid);
  Balanced money{.due = c.payable, .paid = paid};
  if (c.settlement == Settlement::AtPaidAmount) money = balanceSale(line.number, paid, c.payable);
  sale::writeHead(draft, line.number, money);
  execSql("update jxc_lsxsd set ls_crk=1,ls_qk=0 where gl_djh=?", line.number);
  if (auditInside(f, line.number) != AuditOutcome::Audited) throw std::runtime_error("销售单没有审核。");
  return {line.number, money.paid};
}

}  // namespace loan_sale_detail

void Conversion::setPrice(double yuan) {
  price = yuan;
  payable = paid = lending::rounded(price * quantity);
}
void Conversion::setDate(const QString& day) {
  date = day;
  if (const auto lent = loans::loanLine(line)) days = lent->daysUntil(day);
}
void Conversion::takeRent(bool taken) {
  setRentTaken(taken ? std::min(held, lending::rounded(rent * quantity * days)) : 0);
}
void Conversion::setRentTaken(double yuan) {
  rentTaken = yuan;
  refund = lending::rounded(std::max(0.0, held - rentTaken));
}

std::optional<Conversion> open(std::int64_t line, Prompt& prompt) {
  const auto lent = loans::loanLine(line);
  if (refused({{!hasRight(families::loanReturn.make), u"您没有客户借货管理的权限！"_qs},
               {!lent, changedMeanwhile({})},
               {lent && lent->open() <= 0, u"该商品已经还货结束，不能销售！"_qs}},
              prompt))
    return {};
  Conversion c;
  c.line = line;
  c.loan = lent->loan;
  c.loanDate = lent->date;
  c.goods = lent->goods;
  c.partner = lent->partner;
  c.warehouse = lent->warehouse;
  c.salesperson = lent->salesperson;
  c.quantity = lent->open();
  c.rent = lent->rent;
  c.held = lent->held();
  c.retail = lookupNumber("select g_lsj from jxc_goods where g_sn=?", c.goods);
  c.account = lookupValue("select top 1 yh_name from jxc_yhzh order by id");
  c.settlement = session().cs_activatets.toInt() == 1 ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  c.setDate(clock::today());
  c.setPrice(getSalePrice(c.partner, c.goods));
  c.takeRent(false);
  return c;
}

std::optional<Converted> save(const Conversion& c, Prompt& prompt) {
  using namespace loan_sale_detail;
  if (refused({{c.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
               auditGate(c.loan, c.date),
               warehouseGone(c.warehouse),
               standsAgainst(c),
               impossible(c)},
              prompt) ||
      !sale::rules().lines().mayPrice(lineOf(c), prompt) ||
      (c.settlement == Settlement::RestOnAccount && !mayGoOnAccount(c.partner, c.payable - c.paid, prompt)) ||
      !prompt.ask(u"数据保存后不能再修改，是否确认保存！"_qs))
    return {};

  Refusal changed;
  QString back;
  SavedSale made;
  onDocument(c.loan, u"转销售", [&] {
    Transaction transaction(accountDb());
    // Also what may have changed while the question stood: accounts and warehouses are renamed and deleted.
    changed = standsAgainst(c);
    if (!changed) changed = impossible(c);
    if (!changed) changed = warehouseGone(c.warehouse);
    if (changed) return;
    back = saveReturn(c);
    made = saveSale(c, back);
    transaction.commit();
  });
  if (isRefused(changed, prompt)) return {};
  sale::rules().tellBooked(c.paid, made.paid, prompt);
  return Converted{back, made.number};
}

}  // namespace jxc::loan_sale
