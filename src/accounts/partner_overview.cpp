#include "accounts/partner_overview.h"

#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/period_lock.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/waiting.h"

namespace jxc::partner_books {
namespace partner_overview_detail {

constexpr std::string_view kOwedTold[] = {"k_fkfs", "k_djlx", "k_djtxt"};
constexpr std::string_view kOwedEmpty[] = {"gl_djh2"};
constexpr std::string_view kInvoiceTold[] = {"fp_djlx", "fp_djtxt"};
constexpr std::string_view kInvoiceEmpty[] = {"fp_no", "fp_kprq", "fp_checker", "fp_chkrq"};

// What a closing carried forward is known by its words, as older releases wrote them, too.

/// What came in the period …
std::string raisedOf(const PartnerLedger& ledger) {
  return compose("iif(a.{}='数据结算结转',0,a.{})", {ledger.words, ledger.raised});
}
/// … and what had come before it, though its line stands there.
std::string carriedInside(const PartnerLedger& ledger) {
  return compose("iif(a.{}='数据结算结转',a.{},0)", {ledger.words, ledger.raised});
}

/// In brackets, the id of a partner's last line before (or up to) a moment: his lines stand in the index by date and
/// entry, so the last is the first one that is met backwards. `partner` is a column of the statement around.
void addLastLine(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, std::string_view partner,
                 const char* comparison, const QString& date) {
  sql.add(compose("(select top 1 x.id from {} x where x.{}=? and x.{}={} and x.{}",
                  {ledger.table, ledger.type, ledger.partner, partner, ledger.date}),
          words(side.type))
      .add(comparison)
      .add("?", date);
  if (!ledger.counted.empty()) sql.add(compose(" and x.{}<>0", {ledger.counted}));
  sql.add(compose(" order by x.{} desc,x.id desc)", {ledger.date}));
}

/// In brackets, those of all partners, or of one.
void addLastLines(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const char* comparison,
                  const QString& date, const QString& partner = {}) {
  sql.add("(select ");
  addLastLine(sql, ledger, side, compose("p.{}", {side.sn}), comparison, date);
  sql.add(compose(" as rowid from {} p", {side.table}));
  if (!partner.isEmpty()) sql.add(compose(" where p.{}=?", {side.sn}), partner);
  sql.add(")");
}

/// Conditions on lines, with the ledger as `a`: those that count, or those that wait.
Filter lines(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria, bool counted) {
  Filter filter;
  filter.add(compose("a.{}=?", {ledger.type}), words(side.type));
  if (!ledger.counted.empty()) filter.add(compose(counted ? "a.{}<>0" : "a.{}=0", {ledger.counted}));
  addPeriod(filter, criteria, compose("a.{}", {ledger.date}));
  addChoice(filter, "a.u_sn", criteria.employee);
  addChoice(filter, compose("a.{}", {ledger.partner}), criteria.partner);
  const std::string columns[] = {"a.gl_djh", compose("a.{}", {ledger.note})};
  addKey(filter, criteria, columns);
  return filter;
}

void addOpeningRows(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  const QString opening = ledger.openingWord(side);
  sql.add(compose("select a.id,a.{},b.{} as name,? as {},'' as gl_djh", {ledger.partner, side.name, ledger.date}),
          criteria.from);
  for (const std::string_view column : ledger.told)
    sql.add(compose(",? as {}", {column}), opening);
  for (const std::string_view column : ledger.empty)
    sql.add(compose(",'' as {}", {column}));
  sql.add(compose(R"(,a.{} as {},0 as {},0 as {},a.{},'' as {},'' as u_name,'' as a_name,1 as dsort
    from {} a,{} b where a.{}=b.{} and b.{}=0 and a.id in )",
                  {ledger.running, ledger.opening, ledger.raised, ledger.lowered, ledger.running, ledger.note,
                   ledger.table, side.table, ledger.partner, side.sn, side.forbidden}));
  addLastLines(sql, ledger, side, "<", criteria.from, criteria.partner);
  if (criteria.has(kHidesSettled)) sql.add(compose(" and a.{}<>0", {ledger.running}));
}

/// "select …" of lines as they stand, up to the conditions.
void addLines(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, bool counted) {
  sql.add(compose("select a.id,a.{},b.{} as name,a.{},a.gl_djh", {ledger.partner, side.name, ledger.date}));
  for (const std::string_view column : ledger.told)
    sql.add(compose(",a.{}", {column}));
  for (const std::string_view column : ledger.empty)
    sql.add(compose(",a.{}", {column}));
  sql.add("," + carriedInside(ledger) + compose("+a.{} as {},", {ledger.opening, ledger.opening}) + raisedOf(ledger) +
          compose(" as {},a.{},", {ledger.raised, ledger.lowered}))
      .add(compose(counted ? "a.{}" : "null as {}", {ledger.running}))
      .add(compose(",a.{},c.u_name,a.a_name,", {ledger.note}))
      .add(counted ? "2" : "3")
      .add(compose(R"( as dsort from ({} a inner join {} b on a.{}=b.{}) left outer join jxc_user c on a.u_sn=c.u_sn)",
                   {ledger.table, side.table, ledger.partner, side.sn}));
}

void addPeriodRows(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  addLines(sql, ledger, side, true);
  // Named once more as a list, the partners lead into the index of their lines; ordered by partner, SQLite would else
  // walk along all of it.
  sql.add(compose(" where a.{} in (select p.{} from {} p where p.{}=0)",
                  {ledger.partner, side.sn, side.table, side.forbidden}))
      .andWhere(lines(ledger, side, criteria, true));
  if (!criteria.has(kHidesSettled)) return;
  sql.add(compose(" and a.{} in (select {} from {} where {}<>0 and id in ",
                  {ledger.partner, ledger.partner, ledger.table, ledger.running}));
  addLastLines(sql, ledger, side, "<=", endOf(criteria.to), criteria.partner);
  sql.add(")");
}

/// " left outer join jxc_ysyfk n on n is the last line before the period where …", with the partners as `b`.
void addOpeningJoin(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  sql.add(compose(" left outer join {} n on n.id=", {ledger.table}));
  addLastLine(sql, ledger, side, compose("b.{}", {side.sn}), "<", criteria.from);
  sql.add(compose(" where b.{}=0", {side.forbidden}));
}

/// The balance before the period, of that join.
std::string carriedOf(const PartnerLedger& ledger) {
  return compose("iif(n.{} is null,0,n.{})", {ledger.running, ledger.running});
}

void addMovedPartners(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  const std::string carried = carriedOf(ledger) + "+m.jzje", closing = "m.yfje+" + carried + "-m.sfje";
  sql.add(compose("select b.{} as k_ghskh,b.{} as name,", {side.sn, side.name}))
      .add(carried)
      .add(" as qcje,m.yfje,m.sfje,")
      .add(closing)
      // Summed partner by partner, along the index of his lines of the period: the years before it are not read.
      .add(compose(R"( as wfje from ({} b inner join
      (select x.{} as partner,sum()",
                   {side.table, side.sn}) +
           raisedOf(ledger) + ") as yfje,sum(" + carriedInside(ledger) + ") as jzje," +
           compose("sum(a.{}) as sfje from {} x,{} a", {ledger.lowered, side.table, ledger.table}))
      .where(lines(ledger, side, criteria, true))
      .add(compose(" and a.{}=x.{} group by x.{}) m on b.{}=m.partner)", {ledger.partner, side.sn, side.sn, side.sn}));
  addOpeningJoin(sql, ledger, side, criteria);
  if (criteria.has(kHidesSettled)) sql.add(" and ").add(closing).add("<>0");
}

void addIdlePartners(Sql& sql, const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  const std::string carried = carriedOf(ledger);
  sql.add(compose(" union all select b.{} as k_ghskh,b.{} as name,", {side.sn, side.name}))
      .add(carried)
      .add(" as qcje,0 as yfje,0 as sfje,")
      .add(carried)
      .add(compose(" as wfje from {} b", {side.table}));
  addOpeningJoin(sql, ledger, side, criteria);
  const Criteria period{.from = criteria.from, .to = criteria.to};
  sql.add(compose(" and not exists (select a.id from {} a", {ledger.table}))
      .where(lines(ledger, side, period, true))
      .add(compose(" and a.{}=b.{})", {ledger.partner, side.sn}));
  if (!criteria.partner.isEmpty()) sql.add(compose(" and b.{}=?", {side.sn}), criteria.partner);
  if (criteria.has(kHidesSettled)) sql.add(" and ").add(carried).add("<>0");
}

QString owedOpening(const PartnerSide& side) {
  return words(side.openingWord).left(4);  // 期初应收, 期初应付
}
QString invoiceOpening(const PartnerSide&) {
  return QStringLiteral("期初应开");
}

}  // namespace partner_overview_detail

const PartnerLedger owedLedger{.table = "jxc_ysyfk",
                               .partner = "k_ghskh",
                               .type = "k_type",
                               .date = "k_rq",
                               .opening = "k_qcje",
                               .raised = "k_yfje",
                               .lowered = "k_sfje",
                               .running = "k_ljje",
                               .words = "k_djtxt",
                               .note = "k_note",
                               .told = partner_overview_detail::kOwedTold,
                               .empty = partner_overview_detail::kOwedEmpty,
                               .counted = {},
                               .openingWord = partner_overview_detail::owedOpening,
                               .repaired = u"期末应付金额",  // the words of the supplier side on both
                               .recompute = recomputeYsyfk};
const PartnerLedger invoiceLedger{.table = "jxc_fpdjb",
                                  .partner = "fp_ghskh",
                                  .type = "fp_type",
                                  .date = "fp_rq",
                                  .opening = "fp_qcje",
                                  .raised = "fp_yfje",
                                  .lowered = "fp_kpje",
                                  .running = "fp_ljje",
                                  .words = "fp_djtxt",
                                  .note = "fp_note",
                                  .told = partner_overview_detail::kInvoiceTold,
                                  .empty = partner_overview_detail::kInvoiceEmpty,
                                  .counted = "fp_check",
                                  .openingWord = partner_overview_detail::invoiceOpening,
                                  .repaired = u"期末应开发票金额",
                                  .recompute = recomputeFp};

Sql overviewDetail(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  namespace detail = partner_overview_detail;
  Sql sql;
  if (criteria.employee.isEmpty()) {
    detail::addOpeningRows(sql, ledger, side, criteria);
    sql.add(" union all ");
  }
  detail::addPeriodRows(sql, ledger, side, criteria);
  sql.add(compose(" order by {},{},dsort,id", {ledger.partner, ledger.date}));
  return sql;
}

Sql waitingLines(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  namespace detail = partner_overview_detail;
  Sql sql;
  detail::addLines(sql, ledger, side, false);
  sql.where(detail::lines(ledger, side, criteria, false)).add(" order by a.id desc");
  return sql;
}

Sql overviewSummary(const PartnerLedger& ledger, const PartnerSide& side, const Criteria& criteria) {
  namespace detail = partner_overview_detail;
  Sql sql;
  detail::addMovedPartners(sql, ledger, side, criteria);
  if (criteria.has(kWithIdle) && criteria.employee.isEmpty()) detail::addIdlePartners(sql, ledger, side, criteria);
  sql.add(" order by k_ghskh");
  return sql;
}

QString endOf(const QString& day) {
  return (day.isEmpty() ? allDates : day) + u" 23:59:59"_qs;
}

Sql lastLines(const PartnerLedger& ledger, const PartnerSide& side, const QString& day) {
  Sql ids;
  partner_overview_detail::addLastLines(ids, ledger, side, "<=", endOf(day));
  return ids;
}

Sql documentGoods(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("gl_djh=?", criteria.document);
  warehouses.restrict(filter, "ck_sn");
  return Sql("select * from jxc_goodslist").where(filter).add(" order by id");
}

bool recomputePartners(const PartnerLedger& ledger, const PartnerSide& side, const QString& partner,
                       const QString& from, Prompt& prompt) {
  const LongWork longWork;
  if (!prompt.ask(u"重新计算可能会修改"_qs + words(ledger.repaired) + u"，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs))
    return false;
  {
    Transaction transaction(accountDb());
    const QString first = PeriodLock().openFrom(from);  // what is locked stays as it is
    Filter filter;
    if (!partner.isEmpty()) filter.add(compose("{}=?", {side.sn}), partner);
    const RowSet partners =
        openSelect(Sql(compose("select {} as sn from {}", {side.sn, side.table})).where(filter).add(" order by id"));
    for (const Row row : partners)
      ledger.recompute(row.text("sn"), side.which, first);
    transaction.commit();
  }
  prompt.notice(QStringLiteral("重新计算完成！"));
  return true;
}

}  // namespace jxc::partner_books
