#include "output/print_lines.h"

#include "core/session.h"
#include "core/small_lookups.h"
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

/// Conditions on the lines `a` of the document, with their values.
struct Condition {
  std::string text;
  std::vector<Value> values;
};
Condition linesOf(const LineSource& source, const DocumentFamily& family, const QString& number, LineScope scope) {
  Condition condition{"a." + std::string(family.number) + "=?", {number}};
  if (scope == LineScope::OwnDraft) {
    condition.text += " and a.a_name=?";
    condition.values.push_back(session().a_name);
  }
  if (!source.printed.empty()) condition.text += " and " + std::string(source.printed);
  return condition;
}

/// Lines and goods. The class is looked up loosely: a goods whose class was deleted must not vanish from the paper,
/// which would then not add up to its total.
std::string selectOf(const LineSource& source, const DocumentFamily& family) {
  return "select a.*," + std::string(source.name) + ",b.dw_name,b.gg_name,b.color_name" + std::string(source.more) +
         ",b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from (" + std::string(family.lines) +
         " a inner join jxc_goods b on a.g_sn=b.g_sn) left join jxc_goodsclass c on b.gc_sn=c.gc_sn where ";
}

/// `goods` and `entry` are the aliases of lines and of the row that tells the order of entry.
std::string orderOf(const LineSource& source, std::string_view goods, std::string_view entry) {
  const QString& wanted = session().cs_dysx;
  const std::string byEntry = std::string(entry) + ".id";
  if (!source.ordered || (wanted != u"1" && wanted != u"2")) return byEntry;
  const std::string_view field = wanted == u"1" ? ".g_sn" : ".g_name";
  return std::string(goods) + std::string(field) + "," + byEntry;
}

/// Takes the operator's staging rows as a generator of lines: one for each that prints, then empty ones.
void stageLines(const DocumentFamily& family, const Condition& lines, int multiple) {
  clearStaging();
  std::vector<Value> values{session().a_name};
  values.insert(values.end(), lines.values.begin(), lines.values.end());
  execSqlWith("insert into jxc_tempspxf (rid,a_name) select a.id,? from " + std::string(family.lines) + " a where " +
                  lines.text + " order by a.id",
              values);
  const auto count =
      static_cast<int>(lookupNumber("select count(*) from jxc_tempspxf where a_name=?", session().a_name));
  const int missing = multiple - count % multiple;
  if (missing >= multiple) return;
  for (int i = 0; i < missing; ++i)
    execSql("insert into jxc_tempspxf (rid,a_name) values (0,?)", session().a_name);
}

}  // namespace print_lines_detail

int fixedPrintLines(QStringView prefix) {
  const auto parameter = print_lines_detail::sourceOf(prefix).fixedLines;
  return parameter ? std::max(0, (session().*parameter).toInt()) : 0;
}

BoundStatement printLineSql(const QString& number, QStringView prefix, LineScope scope) {
  using namespace print_lines_detail;
  const LineSource& source = sourceOf(prefix);
  const DocumentFamily& family = documentFamily(prefix);
  Condition lines = linesOf(source, family, number, scope);
  const std::string select = selectOf(source, family) + lines.text;
  const int multiple = fixedPrintLines(prefix);
  if (multiple == 0) return {select + " order by " + orderOf(source, "b", "a"), std::move(lines.values)};

  stageLines(family, lines, multiple);
  lines.values.push_back(session().a_name);
  // Empty lines stand at the foot, whatever the order of the others is.
  return {"select y.* from jxc_tempspxf x left join (" + select + ") y on x.rid=y.id where x.a_name=? order by " +
              "iif(x.rid=0,1,0)," + orderOf(source, "y", "x"),
          std::move(lines.values)};
}

RowSet printLines(const QString& number, QStringView prefix, LineScope scope) {
  if (fixedPrintLines(prefix) == 0) {
    const BoundStatement statement = printLineSql(number, prefix, scope);
    return openSelectWith(statement.sql, statement.values);
  }
  Transaction borrowed(accountDb());
  const BoundStatement statement = printLineSql(number, prefix, scope);
  RowSet rows = openSelectWith(statement.sql, statement.values);
  clearStaging();
  borrowed.commit();
  return rows;
}

}  // namespace jxc
