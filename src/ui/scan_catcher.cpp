#include "ui/scan_catcher.h"

#include "ui/field.h"
#include "ui/keyless_boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>

#include <utility>

namespace jxc::ui {
namespace scan_catcher_detail {

constexpr int kMostBetweenKeys = 40;  // ms; a quick typist needs more than 60, a scanner less than 20
constexpr int kMostInBox = 300;       // the same in a box, where nothing is typed: there a slow code is a code, too
constexpr int kFewestKeys = 6;
constexpr int kSurelyACode = 8;  // keys in such a hurry that no hand typed them: the shortest code of retail goods
constexpr int kAskAgain = 20;    // ms until a busy window is asked again

bool mayBeTypedIn(const QWidget* widget) {
  if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
  return qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

bool isEnter(const QKeyEvent& key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool isModifier(const QKeyEvent& key) {
  return key.key() == Qt::Key_Shift || key.key() == Qt::Key_CapsLock || key.key() == Qt::Key_NumLock;
}

bool isOfACode(const QKeyEvent& key) {
  const QString text = key.text();
  return text.size() == 1 && text.at(0).unicode() < 128 && text.at(0).isLetterOrNumber() &&
         !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

}  // namespace scan_catcher_detail

ScanCatcher::ScanCatcher(QWidget& window, QWidget& barcodeInput, Hooks hooks)
    : QObject(&window), window_(window), input_(barcodeInput), hooks_(std::move(hooks)) {
  clock_.start();
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, [this] { drain(); });
  pause_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, [this] { burstIsOver(); });
  qApp->installEventFilter(this);
}

bool ScanCatcher::eventFilter(QObject* watched, QEvent* event) {
  // The mouse reaches the box alone, too.
  if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) && busy_ &&
      KeylessBoxes::shown() && watched->isWidgetType() && static_cast<QWidget*>(watched)->window() == &window_)
    return true;
  if (event->type() == QEvent::InputMethod) {
    composing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
    code_.clear();
    return false;
  }
  const bool isPress = event->type() == QEvent::KeyPress;
  if ((!isPress && event->type() != QEvent::ShortcutOverride) || !window_.isVisible()) return false;
  if (!watched->isWidgetType()) return false;
  auto& key = static_cast<QKeyEvent&>(*event);
  auto& target = static_cast<QWidget&>(*watched);
  auto* modal = QApplication::activeModalWidget();
  // A box that came up while a code was entered stands there without the keys: they come through this window.
  if (auto* keyless = KeylessBoxes::shown(); keyless && busy_ && target.window() == &window_) {
    if (&target == window_.focusWidget() && isPress && !keyInBox(*keyless, key)) handOn(*keyless, key);
    event->accept();
    return true;
  }
  auto* box = qobject_cast<QMessageBox*>(modal);
  if (box && target.window() == box) {
    if (isPress) return keyInBox(*box, key);
    // Or a letter of the code would press the button that has it as its key.
    if (scan_catcher_detail::isOfACode(key)) event->accept();
    return false;
  }
  if (!isPress) return false;
  const bool isOwn = target.window() == &window_;
  if (!isOwn && (!hooks_.watchesToo || target.window() != modal || !hooks_.watchesToo(*target.window()))) return false;
  // Only what the focus gets first: the same key comes again on its way up to the window.
  return &target == target.window()->focusWidget() && keyInWindow(target, key);
}

bool ScanCatcher::isInTime(const QKeyEvent& key, int most) const {
  // By the time of the press itself where the system tells it: a busy window looks at its keys late.
  const quint64 now = key.timestamp() != 0 ? key.timestamp() : static_cast<quint64>(clock_.elapsed());
  return !code_.isEmpty() && now >= lastKey_ && now - lastKey_ <= static_cast<quint64>(most);
}

void ScanCatcher::add(QWidget* target, const QKeyEvent& key, int most) {
  if (!isInTime(key, beganInBox_ ? scan_catcher_detail::kMostInBox : most)) {
    code_.clear();
    beganInBox_ = !target;
    remember(target);
  } else if (target && !target_) {
    remember(target);  // the box gave way in the middle of the code
  }
  code_ += key.text();
  lastKey_ = key.timestamp() != 0 ? key.timestamp() : static_cast<quint64>(clock_.elapsed());
}

bool ScanCatcher::keyInWindow(QWidget& target, const QKeyEvent& key) {
  if (composing_) return false;
  scannedInInput_ = false;
  if (scan_catcher_detail::isEnter(key)) {
    if (isInTime(key, beganInBox_ ? scan_catcher_detail::kMostInBox : scan_catcher_detail::kMostBetweenKeys))
      return end(target);
    code_.clear();
  } else if (scan_catcher_detail::isOfACode(key)) {
    add(&target, key, scan_catcher_detail::kMostBetweenKeys);
  } else if (!scan_catcher_detail::isModifier(key)) {  // capital letters of a code come with Shift
    code_.clear();
  }
  return false;
}

bool ScanCatcher::keyInBox(QMessageBox& box, const QKeyEvent& key) {
  using namespace scan_catcher_detail;
  // Nothing can be typed in a box: whatever comes in a hurry belongs to the code.
  if (isOfACode(key) || (isInTime(key, kMostInBox) && key.text().size() == 1 && key.text().at(0).isPrint())) {
    box_ = &box;
    add(nullptr, key, kMostInBox);
    pause_.start(kMostBetweenKeys + kAskAgain);
    return true;
  }
  if (!isEnter(key) || !isInTime(key, kMostInBox) || code_.size() < kFewestKeys) return false;
  pause_.stop();
  takeBack();
  take(std::exchange(code_, QString()));
  // What was told is told; a question stays until somebody has answered it.
  if (const auto buttons = box.buttons(); buttons.size() == 1)
    QMetaObject::invokeMethod(
        buttons.front(), [button = buttons.front()] { button->click(); }, Qt::QueuedConnection);
  return true;
}

void ScanCatcher::handOn(QMessageBox& box, const QKeyEvent& key) {
  QAbstractButton* meant = nullptr;
  if (key.key() == Qt::Key_Escape) {
    meant = box.escapeButton();
  } else if (scan_catcher_detail::isEnter(key) || key.key() == Qt::Key_Space) {
    meant = box.defaultButton();
  } else if (key.modifiers() & Qt::AltModifier) {
    for (auto* button : box.buttons())
      if (button->shortcut() == QKeySequence(key.key())) meant = button;
  }
  if (meant)
    QMetaObject::invokeMethod(
        meant, [meant] { meant->click(); }, Qt::QueuedConnection);
}

void ScanCatcher::burstIsOver() {
  // One key was a hand that wanted a button.
  if (!box_ || code_.size() != 1) return;
  for (auto* button : box_->buttons())
    if (button->shortcut() == QKeySequence(code_.toUpper())) {
      code_.clear();
      return button->click();
    }
}

void ScanCatcher::remember(QWidget* target) {
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

bool ScanCatcher::end(QWidget& target) {
  using namespace scan_catcher_detail;
  const QString code = std::exchange(code_, QString());
  if (&target == &input_ && !beganInBox_) {  // it reads its own text
    scannedInInput_ = code.size() >= kFewestKeys;
    return false;
  }
  if (code.size() < kFewestKeys) return false;
  // A few digits in a hurry are no scan where digits may be typed, unless they are a code.
  if (!beganInBox_ && target_ && mayBeTypedIn(target_) && code.size() < kSurelyACode && !hooks_.isKnown(code))
    return false;
  takeBack();
  take(code);
  return true;
}

void ScanCatcher::takeBack() {
  dropTypedLetters();
  if (!target_) return;
  if (auto* line = qobject_cast<QLineEdit*>(target_.data())) {
    line->setText(textBefore_);
    line->setCursorPosition(cursorBefore_);
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(target_.data())) {
    memo->setPlainText(textBefore_);
  } else if (auto* list = qobject_cast<QComboBox*>(target_.data())) {
    list->setCurrentIndex(indexBefore_);
  } else if (auto* now = target_->window()->focusWidget(); now && now != target_ && target_->isAncestorOf(now)) {
    // A cell of a list opened its editor on the first key: it closes without writing.
    QKeyEvent leave(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(now, &leave);
  }
  target_ = nullptr;
}

// ---- one code after the other --------------------------------------------------------------------------------------

void ScanCatcher::take(const QString& code) {
  waiting_.push_back(code);
  drain();
}

bool ScanCatcher::isFree() const {
  const auto* modal = QApplication::activeModalWidget();
  return !busy_ && (!modal || modal == &window_) && (!hooks_.isFree || hooks_.isFree());
}

void ScanCatcher::drain() {
  if (!window_.isVisible()) waiting_.clear();
  while (!waiting_.empty() && isFree()) {
    const QString code = waiting_.front();
    waiting_.pop_front();
    busy_ = true;
    const KeylessBoxes boxes(window_);
    const auto done = qScopeGuard([this] { busy_ = false; });
    hooks_.scanned(code);
  }
  if (!waiting_.empty()) retry_.start(scan_catcher_detail::kAskAgain);
}

}  // namespace jxc::ui
