// 单据行金额: how quantity, price, tax, discount and total of a document line move each other, whatever way they came
// in.
#pragma once

#include "core/reading.h"
#include "stock/line_columns.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>
#include <string_view>

namespace jxc {

/// The parameters behind line arithmetic.
struct AmountRules {
  int moneyDigits = 2;         // unit prices, and amounts unless totals are kept apart
  bool roundTotals = false;    // totals have digits of their own
  int totalDigits = 2;         // equals moneyDigits unless roundTotals
  bool discountInUse = false;  // a total typed by hand changes the discount, not the price

  /// As the session has them.
  static AmountRules current();
  /// Digits of amounts: those of totals when they are kept apart, otherwise those of money.
  int amountDigits() const { return roundTotals ? totalDigits : moneyDigits; }
};

/// What is stored of a line.
struct LineFigures {
  double price = 0;             // before tax, yuan a unit
  double taxedPrice = 0;        // with tax
  double quantity = 0;          // units; below zero on a line of a sale that takes goods back
  double discount = 1;          // rate, 1 for none, 0.8 for 20 percent off
  double tax = 0;               // rate in percent
  double net = 0;               // price × quantity × discount
  double taxAmount = 0;         // (taxedPrice − price) × quantity × discount
  double total = 0;             // with tax
  double cost = 0;              // a unit, of documents of the sales side
  double costAmount = 0;        // cost × quantity
  double moved = 0;             // units that lie on the shelf, or have left it, as soon as the document is audited
  double book = 0;              // units that are there already and not paid for: a count is worth its difference
  std::optional<double> worth;  // yuan a unit that the total goes by, where it is another than the price
};

/// How a line came by its figures. The arithmetic is the same; what differs between the ways is this rounding and
/// nothing else: see docs/decisions/rounding.md.
enum class LineRounding : char {
  Typed,         // line dialog: the total is the one that the operator saw; amounts as they come out
  Cell,          // a cell of a grid: each amount to the digits of amounts
  Scanned,       // a barcode: amounts as they come out
  ScannedByRate  // a barcode on a sale: tax and total by price and rate, which the rounded price with tax would lose
};
/// The roundings of a document's lines, by the way in.
struct LineRoundings {
  LineRounding typed = LineRounding::Typed, cells = LineRounding::Cell, scans = LineRounding::Scanned;
};
/// A quantity as a line keeps it: to the digits of quantities, so that what is seen is what moves. Halves go the same
/// way above zero and below.
double roundedQuantity(double units);
/// No line has so many units: what was typed is a barcode or a price.
inline constexpr double kTooMany = 1e8;
/// Yuan a unit: from it on a barcode was taken for a price.
inline constexpr double kDearest = 1e9;

/// Quantities that a line may have beside those above zero.
struct QuantityRange {
  bool zero = false, minus = false;
  bool has(double quantity) const { return quantity > 0 || (quantity == 0 ? zero : minus); }
};

// "As they come out" means to the digits of totals where those are kept apart, and six decimals otherwise.

/// The amounts follow prices, quantity, discount, rate and cost. Of a typed line the total stays.
void settle(LineFigures& line, LineRounding rounding, const AmountRules& rules);

enum class LineField : char { Price, Quantity, TaxedPrice, Tax, Discount };
/// A cell takes a value, in yuan, units, percent or as a rate: the other price and the amounts follow.
void setCell(LineFigures& line, LineField field, double value, const AmountRules& rules,
             LineRounding rounding = LineRounding::Cell);
/// A barcode adds one unit.
void addScanned(LineFigures& line, LineRounding rounding, const AmountRules& rules);
/// The line comes to `total` (yuan, with tax): the prices follow, so that price × quantity × discount is what was paid.
/// Neither quantity nor discount may be zero.
void spreadTotal(LineFigures& line, double total, const AmountRules& rules);

/// The inputs of a line dialog, kept in step: each `set…` is what happens when the operator changes that input.
/// Nothing is rounded while typing but the total (when totals have digits of their own).
class LineAmounts {
 public:
  explicit LineAmounts(AmountRules rules = AmountRules::current()) : rules_(rules) {}
  /// Opens on a stored line.
  LineAmounts(AmountRules rules, const LineFigures& stored);

  double quantity() const { return quantity_; }
  double discount() const { return discount_; }
  double tax() const { return tax_; }
  double price() const { return price_; }
  double taxedPrice() const { return taxedPrice_; }
  double total() const { return total_; }
  std::optional<double> worth() const { return worth_; }

  void setQuantity(double units);  // taken as lines keep it
  void setDiscount(double rate);
  void setPrice(double yuan);
  void setTax(double percent);
  void setTaxedPrice(double yuan);
  /// A total typed by hand changes the price, or the discount when discounts are in use. It stays as typed.
  void setTotal(double yuan);
  // Of documents without money; see LineFigures.
  void setWorth(std::optional<double> yuan);
  void setBook(double units);

  /// What OK writes, without cost; nothing when the quantity is zero, unless zero is one. A total without a price is
  /// taken as a price for the whole line: no discount, no tax.
  std::optional<LineFigures> settled(bool zeroCounts = false) const;

 private:
  void retotal();
  AmountRules rules_;
  double quantity_ = 0, discount_ = 1, tax_ = 0, price_ = 0, taxedPrice_ = 0, total_ = 0, book_ = 0;
  std::optional<double> worth_;
};

/// "dj", "sl", "taxdj", "tax", "dzl", as the grids name their columns.
std::optional<LineField> lineFieldNamed(QStringView name);
/// The value that a cell takes: what was typed (a quantity as lines keep it), or what stands for it when that cannot be
/// (empty, negative …): 0 for prices and tax, 1 for quantity and discount.
double cellValue(LineField field, const QString& typed, QuantityRange quantities);

/// What the table does not keep is as on a line without it: no tax, no discount.
LineFigures readFigures(const Row& row, const LineColumns& columns);
/// Writes the figures of row `id` in one statement.
void writeFigures(const LineColumns& columns, std::int64_t id, const LineFigures& line);

}  // namespace jxc
