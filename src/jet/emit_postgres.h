// PostgreSQL 方言输出: what PostgreSQL spells in its own way.
#pragma once

#include "jet/emitter.h"

#include <unordered_map>

namespace jxc::jet {

/// Numbers are `numeric`, whole ones `bigint`, flags `smallint`, and truth is a type of its own there: a condition that
/// stands for a value becomes 0 or 1, a value that stands for a condition is compared with 0. What the server has no
/// word for is a function of the schema `jxc` (engine/postgres/functions).
class PostgresEmitter final : public Emitter {
 public:
  explicit PostgresEmitter(const Statement& statement)
      : Emitter(statement),
        ordered_(statement.kind == Statement::Kind::Query || statement.kind == Statement::Kind::Insert) {}

 private:
  // emit_postgres.cpp
  std::string rowKey(const Source& source) const override;
  void columnDeclaration(const Column& column, bool primary) override;
  void emitAlterColumn() override;
  std::string indexName() const override;
  void indexColumn(std::size_t index) override;
  void insertValue(const Expr& value, const Column& column) override;
  void insertTail() override;
  void finishStep() override;

  // emit_postgres_query.cpp
  void query(const Query& query, Names names) override;
  void groupItem(const Expr& e) override;
  void selectItem(const Select& select, std::size_t index, const Query* query) override;
  void fromNode(const FromNode& node, bool rightOperand) override;
  void orderBy(const Query& query) override;
  void storedOrder(const Select& select);
  void drivingTail(const Select& select) override { storedOrder(select); }
  void orderItem(const Expr& e, bool descending);

  // emit_postgres_expression.cpp
  void expr(const Expr& e) override;
  void condition(const Expr& e) override;
  void parameter(const Parameter& parameter) override;
  void callerValue(const Expr& e) override;
  void text(const Expr& e) override;
  void aggregate(const Expr& e) override;
  void subquery(const Expr& e) override;
  void like(const Expr& e) override;
  void binary(const Expr& e) override;
  void conversion(const Expr& e) override;
  void function(const Expr& e) override;
  void number(const Expr& e);
  void wholeNumber(const Expr& e);
  void asText(const Expr& e);
  void toBit(const Expr& e);
  void compared(const Expr& e, const Expr& other);
  void wholeColumn(const Expr& column, Op op, const Expr& value);
  void wrapped(std::string_view before, const Expr& e, std::string_view after);
  void dateFunction(const Expr& e);
  void moment(Moment moment);

  std::unordered_map<const Expr*, std::string> values_;  // where a value of the caller stands in this step already
  bool ordered_;                  // next comes the query whose rows leave the statement, or go into a table
  const Query* whole_ = nullptr;  // that query
};

}  // namespace jxc::jet
