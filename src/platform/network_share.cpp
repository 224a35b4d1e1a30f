#include "platform/network_share.h"

#include <QFile>
#include <QFileInfo>

#include <sys/vfs.h>
#include <utility>

namespace jxc {
namespace network_share_detail {

FileSystemOf& probe() {
  static FileSystemOf asked;
  return asked;
}

unsigned long fileSystemOf(const QString& path) {
  if (probe()) return probe()(path);
  struct statfs about {};
  return ::statfs(QFile::encodeName(path).constData(), &about) == 0 ? static_cast<unsigned long>(about.f_type) : 0;
}

}  // namespace network_share_detail

void setFileSystemProbe(FileSystemOf probe) {
  network_share_detail::probe() = std::move(probe);
}

bool isNetworkFileSystem(unsigned long kind) {
  switch (kind & 0xffffffffUL) {
    case 0x6969:      // NFS
    case 0x517b:      // SMB
    case 0xff534d42:  // CIFS
    case 0xfe534d42:  // SMB 2 and later
    case 0x564c:      // NCP
    case 0x5346414f:  // AFS
    case 0x73757245:  // Coda
    case 0x47504653:  // GPFS
    case 0x01161970:  // GFS2
    case 0x00c36400:  // Ceph
    case 0x0bd00bd0:  // Lustre
      return true;
    default:
      return false;
  }
}

bool isOnNetworkShare(const QString& file) {
  const QFileInfo info(file);
  const QString there = info.exists() ? info.absoluteFilePath() : info.absolutePath();
  return isNetworkFileSystem(network_share_detail::fileSystemOf(there));
}

}  // namespace jxc
