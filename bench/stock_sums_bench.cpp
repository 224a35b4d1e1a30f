// Purchase, sale and stock of a year and of a month, beside the fastest that somebody would write by hand for the same
// figures: on a file rows added up as they are read, on a server one statement for each part.
#include "core/data_module.h"
#include "engine/server.h"
#include "filled_shop.h"
#include "server_shop.h"
#include "statistics/purchase_sale_stock.h"
#include "year_shop.h"

#include <QDate>

#include <array>
#include <benchmark/benchmark.h>
#include <unordered_map>

namespace jxc {
namespace stock_sums_bench {

using bench::Bare;

struct Period {
  std::string from, to;
};
const Period kYear{"2025-01-01", "2025-12-31"}, kMonth{"2025-11-01", "2025-11-30"},
    kTenthOfAYear{"2025-11-01", "2025-12-07"};
/// Of the shop on a server, which ends today.
Period daysBack(int days) {
  const auto text = [](int back) { return QDate::currentDate().addDays(-back).toString(Qt::ISODate).toStdString(); };
  return {text(days), text(0)};
}

void summary(benchmark::State& state, const Period& period) {
  const Criteria asked{.from = QString::fromStdString(period.from), .to = QString::fromStdString(period.to)};
  for (auto _ : state)
    state.counters["goods"] = answer(stockSummary, asked).rowCount();
}

/// The lines, which come whole: those of a warehouse stand together.
void lines(benchmark::State& state, const Period& period) {
  const Criteria asked{.from = QString::fromStdString(period.from), .to = QString::fromStdString(period.to)};
  for (auto _ : state)
    state.counters["rows"] = answer(stockMovements, asked).rowCount();
}

void linesByHand(benchmark::State& state, const Period& period) {
  Bare rows(
      sqlite::asSqlite(accountDb()).native(),
      "select x.id,x.gl_kdrq,x.gl_djh,x.g_sn,y.g_name,y.gg_name,y.dw_name,y.color_name,z.gc_name,x.ghs_name,"
      "m.ck_name,x.ck_sn,x.u_name,x.gl_bz,x.gl_kc,x.gl_kczje,x.gl_flag,case when x.gl_flag='cj' then x.gl_dj else "
      "0 end,case when x.gl_flag='cj' then x.gl_sl else 0 end,case when x.gl_flag='cj' then x.gl_zje else 0 end,"
      "case when x.gl_flag='cj' then 0 else x.gl_dj end,case when x.gl_flag='cj' then 0 else x.gl_sl end,case "
      "when x.gl_flag='cj' then 0 else x.gl_zje end from jxc_goodslist x join jxc_goods y on y.g_sn=x.g_sn join "
      "jxc_ckxx m on m.ck_sn=x.ck_sn left join jxc_goodsclass z on z.gc_sn=y.gc_sn where x.gl_kdrq>=? and "
      "x.gl_kdrq<=? order by m.ck_name,x.g_sn,x.gl_kdrq,x.id");
  const std::string end = period.to + " 23:59:59";
  double sum = 0;
  for (auto _ : state) {
    rows << period.from << end;
    sum += rows.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

/// Opening, in, out, closing; quantity and value of each.
using Sums = std::array<double, 8>;

void addFlow(Sums& sums, std::string_view flag, double quantity, double amount) {
  const bool isOut = flag == "xs" && quantity > 0;
  sums[isOut ? 4 : 2] += std::fabs(quantity);
  sums[isOut ? 5 : 3] += std::fabs(amount);
}

std::string_view textOf(Bare& statement, int column) {
  return reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
}

void summaryByHand(benchmark::State& state, const Period& period) {
  sqlite3* const db = sqlite::asSqlite(accountDb()).native();
  Bare flows(db, "select g_sn,ck_sn,gl_flag,gl_sl,gl_je from jxc_goodslist where gl_kdrq>=? and gl_kdrq<=?");
  const std::string last =
      "(select id from jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn and e.gl_kdrq<? "
      "order by e.gl_kdrq desc,e.id desc limit 1)";
  Bare stock(db, ("select k.g_sn,p.gl_kc,p.gl_kczje,q.gl_kc,q.gl_kczje from (select distinct g_sn,ck_sn from jxc_kcsp) "
                  "k left join jxc_goodslist p on p.id=" +
                  last + " left join jxc_goodslist q on q.id=" + last)
                     .c_str());
  Bare names(db,
             "select b.g_sn,b.g_name,b.gg_name,b.dw_name,b.color_name,c.gc_name from jxc_goods b join jxc_goodsclass c "
             "on b.gc_sn=c.gc_sn order by b.g_sn");
  const std::string end = period.to + " 23:59:59";
  double sum = 0;
  for (auto _ : state) {
    std::unordered_map<std::string, Sums> goods;
    std::string number;
    const auto of = [&](Bare& statement) -> Sums& {
      number = textOf(statement, 0);
      return goods[number];
    };
    flows << period.from << end;
    while (flows.step())
      addFlow(of(flows), textOf(flows, 2), flows.number(3), flows.number(4));
    flows.reset();
    stock << period.from << end + "~";
    while (stock.step()) {
      Sums& sums = of(stock);
      for (const auto& [column, at] : {std::pair{1, 0}, {2, 1}, {3, 6}, {4, 7}})
        sums[static_cast<std::size_t>(at)] += stock.number(column);
    }
    stock.reset();
    while (names.step())
      if (const auto found = goods.find(names.text(0)); found != goods.end()) sum += names.takeRow() + found->second[6];
    names.reset();
  }
  benchmark::DoNotOptimize(sum);
}

/// The same in one statement, with the last rows by a window over the index.
void oneStatement(benchmark::State& state, const Period& period) {
  Bare all(
      sqlite::asSqlite(accountDb()).native(),
      "select b.g_sn,b.g_name,b.gg_name,b.dw_name,b.color_name,c.gc_name,s.kc,s.je,f.*,t.kc,t.je from jxc_goods b "
      "join jxc_goodsclass c on b.gc_sn=c.gc_sn join (select g_sn,sum(gl_kc) kc,sum(gl_kczje) je from jxc_goodslist "
      "where id in (select (select id from jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn and "
      "e.gl_kdrq<=?3 order by e.gl_kdrq desc,e.id desc limit 1) from jxc_kcsp k) group by g_sn) t on t.g_sn=b.g_sn "
      "left join (select g_sn,sum(gl_kc) kc,sum(gl_kczje) je from jxc_goodslist where id in (select (select id from "
      "jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn and e.gl_kdrq<?1 order by e.gl_kdrq desc,e.id desc "
      "limit 1) from jxc_kcsp k) group by g_sn) s on s.g_sn=b.g_sn left join (select g_sn,sum(case when "
      "gl_flag='xs' and gl_sl>0 then 0 else abs(gl_sl) end),sum(case when gl_flag='xs' and gl_sl>0 then 0 else "
      "abs(gl_je) end),sum(case when gl_flag='xs' and gl_sl>0 then gl_sl else 0 end),sum(case when gl_flag='xs' and "
      "gl_sl>0 then abs(gl_je) else 0 end) from jxc_goodslist where gl_kdrq>=?1 and gl_kdrq<=?2 group by g_sn) f on "
      "f.g_sn=b.g_sn order by b.g_sn");
  const std::string end = period.to + " 23:59:59";
  double sum = 0;
  for (auto _ : state) {
    all << period.from << end << end;
    sum += all.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

void onServer(benchmark::State& state, int days, int rows) {
  dataModule().installAccountDb(openPostgres(QString::fromStdString(bench::serverWith(rows))));
  summary(state, daysBack(days));
  dataModule().closeAccountDb();
}

void onServerByHand(benchmark::State& state, int days, int rows) {
  bench::Pipeline server(bench::serverWith(rows));
  const Period period = daysBack(days);
  const std::string end = period.to + " 23:59:59";
  double sum = 0;
  for (auto _ : state) {
    server.send(
        "select g_sn,ck_sn,gl_flag,sign(gl_sl),sum(gl_sl),sum(abs(gl_je)) from jxc_goodslist where gl_kdrq>=? and "
        "gl_kdrq<=? group by 1,2,3,4",
        period.from, end);
    server.send(
        "select k.g_sn,k.ck_sn,b.g_name,b.gg_name,b.dw_name,b.color_name,c.gc_name,p.gl_kc,p.gl_kczje,q.gl_kc,"
        "q.gl_kczje from (select distinct g_sn,ck_sn from jxc_kcsp) k join jxc_goods b on b.g_sn=k.g_sn left join "
        "jxc_goodsclass c on c.gc_sn=b.gc_sn left join lateral (select gl_kc,gl_kczje from jxc_goodslist e where "
        "e.g_sn=k.g_sn and e.ck_sn=k.ck_sn and e.gl_kdrq<? order by e.gl_kdrq desc nulls last,e.id desc limit 1) p on "
        "true left join lateral (select gl_kc,gl_kczje from jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn "
        "and "
        "e.gl_kdrq<=? order by e.gl_kdrq desc nulls last,e.id desc limit 1) q on true",
        period.from, end);
    std::unordered_map<std::string, Sums> goods;
    const auto results = server.fetch();
    for (int row = 0; row < results[0].count(); ++row)
      addFlow(goods[results[0].text(row, 0)], results[0].text(row, 2), results[0].number(row, 4),
              results[0].number(row, 5));
    for (int row = 0; row < results[1].count(); ++row)
      sum += goods[results[1].text(row, 0)][4] + results[1].number(row, 7) + results[1].number(row, 9);
  }
  benchmark::DoNotOptimize(sum);
}

using Work = void (*)(benchmark::State&, const Period&);
void addOne(const std::string& name, int rows, bool byHand, std::span<const char* const> more, const Period& period,
            Work work) {
  benchmark::RegisterBenchmark(bench::named(name.c_str(), rows, byHand).c_str(), [=, &period](benchmark::State& state) {
    bench::yearWith(rows, more);
    work(state, period);
  })->Unit(benchmark::kMillisecond);
}
void add(const std::string& name, int rows, std::span<const char* const> more, const Period& period, Work program,
         Work byHand) {
  addOne(name, rows, false, more, period, program);
  addOne(name, rows, true, more, period, byHand);
}

const bool registered = [] {
  for (const int rows : bench::ledgerSizes())
    if (rows <= bench::mostOfYear)
      add("lines of purchase, sale and stock of a tenth of a year", rows, {}, kTenthOfAYear, lines, linesByHand);
  struct Case {
    const char* name;
    const Period& period;
    int days;
  };
  for (const Case each : {Case{"purchase, sale and stock of a year", kYear, 365},
                          Case{"purchase, sale and stock of a month", kMonth, 30}}) {
    for (const int rows : bench::ledgerSizes()) {
      if (rows > bench::mostOfYear) continue;
      for (const auto& [over, more] :
           {std::pair{"", std::span<const char* const>()}, {" over 100,000 goods", bench::manyGoods}}) {
        const std::string name = std::string(each.name) + over;
        add(name, rows, more, each.period, summary, summaryByHand);
        if (more.empty()) addOne(name + " in one statement", rows, true, more, each.period, oneStatement);
      }
    }
    if (!bench::hasServer()) continue;
    const int rows = bench::ledgerSizes().back();
    for (const bool byHand : {false, true})
      benchmark::RegisterBenchmark(
          bench::named((std::string("server: ") + each.name).c_str(), rows, byHand).c_str(),
          [=, days = each.days](benchmark::State& state) { (byHand ? onServerByHand : onServer)(state, days, rows); })
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime();
  }
  return true;
}();

}  // namespace stock_sums_bench
}  // namespace jxc
