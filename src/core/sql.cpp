#include "core/sql.h"

#include <algorithm>
#include <stdexcept>

namespace jxc {
namespace sql_detail {

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// "name" or "alias.name"
void requireIdentifier(std::string_view text) {
  const std::size_t point = text.find('.');
  const bool fits =
      point == std::string_view::npos ? isName(text) : isName(text.substr(0, point)) && isName(text.substr(point + 1));
  if (!fits) throw std::invalid_argument("not an identifier: " + std::string(text));
}

/// The `?` of a text outside its quoted texts.
std::size_t marksIn(std::string_view text) {
  std::size_t marks = 0;
  char quote = 0;
  for (const char c : text) {
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == '?') {
      ++marks;
    }
  }
  return marks;
}

}  // namespace sql_detail

void Sql::requireFit(std::string_view text, std::size_t values) {
  if (sql_detail::marksIn(text) != values)
    throw std::invalid_argument("marks and values differ in number: " + std::string(text));
}

Sql& Sql::add(const Sql& nested) {
  const std::vector<Value> values(nested.values_);  // it may be this one
  text_ += nested.text_;
  values_.insert(values_.end(), values.begin(), values.end());
  return *this;
}

Sql& Sql::where(const Filter& filter) {
  return filter.isEmpty() ? *this : add(" where ").add(filter.conditions());
}

Sql& Sql::andWhere(const Filter& filter) {
  return filter.isEmpty() ? *this : add(" and ").add(filter.conditions());
}

Filter& Filter::add(const Sql& condition) {
  if (!all_.isEmpty()) all_.add(" and ");
  all_.add(condition);
  return *this;
}

bool isName(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), sql_detail::isLetter);
}

std::string compose(std::string_view pattern, std::initializer_list<std::string_view> identifiers) {
  std::string sql;
  sql.reserve(pattern.size() + identifiers.size() * 16);
  const auto* next = identifiers.begin();
  for (std::size_t at = 0; at < pattern.size();) {
    if (pattern.compare(at, 2, "{}") != 0) {
      sql += pattern[at++];
      continue;
    }
    if (next == identifiers.end()) throw std::invalid_argument("too few identifiers for: " + std::string(pattern));
    sql_detail::requireIdentifier(*next);
    sql += *next++;
    at += 2;
  }
  if (next != identifiers.end()) throw std::invalid_argument("too many identifiers for: " + std::string(pattern));
  return sql;
}

}  // namespace jxc
