// 帐套文件: an account file with what stands beside it: made, moved and taken away together.
#pragma once

#include <QString>

namespace jxc {

/// What stands under the name of a set that is being made, until the list of sets is opened again.
QString unfinishedSet(const QString& file);
/// The same for a console, which may be at it while a window opens the list: nobody else tidies that away.
QString unfinishedAtConsole(const QString& file);
/// Makes a whole new account set, all tables and their first rows, under that name; what a start that was cut off left
/// there goes. Throws DbError, and leaves nothing then; `essential` as in SqliteOptions.
void makeUnfinishedSet(const QString& file, bool essential = false);

/// Moves an account file with its log, or the log that is all that is left of one, and brings the names onto the disk.
/// Nothing that stands there already is replaced. Throws DbError; what was moved is back under its name then, or named.
void moveSetFile(const QString& from, const QString& to);
/// Deletes one with its log. False when it is still there.
bool removeSetFile(const QString& file);

}  // namespace jxc
