// The proof of a whole account set: every ledger row, document, line and balance of a shop, 10,000 to 5,000,000 ledger
// rows. Beside it what any such proof must do at least: read the ledger once through the bare interface; and beside the
// look at the file what SQLite itself needs for it.
#include "bare_shop.h"
#include "maintenance/prove.h"
#include "two_years.h"

#include <benchmark/benchmark.h>
#include <ctime>
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

/// Its counter tells the processor time of the books alone, in milliseconds: without the look at the file before them.
void proof(benchmark::State& state) {
  shopWith(static_cast<int>(state.range(0)));
  std::clock_t books = 0;
  for (auto _ : state) {
    QString first;
    std::clock_t begun = 0;
    const proof::Proof result = proof::prove(accountDb(), [&](int, const QString& doing) {
      if (first.isEmpty()) first = doing;
      if (begun == 0 && doing != first) begun = std::clock();
      return true;
    });
    books += std::clock() - begun;
    if (!result.isClean() || result.ledgerRows != state.range(0)) {
      for (const proof::Finding& each : result.findings)
        state.SkipWithError((each.code + ' ' + each.place.toStdString() + ' ' + each.stored.toStdString() + " not " +
                             each.due.toStdString())
                                .c_str());
      return;
    }
  }
  state.counters["books"] =
      benchmark::Counter(static_cast<double>(books) * 1000 / CLOCKS_PER_SEC, benchmark::Counter::kAvgIterations);
}

/// What the proof begins with: the file read and compared with itself, before the books are read.
void look(benchmark::State& state) {
  shopWith(static_cast<int>(state.range(0)));
  for (auto _ : state)
    if (!accountDb().checkStorage([](int) { return true; }).damage.isEmpty()) state.SkipWithError("damaged");
}

void lookByHand(benchmark::State& state) {
  Bare check(shopWith(static_cast<int>(state.range(0))).native(), "pragma integrity_check");
  for (auto _ : state)
    benchmark::DoNotOptimize(check.takeAll());
}

/// The ledger read once, its figures summed, in the order in which it lies in the file: every column that the proof
/// compares.
void readByHand(benchmark::State& state) {
  Shop& shop = shopWith(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Bare rows(shop.native(),
              "select id,gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_fdmc,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,"
              "gl_kczje,gl_zje from jxc_goodslist order by id");
    double sum = 0;
    std::size_t letters = 0;
    while (rows.step()) {
      for (int column = 1; column <= 6; ++column)
        letters += rows.text(column).size();
      for (int column = 7; column <= 15; ++column)
        sum += rows.number(column);
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(letters);
  }
}

const bool registered = [] {
  for (const int rows : {10'000, 100'000, 1'000'000, 5'000'000}) {
    const std::string size = std::to_string(rows) + " ledger rows";
    const auto add = [rows](const std::string& name, void (*measure)(benchmark::State&)) {
      benchmark::RegisterBenchmark(name.c_str(), measure)
          ->Arg(rows)
          ->MeasureProcessCPUTime()
          ->Unit(benchmark::kMillisecond);
    };
    add("proof of " + size, proof);
    add("look at the file of " + size + ", statements", look);
    add("look at the file of " + size + ", by hand", lookByHand);
    add(size + " read by hand", readByHand);
  }
  return true;
}();

}  // namespace prove_bench
}  // namespace jxc
