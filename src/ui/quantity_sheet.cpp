#include "ui/quantity_sheet.h"

#include "core/rounding.h"
#include "core/text.h"
#include "ui/display.h"
#include "ui/skin.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>

#include <algorithm>
#include <cmath>

namespace jxc::ui {
namespace quantity_sheet_detail {

constexpr int kNarrowest = 54;    // pixels of a column at a font of 9 points, scaled with it
constexpr double kSame = 0.0005;  // headings that are numbers

/// Without idle decimals: the cells are narrow.
QString stockText(double stock) {
  return numberText(roundEps(stock, quantityDigits()));
}

QString quantityText(double quantity, bool zero = false) {
  return quantity == 0 && !zero ? QString() : stockText(quantity);
}

/// Nothing where the cell was emptied, or holds no number.
std::optional<double> typedIn(const QString& text) {
  if (text.trimmed().isEmpty()) return {};
  const auto number = readNumber(text);
  return number ? std::optional(std::max(0.0, *number)) : std::nullopt;
}

int headingAt(const QStringList& headings, const QString& text) {
  const auto wanted = readNumber(text.trimmed());
  if (!wanted) return -1;
  for (qsizetype i = 0; i < headings.size(); ++i)
    if (const auto each = readNumber(headings[i]); each && std::abs(*each - *wanted) < kSame)
      return static_cast<int>(i);
  return -1;
}

/// Whether the first row and the first column of a block are headings: a worded corner says so. Below an empty corner
/// they are when all are numbers and some stand in the sheet, or are negative, as quantities never are; a block out of
/// a sheet, with nothing in its first cell, is one of quantities.
bool hasHeadings(const QList<QStringList>& block, const QStringList& rows, const QStringList& columns) {
  if (block.size() < 2 || block.front().size() < 2) return false;
  const QString corner = block.front().front().trimmed();
  if (!corner.isEmpty()) return !readNumber(corner);
  QStringList down, across = block.front().mid(1);
  for (const QStringList& line : block.mid(1))
    down << line.front();
  bool isNegative = false;
  for (const QString& heading : down + across) {
    const auto number = readNumber(heading.trimmed());
    if (heading.trimmed().isEmpty() || !number) return false;
    isNegative = isNegative || *number < 0;
  }
  const auto stand = [](const QStringList& wanted, const QStringList& headings) {
    return std::any_of(wanted.begin(), wanted.end(),
                       [&](const QString& each) { return headingAt(headings, each) >= 0; });
  };
  return isNegative || (stand(down, rows) && stand(across, columns));
}

QList<QStringList> blockOf(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  if (text.endsWith(u'\n')) text.chop(1);
  QList<QStringList> block;
  for (const QString& line : text.split(u'\n'))
    block << line.split(u'\t');
  return block;
}

}  // namespace quantity_sheet_detail

class QuantitySheet::Model : public QAbstractTableModel {
 public:
  explicit Model(QuantitySheet& sheet) : QAbstractTableModel(&sheet), sheet_(sheet) {}

  void reset() {
    beginResetModel();
    endResetModel();
  }
  void touched() { Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(sheet_.source_.rows.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(sheet_.source_.columns.size());
  }
  Cell cell(const QModelIndex& index) const { return sheet_.source_.cell(index.row(), index.column()); }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    const Cell at = cell(index);
    if (role == Qt::DisplayRole || role == Qt::EditRole)
      return quantity_sheet_detail::quantityText(at.quantity, at.zero);
    if (role == Qt::AccessibleTextRole)
      return sheet_.source_.rows[index.row()] + u' ' + sheet_.source_.columns[index.column()] + u" 数量 "_qs +
             quantity_sheet_detail::stockText(at.quantity) +
             (at.hidesStock ? QString() : u" 库存 "_qs + quantity_sheet_detail::stockText(at.stock));
    return {};
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    const QStringList& heads = orientation == Qt::Horizontal ? sheet_.source_.columns : sheet_.source_.rows;
    return heads.value(section);
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.isValid() && cell(index).kind != Cell::Kind::Locked) result |= Qt::ItemIsEditable;
    return result;
  }
  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    if (role != Qt::EditRole) return false;
    const std::optional<double> typed = quantity_sheet_detail::typedIn(value.toString());
    const Cell before = cell(index);
    if (typed.value_or(0) == before.quantity && typed.has_value() == (before.quantity != 0 || before.zero))
      return false;
    sheet_.set(index.row(), index.column(), typed);
    sheet_.changedByHand();
    return true;
  }

 private:
  QuantitySheet& sheet_;
};

/// The quantity stands at the right, the stock small at the left.
class QuantitySheet::Delegate : public QStyledItemDelegate {
 public:
  Delegate(QuantitySheet& sheet, QTableView& view) : QStyledItemDelegate(&view), sheet_(sheet), view_(view) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Cell cell = sheet_.model_->cell(index);
    const bool chosen = option.state & QStyle::State_Selected;
    const QPalette& colours = option.palette;
    painter->save();
    if (chosen) {
      painter->fillRect(option.rect, colours.highlight());
    } else if (cell.kind == Cell::Kind::Locked) {
      painter->fillRect(option.rect, colours.button());
    } else if (cell.quantity != 0 || cell.zero) {
      painter->fillRect(option.rect, colours.alternateBase());
    }
    const QRect inside = option.rect.adjusted(4, 0, -4, 0);
    const QColor ink = chosen ? colours.color(QPalette::HighlightedText) : colours.color(QPalette::Text);
    QFont font = option.font;
    font.setPointSizeF(font.pointSizeF() * 0.85);
    painter->setFont(font);
    painter->setPen(chosen ? ink : colours.color(QPalette::Disabled, QPalette::Text));
    if (cell.kind == Cell::Kind::Open && !cell.hidesStock)
      painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, quantity_sheet_detail::stockText(cell.stock));
    if (cell.kind == Cell::Kind::New && cell.quantity == 0 && !cell.zero)
      painter->drawText(inside, Qt::AlignCenter, QStringLiteral("·"));
    font = option.font;
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(cell.marked && !chosen ? rowColour(RowLook::Bad) : ink);
    painter->drawText(inside, Qt::AlignRight | Qt::AlignVCenter,
                      quantity_sheet_detail::quantityText(cell.quantity, cell.zero));
    if (option.state & QStyle::State_HasFocus) {
      painter->setPen(QPen(colours.color(QPalette::Text), 1));
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
  }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
    static const QRegularExpression number(QStringLiteral("[0-9]*\\.?[0-9]*"));
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setAlignment(Qt::AlignRight);
    editor->setMaxLength(12);
    editor->setValidator(new QRegularExpressionValidator(number, editor));
    return editor;
  }

 protected:
  /// Arrows and Enter close the cell and go on, as in a spreadsheet.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_Left:
      case Qt::Key_Right:
      case Qt::Key_Return:
      case Qt::Key_Enter: {
        auto* editor = static_cast<QWidget*>(watched);
        Q_EMIT commitData(editor);
        Q_EMIT closeEditor(editor, NoHint);
        view_.setFocus();
        QKeyEvent again(QEvent::KeyPress, key->key(), Qt::NoModifier);
        QApplication::sendEvent(&view_, &again);
        return true;
      }
      default:
        return QStyledItemDelegate::eventFilter(watched, event);
    }
  }

 private:
  QuantitySheet& sheet_;
  QTableView& view_;
};

class QuantitySheet::Table : public QTableView {
 public:
  explicit Table(QuantitySheet& sheet) : QTableView(&sheet), sheet_(sheet) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    if (key == Qt::Key_Escape || (key >= Qt::Key_F1 && key <= Qt::Key_F12 && key != Qt::Key_F2)) return event->ignore();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return goDown();
    if (key == Qt::Key_Delete || key == Qt::Key_Backspace) return clearMarked();
    if (event->matches(QKeySequence::Copy)) return QApplication::clipboard()->setText(sheet_.copied());
    if (event->matches(QKeySequence::Paste)) {
      const Pasted pasted = sheet_.paste(QApplication::clipboard()->text());
      if (sheet_.pasted_) sheet_.pasted_(pasted);
      return;
    }
    QTableView::keyPressEvent(event);
  }

 private:
  /// Down the column, then on to the head of the next.
  void goDown() {
    const QModelIndex at = currentIndex();
    if (!at.isValid()) return;
    const bool last = at.row() + 1 == model()->rowCount();
    const int column = last ? std::min(at.column() + 1, model()->columnCount() - 1) : at.column();
    setCurrentIndex(model()->index(last ? 0 : at.row() + 1, column));
  }
  void clearMarked() {
    for (const QModelIndex& index : selectionModel()->selectedIndexes())
      if (model()->flags(index) & Qt::ItemIsEditable) sheet_.set(index.row(), index.column(), {});
    sheet_.changedByHand();
  }
  QuantitySheet& sheet_;
};

/// Sums of the columns below the sheet, or of the rows beside it, each at its line.
class QuantitySheet::Sums : public QWidget {
 public:
  Sums(QuantitySheet& sheet, Qt::Orientation along) : QWidget(&sheet), sheet_(sheet), along_(along) {
    if (along == Qt::Horizontal) {
      setFixedHeight(fontMetrics().height() + 8);
    } else {
      setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
    }
    setAccessibleName(QStringLiteral("合计"));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::ButtonText));
    const bool columns = along_ == Qt::Horizontal;
    const auto* header = columns ? sheet_.view_->horizontalHeader() : sheet_.view_->verticalHeader();
    const int first = columns ? sheet_.view_->viewport()->x() : sheet_.view_->viewport()->y();
    const int count = header->count();
    for (int i = 0; i < count; ++i) {
      const int at = header->sectionViewportPosition(i);
      const int size = header->sectionSize(i);
      if (at + size <= 0 || at > (columns ? width() : height())) continue;
      const QRect place = columns ? QRect(first + at, 0, size - 4, height()) : QRect(0, first + at, width() - 6, size);
      painter.setClipRect(columns ? QRect(first, 0, width(), height()) : QRect(0, first, width(), height()));
      painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                       quantity_sheet_detail::quantityText(sheet_.sumOf(along_, i)));
    }
  }

 private:
  QuantitySheet& sheet_;
  Qt::Orientation along_;
};

QuantitySheet::QuantitySheet(QWidget* parent) : QWidget(parent), model_(new Model(*this)) {
  auto* table = new Table(*this);
  view_ = table;
  view_->setObjectName(QStringLiteral("sheet"));
  view_->setModel(model_);
  view_->setItemDelegate(new Delegate(*this, *table));
  view_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                         QAbstractItemView::EditKeyPressed);
  view_->setSelectionMode(QAbstractItemView::ContiguousSelection);
  view_->setTabKeyNavigation(false);
  view_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  for (auto* header : {view_->horizontalHeader(), view_->verticalHeader()}) {
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionsClickable(true);
  }
  view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 7);
  below_ = new Sums(*this, Qt::Horizontal);
  beside_ = new Sums(*this, Qt::Vertical);
  all_ = new QLabel(this);
  all_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  all_->setObjectName(QStringLiteral("lTotal"));
  connect(view_->horizontalScrollBar(), &QScrollBar::valueChanged, below_, qOverload<>(&QWidget::update));
  connect(view_->verticalScrollBar(), &QScrollBar::valueChanged, beside_, qOverload<>(&QWidget::update));
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(view_, 0, 0);
  layout->addWidget(beside_, 0, 1);
  layout->addWidget(below_, 1, 0);
  layout->addWidget(all_, 1, 1);
  // The sheet takes what its cells need, the rest stays free: sums far from their cells are read in the wrong line.
  layout->setColumnStretch(0, 1000);
  layout->setColumnStretch(2, 1);
  layout->setRowStretch(0, 1000);
  layout->setRowStretch(2, 1);
  setFocusProxy(view_);
  view_->viewport()->installEventFilter(this);
}

QuantitySheet::~QuantitySheet() = default;

bool QuantitySheet::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_->viewport() && event->type() == QEvent::Resize) refresh();
  return QWidget::eventFilter(watched, event);
}

void QuantitySheet::show(Source source) {
  source_ = std::move(source);
  model_->reset();
  const auto metrics = view_->fontMetrics();
  int width = quantity_sheet_detail::kNarrowest * metrics.height() / 17;
  for (int row = 0; row < model_->rowCount(); ++row)
    for (int column = 0; column < model_->columnCount(); ++column) {
      const Cell cell = source_.cell(row, column);
      const QString both =
          quantity_sheet_detail::stockText(cell.stock) + quantity_sheet_detail::quantityText(cell.quantity);
      width = std::max(width, metrics.horizontalAdvance(both) + 20);
    }
  view_->horizontalHeader()->setDefaultSectionSize(width);
  if (model_->rowCount() > 0) view_->setCurrentIndex(model_->index(0, 0));
  fitToCells();
  refresh();
}

void QuantitySheet::fitToCells() {
  if (model_->rowCount() == 0) return view_->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  const auto* across = view_->horizontalHeader();
  const auto* down = view_->verticalHeader();
  const int frame = 2 * view_->frameWidth();
  view_->setMaximumSize(
      down->sizeHint().width() + across->length() + frame + view_->verticalScrollBar()->sizeHint().width(),
      across->sizeHint().height() + down->length() + frame + view_->horizontalScrollBar()->sizeHint().height());
}

void QuantitySheet::refresh() {
  if (model_->rowCount() > 0) model_->touched();
  below_->update();
  beside_->update();
  all_->setText(source_.cell ? quantity_sheet_detail::quantityText(total()) : QString());
}

void QuantitySheet::focusCells() {
  view_->setFocus(Qt::OtherFocusReason);
}

double QuantitySheet::sumOf(Qt::Orientation along, int place) const {
  double sum = 0;
  const int count = along == Qt::Horizontal ? model_->rowCount() : model_->columnCount();
  for (int i = 0; i < count; ++i)
    sum += (along == Qt::Horizontal ? source_.cell(i, place) : source_.cell(place, i)).quantity;
  return sum;
}

double QuantitySheet::total() const {
  double sum = 0;
  for (int row = 0; row < model_->rowCount(); ++row)
    sum += sumOf(Qt::Vertical, row);
  return sum;
}

void QuantitySheet::set(int row, int column, std::optional<double> quantity) {
  source_.change(row, column, quantity);
}

void QuantitySheet::changedByHand() {
  refresh();
  if (changed_) changed_();
}

QuantitySheet::Pasted QuantitySheet::paste(const QString& text) {
  using namespace quantity_sheet_detail;
  Pasted result;
  const QList<QStringList> block = blockOf(text);
  const QModelIndex at = view_->currentIndex();
  if (text.isEmpty() || !at.isValid()) return result;
  const bool headed = hasHeadings(block, source_.rows, source_.columns);
  const int skip = headed ? 1 : 0;
  for (qsizetype r = skip; r < block.size(); ++r)
    for (qsizetype c = skip; c < block[r].size(); ++c) {
      const QString typed = block[r][c].trimmed();
      const int row = headed ? headingAt(source_.rows, block[r].front()) : at.row() + static_cast<int>(r);
      const int column =
          headed ? headingAt(source_.columns, block.front().value(c)) : at.column() + static_cast<int>(c);
      const auto quantity = readNumber(typed);
      const bool inside = row >= 0 && column >= 0 && row < model_->rowCount() && column < model_->columnCount();
      if (!inside || source_.cell(row, column).kind == Cell::Kind::Locked) {
        if (!typed.isEmpty() && quantity.value_or(1) != 0) ++(inside ? result.locked : result.outside);
      } else if (!quantity || *quantity < 0) {
        ++result.unreadable;
      } else {
        set(row, column, typedIn(typed));
        result.taken += typed.isEmpty() ? 0 : 1;
      }
    }
  changedByHand();
  return result;
}

QString QuantitySheet::copied() const {
  QModelIndexList marked = view_->selectionModel()->selectedIndexes();
  std::sort(marked.begin(), marked.end());
  QString text;
  for (qsizetype i = 0; i < marked.size(); ++i) {
    if (i > 0) text += marked[i].row() == marked[i - 1].row() ? u'\t' : u'\n';
    text += marked[i].data(Qt::EditRole).toString();
  }
  return text + u'\n';
}

}  // namespace jxc::ui
