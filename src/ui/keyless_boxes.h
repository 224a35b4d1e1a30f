// 不抢键盘的消息框: while codes are scanned, boxes leave the keys to the window below, so that none of them is lost.
#pragma once

class QMessageBox;
class QWidget;

namespace jxc::ui {

/// A window that is on its way to the keyboard, or that blocks another one, swallows keys of a scanner. While one of
/// these lives, message boxes over this window neither take the keys nor block it: who reads the keys there hands on
/// what is meant for the box.
class KeylessBoxes {
 public:
  explicit KeylessBoxes(QWidget& window) : before_(below()) { below() = &window; }
  ~KeylessBoxes() { below() = before_; }
  KeylessBoxes(const KeylessBoxes&) = delete;
  KeylessBoxes& operator=(const KeylessBoxes&) = delete;

  /// The window whose boxes are meant; null when there is none.
  static QWidget*& below() {
    static QWidget* window = nullptr;
    return window;
  }
  /// The box that stands there now; null without.
  static QMessageBox*& shown() {
    static QMessageBox* box = nullptr;
    return box;
  }

 private:
  QWidget* before_;
};

}  // namespace jxc::ui
