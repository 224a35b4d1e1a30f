// 服务器对照基准: a PostgreSQL server with the shop of the other measurements, and libpq by hand beside the program.
// Only with JXC_BENCH_SERVER, the address of an empty server; bench/run --server.
#pragma once

#include "stock/document_family.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::bench {

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

/// What every audit reads before it begins, and again in its transaction. `words` are those of its kind.
template <class Words>
void beginAudit(Pipeline& server, const Words& words, const std::string& number) {
  server.send(words.lines, number).send(words.head, number);
  if (words.shortage) server.send(words.shortage, number);
  server.fetch();

  server.send("begin").send("select pg_advisory_xact_lock(19770113,1)").send(words.head, number);
  if (words.shortage) server.send(words.shortage, number);
  server.send(words.heads, number).send(words.head, number);
  server.fetch();
}

/// Rewrites the running figures of `lines` (id, flag, quantity, amount, price, and the five figures as they stand)
/// behind the row before them. The average at the end, in yuan a unit.
double replay(Pipeline& server, const Rows& opening, const Rows& lines);

/// An audit to measure, by the program and by hand.
struct ServerAudit {
  const char* what;  // "sale of 50 lines"
  const DocumentFamily& family;
  /// A waiting document; its number.
  QString (*make)(const QString& date, int lines, int seed);
  /// What the audit reads and writes.
  std::function<void(Pipeline& server, const std::string& number, const std::string& date, const std::string& today)>
      byHand;
};

/// Its address for libpq and the program, with the shop of so many ledger rows on it; made once.
std::string serverWith(int rows);
/// Whether there is one.
bool hasServer();

/// Measures it on the server itself and 2 ms away. Nothing without a server.
bool registerOnServer(const ServerAudit& audit);

}  // namespace jxc::bench
