#include "jet/emit_sqlite.h"

#include <algorithm>

namespace jxc::jet {

Plan SqliteEmitter::emit() {
  plan_.parameterCount = statement_.parameterCount;
  plan_.kind = Plan::Kind::Change;
  switch (statement_.kind) {
    case Statement::Kind::Query:
      emitQueryPlan();
      break;
    case Statement::Kind::Insert:
      emitInsert();
      break;
    case Statement::Kind::Update:
      emitUpdate();
      break;
    case Statement::Kind::Delete:
      emitDelete();
      break;
    case Statement::Kind::CreateTable:
      emitCreateTable();
      break;
    case Statement::Kind::AddColumns:
      emitAddColumns();
      break;
    case Statement::Kind::AlterColumn:
      emitAlterColumn();
      break;
    case Statement::Kind::DropColumn:
      emitDropColumn();
      break;
    case Statement::Kind::CreateIndex:
      emitCreateIndex();
      break;
    case Statement::Kind::DropTable:
      plan_.kind = Plan::Kind::Definition;
      put("drop table ");
      quoted(statement_.table->name);
      finishStep();
      break;
    case Statement::Kind::DropIndex:
      plan_.kind = Plan::Kind::Definition;
      put("drop index ");
      quoted(statement_.index);
      finishStep();
      break;
  }
  return std::move(plan_);
}

void SqliteEmitter::emitQueryPlan() {
  const Query& q = *statement_.query;
  plan_.kind = Plan::Kind::Select;
  plan_.columns.reserve(q.columns.size());
  for (const OutputColumn& column : q.columns)
    plan_.columns.push_back({std::string(column.name), column.declared});
  const Select& first = *q.selects.front();
  if (!first.intoName.empty()) {
    plan_.kind = Plan::Kind::SheetExport;
    plan_.sheet = first.intoName;
    plan_.file = first.intoFile;
    plan_.fileParameter = first.intoFileParameter;
  }
  query(q, Names::None);
  finishStep();
}

void SqliteEmitter::emitInsert() {
  put("insert into ");
  quoted(statement_.table->name);
  put(" (");
  for (std::size_t i = 0; i < statement_.targets.size(); ++i) {
    if (i > 0) put(",");
    quoted(statement_.table->columns[static_cast<std::size_t>(statement_.targets[i])].name);
  }
  put(") ");
  if (statement_.query) {
    query(*statement_.query, Names::None);
  } else {
    put("values (");
    list(statement_.values);
    put(")");
  }
  finishStep();
}

void SqliteEmitter::emitUpdate() {
  if (statement_.select->sources.size() == 1) {
    emitPlainUpdate();
  } else {
    emitJoinedUpdate();
  }
}

void SqliteEmitter::emitPlainUpdate() {
  const Source& target = *statement_.select->sources.front();
  put("update ");
  leaf(target);
  put(" set ");
  for (std::size_t i = 0; i < statement_.assignments.size(); ++i) {
    const Assignment& assignment = statement_.assignments[i];
    if (i > 0) put(",");
    quoted(target.table->columns[static_cast<std::size_t>(assignment.column)].name);
    put("=");
    expr(*assignment.value);
  }
  where(statement_.select->where);
  finishStep();
}

// A row of the changed table may be joined more than once, and each joined row counts: two credits to one partner are
// two credits. So the joined rows are read first, and each is applied in turn to what stands there by then.
void SqliteEmitter::emitJoinedUpdate() {
  plan_.kind = Plan::Kind::JoinedUpdate;
  emitDrivingSelect();
  driven_ = true;
  for (const Source* source : statement_.select->sources) {
    const bool changed = std::any_of(statement_.assignments.begin(), statement_.assignments.end(),
                                     [&](const Assignment& assignment) { return assignment.source == source; });
    if (changed) emitUpdateOf(*source);
  }
}

// Columns of the driving row: for each table its row number, for each select in brackets all its columns.
void SqliteEmitter::emitDrivingSelect() {
  put("select ");
  bool first = true;
  for (const Source* source : statement_.select->sources) {
    for (int i = 0; i < (source->table ? 1 : static_cast<int>(source->columns.size())); ++i) {
      if (!first) put(",");
      first = false;
      if (source->table) {
        quoted(source->alias);
        put(".rowid");
      } else {
        column(*source, i);
      }
    }
  }
  fromClause(*statement_.select);
  where(statement_.select->where);
  finishStep();
}

void SqliteEmitter::emitUpdateOf(const Source& target) {
  updated_ = &target;
  put("update ");
  leaf(target);
  put(" set ");
  bool first = true;
  for (const Assignment& assignment : statement_.assignments) {
    if (assignment.source != &target) continue;
    if (!first) put(",");
    first = false;
    quoted(target.table->columns[static_cast<std::size_t>(assignment.column)].name);
    put("=");
    expr(*assignment.value);
  }
  put(" where rowid=");
  drivenRow(target);
  finishStep();
  updated_ = nullptr;
}

void SqliteEmitter::emitDelete() {
  put("delete from ");
  leaf(*statement_.target);
  if (statement_.select->sources.size() == 1) {
    where(statement_.select->where);
  } else {
    put(" where rowid in (select ");
    quoted(statement_.target->alias);
    put(".rowid");
    fromClause(*statement_.select);
    where(statement_.select->where);
    put(")");
  }
  finishStep();
}

void SqliteEmitter::quoted(std::string_view name) {
  step_.sql += '"';
  for (char c : name) {
    if (c == '"') step_.sql += '"';
    step_.sql += c;
  }
  step_.sql += '"';
}

void SqliteEmitter::literal(std::string_view text) {
  step_.sql += '\'';
  for (char c : text) {
    if (c == '\'') step_.sql += '\'';
    step_.sql += c;
  }
  step_.sql += '\'';
}

}  // namespace jxc::jet
