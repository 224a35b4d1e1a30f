#include "engine/sqlite/functions.h"

#include "engine/number_text.h"
#include "engine/sqlite/date_functions.h"
#include "engine/sqlite/function_arguments.h"
#include "engine/sqlite/row_taker.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace jxc::sqlite {

namespace functions_detail {

// ---- numbers ----

/// A number from whatever stands there: blank text counts as zero, as an empty field does everywhere.
bool numberOf(sqlite3_context* context, sqlite3_value* value, double& number) {
  if (sqlite3_value_numeric_type(value) != SQLITE_TEXT) {
    number = sqlite3_value_double(value);
    return true;
  }
  const std::string_view text = textOf(value);
  if (text.find_first_not_of(' ') == std::string_view::npos) {
    number = 0;
    return true;
  }
  if (const auto parsed = parseNumber(text)) {
    number = *parsed;
    return true;
  }
  refuse(context, function_failure::kNoNumber, text);
  return false;
}

void giveDecimal(sqlite3_context* context, double number) {
  if (!isInNumericRange(number)) return refuse(context, function_failure::kArithmetic, "overflow");
  sqlite3_result_double(context, toSixDecimals(number));
}

void decimal(sqlite3_context* context, int, sqlite3_value** v) {
  switch (sqlite3_value_type(v[0])) {
    case SQLITE_NULL:
      return;
    case SQLITE_INTEGER:
      sqlite3_result_value(context, v[0]);
      return;
    case SQLITE_FLOAT:
      return giveDecimal(context, sqlite3_value_double(v[0]));
    default: {
      double number = 0;
      if (numberOf(context, v[0], number)) giveDecimal(context, number);
    }
  }
}

void number(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  if (sqlite3_value_type(v[0]) == SQLITE_INTEGER) return sqlite3_result_value(context, v[0]);
  double x = 0;
  if (numberOf(context, v[0], x)) sqlite3_result_double(context, x);
}

void tryNumber(sqlite3_context* context, int, sqlite3_value** v) {
  if (sqlite3_value_type(v[0]) != SQLITE_TEXT) return sqlite3_result_value(context, v[0]);
  if (const auto parsed = parseNumber(textOf(v[0]))) sqlite3_result_double(context, toSixDecimals(*parsed));
}

void text(sqlite3_context* context, int, sqlite3_value** v) {
  NumberBuffer buffer;
  switch (sqlite3_value_type(v[0])) {
    case SQLITE_INTEGER:
      return give(context, formatNumber(static_cast<long long>(sqlite3_value_int64(v[0])), buffer));
    case SQLITE_FLOAT:
      return give(context, formatNumber(sqlite3_value_double(v[0]), buffer));
    default:
      return sqlite3_result_value(context, v[0]);
  }
}

void giveWhole(sqlite3_context* context, double x) {
  if (!(std::fabs(x) < 9.2e18)) return refuse(context, function_failure::kArithmetic, "overflow");
  sqlite3_result_int64(context, static_cast<sqlite3_int64>(x));
}

void whole(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  if (sqlite3_value_type(v[0]) == SQLITE_INTEGER) return sqlite3_result_value(context, v[0]);
  double x = 0;
  if (numberOf(context, v[0], x)) giveWhole(context, roundDecimals(toSixDecimals(x), 0));
}

void bit(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return sqlite3_result_int(context, 0);
  if (sqlite3_value_type(v[0]) == SQLITE_TEXT) {
    const std::string_view word = textOf(v[0]);
    const auto is = [&](std::string_view w) {
      return word.size() == w.size() && sqlite3_strnicmp(word.data(), w.data(), static_cast<int>(w.size())) == 0;
    };
    if (is("true") || is("false")) return sqlite3_result_int(context, is("true"));
  }
  double x = 0;
  if (numberOf(context, v[0], x)) sqlite3_result_int(context, toSixDecimals(x) != 0);
}

void fit(sqlite3_context* context, int, sqlite3_value** v) {
  const int width = sqlite3_value_int(v[1]);
  if (sqlite3_value_type(v[0]) == SQLITE_TEXT) {
    const std::string_view value = textOf(v[0]);
    const auto isBegin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    if (value.size() > static_cast<std::size_t>(width) && std::count_if(value.begin(), value.end(), isBegin) > width) {
      return refuse(context, function_failure::kTooWide, textOf(v[2]));
    }
  }
  sqlite3_result_value(context, v[0]);
}

void plus(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1])) return;
  const int left = sqlite3_value_type(v[0]), right = sqlite3_value_type(v[1]);
  if (left == SQLITE_TEXT && right == SQLITE_TEXT) {
    return give(context, std::string(textOf(v[0])) + std::string(textOf(v[1])));
  }
  if (left == SQLITE_INTEGER && right == SQLITE_INTEGER) {
    sqlite3_int64 sum = 0;
    if (!__builtin_add_overflow(sqlite3_value_int64(v[0]), sqlite3_value_int64(v[1]), &sum)) {
      return sqlite3_result_int64(context, sum);
    }
  }
  double a = 0, b = 0;
  if (numberOf(context, v[0], a) && numberOf(context, v[1], b)) sqlite3_result_double(context, a + b);
}

/// Both operands, or false when either is null or no number, or the divisor is zero.
bool operands(sqlite3_context* context, sqlite3_value** v, double& a, double& b) {
  if (isNull(v[0]) || isNull(v[1])) return false;
  if (!numberOf(context, v[0], a) || !numberOf(context, v[1], b)) return false;
  if (b != 0) return true;
  refuse(context, function_failure::kArithmetic, "division by zero");
  return false;
}

void divide(sqlite3_context* context, int, sqlite3_value** v) {
  double a = 0, b = 0;
  if (!operands(context, v, a, b)) return;
  // A divisor that is noise of binary fractions is a zero that was calculated: 0.1+0.2-0.3.
  if (std::fabs(b) < 1e-12) return refuse(context, function_failure::kArithmetic, "division by zero");
  sqlite3_result_double(context, a / b);
}

/// `\` and mod work on whole numbers: both sides are rounded first.
template <bool kRemainder>
void divideWhole(sqlite3_context* context, int, sqlite3_value** v) {
  double a = 0, b = 0;
  if (!operands(context, v, a, b)) return;
  a = roundDecimals(toSixDecimals(a), 0);
  b = roundDecimals(toSixDecimals(b), 0);
  if (b == 0) return refuse(context, function_failure::kArithmetic, "division by zero");
  giveWhole(context, kRemainder ? std::fmod(a, b) : std::trunc(a / b));
}

void power(sqlite3_context* context, int, sqlite3_value** v) {
  double a = 0, b = 0;
  if (isNull(v[0]) || isNull(v[1])) return;
  if (!numberOf(context, v[0], a) || !numberOf(context, v[1], b)) return;
  const double result = std::pow(a, b);
  if (!std::isfinite(result)) return refuse(context, function_failure::kArithmetic, "power");
  sqlite3_result_double(context, result);
}

void round(sqlite3_context* context, int count, sqlite3_value** v) {
  if (isNull(v[0]) || (count == 2 && isNull(v[1]))) return;
  if (sqlite3_value_type(v[0]) == SQLITE_INTEGER && (count == 1 || sqlite3_value_int(v[1]) >= 0)) {
    return sqlite3_result_value(context, v[0]);
  }
  double x = 0;
  if (!numberOf(context, v[0], x)) return;
  sqlite3_result_double(context, roundDecimals(x, count == 2 ? sqlite3_value_int(v[1]) : 0));
}

template <double (*kCut)(double)>
void cut(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  double x = 0;
  // 10*(0.1+0.7) is 8 here, although the double lies below it.
  if (numberOf(context, v[0], x)) giveWhole(context, kCut(toSixDecimals(x)));
}

double downwards(double x) {
  return std::floor(x);
}
double towardsZero(double x) {
  return std::trunc(x);
}

void squareRoot(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  double x = 0;
  if (!numberOf(context, v[0], x)) return;
  if (x < 0) return refuse(context, function_failure::kArithmetic, "root of a negative number");
  sqlite3_result_double(context, std::sqrt(x));
}

void isNumeric(sqlite3_context* context, int, sqlite3_value** v) {
  const int type = sqlite3_value_type(v[0]);
  const bool yes = type == SQLITE_INTEGER || type == SQLITE_FLOAT || (type == SQLITE_TEXT && parseNumber(textOf(v[0])));
  sqlite3_result_int(context, yes);
}

/// The number that a text begins with, 0 when it begins with none.
void val(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  std::string_view t = textOf(v[0]);
  while (!t.empty() && t.front() == ' ')
    t.remove_prefix(1);
  std::size_t length = std::min(t.find_first_not_of("0123456789.+-eE"), t.size());
  for (; length > 0; --length) {
    if (const auto parsed = parseNumber(t.substr(0, length))) return sqlite3_result_double(context, *parsed);
  }
  sqlite3_result_int(context, 0);
}

/// Text of a number with a blank in the place of the plus.
void str(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0])) return;
  double x = 0;
  if (!numberOf(context, v[0], x)) return;
  NumberBuffer buffer;
  const std::string_view digits = formatNumber(x, buffer);
  give(context, (x < 0 ? "" : " ") + std::string(digits));
}

// ---- texts ----

/// The last n characters.
void right(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1])) return;
  const std::string_view t = textOf(v[0]);
  int wanted = sqlite3_value_int(v[1]);
  std::size_t begin = t.size();
  while (begin > 0 && wanted > 0) {
    --begin;
    if ((static_cast<unsigned char>(t[begin]) & 0xC0) != 0x80) --wanted;
  }
  give(context, t.substr(begin));
}

std::size_t bytesOf(std::string_view t, sqlite3_int64 characters) {
  std::size_t at = 0;
  while (at < t.size() && characters > 0) {
    ++at;
    while (at < t.size() && (static_cast<unsigned char>(t[at]) & 0xC0) == 0x80)
      ++at;
    --characters;
  }
  return at;
}

/// instr(start,text,part): where part begins, counted in characters from 1, looking from the start; 0 when nowhere.
void instr(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1]) || isNull(v[2])) return;
  const sqlite3_int64 start = sqlite3_value_int64(v[0]);
  const std::string_view t = textOf(v[1]);
  const std::size_t found = start < 1 ? std::string_view::npos : t.find(textOf(v[2]), bytesOf(t, start - 1));
  if (found == std::string_view::npos) return sqlite3_result_int(context, 0);
  const std::string_view before = t.substr(0, found);
  const auto isBegin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  sqlite3_result_int64(context, 1 + std::count_if(before.begin(), before.end(), isBegin));
}

constexpr int kLongest = 65536;

void space(sqlite3_context* context, int, sqlite3_value** v) {
  if (!isNull(v[0]))
    give(context, std::string(static_cast<std::size_t>(std::clamp(sqlite3_value_int(v[0]), 0, kLongest)), ' '));
}

/// string(3,'ab') gives 'aaa'.
void repeat(sqlite3_context* context, int, sqlite3_value** v) {
  if (isNull(v[0]) || isNull(v[1])) return;
  const std::string_view t = textOf(v[1]);
  const std::string_view first = t.substr(0, bytesOf(t, 1));
  std::string result;
  for (int i = std::clamp(sqlite3_value_int(v[0]), 0, kLongest); i > 0; --i)
    result += first;
  give(context, result);
}

struct Entry {
  const char* name;
  int arguments;
  void (*run)(sqlite3_context*, int, sqlite3_value**);
};

constexpr Entry kEntries[] = {
    {"jxc_dec", 1, decimal},
    {"jxc_num", 1, number},
    {"jxc_trynum", 1, tryNumber},
    {"jxc_text", 1, text},
    {"jxc_int", 1, whole},
    {"jxc_bit", 1, bit},
    {"jxc_fit", 3, fit},
    {"jxc_plus", 2, plus},
    {"jxc_div", 2, divide},
    {"jxc_idiv", 2, divideWhole<false>},
    {"jxc_mod", 2, divideWhole<true>},
    {"jxc_pow", 2, power},
    {"jxc_round", 1, round},
    {"jxc_round", 2, round},
    {"jxc_floor", 1, cut<downwards>},
    {"jxc_fix", 1, cut<towardsZero>},
    {"jxc_sqr", 1, squareRoot},
    {"jxc_isnumeric", 1, isNumeric},
    {"jxc_val", 1, val},
    {"jxc_str", 1, str},
    {"jxc_right", 2, right},
    {"jxc_instr", 3, instr},
    {"jxc_space", 1, space},
    {"jxc_string", 2, repeat},
};

}  // namespace functions_detail

void registerFunctions(sqlite3* connection) {
  for (const auto& entry : functions_detail::kEntries) {
    sqlite3_create_function_v2(connection, entry.name, entry.arguments,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, entry.run, nullptr,
                               nullptr, nullptr);
  }
  registerDateFunctions(connection);
  registerRowTaker(connection);
}

}  // namespace jxc::sqlite
