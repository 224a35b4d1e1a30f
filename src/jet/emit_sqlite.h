// SQLite 方言输出: a bound tree as SQLite text with its parameters.
#pragma once

#include "jet/ast.h"

#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

class SqliteEmitter {
 public:
  explicit SqliteEmitter(const Statement& statement) : statement_(statement) {}
  Plan emit();

 private:
  // emit_sqlite.cpp: statements
  void emitQueryPlan();
  void emitInsert();
  void emitUpdate();
  void emitPlainUpdate();
  void emitJoinedUpdate();
  void emitDrivingSelect();
  void emitUpdateOf(const Source& target);
  void emitDelete();

  // emit_sqlite_definition.cpp
  void emitCreateTable();
  void emitAddColumns();
  void emitAlterColumn();
  void emitDropColumn();
  void emitCreateIndex();
  void columnDeclaration(const Column& column, bool primary);

  // emit_sqlite_query.cpp
  enum class Names { None, Native };  // whether the columns need names: inside a from clause they do
  void query(const Query& query, Names names);
  void select(const Select& select, const Query* naming);
  void fromClause(const Select& select);
  void fromNode(const FromNode& node, bool rightOperand);
  void leaf(const Source& source);
  void where(const Expr* condition);

  // emit_sqlite_expression.cpp
  void expr(const Expr& e);
  void operand(const Expr& e);
  void column(const Source& source, int column);
  void binary(const Expr& e);
  void divide(const Expr& e);
  void conversion(const Expr& e);
  void function(const Expr& e);
  void call(std::string_view name, const Expr& e);
  void list(const std::vector<Expr*>& list, std::size_t from = 0);
  void parameter(const Parameter& parameter);
  void drivenRow(const Source& source);

  void put(std::string_view text) { step_.sql += text; }
  void quoted(std::string_view name);
  void literal(std::string_view text);
  void finishStep() {
    plan_.steps.push_back(std::move(step_));
    step_ = {};
  }

  const Statement& statement_;
  Plan plan_;
  Step step_;

  // While an update over several tables is emitted: the row that is changed, and where the driving row holds the
  // others.
  const Source* updated_ = nullptr;
  bool driven_ = false;
};

}  // namespace jxc::jet
