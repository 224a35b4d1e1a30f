// A partner with a hundred thousand ledger lines, one of them dated a year back: carrying the balance on, beside the
// same reads and writes by hand on bare SQLite.
#include "accounts/partner_ledger.h"
#include "bare_shop.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace money_bench {

using bench::Bare;
using bench::Shop;

constexpr int kLines = 100000;
constexpr int kLinesADay = 100;
const QDate kLastDay(2021, 5, 3);
const QString kPartner = QStringLiteral("100001");

QString daysBack(int days) {
  return kLastDay.addDays(-days).toString(Qt::ISODate);
}

/// Lines of a thousand days. The id of the first one of a year back; 36,600 lines stand from its day on.
std::int64_t fillLedger() {
  std::int64_t back = 0;
  Transaction transaction(accountDb());
  for (int i = 0; i < kLines; ++i) {
    const int days = (kLines - 1 - i) / kLinesADay;
    const auto id = insertRow("jxc_ysyfk", {{"k_type", u"kh"},
                                            {"k_ghskh", kPartner},
                                            {"k_rq", daysBack(days)},
                                            {"k_yfje", 10.0 + i % 97},
                                            {"k_sfje", 9.0 + i % 89},
                                            {"k_qcje", 0.0},
                                            {"k_yhje", 0.0},
                                            {"k_ljje", 0.0}});
    if (days == 365 && back == 0) back = id;
  }
  recomputeYsyfk(kPartner, PartnerType::Customer, QString());
  transaction.commit();
  return back;
}

/// Another amount on the line of a year back: every later balance changes.
void disturb(std::int64_t line, bool odd) {
  execSql("update jxc_ysyfk set k_yfje=? where id=?", odd ? 500.25 : 400.75, line);
}

void report(benchmark::State& state) {
  state.counters["lines rewritten"] = state.range(0) ? 366 * kLinesADay : 0;
}

void backDatedLineStatements(benchmark::State& state) {
  Shop shop;
  const auto line = fillLedger();
  const QString date = daysBack(365);
  bool odd = false;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    if (state.range(0)) disturb(line, odd = !odd);
    recomputeYsyfk(kPartner, PartnerType::Customer, date);
    transaction.commit();
  }
  report(state);
}

void backDatedLineBare(benchmark::State& state) {
  Shop shop;
  const auto line = fillLedger();
  sqlite3* db = shop.native();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare carried(
      db, "select k_ljje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq<? order by k_rq desc,id desc limit 1");
  Bare rows(db,
            "select id,k_ljje,k_qcje,k_yfje,k_sfje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq>=? "
            "order by k_rq,id");
  Bare write(db, "update jxc_ysyfk set k_ljje=? where id=?");
  Bare amount(db, "update jxc_ysyfk set k_yfje=? where id=?");
  Bare master(db, "update jxc_khxx set kh_lwje=? where kh_sn=?");
  const std::string side = "kh", partner = kPartner.toStdString(), date = daysBack(365).toStdString();
  bool odd = false;
  for (auto _ : state) {
    begin.run();
    if (state.range(0)) {
      odd = !odd;
      amount << (odd ? 500.25 : 400.75) << static_cast<sqlite3_int64>(line);
      amount.run();
    }
    double balance = 0;
    carried << side << partner << date;
    if (carried.step()) balance = carried.number(0);
    carried.reset();
    struct Line {
      sqlite3_int64 id;
      double stored, change;
    };
    std::vector<Line> lines;  // read whole before it is written, like every row set
    rows << side << partner << date;
    while (rows.step())
      lines.push_back({rows.integer(0), rows.number(1), rows.number(2) + rows.number(3) - rows.number(4)});
    rows.reset();
    for (const Line& each : lines) {
      balance += each.change;
      if (std::fabs(each.stored - balance) < 5e-7) continue;
      write << std::round(balance * 1e6) / 1e6 << each.id;
      write.run();
    }
    master << balance << partner;
    master.run();
    commit.run();
  }
  report(state);
}

BENCHMARK(backDatedLineStatements)
    ->Name("running balance of 36600 lines, statements")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(backDatedLineBare)
    ->Name("running balance of 36600 lines, by hand")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond);

}  // namespace money_bench
}  // namespace jxc
