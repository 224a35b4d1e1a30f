// 界面环境: an application with windows, which nobody sees.
#pragma once

#include <QApplication>

namespace jxc::bench {

/// Made on first use and kept to the end of the process; whatever only lays out and paints is content with it.
inline void needWindows() {
  if (QCoreApplication::instance()) return;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "bench";
  static char* arguments[] = {name, nullptr};
  new QApplication(count, arguments);  // outlives every static object that holds a font
}

}  // namespace jxc::bench
