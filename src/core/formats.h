// 显示格式: how money, quantities and totals look; applied by the ui kit to inputs, columns and footers alike.
#pragma once

#include <QString>

#include <optional>

namespace jxc {

/// A number format of at most six decimals.
struct NumberFormat {
  enum class Kind { Money, Total, Quantity };
  Kind kind = Kind::Money;
  int decimals = 2;
  QString symbol;  // currency symbol, Money only

  /// The text of a number: Money "￥1,234.50", "-￥1,234.50"; Total the same without a symbol; Quantity "1234.50" and
  /// below zero without a leading zero: "-.50".
  QString format(double value) const;
  /// The format as text, for layouts: "￥,0.00;-￥,0.00", "#,0.00;-#,0.00", "#0.00;-#.00".
  QString pattern() const;
  /// Longest text that an input of this format takes.
  int maxLength() const { return decimals + 13; }
};

/// Money by the money digits. No value when the digits are outside 0..6: leave what is there untouched.
std::optional<NumberFormat> moneyFormat();
/// Footer totals by the total digits.
std::optional<NumberFormat> totalFormat();
/// Quantities by the quantity digits.
std::optional<NumberFormat> quantityFormat();

}  // namespace jxc
