// 图表几何: where the bars, points, labels and slices of a chart stand; figures only, no window and no painter.
// A value that is not known is a NaN: it keeps its place and shows nothing.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <functional>
#include <span>
#include <vector>

namespace jxc::ui {

/// An axis with round ticks: every one a whole multiple of the step, which is 1, 2 or 5 times a power of ten.
struct AxisScale {
  double low = 0, high = 1, step = 1;
  double unit = 1;   // 1, 万, 亿 or 万亿: what the figures beside the axis count in
  QString unitName;  // empty for 1
  int decimals = 0;  // of those figures

  int tickCount() const;
  double tick(int index) const;
  /// "0", "1,500", "2.5亿".
  QString tickText(int index) const;
};
/// Takes in 0, all values, and at most so many steps, none of them smaller than `leastStep` (what the figures show).
AxisScale axisScale(std::span<const double> values, int mostSteps, double leastStep = 1e-6);

/// Values side by side in a plot: a place for each, as wide as the next.
struct Plot {
  QRectF area;
  AxisScale scale;
  int count = 0;
  double line = 1;  // the thinnest line that can be seen

  double pitch() const { return area.width() / std::max(1, count); }
  double x(int point) const { return area.left() + (point + 0.5) * pitch(); }
  double y(double value) const;
  /// The value at this place; of several within one line the farthest from 0. -1: none, or not known.
  int pointAt(double x, std::span<const double> values) const;
};

/// The points to draw, ascending: all that are known; where they stand closer than the thinnest line only the
/// lowest and the highest of each line, so that 100,000 values cost no more than the plot is wide.
std::vector<int> visiblePoints(const Plot& plot, std::span<const double> values);
/// From 0 to the value, and never thinner or lower than a line, so that a small value beside a huge one is there.
QRectF barArea(const Plot& plot, int point, double value, double widest);

struct AxisLabel {
  int point = 0;
  double left = 0, width = 0;
};
/// Labels below the points, thinned evenly, inside of `left` and `right` and never touching: `em` is the size of type.
/// A label that has no room before the next one shown is narrowed to its `width`, but not below nine characters.
std::vector<AxisLabel> layLabels(const Plot& plot, double left, double right, double em,
                                 const std::function<double(int point)>& widthOf);

struct PieSlice {
  int point = -1;  // -1: all that are too small, or too many
  int count = 1;   // of them
  double value = 0, share = 0;
  double from = 0, span = 0;  // degrees, clockwise from the top
};
/// Values above 0, the greatest first, at most `most` with the rest. A rest of one value stands by itself.
std::vector<PieSlice> layPie(std::span<const double> values, int most);
/// The slice at this place, `at` measured from the centre; -1 outside.
int sliceAt(std::span<const PieSlice> slices, QPointF at, double radius);

}  // namespace jxc::ui
