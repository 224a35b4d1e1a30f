// What stands behind an input and is opened from it: the list of a picker, the calendar, the standard remarks.
#include "ui/display.h"
#include "ui/field.h"
#include "ui/screen.h"
#include "ui/typed_ahead.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDate>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace jxc::ui {
namespace field_opening_detail {

std::function<std::optional<QString>()>& remarkSource() {
  static std::function<std::optional<QString>()> source;
  return source;
}

constexpr int kPause = 60;  // ms without a key after which nobody is scanning

/// Letters that were typed in a picker.
struct Letters {
  QPointer<Field> to;
  std::vector<std::shared_ptr<QKeyEvent>> keys;
};

Letters& letters() {
  static Letters all;
  return all;
}

}  // namespace field_opening_detail

bool isTypedLetter(const QKeyEvent& key) {
  return !key.text().isEmpty() && key.text().at(0).isPrint() && !key.text().at(0).isSpace() &&
         !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

bool Field::isOpenedBy(const QKeyEvent& key) const {
  if (readOnly_ || key.modifiers() != Qt::NoModifier) return false;
  if (spec_.kind == FieldKind::Picker) return key.key() == Qt::Key_F2;
  return key.key() == Qt::Key_F4 && (spec_.kind == FieldKind::Date || (spec_.flags & OffersRemarks));
}

bool Field::opensList(const QKeyEvent& key) {
  if (readOnly_ || !picking_) return false;
  const bool byKey = (key.key() == Qt::Key_Down && key.modifiers() == Qt::AltModifier) ||
                     (key.key() == Qt::Key_F4 && key.modifiers() == Qt::NoModifier);
  const bool byLetter = isTypedLetter(key);
  if (byLetter) {
    using namespace field_opening_detail;
    if (letters().to != this) letters() = {this, {}};
    letters().keys.emplace_back(key.clone());
    QTimer::singleShot(kPause, this, [this, count = letters().keys.size()] {
      if (letters().to == this && letters().keys.size() == count) openWithLetters();
    });
  }
  if (byKey) pick();
  return byKey || byLetter;
}

void Field::openWithLetters() {
  const auto keys = std::exchange(field_opening_detail::letters().keys, {});
  if (!hasFocus() || windowInFront() != widget_->window()) return;
  // They go on to the list that opens, as if they had been typed there; to a message that comes instead they do not.
  QTimer::singleShot(0, qApp, [from = widget_->window(), keys] {
    auto* list = dynamic_cast<Screen*>(QApplication::activeModalWidget());
    if (!list || list == from) return;
    for (const auto& key : keys)
      if (list->focusWidget()) QCoreApplication::sendEvent(list->focusWidget(), key.get());
  });
  pick();
}

void dropTypedLetters() {
  field_opening_detail::letters() = {};
}

void Field::pick() {
  if (!picking_ || readOnly_ || !isEnabled()) return;
  const auto picked = picking_();
  if (!picked) return;
  const QString before = written_;
  setPicked(*picked);
  written_ = before;
  const QPointer<Field> alive(this);
  operatorChanged();
  // Unless the screen has led him elsewhere.
  if (alive && picked_ && hasFocus()) picked_();
}

void Field::takeRemark() {
  const auto& source = field_opening_detail::remarkSource();
  if (!source || readOnly_ || !isEnabled()) return;
  const auto remark = source();
  if (!remark) return;
  if (spec_.kind == FieldKind::Memo) {
    static_cast<QPlainTextEdit*>(widget_)->insertPlainText(*remark);
  } else {
    auto* edit = static_cast<QLineEdit*>(widget_);
    edit->deselect();  // coming by Tab marks all: what was typed before must not go
    edit->insert(*remark);
  }
}

void setRemarkSource(std::function<std::optional<QString>()> source) {
  field_opening_detail::remarkSource() = std::move(source);
}

void Field::openCalendar() {
  if (readOnly_) return;
  auto* popup = new QWidget(widget_, Qt::Popup);
  popup->setAttribute(Qt::WA_DeleteOnClose);
  popup->setObjectName(QStringLiteral("calendarPopup"));
  auto* layout = new QVBoxLayout(popup);
  layout->setContentsMargins(1, 1, 1, 1);
  auto* calendar = new QCalendarWidget(popup);
  calendar->setAccessibleName(QStringLiteral("日历"));
  calendar->setFirstDayOfWeek(Qt::Monday);
  calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  if (const auto date = QDate::fromString(lastDate_, dayForm(spec_)); date.isValid()) {
    calendar->setSelectedDate(date);
  }
  layout->addWidget(calendar);
  const auto take = [this, popup](const QDate& date) {
    static_cast<QLineEdit*>(widget_)->setText(date.toString(dayForm(spec_)));
    popup->close();
    focus();
  };
  connect(calendar, &QCalendarWidget::activated, popup, take);
  connect(calendar, &QCalendarWidget::clicked, popup, take);
  popup->move(widget_->mapToGlobal(QPoint(0, widget_->height())));
  popup->show();
  calendar->setFocus();
}

}  // namespace jxc::ui
