#include "stock/average_change.h"

#include "core/enquiry.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "stock/ledger.h"
#include "stock/line_amounts.h"

namespace jxc {
namespace average_change_detail {

/// What stands against it: the average is written into the last row of the ledger, whose day may be locked.
Refusal setIn(const QString& goods, const QString& warehouse, double average) {
  const PeriodLock lock;
  const RowSet last = openSelect(
      "select top 1 id,gl_kc,gl_kdrq from jxc_goodslist where g_sn=? and ck_sn=? order by gl_kdrq desc,id desc", goods,
      warehouse);
  if (!last.isEmpty())
    if (const Refusal locked = lock.against(last.text(0, 2), OnDay::Booked)) return locked;
  execSql("update jxc_kcsp set kc_cbj=? where g_sn=? and ck_sn=?", average, goods, warehouse);
  if (last.isEmpty()) return {};
  updateRow("jxc_goodslist", last.integer(0, 0),
            {{"gl_pjjj", average}, {"gl_kczje", roundTotal(last.number(0, 1) * average)}});
  return {};
}

/// What stands against it, in all or nothing.
Refusal change(const QString& goods, const QString& warehouse, double average) {
  const Warehouses asked({.warehouse = warehouse});
  Filter known;
  known.add("g_sn=?", goods);
  asked.restrict(known, "ck_sn");

  Transaction transaction(accountDb());
  const double before = averageToChange(goods, warehouse);
  const RowSet places = openSelect(Sql("select distinct ck_sn from jxc_kcsp").where(known).add(" order by ck_sn"));
  if (places.isEmpty()) return u"该商品在仓库中没有库存记录！"_qs;
  for (const Row place : places)
    if (const Refusal locked = setIn(goods, place.text("ck_sn"), average)) return locked;
  const double ofGoods = asked.areAll() ? average : goodsAvgCost(goods);
  if (ofGoods > 0) execSql("update jxc_goods set g_pjjj=?,g_cbj=? where g_sn=?", ofGoods, ofGoods, goods);
  writeLog(u"修改库存均价：%1 %2，仓库：%3，%4 → %5"_qs.arg(
      goods, lookupValue("select g_name from jxc_goods where g_sn=?", goods),
      warehouse.isEmpty() ? u"所有仓库"_qs : lookupValue("select ck_name from jxc_ckxx where ck_sn=?", warehouse),
      numberText(before), numberText(average)));
  transaction.commit();
  return {};
}

}  // namespace average_change_detail

double averageToChange(const QString& goods, const QString& warehouse) {
  if (warehouse.isEmpty()) return lookupNumber("select g_pjjj from jxc_goods where g_sn=?", goods);
  return lookupNumber("select kc_cbj from jxc_kcsp where g_sn=? and ck_sn=?", goods, warehouse);
}

bool changeAverage(const QString& goods, const QString& warehouse, double typed, Prompt& prompt) {
  const double average = roundMoney(typed);
  if (refused({{average <= 0, u"成本均价必须大于零！"_qs}, {average >= kDearest, u"成本均价不正确，请重新输入！"_qs}},
              prompt))
    return false;
  return !isRefused(average_change_detail::change(goods, warehouse, average), prompt);
}

}  // namespace jxc
