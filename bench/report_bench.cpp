// Paper: a sale of many lines laid out, painted and written. Lines grow, sums of page, group and report are in it.
#include "platform/report/report.h"
#include "windows.h"

#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <string>

namespace jxc::report {
namespace report_bench {

Template saleTemplate() {
  Template t;
  t.groups = {{.by = QStringLiteral("class")}};
  addBand(t, BandKind::PageHeader, 8).items.push_back(textItem(0, 0, 190, 8, QStringLiteral("销售单 [khName]")));
  addBand(t, BandKind::GroupHeader, 7).items.push_back(textItem(0, 0, 190, 7, QStringLiteral("[class]")));
  Band& row = addBand(t, BandKind::MasterData, 7);
  double x = 0;
  const auto cell = [&](double width, const char16_t* content, const char16_t* format = u"") {
    Item item = textItem(x, 0, width, 7, QString::fromUtf16(content));
    item.frame = side::all;
    item.followHeight = true;
    item.format = QString::fromUtf16(format);
    item.grow = width > 50;
    row.items.push_back(item);
    x += width;
  };
  cell(12, u"[Line]");
  cell(70, u"[g_name]");
  cell(14, u"[dw_name]");
  cell(24, u"[ls_sl]");
  cell(30, u"[ls_dj]", u"#,##0.00");
  cell(40, u"[ls_sl*ls_dj]", u"#,##0.00");
  addBand(t, BandKind::GroupFooter, 7)
      .items.push_back(textItem(0, 0, 190, 7, QStringLiteral("小计 [Sum(ls_sl*ls_dj)]")));
  addBand(t, BandKind::Summary, 7).items.push_back(textItem(0, 0, 190, 7, QStringLiteral("合计 [Sum(ls_sl*ls_dj)]")));
  addBand(t, BandKind::PageFooter, 7)
      .items.push_back(textItem(0, 0, 190, 7, QStringLiteral("第[Page]页 共[Pages]页 本页[Sum(ls_sl)]")));
  return t;
}

Report sale(int lines) {
  bench::needWindows();
  RowSet rows({"g_name", "dw_name", "ls_sl", "ls_dj", "class"});
  for (int i = 0; i < lines; ++i) {
    rows.addText(i % 5 == 0 ? "儿童防蓝光眼镜（含盒、布）送螺丝刀与备用鼻托一副，两年内免费调整 " + std::to_string(i)
                            : "金属全框镜架 " + std::to_string(i));
    rows.addText("副");
    rows.addInteger(1 + i % 4);
    rows.addReal(99.5 + i % 90);
    rows.addText("类别" + std::to_string(i / 100));
  }
  Report report(saleTemplate());
  report.setText(u"khName", u"张三");
  report.setRows(std::move(rows));
  return report;
}

void layOut(benchmark::State& state) {
  const Report report = sale(static_cast<int>(state.range(0)));
  Pages pages;
  for (auto _ : state)
    pages = report.prepare();
  state.counters["pages"] = pages.count();
  state.counters["kilobytes"] = static_cast<double>(pages.memory()) / 1024;
}

void writePdf(benchmark::State& state) {
  const Pages pages = sale(static_cast<int>(state.range(0))).prepare();
  const QTemporaryDir folder;
  for (auto _ : state)
    pages.writePdf(folder.filePath(QStringLiteral("sale.pdf")));
}

void paintPage(benchmark::State& state) {
  const Pages pages = sale(100).prepare();
  for (auto _ : state)
    benchmark::DoNotOptimize(pages.image(0, 96));
}

BENCHMARK(layOut)->Name("report/layout")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(writePdf)->Name("report/pdf")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(paintPage)->Name("report/paint a page")->Unit(benchmark::kMillisecond);

}  // namespace report_bench
}  // namespace jxc::report
