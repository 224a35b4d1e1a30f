#include "jet/binder.h"
#include "jet/lexer.h"

#include <algorithm>

namespace jxc::jet {

Expr* Binder::bindExpr(Expr* e, Scope& scope) {
  if (e->bound) return e;
  e->bound = true;
  switch (e->kind) {
    case ExprKind::Number:
      e->type = e->name.find_first_of(".eE") == std::string_view::npos ? Type::Integer : Type::Number;
      e->exact = true;
      return e;
    case ExprKind::Text:
      e->type = Type::Text;
      e->joined = numberLiteral(*e) == nullptr;
      return e;
    case ExprKind::Boolean:
      e->type = Type::Bit;
      e->exact = true;
      return e;
    case ExprKind::Null:
    case ExprKind::Parameter:
    case ExprKind::Convert:
    case ExprKind::Star:
      return e;
    case ExprKind::Column:
      e->bound = false;
      return bindColumn(e, scope);
    case ExprKind::InQuery:
      return bindInQuery(e, scope);
    case ExprKind::Exists:
      bindQuery(*e->query, &scope);
      e->type = Type::Bit;
      return e;
    case ExprKind::Subquery:
      return bindSubquery(e, scope);
    case ExprKind::Aggregate:
      return bindAggregate(e, scope);
    default:
      break;
  }
  for (Expr*& argument : e->args) {
    argument = bindExpr(argument, scope);
    e->aggregated |= argument->aggregated;
  }
  switch (e->kind) {
    case ExprKind::Negate:
      e->args[0] = toNumber(e->args[0]);
      e->type = e->args[0]->type == Type::Integer ? Type::Integer : Type::Number;
      e->exact = e->args[0]->exact;
      e->decimal = isDecimal(*e->args[0]);
      return e;
    case ExprKind::Binary:
      return bindBinary(e, scope);
    case ExprKind::Function:
      return bindFunction(e, scope);
    case ExprKind::In:
      return bindIn(e, scope);
    case ExprKind::Between:
      reconcile(e->args[0], e->args[1]);
      reconcile(e->args[0], e->args[2]);
      break;
    case ExprKind::Like:
      e->args[0] = toText(e->args[0]);
      e->args[1] = toText(e->args[1]);
      break;
    default:
      break;  // Not, IsNull
  }
  e->type = Type::Bit;
  e->exact = true;
  return e;
}

Expr* Binder::bindCondition(Expr* e, Scope& scope, const char* clause) {
  e = bindExpr(e, scope);
  if (e->aggregated) {
    fail(TranslateError::Kind::Syntax, std::string("a sum over rows cannot stand in ") + clause, e->position);
  }
  return e;
}

void Binder::bindColumnTo(Expr* e, Source* source, int column) {
  const OutputColumn found = columnAt(*source, column);
  e->source = source;
  e->column = column;
  e->type = found.type;
  e->exact = found.exact;
  e->bound = true;
}

// The tables of the select first, then the names of its own list, then the selects around it.
Expr* Binder::bindColumn(Expr* e, Scope& scope) {
  for (Scope* s = &scope; s; s = s->outer) {
    Source* found = nullptr;
    int column = -1;
    bool ambiguous = false;
    for (Source* source : s->select->sources) {
      if (!e->qualifier.empty() && !sameName(source->alias, e->qualifier)) continue;
      const int index = findColumn(*source, e->name, &ambiguous);
      if (index < 0) {
        if (e->qualifier.empty()) continue;
        fail(TranslateError::Kind::UnknownName,
             "unknown column " + std::string(e->name) + " of " + std::string(e->qualifier), e->namePosition);
      }
      if (found || ambiguous) {
        fail(TranslateError::Kind::UnknownName, "column " + std::string(e->name) + " stands in more than one table",
             e->namePosition);
      }
      found = source;
      column = index;
    }
    if (found) {
      bindColumnTo(e, found, column);
      return e;
    }
    if (!e->qualifier.empty()) continue;
    if (Expr* alias = findAlias(*e, *s)) {
      if (alias->aggregated && s == &scope && scope.insideAggregate) {
        fail(TranslateError::Kind::Syntax, "a sum over the sum " + std::string(e->name), e->position);
      }
      return alias;
    }
  }
  if (e->qualifier.empty()) {
    fail(TranslateError::Kind::UnknownName, "unknown column " + std::string(e->name), e->namePosition);
  }
  fail(TranslateError::Kind::UnknownName, "unknown table " + std::string(e->qualifier), e->position);
}

Expr* Binder::findAlias(const Expr& e, Scope& scope) {
  for (std::size_t i = 0; i < scope.items.size(); ++i) {
    if (sameName(scope.select->items[i].alias, e.name)) return bindItem(scope, i);
  }
  return nullptr;
}

Expr* Binder::bindBinary(Expr* e, Scope&) {
  Expr*& left = e->args[0];
  Expr*& right = e->args[1];
  switch (e->op) {
    case Op::Plus:
      return bindPlus(e);
    case Op::JoinEmpty:
      left = toText(left);
      right = toText(right);
      e->type = Type::Text;
      e->joined = true;
      return e;
    case Op::And:
    case Op::Or:
      e->type = Type::Bit;
      e->exact = true;
      return e;
    case Op::Subtract:
    case Op::Multiply: {
      left = toNumber(left);
      right = toNumber(right);
      const bool whole = left->type != Type::Number && right->type != Type::Number && left->type != Type::Unknown &&
                         right->type != Type::Unknown;
      e->type = whole ? Type::Integer : Type::Number;
      e->exact = whole;
      const auto isSign = [](const Expr& s) { return s.kind == ExprKind::Number && (s.name == "-1" || s.name == "1"); };
      if (e->op == Op::Multiply && (isSign(*left) || isSign(*right))) e->exact = left->exact && right->exact;
      e->decimal = isDecimal(*left) && isDecimal(*right) &&
                   (e->op == Op::Subtract || left->type != Type::Number || right->type != Type::Number);
      return e;
    }
    case Op::Divide:
    case Op::Power:
      left = toNumber(left);
      right = toNumber(right);
      e->type = Type::Number;
      return e;
    case Op::DivideWhole:
    case Op::Modulo:
      left = toNumber(left);
      right = toNumber(right);
      e->type = Type::Integer;
      e->exact = true;
      return e;
    default:  // comparisons
      reconcile(left, right);
      e->type = Type::Bit;
      e->exact = true;
      return e;
  }
}

// `+`: text joins text, numbers add. A number beside text: added when the text may be a number, as in max(g_sn)+1,
// joined when the text surely is none, as in '单据号：'+id.
Expr* Binder::bindPlus(Expr* e) {
  Expr*& left = e->args[0];
  Expr*& right = e->args[1];
  const bool leftText = left->type == Type::Text, rightText = right->type == Type::Text;
  const auto free = [](const Expr& a) { return a.type == Type::Unknown; };
  const bool joins = (leftText && rightText) || (leftText && (free(*right) || left->joined)) ||
                     (rightText && (free(*left) || right->joined));
  if (joins) {
    left = toText(left);
    right = toText(right);
    e->op = Op::Join;
    e->type = Type::Text;
    e->joined = left->joined || right->joined;
    return e;
  }
  if (free(*left) && free(*right)) {
    e->op = Op::PlusByValue;
    return e;
  }
  left = toNumber(left);
  right = toNumber(right);
  e->op = Op::Add;
  e->exact = left->type != Type::Number && right->type != Type::Number && !free(*left) && !free(*right);
  e->type = e->exact ? Type::Integer : Type::Number;
  e->decimal = isDecimal(*left) && isDecimal(*right);
  return e;
}

Expr* Binder::bindFunction(Expr* e, Scope&) {
  if (e->function == Function::Iif) return bindIif(e);
  const FunctionEntry& entry = *findFunction(e->name);
  for (std::size_t i = 0; i < e->args.size() && !entry.arguments.empty(); ++i) {
    const char kind = entry.arguments[std::min(i, entry.arguments.size() - 1)];
    if (kind == 't') e->args[i] = toText(e->args[i]);
    if (kind == 'n') e->args[i] = toNumber(e->args[i]);
  }
  switch (entry.result) {
    case 't':
      e->type = Type::Text;
      break;
    case 'i':
      e->type = Type::Integer;
      break;
    case 'b':
      e->type = Type::Bit;
      break;
    default:
      e->type = Type::Number;
      break;
  }
  e->exact = entry.result == 'i' || entry.result == 'b';
  switch (e->function) {
    case Function::Round: {
      // Rounded to at most six places by a number in the text, a value is as good as stored.
      e->exact = e->args.size() == 1 ||
                 (e->args[1]->kind == ExprKind::Number && e->args[1]->name <= "6" && e->args[1]->name.size() == 1);
      break;
    }
    case Function::Abs:
      e->type = e->args[0]->type == Type::Integer ? Type::Integer : Type::Number;
      e->exact = e->args[0]->exact;
      e->decimal = isDecimal(*e->args[0]);
      break;
    case Function::Instr: {
      const std::size_t from = e->args.size() - 2;
      if (from == 1) e->args[0] = toNumber(e->args[0]);
      e->args[from] = toText(e->args[from]);
      e->args[from + 1] = toText(e->args[from + 1]);
      break;
    }
    case Function::Nz:
      e->type = e->args[0]->type;
      if (e->args.size() == 2) {
        if (e->type == Type::Unknown) e->type = e->args[1]->type;
        e->args[0] = commonType(e->args[0], e->type);
        e->args[1] = commonType(e->args[1], e->type);
      }
      e->exact = e->args[0]->exact && (e->args.size() == 1 || e->args[1]->exact);
      e->decimal = isDecimal(*e->args.front()) && isDecimal(*e->args.back());
      break;
    case Function::DateDiff:
    case Function::DateAdd:
    case Function::DatePart: {
      static constexpr std::string_view kUnits[] = {"yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s"};
      const Expr& unit = *e->args[0];
      bool known = unit.kind != ExprKind::Text;
      for (std::string_view name : kUnits)
        known |= sameName(unit.name, name);
      if (!known)
        fail(TranslateError::Kind::Unsupported, "unknown unit of time " + std::string(unit.name), unit.position);
      break;
    }
    default:
      break;
  }
  return e;
}

// Both branches yield one type: text when either is text.
Expr* Binder::bindIif(Expr* e) {
  Expr*& yes = e->args[1];
  Expr*& no = e->args[2];
  Type type = yes->type;
  if (type == Type::Unknown || no->type == Type::Text) type = no->type;
  if (isNumeric(type) && isNumeric(no->type) && no->type != type) {
    type = type == Type::Number || no->type == Type::Number ? Type::Number : Type::Integer;
  }
  yes = commonType(yes, type);
  no = commonType(no, type);
  e->type = type;
  const auto clean = [](const Expr& branch) { return branch.exact || branch.kind == ExprKind::Null; };
  e->exact = clean(*yes) && clean(*no);
  e->decimal = isDecimal(*yes) && isDecimal(*no);
  return e;
}

Expr* Binder::bindAggregate(Expr* e, Scope& scope) {
  if (!scope.aggregatesAllowed || scope.insideAggregate) {
    fail(TranslateError::Kind::Syntax, std::string(e->name) + " cannot stand here", e->position);
  }
  scope.insideAggregate = true;
  e->args[0] = bindExpr(e->args[0], scope);
  scope.insideAggregate = false;
  e->aggregated = true;
  scope.select->grouped = true;
  const Expr& argument = *e->args[0];
  switch (e->function) {
    case Function::Count:
      e->type = Type::Integer;
      e->exact = true;
      break;
    case Function::Sum:
    case Function::Avg:
      e->args[0] = toNumber(e->args[0]);
      e->type = e->function == Function::Sum && (argument.type == Type::Integer || argument.type == Type::Bit)
                    ? Type::Integer
                    : Type::Number;
      e->exact = e->type == Type::Integer;
      e->decimal = e->function == Function::Sum && isDecimal(*e->args[0]);
      break;
    default:  // min, max
      e->type = argument.type;
      e->exact = argument.exact;
      e->decimal = isDecimal(argument);
      break;
  }
  return e;
}

Expr* Binder::bindIn(Expr* e, Scope&) {
  for (std::size_t i = 1; i < e->args.size(); ++i)
    reconcile(e->args[0], e->args[i]);
  e->type = Type::Bit;
  e->exact = true;
  return e;
}

Expr* Binder::bindInQuery(Expr* e, Scope& scope) {
  e->args[0] = bindExpr(e->args[0], scope);
  e->aggregated = e->args[0]->aggregated;
  bindQuery(*e->query, &scope);
  if (e->query->columns.size() != 1) {
    fail(TranslateError::Kind::Syntax, "a select behind in yields one column", e->position);
  }
  for (Select* select : e->query->selects)
    reconcile(e->args[0], select->items[0].expr);
  e->type = Type::Bit;
  e->exact = true;
  return e;
}

Expr* Binder::bindSubquery(Expr* e, Scope& scope) {
  bindQuery(*e->query, &scope);
  if (e->query->columns.size() != 1) {
    fail(TranslateError::Kind::Syntax, "a select that stands for a value yields one column", e->position);
  }
  e->type = e->query->columns[0].type;
  e->exact = e->query->columns[0].exact;
  return e;
}

}  // namespace jxc::jet
