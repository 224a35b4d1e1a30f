#include "platform/report/typeface.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace jxc::report {

namespace typeface_detail {

constexpr double kMillimetresPerPoint = 25.4 / 72;

/// What may not begin a line, and what may not end one.
constexpr QStringView kClosing = u"，。、；：！？）》」』】〉”’…—·％%℃,.;:!?)]}";
constexpr QStringView kOpening = u"（《「『【〈“‘￥$¥([{";

bool isIdeograph(QChar c) {
  return c.unicode() >= 0x2E80;
}

/// Whether a line may end between the two.
bool mayBreak(QChar before, QChar behind) {
  if (kClosing.contains(behind) || kOpening.contains(before) || behind == u' ') return false;
  if (before == u' ') return true;
  if (before == u'-' && behind.isLetter()) return true;
  return isIdeograph(before) || isIdeograph(behind) || kClosing.left(17).contains(before);
}

QStringList familiesOf(const FontStyle& style) {
  QStringList families{QStringLiteral("Microsoft YaHei"), QStringLiteral("WenQuanYi Micro Hei"),
                       QStringLiteral("Noto Sans CJK SC")};
  if (!style.family.isEmpty()) families.prepend(style.family);
  return families;
}

bool hasBold(const QString& family) {
  static QHash<QString, bool> known;
  const auto found = known.constFind(family);
  if (found != known.constEnd()) return *found;
  QFont font;
  font.setFamilies({family});
  const QString actual = QFontInfo(font).family();
  const QStringList styles = QFontDatabase::styles(actual);
  const bool bold = std::any_of(styles.begin(), styles.end(), [&](const QString& style) {
    return QFontDatabase::weight(actual, style) >= QFont::DemiBold;
  });
  known.insert(family, bold);
  return bold;
}

/// The family that will be used: the first one that is installed.
QString firstInstalled(const QStringList& families) {
  for (const QString& family : families) {
    if (QFontDatabase::hasFamily(family)) return family;
  }
  return families.last();
}

}  // namespace typeface_detail

bool needsOutline(const FontStyle& style) {
  using namespace typeface_detail;
  return style.bold && !hasBold(firstInstalled(familiesOf(style)));
}

QFont reportFont(const FontStyle& style) {
  QFont font;
  font.setFamilies(typeface_detail::familiesOf(style));
  const double units = style.size * typeface_detail::kMillimetresPerPoint * unitsPerMillimetre;
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(units))));
  font.setBold(style.bold && !needsOutline(style));
  font.setItalic(style.italic);
  font.setUnderline(style.underline);
  font.setStrikeOut(style.strikeOut);
  // Widths must add up and be the same on every device.
  font.setKerning(false);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

Typeface::Typeface(const FontStyle& style) : style_(style), font_(reportFont(style)) {
  const QFontMetricsF metrics(font_);
  ascent_ = metrics.ascent() / unitsPerMillimetre;
  lineHeight_ = metrics.height() / unitsPerMillimetre;
}

float Typeface::advance(QStringView text, qsizetype at, int& units) const {
  const QChar c = text[at];
  units = 1;
  if (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
    units = 2;
    return static_cast<float>(QFontMetricsF(font_).horizontalAdvance(text.mid(at, 2).toString()) / unitsPerMillimetre);
  }
  auto& block = advances_[c.unicode() >> 8];
  if (!block) {
    block = std::make_unique<Block>();
    block->fill(-1);
  }
  float& width = (*block)[c.unicode() & 255];
  if (width < 0) width = static_cast<float>(QFontMetricsF(font_).horizontalAdvance(c) / unitsPerMillimetre);
  return width;
}

double Typeface::width(QStringView text) const {
  double sum = 0;
  int units = 1;
  for (qsizetype at = 0; at < text.size(); at += units)
    sum += advance(text, at, units);
  return sum;
}

qsizetype Typeface::fitting(QStringView text, double most) const {
  double sum = 0;
  int units = 1;
  for (qsizetype at = 0; at < text.size(); at += units) {
    sum += advance(text, at, units);
    if (sum > most) return at;
  }
  return text.size();
}

void Typeface::breakLines(QStringView text, double most, std::vector<Line>& lines) const {
  lines.clear();
  qsizetype from = 0;
  for (;;) {
    qsizetype to = text.indexOf(u'\n', from);
    const bool last = to < 0;
    if (last) to = text.size();
    breakLine(text, from, to, most, lines);
    if (last) return;
    from = to + 1;
  }
}

void Typeface::breakLine(QStringView text, qsizetype from, qsizetype to, double most, std::vector<Line>& lines) const {
  const auto add = [&](qsizetype end) {
    qsizetype shown = end;
    while (shown > from && text[shown - 1] == u' ')
      --shown;
    lines.push_back({from, shown - from, width(text.mid(from, shown - from))});
  };
  double sum = 0;
  qsizetype lastBreak = from;
  int units = 1;
  for (qsizetype at = from; at < to; at += units) {
    if (at > from && typeface_detail::mayBreak(text[at - 1], text[at])) lastBreak = at;
    sum += advance(text, at, units);
    // A hair over is no reason to break: widths of a column are worked out in decimals.
    if (most <= 0 || sum <= most + 0.001 || text[at] == u' ' || at == from) continue;
    // A word longer than the line is cut where the line is full.
    const qsizetype end = lastBreak > from ? lastBreak : at;
    add(end);
    from = lastBreak = end;
    sum = width(text.mid(end, at + units - end));
  }
  add(to);
}

int Typefaces::indexOf(const FontStyle& style) {
  const auto found =
      std::find_if(faces_.begin(), faces_.end(), [&](const auto& face) { return face->style() == style; });
  if (found != faces_.end()) return static_cast<int>(found - faces_.begin());
  faces_.push_back(std::make_unique<Typeface>(style));
  return static_cast<int>(faces_.size()) - 1;
}

std::vector<FontStyle> Typefaces::styles() const {
  std::vector<FontStyle> result;
  for (const auto& face : faces_)
    result.push_back(face->style());
  return result;
}

}  // namespace jxc::report
