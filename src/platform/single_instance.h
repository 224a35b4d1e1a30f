// 单实例: one program for each user of a machine and account set.
#pragma once

#include <QString>

#include <functional>
#include <memory>

class QLocalServer;

namespace jxc {

/// A lock that dies with the process, whatever way it ends. Held as long as the object lives.
class SingleInstance {
 public:
  /// The file need not be there yet.
  explicit SingleInstance(const QString& accountFile);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  /// False when another process of this user holds the lock for that account set.
  bool isFirst() const { return isFirst_; }

  /// The first: what happens, from its event loop, when the program is started once more.
  void onSecondStart(std::function<void()> action);
  /// The second: lets the first one act. False when it does not answer.
  bool callFirst() const;

 private:
  QString name_;  // of the lock and of the line between the two, without ending
  int descriptor_ = -1;
  bool isFirst_ = true;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace jxc
