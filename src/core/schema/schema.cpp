// 数据库结构: creating, emptying and dropping tables from their definitions.
#include "core/schema/schema.h"

#include "core/log.h"
#include "core/schema/indexes.h"
#include "core/statements.h"
#include "engine/error.h"
#include "engine/server.h"
#include "engine/waiting.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace jxc {
namespace schema_detail {

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// An order has the layout of the document that it becomes.
struct Companion {
  std::string_view name;
  std::string_view like;
};
constexpr Companion companions[] = {
    {"jxc_cgd", "jxc_jhd"}, {"jxc_cgsp", "jxc_jhsp"}, {"jxc_xsd", "jxc_lsxsd"}, {"jxc_xssp", "jxc_lsxssp"}};
constexpr std::string_view companionNames[] = {"jxc_cgd",     "jxc_cgsp",     "jxc_xsd",  "jxc_xssp",
                                               "jxc_adminmm", "jxc_logchain", "jxc_zmsd", "jxc_backupzk",
                                               "jxc_jsda",    "jxc_htdj",     "jxc_htwj", "jxc_ftpaq"};

using Definitions = std::unordered_map<std::string_view, schema::TableDefinition>;

Definitions collect() {
  using namespace schema;
  Definitions all;
  for (const auto list : {coreTables(), stockTables(), masterdataTables(), purchasingTables(), salesTables(),
                          posTables(), membersTables(), accountsTables(), statisticsTables(), outputTables(),
                          messagingTables(), maintenanceTables()}) {
    for (const TableDefinition& definition : list) {
      if (!all.emplace(definition.name, definition).second)
        throw std::logic_error("table defined twice: " + std::string(definition.name));
    }
  }
  for (const Companion& companion : companions) {
    TableDefinition definition = all.at(companion.like);
    definition.name = companion.name;
    all.emplace(companion.name, definition);
  }
  return all;
}

std::string createText(const schema::TableDefinition& definition, const std::string& name) {
  std::string sql = "create table [" + name + "] ([id] Counter";
  for (const schema::ColumnLine& column : schema::columnsOf(definition))
    sql.append(", [").append(column.name).append("] ").append(column.type).append(" null");
  return sql + ", Constraint StatePrimary Primary key ([id]))";
}

}  // namespace schema_detail

namespace schema {

const TableDefinition* findDefinition(std::string_view name) {
  static const schema_detail::Definitions all = schema_detail::collect();
  const auto found = all.find(name);
  return found == all.end() ? nullptr : &found->second;
}

std::span<const std::string_view> companionTables() {
  return schema_detail::companionNames;
}

std::vector<ColumnLine> columnsOf(const TableDefinition& definition) {
  std::vector<ColumnLine> columns;
  std::string_view rest = definition.columns;
  while (!rest.empty()) {
    const auto end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    line = schema_detail::trimmed(line.substr(0, line.find("--")));
    if (line.empty()) continue;
    const auto gap = line.find(' ');
    columns.push_back({line.substr(0, gap), schema_detail::trimmed(line.substr(gap + 1))});
  }
  return columns;
}

}  // namespace schema

bool stands(Database& database, const std::string& select) {
  try {
    database.check(select);
    return true;
  } catch (const DbError& failure) {
    if (failure.kind() != DbError::Kind::UnknownName) throw;
    return false;
  }
}

void dropTableIfExists(Database& database, std::string_view name) {
  const std::string table(name);
  if (stands(database, "select * from " + table + " where 1>2")) database.execute("drop table " + table);
}

void makeTable(Database& database, std::string_view name, const std::string& statement) {
  Transaction transaction(database);
  database.execute(statement);
  if (std::ranges::find(kLogTables, name) != std::end(kLogTables)) letRowsStay(database, name);
  transaction.commit();
}

void createTable(Database& database, std::string_view name, std::string_view suffix) {
  const schema::TableDefinition* definition = schema::findDefinition(name);
  if (!definition) throw std::invalid_argument("no such table: " + std::string(name));
  const std::string table = std::string(name).append(suffix);
  Transaction transaction(database);  // a failure half-way must not leave the set without the table
  dropTableIfExists(database, table);
  makeTable(database, table, schema_detail::createText(*definition, table));
  for (const std::string_view seed : definition->seeds)
    database.execute("insert into [" + table + "] " + std::string(seed));
  schema::createIndexes(database, name, suffix);
  transaction.commit();
}

void createAllTables(Database& database) {
  const LongWork longWork;
  Transaction transaction(database);
  for (const schema::TableEntry& entry : schema::tables())
    createTable(database, entry.name);
  for (const std::string_view name : schema::companionTables())
    createTable(database, name);
  transaction.commit();
}

void resetBusinessTables(Database& database) {
  const LongWork longWork;
  Transaction transaction(database);
  database.execute("update jxc_goods set g_kc=0,ghs_sn='100001'");
  database.execute("update jxc_khxx set kh_lwje=0");
  database.execute("update jxc_ghsxx set ghs_lwje=0");
  for (const schema::TableEntry& entry : schema::tables()) {
    if (entry.name == "jxc_log")
      takeLogRows(database, QStringLiteral("清理业务数据"));
    else if (entry.onReset == schema::OnReset::Empties)
      createTable(database, entry.name);
  }
  transaction.commit();
}

void resetBusinessAndStock(Database& database) {
  Transaction transaction(database);
  resetBusinessTables(database);
  createTable(database, "jxc_kcsp");
  transaction.commit();
}

}  // namespace jxc
