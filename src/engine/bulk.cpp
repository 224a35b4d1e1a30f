#include "engine/bulk.h"

#include "engine/database.h"

namespace jxc {

Bulk& bulkOf(Database& database) {
  if (auto* bulk = dynamic_cast<Bulk*>(&database)) return *bulk;
  throw DbError(DbError::Kind::Unsupported, QStringLiteral("此数据库不支持该操作。"));
}

void forgetReplaced(Database& database, const char* table) {
  if (auto* bulk = dynamic_cast<Bulk*>(&database); bulk != nullptr && !database.inTransaction())
    bulk->forgetReplaced(table);
}

bool giveRoomBack(Database& database, const std::function<bool()>& goOn) {
  auto* const bulk = dynamic_cast<Bulk*>(&database);
  return bulk != nullptr && !database.inTransaction() && bulk->giveRoomBack(goOn);
}

}  // namespace jxc
