#include "engine/date_text.h"

#include "engine/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace jxc {

namespace date_text_detail {

constexpr int daysIn(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

/// Days since 0000-03-01 of the same calendar throughout.
std::int64_t dayNumber(const Moment& m) {
  const std::int64_t y = m.month <= 2 ? m.year - 1 : m.year;
  const std::int64_t shifted = (m.month + 9) % 12;
  return 365 * y + y / 4 - y / 100 + y / 400 + (153 * shifted + 2) / 5 + m.day - 1;
}

void setDay(Moment& m, std::int64_t number) {
  const std::int64_t era = number / 146097;
  const std::int64_t inEra = number % 146097;
  const std::int64_t yearOfEra = (inEra - inEra / 1460 + inEra / 36524 - inEra / 146096) / 365;
  const std::int64_t dayOfYear = inEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
  m.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
  m.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  m.year = static_cast<int>(yearOfEra + era * 400 + (m.month <= 2 ? 1 : 0));
}

std::int64_t secondNumber(const Moment& m) {
  return dayNumber(m) * 86400 + m.hour * 3600 + m.minute * 60 + m.second;
}

bool readNumber(std::string_view& text, int& number) {
  std::size_t digits = 0;
  number = 0;
  while (digits < text.size() && digits < 4 && text[digits] >= '0' && text[digits] <= '9') {
    number = number * 10 + (text[digits++] - '0');
  }
  text.remove_prefix(digits);
  return digits > 0;
}

bool readSign(std::string_view& text, std::string_view signs) {
  if (text.empty() || signs.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
  return a >= 0 ? a / b : -((-a + b - 1) / b);
}

}  // namespace date_text_detail

int weekdayOf(const Moment& m) {
  using namespace date_text_detail;
  return static_cast<int>((dayNumber(m) + 3) % 7) + 1;
}

std::optional<Moment> parseMoment(std::string_view text) {
  using namespace date_text_detail;
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  Moment m;
  if (!readNumber(text, m.year) || !readSign(text, "-/.") || !readNumber(text, m.month) || !readSign(text, "-/.") ||
      !readNumber(text, m.day)) {
    return {};
  }
  if (m.year < 1 || m.month < 1 || m.month > 12 || m.day < 1 || m.day > daysIn(m.year, m.month)) return {};
  if (text.empty()) return m;
  m.timed = true;
  if (!readSign(text, " T") || !readNumber(text, m.hour) || !readSign(text, ":") || !readNumber(text, m.minute))
    return {};
  if (!text.empty() && (!readSign(text, ":") || !readNumber(text, m.second))) return {};
  if (!text.empty() || m.hour > 23 || m.minute > 59 || m.second > 59) return {};
  return m;
}

std::string momentText(const Moment& m) {
  char buffer[96];
  const int length = m.timed ? std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", m.year, m.month,
                                             m.day, m.hour, m.minute, m.second)
                             : std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", m.year, m.month, m.day);
  return {buffer, static_cast<std::size_t>(length)};
}

std::optional<std::int64_t> momentDifference(std::string_view unit, const Moment& a, const Moment& b) {
  using namespace date_text_detail;
  const std::int64_t days = dayNumber(b) - dayNumber(a);
  if (unit == "d" || unit == "y") return days;
  if (unit == "m") return (b.year - a.year) * 12 + b.month - a.month;
  if (unit == "yyyy") return b.year - a.year;
  if (unit == "q") return (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
  if (unit == "w") return days / 7;
  if (unit == "ww") return floorDiv(dayNumber(b) + 3, 7) - floorDiv(dayNumber(a) + 3, 7);
  if (unit == "s") return secondNumber(b) - secondNumber(a);
  if (unit == "n") return floorDiv(secondNumber(b), 60) - floorDiv(secondNumber(a), 60);
  if (unit == "h") return floorDiv(secondNumber(b), 3600) - floorDiv(secondNumber(a), 3600);
  return {};
}

std::optional<std::int64_t> momentPart(std::string_view unit, const Moment& m) {
  using namespace date_text_detail;
  if (unit == "yyyy") return m.year;
  if (unit == "m") return m.month;
  if (unit == "d") return m.day;
  if (unit == "q") return (m.month - 1) / 3 + 1;
  if (unit == "w") return weekdayOf(m);
  if (unit == "h") return m.hour;
  if (unit == "n") return m.minute;
  if (unit == "s") return m.second;
  const Moment newYear{m.year, 1, 1};
  if (unit == "y") return dayNumber(m) - dayNumber(newYear) + 1;
  if (unit == "ww") return (dayNumber(m) - dayNumber(newYear) + weekdayOf(newYear) - 1) / 7 + 1;
  return {};
}

bool addToMoment(std::string_view unit, std::int64_t count, Moment& m) {
  using namespace date_text_detail;
  std::int64_t months = 0, days = 0, seconds = 0;
  if (unit == "yyyy")
    months = count * 12;
  else if (unit == "q")
    months = count * 3;
  else if (unit == "m")
    months = count;
  else if (unit == "d" || unit == "y" || unit == "w")
    days = count;
  else if (unit == "ww")
    days = count * 7;
  else if (unit == "h")
    seconds = count * 3600;
  else if (unit == "n")
    seconds = count * 60;
  else if (unit == "s")
    seconds = count;
  else
    return false;
  if (months != 0) {
    const std::int64_t total = m.year * 12LL + m.month - 1 + months;
    if (total < 12 || total >= 120000) return false;
    m.year = static_cast<int>(total / 12);
    m.month = static_cast<int>(total % 12) + 1;
    m.day = std::min(m.day, daysIn(m.year, m.month));  // a month behind 31 January is the last of February
  }
  if (seconds != 0) m.timed = true;
  const std::int64_t at = secondNumber(m) + days * 86400 + seconds;
  constexpr std::int64_t kFirst = 306 * 86400LL, kEnd = 3652365LL * 86400;  // years 1 to 9999
  if (at < kFirst || at >= kEnd) return false;
  setDay(m, at / 86400);
  m.hour = static_cast<int>(at % 86400 / 3600);
  m.minute = static_cast<int>(at % 3600 / 60);
  m.second = static_cast<int>(at % 60);
  return true;
}

std::string formatMoment(const Moment& m, std::string_view pattern) {
  std::string result;
  bool behindHour = false;
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    std::size_t count = 1;
    while (i + count < pattern.size() && pattern[i + count] == c)
      ++count;
    int value = -1;
    switch (c) {
      case 'y':
        value = count > 2 ? m.year : m.year % 100;
        break;
      case 'm':
        value = behindHour ? m.minute : m.month;
        break;
      case 'd':
        value = m.day;
        break;
      case 'h':
        value = m.hour;
        break;
      case 'n':
        value = m.minute;
        break;
      case 's':
        value = m.second;
        break;
      default:
        break;
    }
    if (value < 0) {
      result += pattern.substr(i, count);
    } else {
      char buffer[16];
      std::snprintf(buffer, sizeof buffer, "%0*d", static_cast<int>(std::min<std::size_t>(count, 4)), value);
      result += buffer;
      behindHour = c == 'h';
    }
    i += count;
  }
  return result;
}

std::string formatFigure(double number, std::string_view pattern) {
  const std::size_t point = pattern.find('.');
  int required = 0, optional = 0, whole = 0;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool behind = point != std::string_view::npos && i > point;
    if (pattern[i] == '0') ++(behind ? required : whole);
    if (pattern[i] == '#' && behind) ++optional;
  }
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", required + optional, std::fabs(toSixDecimals(number)));
  std::string digits = buffer;
  std::string fraction;
  if (const std::size_t at = digits.find('.'); at != std::string::npos) {
    fraction = digits.substr(at + 1);
    digits.resize(at);
    while (static_cast<int>(fraction.size()) > required && fraction.back() == '0')
      fraction.pop_back();
  }
  if (digits == "0" && whole == 0) digits.clear();
  while (static_cast<int>(digits.size()) < whole)
    digits.insert(0, 1, '0');
  if (pattern.find(',') != std::string_view::npos) {
    for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
      digits.insert(static_cast<std::size_t>(at), 1, ',');
  }
  const bool negative = number < 0 && (digits + fraction).find_first_not_of("0,") != std::string::npos;
  return (negative ? "-" : "") + digits + (fraction.empty() ? "" : "." + fraction);
}

std::string formatText(std::string_view value, std::string_view pattern) {
  const std::string lower = lowerCaseText(pattern);
  if (lower.find_first_of("ymdhns") != std::string::npos) {
    const auto moment = parseMoment(value);
    return moment ? formatMoment(*moment, lower) : std::string(value);
  }
  const auto number = parseNumber(value);
  return number ? formatFigure(*number, lower) : std::string(value);
}

std::string lowerCaseText(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return result;
}

}  // namespace jxc
