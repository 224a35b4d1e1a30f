#include "platform/report/pages.h"

#include "platform/report/page_data.h"
#include "platform/report/typeface.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace jxc::report {

QRectF Piece::area() const {
  const double w = width, h = height;
  switch (turn) {
    case 1:
      return {x - h, y, h, w};
    case 2:
      return {x - w, y - h, w, h};
    case 3:
      return {x, y - w, h, w};
    default:
      return {x, y, w, h};
  }
}

namespace pages_detail {

bool isText(const Piece& piece) {
  return piece.kind == Piece::Kind::Text || piece.kind == Piece::Kind::Spread;
}

QStringView textOf(const Pages::Data& data, const Piece& piece) {
  return QStringView(data.texts).mid(piece.first, piece.count);
}

}  // namespace pages_detail

Pages::Pages() : data_(std::make_shared<const Data>()) {}

int Pages::count() const {
  return static_cast<int>(data_->sheets.size());
}

QString Pages::title() const {
  return data_->title;
}

QSizeF Pages::size(int page) const {
  const Sheet& sheet = data_->sheets.at(static_cast<std::size_t>(page));
  return {sheet.width, sheet.height};
}

bool Pages::isLandscape() const {
  return data_->landscape;
}

const std::vector<Fault>& Pages::faults() const {
  return data_->faults;
}

std::vector<Pages::Hit> Pages::find(const QString& text) const {
  using namespace pages_detail;
  std::vector<Hit> hits;
  if (text.isEmpty()) return hits;
  for (int page = 0; page < count(); ++page) {
    for (const Piece& piece : data_->sheets[static_cast<std::size_t>(page)].pieces) {
      if (!isText(piece)) continue;
      const QStringView whole = textOf(*data_, piece);
      for (qsizetype at = whole.indexOf(text, 0, Qt::CaseInsensitive); at >= 0;
           at = whole.indexOf(text, at + text.size(), Qt::CaseInsensitive)) {
        QRectF area = piece.area();
        if (piece.turn == 0 && piece.kind == Piece::Kind::Text) {
          const QFontMetricsF metrics(reportFont(data_->faces[piece.style]));
          const auto width = [&](qsizetype from, qsizetype length) {
            return metrics.horizontalAdvance(whole.mid(from, length).toString()) / unitsPerMillimetre;
          };
          area = {piece.x + width(0, at), piece.y, width(at, text.size()), piece.height};
        }
        hits.push_back({page, area});
      }
    }
  }
  std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
    const auto key = [](const Hit& hit) {
      return std::tuple(hit.page, std::lround(hit.area.center().y()), hit.area.x());
    };
    return key(a) < key(b);
  });
  return hits;
}

QStringList Pages::lines(int page) const {
  using namespace pages_detail;
  std::vector<const Piece*> texts;
  for (const Piece& piece : data_->sheets.at(static_cast<std::size_t>(page)).pieces) {
    if (isText(piece)) texts.push_back(&piece);
  }
  const auto middle = [](const Piece* piece) { return piece->area().center().y(); };
  std::stable_sort(texts.begin(), texts.end(), [&](const Piece* a, const Piece* b) { return middle(a) < middle(b); });
  QStringList lines;
  for (std::size_t from = 0; from < texts.size();) {
    std::size_t to = from;
    while (to < texts.size() && middle(texts[to]) - middle(texts[from]) < 1)
      ++to;
    const auto begin = texts.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = texts.begin() + static_cast<std::ptrdiff_t>(to);
    std::stable_sort(begin, end, [](const Piece* a, const Piece* b) { return a->x < b->x; });
    QStringList words;
    for (auto at = begin; at != end; ++at)
      words << textOf(*data_, **at).toString();
    lines << words.join(u'\t');
    from = to;
  }
  return lines;
}

std::size_t Pages::memory() const {
  std::size_t bytes = sizeof(Data) + static_cast<std::size_t>(data_->texts.capacity()) * sizeof(QChar) +
                      data_->bits.capacity() + data_->sheets.capacity() * sizeof(Sheet);
  for (const Sheet& sheet : data_->sheets)
    bytes += sheet.pieces.capacity() * sizeof(Piece);
  for (const PictureSource& picture : data_->pictures)
    bytes += static_cast<std::size_t>(picture.bytes.capacity()) + sizeof(PictureSource);
  return bytes;
}

}  // namespace jxc::report
