// 网络共享: whether a file lies on a disk of another machine.
#pragma once

#include <QString>

#include <functional>

namespace jxc {

/// Of the file, or of its folder when it is not there yet. Where the system cannot tell, it is taken for a local disk.
bool isOnNetworkShare(const QString& file);

/// Whether this kind of file system, by its number (statfs), is that of a network share.
bool isNetworkFileSystem(unsigned long kind);

/// What tells the kind of file system of a path in place of the system (tests); an empty one asks the system again.
using FileSystemOf = std::function<unsigned long(const QString& path)>;
void setFileSystemProbe(FileSystemOf probe);

}  // namespace jxc
