#include "purchasing/receipt.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"
#include "stock/contract_ties.h"
#include "stock/posting.h"

namespace jxc::receipt {
namespace receipt_detail {

const TradingDescription kReceipt = {
    .lines = {.family = &families::purchaseReceipt},
    .paidFollows = &SystemParameters::cs_cgje,
    .balance = balancePurchase,
    .paidWord = u"实付",
};

class ReceiptLines final : public TradingLines {
 public:
  using TradingLines::TradingLines;

  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, goodsFilterOf(wanted));
    if (wanted.inStock) filter.add("b.kc_sl>0");
    if (wanted.ofPartner)
      filter.add(
          "a.g_sn in (select x.g_sn from jxc_jhsp x,jxc_jhd y where x.j_sn=y.j_sn and y.j_status=1 and y.ghs_sn=?)",
          place.partner);
    return goodsByWarehouse(place.warehouse, filter, "g_cgpl");
  }
  Sql history(const QString& goods, const QString& partner) const override { return receiptHistory(goods, partner); }
  Sql quotes(const QString& goods, const QString& partner) const override { return supplierQuotes(goods, partner); }

 protected:
  double proposedPrice(const QString& goods, const LinePlace&) const override { return defaultPrice(goods); }
  /// Goods picked from the list come without tax.
  double proposedTax(bool staged) const override { return staged ? 0 : TradingLines::proposedTax(staged); }
};

const ReceiptLines& lines() {
  static const ReceiptLines all{kReceipt};
  return all;
}

class ReceiptRules final : public TradingRules {
 public:
  ReceiptRules() : TradingRules(kReceipt, receipt_detail::lines()) {}

  TradingDraft fresh(const QString& lastDate) const override {
    TradingDraft draft = TradingRules::fresh(lastDate);
    draft.wePayFreight = session().cs_djsh == u"0";  // "收货方支付": here that is us
    if (strIsTrue(session().cs_sprk)) draft.straightToStock = false;
    return draft;
  }
  SaveResult save(const TradingDraft& draft, Prompt& prompt) const override;
};

void writeHead(const ReceiptDraft& draft, const QString& number, const Balanced& money) {
  const bool putaway = strIsTrue(session().cs_sprk);
  const bool straight = draft.straightToStock.value_or(false);
  insertRow("jxc_jhd", {{"j_sn", number},
                        {"ghs_sn", draft.partner},
                        {"ck_sn", draft.warehouse},
                        {"j_jhrq", draft.date},
                        {"j_yfje", money.due},
                        {"j_sfje", money.paid},
                        {"u_sn", draft.salesperson},
                        {"j_note", sanitizeText(draft.note).left(200)},
                        {"a_name", session().a_name},
                        {"j_sn2", sanitizeText(draft.originalNumber).left(16)},
                        {"j_yhje", 0.0},
                        {"j_hkje", 0.0},
                        {"j_th", 0},
                        {"j_crk", !putaway || straight},
                        {"j_qk", straight},
                        {"j_fpno", sanitizeText(draft.invoiceNumber).left(32)},
                        {"j_fpje", draft.invoiceAmount},
                        {"j_yf", draft.freight},
                        {"j_bzf", draft.packing},
                        {"j_yffs", freightPayerText(draft.freight, draft.packing, draft.wePayFreight)},
                        {"j_dhdid", QString()},
                        {"j_status", 0},
                        {"j_checker", QString()},
                        {"j_chkrq", QString()},
                        {"j_jsfs", static_cast<int>(draft.settlement)},
                        {"j_kmmc", draft.account},
                        {"ht_sn", draft.contract},
                        {"j_dhbz", 0}});
  if (straight) execSql("update jxc_jhsp set jh_rksl=jh_sl where j_sn=?", number);
  if (!putaway) execSql("update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where j_sn=?", number);
  if (!draft.contract.isEmpty()) contract_ties::htLink(draft.contract, draft.partner, number);
}

SaveResult ReceiptRules::save(const TradingDraft& draft, Prompt& prompt) const {
  if (isIncomplete(draft, prompt)) return {.number = draft.number};
  const double paid = roundTotalIfSeparate(draft.paid);
  Balanced money;
  const SaveResult saved = saveDocument(family(),
                                        {.number = draft.number,
                                         .date = draft.date,
                                         .standsAgainst = [&] { return contractStands(draft); },
                                         .writeHead =
                                             [&](const QString& number) {
                                               money = settleMoney(number, draft.settlement, paid, payable(number));
                                               writeHead(draft, number, money);
                                             }},
                                        prompt);
  if (saved) tellBooked(draft.paid, money.paid, prompt);
  return saved;
}

/// A line of a receipt has nothing to ask about.
class NothingToAsk final : public Prompt {
  void notice(const QString&) override {}
  bool ask(const QString&) override { return false; }
  Answer askOrCancel(const QString&) override { return Answer::Cancel; }
};

}  // namespace receipt_detail

const TradingRules& rules() {
  static const receipt_detail::ReceiptRules all;
  return all;
}

double defaultPrice(const QString& goods) {
  const RowSet row = openSelect("select g_pjjj,g_scjj,g_jj from jxc_goods where g_sn=?", goods);
  if (row.isEmpty()) return 0;
  const char* field = session().cs_cgdj == u"1" ? "g_scjj" : session().cs_cgdj == u"2" ? "g_jj" : "g_pjjj";
  return roundMoney(row.front().number(field));
}

Sql receiptHistory(const QString& goods, const QString& supplier) {
  if (strIsTrue(session().cs_employ))
    return Sql(
        "select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn=? "
        "and b.ghs_sn=? order by a.j_sn desc,a.id desc",
        goods, supplier);
  return Sql(
      "select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn=? "
      "order by a.j_sn desc,a.id desc",
      goods);
}

Sql supplierQuotes(const QString& goods, const QString& supplier) {
  return Sql("select * from jxc_ghsbj where g_sn=? and ghs_sn=? order by id desc", goods, supplier);
}

// ---- for callers that have a number and no screen ------------------------------------------------------------------

LineDraft newLine(const QString& goods) {
  return rules().lines().newLine(goods, {}, false);
}

LineResult addLine(Lines where, const QString& number, const QString& date, const LineDraft& draft) {
  receipt_detail::NothingToAsk prompt;
  return rules().lines().addLine(where, {.number = number, .date = date}, draft, prompt);
}

Sql waitingLines(const QString& number) {
  return rules().waitingLines(number);
}

double payable(const QString& number) {
  return rules().payable(number);
}

ReceiptDraft newReceipt(const QString& lastDate) {
  return rules().fresh(lastDate);
}

SaveResult saveReceipt(const ReceiptDraft& draft, Prompt& prompt) {
  return rules().save(draft, prompt);
}

}  // namespace jxc::receipt
