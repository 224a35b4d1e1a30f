#include "core/set_files.h"

#include "core/schema/schema.h"
#include "engine/new_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace jxc {
namespace set_files_detail {

/// What SQLite keeps beside a database file while it is open or being made, or after a crash.
constexpr std::array<const char16_t*, 3> sides = {u"-wal", u"-shm", u"-journal"};

bool rename(const QString& from, const QString& to) {
  return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

DbError notMoved(const QString& file, const QString& why, const QStringList& notBack = {}) {
  // By its name alone: the whole path of the account file in use would pass for its end.
  QString text = QStringLiteral("帐套文件不能改名：%1（%2）").arg(QFileInfo(file).completeBaseName(), why);
  if (!notBack.isEmpty())
    text += QStringLiteral("。下面的文件已经改名，也不能改回，请改回原名：") + notBack.join(QStringLiteral("，"));
  return DbError(DbError::Kind::File, text);
}

}  // namespace set_files_detail

QString unfinishedSet(const QString& file) {
  return file + QStringLiteral(".new");
}

QString unfinishedAtConsole(const QString& file) {
  return file + QStringLiteral(".making");
}

void makeUnfinishedSet(const QString& file, bool essential) {
  const QString beside = unfinishedSet(file);
  removeSetFile(beside);
  try {
    createAllTables(*openSqlite(beside, {.create = true, .essential = essential}));
  } catch (...) {
    removeSetFile(beside);
    throw;
  }
  syncFolderOf(beside);
}

void moveSetFile(const QString& from, const QString& to) {
  using namespace set_files_detail;
  if (QFileInfo::exists(to)) throw notMoved(from, QStringLiteral("同名文件已经存在"));
  // The log after the file: one that a kill leaves behind is found again when the file comes back.
  QStringList all{QString()}, moved;
  for (const char16_t* side : sides)
    all << QString::fromUtf16(side);
  for (const QString& side : all) {
    if (!QFileInfo::exists(from + side)) continue;
    if (rename(from + side, to + side)) {
      moved.prepend(side);
      continue;
    }
    const QString why = QString::fromLocal8Bit(std::strerror(errno));
    QStringList notBack;
    for (const QString& gone : moved)
      if (!rename(to + gone, from + gone))
        notBack << QFileInfo(to + gone).fileName() + QStringLiteral(" → ") + QFileInfo(from + gone).fileName();
    throw notMoved(from + side, why, notBack);
  }
  syncFolderOf(to);
}

bool removeSetFile(const QString& file) {
  QFile::remove(file);
  for (const char16_t* side : set_files_detail::sides)
    QFile::remove(file + QString::fromUtf16(side));
  return !QFileInfo::exists(file);
}

}  // namespace jxc
