#include "core/data_module.h"

#include "core/account_place.h"
#include "core/program_directory.h"
#include "core/statements.h"

namespace jxc::data_module_detail {

Database& required(const std::unique_ptr<Database>& database, const QString& complaint) {
  if (!database) throw DbError(DbError::Kind::Other, complaint);
  return *database;
}

}  // namespace jxc::data_module_detail

namespace jxc {

void DataModule::openAccountDb(const QString& fileName) {
  closeAccountDb();
  account_ = openAccountFile(programPath(QStringLiteral("data/") + fileName));
}

void DataModule::closeAccountDb() {
  reading_.reset();
  account_.reset();
}

BackgroundReading* DataModule::backgroundReading() {
  Database& account = accountDb();
  if (account.inTransaction()) return nullptr;
  if (!reading_)
    if (Database::OpenReader open = account.readerOpener())
      reading_ = std::make_unique<BackgroundReading>(std::move(open));
  return reading_.get();
}

Database& DataModule::accountDb() {
  return data_module_detail::required(account_, QStringLiteral("帐套数据库没有打开！"));
}

std::unique_ptr<Database> DataModule::installAccountDb(std::unique_ptr<Database> database) {
  reading_.reset();
  std::swap(account_, database);
  return database;
}

void DataModule::openCatalogue() {
  closeCatalogue();
  catalogue_ = openSqlite(programPath(QStringLiteral("data/codeinfo.dll")));
}

Database& DataModule::catalogueDb() {
  return data_module_detail::required(catalogue_, QStringLiteral("帐套目录没有打开！"));
}

DataModule& dataModule() {
  static DataModule module;
  return module;
}

Database& accountDb() {
  return dataModule().accountDb();
}

Database& catalogueDb() {
  return dataModule().catalogueDb();
}

}  // namespace jxc
