// 查询屏幕内部: what an enquiry screen keeps of its tabs and views; for its own files only.
#pragma once

#include "core/periods.h"
#include "ui/enquiry_screen.h"

#include <utility>

class QLabel;
class QPushButton;

namespace jxc::ui {

/// A list below another.
struct EnquiryScreen::Below {
  const RowsBelow* spec = nullptr;
  Grid* list = nullptr;
  Field* mode = nullptr;          // its switch; null where it is alone
  QLabel* text = nullptr;         // whose rows they are
  std::optional<Criteria> asked;  // what the rows that are there answer
};

struct EnquiryScreen::View {
  const EnquiryView* spec = nullptr;
  Tab* tab = nullptr;
  Grid* list = nullptr;
  Field* mode = nullptr;  // its switch; null in a tab with one view
  QWidget* area = nullptr;
  std::vector<Below> below;
  std::size_t belowShown = 0;
  RowPane* beside = nullptr;
  Chart* chart = nullptr;  // made when it is first wanted
  QLabel* foot = nullptr;
  std::optional<Criteria> asked;  // what the rows that are there answer
};

/// A row that was followed: what it stands for narrows everything behind it.
struct EnquiryScreen::Step {
  View* from;
  RowSet rows;
  int row;
};

struct EnquiryScreen::Tab {
  const EnquiryTab* spec = nullptr;
  QWidget* page = nullptr;  // null on a screen without tabs
  std::vector<std::pair<const Criterion*, Field*>> inputs;
  std::vector<std::unique_ptr<View>> views;
  View* shown = nullptr;
  std::vector<Step> path;
  QWidget* way = nullptr;  // the line that tells where the rows come from
  QLabel* wayText = nullptr;
  Period proposed;  // the period that was put there, as long as the operator leaves it
};

namespace enquiry_screen_detail {

/// Whether a name stands in a list of names; an empty list holds all.
bool holds(std::string_view names, std::string_view name);
bool isBox(Asks asks);
bool isPeriod(Asks asks);
inline constexpr int kGap = 6;  // between two buttons
/// Heights of a list or its chart to that of the rows below: on a display of 768 lines a balance sheet of three bank
/// accounts is seen down to its last row.
inline constexpr int kListHeight = 5, kBelowHeight = 3;
/// How wide a line may be on the display of a window.
int roomOf(const QWidget& window);
/// Keys of what figures may be compared with.
inline constexpr QStringView kPeriodBefore = u"before", kLastYear = u"year";

}  // namespace enquiry_screen_detail

}  // namespace jxc::ui
