#include "stock/stock_sync.h"

#include "core/clock.h"
#include "core/defaults.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger.h"
#include "stock/ledger_rows.h"
#include "stock/partial_movement.h"

#include <set>

namespace jxc {
namespace stock_sync_detail {

/// Goods come onto the shelf, or leave it, by documents of their own: only the books go with the ledger.
bool movesLater() {
  return partial::putaway.isInUse() || partial::issue.isInUse();
}

/// What balance and ledger say of a goods in a warehouse now.
struct Place {
  QString goods, warehouse;
  std::int64_t balance = 0;  // id; 0: none
  double shelf = 0, book = 0;
  bool hadSecond = false;
  double stock = 0, average = 0, value = 0;  // of the last row
};

void readLedger(Place& at) {
  const RowSet last = openSelect(
      "select top 1 gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? order by gl_kdrq desc,id desc",
      at.goods, at.warehouse);
  if (last.isEmpty()) return;
  at.stock = last.number(0, 0);
  at.average = last.number(0, 1);
  at.value = last.number(0, 2);
}

/// Of several balances the first stays, as a recomputation leaves them.
Place read(const QString& goods, const QString& warehouse) {
  Place at{goods, warehouse};
  const RowSet balances =
      openSelect("select id,kc_sl,kc_zsl from jxc_kcsp where g_sn=? and ck_sn=? order by id", goods, warehouse);
  if (!balances.isEmpty()) {
    at.balance = balances.integer(0, 0);
    at.shelf = balances.number(0, 1);
    at.book = balances.number(0, 2);
  }
  at.hadSecond = balances.rowCount() > 1;
  if (at.hadSecond) execSql("delete from jxc_kcsp where g_sn=? and ck_sn=? and id<>?", goods, warehouse, at.balance);
  readLedger(at);
  return at;
}

void writeBalance(Place& at, double shelf, double book) {
  at.shelf = shelf;
  at.book = book;
  if (at.balance == 0) {
    const double sold =
        lookupNumber("select sum(gl_sl) from jxc_goodslist where g_sn=? and ck_sn=? and gl_flag in ('xs','xt')",
                     at.goods, at.warehouse);
    at.balance = insertRow("jxc_kcsp", {{"g_sn", at.goods},
                                        {"ck_sn", at.warehouse},
                                        {"kc_sl", shelf},
                                        {"kc_zsl", book},
                                        {"kc_cbj", at.average},
                                        {"kc_xssl", sold}});
  } else {
    updateRow("jxc_kcsp", at.balance, {{"kc_sl", shelf}, {"kc_zsl", book}});
  }
}

/// A row of today for what the ledger lacks, at the cost of the day so that the average stays; rows dated later follow.
void postDifference(const Place& at, const QString& employee) {
  const PeriodLock lock;
  const RowSet goods =
      openSelect("select g_name,g_jm,dw_name,gg_name,color_name from jxc_goods where g_sn=?", at.goods);
  if (goods.isEmpty()) return;
  lock.demandOpen(clock::today(), OnDay::Booked);
  const double pieces = at.book - at.stock, cost = getGoodsCost(at.goods, at.warehouse, clock::today());
  const Row named = goods.front();
  postLedgerRow({{"gl_flag", "qc"},
                 {"gl_djh", ""},
                 {"gl_kdrq", clock::today()},
                 {"g_sn", at.goods},
                 {"g_name", named.text("g_name")},
                 {"g_jm", named.text("g_jm")},
                 {"dw_name", named.text("dw_name")},
                 {"gl_dj", cost},
                 {"gl_sl", pieces},
                 {"gl_zje", pieces * cost},
                 {"gl_checker", session().a_name},
                 {"gl_chkrq", clock::today()},
                 {"gl_sqsl", at.stock},
                 {"gl_sqje", at.value},
                 {"gl_pjjj", cost},
                 {"gl_kc", at.book},
                 {"gl_kczje", at.book * cost},
                 {"gl_note", u"库存同步"_qs},
                 {"u_name", employee},
                 {"a_name", session().a_name},
                 {"ck_sn", at.warehouse},
                 {"ck_name", lookupValue("select ck_name from jxc_ckxx where ck_sn=?", at.warehouse)},
                 {"ghs_name", u"同步"_qs},
                 {"gg_name", named.text("gg_name")},
                 {"color_name", named.text("color_name")},
                 {"gl_sysl", 0}});
  replayLedger(static_cast<std::int64_t>(
      lookupNumber("select max(id) from jxc_goodslist where g_sn=? and ck_sn=?", at.goods, at.warehouse)));
}

/// What stands on the goods is of all its warehouses.
void writeMaster(const QString& goods) {
  execSql("update jxc_goods set g_kc=? where g_sn=?",
          lookupNumber("select sum(kc_sl) from jxc_kcsp where g_sn=?", goods), goods);
  if (const double average = goodsAvgCost(goods); average != -1)
    execSql("update jxc_goods set g_pjjj=? where g_sn=?", average, goods);
}

/// True: something had to be changed.
bool syncPlace(const QString& goods, const QString& warehouse, SyncWay way, bool later, const QString& employee) {
  Place at = read(goods, warehouse);
  if (at.balance != 0 && !at.hadSecond && !differs(later ? at.book : at.shelf, at.stock) &&
      (later || !differs(at.book, at.stock)))
    return false;
  if (way == SyncWay::LedgerFollows) {
    // The ledger keeps no more decimals of a quantity than the parameters say.
    const double book = roundEps(later ? at.book : at.shelf, quantityDigits());
    writeBalance(at, later ? at.shelf : book, book);
    if (differs(book, at.stock)) postDifference(at, employee);
  } else {
    writeBalance(at, later && at.balance != 0 ? at.shelf : at.stock, at.stock);
  }
  writeMaster(goods);
  return true;
}

/// The figures of the month and the log, once for all that was kept.
void logSync(const RowSet& places, SyncWay way, const std::vector<int>& changed) {
  if (changed.empty()) return;
  std::set<QString> warehouses;
  for (const int row : changed)
    warehouses.insert(places.text(row, 1));
  Transaction transaction(accountDb());
  for (const QString& warehouse : warehouses)
    refreshMonthStock(warehouse, clock::month());
  writeLog(u"库存同步：%1，共%2种商品"_qs
               .arg(way == SyncWay::StockFollows ? u"用结存数量替换当前库存数量"_qs : u"用当前库存数量替换结存数量"_qs)
               .arg(changed.size()));
  transaction.commit();
}

}  // namespace stock_sync_detail

Sql stockDifferences(const Criteria& criteria, const Warehouses& warehouses) {
  // Where nothing moves later, book and shelf are one: a book that went astray alone is a difference too.
  const bool later = stock_sync_detail::movesLater();
  const std::string ledger = "iif(d.gl_kc is null,0,d.gl_kc)";
  const auto figure = [](const char* column) { return "iif(" + std::string(column) + " is null,0," + column + ")"; };
  const std::string shelf = figure("k.kc_sl"), book = figure("k.kc_zsl");
  const auto last = [](const char* goods, const char* warehouse) {
    return "d.id=(select top 1 e.id from jxc_goodslist e where e.g_sn=" + std::string(goods) +
           " and e.ck_sn=" + warehouse + " order by e.gl_kdrq desc,e.id desc)";
  };
  Filter balances, rows;
  balances.add("k.g_sn<>'00000000'");
  // Column against column, as they are stored: a computed figure would be rounded for each of all balances.
  const auto astray = [](const std::string& column) {
    return "(" + column + "<>d.gl_kc or (d.gl_kc is null and " + column + "<>0) or (" + column +
           " is null and d.gl_kc<>0))";
  };
  balances.add(later ? astray("k.kc_zsl") : "(" + astray("k.kc_sl") + " or " + astray("k.kc_zsl") + ")");
  warehouses.restrict(balances, "k.ck_sn");
  rows.add(last("a.g_sn", "w.ck_sn")).add("a.g_sn<>'00000000'").add("d.gl_kc<>0");
  rows.add("not exists (select z.id from jxc_kcsp z where z.g_sn=a.g_sn and z.ck_sn=w.ck_sn)");
  warehouses.restrict(rows, "w.ck_sn");
  for (Filter* each : {&balances, &rows})
    addKey(*each, criteria, {"a.g_sn", "a.g_name", "a.g_jm", "a.g_sptm"});
  // Rows without a balance are looked for by goods and warehouse, so that it does not matter how long the ledger is.
  constexpr const char* goods = "a.g_name,a.g_jm,a.dw_name,a.gg_name,a.color_name,a.g_pjjj,w.ck_name,";
  return Sql("select k.g_sn & '-' & k.ck_sn as rowkey,k.g_sn,k.ck_sn," + std::string(goods) + shelf + " as kc_sl," +
             book + " as kc_zsl," + ledger + " as gl_kc,iif(d.gl_kczje is null,0,d.gl_kczje) as gl_kczje," +
             (later ? book : "iif(" + shelf + "<>" + ledger + "," + shelf + "," + book + ")") + "-" + ledger +
             " as cysl from ((jxc_kcsp k left outer join jxc_goodslist d on " + last("k.g_sn", "k.ck_sn") +
             ") inner join jxc_goods a on k.g_sn=a.g_sn) left outer join jxc_ckxx w on k.ck_sn=w.ck_sn")
      .where(balances)
      .add(" union all select a.g_sn & '-' & w.ck_sn,a.g_sn,w.ck_sn," + std::string(goods) +
           "0,0,d.gl_kc,d.gl_kczje,0-d.gl_kc from jxc_goods a,jxc_ckxx w,jxc_goodslist d")
      .where(rows)
      // By goods, as balances and ledger are indexed: by warehouse it would jump to and fro between their pages.
      .add(" order by g_sn,ck_sn");
}

bool syncStock(const RowSet& places, SyncWay way, const RepairProgress& progress, RepairPosition* position) {
  using namespace stock_sync_detail;
  const bool later = movesLater();
  const QString employee = defaultEmployeeName();
  std::vector<int> changed;
  bool finished = false;
  try {
    finished = forEachPair(
        places, progress, position,
        [&](const QString& goods, const QString& warehouse) {
          return syncPlace(goods, warehouse, way, later, employee);
        },
        &changed);
  } catch (...) {
    try {
      logSync(places, way, changed);  // what was kept until then
    } catch (const DbError&) {
      // What stopped the sync stands in the way of this too, and is what the operator is told.
    }
    throw;
  }
  logSync(places, way, changed);
  return finished;
}

}  // namespace jxc
