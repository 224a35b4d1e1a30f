#include "core/startup.h"

#include "core/data_module.h"
#include "core/schema/catalogue_file.h"
#include "core/set_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace jxc::startup_detail {

inline constexpr const char* accountFile = "data/jxc.mdb";
inline constexpr const char* catalogueFile = "data/codeinfo.dll";

QStringList setFiles(const QString& pattern) {
  return QDir(programPath(QStringLiteral("data"))).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
}

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

/// Sets whose files are there are listed again, so that the key of the next new set does not lead to one of them and
/// overwrite it.
void listExistingSets() {
  for (const QString& file : setFiles(QStringLiteral("jxc_*.mdb"))) {
    const QString key = file.mid(4, file.size() - 8);
    bool isKey = false;
    key.toInt(&isKey);
    if (!isKey || key.size() != 6) continue;
    const std::array<Value, 3> values{Value(key), Value(file), Value(file)};
    catalogueDb().execute(
        "insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) values (?,?,0,0,'',?,'')",
        values);
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
  const QString file = programPath(QLatin1String(startup_detail::catalogueFile));
  const bool wasThere = QFileInfo::exists(file);
  QStringList remarks = ensureCatalogueFile(file);
  if (wasThere) return remarks;
  dataModule().openCatalogue();
  startup_detail::listExistingSets();
  dataModule().closeCatalogue();
  return remarks;
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
