// 界面环境: an application with fonts and pictures but without windows, for tests that lay out and paint.
#pragma once

#include <QGuiApplication>

namespace jxc::test {

/// Made on first use and kept to the end of the process; nothing when there is an application already.
inline void needGui() {
  if (QCoreApplication::instance()) return;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "test";
  static char* arguments[] = {name, nullptr};
  new QGuiApplication(count, arguments);  // outlives every static object that holds a font
}

}  // namespace jxc::test
