#include "ui/waiting_notice.h"

#include "engine/waiting.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QThread>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace jxc::ui {
namespace waiting_notice_detail {

QWidget* windowInFront() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && window->isWindow()) return window;
  return nullptr;
}

QLabel* noticeOn(QWidget& window) {
  auto* notice = new QLabel(&window);
  notice->setObjectName(QStringLiteral("waitingNotice"));
  notice->setFrameShape(QFrame::Box);
  notice->setBackgroundRole(QPalette::ToolTipBase);
  notice->setForegroundRole(QPalette::ToolTipText);
  notice->setAutoFillBackground(true);
  notice->setMargin(notice->fontMetrics().height() / 2);
  return notice;
}

void tell(int seconds) {
  // Lists that load in the background may wait as long as they like.
  if (QThread::currentThread() != qApp->thread()) return;
  static QPointer<QLabel> notice;
  if (seconds == 0) {
    delete notice;
    return;
  }
  if (!notice) {
    QWidget* window = windowInFront();
    if (!window) return;
    notice = noticeOn(*window);
  }
  QString text = QStringLiteral("正在等待另一台工作站或服务器完成操作，已等待 %1 秒…").arg(seconds);
  if (seconds >= secondsBeforeStop) text += QStringLiteral("（按 Esc 停止等待）");
  notice->setText(text);
  notice->adjustSize();
  QRect place(QPoint(), notice->size());
  place.moveCenter(notice->parentWidget()->rect().center());
  notice->setGeometry(place);
  notice->show();
  notice->raise();
  notice->repaint();
}

/// Whether Esc is held down at this moment. The window does not hear keys while a command waits, and must not: any
/// other key, and any list that has loaded meanwhile, would begin something in the middle of the command. So the
/// keyboard itself is looked at. (X only; elsewhere a wait ends by itself.)
bool isEscapeDown() {
  const auto* application = qApp->nativeInterface<QNativeInterface::QX11Application>();
  if (application == nullptr || QGuiApplication::applicationState() != Qt::ApplicationActive) return false;
  xcb_connection_t* const x = application->connection();
  constexpr xcb_keysym_t escape = 0xff1b;
  static const int code = [x] {
    const xcb_setup_t* const setup = xcb_get_setup(x);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> mapping(
        xcb_get_keyboard_mapping_reply(
            x, xcb_get_keyboard_mapping(x, setup->min_keycode, static_cast<std::uint8_t>(count)), nullptr),
        &std::free);
    if (!mapping) return -1;
    const xcb_keysym_t* const signs = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int key = 0; key < count; ++key)
      if (signs[key * mapping->keysyms_per_keycode] == escape) return setup->min_keycode + key;
    return -1;
  }();
  const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> down(
      xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr), &std::free);
  return code >= 0 && down && (down->keys[code / 8] >> (code % 8) & 1) != 0;
}

}  // namespace waiting_notice_detail

void showWaits() {
  setWaitListener(waiting_notice_detail::tell);
  setWaitStopper([] { return QThread::currentThread() == qApp->thread() && waiting_notice_detail::isEscapeDown(); });
}

}  // namespace jxc::ui
