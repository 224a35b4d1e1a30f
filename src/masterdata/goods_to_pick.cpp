#include "masterdata/goods_to_pick.h"

namespace jxc {

Sql goodsByWarehouse(const QString& warehouse, const Filter& filter, std::string_view counter) {
  return Sql("select a.*,iif(b.kc_sl is null,0,b.kc_sl) as kc_sl from jxc_goods a left join "
             "(select g_sn,kc_sl from jxc_kcsp where ck_sn=?) b on a.g_sn=b.g_sn",
             warehouse)
      .where(filter)
      .add(compose(" order by a.{} desc,a.g_sn", {counter}));
}

}  // namespace jxc
