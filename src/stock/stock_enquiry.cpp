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
Sql balances(const Criteria& criteria, const Warehouses& warehouses, const Filter& goods = {}) {
  Filter filter = goods;
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

/// The goods `a` that have figures `b`. A class that is gone is "其他": what it held is in stock all the same.
Sql goodsWith(const std::string& figures, const Sql& stock) {
  return Sql("select a.id,a.g_sn,a.g_name,a.g_jm,a.gc_sn,a.gg_name,a.color_name,a.dw_name,a.dw_name2,a.g_zhxs,a.g_qgd,"
             "a.g_sgd,a.g_sptm,a.g_sccs,a.g_bz,a.ghs_sn,a.g_jy,iif(c.gc_name is null,'其他',c.gc_name) as gc_name,"
             "b.kcsl,iif(a.g_zhxs<>0," +
             roundedExpression("b.kcsl/a.g_zhxs", quantityDigits()) + ",null) as fzkc," + figures +
             " from (jxc_goods a inner join (")
      .add(stock)
      .add(") b on a.g_sn=b.g_sn) left outer join jxc_goodsclass c on a.gc_sn=c.gc_sn");
}

Filter goodsConditions(const Criteria& criteria) {
  Filter filter;
  filter.add("a.g_sn<>'00000000'");
  addClass(filter, criteria, "a.gc_sn");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_jm", "a.g_name", "a.g_sccs", "a.gg_name", "a.g_sptm", "a.color_name"});
  if (!criteria.has(kWithDisabledGoods)) filter.add("a.g_jy=0");
  addChoice(filter, "a.ghs_sn", criteria.partner);
  return filter;
}

Filter conditions(const Criteria& criteria) {
  Filter filter = goodsConditions(criteria);
  if (criteria.has(kHidesZeroStock)) filter.add("b.kcsl<>0");
  if (!criteria.kind.isEmpty())
    filter.add("b.kcsl" + std::string(comparisonSign(criteria.kind)) + "?", criteria.amount);
  return filter;
}

/// Of each goods and warehouse `k` its last row `q` up to the day: looked up by an index for each warehouse that knows
/// the goods, so that it does not matter how long the ledger is.
Sql lastRows(const Filter& known, const QString& day) {
  Filter until;
  until.add("e.g_sn=k.g_sn").add("e.ck_sn=k.ck_sn");
  addPeriod(until, {.to = day}, "e.gl_kdrq");
  return Sql("(select distinct x.g_sn,x.ck_sn from jxc_kcsp x")
      .where(known)
      .add(") k inner join jxc_goodslist q on q.id=(select top 1 e.id from jxc_goodslist e")
      .where(until)
      .add(" order by e.gl_kdrq desc,e.id desc)");
}

Sql lastFigures(const Criteria& criteria, const Warehouses& warehouses) {
  Filter known;
  warehouses.restrict(known, "x.ck_sn");
  return Sql("select k.g_sn,sum(q.gl_kc) as kcsl,sum(q.gl_kczje) as kczje,max(q.gl_pjjj) as pjjj from ")
      .add(lastRows(known, criteria.to))
      .add(" group by k.g_sn");
}

Sql stockNow(const Criteria& criteria, const Sql& balances) {
  // Over all warehouses the cost is weighted by book stock; goods without any keep the catalogue's average.
  const std::string cost =
      criteria.warehouse.isEmpty()
          ? "iif(b.kczsl<>0,abs(" + roundedExpression("b.zje/b.kczsl", moneyDigits()) + "),a.g_pjjj)"
          : "b.ckcb";
  return goodsWith("a.g_zdkc,a.g_scjj,a.g_sj,b.kczsl,b.xssl," + cost + " as cbjj," +
                       roundedExpression("cbjj*b.kcsl", moneyDigits()) + " as kczje,a.g_sj*b.kcsl as xszje",
                   balances)
      .where(conditions(criteria))
      .add(" order by a.g_sn");
}

}  // namespace stock_enquiry_detail

Sql currentStock(const Criteria& criteria, const Warehouses& warehouses) {
  return stock_enquiry_detail::stockNow(criteria, stock_enquiry_detail::balances(criteria, warehouses));
}

Computation currentStockByPage(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace stock_enquiry_detail;
  // Sums of all goods cost the same for the first as for the last: the list begins with those of the goods that stand
  // first, of which what the stock restricts falls out again.
  constexpr const char* kScreenful = "g_sn in (select top 100 a.g_sn from jxc_goods a";
  const Filter first = Filter().add(Sql(kScreenful).where(goodsConditions(criteria)).add(" order by a.g_sn)"));
  return [begins = stockNow(criteria, balances(criteria, warehouses, first)),
          all = currentStock(criteria, warehouses)](EnquiryReader& reader) {
    reader.begin(begins);
    return reader.select(all);
  };
}

Sql stockAt(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace stock_enquiry_detail;
  // One warehouse has an average of its own.
  const std::string cost = criteria.warehouse.isEmpty()
                               ? "iif(b.kcsl<>0,abs(" + roundedExpression("b.kczje/b.kcsl", moneyDigits()) + "),b.pjjj)"
                               : "b.pjjj";
  return goodsWith(cost + " as cbjj,b.kczje", lastFigures(criteria, warehouses))
      .where(conditions(criteria))
      .add(" order by a.g_sn");
}

Sql stockValueAt(const QString& day) {
  return Sql("select sum(q.gl_kczje) as je from ").add(stock_enquiry_detail::lastRows({}, day));
}

Sql stockValuesAt(const QString& day) {
  return Sql("select q.id,q.gl_kdrq as rq,q.g_sn as gl_djh,q.ck_name as lx,q.g_name as dnote,q.gl_kczje as je from ")
      .add(stock_enquiry_detail::lastRows({}, day))
      .add(" where q.gl_kczje<>0 order by je desc,gl_djh");
}

}  // namespace jxc
