// 扫码: a barcode scanner types faster than anybody: its codes reach the barcode input wherever the focus is.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

class QKeyEvent;

namespace jxc::ui {

/// Watches the keys of one window. A burst of letters and digits, ended by Enter, is a code: what it typed into the
/// input with the focus is taken back, and the code goes to the hook. Keys in the barcode input itself are left alone.
class ScanCatcher : public QObject {
 public:
  struct Hooks {
    /// Whether this is a code of some goods: only then it is taken out of an input where one may type.
    std::function<bool(const QString& code)> isKnown;
    std::function<void(const QString& code)> scanned;
  };
  ScanCatcher(QWidget& window, QWidget& barcodeInput, Hooks hooks);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void begin(QWidget* target);
  bool end();
  void takeBack();

  QWidget& window_;
  QWidget& input_;
  Hooks hooks_;
  QString code_;
  QElapsedTimer sinceKey_;
  // The input where the burst began, as it was then.
  QPointer<QWidget> target_;
  QString textBefore_;
  int cursorBefore_ = 0;
  int indexBefore_ = -1;
};

}  // namespace jxc::ui
