#include "platform/report/layout.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace jxc::report {

namespace layout_detail {

constexpr std::size_t kMostPages = 20000;
constexpr double kShortestSlip = 10;  // millimetres; no printer cuts less
constexpr double kLeastRoom = 5;      // millimetres that a page always offers, whatever its headers take

QString nowText(const QString& given) {
  return given.isEmpty() ? QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : given;
}

double heights(const std::vector<CompiledBand>& bands) {
  double sum = 0;
  for (const CompiledBand& band : bands)
    sum += band.band->height;
  return sum;
}

}  // namespace layout_detail

Layout::Layout(const Report& report, int pages)
    : report_(report),
      template_(report.template_),
      page_(report.template_.page),
      data_(std::make_shared<Pages::Data>()),
      program_(report.rows_, layout_detail::nowText(report.now_)),
      maker_(program_, *data_, {page_.preprinted, true, report.pictureFolder_, &report.drawings_}),
      pages_(pages),
      rowCount_(report.rows_.rowCount()),
      across_(page_.columns > 1 && page_.flow == Flow::Across) {
  data_->landscape = page_.landscape && !page_.roll;
  addNames();
  data_->title = titleInWords();
  compileBands();
  findGroups();
}

/// One template may be of several documents: its title is "[title]" then. What is no expression stays.
QString Layout::titleInWords() {
  const auto inWords = [&](const Content::Part& part) {
    const QString asItStands = part.isExpression ? u'[' + part.text + u']' : part.text;
    if (!part.isExpression || !part.fault.isEmpty()) return asItStands;
    try {
      return program_.evaluate(part.node, placeOfReport(0)).text();
    } catch (const ExpressionError&) {
      return asItStands;
    }
  };
  const Content title = compileContent(template_.title, program_);
  // A list may be called "商品[库存]": brackets around what nobody has set are words.
  if (!program_.unknownNames().empty()) {
    program_.unknownNames().clear();
    return template_.title;
  }
  QString words;
  for (const Content::Part& part : title.parts)
    words += inWords(part);
  return words;
}

void Layout::addNames() {
  for (const auto& [name, function] : report_.functions_)
    program_.addFunction({name, function.least, function.most, function.call});
  for (const Variable& variable : template_.variables)
    program_.addVariable(variable.name, variable.value);
  for (const auto& [name, expression] : report_.variables_)
    program_.addVariable(name, expression);
}

void Layout::compileBands() {
  groupHeaders_.resize(template_.groups.size());
  groupFooters_.resize(template_.groups.size());
  for (const Band& band : template_.bands) {
    Bands* bands = nullptr;
    const auto level = static_cast<std::size_t>(std::max(0, band.group));
    switch (band.kind) {
      case BandKind::ReportTitle:
        bands = &titles_;
        break;
      case BandKind::PageHeader:
        bands = &pageHeaders_;
        break;
      case BandKind::ColumnHeader:
        bands = &columnHeaders_;
        break;
      case BandKind::GroupHeader:
        if (level < groupHeaders_.size()) bands = &groupHeaders_[level];
        break;
      case BandKind::MasterData:
        bands = &rows_;
        break;
      case BandKind::GroupFooter:
        if (level < groupFooters_.size()) bands = &groupFooters_[level];
        break;
      case BandKind::Summary:
        bands = &summaries_;
        break;
      case BandKind::PageFooter:
        bands = &pageFooters_;
        break;
      case BandKind::Overlay:
        bands = &overlays_;
        break;
    }
    if (!bands) continue;  // of a group that is not there: a model being edited
    bands->push_back(maker_.compile(band));
    const bool fixed = bands == &pageHeaders_ || bands == &pageFooters_ || bands == &overlays_;
    usesPages_ |= !fixed && bands->back().usesPages;
  }
  headerHeight_ = layout_detail::heights(pageHeaders_);
  for (const CompiledBand& band : pageHeaders_)
    firstHeaderHeight_ += band.band->onFirstPage ? band.band->height : 0;
  footerHeight_ = layout_detail::heights(pageFooters_);
  freshRoom_ = page_.pageHeight() - page_.top - page_.bottom - headerHeight_ - footerHeight_ -
               layout_detail::heights(columnHeaders_);
}

/// Rows with the same value follow one another; empty rows, that fill a form up, belong to the group before.
void Layout::findGroups() {
  const std::size_t levels = template_.groups.size();
  groups_.resize(levels);
  groupOf_.resize(levels);
  if (rowCount_ == 0) return;
  std::vector<bool> breaks(static_cast<std::size_t>(rowCount_), false);  // of the outer levels as well
  for (std::size_t level = 0; level < levels; ++level) {
    Node node;
    const QString& by = template_.groups[level].by;
    const QString where = QStringLiteral("分组 %1").arg(level + 1);
    const auto fault = [&](const QString& message) { data_->faults.push_back({where, by, message}); };
    try {
      if (!by.trimmed().isEmpty()) node = program_.compile(by);
    } catch (const ExpressionError& error) {
      fault(error.message);
    }
    QString before;
    bool first = true, failed = false;
    for (int row = 0; row < rowCount_; ++row) {
      const auto at = static_cast<std::size_t>(row);
      if (!program_.isBlank(row)) {
        QString key;
        try {
          key = program_.evaluate(node, placeOfReport(row)).text();
        } catch (const ExpressionError& error) {
          if (!failed) fault(error.message);
          failed = true;
        }
        if (!first && key != before) breaks[at] = true;
        before = key;
        first = false;
      }
      if (row == 0 || breaks[at]) groups_[level].push_back({row, row});
      groups_[level].back().to = row + 1;
      groupOf_[level].push_back(static_cast<int>(groups_[level].size()) - 1);
    }
  }
}

std::shared_ptr<Pages::Data> Layout::run() {
  try {
    openPage();
    placeTitles();
    placeRows();
    placeSummary();
    infos_.back().end = std::max({infos_.back().end, y_, lowest_});
  } catch (const TooManyPages&) {
    data_->faults.push_back(
        {template_.title, {}, QStringLiteral("超过%1页，其余未排版").arg(layout_detail::kMostPages)});
  }
  decorate();
  data_->faces = maker_.faces().styles();
  data_->texts.squeeze();
  return data_;
}

// ---- pages and columns ----

void Layout::openPage() {
  if (data_->sheets.size() >= layout_detail::kMostPages) throw TooManyPages();
  data_->sheets.push_back({static_cast<float>(page_.pageWidth()), static_cast<float>(page_.pageHeight()), {}});
  infos_.emplace_back();
  pageEmpty_ = fresh_ = true;
  column_ = cell_ = 0;
  lineHeight_ = 0;
  y_ = page_.top;
  if (infos_.size() > 1) {
    infos_.back().headerTop = y_;
    y_ += headerHeight_;
  }
  columnTop_ = columnStart_ = lowest_ = y_;
}

/// Column headers, and the headers of groups that go on.
void Layout::startColumn() {
  for (CompiledBand& band : rows_)
    BandMaker::forget(band);
  y_ = columnStart_ = columnTop_;
  fresh_ = true;
  if (!inRows_) return;
  const int columns = across_ ? page_.columns : 1;
  double height = 0;
  for (CompiledBand& band : columnHeaders_) {
    for (int i = 0; i < columns; ++i) {
      const Place place = placeOfReport(row_);
      maker_.make(band, place, page_.columnWidth(), false, scratch_);
      if (!scratch_.isVisible) break;
      const double x = across_ ? page_.left + i * (page_.columnWidth() + page_.columnGap) : columnX();
      emit(scratch_, x, y_ + height);
    }
    if (scratch_.isVisible) height += scratch_.height;
  }
  y_ += height;
  columnStart_ = y_;
  repeatHeaders();
  columnStart_ = y_;
  lowest_ = std::max(lowest_, y_);
}

double Layout::columnX() const {
  return page_.left + (across_ ? 0 : column_ * (page_.columnWidth() + page_.columnGap));
}

double Layout::room() const {
  const double rest = page_.pageHeight() - page_.bottom - footerHeight_ - y_;
  return atTop() ? std::max(rest, layout_detail::kLeastRoom) : rest;
}

void Layout::advance() {
  infos_.back().end = std::max({infos_.back().end, y_, lowest_});
  lowest_ = std::max(lowest_, y_);
  if (inRows_ && !across_ && column_ + 1 < page_.columns) {
    ++column_;
    startColumn();
    return;
  }
  nextPage();
}

void Layout::nextPage() {
  infos_.back().end = std::max({infos_.back().end, y_, lowest_});
  openPage();
  startColumn();
}

void Layout::closeLine() {
  if (cell_ == 0) return;
  y_ += lineHeight_;
  lineHeight_ = 0;
  cell_ = 0;
}

/// `reserve`: what should stand on the same page behind it.
void Layout::placeBand(CompiledBand& band, const Place& place, double reserve, bool inColumn) {
  if (band.band->newPage && !pageEmpty_) nextPage();
  const double width = inColumn && !across_ ? page_.columnWidth() : page_.bodyWidth();
  Place here = place;
  here.page = static_cast<int>(infos_.size());
  maker_.make(band, here, width, false, block_);
  if (!block_.isVisible) return;
  if (reserve + block_.height > freshRoom_) reserve = 0;
  const bool fits = block_.height + reserve <= room() + kHair;
  if (!fits && !atTop() && !(band.band->splits && block_.height > room())) {
    advance();
    if (band.usesPage) {
      here.page = static_cast<int>(infos_.size());
      maker_.make(band, here, width, false, block_);
    }
  }
  if (block_.height <= room() + kHair) {
    emit(block_, inColumn ? columnX() : page_.left, y_);
    y_ += block_.height;
  } else {
    emitSlices(block_, inColumn ? columnX() : page_.left);
  }
  pageEmpty_ = false;
  lowest_ = std::max(lowest_, y_);
}

void Layout::emit(const Block& block, double x, double y) {
  emit(data_->sheets.back(), block, x, y);
}

void Layout::emit(Sheet& sheet, const Block& block, double x, double y) {
  const auto base = static_cast<std::uint32_t>(data_->texts.size());
  data_->texts += block.texts;
  for (Piece piece : block.pieces) {
    piece.x += static_cast<float>(x);
    piece.y += static_cast<float>(y);
    if (piece.kind == Piece::Kind::Text || piece.kind == Piece::Kind::Spread) piece.first += base;
    sheet.pieces.push_back(piece);
  }
}

namespace layout_detail {

/// Frames and grounds may be cut at the foot of a page; letters and pictures may not.
bool mayCut(const Piece& piece) {
  return piece.kind == Piece::Kind::Fill || piece.kind == Piece::Kind::Frame ||
         (piece.kind == Piece::Kind::Line && piece.width == 0) ||
         (piece.kind == Piece::Kind::Shape && piece.detail == static_cast<int>(ShapeKind::Rectangle));
}

}  // namespace layout_detail

void Layout::emitPart(const Block& block, double from, double to, double x, double y) {
  Block part;
  part.texts = block.texts;
  for (Piece piece : block.pieces) {
    const double top = piece.y, bottom = piece.y + piece.height;
    if (layout_detail::mayCut(piece)) {
      if (bottom <= from || top >= to) continue;
      piece.y = static_cast<float>(std::max(top, from));
      piece.height = static_cast<float>(std::min(bottom, to)) - piece.y;
    } else if (top < from - kHair || top >= to - kHair) {
      continue;
    }
    piece.y -= static_cast<float>(from);
    part.pieces.push_back(piece);
  }
  emit(part, x, y);
}

/// The lowest place up to `to` where nothing is cut through that must stay whole.
double Layout::cutBefore(const Block& block, double from, double to) const {
  double cut = to;
  for (bool moved = true; moved;) {
    moved = false;
    for (const Piece& piece : block.pieces) {
      if (layout_detail::mayCut(piece)) continue;
      const double top = piece.y, bottom = piece.y + piece.height;
      if (top > from + kHair && top < cut - kHair && bottom > cut + kHair) {
        cut = top;
        moved = true;
      }
    }
  }
  return cut;
}

/// A band that is higher than the room is cut between its lines; what is higher than a page has to be.
void Layout::emitSlices(const Block& block, double x) {
  const double column = x - columnX();
  for (double from = 0;;) {
    const double rest = block.height - from;
    if (rest <= room() + kHair) {
      emitPart(block, from, block.height + 1, columnX() + column, y_);
      y_ += rest;
      return;
    }
    double cut = cutBefore(block, from, from + room());
    if (cut - from < 1) {
      if (!atTop()) {
        advance();
        continue;
      }
      cut = from + room();
    }
    emitPart(block, from, cut, columnX() + column, y_);
    y_ += cut - from;
    pageEmpty_ = false;
    from = cut;
    advance();
  }
}

// ---- what has its fixed place on every page ----

void Layout::decorate() {
  maker_.setGrowing(false);
  pages_ = static_cast<int>(infos_.size());
  for (int page = 0; page < pages_; ++page)
    decoratePage(page);
}

void Layout::decoratePage(int page) {
  PageInfo& info = infos_[static_cast<std::size_t>(page)];
  Sheet& sheet = data_->sheets[static_cast<std::size_t>(page)];
  const bool isFirst = page == 0, isLast = page + 1 == pages_;
  Place place;
  place.page = page + 1;
  place.pages = pages_;
  place.pageKnown = true;
  if (info.firstRow >= 0) place.onPage = {info.firstRow, info.lastRow + 1};
  place.scope = place.onPage;
  place.group = {0, rowCount_};
  const int first = info.firstRow >= 0 ? info.firstRow : rowCount_ - 1;
  const int last = info.firstRow >= 0 ? lastFilledRow(info.firstRow, info.lastRow) : rowCount_ - 1;

  const auto put = [&](CompiledBand& band, double x, double y, std::vector<Piece>* behind,
                       std::optional<bool> background = {}) {
    maker_.make(band, place, page_.bodyWidth(), false, scratch_, background);
    if (!scratch_.isVisible) return;
    const std::size_t before = sheet.pieces.size();
    emit(sheet, scratch_, x, y);
    if (!behind) return;
    behind->assign(sheet.pieces.begin() + static_cast<std::ptrdiff_t>(before), sheet.pieces.end());
    sheet.pieces.resize(before);
  };
  const auto shows = [&](const CompiledBand& band) {
    return (!isFirst || band.band->onFirstPage) && (!isLast || band.band->onLastPage);
  };

  if (page_.roll) {
    const double used = std::max(layout_detail::kShortestSlip, info.end + footerHeight_ + page_.bottom);
    sheet.height = static_cast<float>(std::min(page_.pageHeight(), used));
  }
  place.row = first;
  for (CompiledBand& band : overlays_) {
    std::vector<Piece> behind;
    if (shows(band)) put(band, page_.left, page_.top, &behind, true);
    sheet.pieces.insert(sheet.pieces.begin(), behind.begin(), behind.end());
  }
  double y = info.headerTop;
  for (CompiledBand& band : pageHeaders_) {
    if (info.headerTop < 0 || (isFirst && !band.band->onFirstPage)) continue;
    if (shows(band)) put(band, page_.left, y, nullptr);
    y += band.band->height;
  }
  place.row = last;
  y = sheet.height - page_.bottom - footerHeight_;
  for (CompiledBand& band : pageFooters_) {
    if (shows(band)) put(band, page_.left, y, nullptr);
    y += band.band->height;
  }
  for (CompiledBand& band : overlays_) {
    if (shows(band)) put(band, page_.left, page_.top, nullptr, false);
  }
  sheet.pieces.shrink_to_fit();
}

}  // namespace jxc::report
