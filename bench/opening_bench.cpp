// Opening stock of a class of 20,000 goods, as the command writes it and by hand.
#include "bare_shop.h"
#include "core/clock.h"
#include "inventory/opening_stock.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace opening_bench {

using bench::Bare;
using bench::Shop;

constexpr int goodsCount = 20'000;

void fill(Shop& made) {
  sqlite3* const db = made.native();
  Bare(db, "begin immediate").run();
  Bare goods(db,
             "insert into jxc_goods (g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_pjjj,g_jj,g_kc,g_jy,g_gdcbj,"
             "gc_sn) values (?,'镜架','JJ','付','','','',10,10,0,0,0,'1001')");
  for (int i = 0; i < goodsCount; ++i)
    (goods << std::to_string(10'000'000 + i)).run();
  Bare(db, "commit").run();
}

void takeOut() {
  execSql("delete from jxc_goodslist");
  execSql("delete from jxc_kcsp where g_sn<>'00000000'");
  execSql("update jxc_goods set g_kc=0 where g_kc<>0");
}

void enterClass(benchmark::State& state) {
  bench::filledShop<fill>();
  bench::YesPrompt yes;
  for (auto _ : state) {
    const auto entered =
        opening_stock::enterClass(QStringLiteral("100001"), QStringLiteral("1001"), 5, yes, [](int) { return true; });
    if (entered != goodsCount) return state.SkipWithError("not all of the class");
    state.PauseTiming();
    takeOut();
    state.ResumeTiming();
  }
}

void enterByHand(benchmark::State& state) {
  sqlite3* const db = bench::filledShop<fill>().native();
  const std::string day = clock::today().left(4).toStdString() + "-01-01", today = clock::today().toStdString();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare known(db,
             "select g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_jj from jxc_goods where gc_sn='1001' and "
             "g_sn<>'00000000' and g_sn not in (select g_sn from jxc_kcsp where ck_sn='100001') order by g_sn");
  Bare goods(db, "update jxc_goods set g_kc=g_kc+?1,g_jj=?2,g_scjj=?2,g_pjjj=?2 where g_sn=?3");
  Bare stock(db, "insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?1,?2,0,?3,'100001',?1)");
  Bare ledger(db,
              "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,"
              "gl_dzl,gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,"
              "gl_pjjj,gl_kc,gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,"
              "gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) values ('qc','',?1,?2,?3,?4,?5,?6,0,0,?7,1,?8,?8,0,?6,0,0,0,0,"
              "'admin',?9,0,0,?6,?7,?8,'','','员工','admin','100001','主仓库','','期初建账','','',?7,0,'','',0)");
  Bare month(db, "update jxc_kcjs set js_sl=js_sl+?,js_zje=js_zje+? where js_rq=? and ck_sn='100001'");
  for (auto _ : state) {
    double pieces = 0, value = 0;
    begin.run();
    while (known.step()) {
      const std::string sn = known.text(0);
      const double cost = known.number(7);
      (goods << 5.0 << cost << sn).run();
      (stock << 5.0 << cost << sn).run();
      (ledger << day << sn << known.text(1) << known.text(2) << known.text(3) << cost << 5.0 << 5 * cost << today)
          .run();
      pieces += 5;
      value += 5 * cost;
    }
    known.reset();
    (month << pieces << value << today.substr(0, 7)).run();
    commit.run();
    state.PauseTiming();
    takeOut();
    state.ResumeTiming();
  }
}

const bool registered = [] {
  benchmark::RegisterBenchmark("opening stock of a class of 20,000, statements", enterClass)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("opening stock of a class of 20,000, by hand", enterByHand)
      ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace opening_bench
}  // namespace jxc
