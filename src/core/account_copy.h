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

}  // namespace jxc
