// 值: one value on its way to or from the database: null, whole number, real number or text.
#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <variant>

namespace jxc {

/// A value bound to a `?` of a statement or read from a row. Money is yuan, quantities are units, both real numbers;
/// flags are 0 and 1; dates and times are text. Null stays null: it is neither zero nor the empty text.
class Value {
 public:
  enum class Kind : std::uint8_t { Null, Integer, Real, Text };

  Value() = default;
  Value(bool flag) : data_(static_cast<std::int64_t>(flag ? 1 : 0)) {}
  Value(int number) : data_(static_cast<std::int64_t>(number)) {}
  Value(long number) : data_(static_cast<std::int64_t>(number)) {}
  Value(long long number) : data_(static_cast<std::int64_t>(number)) {}
  Value(double number) : data_(number) {}
  Value(QString text) : data_(std::move(text)) {}
  Value(QStringView text) : data_(text.toString()) {}
  Value(const char* utf8) : data_(QString::fromUtf8(utf8)) {}
  Value(const char16_t* text) : data_(QString::fromUtf16(text)) {}

  Kind kind() const { return static_cast<Kind>(data_.index()); }
  bool isNull() const { return kind() == Kind::Null; }

  /// Whole-number and real readings: null and text that is no number read as 0 (an empty field counts as zero
  /// everywhere). The whole number of a real one is the nearest, half away from zero.
  std::int64_t integer() const;
  double number() const;
  /// Text reading: null is empty; numbers in general format with up to 15 significant digits ("99.9", "100").
  QString text() const;

  const std::variant<std::monostate, std::int64_t, double, QString>& raw() const { return data_; }
  bool operator==(const Value&) const = default;

 private:
  std::variant<std::monostate, std::int64_t, double, QString> data_;
};

/// The one text form of a number: general format, 15 significant digits, never an exponent within six decimals' reach.
QString numberText(double number);

/// The nearest whole number, half away from zero; held to the range of 64 bits, 0 for what is no number.
std::int64_t wholeNumber(double number);

}  // namespace jxc
