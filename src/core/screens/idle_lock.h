// 自动锁定: who leaves his workstation leaves it locked.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace jxc {

/// Minutes without a key or a mouse after which this workstation locks itself; 0: never. 15 until it was set.
int idleLockMinutes();
/// Throws DbError(File) when it cannot be kept.
void keepIdleLockMinutes(int minutes);

/// Watches the keys and the mouse of the whole program and calls `lock` when they rest for so long.
class IdleLock : public QObject {
 public:
  explicit IdleLock(std::function<void()> lock);

  /// From now on: somebody is in.
  void start();
  /// What the timer asks now and then: locks after a rest of so many milliseconds, unless work is under way that a
  /// window in its middle would hold up: that one is locked when it is done.
  void look(qint64 rest);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void()> lock_;
  QElapsedTimer sinceTouched_;
  QTimer timer_;
};

}  // namespace jxc
