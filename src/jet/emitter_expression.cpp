#include "jet/binder.h"
#include "jet/emitter.h"

namespace jxc::jet {

std::string_view Emitter::signOf(Op op) {
  switch (op) {
    case Op::Add:
      return " + ";
    case Op::Join:
      return " || ";
    case Op::Subtract:
      return " - ";
    case Op::Multiply:
      return " * ";
    case Op::Equal:
      return "=";
    case Op::NotEqual:
      return "<>";
    case Op::Less:
      return "<";
    case Op::LessEqual:
      return "<=";
    case Op::Greater:
      return ">";
    case Op::GreaterEqual:
      return ">=";
    case Op::And:
      return " and ";
    case Op::Or:
      return " or ";
    default:
      return {};
  }
}

// What may stand as an operand without brackets.
bool Emitter::isCompact(const Expr& e) {
  switch (e.kind) {
    case ExprKind::Number:
      return e.name.front() != '-';
    case ExprKind::Text:
    case ExprKind::Null:
    case ExprKind::Boolean:
    case ExprKind::Parameter:
    case ExprKind::Column:
    case ExprKind::Function:
    case ExprKind::Aggregate:
    case ExprKind::Subquery:
    case ExprKind::Exists:
    case ExprKind::Convert:
      return e.function != Function::IsNull;
    default:
      return false;
  }
}

void Emitter::operand(const Expr& e) {
  if (isCompact(e)) {
    expr(e);
    return;
  }
  put("(");
  expr(e);
  put(")");
}

void Emitter::conditionOperand(const Expr& e) {
  if (isCompact(e)) {
    condition(e);
    return;
  }
  put("(");
  condition(e);
  put(")");
}

void Emitter::spelled(const Expr& e) {
  switch (e.kind) {
    case ExprKind::Number:
    case ExprKind::Boolean:
      put(e.name);
      break;
    case ExprKind::Text:
      text(e);
      break;
    case ExprKind::Null:
      put("null");
      break;
    case ExprKind::Star:
      put("*");
      break;
    case ExprKind::Parameter:
      callerValue(e);
      break;
    case ExprKind::Column:
      column(*e.source, e.column);
      break;
    case ExprKind::Negate:
      put("- ");  // two signs in a row would begin a comment
      operand(*e.args[0]);
      break;
    case ExprKind::Not:
      put("not ");
      conditionOperand(*e.args[0]);
      break;
    case ExprKind::Binary:
      binary(e);
      break;
    case ExprKind::Function:
      function(e);
      break;
    case ExprKind::Aggregate:
      aggregate(e);
      break;
    case ExprKind::In:
      operand(*e.args[0]);
      put(e.negated ? " not in (" : " in (");
      list(e.args, 1);
      put(")");
      break;
    case ExprKind::InQuery:
      operand(*e.args[0]);
      put(e.negated ? " not in (" : " in (");
      query(*e.query, Names::None);
      put(")");
      break;
    case ExprKind::Exists:
      put("exists (");
      query(*e.query, Names::None);
      put(")");
      break;
    case ExprKind::Subquery:
      subquery(e);
      break;
    case ExprKind::Between:
      operand(*e.args[0]);
      put(e.negated ? " not between " : " between ");
      operand(*e.args[1]);
      put(" and ");
      operand(*e.args[2]);
      break;
    case ExprKind::IsNull:
      operand(*e.args[0]);
      put(e.negated ? " is not null" : " is null");
      break;
    case ExprKind::Like:
      like(e);
      break;
    case ExprKind::Convert:
      conversion(e);
      break;
  }
}

void Emitter::column(const Source& source, int index) {
  const OutputColumn found = columnAt(source, index);
  if (!driven_ || &source == updated_) {
    quoted(source.alias);
    put(".");
    quoted(found.native);
    return;
  }
  // Is it a source of the update itself, or of a select inside one of its values?
  int field = 0;
  for (const Source* s : statement_.select->sources) {
    if (s == &source) {
      if (!source.table) {
        Parameter p;
        p.source = field + index;
        p.fromDrivingRow = true;
        p.target = found.type == Type::Number ? ColumnType::Double : found.declared;
        parameter(p);
        return;
      }
      put("(select ");
      quoted(found.native);
      put(" from ");
      quoted(source.table->name);
      put(" where ");
      put(rowKey(source));
      put("=");
      drivenRow(source);
      put(")");
      return;
    }
    field += s->table ? 1 : static_cast<int>(s->columns.size());
  }
  quoted(source.alias);
  put(".");
  quoted(found.native);
}

void Emitter::drivenRow(const Source& source) {
  Parameter p;
  p.fromDrivingRow = true;
  p.target = ColumnType::Integer;
  for (const Source* s : statement_.select->sources) {
    if (s == &source) break;
    p.source += s->table ? 1 : static_cast<int>(s->columns.size());
  }
  parameter(p);
}

void Emitter::binary(const Expr& e) {
  if (e.op == Op::And || e.op == Op::Or || e.op == Op::Join) {
    chained(e, signOf(e.op));
    return;
  }
  operand(*e.args[0]);
  put(signOf(e.op));
  operand(*e.args[1]);
}

// Chains of and, or, joined text read without brackets.
void Emitter::chained(const Expr& e, std::string_view sign) {
  for (std::size_t i = 0; i < 2; ++i) {
    const Expr& side = *e.args[i];
    if (i > 0) put(sign);
    if (side.kind == ExprKind::Binary && side.op == e.op) {
      chained(side, sign);
    } else if (e.op == Op::Join) {
      operand(side);
    } else {
      conditionOperand(side);
    }
  }
}

void Emitter::choice(const Expr& e) {
  put("case when ");
  condition(*e.args[0]);
  put(" then ");
  expr(*e.args[1]);
  put(" else ");
  expr(*e.args[2]);
  put(" end");
}

void Emitter::cannotSay(const Expr& e) {
  throw TranslateError(TranslateError::Kind::Unsupported, std::string(e.name) + " cannot be said in this engine",
                       e.position);
}

void Emitter::call(std::string_view name, const Expr& e) {
  put(name);
  put("(");
  list(e.args);
  put(")");
}

void Emitter::list(const std::vector<Expr*>& items, std::size_t from) {
  for (std::size_t i = from; i < items.size(); ++i) {
    if (i > from) put(",");
    expr(*items[i]);
  }
}

/// A text that must not be longer than its column.
void Emitter::fit(std::string_view name, const Expr& e) {
  put(name);
  put("(");
  expr(*e.args[0]);
  put(",");
  put(std::to_string(e.width));
  put(",");
  literal(e.label);
  put(")");
}

/// The part of a date that a function gives, by its letters; empty for other functions.
std::string_view Emitter::datePartOf(Function function) {
  switch (function) {
    case Function::Year:
      return "yyyy";
    case Function::Month:
      return "m";
    case Function::Day:
      return "d";
    case Function::Hour:
      return "h";
    case Function::Minute:
      return "n";
    case Function::Second:
      return "s";
    case Function::Weekday:
      return "w";
    default:
      return {};
  }
}

}  // namespace jxc::jet
