#include "engine/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace jxc {
namespace number_text_detail {

constexpr double million = 1e6;
// Up to here a double tells its six decimals and one digit more apart.
constexpr double sixDecimalsLimit = 1e9;
constexpr double wholeLimit = 1e15;

std::string_view whole(std::int64_t number, NumberBuffer& buffer) {
  return {buffer, static_cast<std::size_t>(std::to_chars(buffer, buffer + sizeof buffer, number).ptr - buffer)};
}

/// `millionths` / 1e6 in decimal, without trailing zeros.
std::string_view decimal(std::int64_t millionths, bool negative, NumberBuffer& buffer) {
  char* out = buffer;
  if (negative) *out++ = '-';
  out = std::to_chars(out, buffer + sizeof buffer, millionths / 1000000).ptr;
  *out++ = '.';
  auto rest = static_cast<std::uint32_t>(millionths % 1000000);
  for (int i = 5; i >= 0; --i) {
    out[i] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  }
  out += 6;
  while (out[-1] == '0')
    --out;
  return {buffer, static_cast<std::size_t>(out - buffer)};
}

/// The slow road: figures that need more than six decimals, very small and very large ones.
std::string_view general(double number, NumberBuffer& buffer) {
  const double size = std::fabs(number);
  if (size >= 0.0001 || size < 0.000001) {
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, 15).ptr;
    return {buffer, static_cast<std::size_t>(end - buffer)};
  }
  // Here the general format would turn to an exponent: 15 significant digits in plain notation.
  const int decimals = 14 - static_cast<int>(std::floor(std::log10(size)));
  char* end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, decimals).ptr;
  while (end[-1] == '0')
    --end;
  return {buffer, static_cast<std::size_t>(end - buffer)};
}

}  // namespace number_text_detail

std::string_view formatNumber(long long number, NumberBuffer& buffer) {
  return number_text_detail::whole(number, buffer);
}

std::string_view formatNumber(double number, NumberBuffer& buffer) {
  using namespace number_text_detail;
  const double size = std::fabs(number);
  if (size < wholeLimit) {
    if (const auto n = static_cast<std::int64_t>(number); static_cast<double>(n) == number) return whole(n, buffer);
    if (size < sixDecimalsLimit) {
      // A division is rounded correctly, so when it gives the number back the decimal figure is the number's own.
      const auto millionths = static_cast<std::int64_t>(size * million + 0.5);
      if (static_cast<double>(millionths) / million == size) return decimal(millionths, number < 0, buffer);
    }
  }
  return general(number, buffer);
}

std::optional<double> parseNumber(std::string_view text) {
  while (!text.empty() && text.front() == ' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  // from_chars also reads "inf" and "nan", which no field of a shop means.
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) return {};
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return {};
  return number;
}

double toSixDecimals(double number) {
  using namespace number_text_detail;
  const double size = std::fabs(number);
  // Above some nine thousand million a double has no sixth decimal left to round.
  if (!(size < 0x1p53 / million)) return number;
  if (static_cast<double>(static_cast<std::int64_t>(number)) == number) return number;
  double scaled = size * million;
  if (scaled < 0x1p50) scaled += scaled * std::numeric_limits<double>::epsilon();
  const auto millionths = static_cast<std::int64_t>(scaled + 0.5);
  return std::copysign(static_cast<double>(millionths) / million, millionths == 0 ? 1.0 : number);
}

double roundDecimals(double number, int digits) {
  static constexpr double powers[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12};
  digits = std::clamp(digits, -12, 12);
  const double power = powers[digits < 0 ? -digits : digits];
  double scaled = std::fabs(digits < 0 ? number / power : number * power);
  if (!(scaled < 0x1p53)) return number;  // no half to round
  // The last bit may be missing to a half of the decimal figure; never so much that a quarter becomes one.
  scaled += std::min(scaled * std::numeric_limits<double>::epsilon(), 0.25);
  // Cut to a whole number as integer: what is below 2^53 fits, and it takes no call of a library.
  const auto whole = static_cast<double>(static_cast<std::int64_t>(scaled + 0.5));
  const double result = digits < 0 ? whole * power : whole / power;
  return number < 0 && whole != 0 ? -result : result;
}

}  // namespace jxc
