#include "core/archive_look.h"

#include "core/data_module.h"
#include "core/schema/upgrade.h"

namespace jxc {
namespace archive_look_detail {

bool isOpen = false;

std::unique_ptr<Database> openArchive(const QString& file) {
  auto archive = openSqlite(file, {.readOnly = true, .essential = false});
  // Its tables may lack what the enquiries of today ask for; brought up to date it would be another file.
  const QString stamp = archive->lookup("select cs_employdate from jxc_xtcs").text();
  const QString newest = QString::fromStdString(schema::newestStamp());
  if (stamp < newest)
    throw DbError(DbError::Kind::File,
                  QStringLiteral("该档案是用旧版本的软件做的，请先把它恢复为一个帐套再查看：%1").arg(file));
  if (stamp > newest)
    throw DbError(DbError::Kind::File,
                  QStringLiteral("该档案来自更新版本的程序（%1），请先更新本程序再查看：%2").arg(stamp, file));
  return archive;
}

}  // namespace archive_look_detail

ArchiveLook::ArchiveLook(const QString& file)
    : shop_(dataModule().installAccountDb(archive_look_detail::openArchive(file))) {
  archive_look_detail::isOpen = true;
}

ArchiveLook::~ArchiveLook() {
  archive_look_detail::isOpen = false;
  dataModule().installAccountDb(std::move(shop_));
}

bool isArchiveInUse() {
  return archive_look_detail::isOpen;
}

}  // namespace jxc
