// 帐套文件和它的日志: whether the log beside an account file is the log of that file.
#pragma once

#include "engine/sqlite/failure.h"

#include <QStringList>

namespace jxc::sqlite {

/// What was found before SQLite opened a file.
struct Opening {
  bool alone = false;       // nobody else had it open
  bool dropsPages = false;  // SQLite is going to drop some that the disk has spoilt
  QStringList remarks;      // for the operator
};

/// Before SQLite sees a file and plays its log into it. After a crash the log stays beside the file; who copies a
/// backup over the file then leaves it there, and yesterday's file would come up with today's pages. A log that is
/// certainly not the file's own is put aside under another name and told; what is doubtful is believed. Pages that
/// SQLite is going to drop are kept as well. Nobody can open the file meanwhile. Throws DbError(File) when another
/// program holds the file open and its log is gone.
Opening settleLog(const FileRole& role);

}  // namespace jxc::sqlite
