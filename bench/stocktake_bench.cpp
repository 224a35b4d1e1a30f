// A count of 20,000 goods over 1,000,000 rows of the stock ledger: its draft filled at once, the tests for later
// movement, save and audit with 2,000 differences; beside them the same rows by hand.
#include "bare_shop.h"
#include "inventory/stocktaking.h"
#include "stock/cancelling.h"
#include "stock/line_import.h"
#include "stock/stocktake.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace stocktake_bench {

using bench::Bare;
using bench::Shop;
using stocktaking::Uncounted;

constexpr int goodsCount = 20'000, rowsOfGoods = 50;

std::string code(int index) {
  return std::to_string(10'000'000 + index);
}
QString today() {
  return QDate::currentDate().toString(Qt::ISODate);
}

void fill(sqlite3* db) {
  const auto run = [db](const char* text) { Bare(db, text).run(); };
  run("begin immediate");
  Bare goods(db,
             "insert into jxc_goods (g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_pjjj,g_jj,g_kc,g_jy,g_gdcbj,gc_sn) "
             "values (?,'镜架','JJ','付','','',10,10,50,0,0,'1000')");
  Bare stock(db, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',50,50,10,0)");
  Bare ledger(db,
              "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,gl_dj,gl_sl,gl_zje,gl_je,gl_sqsl,gl_sqje,gl_pjjj,"
              "gl_kc,gl_kczje,ck_sn) values ('cj','CJ',?,?,10,1,10,10,?,?,10,?,?,'100001')");
  for (int i = 0; i < goodsCount; ++i) {
    (goods << code(i)).run();
    (stock << code(i)).run();
  }
  const QDate first = QDate::currentDate().addDays(-rowsOfGoods - 1);
  for (int row = 0; row < rowsOfGoods; ++row) {
    const std::string day = first.addDays(row).toString(Qt::ISODate).toStdString();
    for (int i = 0; i < goodsCount; ++i)
      (ledger << day << code(i) << 1.0 * row << 10.0 * row << row + 1.0 << 10.0 * (row + 1)).run();
  }
  run("commit");
}

void open(Shop& made) {
  fill(made.native());
  execSql("update jxc_xtcs set cs_shdj=1");
  loadSession();
}
Shop& shop() {
  return bench::filledShop<open>();
}

DocumentDraft fresh() {
  DocumentDraft draft = stocktaking::rules().fresh({});
  draft.number = newDocumentNumber(families::stocktake, today());
  draft.date = today();
  draft.warehouse = draft.salesperson = QStringLiteral("100001");
  return draft;
}
LinePlace placeOf(const DocumentDraft& draft) {
  return {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
}
/// A draft of all goods, of which one in ten has one piece less.
DocumentDraft counted() {
  const DocumentDraft draft = fresh();
  stocktaking::takeUncounted(placeOf(draft), Lines::Draft, {}, Uncounted::AsBook);
  execSql("update jxc_kcpdsp set pd_sl=pd_sl-1,pd_zje=-1*pd_dj where gl_djh=? and g_sn like '%7'", draft.number);
  return draft;
}

void fillDraft(benchmark::State& state) {
  shop();
  for (auto _ : state) {
    const DocumentDraft draft = fresh();
    state.counters["lines"] = stocktaking::takeUncounted(placeOf(draft), Lines::Draft, {}, Uncounted::AsBook).lines;
    state.PauseTiming();
    discardDraft(families::stocktake, draft.number);
    state.ResumeTiming();
  }
}

/// Of the last day, and of one that other goods moved behind.
void laterMovement(benchmark::State& state, bool lastDay) {
  shop();
  DocumentDraft draft = counted();
  if (!lastDay) {
    draft.date = QDate::currentDate().addDays(-5).toString(Qt::ISODate);
    execSql("update jxc_kcpdsp set g_sn='-'+g_sn where gl_djh=?", draft.number);
  }
  for (auto _ : state)
    if (stock_count::tooLateToSave(draft.number, draft.warehouse, draft.date)) return state.SkipWithError("refused");
  discardDraft(families::stocktake, draft.number);
}

void saveAndAudit(benchmark::State& state) {
  shop();
  bench::YesPrompt yes;
  for (auto _ : state) {
    state.PauseTiming();
    const DocumentDraft draft = counted();
    state.ResumeTiming();
    const SaveResult saved = stocktaking::rules().save(draft, yes);
    state.PauseTiming();
    if (!saved.audited) return state.SkipWithError("not audited");
    state.counters["differences"] = lookupNumber("select count(*) from jxc_goodslist where gl_djh=?", saved.number);
    if (!cancelStocktake(saved.number, yes, CancelMode::Batch)) return state.SkipWithError("not cancelled");
    execSql("delete from jxc_kcpd");
    execSql("delete from jxc_kcpdsp");
    state.ResumeTiming();
  }
}

/// The rows that such an audit reads and writes, one prepared statement a thought.
void auditByHand(benchmark::State& state) {
  sqlite3* const db = shop().native();
  const std::string day = today().toStdString();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare head(db,
            "insert into jxc_kcpd (gl_djh,pd_rq,ck_sn,u_sn,pd_status,pd_checker,pd_chkrq,a_name) values "
            "(?,?,'100001','100001',1,'admin',?,'admin')");
  Bare later(db, "select id from jxc_goodslist where g_sn=? and ck_sn='100001' and gl_kdrq>? limit 1");
  Bare stockNow(db,
                "select a.g_sn,a.kc_sl,b.kc_sl from jxc_kcpdsp a cross join jxc_kcsp b on b.g_sn=a.g_sn and "
                "b.ck_sn='100001' where a.gl_djh=?");
  Bare mark(db, "update jxc_kcpdsp set id2=id where gl_djh=?");
  Bare lines(db,
             "select a.g_sn,a.pd_sl,a.kc_sl,a.pd_dj,a.pd_zje,a.id,b.g_name,b.g_jm,b.dw_name,b.gg_name,b.color_name "
             "from jxc_kcpdsp a cross join jxc_goods b on a.g_sn=b.g_sn where a.gl_djh=? and a.pd_sl<>a.kc_sl order by "
             "a.id");
  Bare before(db,
              "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn='100001' and gl_kdrq<? "
              "order by gl_kdrq desc,id desc limit 1");
  Bare row(db,
           "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gg_name,color_name,gl_dj,"
           "gl_sl,gl_zje,gl_je,gl_dzl,ghs_name,gl_sysl,id2,ck_sn,a_name,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,"
           "gl_kc,gl_kczje) values ('pd',?,?,?,?,?,?,?,?,?,?,?,?,1,'库存盘点',?,?,'100001','admin','admin',?,?,?,?,"
           "?,?)");
  Bare stock(db, "update jxc_kcsp set kc_sl=kc_sl+?1,kc_zsl=kc_zsl+?1,kc_cbj=?2 where g_sn=?3 and ck_sn='100001'");
  Bare goods(db, "update jxc_goods set g_kc=g_kc+? where g_sn=?");
  Bare expense(db, "insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je) values (?,?,'费用',?)");
  for (auto _ : state) {
    state.PauseTiming();
    const DocumentDraft draft = counted();
    const std::string number = draft.number.toStdString();
    state.ResumeTiming();
    begin.run();
    (head << number << day << day).run();
    for (int i = 0; i < goodsCount; ++i) {
      later << code(i) << day + " 23:59:59";
      later.step();
      later.reset();
    }
    double moved = 0;
    stockNow << number;
    while (stockNow.step())
      moved += stockNow.number(1) - stockNow.number(2);
    stockNow.reset();
    (mark << number).run();
    double value = 0;
    lines << number;
    while (lines.step()) {
      const std::string sn = lines.text(0);
      const double change = lines.number(1) - lines.number(2);
      before << sn << day;
      before.step();
      const double q = before.number(0), p = before.number(1), a = before.number(2);
      before.reset();
      row << number << day << sn << lines.text(6) << lines.text(7) << lines.text(8) << lines.text(9) << lines.text(10)
          << lines.number(3) << change << lines.number(4) << lines.number(4) << lines.number(1)
          << static_cast<sqlite3_int64>(lines.integer(5)) << day << q << a << p << q + change << p * (q + change);
      row.run();
      (stock << change << p << sn).run();
      (goods << change << sn).run();
      value += lines.number(4);
    }
    lines.reset();
    (expense << number << day << value).run();
    commit.run();
    state.PauseTiming();
    benchmark::DoNotOptimize(moved);
    execSql("update jxc_kcsp set kc_sl=50,kc_zsl=50 where kc_sl<>50");
    execSql("update jxc_goods set g_kc=50 where g_kc<>50");
    for (const char* table : {"jxc_goodslist where gl_flag='pd'", "jxc_kcpd", "jxc_kcpdsp", "jxc_yyfy"})
      execSql(std::string("delete from ") + table);
    state.ResumeTiming();
  }
}

/// A file of so many rows, five for each goods: four of them tell what stands on the count already.
void importFile(benchmark::State& state) {
  constexpr int rows = 100'000;
  shop();
  bench::YesPrompt yes;
  RowSet sheet({"商品编号", "数量"});
  for (int i = 0; i < rows; ++i) {
    sheet.addText(code(i % goodsCount));
    sheet.addText("49");
  }
  const DocumentFamily& family = families::stocktake;
  for (auto _ : state) {
    const DocumentDraft draft = fresh();
    const LineRules& lines = stocktaking::rules().lines();
    const auto judged = judgeLines(sheet, family.import, lines, placeOf(draft), yes);
    state.counters["lines"] = importLines(*judged, lines, placeOf(draft), Lines::Draft, yes)->taken;
    state.PauseTiming();
    discardDraft(family, draft.number);
    state.ResumeTiming();
  }
}

const bool registered = [] {
  const auto add = [](const char* name, auto run) {
    benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMillisecond);
  };
  add("stocktake: 20,000 goods onto a draft", fillDraft);
  add("stocktake: tests for later movement, none", [](benchmark::State& state) { laterMovement(state, true); });
  add("stocktake: tests for later movement, of other goods",
      [](benchmark::State& state) { laterMovement(state, false); });
  add("stocktake: a file of 100,000 rows", importFile);
  add("stocktake: save and audit with 2,000 differences", saveAndAudit);
  add("stocktake: save and audit with 2,000 differences, by hand", auditByHand);
  return true;
}();

}  // namespace stocktake_bench
}  // namespace jxc
