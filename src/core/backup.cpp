#include "core/backup.h"

#include "core/build_info.h"
#include "core/clock.h"
#include "core/file_names.h"
#include "core/program_directory.h"
#include "core/statements.h"
#include "core/verified_copy.h"
#include "platform/machine.h"

#include <QDir>

namespace jxc {

QString backupInto(const QString& folder, Database& database) {
  if (!makePrivateFolder(folder))
    throw DbError(DbError::Kind::File, QStringLiteral("备份没有写成：文件夹 %1 不能建立。").arg(folder));
  const QString file = backupFileIn(folder);
  makeVerifiedCopy(database, file);
  return file;
}

QString backupFileIn(const QString& folder, const QString& mark) {
  return freeFileName(folder, QString::fromUtf16(build::accountName) + mark + backupStamp(), QStringLiteral(".DAT"));
}

QString backupFolder(Database& database) {
  const QString chosen = database.lookup("select back_path from jxc_backup").text();
  if (!chosen.isEmpty() && QDir(chosen).exists()) return chosen;
  const QString folder = programPath(QStringLiteral("backup"));
  QDir().mkpath(folder);
  return folder;
}

QString backupStamp() {
  return clock::now().toString(QStringLiteral("yy_MM_dd_HH_mm_ss"));
}

QString backupAccountSet() {
  return backupInto(backupFolder(accountDb()), accountDb());
}

}  // namespace jxc
