#include "sales/sale.h"

#include "core/clock.h"
#include "core/rounding.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"
#include "masterdata/prices.h"
#include "stock/contract_ties.h"
#include "stock/ledger.h"
#include "stock/loans.h"
#include "stock/posting.h"
#include "stock/prepayment.h"

namespace jxc::sale {
namespace sale_detail {

constexpr char16_t giftIsShort[] = u"库存数量小于出库数量，不能出库！";

const TradingDescription kSale = {
    .lines = {.family = &families::sale,
              .rounding = {.scans = LineRounding::ScannedByRate},
              .quantities = {.minus = true},  // a line below zero takes goods back: an exchange is one document
              .shortRefusal = u"库存数量小于销售数量，不能出库！",
              .shortQuestion = u"库存数量小于销售数量，销售后将产生负库存，继续销售吗?",
              .barcodes = BarcodesOf::Stock},
    .paidFollows = &SystemParameters::cs_xsje,
    .balance = balanceSale,
    .paidWord = u"实收",
};

/// A gift has its own words for short stock.
TradingDescription giftDescription() {
  TradingDescription gifts = kSale;
  gifts.lines.shortRefusal = giftIsShort;
  return gifts;
}

bool isGift(Lines where, std::int64_t id) {
  const char* gift =
      where == Lines::Staging ? "select t_zp from jxc_tempspxf where id=?" : "select t_zp from jxc_lsxssp where id=?";
  return !lookupValue(gift, id).isEmpty();
}

class SaleLines : public TradingLines {
 public:
  using TradingLines::TradingLines;

  bool priceMayChange() const override { return strIsTrue(session().cs_xgdj); }

  bool mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const override {
    const LineAmounts& line = draft.amounts;
    if (line.quantity() == 0) return false;
    // Of the other sign than its quantity, a total would have made the price or the discount negative.
    if (refused({{line.quantity() < 0 && line.total() > 0, u"退回商品的总金额不能大于0！"_qs, Subject::Total},
                 {line.quantity() > 0 && line.total() < 0, u"总金额不能小于0！"_qs, Subject::Total}},
                prompt))
      return false;
    if (line.discount() <= 0) return false;
    if (refused({{line.discount() < lowestDiscount(), lowestDiscountText(), Subject::Discount}}, prompt)) return false;
    if (!TradingLines::mayWrite(draft, place, prompt)) return false;
    return mayPrice(draft, prompt);
  }

  bool mayPrice(const LineDraft& draft, Prompt& prompt) const override {
    const LineAmounts& line = draft.amounts;
    if (line.quantity() < 0) return true;  // what comes back is not sold too cheap
    const double sold = line.price() * line.discount();
    const double bought = lookupNumber("select g_jj from jxc_goods where g_sn=?", draft.goods);
    if (roundMoney(sold) < roundMoney(bought) && !prompt.ask(u"打折后售价小于进价，继续销售吗?"_qs)) return false;
    return roundMoney(sold) >= roundMoney(draft.cost) || prompt.ask(u"该商品销售价格低于其成本价格，是否继续销售?"_qs);
  }

  double setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                   Prompt& prompt) const override {
    const bool isQuantity = field == u"sl";
    if (isQuantity && where == Lines::Waiting && isRefused(loans::piecesStay(id), prompt)) return 0;
    if (!isQuantity && isGift(where, id)) return 0;  // a gift has no price
    if ((field == u"dj" || field == u"taxdj") && !priceMayChange()) {
      prompt.notice(u"系统设置为销售时不允许修改销售单价！"_qs);
      return 0;
    }
    bool isNumber = false;
    const double typed = value.toDouble(&isNumber);
    if (field == u"dzl" && isNumber && typed > 0 && typed < lowestDiscount()) {
      prompt.notice(lowestDiscountText() + u"\r\n\r\n已恢复到无折扣状态！"_qs);
      return TradingLines::setChange(u"1"_qs, field, where, id, prompt);
    }
    return TradingLines::setChange(value, field, where, id, prompt);
  }

  bool changeLine(Lines where, std::int64_t id, const LinePlace& place, const LineDraft& draft,
                  Prompt& prompt) const override {
    if (where == Lines::Waiting) {
      const auto before = loadLine(where, id);
      if (before && before->amounts.quantity() != draft.amounts.quantity() && isRefused(loans::piecesStay(id), prompt))
        return false;
    }
    return TradingLines::changeLine(where, id, place, draft, prompt);
  }

  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, goodsFilterOf(wanted));
    if (wanted.inStock) filter.add("b.kc_sl>0");
    if (wanted.ofPartner)
      filter.add(
          "a.g_sn in (select x.g_sn from jxc_lsxssp x,jxc_lsxsd y where x.gl_djh=y.gl_djh and y.ls_status=1 and "
          "y.kh_sn=?)",
          place.partner);
    return goodsByWarehouse(place.warehouse, filter, "g_xspl");
  }

  Sql history(const QString& goods, const QString& partner) const override { return saleHistory(goods, partner); }
  Sql quotes(const QString& goods, const QString& partner) const override {
    return Sql("select top 10 * from jxc_khbj where g_sn=? and kh_sn=? order by id desc", goods, partner);
  }

 protected:
  double proposedPrice(const QString& goods, const LinePlace& place) const override {
    return getSalePrice(place.partner, goods);
  }

 private:
  static QString lowestDiscountText() {
    return u"商品的最低折扣为：“"_qs + session().cs_zdzk + u"”，\r\n\r\n打折率不能低于最低折扣！"_qs;
  }
};

const SaleLines& lines() {
  static const SaleLines all{kSale};
  return all;
}
const SaleLines& giftLines() {
  static const SaleLines all{giftDescription()};
  return all;
}

class SaleRules final : public TradingRules {
 public:
  SaleRules() : TradingRules(kSale, sale_detail::lines()) {}

  TradingDraft fresh(const QString& lastDate) const override {
    TradingDraft draft = TradingRules::fresh(lastDate);
    draft.wePayFreight = session().cs_djsh != u"0";  // "发货方支付": here that is us
    if (strIsTrue(session().cs_spck)) draft.straightToStock = false;
    return draft;
  }

  SaveResult save(const TradingDraft& draft, Prompt& prompt) const override {
    const SaveResult refusedSave{.number = draft.number};
    if (isIncomplete(draft, prompt)) return refusedSave;
    if (!mayGoShort(checkStockShort(draft.number, draft.warehouse, u"XS"), prompt)) return refusedSave;
    const double paid = roundTotalIfSeparate(draft.paid);
    Balanced money;
    if (draft.settlement == Settlement::RestOnAccount &&
        !mayGoOnAccount(draft.partner, payable(draft.number) - paid, prompt))
      return refusedSave;
    const SaveResult saved = saveDocument(family(),
                                          {.number = draft.number,
                                           .date = draft.date,
                                           .warehouse = draft.warehouse,
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

 protected:
  bool mayAudit(const AuditDraft& draft, Prompt& prompt) const override {
    if (draft.settlement != Settlement::RestOnAccount) return true;
    const QString customer = lookupValue("select top 1 kh_sn from jxc_lsxsd where gl_djh=? order by id", draft.number);
    return mayGoOnAccount(customer, draft.payable - draft.paid, prompt);
  }
};

}  // namespace sale_detail

void writeHead(const TradingDraft& draft, const QString& number, const Balanced& money) {
  const bool issue = strIsTrue(session().cs_spck);
  const bool straight = draft.straightToStock.value_or(false);
  // By parameter the sale keeps the second at which it was made.
  const QString date = strIsTrue(session().cs_cs014) ? draft.date.left(10) + u' ' + clock::timeOfDay() : draft.date;
  insertRow("jxc_lsxsd", {{"gl_djh", number},
                          {"kh_sn", draft.partner},
                          {"ck_sn", draft.warehouse},
                          {"ls_xsrq", date},
                          {"ls_yfje", money.due},
                          {"ls_sfje", money.paid},
                          {"u_sn", draft.salesperson},
                          {"ls_note", sanitizeText(draft.note).left(200)},
                          {"a_name", session().a_name},
                          {"gl_djh2", sanitizeText(draft.originalNumber).left(16)},
                          {"ls_yhje", 0.0},
                          {"ls_hkje", 0.0},
                          {"ls_th", 0},
                          {"ls_crk", !issue || straight},
                          {"ls_qk", straight},
                          {"ls_fpno", sanitizeText(draft.invoiceNumber).left(32)},
                          {"ls_fpje", draft.invoiceAmount},
                          {"ls_yf", draft.freight},
                          {"ls_bzf", draft.packing},
                          {"ls_yffs", freightPayerText(draft.freight, draft.packing, draft.wePayFreight)},
                          {"ls_status", 0},
                          {"ls_checker", QString()},
                          {"ls_chkrq", QString()},
                          {"ls_jsfs", static_cast<int>(draft.settlement)},
                          {"ls_kmmc", draft.account},
                          {"ht_sn", draft.contract},
                          {"ls_dhbz", 0}});
  if (straight) execSql("update jxc_lsxssp set ls_cksl=ls_sl where gl_djh=?", number);
  if (!issue) execSql("update jxc_lsxssp set ls_cksl=ls_sl,ls_qxsl=0 where gl_djh=?", number);
  if (!draft.contract.isEmpty()) contract_ties::htLink(draft.contract, draft.partner, number);
}

const TradingRules& rules() {
  static const sale_detail::SaleRules all;
  return all;
}

double lowestDiscount() {
  return session().cs_zdzk.toDouble();
}

// ---- gifts -------------------------------------------------------------------------------------------------------

Sql giftsToPick(const QString& typed, const QString& warehouse) {
  Filter filter;
  addGoodsConditions(filter, {.key = typed});
  filter.add("a.g_iszp<>0");
  return goodsByWarehouse(warehouse, filter, "g_xspl");
}

LineResult addGift(Lines where, const LinePlace& place, const QString& goods, double quantity, Prompt& prompt) {
  const sale_detail::SaleLines& gifts = sale_detail::giftLines();
  if (quantity == 0 || !gifts.stockAllows(goods, quantity, place, prompt)) return {.number = place.number};
  LineDraft draft;
  draft.goods = goods;
  draft.amounts.setQuantity(quantity);
  draft.cost = roundMoney(getGoodsCost(goods, place.warehouse, place.date));
  draft.gift = QString::fromUtf16(giftMark);
  return gifts.addLine(where, place, draft, prompt);
}

bool changeGift(Lines where, std::int64_t id, const LinePlace& place, double quantity, Prompt& prompt) {
  const sale_detail::SaleLines& gifts = sale_detail::giftLines();
  std::optional<LineDraft> draft = gifts.loadLine(where, id);
  if (!draft || quantity == 0 || !gifts.stockAllows(draft->goods, quantity, place, prompt)) return false;
  draft->amounts.setQuantity(quantity);
  return gifts.changeLine(where, id, place, *draft, prompt);
}

// ---- history -----------------------------------------------------------------------------------------------------

Sql saleHistory(const QString& goods, const QString& customer, int most) {
  const std::string start =
      "select top " + std::to_string(most) +
      " b.ls_xsrq,a.*,c.kh_name,d.g_lsj from jxc_lsxssp a,jxc_lsxsd b,jxc_khxx c,jxc_goods d "
      "where b.ls_status=1 and a.gl_djh=b.gl_djh and b.kh_sn=c.kh_sn and a.g_sn=d.g_sn and a.g_sn=?";
  const std::string order = " order by b.ls_xsrq desc,a.id desc";
  if (!strIsTrue(session().cs_activate)) return Sql(start + order, goods);
  return Sql(start + " and b.kh_sn=?" + order, goods, customer);
}

}  // namespace jxc::sale
