// 购销单据商品行: what lines of trading documents have beside others: a partner's price, tax, cost and retail price.
#include "core/rounding.h"
#include "stock/ledger.h"
#include "stock/trading_rules.h"

namespace jxc {

LineDraft TradingLines::newLine(const QString& goods, const LinePlace& place, bool staged) const {
  LineDraft draft;
  draft.goods = goods;
  draft.amounts.setTax(proposedTax(staged));
  draft.amounts.setPrice(proposedPrice(goods, place));
  if (!family().line.columns->cost.empty()) {
    draft.cost = roundMoney(getGoodsCost(goods, place.warehouse, place.date));
    draft.retail = lookupNumber("select g_lsj from jxc_goods where g_sn=?", goods);
  }
  return draft;
}

}  // namespace jxc
