#include "sales/sale_return.h"

#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"
#include "masterdata/prices.h"
#include "sales/sale.h"
#include "stock/ledger.h"

namespace jxc::sale_return {
namespace sale_return_detail {

// Goods come in: no test of stock. The rest stays on the customer's account: nothing is balanced.
const TradingDescription kReturn = {
    .lines = {.family = &families::saleReturn},
    .paidFollows = &SystemParameters::cs_xsje,
    .balancingIsDue = true,
    .paidWord = u"实付",
};

class ReturnLines : public TradingLines {
 public:
  using TradingLines::TradingLines;

  bool priceMayChange() const override { return strIsTrue(session().cs_xgdj); }

  bool mayWrite(const LineDraft& draft, const LinePlace&, Prompt& prompt) const override {
    const double quantity = draft.amounts.quantity();
    return !refused({{quantity == 0, u"数量不能为0！"_qs, Subject::Quantity}}, prompt) && !isTooMany(quantity, prompt);
  }

  double setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                   Prompt& prompt) const override {
    if (refused(
            {{(field == u"dj" || field == u"taxdj") && !priceMayChange(), u"系统设置为销售时不允许修改销售单价！"_qs}},
            prompt))
      return 0;
    return TradingLines::setChange(value, field, where, id, prompt);
  }

  /// By parameter (`cs_xt`) only goods that this customer bought, with their stock where they come back to.
  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, goodsFilterOf(wanted));
    if (wanted.ofPartner || strIsTrue(session().cs_xt))
      filter.add(
          "a.g_sn in (select x.g_sn from jxc_lsxssp x,jxc_lsxsd y where x.gl_djh=y.gl_djh and y.ls_status=1 and "
          "y.kh_sn=?)",
          place.partner);
    if (strIsTrue(session().cs_xt)) return goodsByWarehouse(place.warehouse, filter, "g_xspl");
    return Sql("select a.*,a.g_kc as kc_sl from jxc_goods a").where(filter).add(" order by a.g_xspl desc,a.g_sn");
  }

  Sql history(const QString& goods, const QString& partner) const override {
    return sale::saleHistory(goods, partner, 10);
  }
  Sql quotes(const QString& goods, const QString& partner) const override {
    return sale::rules().lines().quotes(goods, partner);
  }

 protected:
  Coded goodsOfBarcode(const QString& barcode, const LinePlace& place) const override {
    Coded coded = TradingLines::goodsOfBarcode(barcode, place);
    if (!coded.refusal && strIsTrue(session().cs_xt) && !wasSold(coded.goods, place.partner))
      coded.refusal = {u"该客户没有买过这种商品，不能退货！"_qs, Subject::Barcode};
    return coded;
  }
  double proposedPrice(const QString& goods, const LinePlace& place) const override {
    return getSalePrice(place.partner, goods);
  }

 private:
  static bool wasSold(const QString& goods, const QString& customer) {
    return exists(
        "select x.id from jxc_lsxssp x,jxc_lsxsd y where x.gl_djh=y.gl_djh and y.ls_status=1 and x.g_sn=? and "
        "y.kh_sn=?",
        goods, customer);
  }
};

const ReturnLines& lines() {
  static const ReturnLines all{kReturn};
  return all;
}

void writeHead(const TradingDraft& draft, const QString& number, double due, double paid) {
  insertRow("jxc_xsthd", {{"gl_djh", number},
                          {"kh_sn", draft.partner},
                          {"ck_sn", draft.warehouse},
                          {"th_xsrq", draft.date},
                          {"th_yfje", -due},
                          {"th_sfje", -paid},
                          {"th_hkje", 0.0},
                          {"u_sn", draft.salesperson},
                          {"th_note", sanitizeText(draft.note).left(200)},
                          {"a_name", session().a_name},
                          {"th_qk", false},
                          {"th_status", 0},
                          {"th_checker", QString()},
                          {"th_chkrq", QString()},
                          {"th_jsfs", static_cast<int>(Settlement::RestOnAccount)},
                          {"th_kmmc", draft.account},
                          {"th_fpno", sanitizeText(draft.invoiceNumber).left(32)},
                          {"th_fpje", -draft.invoiceAmount}});
}

class ReturnRules final : public ReturningRules {
 public:
  ReturnRules() : ReturningRules(kReturn, sale_return_detail::lines(), families::sale) {}

  SaveResult save(const TradingDraft& draft, Prompt& prompt) const override {
    if (isIncomplete(draft, prompt)) return {.number = draft.number};
    // An exchange that is returned as a whole gives out again what had come back.
    if (!mayGoShort(checkStockShort(draft.number, draft.warehouse, u"-XT"), prompt)) return {.number = draft.number};
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
    if (refused({{!source.startsWith(u"XS"), u"单据"_qs + source + u"不能退货，只有“XS”开头的单据才能退货！"_qs,
                  Subject::Lines, source},
                 {head && head->flag("ls_dhbz"), u"收银台的销售单请在收银台退货！"_qs, Subject::Lines, source}},
                prompt))
      return false;
    return head && (head->integer("ls_th") != 1 || prompt.ask(u"该单据已经进行过整单退货，确认再次退货吗？"_qs));
  }
};

}  // namespace sale_return_detail

const TradingRules& rules() {
  static const sale_return_detail::ReturnRules all;
  return all;
}

Sql returnableSales(const QString& typed) {
  Filter filter;
  filter.add("a.kh_sn=b.kh_sn").add("a.ck_sn=c.ck_sn").add("a.ls_status=1").add("(a.ls_dhbz=0 or a.ls_dhbz is null)");
  if (const QString key = sanitizeKeyword(typed); !key.isEmpty()) {
    const QString like = u'%' + key + u'%';
    filter.add("(a.gl_djh like ? or b.kh_name like ? or b.kh_jm like ? or a.ls_note like ?)", like, like, like, like);
  }
  if (isWarehouseBound()) filter.add("c.ck_asn like ?", u"%"_qs + session().a_sn + u"%"_qs);
  return Sql("select a.*,b.kh_name,c.ck_name from jxc_lsxsd a,jxc_khxx b,jxc_ckxx c")
      .where(filter)
      .add(" order by a.id desc");
}

}  // namespace jxc::sale_return
