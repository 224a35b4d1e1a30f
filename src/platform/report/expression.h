// 表达式: expressions of a report: the grammar of the dialect, looked up in variables, fields and the place on paper.
#pragma once

#include "engine/row_set.h"
#include "engine/value.h"
#include "jet/ast.h"
#include "platform/report/report.h"

#include <QString>
#include <QStringView>

#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace jxc::report {

/// What is wrong with an expression, in words for the shop.
struct ExpressionError {
  QString message;
};

/// A compiled expression.
struct Node {
  enum class Kind : std::uint8_t {
    Constant,
    Column,
    Variable,
    Place,  // Page, Pages, Line, GroupLine
    Negate,
    Not,
    Binary,
    Function,
    Custom,  // a function that the program brings along
    Aggregate,
    In,
    Between,
    IsNull,
    Like
  };
  Kind kind = Kind::Constant;
  jet::Op op = jet::Op::Plus;
  jet::Function function = jet::Function::None;
  bool negated = false;
  int index = -1;
  Value constant;
  std::vector<Node> args;
};

/// Rows from `from` up to but not including `to`.
struct RowRange {
  int from = 0, to = 0;
};

/// Where on paper an expression stands, and which rows its aggregates are about.
struct Place {
  int row = -1;     // -1: no row
  RowRange scope;   // of an aggregate that names no range
  RowRange group;   // the innermost group
  RowRange onPage;  // known when the page is full
  bool pageKnown = false;
  int page = 1, pages = 1;
};

/// The expressions of one report, with what they need to be evaluated.
class Program {
 public:
  using Functions = std::map<QString, ReportFunction>;
  struct CustomFunction {
    QString name;
    int least, most;
    ReportFunction call;
  };

  /// `now` is "yyyy-MM-dd HH:mm:ss".
  Program(RowSet rows, QString now);
  void addFunction(CustomFunction function);
  /// Variables first, all of them, then expressions.
  void addVariable(const QString& name, const QString& expression);

  /// Throws ExpressionError. A name that is neither variable nor field gives null and is put into `unknownNames`.
  Node compile(const QString& text);
  Value evaluate(const Node& node, const Place& place);
  /// An empty text, null, zero and "false" are no.
  bool isTrue(const Node& node, const Place& place);

  /// Whether it says something else on another page, or once the number of pages is known.
  bool usesPage(const Node& node) { return usesPlace(node, Page) || usesPlace(node, Pages); }
  bool usesPages(const Node& node) { return usesPlace(node, Pages); }

  const RowSet& rows() const { return rows_; }
  /// A row without any value: it prints as an empty line and is not counted.
  bool isBlank(int row) const { return row >= 0 && blank_[static_cast<std::size_t>(row)]; }
  std::set<QString>& unknownNames() { return unknownNames_; }

 private:
  friend class ExpressionCompiler;
  enum class Scope : std::uint8_t { Own, Report, Group, Page, Running };
  enum PlaceName { Page, Pages, Line, GroupLine };
  struct Variable {
    QString name, expression;
    Node node;
    bool compiled = false;
    QString fault;
    Value value;  // as of `generation`: a name that is used twice is looked at once
    std::uint64_t generation = 0;
  };
  struct Aggregate {
    jet::Function function;
    Scope scope;
    Node argument;
    bool countsRows = false;  // count(*)
    bool summed = false;
    std::vector<long double> sums;  // up to and including row i
    std::vector<int> counts;
    RowRange bestRange{0, 0};  // min, max: what was looked through last
    Value best;
  };

  bool usesPlace(const Node& node, PlaceName name);
  Value valueOf(const Node& node, const Place& place);
  Value evaluateBinary(const Node& node, const Place& place);
  Value evaluateAggregate(int index, const Place& place);
  Value evaluateVariable(int index, const Place& place);
  Value evaluatePlace(int index, const Place& place) const;
  const Node& variableNode(int index);
  RowRange rangeOf(Scope scope, const Place& place) const;
  void sumUp(Aggregate& aggregate);
  Value bestOf(Aggregate& aggregate, RowRange range);
  RowSet rows_;
  QString now_;
  std::vector<bool> blank_;
  std::vector<int> lines_;  // running number of each row, blank rows not counted
  std::vector<CustomFunction> functions_;
  std::vector<std::unique_ptr<Variable>> variables_;
  std::map<std::string, int> variableIndex_;  // by lower-case name
  std::vector<std::unique_ptr<Aggregate>> aggregates_;
  std::set<QString> unknownNames_;
  int depth_ = 0;
  bool inAggregate_ = false;
  std::uint64_t generation_ = 0;  // one for each place that an expression is evaluated at
};

/// A function of the dialect over values; throws ExpressionError. `now` as above.
Value callFunction(jet::Function function, std::span<const Value> arguments, const QString& now);
/// A number from a value; blank text is zero, other text throws.
double numberIn(const Value& value);
/// -1, 0, 1: numbers by their six decimals, else texts by their characters.
int compareValues(const Value& a, const Value& b);
bool isLike(const QString& text, const QString& pattern);

}  // namespace jxc::report
