// 参数适配: a caller's values on their way to an engine, made fit for the places where they stand.
#pragma once

#include "engine/row_set.h"
#include "engine/value.h"
#include "jet/plan.h"

#include <span>
#include <string_view>
#include <vector>

namespace jxc {

/// Takes the values of one step through the conversions of their places; an engine says what becomes of each. Numbers
/// pass without any allocation; texts are converted into a scratch buffer of this object, so it has to outlive the run
/// of the statement.
class ParameterFitter {
 public:
  virtual ~ParameterFitter() = default;

 protected:
  /// `driving` with `row` give the values of parameters that come from the driving row. Throws DbError(TooWide,
  /// TypeMismatch, Arithmetic) for a value that does not fit its place.
  void fit(std::span<const jet::Parameter> parameters, std::span<const Value> values, const RowSet* driving, int row);

  // `at` counts from 1. A text stays where it is until the next fit.
  virtual void putNull(int at) = 0;
  virtual void putInteger(int at, std::int64_t number) = 0;
  virtual void putReal(int at, double number) = 0;
  virtual void putText(int at, std::string_view utf8) = 0;

 private:
  void value(int at, const jet::Parameter& parameter, const Value& value);
  void cell(int at, const jet::Parameter& parameter, const RowSet& set, int row);
  void integer(int at, const jet::Parameter& parameter, std::int64_t number);
  void real(int at, const jet::Parameter& parameter, double number);
  void text(int at, const jet::Parameter& parameter, std::string_view utf8);
  std::string_view toUtf8(QStringView text);
  std::string_view kept(std::string_view text);
  void reserve(std::span<const jet::Parameter> parameters, std::span<const Value> values);

  std::vector<char> scratch_;
  std::size_t used_ = 0;
};

}  // namespace jxc
