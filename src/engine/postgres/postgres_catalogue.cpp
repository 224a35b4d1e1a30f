#include "engine/postgres/postgres_catalogue.h"

#include <algorithm>

namespace jxc::postgres {
namespace postgres_catalogue_detail {

constexpr const char* columnsOfAll =
    "select c.relname,a.attname,format_type(a.atttypid,a.atttypmod),a.attidentity::text from pg_class c"
    " join pg_attribute a on a.attrelid=c.oid where c.relnamespace=current_schema()::regnamespace"
    " and c.relkind in ('r','v','p','m') and a.attnum>0 and not a.attisdropped";

std::string lowerCase(std::string_view name) {
  std::string key(name);
  for (char& c : key)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  return key;
}

/// What the server calls a type, in the words of the dialect.
std::string declarationOf(std::string_view type, bool identity) {
  constexpr std::string_view varying = "character varying";
  if (identity) return "Counter";
  if (type == "bigint" || type == "integer") return "int";
  if (type == "smallint") return "bit";
  if (type == "double precision") return "double";
  if (type.starts_with(varying) && type.size() > varying.size())
    return "varchar" + std::string(type.substr(varying.size()));
  if (type.starts_with("numeric")) return std::string(type);
  return "text";
}

}  // namespace postgres_catalogue_detail

const jet::Table* PostgresCatalogue::table(std::string_view name) const {
  const std::string key = postgres_catalogue_detail::lowerCase(name);
  if (!whole_ && !single_) read(nullptr);
  if (const auto found = tables_.find(key); found != tables_.end()) return found->second.get();
  if (!single_) return nullptr;
  read(&key);
  const auto found = tables_.find(key);
  return found == tables_.end() ? nullptr : found->second.get();
}

std::vector<jet::Table> PostgresCatalogue::all() const {
  if (!whole_) read(nullptr);
  std::vector<jet::Table> tables;
  for (const auto& [key, table] : tables_)
    tables.push_back(*table);
  std::sort(tables.begin(), tables.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  return tables;
}

const jet::Table* PostgresCatalogue::known(std::string_view name) const {
  const auto found = tables_.find(postgres_catalogue_detail::lowerCase(name));
  return found == tables_.end() ? nullptr : found->second.get();
}

void PostgresCatalogue::read(const std::string* name) const {
  using namespace postgres_catalogue_detail;
  const std::string sql =
      std::string(columnsOfAll) + (name ? " and lower(c.relname)=$1" : "") + " order by c.oid,a.attnum";
  const RowSet rows = reader_(sql.c_str(), name);
  if (!name) whole_ = true;
  jet::Table* table = nullptr;
  for (int row = 0; row < rows.rowCount(); ++row) {
    const std::string relation(rows.utf8(row, 0));
    if (!table || table->name != relation) {
      auto& place = tables_[lowerCase(relation)];
      place = std::make_unique<jet::Table>();
      table = place.get();
      table->name = relation;
    }
    const std::string declared = declarationOf(rows.utf8(row, 2), !rows.utf8(row, 3).empty());
    table->columns.push_back(jet::columnFromDeclaration(rows.utf8(row, 1), declared));
  }
}

void PostgresCatalogue::forget() {
  tables_.clear();
  whole_ = single_ = false;
}

void PostgresCatalogue::forgetSome() {
  tables_.clear();
  whole_ = false;
  single_ = true;
}

}  // namespace jxc::postgres
