#include "ui/chart.h"

#include "core/comparison.h"
#include "ui/display.h"
#include "ui/file_dialogs.h"
#include "ui/grid_paper.h"
#include "ui/message_box_prompt.h"
#include "ui/report/preview.h"
#include "ui/skin.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QTableView>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <utility>

namespace jxc::ui {
namespace chart_detail {

constexpr const char16_t* kKinds[] = {u"柱形图", u"折线图", u"饼图"};
constexpr double kPictureDpi = 192;
constexpr int kManyBars = 40, kGreatest = 20;

/// A number as the list has it; NaN for an empty cell and for words in a number column.
double numberOf(const RowSet& rows, int row, int column) {
  const auto kind = rows.kind(row, column);
  const bool isNumber = kind == Value::Kind::Integer || kind == Value::Kind::Real ||
                        (kind == Value::Kind::Text && readNumber(rows.text(row, column)).has_value());
  return isNumber ? rows.number(row, column) : std::numeric_limits<double>::quiet_NaN();
}

const GridModel& modelOf(const Grid& list) {
  return dynamic_cast<const GridModel&>(*list.view()->model());
}

report::Drawing drawingOf(const ChartData& data, ChartKind kind) {
  return [data, kind](QPainter& painter, const QRectF& area) {
    constexpr double kLine = 20;  // hundredths of a millimetre
    QFont font;
    font.setFamilies(fontFamilies());
    font.setPixelSize(300);
    ChartPicture(data, kind, paperChartLook(font, kLine), area).paint(painter);
  };
}

/// What a screen reader gets besides the list.
QString inWords(const ChartData& data, ChartKind kind, const QString& label) {
  int count = 0;
  std::size_t least = 0, greatest = 0;
  for (std::size_t i = 0; i < data.values.size(); ++i) {
    if (!std::isfinite(data.values[i])) continue;
    if (count == 0 || data.values[i] < data.values[least]) least = i;
    if (count == 0 || data.values[i] > data.values[greatest]) greatest = i;
    ++count;
  }
  if (count == 0 && !data.nothing.isEmpty()) return data.nothing;
  QString words = QStringLiteral("%1，按“%2”的“%3”，%4 项")
                      .arg(QString::fromUtf16(kKinds[static_cast<int>(kind)]), label, data.caption)
                      .arg(count);
  if (count > 0) {
    const auto one = [&](std::size_t i) {
      return data.labelText(static_cast<int>(i)) + u' ' + data.valueText(data.values[i]);
    };
    words += QStringLiteral("，最大 %1，最小 %2").arg(one(greatest), one(least));
  }
  if (!data.rest.isEmpty()) words += u'，' + data.rest;
  return words + QStringLiteral("。方向键逐项查看，回车打开；列表里是同样的数据。");
}

}  // namespace chart_detail

/// The picture, and what the operator does in it.
class Chart::Canvas : public QWidget {
 public:
  explicit Canvas(Chart& chart) : QWidget(&chart), chart_(chart) {
    setObjectName(QStringLiteral("chartCanvas"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(240, 160);
  }

  QSize sizeHint() const override { return {640, 320}; }

  void setData(ChartData data) {
    data_ = std::move(data);
    const GridModel& model = chart_detail::modelOf(chart_.list_);
    const QString label =
        model.headerData(model.columnOf(chart_.spec_.label), Qt::Horizontal, Qt::DisplayRole).toString();
    words_ = chart_detail::inWords(data_, chart_.kind(), label);
    setAccessibleName(QStringLiteral("图表：") + data_.caption);
    lay();
  }

  const ChartPicture& picture() const { return picture_; }
  int mark() const { return mark_; }

  void followRow() {
    if (leading_) return;
    mark_ = picture_.markOf(chart_.pointOf(chart_.list_.currentRow()));
    tell();
  }

 protected:
  void resizeEvent(QResizeEvent*) override { lay(); }

  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::StyleChange)
      lay();
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const int told = hovered_ >= 0 ? hovered_ : hasFocus() ? mark_ : -1;
    picture_.paint(painter, mark_, told);
    const double width = hasFocus() ? 2 : 1;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    painter.setBrush(skinColour(hasFocus() ? QStringLiteral("accent") : QStringLiteral("line")));
    const QRectF all = rect();
    for (const QRectF& side : {QRectF(0, 0, all.width(), width), QRectF(0, all.height() - width, all.width(), width),
                               QRectF(0, 0, width, all.height()), QRectF(all.width() - width, 0, width, all.height())})
      painter.drawRect(side);
  }

  void mouseMoveEvent(QMouseEvent* event) override { hover(picture_.markAt(event->position())); }
  void leaveEvent(QEvent*) override { hover(-1); }
  void mousePressEvent(QMouseEvent* event) override {
    if (const int mark = picture_.markAt(event->position()); mark >= 0) choose(mark);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const int mark = picture_.markAt(event->position());
    if (mark < 0) return;
    choose(mark);
    open();
  }

  void keyPressEvent(QKeyEvent* event) override {
    constexpr int kPage = 10;
    const int last = picture_.markCount() - 1;
    switch (event->key()) {
      case Qt::Key_Left:
      case Qt::Key_Up:
        return choose(std::max(0, mark_ - 1));
      case Qt::Key_Right:
      case Qt::Key_Down:
        return choose(std::min(last, mark_ + 1));
      case Qt::Key_PageUp:
        return choose(std::max(0, mark_ - kPage));
      case Qt::Key_PageDown:
        return choose(std::min(last, mark_ + kPage));
      case Qt::Key_Home:
        return choose(0);
      case Qt::Key_End:
        return choose(last);
      case Qt::Key_Return:
      case Qt::Key_Enter:
        return open();
      default:
        QWidget::keyPressEvent(event);
    }
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    QMenu menu(this);
    const bool any = picture_.markCount() > 0;
    menu.addAction(QStringLiteral("打印图表"), this, [this] { chart_.print(); })->setEnabled(any);
    menu.addAction(QStringLiteral("保存图表"), this, [this] { chart_.save(); })->setEnabled(any);
    menu.addAction(
            QStringLiteral("复制图片"), this,
            [this] {
              QGuiApplication::clipboard()->setImage(chart_.picture().prepare().image(0, chart_detail::kPictureDpi));
            })
        ->setEnabled(any);
    menu.exec(event->globalPos());
  }

 private:
  void lay() {
    QFont type = font();
    type.setPixelSize(QFontInfo(type).pixelSize());
    picture_ = ChartPicture(data_, chart_.kind(), screenChartLook(type), rect());
    hovered_ = -1;
    mark_ = picture_.markOf(chart_.pointOf(chart_.list_.currentRow()));
    tell();
  }

  void hover(int mark) {
    if (std::exchange(hovered_, mark) != mark) update();
  }

  void choose(int mark) {
    if (mark < 0 || mark >= picture_.markCount()) return;
    mark_ = mark;
    hovered_ = -1;
    // The rest of a pie has no row: the list stays where it is.
    leading_ = true;
    chart_.list_.selectRow(chart_.rowOf(picture_.pointOf(mark)));
    leading_ = false;
    tell();
  }

  void open() {
    if (picture_.pointOf(mark_) >= 0 && chart_.open_) chart_.open_();
  }

  void tell() {
    setAccessibleDescription(mark_ < 0 ? words_ : QStringLiteral("当前 %1。%2").arg(chart_.currentText(), words_));
    update();
  }

  Chart& chart_;
  ChartData data_;
  ChartPicture picture_;
  QString words_;
  int mark_ = -1, hovered_ = -1;
  bool leading_ = false;  // the list follows the chart, not the other way
};

Chart::Chart(Grid& list, const ChartSpec& spec, QWidget* parent) : QWidget(parent), list_(list), spec_(spec) {
  const GridModel& model = chart_detail::modelOf(list);
  for (const std::string_view field : {spec.label, spec.behind, spec.measure}) {
    if (!field.empty() && model.columnOf(field) < 0)
      throw std::invalid_argument("the list has no column " + std::string(field));
  }
  comKind_ = new QComboBox(this);
  comKind_->setObjectName(QStringLiteral("comChartKind"));
  comKind_->setAccessibleName(QStringLiteral("图形"));
  for (const char16_t* kind : chart_detail::kKinds)
    comKind_->addItem(QString::fromUtf16(kind));
  comKind_->setCurrentIndex(static_cast<int>(spec.kind));
  comMeasure_ = new QComboBox(this);
  comMeasure_->setObjectName(QStringLiteral("comChartMeasure"));
  comMeasure_->setAccessibleName(QStringLiteral("数据"));
  comMeasure_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  onlyGreatest_ = new QCheckBox(QStringLiteral("只看最大的%1项").arg(chart_detail::kGreatest), this);
  onlyGreatest_->setObjectName(QStringLiteral("chkChartGreatest"));
  onlyGreatest_->setChecked(true);
  canvas_ = new Canvas(*this);

  auto* top = new QHBoxLayout;
  top->setSpacing(6);
  top->addWidget(new QLabel(QStringLiteral("图形："), this));
  top->addWidget(comKind_);
  top->addWidget(new QLabel(QStringLiteral("数据："), this));
  top->addWidget(comMeasure_);
  top->addWidget(onlyGreatest_);
  top->addStretch();
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(6);
  all->addLayout(top);
  all->addWidget(canvas_, 1);
  setFocusProxy(canvas_);

  connect(comKind_, &QComboBox::currentIndexChanged, this, [this] { followIfSeen(); });
  connect(comMeasure_, &QComboBox::currentIndexChanged, this, [this] { followIfSeen(); });
  connect(onlyGreatest_, &QCheckBox::toggled, this, [this] { followIfSeen(); });
  connect(&model, &GridModel::modelReset, this, [this] { followIfSeen(); });
  connect(&model, &GridModel::layoutChanged, this, [this] { followIfSeen(); });
  connect(&model, &GridModel::headerDataChanged, this, [this] { followIfSeen(); });
  connect(list.view()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { canvas_->followRow(); });
  follow();
}

Chart::~Chart() = default;

void Chart::setKind(ChartKind kind) {
  comKind_->setCurrentIndex(static_cast<int>(kind));
}

ChartKind Chart::kind() const {
  return static_cast<ChartKind>(comKind_->currentIndex());
}

void Chart::setMeasure(std::string_view field) {
  follow();
  if (const int place = comMeasure_->findData(qs(field)); place >= 0) comMeasure_->setCurrentIndex(place);
}

QString Chart::measure() const {
  return comMeasure_->currentData().toString();
}

void Chart::onOpen(std::function<void()> hook) {
  open_ = std::move(hook);
}

QString Chart::currentText() const {
  const int mark = canvas_->mark();
  if (mark < 0) return {};
  return canvas_->picture().markLabel(mark) + u'　' + canvas_->picture().data().caption + u' ' +
         canvas_->picture().markValue(mark);
}

void Chart::focusValues() {
  canvas_->setFocus();
}

void Chart::showEvent(QShowEvent* event) {
  follow();
  QWidget::showEvent(event);
}

void Chart::followIfSeen() {
  if (isVisible()) follow();
}

/// The measures that the list shows now (a right, a parameter or the operator may have taken a column away), and its
/// rows.
void Chart::follow() {
  const QSignalBlocker quiet(comMeasure_);
  const QString before = measure();
  comMeasure_->clear();
  int first = -1, summed = -1, wanted = -1;
  for (const auto& column : list_.exportColumns()) {
    if (!isNumberKind(column.kind)) continue;
    const ColumnSpec& each = list_.spec().columns[static_cast<std::size_t>(column.column)];
    if (isEarlierField(each.field)) continue;  // beside its figure
    const int place = comMeasure_->count();
    comMeasure_->addItem(column.caption, qs(each.field));
    if (first < 0) first = place;
    if (summed < 0 && each.use.sum) summed = place;
    if (each.field == spec_.measure) wanted = place;
  }
  const int kept = before.isEmpty() ? -1 : comMeasure_->findData(before);
  comMeasure_->setCurrentIndex(kept >= 0 ? kept : wanted >= 0 ? wanted : summed >= 0 ? summed : first);
  onlyGreatest_->setVisible(hasMany());
  Drawn now = drawn();
  places_ = std::move(now.places);
  canvas_->setData(std::move(now.data));
}

int Chart::rowOf(int point) const {
  return point >= 0 && point < static_cast<int>(places_.size()) ? places_[static_cast<std::size_t>(point)] : -1;
}

int Chart::pointOf(int row) const {
  const auto found = std::ranges::find(places_, row);
  return found == places_.end() ? -1 : static_cast<int>(found - places_.begin());
}

/// Hundreds of bars are hair-thin and their names read alike; a course of time is read as a whole.
bool Chart::hasMany() const {
  return kind() == ChartKind::Bars && !spec_.byTime && list_.rowCount() > chart_detail::kManyBars;
}

Chart::Drawn Chart::drawn() const {
  const GridModel& model = chart_detail::modelOf(list_);
  const int column = comMeasure_->currentIndex() < 0 ? -1 : model.columnOf(measure().toStdString());
  Drawn result;
  ChartData& data = result.data;
  if (list_.isEmpty()) {
    // As the list says it, with what to change.
    if (const auto* hint = list_.findChild<QLabel*>(QStringLiteral("emptyHint"))) data.nothing = hint->text();
    data.caption = comMeasure_->currentText();
    return result;
  }
  if (column < 0) {
    data.nothing = QStringLiteral("列表没有数字列，不能画图");
    return result;
  }
  const RowSet& rows = list_.rows();
  const ColumnSpec& shown = list_.spec().columns[static_cast<std::size_t>(column)];
  const int source = rows.columnIndex(shown.field);
  const ColumnSpec& label = list_.spec().columns[static_cast<std::size_t>(model.columnOf(spec_.label))];
  data.caption = comMeasure_->currentText();
  data.kind = shown.kind;
  const std::vector<int> order = list_.shownOrder();
  result.places.resize(order.size());
  std::iota(result.places.begin(), result.places.end(), 0);
  const auto labelOf = [&](int row) { return rows[row].text(spec_.label); };
  // The latest time stands first in many lists.
  if (spec_.byTime && labelOf(order.front()) > labelOf(order.back())) std::ranges::reverse(result.places);
  const auto row = [&](int place) { return order[static_cast<std::size_t>(place)]; };
  data.values.reserve(order.size());
  // A row that the sums leave out, such as a total or an opening balance, is no value among the others.
  for (const int place : result.places)
    data.values.push_back(!model.counts || model.counts(rows[row(place)])
                              ? chart_detail::numberOf(rows, row(place), source)
                              : std::numeric_limits<double>::quiet_NaN());
  if (hasMany() && onlyGreatest_->isChecked()) keepGreatest(result, shown.use.sum);
  std::vector<int> drawnRows;
  for (const int place : result.places)
    drawnRows.push_back(row(place));
  const std::string earlier = earlierField(measure().toStdString());
  // Rows that are still there from before the operator asked for it have none.
  if (const int before = rows.columnIndex(earlier); before >= 0 && list_.isColumnVisible(earlier)) {
    data.earlierCaption = model.headerData(model.columnOf(earlier), Qt::Horizontal, Qt::DisplayRole).toString();
    for (const int each : drawnRows)
      data.earlier.push_back(chart_detail::numberOf(rows, each, before));
  }
  const int behind = spec_.behind.empty() ? -1 : rows.columnIndex(spec_.behind);
  data.label = [rows, drawnRows, behind, column = rows.columnIndex(label.field), kind = label.kind](int point) {
    const int at = drawnRows[static_cast<std::size_t>(point)];
    const QString text = column < 0 ? QString() : displayCell(rows, at, column, kind);
    const QString more = behind < 0 ? QString() : rows.text(at, behind);
    return more.isEmpty() ? text : text + u' ' + more;
  };
  return result;
}

/// Those farthest from 0, from the highest down; how many are left out, and their sum where the list has one.
void Chart::keepGreatest(Drawn& all, bool isSummed) const {
  std::vector<std::size_t> points;
  for (std::size_t point = 0; point < all.data.values.size(); ++point)
    if (std::isfinite(all.data.values[point])) points.push_back(point);
  if (points.size() <= chart_detail::kGreatest) return;
  const auto value = [&](std::size_t point) { return all.data.values[point]; };
  std::ranges::stable_sort(points, [&](auto a, auto b) { return std::abs(value(a)) > std::abs(value(b)); });
  double rest = 0;
  for (std::size_t i = chart_detail::kGreatest; i < points.size(); ++i)
    rest += value(points[i]);
  all.data.rest = QStringLiteral("最大的 %1 项；其余 %2 项")
                      .arg(chart_detail::kGreatest)
                      .arg(points.size() - chart_detail::kGreatest);
  if (isSummed) all.data.rest += QStringLiteral("合计 ") + all.data.valueText(rest);
  points.resize(chart_detail::kGreatest);
  std::ranges::stable_sort(points, [&](auto a, auto b) { return value(a) > value(b); });
  Drawn kept;
  for (const std::size_t point : points) {
    kept.data.values.push_back(value(point));
    kept.places.push_back(all.places[point]);
  }
  all.data.values = std::move(kept.data.values);
  all.places = std::move(kept.places);
}

report::Report Chart::paper() const {
  return gridReport(list_, chart_detail::drawingOf(drawn().data, kind()));
}

/// The chart alone, on a page of its own.
report::Report Chart::picture() const {
  const GridHeading heading = list_.heading();
  report::Template t;
  t.title = heading.title;
  t.page = {.width = 254, .height = 152, .left = 6, .top = 5, .right = 6, .bottom = 5};
  const double width = t.page.bodyWidth(), above = heading.filter.isEmpty() ? 9 : 15;
  report::Band& band = report::addBand(t, report::BandKind::ReportTitle, t.page.height - 10.5);
  report::Item title = report::textItem(0, 0, width, 8, QStringLiteral("[listTitle]"), report::HAlign::Center);
  title.font.size = 14;
  title.font.bold = true;
  band.items.push_back(title);
  if (!heading.filter.isEmpty())
    band.items.push_back(report::textItem(0, 8.5, width, 5, QStringLiteral("[listFilter]"), report::HAlign::Center));
  band.items.push_back(report::pictureItem(0, above, width, band.height - above, QStringLiteral("drawing:chart")));
  report::Report report(std::move(t));
  report.setText(u"listTitle", heading.title);
  report.setText(u"listFilter", heading.filter);
  report.setDrawing(u"chart", chart_detail::drawingOf(drawn().data, kind()));
  return report;
}

void Chart::print() {
  list_.waitLoaded();
  if (list_.isEmpty()) return;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  const report::Pages pages = paper().prepare();
  QGuiApplication::restoreOverrideCursor();
  showPreview(pages);
}

void Chart::save() {
  list_.waitLoaded();
  if (list_.isEmpty()) return;
  const QString path =
      chooseSaveFile(window(), QStringLiteral("保存图表"), list_.heading().title, QStringLiteral("(*.png);;(*.pdf)"));
  if (path.isEmpty()) return;
  MessageBoxPrompt prompt(window());
  try {
    if (path.endsWith(u".pdf", Qt::CaseInsensitive))
      paper().prepare().writePdf(path);
    else
      picture().prepare().writePng(path, chart_detail::kPictureDpi);
  } catch (const std::exception& error) {
    return prompt.notice(QString::fromUtf8(error.what()));
  }
  prompt.notice(QStringLiteral("已存为“%1”。").arg(path));
}

}  // namespace jxc::ui
