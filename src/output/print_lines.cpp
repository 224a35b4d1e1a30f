#include "output/print_lines.h"

#include "core/session.h"
#include "stock/document_family.h"
#include "stock/document_rules.h"

#include <algorithm>

namespace jxc {
namespace print_lines_detail {

/// Conditions on the lines `a` of the document.
Filter linesOf(const DocumentFamily& family, const QString& number, LineScope scope) {
  Filter lines;
  lines.add(compose("a.{}=?", {family.number}), number);
  if (scope == LineScope::OwnDraft) lines.add("a.a_name=?", session().a_name);
  // What an unsaved split takes apart, or a bundle becomes, stands among its lines; on paper it is the head.
  if (!family.whole.goods.empty()) lines.add(compose("a.{}>0", {family.line.columns->quantity}));
  if (!family.paper.printed.empty()) lines.add(family.paper.printed);
  return lines;
}

/// Figures under the names that templates of all families share, beside the table's own columns.
std::string figuresOf(const LineTable& line) {
  const LineColumns& c = *line.columns;
  if (!c.taxedPrice.empty()) return compose(",a.{}*a.{} as sj", {c.taxedPrice, c.discount});
  const std::string quantity = line.moves.empty() ? compose("a.{}", {c.quantity}) : std::string(line.moves);
  return "," + quantity + " as sl" +
         (c.price.empty() ? std::string() : compose(",a.{} as dj,a.{} as zje", {c.price, c.total})) +
         (line.note.empty() ? std::string() : compose(",a.{} as note", {line.note}));
}

/// Lines and goods. The class is looked up loosely: a goods whose class was deleted must not vanish from the paper,
/// which would then not add up to its total. So is the warehouse, where each line has one.
std::string selectOf(const DocumentFamily& family) {
  const std::string_view warehouse = family.line.warehouse;
  const std::string goods = "(" + std::string(family.lines) +
                            " a inner join jxc_goods b on a.g_sn=b.g_sn) left join jxc_goodsclass c on b.gc_sn=c.gc_sn";
  return "select a.*," + nameWithGift(family) + ",b.dw_name,b.gg_name,b.color_name" + figuresOf(family.line) +
         std::string(family.paper.moreColumns) + ",b.g_sptm,b.g_bz,b.g_sccs,c.gc_name" +
         (warehouse.empty()
              ? " from " + goods
              : ",d.ck_name from (" + goods + compose(") left join jxc_ckxx d on a.{}=d.ck_sn", {warehouse}));
}

std::string_view orderOf(const DocumentPaper& paper) {
  const QString& wanted = session().cs_dysx;
  if (paper.ordered && wanted == u"1") return " order by b.g_sn,a.id";
  if (paper.ordered && wanted == u"2") return " order by b.g_name,a.id";
  return " order by a.id";
}

}  // namespace print_lines_detail

int fixedPrintLines(QStringView prefix) {
  const auto parameter = documentFamily(prefix).paper.fixedLines;
  return parameter ? std::max(0, (session().*parameter).toInt()) : 0;
}

Sql printLineSql(const QString& number, QStringView prefix, LineScope scope) {
  using namespace print_lines_detail;
  const DocumentFamily& family = documentFamily(prefix);
  return Sql(selectOf(family)).where(linesOf(family, number, scope)).add(orderOf(family.paper));
}

RowSet printLines(const QString& number, QStringView prefix, LineScope scope) {
  RowSet rows = openSelect(printLineSql(number, prefix, scope));
  const int multiple = fixedPrintLines(prefix);
  while (multiple > 0 && rows.rowCount() % multiple != 0)
    rows.addEmptyRow();
  return rows;
}

}  // namespace jxc
