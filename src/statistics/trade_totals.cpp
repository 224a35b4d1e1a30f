#include "statistics/trade_totals.h"

#include "core/rights.h"

#include <algorithm>
#include <array>

namespace jxc {
namespace trade_totals_detail {

/// Lines are summed first, and what the sums belong to is named after: names are read once a sum, not once a line.
struct Grouping {
  TradeBy by;
  std::string_view keys;    // what rows are grouped by …
  std::string_view shown;   // … and as what it is called
  std::string_view joined;  // tables beside the ledger `x` that the keys are read from
  std::string_view named;   // columns and tables behind "select b.*", up to the sums
  std::string_view where;   // behind the sums
  std::string_view order;
};
constexpr std::string_view kNamedGoods =
    ",a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz from jxc_goods a,(";
constexpr std::string_view kOfGoods = ") b where a.g_sn=b.g_sn";
constexpr std::string_view kCustomers = " left outer join jxc_khxx y on x.ghs_sn=y.kh_sn";
constexpr std::string_view kByTimeAndGoods = "b.tjrq desc,b.g_sn,b.ghs_name";
constexpr std::array kGroupings{
    Grouping{TradeBy::Goods, "x.g_sn", "x.g_sn", "", kNamedGoods, kOfGoods, "b.g_sn"},
    Grouping{TradeBy::GoodsClass, "y.gc_sn", "y.gc_sn", " left outer join jxc_goods y on x.g_sn=y.g_sn",
             ",iif(c.gc_name is null,'其他',c.gc_name) as gc_name from (",
             ") b left outer join jxc_goodsclass c on b.gc_sn=c.gc_sn", "b.gc_sn"},
    Grouping{TradeBy::Partner, "x.ghs_sn", "x.ghs_sn,max(x.ghs_name) as ghs_name", "", " from (", ") b", "b.ghs_sn"},
    Grouping{TradeBy::CustomerType, "iif(y.kt_name is null or y.kt_name='','其他',y.kt_name)",
             "iif(y.kt_name is null or y.kt_name='','其他',y.kt_name) as kt_name", kCustomers, " from (", ") b",
             "b.kt_name"},
    Grouping{TradeBy::Region, "iif(y.z_name is null or y.z_name='','其他',y.z_name)",
             "iif(y.z_name is null or y.z_name='','其他',y.z_name) as z_name", kCustomers, " from (", ") b",
             "b.z_name"},
    Grouping{TradeBy::Day, "left(x.gl_kdrq,10)", "left(x.gl_kdrq,10) as tjrq", "", " from (", ") b", "b.tjrq"},
    Grouping{TradeBy::Month, "left(x.gl_kdrq,7)", "left(x.gl_kdrq,7) as tjrq", "", " from (", ") b", "b.tjrq"},
    Grouping{TradeBy::PartnerGoodsDay, "left(x.gl_kdrq,10),x.g_sn,x.ghs_sn",
             "left(x.gl_kdrq,10) as tjrq,x.g_sn,x.ghs_sn,max(x.ghs_name) as ghs_name,"
             "left(x.gl_kdrq,10)+x.g_sn+'/'+x.ghs_sn as rowkey",
             "", kNamedGoods, kOfGoods, kByTimeAndGoods},
    Grouping{TradeBy::PartnerGoodsMonth, "left(x.gl_kdrq,7),x.g_sn,x.ghs_sn",
             "left(x.gl_kdrq,7) as tjrq,x.g_sn,x.ghs_sn,max(x.ghs_name) as ghs_name,"
             "left(x.gl_kdrq,7)+x.g_sn+'/'+x.ghs_sn as rowkey",
             "", kNamedGoods, kOfGoods, kByTimeAndGoods},
};

/// What a sum over a type, region or class stands for; "其他" are those without one, among them partners and goods that
/// are gone.
void addGroup(Filter& filter, const Criteria& criteria) {
  if (criteria.group.isEmpty()) return;
  const bool ofGoods = criteria.has(kGroupIsClass);
  const std::string_view column = ofGoods ? "gc_sn" : criteria.has(kGroupIsRegion) ? "z_name" : "kt_name";
  const bool without = criteria.group == u"其他";
  std::string condition = ofGoods ? "x.g_sn" : "x.ghs_sn";
  condition += without ? " not in (select " : " in (select ";
  condition += ofGoods ? "g_sn from jxc_goods where " : "kh_sn from jxc_khxx where ";
  condition += without ? compose("{}<>'' and {}<>?)", {column, column}) : compose("{}=?)", {column});
  filter.add(condition, criteria.group);
}

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
  addGroup(filter, criteria);
  return filter;
}

/// The totals without their order.
Sql unordered(PartnerType side, const Grouping& grouping, const Criteria& criteria, const Warehouses& warehouses) {
  const auto text = [](auto... parts) { return (std::string() + ... + std::string(parts)); };
  return Sql(text("select b.*", grouping.named, "select ", grouping.shown,
                  ",sum(x.gl_sl) as sl,sum(x.gl_je) as je,sum(x.gl_taxje) as taxje,sum(x.gl_zje) as zje,"
                  "sum(x.gl_zcb) as zcb,sum(x.gl_lr) as lr,"
                  "iif(sum(x.gl_je)<>0,round(sum(x.gl_lr)*100/sum(x.gl_je),2),0) as lrl from jxc_goodslist x",
                  grouping.joined))
      .where(conditions(side, criteria, warehouses))
      .add(text(" group by ", grouping.keys, grouping.where));
}

/// What a ranking goes by. An order by profit tells of cost, one by amount of prices: without the right it goes by
/// quantity.
std::string ranked(PartnerType side, const Criteria& criteria, std::string_view otherwise) {
  std::string order = " order by ";
  if (criteria.order == u"je" && hasRight(side == PartnerType::Supplier ? kSeesCost : kSeesPrice))
    order += "b.je desc,";
  else if (criteria.order == u"lr" && hasRight(kSeesCost))
    order += "b.lr desc,";
  else if (!criteria.order.isEmpty())
    order += "b.sl desc,";
  return order + std::string(otherwise);
}

/// Present stock of each goods.
Sql stockToday(const Warehouses& warehouses) {
  Filter filter;
  warehouses.restrict(filter, "ck_sn");
  return Sql("select g_sn,sum(kc_sl) as kcsl from jxc_kcsp").where(filter).add(" group by g_sn");
}

const Grouping& grouping(TradeBy by) {
  return *std::ranges::find(kGroupings, by, &Grouping::by);
}

}  // namespace trade_totals_detail

Sql tradeLines(PartnerType side, const Criteria& criteria, const Warehouses& warehouses) {
  return Sql("select x.*,iif(x.gl_je<>0,round(x.gl_lr*100/x.gl_je,2),0) as lrl from jxc_goodslist x")
      .where(trade_totals_detail::conditions(side, criteria, warehouses))
      .add(" order by x.gl_kdrq desc,x.id desc");
}

Sql tradeTotals(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const Grouping& asked = grouping(by);
  return unordered(side, asked, criteria, warehouses).add(ranked(side, criteria, asked.order));
}

Sql goodsRanking(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  constexpr auto side = PartnerType::Customer;
  return Sql("select b.*,iif(k.kcsl is null,0,k.kcsl) as kcsl from (")
      .add(unordered(side, grouping(TradeBy::Goods), criteria, warehouses))
      .add(") b left outer join (")
      .add(stockToday(warehouses))
      .add(") k on b.g_sn=k.g_sn" + ranked(side, criteria, "b.g_sn"));
}

Sql stockTurn(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const auto moved = [&](PartnerType side) {
    return Sql("select x.g_sn,sum(x.gl_sl) as sl from jxc_goodslist x")
        .where(conditions(side, criteria, warehouses))
        .add(" group by x.g_sn");
  };
  Filter filter;
  filter.add("a.g_jy=0").add("a.g_sn<>'00000000'");
  filter.add(criteria.has(kTurnOfAllGoods) ? "(b.sl is not null or c.sl is not null)"
                                           : "b.sl is not null and c.sl is not null");
  const std::string_view order = criteria.order == u"cgsl"   ? "t.cgsl"
                                 : criteria.order == u"xssl" ? "t.xssl"
                                 : criteria.order == u"kcsl" ? "t.kcsl"
                                                             : "zzbl";
  return Sql(R"(select t.*,iif(t.cgsl+t.kcsl<>0,round(t.xssl*100/(t.cgsl+t.kcsl),2),0) as zzbl from
      (select a.g_sn,a.g_name,a.gg_name,a.color_name,a.dw_name,iif(b.sl is null,0,b.sl) as cgsl,
      iif(c.sl is null,0,c.sl) as xssl,iif(k.kcsl is null,0,k.kcsl) as kcsl
      from ((jxc_goods a left outer join ()")
      .add(moved(PartnerType::Supplier))
      .add(") b on a.g_sn=b.g_sn) left outer join (")
      .add(moved(PartnerType::Customer))
      .add(") c on a.g_sn=c.g_sn) left outer join (")
      .add(stockToday(warehouses))
      .add(") k on a.g_sn=k.g_sn")
      .where(filter)
      .add(") t order by " + std::string(order) + " desc,t.g_sn");
}

}  // namespace jxc
