#include "stock/trading_rules.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"

namespace jxc {
namespace trading_rules_detail {

std::string linesWithNames(const TradingDescription& document) {
  const std::string name = document.family->line.gift.empty()
                               ? "b.g_name"
                               : compose("b.g_name+iif(a.{} is null,'',a.{}) as g_name",
                                         {document.family->line.gift, document.family->line.gift});
  return "select a.*," + name +
         compose(
             ",b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm from {} a,jxc_goods b where a.g_sn=b.g_sn and "
             "a.{}=?",
             {document.family->lines, document.family->number});
}

/// The head with the names that screens show.
std::string headsWithNames(const TradingDescription& document) {
  const DocumentFamily& f = *document.family;
  const TradingPartner& partner = *document.partner;
  const std::string sign = f.headSign < 0 ? "-1*" : "";
  const std::string open =
      "(" + compose("a.{}-a.{}", {f.due, f.paid}) + (f.discount.empty() ? "" : compose("-a.{}", {f.discount})) + ")";
  return "select a.*," + sign + compose("a.{} as yfje,", {f.due}) + sign + compose("a.{} as sfje,", {f.paid}) + sign +
         open +
         compose(
             " as wfje,b.{},c.ck_name,d.u_name from {} a,{} b,jxc_ckxx c,jxc_user d where a.{}=b.{} "
             "and a.{}=c.ck_sn and a.u_sn=d.u_sn and a.{}=0",
             {partner.name, f.head, partner.table, f.partner, partner.key, f.warehouse, f.status});
}

}  // namespace trading_rules_detail

const TradingPartner tradingSupplier = {.table = "jxc_ghsxx",
                                        .key = "ghs_sn",
                                        .name = "ghs_name",
                                        .mnemonic = "ghs_jm",
                                        .noun = u"供货商",
                                        .byDefault = defaultSupplierSn};
const TradingPartner tradingCustomer = {.table = "jxc_khxx",
                                        .key = "kh_sn",
                                        .name = "kh_name",
                                        .mnemonic = "kh_jm",
                                        .noun = u"客户",
                                        .byDefault = defaultCustomerSn};

TradingDraft TradingRules::fresh(const QString& lastDate) const {
  TradingDraft draft;
  draft.date = newDocumentDate(lastDate.left(10));
  draft.number = newDocumentNumber(family(), draft.date);
  draft.partner = document_.partner->byDefault();
  draft.warehouse = defaultWarehouseSn();
  draft.salesperson = defaultEmployeeSn();
  draft.settlement = session().cs_activatets == u"1" ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  draft.account = lookupValue("select top 1 yh_name from jxc_yhzh order by id");
  return draft;
}

RowSet TradingRules::draftLines(const QString& number) const {
  return openSelect(trading_rules_detail::linesWithNames(document_) + " and a.a_name=? order by a.id", number,
                    session().a_name);
}

RowSet TradingRules::waitingLines(const QString& number) const {
  return openSelect(trading_rules_detail::linesWithNames(document_) + " order by a.id", number);
}

double TradingRules::payable(const QString& number) const {
  const DocumentFamily& f = family();
  return roundTotalIfSeparate(lookupNumber(
      compose("select sum({}) as zje from {} where {}=? and a_name=?", {f.line.columns->total, f.lines, f.number}) +
          (document_.balancingIsDue ? "" : " and g_sn<>'00000000'"),
      number, session().a_name));
}

double TradingRules::paidAfter(double payable, double typed) const {
  return session().*document_.paidFollows == u"0" ? payable : typed;
}

RowSet TradingRules::waiting(const WaitingFilter& filter) const {
  const DocumentFamily& f = family();
  const TradingPartner& partner = *document_.partner;
  Filter chosen;
  // Sales of the till stand in the same table and never wait here.
  if (!f.fromTill.empty()) chosen.add(compose("(a.{}=0 or a.{} is null)", {f.fromTill, f.fromTill}));
  if (!filter.partner.isEmpty()) chosen.add(compose("a.{}=?", {f.partner}), filter.partner);
  if (!filter.warehouse.isEmpty()) chosen.add(compose("a.{}=?", {f.warehouse}), filter.warehouse);
  if (isWarehouseBound())
    chosen.add(compose("a.{} in (select ck_sn from jxc_ckxx where ck_asn like ?)", {f.warehouse}),
               u"%"_qs + session().a_sn + u"%"_qs);
  if (const QString key = sanitizeKeyword(filter.key.trimmed()); !key.isEmpty()) {
    const QString like = u"%"_qs + key + u"%"_qs;
    Sql any(compose("(a.{} like ? or a.{} like ? or b.{} like ? or b.{} like ?",
                    {f.number, f.note, partner.name, partner.mnemonic}),
            like, like, like, like);
    if (!f.originalNumber.empty()) any.add(compose(" or a.{} like ?", {f.originalNumber}), like);
    chosen.add(any.add(")"));
  }
  return openSelect(Sql(trading_rules_detail::headsWithNames(document_))
                        .andWhere(chosen)
                        .add(filter.newestFirst ? " order by a.id desc" : " order by a.id"));
}

std::optional<AuditDraft> TradingRules::loadForAudit(const QString& number) const {
  const DocumentFamily& f = family();
  const RowSet rows = openSelect(
      trading_rules_detail::headsWithNames(document_) + compose(" and a.{}=? order by a.id", {f.number}), number);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  AuditDraft draft;
  draft.number = number;
  draft.date = row.text(f.date);
  draft.partnerName = row.text(document_.partner->name);
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
  const QString gate = auditGate(draft.number, draft.date);
  if (gate != u"ok") {
    prompt.notice(gate);
    return AuditOutcome::Refused;
  }
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
  return refused({{draftGoodsCount(family(), draft.number) == 0, u"单据中没有业务发生，不能保存！"_qs},
                  {draft.partner.isEmpty(), u"请选择"_qs + words(document_.partner->noun) + u'！'},
                  {draft.salesperson.isEmpty(), u"请选择经办人！"_qs},
                  {draft.warehouse.isEmpty(), u"请选择仓库！"_qs}},
                 prompt);
}

}  // namespace jxc
