// A partner with a hundred thousand lines in a ledger, one of them dated a year back: carrying the balance on, beside
// the same reads and writes by hand on bare SQLite. What he owes, his invoices, and the account that expenses go by.
#include "accounts/cash_ledger.h"
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

struct Ledger {
  const char* lines;  // in the name of the measurement
  std::string_view table;
  std::string whose;                                         // condition with the key of its balance
  std::string_view date, opening, raised, lowered, balance;  // an empty one: it has none
  std::vector<Field> fields;
  void (*recompute)(const QString& date);
  const char* master;  // keeps the last balance too
};

const Ledger& owed() {
  static const Ledger ledger{"lines",
                             "jxc_ysyfk",
                             "k_type='kh' and k_ghskh='100001'",
                             "k_rq",
                             "k_qcje",
                             "k_yfje",
                             "k_sfje",
                             "k_ljje",
                             {{"k_type", u"kh"}, {"k_ghskh", kPartner}},
                             [](const QString& date) { recomputeYsyfk(kPartner, PartnerType::Customer, date); },
                             "update jxc_khxx set kh_lwje=? where kh_sn='100001'"};
  return ledger;
}
const Ledger& invoices() {
  static const Ledger ledger{"invoice lines",
                             "jxc_fpdjb",
                             "fp_check<>0 and fp_type='kh' and fp_ghskh='100001'",
                             "fp_rq",
                             "fp_qcje",
                             "fp_yfje",
                             "fp_kpje",
                             "fp_ljje",
                             {{"fp_type", u"kh"}, {"fp_ghskh", kPartner}, {"fp_check", 1}},
                             [](const QString& date) { recomputeFp(kPartner, PartnerType::Customer, date); },
                             nullptr};
  return ledger;
}
const Ledger& expenses() {
  static const Ledger ledger{"cash lines",
                             "jxc_xjyh",
                             "xj_chk='1' and xj_kmmc='现金'",
                             "xj_rq",
                             "",
                             "xj_je",
                             "",
                             "xj_ljje",
                             {{"xj_kmmc", u"现金"}, {"xj_chk", u"1"}},
                             [](const QString& date) { recomputeXjyh(QStringLiteral("现金"), date); },
                             nullptr};
  return ledger;
}

/// Lines of a thousand days. The id of the first one of a year back; 36,600 lines stand from its day on.
std::int64_t fill(const Ledger& ledger) {
  std::int64_t back = 0;
  Transaction transaction(accountDb());
  for (int i = 0; i < kLines; ++i) {
    const int days = (kLines - 1 - i) / kLinesADay;
    const auto id = insertRow(ledger.table, {{ledger.date, daysBack(days)},
                                             {ledger.opening, 0.0},
                                             {ledger.raised, 10.0 + i % 97},
                                             {ledger.lowered, 9.0 + i % 89},
                                             {ledger.balance, 0.0},
                                             ledger.fields[0],
                                             ledger.fields[1],
                                             ledger.fields.size() > 2 ? ledger.fields[2] : Field{}});
    if (days == 365 && back == 0) back = id;
  }
  ledger.recompute(QString());
  transaction.commit();
  return back;
}

void report(benchmark::State& state) {
  state.counters["lines rewritten"] = state.range(0) ? 366 * kLinesADay : 0;
}

/// Another amount on the line of a year back: every later balance changes.
double amountOf(bool odd) {
  return odd ? 500.25 : 400.75;
}
std::string setAmount(const Ledger& ledger) {
  return "update " + std::string(ledger.table) + " set " + std::string(ledger.raised) + "=? where id=?";
}

void statements(benchmark::State& state, const Ledger& ledger) {
  Shop shop;
  const auto line = fill(ledger);
  const QString date = daysBack(365);
  const std::string amount = setAmount(ledger);
  bool odd = false;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    if (state.range(0)) execSql(amount, amountOf(odd = !odd), line);
    ledger.recompute(date);
    transaction.commit();
  }
  report(state);
}

void byHand(benchmark::State& state, const Ledger& ledger) {
  Shop shop;
  const auto line = fill(ledger);
  sqlite3* db = shop.native();
  const std::string table(ledger.table), date(ledger.date), balanceColumn(ledger.balance);
  const std::string of = " from " + table + " where " + ledger.whose + " and " + date;
  const auto or0 = [](std::string_view column) { return column.empty() ? std::string("0") : std::string(column); };
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare carried(db, ("select " + balanceColumn + of + "<? order by " + date + " desc,id desc limit 1").c_str());
  Bare rows(db, ("select id," + balanceColumn + "," + or0(ledger.opening) + "," + or0(ledger.raised) + "," +
                 or0(ledger.lowered) + of + ">=? order by " + date + ",id")
                    .c_str());
  Bare write(db, ("update " + table + " set " + balanceColumn + "=? where id=?").c_str());
  Bare amount(db, setAmount(ledger).c_str());
  std::optional<Bare> master;
  if (ledger.master) master.emplace(db, ledger.master);
  const std::string from = daysBack(365).toStdString();
  bool odd = false;
  for (auto _ : state) {
    begin.run();
    if (state.range(0)) (amount << amountOf(odd = !odd) << static_cast<sqlite3_int64>(line)).run();
    double balance = 0;
    carried << from;
    if (carried.step()) balance = carried.number(0);
    carried.reset();
    struct Line {
      sqlite3_int64 id;
      double stored, change;
    };
    std::vector<Line> lines;  // read whole before it is written, like every row set
    rows << from;
    while (rows.step())
      lines.push_back({rows.integer(0), rows.number(1), rows.number(2) + rows.number(3) - rows.number(4)});
    rows.reset();
    for (const Line& each : lines) {
      balance += each.change;
      if (std::fabs(each.stored - balance) < 5e-7) continue;
      (write << std::round(balance * 1e6) / 1e6 << each.id).run();
    }
    if (master) (*master << balance).run();
    commit.run();
  }
  report(state);
}

const bool registered = [] {
  for (const Ledger& (*ledger)() : {owed, invoices, expenses})
    for (const bool isByHand : {false, true}) {
      const std::string name = "running balance of 36600 " + std::string(ledger().lines);
      benchmark::RegisterBenchmark((name + (isByHand ? ", by hand" : ", statements")).c_str(),
                                   [=](benchmark::State& state) { (isByHand ? byHand : statements)(state, ledger()); })
          ->Arg(1)
          ->Arg(0)
          ->Unit(benchmark::kMillisecond);
    }
  return true;
}();

}  // namespace money_bench
}  // namespace jxc
