#include "ui/typed_ahead.h"

#include <QApplication>
#include <QPlatformSurfaceEvent>
#include <QWidget>
#include <QWindow>

#include <xcb/xcb.h>

namespace jxc::ui {
namespace typed_ahead_detail {

constexpr int kSent = 0x80;     // the mark of an event that a program sent
constexpr int kMostWait = 500;  // ms

QWindow* windowOf(xcb_window_t id) {
  for (auto* window : QGuiApplication::allWindows())
    if (window->handle() && window->winId() == id) return window;
  return nullptr;
}

/// Whether keys of this window reach somebody: it is seen, and nothing modal stands over it.
bool hears(const QWindow* window) {
  if (!window || !window->isVisible()) return false;
  const auto* modal = QGuiApplication::modalWindow();
  return !modal || window == modal || window->type() == Qt::Popup ||
         modal->isAncestorOf(window, QWindow::IncludeTransients);
}

xcb_connection_t* connection() {
  const auto* x = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return x ? x->connection() : nullptr;
}

/// Hands the keyboard of a window that is about to be hidden to the one below.
void handBack(const QWindow& closing) {
  auto* below = closing.transientParent();
  const auto* modal = QGuiApplication::modalWindow();
  const bool stoodInFront = !modal || modal == &closing;
  const bool isDialog = closing.type() == Qt::Dialog || closing.type() == Qt::Window;
  if (!below || !below->isVisible() || !stoodInFront || !isDialog) return;
  // Never from another program that the operator is in.
  if (auto* x = connection(); x && QGuiApplication::applicationState() == Qt::ApplicationActive)
    xcb_set_input_focus(x, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(below->winId()), XCB_CURRENT_TIME);
  // Again when it is gone: the window manager may have had an idea of its own.
  QTimer::singleShot(0, below, [below] {
    if (hears(below)) below->requestActivate();
  });
}

}  // namespace typed_ahead_detail

TypedAhead::TypedAhead(QObject* parent) : QObject(parent) {
  limit_.setSingleShot(true);
  connect(&limit_, &QTimer::timeout, this, [this] { next(Patience::None); });
  connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] {
    if (state_ == State::Waits) next(Patience::Some);
  });
  qApp->installEventFilter(this);
}

bool TypedAhead::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::PlatformSurface || !watched->isWindowType()) return false;
  if (static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() != QPlatformSurfaceEvent::SurfaceCreated)
    return false;
  auto* window = static_cast<QWindow*>(watched);
  // This signal comes before the desktop hears of it.
  disconnect(window, &QWindow::visibleChanged, this, nullptr);
  connect(window, &QWindow::visibleChanged, this, [window](bool on) {
    if (!on) typed_ahead_detail::handBack(*window);
  });
  return false;
}

bool TypedAhead::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  using namespace typed_ahead_detail;
  if (type != "xcb_generic_event_t") return false;
  const auto& key = *static_cast<const xcb_key_press_event_t*>(message);
  const int kind = key.response_type & ~kSent;
  if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) return false;
  const bool isBack = state_ == State::SentAgain && (key.response_type & kSent);
  if (!isBack && (state_ != State::Free || !hears(windowOf(key.event)))) {
    later_.push_back(key);
    if (state_ == State::Free) next(Patience::Some);
    return true;
  }
  limit_.stop();
  state_ = State::AtWork;
  // When the toolkit has handed the key on: also inside the event loop of a dialog that it has opened.
  QTimer::singleShot(0, this, [this] { next(Patience::Some); });
  return false;
}

void TypedAhead::next(Patience patience) {
  using namespace typed_ahead_detail;
  state_ = State::Free;
  for (; !later_.empty(); later_.pop_front()) {
    auto& key = later_.front();
    const QWindow* target = windowOf(key.event);
    if (!hears(target)) {
      const auto* front = windowInFront();
      target = front ? front->windowHandle() : nullptr;
      if (patience == Patience::Some && (!target || target != QGuiApplication::focusWindow())) {
        state_ = State::Waits;
        return limit_.start(kMostWait);
      }
    }
    if (!target || !target->handle()) continue;  // nobody is there who could hear it
    key.event = static_cast<xcb_window_t>(target->winId());
    xcb_send_event(connection(), 0, key.event, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&key));
    xcb_flush(connection());
    later_.pop_front();
    state_ = State::SentAgain;
    return limit_.start(kMostWait);  // it comes within a millisecond; should it ever not, the keyboard goes on
  }
}

QWidget* windowInFront() {
  auto* modal = QApplication::activeModalWidget();
  return modal ? modal : QApplication::activeWindow();
}

}  // namespace jxc::ui
