#include "ui/chart_picture.h"

#include "core/formats.h"
#include "ui/display.h"
#include "ui/skin.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace jxc::ui {
namespace chart_picture_detail {

constexpr int kMostSlices = 12;
constexpr double kWidestBar = 5;  // in units of type; two in a place are each half of it

/// What the figures of a column tell apart.
double leastStep(ColumnKind kind) {
  const auto format = kind == ColumnKind::Money      ? moneyFormat()
                      : kind == ColumnKind::Total    ? totalFormat()
                      : kind == ColumnKind::Quantity ? quantityFormat()
                                                     : std::nullopt;
  return std::pow(10.0, -(format ? format->decimals : 6));
}

double lightness(const QColor& colour) {
  return static_cast<double>(colour.lightnessF());
}

/// What an eye takes a colour for, from 0 to 1: green is brighter than red, and red than blue.
double luminance(const QColor& colour) {
  const auto linear = [](float part) {
    const double share = static_cast<double>(part);
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// A name over two lines, broken at the blank that leaves them shortest; without a blank the first holds all of it.
struct Halves {
  QString first, second;
  double width = 0;  // of the longer one
};
Halves halvesOf(const QString& name, const QFont& font) {
  const QFontMetricsF metrics(font);
  Halves best{name, {}, metrics.horizontalAdvance(name)};
  for (qsizetype blank = name.indexOf(u' '); blank >= 0; blank = name.indexOf(u' ', blank + 1)) {
    const QString first = name.left(blank), second = name.mid(blank + 1);
    const double width = std::max(metrics.horizontalAdvance(first), metrics.horizontalAdvance(second));
    if (width < best.width) best = {first, second, width};
  }
  return best;
}

/// Black or white, whichever stands out more.
QColor inkOn(const QColor& ground) {
  const double light = luminance(ground) + 0.05;
  return light * light > 1.05 * 0.05 ? Qt::black : Qt::white;  // light/0.05 against 1.05/light
}

/// Lines behind the values are quieter than frames, and as quiet in looks with strong ones.
QColor between(const QColor& line, const QColor& ground) {
  constexpr double kMost = 0.25, kShare = 0.6;  // of the way from black to white; of the way to the frame
  const double apart = std::abs(lightness(line) - lightness(ground));
  const double share = std::min(kShare, kMost / std::max(apart, kMost));
  const auto mixed = [&](int a, int b) { return static_cast<int>(std::lround(b + (a - b) * share)); };
  return {mixed(line.red(), ground.red()), mixed(line.green(), ground.green()), mixed(line.blue(), ground.blue())};
}

/// What was before is paler than what is.
QColor paler(const QColor& colour, const QColor& ground) {
  const auto mixed = [](int a, int b) { return (a * 2 + b * 3) / 5; };
  return {mixed(colour.red(), ground.red()), mixed(colour.green(), ground.green()),
          mixed(colour.blue(), ground.blue())};
}

QPen penOf(const QColor& colour, double width) {
  QPen pen(colour, width);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  return pen;
}

}  // namespace chart_picture_detail

QString ChartData::labelText(int point) const {
  const QString text = label ? label(point).simplified() : QString();
  return text.isEmpty() ? QStringLiteral("（空）") : text;
}

QString ChartData::valueText(double value) const {
  const QString text = displayNumber(kind, value);
  return text.isEmpty() ? QStringLiteral("0") : text;  // quantities without decimals show nothing for 0
}

ChartLook screenChartLook(const QFont& font) {
  const auto colour = [](const char* name) { return skinColour(QString::fromLatin1(name)); };
  return {.font = font,
          .ground = colour("base"),
          .text = colour("text"),
          .muted = colour("muted"),
          .grid = colour("line"),
          .bar = colour("accent"),
          .below = colour("bad"),
          .band = colour("hover")};
}

ChartLook paperChartLook(const QFont& font, double line) {
  return {.font = font,
          .line = line,
          .ground = Qt::white,
          .text = Qt::black,
          .muted = QColor(0x50, 0x50, 0x50),
          .grid = QColor(0xc0, 0xc0, 0xc0),
          .bar = QColor(0x15, 0x65, 0xa9),
          .below = QColor(0xb3, 0x26, 0x1e),
          .band = QColor(0xe0, 0xea, 0xf4)};
}

ChartPicture::ChartPicture(ChartData data, ChartKind kind, ChartLook look, const QRectF& area)
    : data_(std::move(data)), kind_(kind), look_(std::move(look)), area_(area) {
  bool hasPositive = false;
  for (std::size_t point = 0; point < data_.values.size(); ++point) {
    if (!std::isfinite(data_.values[point])) continue;
    known_.push_back(static_cast<int>(point));
    hasPositive = hasPositive || data_.values[point] > 0;
  }
  if (known_.empty()) {
    message_ = data_.nothing.isEmpty() ? QStringLiteral("这些行没有“%1”的数值").arg(data_.caption) : data_.nothing;
  } else if (kind_ != ChartKind::Pie) {
    layPlot();
  } else if (hasPositive) {
    layLegend();
  } else {
    message_ = QStringLiteral("“%1”没有大于0的数值，不能画饼图").arg(data_.caption);
  }
}

double ChartPicture::width(const QString& text) const {
  return QFontMetricsF(look_.font).horizontalAdvance(text);
}

void ChartPicture::layPlot() {
  const double pad = em() * 0.6, line = em() * 1.6;
  plot_.line = look_.line;
  plot_.count = static_cast<int>(data_.values.size());
  plot_.area = area_.adjusted(pad, pad * 1.5 + line, -pad, -pad - line);
  const int steps = std::clamp(static_cast<int>(plot_.area.height() / (em() * 2.6)), 2, 8);
  std::vector<double> all = data_.values;
  all.insert(all.end(), data_.earlier.begin(), data_.earlier.end());
  plot_.scale = axisScale(all, steps, chart_picture_detail::leastStep(data_.kind));
  double widest = 0;
  for (int tick = 0; tick < plot_.scale.tickCount(); ++tick)
    widest = std::max(widest, width(plot_.scale.tickText(tick)));
  plot_.area.setLeft(std::min(plot_.area.left() + widest + pad, plot_.area.center().x()));
  drawn_ = visiblePoints(plot_, data_.values);
  if (compares()) drawnEarlier_ = visiblePoints(plot_, data_.earlier);
  const double left = area_.left() + pad, right = area_.right() - pad;
  labels_ = layLabels(plot_, left, right, em(), [this](int point) { return width(data_.labelText(point)); });
  if (static_cast<int>(labels_.size()) < plot_.count) {  // over two lines more of them may have room
    auto broken = layLabels(plot_, left, right, em(), [this](int point) {
      return chart_picture_detail::halvesOf(data_.labelText(point), look_.font).width;
    });
    if (broken.size() > labels_.size()) labels_ = std::move(broken);
  }
  figures_ = plot_.pitch() >= em() * 2 && std::ranges::all_of(known_, [this](int point) {
               const double room = compares()
                                       ? barArea(plot_, point, 0, chart_picture_detail::kWidestBar * em()).width() / 2
                                       : plot_.pitch();
               return width(data_.valueText(data_.values[static_cast<std::size_t>(point)])) + em() * 0.4 <= room;
             });
  isBroken_ = std::ranges::any_of(labels_, [this](const AxisLabel& label) {
    return width(data_.labelText(label.point)) > label.width + look_.line;
  });
  if (isBroken_) plot_.area.adjust(0, 0, 0, -em() * 1.4);
  // Figures stand above the highest bar and below the lowest one.
  if (figures_) plot_.area.adjust(0, em(), 0, plot_.scale.low < 0 ? -em() * 1.2 : 0);
}

void ChartPicture::layLegend() {
  using namespace chart_picture_detail;
  const double pad = em() * 0.8, line = em() * 1.7;
  const QRectF inside = area_.adjusted(pad, pad + em() * 1.6, -pad, -pad);
  int below = 0;
  double sum = 0;
  for (const int point : known_) {
    const double value = data_.values[static_cast<std::size_t>(point)];
    if (value >= 0) continue;
    ++below;
    sum += value;
  }
  if (below > 0) leftOut_ = QStringLiteral("另有 %1 项小于0，合计 %2，不在图中").arg(below).arg(data_.valueText(sum));
  const double room = inside.height() - (below > 0 ? line : 0);
  slices_ = layPie(data_.values, std::clamp(static_cast<int>(room / line), 2, kMostSlices));
  double widest = leftOut_.isEmpty() ? 0 : width(leftOut_);
  for (int mark = 0; mark < markCount(); ++mark)
    widest = std::max(widest, em() * 2.5 + width(markLabel(mark) + markValue(mark)));
  const double legendWidth = std::min(widest + em(), inside.width() * 0.62);
  radius_ = std::max(em(), std::min(inside.height(), inside.width() - legendWidth - em() * 2) / 2 - em() * 0.6);
  // Pie and legend stand together in the middle.
  const double left = inside.left() + std::max(0.0, (inside.width() - legendWidth - em() * 3 - radius_ * 2) / 2);
  centre_ = {left + radius_ + em() * 0.6, inside.center().y()};
  const double height = line * (static_cast<double>(slices_.size()) + (below > 0 ? 1 : 0));
  legendLine_ = line;
  legend_ = {centre_.x() + radius_ + em() * 2, std::max(inside.top(), inside.center().y() - height / 2), legendWidth,
             height};
}

int ChartPicture::markCount() const {
  if (!message_.isEmpty()) return 0;
  return static_cast<int>(kind_ == ChartKind::Pie ? slices_.size() : known_.size());
}

int ChartPicture::markAt(QPointF place) const {
  if (markCount() == 0) return -1;
  if (kind_ != ChartKind::Pie) {
    if (place.y() < plot_.area.top() - em() || place.y() > area_.bottom()) return -1;
    return markOf(plot_.pointAt(place.x(), data_.values));
  }
  if (legend_.contains(place)) {
    const int slice = static_cast<int>((place.y() - legend_.top()) / legendLine_);
    return slice < markCount() ? slice : -1;
  }
  return sliceAt(slices_, place - centre_, radius_);
}

int ChartPicture::markOf(int point) const {
  if (point < 0 || markCount() == 0) return -1;
  if (kind_ != ChartKind::Pie) {
    const auto found = std::ranges::lower_bound(known_, point);
    return found != known_.end() && *found == point ? static_cast<int>(found - known_.begin()) : -1;
  }
  const auto found = std::ranges::find(slices_, point, &PieSlice::point);
  if (found != slices_.end()) return static_cast<int>(found - slices_.begin());
  const double value =
      point < static_cast<int>(data_.values.size()) ? data_.values[static_cast<std::size_t>(point)] : 0;
  return value > 0 && slices_.back().point < 0 ? markCount() - 1 : -1;
}

int ChartPicture::pointOf(int mark) const {
  if (mark < 0 || mark >= markCount()) return -1;
  const auto at = static_cast<std::size_t>(mark);
  return kind_ == ChartKind::Pie ? slices_[at].point : known_[at];
}

QString ChartPicture::markLabel(int mark) const {
  const int point = pointOf(mark);
  if (point >= 0) return data_.labelText(point);
  if (mark < 0 || mark >= markCount()) return {};
  return QStringLiteral("其他（%1 项）").arg(slices_[static_cast<std::size_t>(mark)].count);
}

QString ChartPicture::markValue(int mark) const {
  if (mark < 0 || mark >= markCount()) return {};
  const auto at = static_cast<std::size_t>(mark);
  if (kind_ != ChartKind::Pie) {
    const auto point = static_cast<std::size_t>(known_[at]);
    const QString now = data_.valueText(data_.values[point]);
    if (!compares() || !std::isfinite(data_.earlier[point])) return now;
    return QStringLiteral("%1，%2 %3").arg(now, data_.earlierCaption, data_.valueText(data_.earlier[point]));
  }
  return QStringLiteral("%1　%2%").arg(data_.valueText(slices_[at].value),
                                       QString::number(slices_[at].share * 100, 'f', 1));
}

QColor ChartPicture::sliceColour(int slice) const {
  const PieSlice& each = slices_[static_cast<std::size_t>(slice)];
  if (each.point < 0) return look_.muted;
  // Hues as far apart as they get from one to the next, in the strength that the ground asks for.
  constexpr double kGolden = 0.381966;
  const bool dark = chart_picture_detail::lightness(look_.ground) < 0.5;
  double whole = 0;
  const double hue = std::modf(std::max(0.0, static_cast<double>(look_.bar.hslHueF())) + slice * kGolden, &whole);
  const double light = (dark ? 0.64 : 0.42) + (slice % 3) * (dark ? -0.07 : 0.08);
  return QColor::fromHslF(static_cast<float>(hue), 0.55F, static_cast<float>(light));
}

/// Where the words of a mark point to.
QPointF ChartPicture::place(int mark) const {
  const auto at = static_cast<std::size_t>(mark);
  if (kind_ != ChartKind::Pie) {
    const int point = known_[at];
    return {plot_.x(point), plot_.y(std::max(0.0, data_.values[static_cast<std::size_t>(point)]))};
  }
  const double angle = (slices_[at].from + slices_[at].span / 2) * std::numbers::pi / 180;
  return centre_ + QPointF(std::sin(angle), -std::cos(angle)) * radius_ * 0.7;
}

void ChartPicture::write(QPainter& painter, const QRectF& area, int alignment, const QString& text,
                         const QColor& colour) const {
  painter.setPen(colour);
  const QFontMetricsF metrics(look_.font);
  painter.drawText(area, alignment | Qt::TextSingleLine | Qt::TextDontClip,
                   metrics.elidedText(text, Qt::ElideMiddle, area.width() + look_.line));
}

void ChartPicture::paint(QPainter& painter, int current, int told) const {
  painter.save();
  painter.setFont(look_.font);
  painter.setBrush(Qt::NoBrush);
  painter.fillRect(area_, look_.ground);
  if (!message_.isEmpty()) {
    painter.setPen(look_.muted);
    painter.drawText(area_.adjusted(em(), em(), -em(), -em()), Qt::AlignCenter | Qt::TextWordWrap, message_);
    painter.restore();
    return;
  }
  paintCaption(painter);
  if (kind_ == ChartKind::Pie) {
    paintPie(painter, current);
  } else {
    if (current >= 0 && current < markCount()) {
      const double wide = std::clamp(plot_.pitch(), look_.line * 5, em() * 10);
      painter.fillRect(QRectF(plot_.x(pointOf(current)) - wide / 2, plot_.area.top(), wide, plot_.area.height()),
                       look_.band);
    }
    paintAxes(painter);
    if (kind_ == ChartKind::Bars)
      paintBars(painter);
    else
      paintLines(painter);
    if (figures_) paintFigures(painter, told < 0 ? -1 : pointOf(told));
  }
  if (told >= 0 && told < markCount()) paintWords(painter, told);
  painter.restore();
}

/// A name in its room: what does not fit stands in a second line, of which the end is kept: names differ there.
std::pair<QString, QString> ChartPicture::inTwoLines(const QString& name, double room) const {
  if (width(name) <= room + look_.line) return {name, {}};
  auto halves = chart_picture_detail::halvesOf(name, look_.font);
  if (halves.width <= room + look_.line) return {std::move(halves.first), std::move(halves.second)};
  qsizetype kept = 0;
  while (kept < name.size() && width(name.left(kept + 1)) <= room)
    ++kept;
  return {name.left(kept), QFontMetricsF(look_.font).elidedText(name.mid(kept).trimmed(), Qt::ElideLeft, room)};
}

/// What is shown; of two periods with the colour of each.
void ChartPicture::paintCaption(QPainter& painter) const {
  QRectF line = area_.adjusted(em() * 0.6, em() * 0.4, -em() * 0.6, 0);
  const auto tell = [&](const QString& text, const QColor& ink) {
    write(painter, line, Qt::AlignLeft | Qt::AlignTop, text, ink);
    line.setLeft(std::min(line.right(), line.left() + width(text) + em() * 1.5));
  };
  const auto colour = [&](const QColor& of) {
    painter.fillRect(QRectF(line.left(), line.top() + em() * 0.3, em() * 0.8, em() * 0.8), of);
    line.setLeft(line.left() + em() * 1.2);
  };
  if (compares()) {
    colour(chart_picture_detail::paler(look_.bar, look_.ground));
    tell(data_.earlierCaption, look_.text);
    colour(look_.bar);
  }
  tell(data_.caption, look_.text);
  if (!data_.rest.isEmpty()) tell(data_.rest, look_.muted);
}

void ChartPicture::paintAxes(QPainter& painter) const {
  using namespace chart_picture_detail;
  painter.setRenderHint(QPainter::Antialiasing, false);
  const double half = em() * 0.8;
  for (int tick = 0; tick < plot_.scale.tickCount(); ++tick) {
    const double value = plot_.scale.tick(tick), y = plot_.y(value);
    painter.setPen(penOf(value == 0 ? look_.muted : between(look_.grid, look_.ground), look_.line));
    painter.drawLine(QPointF(plot_.area.left(), y), QPointF(plot_.area.right(), y));
    const QRectF beside(area_.left(), y - half, plot_.area.left() - area_.left() - em() * 0.5, half * 2);
    write(painter, beside, Qt::AlignRight | Qt::AlignVCenter, plot_.scale.tickText(tick), look_.muted);
  }
  const double top = area_.bottom() - em() * (isBroken_ ? 3.4 : 2);
  for (const AxisLabel& label : labels_) {
    const auto [first, second] = inTwoLines(data_.labelText(label.point), label.width);
    const QRectF line(label.left, top, label.width, em() * 1.6);
    write(painter, line, Qt::AlignHCenter | Qt::AlignVCenter, first, look_.text);
    write(painter, line.translated(0, em() * 1.4), Qt::AlignHCenter | Qt::AlignVCenter, second, look_.text);
  }
}

void ChartPicture::paintBars(QPainter& painter) const {
  using namespace chart_picture_detail;
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  // One path a colour: hundreds of bars are filled in two goes.
  enum class Half { None, Left, Right };
  const auto fill = [&](const std::vector<double>& values, const std::vector<int>& drawn, Half half,
                        const QColor& positive, const QColor& negative) {
    QVector<QRectF> above, below;
    for (const int point : drawn) {
      const double value = values[static_cast<std::size_t>(point)];
      if (value == 0) continue;
      QRectF bar = barArea(plot_, point, value, chart_picture_detail::kWidestBar * em());
      // Beside each other where there is room; else what is stands before what was.
      if (half == Half::Left && bar.width() >= look_.line * 2) bar.setRight(bar.center().x());
      if (half == Half::Right && bar.width() >= look_.line * 2) bar.setLeft(bar.center().x());
      if (bar.width() > look_.line * 8) {  // wide ones get sharp edges
        bar.setLeft(std::round(bar.left() / look_.line) * look_.line);
        bar.setRight(std::round(bar.right() / look_.line) * look_.line);
      }
      (value > 0 ? above : below) << bar;
    }
    painter.setBrush(positive);
    painter.drawRects(above);
    painter.setBrush(negative);
    painter.drawRects(below);
  };
  if (compares())
    fill(data_.earlier, drawnEarlier_, Half::Left, paler(look_.bar, look_.ground), paler(look_.below, look_.ground));
  fill(data_.values, drawn_, compares() ? Half::Right : Half::None, look_.bar, look_.below);
  painter.setBrush(Qt::NoBrush);
}

void ChartPicture::paintLines(QPainter& painter) const {
  if (compares())
    paintLine(painter, data_.earlier, drawnEarlier_, chart_picture_detail::paler(look_.bar, look_.ground));
  paintLine(painter, data_.values, drawn_, look_.bar);
}

void ChartPicture::paintLine(QPainter& painter, const std::vector<double>& values, const std::vector<int>& drawn,
                             const QColor& colour) const {
  painter.setRenderHint(QPainter::Antialiasing, true);
  QPolygonF piece;
  const bool dense = plot_.pitch() < look_.line;
  const bool dots = plot_.pitch() >= look_.line * 9;
  const double size = look_.line * 3;
  const auto finish = [&] {
    // Stroke by stroke: a long line with many corners takes a painter seconds as one path. Where several values stand
    // in one place all strokes are upright.
    painter.setPen(chart_picture_detail::penOf(colour, look_.line * 2));
    for (qsizetype i = 1; i < piece.size(); ++i) {
      if (!dense) {
        painter.drawLine(piece[i - 1], piece[i]);
        continue;
      }
      const QRectF upright = QRectF(piece[i - 1], piece[i]).normalized();
      painter.fillRect(upright.adjusted(0, -look_.line / 2, look_.line, look_.line / 2), colour);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    for (const QPointF& at : piece) {
      if (dots || piece.size() == 1) painter.drawEllipse(at, size, size);
    }
    painter.setBrush(Qt::NoBrush);
    piece.clear();
  };
  // A gap in the values is a gap in the line.
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    const int point = drawn[i];
    if (i > 0) {
      bool gap = false;
      for (int between = drawn[i - 1] + 1; between < point && !gap; ++between)
        gap = !std::isfinite(values[static_cast<std::size_t>(between)]);
      if (gap) finish();
    }
    piece << QPointF(plot_.x(point), plot_.y(values[static_cast<std::size_t>(point)]));
  }
  finish();
}

void ChartPicture::paintFigures(QPainter& painter, int told) const {
  const double high = em() * 1.3, off = kind_ == ChartKind::Lines ? look_.line * 3 : 0;
  for (const int point : known_) {
    if (point == told) continue;  // its words have the figure, and would cover half of it
    const double value = data_.values[static_cast<std::size_t>(point)];
    const double y = plot_.y(value);
    QRectF area(plot_.x(point) - plot_.pitch() / 2, value < 0 ? y + off : y - high - off, plot_.pitch(), high);
    if (compares() && kind_ == ChartKind::Bars) {
      area.setLeft(plot_.x(point));
      area.setWidth(barArea(plot_, point, value, chart_picture_detail::kWidestBar * em()).width() / 2);
    }
    writeClear(painter, area, data_.valueText(value));
  }
}

/// A figure with a seam of the ground around it, so that no line of the axis runs through it.
void ChartPicture::writeClear(QPainter& painter, const QRectF& area, const QString& text) const {
  const QFontMetricsF metrics(look_.font);
  QPainterPath letters;
  letters.addText(area.center().x() - width(text) / 2, area.center().y() + (metrics.ascent() - metrics.descent()) / 2,
                  look_.font, text);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.strokePath(letters, chart_picture_detail::penOf(look_.ground, em() * 0.3));
  write(painter, area, Qt::AlignCenter, text, look_.text);
}

void ChartPicture::paintPie(QPainter& painter, int current) const {
  const double gap = look_.line * 1.5;
  for (int slice = 0; slice < markCount(); ++slice) {
    const PieSlice& each = slices_[static_cast<std::size_t>(slice)];
    const QColor colour = sliceColour(slice);
    const double middle = (each.from + each.span / 2) * std::numbers::pi / 180;
    const QPointF outwards(std::sin(middle), -std::cos(middle));
    const bool whole = each.span >= 360;
    const QPointF centre = centre_ + (slice == current && !whole ? outwards * em() * 0.5 : QPointF());
    const QRectF circle(centre.x() - radius_, centre.y() - radius_, radius_ * 2, radius_ * 2);
    painter.setRenderHint(QPainter::Antialiasing, true);
    QPainterPath path;
    if (whole) {
      path.addEllipse(circle);
    } else {
      path.moveTo(centre);
      path.arcTo(circle, 90 - each.from, -each.span);
      path.closeSubpath();
    }
    painter.setBrush(colour);
    painter.setPen(whole ? QPen(Qt::NoPen) : chart_picture_detail::penOf(look_.ground, gap));
    painter.drawPath(path);
    painter.setBrush(Qt::NoBrush);
    const QString share = QString::number(each.share * 100, 'f', 1) + u'%';
    const double across = each.span * std::numbers::pi / 180 * radius_ * 0.72;
    if (whole || across > width(share) * 0.9 + em() * 0.3) {
      const QPointF at = whole ? centre : centre + outwards * radius_ * 0.72;
      write(painter, QRectF(at.x() - em() * 3, at.y() - em(), em() * 6, em() * 2), Qt::AlignCenter, share,
            chart_picture_detail::inkOn(colour));
    }
    const QRectF line(legend_.left(), legend_.top() + slice * legendLine_, legend_.width(), legendLine_);
    if (slice == current) painter.fillRect(line, look_.band);
    painter.fillRect(QRectF(line.left() + em() * 0.3, line.center().y() - em() * 0.4, em() * 0.8, em() * 0.8), colour);
    const QString value = markValue(slice);
    const double figures = width(value) + em() * 0.3;
    write(painter, line.adjusted(0, 0, -em() * 0.3, 0), Qt::AlignRight | Qt::AlignVCenter, value, look_.text);
    write(painter, line.adjusted(em() * 1.5, 0, -figures - em() * 0.6, 0), Qt::AlignLeft | Qt::AlignVCenter,
          markLabel(slice), look_.text);
  }
  if (leftOut_.isEmpty()) return;
  const QRectF last(legend_.left(), legend_.bottom() - legendLine_, legend_.width(), legendLine_);
  write(painter, last.adjusted(em() * 0.3, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, leftOut_, look_.muted);
}

/// The words of one value in a box beside it, inside of the area.
void ChartPicture::paintWords(QPainter& painter, int mark) const {
  const QString label = markLabel(mark), value = data_.caption + u' ' + markValue(mark);
  const double pad = em() * 0.6, line = em() * 1.5;
  const double wide = std::min(std::max(width(label), width(value)) + pad * 2, area_.width() - pad * 2);
  const QPointF at = place(mark);
  QRectF box(at.x() + em(), at.y() - line * 2 - em() * 1.4, wide, line * 2 + pad);
  // Names and figures beside a pie are not covered.
  const double edge = kind_ == ChartKind::Pie ? legend_.left() : area_.right() - pad;
  if (box.right() > edge) box.moveRight(std::min(at.x() - em(), edge));
  box.moveLeft(std::clamp(box.left(), area_.left() + pad, std::max(area_.left() + pad, area_.right() - pad - wide)));
  box.moveTop(std::max(box.top(), area_.top() + pad));
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(chart_picture_detail::penOf(look_.bar, look_.line));
  painter.setBrush(look_.ground);
  painter.drawRoundedRect(box, look_.line * 3, look_.line * 3);
  painter.setBrush(Qt::NoBrush);
  const QRectF first(box.left() + pad, box.top() + pad / 2, box.width() - pad * 2, line);
  write(painter, first, Qt::AlignLeft | Qt::AlignVCenter, label, look_.text);
  write(painter, first.translated(0, line), Qt::AlignLeft | Qt::AlignVCenter, value, look_.text);
}

}  // namespace jxc::ui
