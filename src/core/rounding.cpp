#include "core/rounding.h"

#include "core/session.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace jxc {

double roundEps(double value, int digits) {
  if (!std::isfinite(value)) return value;
  static constexpr std::array<double, 7> powers{1, 10, 100, 1e3, 1e4, 1e5, 1e6};
  const double power = powers[static_cast<std::size_t>(std::clamp(digits, 0, 6))];
  const double scaled = value * power;
  const double below = std::floor(scaled);
  // Adding a billionth before rounding half away from zero means: a half goes up, below zero too (-0.005 becomes 0),
  // and so does what misses the half by no more than that billionth. From half a million on a double is too coarse
  // to hold the billionth, so there the last bit of the product decides what still counts as a half.
  const double billionth = 1e-9 * power;
  const double lastBits = std::min(std::numeric_limits<double>::epsilon() * std::abs(scaled), 0.25);
  const double rounded = scaled - below >= 0.5 - std::max(billionth, lastBits) ? below + 1 : below;
  const double result = rounded / power;
  return result == 0 ? 0.0 : result;  // no -0 on a document
}

int moneyDigits() {
  return session().xswsDigits;
}

int quantityDigits() {
  return session().cbjsDigits;
}

int totalDigits() {
  return session().jewsDigits;
}

double roundMoney(double value) {
  return roundEps(value, moneyDigits());
}

double roundQuantity(double value) {
  return roundEps(value, quantityDigits());
}

double roundTotal(double value) {
  return roundEps(value, totalDigits());
}

double roundTotalIfSeparate(double value) {
  return strIsTrue(session().cs_zjews) ? roundTotal(value) : value;
}

}  // namespace jxc
