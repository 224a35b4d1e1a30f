// 数字文本: numbers to text and back, and the six decimals that a stored number keeps; no allocation anywhere.
#pragma once

#include <optional>
#include <string_view>

namespace jxc {

/// Room for the text of any number.
using NumberBuffer = char[40];

/// General format with up to 15 significant digits, an exponent only from 1e15 up and below 0.000001. "-0" reads "0".
std::string_view formatNumber(double number, NumberBuffer& buffer);
std::string_view formatNumber(long long number, NumberBuffer& buffer);

/// Reads a whole text as a number; blanks around it and a leading "+" are allowed. Nothing for anything else.
std::optional<double> parseNumber(std::string_view text);

/// Rounded half away from zero to the six decimals that numeric(28,6) keeps. Half means half of the decimal figure:
/// 1.0000005 gives 1.000001 although the double lies a hair below.
double toSixDecimals(double number);
/// Whether numeric(28,6) takes it: twenty-two digits in front of the point.
constexpr bool isInNumericRange(double number) {
  return number > -1e22 && number < 1e22;
}

/// The same to `digits` decimals, down to -12 (tens, hundreds …) and up to 12; what `round` of a statement does.
double roundDecimals(double number, int digits);

}  // namespace jxc
