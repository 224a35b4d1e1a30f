// 连接: one connection to the server, in pipeline mode: commands are sent one behind the other, results read at the
// end.
#pragma once

#include "engine/postgres/native.h"
#include "engine/waiting.h"

#include <atomic>
#include <cstddef>
#include <future>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::postgres {

/// The connection broke. Nothing that was sent since the last exchange is known to have happened.
struct LinkLost {
  bool isSilent = false;  // the server did not answer, not even to the request to stop
};

/// Every wait is told to the wait listener (engine/waiting.h), and ends: a statement that has no answer within the
/// patience of the thread, or that the operator waits for no longer, is cancelled; a server that does not answer to
/// that either is given up.
class Link {
 public:
  enum class Access { Read, Write, Create };

  /// Connects, sets up the session, and makes or renews the functions of the dialect unless it only reads. Throws
  /// what `connectTo` throws, DbError(File) for a database that is none of this program and that is not to become one.
  /// A user and a password that are given go before those of the address. Whoever does not own the functions takes
  /// older ones as they are: the owner renews them.
  Link(const std::string& address, Access access, const std::string& user = {}, const std::string& password = {});

  void send(const char* sql);
  void prepare(const std::string& name, const std::string& sql);
  /// Null pointers are null values; texts end with a zero.
  void run(const std::string& name, std::span<const char* const> values);
  void ask(const std::string& sql, std::span<const char* const> values);
  std::size_t pending() const { return pending_; }

  /// Sends what is left and reads one result for each command, failures among them. Throws LinkLost.
  std::vector<ResultHandle> exchange();

  /// Lines for a `copy … from stdin`; nothing may be pending. The result may be a failure.
  ResultHandle copyIn(const std::string& sql, std::string_view lines);

  /// Whether the server has closed the connection meanwhile; asks nobody, only looks.
  bool isClosed();
  /// Asks the running command to stop, from any thread, and waits until the server has heard it; but a moment at most,
  /// since the request is a connection of its own and may hang as well.
  void cancel();

 private:
  void setUp(Access access);
  ResultHandle alone(const char* sql);
  ResultHandle askAlone(const char* sql);
  void flush();
  void count(int sent);
  PGresult* next(Wait& waited);
  void wait(Wait& waited);
  std::future<void> askToStop();

  struct Canceller {
    CancelHandle handle;
    std::atomic<bool> underWay = false;
  };
  ConnectionHandle connection_;
  std::shared_ptr<Canceller> canceller_ = std::make_shared<Canceller>();
  std::size_t pending_ = 0;
};

}  // namespace jxc::postgres
