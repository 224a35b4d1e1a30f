#include "ui/scan_catcher.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace jxc::ui {
namespace scan_catcher_detail {

constexpr int kMostBetweenKeys = 40;  // ms; a quick typist needs more than 60, a scanner less than 20
constexpr int kFewestKeys = 6;

bool mayBeTypedIn(const QWidget* widget) {
  if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
  return qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

}  // namespace scan_catcher_detail

ScanCatcher::ScanCatcher(QWidget& window, QWidget& barcodeInput, Hooks hooks)
    : QObject(&window), window_(window), input_(barcodeInput), hooks_(std::move(hooks)) {
  qApp->installEventFilter(this);
}

bool ScanCatcher::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  auto* target = static_cast<QWidget*>(watched);
  // Only what the focus gets first: the same key comes again on its way up to the window.
  if (target->window() != &window_ || target == &input_ || target != window_.focusWidget()) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool inTime = sinceKey_.isValid() && sinceKey_.elapsed() <= scan_catcher_detail::kMostBetweenKeys;
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) return inTime && end();
  const QString text = key->text();
  const bool ofACode = text.size() == 1 && text.at(0).unicode() < 128 && text.at(0).isLetterOrNumber() &&
                       !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (!ofACode) {
    code_.clear();
    return false;
  }
  if (!inTime || code_.isEmpty()) begin(target);
  code_ += text;
  sinceKey_.start();
  return false;
}

void ScanCatcher::begin(QWidget* target) {
  code_.clear();
  target_ = target;
  if (const auto* line = qobject_cast<QLineEdit*>(target)) {
    textBefore_ = line->text();
    cursorBefore_ = line->cursorPosition();
  } else if (const auto* memo = qobject_cast<QPlainTextEdit*>(target)) {
    textBefore_ = memo->toPlainText();
  } else if (const auto* list = qobject_cast<QComboBox*>(target)) {
    indexBefore_ = list->currentIndex();
  }
}

bool ScanCatcher::end() {
  const QString code = std::exchange(code_, QString());
  if (code.size() < scan_catcher_detail::kFewestKeys) return false;
  // Digits in a hurry are no scan where digits may be typed, unless they are a code.
  if (target_ && scan_catcher_detail::mayBeTypedIn(target_) && !hooks_.isKnown(code)) return false;
  takeBack();
  hooks_.scanned(code);
  return true;
}

void ScanCatcher::takeBack() {
  if (!target_) return;
  if (auto* line = qobject_cast<QLineEdit*>(target_.data())) {
    line->setText(textBefore_);
    line->setCursorPosition(cursorBefore_);
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(target_.data())) {
    memo->setPlainText(textBefore_);
  } else if (auto* list = qobject_cast<QComboBox*>(target_.data())) {
    list->setCurrentIndex(indexBefore_);
  } else if (auto* now = window_.focusWidget(); now && now != target_ && target_->isAncestorOf(now)) {
    // A cell of a list opened its editor on the first key: it closes without writing.
    QKeyEvent leave(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(now, &leave);
  }
  target_ = nullptr;
}

}  // namespace jxc::ui
