#include "engine/postgres/link.h"

#include "engine/postgres/connecting.h"
#include "engine/postgres/failure.h"
#include "engine/postgres/functions.h"

#include <QString>

#include <cerrno>
#include <chrono>
#include <poll.h>
#include <thread>

namespace jxc::postgres {
namespace link_detail {

using Clock = std::chrono::steady_clock;

constexpr int shortLook = 100, longLook = 500;  // milliseconds between two looks at the time
/// How long whoever cancels waits until the server has heard it.
constexpr auto patienceForCancel = std::chrono::milliseconds(300);
/// How long a server may take to hear that a statement is cancelled.
constexpr auto patienceAfterCancel = std::chrono::seconds(5);

// A station that is switched off in the middle of a command must not keep the others waiting: the server finds out
// within half a minute and takes the command back.
constexpr const char* sessionSettings =
    "set client_min_messages=warning; set jit=off; set standard_conforming_strings=on;"
    // What a command reads after it was given the lock must be of that moment, whatever the server prefers.
    "set default_transaction_isolation='read committed';"
    "set lock_timeout='30s'; set idle_in_transaction_session_timeout='30s'; set client_connection_check_interval='5s';"
    "set tcp_keepalives_idle=10; set tcp_keepalives_interval=5; set tcp_keepalives_count=3;";

constexpr const char* mayRenew = "select pg_has_role(nspowner,'usage') from pg_namespace where nspname='jxc'";
constexpr const char* functionsThere = "select to_regprocedure('jxc.version()') is not null";

DbError noAccountSet() {
  return DbError(DbError::Kind::File, QStringLiteral("服务器上的数据库不是本系统的帐套。"));
}

}  // namespace link_detail

Link::Link(const std::string& address, Access access, const std::string& user, const std::string& password)
    : connection_(connectTo(address, user, password)) {
  canceller_->handle.reset(PQgetCancel(connection_.get()));
  if (PQsetnonblocking(connection_.get(), 1) != 0) throw cannotConnect(PQerrorMessage(connection_.get()));
  setUp(access);
  if (PQenterPipelineMode(connection_.get()) != 1) throw cannotConnect(PQerrorMessage(connection_.get()));
}

/// Outside the pipeline: the last result of what may be several statements.
ResultHandle Link::askAlone(const char* sql) {
  if (PQsendQuery(connection_.get(), sql) != 1) throw LinkLost{};
  Wait waited;
  ResultHandle last;
  while (ResultHandle result{next(waited)}) {
    const ExecStatusType status = PQresultStatus(result.get());
    last = std::move(result);
    if (status == PGRES_COPY_IN) break;
  }
  return last;
}

ResultHandle Link::alone(const char* sql) try {
  ResultHandle result = askAlone(sql);
  const ExecStatusType status = PQresultStatus(result.get());
  if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) return result;
  if (PQstatus(connection_.get()) != CONNECTION_OK) throw cannotConnect(PQerrorMessage(connection_.get()));
  throw statementFailed(
      result.get(), sql, [](void*, std::string_view) { return 0; }, nullptr);
} catch (const LinkLost& lost) {
  throw lost.isSilent ? lostSilent(sql) : cannotConnect(PQerrorMessage(connection_.get()));
}

void Link::setUp(Access access) {
  PQsetNoticeProcessor(
      connection_.get(), [](void*, const char*) {}, nullptr);
  alone((std::string(link_detail::sessionSettings) +
         (access == Access::Read ? "set default_transaction_read_only=on" : ""))
            .c_str());
  const auto isTrue = [](const ResultHandle& result) { return *PQgetvalue(result.get(), 0, 0) == 't'; };
  if (isTrue(alone(link_detail::functionsThere))) {
    const std::string current = "select jxc.version()>=" + std::to_string(functionVersion);
    if (access == Access::Read || isTrue(alone(current.c_str())) || !isTrue(alone(link_detail::mayRenew))) return;
  } else if (access != Access::Create) {
    throw link_detail::noAccountSet();
  }
  // One station at a time makes them.
  const std::string definitions =
      "begin; select pg_advisory_xact_lock(19770113,0);" + std::string(functionDefinitions()) + "commit";
  alone(definitions.c_str());
}

void Link::count(int sent) {
  if (sent != 1) throw LinkLost{};
  ++pending_;
}

void Link::send(const char* sql) {
  ask(sql, {});
}

void Link::ask(const std::string& sql, std::span<const char* const> values) {
  count(PQsendQueryParams(connection_.get(), sql.c_str(), static_cast<int>(values.size()), nullptr, values.data(),
                          nullptr, nullptr, 0));
}

void Link::prepare(const std::string& name, const std::string& sql) {
  count(PQsendPrepare(connection_.get(), name.c_str(), sql.c_str(), 0, nullptr));
}

void Link::run(const std::string& name, std::span<const char* const> values) {
  count(PQsendQueryPrepared(connection_.get(), name.c_str(), static_cast<int>(values.size()), values.data(), nullptr,
                            nullptr, 0));
}

// Sending and reading at the same time: a server that waits until its results are read takes no more commands.
void Link::wait(Wait& waited) {
  using namespace link_detail;
  const Clock::time_point start = Clock::now();
  const auto passed = [&start] {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start).count());
  };
  Clock::time_point end = start + patience();
  bool isCancelled = false;
  // An answer may come while a cancel is on its way, which would meet the next statement then.
  struct Heard {
    std::future<void> cancel;
    ~Heard() {
      if (cancel.valid()) cancel.wait_for(patienceForCancel);
    }
  } heard;
  for (;;) {
    const int unsent = PQflush(connection_.get());
    if (unsent < 0) throw LinkLost{};
    if (unsent == 0 && PQisBusy(connection_.get()) == 0) return;
    pollfd socket{PQsocket(connection_.get()), static_cast<short>(POLLIN | (unsent > 0 ? POLLOUT : 0)), 0};
    if (socket.fd < 0) throw LinkLost{};
    const int ready = ::poll(&socket, 1, passed() < secondsBeforeStop ? longLook : shortLook);
    if (ready < 0 && errno != EINTR) throw LinkLost{};
    if (ready > 0 && (socket.revents & (POLLIN | POLLERR | POLLHUP)) != 0 && PQconsumeInput(connection_.get()) == 0)
      throw LinkLost{};
    if (PQisBusy(connection_.get()) == 0 && PQflush(connection_.get()) == 0) return;
    waited.passed(passed());
    if (!isCancelled && (Clock::now() >= end || Wait::isStopWanted(passed()))) {
      isCancelled = true;
      heard.cancel = askToStop();
      end = Clock::now() + patienceAfterCancel;
    } else if (isCancelled && Clock::now() >= end) {
      throw LinkLost{.isSilent = true};
    }
  }
}

PGresult* Link::next(Wait& waited) {
  wait(waited);
  return PQgetResult(connection_.get());
}

std::vector<ResultHandle> Link::exchange() {
  std::vector<ResultHandle> results;
  results.reserve(pending_);
  Wait waited;
  if (PQpipelineSync(connection_.get()) != 1) throw LinkLost{};
  const std::size_t expected = std::exchange(pending_, 0);
  while (results.size() < expected) {
    ResultHandle result(next(waited));
    if (!result) {
      if (PQstatus(connection_.get()) != CONNECTION_OK) throw LinkLost{};
      continue;  // the end of one command's results
    }
    if (PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) throw LinkLost{};
    results.push_back(std::move(result));
    if (PQstatus(connection_.get()) != CONNECTION_OK) throw LinkLost{};
  }
  for (;;) {
    const ResultHandle result(next(waited));
    if (result && PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) break;
    if (PQstatus(connection_.get()) != CONNECTION_OK) throw LinkLost{};
  }
  return results;
}

ResultHandle Link::copyIn(const std::string& sql, std::string_view lines) {
  PGconn* const to = connection_.get();
  if (PQexitPipelineMode(to) != 1) throw LinkLost{};
  ResultHandle result = askAlone(sql.c_str());
  if (PQresultStatus(result.get()) == PGRES_COPY_IN) {
    constexpr std::size_t piece = std::size_t{1} << 20;
    for (std::size_t at = 0; at < lines.size(); at += piece) {
      const std::string_view part = lines.substr(at, piece);
      // What cannot be sent at once is kept by libpq, and sent before the next piece.
      if (PQputCopyData(to, part.data(), static_cast<int>(part.size())) != 1) throw LinkLost{};
      flush();
    }
    if (PQputCopyEnd(to, nullptr) != 1) throw LinkLost{};
    Wait waited;
    result.reset(next(waited));
    while (const ResultHandle rest{next(waited)}) {
    }
  }
  if (PQstatus(to) != CONNECTION_OK || PQenterPipelineMode(to) != 1) throw LinkLost{};
  return result;
}

/// Until everything is on its way; nothing is expected back.
void Link::flush() {
  const auto end = link_detail::Clock::now() + patience();
  while (const int unsent = PQflush(connection_.get())) {
    pollfd socket{PQsocket(connection_.get()), POLLIN | POLLOUT, 0};
    if (unsent < 0 || socket.fd < 0) throw LinkLost{};
    const int ready = ::poll(&socket, 1, link_detail::longLook);
    if (ready > 0 && (socket.revents & POLLIN) != 0 && PQconsumeInput(connection_.get()) == 0) throw LinkLost{};
    if (link_detail::Clock::now() >= end) throw LinkLost{.isSilent = true};
  }
}

bool Link::isClosed() {
  if (PQstatus(connection_.get()) != CONNECTION_OK) return true;
  pollfd socket{PQsocket(connection_.get()), POLLIN, 0};
  // Nobody asked anything: what comes now is a farewell, and the end of the connection behind it.
  for (int patience = 0; ::poll(&socket, 1, patience) > 0; patience = 20)
    if (PQconsumeInput(connection_.get()) == 0 || PQstatus(connection_.get()) != CONNECTION_OK) return true;
  return false;
}

std::future<void> Link::askToStop() {
  std::promise<void> told;
  std::future<void> done = told.get_future();
  std::thread([canceller = canceller_, told = std::move(told)]() mutable {
    char reason[256];
    if (canceller->handle && !canceller->underWay.exchange(true)) {
      PQcancel(canceller->handle.get(), reason, sizeof reason);
      canceller->underWay = false;
    }
    told.set_value();
  }).detach();
  return done;
}

// Later it would meet the next statement of this connection; a server that is silent is not waited for.
void Link::cancel() {
  askToStop().wait_for(link_detail::patienceForCancel);
}

}  // namespace jxc::postgres
