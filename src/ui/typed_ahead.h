// 提前键入: keys that were pressed before a dialog had the keyboard reach the dialog, and no window is left without
// keys.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <deque>
#include <xcb/xproto.h>

class QWidget;

namespace jxc::ui {

/// Who knows the program types on while a dialog is still on its way to the keyboard. The desktop sends such a key to
/// the window below, which the dialog blocks already, or to one that has just closed; the toolkit drops it there. One
/// of these, on the application, keeps it until the window that has the word has the keyboard, too. Keys come to the
/// toolkit one by one, because the first may open the dialog that the second is meant for.
///
/// And a window that closes hands the keyboard to the one below itself. Left to the window manager, nobody has it until
/// that has made up its mind; and when a notice and the dialog below it close in one go, it goes to a dialog that is
/// gone, and then to nobody until the mouse is taken. (X only; elsewhere the desktop is asked to, and no key is kept.)
class TypedAhead : public QObject, public QAbstractNativeEventFilter {
 public:
  explicit TypedAhead(QObject* parent);
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Patience { Some, None };
  void next(Patience patience);

  enum class State { Free, AtWork, SentAgain, Waits };
  State state_ = State::Free;                // of the key before
  std::deque<xcb_key_press_event_t> later_;  // what came meanwhile; releases look the same
  QTimer limit_;                             // of a wait for the keyboard, or for a key that was sent again
};

/// The window that has the word: the modal one on top, or else the active one; null without.
QWidget* windowInFront();

}  // namespace jxc::ui
