// The replay of the stock ledger beside the same reads and writes by hand on bare SQLite.
#include "bare_shop.h"
#include "stock/ledger.h"

#include <QDate>

#include <benchmark/benchmark.h>
#include <vector>

namespace jxc {
namespace replay_bench {

using bench::Bare;
using bench::roundTo;
using bench::Shop;

constexpr int ledgerRows = 10000;

/// One goods with ten thousand rows, four sales between two receipts. The first row's id.
std::int64_t fillLedger() {
  execSql("insert into jxc_goods (g_sn,g_name,g_pjjj,g_kc) values ('A','镜架',10,0)");
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',0,0,0)");
  std::int64_t first = 0;
  Transaction transaction(accountDb());
  for (int i = 0; i <= ledgerRows; ++i) {
    const bool receipt = i % 5 == 0;
    const double price = 10 + i % 7;
    const double quantity = receipt ? 12 : 2;
    const auto id = insertRow("jxc_goodslist", {{"gl_flag", receipt ? u"cj" : u"xs"},
                                                {"gl_kdrq", QDate(2020, 1, 1).addDays(i / 10).toString(Qt::ISODate)},
                                                {"g_sn", u"A"},
                                                {"ck_sn", u"100001"},
                                                {"gl_sl", quantity},
                                                {"gl_dj", price},
                                                {"gl_je", price * quantity},
                                                {"gl_sqsl", 0.0},
                                                {"gl_sqje", 0.0},
                                                {"gl_pjjj", 0.0},
                                                {"gl_kc", 0.0},
                                                {"gl_kczje", 0.0}});
    if (i == 0) first = id;
  }
  transaction.commit();
  return first;
}

/// A first receipt of another quantity: every later row gets other figures.
void disturb(std::int64_t first, bool odd) {
  execSql("update jxc_goodslist set gl_sl=?,gl_je=? where id=?", odd ? 13.0 : 12.0, odd ? 156.0 : 120.0, first);
}

void replayStatements(benchmark::State& state) {
  Shop shop;
  const auto first = fillLedger();
  bool odd = false;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    if (state.range(0)) disturb(first, odd = !odd);
    replayLedger(first);
    transaction.commit();
  }
  state.counters["million rows"] = benchmark::Counter(
      ledgerRows * 1e-6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void replayBare(benchmark::State& state) {
  Shop shop;
  const auto first = fillLedger();
  sqlite3* db = shop.native();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare anchor(db, "select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?");
  Bare opening(db,
               "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
               "order by gl_kdrq desc,id desc limit 1");
  Bare rows(db,
            "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
            "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id");
  Bare write(db, "update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?");
  Bare cost(db, "update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?");
  Bare other(db, "update jxc_goodslist set gl_sl=?,gl_je=? where id=?");
  struct Line {
    sqlite3_int64 id;
    bool in;
    double quantity, net, price, stored[5];
  };
  std::vector<Line> lines;
  bool odd = false;
  for (auto _ : state) {
    begin.run();
    if (state.range(0)) {
      odd = !odd;
      (other << (odd ? 13.0 : 12.0) << (odd ? 156.0 : 120.0) << static_cast<sqlite3_int64>(first)).run();
    }
    (anchor << static_cast<sqlite3_int64>(first)).step();
    const std::string goods = anchor.text(0), date = anchor.text(1), warehouse = anchor.text(2);
    anchor.reset();
    double q = 0, p = 10, a = 0;
    if ((opening << goods << warehouse << date).step()) {
      q = opening.number(0);
      p = opening.number(1);
      a = opening.number(2);
    }
    opening.reset();
    lines.clear();
    rows << goods << warehouse << date;
    while (rows.step())
      lines.push_back({rows.integer(0),
                       rows.text(1) == "cj",
                       rows.number(2),
                       rows.number(3),
                       rows.number(4),
                       {rows.number(5), rows.number(6), rows.number(7), rows.number(8), rows.number(9)}});
    rows.reset();
    for (const Line& line : lines) {
      const double before[2] = {q, a};
      if (line.in) {
        const bool against = q < 0;
        const double pool = against ? std::fabs(q) + line.quantity : q + line.quantity;
        const double value = against ? std::fabs(a) + line.net : a + line.net;
        q = roundTo(q + line.quantity, 100);
        p = q == 0 ? line.price : std::fabs(value / pool);
      } else {
        q = roundTo(q - line.quantity, 100);
      }
      p = roundTo(p, 100);
      a = roundTo(p * q, 100);
      const double now[5] = {before[0], before[1], p, q, a};
      bool same = true;
      for (int i = 0; i < 5; ++i)
        same = same && std::fabs(now[i] - line.stored[i]) < 5e-7;
      if (!same) (write << now[0] << now[1] << now[2] << now[3] << now[4] << line.id).run();
    }
    (cost << p << warehouse << goods).run();
    commit.run();
  }
  state.counters["million rows"] = benchmark::Counter(
      ledgerRows * 1e-6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(replayStatements)->Name("replay of 10000 rows, statements")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(replayBare)->Name("replay of 10000 rows, by hand")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace replay_bench
}  // namespace jxc
