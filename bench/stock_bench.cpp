// Stock looked up and mended over up to 100,000 balances, beside the shortest statements that somebody would write by
// hand for the same figures. The ledger has the last of the sizes asked for.
#include "core/clock.h"
#include "filled_shop.h"
#include "statistics/purchase_sale_stock.h"
#include "stock/stock_enquiry.h"
#include "stock/stock_sync.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace stock_bench {

using bench::Bare;
using bench::Shop;

constexpr int kMostGoods = 20'000, kWarehouses = 5, kBought = 100, kBusyRows = 10'000;
const QString kWarehouse = QStringLiteral("100001"), kDay = QStringLiteral("2025-06-30");

int rowsAskedFor() {
  return bench::ledgerSizes().back();
}
/// Ten rows a balance, or more where all goods are there.
int goodsCount() {
  return std::min(kMostGoods, rowsAskedFor() / kWarehouses / 10);
}
int salesOfPair() {
  return rowsAskedFor() / kWarehouses / goodsCount() - 1;
}
int synced() {
  return std::min(1'000, goodsCount() - 1);
}

std::string codeOf(int goods) {
  return std::to_string(10'000'000 + goods);
}

class Filling {
 public:
  explicit Filling(sqlite3* db)
      : stock_(db, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?1,?2,?3,?3,10,?4)"),
        ledger_(
            db,
            "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
            "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lr,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,u_name,a_name,ck_sn,"
            "ck_name,ghs_name) values (?1,?2,?3,?4,'镜架',10,10,?5*10,?5,1,?5*10,?5*10,0,10,0,0,?6,?6*10,10,?7,?7*10,"
            "'员工','admin',?8,'仓库','往来单位')") {}
  /// A receipt of so many pieces on the first of January, then sales of one each over the year; the balance behind.
  void pair(int goods, int warehouse, int bought, int sold) {
    const std::string sn = codeOf(goods), place = std::to_string(100'001 + warehouse);
    (ledger_ << std::string("cj") << number("CJ") << std::string("2025-01-01") << sn << double(bought) << 0.0
             << double(bought) << place)
        .run();
    const QDate first(2025, 1, 2);
    for (int i = 0; i < sold; ++i) {
      const QString day = first.addDays(qint64(i) * 360 / sold).toString(Qt::ISODate);
      (ledger_ << std::string("xs") << number("XS") << day.toStdString() << sn << 1.0 << double(bought - i)
               << double(bought - i - 1) << place)
          .run();
    }
    (stock_ << sn << place << double(bought - sold) << double(sold)).run();
  }

 private:
  std::string number(const char* prefix) { return prefix + std::to_string(10'000'000'000 + rows_++ / 50); }
  Bare stock_, ledger_;
  long long rows_ = 0;
};

void fill(Shop& made) {
  sqlite3* const db = made.native();
  Bare(db, "begin immediate").run();
  Bare place(db, "insert into jxc_ckxx (ck_sn,ck_name) values (?,'仓库')");
  for (int i = 1; i < kWarehouses; ++i)
    (place << std::to_string(100'001 + i)).run();
  Bare goods(db,
             "insert into jxc_goods (g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_pjjj,g_jj,g_sj,g_kc,g_jy,"
             "g_gdcbj,g_zhxs,gc_sn) values (?,'镜架','JJ','付','','','',10,10,20,?,0,0,1,'1001')");
  Filling filling(db);
  for (int i = 0; i < goodsCount(); ++i) {
    (goods << codeOf(i) << double(kBought - salesOfPair()) * kWarehouses).run();
    for (int warehouse = 0; warehouse < kWarehouses; ++warehouse) {
      const bool isBusy = i == 0 && warehouse == 0;
      filling.pair(i, warehouse, isBusy ? kBusyRows : kBought, isBusy ? kBusyRows - 1 : salesOfPair());
    }
  }
  Bare(db, "commit").run();
  Bare(db, "analyze").run();
}
sqlite3* shop() {
  return bench::filledShop<fill>().native();
}

void ask(benchmark::State& state, const Source& source, const Criteria& criteria, int due) {
  shop();
  for (auto _ : state) {
    const int rows = answer(source, criteria).rowCount();
    if (rows != due) return state.SkipWithError(("rows: " + std::to_string(rows)).c_str());
  }
}
void askByHand(benchmark::State& state, const std::string& text, std::initializer_list<std::string> values = {}) {
  Bare statement(shop(), text.c_str());
  double sum = 0;
  for (auto _ : state) {
    for (const std::string& value : values)
      statement << value;
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

/// The columns that both lists show.
const std::string kColumns =
    "select a.id,a.g_sn,a.g_name,a.g_jm,a.gc_sn,a.gg_name,a.color_name,a.dw_name,a.dw_name2,a.g_zhxs,a.g_qgd,a.g_sgd,"
    "a.g_sptm,a.g_sccs,a.g_bz,a.ghs_sn,a.g_jy,c.gc_name,b.sl,round(b.sl/a.g_zhxs,2),";

void stockNow(benchmark::State& state) {
  ask(state, currentStock, {}, goodsCount());
}
void stockNowByHand(benchmark::State& state) {
  askByHand(
      state,
      kColumns +
          "a.g_zdkc,a.g_scjj,a.g_sj,b.zsl,b.xssl,abs(round(b.zje/b.zsl,2)),round(b.zje,2),a.g_sj*b.sl from (select "
          "g_sn,sum(kc_sl) sl,sum(kc_zsl) zsl,sum(kc_xssl) xssl,sum(kc_zsl*kc_cbj) zje from jxc_kcsp group by g_sn) "
          "b join jxc_goods a on a.g_sn=b.g_sn left join jxc_goodsclass c on c.gc_sn=a.gc_sn where a.g_jy=0 order by "
          "a.g_sn");
}

/// Until the first rows are there, for the window to show.
void stockBegins(benchmark::State& state) {
  shop();
  struct Begun {};
  for (auto _ : state) {
    int rows = 0;
    EnquiryReader reader(accountDb(), {}, [&](RowSet first) {
      rows = first.rowCount();
      throw Begun();
    });
    try {
      answer(Source(currentStockByPage).ask({}), reader);
    } catch (const Begun&) {
    }
    if (rows != 100) return state.SkipWithError(("rows: " + std::to_string(rows)).c_str());
  }
}
void stockBeginsByHand(benchmark::State& state) {
  askByHand(
      state,
      kColumns +
          "a.g_zdkc,a.g_scjj,a.g_sj,b.zsl,b.xssl,abs(round(b.zje/b.zsl,2)),round(b.zje,2),a.g_sj*b.sl from (select "
          "a.g_sn,sum(kc_sl) sl,sum(kc_zsl) zsl,sum(kc_xssl) xssl,sum(kc_zsl*kc_cbj) zje from (select g_sn from "
          "jxc_goods where g_jy=0 order by g_sn limit 100) a join jxc_kcsp k on k.g_sn=a.g_sn group by a.g_sn) "
          "b join jxc_goods a on a.g_sn=b.g_sn left join jxc_goodsclass c on c.gc_sn=a.gc_sn order by a.g_sn");
}

void stockThen(benchmark::State& state) {
  ask(state, stockAt, {.to = kDay, .warehouse = kWarehouse}, goodsCount());
}
void stockThenByHand(benchmark::State& state) {
  askByHand(state,
            kColumns +
                "b.gl_pjjj,b.gl_kczje from (select q.g_sn,q.gl_kc sl,q.gl_pjjj,q.gl_kczje from jxc_kcsp k join "
                "jxc_goodslist q on q.id=(select id from jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn and "
                "e.gl_kdrq<=? order by e.gl_kdrq desc,e.id desc limit 1) where k.ck_sn=?) b join jxc_goods a on "
                "a.g_sn=b.g_sn left join jxc_goodsclass c on c.gc_sn=a.gc_sn where a.g_jy=0 order by a.g_sn",
            {kDay.toStdString() + " 23:59:59", kWarehouse.toStdString()});
}

void differences(benchmark::State& state) {
  ask(state, stockDifferences, {}, 0);
}
/// Without a look for rows that have no balance.
void differencesByHand(benchmark::State& state) {
  askByHand(
      state,
      "select k.g_sn,k.ck_sn,a.g_name,k.kc_sl,k.kc_zsl,d.gl_kc,d.gl_kczje from jxc_kcsp k join jxc_goodslist d on "
      "d.id=(select id from jxc_goodslist e where e.g_sn=k.g_sn and e.ck_sn=k.ck_sn order by e.gl_kdrq desc,"
      "e.id desc limit 1) join jxc_goods a on a.g_sn=k.g_sn where k.kc_sl<>d.gl_kc");
}

void movements(benchmark::State& state) {
  ask(state, stockMovements, {.warehouse = kWarehouse, .goods = QString::fromStdString(codeOf(0))}, kBusyRows);
}
void movementsByHand(benchmark::State& state) {
  askByHand(state,
            "select x.id,x.gl_kdrq,x.gl_djh,x.g_sn,y.g_name,y.gg_name,y.dw_name,y.color_name,z.gc_name,x.ghs_name,"
            "m.ck_name,x.ck_sn,x.u_name,x.gl_bz,x.gl_kc,x.gl_kczje,x.gl_flag,x.gl_dj,x.gl_sl,x.gl_je from "
            "jxc_goodslist x join jxc_goods y on y.g_sn=x.g_sn join jxc_ckxx m on m.ck_sn=x.ck_sn left join "
            "jxc_goodsclass z on z.gc_sn=y.gc_sn where x.g_sn=? and x.ck_sn=? order by x.gl_kdrq,x.id",
            {codeOf(0), kWarehouse.toStdString()});
}

// ---- sync ----

void plant() {
  execSql("update jxc_kcsp set kc_sl=kc_sl+1,kc_zsl=kc_zsl+1 where ck_sn=? and g_sn>=? and g_sn<?", kWarehouse,
          QString::fromStdString(codeOf(1)), QString::fromStdString(codeOf(1 + synced())));
}
void takeBack() {
  execSql("delete from jxc_goodslist where ghs_name='同步'");
  const int stands = kBought - salesOfPair();
  execSql("update jxc_kcsp set kc_sl=?,kc_zsl=? where kc_sl<>? and g_sn>?", stands, stands, stands,
          QString::fromStdString(codeOf(0)));
}

void sync(benchmark::State& state) {
  shop();
  for (auto _ : state) {
    state.PauseTiming();
    plant();
    const RowSet all = answer(stockDifferences, {});
    RowSet places({"g_sn", "ck_sn"});
    for (const Row row : all) {
      places.addText(row.text("g_sn").toStdString());
      places.addText(row.text("ck_sn").toStdString());
    }
    if (places.rowCount() != synced()) return state.SkipWithError("not what was planted");
    state.ResumeTiming();
    syncStock(places, SyncWay::LedgerFollows);
    state.PauseTiming();
    takeBack();
    state.ResumeTiming();
  }
}
/// The row, the replay of its day, balance and master: each goods in a transaction of its own.
void syncByHand(benchmark::State& state) {
  sqlite3* const db = shop();
  const std::string place = kWarehouse.toStdString(), today = clock::today().toStdString();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare balance(db, "select kc_sl from jxc_kcsp where g_sn=? and ck_sn=?");
  Bare last(db,
            "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? order by gl_kdrq desc,id desc "
            "limit 1");
  Bare named(db, "select g_name,g_jm,dw_name,gg_name,color_name from jxc_goods where g_sn=?");
  Bare ledger(
      db,
      "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,"
      "gl_dzl,gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,"
      "gl_pjjj,gl_kc,gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,"
      "gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) values ('qc','',?1,?2,?3,?4,?5,?6,0,0,?7,1,?6*?7,?6*?7,0,?6,0,0,0,0,"
      "'admin',?1,?8,?9,?6,?8+?7,(?8+?7)*?6,'库存同步','','员工','admin',?10,'仓库','','同步','','',0,0,'','',0)");
  Bare stock(db, "update jxc_kcsp set kc_zsl=kc_sl,kc_cbj=? where g_sn=? and ck_sn=?");
  Bare master(db,
              "update jxc_goods set (g_kc,g_pjjj)=(select sum(kc_sl),abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl),2)) from "
              "jxc_kcsp where g_sn=?1) where g_sn=?1");
  for (auto _ : state) {
    state.PauseTiming();
    plant();
    state.ResumeTiming();
    for (int i = 1; i <= synced(); ++i) {
      const std::string sn = codeOf(i);
      begin.run();
      balance << sn << place;
      balance.step();
      last << sn << place;
      last.step();
      named << sn;
      named.step();
      const double cost = last.number(1);
      (ledger << today << sn << named.text(0) << named.text(1) << named.text(2) << cost
              << balance.number(0) - last.number(0) << last.number(0) << last.number(2) << place)
          .run();
      for (Bare* each : {&balance, &last, &named})
        each->reset();
      (stock << cost << sn << place).run();
      (master << sn).run();
      commit.run();
    }
    state.PauseTiming();
    takeBack();
    state.ResumeTiming();
  }
}

const bool registered = [] {
  using Work = void (*)(benchmark::State&);
  struct Case {
    const char* name;
    Work statements, byHand;
  };
  for (const Case& each : {Case{"stock of all goods in 5 warehouses", stockNow, stockNowByHand},
                           Case{"first page of stock in 5 warehouses", stockBegins, stockBeginsByHand},
                           Case{"stock of a warehouse at a day", stockThen, stockThenByHand},
                           Case{"balance and ledger of all pairs compared", differences, differencesByHand},
                           Case{"movements of a goods with 10,000 rows", movements, movementsByHand},
                           Case{"stock sync of up to 1,000 goods", sync, syncByHand}})
    for (const bool byHand : {false, true})
      benchmark::RegisterBenchmark(bench::named(each.name, rowsAskedFor(), byHand).c_str(),
                                   byHand ? each.byHand : each.statements)
          ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace stock_bench
}  // namespace jxc
