#include "ui/designer/canvas_sizes.h"
#include "ui/designer/design_canvas.h"
#include "ui/skin.h"

#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <cmath>

namespace jxc::ui {

namespace canvas_paint_detail {

QPen penOf(const report::Pen& pen, double scale) {
  QPen p(pen.colour, std::max(1.0, pen.width * scale));
  if (pen.style == report::PenStyle::Dash) p.setStyle(Qt::DashLine);
  if (pen.style == report::PenStyle::Dot) p.setStyle(Qt::DotLine);
  return p;
}

void drawSides(QPainter& painter, const QRectF& r, std::uint8_t sides) {
  if (sides & report::side::left) painter.drawLine(r.topLeft(), r.bottomLeft());
  if (sides & report::side::right) painter.drawLine(r.topRight(), r.bottomRight());
  if (sides & report::side::top) painter.drawLine(r.topLeft(), r.topRight());
  if (sides & report::side::bottom) painter.drawLine(r.bottomLeft(), r.bottomRight());
}

void drawShape(QPainter& painter, const QRectF& r, report::ShapeKind shape) {
  using report::ShapeKind;
  switch (shape) {
    case ShapeKind::Rectangle:
      painter.drawRect(r);
      return;
    case ShapeKind::RoundedRectangle:
      painter.drawRoundedRect(r, r.height() / 5, r.height() / 5);
      return;
    case ShapeKind::Ellipse:
      painter.drawEllipse(r);
      return;
    case ShapeKind::Triangle:
      painter.drawPolygon(QPolygonF{{r.center().x(), r.top()}, r.bottomRight(), r.bottomLeft()});
      return;
    case ShapeKind::Diamond:
      painter.drawPolygon(QPolygonF{{r.center().x(), r.top()},
                                    {r.right(), r.center().y()},
                                    {r.center().x(), r.bottom()},
                                    {r.left(), r.center().y()}});
      return;
  }
}

/// Stands for the bars: what is encoded is known only when it prints.
void drawBars(QPainter& painter, const QRectF& r, bool square) {
  if (square) {
    const double cell = std::min(r.width(), r.height()) / 9;
    for (int line = 0; line < 9; ++line)
      for (int column = 0; column < 9; ++column)
        if ((column * 7 + line * 2) % 3 == 0 || column == 0 || line == 8)
          painter.fillRect(QRectF(r.x() + column * cell, r.y() + line * cell, cell, cell), Qt::black);
    return;
  }
  double x = r.x();
  for (int i = 0; x < r.right(); ++i) {
    const double bar = 1 + (i * 5) % 3;
    painter.fillRect(QRectF(x, r.y(), std::min(bar, r.right() - x), r.height()), Qt::black);
    x += bar + 1 + (i * 3) % 2;
  }
}

bool isSquare(report::Symbology symbology) {
  using report::Symbology;
  return symbology == Symbology::Qr || symbology == Symbology::DataMatrix || symbology == Symbology::Aztec;
}

}  // namespace canvas_paint_detail

void DesignCanvas::paintCanvas() {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), skinColour(QStringLiteral("window")).darker(108));
  painter.save();
  painter.translate(canvas::kRuler - horizontalScrollBar()->value(), canvas::kRuler - verticalScrollBar()->value());
  const auto& t = document_.current();
  const double bottom = places_.empty() ? 200 : places_.back().ground.bottom() + canvas::kGap;
  painter.fillRect(QRectF(canvas::kGap, canvas::kGap / 2.0, t.page.pageWidth() * scale_, bottom - canvas::kGap / 2.0),
                   Qt::white);
  for (const Place& place : places_)
    paintBand(painter, place);
  paintChosen(painter);
  if (drag_ == Drag::Rubber || drag_ == Drag::Insert) {
    QColor tint = skinColour(QStringLiteral("accent"));
    painter.setPen(tint);
    tint.setAlpha(30);
    painter.setBrush(tint);
    painter.drawRect(QRectF(from_, to_).normalized());
  }
  painter.restore();
  paintRulers(painter);
  if (places_.empty()) {
    painter.setPen(skinColour(QStringLiteral("muted")));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, QStringLiteral("模板还没有带区，请用“添加带区”开始"));
  }
}

void DesignCanvas::paintBand(QPainter& painter, const Place& place) const {
  const auto& t = document_.current();
  const auto& band = t.bands[place.band];
  const bool isCurrent = document_.chosenBand() == place.band;
  const QColor accent = skinColour(QStringLiteral("accent"));
  painter.fillRect(place.strip, isCurrent ? accent : QColor(0xe6, 0xea, 0xee));
  painter.setPen(isCurrent ? skinColour(QStringLiteral("accentText")) : QColor(0x40, 0x48, 0x50));
  QString label = report::bandKindLabel(band.kind).toString();
  const bool ofGroup = band.kind == report::BandKind::GroupHeader || band.kind == report::BandKind::GroupFooter;
  if (ofGroup && band.group < static_cast<int>(t.groups.size()))
    label += QStringLiteral(" %1：%2").arg(band.group + 1).arg(t.groups[band.group].by);
  if (!band.visibleIf.isEmpty()) label += QStringLiteral("（条件：%1）").arg(band.visibleIf);
  painter.drawText(place.strip.adjusted(6, 0, -6, 0), Qt::AlignVCenter, label);

  painter.save();
  painter.setClipRect(place.ground.adjusted(-1, -1, t.page.right * scale_, 1));
  if (band.fill.isValid()) painter.fillRect(place.ground, band.fill);
  if (step_ > 0 && step_ * scale_ >= 4) {
    painter.setPen(QColor(0xc4, 0xcc, 0xd4));
    for (double y = 0; y <= place.ground.height(); y += step_ * scale_)
      for (double x = 0; x <= place.ground.width(); x += step_ * scale_)
        painter.drawPoint(place.ground.topLeft() + QPointF(x, y));
  }
  for (int i = 0; i < static_cast<int>(band.items.size()); ++i)
    paintItem(painter, band.items[i], contentRect({place.band, i}));
  painter.restore();
  painter.setPen(QColor(0xb0, 0xb8, 0xc0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place.ground);
}

void DesignCanvas::paintItem(QPainter& painter, const report::Item& item, const QRectF& at) const {
  using namespace canvas_paint_detail;
  using report::ItemKind;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  switch (item.kind) {
    case ItemKind::Text:
      paintText(painter, item, at);
      break;
    case ItemKind::Line:
      painter.setPen(penOf(item.pen, scale_));
      if (item.rising)
        painter.drawLine(at.bottomLeft(), at.topRight());
      else
        painter.drawLine(at.topLeft(), at.bottomRight());
      break;
    case ItemKind::Shape:
      painter.setPen(penOf(item.pen, scale_));
      painter.setBrush(item.fill.isValid() ? QBrush(item.fill) : QBrush(Qt::NoBrush));
      drawShape(painter, at, item.shape);
      break;
    case ItemKind::Picture:
      painter.setPen(QPen(QColor(0x90, 0x98, 0xa0), 1, Qt::DashLine));
      painter.drawRect(at);
      painter.drawText(at, Qt::AlignCenter | Qt::TextWordWrap, QStringLiteral("图片 ") + item.content);
      break;
    case ItemKind::Barcode: {
      const double words = item.showCode && !isSquare(item.symbology) ? 3 * scale_ : 0;
      drawBars(painter, at.adjusted(0, 0, 0, -words), isSquare(item.symbology));
      painter.setPen(Qt::black);
      if (words > 0)
        painter.drawText(QRectF(at.x(), at.bottom() - words, at.width(), words), Qt::AlignCenter, item.content);
      break;
    }
  }
  painter.restore();
}

void DesignCanvas::paintText(QPainter& painter, const report::Item& item, const QRectF& at) const {
  using namespace canvas_paint_detail;
  if (item.fill.isValid()) painter.fillRect(at, item.fill);
  if (item.frame != report::side::none) {
    painter.setPen(penOf(item.pen, scale_));
    drawSides(painter, at, item.frame);
  } else {
    painter.setPen(QPen(QColor(0xd8, 0xdc, 0xe0), 1, Qt::DotLine));  // a text without a frame has borders all the same
    painter.drawRect(at);
  }
  QFont font;
  if (item.font.family.isEmpty())
    font.setFamilies(fontFamilies());
  else
    font.setFamily(item.font.family);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(item.font.size * 25.4 / 72 * scale_))));
  font.setBold(item.font.bold);
  font.setItalic(item.font.italic);
  font.setUnderline(item.font.underline);
  font.setStrikeOut(item.font.strikeOut);
  painter.setFont(font);
  painter.setPen(item.font.colour);

  int flags = item.wrap || item.grow ? Qt::TextWordWrap : Qt::TextSingleLine;
  constexpr std::array across{Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignJustify};
  constexpr std::array down{Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
  flags |= across[static_cast<std::size_t>(item.align)] | down[static_cast<std::size_t>(item.valign)];
  QRectF inside =
      at.adjusted(item.paddingX * scale_, item.paddingY * scale_, -item.paddingX * scale_, -item.paddingY * scale_);
  painter.setClipRect(at, Qt::IntersectClip);
  if (item.rotation != 0) {
    painter.translate(at.center());
    painter.rotate(item.rotation);
    const bool sideways = item.rotation % 180 != 0;
    const QSizeF size = sideways ? inside.size().transposed() : inside.size();
    inside = QRectF(QPointF(-size.width() / 2, -size.height() / 2), size);
  }
  painter.drawText(inside, flags, item.content);
}

void DesignCanvas::paintChosen(QPainter& painter) const {
  const QColor accent = skinColour(QStringLiteral("accent"));
  for (const ItemRef ref : document_.chosen()) {
    const QRectF at = contentRect(ref);
    painter.setPen(QPen(accent, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(at);
    if (ref != document_.chosen().back()) continue;
    painter.setBrush(document_.chosen().size() > 1 ? accent : QColor(Qt::white));
    for (int handle = 0; handle < 8; ++handle)
      painter.drawRect(canvas::handleRect(at, handle));
  }
}

void DesignCanvas::paintRulers(QPainter& painter) const {
  const int width = viewport()->width(), height = viewport()->height();
  const QColor ground = skinColour(QStringLiteral("header")), ink = skinColour(QStringLiteral("text"));
  QFont small = font();
  small.setPixelSize(9);
  painter.setFont(small);
  painter.fillRect(0, 0, width, canvas::kRuler, ground);
  painter.setPen(ink);
  // Every millimetre where there is room for it, else every fifth or tenth.
  const int every = scale_ >= 4 ? 1 : scale_ >= 1 ? 5 : 10;
  const int numbered = scale_ >= 2.2 ? 10 : 50;
  const auto& page = document_.current().page;
  const double left = canvas::kRuler + canvas::kGap + page.left * scale_ - horizontalScrollBar()->value();
  for (int mm = 0; mm <= static_cast<int>(page.bodyWidth()); mm += every) {
    const double x = left + mm * scale_;
    if (x < canvas::kRuler || x > width) continue;
    painter.drawLine(QPointF(x, canvas::kRuler), QPointF(x, canvas::kRuler - (mm % 10 == 0  ? 10
                                                                              : mm % 5 == 0 ? 6
                                                                                            : 3)));
    if (mm % numbered == 0) painter.drawText(QPointF(x + 2, 9), QString::number(mm));
  }
  painter.fillRect(0, canvas::kRuler, canvas::kRuler, height - canvas::kRuler, ground);
  for (const Place& place : places_) {
    const QRectF at = toViewport(place.ground);
    for (int mm = 0; mm <= static_cast<int>(at.height() / scale_); mm += every) {
      const double y = at.top() + mm * scale_;
      if (y < canvas::kRuler || y > height) continue;
      painter.drawLine(QPointF(canvas::kRuler, y), QPointF(canvas::kRuler - (mm % 10 == 0  ? 10
                                                                             : mm % 5 == 0 ? 6
                                                                                           : 3),
                                                           y));
      if (mm % numbered == 0 && mm > 0) painter.drawText(QPointF(1, y - 1), QString::number(mm));
    }
  }
  painter.fillRect(0, 0, canvas::kRuler, canvas::kRuler, ground);
  painter.setPen(skinColour(QStringLiteral("line")));
  painter.drawLine(0, canvas::kRuler, width, canvas::kRuler);
  painter.drawLine(canvas::kRuler, 0, canvas::kRuler, height);
  // What is chosen shows on the rulers too.
  if (document_.chosen().empty()) return;
  QColor tint = skinColour(QStringLiteral("accent"));
  tint.setAlpha(70);
  const QRectF at = toViewport(contentRect(document_.chosen().back()));
  painter.fillRect(
      QRectF(at.x(), 0, at.width(), canvas::kRuler).intersected(QRectF(canvas::kRuler, 0, width, canvas::kRuler)),
      tint);
  painter.fillRect(
      QRectF(0, at.y(), canvas::kRuler, at.height()).intersected(QRectF(0, canvas::kRuler, canvas::kRuler, height)),
      tint);
}

}  // namespace jxc::ui
