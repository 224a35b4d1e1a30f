#include "platform/report/layout.h"

#include <algorithm>

namespace jxc::report {

Place Layout::placeOfReport(int row) const {
  Place place;
  place.row = row;
  place.scope = place.group = {0, rowCount_};
  place.page = static_cast<int>(std::max<std::size_t>(1, infos_.size()));
  place.pages = pages_;
  return place;
}

Place Layout::placeOfGroup(int level, int row) const {
  Place place = placeOfReport(row);
  const auto at = static_cast<std::size_t>(level);
  place.scope = place.group = groups_[at][static_cast<std::size_t>(groupOf_[at][static_cast<std::size_t>(row)])];
  return place;
}

Place Layout::placeOfRow(int row) const {
  const int levels = static_cast<int>(groups_.size());
  return levels > 0 ? placeOfGroup(levels - 1, row) : placeOfReport(row);
}

int Layout::lastFilledRow(int from, int to) const {
  for (int row = to; row > from; --row) {
    if (!program_.isBlank(row)) return row;
  }
  return from;
}

void Layout::placeTitles() {
  for (CompiledBand& band : titles_)
    placeBand(band, placeOfReport(rowCount_ > 0 ? 0 : -1), 0, false);
  // The page header follows the title; a title that fills its page has none.
  if (infos_.size() == 1 && firstHeaderHeight_ > 0) {
    infos_.back().headerTop = y_;
    y_ += firstHeaderHeight_;
  }
  columnTop_ = lowest_ = y_;
}

/// Column headers do not stand alone at the foot of a page that the title has filled.
void Layout::startRows() {
  if (!pageEmpty_ && rowCount_ > 0) {
    double needed = 0;
    for (const CompiledBand& band : columnHeaders_)
      needed += band.band->height;
    for (std::size_t level = 0; level < groups_.size(); ++level)
      needed += heightOf(groupHeaders_[level], placeOfGroup(static_cast<int>(level), 0), page_.columnWidth());
    needed += makeRow(0, scratchBlocks_);
    if (needed > room() + kHair) nextPage();
  }
  inRows_ = true;
  row_ = rowCount_ > 0 ? 0 : -1;
  const bool titled = !pageEmpty_;
  startColumn();
  fresh_ = !titled;
}

void Layout::placeRows() {
  startRows();
  skipCells();
  for (int row = 0; row < rowCount_; ++row) {
    row_ = row;
    if (report_.fixedLines_ > 0 && row > 0 && row % report_.fixedLines_ == 0 && !pageEmpty_) nextPage();
    startGroups(row);
    if (across_) {
      placeCell(row);
    } else {
      placeRow(row);
    }
    endGroups(row);
  }
  closeLine();
  inRows_ = false;
}

/// Labels on a sheet that has been begun.
void Layout::skipCells() {
  double height = 0;
  for (const CompiledBand& band : rows_)
    height += band.band->height;
  for (int i = 0; i < report_.skippedCells_ && rowCount_ > 0 && height > 0 && i < 10000; ++i) {
    if (cell_ == 0 && height > room() + kHair && !atTop()) advance();
    if (across_) {
      lineHeight_ = height;
      if (++cell_ == page_.columns) closeLine();
    } else {
      y_ += height;
    }
    pageEmpty_ = false;
  }
}

double Layout::heightOf(std::span<CompiledBand> bands, const Place& place, double width) {
  double height = 0;
  for (CompiledBand& band : bands) {
    maker_.make(band, place, width, false, scratch_);
    if (scratch_.isVisible) height += scratch_.height;
  }
  return height;
}

double Layout::makeRow(int row, std::vector<Block>& blocks) {
  blocks.resize(rows_.size());
  const Place place = placeOfRow(row);
  double height = 0;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    maker_.make(rows_[i], place, page_.columnWidth(), program_.isBlank(row), blocks[i]);
    if (blocks[i].isVisible) height += blocks[i].height;
  }
  return height;
}

/// Footers of groups, and the summary, do not stand alone on a page.
double Layout::reserveBehind(int row) {
  double height = 0;
  for (int level = static_cast<int>(groups_.size()) - 1; level >= 0; --level) {
    const Place place = placeOfGroup(level, row);
    if (place.group.to != row + 1) return height;
    height += heightOf(groupFooters_[static_cast<std::size_t>(level)], place, page_.columnWidth());
  }
  const bool isLast = row + 1 == rowCount_;
  if (!isLast || page_.columns > 1 || summaries_.empty() || summaries_.front().band->newPage) return height;
  return height + heightOf(summaries_, placeOfReport(lastFilledRow(0, row)), page_.bodyWidth());
}

void Layout::placeRow(int row) {
  if (rows_.empty()) return;
  if (rows_.front().band->newPage && !pageEmpty_) nextPage();
  const double height = makeRow(row, rowBlocks_);
  double reserve = reserveBehind(row);
  if (reserve + height > freshRoom_) reserve = 0;
  const bool splits = rows_.size() == 1 && rows_.front().band->splits && height > room();
  if (height + reserve > room() + kHair && !atTop() && !splits) {
    advance();
    const bool again = std::any_of(rows_.begin(), rows_.end(),
                                   [](const CompiledBand& band) { return band.usesPage || band.remembers; });
    if (again) makeRow(row, rowBlocks_);
  }
  noteRow(row);
  for (const Block& block : rowBlocks_) {
    if (!block.isVisible) continue;
    if (block.height <= room() + kHair) {
      emit(block, columnX(), y_);
      y_ += block.height;
    } else {
      emitSlices(block, columnX());
    }
  }
  pageEmpty_ = false;
  lowest_ = std::max(lowest_, y_);
}

void Layout::noteRow(int row) {
  PageInfo& info = infos_.back();
  if (info.firstRow < 0) info.firstRow = row;
  info.lastRow = row;
}

/// A label: the next cell of the line across the page.
void Layout::placeCell(int row) {
  double height = makeRow(row, rowBlocks_);
  if (cell_ == 0 && height > room() + kHair && !atTop()) {
    advance();
    height = makeRow(row, rowBlocks_);
  }
  noteRow(row);
  const double x = page_.left + cell_ * (page_.columnWidth() + page_.columnGap);
  double y = y_;
  for (const Block& block : rowBlocks_) {
    if (!block.isVisible) continue;
    emit(block, x, y);
    y += block.height;
  }
  lineHeight_ = std::max(lineHeight_, height);
  pageEmpty_ = false;
  lowest_ = std::max(lowest_, y_ + lineHeight_);
  if (++cell_ == page_.columns) closeLine();
}

void Layout::startGroups(int row) {
  const int levels = static_cast<int>(groups_.size());
  for (int level = 0; level < levels; ++level) {
    const Place place = placeOfGroup(level, row);
    if (place.group.from != row) continue;
    closeLine();
    const auto at = static_cast<std::size_t>(level);
    const Group& group = template_.groups[at];
    if (group.newPage && row > 0 && !pageEmpty_) nextPage();
    if (group.keepTogether && !atTop()) {
      const double height = groupHeight(level, row, freshRoom_);
      if (height > room() + kHair && height <= freshRoom_) advance();
    }
    // A header does not stand alone at the foot of a page: its first row comes with it, and what that one needs.
    double reserve = makeRow(row, scratchBlocks_) + reserveBehind(row);
    for (std::size_t inner = at + 1; inner < groups_.size(); ++inner)
      reserve += heightOf(groupHeaders_[inner], placeOfGroup(static_cast<int>(inner), row), page_.columnWidth());
    Bands& headers = groupHeaders_[at];
    for (std::size_t i = 0; i < headers.size(); ++i) {
      const double others = heightOf(std::span(headers).subspan(i + 1), place, page_.columnWidth());
      placeBand(headers[i], place, reserve + others, true);
    }
    for (CompiledBand& band : rows_)
      BandMaker::forget(band);
  }
}

void Layout::endGroups(int row) {
  for (int level = static_cast<int>(groups_.size()) - 1; level >= 0; --level) {
    const Place place = placeOfGroup(level, row);
    if (place.group.to != row + 1) return;
    closeLine();
    Place filled = place;
    filled.row = lastFilledRow(place.group.from, row);
    for (CompiledBand& band : groupFooters_[static_cast<std::size_t>(level)])
      placeBand(band, filled, 0, true);
  }
}

/// On a new page or column the groups that go on say once more which they are.
void Layout::repeatHeaders() {
  if (row_ < 0) return;
  for (std::size_t level = 0; level < groups_.size(); ++level) {
    const Place place = placeOfGroup(static_cast<int>(level), row_);
    const bool goesOn = place.group.from != row_;
    if (!template_.groups[level].repeatHeader || !goesOn) continue;
    for (CompiledBand& band : groupHeaders_[level]) {
      maker_.make(band, place, across_ ? page_.bodyWidth() : page_.columnWidth(), false, scratch_);
      if (!scratch_.isVisible) continue;
      emit(scratch_, columnX(), y_);
      y_ += scratch_.height;
    }
  }
}

/// From this row to the end of its group, with all headers and footers inside; no further than `limit`.
double Layout::groupHeight(int level, int row, double limit) {
  const int end = placeOfGroup(level, row).group.to;
  double height = 0;
  for (int at = row; at < end && height <= limit; ++at) {
    for (int inner = level; inner < static_cast<int>(groups_.size()); ++inner) {
      const Place place = placeOfGroup(inner, at);
      const auto i = static_cast<std::size_t>(inner);
      if (place.group.from == at) height += heightOf(groupHeaders_[i], place, page_.columnWidth());
      if (place.group.to == at + 1) height += heightOf(groupFooters_[i], place, page_.columnWidth());
    }
    height += makeRow(at, scratchBlocks_);
  }
  return height;
}

void Layout::placeSummary() {
  if (summaries_.empty()) return;
  y_ = std::max(y_, lowest_);
  column_ = 0;
  const Place place = placeOfReport(rowCount_ > 0 ? lastFilledRow(0, rowCount_ - 1) : -1);
  const double height = heightOf(summaries_, place, page_.bodyWidth());
  const bool fitsHere = height <= room() + kHair;
  if (!fitsHere && !atTop() && height <= freshRoom_) nextPage();
  if (summaries_.front().band->atBottom && !page_.roll) y_ = std::max(y_, y_ + room() - height);
  for (CompiledBand& band : summaries_)
    placeBand(band, place, 0, false);
}

}  // namespace jxc::report
