#include "core/small_lookups.h"

#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {

QString getStockQty(const QString& goods, const QString& warehouse) {
  const QString quantity = lookupValue("select kc_sl from jxc_kcsp where g_sn=? and ck_sn=?", goods, warehouse);
  return quantity.isEmpty() ? QStringLiteral("0") : quantity;
}

bool isBeyondStock(const QString& goods, double quantity, const QString& warehouse) {
  return quantity - getStockQty(goods, warehouse).toDouble() >= 0.000001;
}

void clearStaging() {
  execSql("delete from jxc_tempspxf where a_name=?", session().a_name);
}

void bumpPurchaseCount(const QString& employee) {
  postSql("update jxc_user set u_cgpl=u_cgpl+1 where u_sn=?", employee);
}

void bumpSaleCount(const QString& employee) {
  postSql("update jxc_user set u_xspl=u_xspl+1 where u_sn=?", employee);
}

QString getKhLevel(const QString& customer) {
  QString level;
  if (strIsTrue(session().cs_cs013)) level = lookupValue("select top 1 kt_sn from jxc_khxx where kh_sn=?", customer);
  return level.isEmpty() ? QStringLiteral("1000") : level;
}

void ensureZone(const QString& name) {
  if (rowExists("jxc_zone", "z_name", name)) return;
  insertRow("jxc_zone",
            {{"z_sn", nextSerial("jxc_zone", "z_sn")}, {"z_name", name}, {"z_jm", makeJm(name)}, {"z_default", 0}});
}

}  // namespace jxc
