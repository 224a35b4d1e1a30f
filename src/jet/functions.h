// 函数表: the functions of the dialect, what they take and what they give.
#pragma once

#include <cstdint>
#include <string_view>

namespace jxc::jet {

enum class Function : std::uint8_t {
  None,
  // Of one row.
  Iif,
  Nz,
  IsNull,
  IsNumeric,
  Left,
  Right,
  Mid,
  Len,
  Instr,
  Trim,
  LTrim,
  RTrim,
  Upper,
  Lower,
  Replace,
  Space,
  String,
  Asc,
  Chr,
  Format,
  Abs,
  Round,
  Int,
  Fix,
  Sgn,
  Sqr,
  Val,
  Str,
  ToText,
  ToInteger,
  ToNumber,
  DateDiff,
  DateAdd,
  DatePart,
  Year,
  Month,
  Day,
  Hour,
  Minute,
  Second,
  Weekday,
  Date,
  Time,
  Now,
  // Of a group.
  Count,
  Sum,
  Avg,
  Min,
  Max
};

struct FunctionEntry {
  std::string_view name;
  Function function;
  int least, most;             // arguments
  std::string_view arguments;  // one letter each: t text, n number, a anything; the last goes for the rest
  char result;                 // t text, i integer, n number, b yes or no, a as the argument says
};

/// Without regard to case; null when the dialect has no such function.
const FunctionEntry* findFunction(std::string_view name);

inline bool isAggregate(Function function) {
  return function >= Function::Count;
}

}  // namespace jxc::jet
