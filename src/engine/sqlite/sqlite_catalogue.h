// SQLite 目录: the tables of a connection, read from the database one by one when a statement first names them.
#pragma once

#include "engine/sqlite/failure.h"
#include "jet/catalogue.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <unordered_map>

namespace jxc::sqlite {

class SqliteCatalogue : public jet::Catalogue {
 public:
  SqliteCatalogue(sqlite3* connection, const FileRole& role) : connection_(connection), role_(role) {}
  const jet::Table* table(std::string_view name) const override;
  void forget() { tables_.clear(); }

 private:
  std::unique_ptr<jet::Table> read(const std::string& name) const;
  void readIndexes(jet::Table& table) const;

  sqlite3* connection_;
  FileRole role_;
  mutable std::unordered_map<std::string, std::unique_ptr<jet::Table>> tables_;  // by the name in small letters
};

}  // namespace jxc::sqlite
