// 命令键: the keys of a screen's commands come before the input that has the focus.
#pragma once

#include <QObject>
#include <QPointer>

namespace jxc::ui {

/// Every desktop gives inputs keys of its own: under X, Ctrl+D eats a letter and Ctrl+E goes to the end of the line. A
/// command that is reached by such a key would do nothing wherever the operator types. One of these, on the
/// application, asks the screen first.
///
/// An input keeps what is typed in it: letters, Enter, Esc, Tab, arrows with or without Shift; the key that opens its
/// own list (F2 in a picker, F4 in a date or a note); copy and cut when something is selected, undo and redo when there
/// is something to undo, paste and select all. Ctrl+Tab turns the pages of the window, whatever has the focus: a list
/// would look for it as a letter, and buttons stand beside the pages. While an input method composes, such a key does
/// nothing.
class CommandKeys : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QObject> composing_;
};

}  // namespace jxc::ui
