#include "engine/postgres/failure.h"
#include "engine/postgres/postgres_database.h"
#include "engine/waiting.h"

#include <chrono>
#include <thread>
#include <utility>

namespace jxc::postgres {
namespace postgres_connection_detail {

constexpr int deepest = 16;

constexpr const char* writersLock = "select pg_advisory_xact_lock(19770113,1)";

// Every command leaves its number behind with the same commit, one row a connection: what is found there was kept,
// whatever became of the connection or of the server meanwhile. The server's own transaction numbers would not do: a
// server that crashed gives those that it lost once more.
constexpr const char* leaveNumber =
    "insert into jxc_stations.commands(station,command) values($1,$2::bigint) on conflict(station) do update"
    " set command=excluded.command,told=excluded.told";
constexpr const char* isNumberThere =
    "select count(*) from jxc_stations.commands where station=$1 and command=$2::bigint";
constexpr const char* forgetStations = "delete from jxc_stations.commands where told<now()-interval '7 days'";

/// A server that restarts is back within seconds.
constexpr auto restart = std::chrono::seconds(15);
constexpr auto pause = std::chrono::milliseconds(300);

}  // namespace postgres_connection_detail

// ---- the connection ----

void PostgresDatabase::connect() {
  const Link::Access access = options_.readOnly ? Link::Access::Read
                              : options_.create ? Link::Access::Create
                                                : Link::Access::Write;
  changeLink(std::make_unique<Link>(address_, access, options_.user.toStdString(), options_.password.toStdString()));
  for (auto& [text, statement] : statements_)
    for (Step& step : statement->steps)
      step.prepared = false;
  catalogue_.forget();
  sent_.clear();
  deallocate_ = false;
  toldPatience_ = {};
}

void PostgresDatabase::changeLink(std::unique_ptr<Link> link) {
  const std::lock_guard guard(changingLink_);
  link_ = std::move(link);
}

/// The connection, made again when it broke while nobody was in the middle of something.
Link& PostgresDatabase::link() {
  using namespace postgres_connection_detail;
  if (opened_ > 0 || (link_ && (!sent_.empty() || !link_->isClosed()))) return *link_;
  const auto start = std::chrono::steady_clock::now();
  Wait forTheServer;
  for (;;) {
    try {
      changeLink(nullptr);
      connect();
      return *link_;
    } catch (const ConnectionLost& lost) {
      const auto waited = std::chrono::steady_clock::now() - start;
      const auto seconds = static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(waited).count());
      if (waited > restart || lost.isSilent() || Wait::isStopWanted(seconds)) throw;
      forTheServer.passed(seconds);
      std::this_thread::sleep_for(pause);
    }
  }
}

void PostgresDatabase::loseLink(std::string_view text, const LinkLost& how) {
  changeLink(nullptr);
  sent_.clear();
  savepoints_.clear();
  if (opened_ > 0) lost_ = true;
  opened_ = 0;
  if (how.isSilent) throw lostSilent(text);
  throw lostUnsaved(text);
}

/// The server ends a statement by itself when the station that asked is gone or does not hear: some seconds after the
/// station would have cancelled it.
void PostgresDatabase::tellPatience() {
  constexpr std::chrono::seconds longer{10};
  if (toldPatience_ == patience()) return;
  toldPatience_ = patience();
  control(("set statement_timeout='" + std::to_string((toldPatience_ + longer).count()) + "s'").c_str());
}

void PostgresDatabase::interrupt() {
  const std::lock_guard guard(changingLink_);
  if (link_) link_->cancel();
}

Database::OpenReader PostgresDatabase::readerOpener() const {
  if (options_.trial) return {};
  return [address = address_, options = options_]() mutable {
    options.create = false;
    options.readOnly = true;
    return std::make_unique<PostgresDatabase>(address, options);
  };
}

// ---- transactions ----

void PostgresDatabase::requireLive(std::string_view text) const {
  if (lost_) throw lostUnsaved(text);
  if (spoiled_)
    throw DbError(DbError::Kind::Other, QStringLiteral("本次操作已被数据库撤销，请重新操作。"), std::string(text));
}

/// Levels that the caller opened and nobody has told the server of.
void PostgresDatabase::openLevels() {
  using namespace postgres_connection_detail;
  if (opened_ == level()) return;
  if (lost_) throw lostUnsaved("begin");  // the rest of a command must never begin on a new connection
  link();
  for (; opened_ < level(); ++opened_) {
    if (opened_ > 0) {
      // Named once only: a name that stood for an earlier level would take back that one, when its end never came.
      savepoints_.push_back("l" + std::to_string(++nextName_));
      control(("savepoint " + savepoints_.back()).c_str());
      continue;
    }
    // A reader asks for nothing but that what it reads is of one moment.
    control(options_.readOnly ? "begin isolation level repeatable read read only" : "begin");
    if (!options_.trial && !options_.readOnly) control(writersLock);
  }
}

void PostgresDatabase::begin() {
  requireLive("begin");
  if (depth_ == 0 && !questions_.empty()) askQuestions();
  if (depth_ >= postgres_connection_detail::deepest)
    throw DbError(DbError::Kind::Other, QStringLiteral("事务嵌套过深。"));
  ++depth_;
}

void PostgresDatabase::commit() {
  using namespace postgres_connection_detail;
  if (depth_ == 0) throw DbError(DbError::Kind::Other, QStringLiteral("没有可以提交的事务。"));
  try {
    requireLive("commit");
    if (opened_ == level()) {
      if (opened_ > 1) {
        // Its end travels with whatever comes next, and so does a failure of what was posted inside.
        control(("release " + std::exchange(savepoints_.back(), {})).c_str());
        savepoints_.pop_back();
        --opened_;
      } else {
        finish();
        opened_ = 0;
      }
    }
  } catch (...) {
    rollback();
    throw;
  }
  if (--depth_ == 0) defined_ = lost_ = false;
}

/// The commit of the outermost level, in the same trip as the last writes and the number of the command. When a write
/// fails, the server does not come to the commit.
void PostgresDatabase::finish() {
  using namespace postgres_connection_detail;
  if (options_.readOnly) {
    control("commit");
    exchange();
    return;
  }
  if (++command_ == 1) control(forgetStations);
  try {
    askFor(leaveNumber, {station_, std::to_string(command_)}, Sent::What::Control);
    control("commit", Sent::What::Commit);
    exchange();
  } catch (const ConnectionLost&) {
    if (!settle()) throw;
  }
}

/// After a connection that broke at the end of a transaction: whether the server kept it. The lock says that the
/// transaction is over: until then it holds it itself.
bool PostgresDatabase::settle() {
  using namespace postgres_connection_detail;
  const std::vector<std::string> number = {station_, std::to_string(command_)};
  lost_ = false;
  const auto end = std::chrono::steady_clock::now() + restart;
  do {
    try {
      control(writersLock);
      return ask(isNumberThere, number).integer(0, 0) > 0;
    } catch (const ConnectionLost& lost) {
      if (lost.isSilent()) break;
      std::this_thread::sleep_for(pause);  // it may break again, while the server starts
    } catch (const DbError&) {
      break;  // not to be found out now
    }
  } while (std::chrono::steady_clock::now() < end);
  throw lostUnknown("commit");
}

void PostgresDatabase::rollback() {
  if (depth_ == 0) return;
  const int back = level() - 1;  // the level that ends
  --depth_;
  try {
    if (!lost_ && opened_ > back) {
      if (!sent_.empty()) {
        try {
          exchange();
        } catch (const DbError&) {
          // It is taken back anyway.
        }
      }
      if (!lost_) {
        if (back == 0) {
          control("rollback");
        } else {
          const std::string name = std::exchange(savepoints_.back(), {});
          savepoints_.pop_back();
          control(("rollback to " + name).c_str());
          control(("release " + name).c_str());
        }
        opened_ = back;
        spoiled_ = false;
        toldPatience_ = {};  // it may have been told inside, and is taken back with the rest
        exchange();
      }
    }
  } catch (const DbError&) {
    // The server takes back what has no end by itself.
  }
  if (defined_) {
    // Tables that were made or changed inside are as they were before.
    forgetStatements();
    catalogue_.forgetSome();
  }
  if (depth_ == 0) lost_ = defined_ = spoiled_ = false;
}

}  // namespace jxc::postgres
