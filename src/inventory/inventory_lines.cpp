#include "inventory/inventory_lines.h"

#include "masterdata/goods_to_pick.h"

namespace jxc {

Sql InventoryLines::goodsToPick(const LinePlace& place, const PickFilter& wanted) const {
  Filter filter;
  addGoodsConditions(filter, goodsFilterOf(wanted));
  if (wanted.inStock) filter.add("b.kc_sl>0");
  if (description_.knownGoodsOnly) filter.add("b.g_sn is not null");
  return goodsByWarehouse(place.warehouse, filter, "g_xspl");
}

}  // namespace jxc
