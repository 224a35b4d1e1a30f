#include "engine/sqlite/parameter_binding.h"

#include "engine/error.h"
#include "engine/number_text.h"
#include "engine/sqlite/failure.h"

#include <cmath>
#include <cstring>

namespace jxc::sqlite {
namespace parameter_binding_detail {

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
    return sqlite3_stricmp(std::string(text).c_str(), word.data()) == 0;
  };
  if (is("true")) return true;
  if (is("false")) return false;
  const auto number = parseNumber(text);
  if (!number) refuseText(parameter, text);
  return *number != 0;
}

void check(int code) {
  if (code == SQLITE_OK) return;
  if (code == SQLITE_TOOBIG) throw DbError(Kind::Other, QStringLiteral("内容太大，数据库不能保存。"));
  throw DbError(Kind::Other, QStringLiteral("参数不能传给数据库（代码 %1）。").arg(code));
}

void bindStatic(sqlite3_stmt* statement, int at, std::string_view text) {
  check(sqlite3_bind_text64(statement, at, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
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

}  // namespace parameter_binding_detail

void ParameterBinder::reserve(std::span<const jet::Parameter> parameters, std::span<const Value> values) {
  // Everything is reserved before the first bind, because bound texts point into the buffer.
  std::size_t bytes = 0;
  for (const jet::Parameter& parameter : parameters) {
    bytes += sizeof(NumberBuffer);
    if (parameter.fromDrivingRow) continue;
    if (const auto* text = std::get_if<QString>(&values[static_cast<std::size_t>(parameter.source)].raw()))
      bytes += static_cast<std::size_t>(text->size()) * parameter_binding_detail::bytesPerUnit;
  }
  if (scratch_.size() < bytes) scratch_.resize(bytes);
  used_ = 0;
}

void ParameterBinder::bind(sqlite3_stmt* statement, std::span<const jet::Parameter> parameters,
                           std::span<const Value> values, const RowSet* driving, int row) {
  reserve(parameters, values);
  int at = 0;
  for (const jet::Parameter& parameter : parameters) {
    ++at;
    if (parameter.fromDrivingRow)
      bindCell(statement, at, parameter, *driving, row);
    else
      bindValue(statement, at, parameter, values[static_cast<std::size_t>(parameter.source)]);
  }
}

void ParameterBinder::bindValue(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Null:
      return parameter_binding_detail::check(sqlite3_bind_null(statement, at));
    case Value::Kind::Integer:
      return bindInteger(statement, at, parameter, *std::get_if<std::int64_t>(&value.raw()));
    case Value::Kind::Real:
      return bindReal(statement, at, parameter, *std::get_if<double>(&value.raw()));
    case Value::Kind::Text:
      return bindText(statement, at, parameter, toUtf8(*std::get_if<QString>(&value.raw())));
  }
}

void ParameterBinder::bindCell(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, const RowSet& set,
                               int row) {
  switch (set.kind(row, parameter.source)) {
    case Value::Kind::Null:
      return parameter_binding_detail::check(sqlite3_bind_null(statement, at));
    case Value::Kind::Integer:
      return bindInteger(statement, at, parameter, set.integer(row, parameter.source));
    case Value::Kind::Real:
      return bindReal(statement, at, parameter, set.number(row, parameter.source));
    case Value::Kind::Text:
      return bindText(statement, at, parameter, set.utf8(row, parameter.source));
  }
}

void ParameterBinder::bindInteger(sqlite3_stmt* statement, int at, const jet::Parameter& parameter,
                                  std::int64_t number) {
  using namespace parameter_binding_detail;
  if (parameter.typed) {
    if (parameter.target == ColumnType::Bit) number = number != 0;
    if (parameter.target == ColumnType::Text || parameter.target == ColumnType::LongText) {
      NumberBuffer buffer;
      const std::string_view text = kept(formatNumber(static_cast<long long>(number), buffer));
      checkWidth(parameter, text);
      return bindStatic(statement, at, text);
    }
  }
  check(sqlite3_bind_int64(statement, at, number));
}

void ParameterBinder::bindReal(sqlite3_stmt* statement, int at, const jet::Parameter& parameter, double number) {
  using namespace parameter_binding_detail;
  if (!std::isfinite(number)) refuseNumber(parameter);
  if (!parameter.typed) return check(sqlite3_bind_double(statement, at, number));
  switch (parameter.target) {
    case ColumnType::Numeric:
      return check(sqlite3_bind_double(statement, at, toSixDecimals(number)));
    case ColumnType::Double:
      return check(sqlite3_bind_double(statement, at, number));
    case ColumnType::Bit:
      return check(sqlite3_bind_int64(statement, at, number != 0));
    case ColumnType::Counter:
    case ColumnType::Integer:
      if (std::fabs(number) > 9e15) refuseNumber(parameter);
      return check(sqlite3_bind_int64(statement, at, wholeNumber(number)));
    case ColumnType::Text:
    case ColumnType::LongText: {
      NumberBuffer buffer;
      const std::string_view text = kept(formatNumber(number, buffer));
      checkWidth(parameter, text);
      return bindStatic(statement, at, text);
    }
  }
}

void ParameterBinder::bindText(sqlite3_stmt* statement, int at, const jet::Parameter& parameter,
                               std::string_view utf8) {
  using namespace parameter_binding_detail;
  const bool isText = parameter.target == ColumnType::Text || parameter.target == ColumnType::LongText;
  if (!parameter.typed || isText) {
    checkWidth(parameter, utf8);
    return bindStatic(statement, at, utf8);
  }
  if (parameter.target == ColumnType::Bit) {
    const bool truth = truthOf(parameter, utf8);
    return check(sqlite3_bind_int64(statement, at, truth));
  }
  const auto number = parseNumber(utf8);
  if (!number) refuseText(parameter, utf8);
  bindReal(statement, at, parameter, *number);
}

std::string_view ParameterBinder::toUtf8(QStringView text) {
  using namespace parameter_binding_detail;
  char* const begin = scratch_.data() + used_;
  char* out = begin;
  const char16_t* in = text.utf16();
  const char16_t* const end = in + text.size();
  while (in != end) {
    char32_t c = *in++;
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

std::string_view ParameterBinder::kept(std::string_view text) {
  char* const begin = scratch_.data() + used_;
  std::memcpy(begin, text.data(), text.size());
  used_ += text.size();
  return {begin, text.size()};
}

}  // namespace jxc::sqlite
