#include "stock/repair.h"

#include "core/period_lock.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/waiting.h"
#include "stock/document_family.h"
#include "stock/ledger.h"
#include "stock/ledger_flags.h"
#include "stock/running_stock.h"

#include <QElapsedTimer>

#include <algorithm>
#include <string>

namespace jxc {
namespace repair_detail {

constexpr qint64 kShortStep = 20;  // ms
constexpr int kLongestStep = 256;  // goods

/// Of several balance rows of one goods and warehouse the first stays.
void removeSecondBalances() {
  for (const Row row :
       openSelect("select g_sn,ck_sn,min(id) as rid from jxc_kcsp group by g_sn,ck_sn having count(*)>1"))
    execSql("delete from jxc_kcsp where g_sn=? and ck_sn=? and id<>?", row.text("g_sn"), row.text("ck_sn"),
            row.integer("rid"));
}

void recomputeGoods(const QString& goods, const QString& warehouse, const QString& date, const StockDigits& digits) {
  // Here the price of a line feeds the average, not its amount: discounts on lines are left out of account.
  const RowSet rows = openSelect(
      "select id,gl_flag,gl_sl,gl_sl*gl_dj as net,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
      "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id",
      goods, warehouse, date);
  const RunningStock running = carryStock(StockBefore(goods, warehouse, date).take(), rows, 0, digits);
  if (!strIsTrue(session().cs_cs009))
    execSql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?", running.average, warehouse, goods);
  if (const double average = goodsAvgCost(goods); average != -1)
    execSql("update jxc_goods set g_pjjj=? where g_sn=?", average, goods);
}

void recomputeGoodsStock() {
  execSql("update jxc_goods set g_kc=0");
  for (const Row row : openSelect("select g_sn,sum(kc_sl) as kcsl from jxc_kcsp group by g_sn"))
    execSql("update jxc_goods set g_kc=? where g_sn=?", row.number("kcsl"), row.text("g_sn"));
}

void recomputeSold() {
  const RowSet rows = openSelect(
      "select a.id,a.kc_xssl,b.sl from jxc_kcsp a left outer join "
      "(select g_sn,ck_sn,sum(gl_sl) as sl from jxc_goodslist where gl_flag='xs' or gl_flag='xt' group by g_sn,ck_sn) "
      "b "
      "on a.g_sn=b.g_sn and a.ck_sn=b.ck_sn where a.g_sn<>'00000000'");
  for (const Row row : rows)
    if (differs(row.number("kc_xssl"), row.number("sl")))
      execSql("update jxc_kcsp set kc_xssl=? where id=?", row.number("sl"), row.integer("id"));
}

/// Flags of documents that this program does not write and whose line price is the cost.
constexpr std::string_view reservedCostFlags[] = {"pl", "wp", "wt", "lt", "ly", "dh"};

/// A document follows the cost of its ledger row: a sale or its return in the cost of its line, another one in its
/// price.
void changeDocument(const DocumentFamily& family, double cost, const QString& goods, const QString& number) {
  const LineColumns& c = *family.line.columns;
  const bool sells = !c.cost.empty();
  const std::string quantity(family.line.moves.empty() ? c.quantity : family.line.moves);
  execSql(compose("update {} set {}=?,{}=", {c.table, sells ? c.cost : c.price, sells ? c.costAmount : c.total}) +
              quantity + compose("*? where g_sn=? and {}=?", {family.number}),
          cost, cost, goods, number);
}

/// The family whose documents write rows of this flag; null: none of this program.
const DocumentFamily* familyOf(std::string_view flag) {
  for (const DocumentFamily& family : documentFamilies())
    if (!flag.empty() && family.flag == flag) return &family;
  return nullptr;
}

void syncRow(const Row& row, const QString& goods, double cost, bool changeDocuments) {
  const std::int64_t id = row.integer("id");
  const QString number = row.text("gl_djh");
  const QString flag = row.text("gl_flag");
  const auto fillAverage = [&] {
    if (row.number("gl_pjjj") == 0)
      execSql("update jxc_goodslist set gl_pjjj=?,gl_kczje=gl_kc*? where id=?", cost, cost, id);
  };
  const std::string name = flag.toStdString();
  const DocumentFamily* const family = familyOf(name);
  if (family && !family->line.columns->cost.empty()) {
    if (!differs(row.number("gl_cbj"), cost)) return fillAverage();
    execSql("update jxc_goodslist set gl_cbj=?,gl_zcb=gl_sl*?,gl_lr=gl_zje-gl_sl*? where id=?", cost, cost, cost, id);
  } else if (family || std::ranges::find(reservedCostFlags, name) != std::end(reservedCostFlags)) {
    if (!differs(row.number("gl_dj"), cost)) return fillAverage();
    execSql("update jxc_goodslist set gl_dj=?,gl_zje=gl_sl*?,gl_je=gl_sl*? where id=?", cost, cost, cost, id);
  }
  if (changeDocuments && family) changeDocument(*family, cost, goods, number);
}

}  // namespace repair_detail

bool forEachPair(const RowSet& pairs, const RepairProgress& progress, RepairPosition* position,
                 const std::function<bool(const QString& goods, const QString& warehouse)>& work,
                 std::vector<int>* changed) {
  RepairPosition own;
  RepairPosition& at = position ? *position : own;
  int first = 0;
  if (!at.isEmpty())
    for (int row = 0; row < pairs.rowCount(); ++row)
      if (pairs.text(row, 0) == at.goods && pairs.text(row, 1) == at.warehouse) first = row + 1;
  using repair_detail::kLongestStep, repair_detail::kShortStep;
  int together = 1;
  for (int row = first; row < pairs.rowCount();) {
    const int end = std::min(row + together, pairs.rowCount());
    std::vector<int> ofStep;
    try {
      QElapsedTimer clock;
      clock.start();
      Transaction transaction(accountDb());
      for (int each = row; each < end; ++each)
        if (work(pairs.text(each, 0), pairs.text(each, 1))) ofStep.push_back(each);
      // Others wait for it meanwhile: only what the work takes counts, for the disk they wait anyhow.
      const bool isShort = clock.elapsed() < kShortStep;
      transaction.commit();
      together = isShort ? std::min(together * 2, kLongestStep) : std::max(1, (end - row) / 2);
    } catch (...) {
      if (end - row == 1) throw;
      together = 1;
      continue;
    }
    if (changed) changed->insert(changed->end(), ofStep.begin(), ofStep.end());
    at = {pairs.text(end - 1, 0), pairs.text(end - 1, 1)};
    row = end;
    if (progress && !progress(row, pairs.rowCount())) return false;
  }
  at = {};
  return true;
}

bool recomputeLedger(const QString& typed, const QString& warehouse, const RepairProgress& progress,
                     RepairPosition* position) {
  using namespace repair_detail;
  const LongWork longWork;
  // What is locked stays as it is: the day after it goes on from its last figures.
  const QString date = PeriodLock().openFrom(typed);
  if (!position || position->isEmpty()) {
    Transaction transaction(accountDb());
    Sql carried("delete from jxc_goodslist where (ghs_name='期初结转' or ghs_name='库存同步') and gl_flag='qc'");
    if (const QString locked = PeriodLock().day(); !locked.isEmpty()) carried.add(" and gl_kdrq>?", locked + u'~');
    execSql(carried);
    removeSecondBalances();
    transaction.commit();
  }

  Filter where;
  where.add("g_sn<>'00000000'");
  if (!warehouse.isEmpty()) where.add("ck_sn=?", warehouse);
  const RowSet balances = openSelect(Sql("select g_sn,ck_sn from jxc_kcsp").where(where).add(" order by ck_sn,g_sn"));
  StockDigits digits;
  digits.roundQuantity = false;
  if (!forEachPair(balances, progress, position, [&](const QString& goods, const QString& place) {
        const PeriodLock lock;
        recomputeGoods(goods, place, date, digits);
        lock.demandOpen(date);
        return true;
      }))
    return false;
  Transaction transaction(accountDb());
  recomputeGoodsStock();
  recomputeSold();
  transaction.commit();
  return true;
}

bool syncOutgoingCost(const QString& typed, const QString& warehouse, bool changeDocuments,
                      const RepairProgress& progress, RepairPosition* position) {
  using namespace repair_detail;
  const LongWork longWork;
  const QString date = PeriodLock().openFrom(typed);
  Filter where;
  where.add("g_sn<>'00000000'").add("gl_kdrq>=?", date).add(rowsBehindAverage());
  if (!warehouse.isEmpty()) where.add("ck_sn=?", warehouse);
  const RowSet pairs =
      openSelect(Sql("select distinct g_sn,ck_sn from jxc_goodslist").where(where).add(" order by g_sn,ck_sn"));
  const std::string rowsOfPair =
      "select id,gl_flag,gl_djh,gl_kdrq,gl_dj,gl_cbj,gl_pjjj from jxc_goodslist where g_sn=? and ck_sn=? and "
      "gl_kdrq>=? and " +
      rowsBehindAverage() + " order by gl_kdrq,id";
  return forEachPair(pairs, progress, position, [&](const QString& goods, const QString& place) {
    const PeriodLock lock;
    for (const Row row : openSelect(rowsOfPair, goods, place, date))
      syncRow(row, goods, getLedgerRowCost(goods, place, row.text("gl_kdrq"), row.integer("id")), changeDocuments);
    lock.demandOpen(date);
    return true;
  });
}

}  // namespace jxc
