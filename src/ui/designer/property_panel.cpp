#include "ui/designer/property_panel.h"

#include "ui/skin.h"
#include "ui/text_input.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace jxc::ui {

namespace property_panel_detail {

/// Several lines; leaving it or Ctrl+Enter takes the words over.
class ExpressionEdit : public MemoInput {
 public:
  std::function<void(const QString&)> done;
  ExpressionEdit() {
    setTabChangesFocus(true);
    setFixedHeight(fontMetrics().height() * 3 + 12);
  }

 protected:
  void focusOutEvent(QFocusEvent* event) override {
    QPlainTextEdit::focusOutEvent(event);
    if (done) done(toPlainText());
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !(event->modifiers() & Qt::ShiftModifier)) {
      if (done) done(toPlainText());
      return;
    }
    QPlainTextEdit::keyPressEvent(event);
  }
};

/// A swatch that opens the colours; its little cross takes the colour away.
class ColourEdit : public QWidget {
 public:
  std::function<void(const QColor&)> done;
  ColourEdit() {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    swatch_ = new QPushButton;
    swatch_->setAutoDefault(false);
    none_ = new QToolButton;
    none_->setText(u"无"_qs);
    layout->addWidget(swatch_, 1);
    layout->addWidget(none_);
    setFocusProxy(swatch_);
    connect(swatch_, &QPushButton::clicked, this, [this] {
      const QColor picked =
          QColorDialog::getColor(colour_.isValid() ? colour_ : QColor(Qt::white), this, u"选择颜色"_qs);
      if (picked.isValid() && done) done(picked);
    });
    connect(none_, &QToolButton::clicked, this, [this] {
      if (done) done(QColor());
    });
  }
  void show(const QColor& colour) {
    colour_ = colour;
    swatch_->setText(colour.isValid() ? colour.name() : u"（无）"_qs);
    QPixmap patch(16, 16);
    patch.fill(colour.isValid() ? colour : Qt::transparent);
    swatch_->setIcon(QIcon(patch));
  }

 private:
  QColor colour_;
  QPushButton* swatch_;
  QToolButton* none_;
};

/// The four sides of a frame as four buttons, and one for all.
class SidesEdit : public QWidget {
 public:
  std::function<void(int)> done;
  SidesEdit() {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    constexpr std::array sides{report::side::left, report::side::top, report::side::right, report::side::bottom};
    const QStringList names{u"左"_qs, u"上"_qs, u"右"_qs, u"下"_qs};
    for (int i = 0; i < 4; ++i) {
      auto* box = new QToolButton;
      box->setText(names[i]);
      box->setCheckable(true);
      boxes_[i] = box;
      layout->addWidget(box);
      connect(box, &QToolButton::clicked, this, [this, side = sides[i]](bool on) {
        if (done) done(on ? value_ | side : value_ & ~side);
      });
    }
    auto* all = new QToolButton;
    all->setText(u"全部"_qs);
    layout->addWidget(all);
    layout->addStretch();
    setFocusProxy(boxes_[0]);
    connect(all, &QToolButton::clicked, this, [this] {
      if (done) done(value_ == report::side::all ? report::side::none : report::side::all);
    });
  }
  void show(int value) {
    value_ = value;
    constexpr std::array sides{report::side::left, report::side::top, report::side::right, report::side::bottom};
    for (int i = 0; i < 4; ++i)
      boxes_[i]->setChecked(value & sides[i]);
  }

 private:
  int value_ = 0;
  std::array<QToolButton*, 4> boxes_{};
};

}  // namespace property_panel_detail

PropertyPanel::PropertyPanel(DesignDocument& document, QWidget* parent) : QWidget(parent), document_(document) {
  setObjectName(u"properties"_qs);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  title_ = new QLabel;
  title_->setProperty("heading", true);
  area_ = new QScrollArea;
  area_->setWidgetResizable(true);
  area_->setFrameShape(QFrame::NoFrame);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  layout->addWidget(title_);
  layout->addWidget(area_, 1);
  document_.onChanged([this] { refresh(); });
  refresh();
}

bool PropertyPanel::focusOn(const QString& caption) {
  QWidget* widget = editor(caption);
  if (!widget) return false;
  widget->setFocus(Qt::OtherFocusReason);
  area_->ensureWidgetVisible(widget);
  if (auto* line = qobject_cast<QLineEdit*>(widget)) line->selectAll();
  if (auto* text = qobject_cast<QPlainTextEdit*>(widget)) text->selectAll();
  return true;
}

QWidget* PropertyPanel::editor(const QString& caption) const {
  for (const Row& row : rows_)
    if (row.property.caption == caption) return row.editor;
  return nullptr;
}

void PropertyPanel::refresh() {
  if (showing_) return;
  title_->setText(titleOf(document_));
  auto properties = propertiesOf(document_);
  QString shape;
  for (const auto& property : properties)
    shape += property.caption + u'\n';
  if (shape != shape_) {
    shape_ = shape;
    rows_.clear();
    for (auto& property : properties)
      rows_.push_back(makeRow(std::move(property)));
    rebuild();
  } else {
    for (std::size_t i = 0; i < rows_.size(); ++i)
      rows_[i].property = std::move(properties[i]);  // other objects
  }
  showing_ = true;
  for (const Row& row : rows_)
    if (row.show) row.show(row.property.get(document_.current()));
  showing_ = false;
}

void PropertyPanel::rebuild() {
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  form->setContentsMargins(4, 2, 8, 4);
  form->setVerticalSpacing(3);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  for (const Row& row : rows_) {
    if (row.property.editor == Editor::Heading) {
      auto* label = new QLabel(row.property.caption);
      label->setProperty("heading", true);
      form->addRow(label);
      continue;
    }
    row.editor->setAccessibleName(row.property.caption);
    row.editor->setObjectName(u"p_"_qs + row.property.caption);
    if (row.property.editor == Editor::Flag)
      form->addRow(QString(), row.editor);
    else
      form->addRow(row.property.caption, row.editor);
  }
  area_->setWidget(page);  // the page before goes with its editors
}

PropertyPanel::Row PropertyPanel::makeRow(Property property) {
  using namespace property_panel_detail;
  Row row{std::move(property)};
  const std::size_t place = rows_.size();
  const auto take = [this, place](const QVariant& value) {
    if (!showing_ && place < rows_.size()) set(rows_[place].property, value);
  };
  switch (row.property.editor) {
    case Editor::Heading:
      break;
    case Editor::Text: {
      auto* line = new QLineEdit;
      connect(line, &QLineEdit::editingFinished, this, [line, take] { take(line->text()); });
      row.editor = line;
      row.show = [line](const QVariant& v) { line->setText(v.toString()); };
      break;
    }
    case Editor::Expression: {
      auto* edit = new ExpressionEdit;
      edit->done = take;
      row.editor = edit;
      row.show = [edit](const QVariant& v) {
        if (edit->toPlainText() != v.toString()) edit->setPlainText(v.toString());
      };
      break;
    }
    case Editor::Number: {
      auto* spin = new QDoubleSpinBox;
      spin->setDecimals(2);
      spin->setRange(row.property.least, row.property.most);
      spin->setKeyboardTracking(false);
      connect(spin, &QDoubleSpinBox::valueChanged, this, [take](double v) { take(v); });
      row.editor = spin;
      row.show = [spin](const QVariant& v) { spin->setValue(v.toDouble()); };
      break;
    }
    case Editor::Integer: {
      auto* spin = new QSpinBox;
      spin->setRange(static_cast<int>(row.property.least), static_cast<int>(row.property.most));
      spin->setKeyboardTracking(false);
      connect(spin, &QSpinBox::valueChanged, this, [take](int v) { take(v); });
      row.editor = spin;
      row.show = [spin](const QVariant& v) { spin->setValue(v.toInt()); };
      break;
    }
    case Editor::Flag: {
      auto* box = new QCheckBox(row.property.caption);
      connect(box, &QCheckBox::clicked, this, [take](bool on) { take(on); });
      row.editor = box;
      row.show = [box](const QVariant& v) { box->setChecked(v.toBool()); };
      break;
    }
    case Editor::Choice: {
      auto* combo = new QComboBox;
      combo->addItems(row.property.choices);
      connect(combo, &QComboBox::activated, this, [take](int at) { take(at); });
      row.editor = combo;
      row.show = [combo](const QVariant& v) { combo->setCurrentIndex(v.toInt()); };
      break;
    }
    case Editor::OpenChoice: {
      auto* combo = new QComboBox;
      combo->setEditable(true);
      combo->setInsertPolicy(QComboBox::NoInsert);
      combo->addItems(row.property.choices);
      combo->setMinimumContentsLength(8);
      combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
      connect(combo, &QComboBox::activated, this, [combo, take](int) { take(combo->currentText()); });
      connect(combo->lineEdit(), &QLineEdit::editingFinished, this, [combo, take] { take(combo->currentText()); });
      row.editor = combo;
      row.show = [combo](const QVariant& v) { combo->setEditText(v.toString()); };
      break;
    }
    case Editor::Colour: {
      auto* edit = new ColourEdit;
      edit->done = [take](const QColor& c) { take(QVariant::fromValue(c)); };
      row.editor = edit;
      row.show = [edit](const QVariant& v) { edit->show(v.value<QColor>()); };
      break;
    }
    case Editor::Sides: {
      auto* edit = new SidesEdit;
      edit->done = [take](int sides) { take(sides); };
      row.editor = edit;
      row.show = [edit](const QVariant& v) { edit->show(v.toInt()); };
      break;
    }
  }
  return row;
}

void PropertyPanel::set(const Property& property, const QVariant& value) {
  if (property.get(document_.current()) == value) return;
  // By value: the edit makes the panel show anew, and its rows may be others then.
  const auto write = property.set;
  document_.edit(property.caption, [&](report::Template& t) { write(t, value); });
}

}  // namespace jxc::ui
