#include "server_shop.h"

#include "core/account_copy.h"
#include "core/clock.h"
#include "engine/server.h"
#include "filled_shop.h"
#include "server/server_proxy.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <QDate>

#include <benchmark/benchmark.h>
#include <chrono>
#include <iostream>
#include <optional>
#include <utility>

namespace jxc::bench {
namespace server_shop_detail {

constexpr int linesOfAudit = 50, timesAudited = 60;

std::string serverAddress() {
  const char* const address = std::getenv("JXC_BENCH_SERVER");
  return address ? address : "";
}

int serverPort() {
  const std::string address = serverAddress();
  return std::atoi(address.c_str() + address.find("port=") + std::strlen("port="));
}

std::string addressBehind(int port) {
  return "host=127.0.0.1 port=" + std::to_string(port) + " user=jxc dbname=bench";
}

/// A database with the shop that the other measurements have in a file, and a second warehouse; copied once.
void fillServer(int rows) {
  static bool filled = false;
  if (std::exchange(filled, true)) return;
  shopWith(rows);
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  {
    const std::unique_ptr<PGconn, decltype(&PQfinish)> server(PQconnectdb(serverAddress().c_str()), &PQfinish);
    Rows(PQexec(server.get(), "drop database if exists bench"));
    Rows(PQexec(server.get(), "create database bench template template0 encoding 'UTF8'"));
  }
  const std::unique_ptr<Database> target =
      openPostgres(QString::fromStdString(addressBehind(serverPort())), {.create = true});
  const auto begun = std::chrono::steady_clock::now();
  if (!copyAccountSet(accountDb(), *target).isEmpty()) throw std::runtime_error("the copy is not like the original");
  std::cerr << "copied in " << std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count()
            << " s\n";
}

void audits(benchmark::State& state, const ServerAudit& each, bool byHand, int rows,
            std::chrono::microseconds eachWay) {
  fillServer(rows);
  std::optional<test::ServerProxy> proxy;
  if (eachWay.count() > 0) proxy.emplace(serverPort(), eachWay);
  const std::string address = addressBehind(proxy ? proxy->port() : serverPort());
  dataModule().installAccountDb(openPostgres(QString::fromStdString(addressBehind(serverPort()))));
  static int day = 0, seed = 0;
  const QString date = QDate::currentDate().addDays(++day).toString(Qt::ISODate);
  ensureStockRows(date.left(7));
  const int warmUps = goodsCount / linesOfAudit + 1;
  std::vector<QString> numbers;
  for (benchmark::IterationCount i = 0; i < state.max_iterations + warmUps; ++i)
    numbers.push_back(each.make(date, linesOfAudit, ++seed));
  dataModule().installAccountDb(openPostgres(QString::fromStdString(address)));
  Pipeline server(address);
  YesPrompt prompt;
  const std::string today = clock::today().toStdString();
  std::size_t next = 0;
  const auto audit = [&] {
    const QString& number = numbers[next++];
    if (byHand)
      each.byHand(server, number.toStdString(), date.toStdString(), today);
    else if (checkDj(each.family, number, prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
  };
  for (int i = 0; i < warmUps; ++i)
    audit();
  const long before = proxy ? proxy->roundTrips() : 0;
  for (auto _ : state)
    audit();
  if (proxy)
    state.counters["trips"] =
        static_cast<double>(proxy->roundTrips() - before) / static_cast<double>(state.iterations());
  dataModule().closeAccountDb();
}

}  // namespace server_shop_detail

double replay(Pipeline& server, const Rows& opening, const Rows& lines) {
  if (opening.count() == 0) throw std::runtime_error("every goods has a past here");
  double q = opening.number(0, 0), p = opening.number(0, 1), a = opening.number(0, 2);
  for (int row = 0; row < lines.count(); ++row) {
    const double before[2] = {q, a};
    const std::string_view flag = lines.text(row, 1);
    const double quantity = lines.number(row, 2);
    const double pool = q + quantity;
    if (flag == "xs") {
      q = roundTo(q - quantity, 100);
    } else {
      const bool moves = flag == "cj" || (flag == "db" && quantity > 0);
      if (moves && pool != 0) p = roundTo(std::fabs((a + lines.number(row, 3)) / pool), 100);
      q = roundTo(pool, 100);
    }
    a = roundTo(p * q, 100);
    const double now[5] = {before[0], before[1], p, q, a};
    bool same = true;
    for (int i = 0; i < 5; ++i)
      same = same && std::fabs(now[i] - lines.number(row, 5 + i)) < 5e-7;
    if (!same)
      server.send("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?", now[0],
                  now[1], now[2], now[3], now[4], std::string(lines.text(row, 0)));
  }
  return p;
}

std::string serverWith(int rows) {
  using namespace server_shop_detail;
  fillServer(rows);
  return addressBehind(serverPort());
}

bool hasServer() {
  return !server_shop_detail::serverAddress().empty();
}

bool registerOnServer(const ServerAudit& audit) {
  using namespace server_shop_detail;
  if (!hasServer()) return false;
  const int rows = ledgerSizes().back();
  for (const int delay : {0, 2})
    for (const bool byHand : {false, true}) {
      const std::string what =
          std::string("server: audit of a ") + audit.what + ", " + std::to_string(delay) + " ms away";
      benchmark::RegisterBenchmark(
          named(what.c_str(), rows, byHand).c_str(),
          [=](benchmark::State& state) { audits(state, audit, byHand, rows, std::chrono::microseconds(delay * 500)); })
          ->Iterations(timesAudited)
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime();
    }
  return true;
}

}  // namespace jxc::bench
