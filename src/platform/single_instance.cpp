#include "platform/single_instance.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace jxc::single_instance_detail {

/// The lock lies on this machine even when the program directory is on a share: other machines may open the same files.
QByteArray lockFile(const QString& programDirectory) {
  const QFileInfo info(programDirectory);
  const QString canonical = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
  const QByteArray name = QCryptographicHash::hash(canonical.toUtf8(), QCryptographicHash::Sha1).toHex();
  return QDir::temp().filePath(QStringLiteral("qcqcjxc-%1.lock").arg(QString::fromLatin1(name))).toLocal8Bit();
}

/// Opened for reading, so that the file of another user of this machine will do as well. Closed in programs started
/// from here, or a viewer of the help would keep the lock after the end.
int openLockFile(const QByteArray& path) {
  const int existing = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (existing >= 0 || errno != ENOENT) return existing;
  const int made = ::open(path.constData(), O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0644);
  return made >= 0 || errno != EEXIST ? made : ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
}

}  // namespace jxc::single_instance_detail

namespace jxc {

SingleInstance::SingleInstance(const QString& programDirectory) {
  descriptor_ = single_instance_detail::openLockFile(single_instance_detail::lockFile(programDirectory));
  if (descriptor_ < 0) return;  // no lock to be had on this machine: a shop must be able to work all the same
  if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
  isFirst_ = errno != EWOULDBLOCK;
  ::close(descriptor_);
  descriptor_ = -1;
}

SingleInstance::~SingleInstance() {
  // The file stays: removing it would let a third process lock a new one beside a second that holds the old.
  if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace jxc
