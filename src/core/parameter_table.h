// 参数表: every setting of the system screen as data: where it is stored, how it is asked for, and what it begins as.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace jxc {

enum class ParameterKind : std::uint8_t {
  Choice,   // index of the choice, from 0
  Flag,     // 0 or 1, whatever the type of the column
  Number,   // whole number
  Decimal,  // number
  Text,     // kept as typed
  Secret    // the same, not shown
};

/// Where an input stands on the screen. `Hidden` inputs are there and keep their values, but are not shown.
enum class ParameterGroup : std::uint8_t {
  None,
  Company,
  Mail,
  Purchasing,
  Stock,
  Goods,
  Sales,
  Documents,
  Binding,
  System,
  Till,
  Scales,
  Display,
  Hidden
};

struct ParameterDefinition {
  std::string_view table;
  std::string_view field;
  ParameterKind kind;
  std::string_view standard;     // what a new account set has
  std::string_view input = {};   // name of the input; empty: not on the screen
  std::string_view label = {};   // in front of it, or the text of a box
  std::string_view suffix = {};  // behind it
  ParameterGroup group = ParameterGroup::None;
  std::span<const std::string_view> choices = {};
  std::string_view switchedBy = {};  // input of the box without which it counts as 0
  int width = 0;                     // most characters, where it is less than the column takes
};

/// All settings, table by table; those of jxc_xtcs in the order of its columns.
std::span<const ParameterDefinition> parameterTable();
/// The settings of one table.
std::span<const ParameterDefinition> parametersOf(std::string_view table);

}  // namespace jxc
