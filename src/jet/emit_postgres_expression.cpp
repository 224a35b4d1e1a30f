#include "jet/binder.h"
#include "jet/emit_postgres.h"

#include <utility>

namespace jxc::jet {

namespace emit_postgres_expression_detail {

bool isComparison(Op op) {
  return op >= Op::Equal && op <= Op::GreaterEqual;
}

std::string_view typeOfValue(const Parameter& p) {
  if (!p.typed && !p.fromDrivingRow) return "::text";
  switch (p.target) {
    case ColumnType::Counter:
    case ColumnType::Integer:
      return "::bigint";
    case ColumnType::Bit:
      return "::smallint";
    case ColumnType::Numeric:
    case ColumnType::Double:
      return "::numeric";
    default:
      return "::text";
  }
}

/// A column of whole numbers; flags are few values and have no index.
bool isStoredWhole(const Expr& e) {
  return e.kind == ExprKind::Column && e.type == Type::Integer;
}

/// A caller's value that may have decimals.
bool isDecimalValue(const Expr& e) {
  return e.kind == ExprKind::Parameter && typeOfValue(e.place) != "::bigint" && typeOfValue(e.place) != "::smallint";
}

/// The comparison seen from its other side.
Op turned(Op op) {
  switch (op) {
    case Op::Less:
      return Op::Greater;
    case Op::LessEqual:
      return Op::GreaterEqual;
    case Op::Greater:
      return Op::Less;
    case Op::GreaterEqual:
      return Op::LessEqual;
    default:
      return op;
  }
}

/// What yields truth and not a number.
bool isPredicate(const Expr& e) {
  switch (e.kind) {
    case ExprKind::Not:
    case ExprKind::In:
    case ExprKind::InQuery:
    case ExprKind::Exists:
    case ExprKind::Between:
    case ExprKind::IsNull:
    case ExprKind::Like:
      return true;
    case ExprKind::Binary:
      return isComparison(e.op) || e.op == Op::And || e.op == Op::Or;
    case ExprKind::Function:
      return e.function == Function::IsNull || e.function == Function::IsNumeric;
    default:
      return false;
  }
}

}  // namespace emit_postgres_expression_detail

void PostgresEmitter::wrapped(std::string_view before, const Expr& e, std::string_view after) {
  put(before);
  expr(e);
  put(after);
}

void PostgresEmitter::expr(const Expr& e) {
  if (emit_postgres_expression_detail::isPredicate(e)) {
    put("(");
    condition(e);
    put(")::int");
    return;
  }
  // A double that is stored as such takes part as the decimal that it shows.
  const bool isDouble = e.kind == ExprKind::Column && columnAt(*e.source, e.column).declared == ColumnType::Double;
  spelled(e);
  if (isDouble) put("::numeric");
}

void PostgresEmitter::condition(const Expr& e) {
  if (emit_postgres_expression_detail::isPredicate(e)) {
    if (e.kind == ExprKind::Function && e.function == Function::IsNumeric) {
      function(e);
    } else {
      spelled(e);
    }
    return;
  }
  if (e.kind == ExprKind::Null) {
    put("null::boolean");
    return;
  }
  put("(");
  if (e.type == Type::Text) {
    wrapped("jxc.val(", e, ")");
  } else {
    operand(e);
  }
  put("<>0)");
}

void PostgresEmitter::text(const Expr& e) {
  literal(e.name);
  put("::text");
}

void PostgresEmitter::parameter(const Parameter& p) {
  step_.parameters.push_back(p);
  put("$");
  put(std::to_string(step_.parameters.size()));
  put(emit_postgres_expression_detail::typeOfValue(p));
}

// A value that a name of the list repeats is the same value to the server: it groups by what it shows.
void PostgresEmitter::callerValue(const Expr& e) {
  const auto known = values_.find(&e);
  if (known != values_.end()) {
    put(known->second);
    return;
  }
  const std::size_t begin = step_.sql.size();
  parameter(e.place);
  values_.emplace(&e, step_.sql.substr(begin));
}

void PostgresEmitter::aggregate(const Expr& e) {
  call(e.name, e);
  if (e.function == Function::Sum && e.type == Type::Integer) put("::bigint");
}

// A select that stands for a value gives that of its first row.
void PostgresEmitter::subquery(const Expr& e) {
  const Query& q = *e.query;
  const Select& first = *q.selects.front();
  put("(");
  if (q.selects.size() > 1) put("select * from (");
  query(q, Names::None);
  if (q.selects.size() > 1) put(") as u");
  if (q.selects.size() > 1 || (!first.top && (!first.grouped || !first.groupBy.empty()))) put(" limit 1");
  put(")");
}

void PostgresEmitter::like(const Expr& e) {
  operand(*e.args[0]);
  put(" collate \"C\"");
  put(e.negated ? " not ilike " : " ilike ");
  operand(*e.args[1]);
  put(" escape ''");
}

// A value that nothing gave a type when it was read takes that of its partner. Only a stored text carries its order
// with it.
void PostgresEmitter::compared(const Expr& e, const Expr& other) {
  operand(e);
  if (e.kind == ExprKind::Parameter && !e.place.typed && isNumeric(other.type)) put("::numeric");
  const auto ordered = [](const Expr& s) { return s.type != Type::Text || s.kind == ExprKind::Column; };
  if (e.type == Type::Text && !ordered(e) && !ordered(other) && e.kind != ExprKind::Text) put(" collate \"C\"");
}

// A value may have decimals, and an index of whole numbers is no help against those: the server would read the whole
// table. So the column is compared with the nearest whole numbers, which says the same.
void PostgresEmitter::wholeColumn(const Expr& column, Op op, const Expr& value) {
  const auto bound = [&](const char* rounding, std::string_view sign) {
    operand(column);
    put(sign);
    put(rounding);
    // As far as whole numbers go; an empty value stays empty.
    put("(sign(");
    compared(value, column);
    put(")*least(abs(");
    compared(value, column);
    put("),9e18))::bigint");
  };
  switch (op) {
    case Op::Less:
      return bound("ceil", "<");
    case Op::LessEqual:
      return bound("floor", "<=");
    case Op::Greater:
      return bound("floor", ">");
    case Op::GreaterEqual:
      return bound("ceil", ">=");
    default:
      put("(");
      bound("ceil", "=");
      put(" and ");
      bound("floor", "=");
      put(")");
  }
}

void PostgresEmitter::binary(const Expr& e) {
  const Expr& left = *e.args[0];
  const Expr& right = *e.args[1];
  switch (e.op) {
    case Op::Plus:
    case Op::PlusByValue:
      call("jxc.plus", e);
      return;
    case Op::DivideWhole:
    case Op::Modulo:
      put(e.op == Op::Modulo ? "jxc.mod(" : "jxc.idiv(");
      number(left);
      put(",");
      number(right);
      put(")");
      return;
    case Op::Power:
      put("power(");
      number(left);
      put(",");
      number(right);
      put(")");
      return;
    case Op::Divide:  // never of whole numbers
      number(left);
      put(" / ");
      number(right);
      return;
    case Op::JoinEmpty:
      wrapped("coalesce(", left, ",'') || ");
      wrapped("coalesce(", right, ",'')");
      return;
    default:
      break;
  }
  if (!emit_postgres_expression_detail::isComparison(e.op)) {
    Emitter::binary(e);
    return;
  }
  using namespace emit_postgres_expression_detail;
  if (e.op != Op::NotEqual && isStoredWhole(left) && isDecimalValue(right)) {
    wholeColumn(left, e.op, right);
    return;
  }
  if (e.op != Op::NotEqual && isStoredWhole(right) && isDecimalValue(left)) {
    wholeColumn(right, turned(e.op), left);
    return;
  }
  compared(left, right);
  put(signOf(e.op));
  compared(right, left);
}

/// As `numeric`, whatever it is.
void PostgresEmitter::number(const Expr& e) {
  switch (e.type) {
    case Type::Text:
      wrapped("jxc.num(", e, ")");
      return;
    case Type::Unknown:
      wrapped("jxc.num((", e, ")::text)");
      return;
    case Type::Number:
      if (e.kind != ExprKind::Number) {
        operand(e);
        return;
      }
      break;
    default:
      break;
  }
  wrapped("(", e, ")::numeric");
}

/// A count of characters, a number of places: cut to a whole number.
void PostgresEmitter::wholeNumber(const Expr& e) {
  if (e.kind == ExprKind::Number && e.type == Type::Integer) {
    expr(e);
    return;
  }
  put("trunc(");
  number(e);
  put(")::int");
}

void PostgresEmitter::asText(const Expr& e) {
  switch (e.type) {
    case Type::Integer:
    case Type::Bit:
      wrapped("(", e, ")::text");
      return;
    case Type::Number:
      put("jxc.text(");
      number(e);
      put(")");
      return;
    default:
      wrapped("(", e, ")::text");
      return;
  }
}

void PostgresEmitter::toBit(const Expr& e) {
  if (e.kind == ExprKind::Null) {
    put("0");
  } else if (emit_postgres_expression_detail::isPredicate(e)) {
    put("coalesce((");
    condition(e);
    put(")::int,0)");
  } else if (e.kind == ExprKind::Parameter || e.type == Type::Bit) {
    wrapped("coalesce(", e, ",0)");
  } else if (e.type == Type::Text) {
    wrapped("jxc.bit(", e, ")");
  } else {
    put("jxc.bit(");
    number(e);
    put(")");
  }
}

void PostgresEmitter::conversion(const Expr& e) {
  const Expr& value = *e.args[0];
  switch (e.conversion) {
    case Conversion::None:
      expr(value);
      return;
    case Conversion::Decimal:
      put("round(");
      number(value);
      put(",6)");
      return;
    case Conversion::ToNumber:
      number(value);
      return;
    case Conversion::TryNumber:
      put("jxc.trynum(");
      asText(value);
      put(")");
      return;
    case Conversion::ToText:
      asText(value);
      return;
    case Conversion::ToInteger:
      put("round(");
      number(value);
      put(",6)::bigint");
      return;
    case Conversion::ToBit:
      toBit(value);
      return;
    case Conversion::Fit:
      fit("jxc.fit", e);
      return;
  }
}

void PostgresEmitter::function(const Expr& e) {
  const auto arg = [&](std::size_t i) -> const Expr& { return *e.args[i]; };
  switch (e.function) {
    case Function::Iif:
      choice(e);
      return;
    case Function::IsNull:
      operand(arg(0));
      put(" is null");
      return;
    case Function::IsNumeric:
      if (isNumeric(arg(0).type)) {
        wrapped("(", arg(0), ") is not null");
      } else {
        wrapped("jxc.is_number((", arg(0), ")::text)");
      }
      return;
    case Function::Nz:
      wrapped("coalesce(", arg(0), ",");
      if (e.args.size() == 2) {
        expr(arg(1));
      } else {
        put(e.type == Type::Text || e.type == Type::Unknown ? "''" : "0");
      }
      put(")");
      return;
    case Function::Left:
    case Function::Right:
      wrapped(e.function == Function::Left ? "left(" : "right(", arg(0), ",greatest(");
      wholeNumber(arg(1));
      put(",0))");
      return;
    case Function::Mid:
      wrapped("substr(", arg(0), ",");
      wholeNumber(arg(1));
      if (e.args.size() == 3) {
        put(",greatest(");
        wholeNumber(arg(2));
        put(",0)");
      }
      put(")");
      return;
    case Function::Instr:
      if (e.args.size() == 2) {
        call("strpos", e);
        return;
      }
      put("jxc.instr(");
      wholeNumber(arg(0));
      wrapped(",", arg(1), ",");
      wrapped("", arg(2), ")");
      return;
    case Function::Len:
      call("char_length", e);
      return;
    case Function::Trim:
      call("btrim", e);
      return;
    case Function::LTrim:
    case Function::RTrim:
      call(e.name, e);
      return;
    case Function::Upper:
      wrapped("upper(", arg(0), " collate \"C\")");
      return;
    case Function::Lower:
      wrapped("lower(", arg(0), " collate \"C\")");
      return;
    case Function::Replace:
      call("replace", e);
      return;
    case Function::Asc:
      wrapped("ascii(nullif(", arg(0), ",''))");
      return;
    case Function::Chr:
      put("chr(");
      wholeNumber(arg(0));
      put(")");
      return;
    case Function::Space:
      put("repeat(' ',");
      wholeNumber(arg(0));
      put(")");
      return;
    case Function::String:
      wrapped("repeat(left(", arg(1), ",1),");
      wholeNumber(arg(0));
      put(")");
      return;
    case Function::Format:
      put("jxc.format(");
      asText(arg(0));
      wrapped(",", arg(1), ")");
      return;
    case Function::Abs:
      put("abs(");
      number(arg(0));
      put(e.type == Type::Integer ? ")::bigint" : ")");
      return;
    case Function::Round:
      put("jxc.round(");
      number(arg(0));
      put(",");
      if (e.args.size() == 2) {
        wholeNumber(arg(1));
      } else {
        put("0");
      }
      put(")");
      return;
    case Function::Int:
    case Function::Fix:
      put(e.function == Function::Int ? "floor(round(" : "trunc(round(");
      number(arg(0));
      put(",6))::bigint");
      return;
    case Function::Sgn:
      put("sign(");
      number(arg(0));
      put(")::bigint");
      return;
    case Function::Sqr:
      put("sqrt(");
      number(arg(0));
      put(")");
      return;
    case Function::Val:
      call("jxc.val", e);
      return;
    case Function::Str:
      put("jxc.str(");
      number(arg(0));
      put(")");
      return;
    case Function::ToText:
      expr(arg(0));
      return;  // the argument was converted already
    case Function::ToNumber:
      number(arg(0));
      return;
    case Function::ToInteger:
      put("round(");
      number(arg(0));
      put(",6)::bigint");
      return;
    default:
      dateFunction(e);
  }
}

void PostgresEmitter::dateFunction(const Expr& e) {
  switch (e.function) {
    case Function::DateDiff:
      call("jxc.datediff", e);
      return;
    case Function::DateAdd:
      wrapped("jxc.dateadd(", *e.args[0], ",");
      number(*e.args[1]);
      wrapped(",", *e.args[2], ")");
      return;
    case Function::DatePart:
      call("jxc.datepart", e);
      return;
    case Function::Date:
      return moment(Moment::Date);
    case Function::Time:
      return moment(Moment::Time);
    case Function::Now:
      return moment(Moment::Stamp);
    default:
      break;
  }
  const std::string_view part = datePartOf(e.function);
  if (part.empty()) cannotSay(e);
  wrapped(std::string("jxc.datepart('").append(part) + "',", *e.args[0], ")");
}

// The day of the station, not of the server: one clock for statements and rules.
void PostgresEmitter::moment(Moment m) {
  Parameter p;
  p.moment = m;
  p.typed = true;
  parameter(p);
}

}  // namespace jxc::jet
