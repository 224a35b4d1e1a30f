#include "jet/binder.h"
#include "jet/emit_sqlite.h"

#include <cstdlib>

namespace jxc::jet {

void SqliteEmitter::parameter(const Parameter& p) {
  put("?");
  step_.parameters.push_back(p);
}

void SqliteEmitter::aggregate(const Expr& e) {
  call(e.name, e);
}

void SqliteEmitter::subquery(const Expr& e) {
  put("(");
  query(*e.query, Names::None);
  put(")");
}

void SqliteEmitter::like(const Expr& e) {
  operand(*e.args[0]);
  put(e.negated ? " not like " : " like ");
  operand(*e.args[1]);
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
      Emitter::binary(e);
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
      fit("jxc_fit", e);
      return;
  }
  expr(value);
  put(")");
}

void SqliteEmitter::function(const Expr& e) {
  switch (e.function) {
    case Function::Iif:
      choice(e);
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
    default:
      break;
  }
  const std::string_view part = datePartOf(e.function);
  if (part.empty()) cannotSay(e);
  put("jxc_datepart('");
  put(part);
  put("',");
  list(e.args);
  put(")");
}

}  // namespace jxc::jet
