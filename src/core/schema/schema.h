// 数据库结构: the tables of an account set: how they come into being, are emptied and are brought up to date.
#pragma once

#include "core/schema/table_definition.h"
#include "core/statements.h"
#include "engine/database.h"
#include "engine/error.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace jxc {

namespace schema {

/// What resetBusinessTables does with a table.
enum class OnReset : char { Keeps, Empties };

/// One of the 146 tables of an account set.
struct TableEntry {
  std::string_view name;
  OnReset onReset;
  std::string_view purpose;  // for the operator, in Chinese
};

/// All tables in the order in which they are created.
std::span<const TableEntry> tables();
/// The definition of a table, companion tables included; null when there is none of that name.
const TableDefinition* findDefinition(std::string_view name);
/// Tables beside the 146, which a reset leaves alone: those of the order module, which this program reads and closes
/// but never fills, what is kept of passwords, the end of the chain of the log, the days up to which the books were
/// locked, how the backups stand, and the copies that were made before closings.
std::span<const std::string_view> companionTables();

/// One column of a definition.
struct ColumnLine {
  std::string_view name;
  std::string_view type;  // "numeric(28,6)"
};
/// The columns of a definition, remarks taken off, in order and without `id`.
std::vector<ColumnLine> columnsOf(const TableDefinition& definition);

}  // namespace schema

/// Whether the tables and columns that a select names are there. Throws what else stands against it: a lost connection
/// is no answer.
bool stands(Database& database, const std::string& select);
/// Drops a table; one that is not there is no failure.
void dropTableIfExists(Database& database, std::string_view name);
/// Makes a table by its statement: the one way to it, so that the rows of a log are those of its stations to add to and
/// of nobody to change, on whatever way it came.
void makeTable(Database& database, std::string_view name, const std::string& statement);
/// Makes the table anew, empty but for its seed rows, with its indexes: whatever it held is gone. `suffix` is put
/// behind the name. Throws std::invalid_argument for a name that no definition has.
void createTable(Database& database, std::string_view name, std::string_view suffix = {});
/// Makes every table of an account set, in one transaction.
void createAllTables(Database& database);
/// Empties documents, ledgers and stagings, the log through `takeLogRows`; goods, partners and stock balances stay,
/// with no stock on the goods and nothing owed by or to a partner.
void resetBusinessTables(Database& database);
/// resetBusinessTables, and the stock balances too.
void resetBusinessAndStock(Database& database);
/// Whether anything was entered yet: a set that was just made has nothing in it.
bool holdsWork(Database& database);
/// Copies the account set away and returns the file.
using CopyBefore = std::function<QString()>;
/// An upgrade that did not begin, for want of a copy, or that stopped. Its message is whole for the operator: the step,
/// what to do, the copy.
class UpgradeFailed : public DbError {
 public:
  using DbError::DbError;
};
/// Whether `upgradeSchema` has nothing to change but an index at most.
bool isSchemaCurrent(Database& database);
/// Brings an older database up to this build. A current one costs one read. Where there is work to lose `copyBefore`
/// runs ahead of the first step, when passwords are hashed already: a copy would keep them. Throws UpgradeFailed; a
/// step that fails is not tried again, because its date is written first, but for one without which nobody can log in.
void upgradeSchema(Database& database, const CopyBefore& copyBefore = {});

// The same on the account database in use.
inline void dropTableIfExists(std::string_view name) {
  dropTableIfExists(accountDb(), name);
}
inline void createTable(std::string_view name, std::string_view suffix = {}) {
  createTable(accountDb(), name, suffix);
}
inline void createAllTables() {
  createAllTables(accountDb());
}
inline void resetBusinessTables() {
  resetBusinessTables(accountDb());
}
inline void resetBusinessAndStock() {
  resetBusinessAndStock(accountDb());
}
inline void upgradeSchema() {
  upgradeSchema(accountDb());
}

}  // namespace jxc
