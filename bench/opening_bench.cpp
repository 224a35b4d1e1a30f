// Opening stock of a class of 20,000 goods, as the command writes it and by hand; a file of 100,000 rows, entered and
// stopped.
#include "bare_shop.h"
#include "core/clock.h"
#include "inventory/opening_stock.h"
#include "stock/line_import.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace jxc {
namespace opening_bench {

using bench::Bare;
using bench::Shop;

constexpr int goodsCount = 20'000, rowsOfFile = 100'000;

std::string code(int index) {
  return std::to_string(10'000'000 + index);
}

template <int Goods>
void fill(Shop& made) {
  sqlite3* const db = made.native();
  Bare(db, "begin immediate").run();
  Bare goods(db,
             "insert into jxc_goods (g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_pjjj,g_jj,g_kc,g_jy,g_gdcbj,"
             "gc_sn) values (?,'镜架','JJ','付','','','',10,10,0,0,0,'1001')");
  for (int i = 0; i < Goods; ++i)
    (goods << code(i)).run();
  Bare(db, "commit").run();
}

void takeOut() {
  execSql("delete from jxc_goodslist");
  execSql("delete from jxc_kcsp where g_sn<>'00000000'");
  execSql("update jxc_goods set g_kc=0 where g_kc<>0");
}

void enterClass(benchmark::State& state) {
  bench::filledShop<fill<goodsCount>>();
  bench::YesPrompt yes;
  for (auto _ : state) {
    const auto entered =
        opening_stock::enterClass(QStringLiteral("100001"), QStringLiteral("1001"), 5, yes, [](int) { return true; });
    if (entered != goodsCount) return state.SkipWithError("not all of the class");
    state.PauseTiming();
    takeOut();
    state.ResumeTiming();
  }
}

void enterByHand(benchmark::State& state) {
  sqlite3* const db = bench::filledShop<fill<goodsCount>>().native();
  const std::string day = clock::today().left(4).toStdString() + "-01-01", today = clock::today().toStdString();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare known(db,
             "select g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_jj from jxc_goods where gc_sn='1001' and "
             "g_sn<>'00000000' and g_sn not in (select g_sn from jxc_kcsp where ck_sn='100001') order by g_sn");
  Bare goods(db, "update jxc_goods set g_kc=g_kc+?1,g_jj=?2,g_scjj=?2,g_pjjj=?2 where g_sn=?3");
  Bare stock(db, "insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?1,?2,0,?3,'100001',?1)");
  Bare ledger(db,
              "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,"
              "gl_dzl,gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,"
              "gl_pjjj,gl_kc,gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,"
              "gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) values ('qc','',?1,?2,?3,?4,?5,?6,0,0,?7,1,?8,?8,0,?6,0,0,0,0,"
              "'admin',?9,0,0,?6,?7,?8,'','','员工','admin','100001','主仓库','','期初建账','','',?7,0,'','',0)");
  Bare month(db, "update jxc_kcjs set js_sl=js_sl+?,js_zje=js_zje+? where js_rq=? and ck_sn='100001'");
  for (auto _ : state) {
    double pieces = 0, value = 0;
    begin.run();
    while (known.step()) {
      const std::string sn = known.text(0);
      const double cost = known.number(7);
      (goods << 5.0 << cost << sn).run();
      (stock << 5.0 << cost << sn).run();
      (ledger << day << sn << known.text(1) << known.text(2) << known.text(3) << cost << 5.0 << 5 * cost << today)
          .run();
      pieces += 5;
      value += 5 * cost;
    }
    known.reset();
    (month << pieces << value << today.substr(0, 7)).run();
    commit.run();
    state.PauseTiming();
    takeOut();
    state.ResumeTiming();
  }
}

RowSet openingSheet() {
  RowSet sheet({"商品编号", "数量", "成本价"});
  for (int i = 0; i < rowsOfFile; ++i)
    for (const std::string& cell : {code(i), std::string("5"), std::string("12.5")})
      sheet.addText(cell);
  return sheet;
}

LinePlace place() {
  return {.date = clock::today(), .warehouse = QStringLiteral("100001")};
}

void enterFile(benchmark::State& state) {
  bench::filledShop<fill<rowsOfFile>>();
  bench::YesPrompt yes;
  const RowSet sheet = openingSheet();
  for (auto _ : state) {
    const double before = bench::residentMegabytes();
    const auto judged = judgeLines(sheet, opening_stock::sheet, opening_stock::lines(), place(), yes, Lines::Waiting);
    const auto entered = importLines(*judged, opening_stock::lines(), place(), Lines::Waiting, yes);
    state.counters["MB"] = bench::residentMegabytes() - before;
    if (entered->taken != rowsOfFile) return state.SkipWithError("not all of the file");
    state.PauseTiming();
    takeOut();
    state.ResumeTiming();
  }
}

/// From the word of the operator, when half of it is written, until nothing of it is left.
void stopFile(benchmark::State& state) {
  using clock_type = std::chrono::steady_clock;
  bench::filledShop<fill<rowsOfFile>>();
  bench::YesPrompt yes;
  const auto judged =
      judgeLines(openingSheet(), opening_stock::sheet, opening_stock::lines(), place(), yes, Lines::Waiting);
  for (auto _ : state) {
    clock_type::time_point said;
    const auto entered = importLines(*judged, opening_stock::lines(), place(), Lines::Waiting, yes, [&](int percent) {
      said = clock_type::now();
      return percent < 50;
    });
    state.SetIterationTime(std::chrono::duration<double>(clock_type::now() - said).count());
    if (entered || exists("select top 1 id from jxc_goodslist")) return state.SkipWithError("it was not stopped");
  }
}

const bool registered = [] {
  benchmark::RegisterBenchmark("opening stock of a class of 20,000, statements", enterClass)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("opening stock of a class of 20,000, by hand", enterByHand)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("opening stock from a file of 100,000 rows", enterFile)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("opening stock from that file, stopped half way", stopFile)
      ->UseManualTime()
      ->Iterations(5)
      ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace opening_bench
}  // namespace jxc
