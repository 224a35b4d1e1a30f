#include "platform/single_instance.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSysInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace jxc::single_instance_detail {

constexpr int kPatience = 3000;  // ms

/// The line lies on this machine even when the program directory is on a share: other machines may open the same files.
/// Another user has a name of his own: he works beside, as from another station.
QString nameFor(const QString& accountFile) {
  const QFileInfo file(accountFile), folder(file.path());
  const QString canonical = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
  const QByteArray hash =
      QCryptographicHash::hash((canonical + u'/' + file.fileName()).toUtf8(), QCryptographicHash::Sha1).toHex();
  return QDir::temp().filePath(QStringLiteral("qcqcjxc-%1-%2").arg(::getuid()).arg(QString::fromLatin1(hash)));
}

/// In the program directory, where nobody clears away what looks old. One for each machine and user: they may share
/// the directory. The lock ends with the process, however that ends; the file stays.
QString lockFileFor(const QString& accountFile) {
  const QString program =
      QDir::cleanPath(QFileInfo(QDir::cleanPath(accountFile)).absolutePath() + QStringLiteral("/.."));
  return program +
         QStringLiteral("/.%1-%2.lock").arg(QFileInfo(nameFor(accountFile)).fileName(), QSysInfo::machineHostName());
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

SingleInstance::SingleInstance(const QString& accountFile) : name_(single_instance_detail::nameFor(accountFile)) {
  descriptor_ = single_instance_detail::openLockFile(single_instance_detail::lockFileFor(accountFile).toLocal8Bit());
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

void SingleInstance::onSecondStart(std::function<void()> action) {
  QLocalServer::removeServer(name_);  // of one that was killed: the lock is ours
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this, action = std::move(action)] {
    while (QLocalSocket* caller = server_->nextPendingConnection())
      caller->deleteLater();
    action();
  });
  server_->listen(name_);  // without the line a second start ends quietly
}

bool SingleInstance::callFirst() const {
  QLocalSocket line;
  line.connectToServer(name_);
  return line.waitForConnected(single_instance_detail::kPatience);
}

}  // namespace jxc
