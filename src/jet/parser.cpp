#include "jet/parser.h"

namespace jxc::jet {

Parser::Parser(std::string_view statement, Tree& tree) : text_(statement), tree_(tree), tokens_(tokenize(statement)) {}

Expr* Parser::parseExpression() {
  alone_ = true;
  Expr* e = expression();
  if (peek().kind != TokenKind::End) fail("the expression is over here");
  return e;
}

void Parser::parse() {
  Statement& statement = tree_.statement;
  switch (peek().word) {
    case Word::Insert:
      insertStatement();
      break;
    case Word::Update:
      updateStatement();
      break;
    case Word::Delete:
      deleteStatement();
      break;
    case Word::Create:
      createStatement();
      break;
    case Word::Alter:
      alterStatement();
      break;
    case Word::Drop:
      dropStatement();
      break;
    default:
      if (!at(Word::Select) && !at(Word::Without) && !at('('))
        fail("a statement begins with select, insert, update, delete, create, alter or drop");
      statement.kind = Statement::Kind::Query;
      statement.query = query();
  }
  accept(';');
  if (peek().kind != TokenKind::End) fail("text behind the end of the statement");
}

// insert into t (a,b) values (1,2) | insert into t (a,b) select …
void Parser::insertStatement() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Insert;
  expect(Word::Insert, "insert");
  expect(Word::Into, "into");
  const Token& table = name("a table name");
  statement.name = table.text;
  statement.position = table.position;
  if (at('(') && !at(Word::Select, 1)) {
    expect('(', "(");
    do {
      const Token& column = name("a column name");
      statement.columns.push_back(column.text);
      statement.columnPositions.push_back(column.position);
    } while (accept(','));
    expect(')', ")");
  }
  if (accept(Word::Values)) {
    expect('(', "(");
    do {
      statement.values.push_back(expression());
    } while (accept(','));
    expect(')', ")");
  } else {
    statement.query = query();
  }
}

// update t set a=1,b=2 where … | update a,b set a.x=b.y where … | update a inner join b on … set …
void Parser::updateStatement() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Update;
  expect(Word::Update, "update");
  statement.select = tree_.select();
  fromList(*statement.select);
  expect(Word::Set, "set");
  do {
    Assignment assignment;
    const Token* column = &name("a column name");
    assignment.position = column->position;
    if (accept('.')) {
      assignment.qualifier = column->text;
      column = &name("a column name");
    }
    assignment.name = column->text;
    assignment.namePosition = column->position;
    expect('=', "=");
    assignment.value = expression();
    statement.assignments.push_back(assignment);
  } while (accept(','));
  if (accept(Word::Where)) statement.select->where = expression();
}

// delete from t where … | delete * from t | delete a.* from a,b where …
void Parser::deleteStatement() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Delete;
  expect(Word::Delete, "delete");
  if (!accept('*') && !at(Word::From)) {
    const Token& table = name("from");
    statement.deleteFrom = table.text;
    statement.deletePosition = table.position;
    if (accept('.')) expect('*', "*");
  }
  expect(Word::From, "from");
  statement.select = tree_.select();
  fromList(*statement.select);
  if (accept(Word::Where)) statement.select->where = expression();
}

void Parser::createStatement() {
  expect(Word::Create, "create");
  if (accept(Word::Table)) return createTable();
  const bool unique = accept(Word::Unique);
  if (!accept(Word::Index)) fail(unique ? "index expected" : "table or index expected");
  createIndex(unique);
}

// create table [x] ([id] Counter, [a] varchar (8) null, Constraint StatePrimary Primary key ([id]))
void Parser::createTable() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::CreateTable;
  const Token& table = name("a table name");
  statement.name = table.text;
  statement.position = table.position;
  expect('(', "(");
  do {
    if (at(Word::Constraint)) {
      expect(Word::Constraint, "constraint");
      name("the name of the constraint");
      primaryKey(statement.definitions);
    } else if (at(Word::Primary) && at(Word::Key, 1)) {
      primaryKey(statement.definitions);
    } else {
      statement.definitions.push_back(columnDefinition());
    }
  } while (accept(','));
  expect(')', ")");
}

// name type [null | not null] [primary key]
ColumnDefinition Parser::columnDefinition() {
  ColumnDefinition column;
  const Token& columnName = name("a column name");
  column.name = columnName.text;
  column.position = columnName.position;
  const Token& type = peek();
  column.typePosition = type.position;
  if (type.kind != TokenKind::Word) fail("a column type expected");
  ++at_;
  column.declared = type.text;
  if (accept('(')) {
    column.declared += '(';
    for (;;) {
      if (peek().kind != TokenKind::Number) fail("a width expected");
      column.declared += peek().text;
      ++at_;
      if (!accept(',')) break;
      column.declared += ',';
    }
    expect(')', ")");
    column.declared += ')';
  }
  skipNull(column);
  return column;
}

void Parser::skipNull(ColumnDefinition& column) {
  for (;;) {
    if (accept(Word::Null)) continue;
    if (at(Word::Not) && at(Word::Null, 1)) {
      at_ += 2;  // every column may stay empty; rules live in the screens
      continue;
    }
    if (at(Word::Primary) && at(Word::Key, 1)) {
      at_ += 2;
      column.primary = true;
      continue;
    }
    return;
  }
}

void Parser::primaryKey(std::vector<ColumnDefinition>& columns) {
  expect(Word::Primary, "primary");
  expect(Word::Key, "key");
  expect('(', "(");
  do {
    const Token& column = name("a column name");
    bool found = false;
    for (ColumnDefinition& definition : columns) {
      if (!sameName(definition.name, column.text)) continue;
      definition.primary = found = true;
    }
    if (!found) {
      throw TranslateError(TranslateError::Kind::UnknownName, "unknown column " + std::string(column.text),
                           column.position);
    }
  } while (accept(','));
  expect(')', ")");
}

// create [unique] index n on t (a,b desc)
void Parser::createIndex(bool unique) {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::CreateIndex;
  statement.unique = unique;
  statement.index = name("an index name").text;
  expect(Word::On, "on");
  const Token& table = name("a table name");
  statement.name = table.text;
  statement.position = table.position;
  expect('(', "(");
  do {
    const Token& column = name("a column name");
    statement.columns.push_back(column.text);
    statement.columnPositions.push_back(column.position);
    const bool descending = accept(Word::Desc);
    if (!descending) accept(Word::Asc);
    statement.descending.push_back(descending);
  } while (accept(','));
  expect(')', ")");
}

// alter table t add [column] a int null,b bit | alter [column] a text | drop [column] a
void Parser::alterStatement() {
  Statement& statement = tree_.statement;
  expect(Word::Alter, "alter");
  expect(Word::Table, "table");
  const Token& table = name("a table name");
  statement.name = table.text;
  statement.position = table.position;
  if (accept(Word::Add)) {
    statement.kind = Statement::Kind::AddColumns;
    accept(Word::Column);
    const bool bracketed = accept('(');
    do {
      statement.definitions.push_back(columnDefinition());
    } while (accept(','));
    if (bracketed) expect(')', ")");
  } else if (accept(Word::Alter)) {
    statement.kind = Statement::Kind::AlterColumn;
    accept(Word::Column);
    statement.definitions.push_back(columnDefinition());
  } else if (accept(Word::Drop)) {
    statement.kind = Statement::Kind::DropColumn;
    accept(Word::Column);
    const Token& column = name("a column name");
    statement.columns.push_back(column.text);
    statement.columnPositions.push_back(column.position);
  } else {
    fail("add, alter or drop expected");
  }
}

// drop table t | drop index n [on t]
void Parser::dropStatement() {
  Statement& statement = tree_.statement;
  expect(Word::Drop, "drop");
  if (accept(Word::Table)) {
    statement.kind = Statement::Kind::DropTable;
    const Token& table = name("a table name");
    statement.name = table.text;
    statement.position = table.position;
    return;
  }
  if (!accept(Word::Index)) fail("table or index expected");
  statement.kind = Statement::Kind::DropIndex;
  statement.index = name("an index name").text;
  if (accept(Word::On)) {
    const Token& table = name("a table name");
    statement.name = table.text;
    statement.position = table.position;
  }
}

const Token& Parser::peek(int ahead) const {
  const std::size_t index = at_ + static_cast<std::size_t>(ahead);
  return index < tokens_.size() ? tokens_[index] : tokens_.back();
}

bool Parser::accept(Word word) {
  if (!at(word)) return false;
  ++at_;
  return true;
}

bool Parser::accept(char sign) {
  if (!at(sign)) return false;
  ++at_;
  return true;
}

void Parser::expect(Word word, const char* what) {
  if (!accept(word)) fail(std::string(what) + " expected");
}

void Parser::expect(char sign, const char* what) {
  if (!accept(sign)) fail(std::string(what) + " expected");
}

// Words that only serve definitions may be names anywhere; those that structure a select may not, unless bracketed.
bool Parser::atName(int ahead) const {
  const Token& token = peek(ahead);
  if (token.kind == TokenKind::QuotedName) return true;
  if (token.kind != TokenKind::Word) return false;
  switch (token.word) {
    case Word::None:
    case Word::Add:
    case Word::Cascade:
    case Word::Column:
    case Word::Index:
    case Word::Key:
    case Word::Primary:
    case Word::Asc:
      return true;
    default:
      return false;
  }
}

const Token& Parser::name(const char* what) {
  if (!atName()) fail(std::string(what) + " expected");
  return tokens_[at_++];
}

void Parser::failAt(const std::string& message, const Token& token) const {
  std::string text = message;
  if (token.kind == TokenKind::End) {
    text += " at the end of the statement";
  } else {
    text += " near \"" + std::string(text_.substr(static_cast<std::size_t>(token.position), 24)) + '"';
  }
  throw TranslateError(TranslateError::Kind::Syntax, text, token.position);
}

std::string_view Parser::unquoted(const Token& literal) {
  if (literal.text.find(literal.sign) == std::string_view::npos) return literal.text;
  std::string text;
  for (std::size_t i = 0; i < literal.text.size(); ++i) {
    text += literal.text[i];
    if (literal.text[i] == literal.sign) ++i;  // doubled
  }
  return tree_.keep(std::move(text));
}

}  // namespace jxc::jet
