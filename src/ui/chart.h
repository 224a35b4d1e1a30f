// 图表: the rows of a list as bars, a line or a pie. The list is the same in words and figures, and its accessible
// form.
#pragma once

#include "platform/report/report.h"
#include "ui/chart_picture.h"
#include "ui/grid.h"

#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;

namespace jxc::ui {

/// Shows what its list shows: the same rows in the same order, without a query of its own, and of their columns those
/// that the operator sees in the list. It follows when rows come, are sorted or filtered. The list's current row is
/// its current value: arrows and a click move both, so that what follows the row (a lower list, the row's commands)
/// follows the chart too. Of many bars that are no course of time the greatest are shown first, and the rest is told.
///
///     auto* chart = new Chart(grid("gridHz"), {.label = "name", .measure = "wfje"}, this);
///     chart->onOpen([this] { openCurrent(); });   // the same as gridHz.onActivated
class Chart : public QWidget {
 public:
  /// The list has to live as long. Throws std::invalid_argument for a column that the list does not have.
  Chart(Grid& list, const ChartSpec& spec, QWidget* parent = nullptr);
  ~Chart() override;

  void setKind(ChartKind kind);
  ChartKind kind() const;
  /// Shows this column; one that the list does not show leaves the measure as it is.
  void setMeasure(std::string_view field);
  /// The column that is shown; empty when the list shows no number.
  QString measure() const;

  /// Enter or a double click on a value, after its row has become the current one of the list.
  void onOpen(std::function<void()> hook);

  /// What is said of the current value: "2026-05-03　销售金额 ￥1,234.50"; empty without one.
  QString currentText() const;

  /// The chart on paper with its list below.
  report::Report paper() const;
  /// Shows that paper, ready to be printed. An empty list does nothing.
  void print();
  /// Asks for a file and writes the chart as a picture (PNG), or the paper with the list (PDF).
  void save();

  void focusValues();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  class Canvas;
  void follow();
  void followIfSeen();
  /// What is drawn, and of each point the place of its row in the list.
  struct Drawn {
    ChartData data;
    std::vector<int> places;
  };
  Drawn drawn() const;
  void keepGreatest(Drawn& all, bool isSummed) const;
  bool hasMany() const;
  report::Report picture() const;
  int rowOf(int point) const;
  int pointOf(int row) const;

  Grid& list_;
  const ChartSpec spec_;
  std::function<void()> open_;
  QComboBox* comKind_;
  QComboBox* comMeasure_;
  QCheckBox* onlyGreatest_;
  std::vector<int> places_;  // rows of the list by point
  Canvas* canvas_;
};

}  // namespace jxc::ui
