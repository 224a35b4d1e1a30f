// 语句: the text of a statement and its values, kept together while it is put together from parts.
#pragma once

#include "engine/value.h"

#include <concepts>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jxc {

class Filter;

/// A statement, or a part of one, with a value for each `?`, in their order. Texts are literals of the program and
/// names from `compose`; what was typed is a value. A part whose marks and values differ in number throws
/// std::invalid_argument where it is added, not later where the whole is run.
///
///     Sql list("select * from jxc_yhzh where yh_type=?", type);
///     list.andWhere(filter).add(" order by id");
class Sql {
 public:
  Sql() = default;
  template <class... Args>
  requires(std::constructible_from<Value, const Args&>&&...) Sql(std::string text, const Args&... values)
      : text_(std::move(text)), values_{Value(values)...} {
    requireFit(text_, values_.size());
  }

  template <class... Args>
  requires(std::constructible_from<Value, const Args&>&&...) Sql& add(std::string_view text, const Args&... values) {
    requireFit(text, sizeof...(Args));
    text_ += text;
    (values_.emplace_back(values), ...);
    return *this;
  }
  Sql& add(const Sql& nested);
  /// " where a and b"; nothing when the filter is empty.
  Sql& where(const Filter& filter);
  /// " and a and b", behind conditions that the text has already; nothing when the filter is empty.
  Sql& andWhere(const Filter& filter);

  bool isEmpty() const { return text_.empty(); }
  const std::string& text() const { return text_; }
  std::span<const Value> values() const { return values_; }
  bool operator==(const Sql&) const = default;

 private:
  static void requireFit(std::string_view text, std::size_t values);
  std::string text_;
  std::vector<Value> values_;
};

/// Conditions of a list put together from parts; all of them have to hold.
class Filter {
 public:
  template <class... Args>
  Filter& add(std::string_view condition, const Args&... values) {
    if (!all_.isEmpty()) all_.add(" and ");
    all_.add(condition, values...);
    return *this;
  }
  Filter& add(const Sql& condition);

  bool isEmpty() const { return all_.isEmpty(); }
  /// "a and b", or empty.
  const Sql& conditions() const { return all_; }

 private:
  Sql all_;
};

/// Letters, digits and underscores.
bool isName(std::string_view text);
/// Puts identifiers into a text: compose("update {} set {}=1 where {}=?", {head, status, number}). An identifier is a
/// name, optionally `alias.name`; anything else throws std::invalid_argument.
std::string compose(std::string_view pattern, std::initializer_list<std::string_view> identifiers);

}  // namespace jxc
