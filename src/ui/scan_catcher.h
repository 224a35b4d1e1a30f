// 扫码: a barcode scanner types faster than anybody: its codes reach the document wherever the focus is, one by one.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>

class QKeyEvent;
class QMessageBox;

namespace jxc::ui {

/// Watches the keys of one window. A burst of letters and digits, ended by Enter, is a code: what it typed into the
/// input with the focus is taken back, and the code goes to the hook. Keys in the barcode input itself are left alone.
/// Codes that come while a box stands on top, or while the document is busy, wait for their turn: a notice gives way to
/// the next code, a question stays until somebody has answered it.
class ScanCatcher : public QObject {
 public:
  struct Hooks {
    /// Whether this is a code of some goods: a short one is taken out of an input where one may type only then.
    std::function<bool(const QString& code)> isKnown;
    std::function<void(const QString& code)> scanned;
    /// Whether the window can take a code now; null: always.
    std::function<bool()> isFree;
    /// Whether codes are caught in this window as well, while it stands on top; message boxes always; null: no other.
    std::function<bool(const QWidget& window)> watchesToo;
  };
  ScanCatcher(QWidget& window, QWidget& barcodeInput, Hooks hooks);

  /// Hands a code on when its turn has come: at once, unless others wait or the window is busy.
  void take(const QString& code);
  /// Whether what stands in the barcode input at its Enter came from a scanner, and not from a hand.
  bool isScanned() const { return scannedInInput_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool keyInWindow(QWidget& target, const QKeyEvent& key);
  bool keyInBox(QMessageBox& box, const QKeyEvent& key);
  bool isInTime(const QKeyEvent& key, int most) const;
  void add(QWidget* target, const QKeyEvent& key, int most);
  void remember(QWidget* target);
  bool end(QWidget& target);
  void takeBack();
  void handOn(QMessageBox& box, const QKeyEvent& key);
  void burstIsOver();
  bool isFree() const;
  void drain();

  QWidget& window_;
  QWidget& input_;
  Hooks hooks_;
  bool scannedInInput_ = false;
  bool composing_ = false;  // half a word of an input method stands there: its keys are no code
  std::deque<QString> waiting_;
  QTimer retry_;
  bool busy_ = false;

  QString code_;             // of the burst under way
  bool beganInBox_ = false;  // its first keys are in no input
  quint64 lastKey_ = 0;
  QElapsedTimer clock_;
  QTimer pause_;  // ends a burst in a box
  QPointer<QMessageBox> box_;
  // The input where the burst began, as it was then.
  QPointer<QWidget> target_;
  QString textBefore_;
  int cursorBefore_ = 0;
  int indexBefore_ = -1;
};

}  // namespace jxc::ui
