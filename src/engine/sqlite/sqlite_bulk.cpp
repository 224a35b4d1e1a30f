#include "engine/sqlite/sqlite_database.h"

#include <algorithm>

namespace jxc::sqlite {
namespace sqlite_bulk_detail {

std::string inQuotes(const std::string& name) {
  return '"' + name + '"';
}

const jet::Column* counterOf(const jet::Table& table) {
  for (const jet::Column& column : table.columns)
    if (column.type == jet::ColumnType::Counter) return &column;
  return nullptr;
}

}  // namespace sqlite_bulk_detail

std::vector<StoredTable> SqliteDatabase::storedTables() {
  std::vector<StoredTable> tables;
  const StatementHandle names = prepare(
      "select name from sqlite_master where type='table' and name not like 'sqlite\\_%' escape '\\' order by name", {});
  while (step(names.get(), {}) == SQLITE_ROW) {
    const std::string name = reinterpret_cast<const char*>(sqlite3_column_text(names.get(), 0));
    if (const jet::Table* table = catalogue_.table(name)) tables.push_back({*table, 0});
  }
  const bool counted = std::any_of(tables.begin(), tables.end(), [](const StoredTable& stored) {
    return sqlite_bulk_detail::counterOf(stored.table) != nullptr;
  });
  if (!counted) return tables;
  const StatementHandle counters = prepare("select seq from sqlite_sequence where name=?", {});
  for (StoredTable& stored : tables) {
    const Running running(counters.get());
    sqlite3_bind_text(counters.get(), 1, stored.table.name.c_str(), -1, SQLITE_STATIC);
    if (step(counters.get(), {}) == SQLITE_ROW) stored.lastCounter = sqlite3_column_int64(counters.get(), 0);
  }
  return tables;
}

std::vector<StoredObject> SqliteDatabase::storedObjects() {
  std::vector<StoredObject> objects;
  const StatementHandle all = prepare(
      "select case type when 'table' then 0 when 'index' then 1 when 'view' then 2 else 3 end,name,tbl_name"
      " from sqlite_master where name not like 'sqlite\\_%' escape '\\' order by type,name",
      {});
  const auto text = [&all](int column) {
    return reinterpret_cast<const char*>(sqlite3_column_text(all.get(), column));
  };
  while (step(all.get(), {}) == SQLITE_ROW)
    objects.push_back({static_cast<StoredObject::Kind>(sqlite3_column_int(all.get(), 0)), text(1), text(2)});
  return objects;
}

void SqliteDatabase::append(const jet::Table& table, const RowSet& rows) {
  using namespace sqlite_bulk_detail;
  std::string sql = "insert into " + inQuotes(table.name) + " (";
  for (int column = 0; column < rows.columnCount(); ++column)
    sql += (column > 0 ? "," : "") + inQuotes(rows.columns()[static_cast<std::size_t>(column)]);
  sql += ") values (?";
  for (int column = 1; column < rows.columnCount(); ++column)
    sql += ",?";
  const StatementHandle insert = prepare(sql + ")", {});
  for (int row = 0; row < rows.rowCount(); ++row) {
    const Running running(insert.get());
    for (int column = 0; column < rows.columnCount(); ++column) {
      const std::string_view text = rows.utf8(row, column);
      switch (rows.kind(row, column)) {
        case Value::Kind::Null:
          sqlite3_bind_null(insert.get(), column + 1);
          break;
        case Value::Kind::Integer:
          sqlite3_bind_int64(insert.get(), column + 1, rows.integer(row, column));
          break;
        case Value::Kind::Real:
          sqlite3_bind_double(insert.get(), column + 1, rows.number(row, column));
          break;
        case Value::Kind::Text:
          sqlite3_bind_text64(insert.get(), column + 1, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
          break;
      }
    }
    step(insert.get(), sql);
  }
}

void SqliteDatabase::setCounter(const jet::Table& table, std::int64_t last) {
  if (last == 0 || !sqlite_bulk_detail::counterOf(table)) return;
  for (const char* sql :
       {"delete from sqlite_sequence where name=?1", "insert into sqlite_sequence(name,seq) values (?1,?2)"}) {
    const StatementHandle statement = prepare(sql, {});
    sqlite3_bind_text(statement.get(), 1, table.name.c_str(), -1, SQLITE_STATIC);
    if (sqlite3_bind_parameter_count(statement.get()) > 1) sqlite3_bind_int64(statement.get(), 2, last);
    step(statement.get(), sql);
  }
}

void SqliteDatabase::analyze() {
  // Its planner knows enough from the indexes; see docs/decisions/sqlite-settings.md.
}

/// Pages are overwritten where something was deleted from them (`secure_delete`); older ones stand in the log.
void SqliteDatabase::forgetReplaced(const char*) {
  sqlite3_wal_checkpoint_v2(connection_.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
}

/// "fast" still overwrites what stands in a page that is written anyway.
void SqliteDatabase::overwriteDeleted(bool isWanted) {
  const char* const sql = isWanted ? "pragma secure_delete=on" : "pragma secure_delete=fast";
  sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr);
}

bool SqliteDatabase::giveRoomBack(const std::function<bool()>& goOn) {
  constexpr int stepsBetweenQuestions = 100000;  // of SQLite's machine: some hundredths of a second
  struct Asked {
    const std::function<bool()>& goOn;
    std::exception_ptr thrown;
  } asked{goOn, {}};
  sqlite3_progress_handler(
      connection_.get(), stepsBetweenQuestions,
      [](void* user) {
        auto& question = *static_cast<Asked*>(user);
        try {
          return question.goOn() ? 0 : 1;
        } catch (...) {  // nothing is thrown through a C interface
          question.thrown = std::current_exception();
          return 1;
        }
      },
      &asked);
  const int code = sqlite3_exec(connection_.get(), "vacuum", nullptr, nullptr, nullptr);
  sqlite3_progress_handler(connection_.get(), 0, nullptr, nullptr);
  if (asked.thrown) std::rethrow_exception(asked.thrown);
  sqlite3_wal_checkpoint_v2(connection_.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  return code == SQLITE_OK;
}

}  // namespace jxc::sqlite
