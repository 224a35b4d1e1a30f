// 服务器: an account set on a PostgreSQL server.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>
#include <span>
#include <string_view>

namespace jxc {

struct PostgresOptions {
  bool create = false;  // an empty database becomes an account set; otherwise one that is none is an error
  bool readOnly = false;
  /// Everything that is done over this connection is taken back when it ends: a test in a database of its own. There
  /// is no second reader then.
  bool trial = false;
  /// Another user of the server than the address says, and his password, for what only he may do. Empty: as the
  /// address.
  QString user, password;
};

/// Opens an account set on a server: an address of libpq, `postgresql://…` or `host=… dbname=…`. A password comes from
/// libpq's own password or service file. Throws ConnectionLost when the server is not there, DbError(File) when the
/// database is no account set.
std::unique_ptr<Database> openPostgres(const QString& address, const PostgresOptions& options = {});

/// A station's user on the server reads and writes rows and no more: he makes, changes and drops no table, and in those
/// of `rowsStay` he neither changes nor deletes a row. Makes him, without a password, where he is not there yet; keeps
/// whoever is neither he nor the owner out of the database. Said again after tables came that the owner did not make.
/// The address must be the owner's. Throws DbError, among others when the owner may not make users.
void admitStation(const QString& ownersAddress, const QString& station, std::span<const std::string_view> rowsStay);

/// Says so of a table that was made anew: it has the rights of any new one. Over a connection of the owner's; nothing
/// for a file.
void letRowsStay(Database& database, std::string_view table);

/// Whether an account set lives on a server.
bool isOnServer(Database& database);
/// Whose the account set's tables are on the server; empty when this connection may do what he may, and for a file.
QString ownerToAsk(Database& database);
/// The same account set over a connection of its owner's. Throws DbError when the password is wrong.
std::unique_ptr<Database> openAsOwner(Database& station, const QString& password);

/// The connection to the server broke, or the server said nothing for too long and the connection was given up. The
/// message says whether the command was kept, or that nobody knows yet.
class ConnectionLost : public DbError {
 public:
  enum class How : char { Broken, Unknown, Silent };
  ConnectionLost(const QString& message, std::string statement, How how = How::Broken)
      : DbError(Kind::Other, message, std::move(statement)), how_(how) {}
  /// Whether it broke at the very end of a command and could not be made again to see.
  bool isUnknown() const { return how_ == How::Unknown; }
  How how() const { return how_; }
  /// Whether the server did not answer: to ask once more would be to wait as long again.
  bool isSilent() const { return how_ == How::Silent; }

 private:
  How how_;
};

}  // namespace jxc
