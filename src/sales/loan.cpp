#include "sales/loan.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"
#include "stock/ledger.h"
#include "stock/line_amounts.h"
#include "stock/table_lines.h"

namespace jxc::lending {
namespace loan_detail {

constexpr LineColumns stagingColumns = {
    .table = "jxc_tempspxf", .price = "ts_dj", .quantity = "ts_sl", .total = "ts_zje", .discount = "ts_dzl"};
// The account has the widest text of a staged row: names of accounts are longer than marks of gifts.
constexpr LineTable staging = {
    .columns = &stagingColumns, .rent = "ts_tax", .deposit = "ts_taxdj", .account = "ts_note"};

double costOf(const QString& goods, const LinePlace& place) {
  return getGoodsCost(goods, place.warehouse, place.date);
}

constexpr LineDescription kLines = {
    .family = &families::loan,
    .price = costOf,
    .priceIsTyped = false,
    .quantityRefusal = u"数量不能为0或负数，重新输入！",
    .barcodes = BarcodesOf::Stock,
    .takesNewGoods = false,
    .staging = &staging,
};

class LoanLines final : public TableLines {
 public:
  using TableLines::TableLines;

  LineDraft newLine(const QString& goods, const LinePlace& place, bool staged) const override {
    LineDraft draft = TableLines::newLine(goods, place, staged);
    draft.account = lookupValue("select top 1 yh_name from jxc_yhzh order by id");
    return draft;
  }
  bool mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const override {
    return TableLines::mayWrite(draft, place, prompt) &&
           !refused({impossibleRent(draft.rent), impossibleDeposit(draft.deposit)}, prompt);
  }
  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, goodsFilterOf(wanted));
    if (wanted.inStock) filter.add("b.kc_sl>0");
    return goodsByWarehouse(place.warehouse, filter, "g_xspl");
  }
};

/// An account that took a deposit and is none any more: nobody would know where to look for the money.
Refusal accountMissing(const QString& number) {
  const RowSet lines = openSelect(
      "select top 1 a.g_sn,a.jh_kmmc from jxc_khjhsp a where a.gl_djh=? and a.a_name=? and a.jh_yj<>0 and a.jh_kmmc "
      "not in (select yh_name from jxc_yhzh where yh_name is not null) order by a.id",
      number, session().a_name);
  return lines.isEmpty() ? Refusal() : accountGone(lines.text(0, 1), lines.text(0, 0));
}

class LoanRules final : public RulesOver<DraftOfPartner> {
 public:
  const DocumentFamily& family() const override { return families::loan; }
  const LineRules& lines() const override { return lines_; }

  DraftOfPartner fresh(const QString& lastDate) const override {
    DraftOfPartner draft = RulesOver::fresh(lastDate);
    draft.partner = partnerOf(family()).byDefault();
    return draft;
  }

  SaveResult save(const DraftOfPartner& draft, Prompt& prompt) const override {
    if (refused({withoutGoods(family(), draft.number, u"还没有添加商品信息，不能保存！"_qs),
                 {draft.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
                 {draft.warehouse.isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse},
                 {draft.partner.isEmpty(), u"请选择客户！"_qs, Subject::Partner},
                 warehouseGone(draft.warehouse),
                 accountMissing(draft.number)},
                prompt) ||
        !mayGoShort(checkStockShort(draft.number, draft.warehouse, QStringView(family().shortageAtAudit)), prompt))
      return {.number = draft.number};
    const auto writeHead = [&](const QString& number) {
      updateRow(family().head, insertWaitingHead(family(), draft, number),
                {{family().partner, draft.partner}, {"jh_flag", u"jh"}});
    };
    return saveDocument(
        family(), {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse, .writeHead = writeHead},
        prompt);
  }

 private:
  LoanLines lines_{kLines};
};

}  // namespace loan_detail

double rounded(double yuan) {
  return roundEps(yuan, AmountRules::current().amountDigits());
}

const RulesOver<DraftOfPartner>& rules() {
  static const loan_detail::LoanRules all;
  return all;
}

Refusal impossibleRent(double rent) {
  if (rent < 0) return {u"租金不能小于0！"_qs, Subject::Rent};
  return {rent >= kDearest, u"租金过大，请检查是否输入了条码！"_qs, Subject::Rent};
}
Refusal impossibleDeposit(double deposit) {
  if (deposit < 0) return {u"押金不能小于0！"_qs, Subject::Deposit};
  return {deposit >= kDearest, u"押金过大，请检查是否输入了条码！"_qs, Subject::Deposit};
}
Refusal accountGone(const QString& account, const QString& goods) {
  return {!exists("select id from jxc_yhzh where yh_name=?", account),
          u"账户“"_qs + account + u"”已被改名或删除，请重新选择商品“"_qs + goods + u"”的收款账户！"_qs, Subject::Lines,
          goods};
}

}  // namespace jxc::lending
