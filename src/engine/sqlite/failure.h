// 失败: what SQLite reports, as a DbError in words for the operator.
#pragma once

#include "engine/failures.h"

#include <QString>

#include <sqlite3.h>
#include <string_view>

namespace jxc::sqlite {

/// Which file a connection stands for. A failure to open an essential file, and a damaged one, name `jxc.mdb`: the
/// application takes that for the end of the program and calls the file unreadable. A sound file that cannot be reached
/// now (a permission, a lock, a full disk) is never named: nobody shall play a backup over it.
struct FileRole {
  QString file;  // as it was given; empty for a database in memory
  bool essential = true;
  bool reader = false;  // never writes: its transaction is a look at one moment and takes no lock
};

/// " 文件：…" behind a message; nothing for a file that must not be named because its name would end the program.
QString fileNote(const QString& file, bool essential);

/// "帐套数据库（jxc.mdb）打不开：… 文件：…", or without that name for a file that is not essential.
DbError cannotOpen(const FileRole& role, const QString& reason, DbError::Kind kind = DbError::Kind::File);
/// "帐套打不开：…": nothing is wrong with the file, but it cannot be reached or written now.
DbError cannotReach(const FileRole& role, const QString& reason, DbError::Kind kind = DbError::Kind::File);
/// One of the two, for a result code of the first calls on a file.
DbError cannotOpen(const FileRole& role, int code);

/// What the operating system says when a file cannot be made, written or renamed: a value of errno in words.
QString diskReason(int error);

/// For a result code and the message of the connection, of a statement in the middle of work.
DbError statementFailed(const FileRole& role, int code, const char* nativeMessage, std::string_view statement);

}  // namespace jxc::sqlite
