// What a first start and a new name cost: all tables with their seeds, and the search letters of Chinese text.
#include "core/pinyin.h"
#include "core/schema/schema.h"
#include "engine/database.h"

#include <benchmark/benchmark.h>

namespace jxc::start_bench {

void createTables(benchmark::State& state) {
  for (auto _ : state) {
    const auto database = openSqlite(QStringLiteral(":memory:"));
    createAllTables(*database);
  }
}
BENCHMARK(createTables)->Name("all tables with seeds, in memory")->Unit(benchmark::kMillisecond);

void searchLetters(benchmark::State& state) {
  QString text;
  for (char16_t character = 0x4e00; character <= 0x9fa5; ++character)
    text += QChar(character);
  for (auto _ : state)
    benchmark::DoNotOptimize(makeJm(text));
  state.SetItemsProcessed(state.iterations() * text.size());
}
BENCHMARK(searchLetters)->Name("search letters of 20,902 characters")->Unit(benchmark::kMicrosecond);

}  // namespace jxc::start_bench
