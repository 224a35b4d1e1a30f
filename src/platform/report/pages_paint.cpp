#include "platform/report/page_data.h"
#include "platform/report/pages.h"
#include "platform/report/typeface.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImageReader>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace jxc::report {

namespace pages_paint_detail {

constexpr double kPrintDpi = 300;  // pictures keep no more dots than a printer shows

/// Paints the pieces of one page on the grid of `unitsPerMillimetre`.
class Painter {
 public:
  Painter(QPainter& painter, const Pages::Data& data) : painter_(painter), data_(data) {}

  void paint(const Sheet& sheet) {
    for (const Piece& piece : sheet.pieces)
      paint(piece);
  }

 private:
  using Kind = Piece::Kind;

  static QRectF area(const Piece& piece) {
    constexpr double u = unitsPerMillimetre;
    return {piece.x * u, piece.y * u, piece.width * u, piece.height * u};
  }

  void paint(const Piece& piece) {
    switch (piece.kind) {
      case Kind::Text:
      case Kind::Spread:
        text(piece);
        return;
      case Kind::Line:
      case Kind::Rising:
        line(piece);
        return;
      case Kind::Frame:
        frame(piece);
        return;
      case Kind::Shape:
        shape(piece);
        return;
      case Kind::Fill:
        painter_.setRenderHint(QPainter::Antialiasing, false);
        painter_.fillRect(area(piece), QColor::fromRgba(piece.first));
        return;
      case Kind::Picture:
        picture(piece);
        return;
      case Kind::Bars:
        bars(piece);
        return;
    }
  }

  const Pages::Data::Face& face(std::uint16_t index) {
    auto& fonts = data_.fonts;
    if (fonts.size() != data_.faces.size()) {
      fonts.clear();
      for (const FontStyle& style : data_.faces) {
        const QFont font = reportFont(style);
        fonts.push_back({font, QFontMetricsF(font).ascent(), needsOutline(style)});
      }
    }
    return fonts[index];
  }

  void text(const Piece& piece) {
    const QRectF place = area(piece);
    const QString words = data_.texts.mid(piece.first, piece.count);
    const auto& face = this->face(piece.style);
    if (font_ != piece.style) {
      painter_.setFont(face.font);
      font_ = piece.style;
    }
    const QColor& colour = data_.faces[piece.style].colour;
    painter_.setPen(colour);
    const bool turned = piece.turn != 0;
    if (turned) {
      painter_.save();
      painter_.translate(place.topLeft());
      painter_.rotate(90 * piece.turn);
    }
    const QPointF at = turned ? QPointF(0, face.ascent) : QPointF(place.x(), place.y() + face.ascent);
    if (piece.kind == Kind::Text)
      letters(at, words, face, colour);
    else
      spread(at, words, place.width(), face, colour);
    if (turned) painter_.restore();
  }

  void letters(const QPointF& at, const QString& words, const Pages::Data::Face& face, const QColor& colour) {
    painter_.drawText(at, words);
    if (!face.outlined) return;
    QPainterPath outline;
    outline.addText(at, face.font, words);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.strokePath(outline, QPen(colour, face.font.pixelSize() * outlineWidth));
  }

  /// Letter by letter: the letter spacing of a font is another one on every device.
  void spread(QPointF at, const QString& words, double width, const Pages::Data::Face& face, const QColor& colour) {
    const QFontMetricsF metrics(face.font);
    const QList<uint> characters = words.toUcs4();
    const double gap = (width - metrics.horizontalAdvance(words)) / static_cast<double>(characters.size() - 1);
    for (const uint character : characters) {
      const auto code = static_cast<char32_t>(character);
      const QString letter = QString::fromUcs4(&code, 1);
      letters(at, letter, face, colour);
      at.rx() += metrics.horizontalAdvance(letter) + gap;
    }
  }

  void usePen(const Pen& style, double share = 1) {
    QPen pen(style.colour, style.width * unitsPerMillimetre * share);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    if (style.style == PenStyle::Dash) pen.setDashPattern({6, 4});
    if (style.style == PenStyle::Dot) pen.setDashPattern({1.5, 2});
    if (style.width <= 0) pen.setCosmetic(true);
    painter_.setPen(pen);
  }

  void stroke(const QPointF& a, const QPointF& b, const Pen& pen) {
    const bool straight = a.x() == b.x() || a.y() == b.y();
    painter_.setRenderHint(QPainter::Antialiasing, !straight);
    if (pen.style != PenStyle::Double) {
      usePen(pen);
      painter_.drawLine(a, b);
      return;
    }
    // Two lines with a gap between, together three times as wide.
    const QPointF along = b - a;
    const double length = std::hypot(along.x(), along.y());
    if (length <= 0) return;
    const QPointF aside = QPointF(-along.y(), along.x()) / length * pen.width * unitsPerMillimetre;
    usePen(pen);
    painter_.drawLine(a + aside, b + aside);
    painter_.drawLine(a - aside, b - aside);
  }

  void line(const Piece& piece) {
    const QRectF place = area(piece);
    const Pen& pen = data_.pens[piece.style];
    if (piece.kind == Kind::Rising)
      stroke(place.bottomLeft(), place.topRight(), pen);
    else
      stroke(place.topLeft(), place.bottomRight(), pen);
  }

  void frame(const Piece& piece) {
    const QRectF place = area(piece);
    const Pen& pen = data_.pens[piece.style];
    // Lines reach half their width further, so that corners are square.
    const double half = pen.style == PenStyle::Solid ? pen.width * unitsPerMillimetre / 2 : 0;
    const QPointF across(half, 0), down(0, half);
    if (piece.detail & side::left) stroke(place.topLeft() - down, place.bottomLeft() + down, pen);
    if (piece.detail & side::top) stroke(place.topLeft() - across, place.topRight() + across, pen);
    if (piece.detail & side::right) stroke(place.topRight() - down, place.bottomRight() + down, pen);
    if (piece.detail & side::bottom) stroke(place.bottomLeft() - across, place.bottomRight() + across, pen);
  }

  void shape(const Piece& piece) {
    const QRectF place = area(piece);
    const auto kind = static_cast<ShapeKind>(piece.detail);
    QPainterPath path;
    switch (kind) {
      case ShapeKind::Rectangle:
        path.addRect(place);
        break;
      case ShapeKind::RoundedRectangle: {
        const double radius = std::min({place.width() / 4, place.height() / 4, 2 * unitsPerMillimetre});
        path.addRoundedRect(place, radius, radius);
        break;
      }
      case ShapeKind::Ellipse:
        path.addEllipse(place);
        break;
      case ShapeKind::Triangle:
        path.addPolygon(QPolygonF({QPointF(place.center().x(), place.top()), place.bottomRight(), place.bottomLeft()}));
        path.closeSubpath();
        break;
      case ShapeKind::Diamond:
        path.addPolygon(
            QPolygonF({QPointF(place.center().x(), place.top()), QPointF(place.right(), place.center().y()),
                       QPointF(place.center().x(), place.bottom()), QPointF(place.left(), place.center().y())}));
        path.closeSubpath();
        break;
    }
    painter_.setRenderHint(QPainter::Antialiasing, kind != ShapeKind::Rectangle);
    usePen(data_.pens[piece.style]);
    painter_.setBrush(piece.count ? QBrush(QColor::fromRgba(piece.first)) : QBrush(Qt::NoBrush));
    painter_.drawPath(path);
    painter_.setBrush(Qt::NoBrush);
  }

  const QImage* image(const Piece& piece) {
    const QSizeF most(piece.width / 25.4 * kPrintDpi, piece.height / 25.4 * kPrintDpi);
    const quint64 key = static_cast<quint64>(piece.first) << 32 | static_cast<quint64>(most.width()) << 16 |
                        static_cast<quint64>(most.height());
    if (const QImage* known = data_.images.object(key)) return known;
    const PictureSource& source = data_.pictures[piece.first];
    QBuffer buffer;
    QImageReader reader;
    if (source.bytes.isEmpty()) {
      reader.setFileName(source.file);
    } else {
      buffer.setData(source.bytes);
      buffer.open(QIODevice::ReadOnly);
      reader.setDevice(&buffer);
    }
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > 2 * most.width() || size.height() > 2 * most.height())) {
      reader.setScaledSize(size.scaled(most.toSize() + QSize(1, 1), Qt::KeepAspectRatioByExpanding));
    }
    auto read = std::make_unique<QImage>(reader.read());
    if (read->isNull()) return nullptr;
    const auto kilobytes = static_cast<int>(read->sizeInBytes() / 1024) + 1;
    const QImage* shown = read.get();
    if (kilobytes > data_.images.maxCost()) {  // too large to keep
      large_ = *read;
      return &large_;
    }
    data_.images.insert(key, read.release(), kilobytes);
    return shown;
  }

  void drawing(const Piece& piece, const Drawing& draw) {
    const QRectF place = area(piece);
    const QSizeF size = piece.turn % 2 == 0 ? place.size() : place.size().transposed();
    painter_.save();
    painter_.translate(place.center());
    painter_.rotate(90 * piece.turn);
    draw(painter_, QRectF(QPointF(-size.width() / 2, -size.height() / 2), size));
    painter_.restore();
  }

  void picture(const Piece& piece) {
    if (const Drawing& draw = data_.pictures[piece.first].drawing) return drawing(piece, draw);
    const QImage* shown = image(piece);
    if (!shown) return;
    const QRectF place = area(piece);
    painter_.save();
    painter_.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter_.translate(place.center());
    painter_.rotate(90 * piece.turn);
    const QSizeF box = piece.turn % 2 == 0 ? place.size() : place.size().transposed();
    QSizeF size = box;
    if (static_cast<PictureFit>(piece.detail) == PictureFit::Inside)
      size = QSizeF(shown->size()).scaled(box, Qt::KeepAspectRatio);
    if (static_cast<PictureFit>(piece.detail) == PictureFit::Original) {
      size = QSizeF(shown->size()) * (25.4 / 96 * unitsPerMillimetre);
      painter_.setClipRect(QRectF(QPointF(-box.width() / 2, -box.height() / 2), box), Qt::IntersectClip);
    }
    painter_.drawImage(QRectF(QPointF(-size.width() / 2, -size.height() / 2), size), *shown);
    painter_.restore();
  }

  void bars(const Piece& piece) {
    const int columns = static_cast<int>(piece.count >> 12), rows = static_cast<int>(piece.count & 0xFFF);
    const QRectF place = area(piece);
    painter_.save();
    painter_.translate(place.topLeft());
    painter_.rotate(90 * piece.turn);
    double moduleWidth = place.width() / columns, moduleHeight = place.height() / rows;
    double x0 = 0, y0 = 0;
    bool smooth = false;
    if (painter_.paintEngine() && painter_.paintEngine()->type() == QPaintEngine::Raster) {
      // On dots every module is the same number of them, or a reader sees bars of uneven width.
      const QTransform device = painter_.deviceTransform();
      const double dots = std::hypot(device.m11(), device.m12());
      const double across = std::floor(moduleWidth * dots + 0.001), down = std::floor(moduleHeight * dots + 0.001);
      smooth = across < 1 || down < 1;
      if (!smooth) {
        const double wholeWidth = across / dots;
        x0 = (place.width() - wholeWidth * columns) / 2;
        moduleWidth = wholeWidth;
        if (rows > 1) {
          y0 = (place.height() - down / dots * rows) / 2;
          moduleHeight = down / dots;
        }
        const QPointF at = device.map(QPointF(x0, y0));
        const QPointF whole = device.inverted().map(QPointF(std::round(at.x()), std::round(at.y())));
        x0 = whole.x();
        y0 = whole.y();
      }
    }
    painter_.setRenderHint(QPainter::Antialiasing, smooth);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Qt::black);
    const auto isBlack = [&](int column, int row) {
      const int at = row * columns + column;
      return data_.bits[piece.first + static_cast<std::size_t>(at / 8)] >> (at % 8) & 1;
    };
    QVector<QRectF> black;
    for (int row = 0; row < rows; ++row) {
      for (int column = 0; column < columns;) {
        int end = column;
        while (end < columns && isBlack(end, row))
          ++end;
        if (end > column) {
          black << QRectF(x0 + column * moduleWidth, y0 + row * moduleHeight, (end - column) * moduleWidth,
                          moduleHeight);
        }
        column = end + 1;
      }
    }
    painter_.drawRects(black);
    painter_.setBrush(Qt::NoBrush);
    painter_.restore();
    font_ = -1;
  }

  QPainter& painter_;
  const Pages::Data& data_;
  int font_ = -1;  // face that the painter has
  QImage large_;
};

}  // namespace pages_paint_detail

void Pages::paint(QPainter& painter, int page, double scale) const {
  painter.save();
  painter.scale(scale / unitsPerMillimetre, scale / unitsPerMillimetre);
  pages_paint_detail::Painter(painter, *data_).paint(data_->sheets.at(static_cast<std::size_t>(page)));
  painter.restore();
}

}  // namespace jxc::report
