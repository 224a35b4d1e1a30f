// 字体: the type of a report: measured once a character, lines broken as Chinese and Latin want it.
#pragma once

#include "platform/report/template.h"

#include <QFont>
#include <QString>
#include <QStringView>

#include <array>
#include <memory>
#include <vector>

namespace jxc::report {

/// Fonts are laid out and painted on a grid of this many units a millimetre, so that a text is as wide on every device.
constexpr double unitsPerMillimetre = 100;

/// In units of that grid. An empty family stands for the usual ones.
QFont reportFont(const FontStyle& style);
/// Bold, but the family has no bold letters: those of `reportFont` are then drawn with an outline. (What Qt makes up
/// itself gets lost when it is scaled, and the usual Chinese fonts come in one weight.)
bool needsOutline(const FontStyle& style);
constexpr double outlineWidth = 0.035;  // of the size of type

/// One font in one size; lengths in millimetres.
class Typeface {
 public:
  explicit Typeface(const FontStyle& style);
  const FontStyle& style() const { return style_; }
  const QFont& font() const { return font_; }
  double width(QStringView text) const;
  double ascent() const { return ascent_; }
  double lineHeight() const { return lineHeight_; }

  struct Line {
    qsizetype from = 0, length = 0;
    double width = 0;
  };
  /// At line ends only, when `most` is 0; else also where the line is full.
  void breakLines(QStringView text, double most, std::vector<Line>& lines) const;
  /// The longest beginning that is no wider than `most`.
  qsizetype fitting(QStringView text, double most) const;

 private:
  float advance(QStringView text, qsizetype at, int& units) const;
  void breakLine(QStringView text, qsizetype from, qsizetype to, double most, std::vector<Line>& lines) const;

  FontStyle style_;
  QFont font_;
  double ascent_ = 0, lineHeight_ = 0;
  using Block = std::array<float, 256>;  // negative: not measured yet
  mutable std::array<std::unique_ptr<Block>, 256> advances_;
};

/// The faces of one report, each once.
class Typefaces {
 public:
  int indexOf(const FontStyle& style);
  const Typeface& operator[](int index) const { return *faces_[static_cast<std::size_t>(index)]; }
  std::vector<FontStyle> styles() const;

 private:
  std::vector<std::unique_ptr<Typeface>> faces_;
};

}  // namespace jxc::report
