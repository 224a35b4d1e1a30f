#include "accounts/partner_overview.h"

#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/period_lock.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/waiting.h"

namespace jxc::partner_books {
namespace partner_overview_detail {

/// Ids of each partner's last line before (or up to) a moment, in brackets.
void addLastLines(Sql& sql, const QString& type, const char* comparison, const QString& date) {
  sql.add(R"((select max(x.id) as rowid from jxc_ysyfk x,
      (select max(k_rq) as rq,k_ghskh from jxc_ysyfk where k_type=? and k_rq)",
          type)
      .add(comparison)
      .add(R"(? group by k_ghskh) y
      where x.k_type=? and x.k_ghskh=y.k_ghskh and x.k_rq=y.rq group by x.k_ghskh))",
           date, type);
}

/// Conditions on the period's lines, with the ledger as `a`.
Filter period(const PartnerSide& side, const Criteria& criteria) {
  Filter filter;
  filter.add("a.k_type=?", words(side.type));
  addPeriod(filter, criteria, "a.k_rq");
  addChoice(filter, "a.u_sn", criteria.employee);
  addChoice(filter, "a.k_ghskh", criteria.partner);
  addKey(filter, criteria, {"a.gl_djh", "a.k_note"});
  return filter;
}

void addOpeningRows(Sql& sql, const PartnerSide& side, const Criteria& criteria) {
  const QString type = words(side.type);
  const QString opening = words(side.openingWord).left(4);  // 期初应收, 期初应付
  sql.add(compose(R"(select a.id,a.k_ghskh,b.{} as name,? as k_rq,'' as gl_djh,? as k_fkfs,? as k_djlx,? as k_djtxt,
      a.k_ljje as k_qcje,0 as k_yfje,0 as k_sfje,a.k_ljje,'' as gl_djh2,'' as k_note,'' as u_name,'' as a_name,
      1 as dsort
    from jxc_ysyfk a,{} b where a.k_ghskh=b.{} and b.{}=0 and a.id in )",
                  {side.name, side.table, side.sn, side.forbidden}),
          criteria.from, opening, opening, opening);
  addLastLines(sql, type, "<", criteria.from);
  if (!criteria.partner.isEmpty()) sql.add(" and a.k_ghskh=?", criteria.partner);
  if (criteria.has(kHidesSettled)) sql.add(" and a.k_ljje<>0");
}

void addPeriodRows(Sql& sql, const PartnerSide& side, const Criteria& criteria) {
  sql.add(compose(R"(select a.id,a.k_ghskh,b.{} as name,a.k_rq,a.gl_djh,a.k_fkfs,a.k_djlx,a.k_djtxt,
      a.k_qcje,a.k_yfje,a.k_sfje,a.k_ljje,a.gl_djh2,a.k_note,c.u_name,a.a_name,2 as dsort
    from (jxc_ysyfk a inner join {} b on a.k_ghskh=b.{}) left outer join jxc_user c on a.u_sn=c.u_sn
    where b.{}=0)",
                  {side.name, side.table, side.sn, side.forbidden}))
      .andWhere(period(side, criteria));
  if (!criteria.has(kHidesSettled)) return;
  sql.add(" and a.k_ghskh in (select k_ghskh from jxc_ysyfk where k_ljje<>0 and id in ");
  addLastLines(sql, words(side.type), "<=", endOf(criteria.to));
  sql.add(")");
}

/// " left outer join (balances before the period) n on a.kh_sn=n.k_ghskh where …", with the partners as `a`.
void addOpeningJoin(Sql& sql, const PartnerSide& side, const Criteria& criteria) {
  sql.add(" left outer join (select k_ghskh,k_ljje as qcje from jxc_ysyfk where id in ");
  addLastLines(sql, words(side.type), "<", criteria.from);
  sql.add(compose(") n on a.{}=n.k_ghskh where a.{}=0", {side.sn, side.forbidden}));
}

void addMovedPartners(Sql& sql, const PartnerSide& side, const Criteria& criteria) {
  const std::string closing = "iif(n.qcje is null,m.yfje-m.sfje,m.yfje+n.qcje-m.sfje)";
  sql.add(compose("select a.{} as k_ghskh,a.{} as name,iif(n.qcje is null,0,n.qcje) as qcje,m.yfje,m.sfje,",
                  {side.sn, side.name}))
      .add(closing)
      .add(compose(R"( as wfje from ({} a inner join
      (select a.k_ghskh,sum(a.k_yfje) as yfje,sum(a.k_sfje) as sfje from jxc_ysyfk a)",
                   {side.table}))
      .where(period(side, criteria))
      .add(compose(" group by a.k_ghskh) m on a.{}=m.k_ghskh)", {side.sn}));
  addOpeningJoin(sql, side, criteria);
  if (criteria.has(kHidesSettled)) sql.add(" and ").add(closing).add("<>0");
}

void addIdlePartners(Sql& sql, const PartnerSide& side, const Criteria& criteria) {
  const std::string carried = "iif(n.qcje is null,0,n.qcje)";
  sql.add(compose(" union all select a.{} as k_ghskh,a.{} as name,", {side.sn, side.name}))
      .add(carried)
      .add(" as qcje,0 as yfje,0 as sfje,")
      .add(carried)
      .add(compose(" as wfje from {} a", {side.table}));
  addOpeningJoin(sql, side, criteria);
  sql.add(compose(" and a.{} not in (select k_ghskh from jxc_ysyfk where k_type=? and k_rq>=? and k_rq<=?)", {side.sn}),
          words(side.type), criteria.from, endOf(criteria.to));
  if (!criteria.partner.isEmpty()) sql.add(compose(" and a.{}=?", {side.sn}), criteria.partner);
  if (criteria.has(kHidesSettled)) sql.add(" and ").add(carried).add("<>0");
}

}  // namespace partner_overview_detail

Sql overviewDetail(const PartnerSide& side, const Criteria& criteria) {
  namespace detail = partner_overview_detail;
  Sql sql;
  if (criteria.employee.isEmpty()) {
    detail::addOpeningRows(sql, side, criteria);
    sql.add(" union all ");
  }
  detail::addPeriodRows(sql, side, criteria);
  sql.add(" order by k_ghskh,k_rq,dsort,id");
  return sql;
}

Sql overviewSummary(const PartnerSide& side, const Criteria& criteria) {
  namespace detail = partner_overview_detail;
  Sql sql;
  detail::addMovedPartners(sql, side, criteria);
  if (criteria.has(kWithIdle) && criteria.employee.isEmpty()) detail::addIdlePartners(sql, side, criteria);
  sql.add(" order by k_ghskh");
  return sql;
}

QString endOf(const QString& day) {
  return (day.isEmpty() ? allDates : day) + u" 23:59:59"_qs;
}

Sql lastLines(const PartnerSide& side, const QString& day) {
  Sql ids;
  partner_overview_detail::addLastLines(ids, words(side.type), "<=", endOf(day));
  return ids;
}

Sql documentGoods(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("gl_djh=?", criteria.document);
  warehouses.restrict(filter, "ck_sn");
  return Sql("select * from jxc_goodslist").where(filter).add(" order by id");
}

bool recomputePartners(const PartnerSide& side, const QString& partner, const QString& from, Prompt& prompt) {
  const LongWork longWork;
  // The words are those of the supplier side on both.
  if (!prompt.ask(QStringLiteral("重新计算可能会修改期末应付金额，\r\n\r\n并且不可恢复。现在是否重新计算？")))
    return false;
  {
    Transaction transaction(accountDb());
    const QString first = PeriodLock().openFrom(from);  // what is locked stays as it is
    Filter filter;
    if (!partner.isEmpty()) filter.add(compose("{}=?", {side.sn}), partner);
    const RowSet partners =
        openSelect(Sql(compose("select {} as sn from {}", {side.sn, side.table})).where(filter).add(" order by id"));
    for (const Row row : partners)
      recomputeYsyfk(row.text("sn"), side.which, first);
    transaction.commit();
  }
  prompt.notice(QStringLiteral("重新计算完成！"));
  return true;
}

}  // namespace jxc::partner_books
