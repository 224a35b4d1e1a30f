#include "ui/grid.h"

#include "core/reading.h"
#include "core/rights.h"
#include "core/without.h"
#include "ui/display.h"
#include "ui/grid_footer.h"
#include "ui/grid_layout.h"
#include "ui/grid_output.h"
#include "ui/skin.h"

#include <QApplication>
#include <QFrame>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

namespace jxc::ui {
namespace grid_detail {

constexpr int kBlink = 25;          // ms that a query may hold the window before it goes on in the background
constexpr int kShowProgress = 200;  // ms after which progress and the cancel button come up

/// Marks the row whatever keys are held; the view itself would take a mark away while Ctrl is still down.
void makeCurrent(QTableView& view, const QModelIndex& index) {
  view.selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

}  // namespace grid_detail

/// The table view with the keys of this program.
class Grid::Table : public QTableView {
 public:
  explicit Table(Grid& grid) : QTableView(&grid), grid_(grid) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    if (key == Qt::Key_Escape || (key >= Qt::Key_F1 && key <= Qt::Key_F12)) return event->ignore();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      if (state() == EditingState) return event->accept();  // the editor's own Return, on its way out
      if (!currentIndex().isValid()) return event->ignore();
      if (model()->flags(currentIndex()) & Qt::ItemIsEditable) {
        edit(currentIndex());
      } else if (grid_.activated_) {
        grid_.activated_();
      } else {
        return event->ignore();
      }
      return event->accept();
    }
    const bool copiesAll = key == Qt::Key_C && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    if (copiesAll || event->matches(QKeySequence::Copy)) {
      copyGrid(grid_, copiesAll);
      return event->accept();
    }
    QTableView::keyPressEvent(event);
  }
  /// A text that its column cuts off is told whole under the mouse.
  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const bool isCut = index.isValid() && sizeHintForIndex(index).width() > columnWidth(index.column());
    QToolTip::showText(help->globalPos(), isCut ? index.data().toString() : QString(), viewport(), visualRect(index));
    return true;
  }

 private:
  Grid& grid_;
};

Grid::Grid(const GridSpec& spec, std::string_view screenName, QWidget* parent)
    : QWidget(parent),
      spec_(spec),
      layoutKey_(spec.layout.empty() ? qs(screenName) + u'_' + qs(spec.name) : qs(spec.layout)),
      model_(new GridModel(spec.columns, this)),
      loader_(this),
      emptyText_(qs(spec.empty.empty() ? std::string_view("没有数据") : spec.empty)),
      hiddenByProgram_(spec.columns.size(), false),
      hiddenByOperator_(spec.columns.size(), false),
      hiddenByRows_(spec.columns.size(), false) {
  setObjectName(QStringLiteral("area_") + qs(spec.name));
  auto* table = new Table(*this);
  view_ = table;
  view_->setObjectName(qs(spec.name));
  view_->setAccessibleName(qs(spec.caption));
  view_->setModel(model_);
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed);
  view_->setAlternatingRowColors(true);
  view_->setWordWrap(false);
  view_->setTextElideMode(Qt::ElideMiddle);  // names of lenses end in their powers
  view_->setTabKeyNavigation(false);
  view_->setCornerButtonEnabled(false);
  view_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view_->verticalHeader()->hide();
  view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 8);
  auto* header = view_->horizontalHeader();
  header->setSectionsMovable(true);
  header->setHighlightSections(false);
  header->setSortIndicatorShown(true);
  header->setSortIndicatorClearable(true);
  header->setSortIndicator(-1, Qt::AscendingOrder);
  header->setSectionsClickable(true);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(header, &QHeaderView::sortIndicatorChanged, model_, &GridModel::sort);

  footer_ = new Footer(*this);
  connect(header, &QHeaderView::sectionResized, footer_, qOverload<>(&QWidget::update));
  connect(header, &QHeaderView::sectionResized, this, [this] {
    if (!sizing_ && isVisible()) autoWidth_ = false;
  });
  connect(header, &QHeaderView::sectionMoved, footer_, qOverload<>(&QWidget::update));
  connect(view_->horizontalScrollBar(), &QScrollBar::valueChanged, footer_, qOverload<>(&QWidget::update));

  hint_ = new QLabel(view_->viewport());
  hint_->setAlignment(Qt::AlignCenter);
  hint_->setWordWrap(true);
  hint_->setObjectName(QStringLiteral("emptyHint"));
  hint_->setProperty("emptyHint", true);
  hint_->setAttribute(Qt::WA_TransparentForMouseEvents);

  auto* busy = new QFrame(this);
  busy_ = busy;
  busy->setFrameShape(QFrame::StyledPanel);
  busy->setAutoFillBackground(true);
  auto* busyLayout = new QVBoxLayout(busy);
  progress_ = new QProgressBar(busy);
  progress_->setAccessibleName(QStringLiteral("查询进度"));
  auto* stop = new QPushButton(QStringLiteral("取消查询"), busy);
  stop->setObjectName(QStringLiteral("cancelLoad"));
  stop->setAutoDefault(false);
  busyLayout->addWidget(new QLabel(QStringLiteral("正在查询……"), busy), 0, Qt::AlignCenter);
  busyLayout->addWidget(progress_);
  busyLayout->addWidget(stop, 0, Qt::AlignCenter);
  busy->hide();
  connect(stop, &QPushButton::clicked, this, [this] { stopLoading(); });

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(view_, 1);
  layout->addWidget(footer_);
  view_->viewport()->installEventFilter(this);
  setFocusProxy(view_);

  model_->afterChange = [this] { goOnAfterEdit(); };

  menu_ = new QMenu(this);
  view_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(view_, &QWidget::customContextMenuRequested, this, &Grid::showMenu);
  connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    if (!(model_->flags(index) & Qt::ItemIsEditable) && activated_) activated_();
  });
  connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
    if (!inReload_ && currentChanged_) currentChanged_();
  });
  for (int i = 0; i < static_cast<int>(spec.columns.size()); ++i) {
    hiddenByOperator_[static_cast<std::size_t>(i)] = spec.columns[i].use.hidden;
    showColumn(i);
  }
  defaultWidths();
  footer_->update(true);
  showState();
}

Grid::~Grid() {
  loader_.cancel();
}

void Grid::loadQuery(Sql query) {
  start(std::move(query));
}

void Grid::loadQuestion(Question question) {
  start(std::move(question));
}

void Grid::start(Question question) {
  const auto statement = [](const Question* q) { return q ? std::get_if<Sql>(q) : nullptr; };
  const Sql* now = statement(&question);
  const Sql* before = statement(question_ ? &*question_ : nullptr);
  replaces_ = !now || !before || *now != *before;
  question_ = std::move(question);
  reload();
}

void Grid::reload() {
  if (!question_) return;
  failed_ = stopped_ = false;
  // A statement is not asked for what nobody may see here; what is computed comes whole.
  const Sql* const statement = std::get_if<Sql>(&*question_);
  loader_.load(
      statement ? without(forbidden(), *statement) : *question_,
      [this, isComputed = !statement](RowSet rows, bool complete) {
        arrived(isComputed ? withoutForbidden(std::move(rows)) : std::move(rows), complete);
      },
      [this](std::exception_ptr failure) {
        failed_ = true;
        showState();
        std::rethrow_exception(failure);  // to the application's handler
      });
  if (loader_.waitFor(grid_detail::kBlink)) return;
  QTimer::singleShot(grid_detail::kShowProgress, this, [this] { showState(); });
}

void Grid::stopLoading() {
  if (!isLoading()) return;
  loader_.cancel();
  stopped_ = true;
  footer_->update(true);
  showState();
}

bool Grid::showsLoading() const {
  return busy_->isVisible();
}

void Grid::waitLoaded(int milliseconds) {
  loader_.waitFor(milliseconds);
}

void Grid::setRows(RowSet rows) {
  take(withoutForbidden(std::move(rows)));
}

void Grid::readNow(const Sql& query) {
  take(openSelect(without(forbidden(), query)));
}

void Grid::take(RowSet rows) {
  loader_.cancel();
  question_.reset();
  failed_ = stopped_ = false;
  arrived(std::move(rows), true);
}

void Grid::clearRows() {
  setRows(RowSet());
}

void Grid::arrived(RowSet rows, bool complete) {
  // A reload of the same list shows the old rows until all the new ones are there: the operator keeps his place.
  if (!complete && !replaces_ && model_->rows().rowCount() > rows.rowCount()) return;
  if (complete) replaces_ = false;
  const QString key = currentKey();
  const int place = currentRow();
  const int column = std::max(0, view_->currentIndex().column());
  const int scrolled = view_->verticalScrollBar()->value();
  inReload_ = true;
  model_->setRows(std::move(rows));
  if (rowFilter_) model_->setFilter(rowFilter_(model_->rows(), true));
  comeBack(key, place, column, scrolled);
  inReload_ = false;
  showPowers();
  footer_->update(complete);
  fitToRows();
  showState();
  if (currentChanged_) currentChanged_();
  if (complete && loaded_) loaded_();
}

std::vector<std::string_view> Grid::forbidden() const {
  std::vector<std::string_view> fields;
  for (std::size_t i = 0; i < spec_.columns.size(); ++i)
    if (model_->isForbidden(static_cast<int>(i))) fields.push_back(spec_.columns[i].field);
  return fields;
}

RowSet Grid::withoutForbidden(RowSet rows) const {
  const std::vector<std::string_view> fields = forbidden();
  return fields.empty() ? rows : rows.without(fields);
}

void Grid::comeBack(const QString& key, int place, int column, int scrolled) {
  int row = key.isEmpty() ? -1 : model_->findText(spec_.idField, key);
  if (row < 0) row = std::min(std::max(place, 0), rowCount() - 1);
  if (row < 0) return;
  view_->verticalScrollBar()->setValue(scrolled);
  grid_detail::makeCurrent(*view_, model_->index(row, column));
}

void Grid::refilter() {
  const QString key = currentKey();
  const int column = std::max(0, view_->currentIndex().column());
  inReload_ = true;
  model_->setFilter(rowFilter_ ? std::optional(rowFilter_(model_->rows(), false)) : std::nullopt);
  comeBack(key, 0, column, 0);
  inReload_ = false;
  footer_->update(!isLoading());
  showState();
  if (currentChanged_) currentChanged_();
}

void Grid::showState() {
  const bool running = loader_.isRunning();
  hint_->setText(failed_    ? QStringLiteral("查询失败，请重新查询")
                 : stopped_ ? QStringLiteral("查询已取消，请重新查询")
                            : emptyText_);
  setLook(*hint_, "warning", failed_);
  hint_->setVisible(isEmpty() && !running);
  hint_->setGeometry(view_->viewport()->rect().adjusted(12, 12, -12, -12));
  busy_->setVisible(running);
  if (running) {
    const int percent = loader_.percent();
    progress_->setRange(0, percent < 0 ? 0 : 100);
    progress_->setValue(percent);
    if (percent >= 0) QTimer::singleShot(grid_detail::kShowProgress, this, [this] { showState(); });
    busy_->adjustSize();
    busy_->move((width() - busy_->width()) / 2, (height() - busy_->height()) / 3);
    busy_->raise();
  }
}

std::optional<Row> Grid::current() const {
  const int row = currentRow();
  return row < 0 ? std::nullopt : std::optional<Row>(model_->rows()[model_->sourceRow(row)]);
}

int Grid::currentRow() const {
  const int row = view_->currentIndex().row();
  return row >= 0 && row < rowCount() ? row : -1;
}

std::int64_t Grid::currentId() const {
  const auto row = current();
  return row && model_->rows().columnIndex(spec_.idField) >= 0 ? row->integer(spec_.idField) : 0;
}

QString Grid::currentKey() const {
  const auto row = current();
  return row && model_->rows().columnIndex(spec_.idField) >= 0 ? row->text(spec_.idField) : QString();
}

QString Grid::currentText(std::string_view field) const {
  const auto row = current();
  return row ? row->text(field) : QString();
}

double Grid::currentNumber(std::string_view field) const {
  const auto row = current();
  return row ? row->number(field) : 0;
}

bool Grid::selectId(std::int64_t id) {
  const int row = model_->findInteger(spec_.idField, id);
  if (row >= 0) selectRow(row);
  return row >= 0;
}

bool Grid::selectWhere(std::string_view field, const QString& text) {
  const int row = model_->findText(field, text);
  if (row >= 0) selectRow(row);
  return row >= 0;
}

void Grid::selectRow(int viewRow) {
  if (viewRow < 0 || viewRow >= rowCount()) return;
  grid_detail::makeCurrent(*view_, model_->index(viewRow, std::max(0, view_->currentIndex().column())));
}

std::vector<Row> Grid::selectedRows() const {
  std::vector<int> places;
  for (const auto& index : view_->selectionModel()->selectedRows())
    places.push_back(index.row());
  std::sort(places.begin(), places.end());
  std::vector<Row> rows;
  for (const int place : places)
    rows.push_back(model_->rows()[model_->sourceRow(place)]);
  return rows;
}

std::vector<Row> Grid::shownRows() const {
  std::vector<Row> rows;
  for (int place = 0; place < rowCount(); ++place)
    rows.push_back(model_->rows()[model_->sourceRow(place)]);
  return rows;
}

void Grid::setMultiSelect(bool on) {
  view_->setSelectionMode(on ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
}

void Grid::setColumnVisible(std::string_view field, bool on) {
  const int column = model_->columnOf(field);
  if (column < 0) throw std::invalid_argument("no column " + std::string(field));
  const auto i = static_cast<std::size_t>(column);
  if (hiddenByProgram_[i] != on) return;  // as it was: what the operator has hidden stays so
  hiddenByProgram_[i] = !on;
  if (on) hiddenByOperator_[i] = false;
  showColumn(column);
  if (autoWidth_) defaultWidths();
}

void Grid::setColumnAllowed(std::string_view field, bool on) {
  const int column = model_->columnOf(field);
  if (column < 0) throw std::invalid_argument("no column " + std::string(field));
  model_->setForbidden(column, !on);
  footer_->update(!isLoading());
  showColumn(column);
  if (autoWidth_) defaultWidths();
}

void Grid::applyRights() {
  std::vector<std::pair<Right, bool>> asked;  // each right is read once
  for (const ColumnSpec& column : spec_.columns) {
    if (!column.right.isGuarded()) continue;
    const auto known = std::find_if(asked.begin(), asked.end(), [&](const auto& a) { return a.first == column.right; });
    const bool allowed = known != asked.end() ? known->second : hasRight(column.right);
    if (known == asked.end()) asked.emplace_back(column.right, allowed);
    if (model_->isForbidden(model_->columnOf(column.field)) == allowed) setColumnAllowed(column.field, allowed);
  }
}

std::vector<int> Grid::shownOrder() const {
  std::vector<int> order(static_cast<std::size_t>(rowCount()));
  for (int place = 0; place < rowCount(); ++place)
    order[static_cast<std::size_t>(place)] = model_->sourceRow(place);
  return order;
}

GridHeading Grid::heading() const {
  return heading_ ? heading_() : GridHeading{qs(spec_.caption), {}};
}

bool Grid::isColumnVisible(std::string_view field) const {
  const int column = model_->columnOf(field);
  return column >= 0 && !view_->isColumnHidden(column);
}

bool Grid::isColumnAllowed(std::string_view field) const {
  const int column = model_->columnOf(field);
  return column >= 0 && !model_->isForbidden(column);
}

void Grid::setCaption(std::string_view field, const QString& caption) {
  model_->setCaption(model_->columnOf(field), caption);
}

double Grid::sum(std::string_view field) const {
  const int column = model_->columnOf(field);
  return column < 0 ? 0 : model_->sum(column);
}

QString Grid::footerText(std::string_view field) const {
  return footer_->text(model_->columnOf(field));
}

void Grid::setEmptyText(const QString& text) {
  emptyText_ = text;
  showState();
}

QAction* Grid::addMenuCommand(const QString& text, std::function<void()> action) {
  return menu_->addAction(text, this, std::move(action));
}

std::vector<Grid::ExportColumn> Grid::exportColumns() const {
  std::vector<ExportColumn> result;
  const auto* header = view_->horizontalHeader();
  for (int place = 0; place < header->count(); ++place) {
    const int column = header->logicalIndex(place);
    const auto& spec = spec_.columns[static_cast<std::size_t>(column)];
    if (header->isSectionHidden(column) || !spec.use.exported) continue;
    result.push_back({model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), spec.kind, column});
  }
  return result;
}

Value Grid::cellValue(int viewRow, int column) const {
  const int source = model_->rows().columnIndex(spec_.columns[static_cast<std::size_t>(column)].field);
  return source < 0 ? Value() : model_->rows().value(model_->sourceRow(viewRow), source);
}

void Grid::focusRows() {
  view_->setFocus(Qt::OtherFocusReason);
}

void Grid::standBehind(QWidget* face) {
  layout()->addWidget(face);
  view_->hide();
  footer_->hide();
  setFocusProxy(face);
}

void Grid::followKeysOf(QWidget* input) {
  keyInput_ = input;
  input->installEventFilter(this);
}

bool Grid::eventFilter(QObject* watched, QEvent* event) {
  if (watched == keyInput_ && event->type() == QEvent::KeyPress) {
    const int page = std::max(1, view_->viewport()->height() / view_->verticalHeader()->defaultSectionSize() - 1);
    int step = 0;
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Down:
        step = 1;
        break;
      case Qt::Key_Up:
        step = -1;
        break;
      case Qt::Key_PageDown:
        step = page;
        break;
      case Qt::Key_PageUp:
        step = -page;
        break;
      default:
        return false;
    }
    selectRow(std::clamp(currentRow() + step, 0, std::max(0, rowCount() - 1)));
    return true;
  }
  if (watched == view_->viewport() && event->type() == QEvent::Resize) {
    if (autoWidth_) defaultWidths();
    showState();
  }
  return QWidget::eventFilter(watched, event);
}

void Grid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  showState();
}

void Grid::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) restoreLayout();
}

void Grid::showMenu(const QPoint& place) {
  QMenu menu(this);
  fillMenu(menu);
  menu.exec(view_->viewport()->mapToGlobal(place));
}

void Grid::fillMenu(QMenu& menu) {
  for (auto* action : menu_->actions())
    menu.addAction(action);
  if (!menu.isEmpty()) menu.addSeparator();
  const auto onRows = [&](const char* name, const QString& text, const QKeySequence& key, auto action) {
    auto* made = menu.addAction(text, this, action);
    made->setObjectName(QString::fromLatin1(name));
    made->setShortcut(key);
    made->setEnabled(!isEmpty());
  };
  onRows("btnRCopy", QStringLiteral("复制所选行"), QKeySequence::Copy, [this] { copyGrid(*this, false); });
  onRows("btnRCopyAll", QStringLiteral("复制全部"), Qt::CTRL | Qt::SHIFT | Qt::Key_C,
         [this] { copyGrid(*this, true); });
  onRows("btnRExport", QStringLiteral("导出到表格文件…"), Qt::CTRL | Qt::Key_S, [this] { exportGrid(*this); });
  onRows("btnRPrint", QStringLiteral("打印列表…"), Qt::CTRL | Qt::Key_P, [this] { printGrid(*this); });
  menu.addSeparator();
  auto* columns = menu.addMenu(QStringLiteral("显示的列"));
  for (int i = 0; i < static_cast<int>(spec_.columns.size()); ++i) {
    if (model_->isForbidden(i)) continue;
    auto* action = columns->addAction(model_->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString());
    action->setCheckable(true);
    action->setChecked(!view_->isColumnHidden(i));
    connect(action, &QAction::toggled, this, [this, i](bool on) {
      if (on) hiddenByProgram_[static_cast<std::size_t>(i)] = false;
      hiddenByOperator_[static_cast<std::size_t>(i)] = !on;
      showColumn(i);
    });
  }
  addLayoutCommands(menu, *this);
}

void Grid::goOnAfterEdit() {
  const auto at = view_->currentIndex();
  if (!at.isValid()) return;
  const auto* header = view_->horizontalHeader();
  for (int place = header->visualIndex(at.column()) + 1; place < header->count(); ++place) {
    const int column = header->logicalIndex(place);
    const auto next = model_->index(at.row(), column);
    if (header->isSectionHidden(column) || !(model_->flags(next) & Qt::ItemIsEditable)) continue;
    view_->setCurrentIndex(next);
    return;
  }
}

}  // namespace jxc::ui
