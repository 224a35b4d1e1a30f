// Spreadsheets of many rows, written and read: what a list of goods has, ten columns of all kinds.
#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace jxc::sheet_bench {

Sheet goodsList(int rows) {
  Sheet sheet;
  sheet.columns = {{QStringLiteral("商品编号")},
                   {QStringLiteral("商品名称")},
                   {QStringLiteral("规格")},
                   {QStringLiteral("单位")},
                   {QStringLiteral("库存"), SheetKind::Quantity, 2},
                   {QStringLiteral("进价"), SheetKind::Money, 2, 0, QStringLiteral("￥")},
                   {QStringLiteral("售价"), SheetKind::Money, 2, 0, QStringLiteral("￥")},
                   {QStringLiteral("金额"), SheetKind::Money, 2, 0, QStringLiteral("￥")},
                   {QStringLiteral("日期"), SheetKind::Date},
                   {QStringLiteral("供货商")}};
  sheet.rows = {
      rows, [](int row, std::span<Value> cells) {
        cells[0] = QString::number(20000000 + row);
        cells[1] = QStringLiteral("镜片1.56 非球面 %1号").arg(row);
        cells[2] = QStringLiteral("-%1.00").arg(row % 12);
        cells[3] = QStringLiteral("副");
        cells[4] = row % 97;
        cells[5] = row * 0.25;
        cells[6] = row * 0.5;
        cells[7] = row % 97 * row * 0.25;
        cells[8] =
            QStringLiteral("2026-%1-%2").arg(row % 12 + 1, 2, 10, QChar('0')).arg(row % 28 + 1, 2, 10, QChar('0'));
        cells[9] = QStringLiteral("供货商%1").arg(row % 40);
      }};
  return sheet;
}

void write(benchmark::State& state, const char* ending) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("goods")) + QString::fromLatin1(ending);
  const Sheet sheet = goodsList(static_cast<int>(state.range(0)));
  for (auto step : state) {
    static_cast<void>(step);
    writeSheet(path, sheet);
  }
  state.counters["MB"] = static_cast<double>(QFileInfo(path).size()) / 1e6;
}

void read(benchmark::State& state, const char* ending) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("goods")) + QString::fromLatin1(ending);
  writeSheet(path, goodsList(static_cast<int>(state.range(0))));
  for (auto step : state) {
    static_cast<void>(step);
    benchmark::DoNotOptimize(openExcel(path)->rows().rowCount());
  }
}

BENCHMARK_CAPTURE(write, xlsx, ".xlsx")->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(write, xls, ".xls")->Arg(65000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(read, xlsx, ".xlsx")->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(read, xls, ".xls")->Arg(65000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace jxc::sheet_bench
