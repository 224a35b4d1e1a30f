// 排版: the bands of a report put on pages, one after another.
#pragma once

#include "platform/report/band_block.h"
#include "platform/report/report.h"

#include <memory>
#include <span>
#include <vector>

namespace jxc::report {

/// One run over the rows. Bands of a fixed place (page header, page footer, overlay) are left free on the way and
/// filled in at the end, when the rows of each page and the number of pages are known.
struct Layout {
  /// `pages`: how many there will be, for what stands between the rows and says so.
  Layout(const Report& report, int pages);
  std::shared_ptr<Pages::Data> run();
  /// Whether the result depends on the guess.
  bool usesPages() const { return usesPages_; }

 private:
  struct PageInfo {
    int firstRow = -1, lastRow = -1;
    double headerTop = -1;  // negative: no page header
    double end = 0;         // how far down it is used
  };
  struct TooManyPages {};
  static constexpr double kHair = 0.01;
  using Bands = std::vector<CompiledBand>;

  // Preparation
  void compileBands();
  void findGroups();
  void addNames();
  QString titleInWords();

  // layout.cpp: pages and columns
  void openPage();
  void startColumn();
  void advance();  // the next column or page
  void nextPage();
  void closeLine();  // of labels across the page
  double room() const;
  bool atTop() const { return fresh_ && y_ <= columnStart_ + kHair; }
  double columnX() const;
  void placeBand(CompiledBand& band, const Place& place, double reserve, bool inColumn);
  void emit(const Block& block, double x, double y);
  void emit(Sheet& sheet, const Block& block, double x, double y);
  void emitPart(const Block& block, double from, double to, double x, double y);
  double cutBefore(const Block& block, double from, double to) const;
  void emitSlices(const Block& block, double x);
  void decorate();
  void decoratePage(int page);

  // layout_rows.cpp: rows and groups
  void placeTitles();
  void startRows();
  void placeRows();
  void placeRow(int row);
  void placeCell(int row);
  void noteRow(int row);
  void startGroups(int row);
  void endGroups(int row);
  void placeSummary();
  void skipCells();
  void repeatHeaders();
  double makeRow(int row, std::vector<Block>& blocks);
  double heightOf(std::span<CompiledBand> bands, const Place& place, double width);
  double reserveBehind(int row);
  double groupHeight(int level, int row, double limit);
  Place placeOfRow(int row) const;
  Place placeOfGroup(int level, int row) const;
  Place placeOfReport(int row) const;
  int lastFilledRow(int from, int to) const;

  const Report& report_;
  const Template& template_;
  const PageSetup& page_;
  std::shared_ptr<Pages::Data> data_;
  Program program_;
  BandMaker maker_;
  int pages_;
  int rowCount_;
  bool usesPages_ = false, across_ = false;

  Bands titles_, pageHeaders_, columnHeaders_, rows_, summaries_, pageFooters_, overlays_;
  std::vector<Bands> groupHeaders_, groupFooters_;
  std::vector<std::vector<RowRange>> groups_;  // by level: the ranges in order
  std::vector<std::vector<int>> groupOf_;      // by level and row: index into groups_
  std::vector<PageInfo> infos_;

  double headerHeight_ = 0, firstHeaderHeight_ = 0, footerHeight_ = 0, freshRoom_ = 0;
  double y_ = 0, columnTop_ = 0, columnStart_ = 0, lowest_ = 0, lineHeight_ = 0;
  int column_ = 0, cell_ = 0;
  int row_ = -1;           // being placed
  bool inRows_ = false;    // column headers and group headers belong on a new page
  bool pageEmpty_ = true;  // nothing but headers on this page
  bool fresh_ = true;      // this column begins with the page, not below a title
  Block block_;
  std::vector<Block> rowBlocks_, scratchBlocks_;
  Block scratch_;
};

}  // namespace jxc::report
