#include "jet/binder.h"
#include "jet/emit_sqlite.h"
#include "jet/lexer.h"

namespace jxc::jet {

// The declared type stays readable in the table's own definition, so that the catalogue can be read back from it.
void SqliteEmitter::columnDeclaration(const Column& column, bool primary) {
  quoted(column.name);
  put(" ");
  if (column.type == ColumnType::Counter) {
    put("integer primary key autoincrement");  // a number is never given twice, not even after a delete
    return;
  }
  put(column.declared);
  if (column.type == ColumnType::Bit) put(" default 0");  // a bit that nobody wrote is no, never null
  if (primary) put(" primary key");
}

// SQLite cannot change a column, so the table is built anew: rows keep their numbers, the counter goes on where it
// stood, and the indexes are made again.
void SqliteEmitter::emitAlterColumn() {
  plan_.kind = Plan::Kind::Definition;
  const Table& table = *statement_.table;
  const Column& changed = statement_.definitions.front().column;
  const std::string fresh = table.name + "__new";
  const auto isChanged = [&](const Column& column) { return sameName(column.name, changed.name); };

  put("create table ");
  quoted(fresh);
  put(" (");
  bool first = true;
  bool counter = false;
  for (const Column& column : table.columns) {
    if (!first) put(",");
    first = false;
    counter |= column.type == ColumnType::Counter;
    columnDeclaration(isChanged(column) ? changed : column, false);
  }
  put(")");
  finishStep();

  put("insert into ");
  quoted(fresh);
  put(" select ");
  first = true;
  for (const Column& column : table.columns) {
    if (!first) put(",");
    first = false;
    const Type from = typeOf(column.type), to = typeOf(changed.type);
    std::string_view close = ")";
    if (!isChanged(column)) {
      close = "";
    } else if (to == Type::Text) {
      // Too wide a text is refused, as it would be on its way in.
      if (changed.width > 0) put("jxc_fit(");
      if (from != Type::Text) put("jxc_text(");
      close = from != Type::Text ? ")" : "";
    } else if (to == Type::Bit) {
      put("jxc_bit(");
    } else if (to == Type::Integer) {
      put("jxc_int(");
    } else if (changed.type == ColumnType::Numeric) {
      put("jxc_dec(");
    } else {
      put("jxc_num(");
    }
    quoted(column.name);
    put(close);
    if (isChanged(column) && to == Type::Text && changed.width > 0) {
      put(",");
      put(std::to_string(changed.width));
      put(",");
      literal(table.name + '.' + column.name);
      put(")");
    }
  }
  put(" from ");
  quoted(table.name);
  finishStep();

  if (counter) {
    put("delete from sqlite_sequence where name=");
    literal(fresh);
    finishStep();
    put("insert into sqlite_sequence(name,seq) select ");
    literal(fresh);
    put(",seq from sqlite_sequence where name=");
    literal(table.name);
    finishStep();
  }
  put("drop table ");
  quoted(table.name);
  finishStep();
  put("alter table ");
  quoted(fresh);
  put(" rename to ");
  quoted(table.name);
  finishStep();
  for (const std::string& index : table.indexes) {
    put(index);
    finishStep();
  }
}

}  // namespace jxc::jet
