#include "engine/postgres/connecting.h"

#include "engine/error.h"
#include "engine/postgres/failure.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <tuple>
#include <utility>

namespace jxc::postgres {
namespace connecting_detail {

using Clock = std::chrono::steady_clock;

constexpr const char* verified = "verify-full";
constexpr const char* usualTimeout = "10";  // seconds, for each server that the address names

/// What an address comes to once its service, the environment and the usual values are filled in.
class Settings {
 public:
  explicit Settings(PQconninfoOption* options) : options_(options) {}
  ~Settings() { PQconninfoFree(options_); }
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  std::string_view of(std::string_view keyword) const {
    for (const PQconninfoOption* option = options_; option && option->keyword; ++option)
      if (option->keyword == keyword) return option->val ? option->val : "";
    return {};
  }

 private:
  PQconninfoOption* options_;
};

template <class Take>
bool every(std::string_view list, Take take) {
  while (!list.empty()) {
    const std::size_t comma = list.find(',');
    if (!take(list.substr(0, comma))) return false;
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
  }
  return true;
}

bool isThisMachine(std::string_view host) {
  return host.empty() || host.front() == '/' || host.front() == '@' || host == "localhost" || host == "::1" ||
         host.starts_with("127.");
}

bool staysHere(const Settings& settings) {
  const std::string_view numbers = settings.of("hostaddr");
  return every(numbers.empty() ? settings.of("host") : numbers, isThisMachine);
}

/// What goes before the address; null where it decides.
struct Said {
  const char* mode = nullptr;
  const char* user = nullptr;
  const char* password = nullptr;
};

ConnectionHandle begin(const std::string& address, const Said& said) {
  // What stands in the address goes before what stands in front of it here; a null value says nothing.
  const std::pair<const char*, const char*> settings[] = {{"fallback_application_name", "jxc"},
                                                          {"connect_timeout", usualTimeout},
                                                          {"keepalives_idle", "10"},
                                                          {"keepalives_interval", "5"},
                                                          {"keepalives_count", "3"},
                                                          {"tcp_user_timeout", "30000"},
                                                          {"dbname", address.c_str()},
                                                          {"client_encoding", "UTF8"},
                                                          {"sslmode", said.mode},
                                                          {"user", said.user},
                                                          {"password", said.password},
                                                          {nullptr, nullptr}};
  std::array<const char*, std::size(settings)> keys{}, values{};
  for (std::size_t i = 0; i < keys.size(); ++i)
    std::tie(keys[i], values[i]) = settings[i];
  ConnectionHandle connection(PQconnectStartParams(keys.data(), values.data(), 1));
  if (!connection) throw DbError(DbError::Kind::Other, QStringLiteral("内存不足。"));
  return connection;
}

/// An address without a word about it, to another machine. The environment does not count: it is not what the shop's
/// stations have in common.
bool mustBeVerified(const std::string& address, const Settings& settings) {
  if (staysHere(settings)) return false;
  const Settings own(PQconninfoParse(address.c_str(), nullptr));
  if (!own.of("sslmode").empty()) return false;
  const char* const environment = std::getenv("PGSSLMODE");
  const std::string_view mode = settings.of("sslmode"), usual = environment && *environment ? environment : "prefer";
  return own.of("service").empty() || mode == usual;
}

/// The file with the certificates that the server's one is held against.
QString rootCertificate(const Settings& settings) {
  const std::string_view named = settings.of("sslrootcert");
  if (!named.empty()) return QString::fromUtf8(named.data(), static_cast<qsizetype>(named.size()));
  return QDir::homePath() + QStringLiteral("/.postgresql/root.crt");
}

DbError notVerified(const Settings& settings, bool isEncrypted, const QString& reason) {
  const QString root = rootCertificate(settings);
  QString what;
  if (!isEncrypted)
    what = QStringLiteral("数据库服务器没有开启加密连接（TLS），没有登录，密码没有发出。");
  else if (!QFileInfo::exists(root))
    what = QStringLiteral("本机没有用来验证数据库服务器的根证书，没有登录，密码没有发出：%1").arg(root);
  else
    what = QStringLiteral("数据库服务器的证书不能通过验证，它可能不是你的服务器，没有登录，密码没有发出。");
  return DbError(DbError::Kind::File,
                 what +
                     QStringLiteral("\r\n\r\n请在服务器上开启加密并把根证书放到本机，做法见《多台工作站》；"
                                    "确实不需要加密的，在连接地址里写明 sslmode=disable。\r\n\r\n") +
                     reason);
}

Clock::duration patience(const Settings& settings) {
  const auto seconds = std::strtol(std::string(settings.of("connect_timeout")).c_str(), nullptr, 10);
  const std::string_view hosts = settings.of("host");
  const auto servers = 1 + std::count(hosts.begin(), hosts.end(), ',');
  return seconds > 0 ? std::chrono::seconds(seconds * servers) : Clock::duration::max() / 2;
}

/// Until it stands or failed: the last thing that it waited for, and whether the server offers TLS.
struct Progress {
  ConnStatusType phase = CONNECTION_BAD;
  bool isEncrypted = false;
  bool isOver = false;  // it waited too long
};
Progress finish(PGconn* connection, Clock::duration patience) {
  Progress progress;
  const Clock::time_point end = Clock::now() + patience;
  for (PostgresPollingStatusType next = PGRES_POLLING_WRITING; PQstatus(connection) != CONNECTION_BAD;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    progress.isOver = left <= 0;
    if (progress.isOver) break;
    pollfd socket{PQsocket(connection), static_cast<short>(next == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
    const int ready = ::poll(&socket, 1, static_cast<int>(std::min<long long>(left, 1000)));
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    progress.phase = PQstatus(connection);
    // The server's answer to the question whether it encrypts is a single letter: with the next step it is used up.
    char answer = 0;
    if (progress.phase == CONNECTION_SSL_STARTUP && !progress.isEncrypted)
      progress.isEncrypted = ::recv(PQsocket(connection), &answer, 1, MSG_PEEK) == 1 && answer == 'S';
    next = PQconnectPoll(connection);
    if (next == PGRES_POLLING_OK || next == PGRES_POLLING_FAILED) break;
  }
  return progress;
}

}  // namespace connecting_detail

ConnectionHandle connectTo(const std::string& address, const std::string& user, const std::string& password) {
  using namespace connecting_detail;
  Said said{nullptr, user.empty() ? nullptr : user.c_str(), password.empty() ? nullptr : password.c_str()};
  ConnectionHandle connection = begin(address, said);
  const bool isVerified = mustBeVerified(address, Settings(PQconninfo(connection.get())));
  if (isVerified) {
    said.mode = verified;
    connection = begin(address, said);
  }
  const Settings settings(PQconninfo(connection.get()));
  const Progress progress = finish(connection.get(), patience(settings));
  if (PQstatus(connection.get()) == CONNECTION_OK) return connection;
  const char* const reason = progress.isOver ? "timeout expired" : PQerrorMessage(connection.get());
  if (isVerified && progress.phase == CONNECTION_SSL_STARTUP && !progress.isOver)
    throw notVerified(settings, progress.isEncrypted, QString::fromUtf8(reason).trimmed());
  if (PQconnectionUsedPassword(connection.get()) != 0 && progress.phase == CONNECTION_AWAITING_RESPONSE)
    throw DbError(DbError::Kind::File, QStringLiteral("数据库服务器上没有这个用户，或者密码不正确。"));
  throw cannotConnect(reason);
}

}  // namespace jxc::postgres
