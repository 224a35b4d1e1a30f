#include "jet/functions.h"

#include "jet/lexer.h"

#include <algorithm>
#include <iterator>

namespace jxc::jet {

namespace functions_detail {

// Sorted by name for the binary search.
constexpr FunctionEntry kFunctions[] = {
    {"abs", Function::Abs, 1, 1, "n", 'n'},
    {"asc", Function::Asc, 1, 1, "t", 'i'},
    {"avg", Function::Avg, 1, 1, "n", 'n'},
    {"cdbl", Function::ToNumber, 1, 1, "n", 'n'},
    {"chr", Function::Chr, 1, 1, "n", 't'},
    {"cint", Function::ToInteger, 1, 1, "n", 'i'},
    {"clng", Function::ToInteger, 1, 1, "n", 'i'},
    {"count", Function::Count, 1, 1, "a", 'i'},
    {"cstr", Function::ToText, 1, 1, "t", 't'},
    {"date", Function::Date, 0, 0, "", 't'},
    {"dateadd", Function::DateAdd, 3, 3, "tnt", 't'},
    {"datediff", Function::DateDiff, 3, 3, "ttt", 'i'},
    {"datepart", Function::DatePart, 2, 2, "tt", 'i'},
    {"day", Function::Day, 1, 1, "t", 'i'},
    {"fix", Function::Fix, 1, 1, "n", 'i'},
    {"format", Function::Format, 2, 2, "at", 't'},
    {"hour", Function::Hour, 1, 1, "t", 'i'},
    {"iif", Function::Iif, 3, 3, "a", 'a'},
    {"instr", Function::Instr, 2, 3, "a", 'i'},
    {"int", Function::Int, 1, 1, "n", 'i'},
    {"isnull", Function::IsNull, 1, 1, "a", 'b'},
    {"isnumeric", Function::IsNumeric, 1, 1, "a", 'b'},
    {"lcase", Function::Lower, 1, 1, "t", 't'},
    {"left", Function::Left, 2, 2, "tn", 't'},
    {"len", Function::Len, 1, 1, "t", 'i'},
    {"lower", Function::Lower, 1, 1, "t", 't'},
    {"ltrim", Function::LTrim, 1, 1, "t", 't'},
    {"max", Function::Max, 1, 1, "a", 'a'},
    {"mid", Function::Mid, 2, 3, "tn", 't'},
    {"min", Function::Min, 1, 1, "a", 'a'},
    {"minute", Function::Minute, 1, 1, "t", 'i'},
    {"month", Function::Month, 1, 1, "t", 'i'},
    {"now", Function::Now, 0, 0, "", 't'},
    {"nz", Function::Nz, 1, 2, "a", 'a'},
    {"replace", Function::Replace, 3, 3, "t", 't'},
    {"right", Function::Right, 2, 2, "tn", 't'},
    {"round", Function::Round, 1, 2, "n", 'n'},
    {"rtrim", Function::RTrim, 1, 1, "t", 't'},
    {"second", Function::Second, 1, 1, "t", 'i'},
    {"sgn", Function::Sgn, 1, 1, "n", 'i'},
    {"space", Function::Space, 1, 1, "n", 't'},
    {"sqr", Function::Sqr, 1, 1, "n", 'n'},
    {"str", Function::Str, 1, 1, "n", 't'},
    {"string", Function::String, 2, 2, "nt", 't'},
    {"sum", Function::Sum, 1, 1, "n", 'n'},
    {"time", Function::Time, 0, 0, "", 't'},
    {"trim", Function::Trim, 1, 1, "t", 't'},
    {"ucase", Function::Upper, 1, 1, "t", 't'},
    {"upper", Function::Upper, 1, 1, "t", 't'},
    {"val", Function::Val, 1, 1, "t", 'n'},
    {"weekday", Function::Weekday, 1, 1, "t", 'i'},
    {"year", Function::Year, 1, 1, "t", 'i'},
};

}  // namespace functions_detail

const FunctionEntry* findFunction(std::string_view name) {
  char buffer[12];
  if (name.size() > sizeof buffer) return nullptr;
  std::transform(name.begin(), name.end(), buffer,
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  const std::string_view key(buffer, name.size());
  const auto& table = functions_detail::kFunctions;
  const auto found = std::lower_bound(std::begin(table), std::end(table), key,
                                      [](const FunctionEntry& entry, std::string_view k) { return entry.name < k; });
  return found != std::end(table) && found->name == key ? &*found : nullptr;
}

}  // namespace jxc::jet
