#include "server/test_engine.h"

#include "core/clock.h"
#include "core/schema/schema.h"
#include "engine/server.h"
#include "engine/snapshot.h"

#include <QDateTime>
#include <QFile>
#include <QString>

#include <cstdlib>
#include <libpq-fe.h>
#include <stdexcept>
#include <vector>

namespace jxc::test {
namespace test_engine_detail {

std::string serverAddress() {
  const char* given = std::getenv("JXC_TEST_ADDRESS");
  if (!given) throw std::runtime_error("JXC_TEST_ADDRESS is not set");
  if (*given != '@') return given;
  QFile file(QString::fromUtf8(given + 1));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(std::string("cannot read ") + (given + 1));
  return file.readAll().trimmed().toStdString();
}

/// The server's own language, beside the engine under test.
class Native {
 public:
  explicit Native(const std::string& address) : connection_(PQconnectdb(address.c_str())) {
    if (PQstatus(connection_) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(connection_));
    run("set client_min_messages=warning");
  }
  ~Native() { PQfinish(connection_); }
  Native(const Native&) = delete;
  Native& operator=(const Native&) = delete;

  /// The first field of the last result; empty when there is none.
  std::string run(const std::string& sql) {
    PGresult* result = PQexec(connection_, sql.c_str());
    const ExecStatusType status = PQresultStatus(result);
    const std::string text = status == PGRES_TUPLES_OK && PQntuples(result) > 0 ? PQgetvalue(result, 0, 0) : "";
    const std::string failure = status == PGRES_FATAL_ERROR ? PQresultErrorMessage(result) : "";
    PQclear(result);
    if (!failure.empty()) throw std::runtime_error(failure + sql);
    return text;
  }

 private:
  PGconn* connection_;
};

/// One database for each process that tests at the same time, copied from a pattern that is made once a server.
class Slot {
 public:
  /// `fill` makes the pattern out of an empty account set.
  Slot(const std::string& kind, void (*fill)(Database&)) : server_(serverAddress()) {
    makePattern(kind, fill);
    int number = 0;
    while (server_.run("select pg_try_advisory_lock(hashtext('" + kind + "')," + std::to_string(number) + ")") != "t")
      ++number;
    pattern_ = "jxc_" + kind;
    name_ = pattern_ + '_' + std::to_string(number);
    locked([&] {
      if (!exists(name_)) server_.run("create database " + name_ + " template " + pattern_);
    });
    address_ = serverAddress() + " dbname=" + name_;
    native_ = std::make_unique<Native>(address_);
  }

  /// What was kept goes with the process that kept it.
  ~Slot() {
    try {
      server_.run("drop database if exists " + name_ + "_copy with (force)");
    } catch (const std::exception&) {  // the server is gone, and the copy with it
    }
  }
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

  std::unique_ptr<Database> open() {
    // Counters go on when a transaction is taken back; a test expects them where the pattern left them.
    native_->run(
        "select count(setval(c.counter,c.last,c.called)) from kept.counters c"
        " where coalesce(pg_sequence_last_value(c.counter),-1)<>case when c.called then c.last else -1 end");
    return openPostgres(QString::fromStdString(address_), {.trial = true});
  }

  /// A database of its own, that keeps what is done to it.
  std::unique_ptr<Database> openCopy() {
    const std::string copy = name_ + "_copy";
    locked([&] {
      server_.run("drop database if exists " + copy + " with (force)");
      server_.run("create database " + copy + " template " + pattern_);
    });
    return openCopyAgain();
  }
  std::unique_ptr<Database> openCopyAgain() { return openPostgres(QString::fromStdString(copyAddress())); }
  std::string copyAddress() const { return serverAddress() + " dbname=" + name_ + "_copy"; }
  void cutCopy(const std::string& which = {}) {
    server_.run("select count(pg_terminate_backend(pid,2000)) from pg_stat_activity where datname='" + name_ +
                "_copy'" + which);
  }
  int writersProcess() {
    const std::string process = test_engine_detail::Native(copyAddress())
                                    .run(
                                        "select pid from pg_locks l join pg_database d on d.oid=l.database where"
                                        " locktype='advisory' and granted and datname=current_database()");
    return process.empty() ? 0 : std::atoi(process.c_str());
  }
  void cutAtCommit(const std::string& table) {
    test_engine_detail::Native copy(copyAddress());
    copy.run(
        "create or replace function jxc.cut_here() returns trigger language plpgsql as $$begin "
        "perform pg_terminate_backend(pg_backend_pid()); return null; end$$");
    copy.run("drop trigger if exists cut_here on " + table);
    copy.run("create constraint trigger cut_here after insert on " + table +
             " deferrable initially deferred for each row execute function jxc.cut_here()");
  }

 private:
  bool exists(const std::string& name) {
    return !server_.run("select 1 from pg_database where datname='" + name + "'").empty();
  }
  template <class Work>
  void locked(Work work) {
    server_.run("select pg_advisory_lock(4711)");
    work();
    server_.run("select pg_advisory_unlock(4711)");
  }
  void makePattern(const std::string& kind, void (*fill)(Database&)) {
    const std::string pattern = "jxc_" + kind;
    locked([&] {
      if (exists(pattern)) return;
      const std::string making = pattern + "_making";
      server_.run("drop database if exists " + making + " with (force)");
      server_.run("create database " + making + " template template0 encoding 'UTF8' lc_collate 'C' lc_ctype 'C'");
      const std::string address = serverAddress() + " dbname=" + making;
      fill(*openPostgres(QString::fromStdString(address), {.create = true}));
      {
        Native native(address);
        native.run("create schema kept; create table kept.counters(counter oid, last bigint, called boolean)");
        native.run(
            "do $$ declare s record; begin for s in select oid::regclass as name from pg_class where relkind='S' loop "
            "execute format('insert into kept.counters select %s,last_value,is_called from %s',s.name::oid,s.name);"
            "end loop; end $$");
        native.run("analyze");
      }
      server_.run("alter database " + making + " rename to " + pattern);
    });
  }

  Native server_;
  std::string pattern_, name_, address_;
  std::unique_ptr<Native> native_;
};

/// The first rows carry the day on which they were made: one for all processes that share a pattern.
void fillFresh(Database& database) {
  clock::setFixed(QDateTime(QDate(2021, 5, 3), QTime(14, 30)));
  createAllTables(database);
  upgradeSchema(database);
}

Slot& freshSlot() {
  static Slot slot("fresh", fillFresh);
  return slot;
}

}  // namespace test_engine_detail

bool onServer() {
  static const bool server =
      std::string_view("postgres") == (std::getenv("JXC_TEST_ENGINE") ? std::getenv("JXC_TEST_ENGINE") : "");
  return server;
}

std::unique_ptr<Database> openEmpty(Story story) {
  if (!onServer()) return openSqlite(QStringLiteral(":memory:"));
  static test_engine_detail::Slot slot("empty", [](Database&) {});
  return story == Story::Long ? slot.openCopy() : slot.open();
}

std::unique_ptr<Database> openFresh(Story story) {
  if (onServer()) {
    test_engine_detail::Slot& slot = test_engine_detail::freshSlot();
    return story == Story::Long ? slot.openCopy() : slot.open();
  }
  return openFreshFile();
}

std::unique_ptr<Database> openAgain() {
  return test_engine_detail::freshSlot().openCopyAgain();
}

void cutConnections() {
  test_engine_detail::freshSlot().cutCopy();
}
void cutConnections(const std::string& application) {
  test_engine_detail::freshSlot().cutCopy(" and application_name='" + application + "'");
}
void cutAtCommit(const std::string& table) {
  test_engine_detail::freshSlot().cutAtCommit(table);
}
int writersProcess() {
  return test_engine_detail::freshSlot().writersProcess();
}
int portOf(const std::string& address) {
  int port = 0;
  PQconninfoOption* const options = PQconninfoParse(address.c_str(), nullptr);
  for (const PQconninfoOption* option = options; option && option->keyword; ++option)
    if (option->val && std::string_view(option->keyword) == "port") port = std::atoi(option->val);
  PQconninfoFree(options);
  return port;
}

std::string copyAddress() {
  return test_engine_detail::freshSlot().copyAddress();
}

std::unique_ptr<Database> openFreshFile() {
  static const std::vector<std::byte> bytes = [] {
    const std::unique_ptr<Database> database = openSqlite(QStringLiteral(":memory:"));
    test_engine_detail::fillFresh(*database);
    return snapshot(*database);
  }();
  return openSqliteSnapshot(bytes);
}

}  // namespace jxc::test
