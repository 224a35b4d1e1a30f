// Goods on loan, beside the same statements by hand on bare SQLite: the return form of a loan of two hundred lines,
// with all the loans and returns of a shop behind it.
#include "bare_replay.h"
#include "filled_shop.h"
#include "sales/loan_return.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <string>

namespace jxc {
namespace loan_bench {

using bench::Bare;
using bench::named;
using bench::Shop;

constexpr int linesOfLoan = 200;
constexpr char kLoan[] = "JH26010110001";

/// Loans that came back with one return each, so many lines in all, and the one whose return is opened.
void fillLoans(sqlite3* db, int lines) {
  const auto run = [db](const char* text) { Bare(db, text).run(); };
  run("begin immediate");
  Bare head(db,
            "insert into jxc_khjh (gl_djh,jh_flag,jh_rq,kh_sn,ck_sn,u_sn,jh_note,a_name,jh_status,jh_checker,jh_chkrq) "
            "values (?,?,'2026-01-01','100001','100001','100001','','admin',1,'admin','2026-01-01')");
  Bare line(db,
            "insert into jxc_khjhsp (gl_djh,g_sn,jh_dj,jh_zje,jh_sl,jh_hhsl,jh_xssl,jh_sl2,jh_yj,jh_yj2,jh_zj,jh_ts,"
            "jh_zzj,jh_thyj,gl_djh2,jh_flag,jh_kmmc,id2,a_name) values "
            "(?,'1000000',5,10,2,?,0,2,100,0,3,0,0,?,'',?,'现金',?,'admin')");
  constexpr sqlite3_int64 none = 0;
  for (int i = 0; i < lines / (2 * bench::linesOfDocument); ++i) {
    const std::string number = std::to_string(20'000'000'000 + i);
    (head << "JH" + number << std::string("jh")).run();
    (head << "HH" + number << std::string("hh")).run();
    for (int at = 0; at < bench::linesOfDocument; ++at) {
      (line << "JH" + number << 2.0 << 0.0 << std::string("借货") << none).run();
      const sqlite3_int64 lent = sqlite3_last_insert_rowid(db);
      (line << "HH" + number << 2.0 << 100.0 << std::string("还货") << lent).run();
    }
  }
  (head << std::string(kLoan) << std::string("jh")).run();
  for (int at = 0; at < linesOfLoan; ++at)
    (line << std::string(kLoan) << 0.0 << 0.0 << std::string("借货") << none).run();
  run("commit");
}

/// What somebody would write: the open lines with what their returns paid back, staged, and read for the list.
double byHand(bench::BareStatements& on) {
  on.one(on.sql("select * from jxc_khjh where gl_djh=? and jh_status>0 and jh_flag='jh'") << std::string(kLoan));
  on.one(on.sql("select max(gl_djh) from jxc_khjhsp where gl_djh>='HH261126' and gl_djh<'HH261127'"));
  on.sql("begin immediate").run();
  on.sql("delete from jxc_khjhsptmp where a_name='admin'").run();
  Bare& open = on.sql(
                   "select b.id,b.g_sn,b.jh_kmmc,b.jh_dj,b.jh_zj,b.jh_sl,b.jh_sl-b.jh_hhsl-b.jh_xssl,b.jh_yj-b.jh_yj2-"
                   "(select ifnull(sum(r.jh_thyj),0) from jxc_khjhsp r where r.id2=b.id),b.jh_yj2 from jxc_khjhsp b "
                   "where b.gl_djh=? and b.jh_sl>b.jh_hhsl+b.jh_xssl order by b.id")
               << std::string(kLoan);
  Bare& stage = on.sql(
      "insert into jxc_khjhsptmp (g_sn,jh_flag,jh_sl,jh_xssl,jh_dj,jh_yj2,gl_djh2,id2,a_name,jh_sl2,jh_hhsl,jh_ts,"
      "jh_zj,jh_yj,jh_zzj,jh_thyj,jh_kmmc,jh_zje) values (?,'还货',?,0,?,?,?,?,'admin',?,?,?,?,?,?,?,?,?)");
  while (open.step()) {
    const double pieces = open.number(6), days = 330, rent = open.number(4) * pieces * days, held = open.number(7);
    (stage << open.text(1) << open.number(5) << open.number(3) << open.number(8) << std::string(kLoan)
           << open.integer(0) << pieces << pieces << days << open.number(4) << held << rent
           << std::max(0.0, held - rent) << open.text(2) << open.number(3) * pieces)
        .run();
  }
  open.reset();
  on.sql("commit").run();
  return on
      .sql(
          "select a.*,b.g_name,b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm,max(a.jh_zzj-a.jh_yj,0) from "
          "jxc_khjhsptmp a left join jxc_goods b on a.g_sn=b.g_sn where a.a_name='admin' order by a.id")
      .takeAll();
}

void opens(benchmark::State& state, int lines, bool hand) {
  Shop& shop = bench::shopOfOneGoods(fillLoans, lines);
  bench::BareStatements bare(shop.native());
  bench::YesPrompt yes;
  const bench::WorkSoFar before;
  double taken = 0;
  for (auto _ : state) {
    if (hand) {
      taken += byHand(bare);
    } else {
      if (!loan_return::open(QString::fromLatin1(kLoan), 0, yes) ||
          openSelect(loan_return::lines()).rowCount() != linesOfLoan)
        return state.SkipWithError("not opened");
      taken += loan_return::money().rent;
    }
  }
  benchmark::DoNotOptimize(taken);
  before.tellEach(state);
}

const bool registered = [] {
  for (const int rows : bench::ledgerSizes())
    for (const bool hand : {false, true})
      benchmark::RegisterBenchmark(named("return form of a loan of 200 lines", rows, hand).c_str(),
                                   [rows, hand](benchmark::State& state) { opens(state, rows, hand); })
          ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace loan_bench
}  // namespace jxc
