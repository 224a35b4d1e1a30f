// 语法分析: tokens to a syntax tree, by recursive descent. Knows no table and no engine.
#pragma once

#include "jet/ast.h"
#include "jet/lexer.h"

#include <string_view>
#include <vector>

namespace jxc::jet {

/// Parses one statement, with or without a semicolon at its end. Throws TranslateError(Syntax) at the token that does
/// not fit. The tree refers to `statement`, which must outlive it.
class Parser {
 public:
  Parser(std::string_view statement, Tree& tree);
  void parse();
  /// Parses an expression alone, to the end of the text. A call of a function that the dialect does not know stays as
  /// Function::None with its name, and an aggregate may take one argument more: reports have functions and ranges of
  /// their own.
  Expr* parseExpression();

 private:
  // parser.cpp: statements
  void insertStatement();
  void updateStatement();
  void deleteStatement();
  void createStatement();
  void createTable();
  void createIndex(bool unique);
  void alterStatement();
  void dropStatement();
  ColumnDefinition columnDefinition();
  void skipNull(ColumnDefinition& column);
  void primaryKey(std::vector<ColumnDefinition>& columns);

  // parser_query.cpp: selects
  Query* query();
  void queryPart(Query& query);
  Select* select();
  void selectList(Select& select);
  void intoClause(Select& select);
  void orderBy(Query& query);
  void fromList(Select& select);
  FromNode* joinedFrom();
  FromNode* fromLeaf();
  FromNode* derivedTable(int position);
  bool beginsQueryInBrackets(bool alone) const;

  // parser_expression.cpp
  Expr* expression();  // `or` level
  Expr* andLevel();
  Expr* notLevel();
  Expr* comparison();
  Expr* predicate(Expr* left);
  Expr* joinEmptyLevel();
  Expr* additive();
  Expr* modulo();
  Expr* wholeDivision();
  Expr* multiplicative();
  Expr* unary();
  Expr* power();
  Expr* primary();
  Expr* nameOrCall();
  Expr* call(const Token& name);
  Expr* textLiteral();
  Expr* dateLiteral();
  Expr* binary(Op op, Expr* left, Expr* right, int position);

  // tokens
  const Token& peek(int ahead = 0) const;
  bool at(Word word, int ahead = 0) const { return peek(ahead).kind == TokenKind::Word && peek(ahead).word == word; }
  bool at(char sign, int ahead = 0) const { return peek(ahead).kind == TokenKind::Sign && peek(ahead).sign == sign; }
  bool accept(Word word);
  bool accept(char sign);
  void expect(Word word, const char* what);
  void expect(char sign, const char* what);
  bool atName(int ahead = 0) const;
  const Token& name(const char* what);
  [[noreturn]] void fail(const std::string& message) const { failAt(message, peek()); }
  [[noreturn]] void failAt(const std::string& message, const Token& token) const;
  std::string_view unquoted(const Token& literal);

  /// Guards against brackets nested so deep that they would exhaust the stack.
  struct Depth;

  std::string_view text_;
  Tree& tree_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
  bool alone_ = false;  // an expression outside any statement
};

struct Parser::Depth {
  explicit Depth(Parser& p) : parser(p) {
    if (++parser.depth_ > 200) parser.fail("nested too deep");
  }
  ~Depth() { --parser.depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;
  Parser& parser;
};

}  // namespace jxc::jet
