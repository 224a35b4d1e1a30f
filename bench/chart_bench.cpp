// Charts: laid out and painted as a window shows them, with a day of the year each, and with a long list.
#include "ui/chart_picture.h"
#include "windows.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cmath>

namespace jxc::ui {
namespace chart_bench {

ChartData days(int count, bool compared = false) {
  ChartData data{
      .caption = QStringLiteral("销售金额"), .kind = ColumnKind::Money, .values = {}, .label = {}, .nothing = {}};
  for (int i = 0; i < count; ++i)
    data.values.push_back(i % 29 == 0 ? -350.5 : 4000 + 2500 * std::sin(i / 9.0) + i % 7 * 130);
  if (compared)
    for (int i = 0; i < count; ++i)
      data.earlier.push_back(3500 + 2500 * std::cos(i / 9.0));
  data.label = [](int point) {
    return QStringLiteral("2026-%1-%2")
        .arg(point / 31 % 12 + 1, 2, 10, QChar(u'0'))
        .arg(point % 31 + 1, 2, 10, QChar(u'0'));
  };
  return data;
}

void draw(benchmark::State& state, ChartKind kind, bool compared = false) {
  bench::needWindows();
  const ChartData data = days(static_cast<int>(state.range(0)), compared);
  QFont font;
  font.setPixelSize(13);
  QImage window(2560, 1200, QImage::Format_ARGB32_Premultiplied);  // of a display at 200 %
  window.setDevicePixelRatio(2);
  for (auto _ : state) {
    QPainter painter(&window);
    const ChartPicture picture(data, kind, screenChartLook(font), QRectF(0, 0, 1280, 600));
    picture.paint(painter, 3, 3);
    painter.end();
    benchmark::DoNotOptimize(window.constBits());
  }
}

BENCHMARK_CAPTURE(draw, bars, ChartKind::Bars)
    ->Name("chart/bars")
    ->Arg(366)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, lines, ChartKind::Lines)
    ->Name("chart/line")
    ->Arg(366)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, compared, ChartKind::Bars, true)
    ->Name("chart/bars of two periods")
    ->Arg(366)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, pie, ChartKind::Pie)->Name("chart/pie")->Arg(366)->Unit(benchmark::kMillisecond);

}  // namespace chart_bench
}  // namespace jxc::ui
