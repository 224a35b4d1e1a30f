// 单实例: one program per machine and program directory.
#pragma once

#include <QString>

namespace jxc {

/// A lock that dies with the process, whatever way it ends. Held as long as the object lives.
class SingleInstance {
 public:
  explicit SingleInstance(const QString& programDirectory);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  /// False when another process of this machine holds the lock for that directory.
  bool isFirst() const { return isFirst_; }

 private:
  int descriptor_ = -1;
  bool isFirst_ = true;
};

}  // namespace jxc
