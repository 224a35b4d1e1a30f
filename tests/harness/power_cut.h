// 断电: a disk that keeps only what it was told to sync, under SQLite.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <random>

namespace jxc::test {

/// While it lives every file that SQLite opens in `folder` is watched: what was written and not yet synced may be on
/// the disk or not, sector by sector, in any order; a file that was made or deleted may be there or not. The files
/// themselves are written as usual, so the program notices nothing.
class PowerCut {
 public:
  /// Files by name as the power cut leaves them.
  using Disk = std::map<std::string, QByteArray>;

  explicit PowerCut(const QString& folder);
  ~PowerCut();
  PowerCut(const PowerCut&) = delete;
  PowerCut& operator=(const PowerCut&) = delete;

  /// Called at every write, sync and deletion, in the middle of it, in the thread that does it.
  void onOperation(std::function<void()> action);
  /// The disk if the power failed now. Inside or outside of an operation.
  Disk cut(std::mt19937& random) const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

/// Writes the files of a disk into a folder.
void lay(const PowerCut::Disk& disk, const QString& folder);

}  // namespace jxc::test
