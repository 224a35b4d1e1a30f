#include "statistics/trade_totals.h"

#include <algorithm>
#include <array>

namespace jxc {
namespace trade_totals_detail {

/// Lines are summed first, and what the sums belong to is named after: names are read once a sum, not once a line.
struct Grouping {
  TradeBy by;
  std::string_view keys;   // what rows are grouped by …
  std::string_view shown;  // … and as what it is called
  std::string_view named;  // columns and tables behind "select b.*", up to the sums
  std::string_view where;  // behind the sums
};
constexpr std::string_view kNamedGoods =
    ",a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz from jxc_goods a,(";
constexpr std::array kGroupings{
    Grouping{TradeBy::Goods, "x.g_sn", "x.g_sn", kNamedGoods, ") b where a.g_sn=b.g_sn order by b.g_sn"},
    Grouping{TradeBy::GoodsClass, "y.gc_sn", "y.gc_sn", ",iif(c.gc_name is null,'其他',c.gc_name) as gc_name from (",
             ") b left outer join jxc_goodsclass c on b.gc_sn=c.gc_sn order by b.gc_sn"},
    Grouping{TradeBy::Day, "left(x.gl_kdrq,10)", "left(x.gl_kdrq,10) as tjrq", " from (", ") b order by b.tjrq"},
    Grouping{TradeBy::Month, "left(x.gl_kdrq,7)", "left(x.gl_kdrq,7) as tjrq", " from (", ") b order by b.tjrq"},
    Grouping{TradeBy::PartnerGoodsDay, "left(x.gl_kdrq,10),x.g_sn,x.ghs_sn",
             "left(x.gl_kdrq,10) as tjrq,x.g_sn,x.ghs_sn,max(x.ghs_name) as ghs_name,"
             "left(x.gl_kdrq,10)+x.g_sn+'/'+x.ghs_sn as rowkey",
             kNamedGoods, ") b where a.g_sn=b.g_sn order by b.tjrq desc,b.g_sn,b.ghs_name"},
    Grouping{TradeBy::PartnerGoodsMonth, "left(x.gl_kdrq,7),x.g_sn,x.ghs_sn",
             "left(x.gl_kdrq,7) as tjrq,x.g_sn,x.ghs_sn,max(x.ghs_name) as ghs_name,"
             "left(x.gl_kdrq,7)+x.g_sn+'/'+x.ghs_sn as rowkey",
             kNamedGoods, ") b where a.g_sn=b.g_sn order by b.tjrq desc,b.g_sn,b.ghs_name"},
};

Filter conditions(PartnerType side, const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add(side == PartnerType::Supplier ? "x.gl_flag in ('cj','ct')" : "x.gl_flag in ('xs','xt')");
  addPeriod(filter, criteria, "x.gl_kdrq");
  addChoice(filter, "x.gl_flag", criteria.kind);
  addChoice(filter, "x.g_sn", criteria.goods);
  addChoice(filter, "x.ghs_sn", criteria.partner);
  warehouses.restrict(filter, "x.ck_sn");
  // A gift's line has a longer name: what counts is the goods, not how the line calls it.
  Filter goods;
  addClass(goods, criteria, "gc_sn");
  addKey(goods, criteria, {"g_sn", "g_name", "g_jm", "g_sptm", "gg_name", "color_name", "g_sccs"});
  if (!goods.isEmpty()) filter.add(Sql("x.g_sn in (select g_sn from jxc_goods").where(goods).add(")"));
  return filter;
}

}  // namespace trade_totals_detail

Sql tradeLines(PartnerType side, const Criteria& criteria, const Warehouses& warehouses) {
  return Sql("select x.*,iif(x.gl_je<>0,round(x.gl_lr*100/x.gl_je,2),0) as lrl from jxc_goodslist x")
      .where(trade_totals_detail::conditions(side, criteria, warehouses))
      .add(" order by x.gl_kdrq desc,x.id desc");
}

Sql tradeTotals(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const Grouping& grouping = *std::ranges::find(kGroupings, by, &Grouping::by);
  Filter filter = conditions(side, criteria, warehouses);
  const bool byClass = by == TradeBy::GoodsClass;
  if (byClass) filter.add("x.g_sn=y.g_sn");
  Sql sums("select " + std::string(grouping.shown) +
           ",sum(x.gl_sl) as sl,sum(x.gl_je) as je,sum(x.gl_taxje) as taxje,sum(x.gl_zje) as zje,"
           "sum(x.gl_zcb) as zcb,sum(x.gl_lr) as lr,"
           "iif(sum(x.gl_je)<>0,round(sum(x.gl_lr)*100/sum(x.gl_je),2),0) as lrl from jxc_goodslist x");
  if (byClass) sums.add(",jxc_goods y");
  sums.where(filter).add(" group by " + std::string(grouping.keys));
  return Sql("select b.*" + std::string(grouping.named)).add(sums).add(grouping.where);
}

}  // namespace jxc
