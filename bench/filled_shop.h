// 对照基准: a shop with two years of business behind it, filled by hand in seconds, in the sizes asked for.
#pragma once

#include "bare_shop.h"
#include "stock/document_family.h"

#include <benchmark/benchmark.h>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace jxc::bench {

inline constexpr int goodsCount = 1000;
inline constexpr int linesOfDocument = 50;

std::string goodsCode(int index);

/// The shop with so many rows of the stock ledger; the last one made stays for the measurements that follow.
Shop& shopWith(int rows);
/// A shop of one goods, "1000000", with so many lines of what `fill` writes; the last one made stays as well.
using Fill = void (*)(sqlite3* db, int lines);
Shop& shopOfOneGoods(Fill fill, int lines);

/// A waiting receipt or sale of this date; its goods differ from document to document.
QString waitingDocument(bool sale, const QString& date, int lines, int seed);

/// Sizes of the stock ledger to measure with: "10000,1000000" from JXC_BENCH_ROWS, by default these two.
const std::vector<int>& ledgerSizes();

/// "receipt of 50 lines [10000 rows], by hand": the name under which bench/run finds pairs and sizes.
std::string named(const char* what, int rows, bool byHand);

/// What may grow with the ledger behind, whatever else the computer does meanwhile: steps of SQLite's machine over all
/// prepared statements, pages that were not in the cache, pages written.
class WorkSoFar {
 public:
  WorkSoFar();
  /// As counters: what was done since, for each iteration.
  void tellEach(benchmark::State& state) const;

 private:
  double steps_, missed_, written_;
};

/// Audits of one kind of document, measured one after the other.
struct Audits {
  const DocumentFamily& family;
  int warmUps;                                            // that many before, unmeasured
  std::function<QString()> make;                          // a waiting document; its number
  std::function<void(const std::string& number)> byHand;  // or null: the program audits them
};
/// With the work of each.
void measure(benchmark::State& state, const Audits& audits);

/// A piece of work as the program does it and by hand.
struct Pair {
  const char* name;
  void (*statements)(benchmark::State& state, int rows);
  void (*byHand)(benchmark::State& state, int rows);
};
/// Measures each pair, with every size of the ledger up to the most rows.
bool registerPairs(std::span<const Pair> pairs, int most = std::numeric_limits<int>::max());

}  // namespace jxc::bench
