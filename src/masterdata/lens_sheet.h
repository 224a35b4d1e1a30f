// 镜片光度表: quantities of a lens product by its powers, taken over to a trading document as ordinary lines.
#pragma once

#include "stock/trading_document.h"

#include <optional>
#include <vector>

namespace jxc {

/// The articles of one lens product (`g_qc`): rows are spheres, columns cylinders, both ascending as numbers. Powers
/// that are written differently ("-1.25", "-1.250") are one; of two articles in one cell the document's choice counts.
struct LensSheet {
  struct Cell {
    QString goods;           // empty: there is no article of this power yet
    bool offered = false;    // the document's own list of goods has it
    double stock = 0;        // units, as that list tells
    double quantity = 0;     // typed
    bool isTyped = false;    // also as 0
    bool goesShort = false;  // it was beyond the stock when it was tried last
  };

  QString product;
  std::vector<double> spheres, cylinders;  // dioptres
  std::vector<Cell> cells;                 // row by row
  bool zeroCounts = false;                 // on a count: nothing of it was found
  std::optional<double> price = {};        // yuan a unit for all lines of it; nothing: what each line proposes

  Cell& at(int row, int column) { return cells[static_cast<std::size_t>(row) * cylinders.size() + column]; }
  const Cell& at(int row, int column) const { return const_cast<LensSheet*>(this)->at(row, column); }
  double total() const;
  /// Whether the cell becomes a line: an empty one does not, and a 0 only where it is a count.
  bool holds(const Cell& cell) const { return cell.quantity != 0 || (zeroCounts && cell.isTyped); }
  bool isEmpty() const;
  /// Where this power stands; -1 when it does not.
  int rowOf(double sphere) const;
  int columnOf(double cylinder) const;
  /// A power that the product does not have yet comes in at its place, without articles.
  void addSphere(double sphere);
  void addCylinder(double cylinder);
};

/// Lens products that match what was typed: `g_qc`, how many articles (`gs`).
Sql lensSheetProducts(const QString& typed);
/// What the document of these rules can take of a product. Quantities are zero.
LensSheet readLensSheet(const QString& product, const ManyLines& rules, const LinePlace& place);

/// Makes lines of all quantities, in the order of the sheets and powers, as picking them from the list would: the same
/// prices, refusals and questions, but each is put once. Articles that are missing are made first, when the operator
/// agrees. Nothing: refused or taken back; cells beyond the stock are marked then.
std::optional<CopyResult> takeLensSheets(std::vector<LensSheet>& sheets, const ManyLines& rules, const LinePlace& place,
                                         Lines target, Prompt& prompt);

}  // namespace jxc
