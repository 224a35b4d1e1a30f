#include "engine/postgres/connecting.h"
#include "engine/postgres/failure.h"
#include "engine/postgres/native.h"
#include "engine/presence_ends.h"

#include <chrono>
#include <cstdlib>
#include <future>
#include <string>
#include <utility>

namespace jxc::postgres {
namespace server_presence_detail {

// Advisory locks of the session. The first pair is the gate: everybody at work holds it together with others, whoever
// wants the set for himself takes it alone as well, which nobody but he gets while another one is there. The others say
// who and what for; no text has room in a lock.
const std::string gate = "(19770113,2)";
constexpr int whoClass = 19770114, workClass = 19770115;

std::string pair(int group, std::int64_t number) {
  return '(' + std::to_string(group) + ',' + std::to_string(number) + ')';
}

/// Numbers of a group that other connections hold.
std::string heldByOthers(int group, const char* condition = "") {
  return "select distinct l.pid,l.objid::bigint from pg_locks l where l.locktype='advisory' and l.granted and"
         " l.objsubid=2 and l.database=(select oid from pg_database where datname=current_database()) and l.classid=" +
         std::to_string(group) + " and l.pid<>pg_backend_pid()" + condition + " order by 2";
}

std::int64_t number(const PGresult* result, int row, int column) {
  return std::atoll(PQgetvalue(result, row, column));
}

/// A connection that breaks is made again, and what it held with it, at the next call, `stay` among them; until then
/// the station is not seen by others. Calls throw ConnectionLost when that fails.
class ServerPresence final : public Presence {
 public:
  ServerPresence(std::string address, std::string user) : address_(std::move(address)), user_(std::move(user)) {}
  ~ServerPresence() override;
  ServerPresence(const ServerPresence&) = delete;
  ServerPresence& operator=(const ServerPresence&) = delete;

  bool enter(const Station& station) override;
  void leave() override;
  bool stay() override;
  std::vector<Station> others() override;
  bool takeAlone(int work) override;
  void giveBack() override;
  std::optional<Alone> aloneBy() override;

 private:
  bool isConnected() const;
  PGconn* connection();
  void adopt(ConnectionHandle connection);
  ResultHandle ask(const std::string& sql);
  bool isTrue(const std::string& sql);
  bool comeIn();

  std::string address_, user_;
  ConnectionHandle connection_;
  std::future<ConnectionHandle> coming_;  // made behind the window
  Station station_;
  bool wants_ = false;   // has come to work
  bool isHere_ = false;  // and others see it
  int work_ = 0;
};

bool ServerPresence::isConnected() const {
  return connection_ && PQstatus(connection_.get()) == CONNECTION_OK;
}

void ServerPresence::adopt(ConnectionHandle connection) {
  connection_ = std::move(connection);
  // The server ends what hangs; it must not wait for a lock that stands on a table either.
  for (const char* setting : {"set statement_timeout='10s'", "set lock_timeout='5s'"})
    const ResultHandle done(PQexec(connection_.get(), setting));
  isHere_ = false;
  isHere_ = wants_ && comeIn();
  if (const int work = std::exchange(work_, 0); work > 0) takeAlone(work);
}

PGconn* ServerPresence::connection() {
  if (!isConnected()) adopt(connectTo(address_, user_));
  return connection_.get();
}

bool ServerPresence::stay() {
  if (!wants_) return true;
  if (connection_) PQconsumeInput(connection_.get());  // reads, without waiting, that the server has gone
  if (!isConnected()) {
    if (!coming_.valid())
      coming_ = std::async(std::launch::async, [address = address_, user = user_] { return connectTo(address, user); });
    if (coming_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return true;
    adopt(coming_.get());
  }
  if (!isHere_) isHere_ = comeIn();
  return isHere_;
}

ResultHandle ServerPresence::ask(const std::string& sql) {
  for (bool again = false;; again = true) {
    ResultHandle result(PQexec(connection(), sql.c_str()));
    if (PQresultStatus(result.get()) == PGRES_TUPLES_OK) return result;
    if (PQstatus(connection_.get()) == CONNECTION_OK)
      throw statementFailed(
          result.get(), sql, [](void*, std::string_view) { return 0; }, nullptr);
    if (again) throw cannotConnect(PQerrorMessage(connection_.get()));
  }
}

bool ServerPresence::isTrue(const std::string& sql) {
  const ResultHandle result = ask(sql);
  return PQntuples(result.get()) > 0 && *PQgetvalue(result.get(), 0, 0) == 't';
}

bool ServerPresence::comeIn() {
  if (!isTrue("select pg_try_advisory_lock_shared" + gate)) return false;
  ask("select pg_advisory_lock_shared" + pair(whoClass, station_.number));
  return true;
}

bool ServerPresence::enter(const Station& station) {
  connection();
  if (isHere_ && station.number == station_.number) return true;
  if (isHere_) ask("select pg_advisory_unlock_shared" + pair(whoClass, station_.number));
  station_ = station;
  if (isHere_)
    ask("select pg_advisory_lock_shared" + pair(whoClass, station_.number));
  else
    isHere_ = comeIn();
  wants_ = isHere_;
  return isHere_;
}

ServerPresence::~ServerPresence() {
  leave();
}

void ServerPresence::leave() {
  wants_ = isHere_ = false;
  work_ = 0;
  // Said, not left to the end of the connection, which the server sees a moment later.
  if (connection_) const ResultHandle done(PQexec(connection_.get(), "select pg_advisory_unlock_all()"));
  connection_.reset();
}

std::vector<Station> ServerPresence::others() {
  const ResultHandle result = ask(heldByOthers(whoClass));
  std::vector<Station> found;
  for (int row = 0; row < PQntuples(result.get()); ++row)
    found.push_back({{}, number(result.get(), row, 1)});
  return found;
}

bool ServerPresence::takeAlone(int work) {
  if (work_ > 0) return true;
  if (!isTrue("select pg_try_advisory_lock" + gate)) return false;
  ask("select pg_advisory_lock_shared" + pair(workClass, work));
  work_ = work;
  return true;
}

void ServerPresence::giveBack() {
  if (work_ == 0) return;
  ask("select pg_advisory_unlock_shared" + pair(workClass, std::exchange(work_, 0)));
  ask("select pg_advisory_unlock" + gate);
}

std::optional<Presence::Alone> ServerPresence::aloneBy() {
  const ResultHandle work = ask(heldByOthers(workClass));
  if (PQntuples(work.get()) == 0) return {};
  Alone alone{static_cast<int>(number(work.get(), 0, 1)), {}};
  const ResultHandle who =
      ask(heldByOthers(whoClass, (" and l.pid=" + std::string(PQgetvalue(work.get(), 0, 0))).c_str()));
  if (PQntuples(who.get()) > 0) alone.by.number = number(who.get(), 0, 1);
  return alone;
}

}  // namespace server_presence_detail

std::unique_ptr<Presence> presenceOnServer(const std::string& address, const std::string& user) {
  return std::make_unique<server_presence_detail::ServerPresence>(address, user);
}

}  // namespace jxc::postgres
