// 备份: a copy of one moment of the account set under a dated name.
#pragma once

#include "engine/database.h"

#include <QString>

namespace jxc {

/// Copies an account set into a folder, which is made when it is missing, while others go on working:
/// "晴川进销存21_05_03_14_30_00.DAT". Returns the file. Throws DbError, with the reason in words.
QString backupInto(const QString& folder, Database& database);

/// The file of the next backup there: "晴川进销存21_05_03_14_30_00.DAT", with "_2" and so on behind the stamp where
/// such a one is there already: nothing is written over. `mark` stands before the stamp: "(恢复前)".
QString backupFileIn(const QString& folder, const QString& mark = {});

/// The folder of the shop's backups where there is one, otherwise `backup` in the program directory, which is made.
QString backupFolder(Database& database);
/// The time as it stands in the names of files there: "21_05_03_14_30_00".
QString backupStamp();

/// The same of the account set in use: into the folder of the shop's backups where there is one, otherwise into
/// `backup` in the program directory.
QString backupAccountSet();

}  // namespace jxc
