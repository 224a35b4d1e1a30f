#include "engine/file_use.h"
#include "engine/new_file.h"
#include "engine/replacing.h"
#include "engine/snapshot.h"
#include "engine/sqlite/integrity.h"
#include "engine/sqlite/open_files.h"
#include "engine/sqlite/sqlite_database.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace jxc::sqlite {
namespace copying_detail {

using Kind = DbError::Kind;

struct EndBackup {
  void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};
using BackupHandle = std::unique_ptr<sqlite3_backup, EndBackup>;

constexpr int pagesPerStep = 512;  // 2 MB: progress moves and a cancel is heard many times a second

DbError copyFailed(const QString& file, const QString& reason, Kind kind = Kind::File) {
  return DbError(kind, QStringLiteral("备份文件没有写成：") + reason + fileNote(file, false));
}

DbError copyFailed(const QString& file, int code) {
  if ((code & 0xff) == SQLITE_FULL) return copyFailed(file, diskReason(ENOSPC), Kind::Full);
  const DbError reason = statementFailed({.file = file, .essential = false}, code, sqlite3_errstr(code), {});
  return copyFailed(file, reason.message(), reason.kind());
}

ConnectionHandle openCopy(const QString& target, const QString& name, int access) {
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(QFile::encodeName(name).constData(), &raw,
                                   access | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  ConnectionHandle connection(raw);
  if (code != SQLITE_OK) throw copyFailed(target, code);
  return connection;
}

ConnectionHandle openToWrite(const QString& target, const QString& name) {
  ConnectionHandle connection = openCopy(target, name, SQLITE_OPEN_READWRITE);
  // The file is brought to the disk once, when it is whole; a copy that breaks off is thrown away.
  sqlite3_exec(connection.get(), "pragma synchronous=off; pragma journal_mode=off", nullptr, nullptr, nullptr);
  return connection;
}

using TableRows = std::vector<std::pair<QByteArray, sqlite3_int64>>;

/// Every table and how many rows it has; a table that cannot be counted has -1.
TableRows countRows(sqlite3* connection) {
  TableRows counted;
  sqlite3_exec(
      connection, "select name from sqlite_schema where type='table' and rootpage>0 order by name",
      [](void* to, int, char** fields, char**) {
        static_cast<TableRows*>(to)->emplace_back(fields[0], -1);
        return 0;
      },
      &counted, nullptr);
  for (auto& [table, rows] : counted) {
    const QByteArray name = QByteArray(table).replace('"', "\"\"");
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(connection, "select count(*) from \"" + name + '"', -1, &raw, nullptr);
    const StatementHandle statement(raw);
    if (raw != nullptr && sqlite3_step(raw) == SQLITE_ROW) rows = sqlite3_column_int64(raw, 0);
  }
  return counted;
}

constexpr int percentOfCopying = 60;  // reading the copy once more takes the rest

/// Somebody wants his last backup back most when the disk begins to die: it stays unless the new one can replace it.
/// A copy that is damaged where the set is sound lies on a bad disk itself.
void requireSound(const StorageCheck& check, const FileRole& source, const QString& copy, bool isSetSound) {
  if (check.damage.isEmpty()) return;
  if (isSetSound) throw copyFailed(copy, QStringLiteral("写好的备份读出来不对，那里的磁盘可能已经损坏。"));
  throw DbError(Kind::File, QStringLiteral("帐套文件已损坏，没有备份，以前的备份没有改动。损坏：") +
                                check.damage.mid(0, 2).join(QStringLiteral("；")) + u'。' +
                                fileNote(source.file, false));
}

using Failed = std::function<DbError(int code)>;

/// False when `progress` cancelled.
bool copyPages(sqlite3* from, sqlite3* to, const Failed& failed, const std::function<bool(int)>& progress) {
  const BackupHandle backup(sqlite3_backup_init(to, "main", from, "main"));
  if (!backup) throw failed(sqlite3_extended_errcode(to));
  for (;;) {
    const int code = sqlite3_backup_step(backup.get(), pagesPerStep);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
      sqlite3_sleep(20);
    } else if (code != SQLITE_OK && code != SQLITE_DONE) {
      throw failed(code);
    }
    const int total = std::max(1, sqlite3_backup_pagecount(backup.get()));
    const int percent = static_cast<int>(100LL * (total - sqlite3_backup_remaining(backup.get())) / total);
    if (progress && !progress(percent)) return false;
    if (code == SQLITE_DONE) return true;
  }
}

void requireNoTransaction(const Database& database) {
  if (database.inTransaction()) throw DbError(Kind::Other, QStringLiteral("操作还没有完成，现在不能备份。"));
}

// Where the header of a file tells which journal it is kept with: 1 for a rollback journal, 2 for a write-ahead log.
constexpr std::size_t writeVersionByte = 18;
constexpr std::size_t readVersionByte = 19;
constexpr std::size_t headerBytes = 100;

}  // namespace copying_detail

Database::OpenReader SqliteDatabase::readerOpener() const {
  if (role_.file.isEmpty()) return {};
  // Before the file is opened once more by its name: another one may stand there now, or its log.
  if (watch_->look(connection_.get()) != FileWatch::State::Mine) throw fileIsGone(role_.file);
  // The program goes on when one list cannot be shown, so this is not an essential file.
  return [role = FileRole{.file = role_.file, .essential = false, .reader = true}, translator = translator_,
          file = identityOf(role_.file)]() -> std::unique_ptr<Database> {
    if (identityOf(role.file) != file) throw fileIsGone(role.file);
    ConnectionHandle connection = openConnection(role, {.essential = false});
    sqlite3_exec(connection.get(), "pragma query_only=on", nullptr, nullptr, nullptr);
    return std::make_unique<SqliteDatabase>(std::move(connection), role, translator);
  };
}

void SqliteDatabase::backupTo(const QString& file, const std::function<bool(int percent)>& progress) {
  using namespace copying_detail;
  requireNoTransaction(*this);
  if (!role_.file.isEmpty() && QFileInfo(file) == QFileInfo(role_.file))
    throw copyFailed(file, QStringLiteral("不能覆盖正在使用的数据库。"));
  if (isAccountFileInUse(file)) throw copyFailed(file, QStringLiteral("那里的文件正在使用。"));
  if (watch_ && watch_->look(connection_.get()) != FileWatch::State::Mine) throw fileIsGone(role_.file);
  NewFile temporary(file, [&file](int error) { throw copyFailed(file, diskReason(error)); });
  TableRows rows;
  {
    const ConnectionHandle copy = openToWrite(file, temporary.name());
    // A connection of its own that holds one state of the file: others go on writing and the copy need not begin anew.
    ConnectionHandle own;
    if (!role_.file.isEmpty()) {
      own = openConnection({.file = role_.file, .essential = false}, {.essential = false});
      if (const int code =
              sqlite3_exec(own.get(), "begin; select count(*) from sqlite_master", nullptr, nullptr, nullptr);
          code != SQLITE_OK)
        throw copyFailed(file, code);
    }
    rows = countRows(own ? own.get() : connection_.get());
    std::function<bool(int)> copying;
    if (progress) copying = [&progress](int percent) { return progress(percent * percentOfCopying / 100); };
    const Failed failed = [&file](int code) { return copyFailed(file, code); };
    if (!copyPages(own ? own.get() : connection_.get(), copy.get(), failed, copying)) return;
    // One file that is complete by itself, without a log beside it.
    if (const int code = sqlite3_exec(copy.get(), "pragma journal_mode=delete", nullptr, nullptr, nullptr);
        code != SQLITE_OK)
      throw copyFailed(file, code);
    // Another state of the set than the one that goes on here.
    giveNewNumber(copy.get());
  }
  {
    // Opened anew: what the disk holds counts, not what is still in memory from writing it.
    const ConnectionHandle copy = openCopy(file, temporary.name(), SQLITE_OPEN_READONLY);
    std::function<bool(int)> rest;
    if (progress)
      rest = [&progress](int percent) { return progress(percentOfCopying + percent * (99 - percentOfCopying) / 100); };
    const StorageCheck check = checkIntegrity(copy.get(), rest);
    if (!check.finished) return;
    requireSound(check, role_, file, !check.damage.isEmpty() && checkIntegrity(connection_.get(), {}).damage.isEmpty());
    requireAccountSet(copy.get(), {.file = file, .essential = false});
    if (countRows(copy.get()) != rows)
      throw copyFailed(file, QStringLiteral("写好的备份少了内容，那里的磁盘可能已经损坏。"));
  }
  temporary.keep();
  if (progress) progress(100);
}

StorageCheck SqliteDatabase::checkStorage(const std::function<bool(int percent)>& progress) {
  return checkIntegrity(connection_.get(), progress);
}

}  // namespace jxc::sqlite

namespace jxc {

bool replaceContent(Database& set, Database& with, const std::function<bool(int percent)>& progress) {
  using namespace sqlite::copying_detail;
  sqlite::SqliteDatabase& target = sqlite::asSqlite(set);
  for (const Database* each : {&set, &with})
    if (each->inTransaction()) throw DbError(Kind::Other, QStringLiteral("操作还没有完成，现在不能恢复。"));
  const Failed failed = [&](int code) {
    return sqlite::statementFailed(target.role(), code, sqlite3_errmsg(target.native()), "restore");
  };
  std::function<bool(int)> copying;  // a stop is heard until the last page: behind it stands the commit
  if (progress) copying = [&progress](int percent) { return progress(std::min(percent, 99)) || percent >= 100; };
  if (progress && !progress(0)) return false;
  // Complete by itself: in memory there is no log to go with its first page.
  sqlite3_exec(sqlite::asSqlite(with).native(), "pragma journal_mode=delete", nullptr, nullptr, nullptr);
  if (!copyPages(sqlite::asSqlite(with).native(), target.native(), failed, copying)) return false;
  // A state of its own, and no log of the size of the whole set.
  sqlite::giveNewNumber(target.native());
  sqlite3_wal_checkpoint_v2(target.native(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  if (progress) progress(100);
  return true;
}

std::vector<std::byte> snapshot(Database& database) {
  using namespace sqlite::copying_detail;
  requireNoTransaction(database);
  sqlite3* connection = sqlite::asSqlite(database).native();
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, sqlite::FreeMemory> bytes(sqlite3_serialize(connection, "main", &size, 0));
  if (!bytes) throw DbError(Kind::Other, QStringLiteral("内存不足。"));
  std::vector<std::byte> content(static_cast<std::size_t>(size));
  std::memcpy(content.data(), bytes.get(), content.size());
  return content;
}

std::unique_ptr<Database> openSqliteSnapshot(std::span<const std::byte> bytes) {
  using namespace sqlite::copying_detail;
  const sqlite::FileRole role;
  if (bytes.size() < headerBytes) throw sqlite::cannotOpen(role, SQLITE_NOTADB);
  sqlite::ConnectionHandle connection = sqlite::openConnection(role, {});
  auto* own = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
  if (own == nullptr) throw sqlite::cannotOpen(role, SQLITE_NOMEM);
  std::memcpy(own, bytes.data(), bytes.size());
  own[writeVersionByte] = own[readVersionByte] = 1;  // memory has no write-ahead log
  const auto size = static_cast<sqlite3_int64>(bytes.size());
  // SQLite owns the memory from here on, also when it refuses it.
  const int code = sqlite3_deserialize(connection.get(), "main", own, size, size,
                                       SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
  if (code != SQLITE_OK) throw sqlite::cannotOpen(role, code);
  sqlite::requireAccountSet(connection.get(), role);
  return std::make_unique<sqlite::SqliteDatabase>(std::move(connection), role);
}

}  // namespace jxc
