// Backup, check and restore of a large account set, beside SQLite's own copy and check of the same file. How large says
// JXC_BENCH_MB (64 when not said; 1000 for figures to keep).
#include "bare_shop.h"
#include "core/account_copy.h"
#include "core/verified_copy.h"
#include "engine/presence.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <sqlite3.h>

namespace jxc {
namespace kept_safe_bench {

constexpr qint64 kUsualMegabytes = 64;

qint64 wantedBytes() {
  const char* const words = std::getenv("JXC_BENCH_MB");
  return (words != nullptr ? std::atoll(words) : kUsualMegabytes) * 1'000'000;
}

/// An account set whose ledger has been doubled until the file is large enough.
class LargeSet {
 public:
  LargeSet() {
    Database& set = accountDb();
    for (int i = 0; i < 1000; ++i)
      insertRow("jxc_goodslist", {{"gl_flag", "XS"},
                                  {"gl_djh", QStringLiteral("XS2021050300%1").arg(i)},
                                  {"gl_kdrq", "2021-05-03"},
                                  {"g_sn", QStringLiteral("g%1").arg(i)},
                                  {"g_name", "晶朗1.60非球面加硬加膜镜片"},
                                  {"gl_sl", 2},
                                  {"gl_dj", 128.5}});
    while (QFileInfo(file()).size() < wantedBytes()) {
      set.execute(
          "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_sl,gl_dj) select "
          "gl_flag,gl_djh,gl_kdrq,g_sn,"
          "g_name,gl_sl,gl_dj from jxc_goodslist");
      bare("pragma wal_checkpoint(truncate)");
    }
  }
  QString file() const { return placeOf(accountDb()); }
  QString beside(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  void bare(const char* sql) const {
    sqlite3* raw = nullptr;
    sqlite3_open(file().toUtf8().constData(), &raw);
    sqlite3_exec(raw, sql, nullptr, nullptr, nullptr);
    sqlite3_close(raw);
  }

 private:
  bench::Shop shop_;
  QTemporaryDir folder_;
};

LargeSet& large() {
  static LargeSet one;
  return one;
}

void count(benchmark::State& state) {
  state.counters["MB"] = static_cast<double>(QFileInfo(large().file()).size()) / 1e6;
}

/// Copies one file into another as SQLite's manual does it: all pages in one step, brought to the disk.
void bareCopy(const QString& from, const QString& to) {
  sqlite3 *source = nullptr, *target = nullptr;
  sqlite3_open(from.toUtf8().constData(), &source);
  sqlite3_open(to.toUtf8().constData(), &target);
  sqlite3_backup* const backup = sqlite3_backup_init(target, "main", source, "main");
  sqlite3_backup_step(backup, -1);
  sqlite3_backup_finish(backup);
  sqlite3_close(target);
  sqlite3_close(source);
}

void bareCheck(const QString& file) {
  sqlite3* raw = nullptr;
  sqlite3_open(file.toUtf8().constData(), &raw);
  sqlite3_exec(raw, "pragma integrity_check", nullptr, nullptr, nullptr);
  sqlite3_close(raw);
}

void backup(benchmark::State& state) {
  large();
  for (auto _ : state)
    makeVerifiedCopy(accountDb(), large().beside("copy.DAT"));
  count(state);
}
BENCHMARK(backup)->Name("backup, read again and summed, statements")->Unit(benchmark::kMillisecond)->UseRealTime();

void backupByHand(benchmark::State& state) {
  large();
  for (auto _ : state) {
    bareCopy(large().file(), large().beside("bare.DAT"));
    bareCheck(large().beside("bare.DAT"));
  }
  count(state);
}
BENCHMARK(backupByHand)->Name("backup, read again and summed, by hand")->Unit(benchmark::kMillisecond)->UseRealTime();

void check(benchmark::State& state) {
  large();
  for (auto _ : state)
    benchmark::DoNotOptimize(accountDb().checkStorage().damage.size());
}
BENCHMARK(check)->Name("check of an account file, statements")->Unit(benchmark::kMillisecond)->UseRealTime();

void checkByHand(benchmark::State& state) {
  large();
  for (auto _ : state)
    bareCheck(large().file());
}
BENCHMARK(checkByHand)->Name("check of an account file, by hand")->Unit(benchmark::kMillisecond)->UseRealTime();

void restore(benchmark::State& state) {
  bareCopy(large().file(), large().beside("source.DAT"));
  const auto source = openSqlite(large().beside("source.DAT"));
  for (auto _ : state)
    replaceAccountSet(*source, accountDb());
  count(state);
}
BENCHMARK(restore)->Name("restore, statements")->Unit(benchmark::kMillisecond)->UseRealTime();

void restoreByHand(benchmark::State& state) {
  large();
  for (auto _ : state)
    bareCopy(large().file(), large().beside("bare.DAT"));
}
BENCHMARK(restoreByHand)->Name("restore, by hand")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace kept_safe_bench
}  // namespace jxc
