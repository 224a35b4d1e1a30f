#include "engine/bulk.h"

#include "engine/database.h"

#include <QScopeGuard>

namespace jxc {
namespace bulk_detail {

bool isGivingRoomBack = false;

}  // namespace bulk_detail

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
  if (bulk == nullptr || database.inTransaction()) return false;
  bulk_detail::isGivingRoomBack = true;
  const auto over = qScopeGuard([] { bulk_detail::isGivingRoomBack = false; });
  return bulk->giveRoomBack(goOn);
}

DeletingMuch::DeletingMuch(Database& database) : bulk_(dynamic_cast<Bulk*>(&database)) {
  if (bulk_ != nullptr) bulk_->overwriteDeleted(false);
}

DeletingMuch::~DeletingMuch() {
  if (bulk_ != nullptr) bulk_->overwriteDeleted(true);
}

bool isGivingRoomBack() {
  return bulk_detail::isGivingRoomBack;
}

}  // namespace jxc
