#include "jet/binder.h"
#include "jet/lexer.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace jxc::jet {

namespace conversion_detail {

// "12", "-0.5", "1e3"; blanks around are no matter.
bool readsAsNumber(std::string_view text, double& number) {
  while (!text.empty() && text.front() == ' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

int decimalsOf(std::string_view number) {
  if (number.find_first_of("eE") != std::string_view::npos) return 99;
  const std::size_t point = number.find('.');
  if (point == std::string_view::npos) return 0;
  const std::size_t last = number.find_last_not_of('0');
  return static_cast<int>(last == std::string_view::npos || last < point ? 0 : last - point);
}

bool isFree(const Expr& e) {
  return e.kind == ExprKind::Parameter || e.kind == ExprKind::Null;
}

}  // namespace conversion_detail

Type typeOf(ColumnType type) {
  switch (type) {
    case ColumnType::Counter:
    case ColumnType::Integer:
      return Type::Integer;
    case ColumnType::Bit:
      return Type::Bit;
    case ColumnType::Numeric:
    case ColumnType::Double:
      return Type::Number;
    case ColumnType::Text:
    case ColumnType::LongText:
      return Type::Text;
  }
  return Type::Unknown;
}

ColumnType columnTypeOf(const Expr& e) {
  if (e.kind == ExprKind::Column && e.source) return columnAt(*e.source, e.column).declared;
  switch (e.type) {
    case Type::Integer:
      return ColumnType::Integer;
    case Type::Bit:
      return ColumnType::Bit;
    case Type::Number:
      return ColumnType::Numeric;
    default:
      return ColumnType::Text;
  }
}

int characters(std::string_view utf8) {
  int count = 0;
  for (char c : utf8)
    count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

int widthOf(const Expr& e) {
  switch (e.kind) {
    case ExprKind::Text:
      return std::max(1, characters(e.name));
    case ExprKind::Column:
      return e.source ? columnAt(*e.source, e.column).width : 0;
    case ExprKind::Convert:
      return e.conversion == Conversion::Fit ? e.width : 0;
    case ExprKind::Aggregate:
      return e.type == Type::Text ? widthOf(*e.args[0]) : 0;
    case ExprKind::Function:
      if ((e.function == Function::Left || e.function == Function::Right) && e.args[1]->kind == ExprKind::Number) {
        int width = 0;
        std::from_chars(e.args[1]->name.data(), e.args[1]->name.data() + e.args[1]->name.size(), width);
        return std::max(0, width);
      }
      if (e.function == Function::Iif) {
        const int yes = widthOf(*e.args[1]), no = widthOf(*e.args[2]);
        return yes == 0 || no == 0 ? 0 : std::max(yes, no);
      }
      return 0;
    default:
      return 0;
  }
}

bool isLiteral(const Expr& e) {
  return e.kind == ExprKind::Number || e.kind == ExprKind::Text || e.kind == ExprKind::Boolean;
}

bool isDecimal(const Expr& e) {
  if (e.kind == ExprKind::Number) return conversion_detail::decimalsOf(e.name) <= 6;
  return e.exact || e.decimal || e.kind == ExprKind::Null;
}

bool sameExpression(const Expr& a, const Expr& b) {
  if (&a == &b) return true;
  if (a.kind != b.kind || a.args.size() != b.args.size()) return false;
  switch (a.kind) {
    case ExprKind::Column:
      return a.source == b.source && a.column == b.column;
    case ExprKind::Number:
    case ExprKind::Text:
    case ExprKind::Boolean:
      return a.name == b.name;
    case ExprKind::Null:
    case ExprKind::Star:
      return true;
    case ExprKind::Parameter:
    case ExprKind::InQuery:
    case ExprKind::Exists:
    case ExprKind::Subquery:
      return false;
    default:
      break;
  }
  if (a.op != b.op || a.function != b.function || a.conversion != b.conversion || a.negated != b.negated) return false;
  for (std::size_t i = 0; i < a.args.size(); ++i) {
    if (!sameExpression(*a.args[i], *b.args[i])) return false;
  }
  return true;
}

Expr* Binder::convert(Expr* e, Conversion conversion) {
  Expr* c = tree_.expr(ExprKind::Convert, e->position);
  c->conversion = conversion;
  c->args = {e};
  c->bound = true;
  c->aggregated = e->aggregated;
  c->joined = e->joined;
  c->exact =
      conversion == Conversion::Decimal || conversion == Conversion::ToInteger || conversion == Conversion::ToBit;
  switch (conversion) {
    case Conversion::ToText:
    case Conversion::Fit:
      c->type = Type::Text;
      break;
    case Conversion::ToInteger:
      c->type = Type::Integer;
      break;
    case Conversion::ToBit:
      c->type = Type::Bit;
      break;
    default:
      c->type = Type::Number;
      break;
  }
  return c;
}

void Binder::giveType(Expr* parameter, ColumnType type) {
  parameter->place.target = type;
  parameter->place.typed = true;
  parameter->type = typeOf(type);
  parameter->exact = type != ColumnType::Double && parameter->type != Type::Text;
}

// The number that a text literal reads as, or null.
Expr* Binder::numberLiteral(const Expr& text) {
  double number = 0;
  if (!conversion_detail::readsAsNumber(text.name, number)) return nullptr;
  Expr* e = tree_.expr(ExprKind::Number, text.position);
  std::string_view name = text.name;
  name.remove_prefix(name.find_first_not_of(" +"));
  e->name = name.substr(0, name.find_last_not_of(' ') + 1);
  e->type = e->name.find_first_of(".eE") == std::string_view::npos ? Type::Integer : Type::Number;
  e->exact = e->bound = true;
  return e;
}

Expr* Binder::bitLiteral(bool value, int position) {
  Expr* e = tree_.expr(ExprKind::Boolean, position);
  e->name = value ? "1" : "0";
  e->type = Type::Bit;
  e->exact = e->bound = true;
  return e;
}

Expr* Binder::textOfLiteral(const Expr& number) {
  Expr* e = tree_.expr(ExprKind::Text, number.position);
  e->type = Type::Text;
  e->bound = true;
  e->name = number.name;
  if (number.name.find_first_of(".eE") != std::string_view::npos) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", std::strtod(std::string(number.name).c_str(), nullptr));
    e->name = tree_.keep(buffer);
  }
  return e;
}

Expr* Binder::toNumber(Expr* e) {
  if (e->kind == ExprKind::Parameter && !e->place.typed) {
    giveType(e, ColumnType::Double);  // not rounded: it may be a rate
    return e;
  }
  if (e->kind == ExprKind::Text) {
    if (Expr* number = numberLiteral(*e)) return number;
    fail(TranslateError::Kind::TypeMismatch, "a number must stand here, not '" + std::string(e->name) + "'",
         e->position);
  }
  if (isNumeric(e->type) || e->kind == ExprKind::Null || e->kind == ExprKind::Star) return e;
  return convert(e, Conversion::ToNumber);
}

Expr* Binder::toText(Expr* e) {
  if (e->kind == ExprKind::Parameter && !e->place.typed) {
    giveType(e, ColumnType::Text);
    return e;
  }
  if (e->type == Type::Text || e->kind == ExprKind::Null) return e;
  if (e->kind == ExprKind::Number || e->kind == ExprKind::Boolean) return textOfLiteral(*e);
  return convert(e, Conversion::ToText);
}

// Numbers are compared as decimals of six places: what carries noise is rounded first.
Expr* Binder::comparable(Expr* e) {
  if (e->type != Type::Number || e->exact || isLiteral(*e)) return e;
  if (e->kind == ExprKind::Parameter) return e;
  return convert(e, Conversion::Decimal);
}

Expr* Binder::commonType(Expr* e, Type type) {
  if (e->type == type || e->kind == ExprKind::Null) return e;
  if (type == Type::Text) return toText(e);
  if (isNumeric(type)) return toNumber(e);
  return e;
}

// A literal takes the type of what it is compared with, so that a column stays as it is and its index serves.
Expr* Binder::constantFor(Expr* literal, const Expr& partner) {
  if (partner.type == Type::Text) {
    return literal->kind == ExprKind::Text ? literal : textOfLiteral(*literal);
  }
  if (partner.type != Type::Bit && literal->kind != ExprKind::Text) return literal;
  if (literal->kind == ExprKind::Text && partner.type == Type::Bit) {
    if (sameName(literal->name, "true") || sameName(literal->name, "false")) {
      return bitLiteral(sameName(literal->name, "true"), literal->position);
    }
  }
  Expr* number = literal->kind == ExprKind::Text ? toNumber(literal) : literal;
  if (partner.type != Type::Bit) return number;
  double value = 0;
  conversion_detail::readsAsNumber(number->name, value);
  return bitLiteral(value != 0, literal->position);  // true is 1 here, whoever writes -1 means it too
}

// Makes two operands of a comparison comparable.
void Binder::reconcile(Expr*& left, Expr*& right) {
  using conversion_detail::isFree;
  if (isFree(*left) || isFree(*right)) {
    Expr* const constant = isFree(*right) ? right : left;
    Expr*& partner = isFree(*right) ? left : right;
    if (constant->kind == ExprKind::Parameter && !constant->place.typed && partner->type != Type::Unknown) {
      switch (partner->type) {
        case Type::Text:
          giveType(constant, ColumnType::Text);
          break;
        case Type::Bit:
          giveType(constant, ColumnType::Bit);
          break;
        default:
          giveType(constant, ColumnType::Numeric);
          break;
      }
    }
    partner = comparable(partner);
    return;
  }
  if (isLiteral(*right) && !isLiteral(*left)) {
    right = constantFor(right, *left);
  } else if (isLiteral(*left) && !isLiteral(*right)) {
    left = constantFor(left, *right);
  } else if (left->type == Type::Text && isNumeric(right->type)) {
    left = isLiteral(*left) ? toNumber(left) : convert(left, Conversion::TryNumber);
  } else if (right->type == Type::Text && isNumeric(left->type)) {
    right = isLiteral(*right) ? toNumber(right) : convert(right, Conversion::TryNumber);
  }
  left = comparable(left);
  right = comparable(right);
}

// Makes a value fit for the column that it is written into.
Expr* Binder::assign(Expr* value, const Column& column, const Table& table) {
  using conversion_detail::decimalsOf;
  const Type target = typeOf(column.type);
  if (value->kind == ExprKind::Parameter && !value->place.typed) {
    giveType(value, column.type);
    value->place.width = column.type == ColumnType::Text ? column.width : 0;
    value->place.label = table.name + '.' + column.name;
    return column.type == ColumnType::Bit ? convert(value, Conversion::ToBit) : value;
  }
  if (value->kind == ExprKind::Null) return column.type == ColumnType::Bit ? bitLiteral(false, value->position) : value;
  if (isLiteral(*value)) {
    Expr partner;
    partner.type = target;
    value = constantFor(value, partner);
  }
  switch (column.type) {
    case ColumnType::Text:
    case ColumnType::LongText: {
      value = toText(value);
      if (column.width == 0) return value;
      const int width = widthOf(*value);
      if (width > 0 && width <= column.width) return value;
      value = convert(value, Conversion::Fit);
      value->width = column.width;
      value->label = tree_.keep(table.name + '.' + column.name);
      return value;
    }
    // A bit is never null: what an outer join leaves empty is no.
    case ColumnType::Bit:
      return value->kind == ExprKind::Boolean ? value : convert(value, Conversion::ToBit);
    case ColumnType::Counter:
    case ColumnType::Integer:
      if (value->kind == ExprKind::Number && decimalsOf(value->name) == 0) return value;
      return value->type == Type::Integer || value->type == Type::Bit ? value : convert(value, Conversion::ToInteger);
    case ColumnType::Numeric:
      value = toNumber(value);
      if (value->kind == ExprKind::Number && decimalsOf(value->name) <= 6) return value;
      return value->exact && value->kind != ExprKind::Number ? value : convert(value, Conversion::Decimal);
    case ColumnType::Double:
      return toNumber(value);
  }
  return value;
}

}  // namespace jxc::jet
