#include "engine/sqlite/sqlite_catalogue.h"

#include "engine/sqlite/native.h"

#include <cstring>
#include <exception>

namespace jxc::sqlite {
namespace sqlite_catalogue_detail {

/// The declaration as the dialect wrote it: the key column is declared in SQLite's own words.
std::string declarationOf(const char* type, bool key) {
  const std::string declared = type != nullptr ? type : "";
  return key && sqlite3_stricmp(declared.c_str(), "integer") == 0 ? "Counter" : declared;
}

jet::Column columnOf(const char* name, const std::string& declared) {
  try {
    return jet::columnFromDeclaration(name, declared);
  } catch (const std::exception&) {
    // A type that no statement of this program wrote: readable as text, without a width.
    return {.name = name, .type = jet::ColumnType::LongText, .width = 0, .declared = declared};
  }
}

}  // namespace sqlite_catalogue_detail

const jet::Table* SqliteCatalogue::table(std::string_view name) const {
  std::string key(name);
  for (char& c : key)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  if (const auto found = tables_.find(key); found != tables_.end()) return found->second.get();
  auto table = read(key);
  if (!table) return nullptr;
  return tables_.emplace(std::move(key), std::move(table)).first->second.get();
}

std::unique_ptr<jet::Table> SqliteCatalogue::read(const std::string& name) const {
  constexpr char query[] =
      "select m.name, c.name, c.type, c.pk from sqlite_master m, pragma_table_info(m.name) c"
      " where m.type in ('table','view') and m.name = ?1 collate nocase order by c.cid";
  sqlite3_stmt* raw = nullptr;
  int code = sqlite3_prepare_v2(connection_, query, -1, &raw, nullptr);
  const StatementHandle statement(raw);
  std::unique_ptr<jet::Table> table;
  if (code == SQLITE_OK) {
    sqlite3_bind_text(raw, 1, name.c_str(), -1, SQLITE_STATIC);
    while ((code = sqlite3_step(raw)) == SQLITE_ROW) {
      const auto text = [raw](int column) { return reinterpret_cast<const char*>(sqlite3_column_text(raw, column)); };
      if (!table) {
        table = std::make_unique<jet::Table>();
        table->name = text(0);
      }
      const std::string declared = sqlite_catalogue_detail::declarationOf(text(2), sqlite3_column_int(raw, 3) != 0);
      table->columns.push_back(sqlite_catalogue_detail::columnOf(text(1), declared));
    }
  }
  if (code != SQLITE_DONE) throw statementFailed(role_, code, sqlite3_errmsg(connection_), query);
  if (table) readIndexes(*table);
  return table;
}

void SqliteCatalogue::readIndexes(jet::Table& table) const {
  // Those that SQLite made for a key have no text of their own.
  constexpr char query[] = "select sql from sqlite_master where type='index' and tbl_name=?1 and sql is not null";
  sqlite3_stmt* raw = nullptr;
  int code = sqlite3_prepare_v2(connection_, query, -1, &raw, nullptr);
  const StatementHandle statement(raw);
  if (code == SQLITE_OK) {
    sqlite3_bind_text(raw, 1, table.name.c_str(), -1, SQLITE_STATIC);
    while ((code = sqlite3_step(raw)) == SQLITE_ROW)
      table.indexes.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(raw, 0)));
  }
  if (code != SQLITE_DONE) throw statementFailed(role_, code, sqlite3_errmsg(connection_), query);
}

}  // namespace jxc::sqlite
