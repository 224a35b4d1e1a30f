#include "ui/field.h"

#include "ui/display.h"
#include "ui/icons.h"
#include "ui/schema_width.h"
#include "ui/secret_edit.h"
#include "ui/skin.h"
#include "ui/text_input.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace jxc::ui {
namespace field_detail {

std::optional<QString> readDay(const FieldSpec& spec, const QString& text) {
  return spec.flags & WholeMonth ? readMonth(text) : readDate(text);
}

QString steppedDay(const FieldSpec& spec, const QString& day, int step) {
  const QDate date = QDate::fromString(day, dayForm(spec));
  if (!date.isValid()) return {};
  return (spec.flags & WholeMonth ? date.addMonths(step) : date.addDays(step)).toString(dayForm(spec));
}

/// Of an input that belongs to no column: what is searched for. A whole clipboard is pasted there by mistake.
constexpr int mostSearched = 200;

int mostCharacters(const FieldSpec& spec) {
  if (spec.width > 0) return spec.width;
  if (isNumberKind(spec.kind)) return numberInputLength(spec.kind);
  if (spec.kind == FieldKind::Date) return 10;
  if (!spec.column.empty()) return std::max(0, columnWidth(spec.column));
  return spec.kind == FieldKind::Text ? mostSearched : 0;
}

// A proposal of width in characters: an input is as wide as what usually stands in it, and no wider than a form bears.
int wishedCharacters(const FieldSpec& spec) {
  if (isNumberKind(spec.kind)) return 10;
  if (spec.kind == FieldKind::Date) return 13;  // with its calendar
  const int most = mostCharacters(spec);
  return most == 0 || most == mostSearched ? 14 : std::clamp(most, 6, 20);
}

bool isLine(FieldKind kind) {
  return kind != FieldKind::Combo && kind != FieldKind::EditCombo && kind != FieldKind::Check &&
         kind != FieldKind::Radio && kind != FieldKind::Memo;
}

/// A picker shows what it holds: there is nothing to overwrite.
bool isTypedIn(FieldKind kind) {
  return isLine(kind) && kind != FieldKind::Picker;
}

QLineEdit* line(QWidget* widget) {
  return static_cast<QLineEdit*>(widget);
}
QComboBox* combo(QWidget* widget) {
  return static_cast<QComboBox*>(widget);
}
bool isBox(FieldKind kind) {
  return kind == FieldKind::Check || kind == FieldKind::Radio;
}
QAbstractButton* box(QWidget* widget) {
  return static_cast<QAbstractButton*>(widget);
}
QPlainTextEdit* memo(QWidget* widget) {
  return static_cast<QPlainTextEdit*>(widget);
}

}  // namespace field_detail

/// While one lives, changes of the widget come from the program.
struct Field::Quiet {
  explicit Quiet(Field& f) : field(f) { ++field.quiet_; }
  ~Quiet() { --field.quiet_; }
  Field& field;
};

/// While one lives the program writes the input: what it leaves there is what the operator finds.
struct Field::Writing : Quiet {
  using Quiet::Quiet;
  ~Writing() {
    field.touched_ = false;
    field.written_ = field.text();
  }
};

Field::Field(const FieldSpec& spec, QWidget* parent) : spec_(spec) {
  build(parent);
}
Field::~Field() = default;

void Field::build(QWidget* parent) {
  using namespace field_detail;
  const QString name = qs(spec_.name);
  const QString caption = qs(spec_.label);
  if (spec_.kind == FieldKind::Check) {
    auto* check = new QCheckBox(caption, parent);
    connect(check, &QCheckBox::toggled, this, [this] { operatorChanged(); });
    widget_ = check;
  } else if (spec_.kind == FieldKind::Radio) {
    auto* choice = new QRadioButton(caption, parent);
    // Not `toggled`: that also comes to the one which loses.
    connect(choice, &QRadioButton::clicked, this, [this] { operatorChanged(); });
    widget_ = choice;
  } else if (spec_.kind == FieldKind::Combo || spec_.kind == FieldKind::EditCombo) {
    auto* list = new QComboBox(parent);
    list->setEditable(spec_.kind == FieldKind::EditCombo);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(8);
    list->setMaxVisibleItems(16);
    if (list->isEditable()) {
      if (const int most = mostCharacters(spec_)) list->lineEdit()->setMaxLength(most);
      connect(list, &QComboBox::editTextChanged, this, [this] { operatorChanged(); });
    } else {
      connect(list, &QComboBox::currentIndexChanged, this, [this] { operatorChanged(); });
    }
    widget_ = list;
  } else if (spec_.kind == FieldKind::Memo) {
    auto* text = new MemoInput(parent);
    text->setTabChangesFocus(true);
    connect(text, &QPlainTextEdit::textChanged, this, [this, text] {
      const int most = field_detail::mostCharacters(spec_);
      if (most > 0 && text->toPlainText().size() > most) {
        const Quiet quiet(*this);
        text->setPlainText(text->toPlainText().left(most));
        text->moveCursor(QTextCursor::End);
      }
      operatorChanged();
    });
    widget_ = text;
  } else {
    buildLine(parent);
  }
  widget_->setObjectName(name);
  if (!caption.isEmpty() && !field_detail::isBox(spec_.kind)) {
    label_ = new QLabel(caption, parent);
    label_->setBuddy(widget_);
    label_->setObjectName(QStringLiteral("label_") + name);
  }
  if (!spec_.suffix.empty()) {
    suffix_ = new QLabel(qs(spec_.suffix), parent);
    suffix_->setObjectName(QStringLiteral("suffix_") + name);
    if (caption.isEmpty()) widget_->setAccessibleName(suffix_->text());
  }
  widget_->installEventFilter(this);
  if (spec_.kind == FieldKind::EditCombo) combo(widget_)->lineEdit()->installEventFilter(this);
  if (spec_.flags & ReadOnly) setReadOnly(true);
  clear();
  stored_ = value();
}

void Field::buildLine(QWidget* parent) {
  auto* edit = spec_.kind == FieldKind::Secret ? new SecretEdit(parent) : new QLineEdit(parent);
  widget_ = edit;
  if (const int most = field_detail::mostCharacters(spec_)) edit->setMaxLength(most);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * field_detail::wishedCharacters(spec_));
  if (isNumberKind(spec_.kind)) edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  if (spec_.kind == FieldKind::Password) edit->setEchoMode(QLineEdit::Password);
  if (spec_.kind == FieldKind::Date || spec_.kind == FieldKind::Picker) {
    const bool date = spec_.kind == FieldKind::Date;
    const bool takenBack = !date && (spec_.flags & MayBeEmpty);
    auto* open = edit->addAction(icon(date ? "field-calendar" : "field-list"), QLineEdit::TrailingPosition);
    open->setText(date ? QStringLiteral("日历") : QStringLiteral("列表"));
    open->setToolTip(date        ? QStringLiteral("日历 (F4)")
                     : takenBack ? QStringLiteral("列表 (F2)，清除 (Del)")
                                 : QStringLiteral("列表 (F2)"));
    connect(open, &QAction::triggered, this, [this, date] { date ? openCalendar() : pick(); });
    for (auto* button : edit->findChildren<QToolButton*>())
      button->setAccessibleName(open->text());
  }
  if (spec_.flags & OffersRemarks) {
    auto* open = edit->addAction(icon("field-list"), QLineEdit::TrailingPosition);
    open->setText(QStringLiteral("常用备注"));
    open->setToolTip(QStringLiteral("常用备注 (F4)"));
    connect(open, &QAction::triggered, this, [this] { takeRemark(); });
    for (auto* button : edit->findChildren<QToolButton*>())
      button->setAccessibleName(open->text());
  }
  // A picker shows the name of what stands behind its key: typing there would part the two.
  if (spec_.kind == FieldKind::Picker) edit->setReadOnly(true);
  connect(edit, &QLineEdit::textChanged, this, [this] { operatorChanged(); });
}

QString Field::text() const {
  using namespace field_detail;
  switch (spec_.kind) {
    case FieldKind::Check:
    case FieldKind::Radio:
      return isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    case FieldKind::Combo:
    case FieldKind::EditCombo:
      return combo(widget_)->currentText();
    case FieldKind::Memo:
      return memo(widget_)->toPlainText();
    case FieldKind::Date: {
      const QString typed = line(widget_)->text().trimmed();
      return typed.isEmpty() ? QString() : field_detail::readDay(spec_, typed).value_or(before_);
    }
    default:
      break;
  }
  if (!isNumberKind(spec_.kind)) return line(widget_)->text();
  return numberEmpty_ ? QString() : numberText(number_);
}

WipedText Field::secret() const {
  return WipedText(spec_.kind == FieldKind::Secret ? static_cast<const SecretEdit*>(widget_)->secret() : text());
}

double Field::number() const {
  return isNumberKind(spec_.kind) ? (numberEmpty_ ? 0 : number_) : readNumber(trimmed()).value_or(0);
}

int Field::integer() const {
  return static_cast<int>(number());
}

QString Field::key() const {
  if (spec_.kind == FieldKind::Picker) return key_;
  const int at = index();
  return at >= 0 && at < static_cast<int>(items_.size()) ? items_[at].key : QString();
}

int Field::index() const {
  if (spec_.kind == FieldKind::Combo) return field_detail::combo(widget_)->currentIndex();
  if (spec_.kind != FieldKind::EditCombo) return -1;
  return field_detail::combo(widget_)->findText(field_detail::combo(widget_)->currentText());
}

bool Field::isChecked() const {
  return field_detail::isBox(spec_.kind) && field_detail::box(widget_)->isChecked();
}

Value Field::value() const {
  if (field_detail::isBox(spec_.kind)) return isChecked() ? 1 : 0;
  if (spec_.kind == FieldKind::Combo || spec_.kind == FieldKind::Picker) return key();
  if (isNumberKind(spec_.kind)) return number();
  return text();
}

void Field::setText(const QString& text) {
  using namespace field_detail;
  const Writing writing(*this);
  if (isNumberKind(spec_.kind)) {
    numberEmpty_ = text.trimmed().isEmpty();
    number_ = readNumber(text).value_or(0);
    showNumber(widget_->hasFocus());
  } else if (field_detail::isBox(spec_.kind)) {
    box(widget_)->setChecked(!text.isEmpty() && text != u"0" && text.compare(u"False", Qt::CaseInsensitive) != 0);
  } else if (spec_.kind == FieldKind::Combo) {
    combo(widget_)->setCurrentIndex(combo(widget_)->findText(text));
  } else if (spec_.kind == FieldKind::EditCombo) {
    combo(widget_)->setEditText(text);
  } else if (spec_.kind == FieldKind::Memo) {
    memo(widget_)->setPlainText(text);
  } else if (spec_.kind == FieldKind::Date) {
    lastDate_ = before_ = field_detail::readDay(spec_, text).value_or(QString());
    line(widget_)->setText(lastDate_);
  } else {
    line(widget_)->setText(text);
    line(widget_)->setCursorPosition(0);
    if (spec_.kind == FieldKind::Picker && text.isEmpty()) key_.clear();
  }
}

void Field::typeIn(const QString& text) {
  if (field_detail::isTypedIn(spec_.kind)) field_detail::line(widget_)->setText(text);
}

void Field::setNumber(double number) {
  setText(numberText(number));
}

void Field::setKey(const QString& key) {
  const Quiet quiet(*this);
  if (spec_.kind == FieldKind::Picker) {
    key_ = key;
    return;
  }
  int found = -1;
  for (int i = 0; i < static_cast<int>(items_.size()) && found < 0; ++i) {
    if (items_[i].key == key) found = i;
  }
  setIndex(found);
}

void Field::setIndex(int index) {
  const Writing writing(*this);
  field_detail::combo(widget_)->setCurrentIndex(index);
}

void Field::setChecked(bool on) {
  const Writing writing(*this);
  field_detail::box(widget_)->setChecked(on);
}

void Field::setPicked(const ListItem& item) {
  setText(item.text);
  key_ = item.key;
}

void Field::setValue(const Value& value) {
  if (spec_.kind == FieldKind::Combo || spec_.kind == FieldKind::Picker) {
    setKey(value.text());
  } else if (field_detail::isBox(spec_.kind)) {
    setChecked(value.integer() != 0);
  } else {
    setText(value.text());
  }
}

void Field::clear() {
  if (spec_.kind == FieldKind::Combo) {
    setIndex(items_.empty() ? -1 : 0);
  } else if (field_detail::isBox(spec_.kind)) {
    setChecked(false);
  } else {
    setText(isNumberKind(spec_.kind) ? QStringLiteral("0") : QString());
  }
}

void Field::setItems(const std::vector<ListItem>& items, bool keep) {
  const Writing writing(*this);
  const QString old = key();
  const QString typed = text();
  items_ = items;
  auto* list = field_detail::combo(widget_);
  list->clear();
  for (const auto& item : items_)
    list->addItem(item.text, item.key);
  if (spec_.kind == FieldKind::EditCombo) {
    list->setEditText(typed);
    return;
  }
  setIndex(items_.empty() ? -1 : 0);
  if (keep && !old.isEmpty() && list->findData(old) >= 0) list->setCurrentIndex(list->findData(old));
}

void Field::load(const Value& value) {
  setValue(value);
  stored_ = this->value();
}

std::optional<QString> Field::problem() const {
  if (spec_.kind != FieldKind::Date) return std::nullopt;
  const QString typed = field_detail::line(widget_)->text().trimmed();
  QString name = label_ ? label_->text().remove(u'&') : QString();
  if (typed.isEmpty() && !(spec_.flags & MayBeEmpty)) {
    name.remove(u'：');
    return (name.contains(u"日期") ? name : QStringLiteral("日期")) + QStringLiteral("必须填写！");
  }
  if (typed.isEmpty() || field_detail::readDay(spec_, typed)) return std::nullopt;
  return name + QStringLiteral("日期格式不正确，请输入年-月-日，如 2026-05-01");
}

void Field::setVisible(bool on) {
  widget_->setVisible(on);
  if (label_) label_->setVisible(on);
  if (suffix_) suffix_->setVisible(on);
  if (isHidden_ == !on) return;
  isHidden_ = !on;
  if (!isNumberKind(spec_.kind)) return;
  const Quiet quiet(*this);
  showNumber(widget_->hasFocus());
}

bool Field::isVisible() const {
  return !widget_->isHidden();
}

void Field::setEnabled(bool on) {
  widget_->setEnabled(on);
  if (label_) label_->setEnabled(on);
  if (suffix_) suffix_->setEnabled(on);
}

bool Field::isEnabled() const {
  return widget_->isEnabled();
}

void Field::setReadOnly(bool on) {
  using namespace field_detail;
  readOnly_ = on;
  if (isLine(spec_.kind)) {
    line(widget_)->setReadOnly(on || spec_.kind == FieldKind::Picker);
    for (auto* action : widget_->actions())
      action->setVisible(!on);
  } else if (spec_.kind == FieldKind::Memo) {
    memo(widget_)->setReadOnly(on);
  } else {
    widget_->setEnabled(!on);
  }
  setLook(*widget_, "readOnlyLook", on);
}

void Field::setLabel(const QString& text) {
  if (label_) label_->setText(text);
  if (field_detail::isBox(spec_.kind)) field_detail::box(widget_)->setText(text);
}

void Field::setMaxLength(int characters) {
  if (field_detail::isLine(spec_.kind)) field_detail::line(widget_)->setMaxLength(characters > 0 ? characters : 32767);
}

void Field::focus() {
  widget_->setFocus(Qt::OtherFocusReason);
  if (field_detail::isTypedIn(spec_.kind)) field_detail::line(widget_)->selectAll();
}

bool Field::hasFocus() const {
  const auto* now = widget_->window()->focusWidget();
  return now && (now == widget_ || widget_->isAncestorOf(now));
}

void Field::operatorChanged() {
  if (quiet_ > 0) return;
  touched_ = true;
  if (isNumberKind(spec_.kind)) {
    auto* edit = field_detail::line(widget_);
    const auto typed = readNumber(edit->text());
    const QString plain = edit->text().trimmed();
    const bool unfinished = plain == u"-" || plain == u"." || plain == u"-.";
    const bool refused = (!typed && !unfinished) || ((spec_.flags & NoMinus) && typed.value_or(0) < 0);
    if (refused) {  // pasted: typed characters never come so far
      const Quiet quiet(*this);
      showNumber(true);
      return;
    }
    numberEmpty_ = plain.isEmpty();
    number_ = typed.value_or(0);
  } else if (spec_.kind == FieldKind::Date) {
    auto* edit = field_detail::line(widget_);
    const auto date = field_detail::readDay(spec_, edit->text());
    const bool empty = edit->text().trimmed().isEmpty();
    if (!date && !(empty && (spec_.flags & MayBeEmpty))) return;  // not yet a date
    const QString now = date.value_or(QString());
    if (now == lastDate_) return;
    lastDate_ = now;
  }
  if (changed_) changed_();
}

void Field::showNumber(bool plain) {
  auto* edit = field_detail::line(widget_);
  // What is not to be seen is not in the window: a screen reader would read it.
  if (numberEmpty_ || isHidden_) {
    edit->clear();
  } else {
    const QString text = plain ? numberText(number_) : displayNumber(columnKindOf(spec_.kind), number_);
    // What was computed is shown whole, however long; the limit is for typing.
    if (const int most = field_detail::mostCharacters(spec_)) edit->setMaxLength(std::max(most, int(text.size())));
    edit->setText(text);
  }
}

void Field::focusCame() {
  before_ = lastDate_;
  if (isNumberKind(spec_.kind) && !readOnly_) {
    const Quiet quiet(*this);
    // A window that comes up gives focus to an input that was chosen before it was seen: what stood selected to be
    // typed over stays so.
    auto* edit = field_detail::line(widget_);
    const bool whole = edit->hasSelectedText() && edit->selectedText() == edit->text();
    showNumber(true);
    if (whole) edit->selectAll();
  }
}

void Field::focusGone() {
  const QPointer<Field> alive(this);
  bool takenBack = false;
  {
    const Quiet quiet(*this);
    if (isNumberKind(spec_.kind)) {
      showNumber(false);
    } else if (spec_.kind == FieldKind::Date) {
      // A date that is none does not stay: the one that was there before comes back.
      auto* edit = field_detail::line(widget_);
      const bool emptied = edit->text().trimmed().isEmpty() && (spec_.flags & MayBeEmpty);
      const QString date = emptied ? QString() : field_detail::readDay(spec_, edit->text()).value_or(before_);
      edit->setText(date);
      takenBack = date != lastDate_;
      lastDate_ = before_ = date;
    }
  }
  if (takenBack && changed_) changed_();
  if (!alive) return;
  if (left_) left_();
}

bool Field::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    focusCame();
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (field_detail::isTypedIn(spec_.kind) && reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason &&
        reason != Qt::ActiveWindowFocusReason) {
      field_detail::line(widget_)->selectAll();
    }
  } else if (event->type() == QEvent::FocusOut) {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) focusGone();
  } else if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool takesBack = key->key() == Qt::Key_Delete || key->key() == Qt::Key_Backspace;
    if (spec_.kind == FieldKind::Picker && !readOnly_ && (spec_.flags & MayBeEmpty) && takesBack) {
      if (isEmpty()) return true;
      const QString before = written_;
      setText({});
      written_ = before;
      operatorChanged();
      return true;
    }
    if (isOpenedBy(*key)) {
      spec_.kind == FieldKind::Picker ? pick() : spec_.kind == FieldKind::Date ? openCalendar() : takeRemark();
      return true;
    }
    if (spec_.kind == FieldKind::Picker && opensList(*key)) return true;
    if (spec_.kind == FieldKind::Date && !readOnly_) {
      const int step = key->key() == Qt::Key_Up ? 1 : key->key() == Qt::Key_Down ? -1 : 0;
      const QString next = step == 0 ? QString() : field_detail::steppedDay(spec_, lastDate_, step);
      if (!next.isEmpty()) {
        field_detail::line(widget_)->setText(next);
        return true;
      }
    }
    if (isNumberKind(spec_.kind) && !key->text().isEmpty() && key->text().at(0).isPrint()) {
      const QChar c = key->text().at(0);
      const bool minus = c == u'-' || c == u'－';
      const bool number = c.isDigit() || c == u'.' || c == u'。' || c == u'．' || minus;
      const bool wanted = number && !(minus && (spec_.flags & NoMinus)) &&
                          !((c == u'.' || c == u'。' || c == u'．') && spec_.kind == FieldKind::Integer);
      if (!wanted && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace jxc::ui
