#include "engine/sqlite/open_files.h"

#include "engine/file_use.h"
#include "engine/sqlite/native.h"
#include "engine/sqlite/write_ahead_log.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace jxc::sqlite {
namespace open_files_detail {

// Where SQLite locks: the bytes that every open connection to a file with a log holds for reading.
constexpr off_t allLocksStart = 0x40000000;
constexpr off_t sharedLockStart = allLocksStart + 2;
constexpr off_t sharedLockBytes = 510;
constexpr off_t allLockBytes = sharedLockBytes + 2;

struct OpenFiles {
  std::mutex mutex;
  std::map<sqlite3*, FileIdentity> all;
  std::multiset<FileIdentity> closing;  // a connection's address may be another one's before its file is closed

  bool has(const FileIdentity& file) const {
    return closing.contains(file) || std::ranges::any_of(all, [&](const auto& each) { return each.second == file; });
  }
};
OpenFiles& openFiles() {
  static auto* const files = new OpenFiles;  // for good: connections of static objects close when the program ends
  return *files;
}

struct flock locksOf(off_t start, off_t bytes) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = start;
  lock.l_len = bytes;
  return lock;
}

/// Asked of a file that is open nowhere in this process.
bool isOpenElsewhere(const QString& file) {
  const int descriptor = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct flock lock = locksOf(sharedLockStart, sharedLockBytes);
  const bool isHeld = ::fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  ::close(descriptor);
  return isHeld;
}

/// The two bytes of the file that is open, past SQLite's cache and its log; nothing when they cannot be read.
std::optional<std::array<unsigned char, 2>> logBytes(sqlite3* connection) {
  sqlite3_file* file = nullptr;
  std::array<unsigned char, 2> bytes{};
  if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file->pMethods == nullptr)
    return {};
  const int code = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), logKeptOffset);
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) return {};
  return bytes;
}
constexpr std::array<unsigned char, 2> logIsKept{2, 2};

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

void closeNoted(sqlite3* connection) {
  open_files_detail::OpenFiles& files = open_files_detail::openFiles();
  std::optional<FileIdentity> file;
  {
    const std::lock_guard guard(files.mutex);
    if (const auto noted = files.all.find(connection); noted != files.all.end()) {
      file = noted->second;
      files.closing.insert(*file);
      files.all.erase(noted);
    }
  }
  sqlite3_close_v2(connection);
  if (!file) return;
  const std::lock_guard guard(files.mutex);
  files.closing.erase(files.closing.find(*file));
}

NobodyOpens::NobodyOpens() {
  open_files_detail::openFiles().mutex.lock();
}

NobodyOpens::~NobodyOpens() {
  open_files_detail::openFiles().mutex.unlock();
}

bool isOpenHere(const QString& file) {
  return open_files_detail::openFiles().has(identityOf(file));
}

Exclusion::Exclusion(const QString& file)
    : descriptor_(::open(QFile::encodeName(file).constData(), O_RDWR | O_CLOEXEC)) {
  using namespace open_files_detail;
  struct flock lock = locksOf(allLocksStart, allLockBytes);
  held_ = descriptor_ >= 0 && ::fcntl(descriptor_, F_SETLK, &lock) == 0;
}

Exclusion::~Exclusion() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

FileWatch::FileWatch(sqlite3* connection, const QString& file)
    : file_(file),
      log_(file + QStringLiteral("-wal")),
      fileIdentity_(identityOf(file)),
      logIdentity_(identityOf(log_)),
      keepsLog_(open_files_detail::logBytes(connection) == open_files_detail::logIsKept) {}

FileWatch::State FileWatch::look(sqlite3* connection) const {
  if (identityOf(file_) != fileIdentity_ || (connection != nullptr && isOverwritten(connection)))
    return State::FileGone;
  const bool isLogMine = logIdentity_ == FileIdentity{} || identityOf(log_) == logIdentity_;
  return isLogMine ? State::Mine : State::LogGone;
}

/// A file that keeps a log says so as long as somebody has it open. A backup is complete by itself and says that.
bool FileWatch::isOverwritten(sqlite3* connection) const {
  using namespace open_files_detail;
  const auto bytes = keepsLog_ ? logBytes(connection) : std::nullopt;
  return bytes && *bytes != logIsKept;
}

bool FileWatch::hasOtherLog() const {
  const FileIdentity log = identityOf(log_);
  return log != logIdentity_ && log != FileIdentity{};
}

void CloseConnection::operator()(sqlite3* connection) const {
  closeNoted(connection);
}

}  // namespace jxc::sqlite

namespace jxc {

bool isAccountFileInUse(const QString& file) {
  using namespace sqlite::open_files_detail;
  const std::lock_guard guard(openFiles().mutex);
  return openFiles().has(sqlite::identityOf(file)) || isOpenElsewhere(file);
}

}  // namespace jxc
