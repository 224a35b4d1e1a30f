// What a statement costs that has not been seen before: cutting, parsing, binding, spelling.
#include "jet/plan.h"

#include <benchmark/benchmark.h>
#include <map>
#include <string>

namespace jxc::translate_bench {

class BenchCatalogue : public jet::Catalogue {
 public:
  BenchCatalogue() {
    // As wide as the goods table and the ledger are.
    add("jxc_goods", "g_", 68);
    add("jxc_goodslist", "gl_", 42);
    add("jxc_ckxx", "ck_", 12);
  }
  const jet::Table* table(std::string_view name) const override {
    const auto found = tables_.find(std::string(name));
    return found == tables_.end() ? nullptr : &found->second;
  }

 private:
  void add(const char* name, const std::string& prefix, int columns) {
    jet::Table& table = tables_[name];
    table.name = name;
    table.columns.push_back(jet::columnFromDeclaration("id", "Counter"));
    for (int i = 0; i < columns; ++i) {
      table.columns.push_back(
          jet::columnFromDeclaration(prefix + "c" + std::to_string(i), i % 2 == 0 ? "numeric(28,6)" : "nvarchar(64)"));
    }
    table.columns.push_back(jet::columnFromDeclaration(prefix + "sn", "varchar(32)"));
  }

  std::map<std::string, jet::Table> tables_;
};

void translateNewStatement(benchmark::State& state, const std::string& text) {
  const BenchCatalogue catalogue;
  for (auto _ : state) {
    benchmark::DoNotOptimize(jet::translate(text, catalogue, jet::Engine::Sqlite));
  }
  state.counters["characters"] = static_cast<double>(text.size());
}

const std::string kReport =
    "select a.g_sn,max(g_c1) as gname,sum(gl_c2) as sl,sum(gl_c4) as zje,sum(gl_c6) as lr,iif(sum(gl_c4)<>0,"
    "round(sum(gl_c6)*100/sum(gl_c4)+0.000000001,2),0) as lrl from jxc_goods a,jxc_goodslist b,jxc_ckxx c where "
    "a.g_sn=b.gl_c1 and b.gl_c3=c.ck_sn and (gl_c5='xs' or gl_c5='xt') and gl_c7>=? and gl_c7<=? group by a.g_sn order "
    "by sl";
const std::string kWideList =
    "select a.*,b.ck_c1 from jxc_goods a,jxc_ckxx b where a.g_c3=b.ck_sn and a.g_c2>0 order by a.id";
const std::string kUpdate = "update jxc_goods set g_c2=g_c2+(?),g_c4=? where g_sn=? and g_c1<>''";

BENCHMARK_CAPTURE(translateNewStatement, report, kReport)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(translateNewStatement, wide_list, kWideList)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(translateNewStatement, update, kUpdate)->Unit(benchmark::kMicrosecond);

}  // namespace jxc::translate_bench
