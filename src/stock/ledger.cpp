#include "stock/ledger.h"

#include "core/prompt.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger_flags.h"

#include <cmath>

namespace jxc {
namespace ledger_detail {

/// The figures that run along the ledger of one goods in one warehouse.
struct Running {
  double quantity = 0;
  double average = 0;
  double value = 0;
};

struct Digits {
  int quantity = quantityDigits();
  int money = moneyDigits();
  int total = totalDigits();
};

/// What a row does to the running figures.
void advance(Running& running, const LedgerFlag* flag, double quantity, double net, double price,
             const Digits& digits) {
  // The pool is what the average is taken over: stock and value before the row plus what the row brings. When goods
  // flow against the sign of the stock (an ordinary purchase return), the pool is taken with signs dropped, so that
  // the returned quantity and value are added to it and not taken out. The shop's books have always been kept so.
  double poolQuantity = 0;
  double poolValue = 0;
  if (flag && flag->group == MovementGroup::In) {
    const bool against = (quantity > 0 && running.quantity < 0) || (quantity < 0 && running.quantity > 0);
    const auto part = [against](double figure) { return against ? std::fabs(figure) : figure; };
    poolQuantity = part(running.quantity) + part(quantity);
    poolValue = part(running.value) + part(net);
    running.quantity += quantity;
  } else if (flag) {
    running.quantity -= quantity;
  }

  const bool moves =
      flag && (flag->moves == MovesAverage::Always || (flag->moves == MovesAverage::Inflow && quantity > 0));
  if (moves && running.quantity != 0 && poolQuantity != 0) {
    running.quantity = roundEps(running.quantity, digits.quantity);
    if (running.quantity != 0) running.average = std::fabs(poolValue / poolQuantity);
  }
  // A movement that empties the stock leaves its unit price as the cost; an opening row doesn't.
  if (moves && flag->flag != "qc" && running.quantity == 0 && poolQuantity != 0) running.average = price;

  running.average = roundEps(running.average, digits.money);
  running.quantity = roundEps(running.quantity, digits.quantity);
  // The value always follows from average and quantity and is never accumulated.
  running.value = running.quantity == 0 ? 0 : roundEps(running.average * running.quantity, digits.total);
}

bool agrees(const RowSet& rows, int row, int column, double figure) {
  return !rows.isNull(row, column) && std::fabs(rows.number(row, column) - figure) < 5e-7;
}

Running openingFigures(const QString& goods, const QString& warehouse, const QString& date) {
  const RowSet last = openSelect(
      "select top 1 gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
      "order by gl_kdrq desc,id desc",
      goods, warehouse, date);
  if (!last.isEmpty()) return {last.number(0, 0), last.number(0, 1), last.number(0, 2)};
  return {0, lookupNumber("select g_pjjj from jxc_goods where g_sn=?", goods), 0};
}

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

void replayLedger(std::int64_t id, AnchorRow anchorRow) {
  using namespace ledger_detail;
  const RowSet anchorSet = openSelect("select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?", id);
  if (anchorSet.isEmpty()) return;
  const Row anchor = anchorSet.front();
  const QString goods = anchor.text("g_sn");
  const QString warehouse = anchor.text("ck_sn");
  const QString date = anchor.text("gl_kdrq");

  Running running = openingFigures(goods, warehouse, date);
  const Digits digits;
  enum Column { Id, Flag, Quantity, Net, Price, StockBefore, ValueBefore, Average, Stock, StockValue };
  const std::int64_t skipped = anchorRow == AnchorRow::Skip ? id : 0;
  const RowSet rows = openSelect(
      "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
      "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id",
      goods, warehouse, date);
  for (int row = 0; row < rows.rowCount(); ++row) {
    const std::int64_t rowId = rows.integer(row, Id);
    if (rowId == skipped) continue;
    const Running before = running;
    advance(running, findLedgerFlag(rows.utf8(row, Flag)), rows.number(row, Quantity), rows.number(row, Net),
            rows.number(row, Price), digits);
    if (agrees(rows, row, StockBefore, before.quantity) && agrees(rows, row, ValueBefore, before.value) &&
        agrees(rows, row, Average, running.average) && agrees(rows, row, Stock, running.quantity) &&
        agrees(rows, row, StockValue, running.value))
      continue;
    execSql("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?", before.quantity,
            before.value, running.average, running.quantity, running.value, rowId);
  }

  const LedgerFlag* anchorFlag = findLedgerFlag(anchor.text("gl_flag"));
  if (anchorFlag && anchorFlag->anchor && !strIsTrue(session().cs_cs009))
    execSql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?", running.average, warehouse, goods);
}

double goodsAvgCost(const QString& goods) {
  return lookupNumber(
      "select iif(sum(kc_zsl)<>0,abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,?)),-1) as cbj "
      "from jxc_kcsp where g_sn=?",
      moneyDigits(), goods);
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
