// 图表画面: a chart laid out in an area and painted on anything: window, paper, picture file.
#pragma once

#include "ui/chart_geometry.h"
#include "ui/chart_spec.h"
#include "ui/specs.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

class QPainter;

namespace jxc::ui {

/// What is shown, free of the list that it came from: a picture may outlive it on paper.
struct ChartData {
  QString caption;  // of the measure: "期末应收"
  ColumnKind kind = ColumnKind::Money;
  std::vector<double> values;  // NaN: none
  std::function<QString(int point)> label;
  std::vector<double> earlier = {};  // those of an earlier period beside them; empty without one
  QString earlierCaption = {};       // "上期期末应收"
  QString rest = {};                 // "最大的 20 项；其余 580 项合计 1,234"; empty where all are drawn
  QString nothing;                   // what is said when no value is known; empty: that the measure has none

  QString labelText(int point) const;
  QString valueText(double value) const;
};

/// Colours and sizes. Type is sized in units of the painter, so that every device gets the same picture.
struct ChartLook {
  QFont font;  // with a pixel size
  double line = 1;
  QColor ground, text, muted, grid, bar, below, band;
};
/// The look in use, on a screen with this font; and dark on white, for paper and files.
ChartLook screenChartLook(const QFont& font);
ChartLook paperChartLook(const QFont& font, double line);

/// A chart in its place. What can be pointed at is a mark: a value that is known, or a slice; marks count from 0 in the
/// order of the rows, slices from the greatest.
class ChartPicture {
 public:
  ChartPicture() = default;
  ChartPicture(ChartData data, ChartKind kind, ChartLook look, const QRectF& area);

  /// What stands in the place of a chart that has nothing to show; empty when there is one.
  const QString& message() const { return message_; }
  int markCount() const;
  int markAt(QPointF place) const;  // -1: none
  int markOf(int point) const;      // -1: none; a small value of a pie is in the rest
  int pointOf(int mark) const;      // -1: the rest of a pie, or no mark
  /// "2026-05-03" and "销售金额 ￥1,234.50".
  QString markLabel(int mark) const;
  QString markValue(int mark) const;

  /// `current` stands out, `told` has its words beside it; -1: none.
  void paint(QPainter& painter, int current = -1, int told = -1) const;

  const ChartData& data() const { return data_; }

 private:
  bool compares() const { return !data_.earlier.empty() && kind_ != ChartKind::Pie; }
  double em() const { return look_.font.pixelSize(); }
  double width(const QString& text) const;
  void layPlot();
  void layLegend();
  QColor sliceColour(int slice) const;
  QPointF place(int mark) const;
  std::pair<QString, QString> inTwoLines(const QString& name, double room) const;
  void write(QPainter& painter, const QRectF& area, int alignment, const QString& text, const QColor& colour) const;
  void writeClear(QPainter& painter, const QRectF& area, const QString& text) const;
  void paintAxes(QPainter& painter) const;
  void paintBars(QPainter& painter) const;
  void paintLines(QPainter& painter) const;
  void paintLine(QPainter& painter, const std::vector<double>& values, const std::vector<int>& drawn,
                 const QColor& colour) const;
  void paintCaption(QPainter& painter) const;
  void paintFigures(QPainter& painter, int told) const;
  void paintPie(QPainter& painter, int current) const;
  void paintWords(QPainter& painter, int mark) const;

  ChartData data_;
  ChartKind kind_ = ChartKind::Bars;
  ChartLook look_;
  QRectF area_;
  QString message_;
  std::vector<int> known_;  // points with a value
  // Bars and lines.
  Plot plot_;
  std::vector<int> drawn_, drawnEarlier_;
  std::vector<AxisLabel> labels_;
  bool isBroken_ = false;  // names below the axis take two lines
  bool figures_ = false;   // there is room for every value's figure
  // Pie.
  std::vector<PieSlice> slices_;
  QPointF centre_;
  double radius_ = 0;
  QRectF legend_;
  double legendLine_ = 0;
  QString leftOut_;  // what a pie cannot show
};

}  // namespace jxc::ui
