#include "stock/stock_enquiry.h"

#include "core/rounding.h"
#include "stock/goods_words.h"

#include <array>
#include <stdexcept>

namespace jxc {
namespace stock_enquiry_detail {

/// Only these six become part of the statement; the quantity is bound.
std::string_view comparisonSign(const QString& typed) {
  static constexpr std::array<std::string_view, 6> signs{"=", ">=", "<=", "<>", ">", "<"};
  for (const std::string_view sign : signs) {
    if (typed == QLatin1String(sign.data(), qsizetype(sign.size()))) return sign;
  }
  throw std::invalid_argument("unknown comparison of stock");
}

/// Stock by goods, of one warehouse or summed over those that the operator may see.
Sql balances(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  if (!criteria.warehouse.isEmpty()) {
    warehouses.restrict(filter, "ck_sn");
    return Sql("select g_sn,kc_sl as kcsl,kc_zsl as kczsl,kc_xssl as xssl," +
               roundedExpression("kc_cbj", moneyDigits()) + " as ckcb,0 as zje from jxc_kcsp")
        .where(filter);
  }
  filter.add("x.ck_sn=y.ck_sn").add("g_sn<>'00000000'");
  warehouses.restrict(filter, "x.ck_sn");
  return Sql(R"(select g_sn,sum(kc_sl) as kcsl,sum(kc_zsl) as kczsl,sum(kc_xssl) as xssl,0 as ckcb,
      sum(kc_zsl*kc_cbj) as zje from jxc_kcsp x,jxc_ckxx y)")
      .where(filter)
      .add(" group by g_sn");
}

Filter conditions(const Criteria& criteria) {
  Filter filter;
  filter.add("a.g_sn=b.g_sn").add("a.g_sn<>'00000000'").add("a.gc_sn=c.gc_sn");
  addClass(filter, criteria, "a.gc_sn");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_jm", "a.g_name", "a.g_sccs", "a.gg_name", "a.g_sptm", "a.color_name"});
  if (criteria.has(kHidesZeroStock)) filter.add("b.kcsl<>0");
  if (!criteria.has(kWithDisabledGoods)) filter.add("a.g_jy=0");
  addChoice(filter, "a.ghs_sn", criteria.partner);
  if (!criteria.kind.isEmpty())
    filter.add("b.kcsl" + std::string(comparisonSign(criteria.kind)) + "?", criteria.amount);
  return filter;
}

}  // namespace stock_enquiry_detail

Sql currentStock(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace stock_enquiry_detail;
  // Over all warehouses the cost is weighted by book stock; goods without any keep the catalogue's average.
  const std::string cost =
      criteria.warehouse.isEmpty()
          ? "iif(b.kczsl<>0,abs(" + roundedExpression("b.zje/b.kczsl", moneyDigits()) + "),a.g_pjjj)"
          : "b.ckcb";
  // Not every column of the goods: what they were bought for stands among them.
  return Sql("select a.id,a.g_sn,a.g_name,a.g_jm,a.gc_sn,a.gg_name,a.color_name,a.dw_name,a.dw_name2,a.g_zhxs,"
             "a.g_qgd,a.g_sgd,a.g_sptm,a.g_sccs,a.g_bz,a.g_zdkc,a.ghs_sn,a.g_jy,a.g_scjj,a.g_sj,c.gc_name,b.kcsl,b."
             "kczsl,b.xssl," +
             cost + " as cbjj," + roundedExpression("b.kcsl/a.g_zhxs", quantityDigits()) + " as fzkc," +
             roundedExpression("cbjj*b.kcsl", moneyDigits()) +
             " as kczje,a.g_sj*b.kcsl as xszje from jxc_goods a,jxc_goodsclass c,(")
      .add(balances(criteria, warehouses))
      .add(") b")
      .where(conditions(criteria))
      .add(" order by a.g_sn");
}

}  // namespace jxc
