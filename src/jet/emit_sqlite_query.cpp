#include "jet/emit_sqlite.h"

namespace jxc::jet {

void SqliteEmitter::orderBy(const Query& q) {
  const bool isUnion = q.selects.size() > 1;
  for (std::size_t i = 0; i < q.orderBy.size(); ++i) {
    put(i == 0 ? " order by " : ",");
    if (isUnion) {
      put(std::to_string(q.orderBy[i].column));
    } else {
      expr(*q.orderBy[i].expr);
    }
    if (q.orderBy[i].descending) put(" desc");
  }
}

void SqliteEmitter::groupItem(const Expr& e) {
  if (e.kind == ExprKind::Number) {
    literal(e.name);  // a bare number would be read as a position
  } else {
    expr(e);
  }
}

// SQLite reads joins and commas from left to right, so a bracket matters only around a join on the right-hand side. An
// outer join behind a comma is the same with and without: its condition names tables of its own side only; but a right
// join would keep the rows of the whole list, so it is turned round into a left one.
void SqliteEmitter::fromNode(const FromNode& node, bool rightOperand) {
  if (node.source) {
    leaf(*node.source);
    return;
  }
  const bool turned = node.kind == JoinKind::Right;
  const FromNode& left = turned ? *node.right : *node.left;
  const FromNode& right = turned ? *node.left : *node.right;
  const bool bracket = rightOperand && !left.source;
  if (bracket) put("(");
  fromNode(left, false);
  switch (node.kind) {
    case JoinKind::Cross:
      put(",");
      break;
    case JoinKind::Inner:
      put(" join ");
      break;
    default:
      put(" left join ");
      break;
  }
  if (right.source) {
    leaf(*right.source);
  } else {
    put("(");
    fromNode(right, false);
    put(")");
  }
  if (node.on) {
    put(" on ");
    expr(*node.on);
  }
  if (bracket) put(")");
}

}  // namespace jxc::jet
