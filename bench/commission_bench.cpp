// Commissions of a year, beside the shortest statements that somebody would write for the same figures.
#include "filled_shop.h"
#include "statistics/commission.h"
#include "year_shop.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace commission_bench {

using bench::Bare;

/// What the rows of the year's ledger were posted from, with what customers paid: four employees are paid by sales,
/// three by profit, one by nothing; one of twenty goods has a commission of its own.
constexpr const char* kDocuments[] = {
    "update jxc_goods set g_tclb=case when cast(g_sn as int)%20=0 then 1 else 0 end",
    "update jxc_user set u_tcfs=case when u_sn>='100004' then 1 else 0 end,u_tc=case when u_sn='100007' then 0 else 3 "
    "end,u_zdlr=case u_sn when '100005' then 5 else 0 end",
    "insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,ls_xsrq,u_sn,ls_status,ls_yfje,ls_sfje) select gl_djh,max(ghs_sn),"
    "'100001',max(gl_kdrq),'10000'||substr(max(u_name),3),1,sum(gl_zje),sum(gl_zje)*0.8 from jxc_goodslist where "
    "gl_flag='xs' group by gl_djh",
    "insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,th_xsrq,u_sn,th_status,th_yfje,th_sfje) select gl_djh,max(ghs_sn),"
    "'100001',max(gl_kdrq),'10000'||substr(max(u_name),3),1,sum(gl_zje),sum(gl_zje) from jxc_goodslist where "
    "gl_flag='xt' group by gl_djh",
    "insert into jxc_lsxssp (gl_djh,g_sn,ls_sl,ls_zje,t_zp) select gl_djh,g_sn,gl_sl,gl_zje,'' from jxc_goodslist "
    "where gl_flag='xs'",
    "insert into jxc_xsthsp (gl_djh,g_sn,th_sl,th_zje) select gl_djh,g_sn,-gl_sl,-gl_zje from jxc_goodslist where "
    "gl_flag='xt'",
    "insert into jxc_ysyfk (gl_djh,k_ghskh,u_sn,k_type,k_djlx,k_rq,k_yfje,k_sfje) select gl_djh,kh_sn,u_sn,'kh','XS',"
    "ls_xsrq,ls_yfje,ls_sfje from jxc_lsxsd union all select gl_djh,kh_sn,u_sn,'kh','XT',th_xsrq,th_yfje,th_sfje from "
    "jxc_xsthd union all select 'SK'||substr(gl_djh,3),kh_sn,u_sn,'kh','SK',ls_xsrq,0,ls_yfje-ls_sfje from jxc_lsxsd "
    "where id%2=0"};

void statements(benchmark::State& state, int rows) {
  bench::yearWith(rows, kDocuments);
  const Criteria year{.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
  for (auto _ : state)
    state.counters["rows"] = answer(commissions, year).rowCount();
}

void byHand(benchmark::State& state, int rows) {
  // Each as it is quickest: employees and goods are looked for in short lists before a line is grouped.
  constexpr const char* bySales =
      "select u_sn,sum(y),sum(s) from (select u_sn,sum(k_yfje) as y,sum(k_sfje) as s from jxc_ysyfk where k_type='kh' "
      "and k_djlx in ('XS','XT','YS','SK') and k_rq>=?1 and k_rq<=?2 and u_sn in (select u_sn from jxc_user where "
      "u_tcfs=0 and u_tc>0) group by u_sn union all select v.u_sn,-sum(ls_zje),-sum(ls_zje) from jxc_lsxsd v cross "
      "join jxc_lsxssp x on x.gl_djh=v.gl_djh where ls_status=1 and ls_xsrq>=?1 and ls_xsrq<=?2 and v.u_sn in (select "
      "u_sn from jxc_user where u_tcfs=0 and u_tc>0) and x.g_sn in (select g_sn from jxc_goods where g_tclb<>0) and "
      "ifnull(t_zp,'')<>'(赠品)' group by v.u_sn union all select v.u_sn,sum(th_zje),sum(th_zje) from jxc_xsthd v "
      "cross join jxc_xsthsp x on x.gl_djh=v.gl_djh where th_status=1 and th_xsrq>=?1 and th_xsrq<=?2 and v.u_sn in "
      "(select u_sn from jxc_user where u_tcfs=0 and u_tc>0) and x.g_sn in (select g_sn from jxc_goods where "
      "g_tclb<>0) group by v.u_sn) group by u_sn";
  constexpr const char* byProfit =
      "select y.u_sn,sum(gl_lr),sum((gl_dj*gl_dzl-gl_cbj-u_zdlr)*gl_sl) from jxc_goodslist x cross join jxc_user y on "
      "x.u_name=y.u_name where u_tcfs=1 and u_tc>0 and gl_flag in ('xs','xt') and x.u_name in (select u_name from "
      "jxc_user where u_tcfs=1 and u_tc>0) and (u_zdlr=0 or gl_dj-gl_cbj>u_zdlr) and gl_kdrq>=?1 and gl_kdrq<=?2 and "
      "x.g_sn not in (select g_sn from jxc_goods where g_tclb<>0) and substr(x.g_name,-4)<>'(赠品)' group by y.u_sn";
  sqlite3* const db = bench::yearWith(rows, kDocuments);
  Bare sales(db, bySales), profit(db, byProfit);
  double sum = 0;
  for (auto _ : state)
    for (Bare* statement : {&sales, &profit}) {
      *statement << std::string("2025-01-01") << std::string("2025-12-31 23:59:59");
      sum += statement->takeAll();
    }
  benchmark::DoNotOptimize(sum);
}

constexpr bench::Pair kPairs[] = {{"commissions of a year", statements, byHand}};

const bool registered = bench::registerPairs(kPairs, bench::mostOfYear);

}  // namespace commission_bench
}  // namespace jxc
