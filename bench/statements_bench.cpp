// The statement helpers beside the bare SQLite interface: what a hash look-up, typed binding and row sets cost.
#include "bare_shop.h"
#include "engine/database.h"
#include "engine/snapshot.h"
#include "engine/sqlite/sqlite_database.h"
#include "engine/transaction.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
#include <vector>

namespace jxc {
namespace statements_bench {

constexpr int goodsCount = 10000;

std::string goodsSn(int i) {
  return std::to_string(10000000 + i * 7919 % goodsCount);
}

/// Stock and goods of a shop with ten thousand goods, with the indexes by which they are found.
std::unique_ptr<Database> makeStock(const QString& file = QStringLiteral(":memory:")) {
  SqliteOptions options;
  options.create = true;
  auto db = openSqlite(file, options);
  db->execute(
      "create table jxc_kcsp (id Counter, ck_sn varchar(8) null, g_sn varchar(32) null, "
      "kc_sl numeric(28,6) null, kc_zsl numeric(28,6) null, kc_cbj numeric(28,6) null, "
      "Constraint StatePrimary Primary key (id))");
  db->execute(
      "create table jxc_goods (id Counter, g_sn varchar(32) null, g_name nvarchar(64) null, "
      "g_pjjj numeric(28,6) null, Constraint StatePrimary Primary key (id))");
  db->execute("create index jxc_kcsp_goods on jxc_kcsp (g_sn,ck_sn)");
  db->execute("create index jxc_goods_sn on jxc_goods (g_sn)");
  Transaction transaction(*db);
  for (int i = 0; i < goodsCount; ++i) {
    const Value sn(std::to_string(10000000 + i).c_str());
    db->execute("insert into jxc_kcsp (ck_sn,g_sn,kc_sl,kc_zsl,kc_cbj) values ('100001',?,?,?,?)",
                std::array{sn, Value(i % 50), Value(i % 50), Value(i % 97 + 0.25)});
    db->execute("insert into jxc_goods (g_sn,g_name,g_pjjj) values (?,?,?)",
                std::array{sn, Value("近视镜片 1.56 非球面"), Value(i % 97 + 0.25)});
  }
  transaction.commit();
  return db;
}

/// One statement of the bare interface.
struct Bare {
  sqlite::StatementHandle statement;
  Bare(sqlite3* connection, const char* text) {
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v3(connection, text, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    statement.reset(raw);
  }
  operator sqlite3_stmt*() const { return statement.get(); }
};

void bindText(sqlite3_stmt* statement, int at, const std::string& text) {
  sqlite3_bind_text(statement, at, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

std::vector<std::string> bareKeys() {
  std::vector<std::string> keys;
  for (int i = 0; i < 1024; ++i)
    keys.push_back(goodsSn(i));
  return keys;
}

std::vector<Value> keys() {
  std::vector<Value> result;
  for (const std::string& key : bareKeys())
    result.emplace_back(key.c_str());
  return result;
}

void updateStatement(benchmark::State& state) {
  const auto db = makeStock();
  const auto goods = keys();
  const Value warehouse("100001");
  std::size_t i = 0;
  Transaction transaction(*db);
  for (auto _ : state) {
    const std::array values{Value(1.5), Value(1.5), warehouse, goods[i++ & 1023]};
    db->execute("update jxc_kcsp set kc_sl=?,kc_zsl=? where ck_sn=? and g_sn=?", values);
  }
}
BENCHMARK(updateStatement)->Name("update one row, statements");

void updateBare(benchmark::State& state) {
  const auto db = makeStock();
  sqlite3* native = sqlite::asSqlite(*db).native();
  const Bare statement(native, "update jxc_kcsp set kc_sl=?,kc_zsl=? where ck_sn=? and g_sn=?");
  const auto goods = bareKeys();
  const std::string warehouse("100001");
  std::size_t i = 0;
  Transaction transaction(*db);
  for (auto _ : state) {
    sqlite3_bind_double(statement, 1, 1.5);
    sqlite3_bind_double(statement, 2, 1.5);
    bindText(statement, 3, warehouse);
    bindText(statement, 4, goods[i++ & 1023]);
    sqlite3_step(statement);
    sqlite3_reset(statement);
  }
}
BENCHMARK(updateBare)->Name("update one row, by hand");

void lookupStatement(benchmark::State& state) {
  const auto db = makeStock();
  const auto goods = keys();
  std::size_t i = 0;
  double sum = 0;
  for (auto _ : state)
    sum += db->lookup("select g_pjjj from jxc_goods where g_sn=?", std::array{goods[i++ & 1023]}).number();
  benchmark::DoNotOptimize(sum);
}
BENCHMARK(lookupStatement)->Name("look up a number, statements");

void lookupBare(benchmark::State& state) {
  const auto db = makeStock();
  const Bare statement(sqlite::asSqlite(*db).native(), "select g_pjjj from jxc_goods where g_sn=?");
  const auto goods = bareKeys();
  std::size_t i = 0;
  double sum = 0;
  for (auto _ : state) {
    bindText(statement, 1, goods[i++ & 1023]);
    if (sqlite3_step(statement) == SQLITE_ROW) sum += sqlite3_column_double(statement, 0);
    sqlite3_reset(statement);
  }
  benchmark::DoNotOptimize(sum);
}
BENCHMARK(lookupBare)->Name("look up a number, by hand");

void insertStatement(benchmark::State& state) {
  const auto db = makeStock();
  const auto goods = keys();
  std::size_t i = 0;
  Transaction transaction(*db);
  for (auto _ : state) {
    const std::array values{goods[i++ & 1023], Value("近视镜片 1.56 非球面"), Value(12.5)};
    db->execute("insert into jxc_goods (g_sn,g_name,g_pjjj) values (?,?,?)", values);
  }
}
BENCHMARK(insertStatement)->Name("insert one row, statements")->Iterations(200000);

void insertBare(benchmark::State& state) {
  const auto db = makeStock();
  const Bare statement(sqlite::asSqlite(*db).native(), "insert into jxc_goods (g_sn,g_name,g_pjjj) values (?,?,?)");
  const auto goods = bareKeys();
  const std::string name("近视镜片 1.56 非球面");
  std::size_t i = 0;
  Transaction transaction(*db);
  for (auto _ : state) {
    bindText(statement, 1, goods[i++ & 1023]);
    bindText(statement, 2, name);
    sqlite3_bind_double(statement, 3, 12.5);
    sqlite3_step(statement);
    sqlite3_reset(statement);
  }
}
BENCHMARK(insertBare)->Name("insert one row, by hand")->Iterations(200000);

// ---- the goods list: 100,000 rows of 69 columns ----

std::unique_ptr<Database> makeWideGoods(int rows) {
  auto db = openSqlite(QStringLiteral(":memory:"));
  std::string columns = "id Counter", names, marks;
  for (int i = 1; i < 69; ++i) {
    const std::string name = "g_f" + std::to_string(i);
    columns += ", " + name + (i % 3 == 0 ? " numeric(28,6) null" : " nvarchar(64) null");
    names += (i > 1 ? "," : "") + name;
    marks += i > 1 ? ",?" : "?";
  }
  db->execute("create table jxc_goods (" + columns + ", Constraint StatePrimary Primary key (id))");
  const std::string insert = "insert into jxc_goods (" + names + ") values (" + marks + ")";
  Transaction transaction(*db);
  for (int row = 0; row < rows; ++row) {
    std::vector<Value> values;
    for (int i = 1; i < 69; ++i) {
      if (i == 1)
        values.emplace_back(QString::number(10000000 + row));
      else if (i == 2)
        values.emplace_back(QStringLiteral("近视镜片 1.56 第%1号").arg(row));
      else if (i % 3 == 0)
        values.emplace_back((row * 31 + i) % 1000 + 0.25);
      else if (i < 24)
        values.emplace_back(QStringLiteral("%1-%2").arg((row * 7 + i) % 100, 0, 10).arg(i));
      else if (i < 46)
        values.emplace_back("");
      else
        values.emplace_back();
    }
    db->execute(insert, values);
  }
  transaction.commit();
  return db;
}

void readWideGoods(benchmark::State& state) {
  const auto db = makeWideGoods(100000);
  for (auto _ : state) {
    const double before = bench::residentMegabytes();
    const RowSet rows = db->select("select * from jxc_goods");
    state.counters["MB counted"] = static_cast<double>(rows.memory()) / 1e6;
    state.counters["MB resident"] = bench::residentMegabytes() - before;
  }
}
BENCHMARK(readWideGoods)->Name("100,000 goods x 69 read, statements")->Unit(benchmark::kMillisecond)->Iterations(3);

void readWideGoodsBare(benchmark::State& state) {
  const auto db = makeWideGoods(100000);
  const Bare statement(sqlite::asSqlite(*db).native(), "select * from jxc_goods");
  double sum = 0;
  for (auto _ : state) {
    while (sqlite3_step(statement) == SQLITE_ROW)
      for (int i = 0; i < 69; ++i) {
        switch (sqlite3_column_type(statement, i)) {
          case SQLITE_INTEGER:
            sum += static_cast<double>(sqlite3_column_int64(statement, i));
            break;
          case SQLITE_FLOAT:
            sum += sqlite3_column_double(statement, i);
            break;
          case SQLITE_TEXT:
            sum += sqlite3_column_text(statement, i)[0] + sqlite3_column_bytes(statement, i);
            break;
          default:
            break;
        }
      }
    sqlite3_reset(statement);
  }
  benchmark::DoNotOptimize(sum);
}
BENCHMARK(readWideGoodsBare)->Name("100,000 goods x 69 read, by hand")->Unit(benchmark::kMillisecond)->Iterations(3);

// ---- a command with its commit, on the disk ----

void commitOnDisk(benchmark::State& state, const char* synchronous) {
  const QTemporaryDir directory(QStringLiteral("bench-XXXXXX"));  // in the working directory: /tmp may be memory
  const auto db = makeStock(directory.filePath(QStringLiteral("jxc.mdb")));
  sqlite3_exec(sqlite::asSqlite(*db).native(), synchronous, nullptr, nullptr, nullptr);
  const auto goods = keys();
  std::size_t i = 0;
  for (auto _ : state) {
    Transaction transaction(*db);
    for (int line = 0; line < state.range(0); ++line)
      db->execute("update jxc_kcsp set kc_sl=?,kc_zsl=? where ck_sn=? and g_sn=?",
                  std::array{Value(static_cast<long>(i)), Value(1.5), Value("100001"), goods[i & 1023]}),
          ++i;
    transaction.commit();
  }
}
BENCHMARK_CAPTURE(commitOnDisk, full, "pragma synchronous=full")
    ->Name("transaction with commit on disk, synchronous=full, lines")
    ->Arg(1)
    ->Arg(50)
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(300);
BENCHMARK_CAPTURE(commitOnDisk, normal, "pragma synchronous=normal")
    ->Name("transaction with commit on disk, synchronous=normal, lines")
    ->Arg(1)
    ->Arg(50)
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(300);

// ---- how much of a large ledger the connection keeps to itself ----

void ledgerOnDisk(benchmark::State& state, const char* cache) {
  constexpr int rows = 400000;
  const QTemporaryDir directory(QStringLiteral("bench-XXXXXX"));
  SqliteOptions options;
  options.create = true;
  const auto db = openSqlite(directory.filePath(QStringLiteral("jxc.mdb")), options);
  db->execute(
      "create table jxc_goodslist (id Counter, g_sn varchar(32) null, gl_rq varchar(32) null, "
      "gl_sl numeric(28,6) null, gl_note nvarchar(200) null, Constraint StatePrimary Primary key (id))");
  Transaction transaction(*db);
  for (int i = 0; i < rows; ++i)
    db->execute("insert into jxc_goodslist (g_sn,gl_rq,gl_sl,gl_note) values (?,'2021-05-03',1,'采购入库')",
                std::array{Value(goodsSn(i).c_str())});
  transaction.commit();
  sqlite3_exec(sqlite::asSqlite(*db).native(), cache, nullptr, nullptr, nullptr);
  long at = 1;
  Transaction reading(*db);  // as a command that replays: one transaction, many rows
  for (auto _ : state) {
    at = at * 69621 % 2147483647;
    benchmark::DoNotOptimize(
        db->lookup("select gl_sl from jxc_goodslist where id=?", std::array{Value(at % rows + 1)}));
  }
}
BENCHMARK_CAPTURE(ledgerOnDisk, small, "pragma cache_size=-2048")->Name("random ledger row, cache of 2 MB");
BENCHMARK_CAPTURE(ledgerOnDisk, large, "pragma cache_size=-32768")->Name("random ledger row, cache of 32 MB");

void freshSet(benchmark::State& state) {
  const auto db = makeStock();
  const auto bytes = snapshot(*db);
  for (auto _ : state) {
    const auto fresh = openSqliteSnapshot(bytes);
    benchmark::DoNotOptimize(fresh->lookup("select count(*) from jxc_goods where id<3").integer());
  }
  state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK(freshSet)->Name("fresh set in memory from a snapshot")->Unit(benchmark::kMicrosecond);

}  // namespace statements_bench
}  // namespace jxc
