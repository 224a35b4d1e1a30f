// Goods that follow a document in parts, beside the same reads and writes by hand on bare SQLite: a putaway and an
// issue of fifty lines, the rest of fifty lines that never comes, and the sources that wait among a million lines.
#include "bare_replay.h"
#include "core/clock.h"
#include "filled_shop.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/partial_rest.h"
#include "stock/trading_document.h"

#include <QDate>

#include <benchmark/benchmark.h>
#include <map>
#include <vector>

namespace jxc {
namespace partial_bench {

using bench::Bare;
using bench::linesOfDocument;
using bench::named;
using bench::Shop;
using bench::shopWith;

// ---- what is measured --------------------------------------------------------------------------------------------

/// An audited receipt or sale of which everything is open. Its number.
QString openSource(const PartialMovement& m, const QString& date, int seed) {
  const DocumentFamily& s = *m.source;
  const QString number = bench::waitingDocument(m.source == &families::sale, date, linesOfDocument, seed);
  execSql(compose("update {} set {}=0 where {}=?", {s.lines, m.moved(), s.number}), number);
  execSql(compose("update {} set {}=0 where {}=?", {s.head, s.allMoved, s.number}), number);
  bench::YesPrompt yes;
  if (checkDj(s, number, yes) != AuditOutcome::Audited) throw std::runtime_error("no source");
  return number;
}

/// A waiting document that moves all of it.
QString waitingPart(const PartialMovement& m, const QString& date, int seed) {
  const DocumentFamily &f = *m.family, &s = *m.source;
  const QString source = openSource(m, date, seed), number = newDocumentNumber(f, date);
  const RowSet head =
      openSelect(compose("select {} as partner from {} where {}=?", {s.partner, s.head, s.number}), source);
  execSql(Sql(compose("insert into {} ({},a_name,{},g_sn,{},{})",
                      {f.lines, f.number, f.line.columns->quantity, f.line.source, f.line.sourceLine}) +
                  " select ?,'admin'," + partial::openPieces(m, "b") +
                  compose(",b.g_sn,b.{},b.{} from {} b where b.{}=?", {s.number, s.line.link, s.lines, s.number}),
              number, source));
  const std::int64_t id = insertRow(f.head, {{f.number, number},
                                             {f.date, date},
                                             {f.warehouse, u"100001"},
                                             {f.partner, head.text(0, 0)},
                                             {f.status, 0},
                                             {"u_sn", u"100001"},
                                             {f.note, u""},
                                             {"a_name", u"admin"}});
  updateRow(f.head, id, {{f.checker, QString()}, {f.checkDate, QString()}});
  return number;
}

void useParts() {
  session().cs_sprk = session().cs_spck = session().cs_kc = QStringLiteral("1");
}

// ---- by hand -----------------------------------------------------------------------------------------------------

/// The statements in which putaway and issue differ.
struct Words {
  const char *lines, *head, *strange, *over, *shortage, *audited, *strays, *moves, *shelf, *master, *moved, *closed;
};
#define JXC_MOVES(h, l, q, status, chk, day, src, srcLines, srcHead, srcNo, srcStatus, partner, sold, done, gone,  \
                  flag, sign)                                                                                      \
  {                                                                                                                \
    "select count(*) from " l " where gl_djh=?", "select * from " h " where gl_djh=? order by " status " desc,id", \
        "select b." src " from " l " b join " h " h on b.gl_djh=h.gl_djh left join " srcLines                      \
        " a on a.id2=b.id2 and "                                                                                   \
        "a.g_sn=b.g_sn and a." srcNo "=b." src                                                                     \
        " where b.gl_djh=? and (a.id is null or not exists (select 1 from " srcHead " c where c." srcNo "=b." src  \
        " and +c." srcStatus "=1 and +c.ck_sn=h.ck_sn and +c." partner "=h." partner ")) limit 1",                 \
        "select x.src from (select " src " as src,id2,g_sn,sum(" q ") as sl from " l                               \
        " where gl_djh=? group by id2,g_sn) x join " srcLines " a on a.id2=x.id2 and a.g_sn=x.g_sn where a." sold  \
        "<a." done "+a." gone "+x.sl limit 1",                                                                     \
        "select a.g_sn from (select g_sn,sum(" q ") as sl from " l                                                 \
        " where gl_djh=? group by g_sn) a where not exists (select 1 from jxc_kcsp b where b.g_sn=a.g_sn and "     \
        "b.ck_sn='100001' and a.sl<=b.kc_sl) limit 1",                                                             \
        "update " h " set " status "=1," chk "='admin'," day "=? where gl_djh=?",                                  \
        "delete from " h " where " status "=0 and gl_djh=?",                                                       \
        "select g_sn," q ",id2," src " from " l " where gl_djh=? order by id",                                     \
        "update jxc_kcsp set kc_sl=kc_sl" sign "? where ck_sn='100001' and g_sn=?",                                \
        "update jxc_goods set g_kc=g_kc" sign "? where g_sn=?",                                                    \
        "update " srcLines " set " done "=" done "+? where id2=?",                                                 \
        "update " srcHead " set " flag "=1 where " srcNo "=? and not exists (select 1 from " srcLines              \
        " b where b." srcNo "=? and b." sold ">b." done "+b." gone ")"                                             \
  }
constexpr Words kPutaway =
    JXC_MOVES("jxc_rkd", "jxc_rksp", "rk_sl", "rk_status", "rk_checker", "rk_chkrq", "j_sn", "jxc_jhsp", "jxc_jhd",
              "j_sn", "j_status", "ghs_sn", "jh_sl", "jh_rksl", "jh_qxsl", "j_crk", "+");
constexpr Words kIssue =
    JXC_MOVES("jxc_ckd", "jxc_cksp", "ck_sl", "ck_status", "ck_checker", "ck_chkrq", "gl_djh2", "jxc_lsxssp",
              "jxc_lsxsd", "gl_djh", "ls_status", "kh_sn", "ls_sl", "ls_cksl", "ls_qxsl", "ls_crk", "-");
#undef JXC_MOVES

class ByHand : bench::BareStatements {
 public:
  explicit ByHand(sqlite3* db) : BareStatements(db) {}
  void audit(const Words& words, const std::string& number, const std::string& date);
  void closeRest(const std::string& receipt, const std::string& number);

 private:
  void month(const std::string& date);
};

void ByHand::month(const std::string& date) {
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')"));
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)")
      << date.substr(0, 7));
  Bare& sums = sql("select sum(kc_sl),sum(kc_sl*kc_cbj) from jxc_kcsp where ck_sn='100001'");
  sums.step();
  const double pieces = sums.number(0), value = sums.number(1);
  sums.reset();
  (sql("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn='100001'") << pieces << value << date.substr(0, 7))
      .run();
}

void ByHand::audit(const Words& words, const std::string& number, const std::string& date) {
  one(sql(words.lines) << number);
  for (const bool inside : {false, true}) {
    if (inside) sql("begin immediate").run();
    one(sql(words.head) << number);
    one(sql(words.strange) << number);
    one(sql(words.over) << number);
    if (words.shelf == kIssue.shelf) one(sql(words.shortage) << number);
  }
  (sql(words.audited) << date << number).run();
  (sql(words.strays) << number).run();
  struct Move {
    std::string goods, source;
    double pieces;
    sqlite3_int64 line;
  };
  std::vector<Move> moves;
  Bare& rows = sql(words.moves) << number;
  while (rows.step())
    moves.push_back({rows.text(0), rows.text(3), rows.number(1), rows.integer(2)});
  rows.reset();
  for (const Move& each : moves) {
    (sql(words.shelf) << each.pieces << each.goods).run();
    (sql(words.master) << each.pieces << each.goods).run();
    (sql(words.moved) << each.pieces << each.line).run();
  }
  (sql("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)") << date << number).run();
  (sql(words.closed) << moves.front().source << moves.front().source).run();
  month(date);
  sql("commit").run();
}

void ByHand::closeRest(const std::string& receipt, const std::string& number) {
  const std::string today = clock::today().toStdString();
  sql("begin immediate").run();
  one(sql("select * from jxc_jhd where j_status=1 and j_sn=?") << receipt);
  (sql("insert into jxc_thsp (gl_djh,th_dj,th_sl,th_zje,g_sn,a_name,th_je,th_tax,th_taxdj,th_taxje,th_dzl,id2) select "
       "?,jh_dj,jh_sl-jh_rksl,round((jh_sl-jh_rksl)*jh_taxdj*jh_dzl,2),g_sn,a_name,round((jh_sl-jh_rksl)*jh_dj*jh_dzl,"
       "2),jh_tax,jh_taxdj,0,jh_dzl,id2 from jxc_jhsp where j_sn=? and jh_sl>jh_rksl+jh_qxsl order by id")
   << number << receipt)
      .run();
  const double due = one(sql("select sum(th_zje) from jxc_thsp where gl_djh=?") << number);
  (sql("insert into jxc_thd (gl_djh,ghs_sn,ck_sn,th_thrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,th_status,th_checker,"
       "th_chkrq,th_jsfs,th_kmmc,a_name) values (?,'100001','100001',?,?,0,0,'100001',?,1,'admin',?,1,'现金','admin')")
   << number << today << -due << receipt << today)
      .run();
  (sql("update jxc_jhsp set jh_qxsl=jh_sl-jh_rksl where j_sn=? and jh_sl>jh_rksl+jh_qxsl") << receipt).run();
  (sql("update jxc_jhd set j_crk=1 where j_sn=?") << receipt).run();
  (sql("insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) values "
       "(?,?,'采购退货',0,"
       "'现金','','admin','1',0)")
   << today << number)
      .run();
  (sql("insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,"
       "k_note,k_flag,k_rq,gl_djh) values "
       "('100001','admin','100001','现金',0,0,0,0,?,'ghs','CT','采购退货单','',1,?,?)")
   << -due << today << number)
      .run();
  (sql("update jxc_ghsxx set ghs_lwje=ghs_lwje-? where ghs_sn='100001'") << due).run();
  (sql("insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,dw_name,gl_dj,gl_sl,gl_dzl,gl_zje,gl_je,gl_tax,"
       "gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,u_name,a_"
       "name,"
       "ck_sn,ck_name,ghs_sn,ghs_name,gl_sysl,id2) select 'ct',a.gl_djh,a.th_thrq,b.g_sn,c.g_name,c.dw_name,b.th_dj,"
       "-b.th_sl,b.th_dzl,-b.th_zje,-b.th_je,b.th_tax,b.th_taxdj,-b.th_taxje,0,0,'admin',?,0,0,c.g_pjjj,0,0,a.th_note,"
       "d.u_name,b.a_name,a.ck_sn,e.ck_name,a.ghs_sn,f.ghs_name,-b.th_sl,b.id2 from jxc_thd a join jxc_thsp b on "
       "a.gl_djh=b.gl_djh join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn join jxc_ckxx e on "
       "a.ck_sn=e.ck_sn join jxc_ghsxx f on a.ghs_sn=f.ghs_sn where a.gl_djh=? order by b.id")
   << today << number)
      .run();
  struct Row {
    sqlite3_int64 id;
    std::string goods;
    double pieces;
  };
  std::vector<Row> rows;
  Bare& posted = sql("select id,g_sn,gl_sl from jxc_goodslist where gl_djh=? order by id") << number;
  while (posted.step())
    rows.push_back({posted.integer(0), posted.text(1), posted.number(2)});
  posted.reset();
  for (const Row& row : rows) {
    (sql("update jxc_kcsp set kc_zsl=kc_zsl+? where ck_sn='100001' and g_sn=?") << row.pieces << row.goods).run();
    const double cost = bench::replay(*this, row.id);
    (sql("update jxc_kcsp set kc_cbj=? where ck_sn='100001' and g_sn=?") << cost << row.goods).run();
    const double average =
        one(sql("select round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2) from jxc_kcsp where g_sn=?") << row.goods);
    (sql("update jxc_goods set g_cgpl=g_cgpl-1,g_pjjj=? where g_sn=?") << average << row.goods).run();
  }
  (sql("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)") << today << number).run();
  month(today);
  (sql("update jxc_user set u_cgpl=u_cgpl+1 where u_sn=?") << std::string("100001")).run();
  sql("commit").run();
}

// ---- measurements ------------------------------------------------------------------------------------------------

struct Case {
  const char* name;
  const PartialMovement* movement;
  const Words* words;
};
constexpr Case kCases[] = {{"putaway of 50 lines", &partial::putaway, &kPutaway},
                           {"issue of 50 lines", &partial::issue, &kIssue}};
constexpr int kAudited = 200;

void audits(benchmark::State& state, const Case& each, int ledgerRows, bool byHand) {
  Shop& shop = shopWith(ledgerRows);
  useParts();
  static int day = 0, seed = 0;
  const QString date = QDate::currentDate().addDays(900 + ++day).toString(Qt::ISODate);
  ensureStockRows(date.left(7));
  ByHand bare(shop.native());
  bench::Audits all{.family = *each.movement->family,
                    .warmUps = bench::goodsCount / linesOfDocument + 1,
                    .make = [&] { return waitingPart(*each.movement, date, ++seed); },
                    .byHand = {}};
  if (byHand) all.byHand = [&](const std::string& number) { bare.audit(*each.words, number, date.toStdString()); };
  bench::measure(state, all);
}

/// A usual return of the goods of a receipt, beside which closing a rest has to stand.
void returns(benchmark::State& state, int ledgerRows) {
  shopWith(ledgerRows);
  useParts();
  static int seed = 200'000;
  const QString date = clock::today();
  ensureStockRows(date.left(7));
  const DocumentFamily& f = families::purchaseReturn;
  const auto make = [&] {
    const QString source = openSource(partial::putaway, date, ++seed), number = newDocumentNumber(f, date);
    execSql(
        "insert into jxc_thsp (gl_djh,th_dj,th_sl,th_zje,g_sn,a_name,th_je,th_tax,th_taxdj,th_taxje,th_dzl,id2) select "
        "?,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_dzl,0 from jxc_jhsp where j_sn=? order by "
        "id",
        number, source);
    insertRow(f.head, {{f.number, number},
                       {f.date, date},
                       {f.warehouse, u"100001"},
                       {f.partner, u"100001"},
                       {f.status, 0},
                       {f.due, -lookupNumber("select sum(th_zje) from jxc_thsp where gl_djh=?", number)},
                       {f.paid, 0.0},
                       {f.collected, 0.0},
                       {f.settlement, static_cast<int>(Settlement::RestOnAccount)},
                       {f.account, u"现金"},
                       {f.note, u""},
                       {"u_sn", u"100001"},
                       {"a_name", u"admin"}});
    return number;
  };
  bench::measure(state, {.family = f, .warmUps = 1, .make = make, .byHand = {}});
}

void closes(benchmark::State& state, int ledgerRows, bool byHand) {
  Shop& shop = shopWith(ledgerRows);
  useParts();
  static int seed = 100'000;
  const QString date = clock::today();
  ensureStockRows(date.left(7));
  ByHand bare(shop.native());
  std::vector<QString> sources;
  for (benchmark::IterationCount i = 0; i < state.max_iterations; ++i)
    sources.push_back(openSource(partial::putaway, date, ++seed));
  bench::YesPrompt yes;
  std::size_t next = 0;
  const bench::WorkSoFar before;
  for (auto _ : state) {
    const QString& source = sources[next++];
    if (byHand)
      bare.closeRest(source.toStdString(), "CTH" + std::to_string(seed) + std::to_string(next));
    else if (!partial::closeRest(partial::putaway, source, yes))
      throw std::runtime_error("not closed");
  }
  before.tellEach(state);
}

// ---- sources that wait -------------------------------------------------------------------------------------------

constexpr int kOpenSources = 200;

/// Receipts of fifty lines, so many lines in all; the last two hundred wait.
void fillSources(sqlite3* db, int lines) {
  const auto run = [db](const char* text) { Bare(db, text).run(); };
  run("begin immediate");
  Bare head(db,
            "insert into jxc_jhd (j_sn,j_jhrq,ghs_sn,ck_sn,u_sn,j_note,a_name,j_status,j_crk) values "
            "(?,?,'100001','100001','100001','','admin',1,?)");
  Bare line(db, "insert into jxc_jhsp (j_sn,g_sn,jh_sl,jh_rksl,jh_qxsl,id2) values (?,'1000000',10,?,0,?)");
  const int heads = lines / linesOfDocument;
  for (int i = 0; i < heads; ++i) {
    const bool open = i % (heads / kOpenSources) == 0;
    const std::string number = "CJ" + std::to_string(20'000'000'000 + i);
    (head << number << "2024-" + std::to_string(100 + i % 12).substr(1) + "-10" << static_cast<sqlite3_int64>(!open))
        .run();
    for (int at = 0; at < linesOfDocument; ++at)
      (line << number << (open && at == 0 ? 4.0 : 10.0) << static_cast<sqlite3_int64>(100'000'000 + i * 50 + at)).run();
  }
  run("commit");
}

void waits(benchmark::State& state, int lines, bool byHand) {
  Shop& shop = bench::shopOfOneGoods(fillSources, lines);
  Bare bare(shop.native(),
            "select c.id,c.j_sn,c.j_jhrq,c.ghs_sn,p.ghs_name,c.ck_sn,d.ck_name,e.u_name,c.j_note,count(*),"
            "sum(b.jh_sl-b.jh_rksl-b.jh_qxsl) from jxc_jhd c join jxc_jhsp b on c.j_sn=b.j_sn left join jxc_ghsxx p on "
            "c.ghs_sn=p.ghs_sn left join jxc_ckxx d on c.ck_sn=d.ck_sn left join jxc_user e on c.u_sn=e.u_sn where "
            "c.j_crk=0 and c.j_status=1 and b.jh_sl>b.jh_rksl+b.jh_qxsl group by c.id order by c.j_jhrq,c.id");
  double taken = 0;
  for (auto _ : state) {
    if (byHand) {
      taken += bare.takeAll();
    } else {
      const RowSet rows = openSelect(partial::waitingSources(partial::putaway, {}));
      if (rows.rowCount() != kOpenSources) return state.SkipWithError("not those that wait");
    }
  }
  benchmark::DoNotOptimize(taken);
}

const bool registered = [] {
  for (const int rows : bench::ledgerSizes())
    for (const bool byHand : {false, true}) {
      for (const Case& each : kCases)
        benchmark::RegisterBenchmark(
            named(each.name, rows, byHand).c_str(),
            [&each, rows, byHand](benchmark::State& state) { audits(state, each, rows, byHand); })
            ->Iterations(kAudited)
            ->Unit(benchmark::kMillisecond);
      benchmark::RegisterBenchmark(named("closing the rest of 50 lines", rows, byHand).c_str(),
                                   [rows, byHand](benchmark::State& state) { closes(state, rows, byHand); })
          ->Iterations(kAudited)
          ->Unit(benchmark::kMillisecond);
      if (!byHand)
        benchmark::RegisterBenchmark(named("purchase return of 50 lines", rows, byHand).c_str(),
                                     [rows](benchmark::State& state) { returns(state, rows); })
            ->Iterations(kAudited)
            ->Unit(benchmark::kMillisecond);
      benchmark::RegisterBenchmark(named("receipts that wait for putaway, 200 of them", rows, byHand).c_str(),
                                   [rows, byHand](benchmark::State& state) { waits(state, rows, byHand); })
          ->Unit(benchmark::kMillisecond);
    }
  return true;
}();

}  // namespace partial_bench
}  // namespace jxc
