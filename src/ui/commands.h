// 命令表: every command of the program, declared once: menus, right tests and the command search read this table.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace jxc::ui {

/// Where a command stands: the seven pages in the order of their tabs, system maintenance, or the window itself.
enum class Page { Purchasing, Sales, Stock, Accounts, Statistics, Daily, Basic, Maintenance, Window };

struct PageDefinition {
  Page page;
  std::string_view tab;    // object name of the tab button
  std::string_view panel;  // object name of the panel
  std::string_view caption;
  std::string_view shortcut;  // F1 and F2 are taken: Ctrl+1 …
};

/// What else guards a command besides rights of a role.
enum class Guard { Rights, SystemRole, None };

/// Kind of place on a page: a large button, a small one at the side, one in the POS drop-down.
enum class Place { Large, Side, PosMenu, Bar };

struct CommandDefinition {
  std::string_view name;     // "btn_Menu1_Btn1"
  std::string_view caption;  // "采购进货"
  Page page;
  Place place;
  Guard guard;
  std::string_view group;              // column of the role that guards it; empty without
  std::array<int, 3> positions;        // any of them is enough; 0 is none
  std::string_view refusal;            // told after "您没有权限进行", or whole for SystemRole
  std::string_view screen;             // "F_Cgjh"; empty when the window does it itself
  std::string_view icon;               // name of a drawing
  std::string_view parameter = {};     // shown only while this parameter is on …
  std::string_view notParameter = {};  // … or only while this one is off
};

std::span<const PageDefinition> pages();
std::span<const CommandDefinition> commands();
/// Null for an unknown name.
const CommandDefinition* findCommand(std::string_view name);

/// A button of a page that repeats a command: {"btn_Menu1_Right1", "btn_Menu6_Btn1"}.
struct Repeat {
  std::string_view name;
  std::string_view runs;
  Page page;
};
std::span<const Repeat> repeats();

}  // namespace jxc::ui
