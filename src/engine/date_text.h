// 日期文本: dates as the text yyyy-MM-dd, with or without HH:mm:ss behind a blank: read, counted, formatted; figures
// too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace jxc {

/// A day, with or without a time of day.
struct Moment {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  bool timed = false;
};

/// Nothing for what is no date: old rows hold all kinds of text in their date columns.
std::optional<Moment> parseMoment(std::string_view text);
std::string momentText(const Moment& m);
/// 1 is Sunday.
int weekdayOf(const Moment& m);

// Units: yyyy, q, m, y, d, w, ww, h, n, s, in lower case; nothing or false for another one.

/// How many borders of the unit lie between: from 31 January to 1 February is one month.
std::optional<std::int64_t> momentDifference(std::string_view unit, const Moment& a, const Moment& b);
std::optional<std::int64_t> momentPart(std::string_view unit, const Moment& m);
bool addToMoment(std::string_view unit, std::int64_t count, Moment& m);

/// yyyy, yy, mm, m, dd, d, hh, h, nn, n, ss, s; mm behind an hour is minutes. The pattern is in lower case.
std::string formatMoment(const Moment& m, std::string_view pattern);
/// 0, #, one comma for thousands, a point.
std::string formatFigure(double number, std::string_view pattern);
/// What `format(x,pattern)` of a statement gives: a date by a pattern with letters of dates, else a number; a value
/// that is neither comes back as it is.
std::string formatText(std::string_view value, std::string_view pattern);

/// Latin letters in lower case.
std::string lowerCaseText(std::string_view text);

}  // namespace jxc
