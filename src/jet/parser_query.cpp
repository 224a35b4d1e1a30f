#include "jet/parser.h"

namespace jxc::jet {

// [without a,b] select … [union [all] select …] [order by …]
Query* Parser::query() {
  const Depth depth(*this);
  Query* query = tree_.query();
  if (accept(Word::Without)) {
    do {
      query->without.push_back(name("a column name").text);
    } while (accept(','));
  }
  queryPart(*query);
  while (accept(Word::Union)) {
    const bool all = accept(Word::All);
    const std::size_t before = query->selects.size();
    query->unionAll.push_back(all);
    queryPart(*query);
    // A bracketed part that is a union itself may only join on if mixing cannot change which duplicates go.
    if (query->selects.size() > before + 1) {
      for (bool inner :
           std::vector<bool>(query->unionAll.begin() + static_cast<std::ptrdiff_t>(before), query->unionAll.end())) {
        if (inner != all) fail("a bracketed union of another kind cannot stand here");
      }
    }
  }
  orderBy(*query);
  return query;
}

// A select, or one in brackets.
void Parser::queryPart(Query& query) {
  if (!at('(')) {
    query.selects.push_back(select());
    return;
  }
  const Depth depth(*this);
  expect('(', "(");
  queryPart(query);
  while (accept(Word::Union)) {
    query.unionAll.push_back(accept(Word::All));
    queryPart(query);
  }
  expect(')', ")");
}

Select* Parser::select() {
  expect(Word::Select, "select");
  Select* select = tree_.select();
  // distinct and top stand in either order
  for (;;) {
    if (accept(Word::Distinct) || accept(Word::DistinctRow)) {
      select->distinct = true;
    } else if (accept(Word::All)) {
      select->distinct = false;
    } else if (!select->top && accept(Word::Top)) {
      const Token& count = peek();
      if (count.kind != TokenKind::Number && count.kind != TokenKind::Parameter) fail("a number of rows expected");
      if (count.kind == TokenKind::Number && count.text.find_first_not_of("0123456789") != std::string_view::npos) {
        fail("a whole number of rows expected");
      }
      select->top = primary();
    } else {
      break;
    }
  }
  selectList(*select);
  if (at(Word::Into)) intoClause(*select);
  if (accept(Word::From)) {
    fromList(*select);
    if (accept(Word::Where)) select->where = expression();
    if (accept(Word::Group)) {
      expect(Word::By, "by");
      do {
        select->groupBy.push_back(expression());
      } while (accept(','));
    }
    if (accept(Word::Having)) select->having = expression();
  }
  return select;
}

void Parser::selectList(Select& select) {
  do {
    SelectItem item;
    item.position = peek().position;
    if (accept('*')) {
      // all columns of all tables
    } else if (atName() && at('.', 1) && at('*', 2)) {
      item.starOf = peek().text;
      at_ += 3;
    } else {
      item.expr = expression();
      if (accept(Word::As)) {
        if (peek().kind == TokenKind::Text) {
          item.alias = unquoted(tokens_[at_++]);
        } else {
          item.alias = name("a name").text;
        }
      }
    }
    select.items.push_back(item);
  } while (accept(','));
}

// into 3 in 'C:\data.xls' 'EXCEL 8.0;'
void Parser::intoClause(Select& select) {
  expect(Word::Into, "into");
  const Token& target = peek();
  if (!atName() && target.kind != TokenKind::Number) fail("the name of a sheet expected");
  ++at_;
  select.intoName = target.text;
  select.intoPosition = target.position;
  if (!accept(Word::In)) {
    throw TranslateError(TranslateError::Kind::Unsupported, "select into works for sheets of a file only",
                         target.position);
  }
  if (peek().kind == TokenKind::Parameter) {
    select.intoFileParameter = tree_.statement.parameterCount++;
  } else if (peek().kind == TokenKind::Text) {
    select.intoFile = unquoted(peek());
  } else {
    fail("a file name expected");
  }
  ++at_;
  const Token& format = peek();
  if (format.kind != TokenKind::Text) fail("the kind of file expected");
  if (format.text.size() < 5 || !sameName(format.text.substr(0, 5), "EXCEL")) {
    throw TranslateError(TranslateError::Kind::Unsupported, "rows go to EXCEL files only", format.position);
  }
  ++at_;
}

void Parser::orderBy(Query& query) {
  if (!accept(Word::Order)) return;
  expect(Word::By, "by");
  do {
    OrderItem item;
    item.expr = expression();
    item.descending = accept(Word::Desc);
    if (!item.descending) accept(Word::Asc);
    query.orderBy.push_back(item);
  } while (accept(','));
}

void Parser::fromList(Select& select) {
  do {
    select.from.push_back(joinedFrom());
  } while (accept(','));
}

// leaf [inner|left|right join leaf on …]…
FromNode* Parser::joinedFrom() {
  const Depth depth(*this);
  FromNode* left = fromLeaf();
  for (;;) {
    JoinKind kind = JoinKind::Inner;
    if (at(Word::Left) || at(Word::Right)) {
      kind = at(Word::Left) ? JoinKind::Left : JoinKind::Right;
      ++at_;
      accept(Word::Outer);
    } else if (!accept(Word::Inner) && !at(Word::Join)) {
      return left;
    }
    expect(Word::Join, "join");
    FromNode* join = tree_.from();
    join->kind = kind;
    join->left = left;
    join->right = fromLeaf();
    expect(Word::On, "on");
    join->on = expression();
    left = join;
  }
}

FromNode* Parser::fromLeaf() {
  const Token& first = peek();
  if (at('(')) {
    if (beginsQueryInBrackets(false)) return derivedTable(first.position);
    const Depth depth(*this);
    expect('(', "(");
    FromNode* inner = joinedFrom();
    while (accept(',')) {
      FromNode* join = tree_.from();
      join->kind = JoinKind::Cross;
      join->left = inner;
      join->right = joinedFrom();
      inner = join;
    }
    expect(')', ")");
    return inner;
  }
  FromNode* node = tree_.from();
  node->source = tree_.source();
  const Token& table = name("a table name");
  node->source->name = node->source->alias = table.text;
  node->source->position = table.position;
  if (accept(Word::As)) {
    node->source->alias = name("a name").text;
  } else if (atName()) {
    node->source->alias = tokens_[at_++].text;
  }
  return node;
}

// (select …) name
FromNode* Parser::derivedTable(int position) {
  FromNode* node = tree_.from();
  node->source = tree_.source();
  node->source->position = position;
  expect('(', "(");
  node->source->derived = query();
  expect(')', ")");
  accept(Word::As);
  node->source->alias = name("a name for the select in brackets").text;
  return node;
}

// Whether the bracket here holds a query rather than joined tables: "(select …) a", "((select …) union (select …)) a",
// but not "((select …) a left join …)". `alone`: nothing may follow the query inside the bracket, as in "((select
// …)+1)".
bool Parser::beginsQueryInBrackets(bool alone) const {
  int depth = 0;
  while (at('(', depth))
    ++depth;
  if (!at(Word::Select, depth) && !at(Word::Without, depth)) return false;
  if (depth == 1 && !alone) return true;
  int open = 1;
  int ahead = depth;
  while (open > 0) {
    const Token& token = peek(ahead++);
    if (token.kind == TokenKind::End) return true;  // the error is found where the bracket is missed
    if (token.kind != TokenKind::Sign) continue;
    if (token.sign == '(') ++open;
    if (token.sign == ')') --open;
  }
  return at(Word::Union, ahead) || at(')', ahead);
}

}  // namespace jxc::jet
