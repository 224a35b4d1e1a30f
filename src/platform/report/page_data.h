// 页面数据: what stands on prepared pages, as small pieces that share texts, faces and pens.
#pragma once

#include "platform/report/pages.h"
#include "platform/report/template.h"

#include <QByteArray>
#include <QCache>
#include <QFont>
#include <QImage>
#include <QString>

#include <cstdint>
#include <vector>

namespace jxc::report {

/// Something on paper; lengths in millimetres from the page's upper left corner.
struct Piece {
  enum class Kind : std::uint8_t {
    Text,    // one line; x, y its corner before turning; `first` and `count` in Data::texts
    Spread,  // the same with its characters across the width
    Line,
    Rising,   // a line from the lower left to the upper right
    Frame,    // the sides in `detail`
    Shape,    // ShapeKind in `detail`, colour of its fill in `first` unless `count` is 0
    Fill,     // colour in `first`
    Picture,  // `first` in Data::pictures, PictureFit in `detail`
    Bars      // `first` in Data::bits, `count` columns << 12 | rows
  };
  Kind kind = Kind::Text;
  std::uint8_t detail = 0;
  std::uint8_t turn = 0;    // quarters of a circle, clockwise, around x and y
  std::uint16_t style = 0;  // face of a text, else pen
  float x = 0, y = 0, width = 0, height = 0;
  std::uint32_t first = 0, count = 0;

  QRectF area() const;
};
static_assert(sizeof(Piece) == 32);

struct Sheet {
  float width = 210, height = 297;
  std::vector<Piece> pieces;
};

/// A picture by its file, its own bytes or its drawing.
struct PictureSource {
  QString file;
  QByteArray bytes;
  Drawing drawing;
};

struct Pages::Data {
  QString title;
  bool landscape = false;
  std::vector<Sheet> sheets;
  std::vector<FontStyle> faces;
  std::vector<Pen> pens;
  QString texts;
  std::vector<std::uint8_t> bits;
  std::vector<PictureSource> pictures;
  std::vector<Fault> faults;

  // Made when they are first painted.
  struct Face {
    QFont font;
    double ascent = 0;
    bool outlined = false;
  };
  mutable std::vector<Face> fonts;
  mutable QCache<quint64, QImage> images{64 << 10};  // kilobytes
};

}  // namespace jxc::report
