#include "jet/emitter.h"

namespace jxc::jet {

void Emitter::select(const Select& s, const Query* query, Names names) {
  put(s.distinct ? "select distinct " : "select ");
  for (std::size_t i = 0; i < s.items.size(); ++i) {
    if (i > 0) put(",");
    selectItem(s, i, query);
    if (names == Names::Native) {
      put(" as ");
      quoted(query->columns[i].native);
    }
  }
  fromClause(s);
  where(s.where);
  for (std::size_t i = 0; i < s.groupBy.size(); ++i) {
    put(i == 0 ? " group by " : ",");
    groupItem(*s.groupBy[i]);
  }
  if (s.having) {
    put(" having ");
    condition(*s.having);
  }
}

void Emitter::selectItem(const Select& s, std::size_t index, const Query*) {
  expr(*s.items[index].expr);
}

void Emitter::fromClause(const Select& s) {
  for (std::size_t i = 0; i < s.from.size(); ++i) {
    put(i == 0 ? " from " : ",");
    fromNode(*s.from[i], i > 0);
  }
}

void Emitter::leaf(const Source& source) {
  if (source.table) {
    quoted(source.table->name);
    if (source.alias != source.table->name) {
      put(" as ");
      quoted(source.alias);
    }
    return;
  }
  put("(");
  query(*source.derived, Names::Native);
  put(") as ");
  quoted(source.alias);
}

void Emitter::where(const Expr* e) {
  if (!e) return;
  put(" where ");
  condition(*e);
}

void Emitter::limit(const Select& s) {
  if (!s.top) return;
  put(" limit ");
  expr(*s.top);
}

void Emitter::query(const Query& q, Names names) {
  const bool isUnion = q.selects.size() > 1;
  for (std::size_t part = 0; part < q.selects.size(); ++part) {
    if (part > 0) put(q.unionAll[part - 1] ? " union all " : " union ");
    const Select& s = *q.selects[part];
    // `top` belongs to its part alone, a limit would belong to the whole.
    const bool bracket = isUnion && s.top;
    if (bracket) put(partOpening());
    select(s, &q, names);
    if (!isUnion) orderBy(q);
    limit(s);
    if (bracket) put(")");
  }
  if (isUnion) orderBy(q);
}

}  // namespace jxc::jet
