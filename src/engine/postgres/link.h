// 连接: one connection to the server, in pipeline mode: commands are sent one behind the other, results read at the
// end.
#pragma once

#include "engine/postgres/native.h"
#include "engine/waiting.h"

#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::postgres {

/// The connection broke. Nothing that was sent since the last exchange is known to have happened.
struct LinkLost {};

/// Every wait is told to the wait listener (engine/waiting.h).
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
  /// Asks the running command to stop, from any thread.
  void cancel();

 private:
  void setUp(Access access);
  ResultHandle alone(const char* sql);
  void count(int sent);
  PGresult* next(Wait& waited);
  void wait(Wait& waited);

  ConnectionHandle connection_;
  CancelHandle cancel_;
  std::mutex cancelling_;
  std::size_t pending_ = 0;
};

}  // namespace jxc::postgres
