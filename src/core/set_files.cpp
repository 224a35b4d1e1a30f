#include "core/set_files.h"

#include "core/schema/schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace jxc {
namespace set_files_detail {

/// What SQLite keeps beside a database file while it is open or being made, or after a crash.
constexpr std::array<const char16_t*, 3> sides = {u"-wal", u"-shm", u"-journal"};

void syncFolderOf(const QString& file) {
  const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
  const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);  // a disk that cannot is told by the next thing that is written there
  ::close(handle);
}

DbError notMoved(const QString& file, const QString& why) {
  // By its name alone: the whole path of the account file in use would pass for its end.
  return DbError(DbError::Kind::File,
                 QStringLiteral("帐套文件不能改名：%1（%2）").arg(QFileInfo(file).completeBaseName(), why));
}

}  // namespace set_files_detail

QString unfinishedSet(const QString& file) {
  return file + QStringLiteral(".new");
}

QString unfinishedAtConsole(const QString& file) {
  return file + QStringLiteral(".making");
}

void makeUnfinishedSet(const QString& file, bool essential) {
  const QString beside = unfinishedSet(file);
  removeSetFile(beside);
  try {
    createAllTables(*openSqlite(beside, {.create = true, .essential = essential}));
  } catch (...) {
    removeSetFile(beside);
    throw;
  }
  set_files_detail::syncFolderOf(beside);
}

void moveSetFile(const QString& from, const QString& to) {
  using namespace set_files_detail;
  if (QFileInfo::exists(to)) throw notMoved(from, QStringLiteral("同名文件已经存在"));
  if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
    throw notMoved(from, QString::fromLocal8Bit(std::strerror(errno)));
  // The log after it: one that a kill leaves behind is found again when the file comes back.
  for (const char16_t* side : sides) {
    const QString beside = from + QString::fromUtf16(side);
    if (QFileInfo::exists(beside)) QFile::rename(beside, to + QString::fromUtf16(side));
  }
  syncFolderOf(to);
}

bool removeSetFile(const QString& file) {
  QFile::remove(file);
  for (const char16_t* side : set_files_detail::sides)
    QFile::remove(file + QString::fromUtf16(side));
  return !QFileInfo::exists(file);
}

}  // namespace jxc
