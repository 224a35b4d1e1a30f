#include "jet/binder.h"
#include "jet/emit_postgres.h"

#include <algorithm>
#include <utility>

namespace jxc::jet {

void PostgresEmitter::query(const Query& q, Names names) {
  if (std::exchange(ordered_, false) && names == Names::None) whole_ = &q;
  Emitter::query(q, names);
}

void PostgresEmitter::orderBy(const Query& q) {
  const Select& first = *q.selects.front();
  for (std::size_t i = 0; i < q.orderBy.size(); ++i) {
    put(i == 0 ? " order by " : ",");
    const OrderItem& item = q.orderBy[i];
    if (!item.expr || item.column > 0) {
      put(std::to_string(item.column));
      put(item.descending ? " desc nulls last" : " nulls first");
      continue;
    }
    // What stands in the list is named by its place: said again, with values of the caller, it would be another thing.
    const auto same = std::find_if(first.items.begin(), first.items.end(),
                                   [&](const SelectItem& s) { return sameExpression(*s.expr, *item.expr); });
    const bool plain = item.expr->kind == ExprKind::Column;
    if (same != first.items.end() && (!plain || first.distinct)) {
      put(std::to_string(same - first.items.begin() + 1));
      put(item.descending ? " desc nulls last" : " nulls first");
    } else {
      orderItem(*item.expr, item.descending);
    }
  }
  if (whole_ == &q && q.orderBy.empty() && q.selects.size() == 1) storedOrder(first);
}

void PostgresEmitter::orderItem(const Expr& e, bool descending) {
  const bool stored = e.kind == ExprKind::Column;
  if (isLiteral(e) || e.kind == ExprKind::Null) {
    put("(");
    expr(e);
    put("::text)");  // a bare constant would be read as a position
  } else if (stored) {
    expr(e);
  } else {
    operand(e);
    if (e.type == Type::Text) put(" collate \"C\"");
  }
  if (descending) put(" desc");
  // A counter is never empty, and its index knows no such order.
  if (stored && columnAt(*e.source, e.column).declared == ColumnType::Counter) return;
  put(descending ? " nulls last" : " nulls first");
}

// Rows that nobody sorts come in the order in which they were written, as from a file; the server would give a changed
// row last. The sum keeps it from walking the whole table along its key to find the first row of a few.
void PostgresEmitter::storedOrder(const Select& s) {
  if (s.distinct) return;
  bool first = true;
  if (s.grouped) {  // groups come sorted by what they are made of
    for (const Expr* e : s.groupBy) {
      if (isLiteral(*e)) continue;
      put(first ? " order by " : ",");
      first = false;
      orderItem(*e, false);
    }
    return;
  }
  for (const Source* source : s.sources) {
    if (!source->table) continue;
    for (const Column& column : source->table->columns) {
      if (column.type != ColumnType::Counter) continue;
      put(first ? " order by (" : ",(");
      quoted(source->alias);
      put(".");
      quoted(column.name);
      put("+0)");
      first = false;
      break;
    }
  }
}

void PostgresEmitter::selectItem(const Select& s, std::size_t index, const Query* q) {
  const Expr& e = *s.items[index].expr;
  if (e.kind == ExprKind::Null && q) {
    // An empty column of a union has the type that its other parts give it.
    switch (q->columns[index].type) {
      case Type::Integer:
      case Type::Bit:
        put("null::bigint");
        return;
      case Type::Number:
        put("null::numeric");
        return;
      default:
        put("null::text");
        return;
    }
  }
  expr(e);
}

void PostgresEmitter::groupItem(const Expr& e) {
  if (isLiteral(e) || e.kind == ExprKind::Null) {
    put("(");
    expr(e);
    put("::text)");  // a bare number would be read as a position
    return;
  }
  expr(e);
}

// A comma binds less than a join, as in the tree.
void PostgresEmitter::fromNode(const FromNode& node, bool) {
  if (node.source) {
    leaf(*node.source);
    return;
  }
  const bool rightJoined = !node.right->source;
  const bool leftCross = !node.left->source && node.left->kind == JoinKind::Cross;
  if (leftCross) put("(");
  fromNode(*node.left, false);
  if (leftCross) put(")");
  switch (node.kind) {
    case JoinKind::Cross:
      put(" cross join ");
      break;
    case JoinKind::Inner:
      put(" join ");
      break;
    case JoinKind::Left:
      put(" left join ");
      break;
    case JoinKind::Right:
      put(" right join ");
      break;
  }
  if (rightJoined) put("(");
  fromNode(*node.right, false);
  if (rightJoined) put(")");
  if (node.on) {
    put(" on ");
    condition(*node.on);
  }
}

}  // namespace jxc::jet
