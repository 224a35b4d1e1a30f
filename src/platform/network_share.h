// 网络共享: whether a file lies on a disk of another machine.
#pragma once

#include <QString>

namespace jxc {

/// Of the file, or of its folder when it is not there yet. Where the system cannot tell, it is taken for a local disk.
bool isOnNetworkShare(const QString& file);

/// Whether this kind of file system, by its number (statfs), is that of a network share.
bool isNetworkFileSystem(unsigned long kind);

}  // namespace jxc
