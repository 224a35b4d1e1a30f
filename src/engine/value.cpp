#include "engine/value.h"

#include "engine/number_text.h"

#include <cmath>
#include <limits>

namespace jxc {
namespace value_detail {

double parsed(const QString& text) {
  if (text.isEmpty() || text.size() > 64) return 0;
  char ascii[64];
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t c = text[i].unicode();
    if (c > 127) return 0;
    ascii[i] = static_cast<char>(c);
  }
  return parseNumber({ascii, static_cast<std::size_t>(text.size())}).value_or(0);
}

QString latin(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace value_detail

std::int64_t wholeNumber(double number) {
  constexpr double limit = 9.2e18;
  if (!(std::fabs(number) < limit)) {
    if (std::isnan(number)) return 0;
    return number < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
  }
  return std::llround(number);
}

std::int64_t Value::integer() const {
  if (const auto* n = std::get_if<std::int64_t>(&data_)) return *n;
  return wholeNumber(number());
}

double Value::number() const {
  switch (kind()) {
    case Kind::Integer:
      return static_cast<double>(*std::get_if<std::int64_t>(&data_));
    case Kind::Real:
      return *std::get_if<double>(&data_);
    case Kind::Text:
      return value_detail::parsed(*std::get_if<QString>(&data_));
    case Kind::Null:
      break;
  }
  return 0;
}

QString Value::text() const {
  switch (kind()) {
    case Kind::Integer: {
      NumberBuffer buffer;
      return value_detail::latin(formatNumber(static_cast<long long>(*std::get_if<std::int64_t>(&data_)), buffer));
    }
    case Kind::Real:
      return numberText(*std::get_if<double>(&data_));
    case Kind::Text:
      return *std::get_if<QString>(&data_);
    case Kind::Null:
      break;
  }
  return {};
}

QString numberText(double number) {
  NumberBuffer buffer;
  return value_detail::latin(formatNumber(number, buffer));
}

}  // namespace jxc
