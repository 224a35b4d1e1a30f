#include "platform/report/band_block.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace jxc::report {

namespace band_block_detail {

constexpr qsizetype kLongestText = 20000;  // characters of one object: some ten pages
constexpr double kOverhang = 0.15;         // of a line: the air above and below its letters may be outside
const QString kMark = QStringLiteral("#错误");

}  // namespace band_block_detail

BandMaker::BandMaker(Program& program, Pages::Data& data, Options options)
    : program_(program), data_(data), options_(std::move(options)) {}

void BandMaker::note(const QString& where, const QString& content, const QString& message) {
  auto& faults = data_.faults;
  const auto found = std::find_if(faults.begin(), faults.end(), [&](const Fault& fault) {
    return fault.where == where && fault.content == content && fault.message == message;
  });
  if (found != faults.end()) {
    ++found->count;
  } else if (faults.size() < 200) {  // nobody reads more
    faults.push_back({where, content, message});
  }
}

std::uint16_t BandMaker::penIndex(const Pen& pen) {
  auto& pens = data_.pens;
  const auto found = std::find(pens.begin(), pens.end(), pen);
  if (found != pens.end()) return static_cast<std::uint16_t>(found - pens.begin());
  pens.push_back(pen);
  return static_cast<std::uint16_t>(pens.size() - 1);
}

std::optional<Node> BandMaker::condition(const QString& expression, const QString& where, bool& usesPage,
                                         bool& usesPages) {
  if (expression.trimmed().isEmpty()) return {};
  try {
    Node node = program_.compile(expression);
    usesPage |= program_.usesPage(node);
    usesPages |= program_.usesPages(node);
    return node;
  } catch (const ExpressionError& error) {
    note(where, expression, error.message);
    return {};  // shown, so that what is missing is the condition and not the text
  }
}

bool BandMaker::isShown(const std::optional<Node>& condition, const QString& expression, const QString& where,
                        const Place& place) {
  if (!condition) return true;
  try {
    return program_.isTrue(*condition, place);
  } catch (const ExpressionError& error) {
    note(where, expression, error.message);
    return true;
  }
}

CompiledBand BandMaker::compile(const Band& band) {
  CompiledBand compiled;
  compiled.band = &band;
  compiled.where = bandKindLabel(band.kind).toString();
  auto& unknown = program_.unknownNames();
  const auto noteUnknown = [&](const QString& where, const QString& content) {
    // Empty on paper: a document that is not there leaves its names unset. But a misspelt one should be found.
    for (const QString& name : unknown)
      note(where, content, QStringLiteral("没有变量或字段“%1”，按空值打印").arg(name));
    unknown.clear();
  };
  compiled.visible = condition(band.visibleIf, compiled.where, compiled.usesPage, compiled.usesPages);
  noteUnknown(compiled.where, band.visibleIf);
  for (const Item& item : band.items) {
    if (item.background && options_.preprinted) continue;
    CompiledItem& each = compiled.items.emplace_back();
    each.item = &item;
    each.where = compiled.where + QStringLiteral(" / ") +
                 (item.name.isEmpty() ? itemKindLabel(item.kind).toString() : item.name);
    if (item.kind != ItemKind::Line && item.kind != ItemKind::Shape) {
      each.content = compileContent(item.content, program_);
    }
    for (const Content::Part& part : each.content.parts) {
      if (!part.fault.isEmpty()) note(each.where, part.text, part.fault);
    }
    each.visible = condition(item.visibleIf, each.where, compiled.usesPage, compiled.usesPages);
    noteUnknown(each.where, item.content);
    compiled.usesPage |= each.content.usesPage;
    compiled.usesPages |= each.content.usesPages;
    compiled.remembers |= item.hideRepeated;
    each.face = faces_.indexOf(item.font);
    each.pen = penIndex(item.pen);
  }
  compiled.byHeight.resize(compiled.items.size());
  std::iota(compiled.byHeight.begin(), compiled.byHeight.end(), std::size_t{0});
  std::stable_sort(compiled.byHeight.begin(), compiled.byHeight.end(),
                   [&](std::size_t a, std::size_t b) { return compiled.items[a].item->y < compiled.items[b].item->y; });
  return compiled;
}

void BandMaker::forget(CompiledBand& band) {
  if (!band.remembers) return;
  for (CompiledItem& item : band.items)
    item.lastText = QString();
}

void BandMaker::make(CompiledBand& band, const Place& place, double width, bool blank, Block& block,
                     std::optional<bool> background) {
  block.band = &band;
  block.pieces.clear();
  block.texts.resize(0);
  block.height = 0;
  block.isVisible = isShown(band.visible, band.band->visibleIf, band.where, place);
  if (!block.isVisible) return;

  laid_.resize(band.items.size());
  bool grows = false;
  for (std::size_t i = 0; i < band.items.size(); ++i) {
    Laid& laid = laid_[i];
    const Item& item = *band.items[i].item;
    laid.compiled = nullptr;
    laid.delta = laid.shift = 0;
    laid.isFault = laid.isNumber = false;
    laid.text.resize(0);
    laid.lines.clear();
    if (background && item.background != *background) continue;
    if (!isShown(band.items[i].visible, item.visibleIf, band.items[i].where, place)) continue;
    laid.compiled = &band.items[i];
    laid.x = item.x;
    laid.y = item.y;
    laid.width = item.width;
    laid.height = item.height;
    if (!blank) fillIn(laid, place);
    settle(laid);
    grows |= laid.delta > 0;
  }
  const double extra = grows ? grow(band) : 0;
  block.height = band.band->height + extra;

  const bool other = place.row >= 0 && place.row % 2 != 0 && band.band->alternateFill.isValid();
  const QColor& fill = other ? band.band->alternateFill : band.band->fill;
  if (fill.isValid() && background.value_or(true)) {
    Piece piece;
    piece.kind = Piece::Kind::Fill;
    piece.width = static_cast<float>(width);
    piece.height = static_cast<float>(block.height);
    piece.first = fill.rgba();
    block.pieces.push_back(piece);
  }
  for (Laid& laid : laid_) {
    if (!laid.compiled) continue;
    laid.y += laid.shift;
    laid.height += laid.compiled->item->followHeight ? extra - laid.shift : laid.delta;
    put(laid, block);
  }
}

/// What stands below something that grew moves down; returns by how much the band grows.
double BandMaker::grow(CompiledBand& band) {
  constexpr double kHair = 0.01;
  double extra = 0;
  for (std::size_t at = 0; at < band.byHeight.size(); ++at) {
    Laid& laid = laid_[band.byHeight[at]];
    if (!laid.compiled) continue;
    for (std::size_t before = 0; before < at; ++before) {
      const Laid& above = laid_[band.byHeight[before]];
      if (!above.compiled || above.delta + above.shift <= 0) continue;
      if (laid.y >= above.y + above.compiled->item->height - kHair) {
        laid.shift = std::max(laid.shift, above.shift + above.delta);
      }
    }
    extra = std::max(extra, laid.shift + laid.delta);
  }
  return extra;
}

void BandMaker::fillIn(Laid& laid, const Place& place) {
  CompiledItem& compiled = *laid.compiled;
  const Item& item = *compiled.item;
  const auto& parts = compiled.content.parts;
  for (const Content::Part& part : parts) {
    if (!part.isExpression) {
      laid.text += part.text;
      continue;
    }
    if (!part.fault.isEmpty()) {
      laid.text += band_block_detail::kMark;
      laid.isFault = true;
      continue;
    }
    try {
      const Value value = program_.evaluate(part.node, place);
      laid.text += formatValue(value, item.format, item.hideZero);
    } catch (const ExpressionError& error) {
      laid.text += band_block_detail::kMark;
      laid.isFault = true;
      note(compiled.where, part.text, error.message);
    }
  }
  if (item.kind == ItemKind::Picture) return;
  if (laid.text.size() > band_block_detail::kLongestText) laid.text.truncate(band_block_detail::kLongestText);
  if (laid.text.contains(u'\r')) laid.text.remove(u'\r');
  if (laid.text.contains(u'\t')) laid.text.replace(u'\t', u' ');
  if (item.hideRepeated) {
    const bool repeated = laid.text == compiled.lastText;
    compiled.lastText = laid.text;
    if (repeated) laid.text.clear();
  }
}

int BandMaker::sized(const CompiledItem& compiled, double size, bool isFault) {
  if (size == compiled.item->font.size && !isFault) return compiled.face;
  FontStyle style = compiled.item->font;
  style.size = size;
  if (isFault) style.colour = QColor(200, 0, 0);
  return faces_.indexOf(style);
}

namespace band_block_detail {

/// A figure must not lose digits when its place is too small.
bool isFigure(const QString& text) {
  bool hasDigit = false;
  for (const QChar c : text) {
    if (c.isDigit())
      hasDigit = true;
    else if (!QStringView(u".,+-%￥¥$ ").contains(c))
      return false;
  }
  return hasDigit;
}

}  // namespace band_block_detail

/// Chooses the size of type, breaks the lines, and finds how much an object has to grow.
void BandMaker::settle(Laid& laid) {
  const CompiledItem& compiled = *laid.compiled;
  const Item& item = *compiled.item;
  if (item.kind != ItemKind::Text || laid.text.isEmpty()) return;
  constexpr double kSmallest = 4, kStep = 0.5;
  using band_block_detail::kOverhang;
  const bool upright = item.rotation % 180 == 0;
  const double width = std::max(0.1, (upright ? laid.width : laid.height) - 2 * item.paddingX);
  const double height = (upright ? laid.height : laid.width) - 2 * item.paddingY;
  const bool wraps = item.wrap || item.grow;
  const auto heightOf = [&](const Typeface& face, std::size_t lines) {
    return face.lineHeight() * (1 + (static_cast<double>(lines) - 1) * item.lineSpacing);
  };

  const auto fits = [&] {
    const auto widest = std::max_element(laid.lines.begin(), laid.lines.end(),
                                         [](const auto& a, const auto& b) { return a.width < b.width; });
    if (widest->width > width + 0.01) return false;
    const Typeface& face = faces_[laid.face];
    return !wraps || item.grow || heightOf(face, laid.lines.size()) <= height + face.lineHeight() * kOverhang;
  };
  const auto fitsIn = [&](double size) {
    laid.face = sized(compiled, size, laid.isFault);
    faces_[laid.face].breakLines(laid.text, wraps ? width : 0, laid.lines);
    return fits();
  };
  laid.isNumber = !wraps && band_block_detail::isFigure(laid.text);
  if (!fitsIn(item.font.size) && (item.shrink || laid.isNumber) && item.font.size > kSmallest) {
    // The largest size that fits, by halves; the smallest one has to do in any case.
    int low = 0, high = static_cast<int>(std::ceil((item.font.size - kSmallest) / kStep));
    while (high - low > 1) {
      const int middle = (low + high) / 2;
      (fitsIn(kSmallest + middle * kStep) ? low : high) = middle;
    }
    fitsIn(kSmallest + low * kStep);
  }
  if (item.grow && options_.growing && item.rotation == 0) {
    // What air a single line has above and below stays, so that long texts do not stick to their frame.
    const Typeface& face = faces_[laid.face];
    const double air = std::clamp((laid.height - face.lineHeight()) / 2, item.paddingY, std::max(0.8, item.paddingY));
    laid.delta = std::max(0.0, heightOf(face, laid.lines.size()) + 2 * air - laid.height);
  }
}

void BandMaker::put(const Laid& laid, Block& block) {
  const CompiledItem& compiled = *laid.compiled;
  const Item& item = *compiled.item;
  Piece piece;
  piece.style = compiled.pen;
  piece.x = static_cast<float>(laid.x);
  piece.y = static_cast<float>(laid.y);
  piece.width = static_cast<float>(laid.width);
  piece.height = static_cast<float>(laid.height);
  switch (item.kind) {
    case ItemKind::Line:
      piece.kind = item.rising ? Piece::Kind::Rising : Piece::Kind::Line;
      block.pieces.push_back(piece);
      return;
    case ItemKind::Shape:
      piece.kind = Piece::Kind::Shape;
      piece.detail = static_cast<std::uint8_t>(item.shape);
      piece.first = item.fill.rgba();
      piece.count = item.fill.isValid();
      block.pieces.push_back(piece);
      return;
    case ItemKind::Picture:
      if (!laid.text.isEmpty()) putPicture(laid, block);
      return;
    case ItemKind::Barcode:
      if (!laid.text.isEmpty()) putBarcode(laid, block);
      return;
    case ItemKind::Text:
      break;
  }
  if (item.fill.isValid()) {
    Piece fill = piece;
    fill.kind = Piece::Kind::Fill;
    fill.first = item.fill.rgba();
    block.pieces.push_back(fill);
  }
  if (!laid.text.isEmpty()) putText(laid, block);
  if (item.frame != side::none) {
    piece.kind = Piece::Kind::Frame;
    piece.detail = item.frame;
    block.pieces.push_back(piece);
  }
}

/// A line of text at (u, v) of the object as it is before it is turned.
void BandMaker::putLine(const Laid& laid, QStringView text, double u, double v, double width, int face, bool spread,
                        Block& block) {
  const int turn = laid.compiled->item->rotation / 90;
  const double x[] = {u, laid.width - v, laid.width - u, v};
  const double y[] = {v, u, laid.height - v, laid.height - u};
  Piece piece;
  piece.kind = spread ? Piece::Kind::Spread : Piece::Kind::Text;
  piece.turn = static_cast<std::uint8_t>(turn);
  piece.style = static_cast<std::uint16_t>(face);
  piece.x = static_cast<float>(laid.x + x[turn]);
  piece.y = static_cast<float>(laid.y + y[turn]);
  piece.width = static_cast<float>(width);
  piece.height = static_cast<float>(faces_[face].lineHeight());
  piece.first = static_cast<std::uint32_t>(block.texts.size());
  piece.count = static_cast<std::uint32_t>(text.size());
  block.texts += text;
  block.pieces.push_back(piece);
}

void BandMaker::putText(const Laid& laid, Block& block) {
  const Item& item = *laid.compiled->item;
  const Typeface& face = faces_[laid.face];
  const bool upright = item.rotation % 180 == 0;
  const double boxWidth = upright ? laid.width : laid.height, boxHeight = upright ? laid.height : laid.width;
  const double width = std::max(0.1, boxWidth - 2 * item.paddingX), step = face.lineHeight() * item.lineSpacing;

  // Lines that find no room any more are left out, and the last one says so. One is always there.
  std::size_t count = laid.lines.size();
  const double room = boxHeight - 2 * item.paddingY + face.lineHeight() * band_block_detail::kOverhang;
  if (!item.grow || !options_.growing) {
    while (count > 1 && face.lineHeight() + static_cast<double>(count - 1) * step > room + 0.01)
      --count;
  }
  const bool isCut = count < laid.lines.size();
  const double height = face.lineHeight() + static_cast<double>(count - 1) * step;
  double v = item.paddingY;
  if (item.valign == VAlign::Center) v = (boxHeight - height) / 2;
  if (item.valign == VAlign::Bottom) v = boxHeight - item.paddingY - height;
  if (height > boxHeight && item.valign == VAlign::Bottom) v = boxHeight - height;

  for (std::size_t i = 0; i < count; ++i, v += step) {
    const auto& line = laid.lines[i];
    QString text = laid.text.mid(line.from, line.length);
    double textWidth = line.width;
    const bool tooWide = textWidth > width + 0.01;
    if (laid.isNumber && tooWide) {
      text = QStringLiteral("###");  // half a figure would be a wrong one
      textWidth = face.width(text);
    } else if (tooWide || (isCut && i + 1 == count)) {
      const QString dots = QStringLiteral("…");
      text = text.left(face.fitting(text, width - face.width(dots))) + dots;
      textWidth = face.width(text);
    }
    if (text.isEmpty()) continue;
    double u = item.paddingX;
    if (item.align == HAlign::Center) u += (width - textWidth) / 2;
    if (item.align == HAlign::Right) u += width - textWidth;
    const bool spread = item.align == HAlign::Spread && text.size() > 1 && textWidth < width;
    putLine(laid, text, u, v, spread ? width : textWidth, laid.face, spread, block);
  }
}

void BandMaker::putMark(const Laid& laid, const QString& message, Block& block) {
  note(laid.compiled->where, laid.text.left(40), message);
  const int face = sized(*laid.compiled, laid.compiled->item->font.size, true);
  const QString& mark = band_block_detail::kMark;
  putLine(laid, mark, 0, 0, faces_[face].width(mark), face, false, block);
}

const BandMaker::Bars& BandMaker::bars(const QString& text, const Item& item) {
  const QString key = QString::number(static_cast<int>(item.symbology) * 8 + item.correction) + u':' + text;
  const auto known = bars_.constFind(key);
  if (known != bars_.constEnd()) return *known;
  Bars made;
  try {
    const BarcodeField field = encodeBarcode(text, item.symbology, item.correction);
    made.first = static_cast<std::uint32_t>(data_.bits.size());
    made.size = static_cast<std::uint32_t>(field.columns << 12 | field.rows);
    made.shown = field.shown;
    data_.bits.insert(data_.bits.end(), field.bits.begin(), field.bits.end());
  } catch (const ExpressionError& error) {
    made.fault = error.message;
  }
  return *bars_.insert(key, made);
}

void BandMaker::putBarcode(const Laid& laid, Block& block) {
  const CompiledItem& compiled = *laid.compiled;
  const Item& item = *compiled.item;
  const Bars& made = bars(laid.text, item);
  if (laid.isFault || !made.fault.isEmpty()) return putMark(laid, made.fault, block);

  const bool upright = item.rotation % 180 == 0;
  double width = upright ? laid.width : laid.height, height = upright ? laid.height : laid.width;
  const Typeface& face = faces_[compiled.face];
  const bool showsCode = item.showCode && !made.shown.isEmpty();
  if (showsCode) height = std::max(1.0, height - face.lineHeight());
  double u = 0, v = 0;
  if (isSquare(item.symbology)) {
    const double edge = std::min(width, height);
    u = (width - edge) / 2;
    v = (height - edge) / 2;
    width = height = edge;
  }
  Piece piece;
  piece.kind = Piece::Kind::Bars;
  piece.turn = static_cast<std::uint8_t>(item.rotation / 90);
  const double x[] = {u, laid.width - v, laid.width - u, v}, y[] = {v, u, laid.height - v, laid.height - u};
  piece.x = static_cast<float>(laid.x + x[piece.turn]);
  piece.y = static_cast<float>(laid.y + y[piece.turn]);
  piece.width = static_cast<float>(width);
  piece.height = static_cast<float>(height);
  piece.first = made.first;
  piece.count = made.size;
  block.pieces.push_back(piece);
  if (!showsCode) return;
  const double textWidth = face.width(made.shown);
  putLine(laid, made.shown, (width - textWidth) / 2, height, textWidth, compiled.face, false, block);
}

void BandMaker::putPicture(const Laid& laid, Block& block) {
  QString fault;
  const int index = laid.isFault ? -1 : pictureIndex(laid.text, fault);
  if (laid.isFault || !fault.isEmpty()) return putMark(laid, fault, block);
  if (index < 0) return;
  const Item& item = *laid.compiled->item;
  Piece piece;
  piece.kind = Piece::Kind::Picture;
  piece.detail = static_cast<std::uint8_t>(item.fit);
  piece.turn = static_cast<std::uint8_t>(item.rotation / 90);
  piece.x = static_cast<float>(laid.x);
  piece.y = static_cast<float>(laid.y);
  piece.width = static_cast<float>(laid.width);
  piece.height = static_cast<float>(laid.height);
  piece.first = static_cast<std::uint32_t>(index);
  block.pieces.push_back(piece);
}

}  // namespace jxc::report
