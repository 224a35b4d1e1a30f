// Statistics of a year over the stock ledger, beside the shortest statement that somebody would write for the same
// figures.
#include "filled_shop.h"
#include "statistics/trade_totals.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace trade_bench {

using bench::Bare;

/// A year of a shop with a thousand goods in sixty classes of thirty suppliers, five hundred customers and eight
/// employees; nine of ten rows are sales, one of twenty of them comes back.
constexpr const char* kFill[] = {
    "delete from jxc_goodsclass",
    "delete from jxc_khxx",
    "delete from jxc_ghsxx",
    "delete from jxc_user",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<59) "
    "insert into jxc_goodsclass (gc_sn,gc_name) select 1000+i,'类别'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<29) "
    "insert into jxc_ghsxx (ghs_sn,ghs_name) select 200000+i,'眼镜批发部'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<499) insert into jxc_khxx "
    "(kh_sn,kh_name,kt_name,z_name) select 300000+i,'眼镜店'||i,'类型'||(i%4),'地区'||(i%12) from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<7) "
    "insert into jxc_user (u_sn,u_name) select 100000+i,'员工'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<999) insert into jxc_goods "
    "(g_sn,g_name,g_jm,dw_name,gc_sn,ghs_sn,g_jy) select 1000000+i,'镜架'||i,'JJ','付',1000+i%60,200000+i%30,0 from n",
};
constexpr const char* kLedger =
    "with recursive n(i) as (select 0 union all select i+1 from n where i<?1-1) insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lr,"
    "gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,"
    "ghs_sn,ghs_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) select f,case f when 'cj' then 'CJ0' when 'xt' then 'XT0' "
    "else 'XS0' end||(10000000+i/20),d,1000000+g,'镜架'||g,20,10,10*q,q,1,22.6*q,20*q,13,22.6,2.6*q,10*q,0,'admin',d,"
    "9,90,10,8,80,'','','员工'||(i/20%8),'admin','100001','主仓库',case f when 'cj' then 200000+i/20%30 else "
    "300000+i/20%500 end,'眼镜店'||(i/20%500),0,0,'','',0 from (select i,i*7919%1000 as g,case i/20%10 when 0 then "
    "'cj' "
    "when 1 then case i/200%2 when 0 then 'xt' else 'xs' end else 'xs' end as f,case when i/20%10=1 and i/200%2=0 then "
    "-1 else 1+i%3 end as q,date('2025-01-01','+'||(i*365/?1)||' days') as d from n)";

void yearWith(int rows) {
  dataModule();  // outlives the shop, which closes its file there
  static std::optional<bench::Shop> shop;
  static int made = -1;
  if (made == rows && dataModule().isAccountOpen() && &accountDb() == shop->database()) return;
  shop.reset();
  shop.emplace();
  made = rows;
  Bare(shop->native(), "begin immediate").run();
  for (const char* statement : kFill)
    Bare(shop->native(), statement).run();
  (Bare(shop->native(), kLedger) << static_cast<sqlite3_int64>(rows)).run();
  Bare(shop->native(), "commit").run();
}

struct Case {
  const char* name;
  TradeBy by;
  const char* groupedBy;  // by hand, with the names that are shown and the tables beside the ledger
  const char* names = "";
  const char* joined = "";
};
constexpr const char* kWithClass = " join jxc_goods g on g.g_sn=x.g_sn join jxc_goodsclass c on c.gc_sn=g.gc_sn";
constexpr const char* kWithCustomer = " join jxc_khxx k on k.kh_sn=x.ghs_sn";
constexpr Case kCases[] = {
    {"sales of a year by goods", TradeBy::Goods, "x.g_sn", ",max(x.g_name)"},
    {"sales of a year by class", TradeBy::GoodsClass, "g.gc_sn", ",max(c.gc_name)", kWithClass},
    {"sales of a year by supplier of the goods", TradeBy::GoodsSupplier, "g.ghs_sn", ",max(s.ghs_name)",
     " join jxc_goods g on g.g_sn=x.g_sn join jxc_ghsxx s on s.ghs_sn=g.ghs_sn"},
    {"sales of a year by customer", TradeBy::Partner, "x.ghs_sn", ",max(x.ghs_name)"},
    {"sales of a year by customer and class", TradeBy::PartnerClass, "x.ghs_sn,g.gc_sn",
     ",max(x.ghs_name),max(c.gc_name)", kWithClass},
    {"sales of a year by type of customer", TradeBy::CustomerType, "k.kt_name", "", kWithCustomer},
    {"sales of a year by region", TradeBy::Region, "k.z_name", "", kWithCustomer},
    {"sales of a year by employee", TradeBy::Employee, "x.u_name"},
    {"sales of a year by day", TradeBy::Day, "substr(x.gl_kdrq,1,10)"},
    {"sales of a year by month", TradeBy::Month, "substr(x.gl_kdrq,1,7)"},
    {"sales of a year by day, goods and customer", TradeBy::PartnerGoodsDay, "substr(x.gl_kdrq,1,10),x.g_sn,x.ghs_sn",
     ",max(x.ghs_name)"},
    {"sales of a year by month, goods and customer", TradeBy::PartnerGoodsMonth,
     "substr(x.gl_kdrq,1,7),x.g_sn,x.ghs_sn", ",max(x.ghs_name)"}};

std::string handWritten(const Case& each) {
  const std::string sums =
      std::string("select ") + each.groupedBy + each.names +
      ",sum(gl_sl) as sl,sum(gl_je) as je,sum(gl_taxje) as taxje,sum(gl_zje) as zje,sum(gl_zcb) as "
      "zcb,sum(gl_lr) as lr,case when sum(gl_je)<>0 then round(sum(gl_lr)*100/sum(gl_je),2) else 0 "
      "end as lrl from jxc_goodslist x" +
      each.joined + " where gl_flag in ('xs','xt') and gl_kdrq>=? and gl_kdrq<=? group by " + each.groupedBy;
  if (each.by != TradeBy::PartnerGoodsDay && each.by != TradeBy::PartnerGoodsMonth) return sums;
  return "select a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz,b.* from jxc_goods a join (" +
         sums + ") b on a.g_sn=b.g_sn order by 8 desc,9,10";
}

void statements(benchmark::State& state, const Case& each) {
  const Criteria year{.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
  for (auto _ : state)
    state.counters["rows"] = openSelect(tradeTotals(PartnerType::Customer, each.by, year, Warehouses(year))).rowCount();
}

void byHand(benchmark::State& state, const Case& each) {
  Bare statement(sqlite::asSqlite(accountDb()).native(), handWritten(each).c_str());
  double sum = 0;
  for (auto _ : state) {
    statement << std::string("2025-01-01") << std::string("2025-12-31 23:59:59");
    while (statement.step())
      sum += statement.takeRow();
    statement.reset();
  }
  benchmark::DoNotOptimize(sum);
}

const bool registered = [] {
  constexpr int kMost = 1000000;  // a year has no more
  for (const int rows : bench::ledgerSizes())
    for (const Case& each : kCases)
      for (const bool hand : {false, true})
        if (rows <= kMost)
          benchmark::RegisterBenchmark(bench::named(each.name, rows, hand).c_str(), [&each, hand,
                                                                                     rows](benchmark::State& state) {
            yearWith(rows);
            (hand ? byHand : statements)(state, each);
          })->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace trade_bench
}  // namespace jxc
