// 绑定: names to tables and columns, types to expressions, and the conversions that the types ask for.
#pragma once

#include "jet/ast.h"

#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

class Binder {
 public:
  Binder(Tree& tree, const Catalogue& catalogue) : tree_(tree), catalogue_(catalogue) {}
  /// Throws TranslateError; afterwards an emitter need only spell what stands in the tree.
  void bind();

 private:
  enum class ItemState : unsigned char { Open, Busy, Done };

  /// What names mean inside one select.
  struct Scope {
    Scope* outer = nullptr;
    Select* select = nullptr;
    std::vector<ItemState> items;
    bool aggregatesAllowed = false;
    bool insideAggregate = false;
  };

  // binder.cpp: statements
  void bindInsert();
  void bindInsertColumns();
  void bindInsertQuery();
  void bindUpdate();
  void checkReads(const Assignment& assignment, const Expr& e) const;
  void bindDelete();
  void bindCreateTable();
  void bindAddColumns();
  void bindAlterColumn();
  void bindDropColumn();
  void bindCreateIndex();
  const Table& tableOf(std::string_view name, int position) const;
  void setTable();
  Column columnOf(const ColumnDefinition& definition) const;

  // binder_query.cpp
  void bindQuery(Query& query, Scope* outer);
  void bindSelect(Select& select, Scope& scope);
  void bindSources(Select& select, Scope& scope);
  void bindFrom(FromNode& node, Select& select, Scope& scope);
  void bindJoinConditions(FromNode& node, Scope& scope);
  void expandStars(Select& select);
  void addStar(const Source& source, int position, std::vector<SelectItem>& items);
  Expr* bindItem(Scope& scope, std::size_t index);
  void bindGroups(Select& select, Scope& scope);
  void bindOrder(Query& query, Scope& scope);
  void bindUnionOrder(Query& query);
  Expr* orderExpression(Expr* written, Select& select, Scope& scope);
  void unite(Query& query);
  void describe(Query& query);
  void leaveOut(Query& query);
  OutputColumn outputOf(const SelectItem& item, std::size_t index);
  void checkGrouping(const Select& select, const Expr& e) const;

  // binder_expression.cpp
  Expr* bindExpr(Expr* e, Scope& scope);
  Expr* bindCondition(Expr* e, Scope& scope, const char* clause);
  Expr* bindColumn(Expr* e, Scope& scope);
  Expr* findAlias(const Expr& e, Scope& scope);
  Expr* bindBinary(Expr* e, Scope& scope);
  Expr* bindPlus(Expr* e);
  Expr* bindFunction(Expr* e, Scope& scope);
  Expr* bindIif(Expr* e);
  Expr* bindAggregate(Expr* e, Scope& scope);
  Expr* bindIn(Expr* e, Scope& scope);
  Expr* bindInQuery(Expr* e, Scope& scope);
  Expr* bindSubquery(Expr* e, Scope& scope);
  void bindColumnTo(Expr* e, Source* source, int column);

  // binder_conversion.cpp
  Expr* assign(Expr* value, const Column& column, const Table& table);
  void reconcile(Expr*& left, Expr*& right);
  void giveType(Expr* parameter, ColumnType type);
  Expr* constantFor(Expr* literal, const Expr& partner);
  Expr* comparable(Expr* e);
  Expr* toNumber(Expr* e);
  Expr* toText(Expr* e);
  Expr* convert(Expr* e, Conversion conversion);
  Expr* numberLiteral(const Expr& textLiteral);
  Expr* textOfLiteral(const Expr& numberLiteral);
  Expr* bitLiteral(bool value, int position);
  Expr* commonType(Expr* e, Type type);

  [[noreturn]] static void fail(TranslateError::Kind kind, const std::string& message, int position) {
    throw TranslateError(kind, message, position);
  }

  Tree& tree_;
  const Catalogue& catalogue_;
};

/// Number, name and type of a source's columns, be it a table or a select in brackets.
int columnCount(const Source& source);
OutputColumn columnAt(const Source& source, int column);
int findColumn(const Source& source, std::string_view name, bool* ambiguous = nullptr);

/// Types of columns as types of expressions, and back.
Type typeOf(ColumnType type);
ColumnType columnTypeOf(const Expr& e);
/// Characters that a text has at most, 0 when nobody knows.
int widthOf(const Expr& e);
int characters(std::string_view utf8);
bool isLiteral(const Expr& e);
/// Whether six decimals hold the value: stored numbers, and what is added up from them; not products and quotients.
bool isDecimal(const Expr& e);
inline bool isNumeric(Type type) {
  return type == Type::Integer || type == Type::Bit || type == Type::Number;
}
bool sameExpression(const Expr& a, const Expr& b);

}  // namespace jxc::jet
