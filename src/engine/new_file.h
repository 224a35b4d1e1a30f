// 新文件: a file that is written beside its place and takes it when it is whole.
#pragma once

#include <QString>

#include <functional>

namespace jxc {

/// Made under a temporary name, for its owner alone (and the group of a shared folder), and removed again unless it was
/// kept. What copies that were killed have left in the same folder goes with the next one.
class NewFile {
 public:
  /// Makes the exception for a value of errno.
  using Failure = std::function<void(int error)>;

  /// `fail` throws; it is called with the reason when the file cannot be made, brought to the disk or renamed.
  NewFile(const QString& target, Failure fail);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const QString& name() const { return name_; }

  /// Removes what makers of `target` that were killed have left beside it, whatever is in it: the caller knows that
  /// nobody is making it now. Whether there was anything.
  static bool removeUnfinished(const QString& target);

  /// Onto the disk first, then under its true name, then the directory: a power cut leaves the old file or the new one.
  void keep();

 private:
  void sync(const QString& path, int flags) const;

  QString target_, name_;
  Failure fail_;
  bool kept_ = false;
};

/// Brings the names in the folder of this file to the disk: one that was just given or taken would come back with a
/// power cut. Fails in silence.
void syncFolderOf(const QString& file);

}  // namespace jxc
