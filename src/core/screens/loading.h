// 启动画面: stands while the program gets ready.
#pragma once

#include "ui/screen.h"

#include <QTimer>

#include <functional>

class QLabel;

namespace jxc {

/// Shows its three texts a second apart. Any key or click ends it early, but never before `prepare` is done: that is
/// what the operator really waits for.
class TF_Loading : public ui::Screen {
 public:
  explicit TF_Loading(std::function<void()> prepare = {});
  QLabel* lMsg;
  QTimer Timer1;

 protected:
  void activate() override;
  bool mayLeave() override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void tick();
  void endEarly();
  std::function<void()> prepare_;
  int phase_ = 1;
  bool prepared_ = false;
  bool wantedEarly_ = false;
};

}  // namespace jxc
