// Entry of trading documents on a catalogue of 100,000 goods: a lens product as a sheet of 41 by 17 powers, and the
// scanner.
#include "bare_shop.h"
#include "core/session.h"
#include "core/text.h"
#include "inventory/stocktaking.h"
#include "masterdata/lens_sheet.h"
#include "purchasing/receipt.h"
#include "sales/sale.h"
#include "stock/document.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace trading_bench {

using bench::Bare;
using bench::Shop;
using bench::YesPrompt;

constexpr int goodsCount = 100000;
constexpr int spheres = 41, cylinders = 17;
const QString kProduct = QStringLiteral("清晰1.56");

/// Frames with a barcode each, and lens products of 41 by 17 articles; all of them in stock.
class Catalogue {
 public:
  Catalogue() {
    sqlite3* db = shop_.native();
    Bare(db, "begin immediate").run();
    Bare goods(
        db,
        "insert into jxc_goods (g_sn,g_name,g_jm,g_sptm,dw_name,g_pjjj,g_scjj,g_jj,g_sj,g_lsj,g_kc,g_cgpl,g_xspl,g_jy,"
        "g_gdcbj,gc_sn,g_isjp,g_qc,g_qgd,g_sgd,gg_name,color_name) values "
        "(?,?,'JJ',?,'副',10,10,10,20,20,100,0,0,0,0,?,?,?,?,?,'','')");
    Bare stock(db, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',100,100,10,0)");
    for (int i = 0; i < goodsCount; ++i) {
      const int sphere = i % (spheres * cylinders) / cylinders, cylinder = i % cylinders;
      const int product = i / (spheres * cylinders);
      const bool lens = product < 40;
      const std::string name = product == 7 ? kProduct.toStdString() : "镜片" + std::to_string(product);
      goods << code(i) << (lens ? name + std::to_string(i) : "镜架" + std::to_string(i)) << barcode(i)
            << std::string(lens ? "1000" : "1001") << sqlite3_int64(lens) << name
            << (lens ? power(sphere - 30) : std::string()) << (lens ? power(-cylinder) : std::string());
      goods.run();
      (stock << code(i)).run();
    }
    Bare(db, "commit").run();
    Bare(db, "analyze").run();
  }
  static std::string code(int index) { return std::to_string(10000000 + index); }
  static std::string barcode(int index) { return std::to_string(6900000000000 + index); }
  static std::string power(int quarters) { return numberText(quarters * 0.25).toStdString(); }

 private:
  Shop shop_;
};

LinePlace place(const TradingRules& rules) {
  const TradingDraft draft = rules.fresh({});
  return {.number = draft.number, .date = draft.date, .partner = draft.partner, .warehouse = draft.warehouse};
}
LinePlace place(const RulesOver<DocumentDraft>& rules) {
  const DocumentDraft draft = rules.fresh({});
  return {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
}

void dropDraft(const DocumentRules& rules) {
  execSql(compose("delete from {}", {rules.family().lines}));
}

template <class Rules>
void readSheet(benchmark::State& state, const Rules& (*rules)()) {
  const Catalogue catalogue;
  const LinePlace here = place(rules());
  std::size_t cells = 0;
  for (auto _ : state)
    cells = readLensSheet(kProduct, rules().lines(), here).cells.size();
  state.counters["cells"] = static_cast<double>(cells);
}
BENCHMARK_CAPTURE(readSheet, sale, sale::rules)
    ->Name("lens sheet 41x17, read for a sale")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readSheet, count, stocktaking::rules)
    ->Name("lens sheet 41x17, read for a count")
    ->Unit(benchmark::kMillisecond);

template <class Rules>
void takeSheet(benchmark::State& state, const Rules& (*rules)()) {
  const Catalogue catalogue;
  const LinePlace here = place(rules());
  YesPrompt prompt;
  int lines = 0;
  for (auto _ : state) {
    state.PauseTiming();
    dropDraft(rules());
    std::vector<LensSheet> sheets{readLensSheet(kProduct, rules().lines(), here)};
    for (LensSheet::Cell& cell : sheets.front().cells)
      cell.quantity = 2;
    state.ResumeTiming();
    lines = takeLensSheets(sheets, rules().lines(), here, Lines::Draft, prompt)->lines;
  }
  state.counters["lines"] = lines;
}
BENCHMARK_CAPTURE(takeSheet, receipt, receipt::rules)
    ->Name("lens sheet 41x17, all cells become lines of a receipt")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(takeSheet, sale, sale::rules)
    ->Name("lens sheet 41x17, all cells become lines of a sale")
    ->Unit(benchmark::kMillisecond);

/// All cells of the sheet, each counted, onto a draft that is saved.
void countSheet(benchmark::State& state) {
  const Catalogue catalogue;
  const auto& rules = stocktaking::rules();
  YesPrompt prompt;
  for (auto _ : state) {
    state.PauseTiming();
    execSql("delete from jxc_kcpd");
    dropDraft(rules);
    const DocumentDraft draft = rules.fresh({});
    const LinePlace here{.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
    std::vector<LensSheet> sheets{readLensSheet(kProduct, rules.lines(), here)};
    for (LensSheet::Cell& cell : sheets.front().cells)
      cell.quantity = 2;
    state.ResumeTiming();
    state.counters["lines"] = takeLensSheets(sheets, rules.lines(), here, Lines::Draft, prompt)->lines;
    if (!rules.save(draft, prompt)) return state.SkipWithError("not saved");
  }
}
BENCHMARK(countSheet)->Name("lens sheet 41x17, all cells counted and saved")->Unit(benchmark::kMillisecond);

/// One scan with all that the screen asks for behind it: the lines anew, and the total.
void scan(benchmark::State& state) {
  const Catalogue catalogue;
  const TradingRules& rules = sale::rules();
  LinePlace here = place(rules);
  YesPrompt prompt;
  int next = goodsCount - 1;
  for (int i = 0; i < state.range(0); ++i)
    rules.lines().enterBarcode(here, QString::fromStdString(Catalogue::barcode(next--)), false, prompt);
  for (auto _ : state) {
    const ScanResult scanned =
        rules.lines().enterBarcode(here, QString::fromStdString(Catalogue::barcode(next--)), false, prompt);
    benchmark::DoNotOptimize(openSelect(rules.draftLines(scanned.number)));
    benchmark::DoNotOptimize(rules.payable(scanned.number));
    state.PauseTiming();
    execSql("delete from jxc_lsxssp where id=?", scanned.id);
    state.ResumeTiming();
  }
}
BENCHMARK(scan)->Name("scan onto a sale of so many lines")->Arg(1)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace trading_bench
}  // namespace jxc
