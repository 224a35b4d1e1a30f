// The goods catalogue with 100,000 goods: first rows, the whole list, a key typed, a class chosen, a lens range added,
// prices computed for all, ten thousand goods deleted.
#include "bare_shop.h"
#include "engine/first_rows.h"
#include "masterdata/goods.h"
#include "masterdata/goods_change.h"
#include "masterdata/goods_classes.h"
#include "masterdata/goods_lenses.h"
#include "masterdata/goods_prices.h"
#include "masterdata/goods_search.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace catalogue_bench {

constexpr int kProducts = 60;  // of 81 × 21 powers: 102,060 lenses
constexpr PowerRange kSpheres{-12, 8, 0.25};
constexpr PowerRange kCylinders{-5, 0, 0.25};

GoodsDraft lens(int product) {
  GoodsDraft draft;
  draft.number = QStringLiteral("x");
  draft.name = QStringLiteral("晶朗1.%1非球面加硬加膜镜片第%2款").arg(50 + product % 25).arg(product);
  draft.unit = QStringLiteral("片");
  draft.purchasePrice = 28 + product;
  draft.salePrice = 120 + product;
  return draft;
}

/// An account set on disk with lens ranges of many products in twelve classes.
class Catalogue {
 public:
  Catalogue() {
    bench::YesPrompt prompt;
    for (int i = 0; i < 12; ++i)
      classes_.push_back(*addGoodsClass(2, QStringLiteral("品牌%1").arg(i), prompt));
    for (int i = 0; i < kProducts; ++i) {
      GoodsDraft draft = lens(i);
      draft.classNumber = classes_[static_cast<std::size_t>(i % 12)].number;
      addLensRange(draft, kSpheres, kCylinders, prompt);
    }
  }
  const GoodsClass& goodsClass(int i) const { return classes_[static_cast<std::size_t>(i)]; }

 private:
  bench::Shop shop_;
  std::vector<GoodsClass> classes_;
};

Catalogue& catalogue() {
  static Catalogue one;
  return one;
}

Sql list(bool screenful) {
  Sql statement = goodsListStatement({});
  return screenful ? Sql(firstRows(statement.text(), 80).value()) : statement;  // as a list asks for it
}

void firstScreenful(benchmark::State& state) {
  catalogue();
  const Sql statement = list(true);
  for (auto _ : state)
    benchmark::DoNotOptimize(openSelect(statement).rowCount());
}
BENCHMARK(firstScreenful)->Name("catalogue of 100,000 goods: first screenful")->Unit(benchmark::kMillisecond);

void wholeList(benchmark::State& state) {
  catalogue();
  const Sql statement = list(false);
  for (auto _ : state) {
    const RowSet rows = openSelect(statement);
    state.counters["rows"] = rows.rowCount();
    state.counters["columns"] = rows.columnCount();
    state.counters["MB"] = static_cast<double>(rows.memory()) / 1e6;
  }
}
BENCHMARK(wholeList)->Name("catalogue of 100,000 goods: whole list")->Unit(benchmark::kMillisecond);

void makingSearchable(benchmark::State& state) {
  catalogue();
  const Sql statement = list(false);
  const RowSet rows = openSelect(statement);
  for (auto _ : state)
    benchmark::DoNotOptimize(GoodsIndex(rows));
}
BENCHMARK(makingSearchable)->Name("catalogue of 100,000 goods: made searchable")->Unit(benchmark::kMillisecond);

// One key typed: the filter over all goods, in memory and as the query does it.
void keyTyped(benchmark::State& state) {
  static const QString typed[] = {QStringLiteral("1"), QStringLiteral("1.6"), QStringLiteral("1.67 -2.25 -0.75"),
                                  QStringLiteral("JL1.6"), QStringLiteral("无此商品")};
  catalogue();
  const Sql statement = list(false);
  const GoodsIndex index(openSelect(statement));
  const QString& key = typed[state.range(0)];
  state.SetLabel(key.toStdString());
  for (auto _ : state)
    state.counters["rows"] = static_cast<double>(index.find(key).size());
}
BENCHMARK(keyTyped)
    ->Name("catalogue of 100,000 goods: a key typed, in memory")
    ->DenseRange(0, 4)
    ->Unit(benchmark::kMillisecond);

void keyQueried(benchmark::State& state) {
  catalogue();
  for (auto _ : state)
    state.counters["rows"] = selectGoods({.key = QStringLiteral("1.67 -2.25 -0.75")}).rowCount();
}
BENCHMARK(keyQueried)->Name("catalogue of 100,000 goods: a key, statements")->Unit(benchmark::kMillisecond);

// The same question to SQLite, without a row set behind it.
void keyBare(benchmark::State& state) {
  catalogue();
  std::string text = "select count(*) from jxc_goods a where a.g_jy=0";
  for (const char* word : {"1.67", "-2.25", "-0.75"}) {
    std::string any;
    for (const char* column : {"g_sn", "g_name", "g_jm", "g_sptm", "gg_name", "color_name"})
      any += (any.empty() ? "" : " or ") + std::string("a.") + column + " like '%" + word + "%'";
    text += " and (" + any + ")";
  }
  bench::Bare statement(sqlite::asSqlite(accountDb()).native(), text.c_str());
  for (auto _ : state) {
    if (statement.step()) state.counters["rows"] = statement.number(0);
    statement.reset();
  }
}
BENCHMARK(keyBare)->Name("catalogue of 100,000 goods: a key, by hand")->Unit(benchmark::kMillisecond);

void classChosen(benchmark::State& state) {
  const QString number = catalogue().goodsClass(5).number;
  const Sql statement = list(false);
  const GoodsIndex index(openSelect(statement));
  for (auto _ : state)
    state.counters["rows"] = static_cast<double>(index.find({}, number).size());
}
BENCHMARK(classChosen)->Name("catalogue of 100,000 goods: a class chosen, in memory")->Unit(benchmark::kMillisecond);

// 41 × 17 powers with prices; taken back, so that every round begins alike.
void lensRange(benchmark::State& state) {
  bench::YesPrompt prompt;
  GoodsDraft draft = lens(kProducts);  // one that is not there yet
  draft.classNumber = catalogue().goodsClass(7).number;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    state.counters["goods"] = addLensRange(draft, {-10, 0, 0.25}, {-4, 0, 0.25}, prompt).value_or(0);
  }
}
BENCHMARK(lensRange)->Name("a lens range of 697 articles added")->Unit(benchmark::kMillisecond);

// A wholesale price of all goods, or of one class, computed from another; taken back likewise.
void bulkPrice(benchmark::State& state) {
  const bool all = state.range(0) == 1;
  state.SetLabel(all ? "all goods" : "one class");
  const QString number = catalogue().goodsClass(5).number;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    state.counters["goods"] = static_cast<double>(
        setBulkPrice({.target = bulkPriceTargets()[0], .source = bulkPriceSources()[0], .factor = 0.8},
                     {.classNumber = all ? std::nullopt : std::optional(number)}));
  }
}
BENCHMARK(bulkPrice)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

GoodsIds someIds(int count) {
  GoodsIds ids;
  for (const Row row : openSelect("select top 10000 id from jxc_goods where g_isjp<>0 order by g_sn")) {
    if (static_cast<int>(ids.size()) < count) ids.push_back(row.integer("id"));
  }
  return ids;
}

void deleteMarked(benchmark::State& state) {
  catalogue();
  const GoodsIds ids = someIds(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Transaction transaction(accountDb());
    state.counters["goods"] = deleteGoodsBatch(ids, {})->deleted;
  }
}
BENCHMARK(deleteMarked)->Arg(1)->Arg(10000)->Unit(benchmark::kMillisecond);

void changeClassOfMarked(benchmark::State& state) {
  bench::YesPrompt prompt;
  const QString number = catalogue().goodsClass(5).number;
  const GoodsIds ids = someIds(10000);
  for (auto _ : state) {
    Transaction transaction(accountDb());
    changeGoodsClass(ids, number, prompt, {});
  }
}
BENCHMARK(changeClassOfMarked)->Unit(benchmark::kMillisecond);

}  // namespace catalogue_bench
}  // namespace jxc
