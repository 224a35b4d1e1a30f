#include "ui/chart_geometry.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace jxc::ui {
namespace chart_geometry_detail {

/// 1, 2 or 5 times a power of ten.
struct RoundStep {
  int mantissa = 1, exponent = 0;

  double value() const {
    const double power = std::pow(10.0, std::abs(exponent));
    return exponent < 0 ? mantissa / power : mantissa * power;
  }
  RoundStep next() const {
    if (mantissa == 5) return {1, exponent + 1};
    return {mantissa == 1 ? 2 : 5, exponent};
  }
};

/// The first step that is not below `least`.
RoundStep roundStep(double least) {
  RoundStep step{1, static_cast<int>(std::floor(std::log10(least)))};
  while (step.value() < least * (1 - 1e-9))
    step = step.next();
  return step;
}

struct Unit {
  double from;
  int exponent;
  const char16_t* name;
};
constexpr Unit kUnits[] = {{1e12, 12, u"万亿"}, {1e8, 8, u"亿"}, {1e5, 4, u"万"}};

}  // namespace chart_geometry_detail

int AxisScale::tickCount() const {
  return static_cast<int>(std::lround((high - low) / step)) + 1;
}

double AxisScale::tick(int index) const {
  return (std::round(low / step) + index) * step;  // not added up: 0 shall be 0
}

QString AxisScale::tickText(int index) const {
  const double value = tick(index);
  if (value == 0) return QStringLiteral("0");
  return NumberFormat{NumberFormat::Kind::Total, decimals, {}}.format(value / unit) + unitName;
}

AxisScale axisScale(std::span<const double> values, int mostSteps, double leastStep) {
  using namespace chart_geometry_detail;
  double low = 0, high = 0;
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  if (low == high) high = std::max(1.0, leastStep);
  RoundStep step = roundStep(std::max((high - low) / std::max(1, mostSteps), leastStep));
  const auto below = [&] { return std::floor(low / step.value() + 1e-9); };
  const auto above = [&] { return std::ceil(high / step.value() - 1e-9); };
  while (above() - below() > std::max(2, mostSteps))
    step = step.next();
  AxisScale scale{.low = below() * step.value(), .high = above() * step.value(), .step = step.value(), .unitName = {}};
  int exponent = 0;
  for (const Unit& unit : kUnits) {
    if (std::max(-scale.low, scale.high) < unit.from) continue;
    exponent = unit.exponent;
    scale.unit = std::pow(10.0, exponent);
    scale.unitName = QString::fromUtf16(unit.name);
    break;
  }
  scale.decimals = std::clamp(exponent - step.exponent, 0, 6);
  return scale;
}

double Plot::y(double value) const {
  return area.bottom() - (value - scale.low) / (scale.high - scale.low) * area.height();
}

int Plot::pointAt(double x, std::span<const double> values) const {
  if (count == 0 || x < area.left() || x >= area.right()) return -1;
  const double reach = pitch() < line ? line / 2 : 0;
  const auto place = [&](double at) {
    return std::clamp(static_cast<int>((at - area.left()) / pitch()), 0, count - 1);
  };
  int found = -1;
  for (int point = place(x - reach); point <= place(x + reach); ++point) {
    const double value = values[static_cast<std::size_t>(point)];
    if (!std::isfinite(value)) continue;
    if (found < 0 || std::abs(value) > std::abs(values[static_cast<std::size_t>(found)])) found = point;
  }
  return found;
}

std::vector<int> visiblePoints(const Plot& plot, std::span<const double> values) {
  std::vector<int> points;
  const bool all = plot.pitch() >= plot.line;
  int lowest = -1, highest = -1;
  double column = -1;
  const auto finish = [&] {
    if (lowest < 0) return;
    points.push_back(std::min(lowest, highest));
    if (lowest != highest) points.push_back(std::max(lowest, highest));
    lowest = highest = -1;
  };
  for (int point = 0; point < plot.count; ++point) {
    const double value = values[static_cast<std::size_t>(point)];
    if (!std::isfinite(value)) continue;
    if (all) {
      points.push_back(point);
      continue;
    }
    const double at = std::floor((plot.x(point) - plot.area.left()) / plot.line);
    if (at != column) finish();
    column = at;
    if (lowest < 0 || value < values[static_cast<std::size_t>(lowest)]) lowest = point;
    if (highest < 0 || value > values[static_cast<std::size_t>(highest)]) highest = point;
  }
  finish();
  return points;
}

QRectF barArea(const Plot& plot, int point, double value, double widest) {
  // Gaps between bars of a dot or two would only make them pale.
  const double share = plot.pitch() < plot.line * 3 ? 1 : 0.72;
  const double width = std::max(plot.line, std::min(widest, plot.pitch() * share));
  const double zero = plot.y(0);
  double top = std::min(zero, plot.y(value)), bottom = std::max(zero, plot.y(value));
  if (value > 0) top = std::min(top, zero - plot.line);
  if (value < 0) bottom = std::max(bottom, zero + plot.line);
  return {plot.x(point) - width / 2, top, width, bottom - top};
}

std::vector<AxisLabel> layLabels(const Plot& plot, double left, double right, double em,
                                 const std::function<double(int point)>& widthOf) {
  std::vector<AxisLabel> labels;
  if (plot.count == 0) return labels;
  constexpr int kSample = 80;  // a plot shows no more labels than that
  const double gap = em * 0.8;
  double widest = em;
  const int sampled = std::min(kSample, plot.count);
  for (qint64 i = 0; i < sampled; ++i)
    widest = std::max(widest, widthOf(static_cast<int>(i * plot.count / sampled)));
  const double most = std::max(std::min(widest, em * 9), plot.pitch() - gap);
  const int step = std::max(1, static_cast<int>(std::ceil((std::min(widest, most) + gap) / plot.pitch() - 1e-9)));
  const double room = std::max(most, step * plot.pitch() - gap);  // of those that are shown
  double free = left;                                             // the first place that no label takes
  for (int point = 0; point < plot.count; point += step) {
    const double width = std::min({widthOf(point), room, right - left});
    const double at = std::clamp(plot.x(point) - width / 2, left, right - width);
    if (at < free) continue;
    labels.push_back({point, at, width});
    free = at + width + gap;
  }
  return labels;
}

std::vector<PieSlice> layPie(std::span<const double> values, int most) {
  constexpr double kSmall = 0.02, kSmallTogether = 0.1;
  std::vector<int> order;
  double total = 0;
  for (std::size_t point = 0; point < values.size(); ++point) {
    if (!std::isfinite(values[point]) || values[point] <= 0) continue;
    order.push_back(static_cast<int>(point));
    total += values[point];
  }
  const auto valueOf = [&](int point) { return values[static_cast<std::size_t>(point)]; };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return valueOf(a) > valueOf(b); });
  std::size_t kept = order.size();
  double rest = 0;
  const auto slots = static_cast<std::size_t>(std::max(2, most));
  while (kept > 1) {
    const double next = valueOf(order[kept - 1]);
    const bool tooMany = kept + (kept < order.size() ? 1 : 0) > slots;
    if (!tooMany && (next >= kSmall * total || rest + next > kSmallTogether * total)) break;
    rest += next;
    --kept;
  }
  if (kept + 1 == order.size()) ++kept;
  std::vector<PieSlice> slices;
  double from = 0;
  const auto add = [&](int point, int count, double value) {
    const double share = value / total;
    slices.push_back({point, count, value, share, from, share * 360});
    from += share * 360;
  };
  for (std::size_t i = 0; i < kept; ++i)
    add(order[i], 1, valueOf(order[i]));
  if (kept < order.size()) add(-1, static_cast<int>(order.size() - kept), rest);
  return slices;
}

int sliceAt(std::span<const PieSlice> slices, QPointF at, double radius) {
  if (std::hypot(at.x(), at.y()) > radius) return -1;
  double angle = std::atan2(at.x(), -at.y()) * 180 / std::numbers::pi;
  if (angle < 0) angle += 360;
  for (std::size_t i = 0; i < slices.size(); ++i) {
    if (angle < slices[i].from + slices[i].span) return static_cast<int>(i);
  }
  return static_cast<int>(slices.size()) - 1;
}

}  // namespace jxc::ui
