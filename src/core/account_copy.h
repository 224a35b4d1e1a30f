// 帐套复制: a whole account set from one place to another: file to server, server to file, and back.
#pragma once

#include "engine/database.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace jxc {

struct CopyProgress {
  QString table;                         // that is being copied
  std::int64_t rows = 0, totalRows = 0;  // of all tables so far
};

/// Copies every table into an empty account set, in one transaction: when it breaks off, the target is as empty as
/// before. Counters go on where they stood. At the end counts and sums of every table are compared; what differs is
/// returned, one line each, and nothing is kept then. Throws DbError(Constraint) when the target has tables already.
QStringList copyAccountSet(Database& from, Database& to, const std::function<void(const CopyProgress&)>& progress = {});

/// Puts the content of an account file in the place of that of another set, in one transaction, so that it happens
/// whole or not at all. On a file that is page by page; on a server row by row, compared in the same way, and tables
/// that stand there in the same shape are emptied, not made anew, so that whoever may use them still may. False when
/// `progress` (percent) stopped it. Throws DbError; nothing is changed then either.
bool replaceAccountSet(Database& from, Database& to, const std::function<bool(int percent)>& progress = {});
/// Whether that goes on now. Nothing else of this program may use the connection of the set then, which `progress`
/// might give occasion to: a statement would end, and keep, what is written half.
bool isReplacingAccountSet();

}  // namespace jxc
