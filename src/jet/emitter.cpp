#include "jet/emitter.h"

#include <algorithm>

namespace jxc::jet {

Plan Emitter::emit() {
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
      quoted(indexName());
      finishStep();
      break;
  }
  return std::move(plan_);
}

void Emitter::emitQueryPlan() {
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

void Emitter::emitInsert() {
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
    for (std::size_t i = 0; i < statement_.values.size(); ++i) {
      if (i > 0) put(",");
      insertValue(*statement_.values[i], statement_.table->columns[static_cast<std::size_t>(statement_.targets[i])]);
    }
    put(")");
    insertTail();
  }
  finishStep();
}

void Emitter::emitUpdate() {
  if (statement_.select->sources.size() == 1) {
    emitPlainUpdate();
  } else {
    emitJoinedUpdate();
  }
}

void Emitter::emitPlainUpdate() {
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
void Emitter::emitJoinedUpdate() {
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
void Emitter::emitDrivingSelect() {
  put("select ");
  bool first = true;
  for (const Source* source : statement_.select->sources) {
    for (int i = 0; i < (source->table ? 1 : static_cast<int>(source->columns.size())); ++i) {
      if (!first) put(",");
      first = false;
      if (source->table) {
        quoted(source->alias);
        put(".");
        put(rowKey(*source));
      } else {
        column(*source, i);
      }
    }
  }
  fromClause(*statement_.select);
  where(statement_.select->where);
  drivingTail(*statement_.select);
  finishStep();
}

void Emitter::emitUpdateOf(const Source& target) {
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
  put(" where ");
  put(rowKey(target));
  put("=");
  drivenRow(target);
  finishStep();
  updated_ = nullptr;
}

void Emitter::emitDelete() {
  put("delete from ");
  leaf(*statement_.target);
  if (statement_.select->sources.size() == 1) {
    where(statement_.select->where);
  } else {
    const std::string key = rowKey(*statement_.target);
    put(" where ");
    put(key);
    put(" in (select ");
    quoted(statement_.target->alias);
    put(".");
    put(key);
    fromClause(*statement_.select);
    where(statement_.select->where);
    put(")");
  }
  finishStep();
}

void Emitter::emitCreateTable() {
  plan_.kind = Plan::Kind::Definition;
  put("create table ");
  quoted(statement_.name);
  put(" (");
  int keys = 0;
  for (const ColumnDefinition& definition : statement_.definitions)
    keys += definition.primary;
  for (std::size_t i = 0; i < statement_.definitions.size(); ++i) {
    if (i > 0) put(",");
    columnDeclaration(statement_.definitions[i].column, keys == 1 && statement_.definitions[i].primary);
  }
  if (keys > 1) {
    put(",primary key (");
    bool first = true;
    for (const ColumnDefinition& definition : statement_.definitions) {
      if (!definition.primary) continue;
      if (!first) put(",");
      first = false;
      quoted(definition.name);
    }
    put(")");
  }
  put(")");
  finishStep();
}

void Emitter::emitAddColumns() {
  plan_.kind = Plan::Kind::Definition;
  for (const ColumnDefinition& definition : statement_.definitions) {
    put("alter table ");
    quoted(statement_.table->name);
    put(" add column ");
    columnDeclaration(definition.column, false);
    finishStep();
  }
}

void Emitter::emitDropColumn() {
  plan_.kind = Plan::Kind::Definition;
  put("alter table ");
  quoted(statement_.table->name);
  put(" drop column ");
  quoted(statement_.columns.front());
  finishStep();
}

void Emitter::emitCreateIndex() {
  plan_.kind = Plan::Kind::Definition;
  put(statement_.unique ? "create unique index " : "create index ");
  quoted(indexName());
  put(" on ");
  quoted(statement_.table->name);
  put(" (");
  for (std::size_t i = 0; i < statement_.columns.size(); ++i) {
    if (i > 0) put(",");
    indexColumn(i);
  }
  put(")");
  finishStep();
}

void Emitter::indexColumn(std::size_t index) {
  quoted(statement_.columns[index]);
  if (statement_.descending[index]) put(" desc");
}

void Emitter::quoted(std::string_view name) {
  step_.sql += '"';
  for (char c : name) {
    if (c == '"') step_.sql += '"';
    step_.sql += c;
  }
  step_.sql += '"';
}

void Emitter::literal(std::string_view text) {
  step_.sql += '\'';
  for (char c : text) {
    if (c == '\'') step_.sql += '\'';
    step_.sql += c;
  }
  step_.sql += '\'';
}

}  // namespace jxc::jet
