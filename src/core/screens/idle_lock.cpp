#include "core/screens/idle_lock.h"

#include "core/archive_look.h"
#include "core/login.h"
#include "core/station_options.h"

#include <QApplication>
#include <QEvent>
#include <QProgressDialog>

#include <algorithm>

namespace jxc {
namespace idle_lock_detail {

constexpr const char16_t* kOption = u"idleLockMinutes";
constexpr int kUsualMinutes = 15;
constexpr int kLooksEvery = 5000;  // ms

bool isTouch(QEvent::Type type) {
  return type == QEvent::KeyPress || type == QEvent::MouseButtonPress || type == QEvent::MouseMove ||
         type == QEvent::Wheel || type == QEvent::TouchBegin || type == QEvent::InputMethod;
}

/// A command that is at work answers events for its bar only.
bool isWorking() {
  if (isCommandAtWork() || isArchiveInUse()) return true;
  const QWidgetList all = QApplication::topLevelWidgets();
  return std::any_of(all.begin(), all.end(), [](const QWidget* each) {
    return each->isVisible() && dynamic_cast<const QProgressDialog*>(each) != nullptr;
  });
}

}  // namespace idle_lock_detail

int idleLockMinutes() {
  const QString kept = stationText(idle_lock_detail::kOption);
  return kept.isEmpty() ? idle_lock_detail::kUsualMinutes : std::max(0, kept.toInt());
}

void keepIdleLockMinutes(int minutes) {
  if (minutes != idleLockMinutes()) keepStationText(idle_lock_detail::kOption, QString::number(minutes));
}

IdleLock::IdleLock(std::function<void()> lock) : lock_(std::move(lock)) {
  sinceTouched_.start();
  qApp->installEventFilter(this);
  timer_.setInterval(idle_lock_detail::kLooksEvery);
  connect(&timer_, &QTimer::timeout, this, [this] { look(sinceTouched_.elapsed()); });
}

void IdleLock::start() {
  sinceTouched_.restart();
  timer_.start();
}

void IdleLock::look(qint64 rest) {
  const int minutes = idleLockMinutes();
  if (!timer_.isActive() || minutes == 0 || rest < qint64{minutes} * 60 * 1000 || idle_lock_detail::isWorking()) return;
  while (QWidget* popup = QApplication::activePopupWidget())
    if (!popup->close()) break;  // it holds the keys, which the lock needs
  lock_();
  sinceTouched_.restart();
}

bool IdleLock::eventFilter(QObject*, QEvent* event) {
  if (idle_lock_detail::isTouch(event->type())) sinceTouched_.restart();
  return false;
}

}  // namespace jxc
