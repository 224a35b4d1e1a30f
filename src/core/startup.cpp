#include "core/startup.h"

#include "core/schema/catalogue_file.h"
#include "core/set_files.h"
#include "engine/error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace jxc::startup_detail {

inline constexpr const char* accountFile = "data/jxc.mdb";
inline constexpr const char* catalogueFile = "data/codeinfo.dll";

bool isDataFolderEmpty() {
  const QDir folder(programPath(QStringLiteral("data")));
  const QStringList entries = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  // The journals of an unfinished file stand beside it under its name.
  const QString file = QStringLiteral("jxc.mdb");
  return std::ranges::all_of(entries, [&](const QString& name) {
    return name.startsWith(unfinishedSet(file)) || name.startsWith(unfinishedAtConsole(file));
  });
}

void makeAccountFile(const QString& file) {
  makeUnfinishedSet(file, true);
  if (!QFile::rename(unfinishedSet(file), file)) {
    throw DbError(DbError::Kind::File, QStringLiteral("无法写入 %1").arg(QDir::toNativeSeparators(file)));
  }
}

}  // namespace jxc::startup_detail

namespace jxc {

bool createFirstAccountSet() {
  if (!startup_detail::isDataFolderEmpty()) return false;
  startup_detail::makeAccountFile(programPath(QLatin1String(startup_detail::accountFile)));
  ensureCatalogue();
  return true;
}

QStringList ensureCatalogue() {
  return ensureCatalogueFile(programPath(QLatin1String(startup_detail::catalogueFile)));
}

FriendlyFailure friendlyFailure(const std::exception& failure) {
  QString text = QString::fromUtf8(failure.what());
  for (QChar& character : text) {
    if (character >= u'A' && character <= u'Z') character = QChar(character.unicode() + (u'a' - u'A'));
  }
  // Whatever names the account file counts as its end, also what has nothing to do with its format. Its side files can
  // be mended: they are named.
  static const QRegularExpression accountFile(QStringLiteral("jxc\\.mdb(?!-(wal|shm))"));
  if (text.contains(accountFile)) return {QStringLiteral("数据库格式不可识别！\r\n\r\n系统将退出！"), true};
  return {text, false};
}

}  // namespace jxc
