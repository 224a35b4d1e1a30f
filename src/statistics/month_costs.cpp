#include "statistics/month_costs.h"

namespace jxc {

Sql monthCosts(const Criteria& criteria, const Warehouses& warehouses) {
  constexpr qsizetype kMonth = 7;
  const Criteria months{.from = criteria.from.left(kMonth), .to = criteria.to.left(kMonth)};
  Filter kept, traded;
  if (!months.from.isEmpty()) kept.add("x.js_rq>=?", months.from);
  if (!months.to.isEmpty()) kept.add("x.js_rq<=?", months.to);
  warehouses.restrict(kept, "x.ck_sn");
  traded.add("x.gl_flag in ('cj','ct','xs','xt')");
  addPeriod(traded, months, "x.gl_kdrq");
  warehouses.restrict(traded, "x.ck_sn");
  const auto of = [](const char* flags, const char* column) {
    return std::string("sum(iif(x.gl_flag in ") + flags + ",x." + column + ",0))";
  };
  constexpr const char *bought = "('cj','ct')", *sold = "('xs','xt')";
  std::string sums;
  for (const char* column : {"gl_sl", "gl_zje", "gl_je", "gl_taxje"})
    sums += "," + of(bought, column);
  for (const char* column : {"gl_sl", "gl_zje", "gl_je", "gl_taxje", "gl_zcb", "gl_lr"})
    sums += "," + of(sold, column);
  return Sql("select u.js_rq,sum(u.sl) as sl,sum(u.zje) as zje,sum(u.cgsl) as cgsl,sum(u.cgzje) as cgzje,sum(u.cgje) "
             "as cgje,sum(u.cgtax) as cgtax,sum(u.xssl) as xssl,sum(u.xszje) as xszje,sum(u.xsje) as xsje,sum(u.xstax) "
             "as xstax,sum(u.zcb) as zcb,sum(u.lr) as lr from (select x.js_rq,sum(x.js_sl) as sl,"
             "round(sum(x.js_zje),2) as zje,0 as cgsl,0 as cgzje,0 as cgje,0 as cgtax,0 as xssl,0 as xszje,0 as xsje,"
             "0 as xstax,0 as zcb,0 as lr from jxc_kcjs x")
      .where(kept)
      .add(" group by x.js_rq union all select left(x.gl_kdrq,7),null,null" + sums + " from jxc_goodslist x")
      .where(traded)
      .add(" group by left(x.gl_kdrq,7)) u group by u.js_rq order by u.js_rq");
}

}  // namespace jxc
