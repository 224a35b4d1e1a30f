// SQLite 方言输出: what SQLite spells in its own way.
#pragma once

#include "jet/emitter.h"

namespace jxc::jet {

class SqliteEmitter final : public Emitter {
 public:
  using Emitter::Emitter;

 private:
  // emit_sqlite_definition.cpp
  std::string rowKey(const Source&) const override { return "rowid"; }
  void columnDeclaration(const Column& column, bool primary) override;
  void emitAlterColumn() override;

  // emit_sqlite_query.cpp
  std::string_view partOpening() const override { return "select * from ("; }
  void orderBy(const Query& query) override;
  void groupItem(const Expr& e) override;
  void fromNode(const FromNode& node, bool rightOperand) override;

  // emit_sqlite_expression.cpp
  void expr(const Expr& e) override { spelled(e); }
  void parameter(const Parameter& parameter) override;
  void aggregate(const Expr& e) override;
  void subquery(const Expr& e) override;
  void like(const Expr& e) override;
  void binary(const Expr& e) override;
  void conversion(const Expr& e) override;
  void function(const Expr& e) override;
  void divide(const Expr& e);
};

}  // namespace jxc::jet
