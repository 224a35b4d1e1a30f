// 多商品选择: picks many goods into the operator's staging list, then takes them all over to a document.
#pragma once

#include "stock/document_rules.h"
#include "ui/list_search.h"
#include "ui/screen.h"

#include <vector>

namespace jxc {

/// What the picking screen of one document is. Its fields are "tkey", "comLb" (class), "tsl" (quantity added at once),
/// "chkCk" (by stock), "comCk" (warehouse of the lines, where each has its own; the same for all that are picked at
/// once) and one for this partner's goods where the document has them; its grids "gridGoods" and
/// "gridStaging". Another part is refused.
struct GoodsPickSpec {
  ui::ScreenSpec screen;
  const DocumentRules& (*rules)();
  std::string_view lineScreen;  // the line dialog, opened on a staging row
  std::string_view partnerBox = "chkPartner";
  bool tickShowsAll = false;  // "chkCk" adds what is not in stock; otherwise it leaves that out
  // A list of something else than goods (lines of other documents): the column that the rules know a row by; what
  // comLb offers in place of classes, and the column of it: "btnZdrk" takes all rows that are alike there. Each row
  // comes with the quantity that the rules propose, so that tsl is not shown.
  std::string_view key = "g_sn";
  std::vector<ListItem> (*groups)(const LinePlace& place) = nullptr;
  std::string_view group = {};
};

class GoodsPickScreen : public ui::Screen {
 public:
  explicit GoodsPickScreen(const GoodsPickSpec& spec);

  /// Picks goods for a draft or a waiting document, and copies them there. Lines copied, and the document's number now.
  CopyResult pick(const LinePlace& place, Lines target);

  QSize sizeHint() const override { return {1120, 660}; }

  ui::Field& tkey = field("tkey");
  ui::Field& comLb = field("comLb");
  ui::Field& tsl = field("tsl");
  ui::Grid& gridGoods = grid("gridGoods");
  ui::Grid& gridStaging = grid("gridStaging");
  QPushButton& btnAdd = command("btnAdd");
  QPushButton& btnModi = command("btnModi");
  QPushButton& btnDel = command("btnDel");
  QPushButton& btnOK = command("btnOK");

 protected:
  void activate() override;
  bool mayLeave() override;
  void enterPressed(ui::Field& field) override;

 private:
  bool isTicked(std::string_view box);
  Sql query(const QString& typed);
  /// Enter on one goods: the line dialog.
  void pickOne();
  /// All rows of the current one's group.
  void addGroup();
  void add(const std::vector<Row>& rows);
  /// The marked goods at once, with the quantity that stands in `tsl`.
  void addMarked();
  void changeStaged();
  void dropStaged();
  void takeOver();
  void showStaged(std::int64_t current = 0);
  void backToSearch();
  const LineRules& lines() const { return rules_.of(place_.number).lines(); }

  const GoodsPickSpec description_;
  const DocumentRules& rules_;
  ui::ListSearch search_;
  LinePlace place_;
  Lines target_ = Lines::Draft;
  PickingMemory memory_;
  CopyResult result_;
};

/// Shows tax, discount and retail price columns of a grid of lines by the parameters that switch them. What an operator
/// has no right to see does not depend on it: that right stands in the column.
void showLineColumns(ui::Grid& grid);
/// Opens only cells that a rule would let change: no price where prices are fixed, of a gift only the quantity, nothing
/// of the balancing line.
void lockLineCells(ui::Grid& grid, const LineRules& rules);
/// The line's field behind a column, as cell edits name it: "jh_dj" is "dj".
QString lineFieldOf(std::string_view column);

}  // namespace jxc
