#include "engine/sqlite/open_files.h"

#include "engine/file_use.h"
#include "engine/sqlite/native.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace jxc::sqlite {
namespace open_files_detail {

// Where SQLite locks: the bytes that every open connection to a file with a log holds for reading.
constexpr off_t sharedLockStart = 0x40000002;
constexpr off_t sharedLockBytes = 510;

struct OpenFiles {
  std::mutex mutex;
  std::map<sqlite3*, FileIdentity> all;

  bool has(const FileIdentity& file) const {
    return std::ranges::any_of(all, [&](const auto& each) { return each.second == file; });
  }
};
OpenFiles& openFiles() {
  static auto* const files = new OpenFiles;  // for good: connections of static objects close when the program ends
  return *files;
}

/// Asked of a file that is open nowhere in this process.
bool isOpenElsewhere(const QString& file) {
  const int descriptor = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = sharedLockStart;
  lock.l_len = sharedLockBytes;
  const bool isHeld = ::fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  ::close(descriptor);
  return isHeld;
}

}  // namespace open_files_detail

FileIdentity identityOf(const QString& file) {
  struct stat found {};
  if (::stat(QFile::encodeName(file).constData(), &found) != 0) return {};
  return {found.st_dev, found.st_ino};
}

void noteOpened(sqlite3* connection, const QString& file) {
  open_files_detail::OpenFiles& files = open_files_detail::openFiles();
  const std::lock_guard guard(files.mutex);
  files.all[connection] = identityOf(file);
}

void noteClosed(sqlite3* connection) {
  open_files_detail::OpenFiles& files = open_files_detail::openFiles();
  const std::lock_guard guard(files.mutex);
  files.all.erase(connection);
}

FileWatch::FileWatch(const QString& file)
    : file_(file),
      log_(file + QStringLiteral("-wal")),
      fileIdentity_(identityOf(file)),
      logIdentity_(identityOf(log_)) {}

FileWatch::State FileWatch::look() const {
  if (identityOf(file_) != fileIdentity_) return State::FileGone;
  return identityOf(log_) == logIdentity_ ? State::Mine : State::LogGone;
}

void CloseConnection::operator()(sqlite3* connection) const {
  sqlite3_close_v2(connection);
  noteClosed(connection);
}

}  // namespace jxc::sqlite

namespace jxc {

bool isAccountFileInUse(const QString& file) {
  using namespace sqlite::open_files_detail;
  const std::lock_guard guard(openFiles().mutex);
  return openFiles().has(sqlite::identityOf(file)) || isOpenElsewhere(file);
}

}  // namespace jxc
