#include "stock/line_amounts.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"

#include <cmath>

namespace jxc {
namespace line_amounts_detail {

/// A line that takes goods back comes to exactly minus what selling them came to: halves go the same way on both.
double rounded(double value, int digits) {
  return value < 0 ? -roundEps(-value, digits) : roundEps(value, digits);
}

double amount(double value, LineRounding rounding, const AmountRules& rules) {
  if (rounding == LineRounding::Cell) return rounded(value, rules.amountDigits());
  return rules.roundTotals ? rounded(value, rules.totalDigits) : value;
}

}  // namespace line_amounts_detail

double roundedQuantity(double units) {
  return line_amounts_detail::rounded(units, quantityDigits());
}

AmountRules AmountRules::current() {
  AmountRules rules;
  rules.moneyDigits = jxc::moneyDigits();
  rules.roundTotals = strIsTrue(session().cs_zjews);
  rules.totalDigits = jxc::totalDigits();
  rules.discountInUse = strIsTrue(session().cs_jhzk);
  return rules;
}

LineAmounts::LineAmounts(AmountRules rules, const LineFigures& stored)
    : rules_(rules),
      quantity_(stored.quantity),
      discount_(stored.discount),
      tax_(stored.tax),
      price_(stored.price),
      taxedPrice_(stored.taxedPrice),
      total_(stored.total),
      book_(stored.book),
      worth_(stored.worth) {}

void LineAmounts::retotal() {
  total_ = worth_.value_or(taxedPrice_) * discount_ * (quantity_ - book_);
  if (rules_.roundTotals) total_ = line_amounts_detail::rounded(total_, rules_.totalDigits);
}

void LineAmounts::setQuantity(double units) {
  quantity_ = roundedQuantity(units);
  retotal();
}

void LineAmounts::setDiscount(double rate) {
  discount_ = rate;
  retotal();
}

void LineAmounts::setPrice(double yuan) {
  price_ = yuan;
  taxedPrice_ = price_ * (1 + tax_ / 100);
  retotal();
}

void LineAmounts::setTax(double percent) {
  tax_ = percent;
  taxedPrice_ = price_ * (1 + tax_ / 100);
  retotal();
}

void LineAmounts::setTaxedPrice(double yuan) {
  taxedPrice_ = yuan;
  price_ = tax_ > 0 ? taxedPrice_ / (1 + tax_ / 100) : taxedPrice_;
  retotal();
}

void LineAmounts::setTotal(double yuan) {
  total_ = yuan;
  if (rules_.discountInUse) {
    if (quantity_ != 0 && taxedPrice_ != 0) discount_ = total_ / (quantity_ * taxedPrice_);
  } else if (quantity_ != 0) {
    price_ = total_ / quantity_ / (tax_ / 100 + 1);
    taxedPrice_ = price_ * (1 + tax_ / 100);
  }
}

void LineAmounts::setWorth(std::optional<double> yuan) {
  worth_ = yuan;
  retotal();
}

void LineAmounts::setBook(double units) {
  book_ = units;
  retotal();
}

std::optional<LineFigures> LineAmounts::settled(bool zeroCounts) const {
  if (quantity_ == 0 && !zeroCounts) return std::nullopt;
  LineFigures line;
  line.quantity = quantity_;
  line.total = total_;
  line.book = book_;
  line.worth = worth_;
  if (price_ == 0 && !worth_ && quantity_ != 0 && total_ / quantity_ > 0) {
    line.price = line.taxedPrice = roundEps(total_ / quantity_, rules_.moneyDigits);
  } else {
    line.discount = discount_;
    line.tax = tax_;
    line.price = roundEps(price_, rules_.moneyDigits);
    line.taxedPrice = roundEps(taxedPrice_, rules_.moneyDigits);
  }
  settle(line, LineRounding::Typed, rules_);
  return line;
}

void settle(LineFigures& line, LineRounding rounding, const AmountRules& rules) {
  const auto amount = [&](double value) { return line_amounts_detail::amount(value, rounding, rules); };
  const double units = line.quantity * line.discount;
  const double before = line.price * units;
  const double byRate = before * line.tax / 100;
  const bool goesByRate = rounding == LineRounding::ScannedByRate;
  line.net = amount(before);
  line.taxAmount = amount(goesByRate ? byRate : (line.taxedPrice - line.price) * units);
  if (rounding != LineRounding::Typed)
    line.total =
        amount(goesByRate ? before + byRate
                          : line.worth.value_or(line.taxedPrice) * ((line.quantity - line.book) * line.discount));
  line.costAmount = amount(line.cost * line.quantity);
}

void setCell(LineFigures& line, LineField field, double value, const AmountRules& rules, LineRounding rounding) {
  const LineFigures old = line;
  switch (field) {
    case LineField::Price:
      line.price = value;
      break;
    case LineField::Quantity:
      line.quantity = value;
      break;
    case LineField::TaxedPrice:
      line.taxedPrice = value;
      line.price = roundEps(value / (1 + line.tax / 100), rules.moneyDigits);
      break;
    case LineField::Tax:
      line.tax = value;
      break;
    case LineField::Discount:
      line.discount = value;
      break;
  }
  if (field == LineField::Price || field == LineField::Tax)
    line.taxedPrice = roundEps(line.price * (1 + line.tax / 100), rules.moneyDigits);
  settle(line, rounding, rules);
  // What does not hang on the cell stays as the way before had left it.
  if (field == LineField::Tax) line.net = old.net;
  if (field != LineField::Quantity) line.costAmount = old.costAmount;
}

void addScanned(LineFigures& line, LineRounding rounding, const AmountRules& rules) {
  line.quantity += 1;
  settle(line, rounding, rules);
}

void spreadTotal(LineFigures& line, double total, const AmountRules& rules) {
  const double units = line.quantity * line.discount;
  line.total = total;
  line.taxedPrice = roundEps(total / units, rules.moneyDigits);
  line.price = roundEps(line.taxedPrice / (1 + line.tax / 100), rules.moneyDigits);
  line.net = line.price * units;
  line.taxAmount = total - line.net;
}

std::optional<LineField> lineFieldNamed(QStringView name) {
  if (name == u"dj") return LineField::Price;
  if (name == u"sl") return LineField::Quantity;
  if (name == u"taxdj") return LineField::TaxedPrice;
  if (name == u"tax") return LineField::Tax;
  if (name == u"dzl") return LineField::Discount;
  return std::nullopt;
}

double cellValue(LineField field, const QString& typed, QuantityRange quantities) {
  bool isNumber = false;
  const double number = typed.trimmed().toDouble(&isNumber);
  const double value = field == LineField::Quantity ? roundedQuantity(number) : toSixDecimals(number);
  if (isNumber && std::isfinite(value) && (field == LineField::Quantity ? quantities.has(value) : value > 0))
    return value;
  return field == LineField::Quantity || field == LineField::Discount ? 1 : 0;
}

LineFigures readFigures(const Row& row, const LineColumns& c) {
  const auto number = [&](std::string_view column) { return column.empty() ? 0.0 : row.number(column); };
  return {.price = number(c.price),
          .taxedPrice = number(c.taxedPrice.empty() ? c.price : c.taxedPrice),
          .quantity = number(c.quantity),
          .discount = c.discount.empty() ? 1 : row.number(c.discount),
          .tax = number(c.tax),
          .net = number(c.net),
          .taxAmount = number(c.taxAmount),
          .total = number(c.total),
          .cost = number(c.cost),
          .costAmount = number(c.costAmount),
          .moved = number(c.moved)};
}

void writeFigures(const LineColumns& c, std::int64_t id, const LineFigures& line) {
  updateRow(c.table, id,
            {{c.price, line.price},
             {c.taxedPrice, line.taxedPrice},
             {c.quantity, line.quantity},
             {c.discount, line.discount},
             {c.tax, line.tax},
             {c.net, line.net},
             {c.taxAmount, line.taxAmount},
             {c.total, line.total},
             {c.moved, line.moved},
             {c.lent, line.quantity},
             {c.cost, line.cost},
             {c.costAmount, line.costAmount}});
}

}  // namespace jxc
