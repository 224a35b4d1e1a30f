#include "engine/number_text.h"
#include "engine/postgres/failure.h"
#include "engine/postgres/postgres_database.h"

#include <QString>

namespace jxc::postgres {
namespace postgres_bulk_detail {

std::string inQuotes(const std::string& name) {
  return '"' + name + '"';
}

void escaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\0':
        break;  // the server keeps none
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        out += c;
    }
  }
}

void addCell(std::string& out, const RowSet& rows, int row, int column) {
  NumberBuffer buffer;
  switch (rows.kind(row, column)) {
    case Value::Kind::Null:
      out += "\\N";
      break;
    case Value::Kind::Integer:
      out += formatNumber(static_cast<long long>(rows.integer(row, column)), buffer);
      break;
    case Value::Kind::Real:
      out += formatNumber(rows.number(row, column), buffer);
      break;
    case Value::Kind::Text:
      escaped(out, rows.utf8(row, column));
      break;
  }
}

}  // namespace postgres_bulk_detail

std::vector<StoredTable> PostgresDatabase::storedTables() {
  requireLive("tables");
  catalogue_.forget();
  std::vector<StoredTable> tables;
  for (const jet::Table& table : catalogue_.all())
    tables.push_back({table, 0});
  const RowSet counters = ask(
      "select c.relname::text,pg_sequence_last_value(s.oid::regclass) from pg_class s join pg_depend d on d.objid=s.oid"
      " join pg_class c on c.oid=d.refobjid where s.relkind='S' and d.deptype='i' and"
      " c.relnamespace=current_schema()::regnamespace",
      {});
  for (int row = 0; row < counters.rowCount(); ++row)
    for (StoredTable& stored : tables)
      if (stored.table.name == counters.utf8(row, 0)) stored.lastCounter = counters.integer(row, 1);
  return tables;
}

std::vector<StoredObject> PostgresDatabase::storedObjects() {
  const RowSet rows =
      ask("select case when relkind in ('v','m') then 2 when relkind='i' then 1 else 0 end,c.relname::text,"
          "coalesce(i.indrelid,c.oid)::regclass::text from pg_class c left join pg_index i on i.indexrelid=c.oid"
          " where c.relnamespace=current_schema()::regnamespace and relkind in ('r','p','f','v','m','i')"
          " and not coalesce(i.indisprimary,false)"
          " union all select 3,tgname::text,tgrelid::regclass::text from pg_trigger where not tgisinternal"
          " union all select 3,evtname::text,'' from pg_event_trigger"
          " union all select 3,rulename::text,ev_class::regclass::text from pg_rewrite r join pg_class c on "
          "c.oid=r.ev_class"
          " where rulename<>'_RETURN' and c.relnamespace=current_schema()::regnamespace order by 1,2",
          {});
  std::vector<StoredObject> objects;
  for (int row = 0; row < rows.rowCount(); ++row)
    objects.push_back({static_cast<StoredObject::Kind>(rows.integer(row, 0)), std::string(rows.utf8(row, 1)),
                       std::string(rows.utf8(row, 2))});
  return objects;
}

void PostgresDatabase::append(const jet::Table& table, const RowSet& rows) {
  using namespace postgres_bulk_detail;
  std::string sql = "copy " + inQuotes(table.name) + " (";
  for (int column = 0; column < rows.columnCount(); ++column)
    sql += (column > 0 ? "," : "") + inQuotes(rows.columns()[static_cast<std::size_t>(column)]);
  sql += ") from stdin";
  std::string lines;
  for (int row = 0; row < rows.rowCount(); ++row) {
    for (int column = 0; column < rows.columnCount(); ++column) {
      if (column > 0) lines += '\t';
      addCell(lines, rows, row, column);
    }
    lines += '\n';
  }
  openLevels();
  if (!sent_.empty()) exchange();
  try {
    const ResultHandle result = link().copyIn(sql, lines);
    if (PQresultStatus(result.get()) == PGRES_COMMAND_OK) return;
    spoiled_ = opened_ > 0;
    throw statementFailed(
        result.get(), sql, [](void*, std::string_view) { return 0; }, nullptr);
  } catch (const LinkLost& lost) {
    loseLink(sql, lost);
  }
}

void PostgresDatabase::setCounter(const jet::Table& table, std::int64_t last) {
  if (last == 0) return;
  for (const jet::Column& column : table.columns) {
    if (column.type != jet::ColumnType::Counter) continue;
    openLevels();
    ask("select setval(pg_get_serial_sequence(quote_ident($1),$2),$3::bigint)",
        {table.name, column.name, std::to_string(last)});
  }
}

void PostgresDatabase::analyze() {
  control("analyze");
  exchange();
}

/// What a row held before stands in its table until that is written anew.
void PostgresDatabase::forgetReplaced(const char* table) {
  if (options_.trial || options_.readOnly) return;  // inside a transaction of its own, which is never committed
  control((std::string("vacuum full ") + table).c_str());
  exchange();
}

/// The server writes one table after the other; it can be stopped between them. A station's own user may not, and its
/// server does the same work by itself as time goes on.
bool PostgresDatabase::giveRoomBack(const std::function<bool()>& goOn) {
  if (options_.trial || options_.readOnly) return false;
  try {
    for (const StoredTable& stored : storedTables()) {
      if (!goOn()) return false;
      forgetReplaced(stored.table.name.c_str());
    }
  } catch (const DbError&) {
    return false;
  }
  return true;
}

void PostgresDatabase::expectPauses() {
  openLevels();
  control("set local idle_in_transaction_session_timeout=0");
  exchange();
}

}  // namespace jxc::postgres
