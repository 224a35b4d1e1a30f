#include "stock/ledger.h"

#include "core/posting.h"
#include "core/prompt.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger_flags.h"
#include "stock/ledger_replay.h"

#include <cmath>

namespace jxc {
namespace ledger_detail {

/// First non-empty answer of a cost lookup, walked in the order that the callers give; "0" counts as none where told.
double costBehindLedger(QString cost, const QString& goods, const QString& warehouse) {
  if (cost.isEmpty() || cost == u"0")
    cost = lookupValue("select kc_cbj from jxc_kcsp where ck_sn=? and g_sn=?", warehouse, goods);
  if (cost.isEmpty()) cost = lookupValue("select g_pjjj from jxc_goods where g_sn=?", goods);
  return roundMoney(cost.toDouble());
}

/// Goods whose preset purchase price is their cost of sales.
bool hasFixedCost(const QString& goods, double& cost) {
  const RowSet row = openSelect("select g_gdcbj,g_jj from jxc_goods where g_sn=?", goods);
  if (row.isEmpty() || !row.front().flag("g_gdcbj")) return false;
  cost = roundMoney(row.front().number("g_jj"));
  return true;
}

}  // namespace ledger_detail

bool differs(double a, double b) {
  return std::fabs(a - b) >= 5e-7;
}

LedgerReplay::LedgerReplay(LedgerAnchor anchor)
    : anchor_(std::move(anchor)),
      before_(anchor_.goods, anchor_.warehouse, anchor_.date),
      rows_(sendAhead("select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
                      "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id",
                      anchor_.goods, anchor_.warehouse, anchor_.date)) {}

void LedgerReplay::write(AnchorRow anchorRow) {
  const RunningStock running =
      carryStock(before_.take(), rows_.rows(), anchorRow == AnchorRow::Skip ? anchor_.id : 0, {});

  const LedgerFlag* anchorFlag = findLedgerFlag(anchor_.flag);
  if (anchorFlag && anchorFlag->setsCost() && !strIsTrue(session().cs_cs009))
    postSql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?", running.average, anchor_.warehouse, anchor_.goods);
}

void replayLedger(std::int64_t id, AnchorRow anchorRow) {
  const RowSet anchorSet = openSelect("select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?", id);
  if (anchorSet.isEmpty()) return;
  const Row anchor = anchorSet.front();
  LedgerReplay({.id = id,
                .goods = anchor.text("g_sn"),
                .warehouse = anchor.text("ck_sn"),
                .date = anchor.text("gl_kdrq"),
                .flag = anchor.text("gl_flag")})
      .write(anchorRow);
}

Ahead askGoodsAvgCost(const QString& goods) {
  return sendAhead(
      "select iif(sum(kc_zsl)<>0,abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,?)),-1) as cbj "
      "from jxc_kcsp where g_sn=?",
      moneyDigits(), goods);
}

double goodsAvgCost(const QString& goods) {
  return askGoodsAvgCost(goods).number();
}

double getGoodsCost(const QString& goods, const QString& warehouse, const QString& date) {
  using namespace ledger_detail;
  double fixed = 0;
  if (hasFixedCost(goods, fixed)) return fixed;
  QString cost;
  if (!strIsTrue(session().cs_cs009)) {
    cost = lookupValue(
        "select top 1 gl_pjjj from jxc_goodslist where ck_sn=? and g_sn=? and gl_kdrq<=? order by gl_kdrq desc,id desc",
        warehouse, goods, date);
    if (cost.isEmpty())
      cost = lookupValue(
          "select top 1 gl_pjjj from jxc_goodslist where ck_sn=? and g_sn=? and gl_kdrq>? order by gl_kdrq,id",
          warehouse, goods, date);
  }
  return costBehindLedger(cost, goods, warehouse);
}

double getLedgerRowCost(const QString& goods, const QString& warehouse, const QString& date, std::int64_t id) {
  using namespace ledger_detail;
  double fixed = 0;
  if (hasFixedCost(goods, fixed)) return fixed;
  QString cost = lookupValue(
      "select top 1 gl_pjjj from jxc_goodslist where gl_flag<>'qc' and ck_sn=? and g_sn=? and gl_kdrq=? and id<? "
      "order by gl_kdrq desc,id desc",
      warehouse, goods, date, id);
  for (const char* statement :
       {"select top 1 gl_pjjj from jxc_goodslist where gl_flag<>'qc' and ck_sn=? and g_sn=? and gl_kdrq<? "
        "order by gl_kdrq desc,id desc",
        "select top 1 gl_pjjj from jxc_goodslist where ck_sn=? and g_sn=? and gl_kdrq<? order by gl_kdrq desc,id desc",
        "select top 1 gl_pjjj from jxc_goodslist where ck_sn=? and g_sn=? and gl_kdrq<=? order by gl_kdrq desc,id desc",
        "select top 1 gl_pjjj from jxc_goodslist where ck_sn=? and g_sn=? and gl_kdrq>? order by gl_kdrq,id"}) {
    if (!cost.isEmpty()) break;
    cost = lookupValue(statement, warehouse, goods, date);
  }
  return costBehindLedger(cost, goods, warehouse);
}

}  // namespace jxc
