#include "inventory/inventory_lines.h"

#include "core/statements.h"
#include "masterdata/goods_to_pick.h"
#include "stock/ledger.h"

namespace jxc {

double warehouseCost(const QString& goods, const LinePlace& place) {
  const RowSet balance = openSelect("select kc_cbj from jxc_kcsp where g_sn=? and ck_sn=?", goods, place.warehouse);
  return balance.isEmpty() ? getGoodsCost(goods, place.warehouse, place.date) : balance.number(0, 0);
}

Sql InventoryLines::goodsToPick(const LinePlace& place, const PickFilter& wanted) const {
  Filter filter;
  addGoodsConditions(filter, goodsFilterOf(wanted));
  if (wanted.inStock) filter.add("b.kc_sl>0");
  if (description_.knownGoodsOnly) filter.add("b.g_sn is not null");
  return goodsByWarehouse(place.warehouse, filter, "g_xspl");
}

}  // namespace jxc
