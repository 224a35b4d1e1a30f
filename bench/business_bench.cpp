// 营业分析 over a grown ledger: the page of a day, days and months of a year, and the day on the main window, beside
// the shortest statements that somebody would write for the same figures.
#include "bare_shop.h"
#include "filled_shop.h"
#include "statistics/business_day.h"
#include "year_shop.h"

#include <benchmark/benchmark.h>
#include <initializer_list>
#include <vector>

namespace jxc {
namespace business_bench {

using bench::Bare;

/// The heads and lines of the year's sales, cash of every day, month-end stock, and limits.
constexpr const char* kBesideLedger[] = {
    "insert into jxc_lsxsd (gl_djh,ls_status,ls_xsrq,ck_sn,ls_yfje) select gl_djh,1,min(gl_kdrq),min(ck_sn),"
    "sum(gl_zje) from jxc_goodslist where gl_flag='xs' group by gl_djh",
    "insert into jxc_lsxssp (gl_djh,g_sn,ls_sl,ls_zje) select gl_djh,g_sn,gl_sl,gl_zje from jxc_goodslist where "
    "gl_flag='xs'",
    "insert into jxc_xjyh (xj_rq,gl_djh,xj_je,xj_kmmc,xj_chk) select ls_xsrq,gl_djh,ls_yfje,"
    "case id%2 when 0 then '现金' else '工行帐号' end,'1' from jxc_lsxsd",
    "insert into jxc_kcjs (js_rq,ck_sn,js_sl,js_zje) select distinct substr(gl_kdrq,1,7),'100001',1,10 from "
    "jxc_goodslist",
    "update jxc_goods set g_zdkc=3,g_kc=g_sn%7"};

Criteria oneDay() {
  return {.from = QStringLiteral("2025-12-30"), .to = QStringLiteral("2025-12-30")};
}
Criteria theYear() {
  return {.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
}

template <auto Figures>
void ask(benchmark::State& state, int rows, const Criteria& criteria) {
  bench::yearWith(rows, kBesideLedger);
  for (auto _ : state) {
    const Source source(Figures);
    state.counters["rows"] = jxc::answer(source, criteria).rowCount();
  }
}

/// All rows of these statements, with the ends of a period for their two marks.
void byHand(benchmark::State& state, int rows, const Criteria& criteria, std::initializer_list<const char*> texts) {
  sqlite3* const db = bench::yearWith(rows, kBesideLedger);
  std::vector<Bare> statements;
  for (const char* text : texts)
    statements.emplace_back(db, text);
  const std::string from = criteria.from.toStdString(), to = criteria.to.toStdString() + " 23:59:59";
  double taken = 0;
  for (auto _ : state)
    for (Bare& statement : statements) {
      if (sqlite3_bind_parameter_count(statement.get()) > 0) statement << from << to;
      taken += statement.takeAll();
    }
  benchmark::DoNotOptimize(taken);
}

void day(benchmark::State& state, int rows) {
  ask<dayFigures>(state, rows, oneDay());
}
void dayByHand(benchmark::State& state, int rows) {
  byHand(state, rows, oneDay(),
         {"select count(distinct h.id),sum(ls_sl),sum(ls_zje) from jxc_lsxsd h join jxc_lsxssp l on l.gl_djh=h.gl_djh "
          "where ls_status=1 and ls_xsrq between ? and ?",
          "select sum(gl_lr) from jxc_goodslist where gl_kdrq between ? and ? and gl_flag in ('xs','xt')",
          "select xj_kmmc,sum(xj_je) from jxc_xjyh where xj_rq between ? and ? and xj_chk='1' group by 1",
          "select (select count(*) from jxc_lsxsd where ls_status=0)+(select count(*) from jxc_jhd where j_status=0)",
          "select count(*) from jxc_goods where g_kc<g_zdkc and g_jy=0",
          "select (select sum(kh_lwje) from jxc_khxx),(select sum(ghs_lwje) from jxc_ghsxx)"});
}

void days(benchmark::State& state, int rows) {
  ask<businessDays>(state, rows, theYear());
}
void daysByHand(benchmark::State& state, int rows) {
  byHand(state, rows, theYear(),
         {"select substr(gl_kdrq,1,10),gl_flag in ('xs','xt'),sum(gl_sl),sum(gl_je),sum(gl_taxje),sum(gl_zje),"
          "sum(gl_zcb),sum(gl_lr) from jxc_goodslist where gl_kdrq between ? and ? and gl_flag in ('cj','ct','xs','xt')"
          " group by 1,2"});
}

void months(benchmark::State& state, int rows) {
  ask<businessMonths>(state, rows, theYear());
}
void monthsByHand(benchmark::State& state, int rows) {
  byHand(state, rows, theYear(),
         {"select js_rq,sum(js_sl),sum(js_zje) from jxc_kcjs group by 1",
          "select substr(gl_kdrq,1,7),gl_flag in ('xs','xt'),sum(gl_sl),sum(gl_je),sum(gl_taxje),sum(gl_zje),"
          "sum(gl_lr) from jxc_goodslist where gl_kdrq between ? and ? and gl_flag in ('cj','ct','xs','xt')"
          " group by 1,2"});
}

constexpr bench::Pair kPairs[] = {{"the day on the main window", day, dayByHand},
                                  {"trade of a year, day by day", days, daysByHand},
                                  {"trade of a year, month by month", months, monthsByHand}};

const bool registered = bench::registerPairs(kPairs, bench::mostOfYear);

}  // namespace business_bench
}  // namespace jxc
