// A new account set, a set that is cleared, and the branch's file of 100,000 goods.
#include "bare_shop.h"
#include "core/clock.h"
#include "core/program_directory.h"
#include "engine/sheet_export.h"
#include "maintenance/account_sets.h"
#include "maintenance/branch.h"
#include "maintenance/reset.h"
#include "platform/sheet/row_export.h"
#include "year_shop.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <utility>

namespace jxc {
namespace sets_bench {

using bench::Bare;
using bench::Shop;

constexpr int saleLines = 50'000;

/// Says yes, and hears without a word.
class QuietPrompt : public bench::YesPrompt {
 public:
  void notice(const QString&) override {}
};

template <int goodsCount>
void fillGoods(Shop& made) {
  sqlite3* const db = made.native();
  Bare(db, "begin immediate").run();
  Bare goods(
      db,
      "insert into jxc_goods (g_sn,g_name,g_jm,g_sptm,dw_name,gg_name,color_name,g_qc,g_bz,g_qgd,g_sgd,g_jj,g_sj,"
      "g_pjjj,g_lsj,g_sj1,g_sj2,g_sj3,g_sj4,g_sj5,g_kc,g_jy,g_gdcbj,gc_sn,ghs_sn) values "
      "(?1,'镜片1.56 非球面','JP','69'||?1,'片','φ70','绿膜','镜片1.56 非球面 绿膜','','-3.00','-0.50',35.5,99,36.25,"
      "99,95,90,85,80,75,12,0,0,'1001','100001')");
  Bare stock(db, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',12,12,36.25,0)");
  for (int i = 0; i < goodsCount; ++i) {
    const std::string sn = std::to_string(10'000'000 + i);
    (goods << sn).run();
    (stock << sn).run();
  }
  const std::string day = clock::today().toStdString();
  Bare head(db, "insert into jxc_lsxsd (gl_djh,ls_xsrq) values (?,?)");
  Bare line(db, "insert into jxc_lsxssp (gl_djh,ls_dj,ls_sl,a_name,ls_zhje) values (?,99,2,'admin',198)");
  for (int i = 0; i < saleLines; ++i) {
    const std::string number = "XS" + std::to_string(100'000 + i / 5);
    if (i % 5 == 0) (head << number << day + " 12:00:00").run();
    (line << number).run();
  }
  Bare(db, "commit").run();
}

/// From the command to the file in its place; how far the memory rises on the way, and how long the window hears
/// nothing at most.
template <int goodsCount>
void exportShop(benchmark::State& state) {
  bench::filledShop<fillGoods<goodsCount>>();
  setSheetExporter(sheetFiles());
  const QTemporaryDir folder;
  QuietPrompt prompt;
  const QString day = clock::today();
  for (auto _ : state) {
    const double before = bench::residentMegabytes();
    double most = before;
    using Clock = std::chrono::steady_clock;
    auto last = Clock::now();
    Clock::duration silence{};
    const auto file = exportBranch(
        {.days = {day, day}, .folder = folder.path()},
        [&](int) {
          const auto now = Clock::now();
          silence = std::max(silence, now - std::exchange(last, now));
          most = std::max(most, bench::residentMegabytes());
          return true;
        },
        prompt);
    if (!file) return state.SkipWithError("no file");
    state.PauseTiming();
    state.counters["MB"] = most - before;
    state.counters["silence_ms"] = std::chrono::duration<double, std::milli>(silence).count();
    state.counters["file_MB"] = static_cast<double>(QFileInfo(*file).size()) / 1e6;
    QFile::remove(*file);
    state.ResumeTiming();
  }
}

void newSet(benchmark::State& state) {
  const QTemporaryDir home;
  const QString before = programDirectory();
  setProgramDirectory(home.path());
  {
    QuietPrompt prompt;
    AccountSets sets;
    for (auto _ : state)
      if (!sets.add({.name = QStringLiteral("二店")}, prompt)) return state.SkipWithError("no set");
  }
  setProgramDirectory(before);
}

/// From the answer to its last question to its end; the backup that comes first stands among the backups.
void clear(benchmark::State& state, Clearing what, int rows) {
  using Clock = std::chrono::steady_clock;
  struct Asked : QuietPrompt {
    bool ask(const QString&) override { return answered = Clock::now(), true; }
    Clock::time_point answered;
  };
  const QTemporaryDir home;
  const QString before = programDirectory();
  for (auto _ : state) {
    bench::yearWith(rows);
    setProgramDirectory(home.path());
    Asked prompt;
    if (clearData(what, {}, BackupFirst::Always, {}, prompt) != Cleared::Done)
      return state.SkipWithError("not cleared");
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - prompt.answered).count());
    setProgramDirectory(before);
    dataModule().closeAccountDb();  // the next one needs a shop with business behind it
  }
}

const bool registered = [] {
  // The larger of them may need more time, not more memory.
  for (const auto& [name, work] :
       {std::pair("100,000", &exportShop<100'000>), std::pair("300,000", &exportShop<300'000>)})
    benchmark::RegisterBenchmark((std::string("branch export of ") + name + " goods, statements").c_str(), work)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
  benchmark::RegisterBenchmark("new account set, statements", newSet)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(5);
  for (const auto& [name, what] : {std::pair("business", Clearing::Business), std::pair("everything", Clearing::All)})
    for (const int rows : {10'000, 1'000'000})
      benchmark::RegisterBenchmark(
          (std::string("clearing of ") + name + " [" + std::to_string(rows) + " rows], statements").c_str(),
          [what = what, rows](benchmark::State& state) { clear(state, what, rows); })
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond)
          ->Iterations(1);
  return true;
}();

}  // namespace sets_bench
}  // namespace jxc
