#include "engine/parameter_fitting.h"

#include "engine/failures.h"
#include "engine/function_clock.h"
#include "engine/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace jxc {
namespace parameter_fitting_detail {

using jet::ColumnType;
using Kind = DbError::Kind;

QString placeOf(const jet::Parameter& parameter) {
  return parameter.label.empty() ? QStringLiteral("参数 %1").arg(parameter.source + 1)
                                 : QString::fromStdString(parameter.label);
}

[[noreturn]] void refuseText(const jet::Parameter& parameter, std::string_view text) {
  throw DbError(Kind::TypeMismatch,
                QStringLiteral("%1 必须是数值，不能是“%2”。")
                    .arg(placeOf(parameter), QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))));
}

[[noreturn]] void refuseNumber(const jet::Parameter& parameter) {
  throw DbError(Kind::Arithmetic, QStringLiteral("%1 的数值超出范围。").arg(placeOf(parameter)));
}

std::size_t characters(std::string_view utf8) {
  std::size_t count = 0;
  for (const char c : utf8)
    count += (static_cast<unsigned char>(c) & 0xc0) != 0x80;
  return count;
}

/// A text of no more bytes than characters allowed cannot be too wide, so most texts are never counted.
void checkWidth(const jet::Parameter& parameter, std::string_view utf8) {
  if (parameter.width <= 0 || utf8.size() <= static_cast<std::size_t>(parameter.width)) return;
  const std::size_t count = characters(utf8);
  if (count <= static_cast<std::size_t>(parameter.width)) return;
  throw tooWide(placeOf(parameter), parameter.width, static_cast<int>(count));
}

/// Flags come as words from bit columns that were read as text.
bool truthOf(const jet::Parameter& parameter, std::string_view text) {
  const auto is = [text](std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
  };
  if (is("true")) return true;
  if (is("false")) return false;
  const auto number = parseNumber(text);
  if (!number) refuseText(parameter, text);
  return *number != 0;
}

constexpr std::size_t bytesPerUnit = 3;  // of UTF-8 at most, for one unit of UTF-16

/// A character beyond ASCII.
char* encode(char* out, char32_t c) {
  if (c < 0x800) {
    *out++ = static_cast<char>(0xc0 | (c >> 6));
    *out++ = static_cast<char>(0x80 | (c & 0x3f));
  } else if (c < 0x10000) {
    *out++ = static_cast<char>(0xe0 | (c >> 12));
    *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3f));
    *out++ = static_cast<char>(0x80 | (c & 0x3f));
  } else {
    *out++ = static_cast<char>(0xf0 | (c >> 18));
    *out++ = static_cast<char>(0x80 | ((c >> 12) & 0x3f));
    *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3f));
    *out++ = static_cast<char>(0x80 | (c & 0x3f));
  }
  return out;
}

}  // namespace parameter_fitting_detail

void ParameterFitter::reserve(std::span<const jet::Parameter> parameters, std::span<const Value> values) {
  // Everything is reserved before the first bind, because bound texts point into the buffer.
  std::size_t bytes = 0;
  for (const jet::Parameter& parameter : parameters) {
    bytes += sizeof(NumberBuffer);
    if (parameter.fromDrivingRow || parameter.moment != jet::Moment::None) continue;
    if (const auto* text = std::get_if<QString>(&values[static_cast<std::size_t>(parameter.source)].raw()))
      bytes += static_cast<std::size_t>(text->size()) * parameter_fitting_detail::bytesPerUnit;
  }
  if (scratch_.size() < bytes) scratch_.resize(bytes);
  used_ = 0;
}

void ParameterFitter::fit(std::span<const jet::Parameter> parameters, std::span<const Value> values,
                          const RowSet* driving, int row) {
  reserve(parameters, values);
  int at = 0;
  for (const jet::Parameter& parameter : parameters) {
    ++at;
    if (parameter.moment != jet::Moment::None)
      putText(at, kept(clockText(parameter.moment)));
    else if (parameter.fromDrivingRow)
      cell(at, parameter, *driving, row);
    else
      value(at, parameter, values[static_cast<std::size_t>(parameter.source)]);
  }
}

void ParameterFitter::value(int at, const jet::Parameter& parameter, const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Null:
      return putNull(at);
    case Value::Kind::Integer:
      return integer(at, parameter, *std::get_if<std::int64_t>(&value.raw()));
    case Value::Kind::Real:
      return real(at, parameter, *std::get_if<double>(&value.raw()));
    case Value::Kind::Text:
      return text(at, parameter, toUtf8(*std::get_if<QString>(&value.raw())));
  }
}

void ParameterFitter::cell(int at, const jet::Parameter& parameter, const RowSet& set, int row) {
  switch (set.kind(row, parameter.source)) {
    case Value::Kind::Null:
      return putNull(at);
    case Value::Kind::Integer:
      return integer(at, parameter, set.integer(row, parameter.source));
    case Value::Kind::Real:
      return real(at, parameter, set.number(row, parameter.source));
    case Value::Kind::Text:
      return text(at, parameter, set.utf8(row, parameter.source));
  }
}

void ParameterFitter::integer(int at, const jet::Parameter& parameter, std::int64_t number) {
  using namespace parameter_fitting_detail;
  if (parameter.typed) {
    if (parameter.target == ColumnType::Bit) number = number != 0;
    if (parameter.target == ColumnType::Text || parameter.target == ColumnType::LongText) {
      NumberBuffer buffer;
      const std::string_view text = kept(formatNumber(static_cast<long long>(number), buffer));
      checkWidth(parameter, text);
      return putText(at, text);
    }
  }
  putInteger(at, number);
}

void ParameterFitter::real(int at, const jet::Parameter& parameter, double number) {
  using namespace parameter_fitting_detail;
  if (!std::isfinite(number)) refuseNumber(parameter);
  if (!parameter.typed) return putReal(at, number);
  switch (parameter.target) {
    case ColumnType::Numeric:
      // What is only compared with a column may lie beyond everything that stands there.
      if (!parameter.label.empty() && !isInNumericRange(number)) refuseNumber(parameter);
      return putReal(at, toSixDecimals(number));
    case ColumnType::Double:
      return putReal(at, number);
    case ColumnType::Bit:
      return putInteger(at, number != 0);
    case ColumnType::Counter:
    case ColumnType::Integer:
      if (std::fabs(number) > 9e15) refuseNumber(parameter);
      return putInteger(at, wholeNumber(number));
    case ColumnType::Text:
    case ColumnType::LongText: {
      NumberBuffer buffer;
      const std::string_view text = kept(formatNumber(number, buffer));
      checkWidth(parameter, text);
      return putText(at, text);
    }
  }
}

void ParameterFitter::text(int at, const jet::Parameter& parameter, std::string_view utf8) {
  using namespace parameter_fitting_detail;
  const bool isText = parameter.target == ColumnType::Text || parameter.target == ColumnType::LongText;
  if (!parameter.typed || isText) {
    checkWidth(parameter, utf8);
    return putText(at, utf8);
  }
  if (parameter.target == ColumnType::Bit) {
    const bool truth = truthOf(parameter, utf8);
    return putInteger(at, truth);
  }
  const auto number = parseNumber(utf8);
  if (!number) refuseText(parameter, utf8);
  real(at, parameter, *number);
}

std::string_view ParameterFitter::toUtf8(QStringView text) {
  using namespace parameter_fitting_detail;
  char* const begin = scratch_.data() + used_;
  char* out = begin;
  const char16_t* in = text.utf16();
  const char16_t* const end = in + text.size();
  while (in != end) {
    char32_t c = *in++;
    if (c == 0) continue;  // a server keeps none; a barcode reader may send one behind its code
    if (c < 0x80) {
      *out++ = static_cast<char>(c);
      continue;
    }
    if (c >= 0xd800 && c < 0xe000) {  // half of a pair; alone it is no character
      const bool pair = c < 0xdc00 && in != end && *in >= 0xdc00 && *in < 0xe000;
      c = pair ? 0x10000 + ((c - 0xd800) << 10) + (char32_t{*in++} - 0xdc00) : 0xfffd;
    }
    out = encode(out, c);
  }
  used_ += static_cast<std::size_t>(out - begin);
  return {begin, static_cast<std::size_t>(out - begin)};
}

std::string_view ParameterFitter::kept(std::string_view text) {
  char* const begin = scratch_.data() + used_;
  std::memcpy(begin, text.data(), text.size());
  used_ += text.size();
  return {begin, text.size()};
}

}  // namespace jxc
