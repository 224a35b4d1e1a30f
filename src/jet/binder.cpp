#include "jet/binder.h"

#include "jet/lexer.h"

#include <algorithm>

namespace jxc::jet {

void Binder::bind() {
  Statement& s = tree_.statement;
  switch (s.kind) {
    case Statement::Kind::Query:
      bindQuery(*s.query, nullptr);
      break;
    case Statement::Kind::Insert:
      bindInsert();
      break;
    case Statement::Kind::Update:
      bindUpdate();
      break;
    case Statement::Kind::Delete:
      bindDelete();
      break;
    case Statement::Kind::CreateTable:
      bindCreateTable();
      break;
    case Statement::Kind::DropTable:
      setTable();
      break;
    case Statement::Kind::AddColumns:
      bindAddColumns();
      break;
    case Statement::Kind::AlterColumn:
      bindAlterColumn();
      break;
    case Statement::Kind::DropColumn:
      bindDropColumn();
      break;
    case Statement::Kind::CreateIndex:
      bindCreateIndex();
      break;
    case Statement::Kind::DropIndex:
      if (!s.name.empty()) setTable();
      break;
  }
}

const Table& Binder::tableOf(std::string_view name, int position) const {
  const Table* table = catalogue_.table(name);
  if (!table) fail(TranslateError::Kind::UnknownName, "unknown table " + std::string(name), position);
  return *table;
}

void Binder::setTable() {
  Statement& s = tree_.statement;
  s.table = &tableOf(s.name, s.position);
}

void Binder::bindInsert() {
  Statement& s = tree_.statement;
  setTable();
  if (s.query) {
    bindInsertQuery();
    return;
  }
  bindInsertColumns();
  if (s.targets.size() != s.values.size()) {
    fail(TranslateError::Kind::Syntax, "the number of values is not the number of columns", s.position);
  }
  Select none;
  Scope scope;
  scope.select = &none;
  for (std::size_t i = 0; i < s.values.size(); ++i) {
    const Column& column = s.table->columns[static_cast<std::size_t>(s.targets[i])];
    s.values[i] = assign(bindExpr(s.values[i], scope), column, *s.table);
  }
}

void Binder::bindInsertColumns() {
  Statement& s = tree_.statement;
  const std::vector<Column>& columns = s.table->columns;
  for (std::size_t i = 0; i < s.columns.size(); ++i) {
    const Column* column = s.table->find(s.columns[i]);
    if (!column) {
      fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(s.columns[i]) + " of " + s.table->name,
           s.columnPositions[i]);
    }
    const int target = static_cast<int>(column - columns.data());
    if (std::find(s.targets.begin(), s.targets.end(), target) != s.targets.end()) {
      fail(TranslateError::Kind::Syntax, "column " + column->name + " is filled twice", s.columnPositions[i]);
    }
    s.targets.push_back(target);
  }
  if (!s.targets.empty()) return;
  // Without a list: all columns, or all but the counter, which then numbers the row itself.
  const std::size_t count = s.query ? s.query->columns.size() : s.values.size();
  const bool skipCounter = count + 1 == columns.size() && columns.front().type == ColumnType::Counter;
  for (std::size_t i = skipCounter ? 1 : 0; i < columns.size(); ++i)
    s.targets.push_back(static_cast<int>(i));
}

// Without a list of columns a select fills the columns of the same names; if it has other names, the columns in order.
void Binder::bindInsertQuery() {
  Statement& s = tree_.statement;
  bindQuery(*s.query, nullptr);
  if (s.columns.empty()) {
    for (const OutputColumn& column : s.query->columns) {
      const Column* found = s.table->find(column.name);
      if (!found) {
        s.targets.clear();
        break;
      }
      s.targets.push_back(static_cast<int>(found - s.table->columns.data()));
    }
  }
  if (s.targets.empty()) bindInsertColumns();
  if (s.targets.size() != s.query->columns.size()) {
    fail(TranslateError::Kind::Syntax, "the number of selected values is not the number of columns", s.position);
  }
  for (Select* select : s.query->selects) {
    for (std::size_t i = 0; i < s.targets.size(); ++i) {
      const Column& column = s.table->columns[static_cast<std::size_t>(s.targets[i])];
      select->items[i].expr = assign(select->items[i].expr, column, *s.table);
    }
  }
}

void Binder::bindUpdate() {
  Statement& s = tree_.statement;
  Scope scope;
  scope.select = s.select;
  bindSources(*s.select, scope);
  for (Assignment& assignment : s.assignments) {
    for (Source* source : s.select->sources) {
      if (!assignment.qualifier.empty() && !sameName(source->alias, assignment.qualifier)) continue;
      const int column = findColumn(*source, assignment.name);
      if (column < 0) continue;
      if (assignment.source) {
        fail(TranslateError::Kind::UnknownName,
             "column " + std::string(assignment.name) + " stands in more than one table", assignment.namePosition);
      }
      assignment.source = source;
      assignment.column = column;
    }
    if (!assignment.source) {
      fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(assignment.name),
           assignment.namePosition);
    }
    for (const Assignment& before : s.assignments) {
      if (&before == &assignment) break;
      if (before.source != assignment.source || before.column != assignment.column) continue;
      fail(TranslateError::Kind::Syntax, "column " + std::string(assignment.name) + " is set twice",
           assignment.namePosition);
    }
    if (!assignment.source->table) {
      fail(TranslateError::Kind::Unsupported, "a select in brackets cannot be changed", assignment.position);
    }
    const Table& table = *assignment.source->table;
    assignment.value =
        assign(bindExpr(assignment.value, scope), table.columns[static_cast<std::size_t>(assignment.column)], table);
  }
  if (s.select->where) s.select->where = bindCondition(s.select->where, scope, "where");
  for (const Assignment& assignment : s.assignments)
    checkReads(assignment, *assignment.value);
}

// The tables of one update are written one after the other, so a value cannot read what the same update writes
// elsewhere.
void Binder::checkReads(const Assignment& assignment, const Expr& e) const {
  for (const Expr* argument : e.args)
    checkReads(assignment, *argument);
  if (e.kind != ExprKind::Column || e.source == assignment.source) return;
  for (const Assignment& other : tree_.statement.assignments) {
    if (other.source != e.source || other.column != e.column) continue;
    fail(TranslateError::Kind::Unsupported, "the same update changes " + std::string(e.name) + " of the other table",
         e.position);
  }
}

void Binder::bindDelete() {
  Statement& s = tree_.statement;
  Scope scope;
  scope.select = s.select;
  bindSources(*s.select, scope);
  for (Source* source : s.select->sources) {
    if (s.deleteFrom.empty() || sameName(source->alias, s.deleteFrom) || sameName(source->name, s.deleteFrom)) {
      if (s.target)
        fail(TranslateError::Kind::Syntax, "say of which table the rows go", s.select->sources[1]->position);
      s.target = source;
    }
  }
  if (!s.target)
    fail(TranslateError::Kind::UnknownName, "unknown table " + std::string(s.deleteFrom), s.deletePosition);
  if (!s.target->table)
    fail(TranslateError::Kind::Unsupported, "a select in brackets has no rows to delete", s.target->position);
  if (s.select->where) s.select->where = bindCondition(s.select->where, scope, "where");
}

Column Binder::columnOf(const ColumnDefinition& definition) const {
  try {
    return columnFromDeclaration(definition.name, definition.declared);
  } catch (const TranslateError& error) {
    fail(error.kind, error.what(), definition.typePosition);
  }
}

void Binder::bindCreateTable() {
  Statement& s = tree_.statement;
  if (catalogue_.table(s.name)) {
    fail(TranslateError::Kind::Unsupported, "table " + std::string(s.name) + " exists already", s.position);
  }
  int keys = 0;
  for (std::size_t i = 0; i < s.definitions.size(); ++i) {
    ColumnDefinition& definition = s.definitions[i];
    definition.column = columnOf(definition);
    for (std::size_t before = 0; before < i; ++before) {
      if (!sameName(s.definitions[before].name, definition.name)) continue;
      fail(TranslateError::Kind::Syntax, "column " + std::string(definition.name) + " is declared twice",
           definition.position);
    }
    if (definition.primary) ++keys;
  }
  for (const ColumnDefinition& definition : s.definitions) {
    if (definition.column.type != ColumnType::Counter) continue;
    if (!definition.primary || keys > 1) {
      fail(TranslateError::Kind::Unsupported, "a counter is the primary key of its table", definition.position);
    }
  }
}

void Binder::bindAddColumns() {
  Statement& s = tree_.statement;
  setTable();
  for (ColumnDefinition& definition : s.definitions) {
    definition.column = columnOf(definition);
    if (s.table->find(definition.name)) {
      fail(TranslateError::Kind::Unsupported, "column " + std::string(definition.name) + " exists already",
           definition.position);
    }
    if (definition.column.type == ColumnType::Counter || definition.primary) {
      fail(TranslateError::Kind::Unsupported, "a key cannot be added to a table that exists", definition.typePosition);
    }
  }
}

void Binder::bindAlterColumn() {
  Statement& s = tree_.statement;
  setTable();
  ColumnDefinition& definition = s.definitions.front();
  const Column* old = s.table->find(definition.name);
  if (!old)
    fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(definition.name), definition.position);
  definition.column = columnOf(definition);
  definition.column.name = old->name;
  if (definition.column.type == ColumnType::Counter || old->type == ColumnType::Counter) {
    fail(TranslateError::Kind::Unsupported, "a counter cannot be altered", definition.typePosition);
  }
}

void Binder::bindDropColumn() {
  Statement& s = tree_.statement;
  setTable();
  const Column* column = s.table->find(s.columns.front());
  if (!column)
    fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(s.columns.front()),
         s.columnPositions.front());
  if (column->type == ColumnType::Counter) {
    fail(TranslateError::Kind::Unsupported, "the key of a table cannot be dropped", s.columnPositions.front());
  }
  s.columns.front() = column->name;
}

void Binder::bindCreateIndex() {
  Statement& s = tree_.statement;
  setTable();
  for (std::size_t i = 0; i < s.columns.size(); ++i) {
    const Column* column = s.table->find(s.columns[i]);
    if (!column)
      fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(s.columns[i]), s.columnPositions[i]);
    s.columns[i] = column->name;
  }
}

}  // namespace jxc::jet
