// 帐套所在: where an account set lives: in its file, or on a server whose address stands in the file.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>

namespace jxc {

/// Whether a text is the address of a server: `postgresql://…`, or words of the form name=value with dbname, service
/// or host among them.
bool isServerAddress(const QString& text);

/// The address that an account file holds instead of a database: its only line, blank ones and those that begin with
/// `#` aside. Empty when it holds none.
QString addressIn(const QString& file);

/// Throws DbError, with the way to a server, for a database file that lies or would lie on a network share.
void refuseNetworkShare(const QString& file);

/// Opens the account set of a file, or of the server whose address it holds. A database file on a network share is
/// refused: several stations would damage it there. Throws DbError.
std::unique_ptr<Database> openAccountFile(const QString& file);

/// The same for what an administrator types: a file or an address.
std::unique_ptr<Database> openAccountPlace(const QString& place);

}  // namespace jxc
