#include "engine/presence.h"

#include "engine/postgres/postgres_database.h"
#include "engine/presence_ends.h"
#include "engine/sqlite/sqlite_database.h"

namespace jxc {

QString placeOf(Database& database) {
  if (auto* const server = dynamic_cast<postgres::PostgresDatabase*>(&database))
    return server->isTrial() ? QString() : QString::fromStdString(server->address());
  auto* const sqlite = dynamic_cast<sqlite::SqliteDatabase*>(&database);
  return sqlite != nullptr ? sqlite->role().file : QString();
}

std::unique_ptr<Presence> openPresence(Database& database) {
  if (placeOf(database).isEmpty()) return nullptr;
  if (auto* const server = dynamic_cast<postgres::PostgresDatabase*>(&database))
    return postgres::presenceOnServer(server->address(), server->user());
  return sqlite::presenceBeside(placeOf(database));
}

}  // namespace jxc
