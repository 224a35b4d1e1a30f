// 查询描述: what an enquiry screen is made of: what is asked for, the views that answer, and where their rows lead.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"
#include "core/prompt.h"
#include "core/right.h"
#include "core/session.h"
#include "ui/chart_spec.h"
#include "ui/grid_model.h"
#include "ui/specs.h"

#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace jxc::ui {

class Grid;
class RowPane;

/// The field of the criteria that an input fills.
enum class Asks : std::uint8_t {
  From,  // the first of two days or months; the menu of periods comes with it
  To,
  Day,         // one day, up to its end: today, as long as the operator leaves it
  Warehouse,   // without items of its own: all of them, or the one that is chosen
  GoodsClass,  // a list
  Partner,     // chosen from a list behind it (`pick`), or from its items
  Employee,    // without items of its own: all active ones
  Account,
  Key,         // typed; Enter searches
  Exact,       // a box: the key is a whole text
  Kind,        // a list
  Order,       // a list
  Descending,  // a box
  Amount,
  Comparison,  // with which earlier period; seen over views that compare
  Box          // a box of the enquiry's own
};

/// One input of an enquiry.
struct Criterion {
  Asks asks;
  std::string_view name;   // of the input
  std::string_view label;  // "仓库："; the box's own text
  /// Of a list: its first item is chosen at first; a key of "-1" is no restriction.
  std::vector<ListItem> (*items)() = nullptr;
  std::optional<ListItem> (*pick)() = nullptr;
  unsigned box = 0;             // Asks::Box: its bit
  bool on = false;              // of a box, at first
  bool months = false;          // of From and To: whole months
  std::string_view views = {};  // names of the lists that ask for it; empty: all of the tab
  Right right = {};             // without it it is not asked for
  double amount = 0;            // of Amount, at first
  bool whole = false;           // of Amount: a number of days
  bool ofBelow = false;         // of a period: that of the list below
};

/// Puts into the criteria what a row stands for.
using Narrow = void (*)(Criteria&, const Row&);

/// Where Enter and a double click on a row lead: to the rows of another view of the same tab under the same criteria,
/// to a document, or into a command.
struct Leads {
  std::string_view view = {};      // the name of its list …
  Narrow narrow = nullptr;         // … narrowed to what the row stands for
  std::string_view says = {};      // the column that says it in words, shown above those rows
  std::string_view document = {};  // or the column with the document's number
  std::string_view command = {};   // or the command's name
};

/// A switch that shows one of several lists.
struct ViewMode {
  std::string_view name, caption;
};

/// A list below that follows the current row. Where several take turns there, each has its switch above them.
struct RowsBelow {
  GridSpec grid;
  Source source;
  Narrow narrow;
  bool (*has)(const Row&) = nullptr;  // whether a row has any; without it all do
  std::string_view document = {};     // the column with the number of the document that Enter opens
  ViewMode mode = {};
  const RowsBelow* next = nullptr;        // the one that takes turns with it
  QString (*says)(const Row&) = nullptr;  // whose rows they are, in a line above them
};

/// One way to look at the answer: a list with its sums, chart and paper.
struct EnquiryView {
  GridSpec grid;
  Source source;
  ViewMode mode = {};    // the switch that shows it; a tab with one view has none
  ChartSpec chart = {};  // without a label there is none
  /// Figures of the list that stand beside those of an earlier period when Asks::Comparison asks for one.
  std::span<const std::string_view> compares = {};
  Leads leads = {};
  const RowsBelow* below = nullptr;
  RowPane* (*beside)() = nullptr;
  RowPane* (*page)() = nullptr;  // in the list's place: the answer is one row of many figures
  std::string_view paper = {};   // its template; without one the list is printed as it stands
  /// Variables of that paper besides those that all have, by name.
  std::vector<std::pair<QString, QString>> (*paperWords)(const Criteria&) = nullptr;
  RowLook (*rowLook)(const Row&) = nullptr;
  RowLook (*cellLook)(const Row&, std::string_view column) = nullptr;
  bool (*counts)(const Row&) = nullptr;  // rows that the sums take in; without it all
  struct Foot {
    std::string_view name;
    QString (*text)(const Grid&);
  } foot = {};  // a line below the list, when all rows are there
};

/// A command of an enquiry: a rule over the current row of the list in sight or over what is asked for, after which the
/// rows are read anew when it says that it changed something; or a screen that it opens. What is none of these the
/// screen's class binds.
struct EnquiryCommand {
  std::string_view name, caption, key = {};
  Right right = {};                                // without it the command is not to be seen …
  bool staysInSight = false;                       // … or closed
  QString SystemParameters::*parameter = nullptr;  // only while this one is on
  std::string_view views = {};                     // names of the lists that it belongs to; empty: all
  std::string_view elsewhere = {};                 // told over other lists; empty: it is not to be seen there
  bool (*rule)(const Row&, Prompt&) = nullptr;
  bool (*whole)(const Criteria&, Prompt&) = nullptr;
  std::string_view opens = {};
  /// 预览影响 stands beside, under the command's key with Shift: what the rule would change, before it does.
  struct Preview {
    std::string_view name;    // of its button
    std::string_view doing;   // "审核"; the document's number follows
    std::string_view number;  // the column with that number
  } preview = {};
};

enum class FirstPeriod : std::uint8_t {
  MonthToToday,
  WholeMonth,
  Today,
  YearToToday,
  LastTwelveMonths,
  UntilToday,  // all that there ever was
  AllTime
};

struct EnquiryTab {
  std::string_view name = {}, caption = {};  // a screen with one tab shows none
  std::span<const Criterion> criteria = {};
  std::span<const EnquiryView> views;
  std::span<const EnquiryCommand> commands = {};
  std::string_view search = "btnSearch1", searchKey = "F2", period = "btnDate";  // the buttons' names
  std::optional<FirstPeriod> first = {};  // where it differs from that of the others
};

/// A list at the left whose current row narrows all tabs: the employees of a desk. Where it may be long it is searched
/// while one types; a first row without a key stands for all, and only as long as nothing is typed.
struct EnquirySide {
  GridSpec grid;
  Source source;
  Narrow narrow;
  std::string_view find = {};                     // the input …
  std::span<const std::string_view> findIn = {};  // … and the columns that hold what is typed
};

/// An enquiry. Commands that every one has are there without being described: btn_Prin (打印), btn_Export (导出),
/// btn_Chart (图表) where a view has one, and the way out.
struct EnquirySpec {
  std::string_view name;   // "F_Kccx"
  std::string_view title;  // "当前库存查询"
  std::span<const EnquiryTab> tabs;
  std::span<const EnquiryCommand> commands = {};  // of all tabs, at the bottom
  const EnquirySide* side = nullptr;
  FirstPeriod first = FirstPeriod::MonthToToday;
  std::string_view focus = {};        // input or list; else the first input
  std::string_view explanation = {};  // a line below
  std::string_view leave = "btnCancel";
  std::string_view printKey = "Ctrl+P";  // of the list's print; where that key prints a document of the list, another
};

}  // namespace jxc::ui
