// 操作日志: who did what, when. Each row carries a hash over the one before it, so that a row that somebody changed,
// took out or put in is found (`prove`).
#pragma once

#include "engine/database.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>

namespace jxc {

/// Tables whose rows stay: the users of stations on a server may only add some.
inline constexpr std::string_view kLogTables[] = {"jxc_log"};

/// Adds a row to the operation log under the operator of the session. Texts beyond the column's 200 characters are cut:
/// a long remark must not stop the command that it tells of.
void writeLog(const QString& text);
/// Into the log of another set than the one in use.
void writeLog(Database& database, const QString& text);

/// Logs that a row of a list of words, people or rights was added (`before` is empty), deleted (`now` is empty) or
/// changed: "修改地区：城东 → 城西". The table gives the word.
void logChange(std::string_view table, const QString& before, const QString& now);

/// The one way to empty the log, for every command that does: all rows go into a file of the backup folder, then out of
/// the log, and a first row tells why, how many there were and the hash of the last one, from which the chain goes on.
/// Returns the file; nothing when there was no row. Throws DbError, and takes none, when the file cannot be written.
/// With `until`, a moment, only the rows before the first one that is younger: the last row tells it then, and the
/// chain goes on from the hash that it tells.
std::optional<QString> takeLogRows(Database& database, const QString& why, const QString& until = {});

/// Hash of a row over that of the row before it (64 hexadecimal digits; empty for the first row of a set).
QString logHash(QStringView before, QStringView time, QStringView name, QStringView note);
/// The hash that such a row tells; nothing when this is the text of another row.
std::optional<QString> hashOfTakenRows(QStringView note);
/// The hash that the next row will be chained to; empty in a set whose log is not chained yet.
QString lastLogHash(Database& database);
/// Makes the end of the chain, and chains the rows of an older log as they stand: all of it or nothing.
void beginLogChain(Database& database);

}  // namespace jxc
