#include "stock/stock_alerts.h"

#include "core/clock.h"
#include "core/rounding.h"
#include "stock/goods_words.h"

#include <algorithm>

namespace jxc {
namespace stock_alerts_detail {

/// The day that lies so many before today.
QString daysAgo(double days) {
  constexpr double kLongest = 36500;
  const QDate day = clock::now().date().addDays(-qint64(std::clamp(days, 0.0, kLongest)));
  return day.toString(QStringLiteral("yyyy-MM-dd"));
}

}  // namespace stock_alerts_detail

Sql stockAlerts(const Criteria& criteria, const Warehouses& warehouses) {
  const auto list = [](const std::string& stock) {
    return Sql("select a.id,a.g_sn,a.g_name,a.g_qgd,a.g_sgd,a.gg_name,a.color_name,a.dw_name,a.g_zdkc," + stock +
               " as kc,a.g_zdkc-" + stock + " as qs,a.g_sccs,a.g_scjj,a.g_jj,a.g_sptm from ");
  };
  Filter filter;
  filter.add("a.g_jy=0").add("a.g_sn<>'00000000'");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_name", "a.g_jm"});
  if (warehouses.areAll())
    return list("a.g_kc").add("jxc_goods a").where(filter.add("a.g_kc<a.g_zdkc")).add(" order by a.g_kc,a.g_sn");
  Filter own;
  warehouses.restrict(own, "ck_sn");
  return list("b.kc")
      .add("jxc_goods a inner join (select g_sn,sum(kc_sl) as kc from jxc_kcsp")
      .where(own)
      .add(" group by g_sn) b on a.g_sn=b.g_sn")
      .where(filter.add("b.kc<a.g_zdkc"))
      .add(" order by b.kc,a.g_sn");
}

Sql slowSellers(const Criteria& criteria, const Warehouses& warehouses) {
  Filter here, bought, filter;
  here.add("x.g_sn<>'00000000'");
  warehouses.restrict(here, "x.ck_sn");
  bought.add("e.g_sn=a.g_sn").add("e.gl_flag='cj'");
  warehouses.restrict(bought, "e.ck_sn");
  filter.add("s.kcsl>0");
  if (criteria.amount > 0) filter.add("(s.zhxs is null or s.zhxs<?)", stock_alerts_detail::daysAgo(criteria.amount));
  addClass(filter, criteria, "a.gc_sn");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_jm", "a.g_name", "a.g_sccs", "a.gg_name", "a.g_sptm", "a.color_name"});
  // The last sale is looked up from behind in each warehouse: of goods that sell it is among the last rows.
  return Sql("select a.id,a.g_sn,a.g_name,a.g_qgd,a.g_sgd,a.gg_name,a.color_name,a.dw_name,a.g_sptm,s.kcsl," +
                 roundedExpression("s.je", moneyDigits()) +
                 " as kczje,iif(s.zhxs is null,'从未销售',s.zhxs) as zhxs,datediff('d',s.zhxs,?) as ts,iif(s.zhxs is "
                 "null,'',s.zhxs) as lie,(select "
                 "left(max(e.gl_kdrq),10) from jxc_goodslist e",
             clock::today())
      .where(bought)
      .add(
          ") as zhjh from jxc_goods a inner join (select k.g_sn,sum(k.kc_sl) as kcsl,sum(k.kc_sl*k.kc_cbj) as je,"
          "max(k.zhxs) as zhxs from (select x.g_sn,x.kc_sl,x.kc_cbj,(select top 1 left(e.gl_kdrq,10) from "
          "jxc_goodslist e where e.g_sn=x.g_sn and e.ck_sn=x.ck_sn and e.gl_flag='xs' and e.gl_sl>0 order by "
          "e.gl_kdrq desc,e.id desc) as zhxs from jxc_kcsp x")
      .where(here)
      .add(") k group by k.g_sn) s on a.g_sn=s.g_sn")
      .where(filter)
      .add(" order by lie,a.g_sn");
}

Sql batches(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  addChoice(filter, "x.g_sn", criteria.goods);
  addKey(filter, criteria, {"a.g_sn", "a.g_name", "a.g_jm", "x.t_ph"});
  warehouses.restrict(filter, "x.ck_sn");
  return Sql("select x.id,x.g_sn,a.g_name,x.t_ph,x.t_scrq,x.t_yxq,x.t_sl,w.ck_name from (jxc_tkc x left outer join "
             "jxc_goods a on x.g_sn=a.g_sn) left outer join jxc_ckxx w on x.ck_sn=w.ck_sn")
      .where(filter)
      .add(" order by x.t_yxq,x.id");
}

}  // namespace jxc
