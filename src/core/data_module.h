// 数据模块: owns the connections to the account database and to the catalogue of account sets.
#pragma once

#include "core/background_reading.h"
#include "engine/database.h"

#include <QString>

#include <memory>

namespace jxc {

/// The one shared data module. Files are found in the `data` folder of the program directory.
class DataModule {
 public:
  /// Closes the account database if open, then opens `data/<fileName>`. Throws DbError naming the file.
  void openAccountDb(const QString& fileName);
  void closeAccountDb();
  bool isAccountOpen() const { return account_ != nullptr; }
  /// The account database in use. Throws DbError when none is open.
  Database& accountDb();
  /// Takes a connection from elsewhere: tests install one in memory, first start a file that is not yet in its place.
  std::unique_ptr<Database> installAccountDb(std::unique_ptr<Database> database);
  /// Who answers questions behind the window; made at the first of them and gone with the account set. Null where no
  /// second connection can be had, and inside a transaction, whose rows another connection does not see.
  BackgroundReading* backgroundReading();
  /// Nobody waits for the answer any more.
  void drop(const std::shared_ptr<BackgroundReading::Question>& question) {
    if (reading_) reading_->drop(question);
  }

  /// The catalogue `data/codeinfo.dll`, open only while the account set screen is.
  void openCatalogue();
  void closeCatalogue() { catalogue_.reset(); }
  Database& catalogueDb();

 private:
  std::unique_ptr<Database> account_;
  std::unique_ptr<BackgroundReading> reading_;  // closes before it
  std::unique_ptr<Database> catalogue_;
};

/// The process's data module, known as F_DataModule.
DataModule& dataModule();

Database& accountDb();
Database& catalogueDb();

}  // namespace jxc
