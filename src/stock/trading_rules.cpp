#include "stock/trading_rules.h"

#include "core/refusal.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "stock/contract_ties.h"

namespace jxc {

TradingDraft TradingRules::fresh(const QString& lastDate) const {
  TradingDraft draft;
  begin(draft, lastDate);
  draft.partner = partnerOf(family()).byDefault();
  draft.settlement = session().cs_activatets == u"1" ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  draft.account = lookupValue("select top 1 yh_name from jxc_yhzh order by id");
  return draft;
}

double TradingRules::payable(const QString& number) const {
  const DocumentFamily& f = family();
  return roundTotalIfSeparate(lookupNumber(
      compose("select sum({}) as zje from {} where {}=? and a_name=?", {f.line.columns->total, f.lines, f.number}) +
          (document_.balancingIsDue ? "" : " and g_sn<>'00000000'"),
      number, session().a_name));
}

double TradingRules::paidAfter(double payable, double typed, const TradingDraft& draft) const {
  if (session().*document_.paidFollows != u"0") return typed;
  return draft.settledBefore ? backAtMost(payable, *draft.settledBefore) : payable;
}

std::optional<AuditDraft> TradingRules::loadForAudit(const QString& number) const {
  const DocumentFamily& f = family();
  const RowSet rows = openSelect(headsWithNames() + compose(" and a.{}=? order by a.id", {f.number}), number);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  AuditDraft draft;
  draft.number = number;
  draft.date = row.text(f.date);
  draft.partnerName = row.text(partnerOf(f).name);
  draft.warehouseName = row.text("ck_name");
  draft.salespersonName = row.text("u_name");
  draft.operatorName = row.text("a_name");
  draft.payable = row.number("yfje");
  draft.paid = row.number("sfje");
  draft.settlement = row.integer(f.settlement) == 1 ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  draft.account = row.text(f.account);
  draft.note = row.text(f.note);
  return draft;
}

AuditOutcome TradingRules::audit(const AuditDraft& draft, Prompt& prompt) const {
  if (isRefused(auditGate(draft.number, draft.date), prompt)) return AuditOutcome::Refused;
  if (!mayAudit(draft, prompt)) return AuditOutcome::Refused;
  const DocumentFamily& f = family();
  const double paid = roundTotalIfSeparate(draft.paid);
  double booked = paid;
  const auto change = [&](std::int64_t head) {
    const double due = f.headSign * lookupNumber(compose("select {} from {} where id=?", {f.due, f.head}), head);
    const Balanced money = settleMoney(draft.number, draft.settlement, paid, due);
    booked = money.paid;
    updateRow(f.head, head,
              {{f.settlement, static_cast<int>(draft.settlement)},
               {f.due, f.headSign * money.due},
               {f.paid, f.headSign * money.paid},
               {f.discount, draft.settlement == Settlement::AtPaidAmount ? money.due - money.paid : 0.0},
               {f.note, sanitizeText(draft.note).left(100)},
               {f.account, draft.account}});
  };
  const AuditOutcome outcome = auditAsking(f, draft.number, prompt, change);
  if (outcome == AuditOutcome::Audited) tellBooked(draft.paid, booked, prompt);
  return outcome;
}

Balanced TradingRules::settleMoney(const QString& number, Settlement settlement, double paid, double due) const {
  // What goes on account is no difference: a balancing line of before goes.
  if (document_.balance && settlement == Settlement::AtPaidAmount) return document_.balance(number, paid, due);
  if (document_.balance) document_.balance(number, due, due);
  return {.due = due, .paid = paid};
}

void TradingRules::tellBooked(double typed, double booked, Prompt& prompt) const {
  if (toSixDecimals(typed) != toSixDecimals(booked))
    prompt.notice(words(document_.paidWord) + u"改为 "_qs + numberText(booked));
}

QString TradingRules::differenceText(const AuditDraft& draft) const {
  if (!document_.balance || draft.settlement != Settlement::AtPaidAmount) return {};
  const double paid = roundTotalIfSeparate(draft.paid);
  const QString difference = u"差额 "_qs + numberText(toSixDecimals(paid - draft.payable));
  switch (differenceOf(paid, draft.payable)) {
    case Difference::None:
      break;
    case Difference::BalancingLine:
      return difference + u" 记入优惠商品"_qs;
    case Difference::Spread:
      return difference + u" 平摊到商品"_qs;
    case Difference::PaidFollows:
      return difference + u" 不入账，"_qs + words(document_.paidWord) + u"改为 "_qs + numberText(draft.payable);
  }
  return {};
}

bool TradingRules::isIncomplete(const TradingDraft& draft, Prompt& prompt) const {
  return RulesOver::isIncomplete(
             draft, prompt,
             {draft.partner.isEmpty(), u"请选择"_qs + words(partnerOf(family()).noun) + u'！', Subject::Partner}) ||
         isRefused(contractStands(draft), prompt);
}

Refusal TradingRules::contractStands(const TradingDraft& draft) const {
  return contract_ties::against(family(), draft.contract, draft.partner);
}

}  // namespace jxc
