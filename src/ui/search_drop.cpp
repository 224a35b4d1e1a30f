#include "ui/search_drop.h"

#include "core/session.h"
#include "core/text.h"

#include <QEvent>
#include <QFrame>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace jxc::ui {
namespace search_drop_detail {

constexpr int kPause = 150;  // ms; a scanner has ended its code before
constexpr int kRows = 12;    // in sight
constexpr int kWidth = 110;  // characters, where the window is so wide

/// One letter or digit matches half the catalogue; one Chinese character is a word.
bool isWorthSearching(const QString& typed) {
  return typed.size() > 1 || (typed.size() == 1 && typed[0].unicode() > 127);
}

}  // namespace search_drop_detail

SearchDrop::SearchDrop(Field& box, const GridSpec& rows, Query query)
    : QObject(box.widget()),
      box_(box),
      frame_(new QFrame(box.widget()->window())),
      grid_(new Grid(rows, "SearchDrop", frame_)),
      query_(std::move(query)) {
  frame_->setObjectName(QStringLiteral("searchDrop"));
  frame_->setFrameShape(QFrame::StyledPanel);
  frame_->setAutoFillBackground(true);
  frame_->hide();
  auto* layout = new QVBoxLayout(frame_);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->addWidget(grid_);
  // The keys stay in the input, also after a click.
  for (auto* widget : grid_->findChildren<QWidget*>())
    widget->setFocusPolicy(Qt::NoFocus);
  grid_->followKeysOf(box.widget());
  connect(grid_->view(), &QTableView::clicked, this, [this] {
    const auto row = grid_->current();
    if (row && taken_) taken_(*row);
  });
  box.widget()->installEventFilter(this);
  box.onChanged([this] {
    if (search_drop_detail::isWorthSearching(box_.trimmed()) && !strIsTrue(session().cs_hcj))
      pause_.start();
    else
      close();
  });
  // Also when it is the program that empties the input: the document was saved, or a code came from elsewhere.
  connect(qobject_cast<QLineEdit*>(box.widget()), &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text.isEmpty()) close();
  });
  pause_.setSingleShot(true);
  pause_.setInterval(search_drop_detail::kPause);
  connect(&pause_, &QTimer::timeout, this, [this] {
    search();
    open();
  });
}

bool SearchDrop::isOpen() const {
  return !frame_->isHidden();
}

void SearchDrop::close() {
  pause_.stop();
  frame_->hide();
  searched_.clear();
}

void SearchDrop::search() {
  pause_.stop();
  const QString typed = box_.trimmed();
  if (typed == searched_) return;
  searched_ = typed;
  grid_->loadQuery(query_(typed));
}

void SearchDrop::open() {
  auto* window = box_.widget()->window();
  const int wanted = frame_->fontMetrics().averageCharWidth() * search_drop_detail::kWidth;
  const QPoint below = box_.widget()->mapTo(window, QPoint(0, box_.widget()->height() + 1));
  const int width = std::min(wanted, window->width() - 16);
  const int line = grid_->view()->verticalHeader()->defaultSectionSize();
  const int height = std::min(line * (search_drop_detail::kRows + 1) + 8, window->height() - below.y() - 8);
  frame_->setGeometry(std::min(below.x(), window->width() - width - 8), below.y(), width, height);
  frame_->show();
  frame_->raise();
}

std::optional<Row> SearchDrop::enter() {
  const bool wasInSight = isOpen() && searched_ == box_.trimmed();
  search();
  grid_->waitLoaded();
  if (grid_->isEmpty()) {
    close();
    return {};
  }
  if (grid_->currentRow() < 0) grid_->selectRow(0);
  if (wasInSight || grid_->rowCount() == 1) return grid_->current();
  open();
  return {};
}

bool SearchDrop::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusOut) {
    close();
  } else if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && isOpen()) {
      close();
      return true;
    }
    if (key == Qt::Key_Down && !isOpen() && !box_.isEmpty()) {
      search();
      open();
      return true;
    }
  }
  return false;
}

}  // namespace jxc::ui
