#include "app/demonstration.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "maintenance/demo_shop.h"

namespace jxc {

void openDemonstration() {
  dataModule().installAccountDb(openSqlite(QStringLiteral(":memory:")));
  DemoPlan plan;
  plan.months = 2;
  plan.goods = 320;
  plan.documentsADay = 16;
  plan.lastDay = QDate(2021, 5, 3);
  buildDemoShop(plan);
  // In the middle of the last day, as if it were today.
  clock::setFixed(QDateTime(plan.lastDay, QTime(14, 30)));
}

}  // namespace jxc
