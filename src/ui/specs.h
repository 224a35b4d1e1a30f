// 屏幕描述: what a screen is made of, as plain data without any Qt header: fields, columns, grids, commands.
#pragma once

#include "core/right.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace jxc::ui {

/// How an input looks, what it takes and how its value is written.
enum class FieldKind : std::uint8_t {
  Text,       // one line
  Password,   // one line, masked
  Secret,     // the same for the password of an operator: nothing of it stays in memory (Field::secret)
  Money,      // number with the currency symbol and the session's money digits
  Total,      // number with the digits of document totals
  Quantity,   // number with the session's quantity digits
  Percent,    // plain number, up to six decimals; the label names the unit
  Integer,    // whole number
  Date,       // yyyy-MM-dd with a calendar; text that is no date is refused
  Combo,      // closed list of texts with keys
  EditCombo,  // list of proposals, anything may be typed
  Check,      // box; the label stands beside it
  Radio,      // one of several in the same area; read and set like a box
  Memo,       // several lines
  Picker      // one line filled from a list (F2): shows a name, holds a key
};

enum FieldFlag : unsigned {
  NoFlags = 0,
  ReadOnly = 1u << 0,       // shown, reached by Tab, not changed
  NoMinus = 1u << 1,        // a number: the minus key is swallowed
  MayBeEmpty = 1u << 2,     // a date: no date is a value too; a picker: Del takes back what was chosen
  OffersRemarks = 1u << 3,  // Text, Memo: F4 and a little button put in a standard remark
  WholeMonth = 1u << 4      // Date: a month, yyyy-MM
};

/// One input. `name` is the member's known name and becomes the object name.
struct FieldSpec {
  std::string_view name;
  std::string_view label;  // "供货商："; the box's own text for Check
  FieldKind kind = FieldKind::Text;
  std::string_view column = {};  // "jxc_ghsxx.ghs_name": gives the most characters; checked against the schema
  int width = 0;                 // most characters, where it differs from the column or there is none
  unsigned flags = NoFlags;
  std::string_view suffix = {};  // behind the input: "位小数", "%"
};

/// Power: of a lens, in dioptres with sign and two decimals (-3.00, +0.75), whatever form it is stored in; such a
/// column is seen only while a row has a power.
enum class ColumnKind : std::uint8_t { Text, Money, Total, Quantity, Percent, Number, Date, Flag, Power };

/// What a column is for. Its truths have names wherever they are given: `{.sum = true, .editable = true}`; a list
/// without names does not compile.
struct ColumnUse {
  struct ByName {
    constexpr explicit ByName() = default;
  };
  ByName byName = ByName();
  bool sum = false;       // summed in the footer
  bool editable = false;  // goes to the `changed` hook of the grid
  bool exported = true;   // goes to spreadsheet and print
  bool hidden = false;    // known to the layout, not shown at first
};

/// One column of a grid. `field` is a column of the query. Without its `right` an operator gets nothing of a column:
/// not shown, summed, drawn, printed, exported or copied, not offered to be shown, and not told by a screen reader.
struct ColumnSpec {
  std::string_view field;
  std::string_view caption;
  ColumnKind kind = ColumnKind::Text;
  int width = 0;  // in characters; 0: by kind
  ColumnUse use = {};
  Right right = {};  // to see it at all
};

struct GridSpec {
  std::string_view name;
  std::string_view caption;  // accessible name: "采购商品"
  std::span<const ColumnSpec> columns;
  std::string_view empty = {};      // what an empty list tells: "按F2添加商品"
  std::string_view idField = "id";  // keeps the current row across a reload
  std::string_view layout = {};     // name of its layout file; made from screen and grid when there is none
};

/// One button of a screen. The key is shown behind the caption: "确定(F5)".
struct CommandSpec {
  std::string_view name;
  std::string_view caption;
  std::string_view key = {};  // "F5", "Esc", "Ctrl+D"
  std::string_view tooltip = {};
};

struct ScreenSpec {
  std::string_view name;   // "F_Cgjh"
  std::string_view title;  // "采购进货": distinct among the screens
  std::span<const FieldSpec> fields = {};
  std::span<const GridSpec> grids = {};
  std::span<const CommandSpec> commands = {};
  std::string_view focus = {};  // field or grid where the operator types first; else the first field
};

}  // namespace jxc::ui
