#include "core/schema/catalogue_file.h"

#include "core/backup.h"
#include "core/schema/schema.h"
#include "core/set_files.h"
#include "engine/database.h"
#include "engine/new_file.h"
#include "engine/transaction.h"
#include "platform/machine.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>
#include <cstring>

namespace jxc {
namespace catalogue_file_detail {

// zt_dbpwd is written for new sets and read by nobody; the column stays because the files in the field have it.
constexpr const char* kCreate = R"(create table [jxc_xtzt] (
  [id] Counter,
  [zt_sn] varchar(8) null,
  [zt_name] nvarchar(64) null,
  [zt_default] bit null,
  [zt_forbid] bit null,
  [zt_note] nvarchar(64) null,
  [zt_dbname] varchar(64) null,
  [zt_dbpwd] varchar(64) null,
  Constraint StatePrimary Primary key ([id])))";

constexpr const char* kBuiltIn =
    "insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) "
    "values ('100001','晴川进销存',1,0,'','jxc.mdb','')";
constexpr const char* kFound =
    "insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) values (?,?,0,0,'',?,'')";

/// The list with the built-in set, and with the sets whose files are there, so that the key of the next new set does
/// not lead to one of them and overwrite it.
void fill(Database& catalogue, const QDir& folder) {
  static const QRegularExpression name(QStringLiteral("^jxc_(\\d{6})\\.mdb$"));
  Transaction transaction(catalogue);
  catalogue.execute(kCreate);
  catalogue.execute(kBuiltIn);
  for (const QString& file : folder.entryList({QStringLiteral("jxc_*.mdb")}, QDir::Files | QDir::Hidden, QDir::Name)) {
    const QRegularExpressionMatch match = name.match(file);
    if (!match.hasMatch()) continue;
    const std::array<Value, 3> values{Value(match.captured(1)), Value(file), Value(file)};
    catalogue.execute(kFound, values);
  }
  transaction.commit();
}

/// What a program that made it in its place has left where it was killed: no page, or the first one with the journal
/// that is going to take it back.
bool isHalfMade(const QString& path) {
  constexpr qint64 page = 4096;
  const QFileInfo file(path);
  return file.isFile() && file.size() <= page &&
         (file.size() == 0 || QFileInfo(path + QStringLiteral("-journal")).size() > 0);
}

}  // namespace catalogue_file_detail

QStringList ensureCatalogueFile(const QString& path) {
  using namespace catalogue_file_detail;
  const QFileInfo place(path);
  makePrivateFolder(place.absolutePath());
  QStringList remarks;
  if (isHalfMade(path)) {
    const QString aside = path + QStringLiteral(".old-") + backupStamp();
    moveSetFile(path, aside);
    remarks << QStringLiteral("帐套目录 %1 没有建完，已改名为 %2，目录重新建立。")
                   .arg(place.fileName(), QFileInfo(aside).fileName());
  }
  if (QFileInfo::exists(path)) {
    const std::unique_ptr<Database> catalogue = openSqlite(path);
    if (!stands(*catalogue, "select zt_sn from jxc_xtzt")) fill(*catalogue, place.absoluteDir());
    return remarks + catalogue->openingRemarks();
  }
  // Beside its place: whenever this is cut off, there is a whole list or none.
  NewFile beside(path, [&place](int error) {
    throw DbError(
        DbError::Kind::File,
        QStringLiteral("帐套目录 %1 没有建成：%2").arg(place.fileName(), QString::fromLocal8Bit(std::strerror(error))));
  });
  fill(*openSqlite(beside.name(), {.create = true, .essential = false}), place.absoluteDir());
  // Another station may have made it meanwhile, and have it open.
  if (!QFileInfo::exists(path)) beside.keep();
  return remarks;
}

}  // namespace jxc
