// 服务器角色: the owner of an account set's tables, and the users of its stations.
#include "engine/error.h"
#include "engine/postgres/connecting.h"
#include "engine/postgres/failure.h"
#include "engine/postgres/postgres_database.h"

#include <string>

namespace jxc::postgres {
namespace roles_detail {

/// A connection that says one thing after the other.
class Owner {
 public:
  explicit Owner(const std::string& address) : connection_(connectTo(address)) {}

  std::string asked(const std::string& sql) {
    const ResultHandle result = done(sql);
    return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
  }
  void run(const std::string& sql) { done(sql); }

  std::string name(std::string_view plain) {
    return freed(PQescapeIdentifier(connection_.get(), plain.data(), plain.size()));
  }
  std::string text(std::string_view plain) {
    return freed(PQescapeLiteral(connection_.get(), plain.data(), plain.size()));
  }

 private:
  ResultHandle done(const std::string& sql) {
    ResultHandle result(PQexec(connection_.get(), sql.c_str()));
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) return result;
    if (PQstatus(connection_.get()) != CONNECTION_OK) throw cannotConnect(PQerrorMessage(connection_.get()));
    throw statementFailed(
        result.get(), sql, [](void*, std::string_view) { return 0; }, nullptr);
  }
  static std::string freed(char* escaped) {
    std::string result = escaped ? escaped : "";
    PQfreemem(escaped);
    return result;
  }

  ConnectionHandle connection_;
};

// Of whoever made the account set; in a database that has none, of nobody.
constexpr const char* ownerOfTables =
    "select pg_get_userbyid(relowner) from pg_class where oid=to_regclass('jxc_xtcs')";

void makeUser(Owner& owner, std::string_view station) {
  if (!owner.asked("select 1 from pg_roles where rolname=" + owner.text(station)).empty()) return;
  try {
    owner.run("create role " + owner.name(station) + " login");
  } catch (const DbError& failure) {
    throw DbError(failure.kind(),
                  QStringLiteral("服务器上还没有用户“%1”，帐套所有者也不能建立它。请由服务器的管理员执行 createuser "
                                 "%1，再试一次。")
                      .arg(QString::fromUtf8(station.data(), qsizetype(station.size()))));
  }
}

/// Takes from everybody but its owner that he may change rows of a table that stands, or take some out.
std::string leaveRowsText(std::string_view table) {
  const std::string plain(table);
  return "do $$ declare who text; begin "
         "select string_agg(distinct case grantee when 0 then 'public' else grantee::regrole::text end,',') into who "
         "from pg_class,aclexplode(relacl) where oid='" +
         plain +
         "'::regclass and grantee<>relowner; "
         "if who is not null then execute 'revoke update,delete,truncate on " +
         plain + " from '||who; end if; end $$";
}

}  // namespace roles_detail

void PostgresDatabase::letRowsStay(std::string_view table) {
  openLevels();
  control(roles_detail::leaveRowsText(table).c_str());
  exchange();
}

std::string PostgresDatabase::ownerToAsk() {
  const RowSet rows = ask(
      "select case when pg_has_role(relowner,'usage') then '' else pg_get_userbyid(relowner)::text end from pg_class "
      "where oid=to_regclass('jxc_xtcs')",
      {});
  return rows.isEmpty() ? std::string() : std::string(rows.utf8(0, 0));
}

}  // namespace jxc::postgres

namespace jxc {

void admitStation(const QString& ownersAddress, const QString& station, std::span<const std::string_view> rowsStay) {
  using namespace postgres::roles_detail;
  const std::string plain = station.toStdString();
  Owner owner(ownersAddress.trimmed().toStdString());
  if (owner.asked(ownerOfTables) == plain)
    throw DbError(DbError::Kind::Other, QStringLiteral("“%1”是帐套的所有者，工作站要用另一个用户。").arg(station));
  owner.run("begin");
  makeUser(owner, plain);
  const std::string user = owner.name(plain), schema = owner.name(owner.asked("select current_schema()")),
                    database = owner.name(owner.asked("select current_database()"));
  // A stranger who may connect could take the lock of those who write, and hold it.
  owner.run("revoke connect,temporary on database " + database + " from public");
  owner.run("grant connect on database " + database + " to " + user);
  // Without a word he would look into a schema of his own name, where a user called jxc has the functions.
  owner.run("alter role " + user + " in database " + database + " set search_path=" + schema);
  owner.run("grant usage on schema " + schema + ",jxc,jxc_stations to " + user);
  const std::string rows = "select,insert,update,delete on ", counters = "usage,select,update on ";
  owner.run("grant " + rows + "all tables in schema " + schema + ",jxc_stations to " + user);
  owner.run("grant " + counters + "all sequences in schema " + schema + " to " + user);
  for (const std::string_view table : rowsStay)
    owner.run(leaveRowsText(table));
  // Tables that the owner makes anew, with an upgrade or when defaults are restored; `letRowsStay` follows the log's.
  const std::string later = "alter default privileges in schema " + schema + " grant ";
  owner.run(later + "select,insert,update,delete on tables to " + user);
  owner.run(later + "usage,select,update on sequences to " + user);
  owner.run("commit");
}

void letRowsStay(Database& database, std::string_view table) {
  if (auto* const server = dynamic_cast<postgres::PostgresDatabase*>(&database)) server->letRowsStay(table);
}

bool isOnServer(Database& database) {
  return dynamic_cast<postgres::PostgresDatabase*>(&database) != nullptr;
}

QString ownerToAsk(Database& database) {
  auto* const server = dynamic_cast<postgres::PostgresDatabase*>(&database);
  return server ? QString::fromStdString(server->ownerToAsk()) : QString();
}

std::unique_ptr<Database> openAsOwner(Database& station, const QString& password) {
  auto& server = dynamic_cast<postgres::PostgresDatabase&>(station);
  return std::make_unique<postgres::PostgresDatabase>(
      server.address(), PostgresOptions{.user = QString::fromStdString(server.ownerToAsk()), .password = password});
}

}  // namespace jxc
