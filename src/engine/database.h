// 数据库: one connection to an account database. Statements are Jet-dialect text; the engine behind is nobody's
// business.
#pragma once

#include "engine/error.h"
#include "engine/row_set.h"
#include "engine/sql_text.h"
#include "engine/value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace jxc {

class Posting;

/// What a look at the storage under an account set has found.
struct StorageCheck {
  bool finished = true;  // false: stopped
  QString file;          // that was looked at; empty on a server and in memory
  QStringList damage;    // the first few places, in the words of the engine; empty when it is sound
  QStringList advice;    // nothing is wrong, but damage would not be noticed
};

/// A connection. A statement is parsed, bound against the catalogue, emitted and prepared once, and kept by its text:
/// the second call is a hash look-up, binds and steps. Every call throws DbError on failure and changes nothing then.
class Database {
 public:
  virtual ~Database() = default;

  /// Rows of a select.
  virtual RowSet select(const SqlText& sql, std::span<const Value> values = {}) = 0;
  /// First field of the first row; null when there is no row.
  virtual Value lookup(const SqlText& sql, std::span<const Value> values = {}) = 0;
  /// Runs one statement without result; the number of rows inserted, changed or deleted.
  virtual std::int64_t execute(const SqlText& sql, std::span<const Value> values = {}) = 0;
  /// Parses and binds only: throws as the real call would, writes nothing.
  virtual void check(const SqlText& sql) = 0;
  /// Counter value of the last inserted row of this connection.
  virtual std::int64_t lastCounter() const = 0;

  /// Opens a second connection to the same account set, that only reads. It may be called in any thread, also when this
  /// connection is gone. Empty where there can be no second one: in memory, and in a trial.
  using OpenReader = std::function<std::unique_ptr<Database>()>;
  virtual OpenReader readerOpener() const = 0;
  /// Such a connection; null where there can be none.
  std::unique_ptr<Database> openReader() const {
    const OpenReader open = readerOpener();
    return open ? open() : nullptr;
  }
  /// Consistent copy of the whole database into a file, also while others write: written beside it under a temporary
  /// name, readable by the owner only, and renamed when it is whole. Progress in percent; returning false cancels and
  /// leaves no trace (the call returns then, it does not throw). The copy is read once more before it takes the place
  /// of an older one: throws DbError(File) when it is damaged, as the set is then. Not inside a transaction.
  virtual void backupTo(const QString& file, const std::function<bool(int percent)>& progress = {}) = 0;
  /// Reads everything that is stored and looks whether it can be true: damage of the disk, not of the books. Progress
  /// in percent; returning false stops it.
  virtual StorageCheck checkStorage(const std::function<bool(int percent)>& progress = {}) = 0;
  /// What the opening found and did that an operator should read, in words; empty nearly always.
  virtual QStringList openingRemarks() const { return {}; }
  /// Asks a running select of this connection to stop, from any thread; that call then throws DbError(Other).
  virtual void interrupt() = 0;

  /// How statements travel together, where a round trip costs something; null where it does not. See engine/posting.h.
  virtual Posting* posting() { return nullptr; }

  // Used by Transaction only. Levels nest: an inner one is a savepoint. `commit` ends its level in any case: when it
  // throws, the level has been taken back. `rollback` never throws.
  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() = 0;
  virtual bool inTransaction() const = 0;
};

struct SqliteOptions {
  bool create = false;  // make the file (owner-only) when it is missing; otherwise a missing file is an error
  bool readOnly = false;
  int busyMilliseconds = 5000;
  /// A failure to open names `jxc.mdb`, which ends the program. Off for files that it can do without: the catalogue of
  /// account sets, a backup file that is looked into.
  bool essential = true;
};

/// Opens an account database file, or ":memory:". A file that is no database of this program is refused: it is known by
/// a mark in its header that only `create` writes.
std::unique_ptr<Database> openSqlite(const QString& file, const SqliteOptions& options = {});

}  // namespace jxc
