// 系统参数: rules of the system settings: reading, checking and saving them, and back to what they were at first.
#pragma once

#include "core/parameter_table.h"
#include "core/prompt.h"
#include "engine/value.h"

#include <QString>

#include <map>
#include <string>
#include <string_view>

namespace jxc {

/// What stands in the inputs of the settings, by the name of the input: a whole number for choices and boxes, a number
/// or a text otherwise.
class ParameterValues {
 public:
  void set(std::string_view input, Value value) { values_.insert_or_assign(std::string(input), std::move(value)); }
  const Value& value(std::string_view input) const;  // null when nothing was set
  QString text(std::string_view input) const { return value(input).text().trimmed(); }
  std::int64_t integer(std::string_view input) const { return value(input).integer(); }
  bool isOn(std::string_view input) const { return integer(input) != 0; }

 private:
  std::map<std::string, Value, std::less<>> values_;
};

/// All settings as they are stored; an empty field reads as 0 or empty.
ParameterValues readParameters();

/// Checks and saves all settings and loads the session. Refusals are told and leave everything as it was. Before
/// putaway or issue is switched on the operator is asked; his No clears that box in `values`, and the rest is saved.
bool saveParameters(ParameterValues& values, Prompt& prompt);

/// System, till and mail settings as in a new account set; the company stays. Refused while goods wait for putaway or
/// issue; asks. The next login brings the settings up to date again from the first schema step on.
bool restoreStandardParameters(Prompt& prompt);

/// The mail settings as far as they can be judged without sending: address, server, password. Tells what is wrong.
bool checkMailSettings(const ParameterValues& values, Prompt& prompt);

}  // namespace jxc
