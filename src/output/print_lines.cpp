#include "output/print_lines.h"

#include "core/session.h"
#include "stock/document_family.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace jxc {
namespace print_lines_detail {

/// What the lines of one prefix have besides the columns of their table.
struct LineSource {
  std::u16string_view prefix;
  std::string_view name = "b.g_name";  // of the goods as it prints
  std::string_view more = {};          // further columns, each with its comma in front
  std::string_view printed = {};       // which lines print at all
  bool ordered = false;                // by parameter, instead of as they were entered
  QString SystemParameters::*fixedLines = nullptr;
};

constexpr std::string_view kGiftName = "(b.g_name+iif(a.t_zp is null,'',a.t_zp)) as g_name";

constexpr LineSource kSources[] = {
    // A discount of nothing marks a line that is there for the books only.
    {.prefix = u"XS",
     .name = kGiftName,
     .more = ",a.ls_taxdj*a.ls_dzl as sj",
     .printed = "a.ls_dzl>0",
     .ordered = true,
     .fixedLines = &SystemParameters::cs_cs005},
    {.prefix = u"CJ",
     .more = ",a.jh_taxdj*a.jh_dzl as sj",
     .printed = "a.g_sn<>''",
     .ordered = true,
     .fixedLines = &SystemParameters::cs_cs006},
    {.prefix = u"XT", .more = ",a.th_taxdj*a.th_dzl as sj"},
    {.prefix = u"CT", .more = ",a.th_taxdj*a.th_dzl as sj"},
    {.prefix = u"DB", .more = ",b.g_sj,a.db_sl*b.g_sj as sjje"},
    {.prefix = u"PD", .more = ",a.pd_sl-a.kc_sl as cysl"},
    {.prefix = u"BS", .more = ",a.bs_sl as sl,a.bs_dj as dj,a.bs_zje as zje,a.bs_note as note"},
    {.prefix = u"BY", .more = ",a.by_sl as sl,a.by_dj as dj,a.by_zje as zje,a.by_note as note"},
    {.prefix = u"CF", .more = ",a.cf_dj as dj,a.cf_sl as sl,a.cf_zje as zje"},
    {.prefix = u"KB", .more = ",a.kb_dj as dj,a.kb_sl as sl,a.kb_zje as zje"},
    // The line of a loan counts what has come back of it; its own paper says what was lent, whenever it is printed.
    {.prefix = u"JH", .more = ",a.jh_sl as sl"},
    {.prefix = u"HH", .more = ",iif(a.jh_flag='销售',a.jh_xssl,a.jh_hhsl) as sl"},
};

const LineSource& sourceOf(QStringView prefix) {
  const auto* found =
      std::ranges::find_if(kSources, [&](const LineSource& each) { return prefix == QStringView(each.prefix); });
  if (found == std::end(kSources)) throw std::out_of_range("no printed lines of " + prefix.toString().toStdString());
  return *found;
}

/// Conditions on the lines `a` of the document.
Filter linesOf(const LineSource& source, const DocumentFamily& family, const QString& number, LineScope scope) {
  Filter lines;
  lines.add(compose("a.{}=?", {family.number}), number);
  if (scope == LineScope::OwnDraft) lines.add("a.a_name=?", session().a_name);
  if (!source.printed.empty()) lines.add(source.printed);
  return lines;
}

/// Lines and goods. The class is looked up loosely: a goods whose class was deleted must not vanish from the paper,
/// which would then not add up to its total.
std::string selectOf(const LineSource& source, const DocumentFamily& family) {
  return "select a.*," + std::string(source.name) + ",b.dw_name,b.gg_name,b.color_name" + std::string(source.more) +
         ",b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from (" + std::string(family.lines) +
         " a inner join jxc_goods b on a.g_sn=b.g_sn) left join jxc_goodsclass c on b.gc_sn=c.gc_sn";
}

std::string_view orderOf(const LineSource& source) {
  const QString& wanted = session().cs_dysx;
  if (source.ordered && wanted == u"1") return " order by b.g_sn,a.id";
  if (source.ordered && wanted == u"2") return " order by b.g_name,a.id";
  return " order by a.id";
}

}  // namespace print_lines_detail

int fixedPrintLines(QStringView prefix) {
  const auto parameter = print_lines_detail::sourceOf(prefix).fixedLines;
  return parameter ? std::max(0, (session().*parameter).toInt()) : 0;
}

Sql printLineSql(const QString& number, QStringView prefix, LineScope scope) {
  using namespace print_lines_detail;
  const LineSource& source = sourceOf(prefix);
  const DocumentFamily& family = documentFamily(prefix);
  return Sql(selectOf(source, family)).where(linesOf(source, family, number, scope)).add(orderOf(source));
}

RowSet printLines(const QString& number, QStringView prefix, LineScope scope) {
  RowSet rows = openSelect(printLineSql(number, prefix, scope));
  const int multiple = fixedPrintLines(prefix);
  while (multiple > 0 && rows.rowCount() % multiple != 0)
    rows.addEmptyRow();
  return rows;
}

}  // namespace jxc
