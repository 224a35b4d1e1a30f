#include "engine/writes_of_others.h"

#include "engine/sqlite/sqlite_database.h"

namespace jxc {

std::optional<std::int64_t> writesOfOthers(Database& database) {
  auto* sqlite = dynamic_cast<sqlite::SqliteDatabase*>(&database);
  if (!sqlite) return {};
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(sqlite->native(), "pragma data_version", -1, &raw, nullptr) != SQLITE_OK) return {};
  const sqlite::StatementHandle statement(raw);
  if (sqlite3_step(raw) != SQLITE_ROW) return {};
  return sqlite3_column_int64(raw, 0);
}

}  // namespace jxc
