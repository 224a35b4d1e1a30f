#include "ui/waiting_notice.h"

#include "engine/waiting.h"
#include "platform/keyboard/keyboard.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QThread>

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

}  // namespace waiting_notice_detail

void showWaits() {
  setWaitListener(waiting_notice_detail::tell);
  // The window does not hear keys while a command waits, and must not: any other key, and any list that has loaded
  // meanwhile, would begin something in the middle of the command. So the keyboard itself is looked at.
  setWaitStopper([] { return QThread::currentThread() == qApp->thread() && isEscapeDown(); });
}

}  // namespace jxc::ui
