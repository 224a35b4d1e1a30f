// 整体搬运: whole tables out of and into an account set, for moving it from one engine to another.
#pragma once

#include "engine/row_set.h"
#include "jet/catalogue.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace jxc {

class Database;

/// A table as it is stored. `lastCounter` is the number that its counter gave last, which may be that of a row that is
/// gone.
struct StoredTable {
  jet::Table table;
  std::int64_t lastCounter = 0;
};

/// What is stored besides rows; keys and sequences that the engine makes by itself are left out.
struct StoredObject {
  enum class Kind : char { Table, Index, View, Trigger } kind;
  std::string name, table;
};

/// What an engine can do with whole tables.
class Bulk {
 public:
  virtual ~Bulk() = default;
  virtual std::vector<StoredTable> storedTables() = 0;
  virtual std::vector<StoredObject> storedObjects() = 0;
  /// Appends rows as they are, their counters too; the columns of the set are those of the table, by name. Inside a
  /// transaction.
  virtual void append(const jet::Table& table, const RowSet& rows) = 0;
  /// The next row gets a number behind this one.
  virtual void setCounter(const jet::Table& table, std::int64_t last) = 0;
  /// Fresh figures for the planner of statements, after a table was filled.
  virtual void analyze() = 0;
  /// The open transaction will stand idle for minutes while the other side works: no station that went away.
  virtual void expectPauses() = 0;
  /// Takes out of the files of the database what rows of this table held before they were changed or deleted. Not
  /// inside a transaction. Another station that reads may keep the log of the file from being cleared: it is then
  /// overwritten as work goes on.
  virtual void forgetReplaced(const char* table) = 0;
  /// Writes the files of the database anew without the room of rows that are gone. `goOn` is asked now and then, false
  /// stops it. Whether it was done: a stopped one, or one that others stand in the way of, has changed nothing. Not
  /// inside a transaction.
  virtual bool giveRoomBack(const std::function<bool()>& goOn) = 0;
  /// Whether whole pages of what is deleted are overwritten at once, as they are when nothing is said.
  virtual void overwriteDeleted(bool isWanted) = 0;
};

/// That of a connection; throws DbError(Unsupported) when it has none.
Bulk& bulkOf(Database& database);
/// As Bulk says; nothing where a connection has none, or is inside a transaction.
void forgetReplaced(Database& database, const char* table);
bool giveRoomBack(Database& database, const std::function<bool()>& goOn);
/// While it lives, nearly everything is deleted, many times faster: what that leaves in the free room of the files goes
/// with `giveRoomBack`, which comes behind it.
class DeletingMuch {
 public:
  explicit DeletingMuch(Database& database);
  ~DeletingMuch();
  DeletingMuch(const DeletingMuch&) = delete;
  DeletingMuch& operator=(const DeletingMuch&) = delete;

 private:
  Bulk* bulk_;
};
/// Whether giving back goes on now: `goOn` is asked in the middle of a statement, and may not use the connection.
bool isGivingRoomBack();

}  // namespace jxc
