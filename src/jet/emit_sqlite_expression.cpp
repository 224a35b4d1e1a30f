#include "jet/binder.h"
#include "jet/emit_sqlite.h"

#include <cstdlib>

namespace jxc::jet {

namespace emit_expression_detail {

std::string_view signOf(Op op) {
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
bool isCompact(const Expr& e) {
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

}  // namespace emit_expression_detail

void SqliteEmitter::operand(const Expr& e) {
  if (emit_expression_detail::isCompact(e)) {
    expr(e);
    return;
  }
  put("(");
  expr(e);
  put(")");
}

void SqliteEmitter::expr(const Expr& e) {
  switch (e.kind) {
    case ExprKind::Number:
    case ExprKind::Boolean:
      put(e.name);
      break;
    case ExprKind::Text:
      literal(e.name);
      break;
    case ExprKind::Null:
      put("null");
      break;
    case ExprKind::Star:
      put("*");
      break;
    case ExprKind::Parameter:
      parameter(e.place);
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
      operand(*e.args[0]);
      break;
    case ExprKind::Binary:
      binary(e);
      break;
    case ExprKind::Function:
      function(e);
      break;
    case ExprKind::Aggregate:
      put(e.name);
      put("(");
      list(e.args);
      put(")");
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
      put("(");
      query(*e.query, Names::None);
      put(")");
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
      operand(*e.args[0]);
      put(e.negated ? " not like " : " like ");
      operand(*e.args[1]);
      break;
    case ExprKind::Convert:
      conversion(e);
      break;
  }
}

void SqliteEmitter::column(const Source& source, int index) {
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
        parameter(p);
        return;
      }
      put("(select ");
      quoted(found.native);
      put(" from ");
      quoted(source.table->name);
      put(" where rowid=");
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

void SqliteEmitter::drivenRow(const Source& source) {
  Parameter p;
  p.fromDrivingRow = true;
  for (const Source* s : statement_.select->sources) {
    if (s == &source) break;
    p.source += s->table ? 1 : static_cast<int>(s->columns.size());
  }
  parameter(p);
}

void SqliteEmitter::parameter(const Parameter& p) {
  put("?");
  step_.parameters.push_back(p);
}

void SqliteEmitter::binary(const Expr& e) {
  const Expr& left = *e.args[0];
  const Expr& right = *e.args[1];
  switch (e.op) {
    case Op::Plus:
    case Op::PlusByValue:
      call("jxc_plus", e);
      return;
    case Op::DivideWhole:
      call("jxc_idiv", e);
      return;
    case Op::Modulo:
      call("jxc_mod", e);
      return;
    case Op::Power:
      call("jxc_pow", e);
      return;
    case Op::Divide:
      divide(e);
      return;
    case Op::JoinEmpty:
      put("ifnull(");
      expr(left);
      put(",'') || ifnull(");
      expr(right);
      put(",'')");
      return;
    default:
      break;
  }
  // Chains of and, or, joined text read without brackets.
  const auto side = [&](const Expr& s) {
    if (s.kind == ExprKind::Binary && s.op == e.op && (e.op == Op::And || e.op == Op::Or || e.op == Op::Join)) {
      expr(s);
    } else {
      operand(s);
    }
  };
  side(left);
  put(emit_expression_detail::signOf(e.op));
  if (e.op == Op::And || e.op == Op::Or || e.op == Op::Join) {
    side(right);
  } else {
    operand(right);
  }
}

// Never a division of whole numbers. A divisor that is a number in the text needs no test for zero.
void SqliteEmitter::divide(const Expr& e) {
  const Expr& divisor = *e.args[1];
  if (divisor.kind == ExprKind::Number && std::strtod(std::string(divisor.name).c_str(), nullptr) != 0) {
    put("1.0 * ");
    operand(*e.args[0]);
    put(" / ");
    operand(divisor);
    return;
  }
  call("jxc_div", e);
}

void SqliteEmitter::conversion(const Expr& e) {
  const Expr& value = *e.args[0];
  switch (e.conversion) {
    case Conversion::None:
      expr(value);
      return;
    case Conversion::Decimal:
      put("jxc_dec(");
      break;
    case Conversion::ToNumber:
      put("jxc_num(");
      break;
    case Conversion::TryNumber:
      put("jxc_trynum(");
      break;
    case Conversion::ToText:
      put("jxc_text(");
      break;
    case Conversion::ToInteger:
      put("jxc_int(");
      break;
    case Conversion::ToBit:
      put("jxc_bit(");
      break;
    case Conversion::Fit:
      put("jxc_fit(");
      expr(value);
      put(",");
      put(std::to_string(e.width));
      put(",");
      literal(e.label);
      put(")");
      return;
  }
  expr(value);
  put(")");
}

void SqliteEmitter::function(const Expr& e) {
  switch (e.function) {
    case Function::Iif:
      put("case when ");
      expr(*e.args[0]);
      put(" then ");
      expr(*e.args[1]);
      put(" else ");
      expr(*e.args[2]);
      put(" end");
      return;
    case Function::IsNull:
      operand(*e.args[0]);
      put(" is null");
      return;
    case Function::Nz:
      put("ifnull(");
      expr(*e.args[0]);
      put(",");
      if (e.args.size() == 2) {
        expr(*e.args[1]);
      } else {
        put(e.type == Type::Text ? "''" : "0");
      }
      put(")");
      return;
    case Function::Left:
      put("substr(");
      expr(*e.args[0]);
      put(",1,");
      expr(*e.args[1]);
      put(")");
      return;
    case Function::Instr:
      call(e.args.size() == 2 ? "instr" : "jxc_instr", e);
      return;
    case Function::Mid:
      call("substr", e);
      return;
    case Function::Len:
      call("length", e);
      return;
    case Function::Right:
      call("jxc_right", e);
      return;
    case Function::Trim:
      call("trim", e);
      return;
    case Function::LTrim:
      call("ltrim", e);
      return;
    case Function::RTrim:
      call("rtrim", e);
      return;
    case Function::Upper:
      call("upper", e);
      return;
    case Function::Lower:
      call("lower", e);
      return;
    case Function::Replace:
      call("replace", e);
      return;
    case Function::Asc:
      call("unicode", e);
      return;
    case Function::Abs:
      call("abs", e);
      return;
    case Function::Sgn:
      call("sign", e);
      return;
    case Function::IsNumeric:
      call("jxc_isnumeric", e);
      return;
    case Function::Space:
      call("jxc_space", e);
      return;
    case Function::String:
      call("jxc_string", e);
      return;
    case Function::Chr:
      call("char", e);
      return;
    case Function::Format:
      call("jxc_format", e);
      return;
    case Function::Round:
      call("jxc_round", e);
      return;
    case Function::Int:
      call("jxc_floor", e);
      return;
    case Function::Fix:
      call("jxc_fix", e);
      return;
    case Function::Sqr:
      call("jxc_sqr", e);
      return;
    case Function::Val:
      call("jxc_val", e);
      return;
    case Function::Str:
      call("jxc_str", e);
      return;
    case Function::ToText:
    case Function::ToNumber:
      expr(*e.args[0]);
      return;  // the argument was converted already
    case Function::ToInteger:
      call("jxc_int", e);
      return;
    case Function::DateDiff:
      call("jxc_datediff", e);
      return;
    case Function::DateAdd:
      call("jxc_dateadd", e);
      return;
    case Function::DatePart:
      call("jxc_datepart", e);
      return;
    case Function::Date:
      put("jxc_date()");
      return;
    case Function::Time:
      put("jxc_time()");
      return;
    case Function::Now:
      put("jxc_now()");
      return;
    case Function::Year:
      put("jxc_datepart('yyyy',");
      break;
    case Function::Month:
      put("jxc_datepart('m',");
      break;
    case Function::Day:
      put("jxc_datepart('d',");
      break;
    case Function::Hour:
      put("jxc_datepart('h',");
      break;
    case Function::Minute:
      put("jxc_datepart('n',");
      break;
    case Function::Second:
      put("jxc_datepart('s',");
      break;
    case Function::Weekday:
      put("jxc_datepart('w',");
      break;
    default:
      throw TranslateError(TranslateError::Kind::Unsupported, std::string(e.name) + " cannot be said in this engine",
                           e.position);
  }
  list(e.args);
  put(")");
}

void SqliteEmitter::call(std::string_view name, const Expr& e) {
  put(name);
  put("(");
  list(e.args);
  put(")");
}

void SqliteEmitter::list(const std::vector<Expr*>& items, std::size_t from) {
  for (std::size_t i = from; i < items.size(); ++i) {
    if (i > from) put(",");
    expr(*items[i]);
  }
}

}  // namespace jxc::jet
