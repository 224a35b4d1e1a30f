// Audit of receipts and sales on a PostgreSQL server beside the same reads and writes by hand over libpq, with and
// without a longer way to the server. Only with JXC_BENCH_SERVER, the address of an empty server; bench/run --server.
#include "audit_words.h"
#include "core/account_copy.h"
#include "core/clock.h"
#include "engine/server.h"
#include "filled_shop.h"
#include "server/delaying_proxy.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <QDate>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <libpq-fe.h>
#include <map>
#include <optional>

namespace jxc {
namespace server_bench {

using bench::goodsCount;
using bench::roundTo;

constexpr int linesOfAudit = 50;

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

// ---- by hand -----------------------------------------------------------------------------------------------------

/// Rows of one statement.
class Rows {
 public:
  explicit Rows(PGresult* result) : result_(result, &PQclear) {}
  int count() const { return PQntuples(result_.get()); }
  int changed() const { return std::atoi(PQcmdTuples(result_.get())); }
  double number(int row, int column) const { return std::strtod(text(row, column), nullptr); }
  const char* text(int row, int column) const { return PQgetvalue(result_.get(), row, column); }
  double first() const { return count() > 0 ? number(0, 0) : 0; }

 private:
  std::unique_ptr<PGresult, decltype(&PQclear)> result_;
};

/// libpq as one uses it who counts round trips: everything prepared once, pipelined up to where an answer is needed.
class Pipeline {
 public:
  explicit Pipeline(const std::string& address) : connection_(PQconnectdb(address.c_str()), &PQfinish) {
    if (PQstatus(get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(get()));
    // As the program's own connection.
    for (const char* setting : {"set client_min_messages=warning", "set jit=off"})
      Rows(PQexec(get(), setting));
    PQenterPipelineMode(get());
  }

  /// `?` stands for a value, in order.
  template <class... Values>
  Pipeline& send(const char* text, const Values&... values) {
    const std::array<std::string, sizeof...(Values)> texts{asText(values)...};
    std::array<const char*, sizeof...(Values)> pointers{};
    for (std::size_t i = 0; i < texts.size(); ++i)
      pointers[i] = texts[i].c_str();
    auto [known, isNew] = names_.try_emplace(text, "h" + std::to_string(names_.size()));
    if (isNew) {
      PQsendPrepare(get(), known->second.c_str(), numbered(text).c_str(), 0, nullptr);
      wanted_.push_back(false);
    }
    PQsendQueryPrepared(get(), known->second.c_str(), static_cast<int>(texts.size()), pointers.data(), nullptr, nullptr,
                        0);
    wanted_.push_back(true);
    return *this;
  }

  /// Statements whose results `fetch` will give.
  std::size_t waiting() const { return static_cast<std::size_t>(std::count(wanted_.begin(), wanted_.end(), true)); }

  /// One round trip: the results in the order of the statements.
  std::vector<Rows> fetch() {
    PQpipelineSync(get());
    std::vector<Rows> all;
    for (const bool wanted : wanted_) {
      Rows rows = next();
      if (wanted) all.push_back(std::move(rows));
    }
    wanted_.clear();
    next();  // the end of the pipeline
    return all;
  }

 private:
  PGconn* get() { return connection_.get(); }
  static std::string asText(const std::string& text) { return text; }
  static std::string asText(double number) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.15g", number);
    return buffer;
  }
  static std::string numbered(std::string_view text) {
    std::string sql;
    int count = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
      if (text[i] == '?')
        sql += '$' + std::to_string(++count);
      else if (text.substr(i).starts_with("ifnull("))
        sql += "coalesce(", i += std::strlen("ifnull(") - 1;
      else
        sql += text[i];
    // Empty fields come first, as the indexes have them: otherwise the server would sort what an index gives.
    for (const std::string column : {"gl_kdrq", "xj_rq", "k_rq"})
      for (const auto& [order, nulls] : {std::pair{" desc", " desc nulls last"}, std::pair{",id", " nulls first,id"}}) {
        const std::string usual = "order by " + column + order;
        if (const std::size_t at = sql.find(usual); at != std::string::npos)
          sql.replace(at, usual.size(), "order by " + column + nulls);
      }
    return sql;
  }
  Rows next() {
    PGresult* result = nullptr;
    while (!result)
      result = PQgetResult(get());
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_FATAL_ERROR || status == PGRES_PIPELINE_ABORTED)
      throw std::runtime_error(PQresultErrorMessage(result));
    return Rows(result);
  }

  std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
  std::map<std::string_view, std::string> names_;
  std::vector<bool> wanted_;
};

/// What audit of a receipt or of a sale reads and writes, as BareAudit of posting_bench.cpp does on SQLite.
class HandAudit {
 public:
  HandAudit(Pipeline& server, bool sale)
      : server_(server), sale_(sale), words_(sale ? bench::saleWords : bench::receiptWords) {}
  void run(const std::string& number, const std::string& date, const std::string& today);

 private:
  struct Goods {
    std::string id, sn;
    double quantity, price;
  };
  double carry(double balance, const Rows& lines, const char* update);
  void replay(const Goods& goods, const Rows& opening, const Rows& lines);
  void postStock(const std::vector<Goods>& all, const std::string& date);

  Pipeline& server_;
  const bool sale_;
  const bench::Words& words_;
};

double HandAudit::carry(double balance, const Rows& lines, const char* update) {
  for (int row = 0; row < lines.count(); ++row) {
    balance += lines.number(row, 2);
    if (std::fabs(balance - lines.number(row, 1)) > 5e-7)
      server_.send(update, balance, std::string(lines.text(row, 0)));
  }
  return balance;
}

void HandAudit::replay(const Goods& goods, const Rows& opening, const Rows& lines) {
  double q = 0, p = 0, a = 0;
  if (opening.count() == 0) throw std::runtime_error("every goods has a past here");
  q = opening.number(0, 0);
  p = opening.number(0, 1);
  a = opening.number(0, 2);
  for (int row = 0; row < lines.count(); ++row) {
    const double before[2] = {q, a};
    const double quantity = lines.number(row, 2);
    if (std::string_view(lines.text(row, 1)) == "cj") {
      const double pool = q + quantity;
      if (pool != 0) p = roundTo(std::fabs((a + lines.number(row, 3)) / pool), 100);
      q = roundTo(pool, 100);
    } else {
      q = roundTo(q - quantity, 100);
    }
    a = roundTo(p * q, 100);
    const double now[5] = {before[0], before[1], p, q, a};
    bool same = true;
    for (int i = 0; i < 5; ++i)
      same = same && std::fabs(now[i] - lines.number(row, 5 + i)) < 5e-7;
    if (!same)
      server_.send("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?", now[0],
                   now[1], now[2], now[3], now[4], std::string(lines.text(row, 0)));
  }
  if (!sale_) server_.send("update jxc_kcsp set kc_cbj=? where ck_sn='100001' and g_sn=?", p, goods.sn);
}

/// No goods stands twice on these documents, so that each step is taken for all of them at once.
void HandAudit::postStock(const std::vector<Goods>& all, const std::string& date) {
  for (const Goods& goods : all) {
    if (sale_)
      server_.send(
          "update jxc_kcsp set kc_xssl=kc_xssl+?,kc_sl=kc_sl-?,kc_zsl=kc_zsl-? where ck_sn='100001' and g_sn=?",
          goods.quantity, goods.quantity, goods.quantity, goods.sn);
    else
      server_.send("update jxc_kcsp set kc_sl=kc_sl+?,kc_zsl=kc_zsl+? where ck_sn='100001' and g_sn=?", goods.quantity,
                   goods.quantity, goods.sn);
    server_.send(
        "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn='100001' and gl_kdrq<? "
        "order by gl_kdrq desc,id desc limit 1",
        goods.sn, date);
    server_.send(
        "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
        "where g_sn=? and ck_sn='100001' and gl_kdrq>=? order by gl_kdrq,id",
        goods.sn, date);
  }
  const std::vector<Rows> found = server_.fetch();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (found[3 * i].changed() != 1) throw std::runtime_error("every goods has a balance here");
    replay(all[i], found[3 * i + 1], found[3 * i + 2]);
    if (sale_)
      server_.send("update jxc_goods set g_kc=g_kc-?,g_xspl=g_xspl+1 where g_sn=?", all[i].quantity, all[i].sn);
    else
      server_.send(
          "update jxc_goods set g_kc=g_kc+?,g_cgpl=g_cgpl+1,g_scjj=?,ghs_sn='100001',g_pjjj=(select "
          "round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2) from jxc_kcsp where g_sn=?) where g_sn=?",
          all[i].quantity, all[i].price, all[i].sn, all[i].sn);
  }
}

void HandAudit::run(const std::string& number, const std::string& date, const std::string& today) {
  const std::string partner = "100001", account = "现金", month = date.substr(0, 7);
  server_.send(words_.lines, number).send(words_.head, number);
  if (words_.shortage) server_.send(words_.shortage, number);
  server_.fetch();

  server_.send("begin").send("select pg_advisory_xact_lock(19770113,1)").send(words_.head, number);
  if (words_.shortage) server_.send(words_.shortage, number);
  server_.send(words_.heads, number).send(words_.head, number);
  server_.fetch();

  server_.send(words_.audited, today, number).send(words_.strays, number).send(words_.due, number);
  server_.send(words_.cash, date, number, partner, account);
  server_.send(
      "select xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? order by xj_rq desc,id desc limit 1",
      account, date);
  server_.send("select id,xj_ljje,xj_je from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? order by xj_rq,id",
               account, date);
  const std::vector<Rows> cash = server_.fetch();
  if (cash[2].count() == 0) throw std::runtime_error("no head");
  const double due = cash[2].first();
  carry(cash[4].first(), cash[5], "update jxc_xjyh set xj_ljje=? where id=?");

  server_.send(words_.partner, partner, account, due, date, number);
  const std::size_t owed = server_.waiting();
  server_.send(words_.carried, partner, date).send(words_.running, partner, date);
  const std::vector<Rows> partners = server_.fetch();
  const double balance = carry(partners[owed].first(), partners[owed + 1], "update jxc_ysyfk set k_ljje=? where id=?");
  server_.send(words_.owed, balance, partner).send(words_.moved, number).send(words_.marked, number);
  server_.send(words_.ledger, today, number).send(words_.effects, number);
  const std::vector<Rows> stock = server_.fetch();
  std::vector<Goods> all;
  for (int row = 0; row < stock.back().count(); ++row)
    all.push_back({stock.back().text(row, 0), stock.back().text(row, 1), stock.back().number(row, 2),
                   stock.back().number(row, 3)});
  postStock(all, date);

  server_.send("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)", today, number);
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')");
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)", month);
  server_.send("select sum(kc_sl),sum(kc_sl*kc_cbj) from jxc_kcsp where ck_sn='100001'");
  const std::vector<Rows> sums = server_.fetch();
  server_.send("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn='100001'", sums.back().number(0, 0),
               sums.back().number(0, 1), month);
  server_.send(words_.employee).send("commit");
  server_.fetch();
}

// ---- measurements ------------------------------------------------------------------------------------------------

/// A database with the shop that the other measurements have in a file; copied once.
void fillServer(int rows) {
  static bool filled = false;
  if (std::exchange(filled, true)) return;
  bench::shopWith(rows);
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

void audits(benchmark::State& state, bool sale, bool byHand, int rows, std::chrono::microseconds eachWay) {
  fillServer(rows);
  std::optional<test::DelayingProxy> proxy;
  if (eachWay.count() > 0) proxy.emplace(serverPort(), eachWay);
  const std::string address = addressBehind(proxy ? proxy->port() : serverPort());
  dataModule().installAccountDb(openPostgres(QString::fromStdString(addressBehind(serverPort()))));
  static int day = 0, seed = 0;
  const QString date = QDate::currentDate().addDays(++day).toString(Qt::ISODate);
  ensureStockRows(date.left(7));
  const int warmUps = goodsCount / linesOfAudit + 1;
  std::vector<QString> numbers;
  for (benchmark::IterationCount i = 0; i < state.max_iterations + warmUps; ++i)
    numbers.push_back(bench::waitingDocument(sale, date, linesOfAudit, ++seed));
  dataModule().installAccountDb(openPostgres(QString::fromStdString(address)));
  Pipeline server(address);
  HandAudit hand(server, sale);
  bench::YesPrompt prompt;
  const std::string today = clock::today().toStdString();
  const DocumentFamily& family = sale ? families::sale : families::purchaseReceipt;
  std::size_t next = 0;
  const auto audit = [&] {
    const QString& number = numbers[next++];
    if (byHand)
      hand.run(number.toStdString(), date.toStdString(), today);
    else if (checkDj(family, number, prompt) != AuditOutcome::Audited)
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

const bool registered = [] {
  if (serverAddress().empty()) return false;
  const int rows = bench::ledgerSizes().back();
  for (const bool sale : {false, true})
    for (const int delay : {0, 2})
      for (const bool byHand : {false, true}) {
        const std::string what = std::string("server: audit of a ") + (sale ? "sale" : "receipt") + " of 50 lines, " +
                                 std::to_string(delay) + " ms away";
        benchmark::RegisterBenchmark(
            bench::named(what.c_str(), rows, byHand).c_str(),
            [=](benchmark::State& state) { audits(state, sale, byHand, rows, std::chrono::microseconds(delay * 500)); })
            ->Iterations(60)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
      }
  return true;
}();

}  // namespace server_bench
}  // namespace jxc
