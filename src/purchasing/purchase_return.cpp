#include "purchasing/purchase_return.h"

#include "core/numbers.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"
#include "purchasing/receipt.h"
#include "stock/ledger.h"

namespace jxc::purchase_return {
namespace purchase_return_detail {

const TradingDescription kReturn = {
    .lines = {.family = &families::purchaseReturn,
              .shortRefusal = u"库存数量小于退货数量，不能退货！",
              .shortQuestion = u"库存数量小于退货数量，退货后将产生负库存，继续退货吗?"},
    .paidFollows = &SystemParameters::cs_cgje,
    .balancingIsDue = true,
    .paidWord = u"实收",
};

class ReturnLines : public TradingLines {
 public:
  using TradingLines::TradingLines;

  /// Where stock may not fall below zero only goods that lie in the warehouse; by parameter (`cs_ct`) only goods that
  /// this supplier has delivered.
  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, goodsFilterOf(wanted));
    if (wanted.inStock || !strIsTrue(session().cs_kc)) filter.add("b.kc_sl>0");
    if (wanted.ofPartner || strIsTrue(session().cs_ct))
      filter.add(
          "(a.ghs_sn=? or a.g_sn in (select x.g_sn from jxc_jhsp x,jxc_jhd y where x.j_sn=y.j_sn and y.j_status=1 "
          "and y.ghs_sn=?))",
          place.partner, place.partner);
    return goodsByWarehouse(place.warehouse, filter, "g_cgpl");
  }

  Sql history(const QString& goods, const QString& partner) const override {
    return receipt::receiptHistory(goods, partner);
  }
  Sql quotes(const QString& goods, const QString& partner) const override {
    return receipt::supplierQuotes(goods, partner);
  }

 protected:
  double proposedPrice(const QString& goods, const LinePlace&) const override { return receipt::defaultPrice(goods); }
  double proposedTax(bool staged) const override { return staged ? 0 : TradingLines::proposedTax(staged); }
};

const ReturnLines& lines() {
  static const ReturnLines all{kReturn};
  return all;
}

/// Goods of the draft that the warehouse does not know at all: asked about one by one, or refused.
bool mayReturnUnknownGoods(const QString& number, const QString& warehouse, Prompt& prompt) {
  for (const Row row : openSelect(
           "select distinct a.g_sn,b.g_name from jxc_thsp a,jxc_goods b where a.g_sn=b.g_sn and a.gl_djh=? and "
           "a.a_name=? and a.g_sn<>'00000000' and a.g_sn not in (select g_sn from jxc_kcsp where ck_sn=?) order by "
           "a.g_sn",
           number, session().a_name, warehouse)) {
    const QString name = u"当前仓库中商品‘"_qs + row.text("g_name");
    if (refused({{!strIsTrue(session().cs_kc), name + u"’库存不足，\r\n\r\n不能退货。"_qs, Subject::Lines,
                  row.text("g_sn")}},
                prompt))
      return false;
    if (!prompt.ask(name + u"’不存在，\r\n\r\n退货将会出现负库存，是否继续？"_qs)) return false;
  }
  return true;
}

void writeHead(const TradingDraft& draft, const QString& number, double due, double paid) {
  insertRow("jxc_thd", {{"gl_djh", number},
                        {"ghs_sn", draft.partner},
                        {"ck_sn", draft.warehouse},
                        {"th_thrq", draft.date},
                        {"th_yfje", -due},
                        {"th_sfje", -paid},
                        {"th_hkje", 0.0},
                        {"u_sn", draft.salesperson},
                        {"th_note", sanitizeText(draft.note).left(200)},
                        {"th_status", 0},
                        {"th_checker", QString()},
                        {"th_chkrq", QString()},
                        {"th_jsfs", static_cast<int>(draft.settlement)},
                        {"th_kmmc", draft.account},
                        {"th_fpno", sanitizeText(draft.invoiceNumber).left(32)},
                        {"th_fpje", -draft.invoiceAmount},
                        {"a_name", session().a_name},
                        {"th_qk", false}});
}

class ReturnRules final : public ReturningRules {
 public:
  ReturnRules() : ReturningRules(kReturn, purchase_return_detail::lines(), families::purchaseReceipt) {}

  SaveResult save(const TradingDraft& draft, Prompt& prompt) const override {
    const SaveResult refusedSave{.number = draft.number};
    if (isIncomplete(draft, prompt)) return refusedSave;
    if (!mayReturnUnknownGoods(draft.number, draft.warehouse, prompt)) return refusedSave;
    if (!mayGoShort(checkStockShort(draft.number, draft.warehouse, u"CT"), prompt)) return refusedSave;
    const double paid = roundTotalIfSeparate(draft.paid);
    const SaveResult saved = saveDocument(family(),
                                          {.number = draft.number,
                                           .date = draft.date,
                                           .warehouse = draft.warehouse,
                                           .writeHead =
                                               [&](const QString& number) {
                                                 writeHead(draft, number, payable(number), paid);
                                                 markReturned(draft.returnOf, number);
                                               }},
                                          prompt);
    if (saved) tellBooked(draft.paid, paid, prompt);
    return saved;
  }

 protected:
  bool mayReturn(const QString& source, const Row* head, Prompt& prompt) const override {
    return !refused(
        {{!source.startsWith(u"CJ") || !head, u"单据"_qs + source + u"不能退货，只有“CJ”开头的单据才能退货！"_qs},
         {head && head->integer("j_th") == 1, u"该单据已经进行过整单退货，不能重复退货！"_qs}},
        prompt);
  }
};

}  // namespace purchase_return_detail

const TradingRules& rules() {
  static const purchase_return_detail::ReturnRules all;
  return all;
}

Sql returnableReceipts(const QString& typed) {
  Filter filter;
  filter.add("a.ghs_sn=b.ghs_sn").add("a.ck_sn=c.ck_sn").add("a.j_status=1");
  if (const QString key = sanitizeKeyword(typed); !key.isEmpty()) {
    const QString like = u'%' + key + u'%';
    filter.add("(a.j_sn like ? or b.ghs_name like ? or b.ghs_jm like ? or a.j_note like ?)", like, like, like, like);
  }
  if (isWarehouseBound()) filter.add("c.ck_asn like ?", u"%"_qs + session().a_sn + u"%"_qs);
  return Sql("select a.*,b.ghs_name,c.ck_name from jxc_jhd a,jxc_ghsxx b,jxc_ckxx c")
      .where(filter)
      .add(" order by a.id desc");
}

}  // namespace jxc::purchase_return
