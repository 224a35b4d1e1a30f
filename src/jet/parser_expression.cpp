#include "jet/parser.h"

#include <cstdio>

namespace jxc::jet {

// From the loosest to the tightest: or, and, not, comparisons, &, + -, mod, \, * /, sign, ^.

constexpr int kLongestChain = 800;  // engines refuse trees that are some thousand deep

Expr* Parser::binary(Op op, Expr* left, Expr* right, int position) {
  Expr* e = tree_.expr(ExprKind::Binary, position);
  e->op = op;
  e->chain = left->chain + 1;
  if (e->chain > kLongestChain) {
    throw TranslateError(TranslateError::Kind::Unsupported, "too many conditions or operands in a row", position);
  }
  e->args = {left, right};
  return e;
}

Expr* Parser::expression() {
  const Depth depth(*this);
  Expr* left = andLevel();
  while (at(Word::Or)) {
    const int position = tokens_[at_++].position;
    left = binary(Op::Or, left, andLevel(), position);
  }
  return left;
}

Expr* Parser::andLevel() {
  Expr* left = notLevel();
  while (at(Word::And)) {
    const int position = tokens_[at_++].position;
    left = binary(Op::And, left, notLevel(), position);
  }
  return left;
}

Expr* Parser::notLevel() {
  if (!at(Word::Not)) return comparison();
  const Depth depth(*this);
  Expr* e = tree_.expr(ExprKind::Not, tokens_[at_++].position);
  e->args = {notLevel()};
  return e;
}

Expr* Parser::comparison() {
  Expr* left = joinEmptyLevel();
  for (;;) {
    const Token& token = peek();
    if (token.kind == TokenKind::Sign) {
      Op op;
      switch (token.sign) {
        case '=':
          op = Op::Equal;
          break;
        case sign::kNotEqual:
          op = Op::NotEqual;
          break;
        case '<':
          op = Op::Less;
          break;
        case '>':
          op = Op::Greater;
          break;
        case sign::kLessEqual:
          op = Op::LessEqual;
          break;
        case sign::kGreaterEqual:
          op = Op::GreaterEqual;
          break;
        default:
          return left;
      }
      const int position = tokens_[at_++].position;
      left = binary(op, left, joinEmptyLevel(), position);
    } else if (Expr* found = predicate(left)) {
      left = found;
    } else {
      return left;
    }
  }
}

// is [not] null, [not] in, [not] like, [not] between; null when none stands here
Expr* Parser::predicate(Expr* left) {
  const int position = peek().position;
  if (accept(Word::Is)) {
    Expr* e = tree_.expr(ExprKind::IsNull, position);
    e->negated = accept(Word::Not);
    expect(Word::Null, "null");
    e->args = {left};
    return e;
  }
  const bool negated = at(Word::Not) && (at(Word::In, 1) || at(Word::Like, 1) || at(Word::Between, 1));
  if (negated) ++at_;
  Expr* e = nullptr;
  if (accept(Word::Like)) {
    e = tree_.expr(ExprKind::Like, position);
    e->args = {left, joinEmptyLevel()};
  } else if (accept(Word::Between)) {
    e = tree_.expr(ExprKind::Between, position);
    Expr* low = joinEmptyLevel();
    expect(Word::And, "and");
    e->args = {left, low, joinEmptyLevel()};
  } else if (accept(Word::In)) {
    expect('(', "(");
    if (at(Word::Select) || (at('(') && beginsQueryInBrackets(true))) {
      e = tree_.expr(ExprKind::InQuery, position);
      e->args = {left};
      e->query = query();
    } else {
      e = tree_.expr(ExprKind::In, position);
      e->args = {left};
      do {
        e->args.push_back(expression());
      } while (accept(','));
    }
    expect(')', ")");
  }
  if (e) e->negated = negated;
  return e;
}

Expr* Parser::joinEmptyLevel() {
  Expr* left = additive();
  while (at('&')) {
    const int position = tokens_[at_++].position;
    left = binary(Op::JoinEmpty, left, additive(), position);
  }
  return left;
}

Expr* Parser::additive() {
  Expr* left = modulo();
  while (at('+') || at('-')) {
    const Token& token = tokens_[at_++];
    left = binary(token.sign == '+' ? Op::Plus : Op::Subtract, left, modulo(), token.position);
  }
  return left;
}

Expr* Parser::modulo() {
  Expr* left = wholeDivision();
  while (at(Word::Mod)) {
    const int position = tokens_[at_++].position;
    left = binary(Op::Modulo, left, wholeDivision(), position);
  }
  return left;
}

Expr* Parser::wholeDivision() {
  Expr* left = multiplicative();
  while (at('\\')) {
    const int position = tokens_[at_++].position;
    left = binary(Op::DivideWhole, left, multiplicative(), position);
  }
  return left;
}

Expr* Parser::multiplicative() {
  Expr* left = unary();
  while (at('*') || at('/')) {
    const Token& token = tokens_[at_++];
    left = binary(token.sign == '*' ? Op::Multiply : Op::Divide, left, unary(), token.position);
  }
  return left;
}

Expr* Parser::unary() {
  if (!at('-') && !at('+')) return power();
  const Depth depth(*this);
  const Token& token = tokens_[at_++];
  Expr* operand = unary();
  if (token.sign == '+') return operand;
  if (operand->kind == ExprKind::Number && operand->name.front() != '-') {
    operand->name = tree_.keep('-' + std::string(operand->name));
    operand->position = token.position;
    return operand;
  }
  Expr* e = tree_.expr(ExprKind::Negate, token.position);
  e->args = {operand};
  return e;
}

Expr* Parser::power() {
  Expr* left = primary();
  while (at('^')) {
    const int position = tokens_[at_++].position;
    left = binary(Op::Power, left, at('-') ? unary() : primary(), position);
  }
  return left;
}

Expr* Parser::primary() {
  const Token& token = peek();
  Expr* e = nullptr;
  switch (token.kind) {
    case TokenKind::Number:
      e = tree_.expr(ExprKind::Number, token.position);
      e->name = token.text;
      break;
    case TokenKind::Text:
      return textLiteral();
    case TokenKind::Date:
      return dateLiteral();
    case TokenKind::Parameter:
      e = tree_.expr(ExprKind::Parameter, token.position);
      e->place.source = tree_.statement.parameterCount++;
      break;
    case TokenKind::Sign: {
      if (token.sign != '(') fail("a value expected");
      const Depth depth(*this);
      ++at_;
      if (at(Word::Select) || (at('(') && beginsQueryInBrackets(true))) {
        e = tree_.expr(ExprKind::Subquery, token.position);
        e->query = query();
      } else {
        e = expression();
      }
      expect(')', ")");
      return e;
    }
    case TokenKind::Word:
      if (token.word == Word::Null) {
        e = tree_.expr(ExprKind::Null, token.position);
        break;
      }
      if (token.word == Word::True || token.word == Word::False) {
        e = tree_.expr(ExprKind::Boolean, token.position);
        e->name = token.word == Word::True ? "1" : "0";
        break;
      }
      if (token.word == Word::Exists) {
        ++at_;
        expect('(', "(");
        e = tree_.expr(ExprKind::Exists, token.position);
        e->query = query();
        expect(')', ")");
        return e;
      }
      return nameOrCall();
    case TokenKind::QuotedName:
      return nameOrCall();
    case TokenKind::End:
      fail("a value expected");
  }
  ++at_;
  return e;
}

// left( and right( are functions here although they are words of a join elsewhere.
Expr* Parser::nameOrCall() {
  const Token& token = peek();
  if (token.kind == TokenKind::Word && at('(', 1) &&
      (token.word == Word::None || token.word == Word::Left || token.word == Word::Right || token.word == Word::Asc)) {
    ++at_;
    return call(token);
  }
  if (!atName()) fail("a value expected");
  ++at_;
  Expr* e = tree_.expr(ExprKind::Column, token.position);
  e->name = token.text;
  if (accept('.')) {
    const Token& column = name("a column name");
    e->qualifier = token.text;
    e->name = column.text;
    e->namePosition = column.position;
  }
  return e;
}

Expr* Parser::call(const Token& token) {
  const Depth depth(*this);
  const FunctionEntry* entry = findFunction(token.text);
  if (!entry && !alone_) {
    throw TranslateError(TranslateError::Kind::UnknownName, "unknown function " + std::string(token.text),
                         token.position);
  }
  const Function function = entry ? entry->function : Function::None;
  Expr* e = tree_.expr(isAggregate(function) ? ExprKind::Aggregate : ExprKind::Function, token.position);
  e->function = function;
  e->name = entry ? entry->name : token.text;
  expect('(', "(");
  if (function == Function::Count && at('*') && (at(')', 1) || (alone_ && at(',', 1)))) {
    e->args.push_back(tree_.expr(ExprKind::Star, peek().position));
    ++at_;
    if (accept(',')) e->args.push_back(expression());
  } else if (!at(')')) {
    do {
      e->args.push_back(expression());
    } while (accept(','));
  }
  expect(')', ")");
  const int count = static_cast<int>(e->args.size());
  const int more = alone_ && isAggregate(function) ? 1 : 0;
  if (entry && (count < entry->least || count > entry->most + more)) {
    failAt(std::string(entry->name) + " takes another number of arguments", token);
  }
  return e;
}

Expr* Parser::textLiteral() {
  const Token& token = tokens_[at_++];
  Expr* e = tree_.expr(ExprKind::Text, token.position);
  e->name = unquoted(token);
  return e;
}

// #2021-05-03# or #2021-5-3 10:00:00#: dates are text here.
Expr* Parser::dateLiteral() {
  const Token& token = tokens_[at_++];
  const std::string text(token.text);
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  const int found =
      std::sscanf(text.c_str(), "%d%*1[-/]%d%*1[-/]%d %d:%d:%d", &year, &month, &day, &hour, &minute, &second);
  if (found < 3 || year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) {
    failAt("a date is written #yyyy-mm-dd#", token);
  }
  char buffer[80];
  if (found == 3) {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", year, month, day);
  } else {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour, minute, second);
  }
  Expr* e = tree_.expr(ExprKind::Text, token.position);
  e->name = tree_.keep(buffer);
  return e;
}

}  // namespace jxc::jet
