#include "jet/binder.h"
#include "jet/lexer.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace jxc::jet {

int columnCount(const Source& source) {
  return static_cast<int>(source.table ? source.table->columns.size() : source.columns.size());
}

OutputColumn columnAt(const Source& source, int column) {
  const auto index = static_cast<std::size_t>(column);
  if (!source.table) return source.columns[index];
  const Column& c = source.table->columns[index];
  // Stored numbers were rounded when they were written, so they compare as they are and indexes serve.
  return {c.name, c.name, typeOf(c.type), c.type, c.width, c.type != ColumnType::Double};
}

int findColumn(const Source& source, std::string_view name, bool* ambiguous) {
  if (source.table) {
    const Column* column = source.table->find(name);
    return column ? static_cast<int>(column - source.table->columns.data()) : -1;
  }
  int found = -1;
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    if (!sameName(source.columns[i].name, name)) continue;
    if (found >= 0) {
      if (ambiguous) *ambiguous = true;
      break;
    }
    found = static_cast<int>(i);
  }
  return found;
}

void Binder::bindQuery(Query& query, Scope* outer) {
  if (query.selects.size() == 1) {
    Scope scope;
    scope.outer = outer;
    bindSelect(*query.selects.front(), scope);
    bindOrder(query, scope);
    describe(query);
    leaveOut(query);
    return;
  }
  for (Select* select : query.selects) {
    if (select->intoPosition != 0) {
      fail(TranslateError::Kind::Unsupported, "a union cannot go into a sheet", select->intoPosition);
    }
    Scope scope;
    scope.outer = outer;
    bindSelect(*select, scope);
  }
  unite(query);
  describe(query);
  bindUnionOrder(query);
  leaveOut(query);
}

// What nobody is to be told is not asked for. Only where rows are compared as wholes, the parts of a union are sorted
// by such a column, or a sum makes one row of all, it is still needed: the rows come out of a bracket without it then.
void Binder::leaveOut(Query& query) {
  std::vector<bool> goes;
  for (const OutputColumn& column : query.columns)
    goes.push_back(std::ranges::any_of(query.without, [&](auto name) { return sameName(name, column.name); }));
  if (std::ranges::find(goes, true) == goes.end()) return;
  if (std::ranges::find(goes, false) == goes.end())
    fail(TranslateError::Kind::Syntax, "no column is left", query.selects.front()->items.front().position);
  const auto prune = [&](auto& list) {
    std::size_t index = 0;
    std::erase_if(list, [&](const auto&) { return goes[index++]; });
  };
  const auto before = [&](int column) { return goes.begin() + column - 1; };
  const bool isNeeded =
      std::ranges::any_of(query.selects,
                          [](const Select* s) { return s->distinct || (s->grouped && s->groupBy.empty()); }) ||
      std::ranges::any_of(query.unionAll, [](bool all) { return !all; }) ||
      std::ranges::any_of(query.orderBy, [&](const auto& item) { return item.column > 0 && *before(item.column); });
  if (!isNeeded) {
    for (OrderItem& item : query.orderBy)
      if (item.column > 0) item.column -= static_cast<int>(std::count(goes.begin(), before(item.column), true));
    for (Select* select : query.selects)
      prune(select->items);
    prune(query.columns);
    return;
  }
  Source& bracket = *tree_.source();
  bracket.alias = "allowed";
  bracket.derived = tree_.query();
  *bracket.derived = std::exchange(query, Query());
  bracket.columns = bracket.derived->columns;
  Select& outer = *tree_.select();
  outer.from.push_back(tree_.from());
  outer.from.front()->source = &bracket;
  outer.sources.push_back(&bracket);
  addStar(bracket, 0, outer.items);
  prune(outer.items);
  query.selects.push_back(&outer);
  describe(query);
}

void Binder::bindSelect(Select& select, Scope& scope) {
  scope.select = &select;
  select.grouped = !select.groupBy.empty();
  bindSources(select, scope);
  expandStars(select);
  scope.items.assign(select.items.size(), ItemState::Open);
  if (select.where) select.where = bindCondition(select.where, scope, "where");
  for (std::size_t i = 0; i < select.items.size(); ++i)
    bindItem(scope, i);
  bindGroups(select, scope);
  if (select.top && select.top->kind == ExprKind::Parameter) giveType(select.top, ColumnType::Integer);
}

void Binder::bindSources(Select& select, Scope& scope) {
  for (FromNode* node : select.from)
    bindFrom(*node, select, scope);
  for (std::size_t i = 0; i < select.sources.size(); ++i) {
    for (std::size_t before = 0; before < i; ++before) {
      if (!sameName(select.sources[i]->alias, select.sources[before]->alias)) continue;
      fail(TranslateError::Kind::Syntax, "the name " + std::string(select.sources[i]->alias) + " stands for two tables",
           select.sources[i]->position);
    }
  }
  scope.select = &select;
  for (FromNode* node : select.from)
    bindJoinConditions(*node, scope);
}

void Binder::bindFrom(FromNode& node, Select& select, Scope& scope) {
  if (!node.source) {
    bindFrom(*node.left, select, scope);
    bindFrom(*node.right, select, scope);
    return;
  }
  Source& source = *node.source;
  if (source.derived) {
    bindQuery(*source.derived, scope.outer);
    source.columns = source.derived->columns;
  } else {
    source.table = &tableOf(source.name, source.position);
  }
  select.sources.push_back(&source);
}

void Binder::bindJoinConditions(FromNode& node, Scope& scope) {
  if (node.source) return;
  bindJoinConditions(*node.left, scope);
  bindJoinConditions(*node.right, scope);
  if (node.on) node.on = bindCondition(node.on, scope, "on");
}

void Binder::expandStars(Select& select) {
  if (std::all_of(select.items.begin(), select.items.end(), [](const SelectItem& item) { return item.expr; })) return;
  std::vector<SelectItem> items;
  for (const SelectItem& item : select.items) {
    if (item.expr) {
      items.push_back(item);
      continue;
    }
    bool found = false;
    for (const Source* source : select.sources) {
      if (!item.starOf.empty() && !sameName(source->alias, item.starOf)) continue;
      addStar(*source, item.position, items);
      found = true;
    }
    if (!found) {
      fail(item.starOf.empty() ? TranslateError::Kind::Syntax : TranslateError::Kind::UnknownName,
           "there is no table for " + (item.starOf.empty() ? "*" : std::string(item.starOf) + ".*"), item.position);
    }
  }
  select.items = std::move(items);
}

void Binder::addStar(const Source& source, int position, std::vector<SelectItem>& items) {
  for (int i = 0; i < columnCount(source); ++i) {
    SelectItem item;
    item.expr = tree_.expr(ExprKind::Column, position);
    bindColumnTo(item.expr, const_cast<Source*>(&source), i);
    item.expr->name = columnAt(source, i).name;
    item.expr->bound = true;
    item.position = position;
    items.push_back(item);
  }
}

// Items are bound when they are needed: a name of the list may be used before the item that gives it.
Expr* Binder::bindItem(Scope& scope, std::size_t index) {
  SelectItem& item = scope.select->items[index];
  if (scope.items[index] == ItemState::Done) return item.expr;
  if (scope.items[index] == ItemState::Busy) {
    fail(TranslateError::Kind::Syntax, "the name " + std::string(item.alias) + " is defined by itself", item.position);
  }
  scope.items[index] = ItemState::Busy;
  const bool allowed = std::exchange(scope.aggregatesAllowed, true);
  const bool inside = std::exchange(scope.insideAggregate, false);
  item.expr = bindExpr(item.expr, scope);
  scope.aggregatesAllowed = allowed;
  scope.insideAggregate = inside;
  scope.items[index] = ItemState::Done;
  return item.expr;
}

void Binder::bindGroups(Select& select, Scope& scope) {
  for (Expr*& e : select.groupBy) {
    e = bindExpr(e, scope);
    if (e->aggregated) fail(TranslateError::Kind::Syntax, "a group cannot be made of a sum over itself", e->position);
  }
  if (select.having) {
    scope.aggregatesAllowed = true;
    select.having = bindExpr(select.having, scope);
    scope.aggregatesAllowed = false;
    if (!select.grouped) fail(TranslateError::Kind::Syntax, "having without a group", select.having->position);
  }
  if (!select.grouped) return;
  for (const SelectItem& item : select.items)
    checkGrouping(select, *item.expr);
  if (select.having) checkGrouping(select, *select.having);
}

// In a grouped select every value is a group's, an aggregate, or the same for all rows.
void Binder::checkGrouping(const Select& select, const Expr& e) const {
  for (const Expr* group : select.groupBy) {
    if (sameExpression(*group, e)) return;
  }
  if (e.kind == ExprKind::Aggregate) return;
  if (e.kind == ExprKind::Column) {
    for (const Source* source : select.sources) {
      if (source != e.source) continue;
      fail(TranslateError::Kind::Syntax, "column " + std::string(e.name) + " is neither grouped by nor part of a sum",
           e.position);
    }
    return;
  }
  for (const Expr* argument : e.args)
    checkGrouping(select, *argument);
}

void Binder::bindOrder(Query& query, Scope& scope) {
  Select& select = *query.selects.front();
  for (OrderItem& item : query.orderBy) {
    item.expr = orderExpression(item.expr, select, scope);
    if (select.grouped) checkGrouping(select, *item.expr);
    item.expr = comparable(item.expr);
  }
}

// A position, a name of the select list, a column of the list, or an expression over the tables.
Expr* Binder::orderExpression(Expr* written, Select& select, Scope& scope) {
  if (written->kind == ExprKind::Number) {
    std::size_t position = 0;
    std::from_chars(written->name.data(), written->name.data() + written->name.size(), position);
    if (position < 1 || position > select.items.size()) {
      fail(TranslateError::Kind::Syntax, "there is no column " + std::string(written->name) + " to sort by",
           written->position);
    }
    return select.items[position - 1].expr;
  }
  if (written->kind == ExprKind::Column && written->qualifier.empty()) {
    if (Expr* alias = findAlias(*written, scope)) return alias;
    Expr* found = nullptr;
    for (const SelectItem& item : select.items) {
      if (!item.alias.empty() || item.expr->kind != ExprKind::Column || !sameName(item.expr->name, written->name))
        continue;
      if (found && !sameExpression(*found, *item.expr)) {
        found = nullptr;
        break;
      }
      found = item.expr;
    }
    if (found) return found;
  }
  scope.aggregatesAllowed = select.grouped;
  Expr* bound = bindExpr(written, scope);
  scope.aggregatesAllowed = false;
  return bound;
}

// The rows of a union are sorted by what it yields: a name or a position.
void Binder::bindUnionOrder(Query& query) {
  for (OrderItem& item : query.orderBy) {
    const Expr& written = *item.expr;
    if (written.kind == ExprKind::Number) {
      std::from_chars(written.name.data(), written.name.data() + written.name.size(), item.column);
    } else if (written.kind == ExprKind::Column) {
      for (std::size_t i = 0; i < query.columns.size() && item.column == 0; ++i) {
        if (sameName(query.columns[i].name, written.name)) item.column = static_cast<int>(i) + 1;
      }
      if (item.column == 0) {
        fail(TranslateError::Kind::UnknownName, "the union has no column " + std::string(written.name),
             written.namePosition);
      }
    } else {
      fail(TranslateError::Kind::Unsupported, "a union is sorted by the names of its columns", written.position);
    }
    if (item.column < 1 || item.column > static_cast<int>(query.columns.size())) {
      fail(TranslateError::Kind::Syntax, "there is no column " + std::string(written.name) + " to sort by",
           written.position);
    }
  }
}

// All parts of a union yield the same number of columns, each of one type: text when any part has text.
void Binder::unite(Query& query) {
  const std::size_t count = query.selects.front()->items.size();
  for (Select* select : query.selects) {
    if (select->items.size() == count) continue;
    fail(TranslateError::Kind::Syntax, "the parts of a union differ in the number of columns",
         select->items.front().position);
  }
  const bool removesDuplicates =
      std::any_of(query.unionAll.begin(), query.unionAll.end(), [](bool all) { return !all; });
  for (std::size_t i = 0; i < count; ++i) {
    Type type = Type::Unknown;
    for (const Select* select : query.selects) {
      const Type part = select->items[i].expr->type;
      if (part == Type::Text || type == Type::Text) {
        type = Type::Text;
      } else if (part == Type::Number || type == Type::Number) {
        type = Type::Number;
      } else if (part != Type::Unknown) {
        type = type == Type::Unknown || type == part ? part : Type::Integer;
      }
    }
    for (Select* select : query.selects) {
      Expr*& e = select->items[i].expr;
      const SelectItem& item = select->items[i];
      const std::string_view name = item.alias.empty() && e->kind == ExprKind::Column ? e->name : item.alias;
      e = commonType(e, type);
      if (removesDuplicates) e = comparable(e);
      select->items[i].alias = name;  // a conversion must not take a column its name
    }
  }
}

void Binder::describe(Query& query) {
  for (Select* select : query.selects) {
    for (SelectItem& item : select->items) {
      if (item.alias.empty() && item.expr->kind == ExprKind::Column) continue;
      // Equal rows are found by comparing; and a sum of decimals is given back as the decimal that it is.
      if (select->distinct || isDecimal(*item.expr)) item.expr = comparable(item.expr);
    }
  }
  const Select& first = *query.selects.front();
  query.columns.reserve(first.items.size());
  for (std::size_t i = 0; i < first.items.size(); ++i) {
    OutputColumn column = outputOf(first.items[i], i);
    for (std::size_t part = 1; part < query.selects.size(); ++part) {
      const Expr& other = *query.selects[part]->items[i].expr;
      // A whole number beside a fraction is one too: a sum over the column keeps its decimals.
      const bool isFraction = other.type == Type::Number && column.type != Type::Text;
      if (column.type == Type::Unknown || isFraction) column.type = other.type;
      if (!other.exact) column.exact = false;
      const int width = widthOf(other);
      column.width = column.width == 0 || width == 0 ? 0 : std::max(width, column.width);
      if (other.type == Type::Number && column.declared != ColumnType::Double) column.declared = ColumnType::Numeric;
    }
    // Two columns of one name, as under *, both keep it for the reader; inside a bracket each needs its own.
    for (const OutputColumn& before : query.columns) {
      if (!sameName(before.native, column.native)) continue;
      column.native = tree_.keep(std::string(column.name) + ':' + std::to_string(i));
      break;
    }
    query.columns.push_back(column);
  }
}

OutputColumn Binder::outputOf(const SelectItem& item, std::size_t index) {
  const Expr& e = *item.expr;
  OutputColumn column;
  if (!item.alias.empty()) {
    column.name = item.alias;
  } else if (e.kind == ExprKind::Column) {
    column.name = e.name;
  } else {
    column.name = tree_.keep("Expr" + std::to_string(1000 + index));
  }
  column.native = column.name;
  column.type = e.type;
  column.declared = columnTypeOf(e);
  column.width = widthOf(e);
  column.exact = e.exact;
  return column;
}

}  // namespace jxc::jet
