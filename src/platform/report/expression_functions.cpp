#include "engine/date_text.h"
#include "engine/number_text.h"
#include "platform/report/expression.h"

#include <algorithm>
#include <cmath>

namespace jxc::report {

namespace expression_functions_detail {

using jet::Function;

constexpr int kLongest = 65536;

[[noreturn]] void refuse(const QString& message) {
  throw ExpressionError{message};
}

/// Characters beyond the first plane are two units of a QString, but one to whoever counts.
int characters(const QString& text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](QChar c) { return !c.isLowSurrogate(); }));
}

qsizetype unitsOf(const QString& text, qsizetype characters) {
  qsizetype at = 0;
  for (; at < text.size() && characters > 0; --characters)
    at += text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
  return at;
}

qsizetype countOf(const Value& value) {
  return static_cast<qsizetype>(std::clamp(numberIn(value), 0.0, static_cast<double>(kLongest)));
}

Value whole(double x) {
  if (!(std::fabs(x) < 9.2e18)) refuse(QStringLiteral("数字太大"));
  return static_cast<long long>(x);
}

Value textFunction(Function function, std::span<const Value> a) {
  const QString text = a[0].text();
  switch (function) {
    case Function::Left:
      return text.left(unitsOf(text, countOf(a[1])));
    case Function::Right: {
      const auto wanted = countOf(a[1]);
      return text.mid(unitsOf(text, std::max<qsizetype>(0, characters(text) - wanted)));
    }
    case Function::Mid: {
      const auto from = unitsOf(text, std::max<qsizetype>(0, countOf(a[1]) - 1));
      const QString rest = text.mid(from);
      return a.size() > 2 ? rest.left(unitsOf(rest, countOf(a[2]))) : rest;
    }
    case Function::Len:
      return characters(text);
    case Function::Instr: {
      const bool hasStart = a.size() > 2;
      const QString whole = a[hasStart ? 1 : 0].text();
      const qsizetype start = hasStart ? std::max<qsizetype>(0, countOf(a[0]) - 1) : 0;
      const qsizetype found = whole.indexOf(a[hasStart ? 2 : 1].text(), unitsOf(whole, start));
      return found < 0 ? 0 : characters(whole.left(found)) + 1;
    }
    case Function::Trim:
    case Function::LTrim:
    case Function::RTrim: {
      qsizetype from = 0, to = text.size();
      while (function != Function::RTrim && from < to && text[from] == u' ')
        ++from;
      while (function != Function::LTrim && to > from && text[to - 1] == u' ')
        --to;
      return text.mid(from, to - from);
    }
    case Function::Upper:
      return text.toUpper();
    case Function::Lower:
      return text.toLower();
    case Function::Replace: {
      const QString part = a[1].text();
      return part.isEmpty() ? text : QString(text).replace(part, a[2].text());
    }
    case Function::Space:
      return QString(countOf(a[0]), u' ');
    case Function::String: {
      const QString unit = a[1].text();
      return unit.left(unitsOf(unit, 1)).repeated(countOf(a[0]));
    }
    case Function::Asc:
      return text.isEmpty() ? 0 : static_cast<int>(text.toUcs4().front());
    case Function::Chr: {
      const double code = numberIn(a[0]);
      if (!(code >= 1 && code <= 0x10FFFF)) refuse(QStringLiteral("没有这个字符"));
      const auto character = static_cast<char32_t>(code);
      return QString::fromUcs4(&character, 1);
    }
    case Function::Format:
      return QString::fromStdString(formatText(text.toStdString(), a[1].text().toStdString()));
    default:
      return {};
  }
}

Value numberFunction(Function function, std::span<const Value> a) {
  const double x = function == Function::Val ? 0 : numberIn(a[0]);
  switch (function) {
    case Function::Abs:
      return std::fabs(x);
    case Function::Round:
      return roundDecimals(x, a.size() > 1 ? static_cast<int>(std::clamp(numberIn(a[1]), -12.0, 12.0)) : 0);
    case Function::Int:
      return whole(std::floor(toSixDecimals(x)));
    case Function::Fix:
      return whole(std::trunc(toSixDecimals(x)));
    case Function::Sgn:
      return x > 0 ? 1 : x < 0 ? -1 : 0;
    case Function::Sqr:
      if (x < 0) refuse(QStringLiteral("负数不能开方"));
      return std::sqrt(x);
    case Function::Str:
      return (x < 0 ? QString() : QStringLiteral(" ")) + numberText(x);
    case Function::ToInteger:
      return whole(roundDecimals(toSixDecimals(x), 0));
    case Function::ToNumber:
      return x;
    case Function::Val: {
      const QString text = a[0].text().trimmed();
      // The number that a text begins with.
      for (qsizetype length = text.size(); length > 0; --length) {
        if (const auto number = parseNumber(text.left(length).toStdString())) return *number;
      }
      return 0;
    }
    default:
      return {};
  }
}

Value momentValue(const Value& value, std::string_view unit) {
  const auto moment = parseMoment(value.text().toStdString());
  const auto part = moment ? momentPart(unit, *moment) : std::nullopt;
  return part ? Value(static_cast<long long>(*part)) : Value();
}

Value dateFunction(Function function, std::span<const Value> a) {
  switch (function) {
    case Function::Year:
      return momentValue(a[0], "yyyy");
    case Function::Month:
      return momentValue(a[0], "m");
    case Function::Day:
      return momentValue(a[0], "d");
    case Function::Hour:
      return momentValue(a[0], "h");
    case Function::Minute:
      return momentValue(a[0], "n");
    case Function::Second:
      return momentValue(a[0], "s");
    case Function::Weekday:
      return momentValue(a[0], "w");
    case Function::DatePart:
      return momentValue(a[1], lowerCaseText(a[0].text().toStdString()));
    default:
      break;
  }
  const std::string unit = lowerCaseText(a[0].text().toStdString());
  if (function == Function::DateDiff) {
    const auto from = parseMoment(a[1].text().toStdString()), to = parseMoment(a[2].text().toStdString());
    const auto found = from && to ? momentDifference(unit, *from, *to) : std::nullopt;
    return found ? Value(static_cast<long long>(*found)) : Value();
  }
  auto moment = parseMoment(a[2].text().toStdString());
  const double count = numberIn(a[1]);
  if (!moment || !(std::fabs(count) < 1e9) || !addToMoment(unit, std::llround(count), *moment)) return {};
  return QString::fromStdString(momentText(*moment));
}

}  // namespace expression_functions_detail

double numberIn(const Value& value) {
  if (value.kind() != Value::Kind::Text) return value.number();
  const QString text = value.text().trimmed();
  if (text.isEmpty()) return 0;
  if (const auto number = parseNumber(text.toStdString())) return *number;
  throw ExpressionError{QStringLiteral("“%1”不是数字").arg(text.left(20))};
}

int compareValues(const Value& a, const Value& b) {
  if (a.kind() == Value::Kind::Text && b.kind() == Value::Kind::Text) return a.text().compare(b.text());
  const double x = toSixDecimals(numberIn(a)), y = toSixDecimals(numberIn(b));
  return x < y ? -1 : x > y ? 1 : 0;
}

bool isLike(const QString& text, const QString& pattern) {
  // Backs up to the last % only: linear but for very odd patterns.
  qsizetype t = 0, p = 0, star = -1, mark = 0;
  const auto same = [](QChar a, QChar b) {
    return a == b || (a.unicode() < 128 && b.unicode() < 128 && a.toLower() == b.toLower());
  };
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == u'%') {
      star = p++;
      mark = t;
    } else if (p < pattern.size() && (pattern[p] == u'_' || same(pattern[p], text[t]))) {
      ++p;
      ++t;
    } else if (star >= 0) {
      p = star + 1;
      t = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'%')
    ++p;
  return p == pattern.size();
}

Value callFunction(jet::Function function, std::span<const Value> a, const QString& now) {
  using namespace expression_functions_detail;
  switch (function) {
    case Function::Nz:
      if (!a[0].isNull()) return a[0];
      return a.size() > 1 ? a[1] : Value(QString());
    case Function::IsNull:
      return a[0].isNull();
    case Function::IsNumeric:
      return !a[0].isNull() && (a[0].kind() != Value::Kind::Text || parseNumber(a[0].text().toStdString()).has_value());
    case Function::Date:
      return now.left(10);
    case Function::Time:
      return now.mid(11);
    case Function::Now:
      return now;
    default:
      break;
  }
  // Everything else knows nothing about what is not there.
  if (std::any_of(a.begin(), a.end(), [](const Value& value) { return value.isNull(); })) return {};
  if (function == Function::ToText) return a[0].text();
  if (function >= Function::DateDiff && function <= Function::Weekday) return dateFunction(function, a);
  if (function >= Function::Abs && function <= Function::ToNumber) return numberFunction(function, a);
  return textFunction(function, a);
}

}  // namespace jxc::report
