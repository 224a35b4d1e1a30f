#include "engine/number_text.h"
#include "jet/parser.h"
#include "platform/report/expression.h"

#include <algorithm>
#include <stdexcept>

namespace jxc::report {

/// From the tree of the dialect to nodes that know where their names are.
class ExpressionCompiler {
 public:
  explicit ExpressionCompiler(Program& program) : program_(program) {}

  Node run(const QString& text) {
    const std::string utf8 = text.toStdString();
    jet::Tree tree;
    try {
      return node(*jet::Parser(utf8, tree).parseExpression());
    } catch (const jet::TranslateError& error) {
      // The position is one of bytes; a hand that writes Chinese counts characters.
      const auto before = QString::fromUtf8(utf8.data(), std::clamp<qsizetype>(error.position, 0, text.size() * 3));
      throw ExpressionError{
          QStringLiteral("第%1个字符处看不懂（%2）").arg(before.size() + 1).arg(QString::fromUtf8(error.what()))};
    }
  }

 private:
  using Kind = Node::Kind;

  Node node(const jet::Expr& e) {
    Node result;
    result.op = e.op;
    result.negated = e.negated;
    switch (e.kind) {
      case jet::ExprKind::Number:
        result.constant = number(e.name);
        return result;
      case jet::ExprKind::Text:
        result.constant = text(e.name);
        return result;
      case jet::ExprKind::Null:
        return result;
      case jet::ExprKind::Boolean:
        result.constant = e.name == "1";
        return result;
      case jet::ExprKind::Column:
        return nameNode(e);
      case jet::ExprKind::Negate:
        return withArguments(result, Kind::Negate, e);
      case jet::ExprKind::Not:
        return withArguments(result, Kind::Not, e);
      case jet::ExprKind::Binary:
        return withArguments(result, Kind::Binary, e);
      case jet::ExprKind::In:
        return withArguments(result, Kind::In, e);
      case jet::ExprKind::Between:
        return withArguments(result, Kind::Between, e);
      case jet::ExprKind::IsNull:
        return withArguments(result, Kind::IsNull, e);
      case jet::ExprKind::Like:
        return withArguments(result, Kind::Like, e);
      case jet::ExprKind::Function:
        return functionNode(e);
      case jet::ExprKind::Aggregate:
        return aggregateNode(e);
      default:
        throw ExpressionError{QStringLiteral("报表的表达式不能含有查询或参数")};
    }
  }

  Node withArguments(Node& result, Kind kind, const jet::Expr& e) {
    result.kind = kind;
    for (const jet::Expr* argument : e.args)
      result.args.push_back(node(*argument));
    return std::move(result);
  }

  static QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  }

  static Value number(std::string_view digits) {
    if (const auto number = parseNumber(digits)) return *number;
    throw ExpressionError{QStringLiteral("数字“%1”太大").arg(text(digits).left(20))};
  }

  /// Variables go before the place on paper and that before fields; `field.x` and `var.x` say which is meant.
  Node nameNode(const jet::Expr& e) {
    Node result;
    const QString name = text(e.name);
    const std::string key = name.toLower().toStdString();
    const QString qualifier = text(e.qualifier).toLower();
    if (!qualifier.isEmpty() && qualifier != u"field" && qualifier != u"var") {
      throw ExpressionError{QStringLiteral("名称前只能写field或var，不能写“%1”").arg(qualifier)};
    }
    if (qualifier != u"field") {
      if (const auto found = program_.variableIndex_.find(key); found != program_.variableIndex_.end()) {
        result.kind = Kind::Variable;
        result.index = found->second;
        return result;
      }
    }
    static const std::map<std::string, int> places{
        {"page", Program::Page}, {"pages", Program::Pages}, {"line", Program::Line}, {"groupline", Program::GroupLine}};
    if (const auto found = places.find(key); qualifier.isEmpty() && found != places.end()) {
      result.kind = Kind::Place;
      result.index = found->second;
      return result;
    }
    if (qualifier != u"var") {
      result.index = program_.rows_.columnIndex(e.name);
      if (result.index >= 0) {
        result.kind = Kind::Column;
        return result;
      }
    }
    program_.unknownNames_.insert(name);
    return result;  // null
  }

  Node functionNode(const jet::Expr& e) {
    Node result;
    result.function = e.function;
    if (e.function != jet::Function::None) return withArguments(result, Kind::Function, e);
    const QString name = text(e.name);
    const auto& functions = program_.functions_;
    const auto found = std::find_if(functions.begin(), functions.end(), [&](const auto& function) {
      return function.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == functions.end()) throw ExpressionError{QStringLiteral("没有函数“%1”").arg(name)};
    const int count = static_cast<int>(e.args.size());
    if (count < found->least || count > found->most) {
      throw ExpressionError{QStringLiteral("函数“%1”的参数个数不对").arg(name)};
    }
    result.index = static_cast<int>(found - functions.begin());
    return withArguments(result, Kind::Custom, e);
  }

  Node aggregateNode(const jet::Expr& e) {
    if (inAggregate_) throw ExpressionError{QStringLiteral("合计里面不能再有合计")};
    auto aggregate = std::make_unique<Program::Aggregate>();
    aggregate->function = e.function;
    aggregate->scope = e.args.size() > 1 ? scope(*e.args[1]) : Program::Scope::Own;
    aggregate->countsRows = e.args[0]->kind == jet::ExprKind::Star;
    inAggregate_ = true;
    if (!aggregate->countsRows) aggregate->argument = node(*e.args[0]);
    inAggregate_ = false;
    Node result;
    result.kind = Kind::Aggregate;
    result.index = static_cast<int>(program_.aggregates_.size());
    program_.aggregates_.push_back(std::move(aggregate));
    return result;
  }

  static Program::Scope scope(const jet::Expr& e) {
    const QString name = e.kind == jet::ExprKind::Text ? text(e.name).toLower() : QString();
    if (name == u"report") return Program::Scope::Report;
    if (name == u"group") return Program::Scope::Group;
    if (name == u"page") return Program::Scope::Page;
    if (name == u"running") return Program::Scope::Running;
    throw ExpressionError{QStringLiteral("合计的范围是'report'、'group'、'page'或'running'")};
  }

  Program& program_;
  bool inAggregate_ = false;
};

Node Program::compile(const QString& text) {
  constexpr qsizetype longest = 4000;  // characters: nobody types more, and a template may come from anywhere
  if (text.size() > longest) throw ExpressionError{QStringLiteral("表达式太长（最多%1个字符）").arg(longest)};
  return ExpressionCompiler(*this).run(text);
}

const Node& Program::variableNode(int index) {
  Variable& variable = *variables_[static_cast<std::size_t>(index)];
  if (!variable.compiled) {
    variable.compiled = true;
    try {
      if (!variable.expression.trimmed().isEmpty()) variable.node = compile(variable.expression);
    } catch (const ExpressionError& error) {
      variable.fault = QStringLiteral("变量“%1”：%2").arg(variable.name, error.message);
    }
  }
  if (!variable.fault.isEmpty()) throw ExpressionError{variable.fault};
  return variable.node;
}

// Looks into variables too, each of them once.
bool Program::usesPlace(const Node& node, PlaceName name) {
  std::vector<const Node*> open{&node};
  std::set<int> seen;
  while (!open.empty()) {
    const Node& at = *open.back();
    open.pop_back();
    if (at.kind == Node::Kind::Place && at.index == name) return true;
    for (const Node& argument : at.args)
      open.push_back(&argument);
    if (at.kind != Node::Kind::Variable || !seen.insert(at.index).second) continue;
    try {
      open.push_back(&variableNode(at.index));
    } catch (const ExpressionError&) {  // told where it is evaluated
    }
  }
  return false;
}

}  // namespace jxc::report
