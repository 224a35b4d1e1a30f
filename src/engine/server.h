// 服务器: an account set on a PostgreSQL server.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>

namespace jxc {

struct PostgresOptions {
  bool create = false;  // an empty database becomes an account set; otherwise one that is none is an error
  bool readOnly = false;
  /// Everything that is done over this connection is taken back when it ends: a test in a database of its own. There
  /// is no second reader then.
  bool trial = false;
};

/// Opens an account set on a server: an address of libpq, `postgresql://…` or `host=… dbname=…`. A password comes from
/// libpq's own password or service file. Throws ConnectionLost when the server is not there, DbError(File) when the
/// database is no account set.
std::unique_ptr<Database> openPostgres(const QString& address, const PostgresOptions& options = {});

/// The connection to the server broke. The message says whether the command was kept, or that nobody knows yet.
class ConnectionLost : public DbError {
 public:
  ConnectionLost(const QString& message, std::string statement, bool unknown = false)
      : DbError(Kind::Other, message, std::move(statement)), unknown_(unknown) {}
  /// Whether it broke at the very end of a command and could not be made again to see.
  bool isUnknown() const { return unknown_; }

 private:
  bool unknown_;
};

}  // namespace jxc
