#include "core/formats.h"

#include "core/rounding.h"
#include "core/session.h"

#include <cmath>

namespace jxc::formats_detail {

QString grouped(QString digits) {
  qsizetype at = digits.indexOf(u'.');
  if (at < 0) at = digits.size();
  for (at -= 3; at > 0; at -= 3)
    digits.insert(at, u',');
  return digits;
}

std::optional<NumberFormat> made(NumberFormat::Kind kind, int decimals, const QString& symbol = {}) {
  if (decimals < 0 || decimals > 6) return std::nullopt;
  return NumberFormat{kind, decimals, symbol};
}

}  // namespace jxc::formats_detail

namespace jxc {

QString NumberFormat::format(double value) const {
  // The magnitude is rounded, so that -0.005 shows as it would in red ink beside 0.005.
  const double magnitude = roundEps(std::abs(value), decimals);
  // What rounds to nothing has no sign.
  const bool negative = value < 0 && magnitude > 0;
  QString digits = QString::number(magnitude, 'f', decimals);
  if (kind != Kind::Quantity)
    return (negative ? QStringLiteral("-") : QString()) + symbol + formats_detail::grouped(digits);
  if (decimals == 0 && magnitude == 0) return {};  // "#" has no place that must stand
  if (negative && magnitude < 1) digits.remove(0, 1);
  return (negative ? QStringLiteral("-") : QString()) + digits;
}

QString NumberFormat::pattern() const {
  const QString fraction = decimals > 0 ? u'.' + QString(decimals, u'0') : QString();
  if (kind == Kind::Quantity) {
    // Below zero no 0 stands before the point; layouts and exports of the shops have it so.
    return decimals == 0 ? QStringLiteral("#;-#") : QStringLiteral("#0%1;-#%1").arg(fraction);
  }
  const QString lead = kind == Kind::Total || symbol.isEmpty() ? QStringLiteral("#") : symbol;
  return QStringLiteral("%1,0%2;-%1,0%2").arg(lead, fraction);
}

std::optional<NumberFormat> moneyFormat() {
  return formats_detail::made(NumberFormat::Kind::Money, moneyDigits(), session().cs_hbfh);
}

std::optional<NumberFormat> totalFormat() {
  return formats_detail::made(NumberFormat::Kind::Total, totalDigits());
}

std::optional<NumberFormat> quantityFormat() {
  return formats_detail::made(NumberFormat::Kind::Quantity, quantityDigits());
}

}  // namespace jxc
