#include "large_set.h"

#include "core/clock.h"
#include "engine/presence.h"
#include "filled_shop.h"
#include "stock/document.h"

#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace jxc::bench {
namespace large_set_detail {

constexpr qint64 usualMegabytes = 64;
constexpr int ledgerRows = 10'000;
constexpr int warmUps = 20;  // commands of a station before the ones that count: statements are prepared then
constexpr int linesOfReceipt = 5;

qint64 wantedBytes() {
  const char* const words = std::getenv("JXC_BENCH_MB");
  return (words != nullptr ? std::atoll(words) : usualMegabytes) * 1'000'000;
}

std::vector<double> post(const QString& file, int station, const std::atomic<bool>& isEnded) {
  using Clock = std::chrono::steady_clock;
  dataModule().installAccountDb(openSqlite(file));
  session().a_name = QStringLiteral("op%1").arg(station);
  YesPrompt prompt;
  std::vector<double> took;
  for (int seed = station * 1000; !isEnded; ++seed) {
    auto begun = Clock::now();
    const auto lap = [&] {
      const auto now = Clock::now();
      took.push_back(std::chrono::duration<double, std::milli>(now - std::exchange(begun, now)).count());
    };
    const QString number = waitingDocument(false, clock::today(), linesOfReceipt, seed);
    lap();
    if (checkDj(families::purchaseReceipt, number, prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
    lap();
  }
  took.erase(took.begin(), took.begin() + std::min<std::ptrdiff_t>(warmUps, std::ssize(took)));
  return took;
}

void writeAll(int end, const std::vector<double>& all) {
  const char* at = reinterpret_cast<const char*>(all.data());
  for (std::size_t left = all.size() * sizeof(double); left > 0;) {
    const ssize_t written = ::write(end, at, left);
    if (written <= 0) return;
    at += written;
    left -= static_cast<std::size_t>(written);
  }
}

}  // namespace large_set_detail

LargeSet::LargeSet() {
  Shop& shop = shopWith(large_set_detail::ledgerRows);
  file_ = placeOf(accountDb());
  const auto run = [&](const char* sql) { Bare(shop.native(), sql).takeAll(); };
  run("create temp table others as select * from jxc_goodslist");
  run("update others set id=null,g_sn='g'||g_sn");
  while (QFileInfo(file_).size() < large_set_detail::wantedBytes()) {
    run("insert into jxc_goodslist select * from others");
    run("pragma wal_checkpoint(truncate)");
  }
  run("drop table others");
}

LargeSet& largeSet() {
  static LargeSet one;
  return one;
}

struct TwoStations::Shared {
  std::atomic<bool> isEnded = false;
};

TwoStations::TwoStations() {
  const QString& file = largeSet().file();
  void* const memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  shared_ = new (memory) Shared;
  dataModule().closeAccountDb();  // no connection goes through a fork
  for (int station = 1; station <= 2; ++station) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t process = fork();
    if (process == 0) {
      try {
        large_set_detail::writeAll(ends[1], large_set_detail::post(file, station, shared_->isEnded));
      } catch (const std::exception& failure) {
        fprintf(stderr, "station %d: %s\n", station, failure.what());
      }
      dataModule().closeAccountDb();
      _exit(0);
    }
    ::close(ends[1]);
    ends_.push_back(ends[0]);
    processes_.push_back(process);
  }
  dataModule().installAccountDb(openSqlite(file));
}

TwoStations::~TwoStations() {
  end();
  munmap(shared_, sizeof(Shared));
}

std::vector<double> TwoStations::end() {
  shared_->isEnded = true;
  std::vector<double> all;
  for (const int end : std::exchange(ends_, {})) {
    double each = 0;
    while (::read(end, &each, sizeof each) == sizeof each)
      all.push_back(each);
    ::close(end);
  }
  for (const int process : std::exchange(processes_, {}))
    waitpid(process, nullptr, 0);
  std::ranges::sort(all);
  return all;
}

}  // namespace jxc::bench
