// Closing half of the rows of a shop, documents, lines, money and all: everything from the first question to the
// commit, and how long the operator hears nothing of it at most. Beside it the statements that delete and carry the
// same rows, written by hand, without a look at the balances. What the file gives back afterwards is the same statement
// for both, and measured alone.
#include "engine/bulk.h"
#include "maintenance/period_closing.h"
#include "two_years.h"

#include <QDate>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <string>
#include <utility>

namespace jxc {
namespace closing_bench {

using bench::Bare;
using bench::Shop;

constexpr int rows = 1'000'000;

QString middle() {
  return QDate::currentDate().addDays(-365).toString(Qt::ISODate);
}

void closing(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Shop shop;
    bench::fillTwoYears(shop, rows);
    using Clock = std::chrono::steady_clock;
    Clock::duration silence{};
    state.ResumeTiming();
    auto last = Clock::now();
    const auto report = [&](int, const QString&) {
      const auto now = Clock::now();
      silence = std::max(silence, now - std::exchange(last, now));
      return true;
    };
    if (!closing::closeBooks({middle()}, {}, report)) state.SkipWithError("it was not closed");
    state.PauseTiming();
    state.counters["silence_ms"] = std::chrono::duration<double, std::milli>(silence).count();
    const double left = lookupNumber("select count(*) from jxc_goodslist");
    if (left < rows / 2 || left > rows / 2 + 5000) state.SkipWithError("half of the rows should be left");
    state.ResumeTiming();
  }
}

void byHand(benchmark::State& state) {
  const std::string until = middle().toStdString() + " 23:59:59";
  for (auto _ : state) {
    state.PauseTiming();
    Shop shop;
    bench::fillTwoYears(shop, rows);
    state.ResumeTiming();
    const auto run = [&](const char* text) {
      Bare statement(shop.native(), text);
      const std::string words(text);
      for (std::size_t at = words.find('?'); at != std::string::npos; at = words.find('?', at + 1))
        statement << until;
      while (statement.step()) {  // a sum is a row
      }
    };
    run("begin immediate");
    for (const char* sum :
         {"select count(*),sum(j_yfje) from jxc_jhd where j_status=1 and j_jhrq<=?",
          "select sum(a.jh_sl) from jxc_jhsp a join jxc_jhd b on a.j_sn=b.j_sn where b.j_status=1 and b.j_jhrq<=?",
          "select count(*),sum(ls_yfje) from jxc_lsxsd where ls_status=1 and ls_xsrq<=?",
          "select sum(a.ls_sl) from jxc_lsxssp a join jxc_lsxsd b on a.gl_djh=b.gl_djh where b.ls_status=1 and "
          "b.ls_xsrq<=?"})
      run(sum);
    for (const char* text :
         {"delete from jxc_jhsp where j_sn in (select j_sn from jxc_jhd where j_jhrq<=?)",
          "delete from jxc_jhd where j_jhrq<=?",
          "delete from jxc_lsxssp where gl_djh in (select gl_djh from jxc_lsxsd where ls_xsrq<=?)",
          "delete from jxc_lsxsd where ls_xsrq<=?",
          "create temp table last as select max(x.id) as rid from jxc_goodslist x join (select max(gl_kdrq) as rq,g_sn,"
          "ck_sn from jxc_goodslist where gl_kdrq<=? group by g_sn,ck_sn) y on x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and "
          "x.gl_kdrq=y.rq group by x.g_sn,x.ck_sn",
          "delete from jxc_goodslist where gl_kdrq<=? and id not in (select rid from last)",
          "update jxc_goodslist set gl_sl=gl_kc,gl_dj=gl_pjjj,gl_zje=gl_kczje,gl_je=gl_kczje,gl_sqje=gl_kczje,"
          "gl_sqsl=gl_kc,gl_djh='',gl_flag='qc',ghs_name='x',gl_note='x' where gl_kdrq<=?",
          "delete from jxc_xjyh where xj_rq<=? and id not in (select max(id) from jxc_xjyh where xj_rq<=? group by "
          "xj_kmmc)",
          "update jxc_xjyh set xj_je=xj_ljje,gl_djh='',xj_note='x' where xj_rq<=?",
          "delete from jxc_ysyfk where k_rq<=? and id not in (select max(id) from jxc_ysyfk where k_rq<=? group by "
          "k_type,k_ghskh)",
          "update jxc_ysyfk set k_yfje=k_ljje,k_sfje=0,gl_djh='',k_note='x' where k_rq<=?"})
      run(text);
    run("commit");
  }
}

void givingRoomBack(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Shop shop;
    bench::fillTwoYears(shop, rows);
    closing::closeBooks({middle()}, {});
    state.ResumeTiming();
    if (!giveRoomBack(accountDb(), [] { return true; })) state.SkipWithError("the file was not written anew");
  }
}

BENCHMARK(closing)
    ->Name("closing half of 1000000 ledger rows, statements")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(byHand)
    ->Name("closing half of 1000000 ledger rows, by hand")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(givingRoomBack)
    ->Name("giving room back behind it")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

}  // namespace closing_bench
}  // namespace jxc
