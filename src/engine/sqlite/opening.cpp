#include "engine/shared_folder.h"
#include "engine/sqlite/functions.h"
#include "engine/sqlite/open_files.h"
#include "engine/sqlite/sqlite_database.h"
#include "engine/waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <array>
#include <cerrno>
#include <cstdint>
#include <mutex>
#include <string>
#include <unistd.h>
#include <utility>

namespace jxc::sqlite {
namespace opening_detail {

constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Runs a pragma; its first field as text, empty when it gives none.
std::string pragma(sqlite3* connection, const FileRole& role, const std::string& command) {
  sqlite3_stmt* raw = nullptr;
  int code = sqlite3_prepare_v2(connection, command.c_str(), -1, &raw, nullptr);
  const StatementHandle statement(raw);
  std::string result;
  if (code == SQLITE_OK) {
    code = sqlite3_step(raw);
    if (code == SQLITE_ROW && sqlite3_column_text(raw, 0) != nullptr)
      result = reinterpret_cast<const char*>(sqlite3_column_text(raw, 0));
  }
  if (code != SQLITE_ROW && code != SQLITE_DONE) throw cannotOpen(role, code);
  return result;
}

/// A new file belongs to its owner alone from its first moment on, and to the group of a shared folder; SQLite gives
/// -wal and -shm the same permissions.
void createFile(const FileRole& role) {
  QFile file(role.file);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly))
    throw cannotReach(role, QStringLiteral("文件不能建立，") + diskReason(errno));
  if (isSharedFolder(QFileInfo(role.file).absolutePath()))
    file.setPermissions(ownerOnly | QFileDevice::ReadGroup | QFileDevice::WriteGroup);
}

/// A disc, or a stick with its switch set: nothing there changes while it is read.
bool isReadOnlyMedium(const QString& file) {
  return QFileInfo::exists(file) && ::access(QFile::encodeName(file).constData(), W_OK) != 0 && errno == EROFS;
}

/// The name of such a file for SQLite, which reads it without locks and without files beside it.
QByteArray unchangingName(const FileRole& role) {
  if (QFileInfo(role.file + QStringLiteral("-wal")).size() > 0)
    throw cannotReach(role,
                      QStringLiteral("它在只读的磁盘上，旁边还有没有归档的日志。请把两个文件一起复制到硬盘再打开。"));
  return "file:" + QUrl::toPercentEncoding(QFileInfo(role.file).absoluteFilePath(), "/") + "?immutable=1";
}

bool isWritable(const QString& path) {
  return ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

/// Before SQLite sees the file: one that is write-protected it would read, and leave side files with that protection
/// behind, over which every later start fails, also when the file itself may be written again. Side files of this kind
/// are mended, or named.
void requireWritable(const FileRole& role) {
  const QString folder = QFileInfo(role.file).absolutePath();
  if (!isWritable(role.file))
    throw cannotReach(role, QStringLiteral("没有写入权限，请检查 %1 目录中帐套文件的权限。").arg(folder));
  for (const char* suffix : std::array{"-wal", "-shm"}) {
    const QString side = role.file + QLatin1String(suffix);
    if (!QFileInfo::exists(side)) {
      if (!isWritable(folder))
        throw cannotReach(role, QStringLiteral("没有写入权限，请检查目录 %1 的权限。").arg(folder));
    } else if (!isWritable(side)) {
      QFile::setPermissions(side, QFile::permissions(role.file));
      if (!isWritable(side))
        throw cannotReach(role, QStringLiteral("没有写入权限，请检查附属文件 %1 的权限。").arg(side));
    }
  }
}

/// Before the first connection of the process: SQLite need not count its memory, which takes a lock at every
/// allocation.
void configureOnce() {
  static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  static_cast<void>(configured);
}

ConnectionHandle openNative(const FileRole& role, const SqliteOptions& options) {
  configureOnce();
  const bool memory = role.file.isEmpty();
  // One thread uses a connection at a time, so SQLite need not lock around every call.
  const int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                    (memory             ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY
                     : options.readOnly ? SQLITE_OPEN_READONLY
                                        : SQLITE_OPEN_READWRITE);
  const bool unchanging = !memory && isReadOnlyMedium(role.file);
  const QByteArray name = memory       ? QByteArray(":memory:")
                          : unchanging ? unchangingName(role)
                                       : QFile::encodeName(role.file);
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(name.constData(), &raw, unchanging ? flags | SQLITE_OPEN_URI : flags, nullptr);
  ConnectionHandle connection(raw);
  if (code != SQLITE_OK) throw cannotOpen(role, code);
  if (!memory) noteOpened(raw, role.file);
  return connection;
}

/// One thread after the other, so that none looks into a file that another one is opening.
ConnectionHandle openSettled(const FileRole& role, const SqliteOptions& options, Opening& opening) {
  static std::mutex oneAtATime;
  const std::lock_guard guard(oneAtATime);
  if (!isReadOnlyMedium(role.file)) opening = settleLog(role);
  return openNative(role, options);
}

constexpr int shortestPause = 2;  // milliseconds
constexpr int longestPause = 8;

/// Waits for another station. SQLite's own handler sleeps longer and longer, up to 100 ms: beside a station that audits
/// a whole list, with hardly a gap between two transactions, it misses every gap until its time is over. Short pauses
/// of uneven length find one.
int waitForStation(void* patience, int pausesSoFar) {
  constexpr int meanPause = (shortestPause + longestPause) / 2;
  if (pausesSoFar * meanPause >= static_cast<int>(reinterpret_cast<std::intptr_t>(patience))) return 0;
  if (Wait* const wait = Wait::current()) wait->passed(pausesSoFar * meanPause / 1000);
  std::uint32_t random = 0;
  sqlite3_randomness(sizeof random, &random);
  sqlite3_sleep(shortestPause + static_cast<int>(random % (longestPause - shortestPause + 1)));
  return 1;
}

bool isNewFile(const FileRole& role, const SqliteOptions& options) {
  const QFileInfo info(role.file);
  if (!info.exists()) {
    if (!options.create || options.readOnly) throw cannotOpen(role, QStringLiteral("文件不存在。"));
    createFile(role);
    return true;
  }
  if (info.isDir()) throw cannotOpen(role, QStringLiteral("这是一个目录，不是文件。"));
  // An empty file is what a power cut leaves between the making of a file and its first page.
  if (info.size() > 0) return false;
  if (!options.create || options.readOnly) throw cannotOpen(role, QStringLiteral("文件是空的。"));
  return true;
}

}  // namespace opening_detail

void prepareConnection(sqlite3* connection, const FileRole& role, int busyMilliseconds) {
  using namespace opening_detail;
  sqlite3_busy_handler(connection, waitForStation, reinterpret_cast<void*>(std::intptr_t{busyMilliseconds}));
  registerFunctions(connection);
  pragma(connection, role, "pragma foreign_keys=off");
  // A sale that the till has shown as saved must be there after a power cut: see docs/decisions/sqlite-settings.md.
  pragma(connection, role, "pragma synchronous=full");
  pragma(connection, role, "pragma temp_store=memory");
  pragma(connection, role, "pragma cache_size=-32768");
  pragma(connection, role, "pragma journal_size_limit=67108864");
  // What was deleted is overwritten; Debian's library does so by itself, others must be told.
  pragma(connection, role, "pragma secure_delete=on");
  // A file may come from anywhere: statements are the program's own, and nothing that is stored in the file runs.
  pragma(connection, role, "pragma trusted_schema=off");
  pragma(connection, role, "pragma cell_size_check=on");
  for (const auto& [option, value] :
       std::array{std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1}, std::pair{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                  std::pair{SQLITE_DBCONFIG_ENABLE_VIEW, 0}})
    sqlite3_db_config(connection, option, value, nullptr);
}

void doNotWaitForDisk(Database& database) {
  const SqliteDatabase& sqlite = asSqlite(database);
  opening_detail::pragma(sqlite.native(), sqlite.role(), "pragma synchronous=off");
}

void requireAccountSet(sqlite3* connection, const FileRole& role) {
  using opening_detail::pragma;
  if (pragma(connection, role, "pragma application_id") != std::to_string(applicationId))
    throw cannotOpen(role, QStringLiteral("文件不是本系统的数据库。"));
  pragma(connection, role, "select count(*) from sqlite_master");  // reads the schema: damage there shows at once
}

ConnectionHandle openConnection(const FileRole& role, const SqliteOptions& asked, Opening* told) {
  using namespace opening_detail;
  SqliteOptions options = asked;
  // It can be read, proved and copied; whoever writes is refused then.
  if (!role.file.isEmpty() && isReadOnlyMedium(role.file)) options.readOnly = true;
  Opening unasked;
  Opening& opening = told != nullptr ? *told : unasked;
  const bool memory = role.file.isEmpty();
  const bool isNew = memory || isNewFile(role, options);
  if (!memory && !options.readOnly) requireWritable(role);
  ConnectionHandle connection = memory ? openNative(role, options) : openSettled(role, options, opening);
  prepareConnection(connection.get(), role, options.busyMilliseconds);
  // Before anything is written: a file of another program is left as it was.
  if (!isNew) requireAccountSet(connection.get(), role);
  if (!options.readOnly && sqlite3_db_readonly(connection.get(), "main") != 0)
    throw cannotReach(role, QStringLiteral("没有写入权限，请检查文件和目录的权限。"));
  if (isNew) {
    pragma(connection.get(), role, "pragma application_id=" + std::to_string(applicationId));
    giveNewNumber(connection.get());
  }
  if (!memory && !options.readOnly) pragma(connection.get(), role, "pragma journal_mode=wal");
  // What was told is told once: the spoilt rest of the log goes with the log.
  if (opening.dropsPages)
    sqlite3_wal_checkpoint_v2(connection.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  return connection;
}

}  // namespace jxc::sqlite

namespace jxc {

std::unique_ptr<Database> openSqlite(const QString& file, const SqliteOptions& options) {
  const bool memory = file == QLatin1String(":memory:");
  const sqlite::FileRole role{memory ? QString() : file, options.essential};
  if (!memory && file.isEmpty()) throw sqlite::cannotOpen(role, QStringLiteral("没有文件名。"));
  sqlite::Opening opening;
  sqlite::ConnectionHandle connection = sqlite::openConnection(role, options, &opening);
  return std::make_unique<sqlite::SqliteDatabase>(std::move(connection), role, sqlite::jetTranslator(),
                                                  std::move(opening));
}

}  // namespace jxc
