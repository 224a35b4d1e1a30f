#include "platform/report/expression.h"

#include "engine/number_text.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <exception>

namespace jxc::report {

namespace expression_detail {

constexpr int kDeepest = 1500;           // nodes below one another, through variables too
constexpr qsizetype kLongest = 1 << 20;  // characters: variables that double one another

bool isNumber(const Value& value) {
  return value.kind() == Value::Kind::Integer || value.kind() == Value::Kind::Real;
}

Value truth(bool yes) {
  return yes;
}

bool isYes(const Value& value) {
  if (value.kind() != Value::Kind::Text) return value.number() != 0;
  const QString text = value.text().trimmed();
  if (text.isEmpty() || text.compare(u"false", Qt::CaseInsensitive) == 0) return false;
  const auto number = parseNumber(text.toStdString());
  return !number || *number != 0;
}

Value joined(const QString& a, const QString& b) {
  if (a.size() + b.size() > kLongest) throw ExpressionError{QStringLiteral("文字太长")};
  return a + b;
}

/// `+` joins texts and adds numbers; a number beside a text that is none is joined.
Value plus(const Value& a, const Value& b) {
  if (isNumber(a) && isNumber(b)) return toSixDecimals(a.number() + b.number());
  const auto reads = [](const Value& value) {
    return isNumber(value) || parseNumber(value.text().toStdString()).has_value();
  };
  if ((isNumber(a) || isNumber(b)) && reads(a) && reads(b)) return toSixDecimals(numberIn(a) + numberIn(b));
  return joined(a.text(), b.text());
}

Value arithmetic(jet::Op op, double a, double b) {
  using jet::Op;
  switch (op) {
    case Op::Subtract:
      return toSixDecimals(a - b);
    case Op::Multiply:
      return a * b;
    case Op::Power:
      return std::pow(a, b);
    default:
      break;
  }
  if (op != Op::Divide) {
    a = roundDecimals(toSixDecimals(a), 0);
    b = roundDecimals(toSixDecimals(b), 0);
  }
  if (std::fabs(b) < 1e-12) throw ExpressionError{QStringLiteral("除数为零")};
  return op == Op::Divide ? a / b : op == Op::Modulo ? std::fmod(a, b) : std::trunc(a / b);
}

Value compared(jet::Op op, const Value& a, const Value& b) {
  using jet::Op;
  // A text that reads as no number equals none; that is no fault.
  if (isNumber(a) != isNumber(b)) {
    const Value& text = isNumber(a) ? b : a;
    const QString trimmed = text.text().trimmed();
    if (!trimmed.isEmpty() && !parseNumber(trimmed.toStdString())) return truth(op == Op::NotEqual);
  }
  const int order = compareValues(a, b);
  switch (op) {
    case Op::Equal:
      return truth(order == 0);
    case Op::NotEqual:
      return truth(order != 0);
    case Op::Less:
      return truth(order < 0);
    case Op::LessEqual:
      return truth(order <= 0);
    case Op::Greater:
      return truth(order > 0);
    default:
      return truth(order >= 0);
  }
}

struct Depth {
  explicit Depth(int& depth) : depth_(depth) {
    if (++depth_ > kDeepest) {
      --depth_;
      throw ExpressionError{QStringLiteral("表达式太深，或变量互相引用")};
    }
  }
  ~Depth() { --depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;
  int& depth_;
};

}  // namespace expression_detail

Program::Program(RowSet rows, QString now) : rows_(std::move(rows)), now_(std::move(now)) {
  const int count = rows_.rowCount(), columns = rows_.columnCount();
  blank_.resize(static_cast<std::size_t>(count));
  lines_.resize(static_cast<std::size_t>(count));
  int line = 0;
  for (int row = 0; row < count; ++row) {
    const auto isEmpty = [&](int column) {
      return rows_.isNull(row, column) ||
             (rows_.kind(row, column) == Value::Kind::Text && rows_.utf8(row, column).empty());
    };
    bool blank = true;
    for (int column = 0; column < columns && blank; ++column)
      blank = isEmpty(column);
    blank_[static_cast<std::size_t>(row)] = blank;
    lines_[static_cast<std::size_t>(row)] = blank ? line : ++line;
  }
}

void Program::addFunction(CustomFunction function) {
  functions_.push_back(std::move(function));
}

void Program::addVariable(const QString& name, const QString& expression) {
  auto variable = std::make_unique<Variable>();
  variable->name = name;
  variable->expression = expression;
  variableIndex_[name.toLower().toStdString()] = static_cast<int>(variables_.size());
  variables_.push_back(std::move(variable));
}

bool Program::isTrue(const Node& node, const Place& place) {
  return expression_detail::isYes(evaluate(node, place));
}

Value Program::evaluate(const Node& node, const Place& place) {
  ++generation_;
  return valueOf(node, place);
}

Value Program::valueOf(const Node& node, const Place& place) {
  using namespace expression_detail;
  using Kind = Node::Kind;
  const Depth depth(depth_);
  const auto argument = [&](std::size_t i) { return valueOf(node.args[i], place); };
  switch (node.kind) {
    case Kind::Constant:
      return node.constant;
    case Kind::Column:
      return place.row < 0 ? Value() : rows_.value(place.row, node.index);
    case Kind::Variable:
      return evaluateVariable(node.index, place);
    case Kind::Place:
      return evaluatePlace(node.index, place);
    case Kind::Negate: {
      const Value value = argument(0);
      return value.isNull() ? Value() : Value(-numberIn(value));
    }
    case Kind::Not: {
      const Value value = argument(0);
      return value.isNull() ? Value() : truth(!isYes(value));
    }
    case Kind::Binary:
      return evaluateBinary(node, place);
    case Kind::Function: {
      // Only the branch that is taken is looked at, so that iif(b<>0,a/b,0) is safe.
      if (node.function == jet::Function::Iif) return argument(isYes(argument(0)) ? 1 : 2);
      std::vector<Value> values;
      for (const Node& each : node.args)
        values.push_back(valueOf(each, place));
      return callFunction(node.function, values, now_);
    }
    case Kind::Custom: {
      std::vector<Value> values;
      for (const Node& each : node.args)
        values.push_back(valueOf(each, place));
      const CustomFunction& function = functions_[static_cast<std::size_t>(node.index)];
      try {
        return function.call(values);
      } catch (const std::exception& error) {
        throw ExpressionError{QStringLiteral("%1：%2").arg(function.name, QString::fromUtf8(error.what()))};
      }
    }
    case Kind::Aggregate:
      return evaluateAggregate(node.index, place);
    case Kind::IsNull:
      return truth(argument(0).isNull() != node.negated);
    case Kind::Like: {
      const Value text = argument(0), pattern = argument(1);
      if (text.isNull() || pattern.isNull()) return {};
      return truth(isLike(text.text(), pattern.text()) != node.negated);
    }
    case Kind::Between: {
      const Value value = argument(0), low = argument(1), high = argument(2);
      if (value.isNull() || low.isNull() || high.isNull()) return {};
      return truth((compareValues(value, low) >= 0 && compareValues(value, high) <= 0) != node.negated);
    }
    case Kind::In: {
      const Value value = argument(0);
      if (value.isNull()) return {};
      for (std::size_t i = 1; i < node.args.size(); ++i) {
        const Value other = argument(i);
        if (!other.isNull() && isYes(compared(jet::Op::Equal, value, other))) return truth(!node.negated);
      }
      return truth(node.negated);
    }
  }
  return {};
}

Value Program::evaluateBinary(const Node& node, const Place& place) {
  using namespace expression_detail;
  using jet::Op;
  const Value a = valueOf(node.args[0], place);
  if (node.op == Op::And || node.op == Op::Or) {
    const bool wanted = node.op == Op::Or;
    if (!a.isNull() && isYes(a) == wanted) return truth(wanted);
    const Value b = valueOf(node.args[1], place);
    if (!b.isNull() && isYes(b) == wanted) return truth(wanted);
    return a.isNull() || b.isNull() ? Value() : truth(!wanted);
  }
  const Value b = valueOf(node.args[1], place);
  if (node.op == Op::JoinEmpty) return joined(a.text(), b.text());
  if (a.isNull() || b.isNull()) return {};
  if (node.op >= Op::Equal && node.op <= Op::GreaterEqual) return compared(node.op, a, b);
  const Value result = node.op == Op::Plus ? plus(a, b) : arithmetic(node.op, numberIn(a), numberIn(b));
  if (result.kind() == Value::Kind::Real && !std::isfinite(result.number()))
    throw ExpressionError{QStringLiteral("数字太大")};
  return result;
}

Value Program::evaluateVariable(int index, const Place& place) {
  const Node& node = variableNode(index);
  Variable& variable = *variables_[static_cast<std::size_t>(index)];
  if (variable.generation != generation_) {
    variable.value = valueOf(node, place);
    variable.generation = generation_;  // another one after a sum in it, which looked at other rows
  }
  return variable.value;
}

Value Program::evaluatePlace(int index, const Place& place) const {
  switch (index) {
    case Page:
      return place.page;
    case Pages:
      return place.pages;
    default:
      break;
  }
  if (place.row < 0 || isBlank(place.row)) return {};
  const auto line = [&](int row) { return lines_[static_cast<std::size_t>(row)]; };
  return index == Line || place.group.from == 0 ? line(place.row) : line(place.row) - line(place.group.from - 1);
}

RowRange Program::rangeOf(Scope scope, const Place& place) const {
  const int count = rows_.rowCount();
  switch (scope) {
    case Scope::Own:
      return place.scope;
    case Scope::Report:
      return {0, count};
    case Scope::Group:
      return place.group;
    case Scope::Running:
      return {0, place.row + 1};
    case Scope::Page:
      if (!place.pageKnown) throw ExpressionError{QStringLiteral("本页合计只能用在页眉、页脚和整页上")};
      return place.onPage;
  }
  return {};
}

Value Program::evaluateAggregate(int index, const Place& place) {
  using jet::Function;
  // A variable may lead here from inside another sum.
  if (inAggregate_) throw ExpressionError{QStringLiteral("合计里面不能再有合计")};
  Aggregate& aggregate = *aggregates_[static_cast<std::size_t>(index)];
  const RowRange range = rangeOf(aggregate.scope, place);
  if (range.to <= range.from) return aggregate.function == Function::Count ? Value(0) : Value();
  const QScopedValueRollback<bool> inside(inAggregate_, true);
  if (aggregate.function == Function::Min || aggregate.function == Function::Max) return bestOf(aggregate, range);
  if (!aggregate.summed) sumUp(aggregate);
  const auto last = static_cast<std::size_t>(range.to - 1), before = static_cast<std::size_t>(range.from) - 1;
  const int count = aggregate.counts[last] - (range.from > 0 ? aggregate.counts[before] : 0);
  if (aggregate.function == Function::Count) return count;
  if (count == 0) return {};
  const long double sum = aggregate.sums[last] - (range.from > 0 ? aggregate.sums[before] : 0);
  const auto rounded = toSixDecimals(static_cast<double>(sum));
  return aggregate.function == Function::Sum ? rounded : rounded / count;
}

/// Sums up to every row, once: each group, page and running sum is then a difference of two.
void Program::sumUp(Aggregate& aggregate) {
  const int count = rows_.rowCount();
  std::vector<long double> sums(static_cast<std::size_t>(count));
  std::vector<int> counts(static_cast<std::size_t>(count));
  long double sum = 0;
  int found = 0;
  for (int row = 0; row < count; ++row) {
    if (!isBlank(row)) {
      Place place;
      place.row = row;
      const Value value = aggregate.countsRows ? Value(1) : evaluate(aggregate.argument, place);
      if (!value.isNull()) {
        ++found;
        if (aggregate.function != jet::Function::Count) sum += numberIn(value);
      }
    }
    sums[static_cast<std::size_t>(row)] = sum;
    counts[static_cast<std::size_t>(row)] = found;
  }
  aggregate.sums = std::move(sums);
  aggregate.counts = std::move(counts);
  aggregate.summed = true;
  ++generation_;  // back at the row of before
}

Value Program::bestOf(Aggregate& aggregate, RowRange range) {
  // A range that goes on from the last one needs only its new rows: running figures.
  const bool goesOn = aggregate.bestRange.to > aggregate.bestRange.from && aggregate.bestRange.from == range.from &&
                      aggregate.bestRange.to <= range.to;
  Value best = goesOn ? aggregate.best : Value();
  for (int row = goesOn ? aggregate.bestRange.to : range.from; row < range.to; ++row) {
    if (isBlank(row)) continue;
    Place place;
    place.row = row;
    const Value value = evaluate(aggregate.argument, place);
    if (value.isNull()) continue;
    const bool smaller = !best.isNull() && compareValues(value, best) < 0;
    if (best.isNull() || smaller == (aggregate.function == jet::Function::Min)) best = value;
  }
  ++generation_;
  aggregate.bestRange = range;
  aggregate.best = best;
  return best;
}

}  // namespace jxc::report
