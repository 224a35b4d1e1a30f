// 语句输出: a bound tree as native text with its parameters: what all engines have in common.
#pragma once

#include "jet/ast.h"

#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

/// Spells a statement once the binder is done with it. What engines spell alike stands here; an engine's own emitter
/// overrides the rest.
class Emitter {
 public:
  explicit Emitter(const Statement& statement) : statement_(statement) {}
  virtual ~Emitter() = default;
  Emitter(const Emitter&) = delete;
  Emitter& operator=(const Emitter&) = delete;
  Plan emit();

 protected:
  enum class Names { None, Native };  // whether the columns need names: inside a from clause they do

  // ---- what engines differ in

  /// The column by which a row of the table is found again while the same statement changes it.
  virtual std::string rowKey(const Source& source) const = 0;
  virtual void columnDeclaration(const Column& column, bool primary) = 0;
  virtual void emitAlterColumn() = 0;
  virtual std::string indexName() const { return std::string(statement_.index); }
  virtual void indexColumn(std::size_t index);
  virtual void insertValue(const Expr& value, const Column&) { expr(value); }
  virtual void insertTail() {}
  virtual void query(const Query& query, Names names);
  virtual std::string_view partOpening() const { return "("; }  // of a part of a union that has its own `top`
  virtual void orderBy(const Query& query) = 0;
  /// The end of the select that drives an update over several tables.
  virtual void drivingTail(const Select&) {}
  virtual void groupItem(const Expr& e) = 0;
  virtual void selectItem(const Select& select, std::size_t index, const Query* query);
  virtual void fromNode(const FromNode& node, bool rightOperand) = 0;
  /// As a value, and as what `where`, `on`, `and` take: one and the same where truth is a number.
  virtual void expr(const Expr& e) = 0;
  virtual void condition(const Expr& e) { expr(e); }
  virtual void parameter(const Parameter& parameter) = 0;
  virtual void callerValue(const Expr& e) { parameter(e.place); }
  virtual void text(const Expr& e) { literal(e.name); }
  virtual void aggregate(const Expr& e) = 0;
  virtual void subquery(const Expr& e) = 0;
  virtual void like(const Expr& e) = 0;
  virtual void binary(const Expr& e);
  virtual void conversion(const Expr& e) = 0;
  virtual void function(const Expr& e) = 0;

  // ---- emitter.cpp: statements
  void emitQueryPlan();
  void emitInsert();
  void emitUpdate();
  void emitPlainUpdate();
  void emitJoinedUpdate();
  void emitDrivingSelect();
  void emitUpdateOf(const Source& target);
  void emitDelete();
  void emitCreateTable();
  void emitAddColumns();
  void emitDropColumn();
  void emitCreateIndex();

  // ---- emitter_query.cpp
  void select(const Select& select, const Query* query, Names names);
  void fromClause(const Select& select);
  void leaf(const Source& source);
  void where(const Expr* condition);
  void limit(const Select& select);

  // ---- emitter_expression.cpp
  void spelled(const Expr& e);
  void operand(const Expr& e);
  void conditionOperand(const Expr& e);
  void column(const Source& source, int column);
  void chained(const Expr& e, std::string_view sign);
  void choice(const Expr& e);
  void call(std::string_view name, const Expr& e);
  void list(const std::vector<Expr*>& list, std::size_t from = 0);
  void fit(std::string_view name, const Expr& e);
  void drivenRow(const Source& source);
  static std::string_view signOf(Op op);
  static std::string_view datePartOf(Function function);
  static bool isCompact(const Expr& e);
  [[noreturn]] static void cannotSay(const Expr& e);

  void put(std::string_view text) { step_.sql += text; }
  void quoted(std::string_view name);
  void literal(std::string_view text);
  virtual void finishStep() {
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
