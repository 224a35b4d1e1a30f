// 语法树: a statement as a tree; the binder fills in sources, types and conversions, an emitter only spells it.
#pragma once

#include "jet/catalogue.h"
#include "jet/functions.h"
#include "jet/plan.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

struct Query;
struct Source;

/// What an expression yields. Unknown: a parameter or null that nothing has given a type yet.
enum class Type : std::uint8_t { Unknown, Integer, Bit, Number, Text };

enum class ExprKind : std::uint8_t {
  Number,
  Text,
  Null,
  Boolean,  // literals
  Parameter,
  Column,
  Negate,
  Not,
  Binary,
  Function,
  Aggregate,
  In,
  InQuery,
  Exists,
  Subquery,
  Between,
  IsNull,
  Like,
  Convert,  // put in by the binder
  Star      // the argument of count(*)
};

enum class Op : std::uint8_t {
  Plus,  // as written; the binder makes one of the next three of it
  Add,
  Join,         // joining keeps null
  PlusByValue,  // both operands without a type: decided when it runs
  JoinEmpty,    // `&`: null joins as empty
  Subtract,
  Multiply,
  Divide,
  DivideWhole,
  Modulo,
  Power,
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  And,
  Or
};

/// How a value is made fit for its place.
enum class Conversion : std::uint8_t {
  None,
  Decimal,    // a computed number, rounded to six places
  ToNumber,   // text to a number; text that is none is an error
  TryNumber,  // the same for comparing: text that is no number is null and equals nothing
  ToText,     // a number in general format
  ToInteger,
  ToBit,
  Fit  // text of at most `width` characters for the column `label`
};

struct Expr {
  ExprKind kind = ExprKind::Null;
  Op op = Op::Plus;
  Conversion conversion = Conversion::None;
  Function function = Function::None;
  Type type = Type::Unknown;
  bool exact = false;    // a number that carries no noise of binary fractions: stored, literal, whole or rounded
  bool decimal = false;  // six decimals hold its true value, so that rounding to six takes the noise and nothing else
  bool joined = false;   // text that was put together or is a literal that reads as no number
  bool negated = false;  // not in, not like, not between, is not null
  bool aggregated = false;  // contains an aggregate of its own query
  bool bound = false;
  int chain = 0;  // operators below this one in a row without brackets
  int position = 0;
  int namePosition = 0;              // of `name` when a qualifier stands before it
  std::string_view qualifier, name;  // a column as written; a literal's text is its name
  std::vector<Expr*> args;
  Query* query = nullptr;

  // Filled by the binder.
  Source* source = nullptr;
  int column = -1;
  Parameter place;  // of a Parameter
  int width = 0;    // of Fit
  std::string_view label;
};

/// One column that a query yields.
struct OutputColumn {
  std::string_view name;    // what the reader sees
  std::string_view native;  // what the emitted text calls it inside a derived table
  Type type = Type::Unknown;
  ColumnType declared = ColumnType::Text;
  int width = 0;  // characters of a text that surely fit; 0 when unknown
  bool exact = false;
};

/// A leaf of a from clause: a table or a derived table.
struct Source {
  std::string_view name;  // of a table
  std::string_view alias;
  int position = 0;
  Query* derived = nullptr;
  const Table* table = nullptr;
  std::vector<OutputColumn> columns;
};

enum class JoinKind : std::uint8_t { Cross, Inner, Left, Right };

struct FromNode {
  Source* source = nullptr;  // a leaf, or
  JoinKind kind = JoinKind::Inner;
  FromNode* left = nullptr;
  FromNode* right = nullptr;
  Expr* on = nullptr;
};

struct SelectItem {
  Expr* expr = nullptr;     // null for a star
  std::string_view alias;   // as written
  std::string_view starOf;  // qualifier of a star
  int position = 0;
};

struct OrderItem {
  Expr* expr = nullptr;
  bool descending = false;
  int column = 0;  // >0: the result column to sort by, where the expression cannot be said again
};

struct Select {
  bool distinct = false;
  Expr* top = nullptr;
  std::vector<SelectItem> items;
  std::vector<FromNode*> from;
  Expr* where = nullptr;
  std::vector<Expr*> groupBy;
  Expr* having = nullptr;
  // select … into sheet in 'file' 'EXCEL 8.0;'
  std::string_view intoName;
  int intoPosition = 0;
  std::string_view intoFile;
  int intoFileParameter = -1;
  // Filled by the binder.
  std::vector<Source*> sources;
  bool grouped = false;
};

struct Query {
  std::vector<std::string_view> without;  // names of columns that it does not yield
  std::vector<Select*> selects;
  std::vector<bool> unionAll;  // between select i and i+1
  std::vector<OrderItem> orderBy;
  std::vector<OutputColumn> columns;
};

struct Assignment {
  std::string_view qualifier, name;
  int position = 0, namePosition = 0;
  Expr* value = nullptr;
  Source* source = nullptr;  // whose column it is
  int column = -1;
};

struct ColumnDefinition {
  std::string_view name;
  std::string declared;
  bool primary = false;
  int position = 0;  // of the name
  int typePosition = 0;
  Column column;
};

struct Statement {
  enum class Kind {
    Query,
    Insert,
    Update,
    Delete,
    CreateTable,
    DropTable,
    AddColumns,
    AlterColumn,
    DropColumn,
    CreateIndex,
    DropIndex
  };
  Kind kind = Kind::Query;
  Query* query = nullptr;  // select; the source of an insert
  std::string_view name;   // table of insert and definitions
  int position = 0;        // of that name
  const Table* table = nullptr;
  std::vector<std::string_view> columns;  // of an insert, an index, a dropped column
  std::vector<int> columnPositions;
  std::vector<bool> descending;  // of an index
  std::vector<int> targets;      // insert: index of each column in its table
  std::vector<Expr*> values;     // insert … values
  std::vector<Assignment> assignments;
  Select* select = nullptr;     // from and where of update and delete
  std::string_view deleteFrom;  // delete t.* from …
  int deletePosition = 0;
  Source* target = nullptr;  // whose rows a delete takes
  std::vector<ColumnDefinition> definitions;
  std::string_view index;
  bool unique = false;
  int parameterCount = 0;
};

/// Owner of all nodes of one statement.
class Tree {
 public:
  Expr* expr(ExprKind kind, int position) {
    Expr& e = exprs_.emplace_back();
    e.kind = kind;
    e.position = e.namePosition = position;
    return &e;
  }
  Query* query() { return &queries_.emplace_back(); }
  Select* select() { return &selects_.emplace_back(); }
  Source* source() { return &sources_.emplace_back(); }
  FromNode* from() { return &froms_.emplace_back(); }
  /// Keeps a text that does not stand in the statement as it is.
  std::string_view keep(std::string text) { return texts_.emplace_back(std::move(text)); }

  Statement statement;

 private:
  std::deque<Expr> exprs_;
  std::deque<Query> queries_;
  std::deque<Select> selects_;
  std::deque<Source> sources_;
  std::deque<FromNode> froms_;
  std::deque<std::string> texts_;
};

}  // namespace jxc::jet
