// The proof of a whole account set: every ledger row, document, line and balance of a shop, 10,000 to 5,000,000 ledger
// rows. Beside it what any such proof must do at least: read the ledger once through the bare interface.
#include "bare_shop.h"
#include "maintenance/prove.h"
#include "two_years.h"

#include <benchmark/benchmark.h>
#include <optional>

namespace jxc {
namespace prove_bench {

using bench::Bare;
using bench::Shop;

Shop& shopWith(int rows) {
  dataModule();  // outlives the shop, which closes its file there
  static std::optional<Shop> shop;
  static int made = -1;
  if (made != rows) {
    shop.reset();
    shop.emplace();
    bench::fillTwoYears(*shop, rows);
    made = rows;
  }
  return *shop;
}

void proof(benchmark::State& state) {
  shopWith(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const proof::Proof result = proof::prove(accountDb());
    if (!result.isClean() || result.ledgerRows != state.range(0)) {
      for (const proof::Finding& each : result.findings)
        state.SkipWithError((each.code + ' ' + each.place.toStdString() + ' ' + each.stored.toStdString() + " not " +
                             each.due.toStdString())
                                .c_str());
      return;
    }
  }
}

/// What the proof begins with: the file read and compared with itself, before the books are read.
void look(benchmark::State& state) {
  shopWith(static_cast<int>(state.range(0)));
  for (auto _ : state)
    if (!accountDb().checkStorage().damage.isEmpty()) state.SkipWithError("damaged");
}

/// The ledger read once, its figures summed, in the order in which it lies in the file.
void readByHand(benchmark::State& state) {
  Shop& shop = shopWith(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Bare rows(shop.native(),
              "select id,gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_dj,gl_sysl,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,"
              "gl_kczje,gl_zje from jxc_goodslist order by id");
    double sum = 0;
    std::size_t letters = 0;
    while (rows.step()) {
      for (int column = 1; column <= 5; ++column)
        letters += rows.text(column).size();
      for (int column = 6; column <= 15; ++column)
        sum += rows.number(column);
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(letters);
  }
}

const bool registered = [] {
  for (const int rows : {10'000, 100'000, 1'000'000, 5'000'000}) {
    const std::string size = std::to_string(rows) + " ledger rows";
    benchmark::RegisterBenchmark(("proof of " + size).c_str(), proof)
        ->Arg(rows)
        ->MeasureProcessCPUTime()  // one thread reads ahead for the other
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("look at the file of " + size).c_str(), look)
        ->Arg(rows)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((size + " read by hand").c_str(), readByHand)
        ->Arg(rows)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace prove_bench
}  // namespace jxc
