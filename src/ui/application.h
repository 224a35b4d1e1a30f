// 应用程序: the one place where failures end that no screen caught; names for outside drivers.
#pragma once

#include <QApplication>

#include <exception>
#include <functional>

namespace jxc::ui {

/// Catches what leaves an event handler, tells it under "系统提示" with its ASCII letters lowered, and ends the process
/// when the text names the account file. Sets Chinese locale, translations, fonts and the usual skin.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;
};

/// Tells a failure as the handler does. Fatal ones end the event loop with exit code 1.
void tellFailure(const std::exception& failure);

/// Does what a button asks for; a failure is told here. Nothing that is thrown should pass the frames of Qt's widgets,
/// which do not clean up behind it.
void doOrTell(const std::function<void()>& work);

/// A step of the start. When it fails, that is told and the process ends: there is no window yet to go on in.
void doOrEnd(const std::function<void()>& work);

/// Chinese locale, toolkit texts, fonts, usual skin; on any QApplication (tests have one of their own).
void setUpLook(QApplication& application);

/// With JXC_TEST_IDS=1 in the environment every named widget gets "#name" as its accessible description when it is
/// first shown, so that drivers on the accessibility bus find it, and file choosers are the toolkit's own.
void setUpTestIds(QApplication& application);

/// The window of the program to the front, with the screen that stands over it.
void raiseProgram();

/// How the process ends after a fatal failure; tests replace it.
std::function<void(int)>& processEnd();

}  // namespace jxc::ui
