#include "engine/new_file.h"

#include "engine/file_use.h"
#include "engine/shared_folder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace jxc {
namespace new_file_detail {

/// In a folder on a share the number may be that of a process of another machine: it writes all the time.
constexpr qint64 quietSeconds = 600;

/// With what SQLite keeps beside a file that it writes.
void removeWhole(const QString& name) {
  for (const char* side : {"", "-wal", "-shm", "-journal"})
    QFile::remove(name + QLatin1String(side));
}

/// Copies of the same set whose process is gone. Only what bears the name of such a copy: the folder is the operator's.
void sweep(const QFileInfo& target) {
  // A backup is called by the set, its moment in digits, and what says that it is one: 店名20260101120000.DAT.
  static const QRegularExpression moment(QStringLiteral("[0-9]+"));
  static const QRegularExpression ours(QStringLiteral("^(.+)\\.(\\d+)\\.tmp$"));
  const auto likeTarget = [&](QString name) { return name.remove(moment) == target.fileName().remove(moment); };
  for (const QFileInfo& left : QDir(target.absolutePath()).entryInfoList({QStringLiteral("*.tmp")}, QDir::Files)) {
    const QRegularExpressionMatch match = ours.match(left.fileName());
    if (!match.hasMatch() || !likeTarget(match.captured(1))) continue;
    if (left.lastModified().secsTo(QDateTime::currentDateTime()) < quietSeconds) continue;
    const bool isDead = ::kill(match.captured(2).toInt(), 0) != 0 && errno == ESRCH;
    QFile file(left.filePath());
    if (!isDead || !file.open(QIODevice::ReadOnly)) continue;
    const QByteArray head = file.read(16);
    if (head.isEmpty() || head.startsWith("SQLite format 3") || head.startsWith("PGDMP")) removeWhole(left.filePath());
  }
}

}  // namespace new_file_detail

void syncFolderOf(const QString& file) {
  const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
  const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);  // a disk that cannot is told by the next thing that is written there
  ::close(handle);
}

NewFile::NewFile(const QString& target, Failure fail)
    : target_(target), name_(QStringLiteral("%1.%2.tmp").arg(target).arg(::getpid())), fail_(std::move(fail)) {
  new_file_detail::sweep(QFileInfo(target));
  new_file_detail::removeWhole(name_);
  QFile file(name_);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
    fail_(errno);
  if (isSharedFolder(QFileInfo(target).absolutePath()))
    file.setPermissions(file.permissions() | QFileDevice::ReadGroup | QFileDevice::WriteGroup);
}

NewFile::~NewFile() {
  if (!kept_) new_file_detail::removeWhole(name_);
}

bool NewFile::removeUnfinished(const QString& target) {
  const QFileInfo place(target);
  bool any = false;
  for (const QFileInfo& left : place.dir().entryInfoList({QStringLiteral("*.tmp")}, QDir::Files))
    any = (left.fileName().startsWith(place.fileName() + u'.') && QFile::remove(left.filePath())) || any;
  return any;
}

void NewFile::keep() {
  sync(name_, O_RDONLY);
  // Writing took its time: somebody may have opened what stands there.
  if (isAccountFileInUse(target_)) fail_(EBUSY);
  if (std::rename(QFile::encodeName(name_).constData(), QFile::encodeName(target_).constData()) != 0) fail_(errno);
  kept_ = true;
  // The log of what stood there before belongs to nothing any more. Not before: it holds the last of what stood there.
  for (const char* side : {"-wal", "-shm", "-journal"})
    QFile::remove(target_ + QLatin1String(side));
  sync(QFileInfo(target_).absolutePath(), O_RDONLY | O_DIRECTORY);
}

void NewFile::sync(const QString& path, int flags) const {
  const int descriptor = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
  if (descriptor < 0) fail_(errno);
  const bool done = ::fsync(descriptor) == 0;
  const int error = errno;
  ::close(descriptor);
  if (!done) fail_(error);
}

}  // namespace jxc
