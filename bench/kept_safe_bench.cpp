// Backup, check and restore of a large account set, beside SQLite's own copy and check of the same file; what a backup
// costs two stations that post meanwhile, and how long the window stands still. How large the set is says JXC_BENCH_MB
// (64 when not said; 1000 for figures to keep).
#include "bare_shop.h"
#include "core/account_copy.h"
#include "core/screens/main_form.h"
#include "core/verified_copy.h"
#include "engine/sqlite/sqlite_database.h"
#include "large_set.h"
#include "maintenance/screens/backup_pane.h"
#include "ui/progress.h"
#include "windows.h"

#include <QFile>
#include <QFileInfo>

#include <benchmark/benchmark.h>
#include <chrono>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace jxc {
namespace kept_safe_bench {

using bench::largeSet;
using Clock = std::chrono::steady_clock;

double seconds(Clock::duration time) {
  return std::chrono::duration<double>(time).count();
}

void count(benchmark::State& state) {
  state.counters["MB"] = static_cast<double>(QFileInfo(largeSet().file()).size()) / 1e6;
}

void mustBe(int code, int due) {
  if (code != due) throw std::runtime_error(sqlite3_errstr(code));
}

/// Copies one file into another as SQLite's manual does it: all pages in one step, brought to the disk.
void bareCopy(const QString& from, const QString& to) {
  sqlite3 *source = nullptr, *target = nullptr;
  mustBe(sqlite3_open(from.toUtf8().constData(), &source), SQLITE_OK);
  mustBe(sqlite3_open(to.toUtf8().constData(), &target), SQLITE_OK);
  sqlite3_backup* const backup = sqlite3_backup_init(target, "main", source, "main");
  mustBe(sqlite3_backup_step(backup, -1), SQLITE_DONE);
  mustBe(sqlite3_backup_finish(backup), SQLITE_OK);
  sqlite3_close(target);
  sqlite3_close(source);
}

void bareCheck(const QString& file) {
  sqlite3* raw = nullptr;
  sqlite3_open(file.toUtf8().constData(), &raw);
  mustBe(sqlite3_exec(raw, "pragma integrity_check", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(raw);
}

// ---- backup, check

/// Each into a file that is not there yet.
template <class Copy>
void copies(benchmark::State& state, Copy copy) {
  const QString file = largeSet().beside("copy.DAT");
  for (auto _ : state) {
    copy(file);
    state.PauseTiming();
    QFile::remove(file);
    state.ResumeTiming();
  }
  count(state);
}

void backup(benchmark::State& state) {
  copies(state, [](const QString& file) { makeVerifiedCopy(accountDb(), file); });
}
void backupByHand(benchmark::State& state) {
  copies(state, [](const QString& file) {
    bareCopy(largeSet().file(), file);
    bareCheck(file);
  });
}

/// The pages of a backup until they are on the disk, without the check between: rows are counted in it besides.
void copying(benchmark::State& state) {
  constexpr int copied = 60, checked = 100;  // percent
  const QString file = largeSet().beside("copy.DAT");
  for (auto _ : state) {
    const auto begun = Clock::now();
    auto inCheck = begun, outOfCheck = begun;
    accountDb().backupTo(file, [&](int percent) {
      const auto now = Clock::now();
      if (percent <= copied) inCheck = now;
      if (percent < checked) outOfCheck = now;
      return true;
    });
    state.SetIterationTime(seconds(Clock::now() - begun - (outOfCheck - inCheck)));
    QFile::remove(file);
  }
  count(state);
}
void copyingByHand(benchmark::State& state) {
  copies(state, [](const QString& file) { bareCopy(largeSet().file(), file); });
}

void check(benchmark::State& state) {
  largeSet();
  for (auto _ : state)
    if (!accountDb().checkStorage().damage.isEmpty()) state.SkipWithError("damaged");
}
void checkByHand(benchmark::State& state) {
  largeSet();
  for (auto _ : state)
    bareCheck(largeSet().file());
}

// ---- restore

/// Into the set as it stands, which stays open; from a file that was copied from it.
void restore(benchmark::State& state) {
  const QString file = largeSet().beside("source.DAT");
  bareCopy(largeSet().file(), file);
  const auto source = openSqlite(file);
  for (auto _ : state)
    replaceAccountSet(*source, accountDb(), [](int) { return true; });
  count(state);
  QFile::remove(file);
}
void restoreByHand(benchmark::State& state) {
  const QString file = largeSet().beside("source.DAT");
  bareCopy(largeSet().file(), file);
  dataModule().closeAccountDb();
  for (auto _ : state)
    bareCopy(file, largeSet().file());
  dataModule().installAccountDb(openSqlite(largeSet().file()));
  count(state);
  QFile::remove(file);
}

// ---- beside others

double hundredth(const std::vector<double>& sorted) {
  return sorted.empty() ? 0 : sorted[sorted.size() * 99 / 100];
}

/// The slowest hundredth of the commands of two stations. Each time from the same state of the set and for the same
/// time: the more they have posted on one day, the longer the next command takes.
void posting(benchmark::State& state, bool isBackedUp) {
  constexpr std::chrono::seconds longEnough{15};
  const QString file = largeSet().beside("copy.DAT"), before = largeSet().beside("before.DAT");
  bareCopy(largeSet().file(), before);
  for (auto _ : state) {
    bench::TwoStations stations;
    int copies = 0;
    const auto end = Clock::now() + longEnough;
    while (Clock::now() < end) {
      if (isBackedUp) {
        makeVerifiedCopy(accountDb(), file, [end](int) { return Clock::now() < end; });
        ++copies;
      } else {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
      }
    }
    const std::vector<double> took = stations.end();
    QFile::remove(file);
    if (took.empty()) return state.SkipWithError("nobody posted");
    state.SetIterationTime(hundredth(took) / 1000);
    state.counters["commands"] = static_cast<double>(took.size());
    state.counters["median_ms"] = took[took.size() / 2];
    state.counters["longest_ms"] = took.back();
    state.counters["backups"] = copies;
  }
  dataModule().closeAccountDb();
  bareCopy(before, largeSet().file());
  dataModule().installAccountDb(openSqlite(largeSet().file()));
  QFile::remove(before);
  count(state);
}

/// How long the loop of the window was away at most.
class LoopWatch {
 public:
  LoopWatch() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { look(); });
    timer_.start(1);
  }
  void look() {
    constexpr std::chrono::milliseconds felt{50};
    const auto now = Clock::now(), last = std::exchange(last_, now);
    longest_ = std::max(longest_, now - last);
    felt_ += now - last > felt;
  }
  void tell(benchmark::State& state) {
    look();
    state.SetIterationTime(seconds(longest_));
    state.counters["over_50_ms"] = felt_;
  }

 private:
  QTimer timer_;
  Clock::time_point last_ = Clock::now();
  Clock::duration longest_{};
  int felt_ = 0;
};

/// A backup of the window's own, behind it, or waited for with a bar; alone, or while two stations post.
void window(benchmark::State& state, bool isWaitedFor, bool isAlone) {
  bench::needWindows();
  largeSet();
  bench::YesPrompt prompt;
  const QTemporaryDir kept;
  const BackupSettings settings{.folder = kept.path()};
  if (!saveBackupSettings(settings, prompt)) return state.SkipWithError("no settings");
  for (auto _ : state) {
    std::optional<bench::TwoStations> stations;
    if (!isAlone) stations.emplace();
    BackupPane pane(nullptr);
    pane.show();
    pane.refresh();
    LoopWatch watch;
    if (isWaitedFor) {
      ui::Progress progress(QStringLiteral("正在备份……"), &pane);
      backUpNow(settings, progress.report());
    } else {
      for (pane.begin(); pane.text().startsWith(QStringLiteral("正在备份"));)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    watch.tell(state);
    QFile::remove(backupState().file);
  }
  count(state);
}

const bool registered = [] {
  const auto add = [](const char* name, auto work) {
    return benchmark::RegisterBenchmark(name, work)->Unit(benchmark::kMillisecond)->Iterations(1);
  };
  add("backup, read again and summed, statements", backup)->UseRealTime();
  add("backup, read again and summed, by hand", backupByHand)->UseRealTime();
  add("pages of a backup, statements", copying)->UseManualTime();
  add("pages of a backup, by hand", copyingByHand)->UseRealTime();
  add("check of an account file, statements", check)->UseRealTime();
  add("check of an account file, by hand", checkByHand)->UseRealTime();
  add("restore, statements", restore)->UseRealTime();
  add("restore, by hand", restoreByHand)->UseRealTime();
  add("slowest hundredth of two stations, alone", [](auto& state) { posting(state, false); })->UseManualTime();
  add("slowest hundredth of two stations, beside a backup", [](auto& state) { posting(state, true); })->UseManualTime();
  for (const bool isAlone : {true, false})
    for (const bool isWaitedFor : {false, true})
      add((std::string("longest wait of the window, backup ") + (isWaitedFor ? "waited for" : "behind it") +
           (isAlone ? "" : ", two stations post"))
              .c_str(),
          [=](auto& state) { window(state, isWaitedFor, isAlone); })
          ->UseManualTime();
  return true;
}();

}  // namespace kept_safe_bench
}  // namespace jxc
