#include "jet/first_rows.h"

#include "jet/parser.h"

#include <algorithm>
#include <charconv>

namespace jxc::jet {
namespace first_rows_detail {

/// Whether a value is a sum or a count over the rows of its own select. Those of a select in brackets are its own.
bool isAggregate(const Expr* e) {
  return e && (e->kind == ExprKind::Aggregate || std::ranges::any_of(e->args, isAggregate));
}

/// Whether all rows have to be looked at before the first one is known. Sorting is not counted: what long lists are
/// sorted by has an index.
bool needsAllRows(const Query& query);

bool needsAllRows(const FromNode* node) {
  if (!node->source) return needsAllRows(node->left) || needsAllRows(node->right);
  return node->source->derived && needsAllRows(*node->source->derived);
}

bool needsAllRows(const Select& select, bool isSorted) {
  return (select.distinct && isSorted) || !select.groupBy.empty() || select.having ||
         std::ranges::any_of(select.items, [](const SelectItem& item) { return isAggregate(item.expr); }) ||
         std::ranges::any_of(select.from, [](const FromNode* node) { return needsAllRows(node); });
}

bool needsAllRows(const Query& query) {
  return query.selects.size() > 1 || needsAllRows(*query.selects.front(), !query.orderBy.empty());
}

/// Parts that are merged row by row: each is sorted by itself, and nothing is looked for twice.
bool isMerged(const Query& query) {
  return query.selects.size() > 1 && std::ranges::all_of(query.unionAll, [](bool all) { return all; }) &&
         std::ranges::none_of(query.selects, [&](const Select* part) {
           return part->top || part->distinct || needsAllRows(*part, !query.orderBy.empty());
         });
}

/// The number of a `top`; nothing when the caller gives it.
std::optional<int> numberOf(const Expr& top) {
  int number = 0;
  const auto [end, failure] = std::from_chars(top.name.data(), top.name.data() + top.name.size(), number);
  if (top.kind != ExprKind::Number || failure != std::errc()) return std::nullopt;
  return number;
}

}  // namespace first_rows_detail

std::optional<std::string> firstRows(std::string_view statement, int rows) {
  Tree tree;
  Parser(statement, tree).parse();
  if (tree.statement.kind != Statement::Kind::Query) return {};
  if (first_rows_detail::isMerged(*tree.statement.query)) {
    const std::string_view whole = statement.substr(0, statement.find_last_not_of("; \t\r\n") + 1);
    return "select top " + std::to_string(rows) + " * from (" + std::string(whole) + ") firstrows";
  }
  if (first_rows_detail::needsAllRows(*tree.statement.query)) return {};
  const Select& select = *tree.statement.query->selects.front();
  if (select.intoPosition != 0) return {};
  std::string limited(statement);
  if (!select.top)
    return limited.insert(static_cast<std::size_t>(select.items.front().position), "top " + std::to_string(rows) + " ");
  const std::optional<int> own = first_rows_detail::numberOf(*select.top);
  if (!own || *own <= rows) return {};
  return limited.replace(static_cast<std::size_t>(select.top->position), select.top->name.size(), std::to_string(rows));
}

}  // namespace jxc::jet
