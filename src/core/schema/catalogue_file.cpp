#include "core/schema/catalogue_file.h"

#include "core/schema/schema.h"
#include "core/statements.h"
#include "engine/database.h"
#include "engine/transaction.h"
#include "platform/machine.h"

#include <QDir>
#include <QFileInfo>

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

}  // namespace catalogue_file_detail

QStringList ensureCatalogueFile(const QString& path) {
  makePrivateFolder(QFileInfo(path).absolutePath());
  const std::unique_ptr<Database> catalogue = openSqlite(path, {.create = true});
  // Asked of the table, not of the file: a first start that was cut off left a file without it.
  if (stands(*catalogue, "select zt_sn from jxc_xtzt")) return catalogue->openingRemarks();
  Transaction t(*catalogue);
  catalogue->execute(catalogue_file_detail::kCreate);
  catalogue->execute(catalogue_file_detail::kBuiltIn);
  t.commit();
  return catalogue->openingRemarks();
}

}  // namespace jxc
